#include "shell/Zandermolite.h"

#include "shell/transfer/LastTexture.h"
#include "tests/support/CoreTest.h"
#include "tests/support/Pictures.h"
#include "tests/support/RowHost.h"
#include "tests/support/ScratchFolder.h"

namespace {

using Events = std::vector<std::string>;

class ZandermoliteTest : public CoreTest {
  protected:
    ZandermoliteTest() {
        Log().temporaryPath = folder.Path().string();
        record.filterRect = {0, 0, 8, 8};
    }
    ~ZandermoliteTest() override { hostWindow = nullptr; }

    std::int16_t Run() { return RunTexture(&context, pic); }

    ScratchFolder folder;
    FilterContext context{0, &record};
    std::unique_ptr<PaintClass> pic;
};

TEST_F(ZandermoliteTest, WithoutTheNewDialogTheTextureIsAsLargeAsTheSelectionUpTo512) {
    struct Case {
        hostapi::Rect selection;
        short width;
        short height;
    };
    constexpr Case cases[] = {
        {{0, 0, 1, 1}, 1, 1},           {{10, 20, 50, 80}, 60, 40},
        {{-100, -50, -30, 20}, 70, 70}, {{0, 0, 512, 512}, 512, 512},
        {{0, 0, 300, 1000}, 512, 300},  {{0, 0, 513, 40}, 40, 512},
        {{0, 0, 40, 513}, 512, 40},     {{-32768, -32768, 32767, 32767}, 512, 512},
    };
    for (const Case& test : cases) {
        record.filterRect = test.selection;
        EXPECT_EQ(Run(), 0);
        ASSERT_NE(pic, nullptr);
        EXPECT_EQ(pic->grX, test.width);
        EXPECT_EQ(pic->grY, test.height);
    }
}

TEST_F(ZandermoliteTest, AnEmptySelectionStillMakesATexture) {
    constexpr hostapi::Rect selections[] = {{0, 0, 0, 0}, {5, 9, 5, 3}, {9, 0, 2, 7}};
    for (const hostapi::Rect& selection : selections) {
        record.filterRect = selection;
        EXPECT_EQ(Run(), 0);
        EXPECT_NE(pic, nullptr);
    }
}

TEST_F(ZandermoliteTest, NotesTheHostsWindow) {
    int window = 0;
    hostapi::PlatformData platformData{&window};
    record.platformData = &platformData;
    Run();
    EXPECT_EQ(hostWindow, &window);
    record.platformData = nullptr;
    Run();
    EXPECT_EQ(hostWindow, nullptr);
}

TEST_F(ZandermoliteTest, TheNewDialogIsSkippedIfTheLaunchFlagSaysSo) {
    Windows().launchFlag = false;
    EXPECT_EQ(Run(), 0);
    EXPECT_EQ(Windows().events,
              (Events{"begin", "blank Untitled 1", "launch flag off", "units 1", "editor runs",
                      "editor deleted", "end", "opening deleted"}));
}

TEST_F(ZandermoliteTest, BothWindowsInTurn) {
    Windows().launchFlag = true;
    Windows().showNewNextTime = true;
    Windows().units = 3;
    Windows().name = "Slate";
    EXPECT_EQ(Run(), 0);
    EXPECT_EQ(Windows().events,
              (Events{"begin", "opening runs", "blank Slate", "launch flag on", "units 3",
                      "editor runs", "editor deleted", "end", "opening deleted"}));
}

TEST_F(ZandermoliteTest, CancelInTheNewDialogLeavesNothingBehind) {
    Windows().launchFlag = true;
    Windows().openingEnds = runCancelled;
    EXPECT_EQ(Run(), -128);
    EXPECT_EQ(pic, nullptr);
    EXPECT_EQ(Windows().events, (Events{"begin", "opening runs", "end", "opening deleted"}));
}

TEST_F(ZandermoliteTest, TheNewDialogIsOfferedTheSelectionsSize) {
    record.filterRect = {0, 0, 300, 1000};
    Run();
    EXPECT_EQ(Windows().offered, (std::pair<short, short>{512, 300}));
}

TEST_F(ZandermoliteTest, ASideOfNothingIsOnePixel) {
    Windows().size = {{0, 0}};
    EXPECT_EQ(Run(), 0);
    EXPECT_EQ(pic->grX, 1);
    EXPECT_EQ(pic->grY, 1);
}

TEST_F(ZandermoliteTest, AFileGoesBeforeAllContents) {
    Windows().file = reinterpret_cast<ImageFile*>(this);
    Windows().contents = SizeItems::lastTexture;
    Windows().name = "granite.jpg";
    EXPECT_EQ(Run(), 0);
    EXPECT_EQ(Windows().events[1], "file");
    EXPECT_EQ(Windows().events[2], "blank granite.jpg");
}

TEST_F(ZandermoliteTest, TheLastTextureIsLoaded) {
    PaintClass last(11, 7);
    FillWithNoise(last);
    ASSERT_TRUE(SaveLastTexture(&last));
    Windows().contents = SizeItems::lastTexture;
    Windows().edit = [](std::unique_ptr<PaintClass>&) {};
    EXPECT_EQ(Run(), 0);
    EXPECT_EQ(PixelsOf(*pic), PixelsOf(last));
}

TEST_F(ZandermoliteTest, WithoutTheLastTextureThereIsNoEditor) {
    Windows().contents = SizeItems::lastTexture;
    EXPECT_EQ(Run(), -108);
    EXPECT_EQ(pic, nullptr);
    EXPECT_EQ(Windows().events, (Events{"begin", "end", "opening deleted"}));
}

TEST_F(ZandermoliteTest, TheSelectionIsReadWhole) {
    RowHost rows(NoiseImage({3, 2, 8, 6}, 3));
    rows.Attach(record);
    Windows().contents = SizeItems::selection;
    Windows().edit = [](std::unique_ptr<PaintClass>&) {};
    EXPECT_EQ(Run(), 0);
    ASSERT_NE(pic, nullptr);
    EXPECT_EQ(pic->grX, 4);
    EXPECT_EQ(pic->grY, 5);
    EXPECT_EQ(pic->PixelAddress(3, 4)[1], rows.image.At(5, 7)[1]);
}

TEST_F(ZandermoliteTest, TheCallerGetsTheTextureThatTheEditorHasInTheEnd) {
    Windows().edit = [](std::unique_ptr<PaintClass>& texture) {
        texture = std::make_unique<PaintClass>(short{3}, short{2});
    };
    EXPECT_EQ(Run(), 0);
    EXPECT_EQ(pic->grX, 3);
    EXPECT_EQ(pic->grY, 2);
}

TEST_F(ZandermoliteTest, CancelInTheEditorStillHandsTheTextureOver) {
    Windows().editorEnds = runCancelled;
    EXPECT_EQ(Run(), -128);
    EXPECT_NE(pic, nullptr);
}

TEST_F(ZandermoliteTest, NoMemoryIsAResult) {
    memory.FailAllocation(1);
    EXPECT_EQ(Run(), -108);
    // The last allocation of a raster only probes for the memory of one more.
    memory.FailAllocation(3);
    EXPECT_EQ(Run(), -108);
}

TEST_F(ZandermoliteTest, NoWindowIsNoMemory) {
    Windows().withoutOpening = true;
    EXPECT_EQ(Run(), -108);
    Windows().withoutOpening = false;
    Windows().withoutEditor = true;
    EXPECT_EQ(Run(), -108);
}

TEST_F(ZandermoliteTest, ATextureWithoutAnEditorStaysTheCallers) {
    PaintClass last(11, 7);
    ASSERT_TRUE(SaveLastTexture(&last));
    Windows().contents = SizeItems::lastTexture;
    Windows().withoutEditor = true;
    EXPECT_EQ(Run(), -108);
    ASSERT_NE(pic, nullptr);
    EXPECT_EQ(pic->grX, 11);
}

TEST_F(ZandermoliteTest, TheNextRunBeginsWithNothing) {
    Run();
    Windows().withoutOpening = true;
    Run();
    EXPECT_EQ(pic, nullptr);
}

}  // namespace
