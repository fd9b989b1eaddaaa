#pragma once

namespace keelview::simulated_clock {

// The steady clock of the main thread, in place of the system's: it stands still unless it is moved, so
// that the timers of the toolkit and of the program fire by it alone. Other threads keep the system's.

/// Moves it on.
void Advance(int milliseconds);
/// Seconds since its start.
double Seconds();

}  // namespace keelview::simulated_clock
