// A cursor tells its resource from Windows Vista on.
#undef WINVER
#undef _WIN32_WINNT
#define WINVER 0x0600
#define _WIN32_WINNT 0x0600
#include "tests/gui/GuiDriver.Win.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <thread>

#include "base/Module.Win.h"
#include "resources/Ids.h"
#include "tests/e2e/InputDesktop.Win.h"

namespace {

constexpr DWORD pollMilliseconds = 5;
constexpr DWORD patienceMilliseconds = 10000;
/// The system goes on reporting a button as up for this long after its release.
constexpr DWORD buttonMemoryMilliseconds = 60;
constexpr UINT controlGetValue = 1024;

/// The answer of a message to a window of another thread.
LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    DWORD_PTR answer = 0;
    if (SendMessageTimeoutA(window, message, wParam, lParam, SMTO_NORMAL, patienceMilliseconds,
                            &answer) == 0) {
        throw GuiError("a window did not answer message " + std::to_string(message) + ": error " +
                       std::to_string(GetLastError()));
    }
    return static_cast<LRESULT>(answer);
}

std::string TextOf(HWND window) {
    char text[1024] = "";
    Ask(window, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
    return text;
}

std::string ClassOf(HWND window) {
    char name[64] = "";
    GetClassNameA(window, name, sizeof name);
    return name;
}

/// Whether a part of the window is still to be painted.
bool AwaitsPaint(HWND window) {
    if (IsWindowVisible(window) && GetUpdateRect(window, nullptr, FALSE)) {
        return true;
    }
    for (HWND child = GetWindow(window, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        if (AwaitsPaint(child)) {
            return true;
        }
    }
    return false;
}

/// Whether a control of the window's thread holds the mouse.
bool HasCapture(HWND window) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info);
    return info.hwndCapture != nullptr;
}

/// The caption as the system keeps it. Asks the window nothing, so it never waits for it.
std::string CaptionOf(HWND window) {
    wchar_t wide[256] = L"";
    InternalGetWindowText(window, wide, 256);
    char text[512] = "";
    WideCharToMultiByte(CP_ACP, 0, wide, -1, text, sizeof text, nullptr, nullptr);
    return text;
}

/// How often the dialogs' thread has come to rest.
std::atomic<unsigned> rests = 0;

/// A timer's message is given out when no other message waits, and every dialog has a timer.
LRESULT CALLBACK CountRests(int code, WPARAM use, LPARAM parameter) {
    const bool isTaken = code == HC_ACTION && use == PM_REMOVE;
    if (isTaken && reinterpret_cast<const MSG*>(parameter)->message == WM_TIMER) {
        ++rests;
    }
    return CallNextHookEx(nullptr, code, use, parameter);
}

/// The time in which they are counted.
class RestCount {
  public:
    explicit RestCount(DWORD thread)
        : hook(SetWindowsHookExA(WH_GETMESSAGE, CountRests, nullptr, thread)) {}
    RestCount(const RestCount&) = delete;
    RestCount& operator=(const RestCount&) = delete;
    ~RestCount() { UnhookWindowsHookEx(hook); }

  private:
    HHOOK hook;
};

struct Search {
    const std::function<bool(HWND)>& fits;
    HWND found = nullptr;
};

BOOL CALLBACK Look(HWND window, LPARAM parameter) {
    auto* const search = reinterpret_cast<Search*>(parameter);
    if (IsWindowVisible(window) && IsWindowEnabled(window) && ClassOf(window) == "#32770" &&
        search->fits(window)) {
        search->found = window;
        return FALSE;
    }
    return TRUE;
}

