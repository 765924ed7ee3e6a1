#include <benchmark/benchmark.h>

#include "bench/CoreHost.h"
#include "bench/Noise.h"
#include "paint/PaintClass.h"
#include "plain/PlainSharpen.h"

namespace {

constexpr short side = 512;

void FastSharpen(benchmark::State& state) {
    const CoreHost host;
    PaintClass pic(side, side);
    FillWithNoise(pic);
    for (auto _ : state) {
        pic.Sharpen();
    }
}

void PlainSharpenLoop(benchmark::State& state) {
    const CoreHost host;
    PaintClass pic(side, side);
    FillWithNoise(pic);
    for (auto _ : state) {
        PlainSharpen(pic);
    }
}

const bool registered = [] {
    using benchmark::RegisterBenchmark;
    RegisterBenchmark("Sharpen/fast", FastSharpen)->Unit(benchmark::kMillisecond);
    RegisterBenchmark("Sharpen/plain", PlainSharpenLoop)->Unit(benchmark::kMillisecond);
    return true;
}();

}  // namespace
