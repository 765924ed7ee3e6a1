#include "files/File.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "base/Platform.h"
#include "files/FileDialog.h"
#include "files/FileSystem.h"

std::int16_t lastFileError = fileSucceeded;

std::int16_t GetLastFileError() {
    return lastFileError;
}

namespace {

constexpr char source[] = "File";
constexpr std::size_t notThere = std::string_view::npos;
/// A dot and three characters.
constexpr std::size_t typeLength = 4;

std::int16_t Failed(FileStatus status) {
    lastFileError = status;
    return status;
}

std::int16_t Outcome(bool succeeded, FileStatus failure) {
    return succeeded ? std::int16_t{fileSucceeded} : Failed(failure);
}

std::size_t CharacterLength(std::string_view text, std::size_t at) {
    const bool isDouble = fileSystem.isLeadByte(static_cast<unsigned char>(text[at]));
    return isDouble && at + 1 < text.size() ? 2 : 1;
}

/// For a `character` of one byte.
std::size_t LastIndexOf(std::string_view text, char character) {
    std::size_t found = notThere;
    for (std::size_t at = 0; at < text.size(); at += CharacterLength(text, at)) {
        if (text[at] == character) {
            found = at;
        }
    }
    return found;
}

/// Where the file's name begins.
std::size_t NameIndex(std::string_view path) {
    const std::size_t separator = LastIndexOf(path, platformServices.pathSeparator);
    return separator != notThere ? separator + 1 : 0;
}

char UpperCase(char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A')
                                                : character;
}

bool IsReadWriteText(const char* mode) {
    return UpperCase(mode[0]) == 'R' && UpperCase(mode[1]) == 'W' && mode[2] == '\0';
}

FileAccess AccessOf(const char* mode) {
    if (mode == nullptr) {
        return FileAccess::readAndWrite;
    }
    if (IsReadWriteText(mode)) {
        FatalError(faultBadArgument, source, __LINE__);
    }
    if (std::strcmp(mode, "r") == 0) {
        return FileAccess::read;
    }
    return std::strcmp(mode, "w") == 0 ? FileAccess::write : FileAccess::readAndWrite;
}

std::int32_t Clamped(std::int64_t number) {
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(
        std::clamp<std::int64_t>(number, Limits::min(), Limits::max()));
}

void ReadAll(void* handle, void* buffer, std::int32_t start, std::int32_t count) {
    if (!fileSystem.isWritable(buffer, count)) {
        FatalError(faultBadArgument, source, __LINE__);
    }
    std::int32_t transferred = 0;
    if (!fileSystem.seek(handle, start) || !fileSystem.read(handle, buffer, count, &transferred)) {
        FatalError(faultFileState, source, __LINE__);
    }
    if (transferred != count) {
        FatalError(faultBadArgument, source, __LINE__);
    }
}

void WriteAll(void* handle, const void* buffer, std::int32_t count) {
    std::int32_t transferred = 0;
    if (!fileSystem.write(handle, buffer, count, &transferred)) {
        FatalError(faultFileState, source, __LINE__);
    }
    if (transferred != count || !fileSystem.flush(handle)) {
        FatalError(faultBadArgument, source, __LINE__);
    }
}

}  // namespace

FileType FileTypeOf(std::string_view path) {
    const std::string_view name = path.substr(NameIndex(path), filePathCapacity);
    const std::size_t dot = LastIndexOf(name, '.');
    if (dot == notThere) {
        return noFileType;
    }
    FileType type = 0;
    for (std::size_t at = dot; at < dot + typeLength; ++at) {
        const char character = at < name.size() ? UpperCase(name[at]) : ' ';
        type = type << 8 | static_cast<unsigned char>(character);
    }
    return type;
}

std::string File::GetFileName() const {
    return path + NameIndex(path);
}

void File::SetFileName(std::string_view name) {
    SetPath(GetDirectory().append(name));
}

std::string File::GetDirectory() const {
    return std::string(path, NameIndex(path));
}

void File::SetPath(std::string_view newPath) {
    if (newPath.size() >= filePathCapacity) {
        FatalError(faultBadArgument, source, __LINE__);
    }
    newPath.copy(path, newPath.size());
    path[newPath.size()] = '\0';
}

void File::SetExtensionForType(FileType newType) {
    if (FileTypeOf(path) != newType) {
        SetPath(path + ExtensionText(newType));
    }
}

void File::CheckOpenable() const {
    if (!HasName() || handle != nullptr) {
        FatalError(faultFileState, source, __LINE__);
    }
}

