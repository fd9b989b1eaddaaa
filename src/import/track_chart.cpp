#include "import/track_chart.h"

#include <QPainter>
#include <QPolygonF>
#include <algorithm>

#include "base/angles.h"
#include "base/point.h"
#include "session/livery.h"

namespace keelview {

namespace {

constexpr double Margin = 8;  // pixels

QColor ColourOf(int boat) {
    const ColourParts parts = PartsOf(BoatColour(boat));
    return {parts.Red, parts.Green, parts.Blue};
}

/// From places to the pixels of a widget: a box of water as large as fits.
class Frame {
  public:
    Frame(const RacePlan& plan, const QSize& size) {
        const auto taken = std::ranges::find(plan.Boats, true, &PlannedBoat::Taken);
        const PlannedBoat& first = taken != plan.Boats.end() ? *taken : plan.Boats.front();
        meridian_ = first.Track.Way.front().Lon;
        scale_ = ComputeEarthScale(first.Track.Way.front().Lat);
        Bounds box;
        for (const PlannedBoat& boat : plan.Boats)
            for (const GpsFix& fix : boat.Track.Way)
                if (boat.Taken || &boat == &first) box.Add(Metres(fix));
        const double wide = std::max(box.High.X - box.Low.X, 10.0);
        const double high = std::max(box.High.Y - box.Low.Y, 10.0);
        zoom_ = std::min((size.width() - 2 * Margin) / wide, (size.height() - 2 * Margin) / high);
        middle_ = {(box.Low.X + box.High.X) / 2, (box.Low.Y + box.High.Y) / 2};
        centre_ = QPointF(size.width() / 2.0, size.height() / 2.0);
    }

    QPolygonF On(const std::vector<GpsFix>& way) const {
        QPolygonF line;
        for (const GpsFix& fix : way) {
            const Point at = Metres(fix);
            line << centre_ + QPointF(at.X - middle_.X, middle_.Y - at.Y) * zoom_;
        }
        return line;
    }

  private:
    Point Metres(const GpsFix& fix) const {
        return {LongitudeNear(fix.Lon, meridian_) * scale_.MetresPerLonMinute,
                fix.Lat * scale_.MetresPerLatMinute};
    }

    double meridian_ = 0.0;
    EarthScale scale_;
    double zoom_ = 1.0;  // pixels a metre
    Point middle_;
    QPointF centre_;
};

}  // namespace

TrackChart::TrackChart(QWidget* parent) : QWidget(parent) {
    setMinimumSize(220, 220);
}

void TrackChart::ShowPlan(const RacePlan& plan, int chosen) {
    plan_ = &plan;
    chosen_ = chosen;
    update();
}

void TrackChart::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), QColor(0, 255, 255));
    if (plan_ == nullptr || plan_->Boats.empty()) return;
    painter.setRenderHint(QPainter::Antialiasing);
    const Frame frame(*plan_, size());
    int number = 0;
    for (std::size_t i = 0; i < plan_->Boats.size(); ++i) {
        const PlannedBoat& boat = plan_->Boats[i];
        const QColor colour = boat.Taken ? ColourOf(++number) : QColor(160, 160, 160);
        painter.setPen(QPen(colour, static_cast<int>(i) == chosen_ ? 3.0 : 1.0));
        painter.drawPolyline(frame.On(boat.Track.Way));
    }
}

}  // namespace keelview
