#include "import/background_work.h"

#include <QEventLoop>
#include <QThread>
#include <QTimer>
#include <memory>

namespace keelview {

namespace {

constexpr int Beat = 50;  // milliseconds from one look at the work to the next

}  // namespace

BackgroundWork::BackgroundWork(QProgressBar& bar, QPushButton& stop) : bar_(bar), stop_(stop) {
    bar_.hide();
    stop_.hide();
    QObject::connect(&stop_, &QPushButton::clicked, &stop_, [this] { Stop(); });
}

void BackgroundWork::Do(const std::function<void(const StepProgress& progress)>& work) {
    if (busy_) return;
    busy_ = true;
    stopped_ = false;
    std::atomic<int> done = 0;
    std::atomic<int> all = 0;
    const StepProgress progress = [&](int steps, int count) {
        done = steps;
        all = count;
        return !stopped_;
    };
    const std::unique_ptr<QThread> thread(QThread::create([&] { work(progress); }));
    QEventLoop loop;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &loop, [&] {
        bar_.setRange(0, all);
        bar_.setValue(done);
    });
    QObject::connect(thread.get(), &QThread::finished, &loop, &QEventLoop::quit);
    bar_.setRange(0, 0);
    bar_.show();
    stop_.show();
    look.start(Beat);
    thread->start();
    loop.exec();
    stopped_ = stopped_ || thread->isRunning();  // the program ends
    thread->wait();
    bar_.hide();
    stop_.hide();
    busy_ = false;
}

}  // namespace keelview
