#include <benchmark/benchmark.h>

#include <string>

#include "bench/CoreHost.h"
#include "bench/Noise.h"
#include "paint/PaintClass.h"
#include "paint/Stroke.h"
#include "plain/PlainTools.h"

namespace {

using hostapi::Point;

constexpr short side = 512;
const RGBColor16 red{0xFF00, 0x1200, 0x3400};
const RGBColor16 blue{0x1200, 0x3400, 0xFF00};

/// Times `run` on a tile that `prepare` filled, again and again.
template <typename Prepare, typename Run>
void Register(const std::string& name, Prepare prepare, Run run) {
    benchmark::RegisterBenchmark(name.c_str(), [prepare, run](benchmark::State& state) {
        const CoreHost host;
        PaintClass pic(side, side);
        pic.SetColors(&red, &blue);
        prepare(pic);
        for (auto _ : state) {
            run(pic);
        }
    })->Unit(benchmark::kMillisecond);
}

void Whiten(PaintClass& pic) {
    pic.FillWhite();
}

void Scatter(PaintClass& pic) {
    FillWithNoise(pic);
    pic.fillTolerance = 100;
}

/// The part of a stroke between two looks at the mouse: 30 pixels.
constexpr Point pollStart{.v = 200, .h = 250};
constexpr Point pollEnd{.v = 218, .h = 274};

void PreparePoll(PaintClass& pic) {
    FillWithNoise(pic);
    pic.GetClone();
    pic.CopyToClone();
    pic.brushSize = 20;
    pic.stampSize = 20;
    pic.stampOffsetH = 40;
    PaintClass::MakeRoundBrush(20);
}

void PrepareStroke(PaintClass& pic) {
    FillWithNoise(pic);
    pic.brushSize = 20;
    pic.stampSize = 20;
    pic.stampOffsetH = 40;
}

/// Along the diagonal and back.
const std::vector<Point> path = {{.v = 0, .h = 0}, {.v = 511, .h = 511}, {.v = 511, .h = 0}};

template <typename ToolStroke>
void RunStroke(PaintClass& pic) {
    ToolStroke stroke(pic);
    stroke.Paint(path[0], path[1]);
    stroke.Paint(path[1], path[2]);
}

const bool registered = [] {
    const auto fill = [](PaintClass& pic) { pic.FloodFill({.v = 17, .h = 400}); };
    const auto plainFill = [](PaintClass& pic) { PlainFloodFill(pic, {.v = 17, .h = 400}); };
    Register("Fill, whole tile/fast", Whiten, fill);
    Register("Fill, whole tile/plain", Whiten, plainFill);
    const auto withoutContour = [](PaintClass& pic) {
        Whiten(pic);
        pic.fillAntiAlias = 0;
    };
    Register("Fill, whole tile, hard contour/fast", withoutContour, fill);
    Register("Fill, whole tile, hard contour/plain", withoutContour, plainFill);
    Register("Fill, noise/fast", Scatter, fill);
    Register("Fill, noise/plain", Scatter, plainFill);
    Register("Brush, a poll of 30 pixels/fast", PreparePoll, [](PaintClass& pic) {
        pic.SetAllAlpha(0);
        PaintClass::WalkLine(pollStart, pollEnd, PaintClass::StampBrush, &pic);
    });
    Register("Stamp, a poll of 30 pixels/fast", PreparePoll, [](PaintClass& pic) {
        pic.SetAllAlpha(255);
        PaintClass::WalkLine(pollStart, pollEnd, PaintClass::StampClone, &pic);
    });
    Register("Brush, a stroke/fast", PrepareStroke, RunStroke<BrushStroke>);
    Register("Brush, a stroke/plain", PrepareStroke,
             [](PaintClass& pic) { PlainBrushStroke(pic, path); });
    Register("Stamp, a stroke/fast", PrepareStroke, RunStroke<StampStroke>);
    Register("Stamp, a stroke/plain", PrepareStroke,
             [](PaintClass& pic) { PlainStampStroke(pic, path); });
    const auto across = [](PaintClass& pic) { pic.Gradient({.v = 0, .h = 0}, {.v = 0, .h = 512}); };
    Register("Gradient, across/fast", Whiten, across);
    Register("Gradient, across/plain", Whiten,
             [](PaintClass& pic) { PlainGradient(pic, {.v = 0, .h = 0}, {.v = 0, .h = 512}); });
    const auto down = [](PaintClass& pic) { pic.Gradient({.v = 0, .h = 0}, {.v = 512, .h = 0}); };
    Register("Gradient, down/fast", Whiten, down);
    Register("Gradient, down/plain", Whiten,
             [](PaintClass& pic) { PlainGradient(pic, {.v = 0, .h = 0}, {.v = 512, .h = 0}); });
    return true;
}();

}  // namespace
