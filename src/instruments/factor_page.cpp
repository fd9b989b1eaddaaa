#include "instruments/factor_page.h"

#include <algorithm>
#include <string_view>

#include "base/numbers.h"
#include "base/strings.h"
#include "instruments/page_text.h"
#include "session/livery.h"

namespace keelview {

namespace {

constexpr double HeaderTop = 105.0;
constexpr double NamesRight = 100.0;
constexpr double ColumnsLeft = 110.0;

constexpr Colour AxisColour = Rgb(0, 255, 255);

constexpr Text Title{"<Speed and Dist factor>  <Time=Dist/SPD>",
                     "<速度、帆走距離の要因分析>  <時間＝距離／速度>"};
constexpr Text WholeRace{"TTL", "総合"};
constexpr Text TimeWord{"time ", "時間 "};
constexpr Text DistanceWord{"dist ", "距離 "};
constexpr Text SpeedWord{"speed ", "速度 "};

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

/// Width of a column in a place of a width.
double ColumnWidth(const RaceControl& race, double placeWidth) {
    constexpr double narrowest = 60.0;
    constexpr double widest = 120.0;
    return std::clamp((placeWidth - ColumnsLeft - 5) / std::max(race.CourseOrder.Count(), 1), narrowest,
                      widest);
}

/// The middle of a column, where its axis stands, on the page as it is scrolled.
double AxisX(const RaceControl& race, const PageView& view, int entry) {
    return ColumnsLeft + (entry - 0.5) * ColumnWidth(race, view.Width) - view.X;
}

double RowTop(const PageView& view, int boat) {
    return FactorHeadBottom + 2 + (boat - 1) * FactorRowPitch - view.Y;
}

bool TooLong(const RaceControl& race) {
    return race.CourseOrder.Count() > MaxAnalysisEntries;
}

std::string_view ColumnTitle(const RaceControl& race, int entry, bool english) {
    return entry == 1 ? WholeRace.In(english) : Trim(race.CourseOrder[entry]);
}

void DrawLegend(Surface& page, bool english) {
    PrintColoured(page, DataTitleColour, 120, 25, Title.In(english));
    for (const LegendLine& line : Legend) {
        page.FilledBox(50, line.Top, 90, line.Top + 10, line.BarColour);
        PrintColoured(page, DataTitleColour, 100, line.Top, line.Words.In(english));
    }
}

bool IsSeen(const PageView& view, int boat) {
    return RowTop(view, boat) > FactorHeadBottom - FactorRowPitch && RowTop(view, boat) < view.Height;
}

void DrawNames(const RaceControl& race, const PageView& view, Surface& page) {
    page.FilledBox(0, FactorHeadBottom, ColumnsLeft - 4, view.Height, page.BackColor);
    for (int boat = 1; boat <= race.Boats.Count(); ++boat) {
        const double y = RowTop(view, boat);
        if (!IsSeen(view, boat)) continue;
        DrawNameField(page, boat, {DataNamesLeft, y - 1}, {NamesRight, y + 31}, race.Boats[boat].BoatName);
    }
}

void DrawHead(const RaceControl& race, const PageView& view, bool english, Surface& page) {
    page.FilledBox(0, 0, view.Width + 20, FactorHeadBottom - 1, page.BackColor);
    for (int entry = 1; entry <= race.CourseOrder.Count(); ++entry)
        PrintCentred(page, AxisX(race, view, entry), HeaderTop, ColumnTitle(race, entry, english));
    page.FilledBox(0, HeaderTop, ColumnsLeft - 4, FactorHeadBottom - 1, page.BackColor);
    page.PrintAt(15, HeaderTop, BoatColumnTitle.In(english));
    DrawLegend(page, english);
    if (view.Y > 0) page.Line(0, FactorHeadBottom - 1, view.Width, FactorHeadBottom - 1, DataTitleColour);
}

/// "103.2 %"; a dash where there is none.
std::string PercentText(const std::optional<double>& ratio) {
    return ratio ? NumberText(RoundDecimals((*ratio + 1) * 100, 1)) + " %" : "-";
}

void DrawBar(Surface& page, const std::optional<double>& ratio, double axis, double scale, double top,
             Colour colour) {
    if (ratio) page.FilledBox(axis + LimitShare(*ratio) * scale, top, axis, top + 6, colour);
}

void DrawColumn(const FactorColumn& column, Surface& page, const PageView& view, double axis,
                double scale) {
    for (int boat = 1; boat <= column.Share.Count(); ++boat) {
        const FactorShare& share = column.Share[boat];
        if (!share.Counts || !IsSeen(view, boat)) continue;
        const double y = RowTop(view, boat);
        DrawBar(page, share.Time, axis, scale, y + 2, Black);
        DrawBar(page, share.Distance, axis, scale, y + 10, Red);
        DrawBar(page, share.Speed, axis, scale, y + 18, Blue);
        page.Line(axis, y + 2, axis, y + 32, ReadableOn(page.BackColor, AxisColour));
    }
}

}  // namespace

double FactorPageWidth(const RaceControl& race, double placeWidth) {
    if (TooLong(race)) return 0.0;
    return ColumnsLeft + race.CourseOrder.Count() * ColumnWidth(race, placeWidth) + 4;
}

void DrawFactorAnalysis(const RaceControl& race, const std::optional<FactorAnalysis>& analysis,
                        bool useEnglish, const PageView& view, RaceDisp& form) {
    Surface& page = form.PicTime;
    if (TooLong(race)) {
        PrintColoured(page, DataTitleColour, 120, 25, Title.In(useEnglish));
        page.PrintAt(100, 45, CourseTooLongText(useEnglish));
        return;
    }
    const double right = FactorPageWidth(race, view.Width) - view.X;
    for (int boat = 1; boat <= race.Boats.Count(); ++boat)
        if (form.InFocus(boat) && IsSeen(view, boat))
            page.FilledBox(ColumnsLeft - 2, RowTop(view, boat) - 1, right, RowTop(view, boat) + 31,
                           DataFocusColour);
    const double scale = ColumnWidth(race, view.Width) * 2;
    for (int entry = 1; analysis && entry <= race.CourseOrder.Count(); ++entry)
        DrawColumn((*analysis)[entry], page, view, AxisX(race, view, entry), scale);
    DrawNames(race, view, page);
    DrawHead(race, view, useEnglish, page);
}

std::string FactorText(const RaceControl& race, const std::optional<FactorAnalysis>& analysis,
                       bool useEnglish, const PageView& view, const Point& at) {
    const int boat = FloorToInt((at.Y + view.Y - FactorHeadBottom) / FactorRowPitch) + 1;
    const int entry = FloorToInt((at.X + view.X - ColumnsLeft) / ColumnWidth(race, view.Width)) + 1;
    if (!analysis || at.X < ColumnsLeft || !analysis->Holds(entry) || !race.Boats.Holds(boat)) return {};
    const FactorShare& share = (*analysis)[entry].Share[boat];
    if (!share.Counts) return {};
    return race.Boats[boat].BoatName + "  " + std::string(ColumnTitle(race, entry, useEnglish)) + ":  " +
           TimeWord.Str(useEnglish) + PercentText(share.Time) + "  " + DistanceWord.Str(useEnglish) +
           PercentText(share.Distance) + "  " + SpeedWord.Str(useEnglish) + PercentText(share.Speed);
}

}  // namespace keelview
