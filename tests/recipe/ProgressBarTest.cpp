#include "recipe/tool/ProgressBar.h"

#include <gtest/gtest.h>

#include <string>

using recipe::ProgressBar;

namespace {

/// The bar after `draw`, its end included.
template <class Draw>
std::string Drawn(bool visible, Draw draw) {
    testing::internal::CaptureStderr();
    {
        ProgressBar bar(visible);
        draw(bar);
    }
    return testing::internal::GetCapturedStderr();
}

const std::string empty = "\r" + std::string(47, ' ') + "\r";

}  // namespace

TEST(ProgressBar, FillsAndGoes) {
    EXPECT_EQ(Drawn(true,
                    [](ProgressBar& bar) {
                        bar.Show(0.0);
                        bar.Show(0.5);
                        bar.Show(1.0);
                    }),
              "\r[" + std::string(40, '.') + "]   0%" +                             //
                  "\r[" + std::string(20, '#') + std::string(20, '.') + "]  50%" +  //
                  "\r[" + std::string(40, '#') + "] 100%" + empty);
}

TEST(ProgressBar, DrawsOnlyWhatShows) {
    EXPECT_EQ(Drawn(true,
                    [](ProgressBar& bar) {
                        bar.Show(0.5);
                        bar.Show(0.501);
                    }),
              "\r[" + std::string(20, '#') + std::string(20, '.') + "]  50%" + empty);
}

TEST(ProgressBar, MakesRoomAndComesBack) {
    const std::string bar = "\r[" + std::string(40, '.') + "]   0%";
    EXPECT_EQ(Drawn(true,
                    [](ProgressBar& b) {
                        b.Clear();
                        b.Show(0.0);
                        b.Clear();
                        b.Clear();
                        b.Show(0.0);
                    }),
              bar + empty + bar + empty);
}

TEST(ProgressBar, IsSilentWhenNotVisible) {
    EXPECT_EQ(Drawn(false,
                    [](ProgressBar& bar) {
                        bar.Show(0.5);
                        bar.Clear();
                    }),
              "");
}
