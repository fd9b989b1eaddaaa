#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace keelview {

/// Questions and messages to the person. An empty title means the program's own name.
class Dialogs {
  public:
    virtual ~Dialogs() = default;
    virtual void Ok(std::string_view text, std::string_view title) = 0;
    virtual bool YesNo(std::string_view text, std::string_view title) = 0;
    /// One line of text; nothing when the person cancels.
    virtual std::optional<std::string> Input(std::string_view prompt, std::string_view title,
                                             std::string_view proposal) = 0;
};

}  // namespace keelview
