#pragma once

#include <string>
#include <vector>

/// What a demo race is like.
struct DemoPlan {
    std::string File;
    std::string Title1;
    std::string Title2;
    std::string Start;  // local time
    double Lat;         // minutes of arc of the middle of the course
    double Lon;
    double Wind;   // true direction, degrees
    double Swing;  // degrees to either side
    double LegMetres;
    int Rounds;
    int Duration;  // seconds
    double BoatLength;
    double Knots;  // speed on the wind
    unsigned Seed;
    std::vector<std::string> Names;
    std::string Prefix;
    int Early;    // boat over the line too early, from 0
    int Retires;  // boat that gives up on the last leg
    int Gap;      // boat with a gap in its track
    int Close;    // boat that finishes within a second of another
};

inline DemoPlan EnglishRace() {
    return {.File = "Enoshima_R1.txt",
            .Title1 = "Sagami Bay Autumn Series",
            .Title2 = "Race 1",
            .Start = "2026/10/03 12:30:00",
            .Lat = 35 * 60 + 17.58,
            .Lon = 139 * 60 + 28.98,
            .Wind = 20,
            .Swing = 9,
            .LegMetres = 1000,
            .Rounds = 3,
            .Duration = 3600,
            .BoatLength = 7.0,
            .Knots = 5.2,
            .Seed = 11,
            .Names = {"Alcyone", "Blue Heron", "Cutlass", "Daybreak", "Esperance", "Fulmar", "Gannet",
                      "Halcyon"},
            .Prefix = "r1_",
            .Early = 3,
            .Retires = 6,
            .Gap = 4,
            .Close = 7};
}

inline DemoPlan JapaneseRace() {
    return {.File = "Enoshima_R2.txt",
            .Title1 = "相模湾秋季シリーズ",
            .Title2 = "第2レース",
            .Start = "2026/10/04 11:05:00",
            .Lat = 35 * 60 + 17.5,
            .Lon = 139 * 60 + 29.1,
            .Wind = 195,
            .Swing = 10,
            .LegMetres = 850,
            .Rounds = 3,
            .Duration = 3600,
            .BoatLength = 4.7,
            .Knots = 4.8,
            .Seed = 23,
            .Names = {"海風", "白波", "黒潮", "朝凪", "夕凪", "千鳥", "かもめ", "飛魚", "銀河", "流星",
                      "北斗", "隼",   "疾風", "若潮", "青嵐", "初雁", "月影",   "日向", "早瀬", "みさご"},
            .Prefix = "r2_",
            .Early = 7,
            .Retires = 14,
            .Gap = 9,
            .Close = 2};
}

/// A fleet of so many boats, known by their sail numbers.
inline DemoPlan FleetRace(int boats) {
    DemoPlan plan{.File = "Enoshima_Fleet.txt",
                  .Title1 = "Sagami Bay Fleet Race",
                  .Title2 = std::to_string(boats) + " boats",
                  .Start = "2026/10/05 11:00:00",
                  .Lat = 35 * 60 + 16.5,
                  .Lon = 139 * 60 + 28.5,
                  .Wind = 10,
                  .Swing = 8,
                  .LegMetres = 1900,
                  .Rounds = 2,
                  .Duration = 6000,
                  .BoatLength = 4.2,
                  .Knots = 4.9,
                  .Seed = 41,
                  .Names = {},
                  .Prefix = "fleet_",
                  .Early = 3,
                  .Retires = 6,
                  .Gap = 4,
                  .Close = 1};
    for (int boat = 1; boat <= boats; ++boat) plan.Names.push_back("JPN " + std::to_string(4000 + boat));
    return plan;
}
