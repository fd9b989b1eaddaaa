#include "analysis/leg_statistics.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

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
            race.Boats.Add({"", "Boat" + std::to_string(row + 1)});
            passes.MarkPassTime.Add({times[row].begin(), times[row].end()});
            passes.MarkPassDist.Add({miles[row].begin(), miles[row].end()});
        }
    }
};

// Boat 2 misses entry 2; boats 1 and 3 share the best time at entry 1.
Sailed ThreeBoats() {
    return {{{10, 610, 1210}, {12, {}, 1300}, {10, 700, 1330}},
            {{0.014, 1.014, 1.914}, {0.02, 0, 2.1}, {0.012, 1.1, 2.2}}};
}

std::vector<std::vector<std::string>> Rows(const std::string& csv) {
    std::vector<std::vector<std::string>> rows(1, std::vector<std::string>(1));
    for (const char c : csv) {
        if (c == '\n') rows.emplace_back(1);
        if (c == ',') rows.back().emplace_back();
        if (c != '\n' && c != '\r' && c != ',') rows.back().back() += c;
    }
    rows.pop_back();
    return rows;
}

TEST(LegStatistics, TablesHoldWhatAPersonReadsOnThePage) {
    const Sailed sailed = ThreeBoats();
    struct Case {
        StatKind Kind;
        std::vector<std::vector<std::string>> Table;  // cumulative, then legs
    };
    const Case cases[] = {
        {StatKind::Time,
         {{"10", "610", "1210", "600", "600"},
          {"12", "", "1300", "", ""},
          {"10", "700", "1330", "690", "630"}}},
        {StatKind::Distance,
         {{"26", "1878", "3545", "1852", "1667"},
          {"37", "", "3889", "", ""},
          {"22", "2037", "4074", "2015", "2037"}}},
        // 1.914 x 3600 / 1210 = 5.69454.. rounds up; 1.088 x 3600 / 690 = 5.67652 is cut.
        {StatKind::Speed,
         {{"5.04", "5.984", "5.695", "6", "5.399"},
          {"6", "", "5.815", "", ""},
          {"4.32", "5.657", "5.955", "5.676", "6.285"}}},
    };
    for (const Case& c : cases) {
        const LegStatistics statistics = ComputeLegStatistics(sailed.race, sailed.passes, c.Kind);
        auto rows = Rows(LegStatisticsCsv(sailed.race, statistics));
        EXPECT_EQ(rows[0], (std::vector<std::string>{"\xEF\xBB\xBF\"Boat\"", "\"MK1\"", "\"MK2\"",
                                                     "\"MK3\"", "\">MK2\"", "\">MK3\""}));
        ASSERT_EQ(rows.size(), 4u);
        for (int boat = 1; boat <= 3; ++boat) {
            rows[boat].erase(rows[boat].begin());
            EXPECT_EQ(rows[boat], c.Table[boat - 1])
                << "kind " << static_cast<int>(c.Kind) << " boat " << boat;
        }
    }
}

TEST(LegStatistics, BestValuesAndSpreadsIgnoreBoatsThatMissedAnEntry) {
    const Sailed sailed = ThreeBoats();
    const LegStatistics time = ComputeLegStatistics(sailed.race, sailed.passes, StatKind::Time);
    EXPECT_TRUE(IsBest(time.Cumulative, StatKind::Time, 1, 1));
    EXPECT_TRUE(IsBest(time.Cumulative, StatKind::Time, 3, 1));  // a shared best is marked twice
    EXPECT_FALSE(IsBest(time.Cumulative, StatKind::Time, 2, 2));
    EXPECT_FALSE(IsBest(time.ByLeg, StatKind::Time, 2, 2));
    EXPECT_EQ(time.Cumulative.ColMin[2], 610);
    EXPECT_EQ(time.Cumulative.Spread, 120);
    EXPECT_EQ(time.ByLeg.Spread, 90);  // boat 2's last leg counts nowhere

    const LegStatistics speed = ComputeLegStatistics(sailed.race, sailed.passes, StatKind::Speed);
    EXPECT_TRUE(IsBest(speed.ByLeg, StatKind::Speed, 3, 3));
    EXPECT_NEAR(speed.Cumulative.Spread, 5.984 - 5.657, 1e-9);  // entry 1, with 1.68, plays no part
}

TEST(LegStatistics, OddColumnsHaveNoBestAndNoDivisionByZero) {
    // Nobody at entry 2; two entries at the same second; values beyond the reach of a minimum.
    const Sailed odd({{5, {}, 100000, 100000}, {-3, {}, 150000, 150000}},
                     {{0.1, 0, 60, 60}, {-0.01, 0, 60, 60}});
    const LegStatistics time = ComputeLegStatistics(odd.race, odd.passes, StatKind::Time);
    EXPECT_EQ(time.Cumulative.ColMin[2], 99999);
    EXPECT_EQ(time.Cumulative.ColMin[3], 99999);
    EXPECT_EQ(time.ByLeg.ColMax[2], -10);
    EXPECT_FALSE(IsBest(time.Cumulative, StatKind::Time, 1, 3));
    EXPECT_EQ(*time.Cumulative.Value[2][1], -3);  // over the line before the gun
    const LegStatistics speed = ComputeLegStatistics(odd.race, odd.passes, StatKind::Speed);
    EXPECT_FALSE(speed.Cumulative.Value[2][1].has_value());
    EXPECT_FALSE(speed.ByLeg.Value[1][4].has_value());
}

