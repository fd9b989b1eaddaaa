#pragma once

#include <string>
#include <string_view>

namespace keelview {

/// A text as it stands between the tags of a page, or in the quotes of an attribute: never markup.
std::string HtmlText(std::string_view text);

/// Bytes as a text of 64 signs (RFC 4648, section 4).
std::string Base64(std::string_view bytes);

/// Bytes as a text of 85 signs, which is shorter: four bytes are five digits, the high one first, and the
/// last one to three bytes one digit more than they are. The signs are those of RFC 1924 with a comma for
/// '<', so that nothing in it ends the element of a page.
std::string Base85(std::string_view bytes);

}  // namespace keelview
