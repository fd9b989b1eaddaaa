#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/point.h"
#include "display/control.h"

namespace keelview {

/// What a control is made of in the page; web/controls.js has the same numbers.
enum class ControlKind {
    Window,
    Panel,
    Frame,
    Surface,
    Plate,
    Field,
    TextArea,
    Button,
    CheckBox,
    Option,
    Combo,
    List,
    ScrollBar
};

/// The program's side of an element of the page, and the way of its events to the control. What the page
/// shows is told it; what it holds is kept here, so that nothing has to be asked of it.
struct NativeControl {
    NativeControl(ControlKind kind, std::string_view name, const Container* parent, int look = 0);
    virtual ~NativeControl();
    NativeControl(const NativeControl&) = delete;
    NativeControl& operator=(const NativeControl&) = delete;

    ControlKind Kind;
    Control* Owner = nullptr;
    NativeControl* Parent;
    std::vector<NativeControl*> Children;
    int Left = 0;
    int Top = 0;
    int Width = 0;
    int Height = 0;
    int Edge = 0;  ///< pixels of the border at each side
    bool Visible = true;
    bool EnabledByOwner = true;
    double FontPixels = 12.0;
    std::optional<Colour> Back;
    std::optional<Colour> Fore;
    bool HasColours = true;  ///< else they are the surface's own
    bool Ticked = false;
    std::string Words;
    std::vector<std::string> Items;
    int Chosen = -1;
    int Least = 0;
    int Most = 99;
    int Value = 0;

    static NativeControl& Of(const Control& control) { return *control.native_; }
    int InnerWidth() const { return Width > 2 * Edge ? Width - 2 * Edge : 0; }
    int InnerHeight() const { return Height > 2 * Edge ? Height - 2 * Edge : 0; }
    bool IsEnabled() const;  ///< with all that it lies in
    void SetWords(std::string_view words);
    void SetFontPixels(double pixels, bool bold);
    void FireClick();

    // What the page tells of the person. Places are pixels of the drawing area.
    enum class Pointer { Down, Up, Move, Leave };
    void OnPointer(Pointer what, MouseEvent event);
    bool OnWheelTurn(WheelEvent event);  ///< false where nobody had use for it
    void OnTick(bool ticked);
    void OnValue(int value);
    void OnText(std::string_view words);
    void OnTextDone();
    void OnItem(int index);

  protected:
    /// Where a move went to something that floats on the control.
    virtual bool TakeMove(const Point& /*at*/) { return false; }
    virtual Point InScale(const Point& at) const { return at; }

  private:
    bool selectedBefore_ = false;  // an option, when it was pressed
    bool pressed_ = false;
};

/// Tells an event's handler, if there is one. The handler is copied: it may let go of the object that holds
/// it.
template <class... Parameters, class... Arguments>
void Fire(const Event<Parameters...>& event, Arguments&&... arguments) {
    if (!event) return;
    const auto held = event.Current();
    held(arguments...);
}

/// The pixels of letters of so many points, 96 dots to the inch, and how high the tallest and how deep the
/// lowest of the face reach, by its size. The page's faces have these in common to less than a tenth.
double PixelsOfPoints(double points);
inline constexpr double AscentShare = 0.905;
inline constexpr double DescentShare = 0.212;

int BorderWidth(BorderStyle border);

}  // namespace keelview
