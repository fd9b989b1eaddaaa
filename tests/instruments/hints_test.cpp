#include "instruments/hints.h"

#include <gtest/gtest.h>

#include "support/test_desk.h"

namespace keelview {
namespace {

struct HintsTest : testing::Test, TestDesk {
    const TextBox& Box() const { return Form().Text7; }
    std::string HintOver(const Control& control) const {
        // The box of the hint before may lie in the way.
        for (const QPoint at : {QPoint(3, 6), {4, 6}}) driver::MoveTo(control, at);
        return Box().Visible() ? Box().Text() : "";
    }
};

TEST_F(HintsTest, AHintStandsWhereItsColumnAndRowSay) {
    Open();
    RaceDisp& form = Form();
    driver::Click(form.Option10);
    form.btnHATENA.Show();
    const double left = form.Picture7.Left();
    const struct {
        const Control &owner, &parent;
        const char* begins;
        double column;  // the hint's left edge, or its right one where that is fixed
        bool right;
        double below;  // its top under that of the control, or its bottom where that lies above
    } cases[] = {
        {form.Check7, form.Picture7, "Draw coast line", left + 10, false, -5},
        {form.Command2, form.Picture7, "Click this button and", left + form.Picture7.Width() - 5, true, -5},
        {form.Check10, form.Picture7, "Enlarge", left + form.Check10.Left() - 150, false, -5},
        {form.btnHATENA, form.Picture7, "Show HELP", left + form.btnHATENA.Left() - 5, true, 0},
        {form.Command12, form.GPIC, "ここをクリックすると", form.GPIC.Left() + form.Command12.Left(), false,
         21}};
    for (const auto& c : cases) {
        EXPECT_TRUE(HintOver(c.owner).starts_with(c.begins)) << Box().Text();
        EXPECT_EQ(Box().Left() + (c.right ? Box().Width() : 0), c.column) << c.begins;
        EXPECT_EQ(Box().Top() + (c.below < 0 ? Box().Height() : 0),
                  c.parent.Top() + c.owner.Top() + c.below);
    }
}

TEST_F(HintsTest, HintsStandOnTheirColourAndLeaveWhatIsWorthItWhenSwitchedOff) {
    Open(true, false);
    EXPECT_EQ(HintOver(Form().BCOL6), "海面の色を変更します");
    EXPECT_EQ(Box().GetBackColor(), Form().BCOL6.BackColor);
    EXPECT_NE(HintOver(Form().Check3), "");
    EXPECT_EQ(Box().GetBackColor(), HintBackground);
    driver::Click(Form().Check3);
    EXPECT_EQ(HintOver(Form().Command2), "");
    EXPECT_NE(HintOver(Form().Check3), "");
    EXPECT_NE(HintOver(Form().Command1), "");
    Open(false);
    EXPECT_EQ(HintOver(Form().Command1), "");  // no menu stands behind it
}

}  // namespace
}  // namespace keelview
