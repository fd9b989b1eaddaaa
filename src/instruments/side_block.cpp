#include "instruments/side_block.h"

#include <algorithm>

#include "base/strings.h"
#include "display/stripes.h"
#include "instruments/page_text.h"
#include "session/livery.h"

namespace keelview {

namespace {

constexpr double RowPitch = 15.0;
constexpr double TitlePitch = 18.0;
constexpr double BlockGap = 8.0;
constexpr double Edge = 4.0;
constexpr double ColumnGap = 9.0;
constexpr double MostOfName = 150.0;
constexpr double RoomOfStripes = 4 + 4 * FieldStripePitch;

constexpr Colour PageColour = White;
constexpr Colour ChosenColour = Rgb(255, 245, 190);
constexpr Colour OutOfFocus = Rgb(112, 112, 112);
constexpr Colour HeadColour = Rgb(64, 64, 64);

double TitleHeight(const std::string& title) {
    return title.empty() ? 0.0 : TitlePitch;
}

/// How many bytes of the text, which is not empty, its first sign takes.
std::size_t SignLength(std::string_view text) {
    std::size_t length = 1;
    while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U) ++length;
    return length;
}

/// Adds the line's pieces that are no wider than that; it is broken behind a blank, or anywhere where there
/// is none, as in Japanese.
void BreakLine(const Canvas& page, std::string_view line, double width, std::vector<std::string>& lines) {
    while (!line.empty()) {
        std::size_t fits = 0, blank = 0;
        while (fits < line.size()) {
            const std::size_t next = fits + SignLength(line.substr(fits));
            if (fits > 0 && page.TextWidth(line.substr(0, next)) > width) break;
            if (line[fits] == ' ') blank = next;
            fits = next;
        }
        if (fits < line.size() && blank > 0) fits = blank;
        lines.emplace_back(Trim(line.substr(0, fits)));
        line.remove_prefix(fits);
    }
}

std::vector<std::string> BrokenLines(const Canvas& page, const std::string& words, double width) {
    std::vector<std::string> lines;
    for (const std::string_view line : Lines(words)) {
        if (line.empty()) lines.emplace_back();
        BreakLine(page, line, width, lines);
    }
    return lines;
}

std::string_view CellOf(const SideTable::Row& row, std::size_t column) {
    return column < row.Cells.size() ? std::string_view(row.Cells[column]) : std::string_view();
}

bool HasHead(const SideTable& table) {
    return std::ranges::any_of(table.Columns, [](const auto& column) { return !column.Head.empty(); });
}

std::string TableText(const SideTable& table) {
    std::string text = table.Title.empty() ? "" : table.Title + "\r\n";
    const auto addLine = [&text, &table](const auto& cellOf) {
        for (std::size_t column = 0; column < table.Columns.size(); ++column)
            text += (column > 0 ? "\t" : "") + std::string(cellOf(column));
        text += "\r\n";
    };
    if (HasHead(table))
        addLine([&](std::size_t column) { return std::string_view(table.Columns[column].Head); });
    for (const SideTable::Row& row : table.Rows)
        addLine([&](std::size_t column) { return CellOf(row, column); });
    return text;
}

}  // namespace

void SidePage::Show(Canvas& page, SideBlocks blocks, const SideFocus& focus, double scrolled, bool whole) {
    const bool same = !whole && scrolled == scrolled_ && page.ScaleWidth() == width_ && SameShape(blocks);
    scrolled_ = scrolled;
    width_ = page.ScaleWidth();
    std::swap(blocks_, blocks);
    if (same) return DrawChanges(page, blocks, focus);
    Place(page);
    DrawAll(page, focus);
}

/// The same blocks stand there with as many rows and columns.
bool SidePage::SameShape(const SideBlocks& blocks) const {
    return std::ranges::equal(blocks, blocks_, [](const SideBlock& one, const SideBlock& other) {
        if (one.index() != other.index()) return false;
        if (const auto* text = std::get_if<SideText>(&one))
            return text->Words == std::get<SideText>(other).Words;
        const auto* table = std::get_if<SideTable>(&one);
        if (table == nullptr) return true;
        const SideTable& before = std::get<SideTable>(other);
        return table->Rows.size() == before.Rows.size() && table->Columns.size() == before.Columns.size() &&
               table->Title.empty() == before.Title.empty();
    });
}

