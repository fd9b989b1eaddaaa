#include "map/finish_list.h"

#include <optional>
#include <string>
#include <utility>

#include "analysis/race_numbers.h"
#include "base/dates.h"
#include "session/boat_colours.h"
#include "session/start_gun.h"

namespace keelview {

namespace {

constexpr double RowPitch = 14.0;

}  // namespace

FinishList::FinishList(const RaceControl& race, const MarkPasses& passes, const Settings& settings,
                       Platform& platform, RaceDisp& form)
    : race_(race), passes_(passes), settings_(settings), platform_(platform), form_(form) {}

void FinishList::Repaint(Changed changed) {
    if (Any(changed, Changed::Course | Changed::Race | Changed::Boats | Changed::Size)) stale_ = true;
}

void FinishList::Show(const Moment& now) {
    std::vector<int> finished = FinishedBy(passes_, now.Time);
    form_.Position.SetVisible(!finished.empty());
    const bool stale = std::exchange(stale_, false);
    if (!stale && finished == listed_) return;
    // Boats that another course has finish have not just done so.
    if (!stale && now.Forward && finished.size() > listed_.size()) PlayGun(settings_, platform_);
    listed_ = std::move(finished);
    DrawList();
}

void FinishList::DrawList() {
    form_.Position.SetHeight(static_cast<double>(listed_.size()) * RowPitch + 5);
    form_.Position.Cls();
    int rank = 0;
    for (const int boat : listed_) DrawRow(++rank, boat);
}

void FinishList::DrawRow(int rank, int boat) {
    Surface& list = form_.Position;
    const int finish = FinishTime(passes_, boat).value_or(0);
    const int behind = finish - FinishTime(passes_, listed_.front()).value_or(finish);
    const double y = (rank - 1) * RowPitch + 2;
    list.ForeColor = Black;
    list.PrintAt(3, y + 1, std::to_string(rank));
    list.FilledBox(16, y, 98, y + 12, BoatColour(boat));
    list.ForeColor = White;
    list.PrintAt(17, y + 1, race_.Boats[boat].BoatName);
    list.ForeColor = Black;
    list.PrintAt(105, y + 1, DurationText(finish) + "  <" + std::to_string(behind) + ">");
}

std::vector<int> FinishedBy(const MarkPasses& passes, double time) {
    const std::optional<int> first = FirstFinishTime(passes);
    if (!first || time < *first) return {};
    std::vector<int> order = FinishOrder(passes);
    std::erase_if(order, [&](int boat) { return FinishTime(passes, boat) > time; });
    return order;
}

}  // namespace keelview
