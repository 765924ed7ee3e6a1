#include <benchmark/benchmark.h>

#include "bench/CoreHost.h"
#include "bench/Noise.h"
#include "paint/PaintClass.h"
#include "plain/PlainBlur.h"

namespace {

constexpr short side = 512;
constexpr int defaultAmount = 20;
constexpr int dearestAmount = 100;

struct Setup {
    int amount;
    short mode;
};

/// Half of the tile covered by hills in the alpha bytes, as the effects leave them, 40 pixels wide.
void FillWithHills(PaintClass& pic) {
    FillWithNoise(pic);
    for (short y = 0; y < pic.grY; ++y) {
        for (short x = 0; x < pic.grX; ++x) {
            pic.SetAlpha(x, y, x / 40 % 2 == 0 ? 255 : static_cast<unsigned char>(x));
        }
    }
}

void FastBlur(benchmark::State& state, Setup setup) {
    const CoreHost host;
    PaintClass pic(side, side);
    FillWithHills(pic);
    bool abortFlag = false;
    for (auto _ : state) {
        pic.Blur(setup.amount * 0.05, setup.mode, nullptr, 0, &abortFlag);
    }
}

void PlainBlurLoop(benchmark::State& state, Setup setup) {
    const CoreHost host;
    PaintClass pic(side, side);
    FillWithHills(pic);
    for (auto _ : state) {
        PlainBlur(pic, setup.amount * 0.05, setup.mode);
    }
}

void FastMotionBlur(benchmark::State& state, int amount) {
    const CoreHost host;
    PaintClass pic(side, side);
    FillWithNoise(pic);
    for (auto _ : state) {
        pic.MotionBlur(static_cast<short>(amount / 4), 1);
    }
}

void PlainMotionBlurLoop(benchmark::State& state, int amount) {
    const CoreHost host;
    PaintClass pic(side, side);
    FillWithNoise(pic);
    for (auto _ : state) {
        PlainMotionBlur(pic, static_cast<short>(amount / 4), 1);
    }
}

/// Registers both variants of a row of the table.
template <typename Argument>
void Register(const std::string& row, void (*fast)(benchmark::State&, Argument),
              void (*plain)(benchmark::State&, Argument), Argument argument) {
    benchmark::RegisterBenchmark((row + "/fast").c_str(), fast, argument)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((row + "/plain").c_str(), plain, argument)
        ->Unit(benchmark::kMillisecond);
}

const bool registered = [] {
    Register("Blur, default", FastBlur, PlainBlurLoop, Setup{defaultAmount, 1});
    Register("Blur, dearest", FastBlur, PlainBlurLoop, Setup{dearestAmount, 1});
    Register("Blur of alpha, dearest", FastBlur, PlainBlurLoop, Setup{dearestAmount, 2});
    Register("Blur where alpha, dearest", FastBlur, PlainBlurLoop, Setup{dearestAmount, 3});
    Register("Motion Blur, default", FastMotionBlur, PlainMotionBlurLoop, defaultAmount);
    Register("Motion Blur, dearest", FastMotionBlur, PlainMotionBlurLoop, dearestAmount);
    return true;
}();

}  // namespace