void SidePage::Place(const Canvas& page) {
    placed_.assign(blocks_.size(), {});
    widths_.clear();
    double y = Edge;
    for (std::size_t i = 0; i < blocks_.size(); ++i) {
        Placed& placed = placed_[i];
        placed.Top = y;
        if (const auto* table = std::get_if<SideTable>(&blocks_[i])) {
            PlaceTable(page, *table, placed);
        } else if (const auto* picture = std::get_if<SidePicture>(&blocks_[i])) {
            placed.Bottom = y + TitleHeight(picture->Title) + picture->Height;
        } else {
            placed.Lines = BrokenLines(page, std::get<SideText>(blocks_[i]).Words, width_ - 2 * Edge);
            placed.Bottom = y + RowPitch * static_cast<double>(placed.Lines.size());
        }
        y = placed.Bottom + BlockGap;
    }
    height_ = y;
}

void SidePage::PlaceTable(const Canvas& page, const SideTable& table, Placed& placed) const {
    double x = Edge;
    for (std::size_t column = 0; column < table.Columns.size(); ++column) {
        const SideTable::Column& told = table.Columns[column];
        double width = std::max(page.TextWidth(told.Head), page.TextWidth(told.Widest));
        if (told.Widest.empty())
            for (const SideTable::Row& row : table.Rows)
                width = std::max(width, page.TextWidth(CellOf(row, column)));
        if (static_cast<int>(column) == table.NameColumn)
            width = std::min(width + RoomOfStripes, MostOfName);
        x += width + (column > 0 ? ColumnGap : 0.0);
        placed.Rights.push_back(x);
    }
    placed.Bottom = RowTop(table, placed, table.Rows.size());
}

double SidePage::RowTop(const SideTable& table, const Placed& placed, std::size_t row) const {
    return placed.Top + TitleHeight(table.Title) + (HasHead(table) ? RowPitch : 0.0) +
           RowPitch * static_cast<double>(row);
}

void SidePage::DrawAll(Canvas& page, const SideFocus& focus) const {
    page.Cls();
    const double end = scrolled_ + page.ScaleHeight();
    for (std::size_t i = 0; i < blocks_.size(); ++i) {
        const Placed& placed = placed_[i];
        if (placed.Bottom < scrolled_ || placed.Top > end) continue;
        const double top = placed.Top - scrolled_;
        if (const auto* table = std::get_if<SideTable>(&blocks_[i])) {
            DrawTitle(page, top, table->Title);
            DrawTable(page, *table, placed, focus);
        } else if (const auto* picture = std::get_if<SidePicture>(&blocks_[i])) {
            DrawTitle(page, top, picture->Title);
            picture->Draw(page, PlaceOf(i));
        } else {
            page.ForeColor = Black;
            for (std::size_t line = 0; line < placed.Lines.size(); ++line)
                page.PrintAt(Edge, top + RowPitch * static_cast<double>(line), placed.Lines[line]);
        }
    }
}

void SidePage::DrawTitle(Canvas& page, double top, const std::string& title) const {
    if (title.empty()) return;
    page.FilledBox(0.0, top, width_, top + TitlePitch - 1, PageColour);
    page.ForeColor = Black;
    page.PrintAt(Edge, top, title);
}

void SidePage::DrawChanges(Canvas& page, const SideBlocks& before, const SideFocus& focus) const {
    for (std::size_t i = 0; i < blocks_.size(); ++i) {
        const auto* table = std::get_if<SideTable>(&blocks_[i]);
        if (table == nullptr) continue;
        const SideTable& old = std::get<SideTable>(before[i]);
        if (table->Title != old.Title) DrawTitle(page, placed_[i].Top - scrolled_, table->Title);
        for (std::size_t row = 0; row < table->Rows.size(); ++row) {
            const bool otherBoat = table->Rows[row].To.Boat != old.Rows[row].To.Boat;
            for (std::size_t column = 0; column < table->Columns.size(); ++column)
                if (otherBoat || CellOf(table->Rows[row], column) != CellOf(old.Rows[row], column))
                    DrawCell(page, *table, placed_[i], row, column, focus);
        }
    }
}

