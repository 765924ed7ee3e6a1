#include "tests/framework/windows/DialogScript.Win.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <fstream>
#include <thread>

#include "base/FatalError.h"
#include "framework/dialog/DialogState.h"
#include "tests/e2e/InputDesktop.Win.h"

std::string screenshotFolder;

namespace {

constexpr DWORD pollMilliseconds = 5;
/// Long enough for a loaded machine; nothing waits for it in vain unless it fails.
constexpr DWORD patienceMilliseconds = 20000;
/// Thrown where a wait has failed, so that the script ends there.
struct ScriptFailure {};
/// The system keeps "not pressed" for a while: a press that comes earlier would not be seen.
constexpr DWORD betweenPresses = 60;

template <typename Condition>
bool Wait(Condition condition) {
    for (DWORD waited = 0; waited < patienceMilliseconds; waited += pollMilliseconds) {
        if (condition()) {
            return true;
        }
        Sleep(pollMilliseconds);
    }
    return condition();
}

struct Search {
    HWND except;
    HWND found;
};

BOOL CALLBACK TakeDialog(HWND window, LPARAM parameter) {
    auto* const search = reinterpret_cast<Search*>(parameter);
    char className[16];
    GetClassNameA(window, className, sizeof className);
    if (window != search->except && IsWindowVisible(window) && IsWindowEnabled(window) &&
        std::string(className) == "#32770") {
        search->found = window;
        return FALSE;
    }
    return TRUE;
}

/// How often the dialog's thread has found nothing to do but its timers and the rest of a drag.
std::atomic<unsigned> rests = 0;

/// The timers' messages are the last: the system gives them out when no input waits.
LRESULT CALLBACK CountTimers(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HC_ACTION && wParam == PM_REMOVE &&
        reinterpret_cast<const MSG*>(lParam)->message == WM_TIMER) {
        ++rests;
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

HWND FindDialog(DWORD thread, HWND except) {
    Search search{except, nullptr};
    EnumThreadWindows(thread, TakeDialog, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

std::string TextOf(HWND window) {
    char text[512] = "";
    DWORD_PTR length = 0;
    SendMessageTimeoutA(window, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text), SMTO_BLOCK,
                        patienceMilliseconds, &length);
    return std::string(text, length);
}

WORD KeyOf(char c) {
    switch (c) {
        case '-':
            return VK_OEM_MINUS;
        case '.':
            return VK_OEM_PERIOD;
        case ',':
            return VK_OEM_COMMA;
        default:
            return static_cast<WORD>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
    }
}

/// What the window shows, with its frame.
Pixels CopyPixels(HWND window) {
    RedrawWindow(window, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    // The window's own thread may have begun to paint by itself; it answers when it is through.
    DWORD_PTR ignored;
    SendMessageTimeoutA(window, WM_NULL, 0, 0, SMTO_BLOCK, patienceMilliseconds, &ignored);
    RECT frame{};
    GetWindowRect(window, &frame);
    Pixels pixels;
    pixels.width = frame.right - frame.left;
    pixels.height = frame.bottom - frame.top;
    const HDC context = GetWindowDC(window);
    for (int y = 0; y < pixels.height; ++y) {
        for (int x = 0; x < pixels.width; ++x) {
            pixels.colors.push_back(GetPixel(context, x, y));
        }
    }
    ReleaseDC(window, context);
    return pixels;
}

/// Rows of whole 32-bit pixels, from the top.
void WriteBitmap(const Pixels& pixels, const std::string& path) {
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = pixels.width;
    header.biHeight = -pixels.height;
    header.biPlanes = 1;
    header.biBitCount = 32;
    BITMAPFILEHEADER file{};
    file.bfType = 0x4D42;
    file.bfOffBits = sizeof file + sizeof header;
    file.bfSize = file.bfOffBits + static_cast<DWORD>(4 * pixels.colors.size());
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(&file), sizeof file);
    out.write(reinterpret_cast<const char*>(&header), sizeof header);
    for (const COLORREF color : pixels.colors) {
        const char bytes[] = {static_cast<char>(GetBValue(color)),
                              static_cast<char>(GetGValue(color)),
                              static_cast<char>(GetRValue(color)), 0};
        out.write(bytes, sizeof bytes);
    }
}

}  // namespace

void EventLog::Add(const std::string& event) {
    const std::lock_guard<std::mutex> lock(mutex);
    events.push_back(event);
}

std::vector<std::string> EventLog::All() const {
    const std::lock_guard<std::mutex> lock(mutex);
    return events;
}

int EventLog::Count(const std::string& event) const {
    const std::lock_guard<std::mutex> lock(mutex);
    return static_cast<int>(std::count(events.begin(), events.end(), event));
}

void EventLog::Clear() {
    const std::lock_guard<std::mutex> lock(mutex);
    events.clear();
}

void TestDialog::Setup() {
    NorvantaDialog::Setup();
    if (atSetup) {
        atSetup();
    }
}

short TestDialog::ItemHit(short item) {
    log.Add("hit " + std::to_string(item) + (IsDoubleClick() ? " twice" : ""));
    if (atHit) {
        return atHit(item);
    }
    return item <= 2 ? item : short{0};
}

short TestDialog::KeyDown(int key, int modifiers) {
    const short answer = NorvantaDialog::KeyDown(key, modifiers);
    log.Add("key " + std::to_string(key) + " " + std::to_string(modifiers));
    return answer;
}

void TestDialog::MenuCommand(short id) {
    log.Add("menu " + std::to_string(id));
    NorvantaDialog::MenuCommand(id);
}

bool TestDialog::ScrollChanged(short item, int value) {
    log.Add("scroll " + std::to_string(item) + " to " + std::to_string(value));
    return atScroll ? atScroll(item, value) : true;
}

void TestDialog::DrawItem(short item) {
    if (atDraw) {
        atDraw(item);
    }
}

void TestDialog::Idle() {
    ++rests;
    if (atIdle) {
        atIdle();
    }
}

void TestDialog::Resize(short widthChange, short heightChange) {
    log.Add("resize " + std::to_string(widthChange) + " " + std::to_string(heightChange));
    NorvantaDialog::Resize(widthChange, heightChange);
}

short TestDialog::CursorAt(short item) {
    return atCursor ? atCursor(item) : NorvantaDialog::CursorAt(item);
}

void TestDialog::DiskEvent() {
    log.Add("disk");
}

Script::~Script() {
    for (std::thread& helper : helpers) {
        helper.join();
    }
}

void Script::Settle() const {
    // The first one may have been on its way already.
    const unsigned before = rests;
    WaitUntil("the dialog's rest", [&] { return rests - before >= 3 || !IsWindow(dialog); });
}

POINT Script::Inside(int item, int x, int y) const {
    POINT place{x, y};
    ClientToScreen(Item(item), &place);
    return place;
}

POINT Script::Middle(int item) const {
    RECT rect{};
    GetWindowRect(Item(item), &rect);
    return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
}

void Script::MoveTo(POINT place) const {
    MoveMouse(place);
    WaitUntil("the mouse there", [&] {
        POINT now{};
        GetCursorPos(&now);
        return now.x == place.x && now.y == place.y;
    });
    Settle();
}

void Script::Press(POINT place) const {
    MoveTo(place);
    Sleep(betweenPresses);
    PressMouse();
}

void Script::ReleaseAt(POINT place) const {
    MoveMouse(place);
    ReleaseMouse();
    Settle();
}

void Script::Click(POINT place) const {
    Press(place);
    Settle();
    ReleaseMouse();
    Settle();
}

void Script::Keys(const std::vector<std::vector<WORD>>& chords) const {
    for (const auto& chord : chords) {
        SendChords({chord});
        Settle();
    }
}

void Script::Type(const std::string& text) const {
    for (const char c : text) {
        Keys({{KeyOf(c)}});
    }
}

void Script::SetText(int item, const std::string& text) const {
    DWORD_PTR ignored;
    SendMessageTimeoutA(Item(item), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()),
                        SMTO_NORMAL, patienceMilliseconds, &ignored);
}

void Script::SetTextLater(int item, const std::string& text) {
    helpers.emplace_back([this, item, text] { SetText(item, text); });
}

std::string Script::Text(int item) const {
    return TextOf(Item(item));
}

std::string Script::Title() const {
    return TextOf(dialog);
}

void Script::WaitFor(const std::string& event, int times) const {
    WaitUntil(event, [&] { return test.log.Count(event) >= times; });
}

void Script::WaitUntil(const std::string& what, const std::function<bool()>& condition) const {
    if (Wait(condition)) {
        return;
    }
    std::string seen;
    for (const std::string& event : test.log.All()) {
        seen += event + "; ";
    }
    ADD_FAILURE() << "did not come: " << what << "\nseen: " << seen;
    throw ScriptFailure{};
}

int Script::Focus() const {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(dialog, nullptr), &info);
    return info.hwndFocus != nullptr && GetParent(info.hwndFocus) == dialog
               ? GetDlgCtrlID(info.hwndFocus)
               : 0;
}

