#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "display/control.h"

namespace keelview {

/// The keys that the forms tell apart.
inline constexpr int ShiftKey = 16;
inline constexpr int OtherKey = 1;

/// A key that means something wherever the keyboard is in a form.
struct KeyPress {
    enum class Name { Space, Left, Right, Home, End, Escape, F11, QuestionMark };
    Name Key = Name::Space;
    bool Shift = false;
    bool Repeated = false;  ///< the key has been held down since it was told first
};

/// A window. Its places are pixels of its inner area.
class Form : public Container {
  public:
    enum class Kind {
        Fixed,       ///< a frame that cannot be resized
        Splash,      ///< no frame, centred on the screen
        FullScreen,  ///< as large as the screen's free area, no resizing
        Curtain      ///< the same without a frame
    };
    Form(std::string_view name, Kind kind, double width, double height);
    ~Form() override;

    void SetCaption(std::string_view caption);
    std::string Caption() const;
    void SetIcon(const Picture& icon);
    double ScaleWidth() const;   ///< inner width, pixels
    double ScaleHeight() const;  ///< inner height, pixels
    /// Shows the window and paints it at once.
    void ShowNow();
    /// Shows the window on the one that it is asked from, as a part of that in the task bar, and waits
    /// until it is closed; other windows take no events meanwhile.
    void ShowModal();
    /// Paints what is shown, at once.
    void Refresh();
    /// Asks OnQueryUnload, then hides the window and tells OnUnload. Safe from within any event of the
    /// form: the object stands until its owner lets go of it.
    void Close();
    bool Closed() const;
    /// Takes the whole screen, without a frame; or gives it back.
    void SetWholeScreen(bool whole);
    bool WholeScreen() const;
    /// The buttons that Return and Escape push, wherever the keyboard is; on a button Return pushes that.
    void SetAnswers(Button& accept, Button& cancel);

    /// The window is about to close, by Close or by the person; one that is told true stays open.
    Event<bool&> OnQueryUnload;
    Event<> OnUnload;      ///< the window is closed
    Event<int> OnKeyDown;  ///< sees keys before any control of the form
    Event<int> OnKeyUp;
    /// A key was pressed that has a name here, without Ctrl and Alt, while no text was being typed and no
    /// list hung open; one that is told true goes no further. Where somebody listens Return pushes the
    /// button or box that has the keyboard, as the space bar may mean something else, and a field is left
    /// by Return, by Escape and by a press of the mouse elsewhere.
    Event<const KeyPress&, bool&> OnKey;
    /// Files or folders were dropped on the window. It takes no drops while nobody listens.
    Event<const std::vector<std::filesystem::path>&> OnFilesDropped;
    /// The window manager gave the window another inner size than it asked for.
    Event<> OnResize;
};

}  // namespace keelview
