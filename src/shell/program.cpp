#include "shell/program.h"

#include <utility>

#include "distribution/distribution_form.h"
#include "import/import_sheet.h"
#include "import/wind_sheet.h"
#include "racedata/tracks/formats.h"
#include "shell/race_page.h"
#include "shell/race_search.h"
#include "shell/reference_viewer.h"

namespace keelview {

Program::Program(AppState& app, Services& services, Later later)
    : app_(app), services_(services), later_(std::move(later)) {}

void Program::Start(StartOutcome outcome, std::vector<std::filesystem::path> files) {
    if (outcome == StartOutcome::ShowRace && OpenDisplay()) return;
    ShowMenu();
    if (app_.settings.EditMode && !files.empty()) MakeRaceOf(std::move(files));
}

void Program::ShowMenu() {
    menu_ = std::make_unique<Cover>(app_.settings, app_.race, services_,
                                    CoverDoors{.ShowDisplay = [this] { ShowDisplay(); },
                                               .ShowEditor = [this] { ShowEditor(); },
                                               .ShowDistribution = [this] { ShowDistribution(); },
                                               .ShowImport = [this] { MakeRaceOf({}); },
                                               .ShowWind = [this] { ShowWind(); },
                                               .MayEnd = [this] { return LeaveEditor(); }});
    TakeDropsOn(*menu_);
    menu_->ShowNow();
}

void Program::ShowEditor() {
    if (!editor_ || editor_->Closed()) {
        editor_ = std::make_unique<RaceEditor>(app_.settings, app_.race, services_,
                                               [this] { later_([this] { ShowSavedRace(); }); });
        TakeDropsOn(*editor_);
        editor_->OnUnload = [this] { later_([this] { LetGoOfEditor(); }); };
    }
    editor_->ShowNow();
}

/// False if the person stays, as something there is not saved.
bool Program::LeaveEditor() {
    if (editor_) editor_->Close();
    return !editor_ || editor_->Closed();
}

void Program::LetGoOfEditor() {
    if (!editor_ || !editor_->Closed()) return;
    editor_.reset();
    if (!opened_) services_.platform.ClaimFile({});
}

void Program::ShowDistribution() {
    DistributionForm(app_.settings, services_).ShowModal();
}

void Program::ShowWind() {
    WindSheet(app_.settings, services_).exec();
}

void Program::TakeDropsOn(Form& form) {
    if (!app_.settings.EditMode) return;
    form.OnFilesDropped = [this](const std::vector<std::filesystem::path>& files) { MakeRaceOf(files); };
}

void Program::MakeRaceOf(std::vector<std::filesystem::path> files) {
    later_([this, files = std::move(files)]() mutable { ShowImport(std::move(files)); });
}

void Program::ShowImport(std::vector<std::filesystem::path> files) {
    if (importing_ || services_.platform.Ending()) return;
    const Voice voice(app_.settings, services_.dialogs);
    if (files.empty())
        files = services_.dialogs.ChooseFiles(voice.In({"Track files", "航跡ファイル"}), {},
                                              TrackFilePatterns());
    if (files.empty()) return;
    importing_ = true;
    const std::string made = ImportSheet(app_.settings, services_).MakeRace(files);
    importing_ = false;
    if (made.empty()) return;
    if (opened_) return opened_->desk.session.OpenOtherRace(made);
    ClearRaceState(app_.race);
    app_.race.RaceFileName = made;
    OpenDisplay();
}

void Program::ShowDisplay() {
    later_([this] { OpenDisplay(); });
}

/// The editor is done with a race that is shown; one that is not is to be put right there.
void Program::ShowSavedRace() {
    if (OpenDisplay() && editor_) editor_->Close();
}

bool Program::OpenDisplay() {
    opened_ = std::make_unique<Opened>(app_, services_);
    ConnectDisplay();
    Splash& splash = opened_->splash;
    splash.ShowNow();
    StandBack();
    splash.Refresh();
    const bool opened = opened_->desk.session.StartSession();
    splash.Close();
    if (opened) return true;
    opened_.reset();
    ComeBack();
    return false;
}

void Program::ConnectDisplay() {
    RaceSession& session = opened_->desk.session;
    session.OnClosed = [this] { Display_Closed(); };
    session.OnProgress = [this](std::string_view text, double share) {
        Splash& splash = opened_->splash;
        if (!splash.Visible()) return false;
        splash.ShowProgress(text, share);
        return true;
    };
    opened_->desk.OnReferences = [this] {
        ReferenceViewer(app_.settings, app_.race, services_).ShowModal();
    };
    opened_->desk.OnFindRace = [this] { OfferFoundRace(opened_->desk.session); };
    opened_->desk.OnPage = [this] { OfferPage(app_.settings, app_.race, services_); };
    session.Display().Command18.SetVisible(!app_.race.RaceFileName.empty());
    TakeDropsOn(session.Display());
    if (!menu_) session.Display().OnQueryUnload = [this](bool&) { services_.platform.EndProcess(); };
}

void Program::Display_Closed() {
    ComeBack();
    later_([this] { opened_.reset(); });
}

void Program::StandBack() {
    if (menu_) menu_->Hide();
    if (editor_) editor_->Hide();
}

void Program::ComeBack() {
    if (menu_) menu_->ShowNow();
    if (editor_ && !editor_->Closed()) editor_->ShowNow();
}

}  // namespace keelview
