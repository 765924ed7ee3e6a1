#include "paint/kernels/TileWindow.h"

#include <array>
#include <initializer_list>
#include <vector>

#include "tests/support/Compilations.h"
#include "tests/support/CoreTest.h"
#include "tests/support/FailingHandles.h"
#include "tests/support/Pictures.h"
#include "tests/support/RandomInput.h"

namespace {

class TileWindowTest : public CoreTest {
  protected:
    /// A number of either sign; one in four whole.
    double Place(double limit) {
        const double value = input.Number(-32768, 32767) / 32768.0 * limit;
        return input.Number(0, 3) == 0 ? static_cast<short>(value) : value;
    }

    static Pixel ColorBetween(const PicClass& pic, double x, double y) {
        unsigned char rgb[3];
        pic.GetPixelInterpolated(x, y, rgb);
        return Color(rgb[0], rgb[1], rgb[2]);
    }

    static std::vector<Pixel> Expected(const PicClass& pic, const Positions& positions) {
        std::vector<Pixel> colors;
        for (int i = 0; i < positions.count; ++i) {
            colors.push_back(ColorBetween(pic, positions.originX + positions.x[i],
                                          positions.originY + positions.y[i]));
        }
        return colors;
    }

    template <typename Read>
    static std::vector<Pixel> Actual(const Positions& positions, Read read) {
        std::vector<Pixel> colors(static_cast<std::size_t>(positions.count) + 1, 0xABCDEF01);
        read(positions, reinterpret_cast<unsigned char*>(colors.data()));
        EXPECT_EQ(colors.back(), 0xABCDEF01u) << "no more than asked for";
        colors.pop_back();
        return colors;
    }

    RandomInput input{31};
};

TEST_F(TileWindowTest, HoldsAPartOfTheTorus) {
    PicClass pic(5, 3, false);
    FillWithNoise(pic);
    TileWindow window(13, 8);
    ASSERT_FALSE(window.Failed());
    for (const auto& [left, top] : {std::pair{0, 0}, {-7, -5}, {4, 2}, {123, -456}}) {
        window.Copy(pic, left, top);
        for (int y = 0; y < 8; ++y) {
            for (int x = 0; x < 13; ++x) {
                ASSERT_EQ(window.Row(y)[x], pic.GetPixelWrapped(static_cast<short>(left + x),
                                                                static_cast<short>(top + y)));
            }
        }
    }
}

TEST_F(TileWindowTest, ReadsInsideAsTheRasterDoes) {
    WithBothCompilations([this] {
        PicClass pic(20, 30, false);
        FillWithNoise(pic);
        TileWindow window(41, 37);
        for (int i = 0; i < 1000; ++i) {
            const double originX = input.Number(0, 20);
            const double originY = input.Number(0, 30);
            window.Copy(pic, static_cast<int>(originX) - 20, static_cast<int>(originY) - 18);
            std::array<double, 40> x;
            std::array<double, 40> y;
            for (std::size_t k = 0; k < x.size(); ++k) {
                x[k] = Place(19.9);
                y[k] = Place(17.9);
            }
            const Positions positions{originX, originY, x.data(), y.data(), input.Number(0, 40)};
            ASSERT_EQ(Actual(positions, [&](const Positions& at,
                                            unsigned char* out) { window.Read(at, out); }),
                      Expected(pic, positions));
        }
    });
}

TEST_F(TileWindowTest, ReadsAroundTheTorusAsTheRasterDoes) {
    WithBothCompilations([this] {
        for (int i = 0; i < 2000; ++i) {
            const short width = i % 50 == 0 ? input.Number(500, 513) : input.Number(1, 40);
            const short height = i % 50 == 0 ? input.Number(500, 513) : input.Number(1, 40);
            PicClass pic(width, height, false);
            FillWithNoise(pic, input.Seed());
            TileWindow window(width + 1, height + 1);
            window.Copy(pic, 0, 0);
            std::array<double, 40> x;
            std::array<double, 40> y;
            const double limit = i % 2 == 0 ? 32600.0 : 2.0 * width;
            for (std::size_t k = 0; k < x.size(); ++k) {
                x[k] = Place(limit);
                y[k] = Place(limit);
            }
            const Positions positions{Place(60), Place(60), x.data(), y.data(),
                                      input.Number(0, 40)};
            ASSERT_EQ(Actual(positions, [&](const Positions& at,
                                            unsigned char* out) { window.ReadWrapped(at, out); }),
                      Expected(pic, positions))
                << width << " by " << height;
        }
    });
}

/// Every coordinate that 16 bits hold, for the sizes where the division is the most delicate.
TEST_F(TileWindowTest, WrapsEveryCoordinate) {
    for (const short width :
         std::initializer_list<short>{1, 2, 3, 7, 127, 128, 255, 509, 511, 512, 513, 8191}) {
        PicClass pic(width, 1, false);
        FillWithNoise(pic);
        TileWindow window(width + 1, 2);
        window.Copy(pic, 0, 0);
        std::vector<double> x;
        for (int place = -32766; place <= 32766; ++place) {
            x.push_back(place);
        }
        const std::vector<double> y(x.size(), 0.0);
        const Positions positions{0, 0, x.data(), y.data(), static_cast<int>(x.size())};
        const std::vector<Pixel> actual =
            Actual(positions,
                   [&](const Positions& at, unsigned char* out) { window.ReadWrapped(at, out); });
        ASSERT_TRUE(actual == Expected(pic, positions)) << width;
    }
}

TEST_F(TileWindowTest, FailsWithoutMemoryAndBeyondItsLimits) {
    EXPECT_TRUE(TileWindow(0, 1).Failed());
    EXPECT_TRUE(TileWindow(1, -1).Failed());
    EXPECT_TRUE(TileWindow(TileWindow::sideLimit + 1, 1).Failed());
    EXPECT_FALSE(TileWindow(TileWindow::sideLimit, 1).Failed());
    const FailingHandles handles(1);
    EXPECT_TRUE(TileWindow(4, 4).Failed());
}

}  // namespace
