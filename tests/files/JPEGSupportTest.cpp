#include "files/JPEGSupport.h"

#include <algorithm>
#include <array>
#include <functional>
#include <sstream>
#include <vector>

#include "files/JPEGQuality.h"
#include "host/picture/Picture.h"
#include "hostapi/Suites.h"
#include "plain/PlainJpeg.h"
#include "tests/files/ImageTest.h"

namespace {

/// What tests see of the quality dialog.
struct {
    std::vector<int> operations;
    std::int16_t wanted;
    int dialogs;
    std::int16_t dialogResult;
    std::int16_t dialogQuality;
} quality;

std::int16_t AnswerQuality(File&, std::int16_t operation, std::int16_t value) {
    quality.operations.push_back(operation);
    return operation == qualityWanted ? quality.wanted : value;
}

std::int16_t RunQualityDialog(JPEGQualityChoice& choice) {
    ++quality.dialogs;
    if (quality.dialogQuality != 0) {
        choice.Change(quality.dialogQuality);
    }
    return quality.dialogResult;
}

class JPEGSupportTest : public ImageTest {
  protected:
    JPEGSupportTest() {
        quality = {};
        platformServices.runQualityDialog = RunQualityDialog;
    }

    static ImageInfo LayoutFor(std::int16_t mode, int width, int height, std::int32_t colBytes) {
        ImageInfo layout;
        layout.mode = mode;
        layout.planes = PlanesOfMode(mode);
        layout.colBytes = colBytes;
        layout.rowBytes = width * colBytes;
        layout.bottom = static_cast<std::int16_t>(height);
        layout.right = static_cast<std::int16_t>(width);
        return layout;
    }
    /// Reads the file's pixels in the layout, into bytes that were 0x55.
    std::int16_t Read(const ImageInfo& layout) {
        pixels.assign(static_cast<std::size_t>(layout.rowBytes * layout.Height()), '\x55');
        EXPECT_EQ(file.SetImageLayout(&layout), 0);
        const std::int16_t status = file.ReadImagePixels(pixels.data());
        EXPECT_EQ(file.handle, nullptr);
        return status;
    }
    /// Writes a picture whose rows lie one behind the other.
    std::int16_t Write(const PlainPicture& picture, ImageInfo layout) {
        file.SetPath(NameOf("written.jpg"));
        layout.rowBytes = picture.width * layout.colBytes;
        EXPECT_EQ(file.SetImageLayout(&layout), 0);
        const std::int16_t status = file.WriteImagePixels(picture.bytes.data());
        EXPECT_EQ(file.handle, nullptr);
        return status;
    }

