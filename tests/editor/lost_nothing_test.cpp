// What the race control editor keeps that nobody told it to give up.

#include <gtest/gtest.h>

#include <string>

#include "editor/race_draft.h"
#include "racedata/race_file.h"
#include "support/race_tree.h"

namespace keelview {
namespace {

TEST(DraftLosesNothing, TimesSetByHandStayWithTheirBoats) {
    RaceControl draft;
    for (const char* name : {"A", "B", "C"}) draft.Boats.Add({std::string(name) + ".trk", name});
    draft.CourseOrder = {"L1"};
    draft.HandPasses = {{1, 1, 100}, {2, 1, 200}, {3, 1, {}}};
    RemoveBoat(draft, 2);
    ASSERT_EQ(draft.HandPasses.Count(), 2);
    EXPECT_EQ(draft.HandPasses[1].Seconds, 100);
    EXPECT_EQ(draft.HandPasses[2].BoatNumber, 2);  // C, which moved up
    EXPECT_FALSE(draft.HandPasses[2].Seconds);
}

}  // namespace
}  // namespace keelview
