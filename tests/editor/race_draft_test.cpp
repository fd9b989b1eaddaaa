#include "editor/race_draft.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "editor/track_files.h"
#include "racedata/race_file.h"
#include "support/race_tree.h"

namespace keelview {
namespace {

/// In the order of the form: titles, start and finish, zone, wind, length, variation, laylines, minutes.
DraftFields GoodFields() {
    return {
        "Cup, day 2", "第2レース", " 2004/8/5 12:30:00 ", "2004/8/5 13:50", "9", "210", "4.7 m", "-7", "45",
        "",           "2.6"};
}

TEST(RaceDraft, FieldsAreTakenAsTyped) {
    RaceControl race;
    EXPECT_FALSE(TakeFields(GoodFields(), true, race));
    EXPECT_EQ(race.RaceTitle1 + "/" + race.Start.Typed(), "Cup, day 2/2004/8/5 12:30:00");
    EXPECT_TRUE(race.TimeDiff == 9 && race.BoatLength == 4.7 && race.LayLineDown == 0);
    EXPECT_EQ(PreStartSeconds(race), 156);
    DraftFields fields = GoodFields();
    fields.TimeDiff = "5.75";
    EXPECT_FALSE(TakeFields(fields, true, race));
    EXPECT_EQ(race.TimeDiff, 5.75);
}

TEST(RaceDraft, AFieldThatIsWrongIsNamedAndNothingIsTaken) {
    using Fields = DraftFields;
    const std::string start = "Incorrect start date or time";
    using Case = std::tuple<std::string DraftFields::*, std::string, std::string>;
    for (const auto& [field, typed, wanted] :
         {Case{&Fields::Start, "", start}, Case{&Fields::Start, "2004/8/5 12:30:00 or so", start},
          Case{&Fields::Start, "20040805123000", start},
          Case{&Fields::Finish, "2004/8", "Incorrect finish date or time"},
          Case{&Fields::Finish, "2004/8/5 12:30:00", "The finish must be after the start"},
          Case{&Fields::TimeDiff, "", "Time Diff"}, Case{&Fields::TimeDiff, "25", "Time Diff"},
          Case{&Fields::TimeDiff, "5.7", "Time Diff"}, Case{&Fields::TimeDiff, "5:30", "Time Diff"},
          Case{&Fields::WindDirection, "1e300", "Wind Direction"},
          Case{&Fields::BoatLength, "４．７", "LOA"}, Case{&Fields::BoatLength, "-4.7", "LOA"},
          Case{&Fields::MagVariation, "-x", "Mag Variation"},
          Case{&Fields::LayLineUp, "steep", "LayLine <UP>"},
          Case{&Fields::PreStartMinutes, "99999", "Pre Start Time"}}) {
        DraftFields fields = GoodFields();
        fields.*field = typed;
        RaceControl race;
        const auto said = TakeFields(fields, true, race);
        EXPECT_NE(said.value_or("").find(wanted), std::string::npos) << typed << said.value_or("");
        EXPECT_TRUE(race.RaceTitle1.empty());
    }
    DraftFields fields = GoodFields();
    fields.PreStartMinutes = "x";
    RaceControl race;
    EXPECT_EQ(TakeFields(fields, false, race), "数値が正しくありません : スタート前の表示時間 (0 ～ 1440)");
}

TEST(RaceDraft, TheFirstTrackGivesZoneStartAndFinish) {
    RaceTree tree;
    tree.Boat("a.trk", 35 * 60, 139.75 * 60, 0.001, 0, -300, 900);
    tree.Boat("west.trk", 35 * 60, 0, 0.001, 0, -300, 900);
    RaceControl race;
    Refusal why = Refusal::None;
    for (const char* file : {"a.trk", "west.trk"}) {  // what is given stays
        ProposeTimes(ReadFirstTrackTimes(tree.Root(), file, why), race);
        EXPECT_EQ(race.Start.Typed() + " " + race.Finish.Typed(),
                  "2004/08/05 12:29:00 2004/08/05 12:45:00");
        EXPECT_EQ(race.TimeDiff, 9);
    }
    for (const auto& [degrees, hours] :  // zones are fifteen degrees wide
         {std::pair{7.4, 0}, {7.5, 1}, {-7.5, 0}, {-70.0, -5}, {180.0, 12}}) {
        RaceControl other;
        ProposeTimes(TrackTimes{.FirstLongitude = degrees * 60}, other);
        EXPECT_EQ(other.TimeDiff, hours) << degrees;
        other.TimeDiff = 0;  // said, so that the longitude has no say
        ProposeTimes(TrackTimes{.FirstLongitude = 139 * 60}, other);
        EXPECT_EQ(other.TimeDiff, 0);
    }
    EXPECT_EQ(NewDraft(0).TimeDiff, std::nullopt);
}

TEST(RaceDraft, ADraftIsEmptyOrOpenedWithItsBoatsAndCoastCells) {
    RaceControl draft = NewDraft(-5);
    EXPECT_TRUE(draft.TimeDiff == -5 && draft.MagVariation == 0 && draft.BoatLength == 4.7);
    RaceTree tree;
    tree.Race("R1.txt", "BN, gone.trk, Ghost\r\nMAP, 5339\r\nMAP, 5239\r\n");
    ASSERT_TRUE(OpenDraft(tree.Root(), "R1.txt", draft));
    EXPECT_TRUE(draft.Boats.Count() == 1 && draft.MapFile.Count() == 2 && draft.MapFile[2] == "5239");
    tree.Write("raceadmin/notes.txt", "Dear all,\r\nthe race is off\r\n");
    tree.Write("raceadmin/binary.txt", std::string("T1, Cup\r\n\0", 10));
    for (const char* none : {"R2.txt", "notes.txt", "binary.txt"})
        EXPECT_FALSE(OpenDraft(tree.Root(), none, draft)) << none;
    EXPECT_EQ(draft.RaceFileName, "R1.txt");
    for (const char* name : {"R1.txt", "r1.TXT", ".x.txt"}) EXPECT_TRUE(IsRaceFileName(name)) << name;
    for (const char* name : {"Ver.00", "racefile.st", ".txt", "R1.txt.bak"})
        EXPECT_FALSE(IsRaceFileName(name)) << name;
}

TEST(RaceDraft, TimesSetByHandStayWithTheirBoats) {
    const auto setFor = [](const RaceControl& draft) {
        std::string boats;
        for (const HandPass& pass : draft.HandPasses)
            boats += draft.Boats[pass.BoatNumber].BoatName + NumberText(*pass.Seconds) + " ";
        return boats;
    };
    RaceControl race;
    for (const char* name : {"A", "B", "C", "D"}) race.Boats.Add({std::string(name) + ".trk", name});
    race.HandPasses = {{1, 1, 1}, {2, 1, 2}, {3, 1, 3}, {4, 1, 4}};
    for (const auto& [from, to, wanted] :
         {std::tuple{1, 3, "B2 C3 A1 D4 "}, {4, 2, "A1 D4 B2 C3 "}, {2, 2, "A1 B2 C3 D4 "}}) {
        RaceControl draft = race;
        MoveBoat(draft, from, to);
        EXPECT_EQ(setFor(draft), wanted);
    }
    RemoveBoat(race, 2);
    EXPECT_EQ(setFor(race), "A1 C3 D4 ");
    RaceControl other;
    other.CourseOrder = {"L1", "MK1"};
    TakeCourse(other, race);  // on another course they mean nothing
    EXPECT_TRUE(race.CourseOrder.Count() == 2 && race.HandPasses.Empty() && race.Boats.Count() == 3);
}

TEST(TrackFiles, AFileIsBroughtOnceAndReplacesNone) {
    RaceTree tree;
    tree.Boat("a.trk", RaceTree::Lat, RaceTree::Lon, 0.001, 0, 0, 30);
    tree.Boat("b.trk", RaceTree::Lat, RaceTree::Lon, 0.002, 0, 0, 30);
    tree.Write("stick/other.trk", tree.Read("gpsdat/b.trk"));
    tree.Write("stick/A.TRK", tree.Read("gpsdat/b.trk"));
    tree.Write("stick/photo.jpg", std::string(3000, '\xd8'));
    tree.Write("stick/fleet.csv",
               "Time,Lat,Lon,Boat\n2024-01-01T00:00:00Z,35,139,Alcyone\n"
               "2024-01-01T00:00:01Z,35,139,Alcyone\n"
               "2024-01-01T00:00:00Z,35,139,Bora\n2024-01-01T00:00:01Z,35,139,Bora\n");
    const auto boats = [&](const std::string& file) {
        std::string text;
        for (const BoatEntry& boat : BringTracks(tree.Root(), tree.Root() / file).Boats)
            text += boat.BoatName + "=" + boat.BoatFile + " ";
        return text;
    };
    using Case = std::pair<const char*, const char*>;
    for (const auto& [file, wanted] :
         {Case{"gpsdat/a.trk", "a=a.trk "}, Case{"stick/other.trk", "other=other.trk "},
          Case{"stick/A.TRK", "A=A 2.TRK "}, Case{"stick/A.TRK", "A=A 2.TRK "}, Case{"stick/photo.jpg", ""},
          Case{"stick/gone", ""}, Case{"stick/fleet.csv", "Alcyone=fleet.csv#1 Bora=fleet.csv#2 "}})
        EXPECT_EQ(boats(file), wanted);
    EXPECT_EQ(tree.Files(tree.Root() / "gpsdat"), "A 2.TRK a.trk b.trk fleet.csv other.trk ");
}

}  // namespace
}  // namespace keelview
