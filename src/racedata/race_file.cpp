#include "racedata/race_file.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <optional>
#include <unordered_map>
#include <utility>

#include "base/files.h"
#include "base/strings.h"
#include "base/text_encoding.h"
#include "racedata/gps_track.h"
#include "racedata/wind_file.h"

namespace keelview {

namespace {

constexpr std::uintmax_t FileLimit = 16U << 20U;
constexpr float DefaultBoatLength = StandardBoatLength;  // in single precision, as everywhere in the files
constexpr int LeadSeconds = 30;                          // of data kept before the pre-start
constexpr int EditorLeadSeconds = 300;

/// Which of the three readers is at work.
enum class Reader { Display, Editor, Distribution };

std::filesystem::path RacePath(const std::filesystem::path& appPath, const std::string& name) {
    return FindBelow(appPath, "raceadmin/" + name);
}

/// The leading number of a text; 0 where it is beyond all that is meant.
double UsableNumber(std::string_view text) {
    const double value = LenientNumber(text);
    return std::fabs(value) <= LargestNumber ? value : 0.0;
}

std::optional<int> WholeNumber(std::string_view text, int lowest, int highest) {
    const auto value = StrictNumber(text);
    if (!value || *value < lowest || *value > highest || *value != std::floor(*value)) return {};
    return static_cast<int>(*value);
}

/// Takes lines into a race, one by one.
class LineReader {
  public:
    LineReader(RaceControl& race, Reader reader) : race_(race), reader_(reader) {}

    /// False for a line that says nothing to this reader.
    bool Read(std::string_view line) {
        if (line.find(',') == std::string_view::npos) return false;
        std::string_view key = CutHead(line, ',');
        if (reader_ != Reader::Editor) key = Trim(key);
        if (key == "WF") return Take(race_.WindFileName, line);
        if (key == "BN") return ReadBoat(line);
        if (key == "AT") return ReadAttachment(line);
        if (reader_ == Reader::Distribution) return key == "MAP" && ReadCell(line);
        if (key == "T1") return Take(race_.RaceTitle1, line);
        if (key == "T2") return Take(race_.RaceTitle2, line);
        if (key == "T3") return Take(race_.RaceTitle3, line);
        if (key == "ST") return Take(race_.Start, line);
        if (key == "FT") return Take(race_.Finish, line);
        return ReadNumbers(key, line) || ReadCourse(key, line);
    }

    /// Sets the clocks of the boats; how many of them belong to no boat.
    int SetClocks() {
        int left = 0;
        for (const auto& [boat, seconds] : clocks_) {
            if (race_.Boats.Holds(boat))
                race_.Boats[boat].ClockOffset = seconds;
            else
                ++left;
        }
        return left;
    }

  private:
    static bool Take(std::string& target, std::string_view rest) {
        target = Trim(rest);
        return true;
    }
    static bool Take(RaceTime& target, std::string_view rest) {
        target = RaceTime(std::string(Trim(rest)));
        return true;
    }
    static bool Take(double& target, std::string_view rest) {
        target = UsableNumber(rest);
        return true;
    }
    static TextNumber Number(std::string_view field) { return TextNumber(std::string(Trim(field))); }

    bool ReadNumbers(std::string_view key, std::string_view rest) {
        if (key == "MG") return Take(race_.MagVariation, rest);
        if (key == "WD") return Take(race_.WindDirection, rest);
        if (key == "LG") return ReadLength(rest);
        if (key == "BO") return Take(race_.BowAhead, rest);
        if (key == "NU") return (race_.NorthUp = LenientNumber(rest) > 0), true;
        if (key == "TD") return ReadTimeDiff(rest);
        if (key == "LL") return ReadLayLines(rest);
        if (key == "PT") return ReadHandPass(rest);
        if (key == "CL") return ReadClock(rest);
        if (key != "BT") return false;
        // More than a week before the start is no pre-start.
        race_.PreStartMinutes = std::clamp(UsableNumber(rest), 0.0, 10080.0);
        return true;
    }

    bool ReadLength(std::string_view rest) {
        if (reader_ != Reader::Editor) return Take(race_.BoatLength, rest);
        return StrictNumber(rest) && Take(race_.BoatLength, rest);
    }

    bool ReadTimeDiff(std::string_view rest) {
        const auto hours = ParseTimeDiff(rest);
        if (hours) race_.TimeDiff = hours;
        return hours.has_value();
    }

    bool ReadLayLines(std::string_view rest) {
        if (rest.find(',') == std::string_view::npos) return false;
        const double up = UsableNumber(CutHead(rest, ','));
        const double down = UsableNumber(rest);
        if (up != 0) race_.LayLineUp = up;
        if (down != 0) race_.LayLineDown = down;
        return true;
    }

