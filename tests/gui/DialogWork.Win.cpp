#include "tests/gui/DialogWork.Win.h"

#include "fixtures/InputDesktop.Win.h"
#include "fixtures/Screenshot.Win.h"
#include "framework/controls/SliderGeometry.h"

namespace {

/// More than any dialog has items.
constexpr int mostItems = 100;
constexpr int alertText = 3;

/// Presses a key that moves the focus, and waits until it has moved.
void MoveFocus(const GuiDriver& gui, const DrivenDialog& dialog) {
    const HWND before = InputStateOf(dialog.Window()).hwndFocus;
    gui.Chord({VK_TAB});
    WaitUntil("the focus to move",
              [&] { return InputStateOf(dialog.Window()).hwndFocus != before; });
    dialog.Settle();
}

}  // namespace

// --- The focus ---

int FocusedItem(const DrivenDialog& dialog) {
    return FocusedItem(dialog.Window());
}

void TabTo(const GuiDriver& gui, const DrivenDialog& dialog, int item) {
    for (int step = 0; FocusedItem(dialog) != item; ++step) {
        if (step == mostItems) {
            throw GuiError("Tab never comes to item " + std::to_string(item));
        }
        MoveFocus(gui, dialog);
    }
}

std::vector<int> TabOrder(const GuiDriver& gui, const DrivenDialog& dialog) {
    std::vector<int> order;
    const int first = FocusedItem(dialog);
    do {
        order.push_back(FocusedItem(dialog));
        MoveFocus(gui, dialog);
    } while (FocusedItem(dialog) != first && order.size() < mostItems);
    return order;
}

// --- Values ---

void TypeInto(const GuiDriver& gui, const DrivenDialog& dialog, int item, const std::string& text) {
    TabTo(gui, dialog, item);
    gui.Chord({VK_HOME});
    gui.Chord({VK_SHIFT, VK_END});
    gui.Type(text);
    WaitUntil("the text " + text, [&] { return dialog.Text(item) == text; });
    dialog.Settle();
}

void ChooseEntry(const GuiDriver& gui, const DrivenDialog& dialog, int item, int place) {
    TabTo(gui, dialog, item);
    while (dialog.Value(item) != place) {
        const int before = dialog.Value(item);
        gui.Chord({static_cast<WORD>(before < place ? VK_DOWN : VK_UP)});
        WaitUntil("another entry", [&] { return dialog.Value(item) != before; });
    }
    dialog.Settle();
}

POINT PlaceInMenu(int place) {
    const HWND window = FindWindowA("#32768", nullptr);
    constexpr UINT getMenu = 0x1E1;
    const HMENU menu = reinterpret_cast<HMENU>(Ask(window, getMenu));
    RECT entry{};
    GetMenuItemRect(window, menu, static_cast<UINT>(place - 1), &entry);
    return {(entry.left + entry.right) / 2, (entry.top + entry.bottom) / 2};
}

void PointAtEntry(const DrivenDialog& dialog, int item, int place) {
    const POINT middle = PlaceInMenu(place);
    LONG step = 0;
    WaitUntil("the entry under the pointer", [&] {
        // Wine loses a movement that comes while a menu handles the one before, so the mouse keeps
        // moving.
        MoveMouse({middle.x + step++ % 2, middle.y});
        return dialog.Value(item) == place;
    });
}

void ChooseEntryByMouse(const GuiDriver& gui, const DrivenDialog& dialog, int item, int place) {
    OpenMenuOf(dialog, item);
    MoveMouse(PlaceInMenu(place));
    gui.PressMouse();
    gui.ReleaseMouse();
    WaitUntilMenuIsClosed(gui, dialog);
    WaitUntil("the entry", [&] { return dialog.Value(item) == place; });
    dialog.Settle();
}

bool HasOpenMenu(const DrivenDialog& dialog) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(dialog.Window(), nullptr), &info);
    return (info.flags & GUI_INMENUMODE) != 0;
}

void WaitUntilMenuIsClosed(const GuiDriver& gui, const DrivenDialog& dialog) {
    WaitUntil("the menu to close", [&] { return !HasOpenMenu(dialog); });
    // The dialog looks at its queue, and so replies to other threads, before it takes the choice.
    gui.WaitUntilIdle();
}

void OpenMenuOf(const DrivenDialog& dialog, int item) {
    const RECT popup = dialog.Bounds(item);
    dialog.Click(item, {static_cast<int>(popup.right - popup.left) - 8, 8});
    WaitUntil("the menu", [&] {
        return HasOpenMenu(dialog) && IsWindowVisible(FindWindowA("#32768", nullptr)) != FALSE;
    });
}

std::vector<std::string> Entries(const DrivenDialog& dialog, int item) {
    return EntriesOf(dialog.Control(item));
}

ItemPlace PlaceOnSlider(const DrivenDialog& dialog, int item, SliderLimits limits, int value) {
    const RECT bounds = dialog.Bounds(item);
    const SliderGeometry geometry =
        MeasureSlider({0, 0, bounds.right - bounds.left, bounds.bottom - bounds.top});
    return {ThumbCenter(geometry, {value, limits.minimum, limits.maximum}, value),
            (bounds.bottom - bounds.top) / 2};
}

void DragSlider(const DrivenDialog& dialog, int item, SliderLimits limits,
                const std::vector<int>& values, const std::function<void(int value)>& seen) {
    const auto placeOf = [&](int value) { return PlaceOnSlider(dialog, item, limits, value); };
    std::vector<ItemPlace> places{placeOf(dialog.Value(item))};
    for (const int value : values) {
        places.push_back(placeOf(value));
    }
    std::size_t at = 0;
    int step = 0;
    dialog.Drag(item, places, [&] {
        if (at > 0) {
            const int value = values[at - 1];
            WaitUntil("the slider at " + std::to_string(value), [&] {
                // Wine makes movements of its own when windows change, and loses one that comes
                // while such a one is taken, so the mouse keeps moving.
                dialog.Point(item, {places[at].x, places[at].y + step++ % 2});
                return dialog.Value(item) == value;
            });
            if (seen) {
                seen(value);
            }
        }
        ++at;
    });
}

// --- Dialogs that close ---

std::string AnswerAlert(const GuiDriver& gui, const DrivenDialog& under, int item) {
    const DrivenDialog alert = gui.WaitForAlert(under);
    std::string text = alert.Text(alertText);
    CloseWith(alert, item);
    return text;
}

void CloseWith(const DrivenDialog& dialog, int item) {
    dialog.PressToOpen(item);
    dialog.WaitUntilClosed();
}

// --- Pictures ---

host::Picture GrabWithFrame(const DrivenDialog& dialog) {
    dialog.WaitUntilPainted();
    // A control that has begun to paint has nothing left to be painted; the thread takes a message
    // only when it is done.
    dialog.Settle();
    return GrabFrame(dialog.Window());
}
