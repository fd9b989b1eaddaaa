#pragma once

#include <filesystem>
#include <string>

#include "base/bilingual.h"
#include "session/app_state.h"
#include "session/race_disp.h"

namespace keelview {

/// The button Command10 "Save/Print": a picture of the present view with the overview, the race's name and
/// time and the colours of its boats, put together on the hidden Picture13, written as a bitmap into the
/// track folder and handed to the system's program for pictures.
class ScreenCapture {
  public:
    ScreenCapture(AppState& app, RaceDisp& form, Services& services);

  private:
    void Command10_Click();
    Picture Compose();
    void PrintRace(double left, double top);
    void PrintFitted(double left, double top, const std::string& line);
    void PaintBoatColours(double left, double top);
    void PaintView();
    void Tell(Text what, const std::filesystem::path& file);

    AppState& app_;
    RaceDisp& form_;
    Services& services_;
};

}  // namespace keelview
