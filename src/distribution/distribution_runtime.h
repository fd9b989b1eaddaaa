#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace keelview {

// Which files make the program start on a machine that has never seen it. On Linux: the shared libraries
// that it and its platform plug-in need, and the plug-in. On Windows: what lies in the program's folder
// there. On both: the faces of its texts.

/// The program's own file, below its folder and at the top of a distribution.
inline constexpr std::string_view ProgramFileName = "keelview";
inline constexpr std::string_view WindowsProgramFileName = "keelview.exe";

/// One file with its place in a distribution.
struct RuntimeFile {
    std::filesystem::path Source;
    std::filesystem::path Target;  ///< below the distribution's top folder
};

/// The systems that a distribution starts on.
struct Systems {
    bool Own = false;  ///< the kind of system and processor of this program, unless that is Windows
    bool Windows = false;
};

/// All that a distribution needs to start.
struct RuntimeFiles {
    std::vector<RuntimeFile> Files;    ///< no target twice
    std::vector<std::string> Missing;  ///< what the program needs and this machine does not have
    Systems For;
};

/// One line of what the system's loader says about a program.
struct LoadedLibrary {
    std::string Name;
    std::filesystem::path Path;  ///< empty where the loader found none
};

/// Reads the listing of ldd: "name => path (address)" and "name => not found". The loader itself, the
/// kernel's page and the C library are left out, as they belong to the system on which a program runs.
std::vector<LoadedLibrary> ParseLibraryListing(std::string_view listing);

/// What ldd says about a program or library; empty if it cannot be asked.
std::string AskLoader(const std::filesystem::path& program);

/// Gives the loader's listing for a file.
using LibraryListing = std::function<std::string(const std::filesystem::path& file)>;

/// All run-time files of the program in `appPath`; `minimal` leaves out the plug-ins that an X window does
/// not need. Libraries go to "lib", plug-ins to "plugins", faces to "fonts". The program for Windows is
/// taken from the folder of the data or of the running program, or from a folder `windows` in them, where
/// it is.
RuntimeFiles FindRuntimeFiles(const std::filesystem::path& appPath, bool minimal,
                              const LibraryListing& listing = AskLoader);

}  // namespace keelview
