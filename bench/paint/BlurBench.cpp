// The blurs that no operation of the catalogue runs by itself.
#include <benchmark/benchmark.h>

#include <string>

#include "base/Progress.h"
#include "bench/CoreHost.h"
#include "bench/Noise.h"
#include "paint/PaintClass.h"
#include "plain/PlainBlur.h"
#include "plain/PlainLines.h"

namespace {

constexpr short side = 512;
/// The dialog's largest.
constexpr double radius = 100 * 0.05;

/// Half of the tile covered by hills in the alpha bytes, as the effects leave them, 40 pixels wide.
void FillWithHills(PaintClass& pic) {
    FillWithNoise(pic);
    for (short y = 0; y < pic.grY; ++y) {
        for (short x = 0; x < pic.grX; ++x) {
            pic.SetAlpha(x, y, x / 40 % 2 == 0 ? 255 : static_cast<unsigned char>(x));
        }
    }
}

/// Times `run` on a tile of hills again and again.
template <typename Run>
void Register(const std::string& name, Run run) {
    benchmark::RegisterBenchmark(name.c_str(), [run](benchmark::State& state) {
        const CoreHost host;
        PaintClass pic(side, side);
        FillWithHills(pic);
        for (auto _ : state) {
            run(pic);
        }
    })->Unit(benchmark::kMillisecond);
}

void RegisterBlur(const std::string& row, short mode) {
    Register(row + "/fast", [mode](PaintClass& pic) {
        bool abortFlag = false;
        pic.Blur(radius, mode, nullptr, 0, &abortFlag);
    });
    Register(row + "/plain", [mode](PaintClass& pic) { PlainBlur(pic, radius, mode); });
}

const bool registered = [] {
    RegisterBlur("Blur of alpha, worst case", 2);
    RegisterBlur("Blur where alpha, worst case", 3);
    Register("Soften/fast", [](PaintClass& pic) {
        ShowClass progress(1);
        bool abortFlag = false;
        pic.Soften(0, &progress, &abortFlag);
    });
    Register("Soften/plain", [](PaintClass& pic) { PlainSoften(pic); });
    return true;
}();

}  // namespace
