#include "bench/Table.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <exception>

namespace tzbench {

void addFigure(const std::string& name, const char* unit, Target target, double bound,
               const std::function<Line()>& measure) {
    const auto run = [=](benchmark::State& state) {
        for (auto _ : state) {
            static_cast<void>(_);
            std::fprintf(stderr, "%s ...\n", name.c_str());
            try {
                const Line line = measure();
                state.SetIterationTime(line.ours);
                state.counters["ours"] = line.ours;
                state.counters["floor"] = line.floor;
                state.counters["measured"] = line.measured;
                if (target == Target::kAtMost) state.counters["atMost"] = bound;
                if (target == Target::kAtLeast) state.counters["atLeast"] = bound;
                state.SetLabel(unit);
            } catch (const std::exception& error) {
                state.SkipWithError(error.what());
            }
        }
    };
    // Repetitions and their minimum are the measurement's own: ours and the floor take turns.
    benchmark::RegisterBenchmark(name.c_str(), run)->Iterations(1)->UseManualTime();
}

}  // namespace tzbench
