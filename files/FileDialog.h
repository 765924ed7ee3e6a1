// What a file dialog is asked, without the window system's own records.
#pragma once

#include <string>
#include <vector>

#include "files/File.h"

/// One run of the system's dialog for opening or saving.
struct FileDialog {
    FileDialogMode mode;
    /// HWND, or null.
    void* ownerWindow;
    /// Pairs of zero-terminated texts, what is shown and the patterns; ends with an empty text.
    std::string filter;
    /// The types behind the filter's entries when saving, in their order.
    std::vector<FileType> types;
    /// Where to start; empty for wherever the system likes.
    std::string folder;
    /// Before: the name to offer. After acceptance: the chosen file's whole path.
    char path[filePathCapacity];
};

/// With an empty folder and name. `types` ends with 0. FatalError 20008 for a filter of more than
/// 1024 bytes.
FileDialog MakeFileDialog(FileDialogMode mode, void* ownerWindow, const FileType* types);

/// The type as it is appended to a name: up to the first character that is not above blank.
std::string ExtensionText(FileType type);

/// The extension that a name without one gets at once: that of the first type, without its dot.
std::string DefaultExtension(const FileDialog& dialog);

/// What the save dialog makes of a name at the moment of acceptance: the extension of the chosen
/// type stands at its end. Answers whether anything had to be appended. A path without room for it
/// stays as it is.
bool EnforceExtension(char (&path)[filePathCapacity], FileType chosen);

/// A texture's name may hold what no file's name can, and the system's dialog would not even open
/// on such a proposal: each of those characters becomes an underscore. `path` is a bare name.
void MakeProposable(char (&path)[filePathCapacity]);

/// Systems differ in the case of the extension that they put behind a name without one. If `path`
/// has got its extension in this way from `typedName`, it becomes that of the type, letter for
/// letter.
void UnifyExtension(char (&path)[filePathCapacity], std::string_view typedName, FileType chosen);
