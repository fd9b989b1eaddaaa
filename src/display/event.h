#pragma once

#include <cassert>
#include <cstdio>
#include <functional>
#include <type_traits>
#include <utility>

namespace keelview {

/// What happens to a control, told to the one handler that was assigned. A second one is refused, with a
/// word on the error stream and an end in debug builds: it would take the event from the first without a
/// sound.
template <class... Arguments>
class Event {
  public:
    using Handler = std::function<void(Arguments...)>;

    Event() = default;
    ~Event() = default;
    Event(const Event&) = delete;
    Event& operator=(const Event&) = delete;

    template <class Callable>
    requires std::is_invocable_v<Callable&, Arguments...> Event& operator=(Callable&& handler) {
        if (handler_) {
            std::fputs("keelview: an event was given a second handler, which was refused\n", stderr);
            assert(!"the event has a handler already");
            return *this;
        }
        handler_ = std::forward<Callable>(handler);
        return *this;
    }

    /// Lets go of the handler, so that the event can be given another.
    void Clear() { handler_ = nullptr; }

    explicit operator bool() const { return static_cast<bool>(handler_); }
    /// The handler as it is; empty where there is none.
    const Handler& Current() const { return handler_; }
    /// Tells the handler, where there is one.
    void operator()(Arguments... arguments) const {
        if (handler_) handler_(arguments...);
    }

  private:
    Handler handler_;
};

}  // namespace keelview
