#pragma once

class QKeyEvent;

namespace keelview {

/// The key code that the forms know: the usual virtual key codes for letters, figures and the keys that
/// move and edit; 0 for any other key.
int KeyCode(const QKeyEvent& event);

}  // namespace keelview
