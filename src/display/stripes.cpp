#include "display/stripes.h"

#include <algorithm>
#include <cmath>

namespace keelview {

namespace {

// Along a line, pixels: from group to group, of a stripe, and from stripe to stripe.
constexpr double GroupPitch = 64.0;
constexpr double Length = 4.0;
constexpr double Pitch = 7.0;

Point Between(const Point& from, const Point& to, double share) {
    return {from.X + (to.X - from.X) * share, from.Y + (to.Y - from.Y) * share};
}

/// Adds what the stripes cover of a straight piece; `begun` pixels of the way lie before it.
void AddStripes(const Point& from, const Point& to, double begun, std::span<const Colour> stripes,
                std::vector<LineStripe>& found) {
    const double length = std::hypot(to.X - from.X, to.Y - from.Y);
    for (double group = std::floor(begun / GroupPitch) * GroupPitch; group < begun + length;
         group += GroupPitch) {
        double at = group + GroupPitch / 2;
        for (const Colour ink : stripes) {
            const double first = std::max(at, begun);
            const double last = std::min(at + Length, begun + length);
            if (first < last)
                found.push_back({Between(from, to, (first - begun) / length),
                                 Between(from, to, (last - begun) / length), ink});
            at += Pitch;
        }
    }
}

}  // namespace

std::vector<LineStripe> StripesAlong(std::span<const Point> way, std::span<const Colour> stripes) {
    std::vector<LineStripe> found;
    if (stripes.empty()) return found;
    double begun = 0;
    for (std::size_t i = 1; i < way.size(); ++i) {
        AddStripes(way[i - 1], way[i], begun, stripes, found);
        begun += std::hypot(way[i].X - way[i - 1].X, way[i].Y - way[i - 1].Y);
    }
    return found;
}

std::optional<Colour> StripeAt(double along, std::span<const Colour> stripes) {
    const double inGroup = along - std::floor(along / GroupPitch) * GroupPitch - GroupPitch / 2;
    const double number = std::floor(inGroup / Pitch);
    if (number < 0 || number >= static_cast<double>(stripes.size()) || inGroup - number * Pitch >= Length)
        return {};
    return stripes[static_cast<std::size_t>(number)];
}

void StripedPolyline(Canvas& canvas, std::span<const Point> way, Colour ground,
                     std::span<const Colour> stripes) {
    canvas.Polyline(way, ground);
    const std::vector<LineStripe> found = StripesAlong(way, stripes);
    for (const Colour ink : {White, Black}) {
        std::vector<Point> ends;
        for (const LineStripe& stripe : found)
            if (stripe.Ink == ink) ends.insert(ends.end(), {stripe.From, stripe.To});
        canvas.Segments(ends, ink);
    }
}

void StripedBox(Canvas& canvas, const Point& topLeft, const Point& bottomRight, Colour ground,
                std::span<const Colour> stripes) {
    canvas.FilledBox(topLeft.X, topLeft.Y, bottomRight.X, bottomRight.Y, ground);
    double left = bottomRight.X - FieldStripePitch * static_cast<double>(stripes.size());
    for (const Colour ink : stripes) {
        if (left > topLeft.X) canvas.FilledBox(left, topLeft.Y, left + FieldStripe - 1, bottomRight.Y, ink);
        left += FieldStripePitch;
    }
}

}  // namespace keelview
