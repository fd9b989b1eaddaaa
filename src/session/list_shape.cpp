#include "session/list_shape.h"

#include <algorithm>

#include "base/numbers.h"

namespace keelview {

namespace {

constexpr double ClosestPitch = 12.0;  // the height of a box

int Share(int boats, int columns) {
    return (boats + columns - 1) / columns;
}

}  // namespace

ListShape FitList(int boats, double width, double height) {
    ListShape shape;
    boats = std::max(boats, 1);
    const double room = height - ListShape::HeadHeight - ListShape::FootHeight;
    const auto rowsAt = [room](double pitch) { return std::max(FloorToInt(room / pitch), 1); };
    const int most = std::max(FloorToInt(width / ListShape::ColumnWidth), 1);
    shape.Columns = std::clamp(Share(boats, rowsAt(shape.Pitch)), 1, most);
    const int wanted = Share(boats, shape.Columns);
    shape.Pitch = std::clamp<double>(FloorToInt(room / wanted), ClosestPitch, shape.Pitch);
    shape.RowsInColumn = std::min(wanted, rowsAt(shape.Pitch));
    shape.Rows = std::min(boats, shape.Columns * shape.RowsInColumn);
    shape.Scrolls = shape.Rows < boats;
    return shape;
}

}  // namespace keelview
