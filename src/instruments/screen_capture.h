#pragma once

#include <string>

#include "session/app_state.h"
#include "session/race_disp.h"
#include "session/voice.h"

namespace keelview {

/// The button Command10 "Save/Print": a picture of the present view with the overview, the race's name and
/// time and the colours of its boats, put together on the hidden Picture13, written as a bitmap into the
/// track folder and handed to the system's program for pictures.
class ScreenCapture {
  public:
    ScreenCapture(const AppState& app, RaceDisp& form, Services& services, const Voice& voice);

  private:
    void Command10_Click();
    Picture Compose();
    void PrintRace(double left, double top);
    void PrintFitted(double left, double top, const std::string& line);
    void PaintBoatColours(double left, double top, int rows);
    void PaintView();

    const AppState& app_;
    RaceDisp& form_;
    Services& services_;
    const Voice& voice_;
};

}  // namespace keelview
