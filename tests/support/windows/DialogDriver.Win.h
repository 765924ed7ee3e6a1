// Notes what modal dialogs show, and ends them as a user would.
#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "host/picture/Picture.h"

/// The contents of a dialog.
struct SeenDialog {
    std::string title;
    /// By control id.
    std::map<int, std::string> texts;
    HWND owner = nullptr;
    /// On the screen.
    RECT frame{};
    /// In the frame.
    POINT clientOrigin{};
    host::Picture picture;
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

/// The same with one dialog, which must appear and close.
SeenDialog DriveDialog(const std::function<void()>& action, Ending ending = Ending::pressOk);
