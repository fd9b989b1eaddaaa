#include "racedata/tracks/relative_wind.h"

#include <cmath>

#include "base/angles.h"

namespace keelview {

void WorkOutWind(RecordedFix& fix, const RelativeWind& wind) {
    float angle = wind.TrueAngle;
    if (std::isnan(angle) || std::isnan(fix.WindSpeed)) {
        const double boat = std::isnan(fix.WaterSpeed) ? fix.Speed : fix.WaterSpeed;
        const double felt = wind.ApparentAngle * DegToRad;
        const double ahead = wind.ApparentSpeed * std::cos(felt) - boat;
        const double abeam = wind.ApparentSpeed * std::sin(felt);
        if (std::isnan(angle)) angle = static_cast<float>(std::atan2(abeam, ahead) / DegToRad);
        if (std::isnan(fix.WindSpeed)) fix.WindSpeed = static_cast<float>(std::hypot(abeam, ahead));
    }
    if (std::isnan(fix.WindFrom)) {
        const double from = std::fmod(fix.Heading + angle, 360.0);
        fix.WindFrom = static_cast<float>(WrapDirection(from));
    }
}

}  // namespace keelview
