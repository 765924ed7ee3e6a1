// The filter that sees the messages of dialogs before the system does: accelerators, focus, keys.
#include <optional>
#include <string>

#include "base/Callback.Win.h"
#include "framework/controls/ControlClasses.Win.h"
#include "framework/dialog/DialogState.h"
#include "framework/dialog/DialogWindow.Win.h"

namespace {

HHOOK hook = nullptr;

constexpr int interruptCharacter = 3;  // Ctrl+C
constexpr int tabCharacter = 9;
constexpr int returnCharacter = 13;
constexpr int escapeCharacter = 27;

/// Other keys make the same characters: Ctrl+[ and Ctrl+Shift+C must not cost anybody a texture.
bool MeansCancel(int character, int modifiers) {
    const int held = modifiers & (modifierControl | modifierShift | modifierAlt);
    return character == escapeCharacter ? (held & modifierControl) == 0 : held == modifierControl;
}

/// Returns the character of a key message, or -1. Arrows and Escape give none: the system takes
/// them before.
int CharacterOf(const MSG& message) {
    if (message.message == WM_CHAR) {
        return static_cast<int>(message.wParam);
    }
    if (message.message != WM_KEYDOWN) {
        return -1;
    }
    switch (message.wParam) {
        case VK_UP:
            return upArrowCharacter;
        case VK_DOWN:
            return downArrowCharacter;
        case VK_ESCAPE:
            return escapeCharacter;
        default:
            return -1;
    }
}

bool IsRadioButton(HWND control) {
    return (SendMessageA(control, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON) != 0;
}

char UpperCase(char character) {
    CharUpperBuffA(&character, 1);
    return character;
}

bool IsMnemonicOf(const std::string& text, WPARAM character) {
    const char mnemonic = MnemonicIn(text);
    return mnemonic != '\0' && UpperCase(mnemonic) == UpperCase(static_cast<char>(character));
}

bool IsPushButton(const ItemRecord& record) {
    const LONG type = GetWindowLongA(static_cast<HWND>(record.control), GWL_STYLE) & BS_TYPEMASK;
    return record.kind == itemButton &&
           (type == BS_PUSHBUTTON || type == BS_DEFPUSHBUTTON || type == BS_OWNERDRAW);
}

enum class GroupStep { none, previous, next };

GroupStep GroupStepOf(const MSG& message) {
    if (message.message != WM_KEYDOWN) {
        return GroupStep::none;
    }
    switch (message.wParam) {
        case VK_UP:
        case VK_LEFT:
            return GroupStep::previous;
        case VK_DOWN:
        case VK_RIGHT:
            return GroupStep::next;
        default:
            return GroupStep::none;
    }
}

/// The radio button that an arrow leads to from another one of its group; that one itself if it is
/// alone.
HWND RadioButtonAfter(HWND window, HWND button, GroupStep step) {
    HWND found = button;
    do {
        found = GetNextDlgGroupItem(window, found, step == GroupStep::previous ? TRUE : FALSE);
    } while (found != button && !IsRadioButton(found));
    return found;
}

/// As on a slider.
std::optional<ItemKey> ItemKeyOf(const MSG& message) {
    if (message.message != WM_KEYDOWN) {
        return std::nullopt;
    }
    switch (message.wParam) {
        case VK_LEFT:
        case VK_DOWN:
            return ItemKey::back;
        case VK_RIGHT:
        case VK_UP:
            return ItemKey::on;
        case VK_NEXT:
            return ItemKey::pageBack;
        case VK_PRIOR:
            return ItemKey::pageOn;
        case VK_SPACE:
        case VK_RETURN:
            return ItemKey::press;
        default:
            return std::nullopt;
    }
}

bool IsKeyMessage(UINT message) {
    return message >= WM_KEYFIRST && message <= WM_KEYLAST;
}

bool IsPress(UINT message) {
    return IsKeyMessage(message) || message == WM_LBUTTONDOWN || message == WM_NCLBUTTONDOWN;
}

}  // namespace

void DialogWindow::InstallFilter() {
    hook = SetWindowsHookExA(WH_MSGFILTER, &DialogWindow::Filter, nullptr, GetCurrentThreadId());
}

void DialogWindow::RemoveFilter() {
    UnhookWindowsHookEx(hook);
    hook = nullptr;
}

LRESULT CALLBACK DialogWindow::Filter(int code, WPARAM wParam, LPARAM lParam) {
    const MSG& message = *reinterpret_cast<const MSG*>(lParam);
    if (code == MSGF_MENU && message.message == WM_QUIT) {
        // Not every system's menu closes by itself.
        EndMenu();
    }
    if (code == MSGF_DIALOGBOX) {
        if (Guarded(
                true, [&] { return FilterMessage(message); },
                [](std::int16_t id) { Tell(dialogState.active, id); })) {
            return TRUE;
        }
    }
    return CallNextHookEx(hook, code, wParam, lParam);
}

/// Whether the message ends here.
bool DialogWindow::FilterMessage(const MSG& message) {
    NorvantaDialog* const active = dialogState.active;
    if (active == nullptr || !active->windowExists) {
        return false;
    }
    const HWND window = Window(*active);
    if (message.hwnd != window && !IsChild(window, message.hwnd)) {
        return false;
    }
    active->staysMaximized = active->staysMaximized && !IsPress(message.message);
    MSG copy = message;
    if (IsKeyMessage(message.message) && active->accelerators != nullptr &&
        TranslateAcceleratorA(window, static_cast<HACCEL>(active->accelerators), &copy) != 0) {
        return true;
    }
    TrackFocus();
    return active->windowExists &&
           (FilterKey(*active, message) || FollowMnemonic(*active, message) ||
            ChooseInGroup(*active, message) || PressFocused(*active, message) ||
            UseItem(*active, message));
}

/// The item that the text of another one is the label of, by SetLabel or by its kind; 0 for none.
short DialogWindow::ItemOfLabel(const NorvantaDialog& dialog, short label) {
    for (const NorvantaDialog::Label& set : dialog.labels) {
        if (set.text == label) {
            return set.item;
        }
    }
    return dialog.Record(label).kind == itemCustom ? label : short{0};
}

// The system knows labels that stand before their fields, and no others.
bool DialogWindow::FollowMnemonic(NorvantaDialog& dialog, const MSG& message) {
    if (message.message != WM_SYSCHAR) {
        return false;
    }
    for (short label = 1; label <= dialog.itemCount; ++label) {
        const short item = ItemOfLabel(dialog, label);
        if (item != 0 && IsMnemonicOf(dialog.GetText(label), message.wParam) &&
            dialog.IsShown(item) && dialog.IsEnabled(item)) {
            dialog.SetFocus(item);
            return true;
        }
    }
    return false;
}

// Arrows choose among the radio buttons of a group. Not every system hits a button that it gives
// the focus for that.
bool DialogWindow::ChooseInGroup(NorvantaDialog& dialog, const MSG& message) {
    const GroupStep step = GroupStepOf(message);
    if (step == GroupStep::none || !IsRadioButton(message.hwnd)) {
        return false;
    }
    const HWND chosen = RadioButtonAfter(Window(dialog), message.hwnd, step);
    const short item = static_cast<short>(GetDlgCtrlID(chosen));
    if (chosen == message.hwnd || !dialog.IsItem(item)) {
        return false;
    }
    dialog.SetFocus(item);
    if (dialog.windowExists && dialog.GetShort(item) == 0) {
        dialog.HitItem(item);
    }
    return true;
}

// Return presses the push button that has the focus. The system knows neither those with a picture
// nor, everywhere, one that got the focus by the mouse, and would press the default button.
bool DialogWindow::PressFocused(NorvantaDialog& dialog, const MSG& message) {
    const short item = dialog.GetFocusItem();
    if (message.message != WM_KEYDOWN || message.wParam != VK_RETURN || item == 0 ||
        !IsPushButton(dialog.Record(item))) {
        return false;
    }
    dialog.HitItem(item);
    return true;
}

/// A key on a user item. Nothing else would hear of it.
bool DialogWindow::UseItem(NorvantaDialog& dialog, const MSG& message) {
    const std::optional<ItemKey> key = ItemKeyOf(message);
    const short item = dialog.GetFocusItem();
    if (!key || item == 0 || !IsUserItem(message.hwnd) ||
        !dialog.UserItemKey(item, *key, GetMessageModifiers())) {
        return false;
    }
    if (dialog.windowExists) {
        EraseUserItem(message.hwnd);
        const int part = dialog.Describe(item).focusedPart;
        NotifyWinEvent(part != 0 ? EVENT_OBJECT_FOCUS : EVENT_OBJECT_VALUECHANGE, message.hwnd,
                       OBJID_CLIENT, part);
    }
    return true;
}

void DialogWindow::TrackFocus() {
    const HWND focus = GetFocus();
    NorvantaDialog* const before = dialogState.focused;
    NorvantaDialog* const now = focus != nullptr ? Of(GetAncestor(focus, GA_ROOT)) : nullptr;
    dialogState.focused = now;
    if (before != nullptr && before != now) {
        before->TakeFocusStep();
    }
    if (now != nullptr) {
        now->TakeFocusStep();
    }
}

bool DialogWindow::FilterKey(NorvantaDialog& dialog, const MSG& message) {
    const int character = CharacterOf(message);
    if (character < 0) {
        return false;
    }
    if (FilterSystemKey(dialog, character)) {
        return true;
    }
    const short item = dialog.KeyDown(character, GetMessageModifiers());
    if (item < 0) {
        return false;
    }
    dialog.HitItem(item);
    return true;
}

bool DialogWindow::FilterSystemKey(NorvantaDialog& dialog, int character) {
    switch (character) {
        case tabCharacter:
            if (const short item = dialog.GetFocusItem(); item != 0) {
                dialog.SetFocus(item, (GetMessageModifiers() & modifierShift) != 0 ? -1 : 1);
            }
            return true;
        case escapeCharacter:
        case interruptCharacter:
            if (MeansCancel(character, GetMessageModifiers())) {
                PostMessageA(Window(dialog), messageCancel, 0, 0);
            }
            return true;
        case returnCharacter:
            // The key itself has reached the default button.
            return true;
        default:
            return false;
    }
}
