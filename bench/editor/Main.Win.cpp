// Runs the measurements that are asked for by their names; all without a name.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "base/Module.Win.h"
#include "bench/editor/EditorRun.Win.h"
#include "bench/editor/Measurements.Win.h"
#include "fixtures/PreferencePlaceInMemory.h"

namespace {

struct Measurement {
    const char* name;
    void (*measure)();
};

constexpr Measurement measurements[] = {
    {"open", MeasureOpenings},  {"presets", MeasurePresets}, {"transfer", MeasureTransfer},
    {"stroke", MeasureStrokes}, {"apply", MeasureApplies},
};

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> asked(argv + 1, argv + argc);
    const auto isAsked = [&](const char* what) {
        return asked.empty() || std::find(asked.begin(), asked.end(), what) != asked.end();
    };
    instanceHandle = GetModuleHandleA(nullptr);
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "editor-bench";
    std::filesystem::create_directories(folder);
    const PreferencePlaceInMemory place((folder / "Zandermolite.8bf").string());
    StorePreferences(false);
    std::printf("Tile %d by %d, window %d by %d\n", tileSide, tileSide,
                GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN));
    for (const Measurement& measurement : measurements) {
        if (isAsked(measurement.name)) {
            measurement.measure();
        }
    }
    std::filesystem::remove_all(folder);
}
