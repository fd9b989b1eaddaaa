#include "session/list_shape.h"

#include <gtest/gtest.h>

#include <tuple>

namespace keelview {
namespace {

TEST(ListShape, AFleetTakesFurtherColumnsThenCloserRowsThenScrolls) {
    using Case = std::tuple<int, double, double, int, int, double, bool>;
    for (const auto& [boats, width, height, columns, rows, pitch, scrolls] :
         {Case{50, 265, 1024, 1, 50, 14, false}, Case{69, 265, 1024, 1, 69, 14, false},
          Case{75, 265, 1024, 1, 75, 12, false}, Case{200, 265, 1024, 1, 81, 12, true},
          Case{50, 800, 1080, 1, 50, 14, false}, Case{100, 800, 1080, 2, 50, 14, false},
          Case{200, 800, 1080, 3, 67, 14, false}, Case{200, 540, 1080, 2, 85, 12, true},
          Case{3, 10, 10, 1, 1, 12, true}}) {
        const ListShape shape = FitList(boats, width, height);
        EXPECT_TRUE(shape.Columns == columns && shape.RowsInColumn == rows && shape.Pitch == pitch &&
                    shape.Scrolls == scrolls)
            << boats << " in " << width << " x " << height << ": " << shape.Columns << " x "
            << shape.RowsInColumn << " of " << shape.Pitch;
        EXPECT_EQ(shape.RowTop(shape.Rows - 1) - shape.RowTop((columns - 1) * rows),
                  (shape.Rows - (columns - 1) * rows - 1) * pitch);
    }
}

}  // namespace
}  // namespace keelview
