#include "instruments/leg_charts.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "analysis/track_derivation.h"
#include "base/bilingual.h"
#include "base/numbers.h"
#include "base/strings.h"
#include "instruments/page_text.h"

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

constexpr Colour TitleColour = Rgb(192, 0, 0);
constexpr Colour PlotColour = Rgb(192, 255, 255);

// The y of a point without a value; no line leads to it or away from it.
constexpr double NoY = -100.0;

constexpr Text CumulativeTitles[] = {{"( Diff of mk rnd time : sec)", "(マーク回航時間差：秒)"},
                                     {"( Diff of acc sailed dist : m)", "(累計帆走距離差：ｍ)"},
                                     {"( Diff of acc speed : KTS)", "（累積速度差：ノット)"}};
constexpr Text LegTitles[] = {{"( Diff of time by leg : sec)", "(レグ毎の時間差：秒)"},
                              {"( Diff of sailed dist by leg : m)", "(レグ毎の帆走距離差：ｍ)"},
                              {"( Diff of speed by leg : Kts)", "(レグ毎の速度差：ノット)"}};

constexpr double StatPageWidth = 260.0;
constexpr double WidestStatColumn = 45.0;
constexpr double RowPitch = 18.0;

/// A boat's value at an entry: no line is drawn to it unless Test is above 0.
struct DiffPoint {
    double Test = 0.0;
    double Y = NoY;
};

/// One of the two charts on the off-screen surface.
class DiffChart {
  public:
    DiffChart(const AppState& app, RaceDisp& form, StatKind kind, const LegTable& table, bool byLeg)
        : app_(app),
          form_(form),
          kind_(kind),
          table_(table),
          byLeg_(byLeg),
          left_(byLeg ? app.race.CourseCount * StatColWidth(app.race) + 60 : 0.0),
          axis_(ChooseDiffAxis(table.Spread)),
          pixelsPerUnit_((PlotBottom - PlotTop) / axis_.Max()) {}

    void Draw() {
        DrawFrame();
        for (int boat = app_.race.BoatCount; boat >= 1; --boat) DrawBoat(boat);
    }

  private:
    bool BestOnTop() const { return kind_ == StatKind::Speed; }
    int FirstFrameEntry() const { return byLeg_ ? 2 : 1; }
    int FirstPoint() const { return byLeg_ || kind_ == StatKind::Speed ? 2 : 1; }
    double EntryX(int entry) const {
        return left_ + (byLeg_ ? entry - 1 : entry) * StatColWidth(app_.race) + PointIndent;
    }

    void DrawFrame();
    void DrawUnits(double right);
    void DrawEntries();
    void DrawBoat(int boat);
    void DrawRun(const std::vector<Point>& run, Colour colour);
    DiffPoint PointOf(int boat, int entry) const;
    DiffPoint SpeedPoint(int boat, int entry) const;

    const AppState& app_;
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
    PrintColoured(page, TitleColour, left_ + 50, 10,
                  (byLeg_ ? LegTitles : CumulativeTitles)[title].In(app_.settings.UseEnglish));
    const int columns = std::max(app_.race.CourseCount - FirstFrameEntry() + 1, 0);
    const double right = left_ + PlotIndent + columns * StatColWidth(app_.race);
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
    for (int entry = FirstFrameEntry(); entry <= app_.race.CourseCount; ++entry) {
        const double x = EntryX(entry);
        page.Line(x, PlotTop, x, GridBottom, White);
        PrintCentred(page, x, KeyTop, Trim(app_.race.CourseOrder[entry]));
    }
}

DiffPoint DiffChart::SpeedPoint(int boat, int entry) const {
    const MarkPasses& passes = app_.passes;
    const int time = byLeg_ ? LegTime(passes, boat, entry) : passes.MarkPassTime[boat][entry];
    const double miles = byLeg_ ? LegMiles(passes, boat, entry) : passes.MarkPassDist[boat][entry];
    const std::optional<double> exact = SpeedOver(miles, time);
    if (passes.MarkPassTime[boat][entry] <= 0 || !exact) return {};
    const double knots = RoundDecimals(*exact, 3);
    return {knots, PlotTop + (table_.ColMax[entry] - knots) * pixelsPerUnit_};
}

DiffPoint DiffChart::PointOf(int boat, int entry) const {
    const MarkPasses& passes = app_.passes;
    if (kind_ == StatKind::Speed) return SpeedPoint(boat, entry);
    const auto at = [&](double test, double value) {
        return DiffPoint{test, PlotBottom - (value - table_.ColMin[entry]) * pixelsPerUnit_};
    };
    if (kind_ == StatKind::Time) {
        const int time = passes.MarkPassTime[boat][entry];
        return at(time, byLeg_ ? LegTime(passes, boat, entry) : time);
    }
    // Metres to the last digit: the lines do not jump with the rounding of the table.
    const double miles = passes.MarkPassDist[boat][entry];
    return at(miles, (byLeg_ ? LegMiles(passes, boat, entry) : miles) * MetresPerNauticalMile);
}

void DiffChart::DrawBoat(int boat) {
    form_.Picture3.DrawWidth = form_.Bnam[boat - 1].Value() ? FocusWidth : 1;
    const Colour colour = app_.display.BoatColour[boat];
    std::vector<Point> run;
    for (int entry = FirstPoint(); entry <= app_.race.CourseCount; ++entry) {
        const DiffPoint point = PointOf(boat, entry);
        // The point before starts a line also where no line led to it, unless it has no place at all.
        const bool joined = point.Test > 0 && !run.empty() && run.back().Y >= 0;
        if (!joined) {
            DrawRun(run, colour);
            run.clear();
        }
        run.push_back({EntryX(entry), point.Y});
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

double StatColWidth(const RaceControl& race) {
    return std::min(StatPageWidth / std::max(race.CourseCount, 1), WidestStatColumn);
}

double ChartTop(const RaceControl& race) {
    return (race.BoatCount + 1) * RowPitch + 85;
}

void DrawLegCharts(const AppState& app, RaceDisp& form, const LegStatistics& statistics) {
    if (statistics.Kind == StatKind::Analysis) return;
    Surface& page = form.Picture3;
    page.Move(page.Left(), page.Top(), form.PicTime.Width(), form.PicTime.Height() / 2);
    page.FontSize = 9 * app.settings.FontScale;
    page.Cls();
    DiffChart(app, form, statistics.Kind, statistics.Cumulative, false).Draw();
    DiffChart(app, form, statistics.Kind, statistics.ByLeg, true).Draw();
    page.DrawWidth = 1;
    form.PicTime.PaintPicture(page.Image(), 0, ChartTop(app.race));
}

}  // namespace keelview
