#include "recipe/tool/ProgressBar.h"

#include <cstdio>
#include <string>

namespace recipe {

namespace {

constexpr int barWidth = 40;

}  // namespace

void ProgressBar::Show(double share) {
    const int percent = static_cast<int>(share * 100);
    if (!visible || percent == shownPercent) {
        return;
    }
    shownPercent = percent;
    const int filled = percent * barWidth / 100;
    const std::string bar = std::string(static_cast<std::size_t>(filled), '#') +
                            std::string(static_cast<std::size_t>(barWidth - filled), '.');
    std::fprintf(stderr, "\r[%s] %3d%%", bar.c_str(), percent);
    std::fflush(stderr);
}

void ProgressBar::Clear() {
    if (shownPercent < 0) {
        return;
    }
    shownPercent = -1;
    constexpr int lineWidth = barWidth + 7;
    std::fprintf(stderr, "\r%*s\r", lineWidth, "");
    std::fflush(stderr);
}

}  // namespace recipe
