// The tests run on a desktop of their own, in memory, so that programs at the same time don't take
// the focus from each other.
#include <gtest/gtest.h>

#include "fixtures/InputDesktop.Win.h"
#include "tests/resources/StandIns.Win.h"

int main(int count, char** values) {
    testing::InitGoogleTest(&count, values);
    EnterOwnDesktop();
    RegisterStandIns();
    return RUN_ALL_TESTS();
}
