#include "host/record/CheckedBlock.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/host/Misuse.h"

namespace host {

TEST(CheckedBlockTest, AnUntouchedBlockIsFine) {
    Faults faults;
    CheckedBlock block(100, "block");
    std::fill(block.Data(), block.Data() + block.Size(), std::uint8_t{0xB9});
    block.Check(faults);
    EXPECT_TRUE(faults.IsEmpty());
}

TEST(CheckedBlockTest, ANewBlockIsNotCleared) {
    CheckedBlock block(64, "block");
    EXPECT_TRUE(std::none_of(block.Data(), block.Data() + 64, [](int byte) { return byte == 0; }));
}

TEST(CheckedBlockTest, WritesOutsideAreFoundOnce) {
    for (std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{13}, std::size_t{64}}) {
        Faults faults;
        CheckedBlock block(size, "block");
        WriteOutside(block.Data(), static_cast<std::ptrdiff_t>(size));
        WriteOutside(block.Data(), static_cast<std::ptrdiff_t>(size) + 255);
        WriteOutside(block.Data(), -3);
        block.Check(faults);
        block.Check(faults);
        const std::string end = std::to_string(size);
        EXPECT_EQ(faults.Lines(),
                  (std::vector<std::string>{
                      "block: written before its start: 1 byte, the first at offset -3",
                      "block: written behind its end: 2 bytes, the first at offset " + end}));
    }
}

TEST(CheckedBlockTest, WritesAfterTheEndOfItsLifeAreFoundOnce) {
    Faults faults;
    CheckedBlock block(20, "block");
    block.Retire();
    block.Check(faults);
    EXPECT_TRUE(faults.IsEmpty());
    WriteOutside(block.Data(), 19);
    block.Check(faults);
    block.Check(faults);
    EXPECT_EQ(faults.Lines(),
              std::vector<std::string>{
                  "block: written after it was freed: 1 byte, the first at offset 19"});
}

TEST(CheckedBlockTest, MovesWithItsContents) {
    CheckedBlock block(4, "block");
    block.Data()[3] = 42;
    CheckedBlock moved(std::move(block));
    EXPECT_EQ(moved.Data()[3], 42);
    EXPECT_EQ(moved.Name(), "block");
    CheckedBlock other(8, "other");
    other = std::move(moved);
    EXPECT_EQ(other.Size(), 4U);
    EXPECT_EQ(other.Data()[3], 42);
}

TEST(QuarantineTest, FindsLateWritesWhenBlocksAreDropped) {
    Faults faults;
    Quarantine quarantine(100);
    CheckedBlock first(60, "first");
    std::uint8_t* late = first.Data();
    first.Retire();
    quarantine.Add(std::move(first), faults);
    WriteOutside(late, 0);
    EXPECT_TRUE(faults.IsEmpty());
    CheckedBlock second(60, "second");
    second.Retire();
    quarantine.Add(std::move(second), faults);
    EXPECT_EQ(faults.Total(), 1U);
}

TEST(QuarantineTest, FindsLateWritesWhenAsked) {
    Faults faults;
    Quarantine quarantine(100);
    CheckedBlock block(60, "block");
    std::uint8_t* late = block.Data();
    block.Retire();
    quarantine.Add(std::move(block), faults);
    quarantine.Check(faults);
    EXPECT_TRUE(faults.IsEmpty());
    WriteOutside(late, 5);
    quarantine.Check(faults);
    EXPECT_EQ(faults.Total(), 1U);
}

}  // namespace host
