#include "paint/records/Field.h"

#include <cmath>
#include <iterator>
#include <limits>
#include <set>
#include <string>

#include "paint/records/EffectParams.h"
#include "paint/records/FilterParams.h"
#include "paint/records/LinesParams.h"
#include "paint/records/ToolParams.h"
#include "tests/support/CoreTest.h"

namespace {

class FieldTest : public CoreTest {};

TEST_F(FieldTest, NumbersOfEveryTypeAreReadAndWritten) {
    ShapesParams shapes;
    WriteNumber(FieldFor(&ShapesParams::kind), &shapes, 3);
    WriteNumber(FieldFor(&ShapesParams::angle), &shapes, -180);
    WriteNumber(FieldFor(&ShapesParams::sizeY), &shapes, 0.125);
    WriteNumber(FieldFor(&ShapesParams::halfShift), &shapes, 0);
    EXPECT_EQ(shapes.kind, 3);
    EXPECT_EQ(shapes.angle, -180);
    EXPECT_EQ(shapes.sizeX, 0.67);
    EXPECT_EQ(shapes.sizeY, 0.125);
    EXPECT_EQ(shapes.halfShift, 0);
    EXPECT_EQ(ReadNumber(FieldFor(&ShapesParams::angle), &shapes), -180.0);
    EXPECT_EQ(ReadNumber(FieldFor(&ShapesParams::sizeY), &shapes), 0.125);
    EXPECT_EQ(ReadNumber(FieldFor(&ShapesParams::halfShift), &shapes), 0.0);
    LinesParams lines;
    WriteNumber(FieldFor(&LinesParams::appearance), &lines, 65535);
    EXPECT_EQ(lines.appearance, 65535);
    EXPECT_EQ(ReadNumber(FieldFor(&LinesParams::appearance), &lines), 65535.0);
}

TEST_F(FieldTest, WhatATypeDoesNotHoldIsKeptToItsEnds) {
    const Field& count = FieldFor(&DropsParams::count);
    const Field& light = FieldFor(&DropsParams::emphasizeLight);
    DropsParams drops;
    for (const auto& [written, word, byte] : {std::tuple{1e9, 32767, 255},
                                              {-1e9, -32768, 0},
                                              {std::numeric_limits<double>::infinity(), 32767, 255},
                                              {std::nan(""), 0, 0},
                                              {2.9, 2, 2}}) {
        WriteNumber(count, &drops, written);
        WriteNumber(light, &drops, written);
        EXPECT_EQ(drops.count, word);
        EXPECT_EQ(drops.emphasizeLight, byte);
    }
    EXPECT_EQ(drops.size, DropsParams{}.size) << "the neighbour";
}

TEST_F(FieldTest, ColorsAreReadAndWritten) {
    AddColorParams params;
    const Field& color = FieldFor(&AddColorParams::color);
    WriteColor(color, &params, {1, 2, 0xFFFF});
    EXPECT_EQ(params.color, (RGBColor16{1, 2, 0xFFFF}));
    EXPECT_EQ(ReadColor(color, &params), params.color);
    EXPECT_EQ(params.opacity, AddColorParams{}.opacity);
}

TEST_F(FieldTest, AColorIsNoNumber) {
    AddColorParams params;
    const Field& color = FieldFor(&AddColorParams::color);
    const Field& opacity = FieldFor(&AddColorParams::opacity);
    EXPECT_NE(AssertionOf([&] { ReadNumber(color, &params); }), "(no assertion failed)");
    EXPECT_NE(AssertionOf([&] { WriteNumber(color, &params, 1); }), "(no assertion failed)");
    EXPECT_NE(AssertionOf([&] { ReadColor(opacity, &params); }), "(no assertion failed)");
    EXPECT_NE(AssertionOf([&] { WriteColor(opacity, &params, {}); }), "(no assertion failed)");
}

TEST_F(FieldTest, OnlyWhatTheTableListsIsFound) {
    EXPECT_STREQ(FieldFor(&DropsParams::coveredTone).name, "coveredTone");
    EXPECT_NE(AssertionOf([] { FieldFor(&DropsParams::unused9); }), "(no assertion failed)");
}

TEST_F(FieldTest, ANumbersRangeIncludesBothEnds) {
    const Field& angle = FieldFor(&LinesParams::angle);
    EXPECT_TRUE(IsInRange(angle, -180));
    EXPECT_TRUE(IsInRange(angle, 180));
    EXPECT_FALSE(IsInRange(angle, -181));
    EXPECT_FALSE(IsInRange(angle, 181));
    EXPECT_FALSE(IsInRange(angle, std::nan("")));
}

TEST_F(FieldTest, OfAChoiceOnlyItsValuesAreInRange) {
    const Field& stacking = FieldFor(&ShapesParams::stacking);
    for (const int value : {0, 1, 44}) {
        EXPECT_TRUE(IsInRange(stacking, value)) << value;
    }
    for (const int value : {-5, 2, 22, 23, 43, 45, 32767}) {
        EXPECT_FALSE(IsInRange(stacking, value)) << value;
    }
    EXPECT_FALSE(IsInRange(FieldFor(&MosaicParams::horizontal), 2));
}

TEST_F(FieldTest, ANumberIsPutInRange) {
    const Field& angle = FieldFor(&ShapesParams::angle);
    ShapesParams shapes;
    for (const auto& [damaged, kept] :
         {std::pair{-32768, -180}, {-181, -180}, {-180, -180}, {45, 45}, {180, 180}, {181, 180}}) {
        WriteNumber(angle, &shapes, damaged);
        PutInRange(angle, &shapes);
        EXPECT_EQ(shapes.angle, kept) << damaged;
    }
    const double infinity = std::numeric_limits<double>::infinity();
    for (const auto& [damaged, kept] :
         {std::pair{std::nan(""), 0.0}, {-0.01, 0.0}, {0.5, 0.5}, {1.01, 1.0}, {infinity, 1.0}}) {
        shapes.sizeX = damaged;
        PutInRange(FieldFor(&ShapesParams::sizeX), &shapes);
        EXPECT_EQ(shapes.sizeX, kept) << damaged;
    }
    EXPECT_EQ(shapes.sizeY, ShapesParams{}.sizeY) << "the neighbour";
}

template <typename Record>
void ExpectSoundTable(const char* record) {
    SCOPED_TRACE(record);
    const Record defaults;
    std::set<std::string> names;
    for (const Field& field : FieldsOf<Record>()) {
        SCOPED_TRACE(field.name);
        EXPECT_TRUE(names.insert(field.name).second);
        if (field.type != FieldType::color) {
            EXPECT_LT(field.low, field.high);
            EXPECT_TRUE(IsInRange(field, ReadNumber(field, &defaults))) << "the default";
        }
        Record changed;
        for (const double end : {field.low, field.high}) {
            if (field.type != FieldType::color) {
                WriteNumber(field, &changed, end);
                EXPECT_EQ(ReadNumber(field, &changed), end) << "the type holds the range";
            }
        }
        std::set<std::string> words;
        for (std::size_t i = 0; i < field.words.size(); ++i) {
            const std::string word = field.words[i].word;
            EXPECT_TRUE(word.empty() || words.insert(word).second) << word;
            EXPECT_TRUE(i == 0 || field.words[i - 1].value < field.words[i].value);
        }
    }
}

TEST_F(FieldTest, TablesAreSound) {
    ExpectSoundTable<LinesParams>("Lines");
    ExpectSoundTable<ShapesParams>("Shapes");
    ExpectSoundTable<DropsParams>("Drops");
    ExpectSoundTable<DividersParams>("Dividers");
    ExpectSoundTable<WavesParams>("Waves");
    ExpectSoundTable<TwirlsParams>("Twirls");
    ExpectSoundTable<SkewParams>("Skew");
    ExpectSoundTable<BlurParams>("Blur");
    ExpectSoundTable<SharpenParams>("Sharpen");
    ExpectSoundTable<NoiseParams>("Noise");
    ExpectSoundTable<SaturationParams>("Saturation");
    ExpectSoundTable<BrightContrParams>("BrightContr");
    ExpectSoundTable<AddColorParams>("AddColor");
    ExpectSoundTable<MosaicParams>("Mosaic");
    ExpectSoundTable<FlipParams>("Flip");
    ExpectSoundTable<CombineParams>("Combine");
    ExpectSoundTable<TileParams>("Tile");
    ExpectSoundTable<BrushSettings>("Brush");
    ExpectSoundTable<StampSettings>("Stamp");
    ExpectSoundTable<FillSettings>("Fill");
}

}  // namespace
