#include "session/voice.h"

namespace keelview {

void Voice::Say(const Text& what, std::string_view about) const {
    std::string message = Str(what);
    if (!about.empty()) message.append("\r\n").append(about);
    dialogs_.Ok(message, settings_.AppTitle);
}

}  // namespace keelview
