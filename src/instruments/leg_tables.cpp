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
    PlacePage();
    form_.PicTime.Cls();
    const StatKind kind = ChosenKind();
    if (kind == StatKind::Analysis) {
        DrawFactorAnalysis(app_.race, app_.passes, app_.settings.UseEnglish, form_);
        return;
    }
    const LegStatistics statistics = ComputeLegStatistics(app_.race, app_.passes, kind);
    DrawTables(statistics);
    DrawLegCharts(app_.race, app_.passes, app_.settings, statistics, form_);
}

void LegTables::PlacePage() {
    form_.PicTime.Move(PageLeft, DataPageTop, form_.MapSide(), StatPageHeight(app_.race, form_.MapSide()));
    constexpr double frameWidth = 276.0;
    form_.Frame2.Move(form_.MapSide() - frameWidth - 5, 3, frameWidth, 29);
    form_.Option1.Move(8, 8, 49, 17);
    form_.Option4.Move(64, 8, 49, 17);
    form_.Option5.Move(112, 8, 49, 17);
    form_.Option12.Move(160, 8, 49, 17);
    form_.Command11.Move(224, 8, 49, 17);
}

StatKind LegTables::ChosenKind() const {
    if (form_.Option1.Value()) return StatKind::Time;
    if (form_.Option4.Value()) return StatKind::Distance;
    if (form_.Option5.Value()) return StatKind::Speed;
    return StatKind::Analysis;
}

void LegTables::DrawTables(const LegStatistics& statistics) {
    for (int boat = 1; boat <= app_.race.Boats.Count(); ++boat) DrawBoatRow(boat);
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
    Surface& page = form_.PicTime;
    const bool english = app_.settings.UseEnglish;
    PrintColoured(page, DataTitleColour, 120, TitleTop,
                  CumulativeTitles[static_cast<int>(statistics.Kind) - 1].In(english));
    page.PrintAt(15, DataHeaderTop, BoatColumnTitle.In(english));
    for (int entry = 1; entry <= app_.race.CourseOrder.Count(); ++entry) {
        const double right = entry * StatColWidth(app_.race) + StatNumberIndent;
        PrintRight(page, right, DataHeaderTop, Trim(app_.race.CourseOrder[entry]));
        DrawColumn(statistics.Cumulative, statistics.Kind, {entry, entry}, right);
    }
}

void LegTables::DrawLegTable(const LegStatistics& statistics) {
    Surface& page = form_.PicTime;
    const double left = LegTableLeft(app_.race);
    PrintColoured(page, DataTitleColour, left + 20, TitleTop,
                  LegTitles[static_cast<int>(statistics.Kind) - 1].In(app_.settings.UseEnglish));
    for (int entry = 2; entry <= app_.race.CourseOrder.Count(); ++entry) {
        const double x = left + (entry - 2) * StatColWidth(app_.race);
        page.PrintAt(x, DataHeaderTop, ">" + std::string(Trim(app_.race.CourseOrder[entry])));
        DrawColumn(statistics.ByLeg, statistics.Kind, {entry - 1, entry}, x + LegNumberIndent);
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
