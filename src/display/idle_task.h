#pragma once

#include <functional>
#include <memory>

namespace keelview {

/// Something that is done once, soon after it was asked for, when the event loop comes to it, however often
/// it was asked for meanwhile.
class IdleTask {
  public:
    explicit IdleTask(std::function<void()> task);
    /// What waits still is dropped.
    ~IdleTask();
    IdleTask(const IdleTask&) = delete;
    IdleTask& operator=(const IdleTask&) = delete;

    void Ask();
    /// What was asked for is no longer wanted.
    void Drop();

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace keelview
