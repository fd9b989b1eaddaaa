#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "display/platform.h"

namespace keelview {

/// A platform whose answers are set by hand and that notes what was asked of it, for tests and scripts.
class FakePlatform : public Platform {
  public:
    std::filesystem::path Folder;
    bool Japanese = false;  ///< the person's own language
    int Drive = 3;
    ClockReading Local;
    double Seconds = 0.0;  ///< of the steady clock; Pause moves it
    int DocumentResult = 33;
    bool ProgramStarts = true;
    bool FileIsFree = true;  ///< no other program works on the file that is claimed

    std::vector<std::string> Documents;           ///< opened, in order
    std::vector<std::filesystem::path> Programs;  ///< started, in order
    std::filesystem::path Claimed;                ///< at last
    std::vector<std::filesystem::path> Sounds;    ///< played, in order
    std::vector<bool> BusyPointers;               ///< changes of the pointer, in order
    std::string Copied;                           ///< last
    bool Ended = false;                           ///< EndProcess was called

    std::filesystem::path ProgramFolder() override { return Folder; }
    bool UserIsJapanese() override { return Japanese; }
    void SetLanguage(bool /*useEnglish*/) override {}
    int DriveType(const std::filesystem::path& /*folder*/) override { return Drive; }
    ClockReading UtcNow() override { return {}; }
    ClockReading LocalNow() override { return Local; }
    double SteadySeconds() override { return Seconds; }
    int OpenDocument(const std::string& target, const std::filesystem::path& folder) override;
    bool StartProgram(const std::filesystem::path& program) override;
    bool ClaimFile(const std::filesystem::path& file) override {
        Claimed = file;
        return FileIsFree;
    }
    void PlaySound(const std::filesystem::path& file) override { Sounds.push_back(file); }
    ScreenInfo Screen() override { return {1024 * 15.0, 768 * 15.0}; }
    void DeliverEvents() override {}
    void CopyText(const std::string& text) override { Copied = text; }
    void SetBusyPointer(bool busy) override { BusyPointers.push_back(busy); }
    void Pause(int milliseconds) override { Seconds += milliseconds / 1000.0; }
    void EndProcess() override { Ended = true; }
    bool Ending() override { return Ended; }
};

}  // namespace keelview
