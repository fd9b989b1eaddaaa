#include "support/scripted_dialogs.h"

#include <stdexcept>

namespace keelview {

ScriptedDialogs::Answer ScriptedDialogs::Next(std::string_view kind, std::string_view text,
                                              std::string_view title) {
    said_.push_back({std::string(kind), std::string(text), std::string(title)});
    if (answers_.empty()) throw std::logic_error("asked without an answer: " + std::string(text));
    if (answers_.front().Kind != kind)
        throw std::logic_error("asked as " + std::string(kind) + ", but the answer is for " +
                               answers_.front().Kind + ": " + std::string(text));
    Answer answer = answers_.front();
    answers_.pop_front();
    return answer;
}

std::optional<std::size_t> ScriptedDialogs::Choose(const std::vector<std::string>& entries) {
    std::string menu;
    for (const std::string& entry : entries) menu += (menu.empty() ? "" : "|") + entry;
    return Next("choose", menu, {}).Chosen;
}

}  // namespace keelview
