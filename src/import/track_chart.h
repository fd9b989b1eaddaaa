#pragma once

#include <QWidget>

#include "analysis/race_plan.h"

namespace keelview {

/// A small chart of the tracks of a plan, north at the top: those that are taken in the colours of their
/// boats, the others grey, as far as they lie there.
class TrackChart : public QWidget {
  public:
    explicit TrackChart(QWidget* parent);

    /// Shows a plan, which must outlive the chart; a boat of it (from 0, or -1) is drawn thicker.
    void ShowPlan(const RacePlan& plan, int chosen);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    const RacePlan* plan_ = nullptr;
    int chosen_ = -1;
};

}  // namespace keelview
