#include "distribution/distribution_builder.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "analysis/race_numbers.h"
#include "base/file_names.h"
#include "base/files.h"
#include "base/folders.h"
#include "base/paths.h"
#include "base/strings.h"
#include "base/system_files.h"
#include "base/text_encoding.h"
#include "distribution/page_writer.h"
#include "distribution/process.h"
#include "distribution/zip_packer.h"
#include "racedata/race_control.h"
#include "racedata/race_file.h"
#include "racedata/shore_file.h"
#include "racedata/track_reading.h"

namespace keelview {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view DistributionFolder = "distribution";
constexpr std::string_view UnfinishedMark = ".unfinished";
constexpr std::string_view TarEnd = ".tar.gz";
constexpr std::string_view ZipEnd = ".zip";
constexpr std::string_view PageEnd = ".html";
constexpr std::string_view StartSound = "gun.wav";

/// Where the toolkit finds its plug-ins: below the program, not at their place on the builder's machine.
constexpr std::string_view ToolkitSettings = "[Paths]\nPrefix = .\nPlugins = plugins\n";

/// Thrown within a build by the step that failed.
struct BuildFailure {
    std::error_code Error;
    fs::path At;
};

void Check(const std::error_code& error, const fs::path& at) {
    if (error) throw BuildFailure{error, at};
}

void MakeFolder(const fs::path& folder) {
    Check(MakeFolders(folder), folder);
}

/// True if a file's folder has less room than another file takes.
bool NoRoomFor(const fs::path& source, const fs::path& target) {
    std::error_code error;
    const std::uintmax_t room = fs::space(target.parent_path(), error).available;
    return !error && room < FileSize(source).value_or(0);
}

void CopyWhole(const fs::path& source, const fs::path& target) {
    MakeFolder(target.parent_path());
    std::error_code error = CopyOver(source, target);
    // The copy itself calls a full disc an input/output error.
    if (error == std::errc::io_error && NoRoomFor(source, target))
        error = std::make_error_code(std::errc::no_space_on_device);
    Check(error, target);
}

/// A short text file in Shift-JIS where its text fits, else in UTF-8.
void WriteLines(const fs::path& file, std::string_view text) {
    const auto bytes = EncodeText(text, TextEncoding::ShiftJis);
    Check(WriteFileAtomically(file, bytes ? *bytes : text), file);
}

/// One build, told as its steps.
class Build {
  public:
    Build(const fs::path& appPath, const DistributionOrder& order, const fs::path& root)
        : appPath_(appPath), order_(order), root_(root) {}

    void MakeFolders() const {
        for (const char* folder : {"raceadmin", "gpsdat", "winddat", "attachment"})
            MakeFolder(root_ / folder);
        if (order_.AttachMap) MakeFolder(root_ / "coastline");
    }

    void CopyProgram(const LibraryListing& listing) {
        const bool minimal = order_.Target == Medium::Web && order_.MinimiseSize;
        const RuntimeFiles files = FindRuntimeFiles(appPath_, minimal, listing);
        for (const RuntimeFile& file : files.Files) CopyWhole(file.Source, root_ / file.Target);
        for (const std::string& name : files.Missing) Miss(name);
        for_ = files.For;
        WriteLines(root_ / "qt.conf", ToolkitSettings);
        CopyOneFile({}, StartSound);
    }

    /// The manual in the language of the package, page and pictures.
    void CopyManual() {
        const std::string_view folder = order_.UseEnglish ? "help-e" : "help";
        for (const std::string& name : ListFiles(FindBelow(appPath_, folder), "*"))
            CopyIfThere(folder, name);
        CopyOneFile(folder, "index.html");
    }

    void WriteSettings() const {
        if (!order_.StartRace.empty())
            WriteLines(root_ / "raceadmin" / "racefile.st", order_.StartRace + "\r\n");
        if (order_.Target == Medium::CdRom) {
            const std::string program(for_.Windows ? WindowsProgramFileName : ProgramFileName);
            WriteLines(root_ / "autorun.inf",
                       "[autorun]\r\nIcon = " + program + "\r\nopen = " + program + "\r\n");
        }
        WriteLines(root_ / "raceadmin" / "ver.00", order_.UseEnglish ? "1,1\r\n" : "1,0\r\n");
    }

