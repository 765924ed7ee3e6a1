#include "files/FileDialog.Win.h"

#include <windows.h>
// Needs the header above.
#include <commdlg.h>

#include "base/Callback.Win.h"
#include "base/WindowPlace.Win.h"

namespace {

constexpr DWORD openFlags = OFN_FILEMUSTEXIST | OFN_HIDEREADONLY | OFN_ENABLEHOOK | OFN_EXPLORER;
constexpr DWORD saveFlags =
    OFN_OVERWRITEPROMPT | OFN_HIDEREADONLY | OFN_NOREADONLYRETURN | OFN_ENABLEHOOK | OFN_EXPLORER;
static_assert(openFlags == 0x81024 && saveFlags == 0x88026);

/// The field with the file's name in dialogs of the explorer style (cmb13 of dlgs.h).
constexpr WPARAM nameControl = 0x47C;

/// The save dialog's type, as its list shows it. One dialog runs at a time.
FileType chosenType = noFileType;

/// A hook's window is a child of the dialog itself.
HWND DialogOf(HWND hook) {
    return GetParent(hook);
}

void TakeChosenType(HWND hook, const OPENFILENAMEA& request) {
    const auto& dialog = *reinterpret_cast<const FileDialog*>(request.lCustData);
    const std::size_t index = request.nFilterIndex;  // from 1
    if (index < 1 || index > dialog.types.size()) {
        return;
    }
    chosenType = dialog.types[index - 1];
    const std::string extension = ExtensionText(chosenType).substr(1);
    SendMessageA(DialogOf(hook), CDM_SETDEFEXT, 0, reinterpret_cast<LPARAM>(extension.c_str()));
}

/// The name as it was typed; the dialog itself may have appended an extension.
std::string TypedName(HWND hook) {
    char name[filePathCapacity] = "";
    GetDlgItemTextA(DialogOf(hook), static_cast<int>(nameControl), name, sizeof name);
    return name;
}

bool IsThere(const char* path) {
    return GetFileAttributesA(path) != INVALID_FILE_ATTRIBUTES;
}

/// True if the dialog may close. The system has asked about the name that was typed, not about the
/// one that it becomes: a file of that name is not replaced unasked. The whole name then stands in
/// its field, and accepting it asks.
bool FinishName(HWND hook, FileDialog& dialog) {
    UnifyExtension(dialog.path, TypedName(hook), chosenType);
    if (!EnforceExtension(dialog.path, chosenType) || !IsThere(dialog.path)) {
        return true;
    }
    SendMessageA(DialogOf(hook), CDM_SETCONTROLTEXT, nameControl,
                 reinterpret_cast<LPARAM>(dialog.path));
    SetWindowLongPtrA(hook, DWLP_MSGRESULT, 1);
    return false;
}

UINT_PTR FollowOpening(HWND hook, UINT message, LPARAM lParam) {
    if (message == WM_NOTIFY &&
        reinterpret_cast<const OFNOTIFYA*>(lParam)->hdr.code == CDN_INITDONE) {
        PlaceOverOwner(DialogOf(hook));
    }
    return 0;
}

UINT_PTR FollowSaving(HWND hook, UINT message, LPARAM lParam) {
    if (message == WM_NOTIFY) {
        const auto& notice = *reinterpret_cast<const OFNOTIFYA*>(lParam);
        switch (notice.hdr.code) {
            case CDN_INITDONE:
            case CDN_TYPECHANGE:
                TakeChosenType(hook, *notice.lpOFN);
                break;
            case CDN_FILEOK:
                if (!FinishName(hook, *reinterpret_cast<FileDialog*>(notice.lpOFN->lCustData))) {
                    return TRUE;
                }
                break;
            default:
                break;
        }
    }
    return FollowOpening(hook, message, lParam);
}

UINT_PTR CALLBACK OpenHook(HWND hook, UINT message, WPARAM, LPARAM lParam) {
    return Guarded(UINT_PTR{0}, [&] { return FollowOpening(hook, message, lParam); });
}

/// A dialog whose name could not be finished stays open: the hook's own 1 and that of the message
/// keep it from closing.
UINT_PTR CALLBACK SaveHook(HWND hook, UINT message, WPARAM, LPARAM lParam) {
    constexpr UINT_PTR refused = 2;
    const UINT_PTR handled = Guarded(refused, [&] { return FollowSaving(hook, message, lParam); });
    const bool isConfirming =
        message == WM_NOTIFY && reinterpret_cast<const OFNOTIFYA*>(lParam)->hdr.code == CDN_FILEOK;
    if (handled != refused) {
        return handled;
    }
    if (isConfirming) {
        SetWindowLongPtrA(hook, DWLP_MSGRESULT, 1);
    }
    return isConfirming ? TRUE : FALSE;
}

/// The dialogs take the process along to the folder that the user looks at; it belongs to the host.
class CurrentFolder {
  public:
    CurrentFolder() : length(GetCurrentDirectoryW(capacity, path)) {}
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;
    ~CurrentFolder() {
        if (length > 0 && length < capacity) {
            SetCurrentDirectoryW(path);
        }
    }

  private:
    static constexpr DWORD capacity = 1024;
    wchar_t path[capacity];
    DWORD length;
};

}  // namespace

bool RunFileDialog(FileDialog& dialog) {
    const bool saves = dialog.mode == FileDialogMode::save;
    const std::string extension = DefaultExtension(dialog);
    chosenType = noFileType;
    if (saves) {
        MakeProposable(dialog.path);
    }
    OPENFILENAMEA request{};
    request.lStructSize = sizeof request;
    request.hwndOwner = static_cast<HWND>(dialog.ownerWindow);
    request.lpstrFilter = dialog.filter.c_str();
    request.nFilterIndex = 1;
    request.lpstrFile = dialog.path;
    request.nMaxFile = sizeof dialog.path;
    request.lpstrInitialDir = dialog.folder.empty() ? nullptr : dialog.folder.c_str();
    request.lpstrDefExt = extension.empty() ? nullptr : extension.c_str();
    request.lCustData = reinterpret_cast<LPARAM>(&dialog);
    request.lpfnHook = saves ? SaveHook : OpenHook;
    request.Flags = saves ? saveFlags : openFlags;
    const CurrentFolder restored;
    return (saves ? GetSaveFileNameA(&request) : GetOpenFileNameA(&request)) != FALSE;
}
