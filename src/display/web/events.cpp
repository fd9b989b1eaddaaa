#include "display/web/events.h"

#include <string_view>

#include "display/web/form_events.h"
#include "display/web/native_control.h"
#include "display/web/surface_board.h"

// What web/*.js calls, each by its name. Addresses are those that the program has given the page, as long
// as it has not taken them back.
namespace keelview {

extern "C" {

[[clang::export_name("OnPointer")]] void OnPointer(NativeControl* control, int what, int button, bool shift,
                                                   bool anyModifier, double x, double y) {
    control->OnPointer(static_cast<NativeControl::Pointer>(what),
                       {.Button = static_cast<MouseButton>(button),
                        .Shift = shift,
                        .X = x,
                        .Y = y,
                        .AnyModifier = anyModifier});
}

[[clang::export_name("OnWheel")]] bool OnWheel(NativeControl* control, int lines, double notches, double x,
                                               double y) {
    return control->OnWheelTurn({.Lines = lines, .Notches = notches, .X = x, .Y = y});
}

[[clang::export_name("OnClick")]] void OnClick(NativeControl* control) {
    if (control->IsEnabled()) control->FireClick();
}

[[clang::export_name("OnTick")]] void OnTick(NativeControl* control, bool ticked) {
    control->OnTick(ticked);
}

[[clang::export_name("OnValue")]] void OnValue(NativeControl* control, int value) {
    control->OnValue(value);
}

[[clang::export_name("OnItem")]] void OnItem(NativeControl* control, int index) {
    control->OnItem(index);
}

[[clang::export_name("OnText")]] void OnText(NativeControl* control, const char* text, std::size_t size) {
    control->OnText({text, size});
}

[[clang::export_name("OnTextDone")]] void OnTextDone(NativeControl* control) {
    control->OnTextDone();
}

[[clang::export_name("OnTabbedTo")]] void OnTabbedTo(NativeControl* control) {
    if (control->Owner != nullptr) Fire(control->Owner->OnTabbedTo);
}

[[clang::export_name("OnTime")]] void OnTime(PageTicker* ticker) {
    ticker->Tick();
}

[[clang::export_name("OnFrame")]] void OnFrame(NativeControl* surface) {
    static_cast<SurfaceBoard*>(surface)->Put();
}

[[clang::export_name("OnResize")]] void OnResize(FormEvents* window) {
    window->OnResized();
}

[[clang::export_name("OnKey")]] void OnKey(FormEvents* window, int key, bool down) {
    down ? window->OnKeyDown(key) : window->OnKeyUp(key);
}

[[clang::export_name("OnNamedKey")]] bool OnNamedKey(FormEvents* window, int name, bool shift,
                                                     bool repeated) {
    return window->OnNamedKey(
        {.Key = static_cast<KeyPress::Name>(name), .Shift = shift, .Repeated = repeated});
}

}  // extern "C"

}  // namespace keelview
