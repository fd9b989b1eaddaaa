#pragma once

#include <cmath>

#include "base/angles.h"
#include "base/position.h"
#include "racedata/earth_scale.h"

namespace keelview {

/// Metres a second of a knot.
inline constexpr double KnotMetres = MetresPerNauticalMile / 3600;

/// A way over flat water: metres, or metres a second.
struct Way {
    double East = 0.0;
    double North = 0.0;

    friend constexpr Way operator+(Way a, Way b) { return {a.East + b.East, a.North + b.North}; }
    friend constexpr Way operator-(Way a, Way b) { return {a.East - b.East, a.North - b.North}; }
    friend constexpr Way operator*(Way a, double f) { return {a.East * f, a.North * f}; }
    friend constexpr bool operator==(Way, Way) = default;

    /// How far it goes along another one of length 1.
    constexpr double Along(Way unit) const { return East * unit.East + North * unit.North; }
    /// How far it leads to the right of another one of length 1.
    constexpr double Across(Way unit) const { return East * unit.North - North * unit.East; }
    constexpr double Square() const { return Along(*this); }
    double Length() const { return std::hypot(East, North); }
    double Bearing() const { return BearingOf(East, North); }
};

/// The way of length 1 on a bearing, degrees.
inline Way Towards(double bearing) {
    return {std::sin(bearing * DegToRad), std::cos(bearing * DegToRad)};
}

/// The water of a race as a plane: metres east and north of one of its places.
class Plane {
  public:
    Plane() = default;
    Plane(const EarthScale& scale, const Position& middle) : scale_(scale), middle_(middle) {}

    Way To(const Position& at) const {
        return {(at.Lon - middle_.Lon) * scale_.MetresPerLonMinute,
                (at.Lat - middle_.Lat) * scale_.MetresPerLatMinute};
    }
    /// The way back.
    Position From(const Way& at) const {
        return {middle_.Lat + at.North / scale_.MetresPerLatMinute,
                middle_.Lon + at.East / scale_.MetresPerLonMinute};
    }

  private:
    EarthScale scale_;
    Position middle_;
};

}  // namespace keelview