    void CopyRaces() {
        for (const std::string& race : order_.RaceNames) CopyOneFile("raceadmin", race);
        for (const std::string& race : order_.RaceNames) GatherRaceFiles(race);
        if (order_.AttachMap) WriteShores();
        if (order_.AttachMap) CopyMapLicences();
    }

    std::vector<std::string> TakeMissing() { return std::move(missing_); }
    const Systems& For() const { return for_; }

  private:
    void GatherRaceFiles(const std::string& raceName) {
        RaceControl race;
        race.RaceFileName = raceName;
        if (!ReadRaceFileForDistribution(appPath_, race)) return;
        for (const BoatEntry& boat : race.Boats)
            CopyOneFile("gpsdat", TrackFileName(appPath_, boat.BoatFile));
        CopyOneFile("winddat", race.WindFileName);
        if (order_.AttachMap) CopyMap(race);
        for (const std::string& file : race.AttachFile) CopyOneFile("attachment", file);
    }

    /// The coast of a race. Squares of open water have no file. A race that was never saved on the
    /// display does not name its squares: they follow from its tracks.
    void CopyMap(const RaceControl& race) {
        for (const std::string& name : race.MapFile) CopyIfThere("coastline", name);
        RaceNumbers numbers;
        numbers.race.RaceFileName = race.RaceFileName;
        LoadRace(appPath_, numbers);
        if (HasAnyFix(numbers.tracks)) areas_.push_back(CoastAreaOf(numbers));
        if (!race.MapFile.Empty()) return;
        for (const std::string& cell : numbers.race.MapFile) CopyIfThere("coastline", cell + ".cst");
    }

    /// Of the shore files what lies round the races alone: some kilobytes of megabytes.
    void WriteShores() const {
        const std::string shores = CutShores(appPath_, areas_);
        const fs::path file = root_ / "coastline" / WorldShoreFile;
        if (!shores.empty()) Check(WriteFileAtomically(file, shores), file);
    }

    /// The coast data may be handed on with their notice and licence texts alone. Data of the person's own
    /// may have none.
    void CopyMapLicences() const {
        for (const std::string_view name : {"NOTICE", "COPYING", "COPYING.LESSER"})
            CopyIfThere("coastline", name);
    }

    /// Copies a file to the same folder and name below the root; one that is not there is noted.
    void CopyOneFile(std::string_view folder, std::string_view name) {
        if (!name.empty() && !CopyIfThere(folder, name)) Miss(PlaceOf(folder, name).generic_string());
    }

    bool CopyIfThere(std::string_view folder, std::string_view name) const {
        const fs::path source = FindBelow(FindBelow(appPath_, folder), name);
        if (name.empty() || !IsFile(source)) return false;
        CopyWhole(source, root_ / PlaceOf(folder, name));
        return true;
    }

    /// The name below its folder as a path: a name with backslashes lies in folders here.
    static fs::path PlaceOf(std::string_view folder, std::string_view name) {
        std::string place(name);
        std::ranges::replace(place, '\\', '/');
        return PathOf(folder) / PathOf(place);
    }

    void Miss(const std::string& name) {
        if (std::ranges::find(missing_, name) == missing_.end()) missing_.push_back(name);
    }

