#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace keelview {

// A page is one HTML file that holds the program, races and all that belongs to them, and shows them in any
// browser, without a network.

/// The name of the file that the program of a page lies in; beside the program, or among what it shares.
inline constexpr std::string_view PageProgramName = "keelview-page.html";

/// Where that file lies: in one of the folders, the first goes first; an empty path where it is in none.
std::filesystem::path FindPageProgram(const std::vector<std::filesystem::path>& folders);

/// The name of the page of one race, after its race control file.
std::string PageFileName(std::string_view raceFile);

/// What a page is to hold.
struct PageOrder {
    std::filesystem::path Tree;          ///< with raceadmin, gpsdat, winddat, coastline and attachment
    std::vector<std::string> RaceNames;  ///< race control files; the first is shown at first
    std::optional<bool> UseEnglish;      ///< else the language of the browser
    bool AttachMap = true;               ///< with the coast around the races
};

/// What came of making a page.
struct Page {
    std::string Html;                  ///< the file's bytes; empty where there is trouble
    std::vector<std::string> Missing;  ///< files that a race names and that are not there, each once
    std::string Trouble;               ///< a file that cannot be read: the program, or a race
};

/// Makes the page of an order with the bytes of the page program. The same files give the same bytes. Of
/// race and wind files the text is kept, of tracks what reading them gave, of documents every byte.
Page MakePage(const PageOrder& order, const std::filesystem::path& program);

/// The bytes as a gzip file, the same on every system (RFC 1952).
std::string Gzipped(std::string_view bytes);

}  // namespace keelview
