#pragma once

namespace keelview {

/// Something that the page wakes: a timer, or a task for when no event runs.
class PageTicker {
  public:
    virtual ~PageTicker() = default;
    virtual void Tick() = 0;
};

/// A surface's image, which the page has shown before the screen is next drawn.
class PageFrame {
  public:
    virtual ~PageFrame() = default;
    virtual void Put() = 0;
};

}  // namespace keelview
