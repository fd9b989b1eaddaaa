#pragma once

#include "session/instrument.h"
#include "session/race_changes.h"
#include "session/race_disp.h"

namespace keelview {

/// The wind field Text3 on the map: the wind direction of the race. What a person sets there, by typing or
/// by turning the overview, is drawn everywhere and saved at once; what a load writes there does nothing.
/// What is typed is taken when it is finished: with Return, when the field is left, or after a pause of a
/// second.
class WindField : public Instrument {
  public:
    WindField(const RaceControl& race, RaceDisp& form, RaceChanges& changes);

    /// Shows the wind of another race; nothing else writes over what a person types.
    void Repaint(Changed changed) override;

    /// A direction that the person has set by other means, degrees: as if it had been typed.
    void Take(double direction);

  private:
    void Text3_Typed();
    void TakeTyped();

    const RaceControl& race_;
    RaceDisp& form_;
    RaceChanges& changes_;
};

}  // namespace keelview
