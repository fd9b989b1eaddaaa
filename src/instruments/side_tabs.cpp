#include "instruments/side_tabs.h"

#include <algorithm>

#include "base/digits.h"
#include "instruments/page_text.h"

namespace keelview {

namespace {

constexpr Colour EntryGrey = Rgb(200, 200, 200);

}  // namespace

std::string Fixed(const std::optional<double>& value, int decimals) {
    if (!value) return {};
    std::string text = FixedDigits(*value, decimals);
    // What is rounded to nothing has no sign.
    if (text.starts_with('-') && text.find_first_not_of("-0.") == std::string::npos) text.erase(0, 1);
    return text;
}

std::string WithSigma(const std::optional<double>& value, double sigma, int decimals) {
    if (!value) return {};
    return Fixed(value, decimals) + " \xC2\xB1" + Fixed(sigma, decimals);
}

std::string SideView::Tell(const std::optional<double>& value, double sigma, int decimals) const {
    return Wide ? WithSigma(value, sigma, decimals) : Fixed(value, decimals);
}

SideAxes TimeAxes(const SideView& view, const Bounds& place, double top, double bottom) {
    return {place, 0.0, std::max(1.0, static_cast<double>(view.Answers.Race.RaceDuration)), top, bottom};
}

void DrawEntryTimes(Canvas& page, const SideView& view, const Bounds& place) {
    const SideAxes axes = TimeAxes(view, place, 0.0, 1.0);
    const auto& first = view.Answers.Passes.FirstPassTime;
    page.ForeColor = Black;
    double free = place.Low.X;
    for (int entry = 1; entry <= first.Count(); ++entry) {
        const std::optional<int>& time = first[entry];
        if (!time) continue;
        const double x = axes.At(*time, 0.0).X;
        page.Line(x, place.Low.Y, x, place.High.Y, EntryGrey);
        const std::string& name = view.Answers.Race.CourseOrder[entry];
        if (x + 2 < free) continue;  // names do not lie on each other
        page.PrintAt(x + 2, place.Low.Y, name);
        free = x + 2 + page.TextWidth(name);
    }
}

}  // namespace keelview
