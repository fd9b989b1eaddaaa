#include "import/race_sketch.h"

#include <QLineF>
#include <QPainterPath>

#include "analysis/race_proposal.h"
#include "base/angles.h"

namespace keelview {

namespace {

constexpr double DiskRadius = 4.5;
constexpr double ArrowLength = 8, ArrowHalfWidth = 3.5;
constexpr double NameRight = 8;  // of a name from its place
constexpr double StartDown = 14, FinishUp = -2,
                 MarkDown = 6;  // of its foot, as a finish is often beside the start

const QColor Ink(0, 0, 0);
const QColor Fill(255, 255, 0);
const QColor WayColour(0, 0, 160);

/// One drawing of a race.
class Sketch {
  public:
    Sketch(QPainter& painter, const FoundRace& race, const Projection& projection)
        : painter_(painter), race_(race), projection_(projection) {}

    void DrawWay() {
        painter_.setPen(QPen(WayColour, 1.0, Qt::DashLine));
        painter_.setBrush(WayColour);
        for (std::size_t i = 1; i < race_.Course.size(); ++i) {
            const QLineF leg(MiddlePixel(race_.Course[i - 1]), MiddlePixel(race_.Course[i]));
            painter_.drawLine(leg);
            DrawArrow(leg);
        }
    }

    void DrawGates() {
        painter_.setPen(QPen(Ink, 1.5, Qt::DotLine));
        for (const std::string& entry : race_.Course) {
            const CourseKey key = ParseCourseKey(entry);
            if (key.IsGate()) painter_.drawLine(MarkPixel(key.Number), MarkPixel(key.OtherMark));
        }
    }

    void DrawLine(int number, const std::string& behindName) {
        const CourseKey key{.IsLine = true, .Number = number};
        const QPointF from = At(PlaceOf(race_, {key}));
        const QPointF to = At(PlaceOf(race_, {key, true}));
        painter_.setPen(QPen(Ink, 4.0));
        painter_.drawLine(from, to);
        painter_.setPen(QPen(Fill, 2.0));
        painter_.drawLine(from, to);
        DrawDisk(from);
        DrawDisk(to);
        DrawName(from.x() > to.x() ? from : to, number == 1 ? StartDown : FinishUp,
                 CourseKeyText(key) + behindName);
    }

    void DrawMark(int number) {
        const QPointF at = MarkPixel(number);
        DrawDisk(at);
        DrawName(at, MarkDown, CourseKeyText({.IsLine = false, .Number = number}));
    }

  private:
    QPointF At(const Position& place) const { return PixelOf(projection_, place); }
    QPointF MarkPixel(int number) const {
        return At(PlaceOf(race_, {{.IsLine = false, .Number = number}}));
    }
    QPointF MiddlePixel(const std::string& entry) const {
        return At(MiddleOf(race_, ParseCourseKey(entry)));
    }

    /// In the middle of a leg, so that the ways there and back tell theirs apart.
    void DrawArrow(const QLineF& leg) {
        if (leg.length() < 3 * ArrowLength) return;
        const QPointF along = (leg.p2() - leg.p1()) / leg.length();
        const QPointF across(-along.y(), along.x());
        const QPointF tip = leg.pointAt(0.6);
        const QPointF foot = tip - along * ArrowLength;
        painter_.save();
        painter_.setPen(Qt::NoPen);
        painter_.drawPolygon(
            QPolygonF({tip, foot + across * ArrowHalfWidth, foot - across * ArrowHalfWidth}));
        painter_.restore();
    }

    void DrawDisk(const QPointF& at) {
        painter_.setPen(QPen(Ink, 1.0));
        painter_.setBrush(Fill);
        painter_.drawEllipse(at, DiskRadius, DiskRadius);
    }

    /// With a light edge, as tracks of any colour lie below.
    void DrawName(const QPointF& at, double down, const std::string& name) {
        QPainterPath text;
        text.addText(at + QPointF(NameRight, down), painter_.font(), QString::fromStdString(name));
        painter_.strokePath(text,
                            QPen(QColor(255, 255, 255), 3.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter_.fillPath(text, Ink);
    }

    QPainter& painter_;
    const FoundRace& race_;
    const Projection& projection_;
};

}  // namespace

QPointF PixelOf(const Projection& projection, const Position& at) {
    const double meridian = projection.ToEarth(projection.Middle()).Lon;
    const Point pixel = projection.ToScreen({at.Lat, LongitudeNear(at.Lon, meridian)});
    return {pixel.X, pixel.Y};
}

void DrawRaceSketch(QPainter& painter, const FoundRace& race, const std::string& start,
                    const Projection& projection) {
    Sketch sketch(painter, race, projection);
    sketch.DrawWay();
    sketch.DrawGates();
    for (int line = 1; line <= static_cast<int>(race.Lines.size()); ++line)
        sketch.DrawLine(line, line == 1 ? "  " + start : "");
    for (int mark = 1; mark <= static_cast<int>(race.Marks.size()); ++mark) sketch.DrawMark(mark);
}

}  // namespace keelview
