#pragma once

namespace keelview {

/// Rows and columns of the boat list, and their places. Rows count from 0, down the first column and then
/// down the next one; places are pixels of the list.
struct ListShape {
    static constexpr double ColumnWidth = 265.0;  ///< of a list without a scroll bar
    static constexpr double HeadHeight = 39.0;    ///< above the rows: the clock and the titles
    static constexpr double FootHeight = 11.0;
    static constexpr double BarWidth = 15.0;

    int Columns = 1;
    int RowsInColumn = 1;
    int Rows = 1;         ///< altogether; fewer than there are boats where the list scrolls
    double Pitch = 14.0;  ///< from row to row
    bool Scrolls = false;

    double Width() const { return Columns * ColumnWidth; }
    double Height() const { return RowsInColumn * Pitch + HeadHeight + FootHeight; }
    /// Width of a column; the scroll bar takes its own from all of them.
    double RowWidth() const { return (Width() - (Scrolls ? BarWidth : 0.0)) / Columns; }
    int ColumnOf(int row) const { return row / RowsInColumn; }
    double RowLeft(int row) const { return ColumnOf(row) * RowWidth(); }
    double RowTop(int row) const { return (row - ColumnOf(row) * RowsInColumn) * Pitch + HeadHeight; }
};

/// The shape for so many boats in a room of that size, pixels: one column where it holds them, as many as
/// there is room for where not, then closer rows; what still has no place is scrolled to.
ListShape FitList(int boats, double width, double height);

}  // namespace keelview
