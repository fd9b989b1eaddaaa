#pragma once

#include "analysis/view.h"
#include "base/bilingual.h"
#include "racedata/race_control.h"
#include "session/app_state.h"

namespace keelview {

/// Every change that a person makes to marks, lines and course on the map: done in the race and written to
/// its file at once. A change of the course forgets what was worked out for the one before. What would pass
/// a limit of the race is refused: the person is told, and nothing changes.
class CourseChanges {
  public:
    CourseChanges(AppState& app, Services& services);

    /// The numbers of new marks and lines follow those that are there. False: refused.
    bool AddMark(const MapPosition& at);
    bool AddLine(const MapPosition& from, const MapPosition& to);
    /// As AddLine, asked before the person clicks its second end.
    bool MayAddLine();
    /// Puts an entry at the end of the course, also one that is there already. False: refused.
    bool AddToCourse(const CourseKey& entry);
    /// Takes a mark or line away; the numbers of the following ones fall by one. As its entries would mean
    /// others then, the course is emptied.
    void Remove(const CourseKey& entry);
    void ClearCourse();

  private:
    bool Refuse(const Text& why);
    void EmptyCourse();
    void Save();

    AppState& app_;
    Services& services_;
};

}  // namespace keelview
