#include "import/track_chart.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPolygonF>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "base/angles.h"
#include "base/point.h"
#include "import/race_sketch.h"
#include "session/livery.h"

namespace keelview {

namespace {

constexpr double Margin = 8;        // pixels
constexpr double LeastMetres = 10;  // across the chart
constexpr double RoomAbout = 0.14;  // of the larger side of a course, at each side, where the beats go
constexpr double GripPixels = 10;
constexpr double ZoomOfNotch = 1.25;
constexpr double NotchAngle = 120;                         // of a wheel event
constexpr double LeastPerMetre = 1e-4, MostPerMetre = 20;  // pixels
constexpr double FinestStep = 1;  // pixels between the fixes that a track is drawn by
const QColor Sea(0, 255, 255);
const QColor Grey(160, 160, 160);

QColor ColourOf(int boat) {
    const ColourParts parts = PartsOf(BoatColour(boat));
    return {parts.Red, parts.Green, parts.Blue};
}

/// What a colour looks like from afar.
QColor Pale(const QColor& colour) {
    const auto mix = [](int ink, int sea) { return (ink + 3 * sea) / 4; };
    return {mix(colour.red(), Sea.red()), mix(colour.green(), Sea.green()), mix(colour.blue(), Sea.blue())};
}

}  // namespace

TrackChart::TrackChart(QWidget* parent) : QWidget(parent) {
    setObjectName("TrackChart");
    setMinimumSize(220, 180);
    setMouseTracking(true);
    setFocusPolicy(Qt::ClickFocus);
}

void TrackChart::ShowPlan(const RacePlan& plan, int chosen) {
    plan_ = &plan;
    chosen_ = chosen;
    if (!moved_ && shown_.Race == nullptr) Fit();
    tracks_ = {};
    update();
}

void TrackChart::ShowRace(const ChartedRace& race, bool fit) {
    const bool sameTracks = shown_.From == race.From && shown_.To == race.To;
    shown_ = race;
    if (fit) {
        held_.reset();  // it was of another race
        Fit();
    }
    if (!sameTracks) tracks_ = {};
    update();
}

void TrackChart::Use(Tool tool) {
    tool_ = tool;
    lineFrom_.reset();
    PointTo(pointer_);
    update();
}

/// In metres north and east of no place in particular.
Bounds TrackChart::BoxToFit() const {
    const double meridian = middle_.Lon;
    Bounds box;
    const auto add = [&](double lat, double lon) {
        box.Add(Point{LongitudeNear(lon, meridian) * scale_.MetresPerLonMinute,
                      lat * scale_.MetresPerLatMinute});
    };
    if (shown_.Race != nullptr) {
        for (const Position& mark : shown_.Race->Marks) add(mark.Lat, mark.Lon);
        for (const auto& [from, to] : shown_.Race->Lines) add(from.Lat, from.Lon), add(to.Lat, to.Lon);
        return box.Grown(RoomAbout * std::max(box.High.X - box.Low.X, box.High.Y - box.Low.Y));
    }
    const bool anyTaken = std::ranges::any_of(plan_->Boats, &PlannedBoat::Taken);
    for (const PlannedBoat& boat : plan_->Boats)
        for (const GpsFix& fix : boat.Track.Way)
            if (boat.Taken || !anyTaken) add(fix.Lat, fix.Lon);
    return box;
}

void TrackChart::Fit() {
    moved_ = false;
    if (plan_ == nullptr || plan_->Boats.empty()) return;
    const auto taken = std::ranges::find(plan_->Boats, true, &PlannedBoat::Taken);
    const PlannedBoat& first = taken != plan_->Boats.end() ? *taken : plan_->Boats.front();
    const GpsFix& fix = first.Track.Way.front();
    scale_ = ComputeEarthScale(fix.Lat);
    middle_ = {fix.Lat, fix.Lon};
    const Bounds box = BoxToFit();
    const double wide = std::max(box.High.X - box.Low.X, LeastMetres);
    const double high = std::max(box.High.Y - box.Low.Y, LeastMetres);
    perMetre_ = std::min((width() - 2 * Margin) / wide, (height() - 2 * Margin) / high);
    middle_ = {(box.Low.Y + box.High.Y) / 2 / scale_.MetresPerLatMinute,
               (box.Low.X + box.High.X) / 2 / scale_.MetresPerLonMinute};
    Project();
}

void TrackChart::Project() {
    projection_ = Projection(middle_, {width() / 2.0, height() / 2.0}, 0,
                             perMetre_ * scale_.MetresPerLatMinute, perMetre_ * scale_.MetresPerLonMinute);
    tracks_ = {};
    update();
}

Position TrackChart::EarthAt(const QPointF& pixel) const {
    return projection_.ToEarth({pixel.x(), pixel.y()});
}

std::optional<CourseGrip> TrackChart::GripAt(const QPointF& pixel) const {
    if (shown_.Race == nullptr) return {};
    return GripNear(*shown_.Race, scale_, EarthAt(pixel), GripPixels / perMetre_);
}

void TrackChart::mousePressEvent(QMouseEvent* event) {
    if (plan_ == nullptr || plan_->Boats.empty()) return;
    if (event->button() == Qt::RightButton) Remove(event->position());
    if (event->button() == Qt::LeftButton) LeftPress(event->position());
}

void TrackChart::LeftPress(const QPointF& at) {
    switch (tool_) {
        case Tool::Drag:
            held_ = GripAt(at);
            if (!held_) water_ = at;
            return PointTo(at);
        case Tool::AddMark:
            if (OnAddMark) OnAddMark(EarthAt(at));
            break;
        case Tool::AddLine:
            if (!lineFrom_) {
                lineFrom_ = EarthAt(at);
                return;
            }
            // A double click makes no line that nobody could cross.
            if (QLineF(PixelOf(projection_, *lineFrom_), at).length() < GripPixels) return;
            if (OnAddLine) OnAddLine(*lineFrom_, EarthAt(at));
            break;
        case Tool::Remove:
            if (!GripAt(at)) return;
            Remove(at);
            break;
    }
    Use(Tool::Drag);
    if (OnToolDone) OnToolDone();
}

void TrackChart::Remove(const QPointF& at) {
    if (held_) return;
    const auto grip = GripAt(at);
    if (grip && OnRemove) OnRemove(grip->Entry);
}

void TrackChart::mouseMoveEvent(QMouseEvent* event) {
    pointer_ = event->position();
    if (held_ && OnMove) OnMove(*held_, EarthAt(pointer_));
    if (water_) {
        const Position before = EarthAt(*water_);
        water_ = pointer_;
        const Position now = EarthAt(pointer_);
        middle_ = {middle_.Lat + before.Lat - now.Lat, middle_.Lon + before.Lon - now.Lon};
        moved_ = true;
        Project();
    }
    PointTo(pointer_);
    if (lineFrom_) update();
}

void TrackChart::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    held_.reset();
    water_.reset();
    PointTo(event->position());
}

