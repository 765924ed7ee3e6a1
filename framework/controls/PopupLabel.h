// The label of a popup menu control: its window text.
#pragma once

#include <string>

#include "framework/drawing/ScreenScale.h"

struct PopupLabel {
    /// The drawn text: up to the first tab.
    std::string text;
    /// Tabs in the text; without any the label's own width counts.
    int tabs;
};

PopupLabel SplitPopupLabel(const std::string& windowText);

/// Where the box begins, in pixels from the control's left; all of them in pixels on the screen.
int PopupBoxLeft(const PopupLabel& label, int labelWidth, int averageCharacterWidth,
                 ScreenScale scale = {});
