#include <windows.h>

#include <commdlg.h>

#include <algorithm>
#include <iterator>

#include "dialogs/ColorChoice.h"

bool ChooseColorFor(NorvantaDialog& owner, RGBColor16* color) {
    constexpr COLORREF white = 0xFFFFFF;
    COLORREF customColors[16];
    std::fill(std::begin(customColors), std::end(customColors), white);
    CHOOSECOLORA choice{};
    choice.lStructSize = sizeof choice;
    choice.hwndOwner = static_cast<HWND>(owner.Window());
    choice.lpCustColors = customColors;
    choice.Flags = CC_FULLOPEN;
    const DialogSuspension suspension;
    if (!ChooseColorA(&choice)) {
        return false;
    }
    *color = ColorFromShown(choice.rgbResult);
    return true;
}
