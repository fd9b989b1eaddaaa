#include "instruments/side_panel.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/files.h"
#include "base/paths.h"
#include "display/platform.h"
#include "instruments/side_document.h"
#include "session/documents.h"

namespace keelview {

namespace {

enum SideTab { Board, Start, Turns, WindAndCurrent, PolarSpeeds, Losses };

constexpr double WideFrom = 430.0;  // pixels from which all columns have room
constexpr double ProgressWidth = 200.0;
constexpr double ProgressHeight = 8.0;
constexpr double PaperWidth = 640.0;
constexpr double WheelPitch = 15.0;
constexpr int WindEvery = 30;  // seconds between the samples that are taken as the race's wind
constexpr Colour ProgressColour = Rgb(0, 96, 200);

}  // namespace

SidePanel::SidePanel(RaceSession& session)
    : session_(session), app_(session.App()), form_(session.Display()), coach_(session.TheCoach()) {
    form_.Command14.OnClick = [this] { Command14_Click(); };
    form_.Command15.OnClick = [this] { Command15_Click(); };
    form_.Command16.OnClick = [this] { Command16_Click(); };
    form_.Command17.OnClick = [this] { Command17_Click(); };
    form_.Picture17.OnMouseDown = [this](const MouseEvent& event) { Picture17_MouseDown(event); };
    form_.Picture17.OnWheel = [this](const WheelEvent& turn) {
        form_.VScroll4.SetValue(form_.VScroll4.Value() + static_cast<int>(turn.Lines * WheelPitch));
    };
    form_.Check11.OnClick = [this] { Draw(true); };
    form_.VScroll4.OnChange = [this] { VScroll4_Change(); };
    for (OptionButton* tab : form_.SideTabs())
        tab->OnClick = [this] {
            form_.VScroll4.SetValue(0);
            Draw(true);
        };
}

bool SidePanel::IsOut() const {
    return form_.Picture16.Visible();
}

int SidePanel::Tab() const {
    const auto tabs = form_.SideTabs();
    const auto chosen = std::ranges::find_if(tabs, [](const OptionButton* tab) { return tab->Value(); });
    return static_cast<int>(chosen - tabs.begin());
}

void SidePanel::Repaint(Changed changed) {
    if (Any(changed, Changed::Boats | Changed::Race)) chosen_ = beside_ = 0;
    const Changed mine = Changed::Answers | Changed::Race | Changed::Course | Changed::Wind |
                         Changed::Size | Changed::Focus | Changed::Boats;
    if (!IsOut())
        MarkTurns(nullptr);
    else if (Any(changed, mine))
        Draw(true);
}

void SidePanel::Show(const Moment& now) {
    if (!IsOut()) return;
    if (std::floor(now.Time) != shownAt_) Draw(false);
    if (const CoachAnswers* answers = coach_.Answers()) PlaceCursor(*answers);
}

SideFocus SidePanel::Focus() const {
    return {.InFocus = [this](int boat) { return form_.InFocus(boat); }, .Chosen = chosen_};
}

SideBlocks SidePanel::Blocks(const CoachAnswers& answers) const {
    const SideView view{.Answers = answers,
                        .English = app_.settings.UseEnglish,
                        .Wide = form_.Picture17.Width() >= WideFrom,
                        .Time = app_.clock.ReplayTime,
                        .Chosen = chosen_,
                        .Beside = beside_,
                        .Focus = Focus(),
                        .LessCurrent = form_.Check11.Value()};
    switch (Tab()) {
        case Board:
            return BoardTab(view);
        case Start:
            return StartTab(view);
        case Turns:
            return TurnsTab(view);
        case WindAndCurrent:
            return WindTab(view);
        case PolarSpeeds:
            return PolarTab(view);
        default:
            return DebriefTab(view);
    }
}

/// `whole`: also what follows no film.
void SidePanel::Draw(bool whole) {
    shownAt_ = std::floor(app_.clock.ReplayTime);
    const bool hasBoats = app_.race.Boats.Count() > 0;
    const CoachAnswers* answers = hasBoats ? coach_.Answers() : nullptr;
    form_.Command16.SetVisible(Tab() == WindAndCurrent && app_.settings.EditMode);
    form_.Check11.SetVisible(Tab() == PolarSpeeds && answers != nullptr && answers->WaterSpeeds);
    if (whole) MarkTurns(answers);
    if (answers == nullptr) return DrawProgress();
    const bool follows = Tab() == Board || Tab() == WindAndCurrent;
    if (!whole && !follows) return;
    Surface& page = form_.Picture17;
    page_.Show(page, Blocks(*answers), Focus(), form_.VScroll4.Value(), whole);
    const int beyond = std::max(0, static_cast<int>(std::ceil(page_.Height() - page.Height())));
    form_.VScroll4.SetVisible(beyond > 0);
    form_.VScroll4.SetView(beyond, static_cast<int>(WheelPitch), static_cast<int>(page.Height()));
    PlaceCursor(*answers);
}

/// The map marks the turns that the panel tells of, as long as it does.
void SidePanel::MarkTurns(const CoachAnswers* answers) {
    const int boat = answers != nullptr && Tab() == Turns ? chosen_ : 0;
    std::vector<TurnMark> marks;
    if (boat > 0)
        for (const Manoeuvre& turn : RacedTurns(*answers, boat))
            marks.push_back({.Time = turn.Time, .Kind = turn.Kind, .LossMetres = turn.LossMetres});
    Shown& shown = app_.shown;
    if (std::exchange(shown.TurningBoat, boat) == boat && shown.Turns == marks) return;
    shown.Turns = std::move(marks);
    session_.TheStage().Repaint(Changed::Layers);
}

void SidePanel::DrawProgress() {
    Surface& page = form_.Picture17;
    form_.Line6.SetVisible(false);
    form_.VScroll4.Hide();
    page.Cls();
    page.ForeColor = Black;
    page.PrintAt(10, 10, session_.TheVoice().In({"Working out the race ...", "レースを解析中 ..."}));
    page.FilledBox(10, 32, 10 + ProgressWidth, 32 + ProgressHeight, ButtonFace);
    page.FilledBox(10, 32, 10 + ProgressWidth * coach_.ShareDone(), 32 + ProgressHeight, ProgressColour);
}

/// On the first picture of the tabs whose pictures run over time.
void SidePanel::PlaceCursor(const CoachAnswers& answers) {
    const std::optional<std::size_t> block = Tab() == Board            ? std::optional<std::size_t>(1)
                                             : Tab() == WindAndCurrent ? std::optional<std::size_t>(0)
                                                                       : std::nullopt;
    const Bounds place = block ? page_.PlaceOf(*block) : Bounds();
    const double duration = std::max(1, answers.Race.RaceDuration);
    const double share = app_.clock.ReplayTime / duration;
    const bool seen = place.High.X > place.Low.X && share >= 0 && share <= 1;
    form_.Line6.SetVisible(seen);
    if (!seen) return;
    const double x = place.Low.X + share * (place.High.X - place.Low.X);
    form_.Line6.Place(x, place.Low.Y, x, place.High.Y);
}

void SidePanel::VScroll4_Change() {
    Draw(true);
}

void SidePanel::Command14_Click() {
    form_.Text7.Hide();  // the button goes from under the pointer, which leaves nothing by that
    form_.SlideSidePanel(!IsOut());
    if (IsOut())
        Draw(true);
    else
        MarkTurns(nullptr);
}

void SidePanel::Command15_Click() {
    if (coach_.Answers() != nullptr) session_.TheServices().platform.CopyText(page_.AsText());
}

void SidePanel::Command16_Click() {
    if (const CoachAnswers* answers = coach_.Answers()) TakeWind(*answers);
}

void SidePanel::Command17_Click() {
    if (const CoachAnswers* answers = coach_.Answers()) SavePage(*answers);
}

/// The tab as a page among the documents of the races, and opened for the person.
void SidePanel::SavePage(const CoachAnswers& answers) {
    const Voice& voice = session_.TheVoice();
    const RaceControl& race = app_.race;
    const std::string& name = race.RaceFileName.empty() ? race.SingleTrackFile : race.RaceFileName;
    const std::string tab = form_.SideTabs()[static_cast<std::size_t>(Tab())]->Caption();
    const std::filesystem::path file = FindBelow(app_.settings.AppPath, "attachment") /
                                       PathOf(name.substr(0, name.find('.')) + "_" + tab + ".html");
    const std::string page =
        SideDocument(form_.Title() + "  " + tab, Blocks(answers), app_.settings.UseEnglish,
                     [this](const SidePicture& picture) { return Paint(picture); });
    if (WriteFileAtomically(file, page))
        voice.Say({"The page could not be written.", "ページを書き込めません。"}, file.string());
    else if (!OpenDocument(app_.settings, session_.TheServices(), file.string()))
        voice.Say({"The page was saved here:", "ページの保存先："}, file.string());
}

/// On the hidden sheet of the screen capture.
Picture SidePanel::Paint(const SidePicture& picture) {
    Surface& sheet = form_.Picture13;
    sheet.Move(0, 0, PaperWidth, picture.Height);
    sheet.Cls();
    picture.Draw(sheet, {{0.0, 0.0}, {sheet.ScaleWidth() - 1, sheet.ScaleHeight() - 1}});
    Picture image = sheet.Image();
    sheet.Move(0, 0, 1, 1);
    return image;
}

void SidePanel::Picture17_MouseDown(const MouseEvent& event) {
    if (coach_.Answers() == nullptr) return;
    const SideTarget target = page_.TargetAt({event.X, event.Y});
    if (!target.LeadsAnywhere()) return;
    if (target.Boat > 0 && target.Boat != chosen_) beside_ = std::exchange(chosen_, target.Boat);
    Draw(true);
    if (target.Boat > 0)
        session_.GoTo(target.Boat, target.Time.value_or(app_.clock.ReplayTime));
    else if (target.Time)
        session_.TheFilm().Seek(*target.Time);
}

/// The estimate becomes the race's wind file, once the person says so.
void SidePanel::TakeWind(const CoachAnswers& answers) {
    const Voice& voice = session_.TheVoice();
    const WindEstimate& estimate = answers.Wind.Estimate();
    if (estimate.Samples.empty() || app_.race.RaceFileName.empty()) {
        voice.Say({"There is no estimated wind to take.", "採用できる推定風がありません。"});
        return;
    }
    const bool sure =
        HasWindFile(app_.race)
            ? voice.Confirm({"This race has a measured wind.\r\nWrite the estimated wind over it?",
                             "このレースには実測の風データがあります。\r\n推定風で上書きしますか？"})
            : voice.Ask({"Write the estimated wind into a wind file of this race?",
                         "推定風をこのレースの風データファイルに書き込みますか？"});
    if (!sure) return;
    WindData wind;
    for (int t = 0; t <= app_.race.RaceDuration; t += WindEvery)
        wind.Add({.WindTime = t,
                  .WindSpeed = answers.Wind.Speed(t),
                  .WindDirection = EstimatedWindAt(estimate, t) - app_.race.MagVariation});
    session_.Changes().TakeWind(wind);
}

}  // namespace keelview
