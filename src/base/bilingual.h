#pragma once

#include <string>
#include <string_view>

namespace keelview {

/// One text of the program in its two languages, written once at its place: Text{"Start", "スタート"}.
struct Text {
    std::string_view English;
    std::string_view Japanese;

    /// The text in the language of the program.
    constexpr std::string_view In(bool useEnglish) const { return useEnglish ? English : Japanese; }

    /// The same as a string of its own, to be put together with others.
    std::string Str(bool useEnglish) const { return std::string(In(useEnglish)); }
};

}  // namespace keelview
