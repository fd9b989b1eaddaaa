#include <algorithm>
#include <cmath>
#include <vector>

#include "base/angles.h"
#include "instruments/page_text.h"
#include "instruments/side_tabs.h"
#include "session/livery.h"

namespace keelview {

namespace {

constexpr double PictureHeight = 340.0;
constexpr Colour GridGrey = Rgb(222, 222, 222);
constexpr Colour MedianColour = Rgb(0, 60, 200);
constexpr Colour BestColour = Rgb(0, 130, 60);
constexpr Colour TargetColour = Rgb(200, 0, 0);

/// Angles off the wind from the top, at both sides alike; speeds from the middle of the left edge out.
struct PolarAxes {
    Point Middle;
    double Pixels = 1.0;  // of a knot

    Point At(double angle, double speed) const {
        return {Middle.X + speed * Pixels * std::sin(angle * DegToRad),
                Middle.Y - speed * Pixels * std::cos(angle * DegToRad)};
    }
};

double FastestOf(const PolarBand& band) {
    double fastest = 1.0;
    for (const PolarCell& cell : band.Fleet.Cells)
        fastest = std::max({fastest, cell.Median.value_or(0.0), cell.BestTenth.value_or(0.0)});
    return fastest * 1.1;
}

std::string BandText(const SideView& view, const PolarBand& band) {
    if (!band.From || !band.To) return view.Say({"wind speed not known", "風速不明"});
    return Fixed(band.From, 0) + "-" + Fixed(band.To, 0) + view.Say({" kn of wind", "ノットの風"});
}

/// Joined through neighbouring cells that have a value; a gap where one has none.
void DrawCurve(Canvas& page, const PolarCurve& curve, std::optional<double> PolarCell::*value,
               const PolarAxes& axes, Colour ink) {
    std::vector<Point> piece;
    const auto end = [&] {
        if (piece.size() == 1) page.Circle(piece[0].X, piece[0].Y, 1.5, ink);
        page.Polyline(piece, ink);
        piece.clear();
    };
    for (const PolarCell& cell : curve.Cells) {
        if (const auto& speed = cell.*value)
            piece.push_back(axes.At(cell.Angle, *speed));
        else
            end();
    }
    end();
}

void DrawTarget(Canvas& page, const std::optional<PolarPoint>& target, const PolarAxes& axes) {
    if (!target) return;
    const Point at = axes.At(target->Angle, target->Speed);
    page.Line(axes.Middle.X, axes.Middle.Y, at.X, at.Y, TargetColour);
    page.PrintAt(at.X + 3, at.Y - 6, Fixed(target->Angle, 0) + "\xC2\xB0");
}

void DrawPolar(Canvas& page, const SideView& view, const PolarBand& band, const Bounds& place) {
    const double fastest = FastestOf(band);
    const double high = place.High.Y - place.Low.Y;
    const PolarAxes axes{.Middle = {place.Low.X + 14, place.Low.Y + high / 2},
                         .Pixels = std::min(place.High.X - place.Low.X - 60, high / 2) / fastest};
    page.ForeColor = Black;
    const double step = fastest > 12 ? 4.0 : fastest > 6 ? 2.0 : 1.0;
    for (double knots = step; knots < fastest; knots += step) {
        std::vector<Point> ring;
        for (double angle = 0; angle <= 180; angle += 5) ring.push_back(axes.At(angle, knots));
        page.Polyline(ring, GridGrey);
        const Point label = axes.At(90, knots);
        page.PrintAt(label.X - 4, label.Y + 1, Fixed(knots, 0));
    }
    for (double angle = 0; angle <= 180; angle += 30) {
        const Point far = axes.At(angle, fastest);
        page.Line(axes.Middle.X, axes.Middle.Y, far.X, far.Y, GridGrey);
        if (angle > 0 && angle < 180) page.PrintAt(far.X + 2, far.Y - 6, Fixed(angle, 0));
    }
    DrawCurve(page, band.Fleet, &PolarCell::BestTenth, axes, BestColour);
    page.DrawWidth = 2;
    DrawCurve(page, band.Fleet, &PolarCell::Median, axes, MedianColour);
    if (view.Chosen > 0 && band.Boats.Holds(view.Chosen))
        DrawCurve(page, band.Boats[view.Chosen], &PolarCell::Median, axes,
                  ReadableOn(White, BoatColour(view.Chosen)));
    page.DrawWidth = 1;
    page.ForeColor = TargetColour;
    DrawTarget(page, band.Fleet.UpTarget, axes);
    DrawTarget(page, band.Fleet.DownTarget, axes);
    page.ForeColor = Black;
}

std::string PointText(const std::optional<PolarPoint>& point) {
    if (!point) return "-";
    return Fixed(point->Angle, 0) + "\xC2\xB0 " + Fixed(point->Speed, 1);
}

/// Angle and speed that each boat sails up and down the wind, and what it makes good.
SideTable SailedTable(const SideView& view, const PolarBand& band) {
    SideTable table{
        .Title = view.Say({"Sailed: angle, knots", "帆走角度・ノット"}), .Columns = {}, .Rows = {}};
    table.Columns = {{view.Say({"Boat", "艇"}), "", true},
                     {view.Say({"beating", "クローズ"}), "", false},
                     {"VMG", "", false},
                     {view.Say({"running", "ランニング"}), "", false},
                     {"VMG", "", false}};
    table.NameColumn = 0;
    const auto add = [&table](int boat, const std::string& name, const PolarCurve& curve, bool target) {
        const auto& up = target ? curve.UpTarget : curve.UpSailed;
        const auto& down = target ? curve.DownTarget : curve.DownSailed;
        const auto vmg = [](const std::optional<PolarPoint>& point) {
            return point ? Fixed(point->Vmg, 2) : std::string();
        };
        table.Rows.push_back({.To = {.Boat = boat, .Time = {}},
                              .Cells = {name, PointText(up), vmg(up), PointText(down), vmg(down)}});
    };
    add(0, view.Say({"Fleet's target", "艇団の目標"}), band.Fleet, true);
    add(0, view.Say({"Fleet", "艇団"}), band.Fleet, false);
    for (int boat = 1; boat <= band.Boats.Count(); ++boat)
        add(boat, view.NameOf(boat), band.Boats[boat], false);
    return table;
}

}  // namespace

SideBlocks PolarTab(const SideView& view) {
    SideBlocks blocks;
    const bool onWater = view.LessCurrent && view.Answers.WaterSpeeds;
    const Polar& speeds = onWater ? *view.Answers.WaterSpeeds : view.Answers.Speeds;
    const Text over =
        onWater ? Text{"Speed through the water, ", "対水速度 "} : Text{"Speed over ground, ", "対地速度 "};
    if (speeds.Bands.Empty())
        blocks.emplace_back(SideText{view.Say({"No wind is known, so speeds have no angle off it.",
                                               "風が不明のため、ポーラーはありません。"})});
    for (const PolarBand& band : speeds.Bands) {
        blocks.emplace_back(
            SidePicture{.Title = view.Say(over) + BandText(view, band),
                        .Height = PictureHeight,
                        .Draw = [view, &band](Canvas& page,
                                              const Bounds& place) { DrawPolar(page, view, band, place); },
                        .TargetAt = {}});
        blocks.emplace_back(
            SideText{view.Say({"Blue: the fleet's median. Green: its best tenth. Red: the "
                               "angles that make most good. The chosen boat in its colour.",
                               "青: 艇団の中央値　緑: 上位1割　赤: 最適角度　選択艇はその色"})});
        blocks.emplace_back(SailedTable(view, band));
    }
    return blocks;
}

}  // namespace keelview
