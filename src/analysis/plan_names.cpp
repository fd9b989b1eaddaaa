#include "analysis/plan_names.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <set>

#include "base/dates.h"
#include "base/file_names.h"
#include "base/strings.h"

namespace keelview {

namespace {

constexpr std::size_t LongestName = 80;  // bytes
constexpr std::size_t DateLength = 10;   // of "2025-06-21"
constexpr std::string_view WordEnds = " _-.+()[]";

bool EndsWord(char c) {
    return WordEnds.find(c) != std::string_view::npos;
}

/// The part of a name behind its folders.
std::string_view FileOf(std::string_view name) {
    return name.substr(name.rfind('/') + 1);
}

/// The folder that a file lies in, without those above it; empty where none is told.
std::string_view FolderOf(std::string_view name) {
    const std::size_t end = name.rfind('/');
    return end == std::string_view::npos ? std::string_view{} : FileOf(name.substr(0, end));
}

/// A file's name without its ending, and without that of a packed one: "track" of "track.gpx.gz".
std::string_view StemOf(std::string_view name) {
    std::string_view stem = FileOf(name);
    if (stem.size() > 3 && EqualNoCase(stem.substr(stem.size() - 3), ".gz")) stem.remove_suffix(3);
    const std::size_t point = stem.rfind('.');
    return point == std::string_view::npos || point == 0 ? stem : stem.substr(0, point);
}

/// A text as one line, blanks at its ends taken off, not longer than names are, and no letter cut.
std::string OneLine(std::string_view text) {
    std::string line(text);
    for (char& c : line)
        if (static_cast<unsigned char>(c) < ' ' || c == 0x7F) c = ' ';
    if (line.size() > LongestName) {
        std::size_t end = LongestName;
        while (end > 0 && (static_cast<unsigned char>(line[end]) & 0xC0U) == 0x80U) --end;
        line.resize(end);
    }
    return std::string(Trim(line));
}

/// Without what ends words at both ends of it.
std::string_view Bare(std::string_view text) {
    while (!text.empty() && EndsWord(text.front())) text.remove_prefix(1);
    while (!text.empty() && EndsWord(text.back())) text.remove_suffix(1);
    return text;
}

std::size_t CommonHead(const std::vector<std::string_view>& names) {
    std::size_t length = names.front().size();
    for (const std::string_view name : names) {
        const auto [end, other] = std::ranges::mismatch(names.front(), name);
        length = std::min(length, static_cast<std::size_t>(end - names.front().begin()));
    }
    return length;
}

/// The bytes that all names begin with, up to the end of a word.
std::size_t CommonWords(const std::vector<std::string_view>& names) {
    std::size_t length = CommonHead(names);
    while (length > 0 && !EndsWord(names.front()[length - 1])) --length;
    return length;
}

/// The names without the words that all begin with and all end with.
std::vector<std::string> Distinctive(const std::vector<std::string_view>& names) {
    std::vector<std::string> kept(names.begin(), names.end());
    if (names.size() < 2) return kept;
    const std::size_t head = CommonWords(names);
    std::vector<std::string> turned;
    turned.reserve(names.size());
    for (const std::string_view name : names)
        turned.emplace_back(name.rbegin(), name.rend() - static_cast<std::ptrdiff_t>(head));
    const std::size_t tail = CommonWords({turned.begin(), turned.end()});
    for (std::string& name : kept)
        if (const auto bare = Bare(std::string_view(name).substr(head, name.size() - head - tail));
            !bare.empty())
            name = std::string(bare);
    return kept;
}

/// The stems of the files, the folder's name in place of one that several have.
std::vector<std::string> FileNames(const std::vector<FoundFile>& files) {
    std::map<std::string_view, int> uses;
    for (const FoundFile& file : files) ++uses[StemOf(file.Name)];
    std::vector<std::string_view> names;
    for (const FoundFile& file : files) {
        const std::string_view stem = StemOf(file.Name);
        const std::string_view folder = FolderOf(file.Name);
        names.push_back(uses[stem] > 1 && !folder.empty() ? folder : stem);
    }
    return names.empty() ? std::vector<std::string>{} : Distinctive(names);
}

/// The name that a recording gives its boat, where it does not begin with a date.
std::string ToldName(const FoundTrack& track) {
    std::string name = OneLine(track.Boat);
    return ParseDateTime(std::string_view(name).substr(0, DateLength)) ? std::string{} : name;
}

/// Which names that recordings tell are those of boats.
class ToldNames {
  public:
    explicit ToldNames(const std::vector<FoundFile>& files) {
        for (const FoundFile& file : files) {
            std::set<std::string> told;
            for (const FoundTrack& track : file.Tracks) told.insert(ToldName(track));
            for (const std::string& name : told) ++uses_[name];
        }
        for (const FoundFile& file : files)
            for (const FoundTrack& track : file.Tracks) {
                if (!track.Alone) continue;
                ++alone_[file.Format];
                if (IsOwn(track)) ++own_[file.Format];
            }
    }

