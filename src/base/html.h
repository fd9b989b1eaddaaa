#pragma once

#include <string>
#include <string_view>

namespace keelview {

/// A text as it stands between the tags of a page, or in the quotes of an attribute: never markup.
std::string HtmlText(std::string_view text);

/// Bytes as a text of 64 signs (RFC 4648, section 4).
std::string Base64(std::string_view bytes);

}  // namespace keelview
