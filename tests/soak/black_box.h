#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace keelview {

/// Keeps what was done last, for the case that the process dies of it: by a sanitizer, by a signal, or by
/// an action that takes longer than any may. What it kept is then written to the error output. One at a
/// time.
class BlackBox {
  public:
    BlackBox();
    ~BlackBox();
    BlackBox(const BlackBox&) = delete;
    BlackBox& operator=(const BlackBox&) = delete;

    /// Notes an action that is about to begin, and gives it its time.
    void Note(std::string_view action);
    /// Writes all notes, the oldest first. Safe in a signal handler.
    void Write() const;

  private:
    static constexpr std::size_t Lines = 60;
    static constexpr std::size_t Length = 120;
    std::array<std::array<char, Length>, Lines> notes_{};
    std::size_t next_ = 0;
};

}  // namespace keelview
