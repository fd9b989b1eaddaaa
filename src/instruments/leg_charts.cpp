#include "instruments/leg_charts.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "base/numbers.h"
#include "base/strings.h"
#include "instruments/data_page.h"
#include "instruments/page_text.h"
#include "session/boat_colours.h"

namespace keelview {

namespace {

constexpr double PlotTop = 25.0;
constexpr double PlotBottom = 300.0;
constexpr double GridBottom = 310.0;
constexpr double KeyTop = 316.0;
constexpr double PlotIndent = 40.0;   // from the chart's left offset to its plot area
constexpr double PointIndent = 20.0;  // from a column's left to its point, less one column
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
              StatKind kind, const LegTable& table, bool byLeg)
        : race_(race),
          passes_(passes),
          useEnglish_(useEnglish),
          form_(form),
          kind_(kind),
          table_(table),
          byLeg_(byLeg),
          left_(byLeg ? race.CourseOrder.Count() * StatColWidth(race) + 60 : 0.0),
          axis_(ChooseDiffAxis(table.Spread)),
          pixelsPerUnit_((PlotBottom - PlotTop) / axis_.Max()) {}

    void Draw() {
        DrawFrame();
        for (int boat = race_.Boats.Count(); boat >= 1; --boat) DrawBoat(boat);
    }

  private:
    bool BestOnTop() const { return kind_ == StatKind::Speed; }
    int FirstFrameEntry() const { return byLeg_ ? 2 : 1; }
    int FirstPoint() const { return byLeg_ || kind_ == StatKind::Speed ? 2 : 1; }
    double EntryX(int entry) const {
        return left_ + (byLeg_ ? entry - 1 : entry) * StatColWidth(race_) + PointIndent;
    }

    void DrawFrame();
    void DrawUnits(double right);
    void DrawEntries();
    void DrawBoat(int boat);
    void DrawRun(const std::vector<Point>& run, Colour colour);
    std::optional<double> ValueOf(int boat, int entry) const;
    double HeightOf(double value, int entry) const;

    const RaceControl& race_;
    const MarkPasses& passes_;
    bool useEnglish_;
    RaceDisp& form_;
    StatKind kind_;
    const LegTable& table_;
    bool byLeg_;
    double left_;
    DiffAxis axis_;
    double pixelsPerUnit_;
};

void DiffChart::DrawFrame() {
    Surface& page = form_.Picture3;
    page.DrawWidth = 1;
    const int title = static_cast<int>(kind_) - 1;
    PrintColoured(page, DataTitleColour, left_ + 50, 10,
                  (byLeg_ ? LegTitles : CumulativeTitles)[title].In(useEnglish_));
    const int columns = std::max(race_.CourseOrder.Count() - FirstFrameEntry() + 1, 0);
    const double right = left_ + PlotIndent + columns * StatColWidth(race_);
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

void DiffChart::DrawEntries() {
    Surface& page = form_.Picture3;
    for (int entry = FirstFrameEntry(); entry <= race_.CourseOrder.Count(); ++entry) {
        const double x = EntryX(entry);
        page.Line(x, PlotTop, x, GridBottom, White);
        PrintCentred(page, x, KeyTop, Trim(race_.CourseOrder[entry]));
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
    return BestOnTop() ? PlotTop + (table_.ColMax[entry] - value) * pixelsPerUnit_
                       : PlotBottom - (value - table_.ColMin[entry]) * pixelsPerUnit_;
}

void DiffChart::DrawBoat(int boat) {
    form_.Picture3.DrawWidth = form_.InFocus(boat) ? FocusWidth : 1;
    const Colour colour = BoatColour(boat);
    std::vector<Point> run;
    for (int entry = FirstPoint(); entry <= race_.CourseOrder.Count(); ++entry) {
        if (const std::optional<double> value = ValueOf(boat, entry)) {
            run.push_back({EntryX(entry), HeightOf(*value, entry)});
            continue;
        }
        DrawRun(run, colour);
        run.clear();
    }
    DrawRun(run, colour);
}

void DiffChart::DrawRun(const std::vector<Point>& run, Colour colour) {
    if (run.size() < 2) return;
    Surface& page = form_.Picture3;
    page.Polyline(run, colour);
    page.Fill = FillStyle::Solid;
    page.FillColor = colour;
    for (const Point& point : run) page.Circle(point.X, point.Y, PointRadius, colour);
}

}  // namespace

void DrawLegCharts(const RaceControl& race, const MarkPasses& passes, const Settings& settings,
                   const LegStatistics& statistics, RaceDisp& form) {
    if (statistics.Kind == StatKind::Analysis) return;
    Surface& page = form.Picture3;
    page.Move(page.Left(), page.Top(), form.PicTime.Width(), form.MapSide() / 2);
    page.FontSize = 9 * settings.FontScale;
    page.Cls();
    for (const bool byLeg : {false, true})
        DiffChart(race, passes, settings.UseEnglish, form, statistics.Kind,
                  byLeg ? statistics.ByLeg : statistics.Cumulative, byLeg)
            .Draw();
    page.DrawWidth = 1;
    form.PicTime.PaintPicture(page.Image(), 0, DataChartTop(race));
}

}  // namespace keelview
