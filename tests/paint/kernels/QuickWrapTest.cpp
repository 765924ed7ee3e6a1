#include "paint/kernels/QuickWrap.h"

#include <gtest/gtest.h>

#include "raster/Torus.h"

namespace {

TEST(QuickWrapTest, IsTheSameAsWrapOnBothSidesOfEachSeam) {
    for (int size = 1; size <= QuickWrap::largestSize; size += 1 + size / 64) {
        const auto tile = static_cast<short>(size);
        const QuickWrap wrap(tile);
        const auto expectSame = [&](int coordinate) {
            ASSERT_EQ(static_cast<int>(wrap.Place(coordinate)), Wrap(coordinate, tile))
                << coordinate << " around " << size;
        };
        for (int seam = 0; seam <= size + QuickWrap::reach; seam += size) {
            expectSame(seam);
            expectSame(seam - 1);
        }
        for (int seam = 0; seam >= -QuickWrap::reach; seam -= size) {
            expectSame(seam);
            expectSame(seam + size - 1);
        }
        expectSame(size + QuickWrap::reach);
        expectSame(-QuickWrap::reach);
    }
}

TEST(QuickWrapTest, TakesTheLargestSize) {
    constexpr short size = QuickWrap::largestSize;
    const QuickWrap wrap(size);
    for (int coordinate = -QuickWrap::reach; coordinate <= size + QuickWrap::reach; ++coordinate) {
        ASSERT_EQ(static_cast<int>(wrap.Place(coordinate)), Wrap(coordinate, size)) << coordinate;
    }
}

}  // namespace
