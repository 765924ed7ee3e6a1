#include "files/PreferenceFormat.h"

#include <cstring>
#include <iterator>

#include "files/PreferenceFile.h"
#include "fixtures/PreferencesInMemory.h"
#include "tests/support/CoreTest.h"
#include "tests/support/PreferenceBytes.h"
#include "tests/support/RandomInput.h"

namespace {

/// Record sizes of the lists, in their order.
constexpr std::size_t payloads[] = {14, 14, 26, 16, 6, 4, 60};
static_assert(std::size(payloads) == presetEffectCount);

class PreferenceFormatTest : public CoreTest {
  protected:
    PreferenceFormatTest() { dialogPlaces = {}; }
    ~PreferenceFormatTest() override { dialogPlaces = {}; }

    static std::string RandomBytes(std::size_t count, unsigned seed) {
        RandomInput random(seed);
        std::string bytes;
        while (bytes.size() < count) {
            bytes += static_cast<char>(random.Number(0, 255));
        }
        return bytes;
    }
    static std::string NameOf(const SimpleLink& list, short n) {
        char name[nameCapacity];
        return list.NameAt(n, name) ? name : "(none)";
    }

    Preferences preferences;
};

TEST_F(PreferenceFormatTest, TheFirstFileStandsInTheTableByteForByte) {
    const std::string bytes = WrittenBytes(preferences);
    EXPECT_EQ(bytes.size(), 383u);
    for (const PreferenceRow& row : DefaultHeadRows()) {
        EXPECT_EQ(bytes.substr(row.offset, row.bytes.size()), row.bytes) << "at " << row.offset;
    }
    EXPECT_EQ(bytes, FirstPreferenceFile());
}

TEST_F(PreferenceFormatTest, EachFieldOfTheHeadHasItsPlace) {
    std::string bytes = FirstPreferenceFile();
    bytes.replace(6, listsOffset - 6, RandomBytes(listsOffset - 6, 1));
    EXPECT_EQ(ReadFromBytes(bytes, preferences), bytes.size());
    const auto number = [&bytes]<typename Number>(std::size_t offset, Number) {
        Number value;
        std::memcpy(&value, bytes.data() + offset, sizeof value);
        return value;
    };
    const auto word = [&](std::size_t offset) { return number(offset, std::int16_t{}); };
    const auto color = [&](std::size_t offset) { return number(offset, RGBColor16{}); };
    EXPECT_EQ(preferences.launchFlag, number(6, std::uint8_t{}));
    EXPECT_EQ(preferences.foreground, color(7));
    EXPECT_EQ(preferences.background, color(13));
    EXPECT_EQ(preferences.blur.amount, word(19));
    EXPECT_EQ(preferences.blur.motion, number(21, std::uint8_t{}));
    EXPECT_EQ(preferences.blur.direction, word(23));
    EXPECT_EQ(preferences.sharpen.passes, word(25));
    EXPECT_EQ(preferences.noise.amount, word(27));
    EXPECT_EQ(preferences.noise.mode, number(31, std::int32_t{}));
    EXPECT_EQ(preferences.saturation.saturation, word(35));
    EXPECT_EQ(preferences.brightContr.brightness, word(37));
    EXPECT_EQ(preferences.brightContr.contrast, word(39));
    EXPECT_EQ(preferences.addColor.opacity, word(41));
    EXPECT_EQ(preferences.addColor.color, color(43));
    EXPECT_EQ(preferences.mosaic.horizontal, word(49));
    EXPECT_EQ(preferences.mosaic.vertical, word(51));
    EXPECT_EQ(preferences.lines.precision, word(53));
    EXPECT_EQ(preferences.lines.angle, word(59));
    EXPECT_EQ(preferences.lines.color, color(61));
    EXPECT_EQ(preferences.drops.count, word(67));
    EXPECT_EQ(preferences.drops.emphasizeLight, number(75, std::uint8_t{}));
    EXPECT_EQ(preferences.drops.coveredTone, word(79));
    EXPECT_EQ(preferences.dividers.lines, word(81));
    EXPECT_EQ(preferences.dividers.transparent, number(87, std::uint8_t{}));
    EXPECT_EQ(preferences.dividers.minimalGap, word(93));
    EXPECT_EQ(preferences.dividers.foreground, color(95));
    EXPECT_EQ(preferences.dividers.background, color(101));
    EXPECT_EQ(preferences.waves.formX, word(107));
    EXPECT_EQ(preferences.waves.formY, word(113));
    EXPECT_EQ(preferences.waves.interpolate, word(121));
    EXPECT_EQ(preferences.twirls.quantity, word(123));
    EXPECT_EQ(preferences.twirls.intensity, word(127));
    EXPECT_EQ(preferences.skew.direction, number(129, std::int32_t{}));
    EXPECT_EQ(preferences.shapes.kind, number(133, std::int32_t{}));
    EXPECT_EQ(preferences.shapes.angle, word(145));
    EXPECT_EQ(preferences.shapes.repeatX, word(165));
    EXPECT_EQ(preferences.shapes.stacking, word(175));
    EXPECT_EQ(preferences.shapes.halfShift, number(177, std::uint8_t{}));
    EXPECT_EQ(preferences.shapes.color, color(187));
    // Padding included, and whatever the floating-point fields hold.
    EXPECT_EQ(WrittenBytes(preferences), bytes);
}

TEST_F(PreferenceFormatTest, ListsAndPlacesComeBackAsTheyWere) {
    std::string bytes = DefaultHead();
    for (std::size_t i = 0; i < presetEffectCount; ++i) {
        const int entries = static_cast<int>(i) % 3;
        bytes += WordBytes(entries + 1);
        for (int entry = 0; entry < entries; ++entry) {
            bytes += NameBytes("preset " + std::to_string(i) + std::to_string(entry));
            bytes += RandomBytes(payloads[i], static_cast<unsigned>(10 * i) + 1);
        }
    }
    bytes += RandomBytes(placesSize, 99);
    EXPECT_EQ(ReadFromBytes(bytes, preferences), bytes.size());
    EXPECT_EQ(NameOf(preferences.presets[presetLines], 1), "(none)");
    EXPECT_EQ(NameOf(preferences.presets[presetDrops], 1), "preset 10");
    EXPECT_EQ(NameOf(preferences.presets[presetDividers], 1), "preset 20");
    EXPECT_EQ(NameOf(preferences.presets[presetDividers], 2), "preset 21") << "oldest first";
    EXPECT_EQ(NameOf(preferences.presets[presetTwirls], 1), "preset 40");
    EXPECT_EQ(NameOf(preferences.presets[presetSkew], 2), "preset 51");
    EXPECT_EQ(NameOf(preferences.presets[presetShapes], 1), "(none)");
    EXPECT_EQ(WrittenBytes(preferences), bytes);
}

TEST_F(PreferenceFormatTest, TheListsStandInTheirOrder) {
    const char* const names[] = {"Lines", "Drops", "Dividers", "Waves", "Twirls", "Skew", "Shapes"};
    std::string expected = DefaultHead();
    for (std::size_t i = 0; i < presetEffectCount; ++i) {
        // The size is any that the list's record may have in memory.
        void* const data = ::operator new(sizeof(ShapesParams));
        std::memset(data, 'a' + static_cast<int>(i), sizeof(ShapesParams));
        preferences.presets[i].Append(data, names[i]);
        expected += WordBytes(2) + NameBytes(names[i]) +
                    std::string(payloads[i], static_cast<char>('a' + i));
    }
    expected += std::string(placesSize, '\0');
    EXPECT_EQ(WrittenBytes(preferences), expected);
}

TEST_F(PreferenceFormatTest, ThePlacesStandInTheirOrder) {
    std::string bytes = DefaultHead() + EmptyLists();
    for (int i = 0; i < 22; ++i) {
        // Top, left, bottom, right.
        bytes += WordBytes(i) + WordBytes(100 + i) + WordBytes(200 + i) + WordBytes(-300 - i);
    }
    ASSERT_EQ(ReadFromBytes(bytes, preferences), bytes.size());
    EXPECT_EQ(preferences.editorPlace.top, 0);
    EXPECT_EQ(preferences.editorPlace.left, 100);
    EXPECT_EQ(preferences.editorPlace.bottom, 200);
    EXPECT_EQ(preferences.editorPlace.right, -300);
    const struct {
        PlacedDialog dialog;
        int place;
    } places[] = {
        {placedEdit, 1},    {placedCreater, 2},    {placedBlur, 3},        {placedSharpen, 4},
        {placedNoise, 5},   {placedSaturation, 6}, {placedBrightContr, 7}, {placedAddColor, 8},
        {placedMosaic, 9},  {placedCombine, 10},   {placedTile, 11},       {placedLines, 12},
        {placedShapes, 13}, {placedDrops, 14},     {placedDeviders, 15},   {placedWaves, 16},
        {placedTwirls, 17}, {placedSkew, 18},      {placedClone, 19},      {placedFill, 20},
        {placedBrush, 21},
    };
    for (const auto& [dialog, place] : places) {
        EXPECT_EQ(dialogPlaces[dialog].top, place);
        EXPECT_EQ(dialogPlaces[dialog].left, 100 + place);
        EXPECT_EQ(dialogPlaces[dialog].bottom, 200 + place);
        EXPECT_EQ(dialogPlaces[dialog].right, -300 - place);
    }
    EXPECT_EQ(WrittenBytes(preferences), bytes);
}

TEST_F(PreferenceFormatTest, ACountOfOneOrLessIsAnEmptyList) {
    for (const int count : {1, 0, -1, -32768}) {
        Preferences fresh;
        std::string bytes = FirstPreferenceFile();
        for (std::size_t i = 0; i < presetEffectCount; ++i) {
            bytes.replace(listsOffset + 2 * i, 2, WordBytes(count));
        }
        EXPECT_EQ(ReadFromBytes(bytes, fresh), 383u) << count;
        EXPECT_EQ(WrittenBytes(fresh), FirstPreferenceFile()) << "written as empty lists are";
    }
}

TEST_F(PreferenceFormatTest, WhatStandsBehindANameOrTheEndMeansNothing) {
    const std::string payload = RandomBytes(payloads[presetTwirls], 5);
    const auto file = [&](const std::string& name) {
        std::string bytes = DefaultHead() + EmptyLists() + std::string(placesSize, '\0');
        bytes.replace(listsOffset + 2 * presetTwirls, 2, WordBytes(2) + name + payload);
        return bytes;
    };
    std::string name = NameBytes("short");
    name.replace(6, 250, RandomBytes(250, 6));
    // No more than the four bytes in which a resolution would begin.
    EXPECT_EQ(ReadFromBytes(file(name) + "left over", preferences), file(name).size() + 4);
    EXPECT_EQ(WrittenBytes(preferences), file(NameBytes("short")));
}

/// The end of a file whose editor stood at `place` on a screen of `resolution`.
std::string ResolutionBytes(int resolution, const std::string& place) {
    return "VELR" + WordBytes(resolution) + place;
}

/// The first file with the editor at 10, 20 to 600, 900.
std::string PlacedFile() {
    std::string bytes = FirstPreferenceFile();
    bytes.replace(bytes.size() - placesSize, 8, FromHex("0A00 1400 5802 8403"));
    return bytes;
}

TEST_F(PreferenceFormatTest, TheResolutionOfThePlaceFollowsTheEnd) {
    preferences.editorPlace = {10, 20, 600, 900};
    preferences.placeResolution = 144;
    const std::string bytes = PlacedFile() + ResolutionBytes(144, FromHex("0A00 1400 5802 8403"));
    EXPECT_EQ(WrittenBytes(preferences), bytes);
    Preferences read;
    EXPECT_EQ(ReadFromBytes(bytes, read), bytes.size());
    EXPECT_EQ(read.placeResolution, 144);
    EXPECT_EQ(WrittenBytes(read), bytes);
}

TEST_F(PreferenceFormatTest, AFileWithoutAResolutionIsFor96) {
    for (const std::string& rest : {std::string(), std::string("VELR"), std::string(14, '\0'),
                                    ResolutionBytes(0, FromHex("0A00 1400 5802 8403")),
                                    ResolutionBytes(-5, FromHex("0A00 1400 5802 8403")),
                                    "VELS" + ResolutionBytes(144, FromHex("0A00 1400 5802")),
                                    ResolutionBytes(144, FromHex("0A00 1400 5802 84"))}) {
        Preferences read;
        ReadFromBytes(PlacedFile() + rest, read);
        EXPECT_EQ(read.placeResolution, 96);
        EXPECT_EQ(read.editorPlace.right, 900);
        EXPECT_EQ(WrittenBytes(read), PlacedFile()) << "and stays without one";
    }
}

// A program that does not know of it writes another place before it, and leaves it.
TEST_F(PreferenceFormatTest, AResolutionCountsBesideItsPlaceAlone) {
    Preferences read;
    ReadFromBytes(PlacedFile() + ResolutionBytes(144, FromHex("0A00 1400 5802 8503")), read);
    EXPECT_EQ(read.placeResolution, 96);
}

// Else an earlier resolution would apply again to a place that happens to be the same.
TEST_F(PreferenceFormatTest, AResolutionOnceWrittenIsWrittenFromThenOn) {
    Preferences read;
    ReadFromBytes(PlacedFile() + ResolutionBytes(144, FromHex("0A00 1400 5802 8403")), read);
    read.placeResolution = 96;
    EXPECT_EQ(WrittenBytes(read),
              PlacedFile() + ResolutionBytes(96, FromHex("0A00 1400 5802 8403")));
}

TEST_F(PreferenceFormatTest, ANameWithoutItsZeroIsCut) {
    std::string bytes = FirstPreferenceFile();
    bytes.replace(listsOffset + 2 * presetSkew, 2,
                  WordBytes(2) + std::string(256, 'x') + std::string(4, '\0'));
    ReadFromBytes(bytes, preferences);
    EXPECT_EQ(NameOf(preferences.presets[presetSkew], 1), std::string(255, 'x'));
}

TEST_F(PreferenceFormatTest, EntriesGoBehindThoseThatAreThere) {
    std::string bytes = FirstPreferenceFile();
    bytes.replace(listsOffset + 2 * presetSkew, 2,
                  WordBytes(2) + NameBytes("once") + std::string(4, '\0'));
    ReadFromBytes(bytes, preferences);
    ReadFromBytes(bytes, preferences);
    EXPECT_EQ(NameOf(preferences.presets[presetSkew], 1), "once");
    EXPECT_EQ(NameOf(preferences.presets[presetSkew], 2), "once");
    EXPECT_EQ(NameOf(preferences.presets[presetSkew], 3), "(none)");
}

TEST_F(PreferenceFormatTest, TheLongestListComesBackAsItWas) {
    // The largest count word less one.
    constexpr int count = 32766;
    std::string entries;
    for (int i = 0; i < count; ++i) {
        const std::string name = std::to_string(i);
        entries +=
            name + std::string(nameCapacity - name.size(), '\0') + WordBytes(i) + WordBytes(0);
    }
    std::string bytes = FirstPreferenceFile();
    bytes.replace(listsOffset + 2 * presetSkew, 2, WordBytes(32767) + entries);
    ASSERT_EQ(ReadFromBytes(bytes, preferences), bytes.size());
    EXPECT_EQ(NameOf(preferences.presets[presetSkew], count), "32765");
    EXPECT_EQ(WrittenBytes(preferences), bytes);
}

TEST_F(PreferenceFormatTest, AShapesRecordIsWholeInMemory) {
    std::string bytes = FirstPreferenceFile();
    const std::string payload = DefaultHead().substr(133, 60);
    bytes.replace(listsOffset + 2 * presetShapes, 2, WordBytes(2) + NameBytes("grid") + payload);
    ReadFromBytes(bytes, preferences);
    void* data = nullptr;
    ASSERT_TRUE(preferences.presets[presetShapes].DataAt(1, &data));
    const ShapesParams shapes = *static_cast<const ShapesParams*>(data);
    EXPECT_EQ(shapes.sizeX, 0.67);
    EXPECT_EQ(shapes.color, (RGBColor16{0x7FFF, 0x7FFF, 0x7FFF}));
}

TEST_F(PreferenceFormatTest, AnotherKindOrVersionOfFileIsRefused) {
    for (std::size_t at = 0; at < 6; ++at) {
        std::string bytes = FirstPreferenceFile();
        bytes[at] = static_cast<char>(bytes[at] + 1);
        EXPECT_EQ(FaultOf([&] { ReadFromBytes(bytes, preferences); }), -43) << at;
    }
}

TEST_F(PreferenceFormatTest, EveryFileThatEndsEarlyIsShort) {
    std::string bytes = FirstPreferenceFile();
    bytes.replace(listsOffset + 2 * presetWaves, 2,
                  WordBytes(3) + NameBytes("one") + RandomBytes(16, 7) + NameBytes("two") +
                      RandomBytes(16, 8));
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        Preferences fresh;
        EXPECT_EQ(FaultOf([&] { ReadFromBytes(bytes.substr(0, size), fresh); }), -39) << size;
    }
}

TEST_F(PreferenceFormatTest, AnyBytesInAHeadAndListsDoNoHarm) {
    for (unsigned seed = 1; seed <= 200; ++seed) {
        Preferences fresh;
        std::string bytes = FromHex("56454C4B 0100") + RandomBytes(3000, seed);
        // Now and then small counts, so that lists are read, too.
        bytes.replace(listsOffset, 2, WordBytes(static_cast<int>(seed % 5)));
        const int id = FaultOf([&] { ReadFromBytes(bytes, fresh); });
        EXPECT_TRUE(id == 0 || id == -39) << id;
    }
}

TEST_F(PreferenceFormatTest, WhatReadingThrowsPassesThrough) {
    const auto failing = [](void*, std::int32_t) { throw std::int16_t{23}; };
    EXPECT_EQ(FaultOf([&] { ReadPreferences(failing, preferences); }), 23);
    EXPECT_EQ(FaultOf([&] { ReadPreferenceHead(failing); }), 23);
    EXPECT_EQ(FaultOf([&] {
                  WritePreferences([](const void*, std::int32_t) { throw std::int16_t{24}; },
                                   preferences);
              }),
              24);
}

}  // namespace
