#include <algorithm>
#include <array>
#include <sstream>

#include "host/picture/Picture.h"
#include "hostapi/Suites.h"
#include "tests/files/JPEGSupportTest.h"

namespace {

TEST_F(JPEGSupportTest, TheHeaderFillsTheRecord) {
    Put(Fixture("magick.jpg"));
    ImageInfo info;
    info.top = info.left = 9;
    ASSERT_EQ(file.ReadImageInfo(&info), 0);
    EXPECT_EQ(info.mode, 3);
    EXPECT_EQ(info.planes, 3);
    EXPECT_EQ(info.colBytes, 3);
    EXPECT_EQ(info.rowBytes, 3 * 37);
    EXPECT_EQ(info.top, 0);
    EXPECT_EQ(info.left, 0);
    EXPECT_EQ(info.bottom, 21);
    EXPECT_EQ(info.right, 37);
    EXPECT_EQ(info.resolutionUnit, dotsPerInch);
    EXPECT_EQ(info.xResolution, 300);
    EXPECT_EQ(info.yResolution, 300);
    EXPECT_EQ(file.handle, nullptr);

    Put(Fixture("grey.jpg"));
    ASSERT_EQ(file.ReadImageInfo(&info), 0);
    EXPECT_EQ(info.mode, 1);
    EXPECT_EQ(info.planes, 1);
    EXPECT_EQ(info.colBytes, 1);
    EXPECT_EQ(info.rowBytes, 37);
}

TEST_F(JPEGSupportTest, TheResolutionHasAUnitOnlyInAJFIFHeaderThatNamesOne) {
    struct Case {
        const char* name;
        int unit;
        int resolution;
    };
    for (const auto& [name, unit, resolution] : {Case{"magick-centimetre.jpg", 2, 118},
                                                 {"baseline.jpg", 0, 1},
                                                 {"exif-alone.jpg", 0, 1}}) {
        Put(Fixture(name));
        ImageInfo info;
        ASSERT_EQ(file.ReadImageInfo(&info), 0);
        EXPECT_EQ(info.resolutionUnit, unit) << name;
        EXPECT_EQ(info.xResolution, resolution) << name;
    }
    std::string strange = Fixture("magick.jpg");
    strange[13] = 7;
    Put(strange);
    ImageInfo info;
    ASSERT_EQ(file.ReadImageInfo(&info), 0);
    EXPECT_EQ(info.resolutionUnit, 0);
    EXPECT_EQ(info.xResolution, 300);
}

TEST_F(JPEGSupportTest, AnOpenFileStaysOpenUnlessItsHeaderIsBad) {
    Put(Fixture("baseline.jpg"));
    ASSERT_EQ(file.Open("r"), 0);
    ImageInfo info;
    EXPECT_EQ(ReadJPEGInfo(file, info), 0);
    EXPECT_NE(file.handle, nullptr);
    file.Close();
    Put(Fixture("cmyk.jpg"));
    ASSERT_EQ(file.Open("r"), 0);
    EXPECT_EQ(ReadJPEGInfo(file, info), 17401);
    EXPECT_NE(file.handle, nullptr) << "the header is good, only not one that is taken";
    file.Close();
    Put("no picture");
    ASSERT_EQ(file.Open("r"), 0);
    EXPECT_EQ(ReadJPEGInfo(file, info), 17401);
    EXPECT_EQ(file.handle, nullptr);
}

TEST_F(JPEGSupportTest, AFileThatCannotBeOpenedIsTheFilesStatus) {
    file.SetPath(NameOf("missing.jpg"));
    ImageInfo info = tinyLayout;
    EXPECT_EQ(file.ReadImageInfo(&info), 19006);
    EXPECT_EQ(Read(tinyLayout), 19006);
    // Nobody shares a file.
    Put(Fixture("baseline.jpg"));
    File other;
    other.SetPath(file.path);
    ASSERT_EQ(other.Open("r"), 0);
    EXPECT_EQ(file.ReadImageInfo(&info), 19006);
    EXPECT_EQ(Read(tinyLayout), 19006);
    other.Close();
    EXPECT_EQ(file.ReadImageInfo(&info), 0);
}

TEST_F(JPEGSupportTest, ColorsAreSpreadWithWhiteBehindThem) {
    Put(Fixture("baseline.jpg"));
    const std::string colors = DecodeJpegPlainly(Fixture("baseline.jpg"))->bytes;
    for (const std::int32_t colBytes : {3, 4, 5, 9}) {
        ASSERT_EQ(Read(LayoutFor(3, 37, 21, colBytes)), 0);
        std::string expected;
        for (std::size_t i = 0; i < colors.size(); i += 3) {
            expected.append(colors, i, 3).append(static_cast<std::size_t>(colBytes - 3), '\xFF');
        }
        EXPECT_EQ(pixels, expected) << colBytes;
    }
}

TEST_F(JPEGSupportTest, BytesBetweenRowsAreLeftAlone) {
    Put(Fixture("baseline.jpg"));
    ImageInfo layout = LayoutFor(3, 37, 21, 4);
    layout.rowBytes += 5;
    ASSERT_EQ(Read(layout), 0);
    for (std::size_t y = 0; y < 21; ++y) {
        EXPECT_EQ(pixels.substr(y * 153 + 148, 5), "UUUUU");
    }
}

TEST_F(JPEGSupportTest, GreyGoesThroughTheHostsColorService) {
    Put(Fixture("grey.jpg"));
    const std::string greys = DecodeJpegPlainly(Fixture("grey.jpg"))->bytes;
    ASSERT_EQ(Read(LayoutFor(3, 37, 21, 4)), 0);
    std::string expected;
    for (const char grey : greys) {
        expected.append(3, grey).append(1, '\xFF');
    }
    EXPECT_EQ(pixels, expected);
}

TEST_F(JPEGSupportTest, AHostWithoutColorServicesIsStatus17500) {
    record.colorServices = nullptr;
    Put(Fixture("grey.jpg"));
    EXPECT_EQ(Read(LayoutFor(3, 37, 21, 4)), 17500);
    EXPECT_TRUE(Log().faults.empty());
    // Colours need none.
    Put(Fixture("baseline.jpg"));
    EXPECT_EQ(Read(LayoutFor(3, 37, 21, 4)), 0);
}

TEST_F(JPEGSupportTest, WhatTheColorServiceAnswersIsTheStatus) {
    record.colorServices = [](hostapi::ColorServicesInfo*) { return std::int16_t{-30900}; };
    Put(Fixture("grey.jpg"));
    EXPECT_EQ(Read(LayoutFor(3, 37, 21, 4)), -30900);
}

TEST_F(JPEGSupportTest, AGreyLayoutGetsGreysOfAnyPicture) {
    Put(Fixture("grey.jpg"));
    ASSERT_EQ(Read(LayoutFor(1, 37, 21, 1)), 0);
    EXPECT_EQ(pixels, DecodeJpegPlainly(Fixture("grey.jpg"))->bytes);
    // The library gives colours the brightness that the stream has anyway.
    Put(Fixture("best-444.jpg"));
    ASSERT_EQ(Read(LayoutFor(1, 37, 21, 1)), 0);
    const std::string colors = DecodeJpegPlainly(Fixture("best-444.jpg"))->bytes;
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        const auto channel = [&](std::size_t c) {
            return static_cast<unsigned char>(colors[3 * i + c]);
        };
        const double brightness = 0.299 * channel(0) + 0.587 * channel(1) + 0.114 * channel(2);
        EXPECT_NEAR(static_cast<unsigned char>(pixels[i]), brightness, 2.0) << i;
    }
}

