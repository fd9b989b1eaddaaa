#pragma once

#include <QProgressBar>
#include <QPushButton>
#include <atomic>
#include <functional>

#include "analysis/found_tracks.h"

namespace keelview {

/// Long work beside a window that goes on living: done in a thread of its own while a bar shows how far it
/// has come and a button stops it.
class BackgroundWork {
  public:
    /// Both are hidden while nothing is done.
    BackgroundWork(QProgressBar& bar, QPushButton& stop);

    /// Does something and comes back when it is done. The window must let nothing else begin meanwhile.
    void Do(const std::function<void(const StepProgress& progress)>& work);

    /// Has the work end at its next step, if there is any.
    void Stop() { stopped_ = true; }
    bool IsBusy() const { return busy_; }

  private:
    QProgressBar& bar_;
    QPushButton& stop_;
    std::atomic<bool> stopped_ = false;
    bool busy_ = false;
};

}  // namespace keelview
