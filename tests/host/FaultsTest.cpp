#include "host/record/Faults.h"

#include <gtest/gtest.h>

namespace host {

TEST(FaultsTest, KeepsTheOrderAndCountsRepetitions) {
    Faults faults;
    EXPECT_TRUE(faults.IsEmpty());
    faults.Add("second thoughts");
    faults.Add("a leak");
    faults.Add("second thoughts");
    EXPECT_EQ(faults.Lines(), (std::vector<std::string>{"second thoughts (2 times)", "a leak"}));
    EXPECT_EQ(faults.Total(), 3U);
    faults.Clear();
    EXPECT_TRUE(faults.IsEmpty());
    EXPECT_EQ(faults.Total(), 0U);
}

}  // namespace host
