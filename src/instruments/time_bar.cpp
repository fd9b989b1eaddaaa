#include "instruments/time_bar.h"

#include <algorithm>
#include <cmath>

#include "base/angles.h"
#include "base/numbers.h"
#include "instruments/page_text.h"

namespace keelview {

namespace {

constexpr Colour UpwindColour = White;
constexpr Colour DownwindColour = Rgb(192, 192, 192);
constexpr double ZoneLeft = 8.0;
constexpr double ZoneRight = 20.0;
constexpr double BarRight = 30.0;
constexpr double RangeRight = 6.0;
/// Every zone reaches up to here, and each later one lies over the earlier ones.
constexpr int ZoneTop = 50;

}  // namespace

void TimeBar::Repaint(Changed changed) {
    if (!Any(changed, Changed::Race | Changed::Wind | Changed::Size)) return;
    if (Any(changed, Changed::Race)) range_.reset();
    Surface& bar = form_.PicTimeBar;
    bar.Cls();
    const TimeAxis axis = Axis();
    if (axis.Empty()) return;
    DrawZones(axis);
    if (range_) DrawRange();
    for (const double y : {axis.Y(0), TimeAxis::Margin}) bar.Line(0, y, BarRight, y, StartFinishColour);
}

// The zones are boxes from each point's row to ZoneTop, painted in the order of time. What stays to be seen
// is the last box that covers a row, so the walk goes backward and paints the rows not painted yet: a track
// of any length costs no more boxes than the bar has rows.
void TimeBar::DrawZones(const TimeAxis& axis) {
    if (tracks_.Boats.Empty()) return;
    Surface& bar = form_.PicTimeBar;
    const Track& track = tracks_.Boats[1];
    const int bottom = FloorToInt(bar.Height());
    int first = ZoneTop + 1;  // rows first to last are painted
    int last = ZoneTop;
    for (int fix = track.Count(); fix >= 2; --fix) {
        const int y = std::clamp(FloorToInt(axis.Y(track.TrackTime[fix]) + 0.5), 0, bottom);
        const int top = std::min(y, ZoneTop);
        const int low = std::max(y, ZoneTop);
        if (top >= first && low <= last) continue;
        const double offWind = WrapDifference(track.TrackCourse(fix) - race_.WindDirection);
        const Colour colour = std::abs(offWind) < 90 ? UpwindColour : DownwindColour;
        if (top < first) bar.FilledBox(ZoneLeft, top, ZoneRight, first - 1, colour);
        if (low > last) bar.FilledBox(ZoneLeft, last + 1, ZoneRight, low, colour);
        first = std::min(first, top);
        last = std::max(last, low);
    }
}

void TimeBar::Show(const Moment& now) {
    const double y = Axis().Y(now.Time);
    form_.Line5.Place(0, y, BarRight, y);
}

void TimeBar::MarkRange(int from, int to) {
    range_ = {from, to};
    DrawRange();
}

void TimeBar::WipeRange() {
    range_.reset();
    DrawRange();
}

void TimeBar::DrawRange() {
    Surface& bar = form_.PicTimeBar;
    bar.FilledBox(0, 0, RangeRight, bar.Height(), bar.BackColor);
    if (range_) bar.FilledBox(0, Axis().Y(range_->first), RangeRight, Axis().Y(range_->second), Yellow);
}

}  // namespace keelview
