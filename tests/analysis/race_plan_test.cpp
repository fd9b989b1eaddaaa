#include "analysis/race_plan.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <map>

#include "analysis/plan_names.h"
#include "analysis/race_numbers.h"
#include "analysis/race_plan_writing.h"
#include "base/files.h"
#include "support/sailed_race.h"

namespace keelview {
namespace {

using Fixes = std::vector<SailedRace::Fix>;

/// A track as a file of lines, its clock so many seconds fast.
std::string Lines(const Fixes& fixes, int fast = 0) {
    std::string text;
    for (const SailedRace::Fix& fix : fixes)
        text += RaceTree::TrackLine(fix.At, RaceTree::Start + fix.Second + fast);
    return text;
}

/// The same as GPX, called as trackers call all of theirs.
std::string Gpx(const Fixes& fixes) {
    std::string text = "<gpx><trk><name>Sailing</name><trkseg>";
    for (const SailedRace::Fix& fix : fixes) {
        std::string time = DateTimeText(RaceTree::Start + fix.Second - 9 * 3600);
        std::ranges::replace(time, '/', '-');
        std::ranges::replace(time, ' ', 'T');
        text += "<trkpt lat=\"" + NumberText(fix.At.Lat / 60) + "\" lon=\"" + NumberText(fix.At.Lon / 60) +
                "\"><time>" + time + "Z</time></trkpt>";
    }
    return text + "</trkseg></trk></gpx>";
}

Fixes Moved(Fixes fixes, double north) {
    for (SailedRace::Fix& fix : fixes) fix.At.Lat += north;
    return fixes;
}

Fixes Piece(const Fixes& fixes, int from, int to) {
    return {fixes.begin() + from, fixes.begin() + std::min<std::ptrdiff_t>(to, std::ssize(fixes))};
}

/// Files by their names, as they are handed in.
using Heap = std::map<std::string, std::string>;

std::vector<FoundFile> Found(const Heap& heap) {
    std::vector<FoundFile> files;
    for (const auto& [name, bytes] : heap) files.push_back(FindTracks(name, bytes));
    return files;
}

/// Each boat by its name with its recording, where it lies to the fleet, and the clock that is proposed;
/// then the files that are not used.
std::string Told(const RacePlan& plan) {
    static constexpr std::array<const char*, 5> reasons{"", " time", " place", " short", " many"};
    std::string text;
    for (const PlannedBoat& boat : plan.Boats) {
        text += boat.Name + "=" + BoatFileOf(plan, boat) + reasons[static_cast<std::size_t>(boat.Lies.Why)];
        if (boat.Lies.Away != 0) text += WholeText(boat.Lies.Away);
        if (boat.ProposedClock) text += " clock" + WholeText(*boat.ProposedClock);
        EXPECT_TRUE(boat.Taken == (boat.Lies.Why == LeftOut::No) && boat.ClockOffset == 0) << boat.Name;
        text += "\n";
    }
    for (const UnusedFile& file : plan.Unused)
        text += file.Name + "~" +
                (file.SameAs.empty() ? std::to_string(static_cast<int>(file.Why)) : file.SameAs) + "\n";
    return text;
}

TEST(RacePlan, AHeapOfFilesIsAFleetAndWhatDoesNotBelongToIt) {
    const SailedRace race(7, 6);
    const Heap heap{{"cup/Cup_A.trk", Lines(race.Boats[0])},
                    {"cup/Cup_B.trk", Lines(race.Boats[1])},
                    {"cup/Cup_C.gpx", Gpx(race.Boats[2])},
                    {"cup/Cup_D.trk", Lines(race.Boats[3])},
                    {"cup/Cup_G.trk", Lines(Moved(race.Boats[4], 30))},
                    {"cup/Cup_H.trk", Lines(race.Boats[4], 86400)},
                    {"cup/Cup_I.trk", Lines(Piece(race.Boats[5], 300, 340))},
                    // Twins: the same bytes, another format, and a piece of it.
                    {"copy/Cup_A.trk", Lines(race.Boats[0])},
                    {"cup/Cup_B.gpx", Gpx(race.Boats[1])},
                    {"part.trk", Lines(Piece(race.Boats[0], 300, 1500))},
                    {"IMG_1.JPG", "\xFF\xD8\xFF" + std::string(2000, '\xE0')},
                    {"old.vtk", "VTK" + std::string(600, 'x')}};
    std::vector<FoundFile> files = Found(heap);
    const RacePlan plan = PlanRace(files);
    EXPECT_EQ(Told(plan),
              "A=Cup_A.trk\nB=Cup_B.gpx\nC=Cup_C.gpx\nD=Cup_D.trk\nG=Cup_G.trk place29\n"
              "H=Cup_H.trk time84587\nI=Cup_I.trk short\n"
              "IMG_1.JPG~2\nold.vtk~3\ncup/Cup_A.trk~copy/Cup_A.trk\ncup/Cup_B.trk~cup/Cup_B.gpx\n"
              "part.trk~copy/Cup_A.trk\n");
    EXPECT_EQ(plan.TimeDiff, 9);
    EXPECT_EQ(plan.Title, "Cup 2004/08/05");
    EXPECT_EQ(plan.RaceFileName, "Cup 2004-08-05.txt");
    std::ranges::reverse(files);
    EXPECT_EQ(Told(PlanRace(files)), Told(plan));
}

/// Boats of one class: near each other, and one of them a tenth slower.
std::vector<Fixes> OneClass() {
    std::vector<Fixes> boats;
    const SailedRace::Fix first = SailedRace(3, 1).Boats[0].front();
    for (int boat = 0; boat < 5; ++boat) {
        const Fixes way = SailedRace(3, 1).Boats[0];
        Fixes fixes;
        for (int second = first.Second; second < 2400; ++second) {
            const double share = boat == 4 ? 0.9 : 1 - 0.01 * boat;
            const auto at = static_cast<std::size_t>((second - first.Second) * share);
            if (at >= way.size()) break;
            fixes.push_back({second, {way[at].At.Lat + 0.02 * boat, way[at].At.Lon + 0.03 * boat}});
        }
        boats.push_back(fixes);
    }
    return boats;
}

TEST(RacePlan, AClockThatIsWrongIsSeenAndASlowBoatIsNone) {
    const std::vector<Fixes> boats = OneClass();
    for (const int fast : {0, 180, -240, 3600, -9 * 3600}) {
        SCOPED_TRACE(fast);
        Heap heap;
        for (std::size_t boat = 0; boat < boats.size(); ++boat)
            heap["B" + std::to_string(boat) + ".trk"] = Lines(boats[boat], boat == 1 ? fast : 0);
        RacePlan plan = PlanRace(Found(heap));
        for (std::size_t boat = 0; boat < boats.size(); ++boat) {
            const auto& clock = plan.Boats[boat].ProposedClock;
            ASSERT_EQ(clock.has_value(), boat == 1 && fast != 0) << boat;
            EXPECT_NEAR(clock.value_or(-fast), -fast, 30);
        }
        EXPECT_EQ(plan.Boats[1].Taken, std::abs(fast) < 2000);
    }
    // Of two nobody can tell who is right.
    for (const PlannedBoat& boat :
         PlanRace(Found({{"a.trk", Lines(boats[0])}, {"b.trk", Lines(boats[1], 600)}})).Boats)
        EXPECT_FALSE(boat.ProposedClock);
}

TEST(RacePlan, BoatsAndFilesAreCalledByWhatTellsThemApart) {
    const auto file = [](std::string name, const std::vector<std::string>& boats) {
        FoundFile found{.Name = std::move(name), .Source = {}, .Format = "GPX", .Tracks = {}, .Hints = {}};
        for (const std::string& boat : boats) {
            FoundTrack track;
            track.Boat = boat;
            track.Number = static_cast<int>(found.Tracks.size()) + 1;
            track.Alone = boats.size() == 1;
            found.Tracks.push_back(track);
        }
        return found;
    };
    const std::vector<std::pair<std::vector<FoundFile>, std::vector<std::string>>> cases{
        {{file("x/2025-06-21-ESP1-P02.gpx", {"Vela"}),
          file("x/2025-06-21-ESP2-P02.gpx.gz", {"2025-06-21 P02"})},
         {"ESP1", "ESP2"}},
        {{file("1.gpx", {"Alcyone"}), file("2.gpx", {"Bounty"})}, {"Alcyone", "Bounty"}},
        {{file("GER 7.gpx", {"Vela"})}, {"GER 7"}},
        {{file("1.gpx", {"Sailing"}), file("2.gpx", {"Sailing"})}, {"1", "2"}},
        {{file("Al/track.gpx", {""}), file("Bo/track.gpx", {""})}, {"Al", "Bo"}},
        {{file("fleet.gpx", {"", "Bo", "bo"})}, {"fleet 1", "Bo", "bo (2)"}},
    };
    for (const auto& [files, names] : cases) EXPECT_EQ(BoatNames(files), names);
    EXPECT_EQ(TargetNames({file("Al/track.gpx", {}), file("Bo/Track.gpx", {}), file("a,b#1 .gpx", {}),
                           file("b/a_b_1 .gpx", {}), file("a_b_1 .gpx", {})}),
              (std::vector<std::string>{"track.gpx", "Bo-Track.gpx", "a_b_1 .gpx", "b-a_b_1 .gpx",
                                        "a_b_1  (2).gpx"}));
    for (const auto& [text, name] :
         {std::pair{"../x", ".._x"}, {" .a. ", "_a"}, {"", "race"}, {"春/杯", "春_杯"}})
        EXPECT_EQ(SafeFileName(text), std::string(name) == ".._x" ? "_._x" : name);
}

TEST(RacePlan, TheFilesHintsGiveStartLineMarksAndZone) {
    const SailedRace race(7, 3);
    std::vector<FoundFile> files = Found({{"a.trk", Lines(race.Boats[0])},
                                          {"b.trk", Lines(race.Boats[1])},
                                          {"c.trk", Lines(race.Boats[2])}});
    const auto place = [](double north) {
        return NamedPlace{"M", (RaceTree::Lat + north) / 60, RaceTree::Lon / 60};
    };
    files[0].Hints.Gun = (RaceTree::Start - 9 * 3600 + 2) * 1000;
    files[1].Hints.Gun = *files[0].Hints.Gun - 86'400'000;  // another day's
    files[1].Hints.Marks = {place(0.5), place(0.501), place(40), place(-0.5)};
    files[2].Hints.LinePin = place(0);
    files[2].Hints.LineBoat = place(0.1);
    files[2].Hints.ZoneHours = 9.5;
    RacePlan plan = PlanRace(files);
    EXPECT_EQ(DateTimeText(plan.Start.value_or(0)), "2004/08/05 13:00:02");
    EXPECT_EQ(plan.Marks.Count(), 2);
    ASSERT_EQ(plan.StartLine.Count(), 1);
    EXPECT_NEAR(plan.StartLine[1].LineLat2, RaceTree::Lat + 0.1, 1e-6);
    MoveClock(plan, 9);
    EXPECT_EQ(DateTimeText(*PlannedRace(plan).Start.At()), "2004/08/05 12:30:02");
    plan.Boats[0].Taken = plan.Boats[2].Taken = false;
    SettleCourseAndTimes(plan);
    EXPECT_TRUE(!plan.Start && plan.StartLine.Empty() && plan.Marks.Count() == 2);
}

struct PlanWriting : testing::Test {
    RaceTree tree;
    const SailedRace race{7, 3};
    RacePlan plan;

