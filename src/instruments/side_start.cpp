#include <algorithm>
#include <cmath>
#include <vector>

#include "analysis/plane.h"
#include "base/angles.h"
#include "instruments/page_text.h"
#include "instruments/side_tabs.h"
#include "session/livery.h"

namespace keelview {

namespace {

constexpr double PictureHeight = 200.0;
constexpr double BoatPixels = 11.0;  // of a boat, from its stern to its bow
constexpr Colour Water = Rgb(232, 246, 250);
constexpr Colour GridGrey = Rgb(205, 222, 228);

SideText LineText(const SideView& view, const StartLine& line) {
    std::string words = view.Say({"Line ", "ライン "}) + Fixed(line.Length, 0) + " m, " +
                        Fixed(line.Bearing, 0) + "\xC2\xB0\n";
    if (!line.BiasDegrees || !line.FavouredEnd || !line.Advantage)
        return {words + view.Say({"No wind is known at the gun, so no end is favoured.",
                                  "号砲時の風が不明のため、有利な側は分かりません。"})};
    words += view.Say(*line.FavouredEnd == 1 ? Text{"End 1 favoured by ", "1側が有利 "}
                                             : Text{"End 2 favoured by ", "2側が有利 "}) +
             Fixed(std::abs(*line.BiasDegrees), 1) + "\xC2\xB0, " + Fixed(line.Advantage, 1) + " m";
    const double length =
        view.Answers.Race.BoatLength > 0 ? view.Answers.Race.BoatLength : StandardBoatLength;
    words += " (" + Fixed(*line.Advantage / length, 1) + view.Say({" boat lengths)", "艇身)"});
    return {words};
}

/// The line from left to right, and the course side above it.
struct LineFrame {
    Way Middle;
    Way Along;  // length 1, to the right as seen towards the course side
    Way Up;
    double Half = 0.0;  // metres
};

std::optional<LineFrame> FrameOf(const SideView& view) {
    const RaceControl& race = view.Answers.Race;
    if (!view.Answers.Start.Line || race.CourseOrder.Empty()) return {};
    const CourseKey key = ParseCourseKey(race.CourseOrder[1]);
    if (!key.IsLine || !race.Lines.Holds(key.Number)) return {};
    const Plane& water = view.Answers.Motion.Water;
    const Way one = water.To(race.Lines[key.Number].FirstEnd());
    const Way two = water.To(race.Lines[key.Number].SecondEnd());
    const Way along = (two - one) * (1.0 / std::max(1e-3, (two - one).Length()));
    LineFrame frame{.Middle = (one + two) * 0.5,
                    .Along = along,
                    .Up = {-along.North, along.East},
                    .Half = (two - one).Length() / 2};
    const bool turned = !view.Answers.Legs.Empty() && view.Answers.Legs[1].Axis.Along(frame.Up) < 0;
    if (turned) {
        frame.Along = frame.Along * -1.0;
        frame.Up = frame.Up * -1.0;
    }
    return frame;
}

/// A slim triangle whose tip leads.
void DrawSlim(Canvas& page, const Point& tip, double courseOnPage, double length, Colour fill) {
    const double sine = std::sin(courseOnPage * DegToRad), cosine = std::cos(courseOnPage * DegToRad);
    const auto corner = [&](double ahead, double right) {
        return Point{tip.X + ahead * sine + right * cosine, tip.Y - ahead * cosine + right * sine};
    };
    const Point corners[] = {corner(0, 0), corner(-length, length * 0.32), corner(-length, -length * 0.32)};
    page.Fill = FillStyle::Solid;
    page.FillColor = fill;
    page.Polygon(corners);
}

void DrawBoat(Canvas& page, const Point& bow, double courseOnPage, int boat) {
    page.ForeColor = Black;
    DrawSlim(page, bow, courseOnPage, BoatPixels, BoatColour(boat));
}

/// An arrow from where the wind comes, as seen on the page, about a place.
void DrawWind(Canvas& page, const Point& middle, double from) {
    const double east = std::sin(from * DegToRad), north = std::cos(from * DegToRad);
    const Point tip{middle.X - 14 * east, middle.Y + 14 * north};
    page.Line(middle.X + 14 * east, middle.Y - 14 * north, tip.X, tip.Y, Blue);
    page.ForeColor = Blue;
    DrawSlim(page, tip, from + 180, 8, Blue);
}

/// The bow stands where the boat's place is counted from.
void DrawFleet(Canvas& page, const SideView& view, const LineFrame& frame, const Bounds& place,
               double pixels) {
    const Point middle{(place.Low.X + place.High.X) / 2, place.Low.Y + PictureHeight * 0.4};
    for (const bool inFocus : {false, true})
        for (int boat = view.Boats(); boat >= 1; --boat) {
            if (view.Focus.InFocus(boat) != inFocus) continue;
            const auto motion = view.Answers.Motion.Boats[boat].At(0.0);
            if (!motion) continue;
            Way from = motion->At - frame.Middle;
            const double course = motion->Velocity.Bearing();
            from = from + Towards(course) * view.Answers.Race.BowAhead;
            const Point at{middle.X + from.Along(frame.Along) * pixels,
                           middle.Y - from.Along(frame.Up) * pixels};
            const bool inside = at.X > place.Low.X + BoatPixels && at.X < place.High.X - BoatPixels &&
                                at.Y > place.Low.Y + BoatPixels && at.Y < place.High.Y - BoatPixels;
            if (inside) DrawBoat(page, at, course - frame.Up.Bearing(), boat);
        }
}

void DrawStart(Canvas& page, const SideView& view, const Bounds& place) {
    page.FilledBox(place.Low.X, place.Low.Y, place.High.X, place.High.Y, Water);
    const auto frame = FrameOf(view);
    if (!frame) return;
    const double pixels = (place.High.X - place.Low.X) * 0.84 / std::max(1.0, 2 * frame->Half);
    const Point middle{(place.Low.X + place.High.X) / 2, place.Low.Y + PictureHeight * 0.4};
    for (const double metres : {-40.0, -20.0, 20.0, 40.0}) {
        const double y = middle.Y - metres * pixels;
        if (y > place.Low.Y && y < place.High.Y) page.Line(place.Low.X, y, place.High.X, y, GridGrey);
    }
    page.DrawWidth = 2;
    const double half = frame->Half * pixels;
    page.Line(middle.X - half, middle.Y, middle.X + half, middle.Y, Red);
    page.DrawWidth = 1;
    // Which end is which: the first one stands at the left unless the course side is on the other side.
    const auto& line = view.Answers.Start.Line;
    const bool firstLeft = line && frame->Along.Along(Towards(line->Bearing)) > 0;
    page.ForeColor = Red;
    page.PrintAt(middle.X - half - 9, middle.Y - 6, firstLeft ? "1" : "2");
    page.PrintAt(middle.X + half + 4, middle.Y - 6, firstLeft ? "2" : "1");
    if (const auto wind = view.Answers.Wind.From(0.0))
        DrawWind(page, {place.High.X - 22, place.Low.Y + 22}, *wind - frame->Up.Bearing());
    DrawFleet(page, view, *frame, place, pixels);
    page.ForeColor = Black;
}

std::string OverText(const SideView& view, const BoatStart& start) {
    if (!start.Over) return {};
    if (!*start.Over) return {};
    return start.Returned ? view.Say({"OCS, back ", "OCS 復帰 "}) + Fixed(start.Returned, 0) + " s" : "OCS";
}

SideTable StartsTable(const SideView& view) {
    SideTable table{.Title = view.Say({"Starts (m to the line at the gun, crossing in s)",
                                       "スタート（号砲時のラインまでm、通過秒）"}),
                    .Columns = {},
                    .Rows = {}};
    table.Columns = {{view.Say({"Boat", "艇"}), "", true},
                     {view.Say({"gun", "号砲"}), view.Tell(-100, 0.1, 1), false}};
    if (view.Wide)
        table.Columns.insert(table.Columns.end(), {{"-5 s", "-000", false}, {"-10 s", "-000", false}});
    table.Columns.insert(table.Columns.end(), {{view.Say({"cross", "通過"}), WithSigma(10, 0.1, 1), false},
                                               {view.Say({"place", "位置"}), "100%", false},
                                               {view.Say({"kn", "ノット"}), view.Tell(10, 0.1, 1), false}});
    if (view.Wide)
        table.Columns.insert(table.Columns.end(),
                             {{view.Say({"rank 0/30/60", "順位 0/30/60"}), "00/00/00", false}});
    table.Columns.push_back({"", "", true});
    table.NameColumn = 0;
    std::vector<int> order;
    for (int boat = 1; boat <= view.Answers.Start.Boats.Count(); ++boat) order.push_back(boat);
    std::ranges::stable_sort(
        order, {}, [&](int boat) { return view.Answers.Start.Boats[boat].Crossing.value_or(1e9); });
    const auto rank = [](const std::optional<int>& of) {
        return of ? std::to_string(*of) : std::string("-");
    };
    for (const int boat : order) {
        const BoatStart& start = view.Answers.Start.Boats[boat];
        SideTable::Row row{.To = {.Boat = boat, .Time = start.Crossing}, .Cells = {view.NameOf(boat)}};
        row.Cells.push_back(view.Tell(start.AtGun, start.DistanceSigma, 1));
        if (view.Wide)
            row.Cells.insert(row.Cells.end(), {Fixed(start.AtMinus5, 0), Fixed(start.AtMinus10, 0)});
        row.Cells.push_back(WithSigma(start.Crossing, start.CrossingSigma, 1));
        row.Cells.push_back(start.Place ? Fixed(*start.Place * 100, 0) + "%" : "");
        row.Cells.push_back(view.Tell(start.SpeedAtCrossing, start.SpeedAtCrossingSigma, 1));
        if (view.Wide)
            row.Cells.push_back(
                start.Rank ? rank(start.Rank) + "/" + rank(start.Rank30) + "/" + rank(start.Rank60) : "");
        row.Cells.push_back(OverText(view, start));
        table.Rows.push_back(std::move(row));
    }
    return table;
}

}  // namespace

SideBlocks StartTab(const SideView& view) {
    if (!view.Answers.Start.Line)
        return {
            SideText{view.Say({"The course does not begin with a line of the race, so there is no start "
                               "to tell of.",
                               "コースがラインで始まらないため、スタートの解析はありません。"})}};
    SideBlocks blocks;
    blocks.emplace_back(LineText(view, *view.Answers.Start.Line));
    blocks.emplace_back(SidePicture{
        .Title = view.Say({"At the gun (a line each 20 m)", "号砲時（20mごとの線）"}),
        .Height = PictureHeight,
        .Draw = [view](Canvas& page, const Bounds& place) { DrawStart(page, view, place); },
        .TargetAt = [](const Point&, const Bounds&) { return SideTarget{.Boat = 0, .Time = 0.0}; }});
    blocks.emplace_back(StartsTable(view));
    return blocks;
}

}  // namespace keelview