void TrackChart::wheelEvent(QWheelEvent* event) {
    if (plan_ == nullptr || plan_->Boats.empty()) return;
    const Position under = EarthAt(event->position());
    const double factor = std::pow(ZoomOfNotch, event->angleDelta().y() / NotchAngle);
    perMetre_ = std::clamp(perMetre_ * factor, LeastPerMetre, MostPerMetre);
    Project();
    const Position now = EarthAt(event->position());
    middle_ = {middle_.Lat + under.Lat - now.Lat, middle_.Lon + under.Lon - now.Lon};
    moved_ = true;
    Project();
    event->accept();
}

void TrackChart::resizeEvent(QResizeEvent* /*event*/) {
    moved_ ? Project() : Fit();
}

/// The pointer tells what a press would do.
void TrackChart::PointTo(const QPointF& at) {
    if (tool_ == Tool::AddMark || tool_ == Tool::AddLine)
        setCursor(Qt::CrossCursor);
    else if (held_ || water_)
        setCursor(Qt::ClosedHandCursor);
    else if (GripAt(at))
        setCursor(tool_ == Tool::Remove ? Qt::PointingHandCursor : Qt::OpenHandCursor);
    else
        setCursor(Qt::ArrowCursor);
}

void TrackChart::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    if (plan_ == nullptr || plan_->Boats.empty()) return painter.fillRect(rect(), Sea);
    if (tracks_.isNull()) DrawTracks();
    painter.drawPixmap(0, 0, tracks_);
    painter.setRenderHint(QPainter::Antialiasing);
    if (shown_.Race != nullptr) DrawRaceSketch(painter, *shown_.Race, shown_.Start, projection_);
    if (!lineFrom_) return;
    painter.setPen(QPen(QColor(0, 0, 0), 1, Qt::DashLine));
    painter.drawLine(PixelOf(projection_, *lineFrom_), pointer_);
}

void TrackChart::DrawTracks() {
    tracks_ = QPixmap(size() * devicePixelRatioF());
    tracks_.setDevicePixelRatio(devicePixelRatioF());
    tracks_.fill(Sea);
    QPainter painter(&tracks_);
    painter.setRenderHint(QPainter::Antialiasing);
    int number = 0;
    for (std::size_t i = 0; i < plan_->Boats.size(); ++i) {
        const PlannedBoat& boat = plan_->Boats[i];
        const QColor colour = boat.Taken ? ColourOf(++number) : Grey;
        DrawTrack(painter, boat, colour, static_cast<int>(i) == chosen_ ? 3.0 : 1.0);
    }
}

/// What belongs to the race lies over what does not.
void TrackChart::DrawTrack(QPainter& painter, const PlannedBoat& boat, const QColor& colour,
                           double width) const {
    QPolygonF all, raced;
    const auto add = [](QPolygonF& way, const QPointF& at) {
        if (way.isEmpty() || QLineF(way.last(), at).length() >= FinestStep) way << at;
    };
    const UnixMs later = ClockMs(boat);
    for (const GpsFix& fix : boat.Track.Way) {
        const QPointF at = PixelOf(projection_, {fix.Lat, fix.Lon});
        add(all, at);
        const UnixMs time = fix.Time + later;
        if (shown_.Race != nullptr && time >= shown_.From && time <= shown_.To) add(raced, at);
    }
    painter.setPen(QPen(shown_.Race != nullptr ? Pale(colour) : colour, width));
    painter.drawPolyline(all);
    painter.setPen(QPen(colour, width));
    painter.drawPolyline(raced);
}

}  // namespace keelview