    std::string pixels;
    const PlainPicture tiny{3, 2, 3,
                            "\xFF\x10\x20\x40\xC0\x80\x01\x02\x03"
                            "\x77\x66\x55\xA0\xA0\xA0\x30\x90\xF0"};
    const ImageInfo tinyLayout = LayoutFor(3, 3, 2, 3);
};

// Reading.

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
    // Of colours the library gives the brightness that the stream has anyway.
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

// Writing.

TEST_F(JPEGSupportTest, WritesWhatTheLibraryMakes) {
    file.callback = AnswerQuality;
    for (const std::int16_t wanted : std::initializer_list<std::int16_t>{1, 75, 100}) {
        quality = {};
        quality.wanted = wanted;
        ASSERT_EQ(Write(tiny, tinyLayout), 0);
        EXPECT_EQ(BytesIn("written.jpg"), EncodeJpegPlainly(tiny, wanted));
        EXPECT_EQ(quality.operations, std::vector<int>{103});
        EXPECT_EQ(quality.dialogs, 0);
    }
}

TEST_F(JPEGSupportTest, GreyIsWrittenAsGrey) {
    file.callback = AnswerQuality;
    quality.wanted = 90;
    const PlainPicture greys{4, 1, 1, "\x01\x60\xA0\xFF"};
    ASSERT_EQ(Write(greys, LayoutFor(1, 4, 1, 1)), 0);
    EXPECT_EQ(BytesIn("written.jpg"), EncodeJpegPlainly(greys, 90));
}

TEST_F(JPEGSupportTest, TheFileIsReplaced) {
    Put(std::string(5000, 'x'), "written.jpg");
    file.callback = AnswerQuality;
    quality.wanted = 100;
    // What was done with the file before doesn't matter.
    file.position = 1234;
    ASSERT_EQ(Write(tiny, tinyLayout), 0);
    EXPECT_EQ(BytesIn("written.jpg"), EncodeJpegPlainly(tiny, 100));
}

TEST_F(JPEGSupportTest, AResolutionGivesAJFIFHeader) {
    file.callback = AnswerQuality;
    quality.wanted = 100;
    ImageInfo layout = tinyLayout;
    layout.resolutionUnit = dotsPerCentimetre;
    layout.xResolution = 300;
    layout.yResolution = 5;
    ASSERT_EQ(Write(tiny, layout), 0);
    const std::string bytes = BytesIn("written.jpg");
    constexpr char header[] = "\xFF\xD8\xFF\xE0\0\x10JFIF\0\1\1\2\1\x2C\0\5\0\0";
    EXPECT_EQ(bytes.substr(0, sizeof header - 1), std::string(header, sizeof header - 1));
    const std::string without = EncodeJpegPlainly(tiny, 100);
    EXPECT_EQ(bytes.substr(20), without.substr(2));
    ImageInfo info;
    ASSERT_EQ(file.ReadImageInfo(&info), 0);
    EXPECT_EQ(info.resolutionUnit, dotsPerCentimetre);
    EXPECT_EQ(info.xResolution, 300);
    EXPECT_EQ(info.yResolution, 5);
}

TEST_F(JPEGSupportTest, OtherUnitsGiveNoHeader) {
    file.callback = AnswerQuality;
    quality.wanted = 100;
    for (const std::int16_t unit : std::initializer_list<std::int16_t>{-1, 0, 3}) {
        ImageInfo layout = tinyLayout;
        layout.resolutionUnit = unit;
        layout.xResolution = layout.yResolution = 300;
        ASSERT_EQ(Write(tiny, layout), 0);
        EXPECT_EQ(BytesIn("written.jpg"), EncodeJpegPlainly(tiny, 100));
    }
}

TEST_F(JPEGSupportTest, AUnitWithoutAResolutionIsAFaultBeforeTheFileIsTouched) {
    Put("old", "written.jpg");
    for (const auto& [x, y] : {std::pair{0, 1}, {1, 0}}) {
        ImageInfo layout = tinyLayout;
        layout.resolutionUnit = dotsPerInch;
        layout.xResolution = static_cast<std::uint16_t>(x);
        layout.yResolution = static_cast<std::uint16_t>(y);
        EXPECT_EQ(FaultOf([&] { Write(tiny, layout); }), 20008);
    }
    EXPECT_EQ(BytesIn("written.jpg"), "old");
}

TEST_F(JPEGSupportTest, OnlyGreyAndRGBAreWritten) {
    Put("old", "written.jpg");
    const PlainPicture inks{1, 1, 4, "abcd"};
    EXPECT_EQ(FaultOf([&] { Write(inks, LayoutFor(4, 1, 1, 4)); }), 20008);
    const PlainPicture lab{1, 1, 3, "abc"};
    EXPECT_EQ(FaultOf([&] { Write(lab, LayoutFor(9, 1, 1, 3)); }), 20008);
    EXPECT_EQ(BytesIn("written.jpg"), "old");
}

TEST_F(JPEGSupportTest, PixelsWithGapsAreAFaultBehindTheFilesCreation) {
    file.callback = AnswerQuality;
    quality.wanted = 100;
    const PlainPicture spread{2, 1, 4, "abc.def."};
    EXPECT_EQ(FaultOf([&] { Write(spread, LayoutFor(3, 2, 1, 4)); }), 20008);
    EXPECT_EQ(file.handle, nullptr);
    EXPECT_EQ(BytesIn("written.jpg"), "");
}

TEST_F(JPEGSupportTest, WithoutAnAnswerTheQualityDialogDecides) {
    quality.dialogQuality = 42;
    ASSERT_EQ(Write(tiny, tinyLayout), 0);
    EXPECT_EQ(quality.dialogs, 1);
    EXPECT_EQ(BytesIn("written.jpg"), EncodeJpegPlainly(tiny, 42));
    // The quality that it shows is as good as a chosen one.
    quality.dialogQuality = 0;
    ASSERT_EQ(Write(tiny, tinyLayout), 0);
    EXPECT_EQ(BytesIn("written.jpg"), EncodeJpegPlainly(tiny, 75));
    // So it does after an answer that is no quality.
    file.callback = AnswerQuality;
    for (const std::int16_t answer : std::initializer_list<std::int16_t>{0, -1}) {
        quality = {};
        quality.wanted = answer;
        quality.dialogQuality = 30;
        ASSERT_EQ(Write(tiny, tinyLayout), 0);
        EXPECT_EQ(quality.operations, (std::vector<int>{103, 102, 100, 101}));
        EXPECT_EQ(BytesIn("written.jpg"), EncodeJpegPlainly(tiny, 30));
    }
}

TEST_F(JPEGSupportTest, CancellingTheQualityDialogLeavesTheFile) {
    Put("old", "written.jpg");
    quality.dialogResult = 32512;
    EXPECT_EQ(Write(tiny, tinyLayout), 32512);
    EXPECT_EQ(BytesIn("written.jpg"), "old");
    // So does one that cannot be made.
    quality.dialogResult = -108;
    EXPECT_EQ(Write(tiny, tinyLayout), -108);
    EXPECT_EQ(BytesIn("written.jpg"), "old");
}

TEST_F(JPEGSupportTest, AFileThatCannotBeCreatedIsTheFilesStatus) {
    file.callback = AnswerQuality;
    quality.wanted = 100;
    std::filesystem::create_directory(folder.Path() / "written.jpg");
    EXPECT_EQ(Write(tiny, tinyLayout), 19007);
}

TEST_F(JPEGSupportTest, APictureWithoutPixelsIsStatus17402) {
    file.callback = AnswerQuality;
    quality.wanted = 100;
    EXPECT_EQ(Write({0, 2, 3, ""}, LayoutFor(3, 0, 2, 3)), 17402);
    EXPECT_EQ(Write({2, 0, 3, ""}, LayoutFor(3, 2, 0, 3)), 17402);
    EXPECT_EQ(Write({2, -1, 3, ""}, LayoutFor(3, 2, -1, 3)), 17402);
}

PlainPicture Noise(int side) {
    PlainPicture noise{side, side, 3, {}};
    noise.bytes.resize(static_cast<std::size_t>(side * side * 3));
    unsigned state = 1;
    for (char& byte : noise.bytes) {
        state = state * 1103515245 + 12345;
        byte = static_cast<char>(state >> 16);
    }
    return noise;
}

/// A disk that is full when a file is longer than `room`, and how it says so.
std::int32_t room;
enum class Refusal { fails, isShort, failsToFlush };
Refusal refusal;

class FullDiskTest : public JPEGSupportTest {
  protected:
    FullDiskTest() {
        file.callback = AnswerQuality;
        quality.wanted = 100;
        static std::int32_t end;
        static const FileSystemServices original = fileSystem;
        fileSystem.seek = [](void* handle, std::int32_t position) {
            end = position;
            return original.seek(handle, position);
        };
        // Growing a file is no trouble; it is the bytes that find no room.
        fileSystem.write = [](void* handle, const void* buffer, std::int32_t count,
                              std::int32_t* transferred) {
            const std::int32_t fitting = std::min(count, room - end);
            end += count;
            if (refusal == Refusal::failsToFlush) {
                return original.write(handle, buffer, count, transferred);
            }
            return original.write(handle, buffer, fitting, transferred) &&
                   (fitting == count || refusal == Refusal::isShort);
        };
        fileSystem.flush = [](void* handle) { return end <= room && original.flush(handle); };
    }
    ~FullDiskTest() override {
        EXPECT_TRUE(Log().faults.empty()) << "it costs the file alone";
        EXPECT_EQ(errorCell, 0);
    }

