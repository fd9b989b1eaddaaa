#include "map/finish_list.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>

#include "analysis/race_numbers.h"
#include "base/dates.h"
#include "base/numbers.h"
#include "session/livery.h"
#include "session/start_gun.h"

namespace keelview {

namespace {

constexpr double RowPitch = 14.0;
constexpr double ListTop = 5.0;
constexpr double ListWidth = 212.0;
constexpr double ListMargin = 5.0;  // below the last row, and between list and edge of the map
constexpr double BarWidth = 15.0;
constexpr double ThirdDigit = 7.0;  // of a rank

}  // namespace

FinishList::FinishList(const RaceControl& race, const MarkPasses& passes, const Settings& settings,
                       Platform& platform, RaceDisp& form)
    : race_(race), passes_(passes), settings_(settings), platform_(platform), form_(form) {
    form_.VScroll3.OnChange = [this] { DrawList(); };
    form_.Position.OnWheel = [this](const WheelEvent& turn) {
        form_.VScroll3.SetValue(form_.VScroll3.Value() + turn.Lines);
    };
}

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
    PlaceList();
    DrawList();
}

void FinishList::PlaceList() {
    const int count = static_cast<int>(listed_.size());
    const auto rowsAbove = [](double y) {
        return std::max(FloorToInt((y - ListTop - 2 * ListMargin) / RowPitch), 1);
    };
    // A list that has no room leaves the clock in sight.
    const bool scrolls = count > rowsAbove(form_.MapSide());
    rows_ = scrolls ? rowsAbove(form_.Text15.Top()) : count;
    const double width = ListWidth + (scrolls ? BarWidth : 0.0);
    const double height = rows_ * RowPitch + ListMargin;
    form_.Position.Move(form_.MapSide() - ListMargin - width, ListTop, width, height);
    form_.VScroll3.Move(ListWidth - 2, 0, BarWidth, height - 2);
    form_.VScroll3.SetVisible(scrolls);
    const bool atEnd = form_.VScroll3.Value() == form_.VScroll3.Max();
    form_.VScroll3.SetView(count - rows_, 1, rows_);
    if (atEnd) form_.VScroll3.SetValue(count - rows_);
}

void FinishList::DrawList() {
    form_.Position.Cls();
    for (int row = 0; row < rows_; ++row) DrawRow(row);
}

void FinishList::DrawRow(int row) {
    Surface& list = form_.Position;
    const int place = form_.VScroll3.Value() + row;
    const int boat = listed_[static_cast<std::size_t>(place)];
    const int finish = FinishTime(passes_, boat).value_or(0);
    const int behind = finish - FinishTime(passes_, listed_.front()).value_or(finish);
    const double y = row * RowPitch + 2;
    const double left = listed_.size() > 99 ? ThirdDigit : 0.0;
    list.ForeColor = Black;
    list.PrintAt(3, y + 1, std::to_string(place + 1));
    DrawNameField(list, boat, {left + 16, y}, {left + 98, y + 12}, race_.Boats[boat].BoatName);
    list.PrintAt(left + 105, y + 1, DurationText(finish) + "  <" + std::to_string(behind) + ">");
}

std::vector<int> FinishedBy(const MarkPasses& passes, double time) {
    const std::optional<int> first = FirstFinishTime(passes);
    if (!first || time < *first) return {};
    std::vector<int> order = FinishOrder(passes);
    std::erase_if(order, [&](int boat) { return FinishTime(passes, boat) > time; });
    return order;
}

}  // namespace keelview
