// The one file class of the program: a path, an open handle, a position, and the file dialogs.
//
// Failures that a user can cause are returned as a status: the id of the dialog that describes it;
// 0 is success. Errors of the program raise FatalError: 20002 for a file in the wrong state, 20008
// for a bad argument or a transfer that the system cut short.
//
// Paths are byte strings in the system's code page. A double-byte character in them is kept whole,
// even if its second byte looks like a separator or a dot.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/FatalError.h"
#include "hostapi/HostTypes.h"

enum FileStatus : std::int16_t {
    fileSucceeded = 0,
    fileNotFound = 19005,
    fileNotOpened = 19006,
    fileNotCreated = 19007,
    fileNotDeleted = 19008,
    fileNotClosed = 19009,
    fileNotWritten = 19011,
    /// The user left a file dialog without a choice.
    fileCancelled = firstSilentFault,
};

/// "." and up to three characters of the extension in upper case, filled up with blanks; the first
/// one in the high byte. 0 is the type of a name without a dot. Types that name a format of another
/// system, such as "JPEG", begin with another character.
using FileType = std::uint32_t;

constexpr FileType noFileType = 0;
constexpr FileType jpegExtension = hostapi::FourCharacters('.', 'J', 'P', 'G');

/// The type of the last extension of the path's file name.
FileType FileTypeOf(std::string_view path);

/// The status of the last operation on any file.
extern std::int16_t lastFileError;
std::int16_t GetLastFileError();

/// Room for a path with its terminating zero.
constexpr std::size_t filePathCapacity = 1024;

enum class FileDialogMode { open = 0, save = 1 };

class File;

/// Callback by which a picture writer asks the file's owner about quality: an operation number, a
/// value, and the result.
using QualityCallback = std::int16_t (*)(File& file, std::int16_t operation, std::int16_t value);

/// The owner closes it; the destructor does not.
class File {
  public:
    File() = default;
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    // Paths.

    /// The part after the last separator.
    std::string GetFileName() const;
    /// Replaces that part. FatalError 20008 if there is no room for it.
    void SetFileName(std::string_view name);
    /// Up to and including the last separator; empty without one.
    std::string GetDirectory() const;
    /// FatalError 20008 if there is no room for it.
    void SetPath(std::string_view newPath);
    bool HasName() const { return path[0] != '\0'; }
    void ClearName() { path[0] = '\0'; }
    /// Appends the type's characters up to the first blank, unless the name has that type already.
    /// FatalError 20008 if there is no room for them.
    void SetExtensionForType(FileType newType);

    // Files. Every operation but Exists clears the last error first.

    /// 0 or fileNotFound: whether the file can be opened for reading, or is open.
    std::int16_t Exists();
    /// "r" opens for reading, "w" for writing, none and any other text for both. The file must
    /// exist. 0 or fileNotOpened. FatalError 20008 for "rw" in any case of letters; that is
    /// intended. FatalError 20002 without a name, and if the file is open.
    std::int16_t Open(const char* mode = nullptr);
    /// Creates the file, or empties it, and opens it for reading and writing. 0 or fileNotCreated.
    /// FatalError 20002 as above.
    std::int16_t Create();
    /// 0 or fileNotClosed. A closed file may be closed.
    std::int16_t Close();
    /// Deletes by name and clears the name, whatever the outcome: 0 or fileNotDeleted. Without a
    /// name nothing happens.
    std::int16_t Delete();

    /// Reads at most `count` bytes from `start` on, up to the end of the file; returns how many.
    /// Sets the position after the last byte read, or to the end for a start after the end. Returns
    /// 0 for a closed file. FatalError 20008 for a block that cannot be written and for a short
    /// read, 20002 when the system cannot seek or read.
    std::int32_t Read(void* buffer, std::int32_t start, std::int32_t count);
    /// Writes through to the disk, growing the file first if needed, even if `count` is 0. 0 or
    /// fileNotWritten, with the position unchanged; on success the position is after the last byte
    /// written. Only sets the position of a closed file. FatalError 20008 for a block that cannot
    /// be read and for a short write, 20002 when the system cannot write.
    std::int16_t Write(const void* buffer, std::int32_t start, std::int32_t count);
    /// Writes at the position, through to the disk, and moves it along. 0, or fileNotWritten
    /// whatever the system refuses: many file systems grow a file without reserving space and
    /// refuse only the bytes, which must not cost more than the file. Such a file keeps its earlier
    /// end.
    std::int16_t Append(const void* buffer, std::int32_t count);
    /// At most 0x7FFFFFFF. FatalError 20002 for a closed file.
    std::int32_t GetSize();
    /// 0 or fileNotWritten.
    std::int16_t SetSize(std::int32_t size);

    /// Lets the user choose a file, with this one's name and folder as the proposal. `types` ends
    /// with 0; those that are extensions are offered. 0, with path and type those of the choice, or
    /// fileCancelled, with the old path and no type. Saving with a `dialogId` below 1 leaves the
    /// first type of the list as the type. `ownerWindow` is an HWND or null. FatalError 20008 for
    /// more types than fit.
    std::int16_t ChooseFile(FileDialogMode mode, void* ownerWindow, const FileType* types,
                            std::int16_t dialogId);

    QualityCallback callback = nullptr;
    /// Four characters that identify the owner of the callback.
    std::uint32_t tag = 0;
    /// The system's handle; null while closed.
    void* handle = nullptr;
    std::int32_t position = 0;
    FileType type = noFileType;
    /// Zero-terminated. Its first byte 0 means that no file is named.
    char path[filePathCapacity] = {};
    /// The dialog over which a file dialog of this file stands; null while none is open.
    void* owner = nullptr;

  private:
    void CheckOpenable() const;
};
