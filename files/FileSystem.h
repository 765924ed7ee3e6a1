// The boundary between File and the system's files: one table of functions, filled by
// File.Win.cpp or File.Native.cpp. Tests exchange single members to make a step fail.
#pragma once

#include <cstdint>

enum class FileAccess { read, write, readAndWrite };

enum class FileDisposition {
    /// The file must exist.
    existing,
    /// The file begins empty, whether it existed or not.
    create,
    /// Opened as it is, or made empty.
    openOrCreate,
};

struct FileSystemServices {
    /// The system's handle; null on failure. Nobody else can open the file meanwhile.
    void* (*open)(const char* path, FileAccess access, FileDisposition disposition);
    bool (*close)(void* handle);
    bool (*remove)(const char* path);
    /// In bytes; below 0 on failure.
    std::int64_t (*size)(void* handle);
    bool (*seek)(void* handle, std::int32_t position);
    /// Ends the file at the handle's current position.
    bool (*setEnd)(void* handle);
    // From the handle's current position, which moves along. False when the call fails;
    // `*transferred` may be less than `count` without that.
    bool (*read)(void* handle, void* buffer, std::int32_t count, std::int32_t* transferred);
    bool (*write)(void* handle, const void* buffer, std::int32_t count, std::int32_t* transferred);
    /// To the disk.
    bool (*flush)(void* handle);
    /// Why the last call of this table failed, in the system's own numbers.
    int (*lastError)();
    /// Whether it failed because the user has no right to what was asked for.
    bool (*wasDenied)();
    /// Whether it failed because somebody else has the file open, and, if so, waits a moment, in
    /// which they may have closed it.
    bool (*waitsForOthers)();
    // Whether the program may touch all of a block of memory. Null never is.
    bool (*isReadable)(const void* block, std::int32_t count);
    bool (*isWritable)(void* block, std::int32_t count);
    /// Whether the byte is the first of a double-byte character in the system's code page.
    bool (*isLeadByte)(unsigned char byte);
};

extern FileSystemServices fileSystem;
