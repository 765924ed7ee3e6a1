#include <benchmark/benchmark.h>

#include <string>

#include "bench/CoreHost.h"
#include "bench/Noise.h"
#include "paint/PaintClass.h"
#include "plain/PlainSkew.h"
#include "plain/PlainTwirls.h"
#include "plain/PlainWaves.h"

namespace {

constexpr short side = 512;

/// Times `run` on a tile of noise again and again.
template <typename Run>
void Register(const std::string& name, Run run, short height = side) {
    benchmark::RegisterBenchmark(name.c_str(), [run, height](benchmark::State& state) {
        const CoreHost host;
        PaintClass pic(side, height);
        FillWithNoise(pic);
        for (auto _ : state) {
            run(pic);
        }
    })->Unit(benchmark::kMillisecond);
}

void RegisterWaves(const std::string& row, const WavesParams& params) {
    Register(row + "/fast", [params](PaintClass& pic) { pic.Waves(params); });
    Register(row + "/plain", [params](PaintClass& pic) { PlainWaves(pic, params); });
}

void RegisterTwirls(const std::string& row, const TwirlsParams& params) {
    Register(row + "/fast", [params](PaintClass& pic) { pic.Twirls(params); });
    Register(row + "/plain", [params](PaintClass& pic) { PlainTwirls(pic, params); });
}

void RegisterSkew(const std::string& row, std::int32_t direction, short height) {
    Register(
        row + "/fast", [direction](PaintClass& pic) { pic.Skew(direction, false); }, height);
    Register(
        row + "/plain", [direction](PaintClass& pic) { PlainSkew(pic, direction, false); }, height);
}

const bool registered = [] {
    WavesParams dearestWaves;
    dearestWaves.countX = 20;
    dearestWaves.countY = 20;
    dearestWaves.heightX = 100;
    dearestWaves.heightY = 100;
    RegisterWaves("Waves, default", {});
    RegisterWaves("Waves, dearest", dearestWaves);
    TwirlsParams dearestTwirls;
    dearestTwirls.quantity = 100;
    dearestTwirls.size = 100;
    dearestTwirls.intensity = 100;
    RegisterTwirls("Twirls, default", {});
    RegisterTwirls("Twirls, dearest", dearestTwirls);
    RegisterSkew("Skew, rows (default)", 0, side);
    RegisterSkew("Skew, columns (dearest)", 2, side);
    // On a square tile all shifts are whole; here hardly any is.
    RegisterSkew("Skew, rows, 512 by 511", 0, side - 1);
    RegisterSkew("Skew, columns, 512 by 511", 2, side - 1);
    return true;
}();

}  // namespace
