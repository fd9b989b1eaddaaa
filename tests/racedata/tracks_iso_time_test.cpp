#include <gtest/gtest.h>

#include "racedata/tracks/iso_time.h"

namespace keelview {
namespace {

TEST(IsoTimes, AreReadWithAndWithoutZone) {
    constexpr UnixMs noon = 1'791'030'605'000;  // date -u -d 2026-10-03T12:30:05Z +%s
    struct {
        const char* Text;
        UnixMs Time;
        bool HasZone;
        std::optional<int> OffsetMin;
    } const rows[] = {
        {"2026-10-03T12:30:05Z", noon, true, {}},
        {" 2026-10-03t12:30:05.000z\r", noon, true, {}},
        {"2026-10-03 12:30:05", noon, false, {}},
        {"2026-10-03T21:30:05+09:00", noon, true, 540},
        {"2026-10-03T21:30:05 +0900", noon, true, 540},
        {"2026-10-03T07:00:05.25-0530", noon + 250, true, -330},
        {"2026-10-04T01:30:05+13", noon, true, 780},
        {"2026-10-03T12:30Z", noon - 5000, true, {}},
        {"2026-10-03T12:30:04.99951234567890123456789Z", noon, true, {}},  // to the nearest
        {"2026-10-03T12:30:05,1", noon + 100, false, {}},
        {"1969-12-31T23:59:60Z", 0, true, {}},  // a leap second
        {"1970-01-01T00:00:00.001+00:00", 1, true, 0},
        {"2080-02-29T00:00:00Z", 3'476'390'400'000, true, {}},
        {"0001-01-01T00:00:00Z", -62'135'596'800'000, true, {}},
    };
    for (const auto& row : rows) {
        const auto time = ParseIsoTime(row.Text);
        ASSERT_TRUE(time) << row.Text;
        EXPECT_EQ(time->Time, row.Time) << row.Text;
        EXPECT_EQ(time->HasZone, row.HasZone) << row.Text;
        EXPECT_EQ(time->OffsetMin, row.OffsetMin) << row.Text;
    }
}

}  // namespace
}  // namespace keelview
