#include "soak/black_box.h"

#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstring>

namespace keelview {

namespace {

// The longest action packs a distribution: seconds under the sanitizers. A busy machine gets more.
constexpr unsigned HangSeconds = 120;

const BlackBox*& TheBox() {
    static const BlackBox* box = nullptr;
    return box;
}

void Say(std::string_view text) {
    // Where this fails nothing can be done.
    [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, text.data(), text.size());
}

void Die(int signal) {
    Say(signal == SIGALRM ? "\nHANG: the last action takes too long\n" : "\nDIED of the last action\n");
    if (TheBox() != nullptr) TheBox()->Write();
    ::_exit(1);
}

}  // namespace

BlackBox::BlackBox() {
    TheBox() = this;
    for (const int signal : {SIGALRM, SIGABRT}) std::signal(signal, Die);
#ifndef __SANITIZE_ADDRESS__  // which tells more of these, and aborts after it
    for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL}) std::signal(signal, Die);
#endif
}

BlackBox::~BlackBox() {
    ::alarm(0);
    TheBox() = nullptr;
}

void BlackBox::Note(std::string_view action) {
    ::alarm(HangSeconds);
    auto& line = notes_.at(next_++ % Lines);
    const std::size_t length = std::min(action.size(), Length - 1);
    std::copy_n(action.begin(), length, line.begin());
    line.at(length) = '\0';
}

void BlackBox::Write() const {
    for (std::size_t line = 0; line < Lines; ++line) {
        const auto& note = notes_[(next_ + line) % Lines];
        const std::string_view text(note.data(), ::strnlen(note.data(), Length));
        if (text.empty()) continue;
        Say("  ");
        Say(text);
        Say("\n");
    }
}

}  // namespace keelview
