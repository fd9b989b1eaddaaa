#include <algorithm>
#include <cmath>
#include <ranges>
#include <vector>

#include "analysis/wind_at.h"
#include "base/angles.h"
#include "instruments/page_text.h"
#include "instruments/side_tabs.h"
#include "instruments/table_layout.h"

namespace keelview {

namespace {

constexpr double PictureHeight = 260.0;
constexpr double NarrowestRange = 20.0;  // degrees
constexpr double MeasuredEvery = 10.0;   // seconds
constexpr Colour BandColour = Rgb(205, 225, 255);
constexpr Colour EstimateColour = Rgb(0, 60, 200);
constexpr Colour MeasuredColour = Rgb(200, 0, 0);
constexpr Colour SightColour = Rgb(120, 120, 120);
constexpr Colour GridGrey = Rgb(228, 228, 228);

/// Directions as turns from the middle of them all, so that north divides nothing.
struct DirectionRange {
    double Middle = 0.0;
    double Left = 0.0, Right = 0.0;  // degrees from the middle

    double From(double direction) const { return TurnBetween(Middle, direction); }
};

bool IsMeasured(const SideView& view) {
    return view.Answers.Wind.Knowledge() == WindKnowledge::Measured;
}

DirectionRange RangeOf(const SideView& view) {
    DirectionRange range;
    const WindEstimate& estimate = view.Answers.Wind.Estimate();
    if (!estimate.Samples.empty())
        range.Middle = estimate.Samples[estimate.Samples.size() / 2].Direction;
    else
        range.Middle = view.Answers.Wind.From(view.Answers.Race.RaceDuration / 2.0).value_or(0.0);
    const auto cover = [&range](double direction, double sigma) {
        range.Left = std::min(range.Left, range.From(direction) - sigma);
        range.Right = std::max(range.Right, range.From(direction) + sigma);
    };
    for (const WindEstimateSample& sample : estimate.Samples) cover(sample.Direction, sample.Sigma);
    if (IsMeasured(view))
        for (double t = 0; t <= view.Answers.Race.RaceDuration; t += MeasuredEvery)
            if (const auto from = view.Answers.Wind.From(t)) cover(*from, 0.0);
    const double missing = std::max(0.0, NarrowestRange - (range.Right - range.Left)) / 2 + 2;
    range.Left -= missing;
    range.Right += missing;
    return range;
}

void DrawBand(Canvas& page, const WindEstimate& estimate, const DirectionRange& range,
              const SideAxes& axes) {
    std::vector<Point> band, middle;
    for (const WindEstimateSample& sample : estimate.Samples) {
        band.push_back(axes.At(sample.Time, range.From(sample.Direction) - sample.Sigma));
        middle.push_back(axes.At(sample.Time, range.From(sample.Direction)));
    }
    for (const WindEstimateSample& sample : std::views::reverse(estimate.Samples))
        band.push_back(axes.At(sample.Time, range.From(sample.Direction) + sample.Sigma));
    page.Fill = FillStyle::Solid;
    page.FillColor = BandColour;
    page.ForeColor = BandColour;
    page.Polygon(band);
    page.DrawWidth = 2;
    page.Polyline(middle, EstimateColour);
    page.DrawWidth = 1;
}

void DrawSights(Canvas& page, const WindEstimate& estimate, const DirectionRange& range,
                const SideAxes& axes) {
    for (const WindSight& sight : estimate.Sights) {
        const double turn = range.From(sight.Direction);
        if (turn < range.Left || turn > range.Right) continue;
        const Point at = axes.At(sight.Time, turn);
        page.Fill = sight.Gybe ? FillStyle::None : FillStyle::Solid;
        page.FillColor = SightColour;
        page.Circle(at.X, at.Y, 2.0, SightColour);
    }
}

void DrawWinds(Canvas& page, const SideView& view, const Bounds& place) {
    const DirectionRange range = RangeOf(view);
    const SideAxes axes = TimeAxes(view, place, range.Left, range.Right);
    DrawEntryTimes(page, view, place);
    const double first = std::ceil((range.Middle + range.Left) / 10) * 10;
    for (double direction = first; direction <= range.Middle + range.Right; direction += 10) {
        const Point at = axes.At(0.0, direction - range.Middle);
        page.Line(at.X, at.Y, place.High.X, at.Y, GridGrey);
        page.ForeColor = Black;
        page.PrintAt(at.X + 1, at.Y - 12, Fixed(std::fmod(direction + 360.0, 360.0), 0));
    }
    const WindEstimate& estimate = view.Answers.Wind.Estimate();
    if (!estimate.Samples.empty()) DrawBand(page, estimate, range, axes);
    DrawSights(page, estimate, range, axes);
    if (IsMeasured(view)) {
        std::vector<Point> measured;
        for (double t = 0; t <= view.Answers.Race.RaceDuration; t += MeasuredEvery)
            if (const auto from = view.Answers.Wind.From(t))
                measured.push_back(axes.At(t, range.From(*from)));
        page.Polyline(measured, MeasuredColour);
    }
    page.Box(place.Low.X, place.Low.Y, place.High.X, place.High.Y, Black);
}

std::string KnowledgeText(const SideView& view) {
    switch (view.Answers.Wind.Knowledge()) {
        case WindKnowledge::Measured:
            return view.Say(
                {"Red: the measured wind, which the tables use.", "赤: 実測風（表はこの風を使用）"});
        case WindKnowledge::Estimated:
            return view.Say(
                {"No wind is measured; the tables use the estimate.", "実測風なし。表は推定風を使用"});
        case WindKnowledge::Typed:
            return view.Say(
                {"No wind is measured, and too few turns tell it; the tables use the race's one "
                 "direction.",
                 "実測風がなく、ターンも少ないため、表はレースの風向を使用"});
        case WindKnowledge::None:
            break;
    }
    return view.Say({"No wind is known.", "風は不明です。"});
}

std::string EstimateText(const SideView& view) {
    const WindEstimate& estimate = view.Answers.Wind.Estimate();
    if (estimate.Samples.empty())
        return view.Say(
            {"The tracks do not tell the wind: too few tacks and gybes, or they do not tell which "
             "side is windward.",
             "航跡から風を推定できません（タック・ジャイブが少ないか、風上側が不明）。"});
    const auto gybes = std::ranges::count_if(estimate.Sights, &WindSight::Gybe);
    const auto tacks = static_cast<std::ptrdiff_t>(estimate.Sights.size()) - gybes;
    return view.Say({"Blue: the wind over the water from ", "青: 航跡からの推定風（"}) +
           std::to_string(tacks) + view.Say({" tacks (dots, scatter ", "タック ±"}) +
           Fixed(estimate.TackSigma, 1) + view.Say({"\xC2\xB0) and ", "\xC2\xB0、"}) +
           std::to_string(gybes) + view.Say({" gybes (rings, ", "ジャイブ ±"}) +
           Fixed(estimate.GybeSigma, 1) +
           view.Say({"\xC2\xB0), its band one sigma to either side.", "\xC2\xB0）、帯は±1σ"});
}

std::string CurrentText(const SideView& view) {
    const auto& current = view.Answers.Current;
    if (!current) return view.Say({"Current: too few turns tell it.", "潮流: ターンが少なく不明"});
    return view.Say({"Current across the wind: ", "風を横切る潮流: "}) +
           WithSigma(std::abs(current->Across), current->Sigma, 2) +
           view.Say({" kn towards ", "ノット → "}) +
           Fixed(std::fmod(current->Axis + (current->Across < 0 ? 180.0 : 0.0), 360.0), 0) + "\xC2\xB0" +
           view.Say({" (from ", "（ターン"}) + std::to_string(current->Turns) +
           view.Say({" turns)", "回）"});
}

std::string NowText(const SideView& view) {
    const double t = std::floor(view.Time);
    std::string text = RaceClockText(t) + ":";
    if (const WindEstimate& estimate = view.Answers.Wind.Estimate(); !estimate.Samples.empty())
        text += view.Say({"  estimated ", "  推定 "}) + Fixed(EstimatedWindAt(estimate, t), 0) + "\xC2\xB0";
    if (IsMeasured(view))
        text += view.Say({"  measured ", "  実測 "}) + Fixed(view.Answers.Wind.From(t), 0) + "\xC2\xB0";
    return text;
}

}  // namespace

SideBlocks WindTab(const SideView& view) {
    SideBlocks blocks;
    blocks.emplace_back(SidePicture{
        .Title = view.Say({"Wind, degrees true", "風向（真方位）"}),
        .Height = PictureHeight,
        .Draw = [view](Canvas& page, const Bounds& place) { DrawWinds(page, view, place); },
        .TargetAt =
            [view](const Point& at, const Bounds& place) {
                return SideTarget{.Boat = 0,
                                  .Time = std::round(TimeAxes(view, place, 0.0, 1.0).XUnder(at.X))};
            }});
    SideTable now{.Title = {}, .Columns = {{"", std::string(45, '0'), true}}, .Rows = {}};
    now.Rows.push_back({.To = {}, .Cells = {NowText(view)}});
    blocks.emplace_back(std::move(now));
    for (const std::string& words : {EstimateText(view), KnowledgeText(view), CurrentText(view)})
        blocks.emplace_back(SideText{words});
    return blocks;
}

}  // namespace keelview
