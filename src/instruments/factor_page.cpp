#include "instruments/factor_page.h"

#include <memory>
#include <optional>
#include <string_view>

#include "analysis/leg_statistics.h"
#include "base/strings.h"
#include "instruments/leg_charts.h"
#include "instruments/page_text.h"

namespace keelview {

namespace {

constexpr double RowPitch = 36.0;
constexpr double FirstRowTop = 127.0;
constexpr double HeaderTop = 105.0;
constexpr double AxisIndent = 93.0;

constexpr Colour TitleColour = Rgb(192, 0, 0);
constexpr Colour FocusColour = Rgb(192, 255, 255);
constexpr Colour AxisColour = Rgb(0, 255, 255);

constexpr Text Title{"<Speed and Dist factor>  <Time＝Dist/SPD>",
                     "<速度、帆走距離の要因分析>  <時間＝距離／速度>"};
constexpr Text WholeRace{"TTL", "総合"};

/// A colour of the bars and what it means.
struct LegendLine {
    Colour BarColour;
    double Top;
    Text Words;
};
constexpr LegendLine Legend[] = {
    {Black,
     45,
     {"= elapse time by each leg : %  <lesser the better>  (best boat＝100%)",
      "= レグ毎の所要時間比率 : %    <少ないほど良い>　（ベストタイム艇＝100%）"}},
    {Red,
     65,
     {"= Ratio of sailed dist : %  <shorter the better>", "= レグ毎帆走距離比率:％  　  <少ないほど良い>"}},
    {Blue,
     85,
     {"= Ratio of boat speed : %  <faster the better>", "= レグ毎の速度比率:％　　　　<大きいほど良い>"}},
};

double AnaColWidth(const RaceControl& race) {
    return 2 * StatColWidth(race);
}

double RowTop(int boat) {
    return (boat - 1) * RowPitch + FirstRowTop;
}

void DrawLegend(Surface& page, bool english) {
    PrintColoured(page, TitleColour, 120, 25, Title.In(english));
    for (const LegendLine& line : Legend) {
        page.FilledBox(50, line.Top, 90, line.Top + 10, line.BarColour);
        PrintColoured(page, TitleColour, 100, line.Top, line.Words.In(english));
    }
}

void DrawHeader(const AppState& app, Surface& page) {
    const bool english = app.settings.UseEnglish;
    page.PrintAt(15, HeaderTop, BoatColumnTitle.In(english));
    for (int entry = 1; entry <= app.race.CourseCount; ++entry) {
        const std::string_view label =
            entry == 1 ? WholeRace.In(english) : Trim(app.race.CourseOrder[entry]);
        PrintRight(page, entry * AnaColWidth(app.race) + AxisIndent, HeaderTop, label);
    }
}

void DrawRow(const AppState& app, RaceDisp& form, int boat) {
    Surface& page = form.PicTime;
    const double y = RowTop(boat);
    const Colour colour = app.display.BoatColour[boat];
    page.Box(8, y - 1, 100, y + 31, colour);
    PrintColoured(page, colour, 10, y, app.race.BoatName[boat]);
    if (!form.Bnam[boat - 1].Value()) return;
    page.FilledBox(125, y - 1, 125 + AnaColWidth(app.race) * app.race.CourseCount + 30, y + 31,
                   FocusColour);
}

void DrawBar(Surface& page, const std::optional<double>& ratio, double axis, double scale, double top,
             Colour colour) {
    if (ratio) page.FilledBox(axis + LimitShare(*ratio) * scale, top, axis, top + 6, colour);
}

void DrawColumn(const AppState& app, Surface& page, const FactorColumn& column, double axis) {
    const double scale = AnaColWidth(app.race) * 2;
    for (int boat = 1; boat <= app.race.BoatCount; ++boat) {
        const FactorShare& share = column.Share[boat];
        if (!share.Counts) continue;
        const double y = RowTop(boat);
        DrawBar(page, share.Time, axis, scale, y + 2, Black);
        DrawBar(page, share.Distance, axis, scale, y + 10, Red);
        DrawBar(page, share.Speed, axis, scale, y + 18, Blue);
        page.Line(axis, y + 2, axis, y + 32, AxisColour);
    }
}

}  // namespace

void DrawFactorAnalysis(const AppState& app, RaceDisp& form) {
    Surface& page = form.PicTime;
    if (app.race.CourseCount > MaxAnalysisEntries) {
        PrintColoured(page, TitleColour, 120, 25, Title.In(app.settings.UseEnglish));
        page.PrintAt(100, 45, CourseTooLongText(app.settings.UseEnglish));
        return;
    }
    DrawLegend(page, app.settings.UseEnglish);
    DrawHeader(app, page);
    for (int boat = 1; boat <= app.race.BoatCount; ++boat) DrawRow(app, form, boat);
    const std::optional<FactorAnalysis> analysis = AnalyseFactors(app.race, app.passes);
    if (!analysis) return;
    for (int entry = 1; entry <= app.race.CourseCount; ++entry)
        DrawColumn(app, page, analysis->Column[entry], entry * AnaColWidth(app.race) + AxisIndent);
}

}  // namespace keelview