/// A visible dialog of the thread that takes input; null for none.
HWND FindDialog(DWORD thread, const std::function<bool(HWND)>& fits) {
    Search search{fits};
    EnumThreadWindows(thread, Look, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

BOOL CALLBACK Describe(HWND window, LPARAM parameter) {
    auto* const text = reinterpret_cast<std::string*>(parameter);
    *text += "; " + ClassOf(window) + " \"" + CaptionOf(window) + "\"" +
             (IsWindowVisible(window) ? "" : " hidden") +
             (IsWindowEnabled(window) ? "" : " disabled");
    return TRUE;
}

/// The thread's windows, for messages.
std::string WindowsOf(DWORD thread) {
    std::string text;
    EnumThreadWindows(thread, Describe, reinterpret_cast<LPARAM>(&text));
    return text;
}

DrivenDialog WaitForDialog(DWORD thread, const std::string& what,
                           const std::function<bool(HWND)>& fits) {
    HWND found = nullptr;
    try {
        WaitUntil(what, [&] {
            found = FindDialog(thread, fits);
            return found != nullptr;
        });
    } catch (const GuiError& error) {
        throw GuiError(error.what() + WindowsOf(thread));
    }
    const DrivenDialog dialog(found);
    dialog.Settle();
    return dialog;
}

BOOL CALLBACK PostClose(HWND window, LPARAM) {
    // Without a control a command would be one of the menu.
    PostMessageA(window, WM_COMMAND, IDCANCEL,
                 reinterpret_cast<LPARAM>(GetDlgItem(window, IDCANCEL)));
    return TRUE;
}

}  // namespace

void WaitUntil(const std::string& what, const std::function<bool()>& condition) {
    const DWORD start = GetTickCount();
    while (GetTickCount() - start < patienceMilliseconds) {
        if (condition()) {
            return;
        }
        Sleep(pollMilliseconds);
    }
    throw GuiError("waited in vain: " + what);
}

// --- A dialog ---

HWND DrivenDialog::Control(int item) const {
    const HWND control = GetDlgItem(window, item);
    if (control == nullptr) {
        throw GuiError("there is no item " + std::to_string(item));
    }
    return control;
}

RECT DrivenDialog::Bounds(int item) const {
    RECT bounds;
    GetWindowRect(Control(item), &bounds);
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&bounds), 2);
    return bounds;
}

std::string DrivenDialog::Title() const {
    return TextOf(window);
}

std::string DrivenDialog::Text(int item) const {
    return TextOf(Control(item));
}

bool DrivenDialog::IsEnabled(int item) const {
    return IsWindowEnabled(Control(item)) != FALSE;
}

int DrivenDialog::Value(int item) const {
    const HWND control = Control(item);
    const std::string name = ClassOf(control);
    if (name == "Button") {
        return static_cast<int>(Ask(control, BM_GETCHECK));
    }
    if (name == "SysTabControl32") {
        return static_cast<int>(Ask(control, TCM_GETCURSEL)) + 1;
    }
    return static_cast<int>(Ask(control, controlGetValue));
}

int DrivenDialog::ScrollPosition(int item) const {
    return static_cast<int>(Ask(Control(item), SBM_GETPOS));
}

std::string DrivenDialog::MenuText(int command) const {
    MenuState(command);
    char text[256] = "";
    GetMenuStringA(GetMenu(window), static_cast<UINT>(command), text, sizeof text, MF_BYCOMMAND);
    return text;
}

UINT DrivenDialog::MenuState(int command) const {
    const UINT state = GetMenuState(GetMenu(window), static_cast<UINT>(command), MF_BYCOMMAND);
    if (state == UINT(-1)) {
        throw GuiError("there is no command " + std::to_string(command));
    }
    return state;
}

bool DrivenDialog::IsMenuEnabled(int command) const {
    return (MenuState(command) & (MF_GRAYED | MF_DISABLED)) == 0;
}

bool DrivenDialog::IsMenuChecked(int command) const {
    return (MenuState(command) & MF_CHECKED) != 0;
}

void DrivenDialog::Press(int item) const {
    Ask(Control(item), BM_CLICK);
}

void DrivenDialog::PressToOpen(int item) const {
    PostMessageA(Control(item), BM_CLICK, 0, 0);
}

