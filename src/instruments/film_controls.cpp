#include "instruments/film_controls.h"

#include "base/numbers.h"

namespace keelview {

namespace {

constexpr Text TimesSpeed{" x spd", "倍速"};

}  // namespace

FilmControls::FilmControls(RaceSession& session, MapInteraction& map)
    : app_(session.App()),
      form_(session.Display()),
      film_(session.TheFilm()),
      voice_(session.TheVoice()),
      map_(map) {
    form_.Option6.OnClick = [this] { Play(1); };
    form_.Option7.OnClick = [this] { Option7_Click(); };
    form_.Option8.OnClick = [this] { Play(-1); };
    form_.Command6.OnClick = [this] { Step(1); };
    form_.Command7.OnClick = [this] { Step(-1); };
    form_.HScroll1.OnChange = [this] { HScroll1_Change(); };
    HScroll1_Change();
}

void FilmControls::Play(int direction) {
    film_.Release(Film::Hold::MapClick);
    film_.Play(direction);
    map_.EndMeasuring();
    form_.PlaceSignals();
}

void FilmControls::Option7_Click() {
    film_.Stop();
    const bool onMap = app_.shown.ViewMode == ViewKind::Map;
    form_.Check2.SetEnabled(onMap);
    if (!onMap) form_.Check2.SetValue(false);
    form_.PlaceSignals();
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
