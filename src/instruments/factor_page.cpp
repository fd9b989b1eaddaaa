#include "instruments/factor_page.h"

#include <optional>
#include <string_view>

#include "analysis/leg_statistics.h"
#include "base/strings.h"
#include "instruments/data_page.h"
#include "instruments/page_text.h"
#include "session/boat_colours.h"

namespace keelview {

namespace {

constexpr double RowPitch = 36.0;  // three bars are higher than a line of a table
constexpr double FirstRowTop = 127.0;
constexpr double HeaderTop = 105.0;
constexpr double AxisIndent = 93.0;

constexpr Colour AxisColour = Rgb(0, 255, 255);

constexpr Text Title{"<Speed and Dist factor>  <Time=Dist/SPD>",
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
     {"= Ratio of elapsed time : %  <the less the better>  (best boat=100%)",
      "= レグ毎の所要時間比率 : %    <少ないほど良い>　（ベストタイム艇＝100%）"}},
    {Red,
     65,
     {"= Ratio of sailed dist : %  <the shorter the better>",
      "= レグ毎帆走距離比率:％  　  <少ないほど良い>"}},
    {Blue,
     85,
     {"= Ratio of boat speed : %  <the faster the better>",
      "= レグ毎の速度比率:％　　　　<大きいほど良い>"}},
};

double AnaColWidth(const RaceControl& race) {
    return 2 * StatColWidth(race);
}

void DrawLegend(Surface& page, bool english) {
    PrintColoured(page, DataTitleColour, 120, 25, Title.In(english));
    for (const LegendLine& line : Legend) {
        page.FilledBox(50, line.Top, 90, line.Top + 10, line.BarColour);
        PrintColoured(page, DataTitleColour, 100, line.Top, line.Words.In(english));
    }
}

void DrawRow(const RaceControl& race, RaceDisp& form, int boat) {
    Surface& page = form.PicTime;
    const double y = FactorRowTop(boat);
    page.Box(8, y - 1, 100, y + 31, BoatColour(boat));
    PrintColoured(page, BoatColour(boat), 10, y, race.Boats[boat].BoatName);
    if (!form.InFocus(boat)) return;
    page.FilledBox(125, y - 1, 125 + AnaColWidth(race) * race.CourseOrder.Count() + 30, y + 31,
                   DataFocusColour);
}

void DrawBar(Surface& page, const std::optional<double>& ratio, double axis, double scale, double top,
             Colour colour) {
    if (ratio) page.FilledBox(axis + LimitShare(*ratio) * scale, top, axis, top + 6, colour);
}

void DrawColumn(const FactorColumn& column, Surface& page, double axis, double scale) {
    for (int boat = 1; boat <= column.Share.Count(); ++boat) {
        const FactorShare& share = column.Share[boat];
        if (!share.Counts) continue;
        const double y = FactorRowTop(boat);
        DrawBar(page, share.Time, axis, scale, y + 2, Black);
        DrawBar(page, share.Distance, axis, scale, y + 10, Red);
        DrawBar(page, share.Speed, axis, scale, y + 18, Blue);
        page.Line(axis, y + 2, axis, y + 32, AxisColour);
    }
}

}  // namespace

double FactorRowTop(int boat) {
    return (boat - 1) * RowPitch + FirstRowTop;
}

PageHead FactorHead(const RaceControl& race) {
    constexpr double margin = 2.0;
    return {HeaderTop - margin, FirstRowTop - HeaderTop, FactorRowTop(race.Boats.Count() + 1)};
}

void DrawFactorHead(const RaceControl& race, bool useEnglish, double y, Surface& page) {
    page.PrintAt(15, y, BoatColumnTitle.In(useEnglish));
    for (int entry = 1; entry <= race.CourseOrder.Count(); ++entry) {
        const std::string_view label =
            entry == 1 ? WholeRace.In(useEnglish) : Trim(race.CourseOrder[entry]);
        PrintRight(page, entry * AnaColWidth(race) + AxisIndent, y, label);
    }
}

double FactorPageHeight(const RaceControl& race) {
    return race.CourseOrder.Count() > MaxAnalysisEntries ? 0.0 : FactorRowTop(race.Boats.Count() + 1);
}

void DrawFactorAnalysis(const RaceControl& race, const MarkPasses& passes, bool useEnglish,
                        RaceDisp& form) {
    Surface& page = form.PicTime;
    const int entries = race.CourseOrder.Count();
    if (entries > MaxAnalysisEntries) {
        PrintColoured(page, DataTitleColour, 120, 25, Title.In(useEnglish));
        page.PrintAt(100, 45, CourseTooLongText(useEnglish));
        return;
    }
    DrawLegend(page, useEnglish);
    DrawFactorHead(race, useEnglish, HeaderTop, page);
    for (int boat = 1; boat <= race.Boats.Count(); ++boat) DrawRow(race, form, boat);
    const std::optional<FactorAnalysis> analysis = AnalyseFactors(race, passes);
    if (!analysis) return;
    for (int entry = 1; entry <= entries; ++entry)
        DrawColumn((*analysis)[entry], page, entry * AnaColWidth(race) + AxisIndent, AnaColWidth(race) * 2);
}

}  // namespace keelview
