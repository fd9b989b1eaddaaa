#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/drawn_race.h"
#include "support/open_desk.h"

namespace keelview {
namespace {

namespace fs = std::filesystem;

bool Dark(int red, int green, int blue) {
    return red + green + blue < 200;
}

struct WindFieldTest : testing::Test {
    OpenDesk desk{true};
    std::string Saved() const { return desk.tree.Read("raceadmin/R1.txt"); }
};

TEST_F(WindFieldTest, WhatAPersonTypesIsDrawnAndSavedAtOnce) {
    struct {
        const char* Typed;
        double Wind;
    } const cases[] = {{"45", 45}, {"360", 360}, {"361", 0}, {"-5", 0}, {"12.5 deg", 12.5}, {"north", 0}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.Typed);
        driver::Type(desk.Form().Text3, c.Typed);
        EXPECT_EQ(desk.app->race.WindDirection, c.Wind);
        EXPECT_EQ(desk.app->windNow.WindNow, c.Wind);
        const std::string key = c.Wind > 0 ? "\nWD, " + NumberText(c.Wind) + "\r" : "\nWD,";
        EXPECT_EQ(Saved().find(key) != std::string::npos, c.Wind > 0) << Saved();
    }
}

TEST_F(WindFieldTest, AWindwardUpMapTurnsWithTheFieldAndANorthUpOneDoesNot) {
    driver::Type(desk.Form().Text3, "90");
    EXPECT_EQ(desk.app->view.ScreenUpRadians, 0);
    desk.app->race.NorthUp = false;
    driver::Type(desk.Form().Text3, "180");
    EXPECT_NEAR(desk.app->view.ScreenUpCos, -1, 1e-9);  // the chart is drawn that way, the boats are too
    EXPECT_EQ(desk.app->view.ScreenUpDirection, 180);
}

TEST_F(WindFieldTest, TheTextOfALoadChangesNothing) {
    const std::string before = Saved();
    desk.Form().Text3.SetText("77");
    EXPECT_EQ(desk.app->race.WindDirection, 0);
    EXPECT_EQ(Saved(), before);
}

TEST(SeaColour, TheWholeSeaTakesTheColourOfTheCell) {
    const OpenDesk desk;
    RaceDisp& form = desk.Form();
    driver::Click(form.BCOL6);
    const Colour night = Rgb(0, 0, 96);
    for (const Surface* surface : {&form.Picture1, &form.Picture2, &form.Picture6}) {
        EXPECT_EQ(surface->BackColor, night);
        EXPECT_EQ(surface->Image().PixelAt(3, 3), night);
    }
    EXPECT_EQ(desk.app->display.InkColour, White);
    // The tracks, the compass and the overview are there again.
    const auto drawn = [&](const Surface& surface) {
        const Picture image = surface.Image();
        return CountPixels(image, 0, 0, image.Width() - 1, image.Height() - 1,
                           [](int red, int green, int) { return red > 150 || green > 150; });
    };
    for (const Surface* surface : {&form.Picture1, &form.Picture2, &form.Picture6})
        EXPECT_GT(drawn(*surface), 20);
    driver::Click(form.BCOL1);
    EXPECT_EQ(desk.app->display.InkColour, Black);
}

struct CaptureTest : testing::Test {
    OpenDesk desk;
    RaceDisp& form = desk.Form();
    const fs::path file = desk.tree.Root() / "gpsdat/無題.bmp";

