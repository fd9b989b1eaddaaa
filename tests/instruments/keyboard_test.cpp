#include <gtest/gtest.h>

#include <QApplication>
#include <QWidget>
#include <set>
#include <string>

#include "support/open_race.h"

namespace keelview {
namespace {

struct KeyboardTest : testing::Test, OpenRace {
    /// The names of all controls that Tab comes to, until it comes round.
    std::set<std::string> TabStops() const {
        std::set<std::string> stops;
        for (int press = 0; press < 200; ++press) {
            driver::Key(Form(), Qt::Key_Tab);
            const QWidget* focus = QApplication::focusWidget();
            if (focus != nullptr) stops.insert(focus->objectName().toStdString());
        }
        return stops;
    }
    void Space(const Control& control) const {
        driver::Face(control).setFocus();
        driver::Key(control, Qt::Key_Space);
    }
};

TEST_F(KeyboardTest, TabComesToEveryControlAndOneOfEachGroup) {
    Open();
    const std::set<std::string> stops = TabStops();
    for (const char* name :
         {"Text3",    "Bnam(0)", "Bnam(1)",   "Maru(0)",  "Maru(1)",  "Label5",   "Option6", "Command6",
          "Command7", "Option3", "Option9",   "HScroll1", "Command2", "Command3", "Text9",   "Text10",
          "Command4", "Check7",  "Check3",    "Check10",  "Check6",   "Check5",   "Check1",  "Check8",
          "BCOL1",    "BCOL6",   "Command10", "Command1", "Label1"})
        EXPECT_TRUE(stops.contains(name)) << name;
}

TEST_F(KeyboardTest, SpaceAndArrowsWorkAsTheMouseDoes) {
    Open();
    Space(Form().Command2);
    EXPECT_EQ(Form().Command2.GetBackColor(), Yellow);
    Space(Form().Check3);
    EXPECT_FALSE(app->display.HintsOn);
    Space(Form().BCOL6);
    EXPECT_EQ(app->display.SeaColour, Form().BCOL6.BackColor);
    Space(Form().Bnam[0]);
    EXPECT_FALSE(Form().Bnam[0].Value());
    Space(Form().Label5);
    EXPECT_TRUE(Form().Bnam[0].Value());
    app->race.WindDirection = 40;
    Form().Option2.SetFocus();
    driver::Key(Form().Option2, Qt::Key_Up);
    EXPECT_TRUE(Form().Option3.Value());
    EXPECT_FALSE(app->race.NorthUp);
    EXPECT_EQ(app->view.ScreenUpDirection, 40);
    driver::Key(Form().Option2, Qt::Key_Down);
    EXPECT_TRUE(app->race.NorthUp);
}

}  // namespace
}  // namespace keelview
