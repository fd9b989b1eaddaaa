#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "display/canvas.h"
#include "display/colour.h"
#include "display/event.h"

namespace keelview {

enum class MouseButton { None = 0, Left = 1, Right = 2, Middle = 4 };

/// A mouse event in the scale of the control it belongs to.
struct MouseEvent {
    MouseButton Button = MouseButton::None;
    bool Shift = false;
    double X = 0.0;
    double Y = 0.0;
    bool AnyModifier = false;  ///< Shift, Ctrl or Alt is held
};

/// A turn of the wheel over a control, in the control's scale; both amounts are positive downwards.
struct WheelEvent {
    int Lines = 0;  ///< lines of text, as the person has set them; 0 where less than one has gathered
    double Notches = 0.0;  ///< of the wheel; a touch pad turns by parts of one
    double X = 0.0;
    double Y = 0.0;
};

/// The toolkit's side of a control; only the implementation knows what stands in it.
struct NativeControl;

/// What every control of a form has. Places are pixels of the parent's drawing area. A control is made with
/// its parent and lives no longer than it; it starts visible and enabled.
class Control {
  public:
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    virtual ~Control();

    double Left() const;
    double Top() const;
    double Width() const;
    double Height() const;
    void Move(double left, double top);
    virtual void Move(double left, double top, double width, double height);
    void SetTop(double top) { Move(Left(), top); }
    void SetHeight(double height) { Move(Left(), Top(), Width(), height); }

    bool Visible() const;  ///< its own setting, also while its parent is hidden
    void SetVisible(bool visible);
    void Show() { SetVisible(true); }
    void Hide() { SetVisible(false); }
    bool Enabled() const;
    void SetEnabled(bool enabled);  ///< a disabled control takes no mouse events and no keys

    virtual void SetBackColor(Colour colour);
    virtual void SetForeColor(Colour colour);
    virtual Colour GetBackColor() const;
    virtual Colour GetForeColor() const;
    void SetFont(const std::string& fontName, double points, bool bold = false);
    void SetFocus();
    /// Lets the keyboard reach a control that is no button but is there to be clicked: Tab comes to it, the
    /// space bar clicks it.
    void SetTabStop();
    /// Brings the control above its siblings.
    void Raise();
    /// Width of a text in the control's font, pixels.
    double TextWidth(std::string_view text) const;

    Event<> OnClick;
    Event<const MouseEvent&> OnMouseDown;
    Event<const MouseEvent&> OnMouseUp;
    Event<const MouseEvent&> OnMouseMove;  ///< with or without a button held
    Event<const MouseEvent&> OnGreyMove;   ///< the pointer moves over the control while it is disabled
    Event<> OnMouseLeave;                  ///< the pointer has gone elsewhere, not to a control on this one
    /// The wheel was turned. What neither a control nor its widget has use for goes to its container.
    Event<const WheelEvent&> OnWheel;
    Event<> OnTabbedTo;  ///< the keyboard has come to the control, by Tab or by an arrow key

  protected:
    explicit Control(std::unique_ptr<NativeControl> native);
    NativeControl& Native() const { return *native_; }

  private:
    friend struct NativeControl;
    std::unique_ptr<NativeControl> native_;
};

/// A control that can hold others.
class Container : public Control {
  protected:
    using Control::Control;
};

/// How a panel or surface is framed; the border lies inside its rect, so the drawing area is smaller by it.
enum class BorderStyle { None, Flat, Sunken };

/// A container without an image of its own.
class Panel : public Container {
  public:
    Panel(Container& parent, std::string_view name, BorderStyle border = BorderStyle::Sunken);
};

/// A box with a caption in its top edge; its options exclude each other.
class Frame : public Container {
  public:
    Frame(Container& parent, std::string_view name, std::string_view caption = {});
    void SetCaption(std::string_view caption);
};

class Sprite;
class LineObject;

/// A container with a retained image, on which Sprite and LineObject children float under the other
/// children.
class Surface : public Container, public Canvas {
  public:
    Surface(Container& parent, std::string_view name, BorderStyle border = BorderStyle::Sunken);
    ~Surface() override;
    using Container::Move;
    void Move(double left, double top, double width, double height) override;
    /// Takes the colour and clears the image to it.
    void SetBackColor(Colour colour) override;
    void SetForeColor(Colour colour) override { ForeColor = colour; }
    Colour GetBackColor() const override { return BackColor; }
    Colour GetForeColor() const override { return ForeColor; }
    using Canvas::TextWidth;
    /// Takes the size of a picture (and the border) and shows it as its image.
    void ShowPicture(const Picture& picture);
    /// Brings the image to the screen at once.
    void Refresh();

