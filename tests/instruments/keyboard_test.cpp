#include <gtest/gtest.h>

#include <QApplication>
#include <QWidget>
#include <set>

#include "support/test_desk.h"

namespace keelview {
namespace {

struct KeyboardTest : testing::Test, TestDesk {};

TEST_F(KeyboardTest, TabComesToEveryControlWhereSpaceAndArrowsWorkAsTheMouseDoes) {
    Open();
    std::set<QString> stops;
    for (int press = 0; press < 50; ++press) {
        driver::Key(Form(), Qt::Key_Tab);
        if (const QWidget* focus = QApplication::focusWidget()) stops.insert(focus->objectName());
    }
    for (const char* name :
         {"Text3", "Bnam(0)", "Maru(1)", "Label5", "Option6", "Command6", "Option3", "Option9", "HScroll1",
          "Command2", "Text9", "Command4", "Check5", "BCOL1", "BCOL6", "Label1"})
        EXPECT_TRUE(stops.contains(name)) << name;
    for (const Control* control :
         std::initializer_list<const Control*>{&Form().Command2, &Form().BCOL6, &Form().Bnam[0]}) {
        driver::Face(*control).setFocus();
        driver::Key(*control, Qt::Key_Space);
    }
    EXPECT_EQ(Form().Command2.GetBackColor(), Yellow);
    EXPECT_EQ(Map().BackColor, Form().BCOL6.BackColor);
    EXPECT_FALSE(Form().InFocus(1));
    Form().Option2.SetFocus();
    driver::Key(Form().Option2, Qt::Key_Up);
    EXPECT_FALSE(app.race.NorthUp);
}

}  // namespace
}  // namespace keelview
