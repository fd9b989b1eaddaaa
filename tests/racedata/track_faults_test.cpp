#include "racedata/track_faults.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/temp_tree.h"

namespace keelview {
namespace {

/// A fix a second on the equator's side of the Sagami bay; a knot is 1/3600 of a minute a second.
Track North(const std::vector<double>& lats, const std::vector<int>& times = {}) {
    Track track;
    for (std::size_t i = 0; i < lats.size(); ++i) {
        track.TrackLat.Add(2117 + lats[i]);
        track.TrackLon.Add(8369);
        track.TrackTime.Add(times.empty() ? static_cast<int>(i) : times[i]);
    }
    return track;
}

TEST(TrackFaults, OneFixOutOfAllReachIsTakenOut) {
    struct Case {
        const char* name;
        std::vector<double> lats;
        std::vector<int> times;
        int dropped;
    };
    for (const Case& c : {
             Case{"99 knots", {0, 99 / 3600.0, 0}, {}, 0},
             Case{"101 knots", {0, 101 / 3600.0, 0}, {}, 1},
             Case{"a leap that stays", {0, 0, 1, 1, 1}, {}, 0},
             Case{"two together", {0, 0, 1, 1, 0, 0}, {}, 0},
             Case{"two apart", {0, 1, 0, -1, 0}, {}, 2},
             Case{"first and last", {1, 0, 0, 1}, {}, 0},
             Case{"far in an hour", {0, 50, 0}, {0, 3600, 7200}, 0},
             Case{"a clock that falls back", {0, 1, 0}, {5, 5, 4}, 0},
         }) {
        Track track = North(c.lats, c.times);
        EXPECT_EQ(DropImpossibleFixes(track), c.dropped) << c.name;
        EXPECT_EQ(track.Count(), static_cast<int>(c.lats.size()) - c.dropped) << c.name;
        EXPECT_EQ(track.TrackLat.Count() + track.TrackLon.Count(), 2 * track.Count()) << c.name;
    }
    // A degree of longitude is half as long at 60 degrees: 150 minutes of it in an hour are 75 knots.
    Track east;
    for (const int t : {0, 1, 2}) {
        east.TrackLat.Add(3600);
        east.TrackLon.Add(t == 1 ? 150 : 0);
        east.TrackTime.Add(t * 3600);
    }
    EXPECT_EQ(DropImpossibleFixes(east), 0);
}

TEST(TrackFaults, ATrackIsReadWithoutThemAndTellsHowMany) {
    const TempTree tree;
    std::string text;
    for (const char* place : {"N0000.0 E00000.0", "N3517.00 E13929.0", "N3517.01 E13929.0",
                              "N3617.0 E13929.0", "N3517.02 E13929.0", "N0000.0 E13929.0"})
        text += std::string("T ") + place + " 05/08/04 03:30:" + std::to_string(10 + text.size() / 46) +
                " 1\r\n";
    tree.Write("gpsdat/a.trk", text + std::string(600, '#'));
    RaceControl race;
    race.Boats.Add({"a.trk", "A"});
    Tracks tracks;
    TrackArea area;
    EarthScale scale;
    LoadAllTracks(tree.Root(), race, tracks, area, scale, {});
    EXPECT_EQ(tracks.Boats[1].SkippedFixes, 2);  // the first and the fourth; a last one is not judged
    ASSERT_EQ(tracks.Boats[1].Count(), 4);
    EXPECT_NEAR(tracks.Boats[1].TrackLat[3], 2117.02, 1e-9);
    EXPECT_NEAR(area.HomeCentreLat, 2117.02 / 2, 1e-9);  // the equator is a place like any other
}

}  // namespace
}  // namespace keelview
