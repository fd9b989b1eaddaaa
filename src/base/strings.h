#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace keelview {

/// The text without blanks (spaces and tabs, and a carriage return at its end) at both ends.
std::string_view Trim(std::string_view text);

/// The pieces between the separators; one piece, the whole, when there is none.
std::vector<std::string_view> Split(std::string_view text, char separator);

/// ASCII letters in upper case, all other bytes as they are.
std::string UpperAscii(std::string_view text);

/// True if both are equal without regard to the case of ASCII letters.
bool EqualNoCase(std::string_view a, std::string_view b);

/// A text between double quotes, where a quote inside is doubled: a cell of a table for spreadsheets.
std::string QuotedCell(std::string_view text);

/// The lines of a text that ends its lines with CR LF or LF, without their ends. An end at the very end of
/// the text opens no further line.
std::vector<std::string_view> Lines(std::string_view text);

/// Cuts the first line off the text and returns it without its end (CR LF or LF). For files that may be
/// long: a list of all their lines could be much larger than they are.
std::string_view CutLine(std::string_view& text);

/// Cuts the head of the text up to the separator and returns it; the text keeps what stands behind the
/// separator. Without a separator the whole text is the head and nothing is left.
std::string_view CutHead(std::string_view& text, char separator);

}  // namespace keelview
