// The commands of an Edit menu, on the field that has the focus.
#include <windows.h>

#include "framework/dialog/DialogWindow.Win.h"
#include "framework/dialog/NorvantaDialog.h"
#include "framework/help/Help.Win.h"
#include "resources/Ids.h"

namespace {

/// The field's message for a command; 0 for other commands.
UINT MessageOf(short id) {
    switch (id) {
        case commandFieldUndo:
            return WM_UNDO;
        case commandFieldCut:
            return WM_CUT;
        case commandFieldCopy:
            return WM_COPY;
        case commandFieldPaste:
            return WM_PASTE;
        case commandFieldClear:
            return WM_CLEAR;
        case commandFieldSelectAll:
            return EM_SETSEL;
        default:
            return 0;
    }
}

bool ChangesText(short id) {
    return id != commandFieldCopy && id != commandFieldSelectAll;
}

bool HasSelection(HWND field) {
    DWORD begin = 0;
    DWORD end = 0;
    SendMessageA(field, EM_GETSEL, reinterpret_cast<WPARAM>(&begin),
                 reinterpret_cast<LPARAM>(&end));
    return begin != end;
}

}  // namespace

void NorvantaDialog::MenuCommand(short id) {
    const UINT message = MessageOf(id);
    const short item = GetFocusItem();
    if (message == 0 || item == 0 || !Record(item).IsEditField()) {
        return;
    }
    // The field tells of its change as well; one hit is enough.
    ++textDepth;
    SendMessageA(static_cast<HWND>(Record(item).control), message, 0,
                 message == EM_SETSEL ? -1 : 0);
    --textDepth;
    if (ChangesText(id)) {
        HitItem(item);
    }
}

void NorvantaDialog::UpdateMenus() {
    const short item = GetFocusItem();
    const bool isField = item != 0 && Record(item).IsEditField();
    const HWND field = isField ? static_cast<HWND>(Record(item).control) : nullptr;
    const bool hasSelection = isField && HasSelection(field);
    Port().EnableMenuItem(commandFieldUndo,
                          isField && SendMessageA(field, EM_CANUNDO, 0, 0) != FALSE);
    Port().EnableMenuItem(commandFieldCut, hasSelection);
    Port().EnableMenuItem(commandFieldCopy, hasSelection);
    Port().EnableMenuItem(commandFieldClear, hasSelection);
    Port().EnableMenuItem(commandFieldPaste, isField && IsClipboardFormatAvailable(CF_TEXT));
    Port().EnableMenuItem(commandFieldSelectAll, isField);
    Port().EnableMenuItem(commandHelp, isHelpThere(HelpPagePath().c_str()));
}
