#include <benchmark/benchmark.h>

#include "analysis/coach_answers.h"
#include "long_race.h"

namespace keelview::bench {
namespace {

struct Asked {
    RaceNumbers numbers;
    Asked() {
        numbers.race = LongRace();
        SailFleet(numbers.race, numbers.tracks, numbers.area, numbers.scale);
        BlowWind(Fixes / 60, numbers.race, numbers.wind);
        FindAllPasses(numbers.race, numbers.tracks, numbers.scale, numbers.passes);
    }
};

/// All that a coach asks of the long race.
void CoachsAnswers(benchmark::State& state) {
    const Asked asked;
    std::size_t turns = 0;
    for (auto _ : state) {
        const auto answers = AnswerCoach(asked.numbers);
        turns = answers->Manoeuvres[Boats].size();
    }
    state.counters["turns_a_boat"] = static_cast<double>(turns);
}
BENCHMARK(CoachsAnswers)->MeasureProcessCPUTime()->UseRealTime()->Unit(benchmark::kMillisecond);

/// The same in the pieces in which the browser does it.
void CoachsPieces(benchmark::State& state) {
    const Asked asked;
    const auto piece = state.range(0);
    for (auto _ : state) {
        state.PauseTiming();
        CoachWork work(asked.numbers);
        for (std::int64_t done = 0; done < piece; ++done) work.DoNext();
        state.ResumeTiming();
        work.DoNext();
    }
}
BENCHMARK(CoachsPieces)
    ->ArgName("piece")
    ->DenseRange(0, 7)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

/// The order and all gaps of one moment.
void OrderOfAMoment(benchmark::State& state) {
    const Asked asked;
    const auto answers = AnswerCoach(asked.numbers);
    double t = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(answers->Progress.OrderAt(t));
        t = t > Fixes ? 0 : t + 7.3;
    }
}
BENCHMARK(OrderOfAMoment)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace keelview::bench
