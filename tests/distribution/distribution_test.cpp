#include "distribution/distribution.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "base/files.h"
#include "support/fake_platform.h"
#include "support/qt_driver.h"
#include "support/race_tree.h"
#include "support/scripted_dialogs.h"

namespace keelview {
namespace {

namespace fs = std::filesystem;

struct HaifuTest : testing::Test {
    RaceTree tree;
    FakePlatform platform;
    ScriptedDialogs dialogs;
    Services services{platform, dialogs};
    AppState app;

    void SetUp() override {
        app.settings.AppPath = tree.Root();
        app.settings.AppTitle = "Keelview";
        app.settings.UseEnglish = true;
        tree.Race("R1.txt", "");
        tree.Race("R2.txt", "");
        tree.Write("raceadmin/ver.txt", "");
        fs::create_directories(tree.Root() / "distribution/Old");
    }
    std::string LastSaid() const { return dialogs.All().back().Text; }
};

TEST_F(HaifuTest, RacesAreChosenByClicksAndBuilt) {
    Haifu form(app, services);
    form.ShowNow();
    EXPECT_FALSE(form.Check2.Visible());
    ASSERT_EQ(form.List1.ListCount(), 2);
    driver::Click(form.Command1);  // nothing chosen: nothing said
    EXPECT_TRUE(dialogs.All().empty());
    driver::ClickRow(form.List1, 0);
    driver::Click(form.Command3);
    EXPECT_EQ(form.List2.ListCount(), 0);
    driver::ClickRow(form.List1, 1);
    driver::ClickRow(form.List1, 0);
    driver::ClickRow(form.List2, 1);
    EXPECT_EQ(form.Text1.Text(), "R1.txt");

    struct Case {
        const char* Name;
        const char* Said;
    };
    for (const Case& each :
         {Case{"", "Input folder name to be saved"}, Case{"  ", "Input folder name to be saved"},
          Case{"a/b", "A folder name must not"}, Case{"..", "A folder name must not"},
          Case{"old", "The same name folder exists. Input other name."}}) {
        SCOPED_TRACE(each.Name);
        form.Combo1.SetText(each.Name);
        dialogs.AnswerOk();
        driver::Click(form.Command1);
        EXPECT_TRUE(LastSaid().starts_with(each.Said)) << LastSaid();
        EXPECT_FALSE(form.Closed());
    }
    driver::Type(form.Combo1, "New one");
    driver::Click(form.Option2);
    dialogs.AnswerYesNo(false);
    driver::Click(form.Command1);
    EXPECT_FALSE(form.Closed());
    dialogs.AnswerYesNo(true);
    dialogs.AnswerOk();
    driver::Click(form.Command1);
    EXPECT_TRUE(form.Closed());
    EXPECT_NE(LastSaid().find("keelview\r\ngun.wav"), std::string::npos)
        << LastSaid();  // this tree has none
    EXPECT_EQ(tree.Read("distribution/New one/raceadmin/racefile.st"), "R1.txt\r\n");
    EXPECT_EQ(tree.Read("distribution/New one/raceadmin/ver.00"), "1,1\r\n");
    EXPECT_TRUE(IsFile(tree.Root() / "distribution/New one/raceadmin/R2.txt"));
    EXPECT_EQ(platform.BusyPointers, (std::vector<bool>{true, false}));
}

TEST_F(HaifuTest, ABuildThatFailsIsToldAndTheFormStays) {
    fs::remove_all(tree.Root() / "distribution");
    tree.Write("distribution", "a file in the way");
    app.settings.UseEnglish = false;
    Haifu form(app, services);
    form.ShowNow();
    driver::ClickRow(form.List1, 0);
    form.Combo1.SetText("江の島");
    dialogs.AnswerYesNo(true);
    dialogs.AnswerOk();
    driver::Click(form.Command1);
    EXPECT_TRUE(LastSaid().starts_with("配布データを作成できませんでした")) << LastSaid();
    EXPECT_FALSE(form.Closed());
    driver::Click(form.Command2);
    EXPECT_TRUE(form.Closed());
}

TEST_F(HaifuTest, TheTwoHundredFirstRaceAndTheFiftyFirstPickAreRefused) {
    for (int race = 100; race < 300; ++race) tree.Write("raceadmin/X" + std::to_string(race) + ".txt", "");
    dialogs.AnswerOk();
    Haifu form(app, services);
    EXPECT_EQ(LastSaid(), "Only the first 200 race files are listed. Not listed: 2");
    form.ShowNow();
    ASSERT_EQ(form.List1.ListCount(), 200);
    for (int pick = 1; pick <= 50; ++pick) driver::ClickRow(form.List1, 0);
    EXPECT_EQ(form.List2.ListCount(), 50);
    dialogs.AnswerOk();
    driver::ClickRow(form.List1, 0);
    EXPECT_EQ(LastSaid(), "A distribution holds at most 50 races");
    EXPECT_EQ(form.List2.ListCount(), 50);
}

}  // namespace
}  // namespace keelview