void SidePage::DrawHead(Canvas& page, const SideTable& table, const Placed& placed) const {
    const double headTop = RowTop(table, placed, 0) - RowPitch - scrolled_;
    page.ForeColor = HeadColour;
    for (std::size_t column = 0; column < table.Columns.size(); ++column) {
        const double left = column > 0 ? placed.Rights[column - 1] + ColumnGap : Edge;
        if (table.Columns[column].Left)
            page.PrintAt(left, headTop, table.Columns[column].Head);
        else
            PrintRight(page, placed.Rights[column], headTop, table.Columns[column].Head);
    }
    page.Line(Edge, headTop + RowPitch - 1, width_ - Edge, headTop + RowPitch - 1, HeadColour);
}

void SidePage::DrawTable(Canvas& page, const SideTable& table, const Placed& placed,
                         const SideFocus& focus) const {
    if (HasHead(table)) DrawHead(page, table, placed);
    for (std::size_t row = 0; row < table.Rows.size(); ++row)
        for (std::size_t column = 0; column < table.Columns.size(); ++column)
            DrawCell(page, table, placed, row, column, focus);
}

void SidePage::DrawCell(Canvas& page, const SideTable& table, const Placed& placed, std::size_t row,
                        std::size_t column, const SideFocus& focus) const {
    const double y = RowTop(table, placed, row) - scrolled_;
    if (y < -RowPitch || y > page.ScaleHeight()) return;
    const SideTable::Row& told = table.Rows[row];
    const double left = column > 0 ? placed.Rights[column - 1] + ColumnGap : Edge;
    const double right = placed.Rights[column];
    const int boat = told.To.Boat;
    const bool chosen = table.NameColumn >= 0 && boat > 0 && boat == focus.Chosen;
    const double fieldLeft = column > 0 ? left - ColumnGap + 1 : 0.0;
    const double fieldRight = column + 1 == table.Columns.size() ? width_ : right;
    page.FilledBox(fieldLeft, y, fieldRight, y + RowPitch - 1, chosen ? ChosenColour : PageColour);
    const std::string_view cell = CellOf(told, column);
    if (static_cast<int>(column) == table.NameColumn && boat > 0)
        return DrawNameField(page, boat, {left, y}, {right, y + RowPitch - 2}, cell);
    page.ForeColor = boat > 0 && !focus.InFocus(boat) ? OutOfFocus : Black;
    if (table.Columns[column].Left)
        page.PrintAt(left, y, cell);
    else
        page.PrintAt(right - WidthOf(page, cell), y, cell);
}

/// Measuring takes as long as printing, and the same numbers come again and again.
double SidePage::WidthOf(const Canvas& page, std::string_view cell) const {
    const auto [known, isNew] = widths_.try_emplace(std::string(cell), 0.0);
    if (isNew) known->second = page.TextWidth(cell);
    return known->second;
}

SideTarget SidePage::TargetAt(const Point& at) const {
    const double y = at.Y + scrolled_;
    for (std::size_t i = 0; i < blocks_.size(); ++i) {
        if (y < placed_[i].Top || y >= placed_[i].Bottom) continue;
        if (const auto* picture = std::get_if<SidePicture>(&blocks_[i]))
            return picture->TargetAt ? picture->TargetAt(at, PlaceOf(i)) : SideTarget();
        if (const auto* table = std::get_if<SideTable>(&blocks_[i]))
            for (std::size_t row = 0; row < table->Rows.size(); ++row)
                if (const double top = RowTop(*table, placed_[i], row); y >= top && y < top + RowPitch)
                    return table->Rows[row].To;
    }
    return {};
}

std::string SidePage::AsText() const {
    std::string text;
    for (const SideBlock& block : blocks_) {
        if (!text.empty()) text += "\r\n";
        if (const auto* table = std::get_if<SideTable>(&block))
            text += TableText(*table);
        else if (const auto* words = std::get_if<SideText>(&block))
            for (const std::string_view line : Lines(words->Words)) text += std::string(line) + "\r\n";
    }
    return text;
}

Bounds SidePage::PlaceOf(std::size_t block) const {
    const auto* picture = block < blocks_.size() ? std::get_if<SidePicture>(&blocks_[block]) : nullptr;
    if (picture == nullptr || block >= placed_.size()) return {};
    const double top = placed_[block].Top + TitleHeight(picture->Title) - scrolled_;
    return {{Edge, top}, {width_ - Edge, top + picture->Height}};
}

}  // namespace keelview
