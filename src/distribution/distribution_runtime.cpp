#include "distribution/distribution_runtime.h"

#include <QCoreApplication>
#include <algorithm>
#include <array>
#include <initializer_list>
#include <optional>
#include <set>
#include <system_error>

#include "base/files.h"
#include "base/paths.h"
#include "base/strings.h"
#include "base/system_files.h"
#include "distribution/process.h"

namespace keelview {

namespace fs = std::filesystem;

namespace {

// The C library and its loader go together with the system's own data; a copy of another age would break.
constexpr std::array<std::string_view, 11> SystemLibraries{
    "linux-vdso",    "linux-gate", "ld-linux",     "libc.so",  "libm.so",   "libmvec.so",
    "libpthread.so", "libdl.so",   "libresolv.so", "librt.so", "libutil.so"};

constexpr std::string_view CoreLibrary = "libQt6Core.so";

/// Plug-ins of the toolkit below its plug-in folder: a file, or all files of a folder.
struct PlugIn {
    std::string_view Place;
    bool Needed;  ///< else it is taken along where this machine has it
};
constexpr std::array<PlugIn, 7> PlugIns{{
    {"platforms/libqxcb.so", true},
    {"platforms/libqwayland-generic.so", false},
    {"platforms/libqwayland-egl.so", false},
    {"wayland-shell-integration", false},
    {"wayland-decoration-client", false},
    {"wayland-graphics-integration-client", false},
    {"platforminputcontexts", false},
}};

constexpr std::array<std::string_view, 3> FontFiles{"LiberationSans-Regular.ttf", "LiberationSans-Bold.ttf",
                                                    "VL-PGothic-Regular.ttf"};
constexpr std::array<std::string_view, 2> FontFolders{"/usr/share/fonts", "/usr/local/share/fonts"};

bool BelongsToSystem(std::string_view name) {
    return std::ranges::any_of(SystemLibraries,
                               [name](std::string_view system) { return name.starts_with(system); });
}

/// Collects run-time files, each target once, with the libraries that each of them needs.
class Collector {
  public:
    explicit Collector(const LibraryListing& listing) : listing_(listing) {}

    void Add(const fs::path& source, const fs::path& target) {
        if (targets_.insert(target).second) found_.Files.push_back({source, target});
    }
    void AddWithLibraries(const fs::path& source, const fs::path& target) {
        Add(source, target);
        AddLibrariesOf(source);
    }
    void AddLibrariesOf(const fs::path& program) {
        for (const LoadedLibrary& library : ParseLibraryListing(listing_(program))) {
            if (library.Path.empty()) {
                Miss(library.Name);
                continue;
            }
            if (library.Name.starts_with(CoreLibrary)) core_ = library.Path;
            Add(library.Path, fs::path("lib") / library.Name);
        }
    }
    void Miss(std::string name) {
        if (std::ranges::find(found_.Missing, name) == found_.Missing.end())
            found_.Missing.push_back(std::move(name));
    }
    /// Where the toolkit's core library lies, once a program that needs it was added.
    const fs::path& Core() const { return core_; }
    Systems& For() { return found_.For; }
    RuntimeFiles Take() { return std::move(found_); }

