// How the time and the memory of each operation grow with the tile: a table of nanoseconds a pixel
// at three sizes, and of what is held beside the raster at the largest. Where the cost follows the
// number of pixels, the three are equal; what follows the tile's side beside that doubles from one
// to the next.
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <string>
#include <vector>

#include "base/Platform.h"
#include "bench/CoreHost.h"
#include "bench/HeapPeak.h"
#include "bench/Noise.h"
#include "paint/PaintClass.h"
#include "paint/Stroke.h"

namespace {

struct Operation {
    std::string name;
    std::function<void(PaintClass&)> run;
};

void BlurBy(PaintClass& pic, int amount, short mode) {
    bool abortFlag = false;
    pic.Blur(amount * 0.05, mode, nullptr, 0, &abortFlag);
}

void DrawAcross(PaintClass& pic) {
    pic.brushSize = 20;
    BrushStroke stroke(pic);
    stroke.Paint({0, 0}, {pic.grY, pic.grX});
}

/// Each with its most expensive record, or its default where the record makes no difference.
std::vector<Operation> Operations() {
    ShapesParams shapes;
    shapes.kind = shapeSquare;
    shapes.sizeX = shapes.sizeY = 1.0;
    shapes.shiftSize = 100;
    DropsParams drops;
    drops.count = drops.size = 100;
    drops.coveredBlur = coveredBlurMost;
    DividersParams dividers;
    dividers.lines = 100;
    dividers.minimalGap = 1;
    return {
        {"Lines", [](PaintClass& p) { p.Lines({}); }},
        {"Shapes", [=](PaintClass& p) { p.Shapes(shapes); }},
        {"Drops", [=](PaintClass& p) { p.Drops(drops); }},
        {"Dividers", [=](PaintClass& p) { p.Dividers(dividers); }},
        {"Waves", [](PaintClass& p) { p.Waves({}); }},
        {"Twirls",
         [](PaintClass& p) {
             p.Twirls({100, 100, 100});
         }},
        {"Skew", [](PaintClass& p) { p.Skew(2, false); }},
        {"Blur", [](PaintClass& p) { BlurBy(p, 100, 1); }},
        {"Motion Blur", [](PaintClass& p) { p.MotionBlur(25, 1); }},
        {"Sharpen", [](PaintClass& p) { p.Sharpen(); }},
        {"Noise", [](PaintClass& p) { p.Noise(100, 0); }},
        {"Saturation", [](PaintClass& p) { p.Saturation(60); }},
        {"Brightness and Contrast", [](PaintClass& p) { p.BrightnessContrast(60, 60); }},
        {"Add Color",
         [](PaintClass& p) {
             p.AddColor({0x2000, 0x8000, 0xF000}, 50);
         }},
        {"Mosaic", [](PaintClass& p) { p.Mosaic(9, 9); }},
        {"Add Bump", [](PaintClass& p) { p.AddBump(); }},
        {"Flip", [](PaintClass& p) { p.Flip(2); }},
        {"Invert", [](PaintClass& p) { p.Invert(); }},
        {"Fill",
         [](PaintClass& p) {
             p.fillTolerance = 100;
             p.FillWhite();
             p.FloodFill({0, 0});
         }},
        {"Gradient",
         [](PaintClass& p) {
             p.Gradient({0, 0}, {0, p.grX});
         }},
        {"Brush, one stroke across", DrawAcross},
    };
}

double CpuSeconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

/// The shortest of some runs, in nanoseconds a pixel.
double NanosecondsAPixel(const Operation& operation, short side) {
    constexpr double enough = 0.3;
    constexpr int most = 50;
    PaintClass pic(side, side);
    double shortest = 1e9;
    double total = 0;
    for (int i = 0; i < most && (i < 2 || total < enough); ++i) {
        FillWithNoise(pic);
        const double start = CpuSeconds();
        operation.run(pic);
        const double taken = CpuSeconds() - start;
        shortest = std::min(shortest, taken);
        total += taken;
    }
    return shortest * 1e9 / (side * side);
}

double PeakMegabytes(const Operation& operation, short side) {
    PaintClass pic(side, side);
    FillWithNoise(pic);
    ResetHeapPeak();
    operation.run(pic);
    return static_cast<double>(HeapPeak()) / (1 << 20);
}

}  // namespace

int main() {
    const CoreHost host;
    platformServices.clockSeconds = [] { return std::uint32_t{1}; };
    std::printf("%-26s %10s %10s %10s   %s\n", "ns a pixel at", "128", "256", "512",
                "MB beside the raster at 512");
    for (const Operation& operation : Operations()) {
        std::printf("%-26s", operation.name.c_str());
        for (const short side : {short{128}, short{256}, short{512}}) {
            std::printf(" %10.2f", NanosecondsAPixel(operation, side));
        }
        std::printf("   %.2f\n", PeakMegabytes(operation, 512));
        std::fflush(stdout);
    }
    return 0;
}
