#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <variant>
#include <vector>

#include "base/point.h"
#include "display/canvas.h"

namespace keelview {

/// Where a click in the side panel leads: to a boat, to a moment (seconds from the start), or both.
struct SideTarget {
    int Boat = 0;  ///< 0 none
    std::optional<double> Time;

    bool LeadsAnywhere() const { return Boat > 0 || Time.has_value(); }
};

/// A table of the side panel. A cell without a value is empty.
struct SideTable {
    struct Column {
        std::string Head;
        std::string Widest;  ///< what it has room for at least, so that it keeps its width
        bool Left = false;   ///< aligned to the left; numbers are to the right
    };
    struct Row {
        SideTarget To;
        std::vector<std::string> Cells;
    };
    std::string Title;
    std::vector<Column> Columns;
    std::vector<Row> Rows;
    int NameColumn = -1;  ///< the one that stands in the boat's livery, from 0; none where below 0
};

/// A picture of the side panel, as wide as its page.
struct SidePicture {
    std::string Title;
    double Height = 0.0;
    std::function<void(Canvas& page, const Bounds& place)> Draw;
    std::function<SideTarget(const Point& at, const Bounds& place)> TargetAt;  ///< none where empty
};

/// Lines of words, each broken where it is too long.
struct SideText {
    std::string Words;
};

using SideBlock = std::variant<SideTable, SidePicture, SideText>;
/// What a tab of the side panel shows, from the top down.
using SideBlocks = std::vector<SideBlock>;

/// How boats are told apart in the tables.
struct SideFocus {
    std::function<bool(int boat)> InFocus;
    int Chosen = 0;  ///< the boat that was clicked last
};

/// A page of blocks on a canvas, scrolled by pixels. Where only texts of its tables have changed since it
/// was drawn, no more than these are drawn anew, so that it may follow the film.
class SidePage {
  public:
    /// Draws what has changed; all of it where `whole` is set, or where other blocks stand there.
    void Show(Canvas& page, SideBlocks blocks, const SideFocus& focus, double scrolled, bool whole);

    double Height() const { return height_; }  ///< of all blocks, pixels; as Show found it
    /// What is at a point of the canvas.
    SideTarget TargetAt(const Point& at) const;
    /// The texts of all blocks, the cells of a table apart by tabs, lines ended by CR LF.
    std::string AsText() const;
    /// Where the picture of that number among the blocks (from 0) stands on the canvas; empty bounds where
    /// there is none.
    Bounds PlaceOf(std::size_t block) const;

  private:
    struct Placed {
        double Top = 0.0;  // on the page, unscrolled
        double Bottom = 0.0;
        std::vector<double> Rights;      // of a table's columns
        std::vector<std::string> Lines;  // of a text
    };
    bool SameShape(const SideBlocks& blocks) const;
    void Place(const Canvas& page);
    void PlaceTable(const Canvas& page, const SideTable& table, Placed& placed) const;
    void DrawAll(Canvas& page, const SideFocus& focus) const;
    void DrawChanges(Canvas& page, const SideBlocks& before, const SideFocus& focus) const;
    void DrawTitle(Canvas& page, double top, const std::string& title) const;
    void DrawHead(Canvas& page, const SideTable& table, const Placed& placed) const;
    void DrawTable(Canvas& page, const SideTable& table, const Placed& placed,
                   const SideFocus& focus) const;
    void DrawCell(Canvas& page, const SideTable& table, const Placed& placed, std::size_t row,
                  std::size_t column, const SideFocus& focus) const;
    double WidthOf(const Canvas& page, std::string_view cell) const;
    double RowTop(const SideTable& table, const Placed& placed, std::size_t row) const;

    SideBlocks blocks_;
    std::vector<Placed> placed_;
    mutable std::unordered_map<std::string, double> widths_;  // of cells, since all was placed
    double height_ = 0.0;
    double scrolled_ = 0.0;
    double width_ = 0.0;
};

}  // namespace keelview