    /// Runs `test` for every way in which a disk can refuse.
    static void ForEachRefusal(const std::function<void()>& test) {
        for (const Refusal way : {Refusal::fails, Refusal::isShort, Refusal::failsToFlush}) {
            SCOPED_TRACE(static_cast<int>(way));
            refusal = way;
            test();
        }
    }
};

TEST_F(FullDiskTest, IsStatus17402AndLeavesAFile) {
    const PlainPicture noise = Noise(64);
    const std::string whole = EncodeJpegPlainly(noise, 100);
    ForEachRefusal([&] {
        for (room = 0; room < static_cast<std::int32_t>(whole.size()); room += 3000) {
            EXPECT_EQ(Write(noise, LayoutFor(3, 64, 64, 3)), 17402) << room;
            EXPECT_TRUE(std::filesystem::exists(NameOf("written.jpg")));
            EXPECT_EQ(BytesIn("written.jpg"), "");
            EXPECT_EQ(file.handle, nullptr);
        }
    });
    room = static_cast<std::int32_t>(whole.size());
    EXPECT_EQ(Write(noise, LayoutFor(3, 64, 64, 3)), 0);
    EXPECT_EQ(BytesIn("written.jpg"), whole);
}

TEST_F(FullDiskTest, LeavesWhatWasWrittenOfALargePicture) {
    const PlainPicture noise = Noise(900);
    const std::string whole = EncodeJpegPlainly(noise, 100);
    ASSERT_GT(whole.size(), 1024 * 1024u);
    room = static_cast<std::int32_t>(whole.size()) - 1;
    ForEachRefusal([&] {
        EXPECT_EQ(Write(noise, LayoutFor(3, 900, 900, 3)), 17402);
        EXPECT_EQ(BytesIn("written.jpg"), whole.substr(0, 1024 * 1024));
    });
    ++room;
    EXPECT_EQ(Write(noise, LayoutFor(3, 900, 900, 3)), 0);
    EXPECT_EQ(BytesIn("written.jpg"), whole);
}

#ifndef _WIN32
TEST_F(JPEGSupportTest, ADeviceThatIsAlwaysFullIsStatus17402) {
    file.callback = AnswerQuality;
    quality.wanted = 100;
    file.SetPath("/dev/full");
    file.type = jpegExtension;
    ASSERT_EQ(file.SetImageLayout(&tinyLayout), 0);
    EXPECT_EQ(file.WriteImagePixels(tiny.bytes.data()), 17402);
    EXPECT_EQ(file.handle, nullptr);
}
#endif

TEST_F(JPEGSupportTest, AFailingCloseIsTheFilesStatus) {
    file.callback = AnswerQuality;
    quality.wanted = 100;
    static const auto original = fileSystem.close;
    fileSystem.close = [](void* handle) { return original(handle) && false; };
    EXPECT_EQ(Write(tiny, tinyLayout), 19009);
}

TEST_F(JPEGSupportTest, WritingShowsTheWaitCursor) {
    file.callback = AnswerQuality;
    quality.wanted = 100;
    static std::uint32_t rows;
    rows = 0;
    platformServices.tickCount = [] { return ++rows * 1000; };
    ASSERT_EQ(Write(tiny, tinyLayout), 0);
    EXPECT_EQ(rows, 2u);
    EXPECT_EQ(Log().waitCursors, 2);
}

}  // namespace
