#pragma once

#include "display/form.h"

namespace keelview {

/// What the page tells of itself and of the keyboard to the form that stands in it.
class FormEvents {
  public:
    virtual ~FormEvents() = default;
    virtual void OnResized() = 0;
    virtual void OnKeyDown(int key) = 0;
    virtual void OnKeyUp(int key) = 0;
    virtual bool OnNamedKey(const KeyPress& key) = 0;  ///< true where it goes no further
};

}  // namespace keelview
