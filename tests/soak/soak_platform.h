#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <utility>

#include "soak/person.h"
#include "support/fake_platform.h"

namespace keelview::simulated_clock {

// The steady clock of the main thread, in place of the system's: it stands still unless it is moved, so
// that the timers of the toolkit and of the program fire by it alone. Other threads keep the system's.

/// Moves it on.
void Advance(int milliseconds);
/// Seconds since its start.
double Seconds();

}  // namespace keelview::simulated_clock

namespace keelview {

/// The system of a soak: screen, events and the end are the real ones, the time is simulated, and nothing
/// leaves the process; whether it would have worked is left to chance.
class SoakPlatform : public FakePlatform {
  public:
    /// `interrupt` is called before events are let in, in the midst of whatever lets them in.
    SoakPlatform(Platform& real, Dice& dice, std::function<void()> interrupt)
        : real_(real), dice_(dice), interrupt_(std::move(interrupt)) {}

    ClockReading UtcNow() override { return Now(0); }
    ClockReading LocalNow() override { return Now(9 * 3600); }
    double SteadySeconds() override { return simulated_clock::Seconds(); }
    int OpenDocument(const std::string& /*target*/, const std::filesystem::path& /*folder*/) override {
        return dice_.OneIn(3) ? dice_.Below(33) : 33;
    }
    bool StartProgram(const std::filesystem::path& /*program*/) override { return dice_.OneIn(2); }
    void PlaySound(const std::filesystem::path& /*file*/) override {}
    void SetLanguage(bool useEnglish) override { real_.SetLanguage(useEnglish); }
    ScreenInfo Screen() override { return real_.Screen(); }
    void DeliverEvents() override { Wait(FrameMilliseconds); }
    void CopyText(const std::string& text) override { real_.CopyText(text); }
    void SetBusyPointer(bool busy) override { real_.SetBusyPointer(busy); }
    void Pause(int milliseconds) override { Wait(milliseconds); }
    void EndProcess() override { real_.EndProcess(); }
    bool Ending() override { return real_.Ending(); }

  private:
    static constexpr int FrameMilliseconds = 10;
    static constexpr CivilTime Morning = 1'790'000'000;  // of no particular day

    static ClockReading Now(int zone) {
        const double passed = simulated_clock::Seconds();
        const auto whole = static_cast<CivilTime>(passed);
        return {Morning + zone + whole, static_cast<int>((passed - static_cast<double>(whole)) * 1000)};
    }
    void Wait(int milliseconds) {
        simulated_clock::Advance(milliseconds);
        interrupt_();
        real_.DeliverEvents();
    }

    Platform& real_;
    Dice& dice_;
    std::function<void()> interrupt_;
};

}  // namespace keelview
