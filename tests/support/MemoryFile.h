// A disk with one file in memory, for tests that read very many.
#pragma once

#include <algorithm>
#include <cstring>
#include <string>

#include "tests/support/FileSystemOverride.h"

/// While it lives every path is that of a file with the bytes of Contents(), only to be read. One
/// at a time.
class MemoryFile {
  public:
    MemoryFile() {
        position = 0;
        openCount = 0;
        fileSystem.open = [](const char*, FileAccess access, FileDisposition) -> void* {
            openCount += access == FileAccess::read ? 1 : 0;
            return access == FileAccess::read ? &contents : nullptr;
        };
        fileSystem.close = [](void*) { return openCount-- > 0; };
        fileSystem.flush = [](void*) { return true; };
        fileSystem.size = [](void*) { return static_cast<std::int64_t>(contents.size()); };
        fileSystem.seek = [](void*, std::int32_t newPosition) {
            position = static_cast<std::size_t>(newPosition);
            return newPosition >= 0;
        };
        fileSystem.read = [](void*, void* buffer, std::int32_t count, std::int32_t* transferred) {
            const std::size_t rest = contents.size() - std::min(position, contents.size());
            const std::size_t length = std::min(static_cast<std::size_t>(count), rest);
            std::memcpy(buffer, contents.data() + position, length);
            position += length;
            *transferred = static_cast<std::int32_t>(length);
            return true;
        };
    }

    static std::string& Contents() { return contents; }
    /// Files that have been opened and not closed.
    static int OpenCount() { return openCount; }

  private:
    static inline std::string contents;
    static inline std::size_t position = 0;
    static inline int openCount = 0;
    FileSystemOverride system;
};
