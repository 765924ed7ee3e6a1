#include "editor/Readouts.h"

#include <gtest/gtest.h>

#include "editor/Units.h"

namespace {

TEST(Readouts, PixelsAreWholeNumbers) {
    EXPECT_EQ(SideText(512, unitPixels, 72), "512 pixel");
    EXPECT_EQ(SideText(1, unitPixels, 300), "1 pixel");
}

TEST(Readouts, LengthsHaveOneDecimal) {
    EXPECT_EQ(SideText(512, unitInch, 72), "7.1 inch");
    EXPECT_EQ(SideText(512, unitCentimetre, 72), "18.1 cm");
    EXPECT_EQ(SideText(512, unitInch, 300), "1.7 inch");
}

TEST(Readouts, LengthsBelowOneHaveALeadingZero) {
    EXPECT_EQ(SideText(50, unitInch, 100), "0.5 inch");
    EXPECT_EQ(SideText(1, unitInch, 300), "0.0 inch");
    EXPECT_EQ(SideText(100, unitInch, 100), "1.0 inch");
}

TEST(Readouts, TenthsAreRounded) {
    EXPECT_EQ(SideText(105, unitInch, 100), "1.1 inch");
    EXPECT_EQ(SideText(104, unitInch, 100), "1.0 inch");
}

TEST(Readouts, TheResolutionIsInDotsAnInch) {
    EXPECT_EQ(ResolutionText(72), "72 dpi");
}

TEST(Readouts, KilobytesTruncate) {
    EXPECT_EQ(MemoryText(Kilobytes(512, 512)), "1024 kB");
    EXPECT_EQ(MemoryText(Kilobytes(16, 16)), "1 kB");
    EXPECT_EQ(MemoryText(Kilobytes(15, 17)), "0 kB");
    EXPECT_EQ(MemoryText(Kilobytes(1, 1)), "0 kB");
    EXPECT_EQ(Kilobytes(32767, 32767), 4194048);
}

TEST(Readouts, ZoomIsInPercentTruncated) {
    EXPECT_EQ(ZoomText(0.25), "25%");
    EXPECT_EQ(ZoomText(0.33), "33%");
    EXPECT_EQ(ZoomText(0.5), "50%");
    EXPECT_EQ(ZoomText(0.75), "75%");
    EXPECT_EQ(ZoomText(1.0), "100%");
    EXPECT_EQ(ZoomText(1.5), "150%");
    EXPECT_EQ(ZoomText(4.0), "400%");
}

}  // namespace
