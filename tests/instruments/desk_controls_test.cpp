#include <gtest/gtest.h>

#include <QPixmap>
#include <QWidget>

#include "session/boat_colours.h"
#include "support/test_desk.h"

namespace keelview {
namespace {

namespace fs = std::filesystem;

struct DeskTest : testing::Test, TestDesk {
    /// What is seen in the place of a control, with all that lies on it.
    static QImage Seen(const Control& control) {
        QWidget& face = driver::Face(control);
        return face.window()->grab({face.mapTo(face.window(), QPoint()), face.size()}).toImage();
    }
    /// A race that has something to show for every choice.
    void OpenFullRace() {
        tree.Write("coastline/5239.cst",
                   "M 523973\nL" + std::string(53, ' ') + "2\n 8000 2000 9500 6000\n");
        WriteRace(2, "WD, 40\r\nMK, 2117.2, 8369\r\nMK, 2117.5, 8369.1\r\nCRS, MK1, MK2\r\n");
        Open();
    }
};

TEST_F(DeskTest, EveryChoiceChangesWhatIsSeenAndIsTakenBackWithoutATrace) {
    OpenFullRace();
    RaceDisp& form = Form();
    const Control& overview = form.Picture6;
    struct Choice {
        const Control &there, &back, &picture;
    };
    int number = 0;
    const auto seenAfter = [&](const Control& click, const Control& picture) {
        driver::Click(click);
        driver::MoveTo(form.Picture7, {130, 5});
        EXPECT_FALSE(form.Timer1.Enabled()) << number;
        return Seen(picture);
    };
    const auto run = [&](const Control& first, std::initializer_list<Choice> choices) {
        for (const Choice& choice : choices) {
            ++number;
            const QImage before = seenAfter(first, choice.picture);
            EXPECT_NE(seenAfter(choice.there, choice.picture), before) << number;
            EXPECT_EQ(seenAfter(choice.back, choice.picture), before) << number;
            if (&first == &form.Check3) driver::Click(first);
        }
    };
    driver::Click(form.Check3);                            // no hints
    run(form.BCOL1, {{form.Check7, form.Check7, Map()},    // coast
                     {form.Check6, form.Check6, Map()},    // tracks
                     {form.Check1, form.Check1, Map()},    // time points
                     {form.Check8, form.Check8, Map()},    // lay lines
                     {form.Check10, form.Check10, Map()},  // size of the boats
                     {form.Bnam[1], form.Bnam[1], Map()},  // focus
                     {form.Maru[1], form.Maru[1], Map()},  // ring
                     {form.Option3, form.Option2, Map()},  // turn
                     {form.Option3, form.Option2, overview},
                     {form.BCOL6, form.BCOL1, Map()},  // sea
                     {form.BCOL5, form.BCOL1, overview},
                     {form.Option10, form.Option9, Map()},  // view
                     {form.Option11, form.Option9, Map()}});
    run(form.Option3, {{form.Check4, form.Check4, Map()}});  // cross-wind lines
    driver::Click(form.Check5);
    run(form.Option9, {{form.Check9, form.Check9, Map()},      // names
                       {form.Bnam[1], form.Bnam[1], Map()}});  // who is followed
    run(form.Option10, {{form.Bnam[0], form.Bnam[0], Map()}});
    run(form.Option11, {{form.Option4, form.Option1, Map()}, {form.Option5, form.Option1, Map()}});
}

TEST_F(DeskTest, TheWindThatAPersonTypesIsTakenAndSavedAtOnce) {
    Open();
    driver::Click(Form().Option3);
    Form().Text3.SetText("77");  // by the program
    EXPECT_EQ(app.race.WindDirection, 0);
    for (const auto& [typed, wind] :
         {std::pair{"45", 45.0}, {"360", 360}, {"361", 0}, {"12.5 deg", 12.5}, {"-5", 0}}) {
        driver::Type(Form().Text3, typed);
        EXPECT_EQ(app.now.WindNow.DirectionTrue, std::fmod(wind, 360)) << typed;
        EXPECT_EQ(app.view.ScreenUpDirection, wind);
        EXPECT_EQ(FileHolds("WD, " + NumberText(wind)), wind > 0) << File();
    }
}

TEST_F(DeskTest, AnotherRaceTakesThePlaceOfTheOneThatIsShown) {
    WriteRace(2);
    tree.Race("R2.txt", "T2, Autumn\r\nBN, boat2.trk, Solo\r\n");
    Open(false);
    driver::Click(Form().Bnam[0]);
    for (const char* title : {"Spring Cup   Autumn   (R2.txt)", "Spring Cup   (R1.txt)"}) {
        Form().Combo1.SetText(std::string(title).substr(std::string(title).size() - 7, 6));
        driver::Click(Form().Command9);
        EXPECT_TRUE(Form().Caption().ends_with(title)) << Form().Caption();
        EXPECT_TRUE(Form().InFocus(1));
    }
    EXPECT_EQ(Form().Bnam[0].Caption(), "Boat 1");
}

TEST_F(DeskTest, EachViewIsCapturedWithTheBoatsTheOverviewAndTheColours) {
    OpenFullRace();
    const fs::path file = tree.Root() / "gpsdat/無題.bmp";
    const auto capture = [&](const Control& option) {
        driver::Click(option);
        driver::Click(Form().Command10);
        EXPECT_EQ(platform.Documents.back(), file.string());
        return Picture::FromFile(file);
    };
    const Picture map = capture(Form().Option9);
    const int column = static_cast<int>(Map().Width() + 10);
    const int below = static_cast<int>(Form().Picture6.Height()) + 5;
    const QPoint boat = PixelOf(app.now.Boats[1].At()) + QPoint(5, 5);
    const auto white = [](int r, int g, int b) { return r + g + b == 3 * 255; };
    EXPECT_GT(CountPixels(map, boat.x() - 4, boat.y() - 4, boat.x() + 4, boat.y() + 4, white),
              3);  // the sail
    for (const int b : {1, 2}) EXPECT_EQ(map.PixelAt(column + 150, below + 24 + 16 * b), BoatColour(b));
    const Picture graphs = capture(Form().Option10);
    const Picture page = capture(Form().Option11);
    for (int y = 20; y < 340; ++y) {
        EXPECT_EQ(graphs.PixelAt(305, y), Form().GPIC.Image().PixelAt(300, y - 5));
        EXPECT_EQ(page.PixelAt(305, y), Form().PicTime.Image().PixelAt(300, y - 5));
    }
}

TEST_F(DeskTest, ExitOffersToSaveInEditModeAndStaysWhereThatFails) {
    fs::create_directories(tree.Root() / "raceadmin/taken.txt");
    const struct {
        const char *name, *written;
        bool closes = true;
    } cases[] = {{"", ""},
                 {"Cup R2", "Cup R2.txt"},
                 {"x.TXT", "x.TXT"},
                 {"江の島.txt", "江の島.txt"},
                 {"taken", "", false}};
    for (const auto& c : cases) {
        Open();
        dialogs.AnswerYesNo(true);
        dialogs.AnswerInput(c.name);
        if (!c.closes) dialogs.AnswerOk();
        driver::Click(Form().Command1);
        EXPECT_TRUE(dialogs.AllAnswered());
        EXPECT_EQ(Form().Closed(), c.closes);
        EXPECT_EQ(fs::is_regular_file(tree.Root() / "raceadmin" / c.written), *c.written != '\0') << c.name;
    }
}

}  // namespace
}  // namespace keelview
