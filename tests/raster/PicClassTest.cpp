#include "raster/PicClass.h"

#include <functional>
#include <map>

#include "tests/support/CoreTest.h"
#include "tests/support/Pictures.h"

namespace {

constexpr char outside[] = " !((x < grX) && (x >= 0) && (y < grY) && (y >= 0))";

std::string Locked(int line) {
    return "PicClass / Zeile " + std::to_string(line) + " !(locked)";
}

std::string Inside(int line) {
    return "PicClass / Zeile " + std::to_string(line) + outside;
}

class PicClassTest : public CoreTest {
  protected:
    PicClass pic{5, 3, false};
};

TEST_F(PicClassTest, StartsWhite) {
    EXPECT_EQ(ColorsOf(pic), std::vector<Pixel>(15, Color(255, 255, 255)));
}

TEST_F(PicClassTest, DescribesItsPixelsWithInclusiveBounds) {
    const hostapi::PSPixelMap& map = *pic.pixelMap;
    EXPECT_EQ(map.version, 1);
    EXPECT_EQ(map.bounds.top, 0);
    EXPECT_EQ(map.bounds.left, 0);
    EXPECT_EQ(map.bounds.bottom, 2);
    EXPECT_EQ(map.bounds.right, 4);
    EXPECT_EQ(map.imageMode, 3);
    EXPECT_EQ(map.rowBytes, 20);
    EXPECT_EQ(map.colBytes, 4);
    EXPECT_EQ(map.planeBytes, 1);
    EXPECT_EQ(map.baseAddr, pic.Base());
    EXPECT_EQ(map.mat, nullptr);
    EXPECT_EQ(map.masks, nullptr);
    EXPECT_EQ(map.maskPhaseRow, 0);
    EXPECT_EQ(map.maskPhaseCol, 0);
    EXPECT_EQ(pic.RowBytes(), 20);
    EXPECT_EQ(pic.grX, 5);
    EXPECT_EQ(pic.grY, 3);
}

TEST_F(PicClassTest, PixelsLieInMemoryAsRedGreenBlueAlpha) {
    pic.SetPixel(2, 1, 0x44332211);
    const unsigned char* const pixel = pic.Base() + 1 * pic.RowBytes() + 2 * 4;
    EXPECT_EQ(pixel[0], 0x11);
    EXPECT_EQ(pixel[1], 0x22);
    EXPECT_EQ(pixel[2], 0x33);
    EXPECT_EQ(pixel[3], 0x44);
    EXPECT_EQ(pic.PixelAddress(2, 1), pixel);
    EXPECT_EQ(pic.GetAlpha(2, 1), 0x44);
}

TEST_F(PicClassTest, SetRGBLeavesTheAlphaByte) {
    pic.SetPixel(2, 1, 0x44332211);
    pic.SetRGB(2, 1, 1, 2, 3);
    EXPECT_EQ(pic.GetPixel(2, 1), 0x44030201u);
}

TEST_F(PicClassTest, SetAlphaLeavesTheColours) {
    pic.SetPixel(2, 1, 0x44332211);
    pic.SetAlpha(2, 1, 9);
    EXPECT_EQ(pic.GetPixel(2, 1), 0x09332211u);
    pic.SetAlphaWrapped(7, 4, 10);
    EXPECT_EQ(pic.GetPixel(2, 1), 0x0A332211u);
}

TEST_F(PicClassTest, WrappedAccessComesInOnTheOtherSide) {
    FillWithNoise(pic);
    EXPECT_EQ(pic.GetPixelWrapped(-1, -1), pic.GetPixel(4, 2));
    EXPECT_EQ(pic.GetPixelWrapped(5, 3), pic.GetPixel(0, 0));
    EXPECT_EQ(pic.GetPixelWrapped(-32768, 32767), pic.GetPixel(2, 1));
    EXPECT_EQ(pic.GetAlphaWrapped(-1, -1), pic.GetAlpha(4, 2));
    EXPECT_EQ(pic.PixelAddressWrapped(-5, -3), pic.Base());
    pic.SetPixelWrapped(-1, 3, 0x01020304);
    EXPECT_EQ(pic.GetPixel(4, 0), 0x01020304u);
}

TEST_F(PicClassTest, ASinglePixelIsATorus) {
    PicClass single(1, 1, true);
    ASSERT_NE(single.pixelMap, nullptr);
    single.SetPixelWrapped(-7, 12345, 0x01020304);
    EXPECT_EQ(single.GetPixel(0, 0), 0x01020304u);
    EXPECT_EQ(single.GetPixelWrapped(-32768, 32767), 0x01020304u);
    unsigned char rgb[3];
    single.GetPixelInterpolated(0.5, -0.25, rgb);
    EXPECT_EQ(rgb[0], 4);
}

TEST_F(PicClassTest, CheckedAccessOutsideFailsItsAssertion) {
    const std::map<int, std::function<void(short, short)>> accessors = {
        {250, [this](short x, short y) { pic.SetRGB(x, y, 0, 0, 0); }},
        {292, [this](short x, short y) { pic.SetPixel(x, y, 0); }},
        {322, [this](short x, short y) { pic.GetPixel(x, y); }},
        {333, [this](short x, short y) { pic.PixelAddress(x, y); }},
        {378, [this](short x, short y) { pic.SetAlpha(x, y, 0); }},
        {406, [this](short x, short y) { pic.GetAlpha(x, y); }},
    };
    for (const auto& [line, accessor] : accessors) {
        // Clang 14 captures no structured bindings.
        const auto& access = accessor;
        EXPECT_EQ(AssertionOf([&] { access(5, 0); }), Inside(line));
        EXPECT_EQ(AssertionOf([&] { access(-1, 0); }), Inside(line));
        EXPECT_EQ(AssertionOf([&] { access(0, 3); }), Inside(line));
        EXPECT_EQ(AssertionOf([&] { access(0, -1); }), Inside(line));
        access(4, 2);
    }
}

TEST_F(PicClassTest, ARasterWithoutPixelsFailsEveryAccess) {
    memory.FailAllocation(1);
    PicClass empty(5, 3, false);
    ASSERT_EQ(empty.pixelMap, nullptr);
    unsigned char rgb[3];
    const std::map<int, std::function<void()>> accessors = {
        {249, [&] { empty.SetRGB(0, 0, 0, 0, 0); }},
        {271, [&] { empty.SetPixelWrapped(0, 0, 0); }},
        {291, [&] { empty.SetPixel(0, 0, 0); }},
        {302, [&] { empty.GetPixelWrapped(0, 0); }},
        {321, [&] { empty.GetPixel(0, 0); }},
        {332, [&] { empty.PixelAddress(0, 0); }},
        {342, [&] { empty.PixelAddressWrapped(0, 0); }},
        {359, [&] { empty.SetAlphaWrapped(0, 0, 0); }},
        {377, [&] { empty.SetAlpha(0, 0, 0); }},
        {387, [&] { empty.GetAlphaWrapped(0, 0); }},
        {405, [&] { empty.GetAlpha(0, 0); }},
        {419, [&] { empty.GetPixelInterpolated(0, 0, rgb); }},
    };
    for (const auto& [line, access] : accessors) {
        EXPECT_EQ(AssertionOf(access), Locked(line));
    }
    EXPECT_EQ(AssertionOf([&] { empty.SetAllAlpha(0); }), Locked(377));
    EXPECT_EQ(AssertionOf([&] { empty.AlphaFromGrey(); }), Locked(321));
}

TEST_F(PicClassTest, SidesBelowOneOrBeyondMemoryMakeNoRaster) {
    for (const auto& [width, height] :
         {std::pair{0, 5}, {5, 0}, {0, 0}, {-3, 5}, {5, -3}, {-3, -5}, {32767, 32767}}) {
        const PicClass none(static_cast<short>(width), static_cast<short>(height), true);
        EXPECT_EQ(none.pixelMap, nullptr) << width << " " << height;
    }
    EXPECT_TRUE(Log().faults.empty());
}

TEST_F(PicClassTest, HoldsPixelsUndoAndNothingElse) {
    const std::size_t before = memory.LiveBuffers();
    const PicClass plain(10, 10, false);
    EXPECT_EQ(memory.LiveBuffers(), before + 1);
    const PicClass undoable(10, 10, true);
    EXPECT_EQ(memory.LiveBuffers(), before + 3);
}

// Each construction takes blocks for pixels and undo, and probes for one more, which the host must
// have left.
class PicClassMemoryTest : public CoreTest {
  protected:
    PicClassMemoryTest() : CoreTest(SettingsFor(3)) {}
    static host::MemorySettings SettingsFor(int blocks) {
        host::MemorySettings settings;
        settings.budget = blocks * blockSize + 65536 + 1;
        return settings;
    }
    static constexpr std::int64_t blockSize = 100 * 50 * 4;
};

TEST_F(PicClassMemoryTest, ThreeBlocksSufficeForARasterWithUndo) {
    const PicClass pic(100, 50, true);
    EXPECT_NE(pic.pixelMap, nullptr);
    EXPECT_FALSE(pic.undo->InFile());
}

TEST_F(PicClassMemoryTest, WithTwoBlocksTheUndoTakesTheSecondAndTheProbeFails) {
    HostBuffer taken;
    ASSERT_EQ(taken.Allocate(blockSize), 0);
    const PicClass pic(100, 50, true);
    EXPECT_EQ(pic.pixelMap, nullptr);
    EXPECT_EQ(memory.LiveBuffers(), 1u);
}

TEST_F(PicClassMemoryTest, ExactlyOneBlockIsTooLittleAlthoughThePixelsFit) {
    HostBuffer taken;
    ASSERT_EQ(taken.Allocate(2 * blockSize), 0);
    const PicClass pic(100, 50, false);
    EXPECT_EQ(pic.pixelMap, nullptr);
    EXPECT_EQ(memory.Allocations(), 2) << "the pixels were allocated before the probe failed";
    EXPECT_EQ(memory.LiveBuffers(), 1u);
}

TEST_F(PicClassTest, EachFailedAllocationLeavesNoRasterOrAnUndoInTheFile) {
    for (int nth = 1; nth <= 3; ++nth) {
        memory.FailAllocation(nth);
        const PicClass undoable(10, 10, true);
        if (nth == 2) {
            ASSERT_NE(undoable.pixelMap, nullptr);
            EXPECT_TRUE(undoable.undo->InFile());
        } else {
            EXPECT_EQ(undoable.pixelMap, nullptr);
            EXPECT_EQ(undoable.undo, nullptr);
        }
        memory.FailAllocation(0);
    }
}

TEST_F(PicClassTest, AHostThatCannotLockItsBlockMakesNoRaster) {
    const std::size_t before = memory.LiveBuffers();
    hostapi::BufferProcs procs = *memory.Buffers();
    procs.lockProc = [](hostapi::BufferID, hostapi::Boolean8) -> void* { return nullptr; };
    record.bufferProcs = &procs;
    const PicClass none(10, 10, true);
    EXPECT_EQ(none.pixelMap, nullptr);
    EXPECT_EQ(memory.LiveBuffers(), before);
    record.bufferProcs = memory.Buffers();
}

TEST_F(PicClassTest, AHostWithoutBuffersIsAFault) {
    record.bufferProcs = nullptr;
    EXPECT_EQ(FaultOf([] { const PicClass none(10, 10, true); }), 17500);
    record.bufferProcs = memory.Buffers();
}

TEST_F(PicClassTest, TheFirstUndoStateIsTheWhiteRaster) {
    PicClass undoable(5, 3, true);
    const std::vector<Pixel> white = PixelsOf(undoable);
    FillWithNoise(undoable);
    undoable.SwapUndo();
    EXPECT_EQ(PixelsOf(undoable), white);
}

TEST_F(PicClassTest, UndoAndRedoAreOneOperation) {
    PicClass undoable(5, 3, true);
    FillWithNoise(undoable, 1);
    const std::vector<Pixel> first = PixelsOf(undoable);
    EXPECT_TRUE(undoable.SaveUndo());
    FillWithNoise(undoable, 2);
    const std::vector<Pixel> second = PixelsOf(undoable);
    undoable.SwapUndo();
    EXPECT_EQ(PixelsOf(undoable), first);
    undoable.SwapUndo();
    EXPECT_EQ(PixelsOf(undoable), second);
}

TEST_F(PicClassTest, WithoutUndoItsOperationsFailTheirAssertions) {
    EXPECT_EQ(AssertionOf([this] { pic.SaveUndo(); }), "PicClass.Win / Zeile 333 !(undo != nil)");
    EXPECT_EQ(AssertionOf([this] { pic.SwapUndo(); }), "PicClass.Win / Zeile 360 !(undo != nil)");
}

TEST_F(PicClassTest, TheCloneIsMadeOnceAndCopiesAllBytes) {
    FillWithNoise(pic, 1);
    const std::vector<Pixel> pixels = PixelsOf(pic);
    PicClass* const clone = pic.GetClone();
    ASSERT_NE(clone, nullptr);
    EXPECT_EQ(pic.GetClone(), clone);
    EXPECT_EQ(clone->undo, nullptr);
    pic.CopyToClone();
    EXPECT_EQ(PixelsOf(*clone), pixels);
    FillWithNoise(pic, 2);
    pic.CopyFromClone();
    EXPECT_EQ(PixelsOf(pic), pixels);
    pic.DeleteClone();
    EXPECT_EQ(pic.clone, nullptr);
}

TEST_F(PicClassTest, CopyingWithoutACloneDoesNothing) {
    FillWithNoise(pic, 1);
    const std::vector<Pixel> pixels = PixelsOf(pic);
    pic.CopyToClone();
    pic.CopyFromClone();
    pic.DeleteClone();
    EXPECT_EQ(PixelsOf(pic), pixels);
}

TEST_F(PicClassTest, AFailedCloneIsDeletedAgain) {
    for (int nth = 1; nth <= 2; ++nth) {
        memory.FailAllocation(nth);
        EXPECT_EQ(pic.GetClone(), nullptr);
        EXPECT_EQ(pic.clone, nullptr);
    }
    memory.FailAllocation(0);
    EXPECT_NE(pic.GetClone(), nullptr);
}

TEST_F(PicClassTest, ThereIsRoomForACloneWhereGetCloneMakesOne) {
    for (int nth = 1; nth <= 2; ++nth) {
        memory.FailAllocation(nth);
        EXPECT_FALSE(pic.HasRoomForClone());
    }
    memory.FailAllocation(0);
    const std::size_t blocks = memory.LiveBuffers();
    EXPECT_TRUE(pic.HasRoomForClone());
    EXPECT_EQ(memory.LiveBuffers(), blocks);
    ASSERT_NE(pic.GetClone(), nullptr);
    memory.FailAllocation(1);
    EXPECT_TRUE(pic.HasRoomForClone()) << "it stands already";
    memory.FailAllocation(0);
}

TEST_F(PicClassTest, SetAllAlphaLeavesTheColours) {
    FillWithNoise(pic);
    const std::vector<Pixel> colors = ColorsOf(pic);
    pic.SetAllAlpha(77);
    EXPECT_EQ(ColorsOf(pic), colors);
    EXPECT_EQ(pic.GetAlpha(0, 0), 77);
    EXPECT_EQ(pic.GetAlpha(4, 2), 77);
}

TEST_F(PicClassTest, AlphaFromGreyDividesEachChannelOnItsOwn) {
    pic.SetPixel(0, 0, Color(255, 255, 255));
    pic.SetPixel(1, 0, Color(1, 1, 1));
    pic.SetPixel(2, 0, Color(2, 5, 8));
    pic.SetPixel(3, 0, Color(3, 0, 254));
    pic.AlphaFromGrey();
    EXPECT_EQ(pic.GetAlpha(0, 0), 255);
    EXPECT_EQ(pic.GetAlpha(1, 0), 0);
    EXPECT_EQ(pic.GetAlpha(2, 0), 3);
    EXPECT_EQ(pic.GetAlpha(3, 0), 85);
    EXPECT_EQ(pic.GetPixel(3, 0) & 0xFFFFFF, Color(3, 0, 254));
}

// Reading between pixels.

TEST_F(PicClassTest, InterpolationKeepsAFlatColour) {
    for (short y = 0; y < 3; ++y) {
        for (short x = 0; x < 5; ++x) {
            pic.SetRGB(x, y, 200, 100, 50);
        }
    }
    for (const double at : {0.0, 1.0, 2.5, -0.75, 4.999, -3.0}) {
        unsigned char rgb[3];
        pic.GetPixelInterpolated(at, -at, rgb);
        EXPECT_EQ(rgb[0], 200);
        EXPECT_EQ(rgb[1], 100);
        EXPECT_EQ(rgb[2], 50);
    }
}

TEST_F(PicClassTest, InterpolationSoftensEvenOnTheGrid) {
    for (short y = 0; y < 3; ++y) {
        for (short x = 0; x < 5; ++x) {
            pic.SetRGB(x, y, 0, 0, 0);
        }
    }
    pic.SetRGB(2, 1, 255, 255, 255);
    unsigned char rgb[3];
    pic.GetPixelInterpolated(2, 1, rgb);
    EXPECT_EQ(rgb[0], 127);
    pic.GetPixelInterpolated(1, 1, rgb);
    EXPECT_EQ(rgb[1], 63);
    pic.GetPixelInterpolated(2, 0, rgb);
    EXPECT_EQ(rgb[2], 63);
    pic.GetPixelInterpolated(3, 1, rgb);
    EXPECT_EQ(rgb[0], 0);
}

TEST_F(PicClassTest, InterpolationFollowsItsFormulaAndClamps) {
    FillWithNoise(pic);
    for (double y = -7; y < 7; y += 0.37) {
        for (double x = -11; x < 11; x += 0.41) {
            const auto ix = static_cast<short>(x);
            const auto iy = static_cast<short>(y);
            const double fx = x - ix;
            const double fy = y - iy;
            unsigned char rgb[3];
            pic.GetPixelInterpolated(x, y, rgb);
            for (int c = 0; c < 3; ++c) {
                const auto at = [&](int dx, int dy) {
                    return pic.PixelAddressWrapped(static_cast<short>(ix + dx),
                                                   static_cast<short>(iy + dy))[c];
                };
                const int a = at(0, 0);
                const int b = at(1, 0);
                const int low = at(0, 1);
                const int d = at(1, 1);
                double v = ((1 - fy) * (a + b) + (low + d) * fy) * 0.25 +
                           ((1 - fx) * (a + low) + (b + d) * fx) * 0.25;
                v = v > 255.0 ? 255.0 : v < 0.0 ? 0.0 : v;
                ASSERT_EQ(rgb[c], static_cast<int>(v)) << x << " " << y;
            }
        }
    }
}

TEST_F(PicClassTest, InterpolationSurvivesAnyCoordinate) {
    unsigned char rgb[3];
    for (const double at : {1e300, -1e300, 40000.5, -40000.5, 0.0 / 1.0}) {
        pic.GetPixelInterpolated(at, at, rgb);
    }
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    pic.GetPixelInterpolated(notANumber, notANumber, rgb);
    EXPECT_EQ(rgb[0], 0);
}

}  // namespace