TEST_F(JPEGSupportTest, FourComponentsHaveNoRecordButCanBeConverted) {
    Put(Fixture("cmyk.jpg"));
    ImageInfo info;
    EXPECT_EQ(file.ReadImageInfo(&info), 17401);
    EXPECT_EQ(file.handle, nullptr);
    ASSERT_EQ(Read(LayoutFor(3, 37, 21, 3)), 0);
    const std::string inks = DecodeJpegPlainly(Fixture("cmyk.jpg"))->bytes;
    ASSERT_EQ(inks.size(), pixels.size() / 3 * 4);
    for (std::size_t i = 0; i < 37 * 21; ++i) {
        std::int16_t color[4];
        std::copy_n(reinterpret_cast<const unsigned char*>(&inks[4 * i]), 4, color);
        ASSERT_TRUE(host::ConvertColor(hostapi::colorSpaceCMYK, hostapi::colorSpaceRGB, color));
        for (std::size_t c = 0; c < 3; ++c) {
            ASSERT_EQ(static_cast<unsigned char>(pixels[3 * i + c]), color[c]) << i;
        }
    }
}

TEST_F(JPEGSupportTest, TwoComponentsAreNoColors) {
    Put(EncodeJpegPlainly({3, 2, 2, "0123456789AB"}, 90));
    ImageInfo info;
    EXPECT_EQ(file.ReadImageInfo(&info), 17401);
    EXPECT_EQ(FaultOf([&] { Read(tinyLayout); }), 20008);
    EXPECT_EQ(Log().faults.back().file, "JPEGSupport");
    EXPECT_EQ(file.handle, nullptr);
}

TEST_F(JPEGSupportTest, APictureOfAnotherSizeThanTheLayoutIsNotRead) {
    Put(Fixture("baseline.jpg"));
    for (const auto& [width, height] : {std::pair{36, 21}, {37, 20}, {38, 22}, {21, 37}}) {
        EXPECT_EQ(Read(LayoutFor(3, width, height, 4)), 17401);
        EXPECT_EQ(pixels.find_first_not_of('\x55'), std::string::npos);
    }
}

TEST_F(JPEGSupportTest, ReadingShowsTheWaitCursor) {
    static std::uint32_t rows;
    rows = 0;
    platformServices.tickCount = [] { return ++rows * 1000; };
    Put(Fixture("baseline.jpg"));
    ASSERT_EQ(Read(LayoutFor(3, 37, 21, 4)), 0);
    EXPECT_EQ(rows, 21u);
    EXPECT_EQ(Log().waitCursors, 21);
}

TEST_F(JPEGSupportTest, AFailingReadIsAFaultOfTheFile) {
    Put(Fixture("baseline.jpg"));
    static int reads;
    reads = 0;
    static const auto original = fileSystem.read;
    // The third is in the middle of the picture's bytes, or there is none.
    Put(Fixture("large-segment.jpg"));
    fileSystem.read = [](void* handle, void* buffer, std::int32_t count, std::int32_t* done) {
        return ++reads != 3 && original(handle, buffer, count, done);
    };
    ImageInfo info;
    EXPECT_EQ(FaultOf([&] { file.ReadImageInfo(&info); }), 20002);
    EXPECT_EQ(reads, 3);
    EXPECT_EQ(file.handle, nullptr);
}

}  // namespace