TEST(FactorAnalysis, SplitsALossOfTimeIntoDistanceAndSpeed) {
    const Sailed sailed = ThreeBoats();
    const auto analysis = AnalyseFactors(sailed.race, sailed.passes);
    ASSERT_TRUE(analysis.has_value());
    const FactorColumn& total = (*analysis)[1];
    EXPECT_EQ(total.BestBoat, 1);
    EXPECT_EQ(*total.Share[1].Time, 0);
    EXPECT_EQ(*total.Share[1].Speed, 0);
    EXPECT_NEAR(*total.Share[3].Time, 1330 / 1210.0 - 1, 1e-12);
    EXPECT_NEAR(*total.Share[3].Distance, 4074 / 3545.0 - 1, 1e-12);
    EXPECT_NEAR(*total.Share[3].Speed, (2.2 / 1330) / (1.914 / 1210) - 1, 1e-12);
    const FactorColumn& leg = (*analysis)[2];
    EXPECT_EQ(leg.BestBoat, 1);
    EXPECT_FALSE(leg.Share[2].Counts);
    EXPECT_NEAR(*leg.Share[3].Speed, 5.676 / 6 - 1, 1e-12);
    EXPECT_EQ(LimitShare(0.3), 0.2);
    EXPECT_EQ(LimitShare(-0.3), -0.2);
}

TEST(FactorAnalysis, HasNoBarWithoutAReference) {
    // A boat that missed entry 2 is not the best of the legs beside it; a leg of no length has no share.
    const Sailed odd({{-5, {}, 900}, {4, 500, 500}}, {{0, 0, 0}, {0, 0, 0}});
    const auto analysis = AnalyseFactors(odd.race, odd.passes);
    ASSERT_TRUE(analysis.has_value());
    EXPECT_EQ((*analysis)[2].BestBoat, 2);
    EXPECT_FALSE((*analysis)[1].Share[1].Distance.has_value());
    EXPECT_FALSE((*analysis)[1].Share[1].Speed.has_value());
    EXPECT_EQ((*analysis)[3].BestBoat, 0);
    EXPECT_FALSE((*analysis)[3].Share[1].Counts);
    EXPECT_FALSE((*analysis)[3].Share[2].Speed.has_value());
}

TEST(FactorAnalysis, TakesCoursesOfOneToTwentyEntries) {
    for (const int entries : {0, 1, 20, 21, 30, MaxCourseEntries}) {
        const Sailed sailed({std::vector<std::optional<int>>(entries, 7)},
                            {std::vector<double>(entries, 1.0)});
        EXPECT_EQ(AnalyseFactors(sailed.race, sailed.passes).has_value(), entries >= 1 && entries <= 20)
            << entries;
        // The tables take any course that a race can hold.
        const LegStatistics time = ComputeLegStatistics(sailed.race, sailed.passes, StatKind::Time);
        EXPECT_EQ(time.Cumulative.Value[1], OneBased<std::optional<double>>(entries, 7.0));
    }
}

TEST(DiffAxis, CoversTheSpreadInStepsOfAPowerOfTen) {
    struct Case {
        double Spread;
        int Steps;
        double Unit;
    };
    for (const Case& c :
         {Case{130, 2, 100}, Case{7.4, 8, 1}, Case{27, 3, 10}, Case{100, 2, 100}, Case{1000, 2, 1000},
          Case{1e6, 2, 1e6}, Case{1, 2, 1}, Case{99, 10, 10}, Case{0.3, 4, 0.1}, Case{0.047, 5, 0.01},
          Case{0, 1, 1}, Case{-100, 1, 1}, Case{INFINITY, 1, 1}, Case{NAN, 1, 1}}) {
        const DiffAxis axis = ChooseDiffAxis(c.Spread);
        EXPECT_EQ(axis.Steps, c.Steps) << c.Spread;
        EXPECT_DOUBLE_EQ(axis.Unit, c.Unit) << c.Spread;
        const bool sound = c.Spread > 0 && std::isfinite(c.Spread);
        EXPECT_GT(axis.Max(), sound ? c.Spread : 0.0);
    }
}

TEST(LegStatisticsCsv, QuotesNamesSoThatSpreadsheetsKeepThem) {
    Sailed sailed = ThreeBoats();
    sailed.race.Boats[1].BoatName = "Sea \"Wolf\", 2";
    sailed.race.Boats[2].BoatName = "海風";
    const LegStatistics time = ComputeLegStatistics(sailed.race, sailed.passes, StatKind::Time);
    const std::string csv = LegStatisticsCsv(sailed.race, time);
    EXPECT_NE(csv.find("\r\n\"Sea \"\"Wolf\"\", 2\",10,610,1210,600,600\r\n\"海風\",12,,1300,,\r\n"),
              std::string::npos);
}

}  // namespace
}  // namespace keelview
