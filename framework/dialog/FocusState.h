// The state that a dialog keeps of the field that has the focus.
#pragma once

#include <string>

#include "framework/dialog/ItemRecord.h"

struct FocusState {
    /// 0 for none.
    short item = 0;
    std::uint8_t kind = itemUnknown;
    /// HWND.
    void* control = nullptr;
    /// The user has emptied a number field, perhaps to type over it.
    bool isEmptied = false;
    /// The text that the field goes back to.
    std::string goodText;
};
