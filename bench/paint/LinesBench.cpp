#include <benchmark/benchmark.h>

#include "base/Progress.h"
#include "bench/CoreHost.h"
#include "paint/PaintClass.h"
#include "plain/PlainLines.h"

namespace {

constexpr short side = 512;

/// Default values, or the worst case: every stroke drifts as far as it can, and is softened.
LinesParams Record(bool dearest) {
    LinesParams params;
    params.angle = 135;
    if (dearest) {
        params.precision = 1;
        params.colorMode = linesAverage;
    }
    return params;
}

void FastLines(benchmark::State& state, bool dearest) {
    const CoreHost host;
    PaintClass pic(side, side);
    for (auto _ : state) {
        pic.Lines(Record(dearest));
    }
}

void PlainLinesLoop(benchmark::State& state, bool dearest) {
    const CoreHost host;
    PaintClass pic(side, side);
    for (auto _ : state) {
        PlainLines(pic, Record(dearest));
    }
}

void FastSoften(benchmark::State& state) {
    const CoreHost host;
    PaintClass pic(side, side);
    ShowClass progress(1);
    bool abortFlag = false;
    for (auto _ : state) {
        pic.Soften(0, &progress, &abortFlag);
    }
}

void PlainSoftenLoop(benchmark::State& state) {
    const CoreHost host;
    PaintClass pic(side, side);
    for (auto _ : state) {
        PlainSoften(pic);
    }
}

const bool registered = [] {
    using benchmark::RegisterBenchmark;
    for (const auto& [name, dearest] :
         {std::pair{"Lines, default", false}, std::pair{"Lines, dearest", true}}) {
        const std::string row = name;
        RegisterBenchmark((row + "/fast").c_str(), FastLines, dearest)
            ->Unit(benchmark::kMillisecond);
        RegisterBenchmark((row + "/plain").c_str(), PlainLinesLoop, dearest)
            ->Unit(benchmark::kMillisecond);
    }
    RegisterBenchmark("Soften/fast", FastSoften)->Unit(benchmark::kMillisecond);
    RegisterBenchmark("Soften/plain", PlainSoftenLoop)->Unit(benchmark::kMillisecond);
    return true;
}();

}  // namespace
