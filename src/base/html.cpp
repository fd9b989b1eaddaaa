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

std::string Base128(std::string_view bytes) {
    constexpr std::string_view rare("\0\r<", 3);
    const std::size_t count = (8 * bytes.size() + 6) / 7;
    const auto byte = [&](std::size_t at) {
        return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0U;
    };
    const auto seven = [&](std::size_t number) {
        const std::size_t bit = 7 * number;
        return (byte(bit / 8) << 8U | byte(bit / 8 + 1)) >> (9 - bit % 8) & 127U;
    };
    std::string out;
    out.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        unsigned sign = seven(i);
        const std::size_t number = rare.find(static_cast<char>(sign));
        if (number != std::string_view::npos)
            sign = i + 1 == count ? 128 + sign : 256 + 128 * static_cast<unsigned>(number) + seven(++i);
        if (sign < 128) {
            out += static_cast<char>(sign);
        } else {
            out += static_cast<char>(0xC0U | sign >> 6U);
            out += static_cast<char>(0x80U | (sign & 0x3FU));
        }
    }
    return out;
}

}  // namespace keelview
