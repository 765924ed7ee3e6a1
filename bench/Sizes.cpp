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
#include "bench/Records.h"
#include "paint/Catalog.h"
#include "paint/PaintClass.h"
#include "paint/Stroke.h"

namespace {

struct Operation {
    std::string name;
    std::function<void(PaintClass&)> run;
};

void DrawAcross(PaintClass& pic) {
    pic.brushSize = 20;
    BrushStroke stroke(pic);
    stroke.Paint({0, 0}, {pic.grY, pic.grX});
}

/// The catalogue's with their most expensive records, then the others.
std::vector<Operation> Operations() {
    std::vector<Operation> operations;
    for (const CatalogRow& row : Catalog()) {
        operations.push_back({row.name, [&row, record = WorstRecordOf(row)](PaintClass& p) {
                                  row.run(p, record.Data());
                              }});
    }
    const std::vector<Operation> others = {
        {"Motion Blur", [](PaintClass& p) { p.MotionBlur(25, 1); }},
        {"Add Bump", [](PaintClass& p) { p.AddBump(); }},
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
    operations.insert(operations.end(), others.begin(), others.end());
    return operations;
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
