#include "shell/data_folder.h"

#include <array>
#include <system_error>

#include "base/files.h"
#include "base/folders.h"
#include "base/paths.h"
#include "racedata/start_files.h"

namespace keelview {

namespace {

namespace fs = std::filesystem;

constexpr const char* RaceFolder = "raceadmin";
constexpr const char* CoastFolder = "coastline";
constexpr const char* StartFolder = "start";  // Ver.00 and racefile.st by language

/// What a person's folder is laid out with; the race folder last, as it tells that all is there.
constexpr std::array<const char*, 9> DataNames{"gpsdat", "winddat", "attachment", CoastFolder, "help",
                                               "help-e", "gun.wav", "tools",      RaceFolder};

bool IsFolder(const fs::path& path) {
    std::error_code error;
    return fs::is_directory(path, error);
}

/// The user owns what was copied, a file or all that is in a folder, and may write it.
std::error_code MakeWritable(const fs::path& to) {
    std::error_code error;
    fs::permissions(to, fs::perms::owner_write, fs::perm_options::add, error);
    if (error || !IsFolder(to)) return error;
    for (fs::recursive_directory_iterator entry(to, error), end; !error && entry != end;
         entry.increment(error))
        fs::permissions(entry->path(), fs::perms::owner_write, fs::perm_options::add, error);
    return error;
}

/// Copies the files of a folder over those of another; none where there is no such folder.
std::error_code CopyFilesOver(const fs::path& from, const fs::path& to) {
    for (const std::string& name : ListFiles(from, "*"))
        if (const std::error_code error = CopyOver(from / PathOf(name), to / PathOf(name))) return error;
    return {};
}

/// Copies an entry of the shared data that the folder lacks: aside first, so that it is there whole or not
/// at all. What is not shared is not copied.
std::error_code LayOutEntry(const fs::path& shared, const fs::path& folder, const std::string& name,
                            const fs::path& startFiles) {
    std::error_code error;
    const fs::path source = FindBelow(shared, name);
    if (fs::exists(folder / name, error) || !fs::exists(source, error)) return {};
    const fs::path aside = folder / (".new-" + name);
    fs::remove_all(aside, error);
    if (!error) fs::copy(source, aside, fs::copy_options::recursive, error);
    if (!error && name == RaceFolder) error = CopyFilesOver(startFiles, aside);
    if (!error) error = MakeWritable(aside);
    if (!error) fs::rename(aside, folder / name, error);
    return error;
}

/// Copies what the folder lacks.
std::error_code LayOut(const fs::path& shared, const fs::path& folder, const fs::path& startFiles) {
    std::error_code error;
    fs::create_directories(folder, error);
    for (const char* name : DataNames)
        if (!error) error = LayOutEntry(shared, folder, name, startFiles);
    return error;
}

/// Copies the coasts that the folder lacks: a newer program may come with more. From one on that cannot be
/// copied they are for the next start.
void AddCoasts(const fs::path& shared, const fs::path& folder) {
    std::error_code error;
    if (!IsFolder(folder / CoastFolder)) return;
    for (fs::directory_iterator entry(shared / CoastFolder, error), end; !error && entry != end;
         entry.increment(error))
        if (LayOutEntry(shared / CoastFolder, folder / CoastFolder, entry->path().filename().string(), {}))
            return;
}

/// Leads a link in the folder to the program, unless something of the user's has its name.
void LinkProgram(const fs::path& program, const fs::path& folder) {
    const fs::path link = folder / program.filename();
    std::error_code error;
    if (fs::is_symlink(link, error)) {
        if (fs::read_symlink(link, error) == program) return;
        fs::remove(link, error);
    }
    fs::create_symlink(program, link, error);
}

/// Whether a person may write there; nothing but trying tells that on every system.
bool MayWrite(const fs::path& folder) {
    const fs::path trial = folder / ".trial";
    const bool may = !WriteFileAtomically(trial, {});
    RemoveFile(trial);
    return may;
}

bool ShowsOnly(const fs::path& folder) {
    return !ReadStartSettings(folder).EditMode;
}

}  // namespace

fs::path SettleDataFolder(const fs::path& program, const fs::path& userFolder, bool japanese) {
    fs::path programFolder = program.parent_path();
    const fs::path races = FindBelow(programFolder, RaceFolder);
    if (IsFolder(races) && (ShowsOnly(programFolder) || MayWrite(races))) return programFolder;
    fs::path shared =
        IsFolder(races) ? programFolder : (programFolder / ".." / "share" / "keelview").lexically_normal();
    if (!IsFolder(FindBelow(shared, RaceFolder))) return programFolder;
    const fs::path startFiles = shared / StartFolder / (japanese ? "ja" : "en");
    if (!IsFolder(FindBelow(userFolder, RaceFolder)) && LayOut(shared, userFolder, startFiles))
        return shared;
    AddCoasts(shared, userFolder);
    LinkProgram(program, userFolder);
    return userFolder;
}

}  // namespace keelview
