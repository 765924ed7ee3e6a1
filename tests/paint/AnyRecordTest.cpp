// No settings make an operation crash, hang or write outside its blocks, which the sanitizers and
// the strict host would report. tests/fuzz/ makes any number of such runs.
#include <vector>

#include "tests/support/AnyOperation.h"
#include "tests/support/CoreTest.h"

namespace {

class AnyRecordTest : public CoreTest {};

TEST_F(AnyRecordTest, AnySettingsAreSafe) {
    std::vector<int> runs(AnyOperationCount());
    for (unsigned seed = 0; seed < 2000; ++seed) {
        Log().clock = seed;
        const AnyRun run = RunAnyOperation(seed, memory);
        ++runs[run.operation];
        ASSERT_FALSE(run.cloneLeft) << AnyOperationName(run.operation) << ", seed " << seed;
        ASSERT_EQ(memory.LiveBuffers(), 0u) << seed;
    }
    for (std::size_t i = 0; i < runs.size(); ++i) {
        EXPECT_GT(runs[i], 0) << AnyOperationName(i);
    }
}

}  // namespace
