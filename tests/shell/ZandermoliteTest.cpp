#include "shell/Zandermolite.h"

#include "tests/support/CoreTest.h"
#include "tests/support/Pictures.h"

namespace {

class ZandermoliteTest : public CoreTest {
  protected:
    ~ZandermoliteTest() override { hostWindow = nullptr; }

    std::unique_ptr<PaintClass> Run(const hostapi::Rect& selection) {
        record.filterRect = selection;
        std::unique_ptr<PaintClass> pic;
        EXPECT_EQ(RunTexture(&context, pic), 0);
        return pic;
    }

    FilterContext context{0, &record};
};

TEST_F(ZandermoliteTest, TheTextureIsAsLargeAsTheSelectionUpTo512) {
    struct Case {
        hostapi::Rect selection;
        short width;
        short height;
    };
    constexpr Case cases[] = {
        {{0, 0, 1, 1}, 1, 1},
        {{10, 20, 50, 80}, 60, 40},
        {{-100, -50, -30, 20}, 70, 70},
        {{0, 0, 512, 512}, 512, 512},
        {{0, 0, 513, 40}, 40, 512},
        {{0, 0, 40, 513}, 512, 40},
        {{-32768, -32768, 32767, 32767}, 512, 512},
    };
    for (const Case& test : cases) {
        const auto pic = Run(test.selection);
        ASSERT_NE(pic, nullptr);
        EXPECT_EQ(pic->grX, test.width);
        EXPECT_EQ(pic->grY, test.height);
    }
}

TEST_F(ZandermoliteTest, AnEmptySelectionStillMakesATexture) {
    constexpr hostapi::Rect selections[] = {{0, 0, 0, 0}, {5, 9, 5, 3}, {9, 0, 2, 7}};
    for (const hostapi::Rect& selection : selections) {
        EXPECT_NE(Run(selection), nullptr);
    }
}

TEST_F(ZandermoliteTest, NotesTheHostsWindow) {
    int window = 0;
    hostapi::PlatformData platformData{&window};
    record.platformData = &platformData;
    Run({0, 0, 4, 4});
    EXPECT_EQ(hostWindow, &window);
    record.platformData = nullptr;
    Run({0, 0, 4, 4});
    EXPECT_EQ(hostWindow, nullptr);
}

TEST_F(ZandermoliteTest, NoMemoryIsAResult) {
    record.filterRect = {0, 0, 8, 8};
    std::unique_ptr<PaintClass> pic;
    memory.FailAllocation(1);
    EXPECT_EQ(RunTexture(&context, pic), -108);
    // The last allocation of a raster only asks whether there would be room for one more.
    memory.FailAllocation(3);
    EXPECT_EQ(RunTexture(&context, pic), -108);
}

TEST_F(ZandermoliteTest, TheSameClockSecondGivesTheSameTexture) {
    Log().clock = 1234567890;
    const std::vector<Pixel> first = ColorsOf(*Run({0, 0, 40, 60}));
    const std::vector<Pixel> again = ColorsOf(*Run({0, 0, 40, 60}));
    Log().clock = 1234567891;
    const std::vector<Pixel> later = ColorsOf(*Run({0, 0, 40, 60}));
    EXPECT_EQ(first, again);
    EXPECT_NE(first, later);
}

}  // namespace
