#include "tests/e2e/HostProgram.Win.h"

#include <commctrl.h>

#include <stdexcept>

#include "fixtures/FileDialog.Win.h"
#include "fixtures/InputDesktop.Win.h"
#include "host/window/NativeWindow.Win.h"

namespace {

constexpr const char* mainClass = "ZandermoliteHost";
/// The text of the system's message box.
constexpr int boxTextControl = 0xffff;

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
    const HWND window = FindMainWindow();
    // The window takes it after all messages before.
    Ask(window, WM_NULL);
    return window;
}

std::wstring HostProgram::Title() {
    HWND window = FindMainWindow();
    return window == nullptr ? std::wstring() : WideCaptionOf(window);
}

std::wstring HostProgram::StatusText(Part part) {
    const RemoteBuffer buffer(process.hProcess, 512);
    Ask(Child(STATUSCLASSNAMEW), SB_GETTEXTW, part, buffer.Address());
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
    const auto hasTitle = [&](HWND window) { return WideCaptionOf(window) == title; };
    WaitUntil("the dialog " + host::Utf8(title),
              [&] { return (dialog = FindDialog(process.dwThreadId, hasTitle)) != nullptr; });
    Ask(dialog, WM_NULL);
    return dialog;
}

void HostProgram::WaitForDialogsEnd() {
    const auto isAny = [](HWND) { return true; };
    WaitUntil("the dialogs' end", [&] { return FindDialog(process.dwThreadId, isAny) == nullptr; });
    Window();
}

std::wstring HostProgram::BoxText(HWND box) {
    return ControlText(box, boxTextControl);
}

std::wstring HostProgram::ControlText(HWND dialog, int control) {
    return WideTextOf(GetDlgItem(dialog, control));
}

void HostProgram::Push(HWND dialog, int button) {
    PostMessageW(GetDlgItem(dialog, button), BM_CLICK, 0, 0);
}

void HostProgram::EnterFile(HWND dialog, const std::filesystem::path& file) {
    const GuiDriver gui(GetWindowThreadProcessId(dialog, nullptr));
    OpenFileDialog(gui, DrivenDialog(dialog)).Enter(file);
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
    const HWND window = FindMainWindow();
    return window != nullptr && ::IsInMenu(window);
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
    return FindVisible(process.dwThreadId,
                       [](HWND window) { return ClassOf(window) == mainClass; });
}

HWND HostProgram::Child(const wchar_t* className) {
    HWND child = FindWindowExW(FindMainWindow(), nullptr, className, nullptr);
    if (child == nullptr)
        throw std::runtime_error("the program's window lacks a part");
    return child;
}
