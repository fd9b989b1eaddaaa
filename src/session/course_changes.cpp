#include "session/course_changes.h"

#include <algorithm>

#include "session/save_race.h"

namespace keelview {

namespace {

constexpr Text TooManyMarks{"No more than 30 marks can be set.", "マークは30個まで設定できます。"};
constexpr Text TooManyLines{"No more than 10 lines can be set.", "ラインは10本まで設定できます。"};
constexpr Text TooManyEntries{"The course order holds no more than 30 marks and lines.",
                              "コースに設定できるマーク・ラインは30個までです。"};
static_assert(MaxMarks == 30 && MaxLines == 10 && MaxClickedEntries == 30, "the texts name the limits");

/// Takes element `gone` out of a race array that is used from 1 to `count`.
template <class Array>
void CloseGap(Array& values, int gone, int count) {
    std::move(values.begin() + gone + 1, values.begin() + count + 1, values.begin() + gone);
    values[count] = {};
}

}  // namespace

CourseChanges::CourseChanges(AppState& app, Services& services) : app_(app), services_(services) {}

bool CourseChanges::AddMark(const MapPosition& at) {
    RaceControl& race = app_.race;
    if (race.MarkCount >= MaxMarks) return Refuse(TooManyMarks);
    const int mark = ++race.MarkCount;
    race.MarkLat[mark] = TextNumber(at.Lat);
    race.MarkLon[mark] = TextNumber(at.Lon);
    Save();
    return true;
}

bool CourseChanges::MayAddLine() {
    return app_.race.LineCount < MaxLines || Refuse(TooManyLines);
}

bool CourseChanges::AddLine(const MapPosition& from, const MapPosition& to) {
    if (!MayAddLine()) return false;
    RaceControl& race = app_.race;
    const int line = ++race.LineCount;
    race.LineLat1[line] = TextNumber(from.Lat);
    race.LineLon1[line] = TextNumber(from.Lon);
    race.LineLat2[line] = TextNumber(to.Lat);
    race.LineLon2[line] = TextNumber(to.Lon);
    Save();
    return true;
}

bool CourseChanges::AddToCourse(const CourseKey& entry) {
    RaceControl& race = app_.race;
    if (race.CourseCount >= MaxClickedEntries) return Refuse(TooManyEntries);
    race.CourseOrder[++race.CourseCount] = CourseKeyText(entry);
    app_.passes = {};
    Save();
    return true;
}

void CourseChanges::Remove(const CourseKey& entry) {
    RaceControl& race = app_.race;
    int& count = entry.IsLine ? race.LineCount : race.MarkCount;
    if (entry.IsLine)
        for (auto* values : {&race.LineLat1, &race.LineLon1, &race.LineLat2, &race.LineLon2})
            CloseGap(*values, entry.Number, count);
    else
        for (auto* values : {&race.MarkLat, &race.MarkLon}) CloseGap(*values, entry.Number, count);
    --count;
    EmptyCourse();
    Save();
}

void CourseChanges::ClearCourse() {
    EmptyCourse();
    Save();
}

void CourseChanges::EmptyCourse() {
    app_.race.CourseCount = 0;
    app_.passes = {};
}

bool CourseChanges::Refuse(const Text& why) {
    services_.dialogs.Ok(why.In(app_.settings.UseEnglish), app_.settings.AppTitle);
    return false;
}

void CourseChanges::Save() {
    SaveRace(app_, services_);
}

}  // namespace keelview
