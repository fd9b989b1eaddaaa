#include <windows.h>

#include "display/qt/system_calls.h"
// The others need it before them.
#include <mmsystem.h>
#include <shellapi.h>
#include <shlobj.h>

#include "base/paths.h"

namespace keelview {

namespace {

namespace fs = std::filesystem;

ClockReading ReadingOf(const SYSTEMTIME& time) {
    return {MakeCivilTime(time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond)
                .value_or(0),
            time.wMilliseconds};
}

}  // namespace

bool PersonReadsJapanese() {
    return PRIMARYLANGID(::GetUserDefaultUILanguage()) == LANG_JAPANESE;
}

fs::path PersonsDataFolder() {
    wchar_t* roaming = nullptr;
    fs::path folder;
    if (::SHGetKnownFolderPath(FOLDERID_RoamingAppData, KF_FLAG_CREATE, nullptr, &roaming) == S_OK)
        folder = fs::path(roaming) / "Keelview";
    ::CoTaskMemFree(roaming);
    return folder;
}

bool LiesOnCdRom(const fs::path& folder) {
    return ::GetDriveTypeW(fs::path(folder.root_path()).make_preferred().c_str()) == DRIVE_CDROM;
}

ClockReading UtcClock() {
    SYSTEMTIME time{};
    ::GetSystemTime(&time);
    return ReadingOf(time);
}

ClockReading LocalClock() {
    SYSTEMTIME time{};
    ::GetLocalTime(&time);
    return ReadingOf(time);
}

int OpenByShell(const std::string& target, const fs::path& folder) {
    const bool address = target.find("://") != std::string::npos;
    const fs::path what = address ? PathOf(target) : (folder / PathOf(target)).make_preferred();
    const HINSTANCE result = ::ShellExecuteW(::GetActiveWindow(), L"open", what.c_str(), nullptr,
                                             folder.c_str(), SW_SHOWMAXIMIZED);
    return static_cast<int>(
        reinterpret_cast<INT_PTR>(result));  // the number that the system has always given
}

void PlayWave(const fs::path& file) {
    ::PlaySoundW(file.c_str(), nullptr, SND_FILENAME | SND_ASYNC | SND_NODEFAULT);
}

}  // namespace keelview
