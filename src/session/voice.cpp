#include "session/voice.h"

#include <algorithm>

namespace keelview {

namespace {

constexpr std::size_t LinesInABox = 15;

}  // namespace

std::string LinesOfBox(const std::vector<std::string>& names) {
    std::string lines;
    for (std::size_t i = 0; i < std::min(names.size(), LinesInABox); ++i)
        lines += (i == 0 ? "" : "\r\n") + names[i];
    if (names.size() > LinesInABox) lines += "\r\n... + " + std::to_string(names.size() - LinesInABox);
    return lines;
}

void Voice::Say(const Text& what, std::string_view about) const {
    std::string message = Str(what);
    if (!about.empty()) message.append("\r\n").append(about);
    dialogs_.Ok(message, settings_.AppTitle);
}

bool Voice::AskAbout(const Text& question, std::string_view about) const {
    return dialogs_.YesNo(Str(question).append("\r\n").append(about), settings_.AppTitle);
}

}  // namespace keelview
