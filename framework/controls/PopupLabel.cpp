#include "framework/controls/PopupLabel.h"

#include <algorithm>

namespace {

constexpr int charactersInTab = 4;
/// In pixels at 96 dots an inch.
constexpr int gapBehindLabel = 4;

}  // namespace

PopupLabel SplitPopupLabel(const std::string& windowText) {
    return {windowText.substr(0, windowText.find('\t')),
            static_cast<int>(std::count(windowText.begin(), windowText.end(), '\t'))};
}

int PopupBoxLeft(const PopupLabel& label, int labelWidth, int averageCharacterWidth,
                 ScreenScale scale) {
    const int begin =
        label.tabs > 0 ? label.tabs * charactersInTab * averageCharacterWidth : labelWidth;
    return begin + scale.Pixels(gapBehindLabel);
}
