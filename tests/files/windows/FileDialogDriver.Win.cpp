#include "tests/files/windows/FileDialogDriver.Win.h"

#include <atomic>
#include <thread>

#include "tests/shell/windows/ProgramArguments.Win.h"

namespace {

// Of dlgs.h: the fields for the type and the name.
constexpr int typeControl = 0x470;
constexpr int nameControl = 0x47C;

constexpr DWORD pollMilliseconds = 10;
/// Long enough for a loaded machine; nothing waits for it in vain unless it fails.
constexpr DWORD patienceMilliseconds = 60000;

template <typename Condition>
bool WaitFor(Condition condition) {
    for (DWORD waited = 0; waited < patienceMilliseconds; waited += pollMilliseconds) {
        if (condition()) {
            return true;
        }
        Sleep(pollMilliseconds);
    }
    return condition();
}

LRESULT Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    DWORD_PTR result = 0;
    SendMessageTimeoutA(window, message, wParam, lParam, SMTO_BLOCK, patienceMilliseconds, &result);
    return static_cast<LRESULT>(result);
}

std::string TextOf(HWND window) {
    char text[1024] = "";
    Send(window, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
    return text;
}

struct DialogSearch {
    /// The owner that is asked for, or null for any.
    HWND owner;
    HWND found;
};

BOOL CALLBACK TakeDialog(HWND window, LPARAM parameter) {
    auto* const search = reinterpret_cast<DialogSearch*>(parameter);
    char className[16];
    GetClassNameA(window, className, sizeof className);
    if (IsWindowVisible(window) && std::string(className) == "#32770" &&
        (search->owner == nullptr || GetWindow(window, GW_OWNER) == search->owner)) {
        search->found = window;
        return FALSE;
    }
    return TRUE;
}

HWND FindDialog(DWORD thread, HWND owner) {
    DialogSearch search{owner, nullptr};
    EnumThreadWindows(thread, TakeDialog, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND QuestionOf(HWND dialog) {
    return FindDialog(GetWindowThreadProcessId(dialog, nullptr), dialog);
}

}  // namespace

std::string OpenFileDialog::Title() const {
    return TextOf(window);
}

std::string OpenFileDialog::Name() const {
    return TextOf(GetDlgItem(window, nameControl));
}

void OpenFileDialog::TypeName(const std::string& name) const {
    Send(GetDlgItem(window, nameControl), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(name.c_str()));
}

std::vector<std::string> OpenFileDialog::Types() const {
    const HWND list = GetDlgItem(window, typeControl);
    std::vector<std::string> types;
    const auto count = static_cast<int>(Send(list, CB_GETCOUNT, 0, 0));
    for (int i = 0; i < count; ++i) {
        char text[1024] = "";
        Send(list, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
        types.emplace_back(text);
    }
    return types;
}

void OpenFileDialog::PickType(int index) const {
    const HWND list = GetDlgItem(window, typeControl);
    Send(list, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
    for (const WORD notice : {WORD{CBN_SELENDOK}, WORD{CBN_SELCHANGE}}) {
        Send(window, WM_COMMAND, MAKEWPARAM(typeControl, notice), reinterpret_cast<LPARAM>(list));
    }
}

void OpenFileDialog::Accept() const {
    PostMessageA(window, WM_COMMAND, IDOK, 0);
}

void OpenFileDialog::Cancel() const {
    PostMessageA(window, WM_COMMAND, IDCANCEL, 0);
}

bool OpenFileDialog::Answer(int button) const {
    HWND question = nullptr;
    WaitFor([&] {
        question = QuestionOf(window);
        return question != nullptr || !IsWindow(window);
    });
    if (question == nullptr) {
        return false;
    }
    PostMessageA(GetDlgItem(question, button), BM_CLICK, 0, 0);
    return WaitFor([&] { return !IsWindow(question); });
}

bool OpenFileDialog::IsWaiting() const {
    Send(window, WM_NULL, 0, 0);
    return IsWindow(window) && IsWindowEnabled(window) && QuestionOf(window) == nullptr;
}

RECT OpenFileDialog::Frame() const {
    RECT frame{};
    GetWindowRect(window, &frame);
    return frame;
}

HWND OpenFileDialog::Owner() const {
    return GetWindow(window, GW_OWNER);
}

bool DriveFileDialog(const std::function<void()>& action,
                     const std::function<void(const OpenFileDialog&)>& steps) {
    const DWORD thread = GetCurrentThreadId();
    std::atomic<bool> finished = false;
    bool appeared = false;
    std::thread helper([&] {
        SetThreadDesktop(Arguments().desktop);
        HWND dialog = nullptr;
        WaitFor([&] { return finished || (dialog = FindDialog(thread, nullptr)) != nullptr; });
        if (dialog == nullptr) {
            return;
        }
        appeared = true;
        Send(dialog, WM_NULL, 0, 0);
        steps(OpenFileDialog(dialog));
        // What the steps accepted or cancelled takes its time; what they did not must not hang.
        while (!WaitFor([&] { return finished.load(); })) {
            PostMessageA(QuestionOf(dialog), WM_COMMAND, IDCANCEL, 0);
            PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
        }
    });
    action();
    finished = true;
    helper.join();
    return appeared;
}
