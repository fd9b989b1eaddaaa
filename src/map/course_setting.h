#pragma once

#include <string_view>

#include "map/chart.h"
#include "map/replay_frame.h"
#include "session/app_state.h"
#include "session/course_changes.h"
#include "session/race_disp.h"

namespace keelview {

/// The modes in which clicks on the map set the course, and their buttons: Command2 places one mark,
/// Command3 a line by its two ends, Command5 puts marks and lines in order. They exclude each other. In the
/// first two a right click removes what is nearest.
class CourseSetting {
  public:
    CourseSetting(AppState& app, RaceDisp& form, Services& services, Chart& chart, ReplayFrame& frame);

    /// A mark or an end of a line waits for its place.
    bool Placing() const { return setMarkMode_ || setLineMode_ != LineMode::Off; }
    /// Clicks put marks and lines in order.
    bool Ordering() const { return setCourseMode_; }

    /// A click of a mode that is about what lies there already: puts it into the course, or removes it.
    /// False if the click is for something else.
    bool PickEntry(const MouseEvent& event, const MapPosition& at);
    /// A click that places a mark or an end of a line. False if no such mode is on.
    bool PlaceAt(const MapPosition& at);
    /// The pointer moves while a mark or line waits for its place: rubber band and hints.
    void FollowPlacing(const MouseEvent& event);
    /// The pointer moves while the course is put in order: the name of what a click would take.
    void FollowOrdering(const MouseEvent& event, const MapPosition& at);
    /// Ends all modes, as when another race is loaded.
    void Leave();

  private:
    enum class LineMode { Off, FirstEnd, SecondEnd };  ///< the end that waits for its place

    void Command2_Click();
    void Command3_Click();
    void Command5_Click();
    void Command8_Click();
    void PlaceMark(const MapPosition& at);
    void PlaceLineEnd(const MapPosition& at);
    void EndPlacing();
    void CourseChanged();
    void ShowCoursePanel();
    void ShowModeHint(const MouseEvent& event, std::string_view hint, double width);
    bool NearLineStart(const ScreenPoint& at) const;

    AppState& app_;
    RaceDisp& form_;
    Chart& chart_;
    ReplayFrame& frame_;
    CourseChanges changes_;
    bool setMarkMode_ = false;
    LineMode setLineMode_ = LineMode::Off;
    bool setCourseMode_ = false;
    MapPosition lineStart_;  ///< the first end of the line being set
};

}  // namespace keelview