    Picture Capture() {
        driver::Click(form.Command10);
        EXPECT_EQ(desk.platform.Documents.back(), file.string());
        return Picture::FromFile(file);
    }
};

TEST_F(CaptureTest, TheMapIsCapturedWithBoatsOverviewNamesAndColours) {
    const Picture picture = Capture();
    const int column = static_cast<int>(form.Picture1.Width() + 10);
    ASSERT_EQ(picture.Width(), form.Picture1.Width() + form.Picture6.Width() + 15 - 2);
    ASSERT_EQ(picture.Height(), form.Picture1.Height() + 10 - 2);
    const Sprite& boat = form.Boat[0];
    const int x = static_cast<int>(std::lround(boat.Left() + 5 + boat.Width() / 2));
    const int y = static_cast<int>(std::lround(boat.Top() + 5 + boat.Height() / 2));
    const auto white = [](int red, int green, int blue) { return red + green + blue == 3 * 255; };
    EXPECT_GT(CountPixels(picture, x - 4, y - 4, x + 4, y + 4, white), 3);  // the sail of the first boat
    EXPECT_EQ(picture.PixelAt(12, 200), form.Picture1.BackColor);
    EXPECT_EQ(picture.PixelAt(column + 5, 10), form.Picture6.BackColor);
    const int below = static_cast<int>(form.Picture6.Height()) + 5;
    EXPECT_GT(CountPixels(picture, column, below, column + 160, below + 14, Dark), 30);  // file name
    EXPECT_GT(CountPixels(picture, column, below + 15, column + 160, below + 30, Dark), 30);
    EXPECT_EQ(picture.PixelAt(column + 150, below + 35 + 5), desk.app->display.BoatColour[1]);
    EXPECT_EQ(picture.PixelAt(column + 150, below + 35 + 16 + 5), desk.app->display.BoatColour[2]);
    EXPECT_FALSE(form.Picture13.Visible());
}

TEST_F(CaptureTest, EachViewIsCapturedInItsTurnOverTheOneBefore) {
    const Picture map = Capture();
    driver::Click(form.Option10);
    const Picture graphs = Capture();
    EXPECT_EQ(graphs.PixelAt(12, 12), form.GPIC.Image().PixelAt(7, 7));
    EXPECT_NE(graphs.PixelAt(300, 300), map.PixelAt(300, 300));
    form.Option11.SetEnabled(true);
    driver::Click(form.Option11);
    EXPECT_EQ(Capture().PixelAt(300, 20), form.PicTime.Image().PixelAt(295, 15));
}

TEST_F(CaptureTest, APictureThatNoProgramOpensOrNobodyCanWriteIsTold) {
    desk.platform.DocumentResult = 31;
    desk.dialogs.AnswerOk();
    desk.dialogs.AnswerOk();
    EXPECT_FALSE(Capture().Empty());
    EXPECT_EQ(desk.Said(), "The picture was saved here:\r\n" + file.string());
    fs::remove(file);
    desk.platform.Documents.clear();
    fs::create_directory(file);
    desk.dialogs.AnswerOk();
    driver::Click(form.Command10);
    EXPECT_EQ(desk.Said(), "The picture could not be written.\r\n" + file.string());
    EXPECT_TRUE(desk.platform.Documents.empty());
}

TEST(Exit, AsksForTheFileInEditModeAlone) {
    struct {
        bool EditMode, Save;
        const char* Name;
        const char* Written;
    } const cases[] = {{false, false, "", ""},         {true, false, "", ""},
                       {true, true, "", ""},           {true, true, "Cup R2", "Cup R2.txt"},
                       {true, true, "x.TXT", "x.TXT"}, {true, true, "江の島.txt", "江の島.txt"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.Name);
        OpenDesk desk(c.EditMode);
        if (c.EditMode) desk.dialogs.AnswerYesNo(c.Save);
        if (c.Save) desk.dialogs.AnswerInput(c.Name);
        driver::Click(desk.Form().Command1);
        EXPECT_TRUE(desk.Form().Closed());
        EXPECT_TRUE(desk.dialogs.AllAnswered());
        if (!c.Save) continue;
        EXPECT_EQ(desk.dialogs.All().front().Text, "Save Race Control File？");
        const fs::path written = desk.tree.Root() / "raceadmin" / c.Written;
        EXPECT_EQ(fs::is_regular_file(written), *c.Written != '\0');
    }
}

TEST(Exit, ARaceThatCannotBeSavedKeepsTheDisplayOpen) {
    OpenDesk desk(true);
    fs::create_directory(desk.tree.Root() / "raceadmin/taken.txt");
    desk.app->display.SaveFailureTold = true;
    desk.dialogs.AnswerYesNo(true);
    desk.dialogs.AnswerInput("taken");
    desk.dialogs.AnswerOk();
    driver::Click(desk.Form().Command1);
    EXPECT_FALSE(desk.Form().Closed());
    EXPECT_EQ(desk.app->race.RaceFileName, "R1.txt");
    desk.dialogs.AnswerYesNo(true);
    desk.dialogs.AnswerInput(std::nullopt);  // cancelled
    driver::Click(desk.Form().Command1);
    EXPECT_TRUE(desk.Form().Closed());
}

}  // namespace
}  // namespace keelview
