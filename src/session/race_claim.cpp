#include "session/race_claim.h"

#include "base/bilingual.h"
#include "base/files.h"

namespace keelview {

std::string ClaimRace(const Settings& settings, Platform& platform, const std::string& raceFileName) {
    if (!settings.EditMode || raceFileName.empty()) return {};
    const auto file = FindBelow(FindBelow(settings.AppPath, "raceadmin"), raceFileName);
    if (platform.ClaimFile(file)) return {};
    constexpr Text openTwice{
        "This race is open in another Keelview, too. What is changed there is not seen here, and "
        "of two changes the later one stays.",
        "このレースは別のキールビューでも開かれています。そちらでの変更はこちらには表示されず、"
        "後から保存したものが残ります。"};
    return openTwice.Str(settings.UseEnglish);
}

}  // namespace keelview
