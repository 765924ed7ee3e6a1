#include "files/Preferences.h"

#include <algorithm>
#include <iterator>

#include "base/Platform.h"
#include "base/TryMake.h"
#include "files/PreferenceFile.h"
#include "files/PreferenceFormat.h"
#include "resources/Ids.h"

std::array<hostapi::Rect, placedDialogCount> dialogPlaces{};

namespace {

PreferenceReader ReaderOf(PreferenceFile& file) {
    return [&file](void* buffer, std::int32_t count) { file.ReadNext(buffer, count); };
}

PreferenceWriter WriterOf(PreferenceFile& file) {
    return [&file](const void* buffer, std::int32_t count) { file.WriteNext(buffer, count); };
}

std::int32_t SizeOf(const Preferences& preferences) {
    std::int32_t size = 0;
    WritePreferences([&size](const void*, std::int32_t count) { size += count; }, preferences);
    return size;
}

/// All in one write: if that is refused, the file is as it was. Without memory for it, record by
/// record.
void WriteWhole(PreferenceFile& file, const Preferences& preferences) {
    const std::int32_t size = SizeOf(preferences);
    const auto bytes = TryMakeArray<std::uint8_t>(static_cast<std::size_t>(size));
    if (bytes == nullptr) {
        WritePreferences(WriterOf(file), preferences);
        return;
    }
    std::uint8_t* end = bytes.get();
    const auto append = [&end](const void* buffer, std::int32_t count) {
        end = std::copy_n(static_cast<const std::uint8_t*>(buffer), count, end);
    };
    WritePreferences(append, preferences);
    file.WriteNext(bytes.get(), size);
}

/// A file that is half read or half written is of no use to anybody.
void Discard(PreferenceFile& file, std::int16_t alert) {
    platformServices.showAlert(alert, {});
    file.Close();
    file.Delete();
}

DividersParams DefaultsFor(const DividersParams& params) {
    DividersParams defaults;
    defaults.foreground = params.foreground;
    defaults.background = params.background;
    return defaults;
}

ShapesParams DefaultsFor(const ShapesParams& params) {
    ShapesParams defaults;
    std::ranges::copy(params.unused45, defaults.unused45);
    return defaults;
}

}  // namespace

bool ReadLaunchFlag() {
    PreferenceFile file;
    if (file.OpenPreferenceFile() != fileSucceeded || file.GetSize() == 0) {
        return true;
    }
    try {
        return ReadPreferenceHead(ReaderOf(file)) != 0;
    } catch (std::int16_t) {
        // The editor will report the file when it loads the rest.
        return true;
    }
}

bool LoadPreferences(Preferences& preferences) {
    PreferenceFile file;
    if (file.OpenPreferenceFile() != fileSucceeded || file.GetSize() == 0) {
        return false;
    }
    try {
        ReadPreferences(ReaderOf(file), preferences);
        preferences.combine = {};
    } catch (std::int16_t) {
        Discard(file, alertPreferencesNotRead);
        return false;
    }
    return file.Close() == fileSucceeded;
}

void SetDefaultPreferences(Preferences& preferences) {
    const Preferences defaults;
    preferences.launchFlag = defaults.launchFlag;
    preferences.foreground = defaults.foreground;
    preferences.background = defaults.background;
    preferences.blur = defaults.blur;
    preferences.sharpen = defaults.sharpen;
    preferences.noise = defaults.noise;
    preferences.saturation = defaults.saturation;
    preferences.brightContr = defaults.brightContr;
    preferences.addColor = defaults.addColor;
    preferences.mosaic = defaults.mosaic;
    preferences.lines = defaults.lines;
    preferences.drops = defaults.drops;
    preferences.dividers = DefaultsFor(preferences.dividers);
    preferences.waves = defaults.waves;
    preferences.twirls = defaults.twirls;
    preferences.skew = defaults.skew;
    preferences.shapes = DefaultsFor(preferences.shapes);
    preferences.combine = defaults.combine;
}

bool SavePreferences(const Preferences& preferences) {
    PreferenceFile file;
    if (file.OpenPreferenceFile() != fileSucceeded) {
        return false;
    }
    try {
        WriteWhole(file, preferences);
    } catch (std::int16_t) {
        Discard(file, alertPreferencesNotWritten);
        return false;
    }
    return file.Close() == fileSucceeded;
}
