#pragma once

namespace keelview {

/// A place on earth in minutes of arc, north and east positive.
struct Position {
    double Lat = 0.0;
    double Lon = 0.0;

    friend bool operator==(const Position&, const Position&) = default;
};

}  // namespace keelview
