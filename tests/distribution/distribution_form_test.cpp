#include "distribution/distribution_form.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/qt_driver.h"
#include "support/test_world.h"

namespace keelview {
namespace {

namespace fs = std::filesystem;

struct DistributionFormTest : testing::Test, TestWorld {
    DistributionFormTest() {
        tree.Race("R1.txt", "");
        tree.Race("R2.txt", "");
        tree.Write("raceadmin/ver.txt", "");
        fs::create_directories(tree.Root() / "distribution/Old");
    }
};

TEST_F(DistributionFormTest, RacesAreChosenByClicksAndBuilt) {
    DistributionForm form(app.settings, services);
    form.ShowNow();
    driver::Click(form.Command1);  // nothing chosen: nothing said
    EXPECT_TRUE(dialogs.All().empty() && !form.Check2.Visible());
    driver::ClickRow(form.List1, 0);
    driver::Click(form.Command3);
    EXPECT_EQ(form.List2.ListCount(), 0);
    driver::ClickRow(form.List1, 1);
    driver::ClickRow(form.List1, 0);
    driver::ClickRow(form.List2, 1);
    EXPECT_EQ(form.Text1.Text(), "R1.txt");

    for (const auto& [name, said] : {std::pair{"  ", "Input folder name to be saved"},
                                     {"a/b", "A folder name must not"},
                                     {"old", "The same name folder exists. Input other name."}}) {
        form.Combo1.SetText(name);
        dialogs.AnswerOk();
        driver::Click(form.Command1);
        EXPECT_TRUE(Said().starts_with(said)) << name << Said();
        EXPECT_FALSE(form.Closed());
    }
    driver::Type(form.Combo1, "New one");
    driver::Click(form.Option2);
    dialogs.AnswerYesNo(false);
    driver::Click(form.Command1);
    dialogs.AnswerYesNo(true);
    dialogs.AnswerOk();
    driver::Click(form.Command1);
    EXPECT_TRUE(form.Closed());
    EXPECT_NE(Said().find("keelview\r\ngun.wav"), std::string::npos) << Said();  // this tree has none
    EXPECT_EQ(tree.Read("distribution/New one/raceadmin/racefile.st"), "R1.txt\r\n");
    EXPECT_EQ(tree.Read("distribution/New one/raceadmin/ver.00"), "1,1\r\n");
    EXPECT_EQ(platform.BusyPointers, (std::vector<bool>{true, false}));
}

TEST_F(DistributionFormTest, ABuildThatFailsIsToldAndTheFormStays) {
    fs::remove_all(tree.Root() / "distribution");
    tree.Write("distribution", "a file in the way");
    app.settings.UseEnglish = false;
    DistributionForm form(app.settings, services);
    form.ShowNow();
    driver::ClickRow(form.List1, 0);
    form.Combo1.SetText("江の島");
    dialogs.AnswerYesNo(true);
    dialogs.AnswerOk();
    driver::Click(form.Command1);
    EXPECT_TRUE(Said().starts_with("配布データを作成できませんでした")) << Said();
    EXPECT_FALSE(form.Closed());
    driver::Click(form.Command2);
    EXPECT_TRUE(form.Closed());
}

TEST_F(DistributionFormTest, TheTwoHundredFirstRaceAndTheFiftyFirstPickAreRefused) {
    for (int race = 100; race < 300; ++race) tree.Write("raceadmin/X" + std::to_string(race) + ".txt", "");
    dialogs.AnswerOk();
    DistributionForm form(app.settings, services);
    EXPECT_EQ(Said(), "Only the first 200 race files are listed. Not listed: 2");
    form.ShowNow();
    ASSERT_EQ(form.List1.ListCount(), 200);
    for (int pick = 1; pick <= 50; ++pick) driver::ClickRow(form.List1, 0);
    dialogs.AnswerOk();
    driver::ClickRow(form.List1, 0);
    EXPECT_EQ(Said(), "A distribution holds at most 50 races");
    EXPECT_EQ(form.List2.ListCount(), 50);
}

}  // namespace
}  // namespace keelview
