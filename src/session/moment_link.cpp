#include "session/moment_link.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "base/angles.h"
#include "base/numbers.h"
#include "base/strings.h"

namespace keelview {

namespace {

constexpr std::array<std::string_view, 3> ViewNames{"map", "graph", "data"};

std::array<OptionButton*, 3> ViewButtons(RaceDisp& form) {
    return {&form.Option9, &form.Option10, &form.Option11};
}

std::string Rounded(double value, int decimals) {
    return NumberText(RoundDecimals(value, decimals));
}

/// The boats in focus; empty where all are.
std::string BoatsInFocus(const RaceDisp& form) {
    std::string boats;
    int count = 0;
    for (int boat = 1; boat <= form.Ticks.Count(); ++boat) {
        if (!form.InFocus(boat)) continue;
        boats += (boats.empty() ? "" : ",") + std::to_string(boat);
        ++count;
    }
    return count < form.Ticks.Count() ? boats : std::string();
}

void Focus(RaceSession& session, std::string_view boats) {
    RaceDisp& form = session.Display();
    for (auto& ticks : form.Ticks) ticks.InFocus = false;
    for (const std::string_view number : Split(boats, ',')) {
        const double boat = StrictNumber(number).value_or(0);
        if (boat >= 1 && boat <= form.Ticks.Count()) form.Ticks[static_cast<int>(boat)].InFocus = true;
    }
    // The list fills its rows with the ticks as with a new size.
    session.TheStage().Repaint(Changed::Focus | Changed::Size);
}

void ShowPart(RaceSession& session, const Position& middle, double zoom) {
    View& view = session.App().view;
    RaceDisp& form = session.Display();
    form.Timer2.SetEnabled(false);  // which would have the view follow the boats
    form.Check5.SetEnabled(true);
    form.Check5.SetValue(false);
    form.Picture1.SetEnabled(true);
    view.CentreOn(middle);
    view.ManualZoom = view.ZoomFactor =
        std::clamp(zoom, 0.1, LargestZoom(view, session.App().area, session.App().scale));
    session.TheStage().Repaint(Changed::View);
}

}  // namespace

std::string MomentLink(RaceSession& session) {
    const AppState& app = session.App();
    RaceDisp& form = session.Display();
    std::string link = "t=" + Rounded(app.clock.ReplayTime, 1);
    if (const std::string boats = BoatsInFocus(form); !boats.empty()) link += "&boats=" + boats;
    link += "&view=" + std::string(ViewNames[static_cast<std::size_t>(app.shown.ViewMode) - 1]);
    if (form.Check5.Value()) return link;
    return link + "&x=" + Rounded(WrapLongitude(app.view.ViewCentreLon), 5) +
           "&y=" + Rounded(app.view.ViewCentreLat, 5) + "&zoom=" + Rounded(app.view.ZoomFactor, 4);
}

void FollowMomentLink(RaceSession& session, std::string_view link) {
    std::optional<double> east;
    std::optional<double> north;
    std::optional<double> zoom;
    std::optional<double> time;
    while (!link.empty()) {
        std::string_view value = CutHead(link, '&');
        const std::string_view key = CutHead(value, '=');
        if (key == "t") time = StrictNumber(value);
        if (key == "x") east = StrictNumber(value);
        if (key == "y") north = StrictNumber(value);
        if (key == "zoom") zoom = StrictNumber(value);
        if (key == "boats") Focus(session, value);
        for (std::size_t view = 0; key == "view" && view < ViewNames.size(); ++view)
            if (value == ViewNames[view]) ViewButtons(session.Display())[view]->SetValue(true);
    }
    const AppState& app = session.App();
    if (east && north && zoom && *zoom > 0)
        ShowPart(session, {*north, LongitudeNear(*east, app.area.HomeCentreLon)}, *zoom);
    if (time) session.TheFilm().Seek(*time);
}

}  // namespace keelview
