#include "session/settle_date.h"

#include "base/dates.h"

namespace keelview {

std::optional<std::string> SettleDate(const Voice& voice, const std::string& typed) {
    const std::vector<CivilTime> readings = DateReadings(typed);
    if (readings.size() < 2) return typed;
    for (const CivilTime reading : readings) {
        std::string meant = DateTimeText(reading);
        std::string both = typed;
        both.append("  =  ").append(meant);
        if (voice.AskAbout({"A date that can be read in more than one way. Year, month, day: is this it?",
                            "日付が何通りにも読めます。年/月/日の順で、次の日時ですか？"},
                           both))
            return meant;
    }
    return std::nullopt;
}

}  // namespace keelview
