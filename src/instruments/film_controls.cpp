#include "instruments/film_controls.h"

#include <functional>

#include "base/numbers.h"

namespace keelview {

namespace {

constexpr Text TimesSpeed{" x spd", "倍速"};

}  // namespace

FilmControls::FilmControls(RaceSession& session)
    : app_(session.App()), form_(session.Display()), film_(session.TheFilm()), voice_(session.TheVoice()) {
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
    film_.Play(direction);
}

void FilmControls::Option7_Click() {
    film_.Stop();
    const bool onMap = app_.shown.ViewMode == ViewKind::Map;
    form_.Check2.SetEnabled(onMap);
    if (!onMap) form_.Check2.SetValue(false);
}

void FilmControls::Step(int direction) {
    form_.Option7.SetValue(true);
    film_.Step(direction);
}

/// Up to ten times by ones, then up to a hundred times by tens.
void FilmControls::HScroll1_Change() {
    const int value = form_.HScroll1.Value();
    film_.SetSpeed(value <= 10 ? value : 10 + (value - 10) * 10);
    form_.Text2.SetText(NumberText(app_.clock.SpeedMultiplier) + voice_.Str(TimesSpeed));
}

}  // namespace keelview
