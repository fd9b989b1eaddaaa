#include "editor/race_draft.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

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
    }
}

TEST(RaceDraft, FilesThatAreNoTrackGiveNoTimes) {
    RaceTree tree;
    tree.Write("gpsdat/small.trk", "T N3530.0 E13930.0 05/08/04 03:30:00 1\r\n");
    tree.Write("gpsdat/text.trk", std::string(2000, 'x'));
    tree.Write("gpsdat/zeros.trk", std::string(2000, '\0'));
    for (const auto& [name, reason] : {std::pair{"small.trk", Refusal::NoFixes},
                                       {"text.trk", Refusal::Unknown},
                                       {"zeros.trk", Refusal::Unknown},
                                       {"gone.trk", Refusal::Missing},
                                       {"", Refusal::Missing}}) {
        Refusal why = Refusal::None;
        EXPECT_FALSE(ReadFirstTrackTimes(tree.Root(), name, why)) << name;
        EXPECT_EQ(why, reason) << name;
    }
}

TEST(RaceDraft, NamesThatABoatLineCannotHold) {
    for (const char* good : {"a.trk", "my boat.trk", "艇 \"1\".trk"})
        EXPECT_TRUE(FitsBoatLine(good)) << good;
    for (const char* bad : {"", "a,b.trk", " a.trk", "a.trk ", "../a.trk", "x\\a.trk"})
        EXPECT_FALSE(FitsBoatLine(bad)) << bad;
}

TEST(RaceDraft, ADraftIsNewButForWhatWasSetOnTheWaterOrOpenedWithItsBoatsAndCoastCells) {
    RaceControl last;
    last.RaceFileName = "R1.txt";
    last.Start = RaceTime("2004/8/5 12:30:00");
    last.RaceTitle1 = "Cup";
    last.Marks.Resize(2);
    last.Boats.Resize(3);
    RaceControl draft = NewDraft(last, -5);
    EXPECT_TRUE(draft.RaceFileName.empty() && draft.Start.Empty() && draft.Boats.Empty());
    EXPECT_TRUE(draft.Marks.Count() == 2 && draft.TimeDiff == -5 && draft.MagVariation == -7);
    EXPECT_EQ(draft.RaceTitle1, "Cup");
    RaceTree tree;
    tree.Race("R1.txt", "BN, gone.trk, Ghost\r\nMAP, 5339\r\nMAP, 5239\r\n");
    ASSERT_TRUE(OpenDraft(tree.Root(), "R1.txt", draft));
    EXPECT_TRUE(draft.Boats.Count() == 1 && draft.MapFile.Count() == 2 && draft.MapFile[2] == "5239");
    EXPECT_FALSE(OpenDraft(tree.Root(), "R2.txt", draft));
    EXPECT_EQ(draft.RaceFileName, "R1.txt");
}

}  // namespace
}  // namespace keelview
