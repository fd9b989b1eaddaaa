#include "map/boats.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "base/angles.h"
#include "base/bilingual.h"
#include "display/stripes.h"
#include "map/boat_label.h"
#include "session/livery.h"

namespace keelview {

namespace {

constexpr double WakeSeconds = 30.0;
constexpr int WakePoints = 5;         // with the point that the boat comes from ...
constexpr double ShortestWake = 4.0;  // ... and more of a track of many fixes a second
constexpr double LabelPoints = 9.0;
constexpr double LabelHeight = 14.0;  // pixels
constexpr double LabelRoom = 5.0;     // beside the text
constexpr Point Nowhere{-1e6, -1e6};

}  // namespace

Boats::Boats(const AppState& app, RaceDisp& form) : app_(app), form_(form) {}

void Boats::Repaint(Changed changed) {
    if (!Any(changed, Changed::Boats | Changed::Race)) return;
    drawn_.assign(form_.Boat.Count(), {});
    for (int row = 0; row < form_.Bar.Count(); ++row) {
        form_.Bar[row].SetBorderColor(BoatColour(row + 1));
        form_.Bar[row].SetStripes(LiveryOf(row + 1).Stripes);
    }
}

void Boats::Show(const Moment& now) {
    const SpriteSize size = SizeOnMap(
        app_.race.BoatLength, PixelsPerMetre(app_.view, app_.area, app_.scale), form_.Check10.Value());
    ShowScaleNote(size.RealSize);
    if (app_.shown.ViewMode != ViewKind::Map) return;
    const Projection projection = MapProjection(app_);
    const bool wakes = form_.Check5.Value() || !form_.Check6.Value();
    for (int boat = 1; boat <= now.Boats.Count(); ++boat) {
        if (!now.Boats[boat].IsSomewhere()) {
            HideBoat(boat);
            continue;
        }
        const Point at = projection.ToScreen(now.Boats[boat].At());
        ShowBoat(boat, at, size);
        PlaceCrossWindLine(boat, at);
        if (wakes) DrawWake(boat, at, projection);
    }
    if (form_.Check5.Value()) DrawNames(now, projection, size.Side);
}

void Boats::ShowScaleNote(bool realSize) {
    const Text note = realSize ? Text{"Real Size", "実サイズ"} : Text{"Enlarged", "変形サイズ"};
    form_.Text15.SetForeColor(realSize ? app_.shown.InkColour : ReadableOn(app_.shown.SeaColour, Red));
    form_.Text15.SetText(note.In(app_.settings.UseEnglish));
}

void Boats::ShowBoat(int boat, const Point& at, const SpriteSize& size) {
    Sprite& sprite = form_.Boat[boat - 1];
    const BoatLook look = LookOf(boat, size.Side);
    drawn_.resize(std::max<std::size_t>(drawn_.size(), boat));
    if (!SamePicture(std::exchange(drawn_[boat - 1], look), look)) DrawBoatSprite(sprite, look);
    sprite.Move(at.X - size.Side / 2, at.Y - size.Side / 2);
    sprite.SetVisible(true);
}

void Boats::HideBoat(int boat) {
    form_.Boat[boat - 1].SetVisible(false);
    form_.Bar[boat - 1].SetVisible(false);
}

BoatLook Boats::LookOf(int boat, double side) const {
    const Moment& now = app_.now;
    const double heading = HeadingOn(app_.tracks.Boats[boat], now.Boats[boat].Segment, now.Time);
    return {.Side = side,
            .Length = app_.race.BoatLength,
            .Heading = AngleInPicture(WrapDifference(heading - app_.view.ScreenUpDirection), side),
            .WindAngle = AngleInPicture(WrapDifference(now.WindNow.DirectionTrue - heading), side),
            .Ring = form_.HasRing(boat) || app_.shown.HoverBoat == boat,
            .Hull = BoatColour(boat),
            .Edge = EdgeOf(boat),
            .Stripes = LiveryOf(boat).Stripes};
}

void Boats::PlaceCrossWindLine(int boat, const Point& at) {
    LineObject& bar = form_.Bar[boat - 1];
    const bool visible = form_.Check4.Value() && form_.Option3.Value();
    bar.SetVisible(visible);
    if (!visible) return;
    const double side = app_.view.MapSide;
    const double offTop = WrapDifference(app_.now.WindNow.DirectionTrue - app_.view.ScreenUpDirection);
    const double across = std::cos(offTop * DegToRad);
    const double down = std::sin(offTop * DegToRad);
    // From edge to edge the shorter way: the line ends near the map, however upright it is.
    if (std::abs(across) >= std::abs(down)) {
        const double slope = down / across;
        bar.Place(0, at.Y - slope * at.X, side, at.Y + slope * (side - at.X));
    } else {
        const double slope = across / down;
        bar.Place(at.X - slope * at.Y, 0, at.X + slope * (side - at.Y), side);
    }
}

/// The names of boats with a ring come first, then those in focus.
void Boats::DrawNames(const Moment& now, const Projection& projection, double side) {
    Surface& map = form_.Picture1;
    map.FontSize = LabelPoints * app_.settings.FontScale;
    NameSurroundings around{
        .MapSide = app_.view.MapSide, .FieldHeight = LabelHeight, .BoatSide = side, .Boats = {}};
    std::vector<NameWish> wishes;
    for (int boat = 1; boat <= now.Boats.Count(); ++boat) {
        const bool somewhere = now.Boats[boat].IsSomewhere();
        around.Boats.Add(somewhere ? projection.ToScreen(now.Boats[boat].At()) : Nowhere);
        if (!somewhere || !(form_.Check9.Value() || form_.HasRing(boat))) continue;
        const double stripes = FieldStripePitch * static_cast<double>(LiveryOf(boat).Stripes.size());
        wishes.push_back({.Boat = boat,
                          .Rank = form_.HasRing(boat)   ? 0
                                  : form_.InFocus(boat) ? 1
                                                        : 2,
                          .Width = map.TextWidth(LabelOf(boat)) + LabelRoom + stripes});
    }
    for (const PlacedName& name : names_.Place(wishes, around))
        DrawNameField(map, name.Boat, name.TopLeft,
                      {name.TopLeft.X + name.Width - 1, name.TopLeft.Y + LabelHeight - 1},
                      LabelOf(name.Boat));
}

std::string Boats::LabelOf(int boat) const {
    return NameAndSpeed(app_.race.Boats[boat].BoatName, app_.now.Boats[boat]);
}

/// A hull that does not stand out from the sea has an edge that does.
Colour Boats::EdgeOf(int boat) const {
    const Colour hull = BoatColour(boat);
    return ContrastOf(hull, app_.shown.SeaColour) < ReadableContrast ? InkOn(hull) : hull;
}

void Boats::DrawWake(int boat, const Point& at, const Projection& projection) {
    const Track& track = app_.tracks.Boats[boat];
    const int last = app_.now.Boats[boat].Segment;
    Surface& map = form_.Picture1;
    const Colour colour = ReadableOn(app_.shown.SeaColour, BoatColour(boat));
    std::vector<Point> wake{at};
    for (int point = last; point > 0; --point) {
        const double age = std::abs(app_.now.Time - track.TrackTime[point]);
        if (point <= last - WakePoints && age > ShortestWake) break;
        wake.push_back(projection.ToScreen(track.At(point)));
        if (point < last && age > WakeSeconds) break;
    }
    map.Polyline(wake, colour);
    for (const Point& fix : wake) map.Circle(fix.X, fix.Y, 1, colour);
}

}  // namespace keelview
