#include "session/livery.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/one_based.h"
#include "display/stripes.h"

namespace keelview {

namespace {

constexpr int Looks = 60;

constexpr std::array<Colour, 15> Palette{
    Rgb(255, 0, 0),   Rgb(0, 0, 255), Rgb(0, 128, 0),     Rgb(128, 128, 0), Rgb(128, 0, 128),
    Rgb(0, 128, 128), Rgb(0, 0, 0),   Rgb(128, 128, 128), Rgb(192, 192, 0), Rgb(96, 96, 0),
    Rgb(192, 0, 0),   Rgb(0, 0, 192), Rgb(0, 128, 0),     Rgb(128, 128, 0), Rgb(128, 0, 128)};

/// Colours of the palette, by their number from 1, that are one, or that one of the three kinds of
/// colour-blind eye takes for one.
constexpr std::array<std::pair<int, int>, 22> Kin{{{1, 3},   {1, 10},  {1, 13},  {3, 4},  {3, 6},  {3, 10},
                                                   {3, 11},  {3, 13},  {3, 14},  {4, 8},  {4, 11}, {4, 13},
                                                   {4, 14},  {5, 15},  {6, 8},   {6, 13}, {8, 14}, {10, 11},
                                                   {10, 13}, {11, 13}, {11, 14}, {13, 14}}};

int ColourNumber(int boat) {
    return (boat - 1) % static_cast<int>(Palette.size()) + 1;
}

bool LookAlike(int boat, int other) {
    const auto pair = std::minmax({ColourNumber(boat), ColourNumber(other)});
    return pair.first == pair.second || std::ranges::find(Kin, pair) != Kin.end();
}

/// The stripes of a pattern: 0 is plain, then come one stripe in White and in Black, two in all ways, and
/// so on. The bits below the highest one of the number plus 1 tell the stripes.
std::vector<Colour> StripesOf(unsigned pattern) {
    std::vector<Colour> stripes;
    for (unsigned rest = pattern + 1; rest > 1; rest /= 2)
        stripes.insert(stripes.begin(), rest % 2 == 1 ? Black : White);
    return stripes;
}

bool CanBeSeen(const std::vector<Colour>& stripes, Colour ground) {
    constexpr double least = 2.0;
    return std::ranges::all_of(stripes, [&](Colour stripe) { return ContrastOf(stripe, ground) >= least; });
}

/// Each boat gets the first pattern that can be seen on its colour and that no boat before it has that
/// looks like it.
OneBased<Livery> MakeLiveries() {
    OneBased<Livery> liveries;
    for (int boat = 1; boat <= Looks; ++boat) {
        const auto fits = [&](const std::vector<Colour>& stripes) {
            for (int other = 1; other < boat; ++other)
                if (LookAlike(boat, other) && liveries[other].Stripes == stripes) return false;
            return CanBeSeen(stripes, BoatColour(boat));
        };
        unsigned pattern = 0;
        while (!fits(StripesOf(pattern))) ++pattern;
        liveries.Add({BoatColour(boat), StripesOf(pattern)});
    }
    return liveries;
}

}  // namespace

Colour BoatColour(int boat) {
    return Palette[static_cast<std::size_t>(ColourNumber(boat) - 1)];
}

const Livery& LiveryOf(int boat) {
    static const OneBased<Livery> liveries = MakeLiveries();
    return liveries[(boat - 1) % Looks + 1];
}

void DrawLiveryField(Canvas& canvas, int boat, const Point& topLeft, const Point& bottomRight) {
    const Livery& livery = LiveryOf(boat);
    StripedBox(canvas, topLeft, bottomRight, livery.Ground, livery.Stripes);
}

void DrawNameField(Canvas& canvas, int boat, const Point& topLeft, const Point& bottomRight,
                   std::string_view name) {
    DrawLiveryField(canvas, boat, topLeft, bottomRight);
    const Colour ink = std::exchange(canvas.ForeColor, InkOn(BoatColour(boat)));
    canvas.PrintAt(topLeft.X + 2, topLeft.Y + 1, name);
    canvas.ForeColor = ink;
}

void DrawLiveryLine(Canvas& canvas, int boat, std::span<const Point> way, Colour ground) {
    const Livery& livery = LiveryOf(boat);
    StripedPolyline(canvas, way, ReadableOn(ground, livery.Ground), livery.Stripes);
}

}  // namespace keelview
