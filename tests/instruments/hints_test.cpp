#include "instruments/hints.h"

#include <gtest/gtest.h>

#include <string>

#include "support/drawn_race.h"
#include "support/qt_driver.h"

namespace keelview {
namespace {

struct HintsTest : testing::Test, DrawnRace {
    Hints hints{*app, Form()};
    const TextBox& box = Form().Text7;

    HintsTest() : DrawnRace(2) {
        for (Control* disabled : {&Form().Check2, &Form().Check5, &Form().Check9})
            disabled->SetEnabled(true);
        Form().Combo1.Hide();
        Form().Label6.Hide();
        for (Surface* cell : Form().ColourCells()) cell->SetBackColor(Rgb(0, 70, 205));
    }
    std::string HintOver(const Control& control) {
        driver::MoveTo(control, {3, 6});  // the box of the hint before may lie in the way
        driver::MoveTo(control, {4, 6});
        return box.Visible() ? box.Text() : "";
    }
};

TEST_F(HintsTest, EachControlTellsWhatItIsForAtItsPlace) {
    RaceDisp& form = Form();
    const double left = form.Picture7.Left();
    const double top = form.Picture7.Top();
    const double right = left + 265;
    struct {
        Control* Of;
        bool English;
        const char* Begins;
        HintPlace Place;
    } const cases[] = {
        {&form.Check9, true, "Show all boat name", {left + 10, top + 200 - 20, 150, 15}},
        {&form.Check7, false, "海岸線の表示を", {left + 10, top + 200 - 21, 170, 16}},
        {&form.Check3, true, "ON/OFF of HINT", {left + 10, top + 200 - 20, 170, 16}},
        {&form.Check10, false, "艇の最低表示サイズ", {left + 184 - 150, top + 200 - 35, 200, 30}},
        {&form.Check2, true, "Range and bearing", {left + 10, top + 216 - 86, 220, 81}},
        {&form.Command2, true, "Click this button and Set", {right - 205, top + 104 - 50, 200, 45}},
        {&form.Command3, false, "このボタンを押して", {right - 225, top + 104 - 50, 220, 45}},
        {&form.Command9, true, "Choose Race File", {right - 240, top + 104 - 37, 230, 32}},
        {&form.Text2, true, "Change Playback Speed", {right - 280, top + 80 - 21, 270, 16}},
        {&form.BCOL6, true, "Change sea color", {left + 20, top + 256 - 22, 160, 17}},
        {&form.Command13, true, "Show Reffernce Data", {left + 10, top + 276 - 37, 220, 32}},
        {&form.btnHATENA, true, "Show HELP", {left + 211 - 105, top + 128, 100, 17}},
        {&form.btnHATENA, false, "操作マニュアル", {left + 211 - 155, top + 128, 150, 17}},
        {&form.Label1, false, "ｸｴｲﾏｰｸ", {right - 290, top + 295 - 37, 280, 32}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.Begins);
        app->settings.UseEnglish = c.English;
        c.Of->Show();
        c.Of->Raise();
        EXPECT_TRUE(HintOver(*c.Of).starts_with(c.Begins)) << box.Text();
        EXPECT_EQ(box.Left(), c.Place.Left);
        EXPECT_EQ(box.Top(), c.Place.Top);
        EXPECT_EQ(box.Width(), c.Place.Width);
        EXPECT_EQ(box.Height(), c.Place.Height);
    }
}

TEST_F(HintsTest, CellsHintOnTheirColourAllOthersOnTheHintsOwn) {
    HintOver(Form().BCOL2);
    EXPECT_EQ(box.GetBackColor(), Rgb(0, 70, 205));
    EXPECT_EQ(box.GetForeColor(), White);
    HintOver(Form().BCOL1);
    EXPECT_EQ(box.GetForeColor(), Black);
    HintOver(Form().Check5);
    EXPECT_EQ(box.GetBackColor(), HintBackground);
    EXPECT_EQ(box.GetForeColor(), Black);
}

TEST_F(HintsTest, HintsSwitchedOffLeaveTheWayBackAndWhatIsWorthIt) {
    RaceDisp& form = Form();
    app->display.HintsOn = false;
    for (const Control* silent : std::initializer_list<const Control*>{
             &form.Command2, &form.Command3, &form.Command5, &form.Check10, &form.Check4, &form.BCOL3}) {
        EXPECT_NE(HintOver(form.Check3), "");
        EXPECT_EQ(HintOver(*silent), "");
    }
    EXPECT_NE(HintOver(form.Check8), "");
    // The exit tells of the menu only where one stands behind it.
    EXPECT_EQ(HintOver(form.Command1), "Exit and return to Menu");
    app->settings.EditMode = false;
    EXPECT_EQ(HintOver(form.Command1), "");
}

TEST_F(HintsTest, TheWindEntryTellsOnTheGraphsAndHidesTheBoatLabel) {
    RaceDisp& form = Form();
    form.GPIC.Show();
    form.GPIC.Raise();
    form.Text7.Raise();
    form.Command12.Show();
    form.Text8.Show();
    EXPECT_TRUE(HintOver(form.Command12).starts_with("ここをクリックすると"));
    EXPECT_EQ(box.Left(), form.GPIC.Left() + form.Command12.Left());
    EXPECT_EQ(box.Top(), form.Command12.Top() + 26);
    EXPECT_FALSE(form.Text8.Visible());
}

TEST_F(HintsTest, BoxesGoWhenTouchedAndTheClockForgetsTheBoat) {
    HintOver(Form().Check5);
    driver::MoveTo(box, {10, 3});
    EXPECT_FALSE(box.Visible());
    Form().Text8.Move(300, 300, 80, 17);
    Form().Text8.Show();
    Form().Picture1.SetEnabled(true);
    driver::MoveTo(Form().Text8, {10, 3});
    EXPECT_FALSE(Form().Text8.Visible());
    app->display.HoverBoat = 1;
    driver::MoveTo(Form().Text1, {10, 3});
    EXPECT_EQ(app->display.HoverBoat, -1);
}

TEST_F(HintsTest, ThePointerOverADisabledControlIsOverItsPanel) {
    Point place;
    Form().Picture7.OnMouseMove = [&](const MouseEvent& event) {
        Form().Text7.Hide();
        place = {event.X, event.Y};
    };
    HintOver(Form().Check4);
    Form().Check5.SetEnabled(false);
    EXPECT_EQ(HintOver(Form().Check5), "");
    EXPECT_EQ(place.X, Form().Check5.Left() + 4);
    EXPECT_EQ(place.Y, Form().Check5.Top() + 6);
}

}  // namespace
}  // namespace keelview
