#pragma once

#include <vector>

#include "base/one_based.h"
#include "base/point.h"

namespace keelview {

/// A name that wants a place beside its boat.
struct NameWish {
    int Boat = 0;
    int Rank = 0;        ///< names of a lower rank come first
    double Width = 0.0;  ///< of its field, pixels
};

/// What the names are placed among, in pixels of the map.
struct NameSurroundings {
    double MapSide = 0.0;
    double FieldHeight = 0.0;  ///< of a name
    double BoatSide = 0.0;     ///< of the square that a boat takes up
    OneBased<Point> Boats;     ///< the middle of each boat; one far off where a boat is not on the map
};

/// A name that got its place.
struct PlacedName {
    int Boat = 0;
    Point TopLeft;
    double Width = 0.0;
};

/// Places the names of boats so that none lies on another, on a boat or over the edge of the map. Names
/// without such a place are left out. From frame to frame a name stays at its side of the boat, and those
/// that were shown come before those of their rank that were not, so that names do not flicker.
class NamePlaces {
  public:
    std::vector<PlacedName> Place(std::vector<NameWish> wishes, const NameSurroundings& around);

  private:
    OneBased<int> sides_;  // by boat, where its name was placed last; none where it was not
};

}  // namespace keelview
