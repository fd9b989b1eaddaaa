#include "instruments/side_document.h"

#include "base/html.h"
#include "base/strings.h"
#include "display/png.h"

namespace keelview {

namespace {

constexpr std::string_view Style =
    "body{font:13px sans-serif;margin:2em;max-width:60em}"
    "table{border-collapse:collapse;margin:.5em 0 1.5em}"
    "th{border-bottom:1px solid #444;text-align:right;padding:2px 8px}"
    "td{text-align:right;padding:1px 8px}"
    ".l{text-align:left}img{display:block;max-width:100%;margin-bottom:1.5em}"
    "h2{font-size:14px;margin:1em 0 .3em}";

std::string Heading(const std::string& title) {
    return title.empty() ? "" : "<h2>" + HtmlText(title) + "</h2>\n";
}

std::string Html(const SideTable& table) {
    std::string out = Heading(table.Title) + "<table>\n<tr>";
    const auto cell = [&table](const char* tag, std::size_t column, const std::string& text) {
        return "<" + std::string(tag) + (table.Columns[column].Left ? " class=\"l\">" : ">") +
               HtmlText(text) + "</" + tag + ">";
    };
    for (std::size_t column = 0; column < table.Columns.size(); ++column)
        out += cell("th", column, table.Columns[column].Head);
    out += "</tr>\n";
    for (const SideTable::Row& row : table.Rows) {
        out += "<tr>";
        for (std::size_t column = 0; column < table.Columns.size(); ++column)
            out += cell("td", column, column < row.Cells.size() ? row.Cells[column] : std::string());
        out += "</tr>\n";
    }
    return out + "</table>\n";
}

std::string Html(const SideText& text) {
    std::string out;
    for (const std::string_view line : Lines(text.Words)) out += "<p>" + HtmlText(line) + "</p>\n";
    return out;
}

}  // namespace

std::string SideDocument(const std::string& title, const SideBlocks& blocks, bool useEnglish,
                         const PaintSidePicture& paint) {
    std::string out = "<!DOCTYPE html>\n<html lang=\"" + std::string(useEnglish ? "en" : "ja") +
                      "\">\n<head>\n<meta charset=\"utf-8\">\n<title>" + HtmlText(title) +
                      "</title>\n<style>" + std::string(Style) + "</style>\n</head>\n<body>\n<h1>" +
                      HtmlText(title) + "</h1>\n";
    for (const SideBlock& block : blocks) {
        if (const auto* table = std::get_if<SideTable>(&block)) {
            out += Html(*table);
        } else if (const auto* text = std::get_if<SideText>(&block)) {
            out += Html(*text);
        } else {
            const auto& picture = std::get<SidePicture>(block);
            out += Heading(picture.Title) + "<img alt=\"" + HtmlText(picture.Title) +
                   "\" src=\"data:image/png;base64," + Base64(PngOf(paint(picture).Data())) + "\">\n";
        }
    }
    return out + "</body>\n</html>\n";
}

}  // namespace keelview
