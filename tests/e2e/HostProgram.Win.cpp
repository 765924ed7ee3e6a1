#include "tests/e2e/HostProgram.Win.h"

#include <commctrl.h>

#include <algorithm>
#include <stdexcept>

#include "host/window/NativeWindow.Win.h"
#include "tests/e2e/InputDesktop.Win.h"

namespace {

constexpr DWORD patienceMilliseconds = 20000;
constexpr DWORD pauseMilliseconds = 10;
constexpr const wchar_t* mainClass = L"ZandermoliteHost";
constexpr const wchar_t* dialogClass = L"#32770";
// Of the system's dialog for files, and of its message box.
constexpr int fileNameControl = 0x47c;
constexpr int boxTextControl = 0xffff;

std::wstring ClassOf(HWND window) {
    wchar_t name[64];
    GetClassNameW(window, name, 64);
    return name;
}

std::wstring TextOf(HWND window) {
    DWORD_PTR length = 0;
    SendMessageTimeoutW(window, WM_GETTEXTLENGTH, 0, 0, SMTO_BLOCK, patienceMilliseconds, &length);
    std::wstring text(length + 1, L'\0');
    DWORD_PTR copied = 0;
    SendMessageTimeoutW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()),
                        SMTO_BLOCK, patienceMilliseconds, &copied);
    text.resize(copied);
    return text;
}

BOOL CALLBACK CollectVisible(HWND window, LPARAM target) {
    if (IsWindowVisible(window) != FALSE)
        reinterpret_cast<std::vector<HWND>*>(target)->push_back(window);
    return TRUE;
}

/// Memory of another process, for a message that fills a buffer.
class RemoteBuffer {
  public:
    RemoteBuffer(HANDLE process_, std::size_t size_)
        : process(process_),
          size(size_),
          address(VirtualAllocEx(process, nullptr, size, MEM_COMMIT, PAGE_READWRITE)) {
        if (address == nullptr)
            throw std::runtime_error("no memory in the program");
    }
    ~RemoteBuffer() { VirtualFreeEx(process, address, 0, MEM_RELEASE); }
    RemoteBuffer(const RemoteBuffer&) = delete;
    RemoteBuffer& operator=(const RemoteBuffer&) = delete;

    LPARAM Address() const { return reinterpret_cast<LPARAM>(address); }
    std::wstring Text() const {
        std::wstring text(size / sizeof(wchar_t), L'\0');
        ReadProcessMemory(process, address, text.data(), text.size() * sizeof(wchar_t), nullptr);
        return text.c_str();
    }

  private:
    HANDLE process;
    std::size_t size;
    void* address;
};

std::wstring CommandLine(const std::vector<std::wstring>& arguments) {
    std::wstring line = L"\"" + host::Wide(HOST_PROGRAM) + L"\"";
    for (const std::wstring& argument : arguments)
        line += L" \"" + argument + L"\"";
    return line;
}

}  // namespace

void WaitUntil(const std::string& what, const std::function<bool()>& condition) {
    const DWORD start = GetTickCount();
    while (!condition()) {
        if (GetTickCount() - start > patienceMilliseconds)
            throw std::runtime_error("waited in vain for: " + what);
        Sleep(pauseMilliseconds);
    }
}

HostProgram::HostProgram(const std::vector<std::wstring>& arguments) {
    std::wstring desktop = EnterOwnDesktop();
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.lpDesktop = desktop.data();
    std::wstring line = CommandLine(arguments);
    if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                       &process) == FALSE)
        throw std::runtime_error("the program doesn't start");
}

HostProgram::~HostProgram() {
    TerminateProcess(process.hProcess, 0);
    WaitForSingleObject(process.hProcess, patienceMilliseconds);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
}

HWND HostProgram::Window() {
    WaitUntil("the program's window in front", [&] {
        HWND window = FindMainWindow();
        return window != nullptr && IsWindowEnabled(window) != FALSE &&
               GetForegroundWindow() == window;
    });
    // It answers when it has done everything before.
    HWND window = FindMainWindow();
    DWORD_PTR result = 0;
    SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_BLOCK, patienceMilliseconds, &result);
    return window;
}

std::wstring HostProgram::Title() {
    HWND window = FindMainWindow();
    return window == nullptr ? std::wstring() : TextOf(window);
}

std::wstring HostProgram::StatusText(Part part) {
    const RemoteBuffer buffer(process.hProcess, 512);
    SendMessageW(Child(STATUSCLASSNAMEW), SB_GETTEXTW, part, buffer.Address());
    return buffer.Text();
}

