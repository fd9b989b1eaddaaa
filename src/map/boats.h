#pragma once

#include <string>
#include <vector>

#include "analysis/view.h"
#include "map/boat_sprite.h"
#include "map/name_places.h"
#include "session/app_state.h"
#include "session/instrument.h"
#include "session/race_disp.h"

namespace keelview {

/// The boats on the map with what goes along with them: their names in auto trace, their wakes where no
/// tracks are drawn, the lines across the wind through them, and the note whether they are enlarged.
class Boats : public Instrument {
  public:
    Boats(const AppState& app, RaceDisp& form);

    void Repaint(Changed changed) override;
    void Show(const Moment& now) override;

  private:
    void ShowScaleNote(bool realSize);
    void ShowBoat(int boat, const Point& at, const SpriteSize& size);
    void HideBoat(int boat);
    BoatLook LookOf(int boat, double side) const;
    void PlaceCrossWindLine(int boat, const Point& at);
    void DrawNames(const Moment& now, const Projection& projection, double side);
    std::string LabelOf(int boat) const;
    Colour EdgeOf(int boat) const;
    void DrawWake(int boat, const Point& at, const Projection& projection);

    const AppState& app_;
    RaceDisp& form_;
    NamePlaces names_;
    std::vector<BoatLook> drawn_;  ///< what each boat's sprite shows, from boat 1 at index 0
};

}  // namespace keelview
