#include "framework/dialog/DialogState.h"

#include "base/Platform.h"

DialogState dialogState;

bool TakeClick(std::uint32_t doubleClickTime) {
    const std::uint32_t now = platformServices.tickCount();
    // The ticks wrap; their difference does not.
    const bool isSecond = dialogState.hadClick && now - dialogState.lastClick <= doubleClickTime;
    dialogState.lastClick = now;
    dialogState.hadClick = true;
    return isSecond;
}