    bool ReadCourse(std::string_view key, std::string_view rest) {
        if (key == "MK") return ReadMark(rest);
        if (key == "LN") return ReadLine(rest);
        if (key != "CRS") return false;
        for (const std::string_view piece : Split(rest, ',')) {
            if (!race_.CourseOrder.Add(std::string(Trim(piece)))) return false;
        }
        return true;
    }

    bool ReadBoat(std::string_view rest) {
        if (rest.find(',') == std::string_view::npos) return false;
        const std::string_view file = CutHead(rest, ',');
        return race_.Boats.Add({std::string(Trim(file)), std::string(Trim(rest))});
    }

    bool ReadMark(std::string_view rest) {
        if (std::ranges::count(rest, ',') < 1) return false;
        const std::string_view lat = CutHead(rest, ',');
        return race_.Marks.Add({Number(lat), Number(rest)});
    }

    bool ReadLine(std::string_view rest) {
        if (std::ranges::count(rest, ',') < 3) return false;
        const std::string_view lat1 = CutHead(rest, ',');
        const std::string_view lon1 = CutHead(rest, ',');
        const std::string_view lat2 = CutHead(rest, ',');
        const std::string_view lon2 = CutHead(rest, ',');
        return race_.Lines.Add({Number(lat1), Number(lon1), Number(lat2), Number(lon2)});
    }

    /// A later line about the same boat and entry takes the place of the earlier one.
    bool ReadHandPass(std::string_view rest) {
        if (std::ranges::count(rest, ',') != 2) return false;
        const auto boat = WholeNumber(CutHead(rest, ','), 1, MaxBoats);
        const auto entry = WholeNumber(CutHead(rest, ','), 1, MaxCourseEntries);
        const auto seconds = WholeNumber(rest, -LongestRace, LongestRace);
        if (!boat || !entry || (!seconds && Trim(rest) != "-")) return false;
        const auto cell = [](const HandPass& pass) { return std::pair(pass.BoatNumber, pass.Entry); };
        const HandPass pass{*boat, *entry, seconds};
        const auto at = std::ranges::lower_bound(race_.HandPasses, cell(pass), {}, cell);
        if (at != race_.HandPasses.end() && cell(*at) == cell(pass))
            *at = pass;
        else
            race_.HandPasses.Insert(static_cast<int>(at - race_.HandPasses.begin()) + 1, pass);
        return true;
    }

    /// The boat's line may stand behind it, so boats get their clocks when all lines are read.
    bool ReadClock(std::string_view rest) {
        if (std::ranges::count(rest, ',') != 1) return false;
        const auto boat = WholeNumber(CutHead(rest, ','), 1, MaxBoats);
        const auto seconds = StrictNumber(rest);
        if (!boat || !seconds || std::fabs(*seconds) > LargestNumber) return false;
        clocks_[*boat] = RoundDecimals(*seconds, 3);
        return true;
    }

    bool ReadAttachment(std::string_view rest) {
        return race_.AttachFile.Add(std::string(reader_ == Reader::Distribution ? Trim(rest) : rest));
    }

    bool ReadCell(std::string_view rest) { return race_.MapFile.Add(std::string(Trim(rest)) + ".cst"); }

