#include "map/name_places.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace keelview {
namespace {

constexpr double Width = 90;

/// Boats at places of a seed on a map of 900 pixels, each with a name.
struct Fleet {
    NameSurroundings Around{.MapSide = 900, .FieldHeight = 14, .BoatSide = 20, .Boats = {}};
    std::vector<NameWish> Wishes;

    Fleet(int boats, unsigned seed, double span) {
        std::mt19937 random(seed);
        std::uniform_real_distribution<double> place(-20, span);
        for (int boat = 1; boat <= boats; ++boat) {
            const double x = place(random);
            Around.Boats.Add({x, place(random)});
            Wishes.push_back({.Boat = boat, .Rank = boat % 3, .Width = Width});
        }
    }
    Bounds Square(int boat) const { return Bounds{Around.Boats[boat], Around.Boats[boat]}.Grown(10); }
};

Bounds FieldOf(const PlacedName& name) {
    return {name.TopLeft, {name.TopLeft.X + name.Width, name.TopLeft.Y + 14}};
}

bool Meet(const Bounds& one, const Bounds& other) {
    return std::max(one.Low.X, other.Low.X) < std::min(one.High.X, other.High.X) &&
           std::max(one.Low.Y, other.Low.Y) < std::min(one.High.Y, other.High.Y);
}

bool Shows(const std::vector<PlacedName>& names, int boat) {
    return std::ranges::find(names, boat, &PlacedName::Boat) != names.end();
}

TEST(NamePlaces, NoNameLiesOnAnotherOnABoatOrOverTheEdge) {
    for (unsigned seed = 1; seed <= 30; ++seed) {
        const Fleet fleet(50, seed, 920);
        NamePlaces places;
        const std::vector<PlacedName> names = places.Place(fleet.Wishes, fleet.Around);
        EXPECT_GT(names.size(), 35U);
        for (std::size_t i = 0; i < names.size(); ++i) {
            const Bounds field = FieldOf(names[i]);
            EXPECT_TRUE(field.Low.X >= 0 && field.Low.Y >= 0 && field.High.X <= 900 && field.High.Y <= 900);
            for (int boat = 1; boat <= 50; ++boat) EXPECT_FALSE(Meet(field, fleet.Square(boat)));
            for (std::size_t k = 0; k < i; ++k) EXPECT_FALSE(Meet(field, FieldOf(names[k])));
        }
    }
}

TEST(NamePlaces, TheFirstRankIsShownWhereItAloneWouldBe) {
    for (unsigned seed = 1; seed <= 30; ++seed) {
        Fleet fleet(50, seed, 300);
        const std::vector<PlacedName> all = NamePlaces().Place(fleet.Wishes, fleet.Around);
        std::erase_if(fleet.Wishes, [](const NameWish& wish) { return wish.Rank > 0; });
        const std::vector<PlacedName> first = NamePlaces().Place(fleet.Wishes, fleet.Around);
        for (const PlacedName& name : first) EXPECT_TRUE(Shows(all, name.Boat));
        EXPECT_LT(all.size(), 50U);
    }
}

TEST(NamePlaces, BetweenTwoBoatsANameStandsAtACornerCloseToItsOwn) {
    Fleet fleet(3, 1, 0);
    fleet.Around.Boats = {{450, 450}, {510, 450}, {390, 450}};
    fleet.Wishes.resize(1);
    const std::vector<PlacedName> names = NamePlaces().Place(fleet.Wishes, fleet.Around);
    ASSERT_EQ(names.size(), 1U);
    // Five pixels beside the boat's square, and level with its upper edge.
    EXPECT_DOUBLE_EQ(names[0].TopLeft.X, 450 + 10 + 5);
    EXPECT_DOUBLE_EQ(names[0].TopLeft.Y + fleet.Around.FieldHeight, 450 - 10);
}

TEST(NamePlaces, ANameStaysWhileItsBoatSailsOn) {
    Fleet fleet(1, 1, 0);
    fleet.Around.Boats[1] = {870, 400};  // no room to the right
    NamePlaces places;
    for (double x = 870; x > 300; x -= 5) {
        fleet.Around.Boats[1].X = x;
        const std::vector<PlacedName> names = places.Place(fleet.Wishes, fleet.Around);
        ASSERT_EQ(names.size(), 1U);
        EXPECT_DOUBLE_EQ(names[0].TopLeft.X, x - 15 - Width);
    }
    // Of two that want one place that which was shown stays, though the other comes first by number.
    fleet.Around = {.MapSide = 125, .FieldHeight = 14, .BoatSide = 20, .Boats = {{-500, 30}, {10, 7}}};
    fleet.Wishes = {{.Boat = 1, .Rank = 0, .Width = Width}, {.Boat = 2, .Rank = 0, .Width = Width}};
    ASSERT_TRUE(Shows(places.Place(fleet.Wishes, fleet.Around), 2));
    fleet.Around.Boats[1] = {10, 20};
    const std::vector<PlacedName> names = places.Place(fleet.Wishes, fleet.Around);
    EXPECT_TRUE(Shows(names, 2));
    EXPECT_DOUBLE_EQ(names[0].TopLeft.Y, 0);
}

}  // namespace
}  // namespace keelview
