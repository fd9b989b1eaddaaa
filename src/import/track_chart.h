#pragma once

#include <QPixmap>
#include <QWidget>
#include <functional>
#include <optional>
#include <string>

#include "analysis/race_plan.h"
#include "analysis/race_proposal.h"
#include "analysis/view.h"

namespace keelview {

/// The race that a chart shows over the tracks of its plan.
struct ChartedRace {
    const FoundRace* Race = nullptr;
    UnixMs From = 0;  ///< the part of the tracks that it was sailed in
    UnixMs To = 0;
    std::string Start;  ///< the time of the gun, as it stands beside the start line
};

/// A small chart of the tracks of a plan, north at the top: those that are taken in the colours of their
/// boats, the others grey. A race that was found lies over them, and what is not of it is pale. The wheel
/// zooms, and drags move the water; of the race each mark and each end of a line is dragged by itself, and
/// a right click takes it away.
class TrackChart : public QWidget {
  public:
    /// What the next left click does.
    enum class Tool { Drag, AddMark, AddLine, Remove };

    explicit TrackChart(QWidget* parent);

    /// Shows a plan, which must outlive the chart; a boat of it (from 0, or -1) is drawn thicker.
    void ShowPlan(const RacePlan& plan, int chosen);
    /// Shows a race, which must outlive its showing, or none. `fit` brings all of it into the chart.
    void ShowRace(const ChartedRace& race, bool fit);

    void Use(Tool tool);

    // What the person does to the race. The listener changes it, and shows it again.
    std::function<void(const CourseGrip& grip, const Position& at)> OnMove;
    std::function<void(const Position& at)> OnAddMark;
    std::function<void(const Position& from, const Position& to)> OnAddLine;
    std::function<void(const CourseKey& entry)> OnRemove;
    std::function<void()> OnToolDone;  ///< a tool has done its work, and dragging goes on

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void Fit();
    void Project();
    Bounds BoxToFit() const;
    Position EarthAt(const QPointF& pixel) const;
    std::optional<CourseGrip> GripAt(const QPointF& pixel) const;
    void LeftPress(const QPointF& at);
    void PlaceLineEnd(const Position& at);
    void Remove(const QPointF& at);
    void PointTo(const QPointF& at);
    void DrawTracks();
    void DrawTrack(QPainter& painter, const PlannedBoat& boat, const QColor& colour, double width) const;

    const RacePlan* plan_ = nullptr;
    int chosen_ = -1;
    ChartedRace shown_;

    Position middle_;        // of the chart
    double perMetre_ = 1.0;  // pixels
    EarthScale scale_;
    Projection projection_;
    bool moved_ = false;  // by hand, since all was fitted into it
    QPixmap tracks_;      // as they are drawn; null where they are to be drawn anew

    Tool tool_ = Tool::Drag;
    std::optional<CourseGrip> held_;    // what is dragged
    std::optional<QPointF> water_;      // where the water is held
    std::optional<Position> lineFrom_;  // the first end of the line that is being added
    QPointF pointer_;
};

}  // namespace keelview
