// Asking the user for files and folders.
#pragma once

#include <windows.h>

#include <filesystem>
#include <optional>

namespace host {

/// Nothing if the user cancels. `suggestion` is a file whose folder the dialog starts in; it may be
/// empty.
std::optional<std::filesystem::path> AskForPicture(HWND owner,
                                                   const std::filesystem::path& suggestion);

/// The file's name ends in .png; before it returns an existing file, it asks whether to replace it.
std::optional<std::filesystem::path> AskWhereToSave(HWND owner,
                                                    const std::filesystem::path& suggestion);

std::optional<std::filesystem::path> AskForFolder(HWND owner, const wchar_t* title);

}  // namespace host
