#include "session/stage.h"

#include <algorithm>
#include <utility>

#include "base/angles.h"

namespace keelview {

Stage::Stage(AppState& app, RaceDisp& form)
    : app_(app), form_(form), idle_([this] {
          if (!dark_) ShowMoment();
      }) {}

void Stage::Repaint(Changed changed) {
    changed_ = changed_ | changed;
    idle_.Ask();
}

void Stage::ShowMoment() {
    idle_.Drop();
    SettleMoment();
    if (form_.Check5.Value() && app_.shown.ViewMode == ViewKind::Map) FollowBoats();
    SnapToWholeChart(app_.area, app_.view);
    app_.now.BoatInView = BoatInView();
    const Changed changed = std::exchange(changed_, Changed::Nothing);
    idle_.Drop();
    if (changed != Changed::Nothing)
        for (Instrument* instrument : instruments_) instrument->Repaint(changed);
    for (Instrument* instrument : instruments_) instrument->Show(app_.now);
}

void Stage::FollowBoats() {
    std::vector<Position> places;
    for (int boat = 1; boat <= app_.now.Boats.Count(); ++boat)
        if (form_.InFocus(boat) && app_.now.Boats[boat].IsSomewhere())
            places.push_back(app_.now.Boats[boat].At());
    FitTo(places, app_.area, app_.scale, app_.view);
    Repaint(Changed::View);
}

/// Where everybody is at the moment of the clock, and the wind there.
void Stage::SettleMoment() {
    Moment& now = app_.now;
    now.Time = app_.clock.ReplayTime;
    now.Forward = app_.clock.ReplayStep > 0;
    now.WindNow = WindAt(app_.race, app_.wind, now.Time);
    now.Boats.Resize(app_.tracks.Boats.Count());
    for (int boat = 1; boat <= now.Boats.Count(); ++boat) {
        const Track& track = app_.tracks.Boats[boat];
        BoatMoment& there = now.Boats[boat];
        there.Segment = FindSegment(track, now.Time, there.Segment, now.Forward);
        if (!there.IsSomewhere()) continue;
        there.On = MomentOn(track, there.Segment, now.Time);
        there.TrueWindAngle = WrapDifference(there.On.Course - now.WindNow.DirectionTrue);
    }
}

bool Stage::BoatInView() const {
    const Projection projection = MapProjection(app_);
    const bool onMap = app_.shown.ViewMode == ViewKind::Map;
    const double side = app_.view.MapSide;
    return std::ranges::any_of(app_.now.Boats, [&](const BoatMoment& boat) {
        if (!boat.IsSomewhere()) return false;
        const Point at = projection.ToScreen(boat.At());
        return !onMap || (at.X >= 0 && at.X < side && at.Y >= 0 && at.Y <= side);
    });
}

}  // namespace keelview
