#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "display/control.h"

namespace keelview {

/// Key codes that the forms know.
inline constexpr int ShiftKey = 16;

/// A window. Its places are pixels of its inner area.
class Form : public Container {
  public:
    enum class Kind {
        Fixed,      ///< a frame that cannot be resized
        Splash,     ///< no frame, centred on the screen
        FullScreen  ///< as large as the screen's free area, no resizing
    };
    Form(std::string_view name, Kind kind, double width, double height);
    ~Form() override;

    void SetCaption(std::string_view caption);
    std::string Caption() const;
    void SetIcon(const Picture& icon);
    double ScaleWidth() const;   ///< inner width, pixels
    double ScaleHeight() const;  ///< inner height, pixels
    void CentreOnScreen();
    /// Shows the window and paints it at once.
    void ShowNow();
    /// Shows the window and waits until it is closed; other windows take no events meanwhile.
    void ShowModal();
    /// Paints what is shown, at once.
    void Refresh();
    /// Asks OnQueryUnload, then hides the window and tells OnUnload. Safe from within any event of the
    /// form: the object stands until its owner lets go of it.
    void Close();
    bool Closed() const;

    std::function<void()> OnQueryUnload;     ///< the window is about to close, by Close or by the person
    std::function<void()> OnUnload;          ///< the window is closed
    std::function<void(int key)> OnKeyDown;  ///< sees keys before any control of the form
    std::function<void(int key)> OnKeyUp;
    /// The window manager gave the window another inner size than it asked for.
    std::function<void()> OnResize;
};

}  // namespace keelview
