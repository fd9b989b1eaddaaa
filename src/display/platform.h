#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "base/dates.h"

namespace keelview {

inline constexpr int DriveIsCdRom = 5;

/// The screen in twips, and the twips of one pixel (15 at the reference setting).
struct ScreenInfo {
    double Width = 0.0;
    double Height = 0.0;
    double TwipsPerPixelX = 15.0;
    double TwipsPerPixelY = 15.0;
};

/// A moment with its milliseconds.
struct ClockReading {
    CivilTime Seconds = 0;
    int Milliseconds = 0;
};

/// Everything that belongs to the operating system.
class Platform {
  public:
    virtual ~Platform() = default;

    /// Folder of the program's data, without a separator at its end: KEELVIEW_TREE where it is set, else as
    /// the application's rule for it tells.
    virtual std::filesystem::path ProgramFolder() = 0;
    /// True where the person's locale is a Japanese one, of whatever country and encoding.
    virtual bool UserIsJapanese() = 0;
    /// The language of what the toolkit writes by itself, such as "Yes" and "Copy": English, or Japanese.
    virtual void SetLanguage(bool useEnglish) = 0;
    /// DriveIsCdRom if the folder lies on a CD-ROM, another number otherwise.
    virtual int DriveType(const std::filesystem::path& folder) = 0;
    virtual ClockReading UtcNow() = 0;
    virtual ClockReading LocalNow() = 0;
    /// Seconds of a clock that never jumps, for measuring.
    virtual double SteadySeconds() = 0;
    /// Opens a document or an address with the program that the system has for it. Above 32 is success; 0
    /// no memory, 2 no such file, 3 no such path, 5 not allowed, 11 bad program, 27 and 31 no program for
    /// it.
    virtual int OpenDocument(const std::string& target, const std::filesystem::path& folder) = 0;
    /// Starts a program without waiting; false if it cannot be started.
    virtual bool StartProgram(const std::filesystem::path& program) = 0;
    /// Notes beside a file, for other programs, that this one works on it, until another file is noted or
    /// none (an empty path). False where another program that runs has noted it already; true where nothing
    /// can be noted.
    virtual bool ClaimFile(const std::filesystem::path& file) = 0;
    /// Plays a wave file without waiting; quiet where there is no sound.
    virtual void PlaySound(const std::filesystem::path& file) = 0;
    virtual ScreenInfo Screen() = 0;
    /// Lets waiting events happen, once.
    virtual void DeliverEvents() = 0;
    /// Puts a text where the person can paste it from.
    virtual void CopyText(const std::string& text) = 0;
    /// Hourglass while busy.
    virtual void SetBusyPointer(bool busy) = 0;
    /// Gives way for a few milliseconds, events included.
    virtual void Pause(int milliseconds) = 0;
    /// Ends the process as soon as the running event is done; nothing of the program runs after that.
    virtual void EndProcess() = 0;
    /// True once EndProcess was called: a loop that waits for something lets go.
    virtual bool Ending() = 0;
};

/// The number of hour boundaries between UTC and local time, positive east of Greenwich (9 in Japan).
int LocalUtcOffsetHours(Platform& platform);

}  // namespace keelview
