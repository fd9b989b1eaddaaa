#include <QTimer>
#include <algorithm>

#include "display/control.h"
#include "display/qt/native_control.h"

namespace keelview {

struct Timer::Impl {
    QTimer Clock;
    bool Enabled = false;
    bool Running = false;  // the handler is at work

    void Follow() {
        const bool wanted = Enabled && Clock.interval() > 0;
        if (wanted && !Clock.isActive()) Clock.start();
        if (!wanted) Clock.stop();
    }
};

Timer::Timer() : impl_(std::make_unique<Impl>()) {
    impl_->Clock.setTimerType(Qt::PreciseTimer);
    QObject::connect(&impl_->Clock, &QTimer::timeout, &impl_->Clock, [this] {
        // Events that the handler lets in may bring the next tick before this one is done.
        if (impl_->Running) return;
        impl_->Running = true;
        const QPointer<QTimer> living(&impl_->Clock);
        Fire(OnTimer);
        if (living) impl_->Running = false;
    });
}

Timer::~Timer() = default;

void Timer::SetInterval(int milliseconds) {
    impl_->Clock.setInterval(std::max(0, milliseconds));
    impl_->Follow();
}

void Timer::SetEnabled(bool enabled) {
    impl_->Enabled = enabled;
    impl_->Follow();
}

bool Timer::Enabled() const {
    return impl_->Enabled;
}

}  // namespace keelview
