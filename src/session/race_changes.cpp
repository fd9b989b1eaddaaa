#include "session/race_changes.h"

#include <utility>

namespace keelview {

namespace {

constexpr Text TooManyMarks{"No more than 60 marks can be set.", "マークは60個まで設定できます。"};
constexpr Text TooManyLines{"No more than 20 lines can be set.", "ラインは20本まで設定できます。"};
constexpr Text TooManyEntries{"The course order holds no more than 30 marks and lines.",
                              "コースに設定できるマーク・ラインは30個までです。"};
static_assert(MaxMarks == 60 && MaxLines == 20 && MaxClickedEntries == 30, "the texts name the limits");

}  // namespace

std::string WindFileNameFor(const RaceControl& race) {
    return race.RaceFileName.substr(0, race.RaceFileName.find('.')) + "_WIND.CSV";
}

RaceChanges::RaceChanges(AppState& app, const Voice& voice, RaceSaver& saver, Stage& stage)
    : app_(app), voice_(voice), saver_(saver), stage_(stage) {}

bool RaceChanges::AddMark(const Position& at) {
    if (!app_.race.Marks.Add({TextNumber(at.Lat), TextNumber::Longitude(at.Lon)}))
        return Refuse(TooManyMarks);
    CourseChanged();
    return true;
}

bool RaceChanges::MayAddLine() const {
    return !app_.race.Lines.IsFull() || Refuse(TooManyLines);
}

bool RaceChanges::AddLine(const Position& from, const Position& to) {
    if (!MayAddLine()) return false;
    app_.race.Lines.Add({TextNumber(from.Lat), TextNumber::Longitude(from.Lon), TextNumber(to.Lat),
                         TextNumber::Longitude(to.Lon)});
    CourseChanged();
    return true;
}

bool RaceChanges::AddToCourse(const CourseKey& entry) {
    if (app_.race.CourseOrder.Count() >= MaxClickedEntries) return Refuse(TooManyEntries);
    app_.race.CourseOrder.Add(CourseKeyText(entry));
    CourseChanged();
    return true;
}

bool RaceChanges::MakeGate(const CourseKey& other) {
    if (app_.race.CourseOrder.Empty()) return false;
    CourseKey last = ParseCourseKey(app_.race.CourseOrder.Last());
    if (last.IsLine || last.IsGate() || last.Number == 0 || other.IsLine || other.Number == last.Number)
        return false;
    last.OtherMark = other.Number;
    app_.race.CourseOrder.Last() = CourseKeyText(last);
    CourseChanged();
    return true;
}

void RaceChanges::ToggleGate(int entry) {
    const bool apart = ParseCourseKey(app_.race.CourseOrder[entry]).IsGate();
    if (apart && app_.race.CourseOrder.Count() >= MaxClickedEntries)
        Refuse(TooManyEntries);
    else if (keelview::ToggleGate(app_.race, entry))
        CourseChanged();
}

void RaceChanges::Remove(const CourseKey& entry) {
    if (entry.IsLine)
        app_.race.Lines.Erase(entry.Number);
    else
        app_.race.Marks.Erase(entry.Number);
    ClearCourse();
}

void RaceChanges::ClearCourse() {
    app_.race.HandPasses.Clear();  // they name entries of the course
    app_.race.CourseOrder.Clear();
    CourseChanged();
}

bool RaceChanges::TakeFound(const FoundRace& found, CivilTime clock) {
    const RaceControl before = app_.race;
    TakeFoundRace(found, clock, app_.race);
    if (saver_.SaveAnew()) return true;
    app_.race = before;
    return false;
}

void RaceChanges::SetPass(int boat, int entry, std::optional<int> seconds) {
    ForgetHandPass(boat, entry);
    app_.race.HandPasses.Add({BoatNumberInFile(app_.race, boat), entry, seconds});
    CourseChanged();
}

void RaceChanges::PassAsFound(int boat, int entry) {
    ForgetHandPass(boat, entry);
    CourseChanged();
}

void RaceChanges::ForgetHandPass(int boat, int entry) {
    const int number = BoatNumberInFile(app_.race, boat);
    for (int i = app_.race.HandPasses.Count(); i >= 1; --i) {
        const HandPass& pass = app_.race.HandPasses[i];
        if (pass.BoatNumber == number && pass.Entry == entry) app_.race.HandPasses.Erase(i);
    }
}

void RaceChanges::SetWindDirection(double direction) {
    app_.race.WindDirection = direction;
    app_.view.ScreenUpDirection = ScreenUp(app_.race);
    app_.view.ZoomFactor = app_.view.ManualZoom;
    stage_.Repaint(Changed::Wind | Changed::View);
    saver_.Save();
}

void RaceChanges::SetNorthUp(bool northUp) {
    app_.race.NorthUp = northUp;
    app_.view.ScreenUpDirection = ScreenUp(app_.race);
    stage_.Repaint(Changed::View);
}

void RaceChanges::SetWind(const WindData& wind, const std::string& windFileName) {
    app_.wind = wind;
    app_.race.WindFileName = windFileName;
    stage_.Repaint(Changed::Wind);
}

bool RaceChanges::WriteWindFile() const {
    if (!SaveWindFile(app_.settings.AppPath, app_.race, app_.wind)) return true;
    voice_.SayUnder(
        {}, voice_.In({"Wind data file could not be written.", "風データファイルを書き込めません。"}));
    return false;
}

void RaceChanges::TakeWind(const WindData& wind) {
    const WindData before = std::exchange(app_.wind, wind);
    const std::string nameBefore = app_.race.WindFileName;
    if (!HasWindFile(app_.race)) app_.race.WindFileName = WindFileNameFor(app_.race);
    if (WriteWindFile()) {
        stage_.Repaint(Changed::Wind);
        saver_.Save();
        return;
    }
    app_.wind = before;
    app_.race.WindFileName = nameBefore;
}

bool RaceChanges::Refuse(const Text& why) const {
    voice_.Say(why);
    return false;
}

void RaceChanges::CourseChanged() {
    FindAllPasses(app_.race, app_.tracks, app_.scale, app_.passes);
    stage_.Repaint(Changed::Course);
    saver_.Save();
}

}  // namespace keelview
