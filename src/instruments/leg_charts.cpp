#include "instruments/leg_charts.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>

#include "base/numbers.h"
#include "base/strings.h"
#include "instruments/data_page.h"
#include "instruments/page_text.h"
#include "session/livery.h"

namespace keelview {

namespace {

constexpr double PlotTop = 25.0;
constexpr double PlotBottom = 300.0;
constexpr double GridBottom = 310.0;
constexpr double KeyTop = 316.0;
constexpr double PlotIndent = 40.0;  // from the chart's left offset to its plot area
constexpr double WidestColumn = 90.0;
constexpr double PointRadius = 2.0;
constexpr int FocusWidth = 4;

constexpr Colour PlotColour = Rgb(192, 255, 255);

constexpr Text CumulativeTitles[] = {{"( Diff of mk rnd time : sec)", "(マーク回航時間差：秒)"},
                                     {"( Diff of acc sailed dist : m)", "(累計帆走距離差：ｍ)"},
                                     {"( Diff of acc speed : KTS)", "（累積速度差：ノット)"}};
constexpr Text LegTitles[] = {{"( Diff of time by leg : sec)", "(レグ毎の時間差：秒)"},
                              {"( Diff of sailed dist by leg : m)", "(レグ毎の帆走距離差：ｍ)"},
                              {"( Diff of speed by leg : Kts)", "(レグ毎の速度差：ノット)"}};

/// One of the two charts on the off-screen surface.
class DiffChart {
  public:
    DiffChart(const RaceControl& race, const MarkPasses& passes, bool useEnglish, RaceDisp& form,
              StatKind kind, bool byLeg)
        : race_(race),
          passes_(passes),
          useEnglish_(useEnglish),
          form_(form),
          kind_(kind),
          byLeg_(byLeg),
          left_(byLeg ? form.Picture3.Width() / 2 : 0.0),
          columnWidth_(std::min(
              (form.Picture3.Width() / 2 - PlotIndent - 15) / std::max(race.CourseOrder.Count(), 1),
              WidestColumn)),
          best_(race.CourseOrder.Count()) {
        FindScale();
    }

    void Draw(std::vector<ChartLine>& lines) {
        DrawFrame();
        const std::size_t first = lines.size();
        for (int boat = 1; boat <= race_.Boats.Count(); ++boat) AddBoat(boat, lines);
        for (std::size_t line = lines.size(); line > first; --line) DrawLine(lines[line - 1]);
    }

  private:
    bool BestOnTop() const { return kind_ == StatKind::Speed; }
    int FirstEntry() const { return byLeg_ || kind_ == StatKind::Speed ? 2 : 1; }
    double EntryX(int entry) const {
        return left_ + PlotIndent + (entry - (byLeg_ ? 1.5 : 0.5)) * columnWidth_;
    }

    void FindScale();
    void DrawFrame();
    void DrawUnits(double right);
    void DrawEntries();
    void AddBoat(int boat, std::vector<ChartLine>& lines) const;
    void DrawLine(const ChartLine& line);
    std::optional<double> ValueOf(int boat, int entry) const;
    double HeightOf(double value, int entry) const;