  protected:
    void Changed(const Bounds& part) override;
};

/// A small image that floats over a surface's image, above its lines: a boat, a marker. It is clear where
/// nothing is drawn, so that what lies close together hides no more than its own shape. It is composited by
/// the surface, so that many of them may move in each frame.
class Sprite : public Canvas {
  public:
    Sprite(Surface& parent, std::string_view name, double width, double height);
    ~Sprite() override;
    void Move(double left, double top);         ///< pixels of the surface's drawing area
    void SetSize(double width, double height);  ///< clears the image
    double Left() const;
    double Top() const;
    double Width() const;
    double Height() const;
    bool Visible() const;
    void SetVisible(bool visible);
    /// The pointer moves over the sprite while it is visible; the surface then hears nothing of it. Other
    /// mouse events go to the surface.
    Event<const MouseEvent&> OnMouseMove;

  protected:
    void Changed(const Bounds& part) override;

  private:
    struct Place;
    std::unique_ptr<Place> place_;
};

/// A line that floats over a surface's image; it takes no mouse events.
class LineObject {
  public:
    LineObject(Surface& parent, std::string_view name, Colour colour);
    ~LineObject();
    LineObject(const LineObject&) = delete;
    LineObject& operator=(const LineObject&) = delete;
    void Place(double x1, double y1, double x2, double y2);  ///< pixels of the surface's drawing area
    double X1() const;
    double Y1() const;
    double X2() const;
    double Y2() const;
    bool Visible() const;
    void SetVisible(bool visible);
    void SetBorderColor(Colour colour);
    void SetStripes(std::span<const Colour> stripes);  ///< along it (display/stripes.h); none at first

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

enum class Align { Left, Centre, Right };

/// A text that the person reads; transparent unless it gets a BackColor.
class Label : public Control {
  public:
    Label(Container& parent, std::string_view name, std::string_view caption = {});
    void SetCaption(std::string_view caption);
    std::string Caption() const;
    void SetAlignment(Align alignment);  ///< left at first
};

/// A text box of one line, or of several when multiLine.
class TextBox : public Control {
  public:
    struct Kind {
        Align Alignment = Align::Left;
        bool Border = true;
        bool MultiLine = false;
        bool ReadOnly = false;  ///< shows a text, takes no typing and no tab stop
    };
    TextBox(Container& parent, std::string_view name, Kind kind);
    /// Fires OnChange where the text differs from what stood there.
    void SetText(std::string_view text);
    std::string Text() const;
    Event<> OnChange;
    Event<> OnTyped;    ///< the text was changed by the person
    Event<> OnEntered;  ///< the person has pressed Return there or has left it; of one line
    /// Leads the keyboard there with the whole text chosen, so that typing replaces it; for one line.
    void ChooseAll();
};

/// A push button; OnClick tells that it was pushed.
class Button : public Control {
  public:
    Button(Container& parent, std::string_view name, std::string_view caption = {});
    void SetCaption(std::string_view caption);
    std::string Caption() const;
};

/// A box with or without its tick.
class CheckBox : public Control {
  public:
    CheckBox(Container& parent, std::string_view name, std::string_view caption = {}, bool value = false);
    void SetCaption(std::string_view caption);
    std::string Caption() const;
    bool Value() const;
    /// Fires OnClick where the value changes.
    void SetValue(bool value);
    /// Upright stripes at its right end, as a striped field has them (display/stripes.h); none at first.
    void SetStripes(std::span<const Colour> stripes);
};

/// One of several exclusive choices of its frame (or other container).
class OptionButton : public Control {
  public:
    OptionButton(Container& parent, std::string_view name, std::string_view caption = {},
                 bool value = false);
    void SetCaption(std::string_view caption);
    std::string Caption() const;
    bool Value() const;
    /// True selects it, clears the others of its container, and fires OnClick where it was not selected.
    void SetValue(bool value);
    Event<> OnAgain;  ///< the person presses it while it is selected

