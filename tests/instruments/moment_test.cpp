#include <gtest/gtest.h>

#include "support/test_desk.h"

namespace keelview {
namespace {

/// What is seen while the film stands is of the present moment, whatever was done to it.
struct MomentTest : testing::Test, TestDesk {
    void OpenWithWind() {
        WriteRace(2, "WF, w.csv\r\n" + RaceTree::LineAcross(0.2));
        tree.Wind("w.csv", {{0, 10, 0}, {590, 10, 90}});
        Open();
    }
    /// The map as it would be if all of it were drawn anew now.
    Picture DrawnAnew() const {
        desk->session.TheStage().Repaint(Changed::Layers);
        driver::Settle();
        return Map().Image();
    }
    static bool Same(const Picture& a, const Picture& b) { return a.Data().Bits == b.Data().Bits; }
    /// Pixels of the ring round a boat.
    int Ring(int boat) const {
        const Picture sprite = Form().Boat[boat - 1].Image();
        return CountPixels(sprite, 0, 0, sprite.Width() - 1, sprite.Height() - 1,
                           [](int r, int g, int b) { return r > 200 && g < 60 && b < 60; });
    }
};

TEST_F(MomentTest, RingAndLabelGoWithThePointerWhereverItLeavesTheRowAndWithTheBoat) {
    WriteRace(3);
    Open();
    RaceDisp& form = Form();
    const int none = Ring(2);
    for (const Control* next : std::initializer_list<const Control*>{&Map(), &form.PicTimeBar, &form.Text1,
                                                                     &form.Picture6, &form.Check10}) {
        for (const int x : {5, 6}) driver::MoveTo(form.Bnam[1], {x, 5});
        EXPECT_GT(Ring(2), none);
        const double left = form.Text8.Left() - form.Boat[1].Left();
        Seek(150);
        EXPECT_NEAR(form.Text8.Left() - form.Boat[1].Left(), left, 1);
        EXPECT_NEAR(form.Text8.Top(), form.Boat[1].Top(), 1);
        Seek(50);
        driver::MoveTo(*next, {4, 4});
        EXPECT_EQ(Ring(2), none);
        EXPECT_FALSE(form.Text8.Visible());
    }
    driver::MoveTo(Map(), PixelOf(app.now.Boats[2].At()));
    const double below = form.Boat[1].Top() - form.Text7.Top();
    Seek(150);
    EXPECT_NEAR(form.Boat[1].Top() - form.Text7.Top(), below, 1);
}

TEST_F(MomentTest, ARowFollowsTheWindAndTheClockAlsoWhereNoBoatIsInView) {
    OpenWithWind();
    const auto angle = [this] { return LenientNumber(Form().Text6[0].Text()); };
    const double before = angle();  // at the same speed
    app.view.CentreOn({Lat + 5, Lon});
    Seek(150);
    EXPECT_FALSE(app.now.BoatInView);
    EXPECT_NEAR(angle(), before - 15, 1);
    EXPECT_EQ(Form().Text1.Text(), "2004/08/05 12:32:30");
}

TEST_F(MomentTest, TheTimeLineGoesOnWhenThePointerGoesFromTheBarIntoThePage) {
    WriteRace(2, RaceTree::LineAcross(0.2) + "CRS, L1, L1\r\n");
    Open();
    RaceDisp& form = Form();
    driver::Click(form.Option10);
    driver::MoveTo(form.PicTimeBar, {10, 300});
    driver::MoveTo(form.PicTimeBar, {11, 300});
    EXPECT_EQ(form.Line1.Y1(), 300);
    driver::MoveTo(form.GPIC, {150, 200});
    EXPECT_EQ(form.Line1.Y1(), desk->timeBar.Axis().Y(50));
    driver::MoveTo(form.PicTimeBar, {10, 300});
    driver::Click(form.Option11);
    driver::MoveTo(form.PicTimeBar, {11, 300});
    driver::MoveTo(form.PicTime, {150, 200});
    const double marker = form.BoatS[0].Top();
    Seek(250);
    EXPECT_LT(form.BoatS[0].Top(), marker);
}

TEST_F(MomentTest, LayLinesAreThoseOfTheWindNowAndNothingElseIsLost) {
    OpenWithWind();
    driver::Click(Form().Check1);
    for (const double time : {150, 160, 400, 80}) {
        Seek(time);
        const Picture shown = Map().Image();
        EXPECT_TRUE(Same(shown, DrawnAnew())) << time;
    }
    const Picture with = Map().Image();
    driver::Click(Form().Check8);  // no lay lines
    driver::Click(Form().Check8);
    EXPECT_TRUE(Same(Map().Image(), with));

    driver::Click(Form().Check1);
    driver::Click(Form().Check6);  // no tracks: the wakes grow
    const int side = static_cast<int>(app.view.MapSide);
    const auto white = [](int r, int g, int b) { return r > 230 && g > 230 && b > 230; };
    const auto wake = [&] { return CountPixels(Map().Image(), 200, 100, side - 200, side - 100, white); };
    const int before = wake();
    for (int time = 80; time < 140; ++time) Seek(time);
    EXPECT_GT(wake(), before + 20);
}

TEST_F(MomentTest, FinishersAreCountedFromTheFirstOneAndListedAsSoonAsTheCourseIsClicked) {
    WriteRace(2, "MK, 2117.5, 8369\r\nMK, 2117.8, 8369\r\n");
    tree.Boat("boat1.trk", Lat, Lon, SixKnots, 0, -200, 620);
    tree.Boat("boat2.trk", Lat, Lon, SixKnots * 1.2, 0, -200, 620);  // the second one in the list wins
    Open();
    const Surface& list = Form().Position;
    Seek(590);
    EXPECT_FALSE(list.Visible());
    driver::Click(Form().Command5);
    for (const double north : {0.5, 0.8}) ClickMap(PixelOf({Lat + north, Lon}));
    driver::Click(Form().Command5);
    EXPECT_EQ(app.race.CourseOrder.Count(), 2);
    EXPECT_TRUE(list.Visible());
    EXPECT_LT(FinishTime(app.passes, 2), FinishTime(app.passes, 1));
    EXPECT_EQ(FinishedBy(app.passes, 590), (std::vector<int>{2, 1}));
    const Picture shown = list.Image();
    *app.passes.FirstPassTime[2] += 100;  // one finished before the others had passed the mark before
    desk->session.TheStage().Repaint(Changed::Course);
    driver::Settle();
    EXPECT_TRUE(Same(list.Image(), shown));
}

TEST_F(MomentTest, ARaceThatIsReadTellsSoUnderItsTitleInTheMapAlsoFromTheGraphs) {
    WriteRace(2);
    tree.Race("R2.txt", "T2, Autumn\r\nBN, boat2.trk, Solo\r\n");
    Open(false);
    driver::Click(Form().Option10);
    Form().Combo1.SetText("R2.txt");
    int told = 0;
    desk->session.OnProgress = [&](std::string_view text, double) {
        if (text.empty()) return false;
        EXPECT_TRUE(Form().Picture1.Visible() && !Form().GPIC.Visible());
        EXPECT_TRUE(Form().Caption().ends_with("Autumn   (R2.txt)")) << Form().Caption();
        ++told;
        return false;
    };
    driver::Click(Form().Command9);
    EXPECT_EQ(told, 1);
    EXPECT_TRUE(Form().Option9.Value());
    EXPECT_FALSE(Form().Text12.Visible());
}

}  // namespace
}  // namespace keelview
