#pragma once

#include <cmath>
#include <cstdio>
#include <numbers>
#include <string>

#include "base/numbers.h"
#include "racedata/earth_scale.h"
#include "racedata/wind_file.h"
#include "support/temp_tree.h"

namespace keelview {

/// A race tree written by hand: boats that sail straight from one place at a steady speed, one fix a
/// second. The start is 2004/08/05 12:30:00 local, nine hours ahead of the tracks; one race is 600 seconds
/// long.
struct RaceTree : TempTree {
    // Off Enoshima, in minutes of arc.
    static constexpr double Lat = 35 * 60 + 17;
    static constexpr double Lon = 139 * 60 + 29;
    static constexpr double SixKnots = 6.0 / 3600;  ///< minutes of arc a second
    static constexpr CivilTime Start = 1091709000;  ///< 2004/08/05 12:30:00

    /// One boat's track: `north` and `east` minutes of arc per second, from second `first` to `last`.
    void Boat(const std::string& file, double lat, double lon, double north, double east, int first,
              int last) {
        std::string text = "H a header that readers skip\r\nM WGS84\r\n";
        for (int t = first; t <= last; ++t) {
            const double latNow = lat + north * t;
            const double lonNow = lon + east * t;
            const int clock = 3 * 3600 + 30 * 60 + t;
            char line[120];
            std::snprintf(line, sizeof line, "T N%02d%011.8f E%03d%011.8f 2004/08/05 %02d:%02d:%02d 1\r\n",
                          static_cast<int>(latNow / 60), std::fmod(latNow, 60),
                          static_cast<int>(lonNow / 60), std::fmod(lonNow, 60), clock / 3600,
                          clock / 60 % 60, clock % 60);
            text += line;
        }
        Write("gpsdat/" + file, text);
    }

    /// A boat's track from one place on a steady course, degrees true.
    void Sail(const std::string& file, double lat, double lon, double course, double knots, int first,
              int last) {
        const EarthScale scale = ComputeEarthScale(lat);
        const double metres = knots * MetresPerNauticalMile / 3600;
        const double angle = course * std::numbers::pi / 180;
        Boat(file, lat, lon, metres * std::cos(angle) / scale.MetresPerLatMinute,
             metres * std::sin(angle) / scale.MetresPerLonMinute, first, last);
    }

    /// A wind file; a race names it by "WF, " and its name.
    void Wind(const std::string& file, const WindData& samples) {
        std::string text = "TIME,WIND SPEED,WIND DIRECTION (Mag)\r\n";
        for (const WindSample& sample : samples)
            text += DateTimeText(Start + sample.WindTime) + "," +
                    (sample.WindSpeed ? NumberText(*sample.WindSpeed) : "") + "," +
                    NumberText(sample.WindDirection) + "\r\n";
        Write("winddat/" + file, text);
    }

    /// The line of a race control file for a line of `width` minutes from just west of Lon on, which who
    /// sails north from Lat at six knots crosses at second 100; and the course that consists of it.
    static std::string LineAcross(double width) {
        const std::string lat = NumberText(Lat + SixKnots * 100);
        return "LN, " + lat + ", " + NumberText(Lon - 0.05) + ", " + lat + ", " +
               NumberText(Lon - 0.05 + width) + "\r\nCRS, L1\r\n";
    }

    /// A race control file in English, browse-only, with the given further lines.
    void Race(const std::string& file, const std::string& lines) {
        Write("raceadmin/Ver.00", "1,1");
        Write("raceadmin/" + file,
              "T1, Spring Cup\r\nST, 2004/8/5 12:30:00\r\nFT, 2004/8/5 12:40:00\r\nTD, 9\r\nNU, 1\r\n" +
                  lines);
    }
};

}  // namespace keelview
