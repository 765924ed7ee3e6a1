// The tests run on a desktop of their own, so that programs at the same time don't take the focus
// from each other.
#include <gtest/gtest.h>

#include "base/Module.Win.h"
#include "fixtures/InputDesktop.Win.h"

HINSTANCE instanceHandle = nullptr;

int main(int count, char** values) {
    testing::InitGoogleTest(&count, values);
    EnterOwnDesktop();
    instanceHandle = GetModuleHandleA(nullptr);
    return RUN_ALL_TESTS();
}
