#include "instruments/film_controls.h"

#include <functional>

#include "base/numbers.h"

namespace keelview {

namespace {

constexpr Text TimesSpeed{" x spd", "倍速"};

}  // namespace

FilmControls::FilmControls(RaceSession& session)
    : app_(session.App()),
      form_(session.Display()),
      film_(session.TheFilm()),
      stage_(session.TheStage()),
      voice_(session.TheVoice()) {
    const auto connect = [](OptionButton& option, const std::function<void()>& act) {
        option.OnClick = act;
        option.OnAgain = act;
    };
    connect(form_.Option6, [this] { Play(1); });
    connect(form_.Option7, [this] { Option7_Click(); });
    connect(form_.Option8, [this] { Play(-1); });
    form_.Command6.OnClick = [this] { Step(1); };
    form_.Command7.OnClick = [this] { Step(-1); };
    form_.HScroll1.OnChange = [this] { HScroll1_Change(); };
    HScroll1_Change();
}

void FilmControls::Play(int direction) {
    film_.Release(Film::Hold::MapClick);
    backward_ = direction < 0;
    film_.Play(direction);
}

/// A film that a click on a mark holds stands as well.
void FilmControls::PlayOrStop() {
    if (!film_.Stopped() && !film_.HeldFor(Film::Hold::MapClick)) return form_.Option7.SetValue(true);
    OptionButton& way = backward_ ? form_.Option8 : form_.Option6;
    way.Value() ? Play(backward_ ? -1 : 1) : way.SetValue(true);
}

void FilmControls::Option7_Click() {
    film_.Stop();
    const bool onMap = app_.shown.ViewMode == ViewKind::Map;
    form_.Check2.SetEnabled(onMap);
    if (!onMap) form_.Check2.SetValue(false);
}

void FilmControls::Step(int steps) {
    form_.Option7.SetValue(true);
    film_.Step(steps);
}

void FilmControls::GoToStart() {
    stage_.Repaint(Changed::Layers);  // the wakes and lay lines of the moment before go
    film_.SeekStart();
}

void FilmControls::GoToFinish() {
    form_.Option7.SetValue(true);
    stage_.Repaint(Changed::Layers);
    film_.SeekFinish();
}

/// Up to ten times by ones, then up to a hundred times by tens.
void FilmControls::HScroll1_Change() {
    const int value = form_.HScroll1.Value();
    film_.SetSpeed(value <= 10 ? value : 10 + (value - 10) * 10);
    form_.Text2.SetText(NumberText(app_.clock.SpeedMultiplier) + voice_.Str(TimesSpeed));
}

}  // namespace keelview
