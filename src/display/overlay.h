#pragma once

#include <cstddef>
#include <vector>

#include "display/canvas.h"

namespace keelview {

/// A drawing on a canvas that can be taken back by itself: what lay below it comes up again, and what was
/// drawn over it since stays.
class Overlay {
  public:
    /// What is drawn on the canvas from Begin to End belongs to the overlay, and nothing else does any
    /// more.
    void Begin(const Canvas& canvas);
    void End(const Canvas& canvas);
    /// Takes the drawing back. A canvas that was cleared, or took another size, knows it no more; Begin or
    /// Forget comes first there.
    void TakeBack(Canvas& canvas);
    void Forget() { drawn_.clear(); }

  private:
    struct Drawn {
        std::size_t At;
        Pixel Below;
        Pixel Ink;
    };
    std::vector<Pixel> below_;  ///< all of the canvas
    std::vector<Drawn> drawn_;
};

}  // namespace keelview