    const RaceControl& race_;
    const MarkPasses& passes_;
    bool useEnglish_;
    RaceDisp& form_;
    StatKind kind_;
    bool byLeg_;
    double left_;
    double columnWidth_;
    OneBased<double> best_;  ///< value at each entry
    DiffAxis axis_;
    double pixelsPerUnit_ = 0.0;
};

void DiffChart::FindScale() {
    double spread = 0.0;
    for (int entry = FirstEntry(); entry <= race_.CourseOrder.Count(); ++entry) {
        std::optional<double> least;
        std::optional<double> most;
        for (int boat = 1; boat <= race_.Boats.Count(); ++boat) {
            const std::optional<double> value = ValueOf(boat, entry);
            if (!value) continue;
            least = std::min(least.value_or(*value), *value);
            most = std::max(most.value_or(*value), *value);
        }
        if (!least || !most) continue;
        best_[entry] = BestOnTop() ? *most : *least;
        spread = std::max(spread, *most - *least);
    }
    axis_ = ChooseDiffAxis(spread);
    pixelsPerUnit_ = (PlotBottom - PlotTop) / axis_.Max();
}

void DiffChart::DrawFrame() {
    Surface& page = form_.Picture3;
    page.DrawWidth = 1;
    const int title = static_cast<int>(kind_) - 1;
    PrintColoured(page, DataTitleColour, left_ + 50, 4,
                  (byLeg_ ? LegTitles : CumulativeTitles)[title].In(useEnglish_));
    const int columns = std::max(race_.CourseOrder.Count() - (byLeg_ ? 1 : 0), 0);
    const double right = left_ + PlotIndent + columns * columnWidth_;
    page.FilledBox(left_ + PlotIndent, PlotTop, right, GridBottom, PlotColour);
    DrawUnits(right);
    DrawEntries();
}

void DiffChart::DrawUnits(double right) {
    Surface& page = form_.Picture3;
    for (int step = 0; step <= axis_.Steps; ++step) {
        const double off = step * axis_.Unit * pixelsPerUnit_;
        const double y = BestOnTop() ? PlotTop + off : PlotBottom - off;
        page.Line(left_ + PlotIndent, y, right, y, White);
        PrintRight(page, left_ + PlotIndent - 5, y - 5, SurfaceNumberText(step * axis_.Unit));
    }
}

/// Names only as many entries as have room beside each other.
void DiffChart::DrawEntries() {
    Surface& page = form_.Picture3;
    constexpr double gap = 6.0;
    double free = left_;
    for (int entry = byLeg_ ? 2 : 1; entry <= race_.CourseOrder.Count(); ++entry) {
        const double x = EntryX(entry);
        page.Line(x, PlotTop, x, GridBottom, White);
        const std::string_view name = Trim(race_.CourseOrder[entry]);
        const double half = page.TextWidth(name) / 2;
        if (x - half < free) continue;
        PrintCentred(page, x, KeyTop, name);
        free = x + half + gap;
    }
}

/// Metres and knots to the last digit: the lines do not jump with the rounding of the table.
std::optional<double> DiffChart::ValueOf(int boat, int entry) const {
    const std::optional<int> time = byLeg_ ? LegTime(passes_, boat, entry) : PassTime(passes_, boat, entry);
    if (!time || kind_ == StatKind::Time) return time;
    const double miles = byLeg_ ? LegMiles(passes_, boat, entry) : PassMiles(passes_, boat, entry);
    if (kind_ == StatKind::Distance) return miles * MetresPerNauticalMile;
    const std::optional<double> knots = SpeedOver(miles, *time);
    return knots && *time > 0 ? std::optional(RoundDecimals(*knots, 3)) : std::nullopt;
}

double DiffChart::HeightOf(double value, int entry) const {
    const double off = std::abs(value - best_[entry]) * pixelsPerUnit_;
    return BestOnTop() ? PlotTop + off : PlotBottom - off;
}

void DiffChart::AddBoat(int boat, std::vector<ChartLine>& lines) const {
    bool joins = false;
    for (int entry = FirstEntry(); entry <= race_.CourseOrder.Count(); ++entry) {
        const std::optional<double> value = ValueOf(boat, entry);
        if (value) {
            if (!joins) lines.push_back({boat, {}});
            lines.back().Points.push_back({EntryX(entry), HeightOf(*value, entry)});
        }
        joins = value.has_value();
    }
}

void DiffChart::DrawLine(const ChartLine& line) {
    Surface& page = form_.Picture3;
    const Colour colour = ReadableOn(PlotColour, BoatColour(line.Boat));
    page.DrawWidth = form_.InFocus(line.Boat) ? FocusWidth : 1;
    if (line.Points.size() > 1) DrawLiveryLine(page, line.Boat, line.Points, PlotColour);
    page.Fill = FillStyle::Solid;
    page.FillColor = colour;
    for (const Point& point : line.Points) page.Circle(point.X, point.Y, PointRadius, colour);
}

/// How far a point lies from the straight way between two others.
double DistanceToWay(const Point& from, const Point& to, const Point& at) {
    const double x = to.X - from.X;
    const double y = to.Y - from.Y;
    const double square = x * x + y * y;
    const double along = square > 0 ? ((at.X - from.X) * x + (at.Y - from.Y) * y) / square : 0.0;
    const double f = std::clamp(along, 0.0, 1.0);
    return std::hypot(from.X + f * x - at.X, from.Y + f * y - at.Y);
}

}  // namespace

std::vector<ChartLine> DrawLegCharts(const RaceControl& race, const MarkPasses& passes,
                                     const Settings& settings, StatKind kind, RaceDisp& form) {
    Surface& page = form.Picture3;
    page.Move(page.Left(), page.Top(), form.PicTime.Width(), LegChartsHeight);
    page.FontSize = 9 * settings.FontScale;
    page.Cls();
    std::vector<ChartLine> lines;
    for (const bool byLeg : {false, true})
        DiffChart(race, passes, settings.UseEnglish, form, kind, byLeg).Draw(lines);
    page.DrawWidth = 1;
    return lines;
}

int LineUnder(const std::vector<ChartLine>& lines, const Point& at) {
    constexpr double reach = 5.0;
    int boat = 0;
    double nearest = reach;
    for (const ChartLine& line : lines) {
        for (std::size_t i = 0; i < line.Points.size(); ++i) {
            const Point& from = line.Points[i == 0 ? 0 : i - 1];
            const double distance = DistanceToWay(from, line.Points[i], at);
            if (distance >= nearest) continue;
            nearest = distance;
            boat = line.Boat;
        }
    }
    return boat;
}

}  // namespace keelview
