// Shortages of memory that the laws of the catalogue do not reach, or only by chance: memory fails
// at any place, or a tool has left its clone.
#include <functional>
#include <string>
#include <vector>

#include "paint/EffectRun.h"
#include "paint/PaintClass.h"
#include "tests/support/CoreTest.h"
#include "tests/support/FailingHandles.h"
#include "tests/support/Pictures.h"

namespace {

struct Operation {
    const char* name;
    /// False if it said that memory was short; true where it says nothing.
    std::function<bool(PaintClass&)> run;
};

std::vector<Operation> AllThatWorkInPlace() {
    std::vector<Operation> operations = {
        {"Blur", [](auto& pic) { return RunBlur(pic, {.amount = 30}); }},
        {"Motion Blur", [](auto& pic) { return pic.MotionBlur(7, 3); }},
        {"Sharpen", [](auto& pic) { return pic.Sharpen(); }},
    };
    for (std::int32_t direction = 0; direction < 4; ++direction) {
        operations.push_back(
            {"Skew, nearest", [=](auto& pic) { return pic.Skew(direction, true); }});
    }
    return operations;
}

class ShortageTest : public CoreTest {
  protected:
    static constexpr short width = 37;
    static constexpr short height = 26;

    std::vector<Pixel> ResultOf(const Operation& operation) {
        PaintClass pic(width, height);
        FillWithNoise(pic);
        EXPECT_TRUE(operation.run(pic)) << operation.name;
        return ColorsOf(pic);
    }

    /// Runs it with the nth block of the host and of the system failing; 0 for none.
    void ExpectAllOrNothing(const Operation& operation, int hostBlock, int systemBlock,
                            const std::vector<Pixel>& result) {
        SCOPED_TRACE(std::string(operation.name) + ", host " + std::to_string(hostBlock) +
                     ", system " + std::to_string(systemBlock));
        PaintClass pic(width, height);
        FillWithNoise(pic);
        const std::vector<Pixel> before = ColorsOf(pic);
        memory.FailAllocation(hostBlock);
        const FailingHandles handles(systemBlock);
        const bool ran = operation.run(pic);
        memory.FailAllocation(0);
        EXPECT_EQ(ColorsOf(pic), ran ? result : before);
        EXPECT_EQ(pic.changed, ran);
        EXPECT_EQ(pic.clone, nullptr);
    }
};

TEST_F(ShortageTest, LeavesAllOrNothingDone) {
    constexpr int hostBlocks = 5;
    constexpr int systemBlocks = 8;
    for (const Operation& operation : AllThatWorkInPlace()) {
        const std::vector<Pixel> result = ResultOf(operation);
        for (int host = 0; host <= hostBlocks; ++host) {
            for (int system = 0; system <= systemBlocks; ++system) {
                ExpectAllOrNothing(operation, host, system, result);
            }
        }
    }
}

TEST_F(ShortageTest, TheSoftenedLinesAreUndone) {
    for (int nth = 1; nth <= 2; ++nth) {
        PaintClass pic(width, height);
        FillWithNoise(pic);
        const std::vector<Pixel> before = PixelsOf(pic);
        ASSERT_TRUE(pic.SaveUndo());
        memory.FailAllocation(nth);
        EXPECT_FALSE(pic.Lines({})) << nth;
        EXPECT_EQ(PixelsOf(pic), before) << nth;
        EXPECT_EQ(pic.clone, nullptr) << nth;
    }
}

TEST_F(ShortageTest, AToolsCloneIsNeitherReadNorKept) {
    for (const Operation& operation : AllThatWorkInPlace()) {
        const std::vector<Pixel> result = ResultOf(operation);
        PaintClass pic(width, height);
        FillWithNoise(pic);
        ASSERT_NE(pic.GetClone(), nullptr);
        FillWithNoise(*pic.GetClone(), 2);
        EXPECT_TRUE(operation.run(pic)) << operation.name;
        EXPECT_EQ(ColorsOf(pic), result) << operation.name;
        EXPECT_EQ(pic.clone, nullptr) << operation.name;
    }
}

TEST_F(ShortageTest, AToolsCloneIsRoomEnough) {
    for (const Operation& operation : AllThatWorkInPlace()) {
        const std::vector<Pixel> result = ResultOf(operation);
        PaintClass pic(width, height);
        FillWithNoise(pic);
        ASSERT_NE(pic.GetClone(), nullptr);
        memory.FailAllocation(1);
        EXPECT_TRUE(operation.run(pic)) << operation.name;
        memory.FailAllocation(0);
        EXPECT_EQ(ColorsOf(pic), result) << operation.name;
    }
}

}  // namespace
