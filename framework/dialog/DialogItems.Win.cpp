// The controls of a dialog: values, texts, states, popups.
#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <iterator>

#include "base/Module.Win.h"
#include "framework/controls/ControlClasses.Win.h"
#include "framework/dialog/DialogState.h"
#include "framework/dialog/DialogWindow.Win.h"
#include "framework/dialog/NorvantaDialog.h"
#include "framework/dialog/StackingOrder.h"

namespace {

HWND ControlOf(const ItemRecord& record) {
    return static_cast<HWND>(record.control);
}

std::string TextOf(HWND window) {
    char text[textBufferSize];
    const int length = GetWindowTextA(window, text, static_cast<int>(sizeof text));
    return std::string(text, static_cast<std::size_t>(length));
}

}  // namespace

// --- Values ---

int NorvantaDialog::ControlValue(const ItemRecord& record) const {
    const HWND control = ControlOf(record);
    switch (record.kind) {
        case itemButton:
            return SendMessageA(control, BM_GETCHECK, 0, 0) == BST_CHECKED ? 1 : 0;
        case itemCombo:
            return static_cast<int>(SendMessageA(control, CB_GETCURSEL, 0, 0)) + 1;
        case itemScrollBar:
            return GetScrollPos(control, SB_CTL);
        case itemTab:
            return static_cast<int>(SendMessageA(control, TCM_GETCURSEL, 0, 0)) + 1;
        default:
            return static_cast<int>(SendMessageA(control, controlGetValue, 0, 0));
    }
}

void NorvantaDialog::SetControlValue(const ItemRecord& record, int value) {
    const HWND control = ControlOf(record);
    const WPARAM position = static_cast<WPARAM>(value - 1);
    switch (record.kind) {
        case itemButton:
            SendMessageA(control, BM_SETCHECK, value > 0 ? BST_CHECKED : BST_UNCHECKED, 0);
            break;
        case itemCombo:
            SendMessageA(control, CB_SETCURSEL, position, 0);
            break;
        case itemScrollBar:
            SetScrollPos(control, SB_CTL, value, TRUE);
            break;
        case itemTab:
            SendMessageA(control, TCM_SETCURSEL, position, 0);
            break;
        default:
            SendMessageA(control, controlSetValue, 0, value);
            break;
    }
}

void NorvantaDialog::SetControlRange(const ItemRecord& record) {
    const HWND control = ControlOf(record);
    const int minimum = static_cast<int>(record.minimum);
    const int maximum = static_cast<int>(record.maximum);
    if (record.kind == itemCustom) {
        SendMessageA(control, controlSetRange, TRUE, MAKELPARAM(minimum, maximum));
        return;
    }
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE;
    info.nPage = static_cast<UINT>((std::max)(record.pageStep, std::int16_t{1}));
    info.nMin = minimum;
    // The system ends a page before its own maximum.
    info.nMax = maximum + static_cast<int>(info.nPage) - 1;
    SetScrollInfo(control, SB_CTL, &info, TRUE);
    EnableWindow(control, maximum > minimum ? TRUE : FALSE);
}

// --- Texts ---

std::string NorvantaDialog::GetText(short item) const {
    return TextOf(ControlOf(Record(item)));
}

void NorvantaDialog::WriteText(short item, const char* text, bool select) {
    ItemRecord& record = Record(item);
    char cut[textBufferSize];
    CopyText(cut, text);
    ++textDepth;
    SetWindowTextA(ControlOf(record), cut);
    --textDepth;
    if (dialogState.dragDepth > 0) {
        // A drag takes no messages in which the control could paint itself.
        UpdateWindow(ControlOf(record));
    }
    record.isProgrammatic = true;
    if (select && record.IsEditField()) {
        SendMessageA(ControlOf(record), EM_SETSEL, 0, -1);
    }
}

// --- What they are ---

