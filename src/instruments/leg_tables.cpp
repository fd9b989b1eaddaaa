#include "instruments/leg_tables.h"

#include <algorithm>
#include <optional>
#include <string>

#include "base/numbers.h"
#include "base/strings.h"
#include "instruments/data_page.h"
#include "instruments/factor_page.h"
#include "instruments/leg_charts.h"
#include "instruments/page_text.h"
#include "session/boat_colours.h"

namespace keelview {

namespace {

constexpr double PageLeft = 5.0;
constexpr double TitleTop = 45.0;

constexpr Text CumulativeTitles[] = {{"<Mk rnd time : sec>", "<マーク通過時間 : 秒>"},
                                     {"<Acc sailed dist : m>", "<累計帆走距離：ｍ>"},
                                     {"<Acc Speed : Kts>", "<帆走速度：　ノット>"}};
constexpr Text LegTitles[] = {{"< Time by leg : sec >", "<レグ毎の所要時間 : 秒 >"},
                              {"< Sailed dist by leg : m >", "<レグ毎の帆走距離 : ｍ >"},
                              {"< Speed by leg : Kts >", "<レグ毎の帆走速度：ノット>"}};

}  // namespace

void LegTables::Repaint(Changed changed) {
    const Changed mine =
        Changed::Race | Changed::Boats | Changed::Course | Changed::Size | Changed::Focus | Changed::Mode;
    if (app_.shown.ViewMode != ViewKind::Data || !Any(changed, mine)) return;
    form_.PicTime.FontSize = 9 * app_.settings.FontScale;
    const StatKind kind = ChosenKind();
    PlacePage(kind);
    ScrollPage(kind, changed == Changed::Focus);
    ShowHead(kind);
    form_.PicTime.Cls();
    if (kind == StatKind::Analysis) {
        DrawFactorAnalysis(app_.race, app_.passes, app_.settings.UseEnglish, form_);
        return;
    }
    const LegStatistics statistics = ComputeLegStatistics(app_.race, app_.passes, kind);
    DrawTables(statistics);
    DrawLegCharts(app_.race, app_.passes, app_.settings, statistics, form_);
}

void LegTables::PlacePage(StatKind kind) {
    const double side = form_.MapSide();
    const double least = kind == StatKind::Analysis ? FactorPageHeight(app_.race) : 0.0;
    const double height = std::max(StatPageHeight(app_.race, side), least);
    const bool scrolls = height > side;
    form_.PicTime.Move(PageLeft, form_.PicTime.Top(), side, height);
    constexpr double barWidth = 15.0;
    form_.VScroll2.Move(PageLeft + side - barWidth, DataPageTop, barWidth, side);
    form_.VScroll2.SetVisible(scrolls);
    form_.VScroll2.SetView(FloorToInt(height - side), FloorToInt(DataRowPitch), FloorToInt(side));
    constexpr double frameWidth = 276.0;
    form_.Frame2.Move(side - (scrolls ? barWidth : 0.0) - frameWidth - 5, 3, frameWidth, 29);
    form_.Option1.Move(8, 8, 49, 17);
    form_.Option4.Move(64, 8, 49, 17);
    form_.Option5.Move(112, 8, 49, 17);
    form_.Option12.Move(160, 8, 49, 17);
    form_.Command11.Move(224, 8, 49, 17);
}

void LegTables::ScrollPage(StatKind kind, bool onlyFocus) {
    if (!onlyFocus) {
        form_.VScroll2.SetValue(0);
        form_.PicTime.SetTop(DataPageTop);
        return;
    }
    const double from = form_.VScroll2.Value() + DataRowTop(1);
    const double to = form_.VScroll2.Value() + form_.MapSide() - 2 * DataRowPitch;
    std::optional<double> first;
    for (int boat = 1; boat <= app_.race.Boats.Count(); ++boat) {
        if (!form_.InFocus(boat)) continue;
        const double top = kind == StatKind::Analysis ? FactorRowTop(boat) : DataRowTop(boat);
        if (top >= from && top <= to) return;
        if (!first) first = top;
    }
    if (first) form_.VScroll2.SetValue(FloorToInt(*first - form_.MapSide() / 2));
}

/// What stays in sight of the page while it is scrolled.
void LegTables::ShowHead(StatKind kind) {
    Surface& head = form_.Picture14;
    if (form_.VScroll2.Max() == 0) return head.Hide();
    const bool analysis = kind == StatKind::Analysis;
    const PageHead part = analysis ? FactorHead(app_.race) : TableHead(app_.race);
    constexpr double edge = 1.0;
    const double height = DataPageTop + part.Height;  // the page may reach up to the edge of the form
    head.Move(PageLeft + edge, 0, form_.VScroll2.Left() - PageLeft - edge, height);
    head.FontSize = form_.PicTime.FontSize;
    head.Cls();
    if (analysis)
        DrawFactorHead(app_.race, app_.settings.UseEnglish, DataPageTop + 2, head);
    else
        DrawHead(kind, part.Top - DataPageTop, head);
    head.Line(0, height - 1, head.Width(), height - 1, DataTitleColour);
    head.SetVisible(part.Stays(form_.VScroll2.Value()));
}

StatKind LegTables::ChosenKind() const {
    if (form_.Option1.Value()) return StatKind::Time;
    if (form_.Option4.Value()) return StatKind::Distance;
    if (form_.Option5.Value()) return StatKind::Speed;
    return StatKind::Analysis;
}

void LegTables::DrawTables(const LegStatistics& statistics) {
    for (int boat = 1; boat <= app_.race.Boats.Count(); ++boat) DrawBoatRow(boat);
    DrawHead(statistics.Kind, 0, form_.PicTime);
    DrawCumulativeTable(statistics);
    DrawLegTable(statistics);
}

void LegTables::DrawBoatRow(int boat) {
    Surface& page = form_.PicTime;
    const double y = DataRowTop(boat);
    const double width = StatColWidth(app_.race);
    const int entries = app_.race.CourseOrder.Count();
    page.FilledBox(8, y - 1, 100, y + 15, BoatColour(boat));
    PrintColoured(page, White, 10, y, app_.race.Boats[boat].BoatName);
    if (!form_.InFocus(boat)) return;
    page.FilledBox(width + 73, y - 1, entries * width + StatNumberIndent, y + 12, DataFocusColour);
    const double legs = LegTableLeft(app_.race);
    page.FilledBox(legs, y - 1, legs + std::max(entries - 1, 0) * width, y + 12, DataFocusColour);
}

void LegTables::DrawCumulativeTable(const LegStatistics& statistics) {
    for (int entry = 1; entry <= app_.race.CourseOrder.Count(); ++entry)
        DrawColumn(statistics.Cumulative, statistics.Kind, {entry, entry},
                   entry * StatColWidth(app_.race) + StatNumberIndent);
}

void LegTables::DrawLegTable(const LegStatistics& statistics) {
    for (int entry = 2; entry <= app_.race.CourseOrder.Count(); ++entry)
        DrawColumn(statistics.ByLeg, statistics.Kind, {entry - 1, entry},
                   LegTableLeft(app_.race) + (entry - 2) * StatColWidth(app_.race) + LegNumberIndent);
}

/// Titles and column heads of both tables, so many pixels further up than they stand on the page.
void LegTables::DrawHead(StatKind kind, double up, Surface& page) {
    const bool english = app_.settings.UseEnglish;
    const int title = static_cast<int>(kind) - 1;
    const double left = LegTableLeft(app_.race);
    const double width = StatColWidth(app_.race);
    const double y = DataHeaderTop - up;
    PrintColoured(page, DataTitleColour, 120, TitleTop - up, CumulativeTitles[title].In(english));
    PrintColoured(page, DataTitleColour, left + 20, TitleTop - up, LegTitles[title].In(english));
    page.PrintAt(15, y, BoatColumnTitle.In(english));
    for (int entry = 1; entry <= app_.race.CourseOrder.Count(); ++entry) {
        const std::string key(Trim(app_.race.CourseOrder[entry]));
        PrintRight(page, entry * width + StatNumberIndent, y, key);
        if (entry > 1) page.PrintAt(left + (entry - 2) * width, y, ">" + key);
    }
}

/// Numbers that follow from a time set by hand are slanted.
void LegTables::DrawColumn(const LegTable& table, StatKind kind, const Part& part, double right) {
    Surface& page = form_.PicTime;
    for (int boat = 1; boat <= app_.race.Boats.Count(); ++boat) {
        const std::optional<double>& value = table.Value[boat][part.To];
        page.FontItalic = IsByHand(app_.passes, boat, part.From) || IsByHand(app_.passes, boat, part.To);
        page.ForeColor = IsBest(table, kind, boat, part.To) ? DataTitleColour : Black;
        PrintRight(page, right, DataRowTop(boat), value ? SurfaceNumberText(*value) : "-");
    }
    page.FontItalic = false;
    page.ForeColor = Black;
}

}  // namespace keelview