std::int16_t File::Exists() {
    if (!HasName()) {
        return Failed(fileNotFound);
    }
    if (handle != nullptr) {
        return fileSucceeded;
    }
    void* const opened = fileSystem.open(path, FileAccess::read, FileDisposition::existing);
    if (opened == nullptr) {
        return Failed(fileNotFound);
    }
    fileSystem.close(opened);
    return fileSucceeded;
}

std::int16_t File::Open(const char* mode) {
    lastFileError = fileSucceeded;
    CheckOpenable();
    handle = fileSystem.open(path, AccessOf(mode), FileDisposition::existing);
    return Outcome(handle != nullptr, fileNotOpened);
}

std::int16_t File::Create() {
    lastFileError = fileSucceeded;
    CheckOpenable();
    handle = fileSystem.open(path, FileAccess::readAndWrite, FileDisposition::create);
    return Outcome(handle != nullptr, fileNotCreated);
}

std::int16_t File::Close() {
    lastFileError = fileSucceeded;
    if (handle == nullptr) {
        return fileSucceeded;
    }
    // A handle that only reads cannot be flushed, and need not be.
    fileSystem.flush(handle);
    const bool closed = fileSystem.close(handle);
    handle = nullptr;
    return Outcome(closed, fileNotClosed);
}

std::int16_t File::Delete() {
    lastFileError = fileSucceeded;
    if (!HasName()) {
        return fileSucceeded;
    }
    const bool removed = fileSystem.remove(path);
    ClearName();
    return Outcome(removed, fileNotDeleted);
}

std::int32_t File::Read(void* buffer, std::int32_t start, std::int32_t count) {
    lastFileError = fileSucceeded;
    if (handle == nullptr) {
        return 0;
    }
    const std::int32_t remaining =
        Clamped(std::min<std::int64_t>(count, std::int64_t{GetSize()} - start));
    if (remaining > 0) {
        ReadAll(handle, buffer, start, remaining);
    }
    position = Clamped(std::int64_t{start} + remaining);
    return std::max(remaining, 0);
}

std::int16_t File::Write(const void* buffer, std::int32_t start, std::int32_t count) {
    lastFileError = fileSucceeded;
    const std::int64_t end = std::int64_t{start} + std::max(count, 0);
    if (handle != nullptr && count >= 0) {
        if (count > 0 && !fileSystem.isReadable(buffer, count)) {
            FatalError(faultBadArgument, source, __LINE__);
        }
        if (end > Clamped(end)) {
            return Failed(fileNotWritten);
        }
        if (end > GetSize() && SetSize(Clamped(end)) != fileSucceeded) {
            return fileNotWritten;
        }
        if (!fileSystem.seek(handle, start)) {
            return Failed(fileNotWritten);
        }
        if (count > 0) {
            WriteAll(handle, buffer, count);
        }
    }
    position = Clamped(end);
    return fileSucceeded;
}

std::int16_t File::Append(const void* buffer, std::int32_t count) {
    lastFileError = fileSucceeded;
    std::int32_t transferred = 0;
    if (handle != nullptr && fileSystem.seek(handle, position) &&
        fileSystem.write(handle, buffer, count, &transferred) && transferred == count &&
        fileSystem.flush(handle)) {
        position = Clamped(std::int64_t{position} + count);
        return fileSucceeded;
    }
    SetSize(position);
    return Failed(fileNotWritten);
}

std::int32_t File::GetSize() {
    lastFileError = fileSucceeded;
    const std::int64_t size = handle != nullptr ? fileSystem.size(handle) : -1;
    if (size < 0) {
        FatalError(faultFileState, source, __LINE__);
    }
    return Clamped(size);
}

std::int16_t File::SetSize(std::int32_t size) {
    lastFileError = fileSucceeded;
    const bool ended =
        handle != nullptr && fileSystem.seek(handle, size) && fileSystem.setEnd(handle);
    return Outcome(ended, fileNotWritten);
}

std::int16_t File::ChooseFile(FileDialogMode mode, void* ownerWindow, const FileType* types,
                              std::int16_t dialogId) {
    FileDialog dialog = MakeFileDialog(mode, ownerWindow, types);
    dialog.folder = GetDirectory();
    std::strcpy(dialog.path, GetFileName().c_str());
    type = noFileType;
    const bool accepted = platformServices.runFileDialog(dialog);
    if (accepted) {
        std::strcpy(path, dialog.path);
        type = FileTypeOf(path);
    }
    if (mode == FileDialogMode::save && dialogId < 1) {
        type = types[0];
    }
    return accepted ? fileSucceeded : fileCancelled;
}
