#include <benchmark/benchmark.h>

#include <cstring>
#include <string>

#include "bench/CoreHost.h"
#include "bench/Noise.h"
#include "paint/PaintClass.h"
#include "paint/records/FilterParams.h"
#include "plain/PlainColors.h"

namespace {

constexpr short side = 512;
const RGBColor16 color{0x2000, 0x8000, 0xF000};

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

void RegisterNoise(const std::string& row, const NoiseParams& params) {
    Register(row + "/fast",
             [params](PaintClass& pic, PaintClass&) { pic.Noise(params.amount, params.mode); });
    Register(row + "/plain", [params](PaintClass& pic, PaintClass&) {
        PlainNoise(pic, params.amount, params.mode);
    });
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

/// The times of these go with the number of pixels, whatever the record.
void RegisterAdjustments() {
    Register("Saturation/fast", [](PaintClass& pic, PaintClass&) { pic.Saturation(60); });
    Register("Saturation/plain", [](PaintClass& pic, PaintClass&) { PlainSaturation(pic, 60); });
    Register("Brightness and Contrast/fast",
             [](PaintClass& pic, PaintClass&) { pic.BrightnessContrast(70, 40); });
    Register("Brightness and Contrast/plain",
             [](PaintClass& pic, PaintClass&) { PlainBrightnessContrast(pic, 70, 40); });
    Register("Add Color/fast", [](PaintClass& pic, PaintClass&) { pic.AddColor(color, 10); });
    Register("Add Color/plain",
             [](PaintClass& pic, PaintClass&) { PlainAddColor(pic, color, 10); });
    Register("Invert/fast", [](PaintClass& pic, PaintClass&) { pic.Invert(); });
    Register("Invert/plain", [](PaintClass& pic, PaintClass&) { PlainInvert(pic); });
}

const bool registered = [] {
    RegisterNoise("Noise, default", {});
    RegisterNoise("Noise, dearest", {.amount = 100, .mode = noiseGrey});
    RegisterAdjustments();
    RegisterCombine("Combine, blend", 1);
    RegisterCombine("Combine, structure", 2);
    RegisterCombine("Combine, color", 3);
    return true;
}();

}  // namespace
