#pragma once

#include <filesystem>
#include <string>

#include "display/platform.h"

namespace keelview {

// What the platform asks of the operating system beside the toolkit; one implementation for each family of
// systems.

/// True where the person's own language is Japanese.
bool PersonReadsJapanese();

/// Where the person's own data lie, if not beside the program; it need not be there yet.
std::filesystem::path PersonsDataFolder();

/// True if the folder lies on a CD-ROM, or on any disc of that kind.
bool LiesOnCdRom(const std::filesystem::path& folder);

ClockReading UtcClock();
ClockReading LocalClock();

/// As Platform::OpenDocument.
int OpenByShell(const std::string& target, const std::filesystem::path& folder);

/// As Platform::PlaySound.
void PlayWave(const std::filesystem::path& file);

}  // namespace keelview
