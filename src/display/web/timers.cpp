#include <algorithm>
#include <utility>

#include "display/control.h"
#include "display/idle_task.h"
#include "display/web/events.h"
#include "display/web/native_control.h"
#include "display/web/page_calls.h"

namespace keelview {

struct Timer::Impl : PageTicker {
    explicit Impl(Timer& owner) : Owner(owner) {}
    Timer& Owner;
    int Interval = 0;
    bool Enabled = false;
    bool Runs = false;

    void Follow() {
        const bool wanted = Enabled && Interval > 0;
        if (wanted == Runs) return;
        Runs = wanted;
        page::PageTimer(static_cast<PageTicker*>(this), wanted ? Interval : 0);
    }
    void Tick() override { Fire(Owner.OnTimer); }
};

Timer::Timer() : impl_(std::make_unique<Impl>(*this)) {}

Timer::~Timer() {
    SetEnabled(false);
}

void Timer::SetInterval(int milliseconds) {
    const int interval = std::max(0, milliseconds);
    if (interval == impl_->Interval) return;
    const bool enabled = std::exchange(impl_->Enabled, false);
    impl_->Follow();
    impl_->Interval = interval;
    impl_->Enabled = enabled;
    impl_->Follow();
}

void Timer::SetEnabled(bool enabled) {
    impl_->Enabled = enabled;
    impl_->Follow();
}

bool Timer::Enabled() const {
    return impl_->Enabled;
}

struct IdleTask::Impl : PageTicker {
    explicit Impl(std::function<void()> task) : Task(std::move(task)) {}
    std::function<void()> Task;
    bool Wanted = false;

    void Tick() override {
        if (std::exchange(Wanted, false)) Task();
    }
};

IdleTask::IdleTask(std::function<void()> task) : impl_(std::make_unique<Impl>(std::move(task))) {}

IdleTask::~IdleTask() {
    page::PageDropTask(static_cast<PageTicker*>(impl_.get()));
}

void IdleTask::Ask() {
    if (!std::exchange(impl_->Wanted, true)) page::PageAskTask(static_cast<PageTicker*>(impl_.get()));
}

void IdleTask::Drop() {
    impl_->Wanted = false;
    page::PageDropTask(static_cast<PageTicker*>(impl_.get()));
}

}  // namespace keelview
