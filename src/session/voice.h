#pragma once

#include <cstddef>
#include <filesystem>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/bilingual.h"
#include "session/app_state.h"

namespace keelview {

/// Names as lines of a box: the first ones, and how many more there are.
std::string LinesOfBox(const std::vector<std::string>& names);

/// How the program speaks to the person: in its language, under its title.
class Voice {
  public:
    Voice(const Settings& settings, Dialogs& dialogs) : settings_(settings), dialogs_(dialogs) {}

    bool English() const { return settings_.UseEnglish; }
    std::string_view In(const Text& text) const { return text.In(settings_.UseEnglish); }
    std::string Str(const Text& text) const { return text.Str(settings_.UseEnglish); }

    /// A message under the program's title; `about` stands in a line of its own.
    void Say(const Text& what, std::string_view about = {}) const;
    /// A message that is put together already, under a title of its own; empty means the program's plain
    /// name.
    void SayUnder(std::string_view title, std::string_view message) const { dialogs_.Ok(message, title); }
    /// Yes or no, under the program's title or a title of the question's own.
    bool Ask(const Text& question) const { return dialogs_.YesNo(In(question), settings_.AppTitle); }
    bool Ask(const Text& question, const Text& title) const {
        return dialogs_.YesNo(In(question), In(title));
    }
    /// Whether to do what loses something; Return means no.
    bool Confirm(const Text& question) const { return dialogs_.Confirm(In(question), settings_.AppTitle); }
    /// Yes or no, with what is asked about in lines of its own.
    bool AskAbout(const Text& question, std::string_view about) const;
    /// One line of text; nothing when the person cancels.
    std::optional<std::string> AskLine(const Text& prompt, const Text& title,
                                       std::string_view proposal) const {
        return dialogs_.Input(In(prompt), In(title), proposal);
    }
    /// Files that are there, as many as the person picks, beginning in a folder.
    std::vector<std::filesystem::path> ChooseFiles(const Text& title,
                                                   const std::filesystem::path& folder) const {
        return dialogs_.ChooseFiles(In(title), folder, {});
    }
    /// A menu at the pointer; which entry the person chose, nothing when none is.
    std::optional<std::size_t> Choose(std::initializer_list<Text> entries) const {
        std::vector<std::string> said;
        for (const Text& entry : entries) said.push_back(Str(entry));
        return dialogs_.Choose(said);
    }

  private:
    const Settings& settings_;
    Dialogs& dialogs_;
};

}  // namespace keelview
