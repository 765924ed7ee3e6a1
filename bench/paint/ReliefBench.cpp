#include <benchmark/benchmark.h>

#include <string>

#include "base/Platform.h"
#include "bench/CoreHost.h"
#include "bench/Noise.h"
#include "paint/PaintClass.h"
#include "plain/PlainDividers.h"
#include "plain/PlainDrops.h"
#include "plain/PlainShapes.h"

namespace {

constexpr short side = 512;

/// Times `run` on a tile of noise again and again, always with the same random layout.
template <typename Run>
void Register(const std::string& name, Run run) {
    benchmark::RegisterBenchmark(name.c_str(), [run](benchmark::State& state) {
        const CoreHost host;
        platformServices.clockSeconds = [] { return std::uint32_t{1}; };
        PaintClass pic(side, side);
        FillWithNoise(pic);
        for (auto _ : state) {
            run(pic);
        }
    })->Unit(benchmark::kMillisecond);
}

void RegisterShapes(const std::string& row, const ShapesParams& params) {
    Register(row + "/fast", [params](PaintClass& pic) { pic.Shapes(params); });
    Register(row + "/plain", [params](PaintClass& pic) { PlainShapes(pic, params); });
}

void RegisterDrops(const std::string& row, const DropsParams& params) {
    Register(row + "/fast", [params](PaintClass& pic) { pic.Drops(params); });
    Register(row + "/plain", [params](PaintClass& pic) { PlainDrops(pic, params); });
}

void RegisterDividers(const std::string& row, const DividersParams& params) {
    Register(row + "/fast", [params](PaintClass& pic) { pic.Dividers(params); });
    Register(row + "/plain", [params](PaintClass& pic) { PlainDividers(pic, params); });
}

const bool registered = [] {
    // 2 by 2 shapes that overlap all their neighbours.
    ShapesParams dearestShapes;
    dearestShapes.kind = shapeSquare;
    dearestShapes.sizeX = 1.0;
    dearestShapes.sizeY = 1.0;
    dearestShapes.shiftSize = 100;
    ShapesParams manyShapes;
    manyShapes.repeatX = 32;
    manyShapes.repeatY = 32;
    RegisterShapes("Shapes, default", {});
    RegisterShapes("Shapes, dearest", dearestShapes);
    RegisterShapes("Shapes, 32 by 32", manyShapes);
    DropsParams dearestDrops;
    dearestDrops.count = 100;
    dearestDrops.size = 100;
    dearestDrops.coveredBlur = coveredBlurMost;
    RegisterDrops("Drops, default", {});
    RegisterDrops("Drops, dearest", dearestDrops);
    DividersParams dearestDividers;
    dearestDividers.lines = 100;
    dearestDividers.minimalGap = 1;
    RegisterDividers("Dividers, default", {});
    RegisterDividers("Dividers, dearest", dearestDividers);
    return true;
}();

}  // namespace
