// What the readers of XML have in common: whatever the file holds, it is read as far as it is sound.

#include <gtest/gtest.h>

#include "support/told_recordings.h"

namespace keelview {
namespace {

std::string Times(const std::string& text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i) all += text;
    return all;
}

TEST(XmlTracks, AFileCutAnywhereGivesTheFixesBeforeTheCut) {
    const struct {
        std::string File;
        const char* EndOfFix;
    } rows[] = {
        {R"(<gpx><trk><trkseg><trkpt lat="35.25" lon="139.25"><time>2026-10-03T12:30:00Z</time></trkpt>)"
         R"(<trkpt lat="35.75" lon="139.75"><time>2026-10-03T12:30:01Z</time></trkpt></trkseg></trk></gpx>)",
         "</time>"},
        {"<TrainingCenterDatabase><Trackpoint><Time>2026-10-03T12:30:00Z</"
         "Time><Position><LatitudeDegrees>35.25"
         "</LatitudeDegrees><LongitudeDegrees>139.25</LongitudeDegrees></Position></Trackpoint>"
         "<Trackpoint><Time>2026-10-03T12:30:01Z</Time><Position><LatitudeDegrees>35.75</LatitudeDegrees>"
         "<LongitudeDegrees>139.75</LongitudeDegrees></Position></Trackpoint></TrainingCenterDatabase>",
         "</LongitudeDegrees>"},
        {"<kml><Placemark><Track><when>2026-10-03T12:30:00Z</when><when>2026-10-03T12:30:01Z</when>"
         "<coord>139.25 35.25</coord><coord>139.75 35.75</coord></Track></Placemark></kml>",
         "</coord>"},
    };
    for (const auto& [file, endOfFix] : rows) {
        const std::size_t first = file.find(endOfFix), second = file.rfind(endOfFix);
        for (std::size_t size = 0; size < file.size(); ++size) {
            const std::string told = Told(ReadTrackFile(file.substr(0, size)));
            const std::string one = "/: 0 35.25 139.25 - -,", two = one + " 1000 35.75 139.75 - -,";
            const std::string fixes = told.substr(0, told.rfind(',') + 1);
            const std::size_t tag = std::string_view(endOfFix).size();
            EXPECT_EQ(fixes, size < first + tag    ? ""
                             : size < second + tag ? one
                                                   : two)
                << file.substr(0, size);
            EXPECT_TRUE(fixes.empty() || told.ends_with("Broken 1")) << told;
        }
    }
}

TEST(XmlTracks, AFileThatIsNoneIsRefused) {
    const struct {
        std::string File;
        Refusal Why;
    } rows[] = {
        {"", Refusal::Empty},
        {"<", Refusal::Unknown},
        {"<?xml version='1.0'?><!-- gpx -->", Refusal::Unknown},
        {"<html><gpx/></html>", Refusal::Unknown},
        {"gpx <gpx></gpx>", Refusal::Unknown},
        {"<gpx", Refusal::Broken},
        {"<gpx/>", Refusal::NoFixes},
        {"<gpx></trk>", Refusal::NoFixes},
        {"<gpx>" + std::string(100, '\0') + "</gpx>", Refusal::NoFixes},
        {"<kml>" + Times("<Folder>", 198) + Times("</Folder>", 198) + "</kml>", Refusal::NoFixes},
        {"<kml>" + Times("<Folder>", 200), Refusal::TooLarge},
        {"<gpx>" + Times("<trk>", 10'000), Refusal::TooLarge},
        {"<gpx>" + Times("<a>", 1'000'000), Refusal::TooLarge},  // these would take much memory
        {"<gpx>" + Times("<a/>", 1'000'000), Refusal::TooLarge},
        {"<gpx a=''" + Times(" a=''", 1'000'000) + "/>", Refusal::NoFixes},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ReadTrackFile(row.File).Refused, row.Why) << row.File.substr(0, 60);
}

}  // namespace
}  // namespace keelview
