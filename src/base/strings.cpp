#include "base/strings.h"

#include <algorithm>

namespace keelview {
namespace {

char UpperChar(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

}  // namespace

std::string_view Trim(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && (IsBlank(text.back()) || text.back() == '\r')) text.remove_suffix(1);
    return text;
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    std::size_t begin = 0;
    for (;;) {
        const std::size_t end = text.find(separator, begin);
        pieces.push_back(text.substr(begin, end - begin));
        if (end == std::string_view::npos) return pieces;
        begin = end + 1;
    }
}

std::string UpperAscii(std::string_view text) {
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), UpperChar);
    return upper;
}

bool EqualNoCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return UpperChar(x) == UpperChar(y); });
}

std::string QuotedCell(std::string_view text) {
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"') quoted += '"';
        quoted += c;
    }
    return quoted + '"';
}

std::vector<std::string_view> Lines(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) lines.push_back(CutLine(text));
    return lines;
}

std::string_view CutLine(std::string_view& text) {
    std::string_view line = CutHead(text, '\n');
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

std::string_view CutHead(std::string_view& text, char separator) {
    const std::size_t end = text.find(separator);
    const std::string_view head = text.substr(0, end);
    text = end == std::string_view::npos ? std::string_view{} : text.substr(end + 1);
    return head;
}

}  // namespace keelview
