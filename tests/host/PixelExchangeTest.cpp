#include "host/record/PixelExchange.h"

#include <gtest/gtest.h>

#include "hostapi/Results.h"
#include "tests/host/Misuse.h"
#include "tests/host/Noise.h"

namespace host {

namespace {

hostapi::FilterRecord Ask(const hostapi::Rect& in, const hostapi::Rect& out, int lowPlane,
                          int highPlane) {
    hostapi::FilterRecord record{};
    record.inRect = in;
    record.outRect = out;
    record.inLoPlane = record.outLoPlane = static_cast<std::int16_t>(lowPlane);
    record.inHiPlane = record.outHiPlane = static_cast<std::int16_t>(highPlane);
    return record;
}

constexpr hostapi::Rect nothing{0, 0, 0, 0};

class PixelExchangeTest : public testing::Test {
  protected:
    PixelExchange Exchange(const Picture& picture, const ExchangeSettings& settings = {}) {
        return PixelExchange(picture, SelectNothing(picture), settings, faults);
    }
    Faults faults;
};

}  // namespace

TEST_F(PixelExchangeTest, DeliversRectanglesInterleavedAndTight) {
    const Picture picture = Noise(9, 7, 4);
    PixelExchange exchange = Exchange(picture);
    for (int low = 0; low < 4; ++low) {
        for (int high = low; high < 4; ++high) {
            auto record = Ask({1, 2, 5, 8}, {3, 0, 4, 9}, low, high);
            ASSERT_EQ(exchange.Advance(record), hostapi::noErr);
            const int step = high - low + 1;
            ASSERT_EQ(record.inRowBytes, 6 * step);
            ASSERT_EQ(record.outRowBytes, 9 * step);
            for (int y = 1; y < 5; ++y) {
                for (int x = 2; x < 8; ++x) {
                    for (int plane = low; plane <= high; ++plane) {
                        EXPECT_EQ(
                            record
                                .inData[(y - 1) * record.inRowBytes + (x - 2) * step + plane - low],
                            picture.Pixel(x, y)[plane]);
                    }
                }
            }
            EXPECT_EQ(record.outData[0], picture.Pixel(0, 3)[low]);
            EXPECT_NE(record.inData, record.outData);
        }
    }
    EXPECT_EQ(exchange.Result(), picture);
    EXPECT_TRUE(faults.IsEmpty());
}

TEST_F(PixelExchangeTest, StoresWhatWasWrittenAtTheNextCall) {
    const Picture picture = Noise(4, 3, 3);
    PixelExchange exchange = Exchange(picture);
    auto record = Ask({1, 0, 2, 4}, {1, 1, 2, 3}, 1, 1);
    ASSERT_EQ(exchange.Advance(record), hostapi::noErr);
    record.outData[0] = 5;
    record.outData[1] = 6;
    EXPECT_EQ(exchange.Result(), picture);
    ASSERT_EQ(exchange.Advance(record), hostapi::noErr);
    // Input is the untouched picture, output what was written before.
    EXPECT_EQ(record.inData[1], picture.Pixel(1, 1)[1]);
    EXPECT_EQ(record.outData[0], 5);
    EXPECT_EQ(record.outData[1], 6);
    Picture expected = picture;
    expected.Pixel(1, 1)[1] = 5;
    expected.Pixel(2, 1)[1] = 6;
    EXPECT_EQ(exchange.Result(), expected);
}

TEST_F(PixelExchangeTest, TheLastRowIsStoredAtTheEnd) {
    const Picture picture = Noise(4, 1, 3);
    PixelExchange exchange = Exchange(picture);
    auto record = Ask(nothing, {0, 0, 1, 4}, 0, 2);
    ASSERT_EQ(exchange.Advance(record), hostapi::noErr);
    EXPECT_EQ(record.inData, nullptr);
    EXPECT_EQ(record.inRowBytes, 0);
    record.outData[11] = static_cast<std::uint8_t>(~picture.Pixel(3, 0)[2]);
    exchange.Store();
    EXPECT_EQ(exchange.Result().Pixel(3, 0)[2], static_cast<std::uint8_t>(~picture.Pixel(3, 0)[2]));
}

TEST_F(PixelExchangeTest, CountsRows) {
    PixelExchange exchange = Exchange(Noise(4, 5, 3));
    auto both = Ask({0, 0, 1, 4}, {0, 0, 3, 4}, 0, 2);
    exchange.Advance(both);
    EXPECT_EQ(exchange.RowsDelivered(), 3);
    auto onlyIn = Ask({0, 0, 2, 4}, nothing, 0, 2);
    exchange.Advance(onlyIn);
    EXPECT_EQ(exchange.RowsDelivered(), 5);
    auto none = Ask(nothing, nothing, 0, 2);
    EXPECT_EQ(exchange.Advance(none), hostapi::noErr);
    EXPECT_EQ(exchange.RowsDelivered(), 5);
}

TEST_F(PixelExchangeTest, RequestsThatMakeNoSenseAreRefusedAndFaults) {
    const hostapi::Rect good{0, 0, 1, 4};
    struct Request {
        hostapi::FilterRecord record;
        const char* fault;
    };
    const Request requests[] = {
        {Ask({0, 0, 1, 5}, good, 0, 2),
         "advanceState: inRect (top 0, left 0, bottom 1, right 5) reaches beyond the image"},
        {Ask(good, {-1, 0, 1, 4}, 0, 2),
         "advanceState: outRect (top -1, left 0, bottom 1, right 4) reaches beyond the image"},
        {Ask(good, {3, 0, 2, 4}, 0, 2),
         "advanceState: outRect (top 3, left 0, bottom 2, right 4) is inverted"},
        {Ask(good, good, 0, 3),
         "advanceState: inRect (top 0, left 0, bottom 1, right 4) has planes that the image "
         "doesn't have"},
        {Ask(nothing, good, -1, 2),
         "advanceState: outRect (top 0, left 0, bottom 1, right 4) has planes that the image "
         "doesn't have"},
        {Ask(nothing, good, 2, 1),
         "advanceState: outRect (top 0, left 0, bottom 1, right 4) has planes that the image "
         "doesn't have"},
    };
    for (const Request& request : requests) {
        faults.Clear();
        PixelExchange exchange = Exchange(Noise(4, 4, 3));
        hostapi::FilterRecord record = request.record;
        EXPECT_EQ(exchange.Advance(record), hostapi::filterBadParameters);
        EXPECT_EQ(record.inData, nullptr);
        EXPECT_EQ(record.outData, nullptr);
        EXPECT_EQ(exchange.RowsDelivered(), 0);
        EXPECT_EQ(faults.Lines(), std::vector<std::string>{request.fault});
    }
}

TEST_F(PixelExchangeTest, WritesBesideARowAreFaults) {
    PixelExchange exchange = Exchange(Noise(5, 2, 3));
    for (std::int16_t row : {std::int16_t{0}, std::int16_t{1}}) {
        auto record = Ask({row, 0, static_cast<std::int16_t>(row + 1), 5},
                          {row, 0, static_cast<std::int16_t>(row + 1), 5}, 0, 2);
        ASSERT_EQ(exchange.Advance(record), hostapi::noErr);
        WriteOutside(record.outData, 15);
        WriteOutside(record.inData, -1);
    }
    exchange.Store();
    EXPECT_EQ(faults.Lines(),
              (std::vector<std::string>{
                  "inData: written before its start: 1 byte, the first at offset -1 (2 times)",
                  "outData: written behind its end: 1 byte, the first at offset 15 (2 times)"}));
}

TEST_F(PixelExchangeTest, WritesToARowHandedBackAreFaults) {
    PixelExchange exchange = Exchange(Noise(5, 2, 3));
    auto record = Ask(nothing, {0, 0, 1, 5}, 0, 2);
    ASSERT_EQ(exchange.Advance(record), hostapi::noErr);
    std::uint8_t* old = record.outData;
    ASSERT_EQ(exchange.Advance(record), hostapi::noErr);
    EXPECT_NE(record.outData, old);
    WriteOutside(old, 3);
    exchange.Store();
    EXPECT_TRUE(faults.IsEmpty());
    exchange.CheckLateWrites();
    EXPECT_EQ(faults.Total(), 1U);
}

TEST_F(PixelExchangeTest, CoordinatesMayBeginElsewhere) {
    const Picture picture = Noise(6, 4, 3);
    ExchangeSettings settings;
    settings.origin = {-3, -5};
    PixelExchange exchange = Exchange(picture, settings);
    auto record = Ask({-3, -5, -2, 1}, {0, 0, 1, 1}, 0, 2);
    ASSERT_EQ(exchange.Advance(record), hostapi::noErr);
    EXPECT_EQ(record.inData[0], picture.Pixel(0, 0)[0]);
    EXPECT_EQ(record.outData[0], picture.Pixel(5, 3)[0]);
    auto beyond = Ask({1, 0, 2, 1}, nothing, 0, 2);
    EXPECT_EQ(exchange.Advance(beyond), hostapi::filterBadParameters);
}

TEST_F(PixelExchangeTest, ShrinksRectanglesInTheRecord) {
    const Picture picture = Noise(4, 4, 3);
    ExchangeSettings settings;
    settings.shrinkRectangles = true;
    PixelExchange exchange = Exchange(picture, settings);
    auto record = Ask({-2, -1, 2, 9}, {3, 3, 8, 8}, 0, 2);
    ASSERT_EQ(exchange.Advance(record), hostapi::noErr);
    EXPECT_TRUE(AreEqual(Widened(record.inRect), {0, 0, 2, 4}));
    EXPECT_TRUE(AreEqual(Widened(record.outRect), {3, 3, 4, 4}));
    EXPECT_EQ(record.inRowBytes, 12);
    EXPECT_EQ(record.outRowBytes, 3);
    EXPECT_EQ(record.outData[0], picture.Pixel(3, 3)[0]);
    auto outside = Ask({0, 5, 2, 9}, {4, 0, 5, 4}, 0, 2);
    ASSERT_EQ(exchange.Advance(outside), hostapi::noErr);
    EXPECT_TRUE(IsEmpty(Widened(outside.inRect)));
    EXPECT_TRUE(IsEmpty(Widened(outside.outRect)));
    EXPECT_EQ(outside.inData, nullptr);
    EXPECT_EQ(outside.outData, nullptr);
}

TEST_F(PixelExchangeTest, ShrinksRectanglesSilently) {
    ExchangeSettings settings;
    settings.shrinkSilently = true;
    PixelExchange exchange = Exchange(Noise(4, 4, 3), settings);
    auto record = Ask(nothing, {0, 0, 1, 200}, 0, 2);
    ASSERT_EQ(exchange.Advance(record), hostapi::noErr);
    EXPECT_EQ(record.outRect.right, 200);
    EXPECT_EQ(record.outRowBytes, 12);
    // A filter that trusts its own width is found, without harm to the host.
    for (int i = 12; i < 600; ++i) {
        WriteOutside(record.outData, i);
    }
    exchange.Store();
    EXPECT_EQ(faults.Lines(), std::vector<std::string>{"outData: written behind its end: 588 "
                                                       "bytes, the first at offset 12"});
}

TEST_F(PixelExchangeTest, TheLargestRectangleIsShrunkToo) {
    const Picture picture = Noise(4, 4, 3);
    ExchangeSettings settings;
    settings.shrinkSilently = true;
    PixelExchange exchange = Exchange(picture, settings);
    auto record = Ask({-32768, -32768, 32767, 32767}, nothing, 0, 2);
    ASSERT_EQ(exchange.Advance(record), hostapi::noErr);
    EXPECT_EQ(record.inRowBytes, 12);
    EXPECT_EQ(record.inData[47], picture.Pixel(3, 3)[2]);
}

TEST_F(PixelExchangeTest, FailsAtThePlannedRows) {
    const Picture picture = Noise(4, 8, 3);
    ExchangeSettings settings;
    settings.origin = {-10, 0};
    settings.failAdvance = {{2, -36}};
    PixelExchange exchange(picture, SelectRectangle({3, 0, 8, 4}), settings, faults);
    auto row = [&](int y) {
        const auto top = static_cast<std::int16_t>(y - 10);
        return Ask({top, 0, static_cast<std::int16_t>(top + 1), 4}, nothing, 0, 2);
    };
    for (int y = 0; y < 8; ++y) {
        auto record = row(y);
        EXPECT_EQ(exchange.Advance(record), y == 5 ? -36 : 0) << y;
        EXPECT_EQ(record.inData == nullptr, y == 5);
    }
}

TEST_F(PixelExchangeTest, HandsTheMaskOver) {
    const Picture picture = Noise(4, 4, 3);
    Selection selection = SelectRectangle({1, 1, 3, 3});
    selection.mask = {10, 20, 30, 40};
    ExchangeSettings settings;
    auto record = Ask(nothing, nothing, 0, 2);
    record.maskRect = {0, 0, 3, 4};
    PixelExchange without(picture, selection, settings, faults);
    ASSERT_EQ(without.Advance(record), hostapi::noErr);
    EXPECT_EQ(record.maskData, nullptr);
    settings.handOverMask = true;
    PixelExchange with(picture, selection, settings, faults);
    ASSERT_EQ(with.Advance(record), hostapi::noErr);
    EXPECT_EQ(record.maskRowBytes, 4);
    EXPECT_EQ(std::vector<int>(record.maskData, record.maskData + 12),
              (std::vector<int>{0, 0, 0, 0, 0, 10, 20, 0, 0, 30, 40, 0}));
}

TEST_F(PixelExchangeTest, TheSelectionLimitsTheResult) {
    const Picture picture = MakePicture(4, 4, 3, 100);
    Selection selection = SelectRectangle({1, 1, 3, 3});
    selection.mask = {0, 255, 51, 128};
    PixelExchange exchange(picture, selection, {}, faults);
    auto record = Ask(nothing, {0, 0, 4, 4}, 0, 2);
    ASSERT_EQ(exchange.Advance(record), hostapi::noErr);
    std::fill(record.outData, record.outData + 48, std::uint8_t{200});
    exchange.Store();
    const Picture result = exchange.Result();
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 4; ++x) {
            const double expected = 100 + 100 * selection.Coverage(x, y) / 255.0;
            EXPECT_NEAR(result.Pixel(x, y)[1], expected, 0.5) << x << "," << y;
        }
    }
}