void DrivenDialog::Choose(int command) const {
    Ask(window, WM_COMMAND, static_cast<WPARAM>(command));
}

void DrivenDialog::ChooseToOpen(int command) const {
    PostMessageA(window, WM_COMMAND, static_cast<WPARAM>(command), 0);
}

void DrivenDialog::SetText(int item, const std::string& text) const {
    Ask(Control(item), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

POINT DrivenDialog::OnScreen(int item, ItemPlace place) const {
    RECT bounds;
    GetWindowRect(Control(item), &bounds);
    return {bounds.left + place.x, bounds.top + place.y};
}

void DrivenDialog::Point(int item, ItemPlace place) const {
    MoveMouse(OnScreen(item, place));
}

void DrivenDialog::Click(int item, ItemPlace place) const {
    Point(item, place);
    ::PressMouse();
    ::ReleaseMouse();
    Sleep(buttonMemoryMilliseconds);
}

void DrivenDialog::ClickMiddle(int item) const {
    const RECT bounds = Bounds(item);
    Click(item, {(bounds.right - bounds.left) / 2, (bounds.bottom - bounds.top) / 2});
}

void DrivenDialog::DoubleClickMiddle(int item) const {
    ClickMiddle(item);
    ClickMiddle(item);
}

void DrivenDialog::Drag(int item, const std::vector<ItemPlace>& places,
                        const std::function<void()>& seen) const {
    Point(item, places.front());
    ::PressMouse();
    WaitUntil("the drag to begin", [this] { return HasCapture(window); });
    seen();
    for (std::size_t i = 1; i < places.size(); ++i) {
        Point(item, places[i]);
        seen();
    }
    ::ReleaseMouse();
    WaitUntil("the drag to end", [this] { return !HasCapture(window); });
    Sleep(buttonMemoryMilliseconds);
    Settle();
}

void DrivenDialog::WaitUntilPainted() const {
    WaitUntil("the dialog to be painted", [this] { return !AwaitsPaint(window); });
}

void DrivenDialog::Settle() const {
    Ask(window, WM_NULL);
}

void DrivenDialog::WaitUntilClosed() const {
    WaitUntil("the dialog to close", [this] { return !IsOpen(); });
    if (ClassOf(owner) == "#32770") {
        // It may be closing, too.
        DWORD_PTR ignored = 0;
        SendMessageTimeoutA(owner, WM_NULL, 0, 0, SMTO_NORMAL, patienceMilliseconds, &ignored);
    }
}

host::Picture DrivenDialog::Grab() const {
    WaitUntilPainted();
    RECT client;
    GetClientRect(window, &client);
    host::Picture picture = host::MakePicture(client.right, client.bottom, 3);
    const HDC source = GetDC(window);
    const HDC memory = CreateCompatibleDC(source);
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = client.right;
    info.bmiHeader.biHeight = -client.bottom;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    const HBITMAP bitmap = CreateDIBSection(source, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, client.right, client.bottom, source, 0, 0, SRCCOPY);
    GdiFlush();
    const auto* pixel = static_cast<const std::uint8_t*>(bits);
    for (int y = 0; y < client.bottom; ++y) {
        for (int x = 0; x < client.right; ++x, pixel += 4) {
            std::uint8_t* const target = picture.Pixel(x, y);
            target[0] = pixel[2];
            target[1] = pixel[1];
            target[2] = pixel[0];
        }
    }
    SelectObject(memory, before);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(window, source);
    return picture;
}

// --- The user ---

DrivenDialog GuiDriver::WaitFor(int dialogId) const {
    const std::string caption = CaptionOf(dialogId);
    return WaitForTitle(caption);
}

DrivenDialog GuiDriver::WaitForAlert(const DrivenDialog& under) const {
    return WaitForDialog(thread, "an alert", [&](HWND window) {
        return window != under.Window() && CaptionOf(window) == "Zandermolite" &&
               GetMenu(window) == nullptr;
    });
}

DrivenDialog GuiDriver::WaitForTitle(const std::string& title) const {
    return WaitForDialog(thread, "the dialog " + title,
                         [&](HWND window) { return CaptionOf(window) == title; });
}

int GuiDriver::CursorId() {
    CURSORINFO shown{};
    shown.cbSize = sizeof shown;
    GetCursorInfo(&shown);
    // Handles say nothing: two threads that load a cursor at the same time get one each.
    ICONINFOEXA cursor{};
    cursor.cbSize = sizeof cursor;
    if (!GetIconInfoExA(shown.hCursor, &cursor)) {
        return 0;
    }
    DeleteObject(cursor.hbmColor);
    DeleteObject(cursor.hbmMask);
    return cursor.wResID;
}

void GuiDriver::WaitUntilIdle() const {
    // The first timer may have been given out before the input came.
    const unsigned before = rests;
    WaitUntil("the program to have nothing to do", [&] { return rests - before >= 2; });
}

void GuiDriver::PressMouse() const {
    ::PressMouse();
}

void GuiDriver::ReleaseMouse() const {
    ::ReleaseMouse();
    Sleep(buttonMemoryMilliseconds);
}

void GuiDriver::Chord(const std::vector<WORD>& keys) const {
    SendChords({keys});
}

void GuiDriver::HoldKey(WORD key) const {
    SendKey({key, true});
}

void GuiDriver::ReleaseKey(WORD key) const {
    SendKey({key, false});
}

void GuiDriver::Type(const std::string& text) const {
    for (const char character : text) {
        const SHORT code = VkKeyScanA(character);
        const WORD key = static_cast<WORD>(code & 0xFF);
        if ((code & 0x100) != 0) {
            SendChords({{VK_SHIFT, key}});
        } else {
            SendChords({{key}});
        }
    }
}

void RunWithUser(const std::function<void()>& action,
                 const std::function<void(const GuiDriver& gui)>& user) {
    const DWORD thread = GetCurrentThreadId();
    const HDESK desktop = GetThreadDesktop(thread);
    const RestCount restCount(thread);
    std::atomic<bool> isDone = false;
    std::string trouble;
    std::thread helper([&] {
        SetThreadDesktop(desktop);
        try {
            user(GuiDriver(thread));
            WaitUntil("the program to go on", [&] { return isDone.load(); });
        } catch (const std::exception& error) {
            trouble = error.what();
            ::ReleaseMouse();
            while (!isDone) {
                EnumThreadWindows(thread, PostClose, 0);
                Sleep(pollMilliseconds);
            }
        }
    });
    action();
    isDone = true;
    helper.join();
    EXPECT_EQ(trouble, "");
}

// --- Resources ---

namespace {

#pragma pack(push, 2)
struct TemplateHead {
    WORD version;
    WORD signature;
    DWORD helpId;
    DWORD extendedStyle;
    DWORD style;
    WORD items;
    short x, y, width, height;
};
#pragma pack(pop)

/// Behind a name or number of a menu or a window class.
const WORD* BehindName(const WORD* name) {
    if (*name == 0xFFFF) {
        return name + 2;
    }
    while (*name != 0) {
        ++name;
    }
    return name + 1;
}

}  // namespace

std::string CaptionOf(int dialogId) {
    const HRSRC found =
        FindResourceA(instanceHandle, MAKEINTRESOURCEA(dialogId), MAKEINTRESOURCEA(5));
    if (found == nullptr) {
        throw GuiError("there is no dialog " + std::to_string(dialogId));
    }
    const auto* const head =
        static_cast<const TemplateHead*>(LockResource(LoadResource(instanceHandle, found)));
    const WORD* title = BehindName(BehindName(reinterpret_cast<const WORD*>(head + 1)));
    std::string caption;
    for (; *title != 0; ++title) {
        caption += static_cast<char>(*title);
    }
    return caption;
}
