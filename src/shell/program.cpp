#include "shell/program.h"

#include <utility>

#include "distribution/distribution.h"

namespace keelview {

Program::Program(AppState& app, Services& services, Later later)
    : app_(app), services_(services), later_(std::move(later)) {}

bool Program::Start(StartOutcome outcome) {
    if (outcome == StartOutcome::ShowRace) return OpenDisplay();
    ShowMenu();
    return true;
}

void Program::ShowMenu() {
    menu_ = std::make_unique<Cover>(app_, services_,
                                    CoverDoors{.ShowDisplay = [this] { ShowDisplay(); },
                                               .ShowEditor = [this] { ShowEditor(); },
                                               .ShowDistribution = [this] { ShowDistribution(); }});
    menu_->ShowNow();
}

void Program::ShowEditor() {
    if (!editor_ || editor_->Closed()) {
        editor_ = std::make_unique<FmCompile>(app_, services_, question_, [this] { ShowDisplay(); });
        editor_->OnUnload = [this] { later_([this] { LetGoOfEditor(); }); };
    }
    editor_->ShowNow();
}

void Program::LetGoOfEditor() {
    if (editor_ && editor_->Closed()) editor_.reset();
}

void Program::ShowDistribution() {
    Haifu(app_, services_).ShowModal();
}

void Program::ShowDisplay() {
    later_([this] { OpenDisplay(); });
}

bool Program::OpenDisplay() {
    opened_ = std::make_unique<Opened>(app_, services_);
    opened_->splash.ShowNow();
    StandBack();
    RaceSession& session = opened_->desk.session;
    if (!app_.settings.EditMode)
        session.Display().OnQueryUnload = [this] { services_.platform.EndProcess(); };
    session.OnClosed = [this] { Display_Closed(); };
    if (session.StartSession()) return true;
    opened_.reset();
    ComeBack();
    return false;
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
