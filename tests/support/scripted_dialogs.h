#pragma once

#include <deque>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "display/dialogs.h"

namespace keelview {

/// Answers in place of a person, for tests and scripts. Asking more than the script holds throws
/// std::logic_error; everything that was said is kept.
class ScriptedDialogs : public Dialogs {
  public:
    struct Said {
        std::string Kind;  ///< "ok", "yesno", "input", "choose", "files"
        std::string Text;
        std::string Title;
    };
    void AnswerOk() { answers_.push_back({"ok", true, {}}); }
    void AnswerYesNo(bool yes) { answers_.push_back({"yesno", yes, {}}); }
    void AnswerInput(std::optional<std::string> text) {
        answers_.push_back({"input", true, std::move(text)});
    }
    void AnswerChoose(std::optional<std::size_t> entry) { answers_.push_back({"choose", true, {}, entry}); }
    void AnswerFiles(std::vector<std::filesystem::path> files) {
        answers_.push_back({"files", true, {}, {}, std::move(files)});
    }
    bool AllAnswered() const { return answers_.empty(); }
    const std::vector<Said>& All() const { return said_; }

    void Ok(std::string_view text, std::string_view title) override { Next("ok", text, title); }
    bool YesNo(std::string_view text, std::string_view title) override {
        return Next("yesno", text, title).Yes;
    }
    bool Confirm(std::string_view text, std::string_view title) override { return YesNo(text, title); }
    std::optional<std::string> Input(std::string_view prompt, std::string_view title,
                                     std::string_view /*proposal*/) override {
        return Next("input", prompt, title).Text;
    }
    std::optional<std::size_t> Choose(const std::vector<std::string>& entries) override;
    std::vector<std::filesystem::path> ChooseFiles(std::string_view title,
                                                   const std::filesystem::path& folder,
                                                   const std::vector<std::string>& /*patterns*/) override {
        return Next("files", folder.string(), title).Picked;
    }

  private:
    struct Answer {
        std::string Kind;
        bool Yes = true;
        std::optional<std::string> Text;
        std::optional<std::size_t> Chosen = {};
        std::vector<std::filesystem::path> Picked = {};
    };
    Answer Next(std::string_view kind, std::string_view text, std::string_view title);
    std::deque<Answer> answers_;
    std::vector<Said> said_;
};

}  // namespace keelview