  private:
    const LibraryListing& listing_;
    RuntimeFiles found_;
    std::set<fs::path> targets_;
    fs::path core_;
};

/// The toolkit's plug-in folder: that of a distribution, that of a system, that of a toolkit of its own.
fs::path PlugInFolder(const fs::path& appPath, const fs::path& coreLibrary) {
    const fs::path lib = coreLibrary.parent_path();
    for (const fs::path& folder :
         {appPath / "plugins", lib / "qt6" / "plugins", lib.parent_path() / "plugins"}) {
        if (PathExists(folder / "platforms")) return folder;
    }
    return {};
}

void AddPlugIns(const fs::path& folder, bool minimal, Collector& files) {
    for (const PlugIn& plugIn : PlugIns) {
        if (minimal && !plugIn.Needed) continue;
        const fs::path source = folder / plugIn.Place;
        const fs::path target = fs::path("plugins") / plugIn.Place;
        if (IsFile(source)) {
            files.AddWithLibraries(source, target);
        } else if (plugIn.Needed) {
            files.Miss(std::string(plugIn.Place));
        } else {
            for (const std::string& name : ListFiles(source, "*.so"))
                files.AddWithLibraries(source / name, target / name);
        }
    }
}

/// A file of this name anywhere below a folder.
std::optional<fs::path> FindDeep(const fs::path& folder, std::string_view name) {
    for (const fs::path& file : FilesBelow(folder))
        if (file.filename() == name) return file;
    return std::nullopt;
}

/// Of the folders where a program for Windows may lie the first that has one; empty if none has.
fs::path WindowsFolder(const fs::path& appPath) {
    const fs::path running = PathOf(QCoreApplication::applicationDirPath().toStdString());
    for (const fs::path& folder : {appPath, appPath / "windows", running, running / "windows"})
        if (IsFile(folder / WindowsProgramFileName)) return folder;
    return {};
}

/// There libraries lie beside the program, and with all of it go the licences that allow to hand it on.
void AddWindowsProgram(const fs::path& folder, Collector& files) {
    files.Add(folder / WindowsProgramFileName, WindowsProgramFileName);
    for (const std::string& name : ListFiles(folder, "*.dll")) files.Add(folder / name, name);
    for (const char* part : {"plugins", "licences"})
        for (const fs::path& file : FilesBelow(folder / part))
            files.Add(file, file.lexically_relative(folder));
    files.For().Windows = true;
}

/// The program for the system that this one runs on, unless that is Windows, where nobody lists libraries.
void AddOwnProgram(const fs::path& program, bool minimal, Collector& files) {
    files.AddWithLibraries(program, ProgramFileName);
    AddPlugIns(PlugInFolder(program.parent_path(), files.Core()), minimal, files);
    files.For().Own = true;
}

void AddFonts(std::vector<fs::path> folders, Collector& files) {
    folders.insert(folders.end(), FontFolders.begin(), FontFolders.end());
    for (const std::string_view font : FontFiles) {
        std::optional<fs::path> found;
        for (const fs::path& folder : folders)
            if (!found) found = FindDeep(folder, font);
        if (found)
            files.Add(*found, fs::path("fonts") / font);
        else
            files.Miss(std::string(font));
    }
}

}  // namespace

std::vector<LoadedLibrary> ParseLibraryListing(std::string_view listing) {
    constexpr std::string_view Arrow = " => ";
    std::vector<LoadedLibrary> libraries;
    for (const std::string_view line : Lines(listing)) {
        const auto arrow = line.find(Arrow);
        if (arrow == std::string_view::npos) continue;
        const std::string_view name = Trim(line.substr(0, arrow));
        std::string_view path = line.substr(arrow + Arrow.size());
        path = Trim(path.substr(0, path.rfind(" (")));
        if (BelongsToSystem(name)) continue;
        libraries.push_back({std::string(name), path == "not found" ? fs::path() : fs::path(path)});
    }
    return libraries;
}

std::string AskLoader(const fs::path& program) {
    std::string listing;
    RunAndWait({"ldd", program.string()}, listing);
    return listing;
}

RuntimeFiles FindRuntimeFiles(const fs::path& appPath, bool minimal, const LibraryListing& listing) {
    Collector files(listing);
    const fs::path program = appPath / ProgramFileName;
    const fs::path windows = WindowsFolder(appPath);
    if (IsFile(program) && !listing(program).empty()) AddOwnProgram(program, minimal, files);
    if (!windows.empty()) AddWindowsProgram(windows, files);
    if (files.For().Own || files.For().Windows)
        AddFonts({appPath / "fonts", windows / "fonts"}, files);
    else
        files.Miss(std::string(ProgramFileName));
    return files.Take();
}

}  // namespace keelview
