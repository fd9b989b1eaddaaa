#include <gtest/gtest.h>

#include "support/told_recordings.h"

namespace keelview {
namespace {

TrackFileContent ReadFeatures(const std::string& features) {
    return ReadTrackFile(R"({"type": "FeatureCollection", "features": [)" + features + "]}");
}
std::string Feature(const std::string& type, const std::string& coordinates,
                    const std::string& properties) {
    return R"({"geometry":{"coordinates":)" + coordinates + R"(,"type":")" + type + R"("},"properties":{)" +
           properties + R"(},"type":"Feature"})";
}

TEST(GeoJson, ALineHasItsTimesBesideIt) {
    const std::string times =
        R"("name":"Alcyone","coordTimes":["2026-10-03T12:30:00Z",1791030601,1791030601500])";
    const std::string line = Feature("LineString", "[[139.25,35.5,3],[139.5,35.5],[139.75,35.5]]", times);
    const std::string told = "Alcyone/: 0 35.5 139.25 - -, 1000 35.5 139.5 - -, 1500 35.5 139.75 - -,";
    EXPECT_EQ(Told(ReadFeatures(line)), told);
    EXPECT_EQ(ReadTrackFile(line).Format, "GeoJSON");
    EXPECT_EQ(Told(ReadTrackFile("\xEF\xBB\xBF\n" + line)), told);
    EXPECT_EQ(
        Told(ReadFeatures(Feature(
            "MultiLineString", "[[[1,2]],[[3,4],[5,6]],7]",
            R"("coordinateProperties":{"times":[["2026-10-03T12:30:00"],["2026-10-03T12:30:01"]]})"))),
        "/: 0 2 1 - -, 1000 4 3 - -, NoTime 1");
}

TEST(GeoJson, PointsWithTimesAreSortedByBoat) {
    const TrackFileContent content =
        ReadFeatures(Feature("Point", "[1,2]", R"("boat":"Bora","time":"2026-10-03T12:30:00Z")") + "," +
                     Feature("Point", "[3,4]", R"("boat":"Alcyone","timestamp":1791030601000)") + "," +
                     Feature("Point", "[5,6]", R"("boat":"Bora","datetime":"2026-10-03T12:30:02Z")") + "," +
                     Feature("Point", "[null,6]", R"("boat":"Bora","time":1791030603)") + "," +
                     Feature("Point", "[5,6]", R"("boat":"Bora","time":1e300)") + "," +
                     Feature("Point", "[139.5,35.25]", R"("name":"Mark 1")"));
    EXPECT_EQ(Told(content),
              "Alcyone/: 1000 4 3 - -, | Bora/: 0 2 1 - -, 2000 6 5 - -, NoPlace 1 Broken 1");
    EXPECT_EQ(ToldMarks(content), "Mark 1 35.25 139.5, ");
}

TEST(GeoJson, OtherShapesAreRefused) {
    const std::string deep(100'000, '[');
    const struct {
        std::string File;
        Refusal Why;
    } rows[] = {
        {R"({"type":"LineString","coordinates":[[1,2],[3,4]]})", Refusal::NoTimes},
        {Feature("LineString", "[[1,2],[3,4]]", R"("times":7)"), Refusal::NoTimes},
        {Feature("LineString", R"({"a":[]})", R"("times":[])"), Refusal::NoFixes},
        {Feature("Polygon", "[[[1,2]]]", ""), Refusal::NoFixes},
        {R"({"features":[1,null,"a",[],{}]})", Refusal::NoFixes},
        {R"({"features":{"geometry":[]},"properties":[]})", Refusal::NoFixes},
        {R"({"features":[)", Refusal::Broken},
        {"{\"coordinates\":" + deep, Refusal::TooLarge},
        {"{\"coordinates\":\"\\\"" + deep + "\"}", Refusal::NoTimes},  // brackets in a text are no lists
        {R"({"hello":"type"})", Refusal::Unknown},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ReadTrackFile(row.File).Refused, row.Why) << row.File.substr(0, 80);
    std::string lists = "{\"coordinates\":[[]";
    for (int i = 0; i < 1'000'000; ++i) lists += ",[]";
    EXPECT_EQ(ReadTrackFile(lists + "]}").Refused, Refusal::TooLarge);
}

}  // namespace
}  // namespace keelview
