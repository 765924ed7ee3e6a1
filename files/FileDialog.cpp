#include "files/FileDialog.h"

#include <cstring>
#include <string_view>

#include "files/FileSystem.h"

namespace {

constexpr std::size_t filterCapacity = 1024;
constexpr char allFiles[] = "*.*";

char FirstCharacter(FileType type) {
    return static_cast<char>(type >> 24);
}

std::vector<FileType> ExtensionsAmong(const FileType* types) {
    std::vector<FileType> extensions;
    for (; *types != noFileType; ++types) {
        if (FirstCharacter(*types) == '.') {
            extensions.push_back(*types);
        }
    }
    return extensions;
}

std::string PatternOf(FileType type) {
    return "*" + ExtensionText(type);
}

std::string JoinedPatterns(const std::vector<FileType>& types) {
    std::string patterns;
    for (const FileType type : types) {
        patterns += (patterns.empty() ? "" : ";") + PatternOf(type);
    }
    return patterns;
}

/// The patterns are their own description.
std::string FilterEntry(const std::string& patterns) {
    const std::string text = patterns + '\0';
    return text + text;
}

std::string MakeFilter(FileDialogMode mode, const std::vector<FileType>& types) {
    if (types.empty()) {
        return FilterEntry(allFiles) + '\0';
    }
    std::string filter;
    if (mode == FileDialogMode::open) {
        filter = FilterEntry(JoinedPatterns(types));
    } else {
        for (const FileType type : types) {
            filter += FilterEntry(PatternOf(type));
        }
    }
    return filter + '\0';
}

}  // namespace

FileDialog MakeFileDialog(FileDialogMode mode, void* ownerWindow, const FileType* types) {
    FileDialog dialog{mode, ownerWindow, {}, ExtensionsAmong(types), {}, {}};
    dialog.filter = MakeFilter(mode, dialog.types);
    if (dialog.filter.size() > filterCapacity) {
        FatalError(faultBadArgument, "FileDialog", __LINE__);
    }
    return dialog;
}

std::string ExtensionText(FileType type) {
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        const auto character = static_cast<unsigned char>(type >> shift);
        if (character <= ' ') {
            break;
        }
        text += static_cast<char>(character);
    }
    return text;
}

std::string DefaultExtension(const FileDialog& dialog) {
    return dialog.types.empty() ? "" : ExtensionText(dialog.types.front()).substr(1);
}

bool EnforceExtension(char (&path)[filePathCapacity], FileType chosen) {
    const std::string extension = ExtensionText(chosen);
    const std::size_t length = std::strlen(path);
    if (extension.empty() || FileTypeOf(path) == chosen ||
        length + extension.size() >= filePathCapacity) {
        return false;
    }
    std::strcpy(path + length, extension.c_str());
    return true;
}

void MakeProposable(char (&path)[filePathCapacity]) {
    constexpr std::string_view forbidden = "\\/:*?\"<>|";
    for (char* at = path; *at != '\0'; ++at) {
        if (fileSystem.isLeadByte(static_cast<unsigned char>(*at)) && at[1] != '\0') {
            ++at;
        } else if (forbidden.find(*at) != std::string_view::npos ||
                   static_cast<unsigned char>(*at) < ' ') {
            *at = '_';
        }
    }
}

void UnifyExtension(char (&path)[filePathCapacity], std::string_view typedName, FileType chosen) {
    const std::string extension = ExtensionText(chosen);
    const std::size_t length = std::strlen(path);
    if (FileTypeOf(typedName) == noFileType && FileTypeOf(path) == chosen &&
        length > extension.size()) {
        extension.copy(path + length - extension.size(), extension.size());
    }
}
