#include "instruments/boat_graphs.h"

#include <gtest/gtest.h>

#include "base/dates.h"
#include "base/files.h"
#include "instruments/graph_axes.h"
#include "instruments/graph_cursors.h"
#include "instruments/time_axis.h"
#include "instruments/wind_entry.h"
#include "support/drawn_race.h"
#include "support/temp_tree.h"

namespace keelview {
namespace {

struct BoatGraphsTest : testing::Test {
    TempTree tree;
    DrawnRace race{2};
    BoatGraphs graphs{*race.app, race.Form()};
    WindEntry entry{*race.app, race.Form(), race.services, graphs};
    GraphCursors cursors{*race.app, race.Form(), graphs, entry};

    void SetUp() override {
        tree.Write("winddat/other.CSV", "");
        race.app->settings.AppPath = tree.Root();
        race.Form().GPIC.Show();
        race.Form().Picture1.Hide();
        race.Form().Timer1.SetEnabled(false);
    }
    int Y(double seconds) const {
        return static_cast<int>(TimeToY(race.app->race, race.app->display.GraphTimeScale, seconds) + 0.5);
    }
    Colour At(int x, int y) const { return race.Form().GPIC.Image().PixelAt(x, y); }
    /// The colour of a line lies within a pixel of the place.
    bool LineAt(int x, int y, Colour colour) const {
        for (int off = -1; off <= 1; ++off)
            if (At(x + off, y) == colour || At(x, y + off) == colour) return true;
        return false;
    }
    void Wind(const std::vector<int>& times, double direction, std::optional<double> speed) {
        WindData& wind = race.app->wind;
        wind = {};
        for (const int t : times) {
            wind.WindTimes.push_back(t);
            wind.WindDirections.push_back(direction);
            wind.WindSpeeds.push_back(speed);
            ++wind.WindCount;
        }
        race.app->race.WindFileName = "w.csv";
    }
    void MoveTo(int x, int y) { QTest::mouseMove(Face(race.Form().GPIC), {x, y}); }
    void Press(int x, int y) { QTest::mouseClick(Face(race.Form().GPIC), Qt::RightButton, {}, {x, y}); }
};

TEST_F(BoatGraphsTest, BoatsStandAtTheirCourseAndSpeedInTheirTime) {
    race.app->race.MagVariation = -7;
    race.Sail(1, -100, 700, 83, 6);  // 90 magnetic
    race.Sail(2, -100, 700, 263, 3);
    race.Form().Bnam[1].SetValue(false);
    graphs.DrawBoatGraphs();
    const Colour focused = race.app->display.BoatColour[1];
    EXPECT_TRUE(LineAt(210, Y(200), focused));
    EXPECT_TRUE(LineAt(580, Y(200), focused));
    EXPECT_TRUE(LineAt(30, Y(200), Rgb(225, 225, 225)));  // 270 magnetic, at the left edge
    EXPECT_TRUE(LineAt(490, Y(200), Rgb(225, 225, 225)));
    EXPECT_TRUE(LineAt(580, Y(-55), focused));
    EXPECT_FALSE(LineAt(580, Y(-66), focused));  // more than a minute before the start
    EXPECT_TRUE(LineAt(580, Y(595), focused));
    EXPECT_FALSE(LineAt(580, Y(604), focused));
}

TEST_F(BoatGraphsTest, LongTracksKeepTheirExtremesInEachRow) {
    // Two fixes a row at 9 knots among hundreds at 4: the spikes must be seen.
    for (int i = 0; i < 2000; ++i) race.Sail(1, i % 500, i % 500, 100, i % 50 == 7 ? 9 : 4);
    std::stable_sort(race.app->tracks.TrackTime[1].begin() + 1, race.app->tracks.TrackTime[1].end());
    graphs.DrawBoatGraphs();
    const int spiked = CountPixels(race.Form().GPIC.Image(), 640, Y(490), 660, Y(10),
                                   [](int r, int g, int b) { return r > 240 && g < 100 && b < 100; });
    EXPECT_GT(spiked, 100);
}

TEST_F(BoatGraphsTest, TheWindPlacesTheCompassAndEveryWindIsSound) {
    struct Case {
        double wind;
        double offset;
    };
    for (const Case& each : {Case{0, 270}, Case{90, 0}, Case{210, 120}, Case{360, 270}}) {
        SCOPED_TRACE(each.wind);
        race.app->race.WindDirection = each.wind;
        graphs.DrawBoatGraphs();
        EXPECT_EQ(graphs.DirOffset(), each.offset);
        EXPECT_EQ(DirectionToX(graphs.DirOffset(), each.wind == 360 ? 0 : each.wind), 120);
        EXPECT_EQ(DirectionUnderX(graphs.DirOffset(), 300),
                  each.wind < 180 ? each.wind + 180 : each.wind - 180);
        EXPECT_TRUE(LineAt(120, Y(450), Rgb(96, 96, 255)));  // directions of a multiple of 30 stand out
        EXPECT_TRUE(LineAt(130, Y(450), Rgb(192, 192, 192)));
    }
    for (const double wind : {-1e300, 1e300, 4000.0}) {
        race.app->race.WindDirection = wind;
        graphs.DrawBoatGraphs();
    }
}

TEST_F(BoatGraphsTest, TheTimeGridMarksTenMinutesHalfHoursAndHours) {
    race.app->race.RaceDuration = 2 * 3600;
    race.app->race.ReplaySpan = 2 * 3600 + 240;
    graphs.DrawBoatGraphs();
    struct Case {
        int seconds;
        Colour colour;
    };
    for (const Case& each : {Case{300, Rgb(192, 192, 192)}, Case{600, Rgb(255, 192, 192)},
                             Case{1800, Rgb(255, 128, 0)}, Case{3600, Red}}) {
        EXPECT_TRUE(LineAt(35, Y(each.seconds), each.colour)) << each.seconds;
        EXPECT_TRUE(LineAt(690, Y(each.seconds), each.colour)) << each.seconds;
    }
    EXPECT_TRUE(LineAt(10, Y(0), Rgb(0, 255, 0)));
    EXPECT_TRUE(LineAt(10, 30, Rgb(0, 255, 0)));
}

TEST_F(BoatGraphsTest, OddSpansDrawAnEmptyOrAThinnedGrid) {
    // No span at all, a race of sixty years, one that ends before it begins.
    for (const auto& [duration, span] :
         {std::pair{0, 0}, std::pair{2000000000, 2000000240}, std::pair{-600, 840}}) {
        race.app->race.RaceDuration = duration;
        race.app->race.ReplaySpan = span;
        race.app->race.DataFromTime = race.app->race.DataToTime = 5;
        graphs.DrawBoatGraphs();
        MoveTo(100, 200);
    }
    race.app->race.ReplaySpan = 0;  // worked out anew from the race's own times
    race.app->race.DataToTime = 845;
    graphs.DrawBoatGraphs();
    EXPECT_EQ(race.app->race.ReplaySpan, 840);
    EXPECT_EQ(race.app->race.RaceDuration, 600);
}

TEST_F(BoatGraphsTest, WindLiesOverTheLeftAndUnderTheRightChart) {
    const auto pink = [](int r, int g, int b) { return r == 255 && g == 225 && b == 225; };
    Wind({-100, 250, 500}, 40, 9);
    race.app->race.WindFileName.clear();
    graphs.DrawBoatGraphs();
    EXPECT_EQ(CountPixels(race.Form().GPIC.Image(), 405, Y(450), 515, Y(350), pink), 0);
    race.app->race.WindFileName = "w.csv";
    graphs.DrawBoatGraphs();
    EXPECT_GT(CountPixels(race.Form().GPIC.Image(), 405, Y(450), 515, Y(350), pink), 1000);
    EXPECT_TRUE(LineAt(535, Y(400), Rgb(255, 128, 128)));
    EXPECT_TRUE(LineAt(160, Y(400), Black));
    EXPECT_TRUE(LineAt(340, Y(400), Rgb(128, 128, 128)));
    EXPECT_TRUE(LineAt(160, Y(20), Black));  // from a sample before the first minute
    EXPECT_FALSE(LineAt(160, Y(550), Black));
}

TEST_F(BoatGraphsTest, ThePointerShowsLayLinesReciprocalAndTheWindsMoment) {
    race.app->race.LayLineUp = 40;
    Wind({-100, 250, 500}, 40, 8);
    graphs.DrawBoatGraphs();
    RaceDisp& form = race.Form();
    form.Picture7.Hide();
    form.Picture8.SetTop(0);
    MoveTo(150, Y(300));
    EXPECT_EQ(form.Line2.X1(), 110);
    EXPECT_EQ(form.Line7.X1(), 190);
    EXPECT_EQ(form.Line3.X1(), 330);
    EXPECT_EQ(form.Line3.Y1() - form.Line3.Y2(), 20);
    EXPECT_TRUE(form.Line2.Visible() && form.Line7.Visible() && form.Line3.Visible());
    EXPECT_TRUE(form.Text7.Visible());
    const int second = TimeUnderY(race.app->race, race.app->display.GraphTimeScale, Y(300));
    EXPECT_EQ(form.Text7.Text(), TimeOfDayText(45000 + second) + " / 30");
    EXPECT_TRUE(form.Picture7.Visible());
    EXPECT_EQ(form.Picture8.Top(), RaceDisp::PanelTop);
    EXPECT_TRUE(form.Timer1.Enabled());
    MoveTo(211, Y(300));
    EXPECT_FALSE(form.Line2.Visible() || form.Line3.Visible() || form.Text7.Visible());
    MoveTo(150, Y(550));  // after the last sample there is no wind to tell of
    EXPECT_FALSE(form.Text7.Visible());
    EXPECT_TRUE(form.Line2.Visible());
}

TEST_F(BoatGraphsTest, SamplesEnteredByHandAreSortedBetweenGuardsAndWritten) {
    RaceDisp& form = race.Form();
    race.app->settings.EditMode = true;
    race.app->race.RaceFileName = "R2.final.txt";
    graphs.DrawBoatGraphs();
    ClickOn(form.Command12);
    EXPECT_EQ(form.Command12.GetBackColor(), Yellow);
    EXPECT_FALSE(form.Timer1.Enabled());
    Press(29, Y(100));
    Press(391, Y(100));
    EXPECT_EQ(race.app->wind.WindCount, 0);
    Press(150, Y(400));
    const WindData& wind = race.app->wind;
    EXPECT_EQ(wind.WindCount, 3);
    EXPECT_EQ(wind.WindTimes[1], -300);
    EXPECT_NEAR(wind.WindTimes[2], 400, 1);
    EXPECT_EQ(wind.WindTimes[3], 600);
    for (int i = 1; i <= 3; ++i) EXPECT_EQ(wind.WindDirections[i], 30);
    EXPECT_EQ(race.app->race.WindFileName, "R2_WIND.CSV");
    EXPECT_TRUE(LineAt(150, Y(200), Black));  // drawn at once, straight from below the start to the finish
    Press(130, Y(100));
    Press(170, 2);  // above the finish counts as the finish
    EXPECT_EQ(wind.WindDirections, (std::vector<double>{0, 10, 10, 30, 50, 50}));
    EXPECT_TRUE(std::is_sorted(wind.WindTimes.begin() + 1, wind.WindTimes.end()));

    race.dialogs.AnswerYesNo(true);
    ClickOn(form.Command12);
    EXPECT_EQ(race.dialogs.All().back().Text, "Do you want to save Wind Data File ?");
    EXPECT_EQ(race.dialogs.All().back().Title, "Create Wind Data File");
    EXPECT_EQ(form.Command12.GetBackColor(), ButtonFace);
    EXPECT_TRUE(form.Timer1.Enabled());
    const auto file = ReadWholeFile(FindBelow(tree.Root(), "winddat/R2_WIND.CSV"));
    ASSERT_TRUE(file.has_value());
    EXPECT_EQ(file->substr(0, file->find("\r\n", 40)),
              "TIME,WIND SPEED,WIND DIRECTION (Mag)\r\n2004/08/05 12:25:00,,10");

    // The entry goes on where it ended, unless other data was read meanwhile.
    race.dialogs.AnswerYesNo(true);
    ClickOn(form.Command12);
    EXPECT_EQ(race.dialogs.All().back().Title, "Overwrite of wind file ");
    Press(140, Y(100));
    EXPECT_EQ(wind.WindDirections, (std::vector<double>{0, 10, 10, 20, 30, 50, 50}));
    Wind({0, 100}, 77, 5);
    Press(140, Y(100));
    EXPECT_EQ(wind.WindCount, 3);
    EXPECT_EQ(wind.WindSpeeds[2], 5);
    ClickOn(form.Command12);  // a single sample is no file: no question
    EXPECT_FALSE(entry.WindEntryMode());
    EXPECT_TRUE(race.dialogs.AllAnswered());
}

TEST_F(BoatGraphsTest, WindEntryNeedsARaceFileAndRespectsARefusal) {
    RaceDisp& form = race.Form();
    race.app->settings.EditMode = true;
    graphs.DrawBoatGraphs();
    Press(150, Y(100));  // the mode is off
    EXPECT_EQ(race.app->wind.WindCount, 0);
    race.app->race.WindFileName = "old.csv";
    race.dialogs.AnswerYesNo(false);
    ClickOn(form.Command12);
    EXPECT_FALSE(entry.WindEntryMode());
    EXPECT_EQ(form.Command12.GetBackColor(), ButtonFace);
    EXPECT_EQ(race.app->race.WindFileName, "old.csv");
    race.app->race.RaceFileName.clear();
    race.dialogs.AnswerOk();
    ClickOn(form.Command12);
    EXPECT_FALSE(entry.WindEntryMode());
    EXPECT_TRUE(form.Timer1.Enabled());
}

}  // namespace
}  // namespace keelview
