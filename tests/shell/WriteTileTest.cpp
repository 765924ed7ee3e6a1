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

class WriteTileTest : public TransferTest {
  protected:
    /// Fills all four bytes of the pixels, so that a fourth byte that goes to the host shows.
    static std::unique_ptr<PaintClass> NoiseTile(short width, short height) {
        auto pic = std::make_unique<PaintClass>(width, height);
        FillWithNoise(*pic, static_cast<unsigned>(width * 1000 + height));
        return pic;
    }

    void Write(RowHost& rowHost, const PaintClass& pic) {
        SetRectangles();
        rowHost.Attach(record);
        WriteTileToSelection(&context, TileOf(pic));
        rowHost.Finish();
        ExpectEmptyRectangles();
    }

    void ExpectEmptyRectangles() const {
        EXPECT_TRUE(IsZero(record.inRect));
        EXPECT_TRUE(IsZero(record.outRect));
        EXPECT_TRUE(IsZero(record.maskRect));
    }
};

TEST_F(WriteTileTest, TileOfAddsTheOneBack) {
    const auto pic = NoiseTile(17, 5);
    const TileInfo tile = TileOf(*pic);
    EXPECT_EQ(tile.width, 17);
    EXPECT_EQ(tile.height, 5);
    EXPECT_EQ(tile.rowBytes, 17 * 4);
    EXPECT_EQ(tile.base, pic->Base());
}

TEST_F(WriteTileTest, TheRectangleIsThatOfTheBeginning) {
    const auto pic = NoiseTile(7, 5);
    const Rect selection{3, 5, 20, 30};
    RowHost rowHost(NoiseImage(selection, 3));
    rowHost.onAdvance = [&] { record.filterRect = {0, 0, 1, 1}; };
    const HostImage expected =
        Tiled(rowHost.image, TileOf(*pic), selection, rowHost.image.Height());
    Write(rowHost, *pic);
    EXPECT_EQ(context.result, 0);
    EXPECT_EQ(rowHost.image, expected);
}

class WritePlanesTest : public WriteTileTest, public testing::WithParamInterface<int> {};

TEST_P(WritePlanesTest, RepeatsTheTileFromTheSelectionsCorner) {
    struct Sizes {
        short tileWidth;
        short tileHeight;
        Rect selection;
    };
    constexpr Sizes sizes[] = {
        {16, 16, {0, 0, 1, 1}},         // one pixel
        {16, 16, {0, 0, 7, 9}},         // smaller than the tile
        {16, 16, {0, 0, 16, 16}},       // the tile itself
        {16, 16, {3, 5, 60, 100}},      // larger, not a multiple
        {16, 8, {-40, -9, 24, 55}},     // a multiple, from a negative corner
        {1, 1, {2, 3, 20, 30}},         // a single pixel as the tile
        {1, 5, {0, 0, 12, 4}},          //
        {5, 1, {0, 0, 4, 12}},          //
        {512, 2, {0, 0, 5, 513}},       // the last column is the tile's first again
        {2, 512, {0, 0, 513, 3}},       // likewise the last row
        {7, 3, {0, -32768, 2, 32767}},  // as wide as a rectangle can be
        {3, 7, {-32768, 0, 32767, 1}},  // as high
    };
    for (const Sizes& size : sizes) {
        const auto pic = NoiseTile(size.tileWidth, size.tileHeight);
        RowHost rowHost(NoiseImage(size.selection, GetParam()));
        const HostImage expected =
            Tiled(rowHost.image, TileOf(*pic), size.selection, rowHost.image.Height());
        Write(rowHost, *pic);
        EXPECT_EQ(context.result, 0);
        EXPECT_EQ(rowHost.image, expected) << size.tileWidth << " x " << size.tileHeight;
    }
}

