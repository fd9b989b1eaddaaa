#include "display/idle_task.h"

#include <QMetaObject>
#include <QObject>
#include <utility>

#include "display/qt/native_control.h"

namespace keelview {

struct IdleTask::Impl : QObject {
    explicit Impl(std::function<void()> task) : Task(std::move(task)) {}
    std::function<void()> Task;
    bool Wanted = false;
    bool Waits = false;  // a call is on its way
};

IdleTask::IdleTask(std::function<void()> task) : impl_(std::make_unique<Impl>(std::move(task))) {}
IdleTask::~IdleTask() = default;

void IdleTask::Ask() {
    impl_->Wanted = true;
    if (std::exchange(impl_->Waits, true)) return;
    QMetaObject::invokeMethod(
        impl_.get(),
        [impl = impl_.get()] {
            impl->Waits = false;
            if (std::exchange(impl->Wanted, false) && !ProcessEnded()) impl->Task();
        },
        Qt::QueuedConnection);
}

void IdleTask::Drop() {
    impl_->Wanted = false;
}

}  // namespace keelview