    void SetUp() override {
        tree.Write("stick/a.trk", Lines(race.Boats[0]));
        tree.Write("stick/sub/b.trk", Lines(race.Boats[1]));
        tree.Write("stick/sub/c.trk", Lines(race.Boats[2]));
        std::filesystem::create_directory_symlink(".", tree.Root() / "stick/sub/loop");
        std::filesystem::create_symlink("self", tree.Root() / "self");
        Plan();
    }
    void Plan() {
        plan = PlanRace(*FindTracksIn(
            HandedFiles({tree.Root() / "stick", tree.Root() / "stick/a.trk", tree.Root() / "self"}), {}));
        SettleTargets(tree.Root(), plan);
        plan.RaceFileName = "R.txt";
    }
    std::error_code Write(bool replace = false, const StepProgress& progress = {}) {
        return WritePlannedRace(tree.Root(), plan, replace, progress).Error;
    }
    /// All files but those that a test lays out.
    std::string Written() const {
        std::string files;
        for (const char* folder : {"gpsdat", "raceadmin"})
            if (std::filesystem::is_directory(tree.Root() / folder)) files += tree.Files(folder);
        return files;
    }
};

TEST_F(PlanWriting, TheRaceThatIsWrittenIsTheOneThatIsRead) {
    EXPECT_EQ(Told(plan), "a=a.trk\nb=b.trk\nc=c.trk\nself~10\n");
    plan.Boats[1].Taken = false;
    plan.Boats[2].Name = "Ça, 江の島";
    plan.Boats[2].ClockOffset = 1.5;
    ASSERT_FALSE(Write());
    RaceNumbers numbers;
    numbers.race.RaceFileName = "R.txt";
    EXPECT_EQ(LoadRace(tree.Root(), numbers).Outcome, LoadOutcome::Sound);
    ASSERT_EQ(numbers.race.Boats.Count(), 2);
    EXPECT_EQ(numbers.race.Boats[2].BoatName, "Ça, 江の島");
    EXPECT_EQ(numbers.race.Boats[2].ClockOffset, 1.5);
    EXPECT_EQ(numbers.tracks.Boats[1].Count(), static_cast<int>(race.Boats[0].size()));
    EXPECT_EQ(tree.Files("gpsdat"), "a.trk c.trk ");
    EXPECT_EQ(Write(), std::errc::file_exists);

    // What is there already is taken as it is, and what differs is left alone.
    tree.Write("gpsdat/b.trk", "somebody else's");
    Plan();
    EXPECT_EQ(Told(plan), "a=a.trk\nb=b (2).trk\nc=c.trk\nself~10\n");
    EXPECT_FALSE(Write(true));
    EXPECT_EQ(tree.Files("gpsdat"), "a.trk b (2).trk b.trk c.trk ");
    EXPECT_EQ(tree.Read("gpsdat/b.trk"), "somebody else's");
}

TEST_F(PlanWriting, WhateverGoesWrongNothingIsLeft) {
    EXPECT_EQ(Write(false, [](int done, int) { return done < 2; }), std::errc::operation_canceled);
    EXPECT_EQ(Written(), "");

    std::filesystem::rename(tree.Root() / "stick/sub/c.trk", tree.Root() / "gone");
    EXPECT_EQ(Write(), std::errc::no_such_file_or_directory);
    std::filesystem::rename(tree.Root() / "gone", tree.Root() / "stick/sub/c.trk");
    EXPECT_EQ(Written(), "");

    tree.Write("raceadmin", "in the way of the race file");
    EXPECT_TRUE(Write());
    std::filesystem::remove(tree.Root() / "raceadmin");
    EXPECT_EQ(Written(), "");

    // The disc has room for the first recording alone.
    struct rlimit room {};
    ::getrlimit(RLIMIT_FSIZE, &room);
    const struct rlimit little { FileSize(tree.Root() / "stick/a.trk").value() + 100, room.rlim_max };
    tree.Write("stick/sub/c.trk", Lines(race.Boats[2]) + std::string(200'000, '\n'));
    const auto old = std::signal(SIGXFSZ, SIG_IGN);
    ::setrlimit(RLIMIT_FSIZE, &little);
    EXPECT_EQ(Write(), std::errc::file_too_large);
    ::setrlimit(RLIMIT_FSIZE, &room);
    std::signal(SIGXFSZ, old);
    EXPECT_EQ(Written(), "");
    EXPECT_FALSE(Write());
}

}  // namespace
}  // namespace keelview
