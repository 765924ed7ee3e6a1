#include "files/PreferenceFormat.h"

#include <bit>
#include <cstring>
#include <limits>
#include <memory>
#include <utility>

#include "base/FatalError.h"
#include "base/Rectangles.h"
#include "base/TryMake.h"
#include "files/PreferenceFile.h"
#include "resources/Ids.h"

namespace {

constexpr char magic[4] = {'V', 'E', 'L', 'K'};
constexpr char resolutionMark[4] = {'V', 'E', 'L', 'R'};
constexpr std::uint16_t version = 1;
constexpr std::int32_t versionOffset = sizeof magic;
constexpr std::int32_t headOffset = versionOffset + sizeof version;
constexpr std::int32_t listsOffset = 193;
/// A count of entries plus one.
using CountWord = std::int16_t;
constexpr CountWord emptyList = 1;

/// One member of the head.
struct HeadMember {
    std::int32_t offset;
    std::int32_t size;
    void* (*target)(Preferences& preferences);
    const void* (*source)(const Preferences& preferences);
    /// For a last used record, the id of its operation; else 0.
    std::int16_t id;
};

template <auto member>
constexpr HeadMember Member(std::int32_t offset, std::int16_t id = 0,
                            std::size_t size = sizeof(std::declval<Preferences&>().*member)) {
    return {offset, static_cast<std::int32_t>(size),
            [](Preferences& preferences) -> void* { return &(preferences.*member); },
            [](const Preferences& preferences) -> const void* { return &(preferences.*member); },
            id};
}

/// One preset list. In memory a record has its type's whole size, which can be larger.
struct PresetFormat {
    std::int32_t size;
    std::size_t sizeInMemory;
};

template <typename Record>
constexpr PresetFormat RecordOf(std::size_t size = sizeof(Record)) {
    return {static_cast<std::int32_t>(size), sizeof(Record)};
}

// The layout: the head's members after magic and version, and the lists after the head.
constexpr HeadMember headMembers[] = {
    Member<&Preferences::launchFlag>(6),
    Member<&Preferences::foreground>(7),
    Member<&Preferences::background>(13),
    Member<&Preferences::blur>(19, blurDialog),
    Member<&Preferences::sharpen>(25, sharpenDialog),
    Member<&Preferences::noise>(27, noiseDialog),
    Member<&Preferences::saturation>(35, saturationDialog),
    Member<&Preferences::brightContr>(37, brightContrDialog),
    Member<&Preferences::addColor>(41, addColorDialog),
    Member<&Preferences::mosaic>(49, mosaicDialog),
    Member<&Preferences::lines>(53, linesDialog),
    Member<&Preferences::drops>(67, dropsDialog),
    Member<&Preferences::dividers>(81, devidersDialog),
    Member<&Preferences::waves>(107, wavesDialog),
    Member<&Preferences::twirls>(123, twirlsDialog),
    Member<&Preferences::skew>(129, skewDialog),
    Member<&Preferences::shapes>(133, shapesDialog, shapesRecordSize),
};
constexpr PresetFormat presetFormats[presetEffectCount] = {
    RecordOf<LinesParams>(),
    RecordOf<DropsParams>(),
    RecordOf<DividersParams>(),
    RecordOf<WavesParams>(),
    RecordOf<TwirlsParams>(),
    RecordOf<SkewParams>(),
    RecordOf<ShapesParams>(shapesRecordSize),
};

constexpr bool HasNoGaps() {
    std::int32_t offset = headOffset;
    for (const HeadMember& member : headMembers) {
        if (member.offset != offset) {
            return false;
        }
        offset += member.size;
    }
    return offset == listsOffset;
}
static_assert(HasNoGaps());
static_assert(smallestPreferenceSize == listsOffset + presetEffectCount * sizeof(CountWord) +
                                            placedDialogCount * sizeof(hostapi::Rect));

/// The records are written as they stand in memory.
static_assert(std::endian::native == std::endian::little);

void CheckHead(const PreferenceReader& read) {
    char readMagic[sizeof magic];
    std::uint16_t readVersion = 0;
    read(readMagic, sizeof readMagic);
    if (std::memcmp(readMagic, magic, sizeof magic) != 0) {
        throw std::int16_t{preferenceBadHead};
    }
    read(&readVersion, sizeof readVersion);
    if (readVersion != version) {
        throw std::int16_t{preferenceBadHead};
    }
}

RecordPointer NewRecord(const PresetFormat& format) {
    RecordPointer record = TryMakeRecord(format.sizeInMemory);
    if (!record) {
        throw std::int16_t{preferenceNoMemory};
    }
    std::memset(record.get(), 0, format.sizeInMemory);
    return record;
}

void ReadPresets(const PreferenceReader& read, const PresetFormat& format, SimpleLink& list) {
    CountWord count = 0;
    read(&count, sizeof count);
    for (CountWord i = emptyList; i < count; ++i) {
        char name[nameCapacity + 1] = {};  // the file may hold a name without its zero
        read(name, nameCapacity);
        RecordPointer record = NewRecord(format);
        read(record.get(), format.size);
        list.Append(record.release(), name);
    }
}

/// The first index without a record.
CountWord CountWordOf(const SimpleLink& list) {
    void* ignored = nullptr;
    CountWord index = 1;
    while (index < std::numeric_limits<CountWord>::max() && list.DataAt(index, &ignored)) {
        ++index;
    }
    return index;
}

void WritePresets(const PreferenceWriter& write, const PresetFormat& format,
                  const SimpleLink& list) {
    const CountWord count = CountWordOf(list);
    write(&count, sizeof count);
    for (CountWord i = emptyList; i < count; ++i) {
        char name[nameCapacity] = {};
        void* record = nullptr;
        list.NameAt(i, name);
        list.DataAt(i, &record);
        write(name, sizeof name);
        write(record, format.size);
    }
}

/// A file may end before it, and whatever else keeps it from being read costs nothing but itself.
void ReadPlaceResolution(const PreferenceReader& read, Preferences& preferences) {
    char mark[sizeof resolutionMark];
    std::int16_t resolution = 0;
    hostapi::Rect place{};
    try {
        read(mark, sizeof mark);
        if (std::memcmp(mark, resolutionMark, sizeof mark) != 0) {
            return;
        }
        read(&resolution, sizeof resolution);
        read(&place, sizeof place);
    } catch (std::int16_t) {
        return;
    }
    if (resolution > 0 && AreEqual(place, preferences.editorPlace)) {
        preferences.placeResolution = resolution;
        preferences.hasPlaceResolution = true;
    }
}

void WritePlaceResolution(const PreferenceWriter& write, const Preferences& preferences) {
    if (preferences.hasPlaceResolution ||
        preferences.placeResolution != Preferences{}.placeResolution) {
        write(resolutionMark, sizeof resolutionMark);
        write(&preferences.placeResolution, sizeof preferences.placeResolution);
        write(&preferences.editorPlace, sizeof preferences.editorPlace);
    }
}

}  // namespace

