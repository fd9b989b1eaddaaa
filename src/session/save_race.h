#pragma once

#include <filesystem>
#include <string>
#include <system_error>

#include "racedata/race_file.h"
#include "session/app_state.h"
#include "session/voice.h"

namespace keelview {

/// Asked before a file of that name is written over.
inline constexpr Text AskOverwrite{"A file of this name exists.\r\nOverwrite?",
                                   "同名のファイルがあります。\r\n上書きしますか？"};

/// The one door from the open race to its race control file.
class RaceSaver {
  public:
    RaceSaver(AppState& app, const Voice& voice) : app_(app), voice_(voice) {}

    /// Writes the open race. Does nothing with an empty RaceFileName. A file that cannot be written leaves
    /// the old one whole; the person is told once until a save succeeds, and the program goes on. True if
    /// nothing is left unsaved.
    bool Save() { return SaveBy(SaveRaceFile); }
    /// The same, and the old file stays beside the new one (SaveRaceFileAnew).
    bool SaveAnew() { return SaveBy(SaveRaceFileAnew); }

    /// Writes the open race under the name that the person gave, with ".txt" behind it unless it is there;
    /// from then on that file is the open one. The file of another race is written over only where the
    /// person says so. A failure is told each time, and the race keeps its name.
    bool SaveAs(const std::string& name);

    /// Says that a race control file could not be written, and why.
    void TellFailure(const std::string& file, std::error_code error) const;

    /// The person knows that the race as it stands could not be saved.
    bool FailureTold() const { return failureTold_; }
    /// Another race is opened.
    void Forget() { failureTold_ = false; }

  private:
    using Writer = std::error_code(const std::filesystem::path& appPath, const RaceControl& race);
    bool SaveBy(Writer& write);

    AppState& app_;
    const Voice& voice_;
    bool failureTold_ = false;
};

}  // namespace keelview