void HostProgram::WaitForTitle(const std::wstring& title) {
    WaitUntil("the title " + host::Utf8(title), [&] { return Title() == title; });
}

void HostProgram::WaitForStatus(Part part, const std::wstring& text) {
    std::wstring last;
    try {
        WaitUntil("", [&] { return (last = StatusText(part)) == text; });
    } catch (const std::runtime_error&) {
        throw std::runtime_error("waited in vain for the status '" + host::Utf8(text) +
                                 "'; it is '" + host::Utf8(last) + "'");
    }
}

void HostProgram::WaitForExit() {
    if (WaitForSingleObject(process.hProcess, patienceMilliseconds) != WAIT_OBJECT_0)
        throw std::runtime_error("the program doesn't end");
}

HWND HostProgram::WaitForDialog(const std::wstring& title) {
    HWND dialog = nullptr;
    WaitUntil("the dialog " + host::Utf8(title),
              [&] { return (dialog = FindDialog(title)) != nullptr; });
    DWORD_PTR result = 0;
    SendMessageTimeoutW(dialog, WM_NULL, 0, 0, SMTO_BLOCK, patienceMilliseconds, &result);
    return dialog;
}

void HostProgram::WaitForDialogsEnd() {
    WaitUntil("the dialogs' end", [&] {
        const std::vector<HWND> windows = VisibleWindows();
        return std::none_of(windows.begin(), windows.end(),
                            [](HWND window) { return ClassOf(window) == dialogClass; });
    });
    Window();
}

std::wstring HostProgram::BoxText(HWND box) {
    return ControlText(box, boxTextControl);
}

std::wstring HostProgram::ControlText(HWND dialog, int control) {
    return TextOf(GetDlgItem(dialog, control));
}

void HostProgram::Push(HWND dialog, int button) {
    PostMessageW(GetDlgItem(dialog, button), BM_CLICK, 0, 0);
}

void HostProgram::EnterFile(HWND dialog, const std::filesystem::path& file) {
    SendMessageW(GetDlgItem(dialog, fileNameControl), WM_SETTEXT, 0,
                 reinterpret_cast<LPARAM>(file.c_str()));
    PostMessageW(dialog, WM_COMMAND, IDOK, 0);
}

void HostProgram::ChooseInMenu(WORD menuKey, int item, int submenuItem) {
    Window();
    SendChords({{VK_MENU, menuKey}});
    WaitUntil("an open menu", [&] { return IsInMenu(); });
    // The first item is marked when the menu opens by a key.
    std::vector<std::vector<WORD>> keys(static_cast<std::size_t>(item), {VK_DOWN});
    if (submenuItem >= 0) {
        keys.push_back({VK_RIGHT});
        keys.insert(keys.end(), static_cast<std::size_t>(submenuItem), {VK_DOWN});
    }
    keys.push_back({VK_RETURN});
    SendChords(keys);
}

bool HostProgram::IsInMenu() const {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(process.dwThreadId, &info) != FALSE &&
           (info.flags & GUI_INMENUMODE) != 0;
}

POINT HostProgram::OnScreen(host::Place pixel, host::Size picture) {
    HWND view = Child(L"ZandermolitePictureView");
    host::Viewport viewport;
    viewport.SetPicture(picture);
    viewport.SetView(host::ClientSize(view));
    const host::Place place = viewport.ToView(pixel);
    POINT point{place.x, place.y};
    ClientToScreen(view, &point);
    return point;
}

RECT HostProgram::ViewRect() {
    RECT rect{};
    GetWindowRect(Child(L"ZandermolitePictureView"), &rect);
    return rect;
}

HWND HostProgram::FindMainWindow() const {
    for (HWND window : VisibleWindows()) {
        if (ClassOf(window) == mainClass)
            return window;
    }
    return nullptr;
}

HWND HostProgram::FindDialog(const std::wstring& title) const {
    for (HWND window : VisibleWindows()) {
        if (ClassOf(window) == dialogClass && TextOf(window) == title)
            return window;
    }
    return nullptr;
}

HWND HostProgram::Child(const wchar_t* className) {
    HWND child = FindWindowExW(FindMainWindow(), nullptr, className, nullptr);
    if (child == nullptr)
        throw std::runtime_error("the program's window lacks a part");
    return child;
}

std::vector<HWND> HostProgram::VisibleWindows() const {
    std::vector<HWND> windows;
    EnumThreadWindows(process.dwThreadId, CollectVisible, reinterpret_cast<LPARAM>(&windows));
    return windows;
}
