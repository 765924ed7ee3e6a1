#include "tests/framework/windows/DialogScript.Win.h"

#include <algorithm>
#include <atomic>
#include <thread>

#include "base/FatalError.h"
#include "base/HostServices.h"
#include "fixtures/InputDesktop.Win.h"
#include "framework/dialog/DialogState.h"
#include "framework/dialog/DialogWindow.Win.h"

namespace {

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
    NoteRest();
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
    LetButtonSettle();
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

void Script::SetTextLater(int item, const std::string& text) {
    helpers.emplace_back([this, item, text] { SetText(item, text); });
}

void Script::WaitFor(const std::string& event, int times) const {
    WaitUntil(event, [&] { return test.log.Count(event) >= times; });
}

void Script::WaitUntil(const std::string& what, const std::function<bool()>& condition) const {
    try {
        ::WaitUntil(what, condition);
    } catch (const GuiError& error) {
        std::string seen;
        for (const std::string& event : test.log.All()) {
            seen += event + "; ";
        }
        throw GuiError(std::string(error.what()) + "\nseen: " + seen);
    }
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
        other = FindDialog(thread, [&](HWND window) { return window != dialog; });
        return other != nullptr;
    });
    return other;
}

std::string Script::EndAlert(int button) const {
    const DrivenDialog alert(WaitForOther());
    constexpr int textControl = 3;
    const std::string text = alert.Text(textControl);
    alert.PressToOpen(button);
    WaitUntil("the alert's end", [&] { return !alert.IsOpen(); });
    Settle();
    return text;
}

host::Picture Script::Shot(int item) const {
    const HWND window = item != 0 ? Item(item) : dialog;
    Repaint(window);
    return GrabFrame(window);
}

void Script::KeepPicture(const std::string& name) const {
    ::KeepPicture(Shot(), name);
}

int RunWithScript(TestDialog& dialog, const std::function<void(Script&)>& script) {
    const DWORD thread = GetCurrentThreadId();
    const HWND outer = FindDialog(thread, [](HWND) { return true; });
    std::atomic<bool> isClosed = false;
    HWND opened = nullptr;
    // Dialogs over the test's take the close box; that one its cancel item, whichever it is.
    const auto close = [&](HWND top) {
        if (top == opened) {
            PostMessageA(top, WM_CANCELMODE, 0, 0);
            PostMessageA(top, messageCancel, 0, 0);
        } else if (top != outer) {
            PostMessageA(top, WM_CLOSE, 0, 0);
        }
    };
    int result = 0;
    RunWithUser(
        [&] {
            result = dialog.Run();
            isClosed = true;
        },
        [&](const GuiDriver& gui) {
            const std::optional<DrivenDialog> window = gui.WaitForAny(outer);
            if (!window) {
                return;
            }
            opened = window->Window();
            try {
                Script running(*window, dialog);
                running.Settle();
                script(running);
            } catch (const GuiError&) {
                // A pending error closes the dialog, whatever its cancel item does.
                errorCell = faultBadArgument;
                throw;
            }
            CloseDialogs(thread, isClosed, close);
        },
        close);
    return result;
}

PlatformLog& Log() {
    static PlatformLog log;
    return log;
}

DialogTest::DialogTest() : servicesOutside(platformServices) {
    filterRecord = &record;
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
    filterRecord = nullptr;
    errorCell = 0;
    platformServices = servicesOutside;
    EXPECT_EQ(dialogState.newest, nullptr);
    EXPECT_EQ(dialogState.dragDepth, 0);
}