namespace {

ItemRole ButtonRole(LONG style, bool hasText) {
    switch (style & BS_TYPEMASK) {
        case BS_CHECKBOX:
            return hasText ? ItemRole::system : ItemRole::checkBox;
        case BS_RADIOBUTTON:
            return hasText ? ItemRole::system : ItemRole::radioButton;
        case BS_PUSHBUTTON:
        case BS_DEFPUSHBUTTON:
            return (style & BS_ICON) != 0 ? ItemRole::pushButton : ItemRole::system;
        default:
            return ItemRole::system;
    }
}

struct ClassRole {
    const char* name;
    ItemRole role;
};

constexpr ClassRole classRoles[] = {
    {"tBitmapButton", ItemRole::pushButton}, {"tToolPalette", ItemRole::palette},
    {"tPopupMenu", ItemRole::popup},         {"tRealtimeMenu", ItemRole::popup},
    {"tLinearSlider", ItemRole::slider},     {"tPadLock", ItemRole::checkBox},
    {"tUserItem", ItemRole::picture},
};

}  // namespace

/// Without what the dialog says of it.
ItemRole NorvantaDialog::ControlRole(const ItemRecord& record) const {
    const HWND control = ControlOf(record);
    char name[32] = "";
    GetClassNameA(control, name, static_cast<int>(sizeof name));
    const auto found =
        std::find_if(std::begin(classRoles), std::end(classRoles),
                     [&](const ClassRole& row) { return lstrcmpiA(row.name, name) == 0; });
    if (found != std::end(classRoles)) {
        return found->role;
    }
    const LONG style = GetWindowLongA(control, GWL_STYLE);
    if (record.IsEditField()) {
        return ItemRole::field;
    }
    if (record.kind == itemScrollBar) {
        return ItemRole::scrollBar;
    }
    if (record.kind == itemButton) {
        return ButtonRole(style, GetWindowTextLengthA(control) > 0);
    }
    const LONG picture = style & SS_TYPEMASK;
    const bool isPicture = record.kind == itemText && (picture == SS_BITMAP || picture == SS_ICON);
    return isPicture && (style & SS_NOTIFY) != 0 ? ItemRole::picture : ItemRole::system;
}

/// The smallest box with a title around the middle of the item; 0 for none.
short NorvantaDialog::GroupOf(short item) const {
    const hostapi::Rect bounds = GetBounds(item);
    const hostapi::Point middle{static_cast<std::int16_t>((bounds.top + bounds.bottom) / 2),
                                static_cast<std::int16_t>((bounds.left + bounds.right) / 2)};
    short smallest = 0;
    for (short box = 1; box <= itemCount; ++box) {
        const HWND control = ControlOf(Record(box));
        const bool isBox = Record(box).kind == itemButton &&
                           (GetWindowLongA(control, GWL_STYLE) & BS_TYPEMASK) == BS_GROUPBOX;
        if (isBox && !GetText(box).empty() && Contains(GetBounds(box), middle) &&
            (smallest == 0 || Width(GetBounds(box)) < Width(GetBounds(smallest)))) {
            smallest = box;
        }
    }
    return smallest;
}

// --- State ---

void NorvantaDialog::Enable(short item, bool on) {
    const HWND control = ControlOf(Record(item));
    if (!on && GetFocus() == control) {
        // A disabled control would keep the keys to itself.
        SetFocus(item, 1);
    }
    EnableWindow(control, on ? TRUE : FALSE);
}

bool NorvantaDialog::IsEnabled(short item) const {
    return IsWindowEnabled(ControlOf(Record(item))) != FALSE;
}

void NorvantaDialog::Show(short item, bool on) {
    const ItemRecord& record = Record(item);
    ShowWindow(ControlOf(record), on ? SW_SHOWNA : SW_HIDE);
    if (record.kind == itemCustom) {
        InvalidateItem(item);
    }
}

bool NorvantaDialog::IsShown(short item) const {
    // The state of the control alone: the dialog may still be hidden.
    return (GetWindowLongA(ControlOf(Record(item)), GWL_STYLE) & WS_VISIBLE) != 0;
}

