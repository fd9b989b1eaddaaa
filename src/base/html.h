#pragma once

#include <string>
#include <string_view>

namespace keelview {

/// A text as it stands between the tags of a page, or in the quotes of an attribute: never markup.
std::string HtmlText(std::string_view text);

/// Bytes as a text of 64 signs (RFC 4648, section 4).
std::string Base64(std::string_view bytes);

/// Bytes as a text in UTF-8 that no reader of a page changes, of which eight bytes hold seven: signs of
/// seven bits each, the high ones first and the last one filled up with 0. NUL, CR and '<' would not come
/// through: they are 0 to 2 in U+0100 + 128 * number + the next seven bits, or, where they are the last,
/// U+0080 + bits.
std::string Base128(std::string_view bytes);

}  // namespace keelview
