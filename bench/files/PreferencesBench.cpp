// Reading and writing a preference file with as many presets as its count can tell, in memory.
#include <benchmark/benchmark.h>

#include <string>

#include "fixtures/PreferencesInMemory.h"

namespace {

constexpr int presetCount = 32766;

std::string ManyPresets() {
    Preferences preferences;
    for (int i = 0; i < presetCount; ++i) {
        preferences.presets[presetSkew].Append(::operator new(sizeof(SkewParams), std::nothrow),
                                               std::to_string(i).c_str());
        void* record = nullptr;
        preferences.presets[presetSkew].DataAt(static_cast<short>(i + 1), &record);
        new (record) SkewParams();
    }
    return WrittenBytes(preferences);
}

void Load(benchmark::State& state) {
    const std::string bytes = ManyPresets();
    for (auto _ : state) {
        Preferences preferences;
        ReadFromBytes(bytes, preferences);
    }
}
BENCHMARK(Load)->Name("Loading 32766 presets/fast")->Unit(benchmark::kMillisecond);

void Save(benchmark::State& state) {
    Preferences preferences;
    ReadFromBytes(ManyPresets(), preferences);
    for (auto _ : state) {
        benchmark::DoNotOptimize(WrittenBytes(preferences).data());
    }
}
BENCHMARK(Save)->Name("Saving 32766 presets/fast")->Unit(benchmark::kMillisecond);

}  // namespace
