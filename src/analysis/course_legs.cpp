#include "analysis/course_legs.h"

#include <cmath>
#include <string>

#include "analysis/course_on_water.h"

namespace keelview {

namespace {

std::optional<Way> PlaceOf(const RaceControl& race, const Plane& water, const std::string& text) {
    const auto middle = MiddleOf(race, ParseCourseKey(text));
    return middle ? std::optional(water.To(*middle)) : std::nullopt;
}

}  // namespace

bool CourseLeg::IsLadder(const std::optional<Way>& upwind) const {
    constexpr double Cosine = 0.5;  // of 60 degrees
    return upwind && std::abs(upwind->Along(Axis)) >= Cosine;
}

Way CourseLeg::LadderAxis(const std::optional<Way>& upwind) const {
    if (!upwind || !IsLadder(upwind)) return Axis;
    return upwind->Along(Axis) >= 0 ? *upwind : *upwind * -1.0;
}

OneBased<CourseLeg> CourseLegs(const RaceControl& race, const Plane& water) {
    OneBased<CourseLeg> legs;
    Way from;
    for (int entry = 1; entry <= race.CourseOrder.Count(); ++entry) {
        const Way to = PlaceOf(race, water, race.CourseOrder[entry]).value_or(from);
        const Way whole = to - from;
        const double length = whole.Length();
        if (entry > 1) legs.Add({from, to, length > 0 ? whole * (1 / length) : Way{}, length});
        from = to;
    }
    return legs;
}

}  // namespace keelview
