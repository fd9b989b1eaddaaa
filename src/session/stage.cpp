#include "session/stage.h"

#include <utility>

#include "base/angles.h"
#include "session/racing.h"

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
    app_.now.BoatInView = BoatInViewAt(app_.now.Time);
    const Changed changed = std::exchange(changed_, Changed::Nothing);
    idle_.Drop();
    if (changed != Changed::Nothing)
        for (Instrument* instrument : instruments_) instrument->Repaint(changed);
    for (Instrument* instrument : instruments_) instrument->Show(app_.now);
}

void Stage::FollowBoats() {
    std::vector<Position> racing;
    std::vector<Position> all;
    for (int boat = 1; boat <= app_.now.Boats.Count(); ++boat) {
        if (!form_.InFocus(boat) || !app_.now.Boats[boat].IsSomewhere()) continue;
        all.push_back(app_.now.Boats[boat].At());
        if (IsRacing(app_, boat, app_.now.Time)) racing.push_back(all.back());
    }
    FitTo(racing.empty() ? all : racing, app_.area, app_.scale, app_.view);
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

bool Stage::BoatInViewAt(double time) const {
    if (app_.shown.ViewMode != ViewKind::Map) return true;
    const Projection projection = MapProjection(app_);
    const double side = app_.view.MapSide;
    for (int boat = 1; boat <= app_.tracks.Boats.Count(); ++boat) {
        const Track& track = app_.tracks.Boats[boat];
        const int hint = app_.now.Boats.Holds(boat) ? app_.now.Boats[boat].Segment : 0;
        const int segment = FindSegment(track, time, hint);
        if (segment == 0) continue;
        const Point at = projection.ToScreen(PositionOn(track, segment, time));
        if (at.X >= 0 && at.X < side && at.Y >= 0 && at.Y <= side) return true;
    }
    return false;
}

}  // namespace keelview
