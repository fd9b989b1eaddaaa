#include "session/start_gun.h"

#include "base/files.h"

namespace keelview {

void PlayGun(const Settings& settings, Platform& platform) {
    const auto gun = FindBelow(settings.AppPath, "gun.wav");
    if (IsFile(gun)) platform.PlaySound(gun);
}

}  // namespace keelview
