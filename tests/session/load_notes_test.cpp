#include "session/load_notes.h"

#include <gtest/gtest.h>

namespace keelview {
namespace {

TEST(LoadNotes, EachThingThatIsAmissIsToldOnceAndLongListsAreCutShort) {
    RaceNumbers numbers;
    EXPECT_EQ(LoadNotes(numbers, true), "");
    const auto away = [&numbers](const std::string& file) {
        AbsentBoat& boat = (numbers.race.AbsentBoats.Add({}), numbers.race.AbsentBoats.Last());
        boat.Entry.BoatFile = file;
    };
    away("a.trk");
    EXPECT_EQ(LoadNotes(numbers, true),
              "GPS file -- a.trk -- could not be found\r\nThis boat will be ignored");
    away("b.trk");
    EXPECT_EQ(LoadNotes(numbers, false),
              "GPSfile -- a.trk, b.trk -- はありませんでした。\r\nこの艇を無視して表示します。");
    for (const char* file : {"late.gpx", "old.vtk", "older.vtk"}) {
        numbers.race.Boats.Add({file, {}});
        numbers.tracks.Boats.Add({});
        numbers.tracks.Boats.Last().Refused = file[0] == 'l' ? Refusal::None : Refusal::Velocitek;
    }
    numbers.race.Start = RaceTime("soon");
    const std::string told = LoadNotes(numbers, true);
    EXPECT_NE(told.find("ignored\r\n\r\nGPS file -- old.vtk, older.vtk -- "), std::string::npos) << told;
    EXPECT_NE(told.find("\r\n\r\nStart -- ST, soon -- is no date"), std::string::npos) << told;
    for (int boat = 3; boat <= 60; ++boat) away("x");
    EXPECT_NE(LoadNotes(numbers, true).find("x, ... (60) -- "), std::string::npos);
}

}  // namespace
}  // namespace keelview
