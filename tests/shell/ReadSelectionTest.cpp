#include <algorithm>
#include <random>

#include "base/FatalError.h"
#include "plain/PlainTransfer.h"
#include "tests/shell/TransferTest.h"
#include "tests/support/Pictures.h"
#include "tests/support/RowHost.h"
#include "tests/support/Transfers.h"

using hostapi::Rect;

namespace {

class ReadSelectionTest : public TransferTest {
  protected:
    std::unique_ptr<PaintClass> Read(RowHost& rowHost) {
        rowHost.Attach(record);
        return ReadSelection(&context);
    }

    /// The first `rows` rows hold the image, the others are white. Every alpha byte is as the
    /// raster was created.
    static void ExpectRows(const PaintClass& pic, const HostImage& image, int rows) {
        ASSERT_EQ(pic.grX, image.Width());
        ASSERT_EQ(pic.grY, image.Height());
        for (short y = 0; y < pic.grY; ++y) {
            for (short x = 0; x < pic.grX; ++x) {
                const std::uint8_t* const bytes =
                    image.At(image.bounds.left + x, image.bounds.top + y);
                const Pixel color =
                    y < rows ? Color(bytes[0], bytes[1], bytes[2]) : Color(255, 255, 255);
                ASSERT_EQ(pic.GetPixel(x, y), color | 0xFF000000) << x << ", " << y;
            }
        }
    }
};

class ReadPlanesTest : public ReadSelectionTest, public testing::WithParamInterface<int> {};

TEST_P(ReadPlanesTest, TakesTheFirstThreePlanes) {
    constexpr Rect selections[] = {
        {0, 0, 1, 1},     {0, 0, 1, 30},          {0, 0, 30, 1},
        {5, 7, 20, 31},   {-9, -20, 6, 11},       {32760, 32750, 32767, 32767},
        {0, 0, 600, 513}, {-32768, 0, -32760, 5},
    };
    for (const Rect& selection : selections) {
        RowHost rowHost(NoiseImage(selection, GetParam()));
        const auto pic = Read(rowHost);
        ASSERT_NE(pic, nullptr);
        EXPECT_EQ(context.result, 0);
        ExpectRows(*pic, rowHost.image, pic->grY);
        EXPECT_TRUE(IsZero(record.inRect));
        EXPECT_TRUE(IsZero(record.outRect));
    }
}

INSTANTIATE_TEST_SUITE_P(Planes, ReadPlanesTest, testing::Values(3, 4, 5));

TEST_F(ReadSelectionTest, AsksForOneRowAtATimeWithAllPlanes) {
    RowHost rowHost(NoiseImage({-2, 10, 1, 15}, 4));
    Read(rowHost);
    ASSERT_EQ(rowHost.requests.size(), 3u);
    std::int16_t y = -2;
    for (const AdvanceRequest& request : rowHost.requests) {
        const Rect row{y, 10, static_cast<std::int16_t>(y + 1), 15};
        EXPECT_TRUE(AreEqual(request.in, row));
        EXPECT_TRUE(AreEqual(request.out, row));
        EXPECT_TRUE(AreEqual(request.mask, row));
        EXPECT_EQ(request.inLoPlane, 0);
        EXPECT_EQ(request.inHiPlane, 3);
        EXPECT_EQ(request.outLoPlane, 0);
        EXPECT_EQ(request.outHiPlane, 3);
        ++y;
    }
    EXPECT_EQ(rowHost.events,
              (std::vector<std::string>{"progress 0/3", "abort?", "advance", "progress 1/3",
                                        "abort?", "advance", "progress 2/3", "abort?", "advance"}));
}

TEST_F(ReadSelectionTest, TheRectangleIsThatOfTheBeginning) {
    RowHost rowHost(NoiseImage({-2, 10, 6, 25}, 3));
    rowHost.onAdvance = [&] { record.filterRect = {0, 0, 1, 1}; };
    const auto pic = Read(rowHost);
    ASSERT_NE(pic, nullptr);
    EXPECT_EQ(context.result, 0);
    ExpectRows(*pic, rowHost.image, pic->grY);
}

TEST_F(ReadSelectionTest, LeavesTheMaskRectangleAsItIs) {
    RowHost rowHost(NoiseImage({4, 10, 7, 15}, 3));
    Read(rowHost);
    EXPECT_TRUE(AreEqual(record.maskRect, {6, 10, 7, 15}));
}

TEST_F(ReadSelectionTest, LeavesTheImageAsItIs) {
    RowHost rowHost(NoiseImage({0, 0, 9, 8}, 4));
    const HostImage before = rowHost.image;
    Read(rowHost);
    rowHost.Finish();
    EXPECT_EQ(rowHost.image, before);
}

TEST_F(ReadSelectionTest, EveryMaskValueOverEveryColour) {
    constexpr Rect square{0, 0, 256, 256};
    HostImage image{square, 3, {}};
    std::vector<std::uint8_t> mask;
    for (int y = 0; y < 256; ++y) {
        for (int x = 0; x < 256; ++x) {
            const auto color = static_cast<std::uint8_t>(y);
            image.bytes.insert(image.bytes.end(),
                               {color, static_cast<std::uint8_t>(255 - y), color});
            mask.push_back(static_cast<std::uint8_t>(x));
        }
    }
    RowHost rowHost(image);
    rowHost.mask = mask;
    record.haveMask = 1;
    const auto pic = Read(rowHost);
    ASSERT_NE(pic, nullptr);
    const auto blended = [](int m, int c) {
        const double t = (255 - m) * (1 / 255.0);
        return static_cast<unsigned>(255 * t + c * (1 - t));
    };
    for (short y = 0; y < 256; ++y) {
        for (short x = 0; x < 256; ++x) {
            const Pixel expected = Color(blended(x, y), blended(x, 255 - y), blended(x, y));
            ASSERT_EQ(pic->GetPixel(x, y), expected | 0xFF000000) << "mask " << x << " over " << y;
        }
        ASSERT_EQ(pic->GetPixel(0, y), 0xFFFFFFFF) << "not selected";
        ASSERT_EQ(pic->GetPixel(255, y) & 0xFF, static_cast<Pixel>(y)) << "all selected";
    }
}

TEST_F(ReadSelectionTest, TheMaskGoesWithEveryNumberOfPlanes) {
    for (const int planes : {3, 4, 5}) {
        RowHost rowHost(NoiseImage({3, -4, 20, 9}, planes));
        const HostImage noise = NoiseImage({3, -4, 20, 9}, 1, 2);
        for (const std::uint8_t byte : noise.bytes) {
            rowHost.mask.push_back(byte % 2 != 0 ? 255 : 0);
        }
        HostImage masked = rowHost.image;
        for (std::size_t i = 0; i < rowHost.mask.size(); ++i) {
            if (rowHost.mask[i] == 0) {
                std::fill_n(masked.bytes.begin() + static_cast<std::ptrdiff_t>(i) * planes, 3, 255);
            }
        }
        record.haveMask = 1;
        const auto pic = Read(rowHost);
        ASSERT_NE(pic, nullptr);
        ExpectRows(*pic, masked, pic->grY);
    }
}

TEST_F(ReadSelectionTest, AMaskCountsOnlyIfTheRecordSaysSo) {
    RowHost rowHost(NoiseImage({0, 0, 4, 6}, 3));
    rowHost.mask.assign(24, 0);
    const auto pic = Read(rowHost);
    ASSERT_NE(pic, nullptr);
    ExpectRows(*pic, rowHost.image, 4);
}

TEST_F(ReadSelectionTest, AMaskThatIsNotDeliveredSelectsAll) {
    RowHost rowHost(NoiseImage({0, 0, 4, 6}, 3));
    rowHost.mask.assign(24, 0);
    rowHost.withoutMaskDataFrom = 2;
    record.haveMask = 1;
    const auto pic = Read(rowHost);
    ASSERT_NE(pic, nullptr);
    EXPECT_EQ(context.result, 0);
    for (short x = 0; x < 6; ++x) {
        EXPECT_EQ(pic->GetPixel(x, 1), 0xFFFFFFFF);
        EXPECT_EQ(pic->GetPixel(x, 2) & 0xFF, *rowHost.image.At(x, 2));
    }
}

TEST_F(ReadSelectionTest, WhereAMaskEndsBeforeItsRowTheRestStaysWhite) {
    RowHost rowHost(NoiseImage({0, 0, 2, 6}, 3));
    rowHost.mask.assign(12, 255);
    rowHost.Attach(record);
    static decltype(record.advanceState) hostsAdvance;
    hostsAdvance = record.advanceState;
    record.advanceState = []() -> std::int16_t {
        const std::int16_t result = hostsAdvance();
        filterRecord->maskRect.right = 4;
        return result;
    };
    record.haveMask = 1;
    const auto pic = ReadSelection(&context);
    ASSERT_NE(pic, nullptr);
    for (short x = 0; x < 6; ++x) {
        EXPECT_EQ(pic->GetPixel(x, 1) & 0xFF, x < 4 ? *rowHost.image.At(x, 1) : 0xFF) << x;
    }
}

TEST_F(ReadSelectionTest, AnAbortLeavesTheOtherRowsWhite) {
    for (int row = 0; row < 5; ++row) {
        RowHost rowHost(NoiseImage({0, 0, 5, 4}, 3));
        rowHost.abortAt = row;
        const auto pic = Read(rowHost);
        ASSERT_NE(pic, nullptr);
        EXPECT_EQ(context.result, -128);
        EXPECT_EQ(rowHost.requests.size(), static_cast<std::size_t>(row));
        ExpectRows(*pic, rowHost.image, row);
        EXPECT_TRUE(IsZero(record.inRect));
        EXPECT_TRUE(IsZero(record.outRect));
    }
}

TEST_F(ReadSelectionTest, AnErrorOfTheHostLeavesTheOtherRowsWhite) {
    for (int row = 0; row < 5; ++row) {
        RowHost rowHost(NoiseImage({0, 0, 5, 4}, 4));
        rowHost.failAdvance[row] = static_cast<std::int16_t>(-1000 - row);
        const auto pic = Read(rowHost);
        ASSERT_NE(pic, nullptr);
        EXPECT_EQ(context.result, -1000 - row);
        EXPECT_EQ(rowHost.requests.size(), static_cast<std::size_t>(row + 1));
        ExpectRows(*pic, rowHost.image, row);
        EXPECT_TRUE(IsZero(record.inRect));
        EXPECT_TRUE(IsZero(record.outRect));
    }
}

TEST_F(ReadSelectionTest, ARowThatIsNotDeliveredEndsTheReading) {
    RowHost rowHost(NoiseImage({0, 0, 5, 4}, 3));
    rowHost.withoutInDataFrom = 2;
    const auto pic = Read(rowHost);
    ASSERT_NE(pic, nullptr);
    EXPECT_EQ(context.result, -30100);
    ExpectRows(*pic, rowHost.image, 2);
    EXPECT_TRUE(IsZero(record.inRect));
    EXPECT_TRUE(IsZero(record.outRect));
}

TEST_F(ReadSelectionTest, TheOutputNeedNotBeDelivered) {
    RowHost rowHost(NoiseImage({0, 0, 5, 4}, 3));
    rowHost.withoutOutDataFrom = 0;
    const auto pic = Read(rowHost);
    ASSERT_NE(pic, nullptr);
    EXPECT_EQ(context.result, 0);
    ExpectRows(*pic, rowHost.image, 5);
}

TEST_F(ReadSelectionTest, WithoutAdvanceStateAllIsWhite) {
    RowHost rowHost(NoiseImage({0, 0, 5, 4}, 3));
    rowHost.Attach(record);
    record.advanceState = nullptr;
    const auto pic = ReadSelection(&context);
    ASSERT_NE(pic, nullptr);
    EXPECT_EQ(context.result, 17500);
    ExpectRows(*pic, rowHost.image, 0);
}

TEST_F(ReadSelectionTest, ProgressAndAbortMayBeMissing) {
    RowHost rowHost(NoiseImage({0, 0, 5, 4}, 3));
    rowHost.Attach(record);
    record.abortProc = nullptr;
    record.progressProc = nullptr;
    const auto pic = ReadSelection(&context);
    ASSERT_NE(pic, nullptr);
    ExpectRows(*pic, rowHost.image, 5);
}

TEST_F(ReadSelectionTest, NoRasterForASelectionWithoutOne) {
    constexpr Rect selections[] = {
        {0, 0, 0, 0}, {5, 5, 5, 9},          {5, 5, 9, 5},          {9, 5, 5, 9},      {5, 9, 9, 5},
        {9, 9, 5, 5}, {0, -20000, 4, 20000}, {-20000, 0, 20000, 4}, {0, -1, 1, 32767},
    };
    RowHost rowHost(NoiseImage({0, 0, 1, 1}, 3));
    rowHost.Attach(record);
    for (const Rect& selection : selections) {
        record.filterRect = selection;
        EXPECT_EQ(ReadSelection(&context), nullptr);
    }
    EXPECT_TRUE(rowHost.events.empty());
}

TEST_F(ReadSelectionTest, NoRasterWithoutMemory) {
    RowHost rowHost(NoiseImage({0, 0, 5, 4}, 3));
    memory.FailAllocation(1);
    EXPECT_EQ(Read(rowHost), nullptr);
    // The last allocation of a raster only probes for the memory of one more.
    memory.FailAllocation(3);
    EXPECT_EQ(Read(rowHost), nullptr);
    EXPECT_TRUE(rowHost.events.empty());
}

TEST_F(ReadSelectionTest, FewerThanThreePlanesAreNotRead) {
    for (const std::int16_t planes : tooFewPlanes) {
        RowHost rowHost(NoiseImage({0, 0, 5, 4}, 3));
        rowHost.Attach(record);
        record.planes = planes;
        context.result = 0;
        const auto pic = ReadSelection(&context);
        ASSERT_NE(pic, nullptr);
        EXPECT_EQ(context.result, -30100);
        EXPECT_TRUE(rowHost.events.empty());
        ExpectRows(*pic, rowHost.image, 0);
    }
}

constexpr Pixel white = Color(255, 255, 255);

Pixel ColorAt(const HostImage& image, int x, int y) {
    const std::uint8_t* const there = image.At(x, y);
    return Color(there[0], there[1], there[2]);
}

class ShrinkingTest : public ReadSelectionTest, public testing::WithParamInterface<Shrinking> {};

TEST_P(ShrinkingTest, WhatLiesBeyondTheImageStaysWhite) {
    RowHost rowHost(NoiseImage({0, 0, 5, 6}, 4));
    rowHost.mask.assign(30, 255);
    rowHost.shrinking = GetParam();
    rowHost.Attach(record);
    for (const bool haveMask : {false, true}) {
        record.haveMask = haveMask ? 1 : 0;
        record.filterRect = {1, 2, 5, 9};
        const auto pic = ReadSelection(&context);
        ASSERT_NE(pic, nullptr);
        EXPECT_EQ(context.result, 0);
        for (short y = 0; y < 4; ++y) {
            for (short x = 0; x < 7; ++x) {
                const Pixel expected = x < 4 ? ColorAt(rowHost.image, x + 2, y + 1) : white;
                EXPECT_EQ(pic->GetPixel(x, y) & 0xFFFFFF, expected) << x << ", " << y;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Hosts, ShrinkingTest,
                         testing::Values(Shrinking::openly, Shrinking::silently));

TEST_F(ReadSelectionTest, AHostThatShrinksOpenlyMayDoItOnAllSides) {
    RowHost rowHost(NoiseImage({0, 0, 5, 6}, 3));
    rowHost.shrinking = Shrinking::openly;
    rowHost.Attach(record);
    record.filterRect = {-2, -3, 8, 9};
    const auto pic = ReadSelection(&context);
    ASSERT_NE(pic, nullptr);
    EXPECT_EQ(context.result, 0);
    EXPECT_EQ(rowHost.requests.size(), 10u);
    for (short y = 0; y < 10; ++y) {
        for (short x = 0; x < 12; ++x) {
            const bool inImage = x >= 3 && x < 9 && y >= 2 && y < 7;
            const Pixel expected = inImage ? ColorAt(rowHost.image, x - 3, y - 2) : white;
            EXPECT_EQ(pic->GetPixel(x, y) & 0xFFFFFF, expected) << x << ", " << y;
        }
    }
}

}  // namespace
