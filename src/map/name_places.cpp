#include "map/name_places.h"

#include <algorithm>
#include <array>
#include <optional>
#include <tuple>

namespace keelview {

namespace {

constexpr int NoSide = -1;
constexpr double Gap = 5.0;  // from the boat to its name, pixels

/// Where a field lies beside a boat: -1 is left or above, 0 the middle, 1 right or below.
struct Side {
    int Across;
    int Down;
};
constexpr std::array<Side, 8> Sides{{{1, 0}, {-1, 0}, {1, -1}, {1, 1}, {-1, -1}, {-1, 1}, {0, -1}, {0, 1}}};

Bounds FieldAt(const Point& boat, const Side& side, double width, const NameSurroundings& around) {
    const double off = around.BoatSide / 2 + Gap;
    const auto low = [off](double middle, int where, double size) {
        return where < 0 ? middle - off - size : where > 0 ? middle + off : middle - size / 2;
    };
    // A field at a corner is moved towards the boat, to be seen as its own.
    const bool corner = side.Across != 0 && side.Down != 0;
    const double x = low(boat.X, side.Across, width);
    const double y = low(boat.Y, side.Down, around.FieldHeight) - (corner ? side.Down * Gap : 0.0);
    return {{x, y}, {x + width, y + around.FieldHeight}};
}

bool Meet(const Bounds& one, const Bounds& other) {
    return one.Low.X < other.High.X && other.Low.X < one.High.X && one.Low.Y < other.High.Y &&
           other.Low.Y < one.High.Y;
}

bool Within(const Bounds& box, double side) {
    return box.Low.X >= 0 && box.Low.Y >= 0 && box.High.X <= side && box.High.Y <= side;
}

std::vector<Bounds> BoatsOnMap(const NameSurroundings& around) {
    std::vector<Bounds> boats;
    const Bounds map{{0, 0}, {around.MapSide, around.MapSide}};
    for (const Point& boat : around.Boats) {
        const Bounds square = Bounds{boat, boat}.Grown(around.BoatSide / 2);
        if (Meet(square, map)) boats.push_back(square);
    }
    return boats;
}

}  // namespace

std::vector<PlacedName> NamePlaces::Place(std::vector<NameWish> wishes, const NameSurroundings& around) {
    if (sides_.Count() != around.Boats.Count()) sides_.Assign(around.Boats.Count(), NoSide);
    std::ranges::sort(wishes, {}, [this](const NameWish& wish) {
        return std::tuple(wish.Rank, sides_[wish.Boat] == NoSide, wish.Boat);
    });
    std::vector<Bounds> taken = BoatsOnMap(around);
    const auto fieldOn = [&](const NameWish& wish, int side) -> std::optional<Bounds> {
        const Bounds field =
            FieldAt(around.Boats[wish.Boat], Sides[static_cast<std::size_t>(side)], wish.Width, around);
        const auto meets = [&](const Bounds& other) { return Meet(field, other); };
        if (!Within(field, around.MapSide) || std::ranges::any_of(taken, meets)) return {};
        return field;
    };
    OneBased<int> sides(around.Boats.Count(), NoSide);
    std::vector<PlacedName> placed;
    for (const NameWish& wish : wishes) {
        const int before = sides_[wish.Boat];
        int side = before;
        std::optional<Bounds> field = before == NoSide ? std::nullopt : fieldOn(wish, before);
        for (int other = 0; !field && other < static_cast<int>(Sides.size()); ++other)
            if (other != before) field = fieldOn(wish, side = other);
        if (!field) continue;
        sides[wish.Boat] = side;
        taken.push_back(*field);
        placed.push_back({wish.Boat, field->Low, wish.Width});
    }
    sides_ = sides;
    return placed;
}

}  // namespace keelview
