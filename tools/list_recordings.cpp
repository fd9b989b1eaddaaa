// list_recordings FILE... : what the files of devices hold, as the program reads them: the hints, and each
// recording with its fixes: time, place, and the numbers in the order of RecordedFix. What a file does not
// tell is "-". With --count before the files only how many fixes each recording has.

#include <cmath>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "base/files.h"
#include "racedata/tracks/formats.h"

namespace {

using namespace keelview;

void ListNumber(float number) {
    if (std::isnan(number))
        std::printf(" -");
    else
        std::printf(" %.1f", static_cast<double>(number));
}

void ListSkipped(const std::vector<Skipped>& skipped) {
    for (const Skipped& left : skipped)
        std::printf("  skipped %d for reason %d\n", left.Count, static_cast<int>(left.Why));
}

void ListPlace(const char* what, const NamedPlace& place) {
    std::printf("  %s \"%s\" %.7f %.7f\n", what, place.Name.c_str(), place.Lat, place.Lon);
}

void ListHints(const RaceHints& hints) {
    if (hints.Gun) std::printf("  gun %lld\n", static_cast<long long>(*hints.Gun));
    if (hints.ZoneHours) std::printf("  zone %.2f\n", *hints.ZoneHours);
    if (hints.LinePin) ListPlace("pin", *hints.LinePin);
    if (hints.LineBoat) ListPlace("boat", *hints.LineBoat);
    for (const NamedPlace& mark : hints.Marks) ListPlace("mark", mark);
}

void ListRecording(const Recording& recording, bool onlyCount) {
    std::printf("  \"%s\" by \"%s\", %zu fixes\n", recording.Boat.c_str(), recording.Device.c_str(),
                recording.Fixes.size());
    ListSkipped(recording.Left);
    if (onlyCount) return;
    for (const RecordedFix& fix : recording.Fixes) {
        std::printf("  %lld %.7f %.7f", static_cast<long long>(fix.Time), fix.Lat, fix.Lon);
        for (const float number : {fix.Speed, fix.Course, fix.Heading, fix.WaterSpeed, fix.WindSpeed,
                                   fix.WindFrom, fix.Accuracy})
            ListNumber(number);
        std::printf("\n");
    }
}

}  // namespace

int main(int argc, char** argv) {
    bool allRead = true;
    const bool onlyCount = argc > 1 && std::string_view(argv[1]) == "--count";
    for (const std::string name : std::vector<const char*>(argv + (onlyCount ? 2 : 1), argv + argc)) {
        const auto bytes = ReadWholeFile(name);
        const TrackFileContent content = ReadTrackFile(bytes.value_or(""), name);
        allRead = allRead && content.Refused == Refusal::None;
        std::printf("%s: %s, refused for reason %d\n", name.c_str(), content.Format.c_str(),
                    static_cast<int>(content.Refused));
        ListSkipped(content.Left);
        ListHints(content.Hints);
        for (const Recording& recording : content.Recordings) ListRecording(recording, onlyCount);
    }
    return allRead ? 0 : 1;
}
