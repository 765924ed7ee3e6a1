#include "raster/HandleClass.h"

#include <cstring>
#include <limits>
#include <utility>

#include "tests/support/CoreTest.h"

namespace {

class HandleClassTest : public CoreTest {};

TEST_F(HandleClassTest, GivesAUsableBlock) {
    HandleClass block(1000);
    ASSERT_FALSE(block.failed);
    ASSERT_NE(block.handle, nullptr);
    void* const address = block.Lock();
    ASSERT_NE(address, nullptr);
    std::memset(address, 0x5A, 1000);
    block.Unlock();
    EXPECT_EQ(static_cast<unsigned char*>(block.Lock())[999], 0x5A);
    block.Unlock();
}

TEST_F(HandleClassTest, SaysWhenThereIsNoMemory) {
    HandleClass block(std::numeric_limits<std::size_t>::max() / 2);
    EXPECT_TRUE(block.failed);
    EXPECT_EQ(block.handle, nullptr);
    EXPECT_EQ(block.Lock(), nullptr);
}

TEST_F(HandleClassTest, UnlockingWithoutABlockFailsAnAssertion) {
    HandleClass block(1000);
    void* const handle = std::exchange(block.handle, nullptr);
    EXPECT_EQ(block.Lock(), nullptr);
    EXPECT_EQ(AssertionOf([&] { block.Unlock(); }), "HandleClass / Zeile 58 !(handle != nil)");
    block.handle = handle;
}

}  // namespace
