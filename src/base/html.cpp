#include "base/html.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace keelview {

std::string HtmlText(std::string_view text) {
    std::string out;
    for (const char sign : text) {
        switch (sign) {
            case '&':
                out += "&amp;";
                break;
            case '<':
                out += "&lt;";
                break;
            case '>':
                out += "&gt;";
                break;
            case '"':
                out += "&quot;";
                break;
            default:
                out += sign;
        }
    }
    return out;
}

std::string Base64(std::string_view bytes) {
    constexpr std::string_view signs = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    out.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        std::uint32_t three = 0;
        for (std::size_t k = 0; k < 3; ++k)
            three = three << 8U | (at + k < bytes.size() ? static_cast<unsigned char>(bytes[at + k]) : 0U);
        for (std::size_t k = 0; k < 4; ++k)
            out += at + k > bytes.size() ? '=' : signs[three >> (18U - 6U * k) & 63U];
    }
    return out;
}

std::string Base85(std::string_view bytes) {
    constexpr std::string_view signs =
        "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz!#$%&()*+-;,=>?@^_`{|}~";
    std::string out;
    out.reserve((bytes.size() + 3) / 4 * 5);
    for (std::size_t at = 0; at < bytes.size(); at += 4) {
        std::uint32_t four = 0;
        for (std::size_t k = 0; k < 4; ++k)
            four = four << 8U | (at + k < bytes.size() ? static_cast<unsigned char>(bytes[at + k]) : 0U);
        std::string digits(5, signs[0]);
        for (std::size_t k = 5; k-- > 0; four /= 85) digits[k] = signs[four % 85];
        out += digits.substr(0, std::min<std::size_t>(bytes.size() - at, 4) + 1);
    }
    return out;
}

}  // namespace keelview
