#include "framework/dialog/StackingOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

namespace {

using Places = std::vector<std::size_t>;

/// The stack after the moves: each window goes right below the one before it in the wanted order.
Places Stacked(const Places& wanted) {
    Places stack(wanted.size());
    std::iota(stack.begin(), stack.end(), std::size_t{0});
    for (const std::size_t index : WindowsToMove(wanted)) {
        stack.erase(std::find(stack.begin(), stack.end(), wanted[index]));
        const auto below = index == 0
                               ? stack.begin()
                               : std::find(stack.begin(), stack.end(), wanted[index - 1]) + 1;
        stack.insert(below, wanted[index]);
    }
    return stack;
}

TEST(StackingOrder, InOrderNothingMoves) {
    EXPECT_EQ(WindowsToMove({}), Places{});
    EXPECT_EQ(WindowsToMove({0}), Places{});
    EXPECT_EQ(WindowsToMove({0, 1, 2, 3}), Places{});
}

TEST(StackingOrder, OneOutOfPlaceMovesAlone) {
    EXPECT_EQ(WindowsToMove({3, 0, 1, 2}), Places{0});
    EXPECT_EQ(WindowsToMove({1, 2, 3, 0}), Places{3});
    EXPECT_EQ(WindowsToMove({0, 3, 1, 2, 4}), Places{1});
}

TEST(StackingOrder, EveryOrderIsReachedWithTheFewestMoves) {
    Places wanted(6);
    std::iota(wanted.begin(), wanted.end(), std::size_t{0});
    do {
        EXPECT_EQ(Stacked(wanted), wanted);
        // Whatever stays, stays in rising order: all subsets are tried.
        std::size_t longest = 0;
        for (unsigned subset = 0; subset < 1U << wanted.size(); ++subset) {
            Places kept;
            for (std::size_t i = 0; i < wanted.size(); ++i) {
                if ((subset >> i & 1U) != 0) {
                    kept.push_back(wanted[i]);
                }
            }
            if (std::is_sorted(kept.begin(), kept.end())) {
                longest = std::max(longest, kept.size());
            }
        }
        EXPECT_EQ(WindowsToMove(wanted).size(), wanted.size() - longest);
    } while (std::next_permutation(wanted.begin(), wanted.end()));
}

/// Windows by letters, from the top.
std::string RestackedLetters(const std::string& now, const std::string& windows,
                             FirstWindow first) {
    const auto addresses = [&](const std::string& letters) {
        static char windowOf[256];
        std::vector<void*> list;
        for (const char letter : letters) {
            windowOf[static_cast<unsigned char>(letter)] = letter;
            list.push_back(&windowOf[static_cast<unsigned char>(letter)]);
        }
        return list;
    };
    std::string result;
    for (void* const window : Restacked(addresses(now), addresses(windows), first)) {
        result += *static_cast<char*>(window);
    }
    return result;
}

TEST(StackingOrder, WindowsGoBelowTheFirstOfThem) {
    EXPECT_EQ(RestackedLetters("abcdef", "dbf", FirstWindow::stays), "acdbfe");
    EXPECT_EQ(RestackedLetters("abcdef", "dbf", FirstWindow::goesToTop), "dbface");
    EXPECT_EQ(RestackedLetters("abcdef", "e", FirstWindow::stays), "abcdef");
    EXPECT_EQ(RestackedLetters("abcdef", "e", FirstWindow::goesToTop), "eabcdf");
}

TEST(StackingOrder, WithoutTheFirstOneAllStaysAsItIs) {
    for (const FirstWindow first : {FirstWindow::stays, FirstWindow::goesToTop}) {
        EXPECT_EQ(RestackedLetters("abc", "", first), "abc");
        EXPECT_EQ(RestackedLetters("abc", "xb", first), "abc");
        EXPECT_EQ(RestackedLetters("", "a", first), "");
    }
}

}  // namespace
