#include "analysis/leg_statistics.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <tuple>
#include <vector>

#include "base/numbers.h"

namespace keelview {
namespace {

/// A race with the times and miles of each boat at each entry, from entry 1.
struct Sailed {
    RaceControl race;
    MarkPasses passes;
    Sailed(const std::vector<std::vector<std::optional<int>>>& times,
           const std::vector<std::vector<double>>& miles) {
        for (std::size_t entry = 1; entry <= times.front().size(); ++entry)
            race.CourseOrder.Add(" MK" + std::to_string(entry));
        for (std::size_t row = 0; row < times.size(); ++row) {
            race.Boats.Add({"", row == 0 ? "Sea \"Wolf\", 2" : "海風" + std::to_string(row + 1)});
            passes.MarkPassTime.Add({times[row].begin(), times[row].end()});
            passes.MarkPassDist.Add({miles[row].begin(), miles[row].end()});
        }
    }
    LegStatistics Table(StatKind kind) const { return ComputeLegStatistics(race, passes, kind); }
    std::string Csv(StatKind kind) const { return LegStatisticsCsv(race, Table(kind)); }

    /// For each column the best boat, and each boat's loss of time, distance and speed in percent.
    std::string Factors() const {
        std::string text;
        for (const FactorColumn& column : AnalyseFactors(race, passes).value_or(FactorAnalysis())) {
            text += "best " + std::to_string(column.BestBoat);
            for (const FactorShare& share : column.Share) {
                text += share.Counts ? ":" : ": -";
                for (const auto& part : {share.Time, share.Distance, share.Speed})
                    text += " " + (part ? NumberText(RoundDecimals(*part * 100, 2)) : "none");
            }
            text += "\n";
        }
        return text;
    }
};

/// Row by row a star for each best value, and the extremes of the columns.
std::string Extremes(const LegTable& table, StatKind kind) {
    std::string text;
    for (int boat = 1; boat <= table.Value.Count(); ++boat, text += "|")
        for (int entry = 1; entry <= table.ColMax.Count(); ++entry)
            text += IsBest(table, kind, boat, entry) ? "*" : ".";
    for (int entry = 1; entry <= table.ColMax.Count(); ++entry)
        text += " " + NumberText(table.ColMin[entry]) + " to " + NumberText(table.ColMax[entry]) + ",";
    return text;
}

/// Boat 2 misses entry 2; boats 1 and 3 share the best time at entry 1.
Sailed ThreeBoats() {
    return {{{10, 610, 1210}, {12, {}, 1300}, {10, 700, 1330}},
            {{0.014, 1.014, 1.914}, {0.02, 0, 2.1}, {0.012, 1.1, 2.2}}};
}

/// Nobody at entry 2; two entries at the same second; values beyond the reach of a minimum.
Sailed OddBoats() {
    return {{{5, {}, 100000, 100000}, {-3, {}, 150000, 150000}}, {{0.1, 0, 60, 60}, {-0.01, 0, 60, 60}}};
}

/// A boat that starts with the gun, on the line.
Sailed OnTheGun() {
    return {{{0, 300}}, {{0, 1}}};
}

TEST(LegStatistics, TablesHoldWhatAPersonReadsOnThePage) {
    const Sailed sailed = ThreeBoats();
    const std::string head = "\xEF\xBB\xBF\"Boat\",\"MK1\",\"MK2\",\"MK3\",\">MK2\",\">MK3\"\r\n";
    EXPECT_EQ(sailed.Csv(StatKind::Time), head +
                                              "\"Sea \"\"Wolf\"\", 2\",10,610,1210,600,600\r\n"
                                              "\"海風2\",12,,1300,,\r\n"
                                              "\"海風3\",10,700,1330,690,630\r\n");
    EXPECT_EQ(sailed.Csv(StatKind::Distance), head +
                                                  "\"Sea \"\"Wolf\"\", 2\",26,1878,3545,1852,1667\r\n"
                                                  "\"海風2\",37,,3889,,\r\n"
                                                  "\"海風3\",22,2037,4074,2015,2037\r\n");
    // 1.914 x 3600 / 1210 = 5.69454.. rounds up; 1.088 x 3600 / 690 = 5.67652 is cut.
    EXPECT_EQ(sailed.Csv(StatKind::Speed), head +
                                               "\"Sea \"\"Wolf\"\", 2\",5.04,5.984,5.695,6,5.399\r\n"
                                               "\"海風2\",6,,5.815,,\r\n"
                                               "\"海風3\",4.32,5.657,5.955,5.676,6.285\r\n");
    const std::string odd = OddBoats().Csv(StatKind::Speed);  // boat 2 was over the line before the gun
    EXPECT_EQ(odd.substr(odd.find("\n\"海")), "\n\"海風2\",,,1.44,1.44,,,\r\n");
}

TEST(LegStatistics, BestValuesIgnoreBoatsThatMissedAnEntry) {
    using Case = std::tuple<Sailed, StatKind, const char*, const char*>;
    for (const auto& [sailed, kind, cumulative, byLeg] :
         {Case{ThreeBoats(), StatKind::Time, "***|...|*..| 10 to 12, 610 to 700, 1210 to 1330,",
               ".**|...|...| 0 to 0, 600 to 690, 600 to 630,"},  // boat 2 has no last leg
          Case{ThreeBoats(), StatKind::Speed, ".*.|*..|..*| 4.32 to 6, 5.657 to 5.984, 5.695 to 5.955,",
               ".*.|...|..*| 0 to 0, 5.676 to 6, 5.399 to 6.285,"},
          Case{OddBoats(), StatKind::Time,
               "*...|....| 5 to 5, 99999 to -10, 99999 to 150000, 99999 to 150000,",
               "....|....| 0 to 0, 99999 to -10, 99999 to -10, 99999 to 0,"},
          Case{OnTheGun(), StatKind::Time, "**| 0 to 0, 300 to 300,", ".*| 0 to 0, 300 to 300,"},
          Case{OnTheGun(), StatKind::Distance, ".*| 99999 to 0, 1852 to 1852,",
               ".*| 0 to 0, 1852 to 1852,"}}) {
        const LegStatistics statistics = sailed.Table(kind);
        EXPECT_EQ(Extremes(statistics.Cumulative, kind), cumulative);
        EXPECT_EQ(Extremes(statistics.ByLeg, kind), byLeg);
    }
}

TEST(FactorAnalysis, SplitsALossOfTimeIntoDistanceAndSpeed) {
    // The whole race, then its legs. Boat 3 took 1330 s for 4074 m where the best took 1210 s for 3545 m.
    EXPECT_EQ(
        ThreeBoats().Factors(),
        "best 1: 0 0 0: 7.44 9.7 2.12: 9.92 14.92 4.57\nbest 1: 0 0 0: - none none none: 15 8.8 -5.4\n"
        "best 1: 0 0 0: - none none none: 5 22.2 16.41\n");
    // A boat that lost entry 2 after an early start is no best boat; a leg of no length has no share.
    EXPECT_EQ(Sailed({{-5, {}, 900}, {4, 500, 500}}, {{0, 0, 0}, {0, 0, 0}}).Factors(),
              "best 2: 80 none none: 0 none none\nbest 2: - none none none: 0 none none\n"
              "best 0: - none none none: none none none\n");
    EXPECT_EQ(LimitShare(0.3), 0.2);
    EXPECT_EQ(LimitShare(-0.3), -0.2);
}

TEST(FactorAnalysis, TakesCoursesOfOneToTwentyEntries) {
    for (const int entries : {0, 1, 20, 21, MaxCourseEntries}) {
        const Sailed sailed({std::vector<std::optional<int>>(entries, 7)},
                            {std::vector<double>(entries, 1.0)});
        EXPECT_EQ(AnalyseFactors(sailed.race, sailed.passes).has_value(), entries >= 1 && entries <= 20)
            << entries;
        // The tables take any course that a race can hold.
        EXPECT_EQ(sailed.Table(StatKind::Time).Cumulative.Value[1],
                  OneBased<std::optional<double>>(entries, 7.0));
    }
}

TEST(DiffAxis, CoversTheSpreadInStepsOfAPowerOfTen) {
    using Case = std::tuple<double, int, double>;
    for (const auto& [spread, steps, unit] :
         {Case{130, 2, 100}, Case{7.4, 8, 1}, Case{27, 3, 10}, Case{100, 2, 100}, Case{1e6, 2, 1e6},
          Case{1, 2, 1}, Case{99, 10, 10}, Case{0.3, 4, 0.1}, Case{0.047, 5, 0.01}, Case{0, 1, 1},
          Case{-100, 1, 1}, Case{INFINITY, 1, 1}, Case{NAN, 1, 1}}) {
        const DiffAxis axis = ChooseDiffAxis(spread);
        EXPECT_EQ(axis.Steps, steps) << spread;
        EXPECT_DOUBLE_EQ(axis.Unit, unit) << spread;
        EXPECT_DOUBLE_EQ(axis.Max(), steps * unit);
    }
}

}  // namespace
}  // namespace keelview
