// Reading and writing a preference file with as many presets as its count can tell, in memory.
#include <benchmark/benchmark.h>

#include <cstring>
#include <string>

#include "files/PreferenceFormat.h"

namespace {

constexpr int presetCount = 32766;

std::string Written(const Preferences& preferences) {
    std::string bytes;
    WritePreferences(
        [&bytes](const void* buffer, std::int32_t count) {
            bytes.append(static_cast<const char*>(buffer), static_cast<std::size_t>(count));
        },
        preferences);
    return bytes;
}

void ReadFrom(const std::string& bytes, Preferences& preferences) {
    const char* at = bytes.data();
    ReadPreferences(
        [&at](void* buffer, std::int32_t count) {
            std::memcpy(buffer, at, static_cast<std::size_t>(count));
            at += count;
        },
        preferences);
}

std::string ManyPresets() {
    Preferences preferences;
    for (int i = 0; i < presetCount; ++i) {
        preferences.presets[presetSkew].Append(::operator new(sizeof(SkewParams), std::nothrow),
                                               std::to_string(i).c_str());
        void* record = nullptr;
        preferences.presets[presetSkew].DataAt(static_cast<short>(i + 1), &record);
        new (record) SkewParams();
    }
    return Written(preferences);
}

void Load(benchmark::State& state) {
    const std::string bytes = ManyPresets();
    for (auto _ : state) {
        Preferences preferences;
        ReadFrom(bytes, preferences);
    }
}
BENCHMARK(Load)->Name("Loading 32766 presets/fast")->Unit(benchmark::kMillisecond);

void Save(benchmark::State& state) {
    Preferences preferences;
    ReadFrom(ManyPresets(), preferences);
    for (auto _ : state) {
        benchmark::DoNotOptimize(Written(preferences).data());
    }
}
BENCHMARK(Save)->Name("Saving 32766 presets/fast")->Unit(benchmark::kMillisecond);

}  // namespace
