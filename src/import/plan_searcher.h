#pragma once

#include <QTimer>
#include <atomic>
#include <functional>
#include <memory>

#include "analysis/plan_search.h"
#include "base/background.h"

namespace keelview {

/// Looks for races in the recordings of a plan, beside a window that goes on living.
class PlanSearcher {
  public:
    PlanSearcher();

    /// Begins a search. One that goes on already comes to nothing.
    void Begin(const RacePlan& plan);

    /// Told what was found.
    std::function<void(DayFinding finding)> OnFound;

  private:
    void Start(std::unique_ptr<PlanSearch> search);
    void Look();

    std::unique_ptr<PlanSearch> search_;
    std::unique_ptr<PlanSearch> next_;  // in the place of what goes on, which is
    std::atomic<bool> outdated_ = false;
    std::unique_ptr<Background> work_;  // before what it works on it goes
    QTimer look_;
};

}  // namespace keelview
