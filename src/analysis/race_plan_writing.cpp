#include "analysis/race_plan_writing.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "analysis/plan_names.h"
#include "base/files.h"
#include "racedata/race_file.h"

namespace keelview {

namespace {

namespace fs = std::filesystem;

fs::path TargetPath(const fs::path& tree, const std::string& name) {
    return FindBelow(tree, "gpsdat/" + name);
}

fs::path RacePath(const fs::path& tree, const std::string& name) {
    return FindBelow(tree, "raceadmin/" + name);
}

/// True if there are two files and they hold the same.
bool HoldTheSame(const fs::path& file, const fs::path& other) {
    const auto size = FileSize(file);
    if (!size || size != FileSize(other)) return false;
    const auto bytes = ReadWholeFile(file);
    return bytes && bytes == ReadWholeFile(other);
}

PlanTrouble Trouble(std::errc why, fs::path at = {}) {
    return {std::make_error_code(why), std::move(at)};
}

/// The files written so far, which go again unless all is done.
class Written {
  public:
    Written() = default;
    Written(const Written&) = delete;
    Written& operator=(const Written&) = delete;
    ~Written() {
        for (const fs::path& path : paths_) RemoveFile(path);
    }

    void Add(fs::path path) { paths_.push_back(std::move(path)); }
    void Keep() { paths_.clear(); }

  private:
    std::vector<fs::path> paths_;
};

/// Copies one recording, unless it is there already.
PlanTrouble CopyRecording(const fs::path& tree, const PlannedFile& file, Written& written) {
    fs::path target = TargetPath(tree, file.Target);
    if (IsFile(target))
        return HoldTheSame(file.Source, target) ? PlanTrouble{} : Trouble(std::errc::file_exists, target);
    const auto bytes = ReadWholeFile(file.Source);
    if (!bytes) return Trouble(std::errc::no_such_file_or_directory, file.Source);
    if (const std::error_code error = WriteFileAtomically(target, *bytes)) return {error, target};
    written.Add(std::move(target));
    return {};
}

/// The files that boats are taken from, by number.
std::set<std::size_t> FilesInUse(const RacePlan& plan) {
    std::set<std::size_t> files;
    for (const PlannedBoat& boat : plan.Boats)
        if (boat.Taken) files.insert(boat.File);
    return files;
}

}  // namespace

void SettleTargets(const fs::path& tree, RacePlan& plan) {
    std::vector<std::string> taken = ListFiles(FindBelow(tree, "gpsdat"), "*");
    for (PlannedFile& file : plan.Files) {
        if (HoldTheSame(file.Source, TargetPath(tree, file.Target))) continue;
        file.Target = FreeName(file.Target, taken);
        taken.push_back(file.Target);
    }
}

bool RaceFileExists(const fs::path& tree, const std::string& raceFileName) {
    return IsFile(RacePath(tree, raceFileName));
}

PlanTrouble WritePlannedRace(const fs::path& tree, const RacePlan& plan, bool replace,
                             const StepProgress& progress) {
    return WritePlannedRaces(tree, plan, {PlannedRace(plan)}, replace, progress);
}

PlanTrouble WritePlannedRaces(const fs::path& tree, const RacePlan& plan,
                              const std::vector<RaceControl>& races, bool replace,
                              const StepProgress& progress) {
    const auto boats = std::ranges::count_if(plan.Boats, &PlannedBoat::Taken);
    if (boats == 0 || boats > MaxBoats) return Trouble(std::errc::invalid_argument);
    for (const RaceControl& race : races)
        if (!replace && RaceFileExists(tree, race.RaceFileName))
            return Trouble(std::errc::file_exists, RacePath(tree, race.RaceFileName));
    const std::set<std::size_t> files = FilesInUse(plan);
    Written written;
    int done = 0;
    for (const std::size_t file : files) {
        if (progress && !progress(done++, static_cast<int>(files.size())))
            return Trouble(std::errc::operation_canceled);
        if (auto trouble = CopyRecording(tree, plan.Files[file], written); trouble.Error) return trouble;
    }
    for (const RaceControl& race : races) {
        fs::path path = RacePath(tree, race.RaceFileName);
        const bool isNew = !IsFile(path);
        if (const std::error_code error = SaveRaceFile(tree, race)) return {error, path};
        if (isNew) written.Add(std::move(path));
    }
    written.Keep();
    return {};
}

}  // namespace keelview
