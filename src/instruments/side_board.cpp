#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "display/colour.h"
#include "instruments/page_text.h"
#include "instruments/side_tabs.h"
#include "instruments/table_layout.h"
#include "session/livery.h"

namespace keelview {

namespace {

constexpr double CurvesHeight = 230.0;
constexpr double CurveReach = 8.0;  // pixels from a curve to a click that means it
constexpr Colour PaleCurve = Rgb(215, 215, 215);
constexpr Colour GridGrey = Rgb(228, 228, 228);

/// The leg that a boat is on at a moment: 0 before the first entry, Count() behind the last.
int LegAt(const CoachAnswers& answers, int boat, double t) {
    int passed = 0;
    for (int entry = 1; entry <= answers.Race.CourseOrder.Count(); ++entry)
        if (const auto time = PassTime(answers.Passes, boat, entry); time && *time <= t) passed = entry;
    return passed;
}

std::optional<MadeGoodNow> MadeGoodNowOf(const CoachAnswers& answers, int boat, double t) {
    const int leg = std::max(1, LegAt(answers, boat, t));
    if (!answers.Legs.Holds(leg)) return {};
    return MadeGoodAt(answers.Motion.Boats[boat], answers.Legs[leg], answers.Wind, t);
}

SideTable OrderTable(const SideView& view, double t) {
    SideTable table{
        .Title = view.Say({"Order at ", "順位 "}) + RaceClockText(t), .Columns = {}, .Rows = {}};
    table.Columns = {{"", "000", false},
                     {view.Say({"Boat", "艇"}), "", true},
                     {view.Say({"Gap", "差"}), "-0:00:00", false},
                     {"m", view.Tell(10000, 1, 0), false},
                     {"VMG", view.Tell(-10, 0.1, 1), false}};
    table.NameColumn = 1;
    if (view.Wide) {
        table.Columns.push_back({"VMC", "-00.0", false});
        table.Columns.push_back({view.Say({"kn", "ノット"}), "00.0", false});
        table.Columns.push_back({view.Say({"to go", "残りm"}), "00000", false});
        if (view.Chosen > 0)
            table.Columns.push_back({view.Say({"to chosen", "選択艇と"}), "-0:00:00", false});
    }
    int rank = 0;
    for (const RankedBoat& place : view.Answers.Progress.OrderAt(t)) {
        const auto made = MadeGoodNowOf(view.Answers, place.Boat, t);
        const auto of = [&made](auto member) {
            return made ? std::optional<double>((*made).*member) : std::nullopt;
        };
        SideTable::Row row{.To = {.Boat = place.Boat, .Time = {}}, .Cells = {}};
        row.Cells = {std::to_string(++rank), view.NameOf(place.Boat),
                     place.GapSeconds ? RaceClockText(*place.GapSeconds) : "",
                     view.Tell(place.GapMetres, place.GapMetresSigma, 0),
                     made ? view.Tell(made->Vmg, made->Sigma, 1) : ""};
        if (view.Wide) {
            row.Cells.push_back(Fixed(of(&MadeGoodNow::Vmc), 1));
            row.Cells.push_back(Fixed(of(&MadeGoodNow::Speed), 1));
            row.Cells.push_back(Fixed(place.ToGo, 0));
            if (view.Chosen > 0) {
                const auto gap = view.Answers.Progress.GapSeconds(place.Boat, view.Chosen, t);
                row.Cells.push_back(gap ? RaceClockText(*gap) : "");
            }
        }
        table.Rows.push_back(std::move(row));
    }
    return table;
}

/// The largest gap that the picture shows: that of a boat far behind would press all others together.
double LargestGap(const GapCurves& gaps) {
    std::vector<double> largest;
    for (const auto& curve : gaps) {
        double most = 0.0;
        for (const GapPoint& point : curve) most = std::max(most, point.Seconds);
        if (!curve.empty()) largest.push_back(most);
    }
    if (largest.empty()) return 1.0;
    std::ranges::sort(largest);
    return std::max(1.0, largest[(largest.size() - 1) * 9 / 10] * 1.1);
}

/// Seconds between two lines of the grid, so that there are few of them.
double GridStep(double largest) {
    for (const double step : {10.0, 30.0, 60.0, 120.0, 300.0, 600.0, 1800.0})
        if (largest / step <= 8) return step;
    return 3600.0 * std::ceil(largest / 3600.0 / 8);
}

void DrawCurves(Canvas& page, const SideView& view, const Bounds& place) {
    const GapCurves& gaps = view.Answers.Gaps;
    const double largest = LargestGap(gaps);
    const SideAxes axes = TimeAxes(view, place, 0.0, largest);
    DrawEntryTimes(page, view, place);
    for (double gap = GridStep(largest); gap < largest; gap += GridStep(largest)) {
        const Point left = axes.At(0.0, gap);
        page.Line(left.X, left.Y, place.High.X, left.Y, GridGrey);
        page.PrintAt(left.X + 1, left.Y - 12, RaceClockText(gap));
    }
    std::vector<std::vector<Point>> ways(static_cast<std::size_t>(gaps.Count()));
    std::vector<ColouredLine> lines;
    for (const bool inFocus : {false, true})
        for (int boat = gaps.Count(); boat >= 1; --boat) {
            if (view.Focus.InFocus(boat) != inFocus) continue;
            std::vector<Point>& way = ways[static_cast<std::size_t>(boat - 1)];
            for (const GapPoint& point : gaps[boat])
                way.push_back(axes.At(point.Time, std::min(point.Seconds, largest)));
            lines.push_back(
                {.Points = way, .Ink = inFocus ? ReadableOn(White, BoatColour(boat)) : PaleCurve});
        }
    page.DrawWidth = 1;
    page.Lines(lines);
    page.Box(place.Low.X, place.Low.Y, place.High.X, place.High.Y, Black);
}

/// The boat whose curve lies nearest to a point, in focus; and the moment there.
SideTarget CurveUnder(const SideView& view, const Point& at, const Bounds& place) {
    const double largest = LargestGap(view.Answers.Gaps);
    const SideAxes axes = TimeAxes(view, place, 0.0, largest);
    SideTarget target{.Boat = 0, .Time = std::max(0.0, std::round(axes.XUnder(at.X)))};
    double nearest = CurveReach;
    for (int boat = 1; boat <= view.Answers.Gaps.Count(); ++boat) {
        if (!view.Focus.InFocus(boat)) continue;
        for (const GapPoint& point : view.Answers.Gaps[boat]) {
            const Point on = axes.At(point.Time, std::min(point.Seconds, largest));
            const double away = std::hypot(on.X - at.X, on.Y - at.Y);
            if (away < nearest) {
                nearest = away;
                target.Boat = boat;
            }
        }
    }
    return target;
}

/// What every boat made of the leg that the leader is on, or that was sailed last.
SideTable MadeGoodTable(const SideView& view, double t) {
    const CoachAnswers& answers = view.Answers;
    const auto leader = answers.Progress.LeaderAt(t);
    const int leg =
        std::clamp(leader ? LegAt(answers, *leader, t) : 1, 1, std::max(1, answers.Legs.Count()));
    SideTable table;
    if (!answers.Legs.Holds(leg)) return table;
    table.Title = view.Say({"Made good: ", "区間の成果: "}) + answers.Race.CourseOrder[leg] + " > " +
                  answers.Race.CourseOrder[leg + 1];
    table.Columns = {{view.Say({"Boat", "艇"}), "", true},
                     {"VMG", view.Wide ? WithSigma(-1, 0.1, 2) : "-00.0", false},
                     {"VMC", view.Wide ? "-0.00" : "-00.0", false},
                     {"VMG/v", "000%", false},
                     {view.Say({"port", "ポート"}), "000%", false}};
    if (view.Wide) {
        table.Columns.push_back({view.Say({"kn", "ノット"}), "00.0", false});
        table.Columns.push_back({view.Say({"sailed m", "航走m"}), WithSigma(10000, 10, 0), false});
        table.Columns.push_back({view.Say({"straight", "直線m"}), "00000", false});
        table.Columns.push_back({view.Say({"overstood m", "行き過ぎm"}), WithSigma(-100, 1, 0), false});
    }
    table.NameColumn = 0;
    const auto percent = [](const std::optional<double>& share) {
        return share ? Fixed(*share * 100, 0) + "%" : std::string();
    };
    for (int boat = 1; boat <= view.Boats(); ++boat) {
        const auto& made = answers.MadeGood[boat][leg];
        SideTable::Row row{.To = {.Boat = boat, .Time = {}}, .Cells = {view.NameOf(boat)}};
        if (made) {
            const int decimals = view.Wide ? 2 : 1;
            row.Cells.insert(row.Cells.end(),
                             {view.Tell(made->Vmg, made->Sigma, decimals), Fixed(made->Vmc, decimals),
                              percent(made->Efficiency), percent(made->PortShare)});
            if (view.Wide)
                row.Cells.insert(
                    row.Cells.end(),
                    {Fixed(made->Speed, 2), WithSigma(made->Sailed, made->SailedSigma, 0),
                     Fixed(made->Straight, 0), WithSigma(made->Overstood, made->OverstoodSigma, 0)});
        }
        table.Rows.push_back(std::move(row));
    }
    return table;
}

}  // namespace

SidePicture GapPicture(const SideView& view) {
    return {
        .Title = view.Say({"Gaps over the race", "先頭との差の推移"}),
        .Height = CurvesHeight,
        .Draw = [view](Canvas& page, const Bounds& place) { DrawCurves(page, view, place); },
        .TargetAt = [view](const Point& at, const Bounds& place) { return CurveUnder(view, at, place); }};
}

// Numbers of whole seconds: in a frame between two of them nothing is drawn.
SideBlocks BoardTab(const SideView& view) {
    const double t = std::max(0.0, std::floor(view.Time));
    SideBlocks blocks;
    blocks.emplace_back(OrderTable(view, t));
    blocks.emplace_back(GapPicture(view));
    if (SideTable legs = MadeGoodTable(view, t); !legs.Columns.empty())
        blocks.emplace_back(std::move(legs));
    return blocks;
}

}  // namespace keelview
