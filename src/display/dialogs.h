#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace keelview {

/// Questions and messages to the person. An empty title means the program's own name.
class Dialogs {
  public:
    virtual ~Dialogs() = default;
    virtual void Ok(std::string_view text, std::string_view title) = 0;
    virtual bool YesNo(std::string_view text, std::string_view title) = 0;
    /// The same for what loses something: Return means no.
    virtual bool Confirm(std::string_view text, std::string_view title) = 0;
    /// One line of text; nothing when the person cancels.
    virtual std::optional<std::string> Input(std::string_view prompt, std::string_view title,
                                             std::string_view proposal) = 0;
    /// A menu at the pointer; the index of the entry that the person chose, nothing when none is.
    virtual std::optional<std::size_t> Choose(const std::vector<std::string>& entries) = 0;
    /// Files that are there, as many as the person picks, in the order of their names; the choice begins in
    /// `folder`, or where the last one was if that is empty. Names of the patterns ("*.gpx") are shown
    /// first and all others on wish; without patterns all at once. None when the person cancels.
    virtual std::vector<std::filesystem::path> ChooseFiles(std::string_view title,
                                                           const std::filesystem::path& folder,
                                                           const std::vector<std::string>& patterns) = 0;
};

}  // namespace keelview
