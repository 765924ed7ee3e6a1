#include "paint/kernels/BlurKernel.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

#include "plain/PlainBlur.h"
#include "tests/support/CoreTest.h"
#include "tests/support/FailingHandles.h"

namespace {

class BlurKernelTest : public CoreTest {};

double KernelRadius(int amount) {
    return amount * 0.05;
}

TEST_F(BlurKernelTest, HasTheWeightsOfTheTable) {
    struct Row {
        int amount;
        int side;
        std::uint32_t centre;
        std::uint32_t next;
        std::uint32_t corner;
    };
    for (const Row& row : {Row{1, 3, 16777216, 0, 0}, Row{10, 5, 7820227, 1795327, 60},
                           Row{20, 7, 1972387, 1365285, 2625}, Row{50, 13, 330674, 311772, 4773},
                           Row{100, 23, 86751, 85484, 2464}}) {
        const BlurKernel kernel(KernelRadius(row.amount));
        ASSERT_FALSE(kernel.Failed());
        ASSERT_EQ(2 * kernel.Half() + 1, row.side);
        EXPECT_EQ(kernel.Weight(0, 0), row.centre);
        EXPECT_EQ(kernel.Weight(1, 0), row.next);
        EXPECT_EQ(kernel.Weight(kernel.Half(), kernel.Half()), row.corner);
    }
}

TEST_F(BlurKernelTest, IsTheSquareSummedAsItIsTold) {
    for (int amount = 1; amount <= 100; ++amount) {
        const BlurKernel kernel(KernelRadius(amount));
        const PlainKernel plain = MakePlainKernel(KernelRadius(amount));
        ASSERT_FALSE(kernel.Failed());
        ASSERT_EQ(kernel.Half(), plain.half);
        const int half = plain.half;
        auto weight = plain.weights.begin();
        for (int y = -half; y <= half; ++y) {
            for (int x = -half; x <= half; ++x, ++weight) {
                const int outer = std::max(std::abs(x), std::abs(y));
                const int inner = std::min(std::abs(x), std::abs(y));
                ASSERT_EQ(kernel.Weight(outer, inner), *weight) << amount;
            }
        }
    }
}

TEST_F(BlurKernelTest, NeverWeighsMoreThanOne) {
    for (int amount = 1; amount <= 100; ++amount) {
        std::uint64_t sum = 0;
        for (const std::uint32_t weight : MakePlainKernel(KernelRadius(amount)).weights) {
            sum += weight;
        }
        EXPECT_LE(sum, 16777216u) << amount;
    }
}

TEST_F(BlurKernelTest, AnyRadiusIsSafe) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    struct Case {
        double radius;
        int half;
        std::uint32_t centre;
    };
    // A radius without a finite bell weighs nothing; one beyond 16 bits keeps the low ones.
    for (const Case& c : {Case{nan, 0, 0},
                          {infinity, 0, 16777216},
                          {-infinity, 0, 16777216},
                          {1e300, 0, 16777216},
                          {0.0, 1, 0},
                          {1e-300, 1, 16777216},
                          {5e-324, 1, 0},
                          {-0.4, 0, 16777216},
                          {32768.0, 1, 1864135}}) {
        const BlurKernel kernel(c.radius);
        EXPECT_FALSE(kernel.Failed()) << c.radius;
        EXPECT_EQ(kernel.Half(), c.half) << c.radius;
        EXPECT_EQ(kernel.Weight(0, 0), c.centre) << c.radius;
    }
    for (const double radius : {-1.0, -1.5, -10.0, -1638.4}) {
        const BlurKernel kernel(radius);
        EXPECT_FALSE(kernel.Failed());
        EXPECT_LT(kernel.Half(), 0);
    }
}

TEST_F(BlurKernelTest, ASquareBeyondTheLargestFails) {
    const double largest = (BlurKernel::largestHalf - 1) / 2.0;
    EXPECT_FALSE(BlurKernel(largest).Failed());
    EXPECT_EQ(BlurKernel(largest).Half(), BlurKernel::largestHalf);
    EXPECT_TRUE(BlurKernel(largest + 0.5).Failed());
    EXPECT_TRUE(BlurKernel(KernelRadius(32767)).Failed());
}

TEST_F(BlurKernelTest, ABlockWhoseSizeCannotBeCountedIsAFault) {
    const std::string text = "PaintClass1 / Zeile 599 !(datasize > 0)";
    EXPECT_EQ(AssertionOf([] { BlurKernel(5000.0); }), text);
    EXPECT_EQ(AssertionOf([] { BlurKernel(-5000.0); }), text);
}

TEST_F(BlurKernelTest, FailsWithoutABlock) {
    const FailingHandles handles(1);
    EXPECT_TRUE(BlurKernel(1.0).Failed());
}

/// FNV-1a over the weights of one octant, as 32-bit numbers.
std::uint64_t Folded(const BlurKernel& kernel, std::uint64_t hash) {
    for (int outer = 0; outer <= kernel.Half(); ++outer) {
        for (int inner = 0; inner <= outer; ++inner) {
            hash = (hash ^ kernel.Weight(outer, inner)) * 0x100000001B3u;
        }
    }
    return hash;
}

/// The hash comes from decimal arithmetic of 45 digits, so it holds for every build.
TEST_F(BlurKernelTest, TheKernelsAreTheSameOnEveryBuild) {
    std::uint64_t hash = 0xCBF29CE484222325u;
    for (int amount = 1; amount <= 100; ++amount) {
        hash = Folded(BlurKernel(KernelRadius(amount)), hash);
    }
    EXPECT_EQ(hash, 0x8C4BF20D634EB525u);
}

}  // namespace