    const fs::path& appPath_;
    const DistributionOrder& order_;
    const fs::path& root_;
    std::vector<std::string> missing_;
    Systems for_;
    std::vector<CoastArea> areas_;  ///< of the races with a coast to bring
};

/// The page of an order: the race to be shown at start goes first.
DistributionResult BuildPage(const fs::path& appPath, const DistributionOrder& order) {
    PageOrder page{.Tree = appPath,
                   .RaceNames = order.RaceNames,
                   .UseEnglish = order.UseEnglish,
                   .AttachMap = order.AttachMap};
    const auto first = std::ranges::find(page.RaceNames, order.StartRace);
    if (first != page.RaceNames.end()) std::rotate(page.RaceNames.begin(), first, first + 1);
    WrittenPage written = WritePage(page, PagePath(appPath, order.FolderName + std::string(PageEnd)));
    DistributionResult result;
    result.Error = written.Error;
    (written.Error ? result.FailedAt : result.Folder) = written.At;
    result.Missing = std::move(written.Missing);
    return result;
}

/// A page for each race in a folder; what they lack.
std::vector<std::string> BuildPages(const fs::path& appPath, const DistributionOrder& order,
                                    const fs::path& folder) {
    std::vector<std::string> missing;
    MakeFolder(folder);
    for (const std::string& race : order.RaceNames) {
        const PageOrder page{.Tree = appPath,
                             .RaceNames = {race},
                             .UseEnglish = order.UseEnglish,
                             .AttachMap = order.AttachMap};
        WrittenPage written = WritePage(page, folder / PathOf(PageFileName(race)));
        Check(written.Error, written.At);
        for (std::string& file : written.Missing)
            if (std::ranges::find(missing, file) == missing.end()) missing.push_back(std::move(file));
    }
    return missing;
}

/// Packs a finished folder beside itself; the packed file, or nothing, and nothing left of it, if that
/// fails.
fs::path Pack(const fs::path& distribution, const std::string& folderName, bool asZip) {
    fs::path packed = distribution / PathOf(folderName + std::string(asZip ? ZipEnd : TarEnd));
    if (asZip) return PackZip(distribution / PathOf(folderName), packed) ? fs::path() : packed;
    fs::path unfinished = packed;
    unfinished += UnfinishedMark;
    std::string nothing;
    const int status =
        RunAndWait({"tar", "--create", "--gzip", "--file", unfinished.string(), "--force-local",
                    "--owner=0", "--group=0", "--directory", distribution.string(), "--", folderName},
                   nothing);
    if (status == 0 && !MoveTo(unfinished, packed)) return packed;
    RemoveFile(unfinished);
    return {};
}

}  // namespace

std::optional<Text> FolderNameTrouble(std::string_view name) {
    if (Trim(name).empty())
        return Text{"Input the name of the folder", "収納するフォルダー名を入れてください"};
    // The packer would take a minus for a switch.
    if (!EverySystemTakes(name) || name.front() == '.' || name.front() == '-' ||
        name.ends_with(UnfinishedMark))
        return Text{
            "A folder name must not hold / \\ : * ? \" < > | nor begin with a point or a minus, "
            "nor be one that Windows keeps for itself, such as CON",
            "フォルダー名に / \\ : * ? \" < > | は使えません。先頭の . と - も使えません。CON など "
            "Windows が予約している名前も使えません。"};
    return std::nullopt;
}

bool DistributionExists(const fs::path& appPath, std::string_view folderName) {
    const fs::path distribution = FindBelow(appPath, DistributionFolder);
    return std::ranges::any_of(
        std::initializer_list<std::string_view>{"", TarEnd, ZipEnd, PageEnd}, [&](std::string_view end) {
            return PathExists(FindBelow(distribution, std::string(folderName) + std::string(end)));
        });
}

DistributionResult BuildDistribution(const fs::path& appPath, const DistributionOrder& order,
                                     const LibraryListing& listing) {
    const fs::path distribution = FindBelow(appPath, DistributionFolder);
    const fs::path root = distribution / PathOf(order.FolderName);
    const fs::path unfinished = distribution / PathOf(order.FolderName + std::string(UnfinishedMark));
    if (order.Target == Medium::Page && !order.PageForEach) return BuildPage(appPath, order);
    DistributionResult result;
    try {
        Check(RemoveAll(unfinished), unfinished);  // of a build that was cut short
        if (order.Target == Medium::Page) {
            result.Missing = BuildPages(appPath, order, unfinished);
        } else {
            Build build(appPath, order, unfinished);
            build.MakeFolders();
            build.CopyProgram(listing);
            build.CopyManual();
            build.WriteSettings();
            build.CopyRaces();
            result.Missing = build.TakeMissing();
            result.For = build.For();
        }
        Check(MoveTo(unfinished, root), root);
    } catch (const BuildFailure& failure) {
        [[maybe_unused]] const auto untold = RemoveAll(unfinished);  // what failed first is told
        result.Error = failure.Error;
        result.FailedAt = failure.At;
        return result;
    }
    result.Folder = root;
    if (order.Target == Medium::Web)
        result.Packed = Pack(distribution, order.FolderName, result.For.Windows);
    return result;
}

}  // namespace keelview