TEST_F(PixelExchangeTest, TransparencyMayBeProtected) {
    const Picture picture = MakePicture(1, 1, 4, 100);
    for (bool isProtected : {false, true}) {
        ExchangeSettings settings;
        settings.protectTransparency = isProtected;
        PixelExchange exchange = Exchange(picture, settings);
        auto record = Ask(nothing, {0, 0, 1, 1}, 0, 3);
        ASSERT_EQ(exchange.Advance(record), hostapi::noErr);
        std::fill(record.outData, record.outData + 4, std::uint8_t{200});
        exchange.Store();
        EXPECT_EQ(exchange.Result().Pixel(0, 0)[2], 200);
        EXPECT_EQ(exchange.Result().Pixel(0, 0)[3], isProtected ? 100 : 200);
    }
}

TEST_F(PixelExchangeTest, InputIsMattedByItsOpacity) {
    Picture picture = MakePicture(3, 1, 4, 100);
    picture.Pixel(0, 0)[3] = 255;
    picture.Pixel(1, 0)[3] = 0;
    picture.Pixel(2, 0)[3] = 51;
    struct Expectation {
        Matte matte;
        int transparent;
        int nearly;
    };
    for (const Expectation& expected :
         {Expectation{Matte::straight, 100, 100}, Expectation{Matte::white, 255, 224},
          Expectation{Matte::black, 0, 20}, Expectation{Matte::grey, 128, 122}}) {
        ExchangeSettings settings;
        settings.matte = expected.matte;
        PixelExchange exchange = Exchange(picture, settings);
        auto record = Ask({0, 0, 1, 3}, {0, 0, 1, 3}, 0, 3);
        ASSERT_EQ(exchange.Advance(record), hostapi::noErr);
        EXPECT_EQ(std::vector<int>(record.inData, record.inData + 12),
                  (std::vector<int>{100, 100, 100, 255, expected.transparent, expected.transparent,
                                    expected.transparent, 0, expected.nearly, expected.nearly,
                                    expected.nearly, 51}));
        EXPECT_EQ(record.outData[4], 100);
    }
}

}  // namespace host