TEST_P(WritePlanesTest, AgreesWithThePlainLoop) {
    std::mt19937 generator(static_cast<unsigned>(GetParam()));
    const auto upTo = [&generator](int most) {
        return static_cast<std::int16_t>(generator() % static_cast<unsigned>(most) + 1);
    };
    for (int round = 0; round < 1000; ++round) {
        const auto pic = NoiseTile(upTo(40), upTo(12));
        const auto top = static_cast<std::int16_t>(upTo(100) - 50);
        const auto left = static_cast<std::int16_t>(upTo(100) - 50);
        const Rect selection{top, left, static_cast<std::int16_t>(top + upTo(30)),
                             static_cast<std::int16_t>(left + upTo(120))};
        RowHost plainHost(NoiseImage(selection, GetParam(), static_cast<unsigned>(round)));
        plainHost.Attach(record);
        PlainWriteTileToSelection(&context, TileOf(*pic));
        plainHost.Finish();
        RowHost fastHost(NoiseImage(selection, GetParam(), static_cast<unsigned>(round)));
        Write(fastHost, *pic);
        ASSERT_EQ(fastHost.image, plainHost.image)
            << "tile " << pic->grX << " x " << pic->grY << ", selection " << plainHost.image.Width()
            << " x " << plainHost.image.Height();
        ASSERT_EQ(fastHost.events, plainHost.events);
    }
}

INSTANTIATE_TEST_SUITE_P(Planes, WritePlanesTest, testing::Values(3, 4, 5));

