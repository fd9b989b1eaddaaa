#include "import/plan_searcher.h"

#include <utility>

namespace keelview {

namespace {

constexpr int Beat = 50;  // milliseconds from one look at the work to the next

}  // namespace

PlanSearcher::PlanSearcher() {
    look_.setInterval(Beat);
    QObject::connect(&look_, &QTimer::timeout, &look_, [this] { Look(); });
}

void PlanSearcher::Begin(const RacePlan& plan) {
    auto search = std::make_unique<PlanSearch>(plan);
    if (!work_) return Start(std::move(search));
    next_ = std::move(search);
    outdated_ = true;
}

void PlanSearcher::Start(std::unique_ptr<PlanSearch> search) {
    search_ = std::move(search);
    outdated_ = false;
    work_ = std::make_unique<Background>([this] { return search_->DoNext() && !outdated_; });
    look_.start();
}

void PlanSearcher::Look() {
    if (!work_->IsDone()) return;
    look_.stop();
    work_.reset();
    if (next_) return Start(std::move(next_));
    if (OnFound) OnFound(search_->Take());
}

}  // namespace keelview