const void* LastUsedRecord(const Preferences& preferences, std::int16_t id) {
    for (const HeadMember& member : headMembers) {
        if (id != 0 && member.id == id) {
            return member.source(preferences);
        }
    }
    FailAssertion("PreferenceFormat / no record of this operation is kept");
}

void* LastUsedRecord(Preferences& preferences, std::int16_t id) {
    return const_cast<void*>(LastUsedRecord(std::as_const(preferences), id));
}

std::uint8_t ReadPreferenceHead(const PreferenceReader& read) {
    CheckHead(read);
    std::uint8_t launchFlag = 1;
    read(&launchFlag, sizeof launchFlag);
    return launchFlag;
}

void ReadPreferences(const PreferenceReader& read, Preferences& preferences) {
    CheckHead(read);
    for (const HeadMember& member : headMembers) {
        read(member.target(preferences), member.size);
    }
    for (std::size_t i = 0; i < presetEffectCount; ++i) {
        ReadPresets(read, presetFormats[i], preferences.presets[i]);
    }
    read(&preferences.editorPlace, sizeof preferences.editorPlace);
    for (std::size_t i = placedTexture + 1; i < placedDialogCount; ++i) {
        read(&dialogPlaces[i], sizeof dialogPlaces[i]);
    }
    ReadPlaceResolution(read, preferences);
}

void WritePreferences(const PreferenceWriter& write, const Preferences& preferences) {
    write(magic, sizeof magic);
    write(&version, sizeof version);
    for (const HeadMember& member : headMembers) {
        write(member.source(preferences), member.size);
    }
    for (std::size_t i = 0; i < presetEffectCount; ++i) {
        WritePresets(write, presetFormats[i], preferences.presets[i]);
    }
    write(&preferences.editorPlace, sizeof preferences.editorPlace);
    for (std::size_t i = placedTexture + 1; i < placedDialogCount; ++i) {
        write(&dialogPlaces[i], sizeof dialogPlaces[i]);
    }
    WritePlaceResolution(write, preferences);
}
