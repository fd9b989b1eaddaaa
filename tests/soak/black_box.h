#pragma once

#include <unistd.h>

#include <array>
#include <csignal>
#include <string_view>

/// Keeps what was done last, for the case that the process dies of it: by a sanitizer, by a signal, or by
/// an action that takes longer than any may. What it kept is then written to the error output.
namespace keelview::black_box {

struct Notes {
    std::array<std::array<char, 120>, 60> Lines{};
    std::size_t Next = 0;
};

inline Notes& Kept() {
    static Notes notes;
    return notes;
}

inline void Say(std::string_view text) {
    // Where this fails nothing can be done.
    [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, text.data(), text.size());
}

/// Tells all notes, the oldest first, by what is safe in a signal handler.
inline void Die(int signal) {
    Say(signal == SIGALRM ? "\nHANG: the last action takes too long\n" : "\nDIED of the last action\n");
    for (std::size_t line = 0; line < Kept().Lines.size(); ++line) {
        const char* note = Kept().Lines[Kept().Next++ % Kept().Lines.size()].data();
        for (const char* text : {"  ", note, "\n"})
            if (*note != '\0') Say(text);
    }
    ::_exit(1);
}

/// Has all these deaths told from now on.
inline void Open() {
    Kept() = {};  // made before a handler asks for it
    for (const int signal : {SIGALRM, SIGABRT}) std::signal(signal, Die);
#ifndef __SANITIZE_ADDRESS__  // which tells more of these, and aborts after it
    for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL}) std::signal(signal, Die);
#endif
}

/// Notes an action that is about to begin, and gives it its time: the longest packs a distribution, which
/// takes seconds under the sanitizers. A busy machine gets more.
inline void Note(std::string_view action) {
    ::alarm(120);
    auto& line = Kept().Lines.at(Kept().Next++ % Kept().Lines.size());
    line.fill('\0');
    action.copy(line.data(), line.size() - 1);
}

}  // namespace keelview::black_box
