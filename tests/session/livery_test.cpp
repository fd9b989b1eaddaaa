#include "session/livery.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace keelview {
namespace {

using Three = std::array<double, 3>;
using Matrix = std::array<Three, 3>;

/// Sight in linear RGB: normal, and of eyes without red, green or blue cones (Machado, Oliveira and
/// Fernandes 2009, severity 1).
constexpr std::array<Matrix, 4> Eyes{
    {{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}},
     {{{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}}},
     {{{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}}},
     {{{1.255528, -0.076749, -0.178779},
       {-0.078411, 0.930809, 0.147602},
       {0.004733, 0.691367, 0.303900}}}}};

Three Times(const Matrix& matrix, const Three& vector) {
    Three product{};
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column)
            product[row] += matrix[row][column] * vector[column];
    return product;
}

/// A colour as an eye sees it, in CIE L*a*b* (D65), in which distances are those of the eye.
Three Seen(Colour colour, const Matrix& eye) {
    const auto light = [](int part) {
        const double share = part / 255.0;
        return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    const ColourParts parts = PartsOf(colour);
    Three rgb = Times(eye, {light(parts.Red), light(parts.Green), light(parts.Blue)});
    for (double& part : rgb) part = std::clamp(part, 0.0, 1.0);
    constexpr Matrix toXyz{{{0.4124, 0.3576, 0.1805}, {0.2126, 0.7152, 0.0722}, {0.0193, 0.1192, 0.9505}}};
    const Three xyz = Times(toXyz, rgb);
    const auto root = [](double t) { return t > 0.008856 ? std::cbrt(t) : 7.787 * t + 16.0 / 116; };
    const double x = root(xyz[0] / 0.9505), y = root(xyz[1]), z = root(xyz[2] / 1.089);
    return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

double LeastDistance(Colour one, Colour other) {
    double least = 1000;
    for (const Matrix& eye : Eyes) {
        const Three a = Seen(one, eye), b = Seen(other, eye);
        least = std::min(least, std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]));
    }
    return least;
}

TEST(Livery, NoEyeTakesOneOfSixtyBoatsForAnother) {
    for (int boat = 2; boat <= 60; ++boat)
        for (int other = 1; other < boat; ++other)
            EXPECT_TRUE(LiveryOf(boat).Stripes != LiveryOf(other).Stripes ||
                        LeastDistance(BoatColour(boat), BoatColour(other)) > 12)
                << boat << " and " << other;
}

TEST(Livery, EachStripeStandsOutFromItsBoat) {
    for (int boat = 1; boat <= 60; ++boat) {
        EXPECT_LE(LiveryOf(boat).Stripes.size(), 4U);
        EXPECT_EQ(LiveryOf(boat).Ground, BoatColour(boat));
        for (const Colour stripe : LiveryOf(boat).Stripes)
            for (const Matrix& eye : Eyes)
                EXPECT_GT(std::abs(Seen(stripe, eye)[0] - Seen(BoatColour(boat), eye)[0]), 20) << boat;
    }
}

}  // namespace
}  // namespace keelview
