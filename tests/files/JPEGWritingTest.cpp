#include <algorithm>
#include <functional>

#include "tests/files/JPEGSupportTest.h"

namespace {

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
    // The file's earlier position doesn't matter.
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
    // The same after a callback's value that is no quality.
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
    // The same with a dialog that cannot be made.
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

/// The longest file that fits on the disk, in bytes.
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
        // The file can be enlarged; writing its bytes fails.
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
