#include "editor/Units.h"

#include <gtest/gtest.h>

namespace {

TEST(Units, PixelsStayPixels) {
    EXPECT_EQ(ConvertUnit(unitPixels, unitPixels, 300.5, 72), 300.5);
    EXPECT_EQ(ConvertUnit(unitInch, unitInch, 1.25, 72), 1.25);
    EXPECT_EQ(ConvertUnit(unitCentimetre, unitCentimetre, 1.25, 72), 1.25);
}

TEST(Units, PixelsBecomeLengthsUnrounded) {
    EXPECT_EQ(ConvertUnit(unitPixels, unitInch, 512, 72), 512.0 / 72);
    EXPECT_EQ(ConvertUnit(unitPixels, unitCentimetre, 512, 72), 512 / (72 * 0.39370078740157477));
}

TEST(Units, LengthsBecomeLengths) {
    EXPECT_EQ(ConvertUnit(unitInch, unitCentimetre, 3, 72), 3 * 2.54);
    EXPECT_EQ(ConvertUnit(unitCentimetre, unitInch, 3, 72), 3 * 0.39370078740157477);
}

TEST(Units, LengthsBecomeWholePixels) {
    EXPECT_EQ(ConvertUnit(unitInch, unitPixels, 7.1, 72), 511);   // 511.2
    EXPECT_EQ(ConvertUnit(unitInch, unitPixels, 1.7, 300), 510);  // exactly
    EXPECT_EQ(ConvertUnit(unitInch, unitPixels, 0.5, 73), 37);    // 36.5
    EXPECT_EQ(ConvertUnit(unitCentimetre, unitPixels, 18.1, 72), 513);
    EXPECT_EQ(ConvertUnit(unitCentimetre, unitPixels, 1, 72), 28);
}

TEST(Units, ALengthOfNothingIsNoPixel) {
    EXPECT_EQ(PixelSize(unitInch, 0, 72), 0);
    EXPECT_EQ(PixelSize(unitCentimetre, 0, 72), 0);
}

TEST(Units, PixelSizesTruncate) {
    EXPECT_EQ(PixelSize(unitPixels, 99.9, 72), 99);
    EXPECT_EQ(PixelSize(unitInch, 7.1, 72), 511);
}

TEST(Units, AChangeOfUnitAndBackRounds) {
    const double inches = ConvertUnit(unitPixels, unitInch, 100, 72);
    EXPECT_EQ(ConvertUnit(unitInch, unitPixels, inches, 72), 100);
    // The one decimal that the field shows is another size.
    EXPECT_EQ(ConvertUnit(unitInch, unitPixels, 1.4, 72), 101);
}

TEST(Units, AnUnknownUnitLeavesTheValue) {
    EXPECT_EQ(ConvertUnit(unitPixels, 7, 12.5, 72), 12.5);
    EXPECT_EQ(ConvertUnit(7, unitPixels, 12.5, 72), 12.5);
}

TEST(Units, ResolutionIsTheIntegerPart) {
    EXPECT_EQ(WholeResolution(72 << 16), 72);
    EXPECT_EQ(WholeResolution((300 << 16) + 0xFFFF), 300);
    EXPECT_EQ(WholeResolution(0x7FFFFFFF), 32767);
}

TEST(Units, AHostWithoutAResolutionHasTheScreens) {
    EXPECT_EQ(WholeResolution(0), 72);
    EXPECT_EQ(WholeResolution(0xFFFF), 72);
    EXPECT_EQ(WholeResolution(-1), 72);
}

}  // namespace
