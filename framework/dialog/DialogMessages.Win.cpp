// The handlers of single messages of a dialog's window.
#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>

#include <cmath>

#include "base/FatalError.h"
#include "framework/controls/ScrollStep.h"
#include "framework/dialog/DialogState.h"
#include "framework/dialog/DialogWindow.Win.h"
#include "framework/help/Help.Win.h"
#include "resources/Ids.h"

namespace {

/// Whether a control's command means that it was used.
bool IsUse(const ItemRecord& record, int code) {
    switch (record.Letter()) {
        case itemButton:
            // Quick clicks on some buttons come as double clicks.
            return code == BN_CLICKED || code == BN_DOUBLECLICKED;
        case itemCombo:
            return code == CBN_SELCHANGE;
        case itemText:
        case itemInteger:
        case itemReal:
            return record.IsEditField() ? code == EN_CHANGE
                                        : code == STN_CLICKED || code == STN_DBLCLK;
        default:
            return false;
    }
}

/// The thumb of a scroll bar in all its bits; the message has only the lower 16, and the last one
/// may come when the thumb is let go already.
int ThumbPlace(HWND control, int place) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_TRACKPOS | SIF_POS;
    if (GetScrollInfo(control, SB_CTL, &info)) {
        for (const int whole : {info.nTrackPos, info.nPos}) {
            if (static_cast<std::uint16_t>(whole) == static_cast<std::uint16_t>(place)) {
                return whole;
            }
        }
    }
    return place;
}

/// Without its pages the dialog goes on.
void OpenHelp(NorvantaDialog& dialog) {
    try {
        dialog.HelpCommand();
    } catch (std::int16_t) {
        if (errorCell != 0) {
            throw;
        }
        Alert(&dialog, alertHelpNotFound, HelpPagePath().c_str());
    }
}

/// The files of a drop, given back at the end.
class DroppedFiles {
  public:
    explicit DroppedFiles(HDROP newDrop) : drop(newDrop) {}
    DroppedFiles(const DroppedFiles&) = delete;
    DroppedFiles& operator=(const DroppedFiles&) = delete;
    ~DroppedFiles() { DragFinish(drop); }

  private:
    HDROP drop;
};

}  // namespace

bool DialogWindow::TakeCommand(NorvantaDialog& dialog, WPARAM wParam, LPARAM lParam) {
    const int code = HIWORD(wParam);
    const bool isPress = lParam == 0 || code == BN_CLICKED || code == BN_DOUBLECLICKED;
    if (isPress && !IsWindowEnabled(Window(dialog))) {
        // One more press, on its way when the last one opened a dialog over this one: what that
        // dialog works on would be exchanged below it.
        return true;
    }
    const int id = LOWORD(wParam);
    if (id == commandHelp) {
        OpenHelp(dialog);
        return true;
    }
    const short item = static_cast<short>(id);
    if (lParam == 0) {
        dialog.MenuCommand(item);
        return true;
    }
    if (!dialog.IsItem(item)) {
        return false;
    }
    ItemRecord& record = dialog.Record(item);
    const bool isOwnText = record.IsEditField() && dialog.textDepth > 0;
    if (!IsUse(record, code) || isOwnText) {
        return false;
    }
    record.isProgrammatic = false;
    dialog.HitItem(item);
    return true;
}

bool DialogWindow::TakeNotification(NorvantaDialog& dialog, WPARAM wParam, LPARAM lParam) {
    const short item = static_cast<short>(wParam);
    if (!dialog.IsItem(item)) {
        return false;
    }
    dialogState.isDoubleClick = TakeClick(GetDoubleClickTime());
    const std::uint8_t kind = dialog.Record(item).kind;
    // Only the system's own controls send a record with the message.
    const bool isTabChange =
        kind == itemTab && reinterpret_cast<const NMHDR*>(lParam)->code == TCN_SELCHANGE;
    if (kind != itemCustom && !isTabChange) {
        return false;
    }
    dialog.HitItem(item);
    return true;
}

bool DialogWindow::TakeScroll(NorvantaDialog& dialog, int code, int place, HWND control) {
    const short item = static_cast<short>(GetDlgCtrlID(control));
    if (control == nullptr || !dialog.IsItem(item)) {
        return false;
    }
    ItemRecord& record = dialog.Record(item);
    if (record.kind != itemScrollBar && record.kind != itemCustom) {
        return false;
    }
    const bool wasTracking = record.isTracking;
    const bool isEnd = EndsScrolling(code);
    if (!wasTracking) {
        record.tracked = record.value;
    }
    if (wasTracking == isEnd && record.kind == itemScrollBar) {
        // A custom control counts its drags itself.
        dialogState.dragDepth += isEnd ? -1 : 1;
    }
    record.isTracking = !isEnd;
    const bool isThumb = code == scrollThumb || code == scrollThumbEnd;
    const int thumb = record.kind == itemScrollBar && isThumb ? ThumbPlace(control, place) : place;
    const int before = static_cast<int>(std::lround(record.tracked));
    const int position = ScrolledTo(record, code, before, thumb);
    if (position != before) {
        record.tracked = static_cast<float>(position);
        if (dialog.ScrollChanged(item, position) && dialog.windowExists) {
            dialog.SetValue(item, position);
        }
    }
    if (isEnd && dialog.windowExists && (wasTracking || code == scrollThumbEnd)) {
        dialog.SetValue(item, position);
        dialog.HitItem(item);
    }
    return true;
}

void DialogWindow::TakeSize(NorvantaDialog& dialog, WPARAM wParam) {
    if (wParam == SIZE_MINIMIZED || dialog.items.empty()) {
        return;
    }
    if (wParam == SIZE_RESTORED && dialog.staysMaximized && !IsZoomed(Window(dialog))) {
        dialog.staysMaximized = false;
        PostMessageA(Window(dialog), messageMaximize, 0, 0);
    }
    const hostapi::Rect before = dialog.clientRectangle;
    NoteClientRectangle(dialog);
    const int width = Width(dialog.clientRectangle) - Width(before);
    const int height = Height(dialog.clientRectangle) - Height(before);
    // Before Setup has measured the window there is nothing to follow.
    if (!IsEmpty(before) && (width != 0 || height != 0)) {
        dialog.Resize(static_cast<short>(width), static_cast<short>(height));
    }
}

void DialogWindow::TakeActivation(NorvantaDialog& dialog, bool on) {
    if (on) {
        dialogState.active = &dialog;
    } else if (dialogState.active == &dialog) {
        dialogState.active = nullptr;
    }
    dialog.SetActive(on);
}

void DialogWindow::TakeDroppedFiles(NorvantaDialog& dialog, HDROP drop) {
    const DroppedFiles finished(drop);
    constexpr UINT all = 0xFFFFFFFF;
    const UINT count = DragQueryFileA(drop, all, nullptr, 0);
    for (UINT i = 0; i < count && dialog.dropHandler != nullptr; ++i) {
        char path[MAX_PATH];
        if (DragQueryFileA(drop, i, path, MAX_PATH) > 0) {
            dialog.dropHandler(dialog.dropContext, path);
        }
    }
}