hostapi::Rect NorvantaDialog::GetBounds(short item) const {
    RECT rect{};
    GetWindowRect(ControlOf(Record(item)), &rect);
    MapWindowPoints(nullptr, DialogWindow::Window(*this), reinterpret_cast<POINT*>(&rect), 2);
    return RectFromSystem(rect);
}

void NorvantaDialog::SetBounds(short item, const hostapi::Rect& bounds) {
    const ItemRecord& record = Record(item);
    const hostapi::Rect before = GetBounds(item);
    if (AreEqual(before, bounds)) {
        return;
    }
    SetWindowPos(ControlOf(record), nullptr, bounds.left, bounds.top, Width(bounds), Height(bounds),
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS | RedrawOfMoved(ControlOf(record)));
    if (record.kind == itemCustom) {
        // The dialog draws there, beside what the control draws.
        InvalidateRect(bounds);
    }
}

void NorvantaDialog::SetFocus(short item, int step) {
    const HWND window = DialogWindow::Window(*this);
    HWND control = ControlOf(Record(item));
    if (step != 0) {
        control = GetNextDlgTabItem(window, control, step < 0 ? TRUE : FALSE);
    }
    if (control == nullptr) {
        return;
    }
    SendMessageA(window, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
    for (const ItemRecord& record : items) {
        if (record.control == control && record.IsEditField()) {
            SendMessageA(control, EM_SETSEL, 0, -1);
        }
    }
}

void NorvantaDialog::SetTabOrder(const std::vector<short>& order) {
    if (!windowExists) {
        tabOrder = order;
        return;
    }
    StackInOrder(Restacked(stacking, ControlsOf(order), FirstWindow::stays), stacking);
}

std::vector<void*> NorvantaDialog::ControlsOf(const std::vector<short>& order) const {
    std::vector<void*> controls;
    for (const short item : order) {
        controls.push_back(Record(item).control);
    }
    return controls;
}

void NorvantaDialog::SetLabel(short label, short item) {
    Record(label);
    Record(item);
    labels.push_back({label, item});
}

short NorvantaDialog::GetFocusItem() const {
    CheckWindow();
    const HWND focused = GetFocus();
    for (std::size_t i = 0; focused != nullptr && i < items.size(); ++i) {
        const HWND control = ControlOf(items[i]);
        if (control == focused || IsChild(control, focused)) {
            return static_cast<short>(i + 1);
        }
    }
    return 0;
}

// --- Popups ---

short NorvantaDialog::PopupCount(short item) const {
    return static_cast<short>(SendMessageA(ControlOf(Record(item)), CB_GETCOUNT, 0, 0));
}

std::string NorvantaDialog::PopupText(short item, short position) const {
    char text[textBufferSize] = "";
    SendMessageA(ControlOf(Record(item)), CB_GETLBTEXT, static_cast<WPARAM>(position - 1),
                 reinterpret_cast<LPARAM>(text));
    return text;
}

void NorvantaDialog::InsertPopupEntry(short item, short position, const char* text) {
    char cut[textBufferSize];
    CopyText(cut, text);
    SendMessageA(ControlOf(Record(item)), CB_INSERTSTRING, static_cast<WPARAM>(position - 1),
                 reinterpret_cast<LPARAM>(cut));
}

void NorvantaDialog::DeletePopupEntry(short item, short position) {
    SendMessageA(ControlOf(Record(item)), CB_DELETESTRING, static_cast<WPARAM>(position - 1), 0);
}

void NorvantaDialog::EnablePopupEntry(short item, short position, bool on) {
    SendMessageA(ControlOf(Record(item)), CB_SETITEMDATA, static_cast<WPARAM>(position - 1),
                 on ? 1 : 0);
}

void NorvantaDialog::SetPopupPicture(short item, short position, short picture) {
    SendMessageA(ControlOf(Record(item)), CB_SETITEMDATA, static_cast<WPARAM>(position - 1),
                 picture);
}