  private:
    bool selectedBefore_ = false;  ///< the press that goes on now
};

/// A field with a list that drops down; items count from 0.
class ComboBox : public Control {
  public:
    ComboBox(Container& parent, std::string_view name);
    void Clear();
    void AddItem(std::string_view item);
    int ListCount() const;
    int ListIndex() const;  ///< -1 when none is chosen
    std::string Text() const;
    /// Chooses the item with this text; shows the text as it stands where there is none.
    void SetText(std::string_view text);
};

/// A list of rows, of which a person chooses one; rows count from 0.
class ListBox : public Control {
  public:
    ListBox(Container& parent, std::string_view name);
    /// Rows of this height, pixels, instead of that of the font; for items added from then on.
    void SetRowHeight(int height);
    void Clear();
    void AddItem(std::string_view item);
    void SetItem(int index, std::string_view item);
    int ListCount() const;
    int ListIndex() const;  ///< -1 when none is chosen
    void Choose(int index);
    std::string Item(int index) const;

    /// From then on a double click or F2 lets the person write in a row, over the text that `field` tells
    /// for it; for items added later.
    void LetWrite(std::function<std::string(int row)> field);
    /// The person wrote another text over a row's field. The row shows what it showed until it is set.
    Event<int, const std::string&> OnWritten;
    /// The person drags a row to the place of another, from place to place; where it is set, a pressed row
    /// that is dragged chooses no other. The rows show what they showed until they are set.
    Event<int, int> OnDragged;
};

/// A scroll bar, horizontal at first.
class ScrollBar : public Control {
  public:
    enum class Way { Across, Down };
    ScrollBar(Container& parent, std::string_view name, Way way = Way::Across);
    /// An arrow key goes on by 1, a press beside the handle by a tenth of the range.
    void SetRange(int min, int max);
    /// The range of a view from its top, 0, on what is larger by `beyond`: an arrow key goes on by a line,
    /// a press beside the handle by what is seen at once.
    void SetView(int beyond, int line, int page);
    int Max() const;
    int Value() const;
    /// Fires OnChange where the value changes.
    void SetValue(int value);
    Event<> OnChange;  ///< also while it is dragged
};

/// Fires every Interval milliseconds while it is enabled; one with interval 0 does not fire. It starts
/// disabled with interval 0, and never fires while its own handler still runs.
class Timer {
  public:
    Timer();
    ~Timer();
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;
    void SetInterval(int milliseconds);
    void SetEnabled(bool enabled);
    bool Enabled() const;
    Event<> OnTimer;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

/// Controls of one kind, for boats or rows: element i is boat i + 1. Element 0 is made with the form, the
/// others as they are needed.
template <class T>
class ControlArray {
  public:
    using Maker = std::function<std::unique_ptr<T>(int index)>;
    explicit ControlArray(Maker maker) : maker_(std::move(maker)) { elements_.push_back(maker_(0)); }
    T& operator[](int index) { return *elements_.at(static_cast<std::size_t>(index)); }
    const T& operator[](int index) const { return *elements_.at(static_cast<std::size_t>(index)); }
    int Count() const { return static_cast<int>(elements_.size()); }
    /// Makes elements, or removes the last ones, until there are `count`; the first one stays.
    void Resize(int count) {
        while (Count() < count) elements_.push_back(maker_(Count()));
        while (Count() > 1 && Count() > count) elements_.pop_back();
    }

  private:
    Maker maker_;
    std::deque<std::unique_ptr<T>> elements_;
};

}  // namespace keelview
