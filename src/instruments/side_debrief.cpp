#include <algorithm>
#include <cmath>
#include <vector>

#include "instruments/page_text.h"
#include "instruments/side_tabs.h"
#include "instruments/table_layout.h"

namespace keelview {

namespace {

constexpr double BarsRow = 15.0;

struct Part {
    Text Name;
    LostSeconds LegLoss::*Lost;
    Colour Ink;
};

constexpr Part Parts[] = {
    {{"start", "ｽﾀｰﾄ"}, &LegLoss::Start, Rgb(200, 80, 0)},
    {{"turns", "ﾀｰﾝ"}, &LegLoss::Turns, Rgb(0, 110, 200)},
    {{"speed", "速度"}, &LegLoss::Speed, Rgb(0, 140, 70)},
    {{"distance", "距離"}, &LegLoss::Distance, Rgb(150, 60, 170)},
    {{"rest", "他"}, &LegLoss::Rest, Rgb(130, 130, 130)},
};

std::string LegName(const SideView& view, int leg) {
    const auto& course = view.Answers.Race.CourseOrder;
    return course[leg] + " > " + course[leg + 1];
}

SideTable::Row PartsRow(const SideView& view, const std::string& name, const SideTarget& to,
                        const LegLoss& loss) {
    SideTable::Row row{.To = to, .Cells = {name, std::to_string(loss.Loss)}};
    for (const Part& part : Parts) {
        const LostSeconds& lost = loss.*part.Lost;
        row.Cells.push_back(loss.IsSplit ? view.Tell(lost.Seconds, lost.Sigma, 0) : Fixed(lost.Seconds, 0));
    }
    return row;
}

void SetColumns(const SideView& view, const Text& first, SideTable& table) {
    table.Columns = {{view.Say(first), "", true}, {view.Say({"lost s", "損失"}), "-0000", false}};
    for (const Part& part : Parts)
        table.Columns.push_back({view.Say(part.Name), view.Tell(-100, 10, 0), false});
}

/// What a boat lost on a leg; nullptr where it did not sail all of it.
const LegLoss* LossOf(const LegDebrief& leg, int boat) {
    if (!leg.Boats.Holds(boat)) return nullptr;
    const std::optional<LegLoss>& loss = leg.Boats[boat];
    return loss ? &*loss : nullptr;
}

/// The sum over the legs that the boat sailed.
std::optional<LegLoss> SumOf(const SideView& view, int boat) {
    LegLoss sum;
    bool sailed = false;
    for (const LegDebrief& leg : view.Answers.Losses) {
        const LegLoss* loss = LossOf(leg, boat);
        if (loss == nullptr) continue;
        sailed = true;
        sum.Loss += loss->Loss;
        sum.IsSplit = sum.IsSplit || loss->IsSplit;
        for (const Part& part : Parts) sum.*part.Lost = sum.*part.Lost + loss->*part.Lost;
    }
    return sailed ? std::optional(sum) : std::nullopt;
}

SideTable FleetTable(const SideView& view) {
    SideTable table{.Title = view.Say(
                        {"Lost to each leg's best boat, over all legs", "各レグ最速艇との差の合計（秒）"}),
                    .Columns = {},
                    .Rows = {}};
    SetColumns(view, {"Boat", "艇"}, table);
    table.NameColumn = 0;
    std::vector<std::pair<int, LegLoss>> boats;
    for (int boat = 1; boat <= view.Boats(); ++boat)
        if (const auto sum = SumOf(view, boat)) boats.emplace_back(boat, *sum);
    std::ranges::stable_sort(boats, {}, [](const auto& one) { return one.second.Loss; });
    for (const auto& [boat, sum] : boats)
        table.Rows.push_back(PartsRow(view, view.NameOf(boat), {.Boat = boat, .Time = {}}, sum));
    return table;
}

SideTable BoatTable(const SideView& view, int boat) {
    SideTable table{
        .Title = view.NameOf(boat) + view.Say({", leg by leg", "のレグ別"}), .Columns = {}, .Rows = {}};
    SetColumns(view, {"Leg", "レグ"}, table);
    table.Columns.push_back({view.Say({"best boat", "最速"}), "", true});
    for (int leg = 1; leg <= view.Answers.Losses.Count(); ++leg) {
        const LegDebrief& told = view.Answers.Losses[leg];
        const LegLoss* loss = LossOf(told, boat);
        if (loss == nullptr) continue;
        const auto begin = PassTime(view.Answers.Passes, boat, leg);
        SideTable::Row row =
            PartsRow(view, LegName(view, leg),
                     {.Boat = boat, .Time = static_cast<double>(leg == 1 ? 0 : begin.value_or(0))}, *loss);
        row.Cells.push_back(told.BestBoat > 0 ? view.NameOf(told.BestBoat) : "");
        table.Rows.push_back(std::move(row));
    }
    return table;
}

/// A bar for each leg: what was lost to the right of the middle, what was won to the left.
void DrawBars(Canvas& page, const SideView& view, int boat, const Bounds& place) {
    double most = 1.0;
    const Debrief& legs = view.Answers.Losses;
    const auto sums = [&](const LegLoss& loss) {
        std::pair<double, double> sides{0.0, 0.0};
        for (const Part& part : Parts) {
            const double seconds = (loss.*part.Lost).Seconds;
            (seconds < 0 ? sides.first : sides.second) += std::abs(seconds);
        }
        return sides;
    };
    for (const LegDebrief& leg : legs)
        if (const LegLoss* loss = LossOf(leg, boat)) {
            const auto [won, lost] = sums(*loss);
            most = std::max({most, won, lost});
        }
    constexpr double names = 70.0;
    const double middle = place.Low.X + names + (place.High.X - place.Low.X - names) * 0.35;
    const double pixels = std::min((place.High.X - middle) / most, (middle - place.Low.X - names) / most);
    double y = place.Low.Y;
    for (int leg = 1; leg <= legs.Count(); ++leg, y += BarsRow) {
        page.ForeColor = Black;
        page.PrintAt(place.Low.X, y, LegName(view, leg));
        const LegLoss* loss = LossOf(legs[leg], boat);
        if (loss == nullptr) continue;
        double left = middle, right = middle;
        for (const Part& part : Parts) {
            const double wide = (loss->*part.Lost).Seconds * pixels;
            const double from = wide < 0 ? left + wide : right;
            if (std::abs(wide) >= 1)
                page.FilledBox(from, y + 2, from + std::abs(wide) - 1, y + BarsRow - 3, part.Ink);
            (wide < 0 ? left : right) += wide;
        }
    }
    page.Line(middle, place.Low.Y, middle, y, Black);
    double x = place.Low.X;
    for (const Part& part : Parts) {
        page.FilledBox(x, y + 4, x + 8, y + 12, part.Ink);
        const std::string name = view.Say(part.Name);
        page.ForeColor = Black;
        page.PrintAt(x + 11, y + 2, name);
        x += 20 + page.TextWidth(name);
    }
}

}  // namespace

SideBlocks DebriefTab(const SideView& view) {
    SideBlocks blocks;
    const Debrief& legs = view.Answers.Losses;
    if (legs.Empty())
        return {SideText{view.Say({"The course has no legs, so there is nothing to compare.",
                                   "コースにレグがないため、比較できません。"})}};
    blocks.emplace_back(FleetTable(view));
    if (view.Chosen == 0) {
        blocks.emplace_back(SideText{
            view.Say({"Click a boat to see its legs.", "艇をクリックするとレグ別に表示します。"})});
        return blocks;
    }
    blocks.emplace_back(BoatTable(view, view.Chosen));
    blocks.emplace_back(SidePicture{
        .Title = view.Say({"Lost (right) and won (left), seconds", "損失（右）と利得（左）秒"}),
        .Height = BarsRow * (legs.Count() + 1) + 6,
        .Draw = [view](Canvas& page, const Bounds& place) { DrawBars(page, view, view.Chosen, place); },
        .TargetAt = {}});
    blocks.emplace_back(GapPicture(view));
    if (std::ranges::any_of(legs, [](const LegDebrief& leg) { return leg.BestBoat > 0 && !leg.ByPolar; }))
        blocks.emplace_back(
            SideText{view.Say({"Where no wind is known, speeds are held against each other as "
                               "they are.",
                               "風が不明のレグは、速度をそのまま比較しています。"})});
    return blocks;
}

}  // namespace keelview
