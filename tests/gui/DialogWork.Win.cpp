#include "tests/gui/DialogWork.Win.h"

#include <memory>

#include "framework/controls/SliderGeometry.h"
#include "tests/e2e/InputDesktop.Win.h"

namespace {

/// More than any dialog has items.
constexpr int mostItems = 100;
constexpr int alertText = 3;

HWND FocusOf(const DrivenDialog& dialog) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(dialog.Window(), nullptr), &info);
    return info.hwndFocus;
}

/// Presses a key that moves the focus, and waits until it has moved.
void MoveFocus(const GuiDriver& gui, const DrivenDialog& dialog) {
    const HWND before = FocusOf(dialog);
    gui.Chord({VK_TAB});
    WaitUntil("the focus to move", [&] { return FocusOf(dialog) != before; });
    dialog.Settle();
}

}  // namespace

void EnterWarmDesktop() {
    EnterOwnDesktop();
    const HWND window = CreateWindowA("Static", "", WS_OVERLAPPEDWINDOW, 0, 0, 100, 100, nullptr,
                                      nullptr, GetModuleHandleA(nullptr), nullptr);
    ShowWindow(window, SW_SHOW);
    SetForegroundWindow(window);
    UpdateWindow(window);
    DestroyWindow(window);
}

// --- The focus ---

int FocusedItem(const DrivenDialog& dialog) {
    const HWND focus = FocusOf(dialog);
    return focus != nullptr && GetParent(focus) == dialog.Window() ? GetDlgCtrlID(focus) : 0;
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

bool HasOpenMenu(const DrivenDialog& dialog) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(dialog.Window(), nullptr), &info);
    return (info.flags & GUI_INMENUMODE) != 0;
}

void OpenMenuOf(const DrivenDialog& dialog, int item) {
    const RECT popup = dialog.Bounds(item);
    dialog.Click(item, {static_cast<int>(popup.right - popup.left) - 8, 8});
    WaitUntil("the menu", [&] { return HasOpenMenu(dialog); });
}

std::vector<std::string> Entries(const DrivenDialog& dialog, int item) {
    const HWND popup = dialog.Control(item);
    const LRESULT count = SendMessageA(popup, CB_GETCOUNT, 0, 0);
    std::vector<std::string> entries;
    for (LRESULT entry = 0; entry < count; ++entry) {
        char text[256] = "";
        SendMessageA(popup, CB_GETLBTEXT, static_cast<WPARAM>(entry),
                     reinterpret_cast<LPARAM>(text));
        entries.emplace_back(text);
    }
    return entries;
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
    dialog.Drag(item, places, [&] {
        if (at > 0) {
            const int value = values[at - 1];
            WaitUntil("the slider at " + std::to_string(value),
                      [&] { return dialog.Value(item) == value; });
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
    RECT frame;
    GetWindowRect(dialog.Window(), &frame);
    const int width = frame.right - frame.left;
    const int height = frame.bottom - frame.top;
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    const HDC source = GetWindowDC(dialog.Window());
    const HDC memory = CreateCompatibleDC(source);
    void* bits = nullptr;
    const HBITMAP bitmap = CreateDIBSection(source, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, width, height, source, 0, 0, SRCCOPY);
    GdiFlush();
    host::Picture picture = host::MakePicture(width, height, 3);
    const auto* pixel = static_cast<const std::uint8_t*>(bits);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x, pixel += 4) {
            std::uint8_t* const target = picture.Pixel(x, y);
            target[0] = pixel[2];
            target[1] = pixel[1];
            target[2] = pixel[0];
        }
    }
    SelectObject(memory, before);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(dialog.Window(), source);
    return picture;
}