bool Script::IsInMenu() const {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(dialog, nullptr), &info);
    return (info.flags & GUI_INMENUMODE) != 0;
}

HMENU Script::OpenMenu() const {
    constexpr UINT getMenu = 0x01E1;
    HWND window = nullptr;
    WaitUntil("an open menu", [&] {
        window = FindWindowA("#32768", nullptr);
        return window != nullptr && IsWindowVisible(window);
    });
    return reinterpret_cast<HMENU>(SendMessageA(window, getMenu, 0, 0));
}

POINT Script::MenuEntry(int entry) const {
    const HMENU menu = OpenMenu();
    RECT rect{};
    WaitUntil("the entry's place", [&] {
        return GetMenuItemRect(nullptr, menu, static_cast<UINT>(entry - 1), &rect) &&
               rect.bottom > rect.top;
    });
    return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
}

bool Script::IsAllSelected(int item) const {
    DWORD begin = 1;
    DWORD end = 0;
    SendMessageA(Item(item), EM_GETSEL, reinterpret_cast<WPARAM>(&begin),
                 reinterpret_cast<LPARAM>(&end));
    return begin == 0 && end == Text(item).size();
}

HWND Script::WaitForOther() const {
    const DWORD thread = GetWindowThreadProcessId(dialog, nullptr);
    HWND other = nullptr;
    WaitUntil("another dialog", [&] {
        other = FindDialog(thread, dialog);
        return other != nullptr;
    });
    return other;
}

