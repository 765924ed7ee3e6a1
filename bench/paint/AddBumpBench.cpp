#include <benchmark/benchmark.h>

#include "bench/CoreHost.h"
#include "bench/Noise.h"
#include "paint/PaintClass.h"
#include "plain/PlainAddBump.h"

namespace {

constexpr short side = 512;

void FastAddBump(benchmark::State& state) {
    const CoreHost host;
    PaintClass pic(side, side);
    FillWithNoise(pic);
    for (auto _ : state) {
        pic.AddBump();
    }
}

void PlainAddBumpLoop(benchmark::State& state) {
    const CoreHost host;
    PaintClass pic(side, side);
    FillWithNoise(pic);
    for (auto _ : state) {
        PlainAddBump(pic);
    }
}

const bool registered = [] {
    using benchmark::RegisterBenchmark;
    RegisterBenchmark("Add Bump/fast", FastAddBump)->Unit(benchmark::kMillisecond);
    RegisterBenchmark("Add Bump/plain", PlainAddBumpLoop)->Unit(benchmark::kMillisecond);
    return true;
}();

}  // namespace
