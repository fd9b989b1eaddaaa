#include <algorithm>
#include <cmath>
#include <vector>

#include "base/angles.h"
#include "instruments/page_text.h"
#include "instruments/side_tabs.h"
#include "instruments/table_layout.h"
#include "session/livery.h"

namespace keelview {

namespace {

constexpr double OverlayHeight = 260.0;
constexpr double OverlayFrom = -15.0;  // seconds from the middle of a turn
constexpr double OverlayTo = 25.0;
constexpr Colour GridGrey = Rgb(225, 225, 225);

std::string KindText(const SideView& view, ManoeuvreKind kind) {
    switch (kind) {
        case ManoeuvreKind::Tack:
            return view.Say({"tack", "タック"});
        case ManoeuvreKind::Gybe:
            return view.Say({"gybe", "ジャイブ"});
        case ManoeuvreKind::Rounding:
            return view.Say({"rounding", "回航"});
        case ManoeuvreKind::FullTurn:
            return view.Say({"full turn", "回転"});
        case ManoeuvreKind::HeadUp:
            return view.Say({"head-up", "ラフ"});
        case ManoeuvreKind::BearAway:
            return view.Say({"bear-away", "ベア"});
    }
    return {};
}

std::string WhyText(const SideView& view, NoLoss why) {
    switch (why) {
        case NoLoss::OtherTurn:
            return view.Say({"other turn", "他の旋回"});
        case NoLoss::Shift:
            return view.Say({"wind shift", "風振れ"});
        case NoLoss::Track:
            return view.Say({"track gap", "航跡欠け"});
        default:
            return {};
    }
}

/// What one kind of turn costs a boat, metres.
struct Cost {
    int Number = 0;
    int Judged = 0;
    double Sum = 0.0, Best = 0.0, Worst = 0.0;
};

Cost CostOf(const std::vector<Manoeuvre>& turns, ManoeuvreKind kind) {
    Cost cost;
    for (const Manoeuvre& turn : turns) {
        if (turn.Kind != kind) continue;
        ++cost.Number;
        if (!turn.LossMetres) continue;
        cost.Best = cost.Judged == 0 ? *turn.LossMetres : std::min(cost.Best, *turn.LossMetres);
        cost.Worst = cost.Judged == 0 ? *turn.LossMetres : std::max(cost.Worst, *turn.LossMetres);
        cost.Sum += *turn.LossMetres;
        ++cost.Judged;
    }
    return cost;
}

SideTable CostTable(const SideView& view) {
    SideTable table{.Title = view.Say({"What tacks and gybes cost, m", "タックとジャイブの損失 m"}),
                    .Columns = {},
                    .Rows = {}};
    table.Columns = {{view.Say({"Boat", "艇"}), "", true}};
    for (const Text& kind : {Text{"tacks", "タック"}, Text{"gybes", "ジャイブ"}}) {
        table.Columns.push_back({view.Say(kind), "00", false});
        table.Columns.push_back({view.Say({"mean", "平均"}), "-00.0", false});
        if (view.Wide) {
            table.Columns.push_back({view.Say({"best", "最良"}), "-00.0", false});
            table.Columns.push_back({view.Say({"worst", "最悪"}), "-00.0", false});
        }
    }
    table.NameColumn = 0;
    for (int boat = 1; boat <= view.Boats(); ++boat) {
        SideTable::Row row{.To = {.Boat = boat, .Time = {}}, .Cells = {view.NameOf(boat)}};
        const std::vector<Manoeuvre> turns = RacedTurns(view.Answers, boat);
        for (const ManoeuvreKind kind : {ManoeuvreKind::Tack, ManoeuvreKind::Gybe}) {
            const Cost cost = CostOf(turns, kind);
            const auto told = [&cost](double metres) {
                return Fixed(cost.Judged > 0 ? std::optional(metres) : std::nullopt, 1);
            };
            row.Cells.push_back(std::to_string(cost.Number));
            row.Cells.push_back(told(cost.Sum / std::max(1, cost.Judged)));
            if (view.Wide) row.Cells.insert(row.Cells.end(), {told(cost.Best), told(cost.Worst)});
        }
        table.Rows.push_back(std::move(row));
    }
    return table;
}

SideTable TurnsTable(const SideView& view) {
    SideTable table{
        .Title = view.Say({"Turns of ", "ターン: "}) + view.NameOf(view.Chosen), .Columns = {}, .Rows = {}};
    table.Columns = {{view.Say({"time", "時刻"}), "", false}, {view.Say({"kind", "種類"}), "", true}};
    if (view.Wide)
        table.Columns.insert(table.Columns.end(), {{view.Say({"angles", "角度"}), "-000 > -000", false},
                                                   {view.Say({"s", "秒"}), "00", false}});
    table.Columns.insert(table.Columns.end(),
                         {{view.Say({"kn before/least/after", "速度 前/最低/後"}), "", false},
                          {view.Say({"lost m", "損失m"}), WithSigma(-10, 0.1, 1), false}});
    if (view.Wide) table.Columns.push_back({view.Say({"lost s", "損失秒"}), WithSigma(-10, 0.1, 1), false});
    table.Columns.push_back({view.Say({"shift", "風振れ"}), "-00\xC2\xB0", false});
    if (view.Wide) table.Columns.push_back({"", "", true});
    for (const Manoeuvre& turn : RacedTurns(view.Answers, view.Chosen)) {
        SideTable::Row row{.To = {.Boat = view.Chosen, .Time = turn.Time - 10}, .Cells = {}};
        row.Cells = {RaceClockText(turn.Time), KindText(view, turn.Kind)};
        if (view.Wide)
            row.Cells.insert(row.Cells.end(),
                             {Fixed(turn.From, 0) + " > " + Fixed(turn.To, 0), Fixed(turn.Duration, 0)});
        row.Cells.push_back(Fixed(turn.SpeedBefore, 1) + " / " + Fixed(turn.SpeedLeast, 1) + " / " +
                            Fixed(turn.SpeedAfter, 1));
        row.Cells.push_back(WithSigma(turn.LossMetres, turn.LossSigma, 1));
        if (view.Wide) row.Cells.push_back(WithSigma(turn.LossSeconds, turn.LossSecondsSigma, 1));
        row.Cells.push_back(Fixed(turn.Shift, 0) + "\xC2\xB0");
        if (view.Wide) row.Cells.push_back(WhyText(view, turn.Why));
        table.Rows.push_back(std::move(row));
    }
    return table;
}

/// The way of a boat about a turn on the page: the wind comes from the top, the turn's middle stands in the
/// middle, and all turns lead to the same side.
std::vector<Point> WayOf(const SideView& view, int boat, const Manoeuvre& turn, const Bounds& place) {
    std::vector<Point> way;
    const auto upwind = view.Answers.Wind.Upwind(turn.Time);
    const auto middle = view.Answers.Motion.Boats[boat].At(turn.Time);
    if (!upwind || !middle) return way;
    const double side = turn.To < 0 ? 1.0 : -1.0;
    constexpr double metres = 110.0;  // from the top of the picture to its foot
    const double pixels = (place.High.Y - place.Low.Y) / metres;
    for (double t = OverlayFrom; t <= OverlayTo; t += 1.0) {
        const auto motion = view.Answers.Motion.Boats[boat].At(turn.Time + t);
        if (!motion) continue;
        const Way from = motion->At - middle->At;
        way.push_back({(place.Low.X + place.High.X) / 2 + side * from.Across(*upwind) * pixels,
                       (place.Low.Y + place.High.Y) / 2 - from.Along(*upwind) * pixels});
    }
    return way;
}

void DrawOverlay(Canvas& page, const SideView& view, ManoeuvreKind kind, const Bounds& place) {
    page.Box(place.Low.X, place.Low.Y, place.High.X, place.High.Y, GridGrey);
    page.Line((place.Low.X + place.High.X) / 2, place.Low.Y, (place.Low.X + place.High.X) / 2, place.High.Y,
              GridGrey);
    const auto inside = [&place](const Point& at) {
        return at.X > place.Low.X && at.X < place.High.X && at.Y > place.Low.Y && at.Y < place.High.Y;
    };
    for (const int boat : {view.Beside, view.Chosen}) {
        if (boat == 0) continue;
        for (const Manoeuvre& turn : RacedTurns(view.Answers, boat)) {
            if (turn.Kind != kind) continue;
            std::vector<Point> way = WayOf(view, boat, turn, place);
            std::erase_if(way, [&inside](const Point& at) { return !inside(at); });
            DrawLiveryLine(page, boat, way, White);
        }
    }
}

}  // namespace

std::vector<Manoeuvre> RacedTurns(const CoachAnswers& answers, int boat) {
    std::vector<Manoeuvre> turns = answers.Manoeuvres[boat];
    const auto finish = FinishTime(answers.Passes, boat);
    std::erase_if(turns, [&finish](const Manoeuvre& turn) {
        return turn.Time < 0 || (finish && turn.Time > *finish);
    });
    return turns;
}

SideBlocks TurnsTab(const SideView& view) {
    SideBlocks blocks;
    if (view.Answers.Wind.Knowledge() == WindKnowledge::None) {
        blocks.emplace_back(SideText{view.Say({"No wind is known, so turns cannot be told apart.",
                                               "風が不明のため、ターンを分類できません。"})});
        return blocks;
    }
    blocks.emplace_back(CostTable(view));
    if (view.Chosen == 0) {
        blocks.emplace_back(
            SideText{view.Say({"Click a boat to see its turns one by one, and a second one to "
                               "lay both over each other.",
                               "艇をクリックすると各ターンを表示します。続けて別の艇を"
                               "クリックすると重ねて比較します。"})});
        return blocks;
    }
    const auto overlay = [&](const Text& title, ManoeuvreKind kind) {
        const std::string beside = view.Beside > 0 ? ", " + view.NameOf(view.Beside) : "";
        blocks.emplace_back(
            SidePicture{.Title = view.Say(title) + view.NameOf(view.Chosen) + beside,
                        .Height = OverlayHeight,
                        .Draw = [view, kind](Canvas& page,
                                             const Bounds& place) { DrawOverlay(page, view, kind, place); },
                        .TargetAt = {}});
    };
    blocks.emplace_back(TurnsTable(view));
    overlay({"Tacks, wind from the top, -15 to +25 s: ", "タック（風上が上、-15～+25秒）: "},
            ManoeuvreKind::Tack);
    overlay({"Gybes: ", "ジャイブ: "}, ManoeuvreKind::Gybe);
    return blocks;
}

}  // namespace keelview
