#include "paint/kernels/WrappedPlane.h"

#include "tests/support/CoreTest.h"
#include "tests/support/FailingHandles.h"
#include "tests/support/Pictures.h"

namespace {

class WrappedPlaneTest : public CoreTest {};

TEST_F(WrappedPlaneTest, GoesOnAroundTheTorus) {
    struct Case {
        short width;
        short height;
        int left;
        int right;
    };
    for (const Case& c :
         {Case{1, 1, 5, 7}, {3, 2, 0, 0}, {7, 4, 2, 3}, {5, 5, 20, 1}, {4, 3, 0, 9}}) {
        PicClass pic(c.width, c.height, false);
        FillWithNoise(pic);
        for (int channel = 0; channel < 4; ++channel) {
            const WrappedPlane plane(pic, channel, c.left, c.right);
            ASSERT_FALSE(plane.Failed());
            for (int y = -3 * c.height; y < 3 * c.height; ++y) {
                for (int x = -c.left; x < c.width + c.right; ++x) {
                    const unsigned char* const pixel =
                        pic.PixelAddress(Wrap(x, c.width), Wrap(y, c.height));
                    ASSERT_EQ(plane.Row(y)[x], pixel[channel]) << x << ", " << y;
                }
            }
        }
    }
}

TEST_F(WrappedPlaneTest, FailsWithoutMemory) {
    PicClass pic(8, 8, false);
    const FailingHandles handles(1);
    EXPECT_TRUE(WrappedPlane(pic, 0, 1, 1).Failed());
}

}  // namespace
