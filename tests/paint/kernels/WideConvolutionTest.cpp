#include "paint/kernels/WideConvolution.h"

#include <algorithm>
#include <cstdlib>
#include <initializer_list>
#include <random>
#include <utility>

#include "tests/support/Compilations.h"
#include "tests/support/CoreTest.h"
#include "tests/support/FailingHandles.h"

namespace {

class WideConvolutionTest : public CoreTest {
  protected:
    static constexpr int side = WideConvolution::side;

    void Load(const WideConvolution& convolution, unsigned lowest) {
        for (int y = 0; y < side; ++y) {
            for (int x = 0; x < side; ++x) {
                bytes[y][x] = static_cast<unsigned char>(lowest + generator() % (256 - lowest));
                convolution.Row(y)[x] = bytes[y][x];
            }
        }
    }

    std::uint32_t SumAt(const BlurKernel& kernel, int x, int y) const {
        const int half = kernel.Half();
        std::uint32_t sum = 0;
        for (int dy = -half; dy <= half; ++dy) {
            for (int dx = -half; dx <= half; ++dx) {
                const auto [inner, outer] = std::minmax({std::abs(dx), std::abs(dy)});
                sum += kernel.Weight(outer, inner) * bytes[y + half + dy][x + half + dx];
            }
        }
        return sum;
    }

    std::mt19937 generator{91};
    static inline unsigned char bytes[side][side];
};

TEST_F(WideConvolutionTest, GivesTheSumsUnderTheSquare) {
    WithBothCompilations([this] {
        for (const double radius : {0.3, 30.0, (BlurKernel::largestHalf - 1) / 2.0}) {
            const BlurKernel kernel(radius);
            const WideConvolution convolution(kernel);
            ASSERT_FALSE(convolution.Failed());
            ASSERT_EQ(convolution.SumSide(), side - 2 * kernel.Half());
            // The second of each is nearly white: the largest sums.
            for (const unsigned lowest : {0u, 254u}) {
                Load(convolution, lowest);
                convolution.Run();
                const int last = convolution.SumSide() - 1;
                for (const auto& [x, y] : {std::pair{0, 0}, {last, last}, {last / 2, last / 3}}) {
                    ASSERT_EQ(convolution.Row(y)[x], SumAt(kernel, x, y)) << x << ", " << y;
                }
            }
        }
    });
}

TEST_F(WideConvolutionTest, PaysForSquaresLikeALargeTileOnly) {
    const auto pays = [](double radius, int width, int height) {
        return WideConvolution::Pays(BlurKernel(radius), width, height);
    };
    EXPECT_TRUE(pays((BlurKernel::largestHalf - 1) / 2.0, 512, 512));
    EXPECT_TRUE(pays(50.0, 512, 512));
    EXPECT_FALSE(pays(5.0, 512, 512)) << "the dialog's largest";
    EXPECT_FALSE(pays((BlurKernel::largestHalf - 1) / 2.0, 64, 64));
    EXPECT_FALSE(pays(-700.0, 512, 512)) << "a square without pixels";
}

TEST_F(WideConvolutionTest, FailsWithoutMemory) {
    const BlurKernel kernel(20.0);
    for (int nth = 1; nth <= 3; ++nth) {
        const FailingHandles handles(nth);
        EXPECT_TRUE(WideConvolution(kernel).Failed()) << nth;
    }
}

}  // namespace
