#include "files/PreferenceFormat.h"

#include <bit>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <utility>

#include "files/PreferenceFile.h"

namespace {

constexpr char magic[4] = {'V', 'E', 'L', 'K'};
constexpr std::uint16_t version = 1;
constexpr std::int32_t versionOffset = sizeof magic;
constexpr std::int32_t headOffset = versionOffset + sizeof version;
constexpr std::int32_t listsOffset = 193;
/// A count of entries plus one.
using CountWord = std::int16_t;
constexpr CountWord emptyList = 1;

/// One field of the head.
struct HeadField {
    std::int32_t offset;
    std::int32_t size;
    void* (*target)(Preferences& preferences);
    const void* (*source)(const Preferences& preferences);
};

template <auto member>
constexpr HeadField Field(std::int32_t offset, std::size_t size) {
    return {offset, static_cast<std::int32_t>(size),
            [](Preferences& preferences) -> void* { return &(preferences.*member); },
            [](const Preferences& preferences) -> const void* { return &(preferences.*member); }};
}

template <auto member>
constexpr HeadField Field(std::int32_t offset) {
    return Field<member>(offset, sizeof(std::declval<Preferences&>().*member));
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

// The layout: the head's fields behind magic and version, and the lists behind the head.
constexpr HeadField headFields[] = {
    Field<&Preferences::launchFlag>(6),
    Field<&Preferences::foreground>(7),
    Field<&Preferences::background>(13),
    Field<&Preferences::blur>(19),
    Field<&Preferences::sharpen>(25),
    Field<&Preferences::noise>(27),
    Field<&Preferences::saturation>(35),
    Field<&Preferences::brightContr>(37),
    Field<&Preferences::addColor>(41),
    Field<&Preferences::mosaic>(49),
    Field<&Preferences::lines>(53),
    Field<&Preferences::drops>(67),
    Field<&Preferences::dividers>(81),
    Field<&Preferences::waves>(107),
    Field<&Preferences::twirls>(123),
    Field<&Preferences::skew>(129),
    Field<&Preferences::shapes>(133, shapesRecordSize),
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
    for (const HeadField& field : headFields) {
        if (field.offset != offset) {
            return false;
        }
        offset += field.size;
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

struct RecordDeleter {
    void operator()(void* record) const { ::operator delete(record); }
};
using RecordPointer = std::unique_ptr<void, RecordDeleter>;

RecordPointer NewRecord(const PresetFormat& format) {
    RecordPointer record(::operator new(format.sizeInMemory, std::nothrow));
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

}  // namespace

std::uint8_t ReadPreferenceHead(const PreferenceReader& read) {
    CheckHead(read);
    std::uint8_t launchFlag = 1;
    read(&launchFlag, sizeof launchFlag);
    return launchFlag;
}

void ReadPreferences(const PreferenceReader& read, Preferences& preferences) {
    CheckHead(read);
    for (const HeadField& field : headFields) {
        read(field.target(preferences), field.size);
    }
    for (std::size_t i = 0; i < presetEffectCount; ++i) {
        ReadPresets(read, presetFormats[i], preferences.presets[i]);
    }
    read(&preferences.editorPlace, sizeof preferences.editorPlace);
    for (std::size_t i = placedTexture + 1; i < placedDialogCount; ++i) {
        read(&dialogPlaces[i], sizeof dialogPlaces[i]);
    }
}

void WritePreferences(const PreferenceWriter& write, const Preferences& preferences) {
    write(magic, sizeof magic);
    write(&version, sizeof version);
    for (const HeadField& field : headFields) {
        write(field.source(preferences), field.size);
    }
    for (std::size_t i = 0; i < presetEffectCount; ++i) {
        WritePresets(write, presetFormats[i], preferences.presets[i]);
    }
    write(&preferences.editorPlace, sizeof preferences.editorPlace);
    for (std::size_t i = placedTexture + 1; i < placedDialogCount; ++i) {
        write(&dialogPlaces[i], sizeof dialogPlaces[i]);
    }
}
