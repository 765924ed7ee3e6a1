#include <memory>
#include <new>
#include <string>

#include "bench/editor/EditorRun.Win.h"
#include "bench/editor/Measurements.Win.h"
#include "files/Preferences.h"
#include "fixtures/PreferencesInMemory.h"

namespace {

constexpr int files = 15;

/// As many presets in one list as its count has room for.
std::unique_ptr<Preferences> ManyPresets() {
    constexpr int presetCount = 32766;
    auto preferences = std::make_unique<Preferences>();
    for (int i = 0; i < presetCount; ++i) {
        void* const record = ::operator new(sizeof(SkewParams));
        new (record) SkewParams();
        preferences->presets[presetSkew].Append(record, std::to_string(i).c_str());
    }
    return preferences;
}

}  // namespace

/// A real file, which the process has in its own folder; and beside it the bytes in memory.
void MeasurePresets() {
    const std::unique_ptr<Preferences> many = ManyPresets();
    const std::string bytes = WrittenBytes(*many);
    std::vector<double> saved;
    std::vector<double> loaded;
    std::vector<double> read;
    for (int i = 0; i < files; ++i) {
        Clock::time_point start = Clock::now();
        SavePreferences(*many);
        saved.push_back(MillisecondsSince(start));
        Preferences fromFile;
        start = Clock::now();
        LoadPreferences(fromFile);
        loaded.push_back(MillisecondsSince(start));
        Preferences fromMemory;
        start = Clock::now();
        ReadFromBytes(bytes, fromMemory);
        read.push_back(MillisecondsSince(start));
    }
    Report("Saving 32766 presets", saved);
    Report("Loading them from the file", loaded);
    Report("Reading them from memory", read);
}
