// As Main.Win.cpp, on a screen that is large enough for its resolution.
#include <gtest/gtest.h>

#include "fixtures/InputDesktop.Win.h"
#include "fixtures/LargeScreen.Win.h"

int main(int count, char** values) {
    EnlargeScreen();
    testing::InitGoogleTest(&count, values);
    EnterOwnDesktop();
    return RUN_ALL_TESTS();
}
