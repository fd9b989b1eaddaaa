#include "instruments/leg_tables.h"

#include <algorithm>

#include "base/numbers.h"
#include "instruments/factor_page.h"
#include "instruments/page_text.h"
#include "session/livery.h"

namespace keelview {

namespace {

constexpr double PageLeft = 5.0;
constexpr double TitleTop = 45.0;
constexpr double HeaderTop = 65.0;
constexpr double BarWidth = 15.0;

constexpr Text CumulativeTitles[] = {{"<Mk rnd time : sec>", "<マーク通過時間 : 秒>"},
                                     {"<Acc sailed dist : m>", "<累計帆走距離：ｍ>"},
                                     {"<Acc Speed : Kts>", "<帆走速度：　ノット>"}};
constexpr Text LegTitles[] = {{"< Time by leg : sec >", "<レグ毎の所要時間 : 秒 >"},
                              {"< Sailed dist by leg : m >", "<レグ毎の帆走距離 : ｍ >"},
                              {"< Speed by leg : Kts >", "<レグ毎の帆走速度：ノット>"}};
constexpr Text CumulativeClockTitle{"<Mk rnd time : h:mm:ss>", "<マーク通過時間 : 時:分:秒>"};
constexpr Text LegClockTitle{"< Time by leg : h:mm:ss >", "<レグ毎の所要時間 : 時:分:秒 >"};

}  // namespace

void LegTables::Repaint(Changed changed) {
    const Changed mine =
        Changed::Race | Changed::Boats | Changed::Course | Changed::Size | Changed::Focus | Changed::Mode;
    if (app_.shown.ViewMode != ViewKind::Data || !Any(changed, mine)) return;
    WorkOut();
    PlacePage();
    lines_.clear();
    if (!Analyses()) lines_ = DrawLegCharts(app_.race, app_.passes, app_.settings, statistics_.Kind, form_);
    ScrollPage(changed == Changed::Focus);
    Draw();
}

void LegTables::SwitchClock() {
    asClock_ = !asClock_;
    WorkOut();
    PlacePage();
    Draw();
}

StatKind LegTables::ChosenKind() const {
    if (form_.Option1.Value()) return StatKind::Time;
    if (form_.Option4.Value()) return StatKind::Distance;
    if (form_.Option5.Value()) return StatKind::Speed;
    return StatKind::Analysis;
}

std::string_view LegTables::Title(bool byLeg) const {
    const bool english = app_.settings.UseEnglish;
    if (statistics_.Kind == StatKind::Time && asClock_)
        return (byLeg ? LegClockTitle : CumulativeClockTitle).In(english);
    return (byLeg ? LegTitles : CumulativeTitles)[static_cast<int>(statistics_.Kind) - 1].In(english);
}

void LegTables::WorkOut() {
    Surface& page = form_.PicTime;
    page.FontSize = 9 * app_.settings.FontScale;
    statistics_ = ComputeLegStatistics(app_.race, app_.passes, ChosenKind());
    factors_ = Analyses() ? AnalyseFactors(app_.race, app_.passes) : std::nullopt;
    if (!Analyses())
        layout_ = TableLayout(app_.race, statistics_, asClock_, page.TextWidth(Title(false)),
                              [&page](std::string_view text) { return page.TextWidth(text); });
}

double LegTables::HeadBottom() const {
    return Analyses() ? FactorHeadBottom : DataHeadBottom;
}

double LegTables::RowPitch() const {
    return Analyses() ? FactorRowPitch : DataRowPitch;
}

double LegTables::RowTop(int boat) const {
    return HeadBottom() + (boat - 1) * RowPitch() - form_.VScroll2.Value();
}

double LegTables::ChartTop() const {
    return RowTop(app_.race.Boats.Count() + 1) + 2;
}

/// The place, its bars and options for what the page holds now.
void LegTables::PlacePage() {
    const double side = form_.MapSide();
    const double rows = app_.race.Boats.Count() * RowPitch();
    const double height = HeadBottom() + rows + (Analyses() ? 5 : LegChartsHeight);
    const bool down = height > side - BarWidth;
    const double seenWidth = side - (down ? BarWidth : 0);
    const double width = Analyses() ? FactorPageWidth(app_.race, seenWidth) : layout_.Width();
    const bool across = width > seenWidth;
    form_.PicTime.Move(PageLeft, DataPageTop, side, side);
    form_.VScroll2.Move(PageLeft + seenWidth, DataPageTop, BarWidth, side - (across ? BarWidth : 0));
    form_.VScroll2.SetView(down ? FloorToInt(height - side + BarWidth) : 0, FloorToInt(RowPitch()),
                           FloorToInt(side - HeadBottom()));
    form_.VScroll2.SetVisible(down);
    form_.HScroll3.Move(PageLeft, DataPageTop + side - BarWidth, seenWidth, BarWidth);
    form_.HScroll3.SetView(across ? FloorToInt(width - seenWidth) + 1 : 0, FloorToInt(RowPitch()),
                           FloorToInt(seenWidth / 2));
    form_.HScroll3.SetVisible(across);
    constexpr double frameWidth = 276.0;
    form_.Frame2.Move(seenWidth - frameWidth - 5, 3, frameWidth, 29);
    form_.Option1.Move(8, 8, 49, 17);
    form_.Option4.Move(64, 8, 49, 17);
    form_.Option5.Move(112, 8, 49, 17);
    form_.Option12.Move(160, 8, 49, 17);
    form_.Command11.Move(224, 8, 49, 17);
}

PageView LegTables::View() const {
    const double side = form_.MapSide();
    return {.X = static_cast<double>(form_.HScroll3.Value()),
            .Y = static_cast<double>(form_.VScroll2.Value()),
            .Width = side - (form_.VScroll2.Max() > 0 ? BarWidth : 0),
            .Height = side};
}

void LegTables::ScrollPage(bool onlyFocus) {
    if (!onlyFocus) {
        form_.VScroll2.SetValue(0);
        form_.HScroll3.SetValue(0);
        return;
    }
    std::optional<int> first;
    for (int boat = 1; boat <= app_.race.Boats.Count(); ++boat) {
        if (!form_.InFocus(boat)) continue;
        if (RowTop(boat) >= HeadBottom() && RowTop(boat) <= form_.MapSide() - 2 * RowPitch()) return;
        if (!first) first = boat;
    }
    if (first) form_.VScroll2.SetValue(FloorToInt((*first - 1) * RowPitch() - form_.MapSide() / 2));
}

void LegTables::Draw() {
    form_.PicTime.Cls();
    if (Analyses())
        DrawFactorAnalysis(app_.race, factors_, app_.settings.UseEnglish, View(), form_);
    else
        DrawTables();
}

/// What stands still is drawn over what has been scrolled below it.
void LegTables::DrawTables() {
    for (const TableLayout::Column& column : layout_.Columns()) DrawColumn(column);
    DrawNames();
    form_.PicTime.PaintPicture(form_.Picture3.Image(), 0, ChartTop());
    DrawHead();
}

/// Numbers that follow from a time set by hand are slanted.
void LegTables::DrawColumn(const TableLayout::Column& column) {
    Surface& page = form_.PicTime;
    const LegTable& table = column.ByLeg ? statistics_.ByLeg : statistics_.Cumulative;
    const StatKind kind = statistics_.Kind;
    const int from = column.ByLeg ? column.Entry - 1 : column.Entry;
    const double right = column.Right - form_.HScroll3.Value();
    if (right < layout_.NamesRight() || right - column.Width > form_.MapSide()) return;
    for (int boat = 1; boat <= app_.race.Boats.Count(); ++boat) {
        const double y = RowTop(boat);
        if (y < HeadBottom() - DataRowPitch || y > form_.MapSide()) continue;
        if (form_.InFocus(boat))
            page.FilledBox(right - column.Width + 3, y - 1, right + 2, y + 12, DataFocusColour);
        // Up to the first entry, the start, there is no way that a speed could be that of.
        if (kind == StatKind::Speed && !column.ByLeg && column.Entry == 1) continue;
        const std::optional<double>& value = table.Value[boat][column.Entry];
        page.FontItalic = IsByHand(app_.passes, boat, from) || IsByHand(app_.passes, boat, column.Entry);
        page.ForeColor = IsBest(table, kind, boat, column.Entry) ? DataTitleColour : Black;
        std::string text = value ? StatText(kind, asClock_, *value) : "-";
        if (kind == StatKind::Time && !column.ByLeg) text += GateMarkText(app_.passes, boat, column.Entry);
        PrintRight(page, right, y, text);
    }
    page.FontItalic = false;
    page.ForeColor = Black;
}

void LegTables::DrawNames() {
    Surface& page = form_.PicTime;
    page.FilledBox(0, HeadBottom(), layout_.NamesRight() + 1, form_.MapSide(), page.BackColor);
    for (int boat = 1; boat <= app_.race.Boats.Count(); ++boat) {
        const double y = RowTop(boat);
        if (y < HeadBottom() - DataRowPitch || y > form_.MapSide()) continue;
        DrawNameField(page, boat, {DataNamesLeft, y - 1}, {layout_.NamesRight(), y + 15},
                      app_.race.Boats[boat].BoatName);
    }
}

void LegTables::DrawHead() {
    Surface& page = form_.PicTime;
    const double scrolled = form_.HScroll3.Value();
    page.FilledBox(0, 0, form_.MapSide(), HeadBottom() - 2, page.BackColor);
    PrintColoured(page, DataTitleColour, layout_.NamesRight() + 10 - scrolled, TitleTop, Title(false));
    PrintColoured(page, DataTitleColour, layout_.LegTablesLeft() - scrolled, TitleTop, Title(true));
    for (const TableLayout::Column& column : layout_.Columns())
        PrintRight(page, column.Right - scrolled, HeaderTop, ColumnHead(app_.race, column));
    page.FilledBox(0, 0, layout_.NamesRight(), HeadBottom() - 2, page.BackColor);
    page.PrintAt(15, HeaderTop, BoatColumnTitle.In(app_.settings.UseEnglish));
    if (form_.VScroll2.Value() > 0)
        page.Line(0, HeadBottom() - 2, form_.MapSide(), HeadBottom() - 2, DataTitleColour);
}

std::optional<StatCell> LegTables::CellAt(const Point& at) const {
    if (Analyses() || at.X <= layout_.NamesRight() || at.Y < HeadBottom()) return {};
    const int boat = FloorToInt((at.Y - RowTop(1)) / DataRowPitch) + 1;
    const TableLayout::Column* column = layout_.ColumnAt(at.X + form_.HScroll3.Value());
    if (!column || !app_.race.Boats.Holds(boat)) return {};
    return StatCell{boat, column->Entry};
}

bool LegTables::InHead(const Point& at) const {
    return statistics_.Kind == StatKind::Time && at.Y >= TitleTop && at.Y < HeadBottom();
}

std::string LegTables::TextUnder(const Point& at) const {
    if (at.Y < HeadBottom()) return {};
    if (Analyses()) return FactorText(app_.race, factors_, app_.settings.UseEnglish, View(), at);
    const int boat = LineUnder(lines_, {at.X, at.Y - ChartTop()});
    return boat > 0 ? app_.race.Boats[boat].BoatName : "";
}

}  // namespace keelview
