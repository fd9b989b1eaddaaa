#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

#include "editor/race_editor.h"
#include "instruments/race_desk.h"
#include "session/app_state.h"
#include "shell/cover.h"
#include "shell/splash.h"
#include "shell/start.h"

namespace keelview {

/// The forms of the program and the ways between them. The menu leads to the race control editor, to the
/// distribution builder and to the race display, and both it and the editor to the display; a closed
/// display leads back. Each opening has a display of its own, so that nothing of a race outlives its
/// closing. While it stands menu and editor are hidden: the race that it shows cannot be changed behind its
/// back.
class Program {
  public:
    /// Has a task done when no event runs, in the order of the calls.
    using Later = std::function<void(std::function<void()>)>;
    Program(AppState& app, Services& services, Later later);

    /// Shows the first form: the menu, or the race of the shared state, with whose closing the process
    /// ends. Where that race has nothing to show the person has been told, and chooses from the menu. The
    /// menu goes on to a race of the files that the program was started with.
    void Start(StartOutcome outcome, std::vector<std::filesystem::path> files = {});

    /// Has a race made of track files and folders, as soon as no event runs, and opens it. A race that is
    /// shown stays where none is made. Without files the person is asked for some.
    void MakeRaceOf(std::vector<std::filesystem::path> files);

    Cover* TheMenu() { return menu_.get(); }                            ///< none where one race is all
    RaceEditor* TheEditor() { return editor_.get(); }                   ///< none while it is closed
    RaceDesk* TheDesk() { return opened_ ? &opened_->desk : nullptr; }  ///< none while it is closed

  private:
    /// One opening of the race display, with the splash that covers its loads.
    struct Opened {
        Opened(AppState& app, Services& services)
            : splash(app.settings, services.platform.Screen()), desk(app, services) {}
        Splash splash;
        RaceDesk desk;
    };

    void ShowMenu();
    void ShowEditor();
    bool LeaveEditor();
    void LetGoOfEditor();
    void ShowDistribution();
    void ShowImport(std::vector<std::filesystem::path> files);
    void ShowWind();
    void TakeDropsOn(Form& form);
    void ShowDisplay();
    void ShowSavedRace();
    bool OpenDisplay();
    void ConnectDisplay();
    void Display_Closed();
    void StandBack();
    void ComeBack();

    AppState& app_;
    Services& services_;
    Later later_;
    std::unique_ptr<Cover> menu_;
    std::unique_ptr<RaceEditor> editor_;
    std::unique_ptr<Opened> opened_;
    bool importing_ = false;
};

}  // namespace keelview
