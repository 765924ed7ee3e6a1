#include <benchmark/benchmark.h>

#include <string>

#include "bench/CoreHost.h"
#include "bench/Noise.h"
#include "paint/EffectRun.h"
#include "paint/PaintClass.h"
#include "paint/Resize.h"
#include "plain/PlainPlaces.h"

namespace {

constexpr short side = 512;

/// Times `run(pic)` again and again.
template <typename Run>
void Register(const std::string& name, Run run) {
    benchmark::RegisterBenchmark(name.c_str(), [run](benchmark::State& state) {
        const CoreHost host;
        PaintClass pic(side, side);
        FillWithNoise(pic);
        pic.GetClone();
        for (auto _ : state) {
            run(pic);
        }
    })->Unit(benchmark::kMillisecond);
}

/// Times `copy(from, to)` to a texture of another size.
void RegisterCopy(const std::string& name, short newSide,
                  void (*copy)(const PicClass& from, PicClass& to)) {
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
        const CoreHost host;
        PicClass from(side, side, false);
        PicClass to(newSide, newSide, false);
        FillWithNoise(from);
        for (auto _ : state) {
            copy(from, to);
        }
    })->Unit(benchmark::kMillisecond);
}

const bool registered = [] {
    Register("Move/fast", [](PaintClass& pic) { pic.ShiftBy(7, 9); });
    Register("Move/plain", [](PaintClass& pic) { PlainShiftBy(pic, 7, 9); });
    RegisterCopy("Tile, to 2048/fast", 2048, CopyTiled);
    RegisterCopy("Tile, to 2048/plain", 2048, PlainCopyTiled);
    RegisterCopy("Resize, to 511/fast", 511, CopyResampled);
    RegisterCopy("Resize, to 511/plain", 511, PlainCopyResampled);
    return true;
}();

}  // namespace
