#include "paint/records/Field.h"

#include <cmath>
#include <iterator>
#include <limits>
#include <set>
#include <string>

#include "paint/records/EffectParams.h"
#include "paint/records/FilterParams.h"
#include "paint/records/LinesParams.h"
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
    EXPECT_EQ(NearestInRange(angle, -181), -180);
    EXPECT_EQ(NearestInRange(angle, 45), 45);
    EXPECT_EQ(NearestInRange(angle, 1e300), 180);
    EXPECT_EQ(NearestInRange(angle, std::nan("")), -180);
}

TEST_F(FieldTest, OfAChoiceOnlyItsValuesAreInRange) {
    const Field& stacking = FieldFor(&ShapesParams::stacking);
    for (const int value : {0, 1, 44}) {
        EXPECT_TRUE(IsInRange(stacking, value)) << value;
        EXPECT_EQ(NearestInRange(stacking, value), value);
    }
    for (const auto& [value, nearest] :
         {std::pair{-5, 0}, {2, 1}, {22, 1}, {23, 44}, {43, 44}, {45, 44}, {32767, 44}}) {
        EXPECT_FALSE(IsInRange(stacking, value)) << value;
        EXPECT_EQ(NearestInRange(stacking, value), nearest) << value;
    }
    EXPECT_EQ(NearestInRange(FieldFor(&MosaicParams::horizontal), 2), 1) << "the lower one of two";
}

TEST_F(FieldTest, AWholeRecordIsPutInRange) {
    ShapesParams shapes;
    EXPECT_TRUE(IsInRange(FieldsOf<ShapesParams>(), &shapes));
    shapes.sizeX = std::nan("");
    shapes.repeatX = 33;
    EXPECT_FALSE(IsInRange(FieldsOf<ShapesParams>(), &shapes));
    PutInRange(FieldsOf<ShapesParams>(), &shapes);
    EXPECT_TRUE(IsInRange(FieldsOf<ShapesParams>(), &shapes));
    EXPECT_EQ(shapes.sizeX, 0.0);
    EXPECT_EQ(shapes.repeatX, 32);
    EXPECT_EQ(shapes.color, ShapesParams{}.color);
}

template <typename Record>
void ExpectSoundTable(const char* record) {
    SCOPED_TRACE(record);
    const Record defaults;
    EXPECT_TRUE(IsInRange(FieldsOf<Record>(), &defaults)) << "the defaults";
    std::set<std::string> names;
    for (const Field& field : FieldsOf<Record>()) {
        SCOPED_TRACE(field.name);
        EXPECT_TRUE(names.insert(field.name).second);
        if (field.type != FieldType::color) {
            EXPECT_LT(field.low, field.high);
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
}

}  // namespace