    RaceControl& race_;
    Reader reader_;
    std::map<int, double> clocks_;  // seconds, by boat
};

/// A race as it stands before its file is read; what no reader resets stays.
RaceControl Emptied(const RaceControl& race) {
    RaceControl empty;
    empty.RaceFileName = race.RaceFileName;
    empty.SingleTrackFile = race.SingleTrackFile;
    empty.MagVariation = race.MagVariation;
    empty.BoatLength = race.BoatLength;
    return empty;
}

/// Takes out what was set by hand for boats or entries that the file does not have; how many that were.
int DropPassesOfNobody(RaceControl& race) {
    OneBased<HandPass> kept;
    for (const HandPass& pass : race.HandPasses)
        if (race.Boats.Holds(pass.BoatNumber) && race.CourseOrder.Holds(pass.Entry)) kept.Add(pass);
    const int dropped = race.HandPasses.Count() - kept.Count();
    race.HandPasses = std::move(kept);
    return dropped;
}

/// How many lines of a file said something, and how many did not.
struct LineCount {
    int Known = 0;
    int Skipped = 0;
    bool Binary = false;
};

/// Reads all lines of the race's file; nothing without a file.
std::optional<LineCount> ReadLines(const std::filesystem::path& appPath, RaceControl& race, Reader reader) {
    const auto bytes = ReadWholeFile(RacePath(appPath, race.RaceFileName), FileLimit);
    if (!bytes) return {};
    const std::string text = DecodeText(*bytes).Utf8;
    LineReader lines(race, reader);
    LineCount count;
    for (const std::string_view line : Lines(text)) ++(lines.Read(line) ? count.Known : count.Skipped);
    if (reader != Reader::Distribution) count.Skipped += DropPassesOfNobody(race) + lines.SetClocks();
    count.Binary = bytes->find('\0') != std::string::npos;
    return count;
}

std::vector<std::string> SetAbsentBoatsAside(const std::filesystem::path& appPath, RaceControl& race) {
    std::vector<std::string> missing;
    const auto all = std::exchange(race.Boats, {});
    for (int number = 1; number <= all.Count(); ++number) {
        const BoatEntry& boat = all[number];
        if (IsFile(TrackPath(appPath, boat.BoatFile))) {
            race.Boats.Add(boat);
        } else {
            race.AbsentBoats.Add({number, boat});
            missing.push_back(boat.BoatFile);
        }
    }
    return missing;
}

/// What follows from start and finish, as far as they are given; the data begin so many seconds earlier.
void SettlePeriod(CivilTime lead, RaceControl& race) {
    const auto& start = race.Start.At();
    const auto& finish = race.Finish.At();
    if (start) race.DataFromTime = *start - lead;
    race.DataToTime = finish;
    if (start && finish) race.RaceDuration = DurationBetween(*start, *finish);
}

}  // namespace

bool IsRaceFileName(std::string_view name) {
    return name.size() > 4 && EqualNoCase(name.substr(name.size() - 4), ".txt");
}

RaceFileReport ReadRaceFile(const std::filesystem::path& appPath, RaceControl& race) {
    race = Emptied(race);
    RaceFileReport report;
    const auto lines = ReadLines(appPath, race, Reader::Display);
    report.Opened = lines.has_value();
    report.SkippedLines = lines.value_or(LineCount{}).Skipped;
    if (!WindFileExists(appPath, race)) race.AbsentWindFile = std::exchange(race.WindFileName, {});
    report.MissingTracks = SetAbsentBoatsAside(appPath, race);
    if (race.BoatLength == 0) race.BoatLength = DefaultBoatLength;
    SettlePeriod(static_cast<CivilTime>(PreStartSeconds(race)) + LeadSeconds, race);
    return report;
}

bool ReadRaceFileForEdit(const std::filesystem::path& appPath, RaceControl& race) {
    race = Emptied(race);
    const auto lines = ReadLines(appPath, race, Reader::Editor);
    if (!lines || lines->Binary || lines->Known == 0) return false;
    SettlePeriod(EditorLeadSeconds, race);
    return true;
}

bool ReadRaceFileForDistribution(const std::filesystem::path& appPath, RaceControl& race) {
    race.Boats.Clear();
    race.MapFile.Clear();
    race.AttachFile.Clear();
    race.WindFileName.clear();
    return ReadLines(appPath, race, Reader::Distribution).has_value();
}

namespace {

/// The lines of a race's file, in the order of the writer.
class LineWriter {
  public:
    explicit LineWriter(const RaceControl& race) : race_(race) {}

    std::vector<std::string> Write() {
        Text("WF", HasWindFile(race_) ? race_.WindFileName : race_.AbsentWindFile);
        Text("T1", race_.RaceTitle1);
        Text("T2", race_.RaceTitle2);
        Text("T3", race_.RaceTitle3);
        if (race_.MagVariation != 0) Text("MG", NumberText(race_.MagVariation));
        if (race_.BoatLength > 0) Text("LG", LengthText());
        if (race_.BowAhead != 0) Text("BO", NumberText(race_.BowAhead));
        Text("ST", race_.Start.Typed());
        Text("FT", race_.Finish.Typed());
        if (race_.TimeDiff) Text("TD", NumberText(*race_.TimeDiff));
        if (race_.WindDirection != 0) Text("WD", NumberText(race_.WindDirection));
        if (race_.NorthUp) lines_.emplace_back("NU, 1");
        WriteBoats();
        WriteCourse();
        for (const std::string& cell : race_.MapFile) Text("MAP", cell);
        lines_.push_back("LL, " + NumberText(race_.LayLineUp) + "," + NumberText(race_.LayLineDown));
        lines_.push_back("BT," + std::to_string(FloorToInt(race_.PreStartMinutes + 0.5)));
        for (const std::string& file : race_.AttachFile) lines_.push_back("AT, " + file);
        return std::move(lines_);
    }

  private:
    void Text(const char* key, const std::string& value) {
        if (!value.empty()) lines_.push_back(std::string(key) + ", " + value);
    }
    /// A length is held in single precision: 4.7, not 4.69999980926514.
    std::string LengthText() const { return NumberText(std::round(race_.BoatLength * 1e6) / 1e6); }

