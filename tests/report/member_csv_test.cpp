#include "report/member_csv.h"

#include <gtest/gtest.h>

namespace keelview {
namespace {

TEST(MemberCsv, TellsEachInnermostElementInARowWithWhatStandsAboveIt) {
    RaceControl race;
    for (const char* name : {"Alcyone", "Say \"no\""}) race.Boats.Add({"", name});
    const struct {
        const char* Report;
        const char* Table;
    } cases[] = {
        {R"({"ranking":[{"time":60,"order":[{"boat":2,"gap":null},{"boat":1,"gap":1.5}]}]})",
         "\"Boat\",\"time\",\"boat\",\"gap\"\r\n\"Say \"\"no\"\"\",60,2,\r\n\"Alcyone\",60,1,1.5\r\n"},
        {R"({"start":{"line":{"length":150,"end":2},"boats":[{"number":1,"ocs":true,"kind":"tack"}]}})",
         "\"Boat\",\"line_length\",\"line_end\",\"number\",\"ocs\",\"kind\"\r\n\"Alcyone\",150,2,1,1,"
         "\"tack\"\r\n"},
        {R"({"made_good":[[null,{"vmg":4}],[{"vmg":5},null]]})",
         "\"Boat\",\"boat\",\"leg\",\"vmg\"\r\n\"Alcyone\",1,2,4\r\n\"Say \"\"no\"\"\",2,1,5\r\n"},
        {R"({"debrief":[{"best_boat":1,"boats":[null,{"loss":7}]}]})",
         "\"Boat\",\"leg\",\"best_boat\",\"boat\",\"loss\"\r\n\"Say \"\"no\"\"\",1,1,2,7\r\n"},
        {R"({"current":{"axis":90,"along":null}})", "\"axis\",\"along\"\r\n90,\r\n"},
        {R"({"current":null})", "\r\n"},
    };
    for (const auto& [report, table] : cases)
        EXPECT_EQ(MemberCsv(race, report), std::string("\xEF\xBB\xBF") + table) << report;
}

}  // namespace
}  // namespace keelview
