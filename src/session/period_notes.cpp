#include "session/period_notes.h"

#include "base/bilingual.h"
#include "base/numbers.h"

namespace keelview {

namespace {

std::string PeriodLine(const Text& whose, const Period& period, bool useEnglish) {
    return whose.Str(useEnglish) + DateTimeText(period.From) + "  -  " + DateTimeText(period.To);
}

std::string Advice(const PeriodTrouble& trouble, bool useEnglish) {
    if (trouble.BetterTimeDiff)
        return Text{"They would meet with the time difference of the tracks' place: ",
                    "軌跡の場所の時差にすれば一致します: "}
                   .Str(useEnglish) +
               NumberText(*trouble.BetterTimeDiff);
    if (trouble.OtherDay)
        return Text{"They would meet on the tracks' day: is the date of the race right?",
                    "日付を軌跡の日にすれば一致します。レースの日付を確認してください。"}
            .Str(useEnglish);
    return Text{"Check the start, the finish and the time difference, or choose other tracks.",
                "スタート、フィニッシュの日時と時差、またはGPSファイルを確認してください。"}
        .Str(useEnglish);
}

}  // namespace

std::string PeriodNotes(const PeriodTrouble& trouble, bool useEnglish) {
    return PeriodLine({"Race:  ", "レース:  "}, trouble.Race, useEnglish) + "\r\n" +
           PeriodLine({"Tracks:  ", "軌跡:  "}, trouble.Tracks, useEnglish) + "\r\n" +
           Advice(trouble, useEnglish);
}

}  // namespace keelview
