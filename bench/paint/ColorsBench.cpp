#include <benchmark/benchmark.h>

#include <cstring>
#include <string>

#include "bench/CoreHost.h"
#include "bench/Noise.h"
#include "paint/PaintClass.h"
#include "plain/PlainColors.h"

namespace {

constexpr short side = 512;

/// Times `run(pic, other)` on noise, which each run finds as the first did, and another texture.
template <typename Run>
void Register(const std::string& name, Run run) {
    benchmark::RegisterBenchmark(name.c_str(), [run](benchmark::State& state) {
        const CoreHost host;
        PaintClass pic(side, side);
        PaintClass noise(side, side);
        PaintClass other(side, side);
        FillWithNoise(noise);
        FillWithNoise(other);
        other.Flip(2);
        for (auto _ : state) {
            state.PauseTiming();
            std::memcpy(pic.Base(), noise.Base(), side * side * bytesPerPixel);
            state.ResumeTiming();
            run(pic, other);
        }
    })->Unit(benchmark::kMillisecond);
}

void RegisterCombine(const std::string& row, std::int32_t mode) {
    Register(row + "/fast", [mode](PaintClass& pic, PaintClass& other) {
        const CombineRecord record{50, mode, &pic, &other};
        pic.Combine(&record);
    });
    Register(row + "/plain", [mode](PaintClass& pic, PaintClass& other) {
        PlainCombine(pic, {50, mode, &pic, &other});
    });
}

const bool registered = [] {
    Register("Invert/fast", [](PaintClass& pic, PaintClass&) { pic.Invert(); });
    Register("Invert/plain", [](PaintClass& pic, PaintClass&) { PlainInvert(pic); });
    RegisterCombine("Combine, blend", 1);
    RegisterCombine("Combine, structure", 2);
    RegisterCombine("Combine, color", 3);
    return true;
}();

}  // namespace
