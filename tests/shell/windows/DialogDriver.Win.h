// Drives modal dialogs from a helper thread, as a user would.
#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

/// Rows from the top, one 0x00RRGGBB a pixel.
struct Screenshot {
    int width = 0;
    int height = 0;
    std::vector<COLORREF> pixels;

    COLORREF At(int x, int y) const {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)];
    }
};

/// The window with its frame and its children.
Screenshot Capture(HWND window);

/// What a dialog showed.
struct SeenDialog {
    std::string title;
    /// By control id.
    std::map<int, std::string> texts;
    HWND owner = nullptr;
    /// On the screen.
    RECT frame{};
    /// In the frame.
    POINT clientOrigin{};
    Screenshot picture;
    /// Where the icon belongs, in the client area.
    POINT iconPlace{};
    /// Controls whose text is wider or higher than they are, by id.
    std::vector<int> cutControls;
    /// It closed by what was done to it, without help.
    bool closed = false;

    std::string Text(int id) const {
        const auto found = texts.find(id);
        return found != texts.end() ? found->second : "(no such control)";
    }
};

enum class Ending { pressOk, enter, escape, closeBox };

/// Runs `action` on this thread, which must open one modal dialog after the other; each is noted,
/// then ended as told. Fewer dialogs seen than endings given mean that the action returned before.
std::vector<SeenDialog> DriveDialogs(const std::function<void()>& action,
                                     const std::vector<Ending>& endings);

/// With one dialog, which must appear and close.
SeenDialog DriveDialog(const std::function<void()>& action, Ending ending = Ending::pressOk);

/// Leaves the picture in the folder that the command line names, if it names one.
void KeepScreenshot(const SeenDialog& dialog, const std::string& name);
