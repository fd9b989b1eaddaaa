#pragma once

#include <cmath>
#include <cstdio>
#include <numbers>
#include <string>

#include "base/numbers.h"
#include "base/position.h"
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

    /// The line of a track file for a fix at a moment nine hours ahead of the file's clock.
    static std::string TrackLine(const Position& at, CivilTime local) {
        const auto angle = [](double minutes, int digits, const char* signs) {
            char text[40];
            const double size = std::abs(minutes) + 1e-10;  // no rest of sixty minutes
            std::snprintf(text, sizeof text, " %c%0*d%011.8f", signs[minutes < 0 ? 1 : 0], digits,
                          static_cast<int>(size / 60), std::fmod(size, 60));
            return std::string(text);
        };
        return "T" + angle(at.Lat, 2, "NS") + angle(at.Lon, 3, "EW") + " " +
               DateTimeText(local - 9 * 3600) + " 1\r\n";
    }
    /// A position as the lines of a race control file hold it.
    static std::string PositionText(const Position& at) {
        return NumberText(at.Lat) + ", " + NumberText(at.Lon);
    }

    /// One boat's track: `north` and `east` minutes of arc per second, from second `first` to `last`.
    void Boat(const std::string& file, double lat, double lon, double north, double east, int first,
              int last) {
        std::string text = "H a header that readers skip\r\nM WGS84\r\n";
        for (int t = first; t <= last; ++t) text += TrackLine({lat + north * t, lon + east * t}, Start + t);
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
        const Position west{Lat + SixKnots * 100, Lon - 0.05};
        return "LN, " + PositionText(west) + ", " + PositionText({west.Lat, west.Lon + width}) +
               "\r\nCRS, L1\r\n";
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
