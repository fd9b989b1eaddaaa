#include "session/save_race.h"

#include <system_error>
#include <utility>

#include "base/files.h"

namespace keelview {

bool RaceSaver::SaveBy(Writer& write) {
    if (app_.race.RaceFileName.empty()) return true;
    const std::error_code error = write(app_.settings.AppPath, app_.race);
    if (!error) {
        failureTold_ = false;
        return true;
    }
    if (!std::exchange(failureTold_, true)) TellFailure(app_.race.RaceFileName, error);
    return false;
}

void RaceSaver::TellFailure(const std::string& file, std::error_code error) const {
    const Text said{"The race control file could not be written: ",
                    "レース管理ファイルを書き込めませんでした: "};
    voice_.SayUnder(app_.settings.AppTitle, voice_.Str(said) + file + "\r\n(" + error.message() + ")");
}

bool RaceSaver::SaveAs(const std::string& name) {
    const bool hasExtension =
        name.find(".txt") != std::string::npos || name.find(".TXT") != std::string::npos;
    const std::string file = hasExtension ? name : name + ".txt";
    const auto folder = FindBelow(app_.settings.AppPath, "raceadmin");
    const auto path = FindBelow(folder, file);
    const bool isAnother = path != FindBelow(folder, app_.race.RaceFileName);
    if (isAnother && IsFile(path) && !voice_.Confirm(AskOverwrite)) return false;
    const std::string nameBefore = std::exchange(app_.race.RaceFileName, file);
    const bool toldBefore = std::exchange(failureTold_, false);
    if (Save()) return true;
    app_.race.RaceFileName = nameBefore;
    failureTold_ = toldBefore;
    return false;
}

}  // namespace keelview
