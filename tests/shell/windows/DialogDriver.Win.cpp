#include "tests/shell/windows/DialogDriver.Win.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "host/picture/Picture.h"
#include "tests/shell/windows/ProgramArguments.Win.h"

namespace {

constexpr DWORD pollMilliseconds = 10;
/// Long enough for a loaded machine; nothing waits for it in vain unless it fails.
constexpr DWORD patienceMilliseconds = 60000;

/// Waits until `condition` holds. False when patience ends.
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

std::string TextOf(HWND window) {
    char text[1024];
    DWORD_PTR length = 0;
    SendMessageTimeoutA(window, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text), SMTO_BLOCK,
                        patienceMilliseconds, &length);
    return std::string(text, length);
}

struct DialogSearch {
    HWND except;
    HWND found;
};

BOOL CALLBACK TakeDialog(HWND window, LPARAM parameter) {
    auto* const search = reinterpret_cast<DialogSearch*>(parameter);
    char className[16];
    GetClassNameA(window, className, sizeof className);
    if (window != search->except && IsWindowVisible(window) && std::string(className) == "#32770") {
        search->found = window;
        return FALSE;
    }
    return TRUE;
}

/// The visible dialog of the thread, other than `except`; null if there is none.
HWND FindDialog(DWORD thread, HWND except) {
    DialogSearch search{except, nullptr};
    EnumThreadWindows(thread, TakeDialog, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

bool IsCut(HWND control, const std::string& text) {
    char className[16];
    GetClassNameA(control, className, sizeof className);
    const bool isText = std::string(className) == "Static" &&
                        (GetWindowLongA(control, GWL_STYLE) & SS_TYPEMASK) == SS_LEFT;
    if (!isText) {
        return false;
    }
    RECT room;
    GetClientRect(control, &room);
    const HDC context = GetDC(control);
    const HGDIOBJ font =
        SelectObject(context, reinterpret_cast<HGDIOBJ>(SendMessageA(control, WM_GETFONT, 0, 0)));
    RECT needed = room;
    DrawTextA(context, text.c_str(), -1, &needed,
              DT_CALCRECT | DT_WORDBREAK | DT_EXPANDTABS | DT_NOPREFIX);
    SelectObject(context, font);
    ReleaseDC(control, context);
    return needed.right > room.right || needed.bottom > room.bottom;
}

void NoteControls(HWND dialog, SeenDialog& seen) {
    for (HWND control = GetWindow(dialog, GW_CHILD); control != nullptr;
         control = GetWindow(control, GW_HWNDNEXT)) {
        const int id = GetDlgCtrlID(control) & 0xFFFF;
        seen.texts[id] = TextOf(control);
        if (IsCut(control, seen.texts[id])) {
            seen.cutControls.push_back(id);
        }
    }
}

SeenDialog Note(HWND dialog) {
    // Not before the dialog has dealt with what was sent to it.
    DWORD_PTR ignored;
    SendMessageTimeoutA(dialog, WM_NULL, 0, 0, SMTO_BLOCK, patienceMilliseconds, &ignored);
    SeenDialog seen;
    seen.title = TextOf(dialog);
    seen.owner = GetWindow(dialog, GW_OWNER);
    GetWindowRect(dialog, &seen.frame);
    ClientToScreen(dialog, &seen.clientOrigin);
    seen.clientOrigin.x -= seen.frame.left;
    seen.clientOrigin.y -= seen.frame.top;
    RECT iconPlace{7, 7, 7, 7};
    MapDialogRect(dialog, &iconPlace);
    seen.iconPlace = {iconPlace.left, iconPlace.top};
    NoteControls(dialog, seen);
    seen.picture = Capture(dialog);
    return seen;
}

void End(HWND dialog, Ending ending) {
    switch (ending) {
        case Ending::pressOk:
            PostMessageA(GetDlgItem(dialog, IDOK), BM_CLICK, 0, 0);
            break;
        case Ending::enter:
            PostMessageA(dialog, WM_KEYDOWN, VK_RETURN, 0);
            break;
        case Ending::escape:
            PostMessageA(dialog, WM_KEYDOWN, VK_ESCAPE, 0);
            break;
        case Ending::closeBox:
            PostMessageA(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
            break;
    }
}

/// The helper thread's work.
class Driver {
  public:
    Driver(const std::vector<Ending>& newEndings, DWORD newThread)
        : endings(newEndings), thread(newThread) {}

    void Run() {
        SetThreadDesktop(Arguments().desktop);
        HWND dialog = nullptr;
        for (const Ending ending : endings) {
            dialog = WaitForDialog(dialog);
            if (dialog == nullptr) {
                return;
            }
            seen.push_back(Note(dialog));
            End(dialog, ending);
            seen.back().closed = WaitFor([&] { return !IsWindow(dialog); });
            if (!seen.back().closed) {
                // So that the program ends, and says what failed.
                PostMessageA(dialog, WM_COMMAND, IDOK, 0);
            }
        }
    }

    /// The action on the other thread has returned.
    void Finish() { finished = true; }

    std::vector<SeenDialog> seen;

  private:
    /// As long as the action runs, however long: nobody else would end a dialog that comes late.
    HWND WaitForDialog(HWND before) const {
        HWND dialog = nullptr;
        while (dialog == nullptr && !finished) {
            Sleep(pollMilliseconds);
            dialog = FindDialog(thread, before);
        }
        return dialog;
    }

    const std::vector<Ending>& endings;
    DWORD thread;
    std::atomic<bool> finished = false;
};

}  // namespace

Screenshot Capture(HWND window) {
    RedrawWindow(window, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_FRAME | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    // The window's own thread may have begun to paint by itself; it answers when it is through.
    constexpr UINT patienceMilliseconds = 20000;
    DWORD_PTR ignored;
    SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_BLOCK, patienceMilliseconds, &ignored);
    RECT frame;
    GetWindowRect(window, &frame);
    Screenshot shot;
    shot.width = frame.right - frame.left;
    shot.height = frame.bottom - frame.top;
    shot.pixels.resize(static_cast<std::size_t>(shot.width) *
                       static_cast<std::size_t>(shot.height));
    const HDC source = GetWindowDC(window);
    const HDC memory = CreateCompatibleDC(source);
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = shot.width;
    info.bmiHeader.biHeight = -shot.height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    const HBITMAP bitmap = CreateDIBSection(source, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, shot.width, shot.height, source, 0, 0, SRCCOPY);
    GdiFlush();
    const auto* const pixels = static_cast<const COLORREF*>(bits);
    for (std::size_t i = 0; i < shot.pixels.size(); ++i) {
        shot.pixels[i] = pixels[i] & 0xFFFFFF;
    }
    SelectObject(memory, before);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(window, source);
    return shot;
}

std::vector<SeenDialog> DriveDialogs(const std::function<void()>& action,
                                     const std::vector<Ending>& endings) {
    Driver driver(endings, GetCurrentThreadId());
    std::thread helper([&driver] { driver.Run(); });
    action();
    driver.Finish();
    helper.join();
    return driver.seen;
}

SeenDialog DriveDialog(const std::function<void()>& action, Ending ending) {
    const std::vector<SeenDialog> seen = DriveDialogs(action, {ending});
    if (seen.size() != 1) {
        ADD_FAILURE() << "no dialog appeared";
        return {};
    }
    EXPECT_TRUE(seen[0].closed);
    return seen[0];
}

void KeepScreenshot(const SeenDialog& dialog, const std::string& name) {
    if (Arguments().screenshots.empty()) {
        return;
    }
    host::Picture picture = host::MakePicture(dialog.picture.width, dialog.picture.height, 3);
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const COLORREF pixel = dialog.picture.At(x, y);
            std::uint8_t* const bytes = picture.Pixel(x, y);
            bytes[0] = static_cast<std::uint8_t>(pixel >> 16);
            bytes[1] = static_cast<std::uint8_t>(pixel >> 8);
            bytes[2] = static_cast<std::uint8_t>(pixel);
        }
    }
    host::SavePicture(picture, Arguments().screenshots + "\\" + name + ".png");
}
