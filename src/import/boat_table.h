#pragma once

#include <QTableWidget>
#include <functional>

#include "analysis/race_plan.h"
#include "session/voice.h"

namespace keelview {

/// The boats of a plan, a row each: a tick, the name to edit, the recording and what is known of it, the
/// clock that is proposed with a tick of its own, and why a boat was left out.
class BoatTable : public QTableWidget {
  public:
    BoatTable(QWidget* parent, const Voice& voice);

    /// Shows a plan anew, with the times on its clock.
    void ShowPlan(const RacePlan& plan);

    /// Takes what the person has set in a row into the plan. A boat without a name keeps its own.
    void Take(int row, RacePlan& plan) const;

    /// Told the row in which the person has set something.
    std::function<void(int row)> OnSet;

  private:
    void ShowRow(int row, const RacePlan& plan, const PlannedBoat& boat);
    void Put(int row, int column, const std::string& text, Qt::ItemFlags more = {});

    const Voice& voice_;
    bool filling_ = false;
};

}  // namespace keelview
