#include "host/window/FileDialogs.Win.h"

#include <commdlg.h>
#include <objbase.h>
#include <shlobj.h>

#include <algorithm>
#include <string>
#include <vector>

#include "host/window/NativeWindow.Win.h"

namespace host {

namespace {

namespace fs = std::filesystem;

constexpr wchar_t openFilter[] =
    L"Pictures (*.png, *.jpg, *.bmp)\0*.png;*.jpg;*.jpeg;*.bmp\0All files\0*.*\0";
constexpr wchar_t saveFilter[] = L"PNG pictures (*.png)\0*.png\0";
// The longest path that the system knows.
constexpr std::size_t pathCapacity = 32768;

/// The record of the two file dialogs with the buffers that it points to.
class FileDialog {
  public:
    FileDialog(HWND owner, const wchar_t* filter, const fs::path& folder, const std::wstring& name)
        : start(folder.wstring()), buffer(pathCapacity, L'\0') {
        std::copy_n(name.begin(), std::min(name.size(), pathCapacity - 1), buffer.begin());
        record.lStructSize = sizeof record;
        record.hwndOwner = owner;
        record.lpstrFilter = filter;
        record.lpstrFile = buffer.data();
        record.nMaxFile = static_cast<DWORD>(buffer.size());
        record.lpstrInitialDir = start.empty() ? nullptr : start.c_str();
        record.Flags = OFN_EXPLORER | OFN_NOCHANGEDIR | OFN_HIDEREADONLY | OFN_PATHMUSTEXIST;
    }
    FileDialog(const FileDialog&) = delete;
    FileDialog& operator=(const FileDialog&) = delete;

    std::optional<fs::path> Run(BOOL(WINAPI* dialog)(OPENFILENAMEW*)) {
        if (dialog(&record) == FALSE) {
            return std::nullopt;
        }
        return fs::path(buffer.data());
    }

    OPENFILENAMEW record{};

  private:
    std::wstring start;
    std::vector<wchar_t> buffer;
};

bool IsPngName(const fs::path& file) {
    std::wstring extension = file.extension().wstring();
    CharLowerW(extension.data());
    return extension == L".png";
}

}  // namespace

std::optional<fs::path> AskForPicture(HWND owner, const fs::path& suggestion) {
    FileDialog dialog(owner, openFilter, suggestion.parent_path(), L"");
    dialog.record.Flags |= OFN_FILEMUSTEXIST;
    return dialog.Run(GetOpenFileNameW);
}

std::optional<fs::path> AskWhereToSave(HWND owner, const fs::path& suggestion) {
    fs::path proposed = suggestion.filename();
    proposed.replace_extension(L".png");
    for (;;) {
        FileDialog dialog(owner, saveFilter, suggestion.parent_path(), proposed.wstring());
        dialog.record.Flags |= OFN_OVERWRITEPROMPT;
        dialog.record.lpstrDefExt = L"png";
        const std::optional<fs::path> chosen = dialog.Run(GetSaveFileNameW);
        if (!chosen || IsPngName(*chosen)) {
            return chosen;
        }
        // A JPEG's name on a PNG's contents would only confuse others.
        ShowError(owner, "Pictures are saved as PNG. Choose a name that ends in .png.");
        proposed = chosen->filename().replace_extension(L".png");
    }
}

std::optional<fs::path> AskForFolder(HWND owner, const wchar_t* title) {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    BROWSEINFOW info{};
    info.hwndOwner = owner;
    info.lpszTitle = title;
    info.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE;
    std::optional<fs::path> chosen;
    LPITEMIDLIST list = SHBrowseForFolderW(&info);
    wchar_t folder[MAX_PATH];
    if (list != nullptr && SHGetPathFromIDListW(list, folder) != FALSE) {
        chosen = folder;
    }
    CoTaskMemFree(list);
    CoUninitialize();
    return chosen;
}

}  // namespace host
