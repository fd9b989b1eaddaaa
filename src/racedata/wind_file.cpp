#include "racedata/wind_file.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <utility>

#include "base/dates.h"
#include "base/files.h"
#include "base/numbers.h"
#include "base/strings.h"
#include "base/text_encoding.h"

namespace keelview {

namespace {

constexpr std::uintmax_t FileLimit = 256U << 20U;

std::filesystem::path WindPath(const std::filesystem::path& appPath, const RaceControl& race) {
    return FindBelow(appPath, "winddat/" + race.WindFileName);
}

bool InPeriod(const RaceControl& race, CivilTime time) {
    if (!race.Finish.At()) return true;
    return (!race.DataFromTime || MinuteBoundaries(*race.DataFromTime, time) >= 0) &&
           (!race.DataToTime || MinuteBoundaries(time, *race.DataToTime) >= 0);
}

}  // namespace

bool WindFileExists(const std::filesystem::path& appPath, const RaceControl& race) {
    return !race.WindFileName.empty() && IsFile(WindPath(appPath, race));
}

void LoadWindFile(const std::filesystem::path& appPath, const RaceControl& race, WindData& wind) {
    const auto bytes = ReadWholeFile(WindPath(appPath, race), FileLimit);
    const auto& start = race.Start.At();
    if (!bytes || !start) return;
    wind.Clear();
    const std::string text = DecodeText(*bytes).Utf8;
    bool header = true;
    for (std::string_view rest = text; !rest.empty();) {
        std::string_view line = CutLine(rest);
        if (std::exchange(header, false) || std::ranges::count(line, ',') < 2) continue;
        const auto time = ParseDateTime(CutHead(line, ','));
        const double speed = LenientNumber(CutHead(line, ','));
        const double direction = LenientNumber(CutHead(line, ','));
        if (!time || std::fabs(speed) > LargestNumber || std::fabs(direction) > LargestNumber ||
            !InPeriod(race, *time))
            continue;
        const CivilTime seconds = *time - *start;
        if (std::abs(seconds) > std::numeric_limits<std::int32_t>::max()) continue;
        wind.Add({static_cast<std::int32_t>(seconds), speed, direction});
    }
}

std::error_code SaveWindFile(const std::filesystem::path& appPath, const RaceControl& race,
                             const WindData& wind) {
    const CivilTime start = race.Start.At().value_or(0);
    std::string text = "TIME,WIND SPEED,WIND DIRECTION (Mag)\r\n";
    for (const WindSample& sample : wind) {
        const std::string speed = sample.WindSpeed ? NumberText(*sample.WindSpeed) : "";
        text += DateTimeText(start + sample.WindTime) + "," + speed + "," +
                NumberText(sample.WindDirection) + "\r\n";
    }
    return WriteFileAtomically(WindPath(appPath, race), text);
}

}  // namespace keelview
