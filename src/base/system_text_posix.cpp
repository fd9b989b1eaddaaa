#include <iconv.h>

#include <array>
#include <cerrno>
#include <cstdint>

#include "base/system_text.h"

namespace keelview {
namespace {

/// Of the tables at hand this one gives back most codes as they came.
constexpr const char* Table = "CP932";

/// One conversion of the platform's tables, closed when it goes.
class Converter {
  public:
    Converter(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
    ~Converter() {
        if (Ready()) iconv_close(handle_);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    Converter(Converter&&) = delete;
    Converter& operator=(Converter&&) = delete;

    bool Ready() const {
        // The platform says "no such table" by a pointer of value -1.
        return reinterpret_cast<std::intptr_t>(handle_) != -1;  // NOLINT(*-reinterpret-cast)
    }

    /// Converts as far as it goes and cuts what was converted off `text`. True if nothing is left.
    bool Convert(std::string_view& text, std::string& out) {
        std::array<char, 4096> buffer{};
        while (!text.empty()) {
            char* from = const_cast<char*>(text.data());  // NOLINT(*-const-cast): only read
            std::size_t fromLeft = text.size();
            char* to = buffer.data();
            std::size_t toLeft = buffer.size();
            const std::size_t result = iconv(handle_, &from, &fromLeft, &to, &toLeft);
            const bool full = result == static_cast<std::size_t>(-1) && errno == E2BIG;
            out.append(buffer.data(), buffer.size() - toLeft);
            text.remove_prefix(text.size() - fromLeft);
            if (result == static_cast<std::size_t>(-1) && !full) return false;
        }
        return true;
    }

  private:
    iconv_t handle_;
};

/// Takes the ASCII at the head of a text over: all that can be read without a table.
void TakeAscii(std::string_view& text, std::string& out) {
    while (!text.empty() && static_cast<unsigned char>(text.front()) < 0x80) {
        out += text.front();
        text.remove_prefix(1);
    }
}

}  // namespace

std::string DecodeCodePage932(std::string_view bytes, std::string_view replacement) {
    Converter converter("UTF-8", Table);
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 2);
    for (;;) {
        if (!converter.Ready())
            TakeAscii(bytes, text);
        else if (converter.Convert(bytes, text))
            return text;
        if (bytes.empty()) return text;
        text += replacement;
        bytes.remove_prefix(1);
    }
}

std::optional<std::string> EncodeCodePage932(std::string_view utf8) {
    Converter converter(Table, "UTF-8");
    std::string bytes;
    if (!converter.Ready() || !converter.Convert(utf8, bytes)) return std::nullopt;
    return bytes;
}

}  // namespace keelview
