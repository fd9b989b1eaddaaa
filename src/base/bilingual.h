#pragma once

#include <string>
#include <string_view>

namespace keelview {

/// One text of the program in its two languages, written once at its place: Text{"Start", "スタート"}. A
/// text whose English holds Japanese letters or their full-width signs does not compile.
struct Text {
    std::string_view English;
    std::string_view Japanese;

    constexpr Text() = default;
    consteval Text(std::string_view english, std::string_view japanese)
        : English(english), Japanese(japanese) {
        constexpr unsigned char firstOfJapanese = 0xE3;  // leads U+3000 and all beyond
        for (const char letter : english)
            if (static_cast<unsigned char>(letter) >= firstOfJapanese) EnglishHoldsJapanese();
    }

    /// The text in the language of the program.
    constexpr std::string_view In(bool useEnglish) const { return useEnglish ? English : Japanese; }

    /// The same as a string of its own, to be put together with others.
    std::string Str(bool useEnglish) const { return std::string(In(useEnglish)); }

  private:
    static void EnglishHoldsJapanese();  // no constant: the compiler names it where a text is wrong
};

}  // namespace keelview
