#include "editor/race_draft.h"

#include <gtest/gtest.h>

#include <string>

#include "racedata/race_file.h"
#include "support/race_tree.h"

namespace keelview {
namespace {

DraftFields GoodFields() {
    return {.Title1 = "Cup, day 2",
            .Title2 = "第2レース",
            .Start = " 2004/8/5 12:30:00 ",
            .Finish = "2004/8/5 13:50",
            .TimeDiff = "9",
            .WindDirection = "210",
            .BoatLength = "4.7 m",
            .MagVariation = "-7",
            .LayLineUp = "45",
            .LayLineDown = "",
            .PreStartMinutes = "2.6"};
}

TEST(RaceDraft, FieldsAreTakenAsTyped) {
    RaceControl race;
    EXPECT_FALSE(TakeFields(GoodFields(), true, race));
    EXPECT_EQ(race.RaceTitle1, "Cup, day 2");
    EXPECT_EQ(race.StartTimeText, "2004/8/5 12:30:00");
    EXPECT_EQ(race.TimeDiff, 9);
    EXPECT_EQ(race.BoatLength, 4.7);
    EXPECT_EQ(race.LayLineDown, 0);
    EXPECT_EQ(race.PreStartSeconds, 156);
}

TEST(RaceDraft, AFieldThatIsWrongIsNamedAndNothingIsTaken) {
    struct Case {
        std::string DraftFields::*Field;
        std::string Typed;
        std::string Said;
    };
    const std::string start = "Incorrect start date or time";
    const std::string finish = "Incorrect finish date or time";
    const Case cases[] = {
        {&DraftFields::Start, "", start},
        {&DraftFields::Start, "noon", start},
        {&DraftFields::Start, "2004/13/5 12:30:00", start},
        {&DraftFields::Start, "2004/2/30 12:30:00", start},
        {&DraftFields::Start, "2004/8/5 25:00:00", start},
        {&DraftFields::Start, "2004/8/5 12:30:00 or so", start},
        {&DraftFields::Start, "20040805123000", start},
        {&DraftFields::Finish, "2004/8", finish},
        {&DraftFields::Finish, "2004/8/5 12:30:00", "The finish must be after the start"},
        {&DraftFields::TimeDiff, "", "Time Diff"},
        {&DraftFields::TimeDiff, "-", "Time Diff"},
        {&DraftFields::TimeDiff, "25", "Time Diff"},
        {&DraftFields::WindDirection, "SW", "Wind Direction"},
        {&DraftFields::WindDirection, "1e300", "Wind Direction"},
        {&DraftFields::BoatLength, "４．７", "LOA"},
        {&DraftFields::BoatLength, "-4.7", "LOA"},
        {&DraftFields::MagVariation, "-x", "Mag Variation"},
        {&DraftFields::LayLineUp, "steep", "LayLine <UP>"},
        {&DraftFields::PreStartMinutes, "three", "Pre Start Time"},
        {&DraftFields::PreStartMinutes, "99999", "Pre Start Time"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.Said + ": " + each.Typed);
        DraftFields fields = GoodFields();
        fields.*each.Field = each.Typed;
        RaceControl race;
        const auto said = TakeFields(fields, true, race);
        ASSERT_TRUE(said);
        EXPECT_NE(said->find(each.Said), std::string::npos) << *said;
        EXPECT_TRUE(race.RaceTitle1.empty());
    }
    DraftFields fields = GoodFields();
    fields.PreStartMinutes = "x";
    RaceControl race;
    EXPECT_EQ(TakeFields(fields, false, race), "数値が正しくありません : スタート前の表示時間 (0 ～ 1440)");
}

TEST(RaceDraft, BoatsAndAttachmentsEndAtTheirLimits) {
    RaceControl race;
    for (int boat = 1; boat <= MaxBoats; ++boat)
        EXPECT_TRUE(AddBoat(race, std::to_string(boat) + ".trk", ProposedBoatName(race)));
    EXPECT_FALSE(AddBoat(race, "51.trk", "late"));
    EXPECT_EQ(race.BoatName[50], "BOAT50");
    for (const int nobody : {0, -1, 51}) RemoveBoat(race, nobody);
    RemoveBoat(race, 50);
    RemoveBoat(race, 1);
    EXPECT_EQ(race.BoatCount, 48);
    EXPECT_EQ(race.BoatFile[1], "2.trk");
    EXPECT_EQ(race.BoatName[48], "BOAT49");
    for (int file = 1; file <= MaxAttachments; ++file) EXPECT_TRUE(AddAttachment(race, "a.pdf"));
    EXPECT_FALSE(AddAttachment(race, "b.pdf"));
}

TEST(RaceDraft, TheFirstTrackGivesZoneStartAndFinish) {
    RaceTree tree;
    tree.Boat("a.trk", 35 * 60, 139.75 * 60, 0.001, 0, -300, 900);
    tree.Boat("west.trk", 35 * 60, 0, 0.001, 0, -300, 900);
    RaceControl race;
    ProposeTimes(ReadFirstTrackTimes(tree.Root(), "a.trk"), race);
    EXPECT_EQ(race.TimeDiff, 9);
    EXPECT_EQ(race.StartTimeText, "2004/08/05 12:29:00");
    EXPECT_EQ(race.FinishTimeText, "2004/08/05 12:45:00");
    race.TimeDiff = 5;  // what is given stays
    ProposeTimes(ReadFirstTrackTimes(tree.Root(), "west.trk"), race);
    EXPECT_EQ(race.TimeDiff, 5);
    EXPECT_EQ(race.StartTimeText, "2004/08/05 12:29:00");
}

TEST(RaceDraft, ZonesAreFifteenDegreesWide) {
    for (const auto& [degrees, hours] :
         {std::pair{139.75, 9}, {0.0, 0}, {7.4, 0}, {7.5, 1}, {-7.5, 0}, {-70.0, -5}, {180.0, 12}})
        EXPECT_EQ(TimeZoneOfLongitude(degrees * 60), hours) << degrees;
}

TEST(RaceDraft, FilesThatAreNoTrackGiveNoTimes) {
    RaceTree tree;
    tree.Write("gpsdat/empty.trk", "");
    tree.Write("gpsdat/small.trk", "T N3530.0 E13930.0 05/08/04 03:30:00 1\r\n");
    tree.Write("gpsdat/text.trk", std::string(2000, 'x'));
    tree.Write("gpsdat/zeros.trk", std::string(2000, '\0'));
    tree.Boat("photo.jpg", 35 * 60, 139 * 60, 0.001, 0, 0, 100);
    for (const char* name :
         {"empty.trk", "small.trk", "text.trk", "zeros.trk", "photo.jpg", "gone.trk", ""})
        EXPECT_FALSE(ReadFirstTrackTimes(tree.Root(), name)) << name;
}

TEST(RaceDraft, NamesThatABoatLineCannotHold) {
    for (const char* good : {"a.trk", "my boat.trk", "艇 \"1\".trk"})
        EXPECT_TRUE(FitsBoatLine(good)) << good;
    for (const char* bad : {"", "a,b.trk", " a.trk", "a.trk ", "../a.trk", "x\\a.trk"})
        EXPECT_FALSE(FitsBoatLine(bad)) << bad;
}

TEST(RaceDraft, ANewDraftKeepsWhatWasSetOnTheWater) {
    RaceControl last;
    last.RaceFileName = "R1.txt";
    last.StartTimeText = "2004/8/5 12:30:00";
    last.RaceTitle1 = "Cup";
    last.MarkCount = 2;
    last.BoatCount = 3;
    const RaceControl draft = NewDraft(last, -5);
    EXPECT_TRUE(draft.RaceFileName.empty());
    EXPECT_TRUE(draft.StartTimeText.empty());
    EXPECT_EQ(draft.BoatCount, 0);
    EXPECT_EQ(draft.MarkCount, 2);
    EXPECT_EQ(draft.RaceTitle1, "Cup");
    EXPECT_EQ(draft.TimeDiff, -5);
    EXPECT_EQ(draft.MagVariation, -7);
}

TEST(RaceDraft, AnOpenedFileKeepsItsBoatsAndCoastCells) {
    RaceTree tree;
    tree.Race("R1.txt", "BN, gone.trk, Ghost\r\nMAP, 5339\r\nMAP, 5239\r\n");
    RaceControl draft = NewDraft({}, 9);
    ASSERT_TRUE(OpenDraft(tree.Root(), "R1.txt", draft));
    EXPECT_EQ(draft.BoatCount, 1);
    ASSERT_EQ(draft.MapCount, 2);
    EXPECT_EQ(draft.MapFile[2], "5239");
    EXPECT_FALSE(OpenDraft(tree.Root(), "R2.txt", draft));
    EXPECT_EQ(draft.RaceFileName, "R1.txt");
    EXPECT_EQ(draft.BoatCount, 1);
}

}  // namespace
}  // namespace keelview
