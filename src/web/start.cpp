// The program of a page: opens the race that the page holds, and answers what the page asks of it.

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/files.h"
#include "base/numbers.h"
#include "base/page_files.h"
#include "base/strings.h"
#include "display/web/page_calls.h"
#include "display/web/system.h"
#include "instruments/race_desk.h"
#include "racedata/start_files.h"
#include "report/race_report.h"
#include "session/moment_link.h"

namespace keelview {

namespace {

/// The display of a page. A page has one, from its start on; it shows the race without changing it.
class PageDesk {
  public:
    PageDesk()
        : system_(MakePagePlatform()), questions_(MakePageDialogs()), services_{*system_, *questions_} {}

    bool Open() {
        Settings& settings = app_.settings;
        settings.AppPath = system_->ProgramFolder();
        settings.EditMode = false;
        settings.UseEnglish =
            ReadStartSettings(settings.AppPath).UseEnglish.value_or(!system_->UserIsJapanese());
        app_.race.RaceFileName = ReadStartRace(settings.AppPath).value_or(FirstRace());
        MakeDesk();
        return settings.UseEnglish;
    }

    /// Shows the same moment in the other language.
    void Speak(bool english) {
        std::string moment = Link();
        // A view that begins to follow the boats in a moment is not held.
        if (desk_->form.Timer2.Enabled()) moment.resize(std::min(moment.find("&x="), moment.size()));
        const std::vector<bool> ticks = Ticks();
        const bool stopped = desk_->session.TheFilm().Stopped();
        const double speed = app_.clock.SpeedMultiplier;
        desk_.reset();
        app_.settings.UseEnglish = english;
        MakeDesk();
        desk_->session.TheFilm().SetSpeed(speed);
        Follow(moment);
        std::size_t at = 0;
        for (CheckBox* box : Choices()) box->SetValue(ticks[at++]);
        if (stopped) desk_->form.Option7.SetValue(true);
    }

    /// A link has the name of its race before the moment where the page holds several.
    void Follow(std::string_view link) {
        std::string_view rest = link;
        std::string_view name = CutHead(rest, '&');
        if (CutHead(name, '=') == "race") {
            if (name != app_.race.RaceFileName) desk_->session.OpenOtherRace(std::string(name));
            link = rest;
        }
        FollowMomentLink(desk_->session, link);
    }

    std::string Link() {
        const std::string moment = MomentLink(desk_->session);
        const bool several = ListFiles(FindBelow(app_.settings.AppPath, "raceadmin"), "*.txt").size() > 1;
        return several ? "race=" + app_.race.RaceFileName + "&" + moment : moment;
    }

    std::string Report(std::string_view moments) const {
        std::vector<double> at;
        for (const std::string_view moment : Split(moments, ','))
            if (const auto seconds = StrictNumber(moment)) at.push_back(*seconds);
        return RaceReport(app_, at);
    }

  private:
    /// What a person chooses to see, but for the following of the boats.
    std::vector<CheckBox*> Choices() const {
        RaceDisp& form = desk_->form;
        return {&form.Check1, &form.Check3, &form.Check4, &form.Check6,
                &form.Check7, &form.Check8, &form.Check9, &form.Check10};
    }

    std::vector<bool> Ticks() const {
        std::vector<bool> ticks;
        for (const CheckBox* box : Choices()) ticks.push_back(box->Value());
        return ticks;
    }

    std::string FirstRace() const {
        const auto races = ListFiles(FindBelow(app_.settings.AppPath, "raceadmin"), "*.txt");
        return races.empty() ? std::string() : races.front();
    }

    void MakeDesk() {
        app_.settings.AppTitle = Text{"Keelview", "キールビュー"}.Str(app_.settings.UseEnglish);
        desk_ = std::make_unique<RaceDesk>(app_, services_);
        desk_->OnReferences = [] { page::PageOfferDocuments(); };
        desk_->session.StartSession();
    }

    std::unique_ptr<Platform> system_;
    std::unique_ptr<Dialogs> questions_;
    Services services_;
    AppState app_;
    std::unique_ptr<RaceDesk> desk_;
};

PageDesk& ThePage() {
    static PageDesk page;
    return page;
}

const char* Answer(std::string_view text) {
    char* const room = PageAnswer::Room(text.size());
    std::ranges::copy(text, room);
    return room;
}

}  // namespace

extern "C" {

/// Takes a file of the page, whose content the page then writes to the place that it gets.
[[clang::export_name("BeginFile")]] char* BeginFile(const char* path, std::size_t pathSize,
                                                    std::size_t size) {
    return AddPageFile(std::string(path, pathSize), std::string(size, '\0'));
}

/// Shows the race; true if it speaks English.
[[clang::export_name("Start")]] bool Start() {
    return ThePage().Open();
}

[[clang::export_name("Speak")]] void Speak(bool english) {
    ThePage().Speak(english);
}

[[clang::export_name("FollowLink")]] void FollowLink(const char* link, std::size_t size) {
    ThePage().Follow(std::string(link, size));
}

[[clang::export_name("LinkNow")]] const char* LinkNow() {
    return Answer(ThePage().Link());
}

[[clang::export_name("Report")]] const char* Report(const char* moments, std::size_t size) {
    return Answer(ThePage().Report({moments, size}));
}

[[clang::export_name("AnswerSize")]] std::size_t AnswerSize() {
    return PageAnswer::Size();
}

}  // extern "C"

}  // namespace keelview
