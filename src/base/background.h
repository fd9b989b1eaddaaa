#pragma once

#include <functional>
#include <memory>

namespace keelview {

/// Work that goes on beside everything else, piece by piece: in a thread of its own where the system has
/// threads, else a piece at each look at it.
class Background {
  public:
    /// `piece` does the next piece, and tells whether there are more.
    explicit Background(std::function<bool()> piece);
    /// Waits for the end of the piece at hand; those behind it are not done.
    ~Background();
    Background(const Background&) = delete;
    Background& operator=(const Background&) = delete;

    /// True once the last piece is done.
    bool IsDone();

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace keelview