    bool Holds(const FoundFile& file, const FoundTrack& track) const {
        if (!IsOwn(track)) return false;
        return !track.Alone ||
               (alone_.at(file.Format) > 1 && own_.at(file.Format) == alone_.at(file.Format));
    }

  private:
    bool IsOwn(const FoundTrack& track) const {
        const std::string name = ToldName(track);
        return !name.empty() && uses_.at(name) == 1;
    }

    std::map<std::string, int> uses_;   // in how many files each occurs
    std::map<std::string, int> alone_;  // by format, files of one recording
    std::map<std::string, int> own_;    // of them, those that tell a name of their own
};

bool IsTaken(const std::string& name, const std::vector<std::string>& taken) {
    return std::ranges::any_of(taken, [&](const std::string& other) { return EqualNoCase(other, name); });
}

std::string Numbered(std::string_view name, int number, std::string_view ending = {}) {
    return std::string(name) + " (" + std::to_string(number) + ")" + std::string(ending);
}

}  // namespace

std::string SafeFileName(std::string_view text) {
    std::string name = OneLine(text);
    for (char& c : name)
        if (std::string_view("/\\:*?\"<>|,#").find(c) != std::string_view::npos) c = '_';
    while (!name.empty() && (name.back() == '.' || name.back() == ' ')) name.pop_back();
    if (name.starts_with('.')) name.front() = '_';
    if (name.empty()) return "race";
    return EverySystemTakes(name) ? name : "_" + name;
}

std::string FreeName(const std::string& name, const std::vector<std::string>& taken) {
    if (!IsTaken(name, taken)) return name;
    const std::string_view stem = StemOf(name);
    for (int number = 2;; ++number)
        if (std::string free = Numbered(stem, number, std::string_view(name).substr(stem.size()));
            !IsTaken(free, taken))
            return free;
}

std::vector<std::string> TargetNames(const std::vector<FoundFile>& files) {
    std::vector<std::string> names;
    for (const FoundFile& file : files) {
        std::string name = SafeFileName(FileOf(file.Name));
        const std::string_view folder = FolderOf(file.Name);
        if (IsTaken(name, names) && !folder.empty())
            name = SafeFileName(std::string(folder).append("-").append(name));
        names.push_back(FreeName(name, names));
    }
    return names;
}

std::vector<std::string> BoatNames(const std::vector<FoundFile>& files) {
    const ToldNames told(files);
    const std::vector<std::string> fileNames = FileNames(files);
    std::vector<std::string> names;
    for (std::size_t file = 0; file < files.size(); ++file) {
        for (const FoundTrack& track : files[file].Tracks) {
            std::string name = ToldName(track);
            if (!told.Holds(files[file], track)) {
                name = OneLine(fileNames[file]);
                if (!track.Alone) name += " " + std::to_string(track.Number);
            }
            const std::string first = name;
            for (int number = 2; IsTaken(name, names); ++number) name = Numbered(first, number);
            names.push_back(std::move(name));
        }
    }
    return names;
}

std::string CommonTitle(const std::vector<std::string>& fileNames) {
    if (fileNames.empty()) return {};
    std::vector<std::string_view> stems;
    stems.reserve(fileNames.size());
    for (const std::string& name : fileNames) stems.push_back(StemOf(name));
    std::string_view title =
        stems.size() > 1 ? Bare(stems.front().substr(0, CommonWords(stems))) : stems.front();
    const std::string_view folder = FolderOf(fileNames.front());
    const bool together =
        std::ranges::all_of(fileNames, [&](const std::string& name) { return FolderOf(name) == folder; });
    if (title.empty() && together) title = folder;
    std::string words = OneLine(title);
    std::ranges::replace(words, '_', ' ');
    return words;
}

}  // namespace keelview
