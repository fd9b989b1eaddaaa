#pragma once

#include "display/form.h"
#include "instruments/film_controls.h"
#include "instruments/key_sheet.h"
#include "instruments/wind_entry.h"
#include "map/map_interaction.h"

namespace keelview {

/// The keys of the race display, as KeySheet tells them. Each does what a control does, so that the
/// controls show it too.
class RaceKeys {
  public:
    RaceKeys(RaceDisp& form, FilmControls& film, MapInteraction& map, WindEntry& windEntry,
             KeySheet& sheet);

  private:
    bool Form_Key(const KeyPress& press);
    bool Leave();

    RaceDisp& form_;
    FilmControls& film_;
    MapInteraction& map_;
    WindEntry& windEntry_;
    KeySheet& sheet_;
};

}  // namespace keelview
