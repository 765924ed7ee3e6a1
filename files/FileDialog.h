// The request to a file dialog, without the window system's own records.
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
    /// The types that the filter's entries stand for when saving, in their order.
    std::vector<FileType> types;
    /// The folder to start in; empty for the system's choice.
    std::string folder;
    /// Before the run: the name to propose. After acceptance: the chosen file's full path.
    char path[filePathCapacity];
};

/// With an empty folder and name. `types` ends with 0. FatalError 20008 for a filter of more than
/// 1024 bytes.
FileDialog MakeFileDialog(FileDialogMode mode, void* ownerWindow, const FileType* types);

/// The type as it is appended to a name: up to the first character that is not above blank.
std::string ExtensionText(FileType type);

/// The extension that a name without one gets at once: that of the first type, without its dot.
std::string DefaultExtension(const FileDialog& dialog);

/// Appends the extension of the chosen type to the path, when the save dialog is accepted, unless
/// it ends in it. Returns whether anything was appended. A path without room for it stays
/// unchanged.
bool EnforceExtension(char (&path)[filePathCapacity], FileType chosen);

/// A texture's name may hold what no file's name can, and the system's dialog would not even open
/// on such a proposal: each of those characters becomes an underscore. `path` is a bare name.
void MakeProposable(char (&path)[filePathCapacity]);

/// Systems differ in the case of the extension that they append to a name without one. If `path` is
/// `typedName` with an extension so appended, replaces the extension by that of the type, letter
/// for letter.
void UnifyExtension(char (&path)[filePathCapacity], std::string_view typedName, FileType chosen);