TEST_F(WriteTileTest, AsksForOneRowAtATimeWithAllPlanes) {
    const auto pic = NoiseTile(3, 3);
    RowHost rowHost(NoiseImage({-2, 10, 1, 15}, 4));
    Write(rowHost, *pic);
    ASSERT_EQ(rowHost.requests.size(), 3u);
    std::int16_t y = -2;
    for (const AdvanceRequest& request : rowHost.requests) {
        const Rect row{y, 10, static_cast<std::int16_t>(y + 1), 15};
        EXPECT_TRUE(AreEqual(request.in, row));
        EXPECT_TRUE(AreEqual(request.out, row));
        EXPECT_TRUE(AreEqual(request.mask, anyRect)) << "the mask is the host's business";
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

TEST_F(WriteTileTest, AnAbortKeepsTheRowsWritten) {
    const auto pic = NoiseTile(3, 2);
    for (int row = 0; row < 5; ++row) {
        RowHost rowHost(NoiseImage({0, 0, 5, 7}, 4));
        rowHost.abortAt = row;
        const HostImage expected = Tiled(rowHost.image, TileOf(*pic), {0, 0, 5, 7}, row);
        Write(rowHost, *pic);
        EXPECT_EQ(context.result, -128);
        EXPECT_EQ(rowHost.requests.size(), static_cast<std::size_t>(row));
        EXPECT_EQ(rowHost.image, expected);
    }
}

TEST_F(WriteTileTest, AnErrorOfTheHostKeepsTheRowsWritten) {
    const auto pic = NoiseTile(3, 2);
    for (int row = 0; row < 5; ++row) {
        RowHost rowHost(NoiseImage({0, 0, 5, 7}, 3));
        rowHost.failAdvance[row] = static_cast<std::int16_t>(1000 + row);
        const HostImage expected = Tiled(rowHost.image, TileOf(*pic), {0, 0, 5, 7}, row);
        Write(rowHost, *pic);
        EXPECT_EQ(context.result, 1000 + row);
        EXPECT_EQ(rowHost.requests.size(), static_cast<std::size_t>(row + 1));
        EXPECT_EQ(rowHost.image, expected);
    }
}

TEST_F(WriteTileTest, ARowThatIsNotDeliveredEndsTheWriting) {
    const auto pic = NoiseTile(3, 2);
    for (const int planes : {3, 4, 5}) {
        RowHost rowHost(NoiseImage({0, 0, 5, 7}, planes));
        rowHost.withoutOutDataFrom = 3;
        const HostImage expected = Tiled(rowHost.image, TileOf(*pic), {0, 0, 5, 7}, 3);
        Write(rowHost, *pic);
        EXPECT_EQ(context.result, -30100);
        EXPECT_EQ(rowHost.requests.size(), 4u);
        EXPECT_EQ(rowHost.image, expected);
    }
}

TEST_F(WriteTileTest, TheInputNeedNotBeDelivered) {
    const auto pic = NoiseTile(3, 2);
    RowHost rowHost(NoiseImage({0, 0, 5, 7}, 3));
    rowHost.withoutInDataFrom = 0;
    const HostImage expected = Tiled(rowHost.image, TileOf(*pic), {0, 0, 5, 7}, 5);
    Write(rowHost, *pic);
    EXPECT_EQ(context.result, 0);
    EXPECT_EQ(rowHost.image, expected);
}

TEST_F(WriteTileTest, WithoutAdvanceStateNothingIsWritten) {
    const auto pic = NoiseTile(3, 2);
    RowHost rowHost(NoiseImage({0, 0, 5, 7}, 3));
    const HostImage before = rowHost.image;
    rowHost.Attach(record);
    record.advanceState = nullptr;
    SetRectangles();
    WriteTileToSelection(&context, TileOf(*pic));
    EXPECT_EQ(context.result, 17500);
    EXPECT_EQ(rowHost.image, before);
    EXPECT_EQ(rowHost.events, (std::vector<std::string>{"progress 0/5", "abort?"}));
    ExpectEmptyRectangles();
}

TEST_F(WriteTileTest, FewerThanThreePlanesAreNotWritten) {
    const auto pic = NoiseTile(3, 2);
    for (const std::int16_t planes : tooFewPlanes) {
        RowHost rowHost(NoiseImage({0, 0, 5, 7}, 3));
        rowHost.Attach(record);
        record.planes = planes;
        context.result = 0;
        SetRectangles();
        WriteTileToSelection(&context, TileOf(*pic));
        EXPECT_EQ(context.result, -30100);
        EXPECT_TRUE(rowHost.events.empty());
        ExpectEmptyRectangles();
    }
}

TEST_F(WriteTileTest, AnEmptySelectionIsNotWritten) {
    const auto pic = NoiseTile(3, 2);
    RowHost rowHost(NoiseImage({0, 0, 5, 7}, 3));
    rowHost.Attach(record);
    constexpr Rect selections[] = {{0, 0, 0, 0}, {5, 5, 5, 9}, {5, 5, 9, 5},
                                   {9, 5, 5, 9}, {5, 9, 9, 5}, {9, 9, 5, 5}};
    for (const Rect& selection : selections) {
        record.filterRect = selection;
        SetRectangles();
        WriteTileToSelection(&context, TileOf(*pic));
        EXPECT_EQ(context.result, 0);
        EXPECT_TRUE(rowHost.events.empty());
        ExpectEmptyRectangles();
    }
}

TEST_F(WriteTileTest, HostsThatShrinkGetThePhaseOfTheSelection) {
    const auto pic = NoiseTile(5, 4);
    struct Case {
        Shrinking shrinking;
        Rect selection;
    };
    // A host that does not say so can only be served if its rows begin with the selection's.
    constexpr Case cases[] = {
        {Shrinking::openly, {-2, -3, 9, 15}},
        {Shrinking::openly, {2, 3, 6, 20}},
        {Shrinking::openly, {-9, 3, -1, 20}},
        {Shrinking::silently, {2, 3, 6, 20}},
    };
    for (const int planes : {3, 4, 5}) {
        for (const Case& test : cases) {
            RowHost rowHost(NoiseImage({0, 0, 6, 12}, planes));
            rowHost.shrinking = test.shrinking;
            const int rows = test.selection.bottom - test.selection.top;
            const HostImage expected = Tiled(rowHost.image, TileOf(*pic), test.selection, rows);
            SetRectangles();
            rowHost.Attach(record);
            record.filterRect = test.selection;
            WriteTileToSelection(&context, TileOf(*pic));
            rowHost.Finish();
            EXPECT_EQ(context.result, 0);
            EXPECT_EQ(rowHost.requests.size(), static_cast<std::size_t>(rows));
            EXPECT_EQ(rowHost.image, expected);
            ExpectEmptyRectangles();
        }
    }
}

TEST_F(WriteTileTest, ASilentHostWithoutTheRowEndsTheWriting) {
    const auto pic = NoiseTile(5, 4);
    RowHost rowHost(NoiseImage({0, 0, 6, 12}, 3));
    rowHost.shrinking = Shrinking::silently;
    const HostImage expected = Tiled(rowHost.image, TileOf(*pic), {2, 0, 6, 12}, 4);
    rowHost.Attach(record);
    record.filterRect = {2, 0, 9, 12};
    WriteTileToSelection(&context, TileOf(*pic));
    rowHost.Finish();
    EXPECT_EQ(context.result, -30100);
    EXPECT_EQ(rowHost.image, expected);
}

TEST_F(WriteTileTest, TheTileStaysAsItIs) {
    const auto pic = NoiseTile(9, 6);
    const std::vector<Pixel> before = PixelsOf(*pic);
    RowHost rowHost(NoiseImage({0, 0, 20, 30}, 4));
    Write(rowHost, *pic);
    EXPECT_EQ(PixelsOf(*pic), before);
}

}  // namespace