    void WriteBoats() {
        auto boat = race_.Boats.begin();
        auto absent = race_.AbsentBoats.begin();
        const int count = race_.Boats.Count() + race_.AbsentBoats.Count();
        std::vector<std::string> clocks;
        for (int number = 1; number <= count; ++number) {
            const bool isAbsent = boat == race_.Boats.end() ||
                                  (absent != race_.AbsentBoats.end() && absent->Number == number);
            const BoatEntry& entry = isAbsent ? (absent++)->Entry : *boat++;
            lines_.push_back("BN, " + entry.BoatFile + ", " + entry.BoatName);
            if (entry.ClockOffset != 0)
                clocks.push_back("CL, " + std::to_string(number) + ", " + NumberText(entry.ClockOffset));
        }
        std::ranges::move(clocks, std::back_inserter(lines_));
    }

    void WriteCourse() {
        for (const Mark& mark : race_.Marks)
            lines_.push_back("MK, " + mark.MarkLat.Text() + ", " + mark.MarkLon.Text());
        for (const Line& line : race_.Lines)
            lines_.push_back("LN, " + line.LineLat1.Text() + ", " + line.LineLon1.Text() + ", " +
                             line.LineLat2.Text() + ", " + line.LineLon2.Text());
        if (race_.CourseOrder.Empty()) return;
        std::string course = "CRS";
        for (const std::string& entry : race_.CourseOrder) course += ", " + entry;
        lines_.push_back(std::move(course));
        for (const HandPass& pass : race_.HandPasses)
            lines_.push_back("PT, " + std::to_string(pass.BoatNumber) + ", " + std::to_string(pass.Entry) +
                             ", " + (pass.Seconds ? std::to_string(*pass.Seconds) : "-"));
    }

    const RaceControl& race_;
    std::vector<std::string> lines_;
};

/// The bytes that a file holds for each of its lines, by the line's text: a line that has not changed keeps
/// them.
std::unordered_map<std::string, std::string> BytesByLine(const std::string& bytes, TextEncoding encoding) {
    std::unordered_map<std::string, std::string> known;
    if (encoding != TextEncoding::ShiftJis) return known;
    for (const std::string_view line : Lines(bytes)) {
        auto decoded = DecodeText(line);
        if (decoded.Encoding == TextEncoding::ShiftJis) known.emplace(std::move(decoded.Utf8), line);
    }
    return known;
}

std::optional<std::string> EncodeLines(const std::vector<std::string>& lines, TextEncoding encoding,
                                       const std::unordered_map<std::string, std::string>& known) {
    std::string bytes;
    if (encoding == TextEncoding::Utf8WithMark) bytes = "\xEF\xBB\xBF";
    for (const std::string& line : lines) {
        const auto old = known.find(line);
        const auto encoded = old != known.end() ? old->second : EncodeText(line, encoding);
        if (!encoded) return {};
        bytes += *encoded + "\r\n";
    }
    return bytes;
}

/// True if a reader takes the bytes for what they are: accents can look like half-width kana, and the other
/// way round.
bool IsToldApart(const std::string& bytes, TextEncoding encoding) {
    const DecodedText read = DecodeText(bytes);
    return read.Encoding == encoding || (encoding == TextEncoding::Utf8 && read.Utf8 == bytes);
}

/// The bytes of a file: in the encoding of the old one, or else in the first that holds the text.
std::optional<std::string> EncodeRace(const std::vector<std::string>& lines, const std::string& old) {
    const TextEncoding before = DecodeText(old).Encoding;
    for (const TextEncoding encoding : {before, TextEncoding::Utf8, TextEncoding::Utf8WithMark}) {
        auto bytes = EncodeLines(lines, encoding, BytesByLine(old, encoding));
        if (bytes && IsToldApart(*bytes, encoding)) return bytes;
    }
    return {};
}

}  // namespace

std::error_code SaveRaceFile(const std::filesystem::path& appPath, const RaceControl& race) {
    if (race.RaceFileName.empty()) return {};
    const auto path = RacePath(appPath, race.RaceFileName);
    const std::optional<std::string> old = ReadWholeFile(path, FileLimit);
    const auto bytes = EncodeRace(LineWriter(race).Write(), old.value_or(std::string()));
    if (!bytes) return std::make_error_code(std::errc::illegal_byte_sequence);
    if (bytes == old) return {};
    return WriteFileAtomically(path, *bytes);
}

std::error_code SaveRaceFileAnew(const std::filesystem::path& appPath, const RaceControl& race) {
    const auto path = RacePath(appPath, race.RaceFileName);
    if (!race.RaceFileName.empty() && IsFile(path)) {
        const std::optional<std::string> old = ReadWholeFile(path, FileLimit);
        if (!old) return std::make_error_code(std::errc::io_error);
        auto kept = path;
        kept += ".bak";
        if (const auto error = WriteFileAtomically(kept, *old)) return error;
    }
    return SaveRaceFile(appPath, race);
}

}  // namespace keelview
