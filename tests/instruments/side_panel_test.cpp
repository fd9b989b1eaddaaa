#include <gtest/gtest.h>

#include <QByteArray>
#include <QImage>
#include <chrono>
#include <fstream>
#include <set>
#include <thread>

#include "instruments/side_block.h"
#include "support/test_desk.h"

namespace keelview {
namespace {

/// Three lines, 0.0201, 0.3005 and 0.7005 miles north. Boat 1 sails north at 6 knots and passes them after
/// 12, 180 and 420 seconds; boat 2 comes from 0.06 miles further south at 7 knots and has passed boat 1
/// between the second and the third line.
struct SidePanelTest : testing::Test, TestDesk {
    void Sail(const std::string& lines = {}) {
        tree.Boat("a.trk", Lat, Lon, SixKnots, 0, -100, 600);
        tree.Boat("b.trk", Lat - 0.06, Lon + 0.01, SixKnots * 7 / 6, 0, -100, 600);
        tree.Race("R1.txt",
                  "BN, a.trk, Ann\r\nBN, b.trk, Bea\r\n"
                  "LN, 2117.0201, 8368.9, 2117.0201, 8369.1\r\nLN, 2117.3005, 8368.9, 2117.3005, 8369.1\r\n"
                  "LN, 2117.7005, 8368.9, 2117.7005, 8369.1\r\n" +
                      lines);
    }
    void TakeOut(bool english = true) {
        Open(true, english);
        if (!Form().SidePanelHasRoom()) driver::Click(Form().Command14);
        const auto answered = [this] { return desk->session.TheCoach().Answers() != nullptr; };
        for (int look = 0; look < 5000 && !answered(); ++look) {
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
            Form().Timer5.OnTimer();
        }
        ASSERT_TRUE(answered());
        driver::Settle();
    }
    std::string Copied() {
        driver::Click(Form().Command15);
        return platform.Copied;
    }
    void Choose(OptionButton& tab) const { driver::Click(tab); }
};

TEST_F(SidePanelTest, TheBoardTellsOrderAndGapsOfTheMomentAndLeadsToABoat) {
    Sail("CRS, L1, L2, L3\r\n");
    TakeOut();
    const auto expectOrder = [this](int entry, int first, int second) {
        const int gap = *PassTime(app.passes, second, entry) - *PassTime(app.passes, first, entry);
        Seek(*PassTime(app.passes, second, entry));
        driver::Settle();
        const auto row = [this](int rank, int boat, int seconds) {
            return "\r\n" + std::to_string(rank) + "\t" + app.race.Boats[boat].BoatName +
                   "\t0:" + (seconds < 10 ? "0" : "") + std::to_string(seconds) + "\t";
        };
        const std::string told = Copied();
        EXPECT_NE(told.find(row(1, first, 0)), std::string::npos) << told;
        EXPECT_NE(told.find(row(2, second, gap)), std::string::npos) << told << gap;
    };
    expectOrder(2, 1, 2);
    expectOrder(3, 2, 1);

    Seek(300);
    app.view.CentreOn({Lat + 20, Lon});
    driver::ClickAt(Form().Picture17, {60, 56});  // the second row
    EXPECT_NEAR(app.view.ViewCentreLat, Lat + 300 * SixKnots, 0.02);
    EXPECT_EQ(app.clock.ReplayTime, 300);
}

TEST_F(SidePanelTest, NothingIsAnsweredAnewUntilTheRaceChanges) {
    Sail("CRS, L1, L2, L3\r\n");
    TakeOut();
    const CoachAnswers* before = desk->session.TheCoach().Answers();
    Seek(200);
    driver::Settle();
    EXPECT_EQ(desk->session.TheCoach().Answers(), before);
    desk->session.Changes().ClearCourse();
    driver::Settle();
    EXPECT_EQ(desk->session.TheCoach().Answers(), nullptr);
}

TEST_F(SidePanelTest, EveryTabSaysSomethingOfARaceThatTellsNothing) {
    for (const bool english : {true, false}) {
        WriteRace(2, "WD, 0\r\n");
        TakeOut(english);
        std::set<std::string> told;
        for (OptionButton* tab : Form().SideTabs()) {
            driver::Click(*tab);
            EXPECT_FALSE(Copied().empty());
            told.insert(Copied());
        }
        EXPECT_EQ(told.size(), Form().SideTabs().size());
        desk.reset();
    }
}

TEST_F(SidePanelTest, ASavedPageHoldsItsPicturesAndNamesAsText) {
    Sail("CRS, L1, L2, L3\r\nBN, a.trk, <i>Cat & \"Co\"</i>\r\n");
    TakeOut();
    driver::Click(Form().Command17);
    const std::string page = tree.Read("attachment/R1_Board.html");
    EXPECT_NE(page.find("&lt;i&gt;Cat &amp; &quot;Co&quot;&lt;/i&gt;"), std::string::npos)
        << page.substr(0, 2000);
    EXPECT_EQ(page.find("<i>"), std::string::npos);
    const std::size_t at = page.find("base64,") + 7;
    const QByteArray bytes =
        QByteArray::fromBase64(QByteArray::fromStdString(page.substr(at, page.find('"', at) - at)));
    const QImage picture = QImage::fromData(bytes, "PNG");
    ASSERT_GT(picture.width(), 600);
    EXPECT_EQ(picture.pixelColor(picture.width() - 1, 50), QColor(Qt::black));  // its frame is whole
    int red = 0;                                                                // the first boat's curve
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            red += picture.pixelColor(x, y).red() > 200 && picture.pixelColor(x, y).blue() < 60 ? 1 : 0;
    EXPECT_GT(red, 50);
    EXPECT_EQ(platform.Documents.size(), 1U);
}

TEST_F(SidePanelTest, TheMapMarksTheTurnsThatThePanelTellsOfAndTheWindGraphTheWindTheyTell) {
    constexpr int board = 60;  // seconds from tack to tack, at right angles, the wind from the north
    std::string track;
    Position at{Lat, Lon};
    for (int t = -30; t <= 600; ++t) {
        track += tree.TrackLine(at, RaceTree::Start + t);
        at.Lat += SixKnots * 0.7;
        at.Lon += (t + 1000 * board) / board % 2 == 0 ? SixKnots * 0.7 : -SixKnots * 0.7;
    }
    tree.Write("gpsdat/a.trk", track);
    tree.Wind("W.CSV", {{.WindTime = 0, .WindSpeed = 10.0, .WindDirection = 10},
                        {.WindTime = 600, .WindSpeed = 10.0, .WindDirection = 10}});
    tree.Race("R1.txt", "BN, a.trk, Ann\r\nWF, W.CSV\r\nMG, 4\r\n");
    TakeOut();
    const auto estimated = [this] {
        return CountPixels(Form().sWind.Image(), 6, 26, 80, 80, [](int red, int green, int blue) {
            return red > green + 100 && blue > green + 50;
        });
    };
    EXPECT_GT(estimated(), 10);
    Choose(Form().Option18);
    driver::ClickAt(Form().Picture17, {60, 41});
    driver::Settle();
    ASSERT_EQ(app.shown.Turns.size(), 10U);
    const auto signs = [this] {
        int marked = 0;
        for (int turn = board; turn < 600; turn += board) {
            const Track& way = app.tracks.Boats[1];
            const QPoint here = PixelOf(PositionOn(way, FindSegment(way, turn), turn));
            const auto pure = [](int red, int green, int blue) { return red == 255 && green + blue == 0; };
            marked += CountPixels(Map().Image(), here.x() - 5, here.y() - 5, here.x() + 5, here.y() + 5,
                                  pure) > 15;
        }
        return marked;
    };
    EXPECT_GE(signs(), 7);  // all but those under the boat and beyond the edge
    Choose(Form().Option16);
    driver::Settle();
    EXPECT_EQ(signs(), 0);
    EXPECT_TRUE(Form().Line6.Visible());  // the moment, on curves over time
    Choose(Form().Option20);
    EXPECT_FALSE(Form().Line6.Visible());

    Choose(Form().Option19);
    for (const bool sure : {false, true}) {
        dialogs.AnswerYesNo(sure);
        driver::Click(Form().Command16);
        EXPECT_NEAR(TurnBetween(app.wind[1].WindDirection, sure ? -4 : 10), 0, 2);  // magnetic
    }
}

TEST_F(SidePanelTest, AWindThatIsTakenStandsInItsFileAndOneThatCannotBeWrittenChangesNothing) {
    Sail();
    Open();
    const WindData wind = {{.WindTime = 0, .WindSpeed = {}, .WindDirection = 10},
                           {.WindTime = 600, .WindSpeed = 7.0, .WindDirection = 30}};
    const std::filesystem::path folder = tree.Root() / "winddat";
    std::filesystem::remove_all(folder);
    std::ofstream(folder).put('x');  // a file where the folder belongs
    dialogs.AnswerOk();
    desk->session.Changes().TakeWind(wind);
    EXPECT_TRUE(app.race.WindFileName.empty() && app.wind.Empty() && dialogs.AllAnswered());
    std::filesystem::remove(folder);
    std::filesystem::create_directory(folder);
    desk->session.Changes().TakeWind(wind);
    EXPECT_NE(File().find("WF, R1_WIND.CSV"), std::string::npos) << File();
    desk->session.ReloadRace();
    EXPECT_EQ(app.wind.Count(), 2);
    EXPECT_EQ(WindAt(app.race, app.wind, 300).DirectionMagnetic, 20);
}

SideBlocks Lines(int rows, int shift) {
    SideTable table;
    table.Title = "Title " + std::string(static_cast<std::size_t>(shift), 'i');
    table.Columns = {{"A", "0000", false}, {"B", "", true}, {"C", "00", false}};
    table.NameColumn = 1;
    for (int row = 1; row <= rows; ++row) {
        const int boat = (row * 7 + shift) % rows + 1;
        table.Rows.push_back({.To = {.Boat = boat, .Time = {}},
                              .Cells = {std::to_string(row), "Boat " + std::to_string(boat % 5),
                                        std::to_string((row + shift) % 3)}});
    }
    return {std::move(table),
            SideText{"Words that stand below the table and are broken where they are long."}};
}

TEST(SidePage, WhatHasChangedLooksAsIfAllHadBeenDrawn) {
    Form form("Form", Form::Kind::Fixed, 400, 300);
    Surface followed(form, "Followed", BorderStyle::None), whole(form, "Whole", BorderStyle::None);
    const SideFocus focus{.InFocus = [](int boat) { return boat % 3 != 0; }, .Chosen = 4};
    for (Surface* page : {&followed, &whole}) {
        page->Move(0, 0, 200, 260);
        page->SetBackColor(White);
    }
    SidePage one;
    one.Show(followed, Lines(11, 0), focus, 5, true);
    for (const int shift : {1, 4, 6}) {
        one.Show(followed, Lines(11, shift), focus, 5, false);
        SidePage other;
        other.Show(whole, Lines(11, shift), focus, 5, true);
        const Picture a = followed.Image(), b = whole.Image();
        int differ = 0;
        for (int y = 0; y < a.Height(); ++y)
            for (int x = 0; x < a.Width(); ++x) differ += a.PixelAt(x, y) != b.PixelAt(x, y) ? 1 : 0;
        EXPECT_EQ(differ, 0) << shift;
        EXPECT_EQ(one.AsText(), other.AsText());
        EXPECT_EQ(one.TargetAt({50, 50}).Boat, other.TargetAt({50, 50}).Boat);
        EXPECT_GT(one.TargetAt({50, 50}).Boat, 0);
    }
}

}  // namespace
}  // namespace keelview
