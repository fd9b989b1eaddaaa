#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <string>

#include "distribution/distribution_form.h"
#include "editor/race_editor.h"
#include "shell/cover.h"
#include "shell/reference_viewer.h"
#include "shell/splash.h"
#include "support/album.h"
#include "support/sailed_race.h"
#include "support/test_desk.h"

namespace keelview {
namespace {

/// A race of five boats with all that a race can have, and what each form looks like with it.
struct PicturesTest : testing::TestWithParam<bool>, TestDesk {
    bool english = GetParam();

    PicturesTest() {
        SailedRace race(7);
        race.Wind = 10;
        race.Write(tree, "R1.txt", "T1, Spring Cup\r\nT2, R1\r\nMG, -7\r\nWF, w.csv\r\nAT, notice.pdf\r\n");
        tree.Wind("w.csv", {{0, 8, 350}, {1200, 12, 30}, {2400, 6, 0}});
        tree.Write("attachment/notice.pdf", "x");
        app.settings.UseEnglish = english;
        platform.Local.Seconds = 9 * 3600;
    }
    std::string Name(const char* view) const { return view + std::string(english ? "_en" : "_ja"); }
};

TEST_P(PicturesTest, TheRaceDisplayLooksAsEver) {
    Open(true, english);
    RaceDisp& form = Form();
    const auto click = [](Control& control) { return [&control] { driver::Click(control); }; };
    const auto point = [](Control& control) {
        return [&control] { driver::MoveTo(control, {3, 6}), driver::MoveTo(control, {4, 6}); };
    };
    const auto seek = [this](double time) { return [this, time] { Seek(time); }; };
    // One after the other, each step upon what was done before.
    const std::pair<const char*, std::vector<std::function<void()>>> views[] = {
        {"start", {seek(-30)}},
        {"map", {seek(900), click(form.Check9), click(form.Check1), click(form.Check4)}},
        {"zoomed",
         {click(form.Option2),
          [this] {
              ClickMap({500, 300});
          },
          click(form.Bnam[1])}},
        {"trace", {seek(1300), click(form.Check5), click(form.Maru[2]), click(form.Bnam[1])}},
        {"finish", {click(form.Check5), click(form.Option3), seek(LatestFixTime(app.tracks) - 5)}},
        {"graphs", {seek(900), click(form.Option10)}},
        {"wind_entry", {click(form.Command12)}},
        {"times", {click(form.Option11)}},
        {"distances", {click(form.Option4)}},
        {"speeds", {click(form.Option5)}},
        {"factors", {click(form.Option12)}},
        {"times_focus", {click(form.Option1), click(form.Bnam[1])}},
        {"graphs_focus", {click(form.Option10), point(form.Command12)}},
        {"hint_left", {click(form.Option9), point(form.Check7)}},
        {"hint_right", {point(form.Command2)}},
        {"hint_above", {point(form.Check10)}},
        {"hint_bar", {point(form.PicTimeBar)}},
        {"hint_boat", {point(form.Maru[1])}},
        {"hint_boats", {point(form.Label5)}}};
    const std::set<std::string> onceMore{"start", "graphs", "times", "factors"};
    dialogs.AnswerYesNo(true);  // the wind file may be overwritten
    for (const auto& [view, steps] : views) {
        for (const auto& step : steps) step(), driver::Settle();
        // Where nothing is written but numbers, one language tells as much as two.
        if (english || onceMore.contains(view)) ExpectLooksAsEver(form, Name(view));
    }
}

TEST_P(PicturesTest, TheRaceDisplayWithoutEditingLooksAsEver) {
    Open(false, english);
    ExpectLooksAsEver(Form(), Name("browse"));
}

TEST_P(PicturesTest, TheOtherFormsLookAsEver) {
    Cover menu(app.settings, app.race, services, {});
    menu.ShowNow();
    driver::Click(menu.Command3);
    driver::MoveTo(menu.Command4, {5, 5});
    ExpectLooksAsEver(menu, Name("menu"));
    menu.Close();
    RaceEditor editor(app.settings, app.race, services, [] {});
    editor.ShowNow();
    ExpectLooksAsEver(editor, Name("editor"));
    editor.Close();
    DistributionForm distribution(app.settings, services);
    distribution.ShowNow();
    ExpectLooksAsEver(distribution, Name("distribution"));
    distribution.Close();
    app.race.AttachFile.Add("notice.pdf");
    ReferenceViewer viewer(app.settings, app.race, services);
    viewer.ShowNow();
    ExpectLooksAsEver(viewer, Name("references"));
    Splash splash(app.settings, platform.Screen());
    splash.ShowNow();
    splash.ShowProgress("Boat 1\n1/5", 0.4);
    ExpectLooksAsEver(splash, Name("splash"));
}

INSTANTIATE_TEST_SUITE_P(BothLanguages, PicturesTest, testing::Bool());

}  // namespace
}  // namespace keelview