std::string Script::EndAlert(int button) const {
    const HWND alert = WaitForOther();
    constexpr int textControl = 3;
    const std::string text = TextOf(GetDlgItem(alert, textControl));
    PostMessageA(GetDlgItem(alert, button), BM_CLICK, 0, 0);
    WaitUntil("the alert's end", [&] { return !IsWindow(alert); });
    Settle();
    return text;
}

Pixels Script::Shot(int item) const {
    return CopyPixels(item != 0 ? Item(item) : dialog);
}

void Script::KeepPicture(const std::string& name) const {
    if (!screenshotFolder.empty()) {
        WriteBitmap(Shot(), screenshotFolder + "/" + name + ".bmp");
    }
}

namespace {

/// Ends whatever still runs in the thread: a drag, a menu, dialogs over the test's, at last that
/// one. A dialog that stays all the same ends the program, so that no failure becomes a hang.
void EndAll(DWORD thread, HWND dialog, HWND before, const std::atomic<bool>& finished) {
    constexpr UINT cancel = WM_APP + 2;
    for (DWORD waited = 0; !finished && waited < patienceMilliseconds; waited += betweenPresses) {
        const HWND top = FindDialog(thread, before);
        if (top == nullptr || top == dialog) {
            PostMessageA(dialog, WM_CANCELMODE, 0, 0);
            PostMessageA(dialog, cancel, 0, 0);
        } else {
            PostMessageA(top, WM_CLOSE, 0, 0);
        }
        Sleep(betweenPresses);
    }
    if (!finished) {
        std::fprintf(stderr, "a dialog could not be closed\n");
        std::fflush(nullptr);
        TerminateProcess(GetCurrentProcess(), 1);
    }
}

/// What the script's thread does.
void Play(DWORD thread, HWND before, TestDialog& dialog, const std::atomic<bool>& finished,
          const std::function<void(Script&)>& script) {
    HWND window = nullptr;
    Wait([&] { return finished || (window = FindDialog(thread, before)) != nullptr; });
    if (window == nullptr) {
        return;
    }
    try {
        Script running(window, dialog);
        running.Settle();
        script(running);
    } catch (const ScriptFailure&) {
        // It is noted already. What the test's dialog answers to its cancel item is unknown here;
        // a pending error ends it whatever it answers.
        ReleaseMouse();
        errorCell = faultBadArgument;
    }
    EndAll(thread, window, before, finished);
}

}  // namespace

int RunWithScript(TestDialog& dialog, const std::function<void(Script&)>& script) {
    const DWORD thread = GetCurrentThreadId();
    const HDESK desktop = GetThreadDesktop(thread);
    const HWND before = FindDialog(thread, nullptr);
    const HHOOK timers = SetWindowsHookExA(WH_GETMESSAGE, CountTimers, nullptr, thread);
    std::atomic<bool> finished = false;
    std::thread helper([&] {
        SetThreadDesktop(desktop);
        Play(thread, before, dialog, finished, script);
    });
    const int result = dialog.Run();
    finished = true;
    helper.join();
    UnhookWindowsHookEx(timers);
    return result;
}

PlatformLog& Log() {
    static PlatformLog log;
    return log;
}

DialogTest::DialogTest() : servicesOutside(platformServices) {
    Log().faults.clear();
    Log().beeps = 0;
    LetTimePass();
    platformServices.tickCount = [] { return Log().ticks.load(); };
    platformServices.beep = [] { ++Log().beeps; };
    platformServices.reportFault = [](std::int16_t id, const char* file, int) {
        Log().faults.push_back({id, file});
    };
}

DialogTest::~DialogTest() {
    errorCell = 0;
    platformServices = servicesOutside;
    EXPECT_EQ(dialogState.newest, nullptr);
    EXPECT_EQ(dialogState.dragDepth, 0);
}
