#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "files/FileSystem.h"

namespace {

// A handle is the descriptor plus 1, since descriptor 0 exists and a null handle doesn't.

int DescriptorOf(void* handle) {
    return static_cast<int>(reinterpret_cast<std::intptr_t>(handle) - 1);
}

void* HandleOf(int descriptor) {
    return reinterpret_cast<void*>(std::intptr_t{descriptor} + 1);
}

int FlagsFor(FileAccess access, FileDisposition disposition) {
    int flags = O_CLOEXEC | O_NONBLOCK;  // a pipe without a partner would hold the program up
    switch (access) {
        case FileAccess::read:
            flags |= O_RDONLY;
            break;
        case FileAccess::write:
            flags |= O_WRONLY;
            break;
        case FileAccess::readAndWrite:
            flags |= O_RDWR;
            break;
    }
    return disposition == FileDisposition::existing ? flags : flags | O_CREAT;
}

bool IsRegular(int descriptor) {
    struct stat status;
    return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

/// Files and devices; no folder.
bool CanHoldBytes(int descriptor) {
    struct stat status;
    return fstat(descriptor, &status) == 0 && !S_ISDIR(status.st_mode);
}

/// Locks the file for this handle alone. It is emptied only after that: somebody else's file stays
/// unchanged.
bool Take(int descriptor, FileDisposition disposition) {
    if (!CanHoldBytes(descriptor) || flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        return false;
    }
    return disposition != FileDisposition::create || !IsRegular(descriptor) ||
           ftruncate(descriptor, 0) == 0;
}

void* Open(const char* path, FileAccess access, FileDisposition disposition) {
    constexpr mode_t everybody = 0666;
    const int descriptor = open(path, FlagsFor(access, disposition), everybody);
    if (descriptor < 0) {
        return nullptr;
    }
    if (!Take(descriptor, disposition)) {
        const int reason = errno;
        close(descriptor);
        errno = reason;
        return nullptr;
    }
    return HandleOf(descriptor);
}

bool Close(void* handle) {
    return close(DescriptorOf(handle)) == 0;
}

bool Remove(const char* path) {
    return unlink(path) == 0;
}

std::int64_t Size(void* handle) {
    struct stat status;
    return fstat(DescriptorOf(handle), &status) == 0 ? status.st_size : -1;
}

bool Seek(void* handle, std::int32_t position) {
    return lseek(DescriptorOf(handle), position, SEEK_SET) >= 0;
}

bool SetEnd(void* handle) {
    const int descriptor = DescriptorOf(handle);
    const off_t end = lseek(descriptor, 0, SEEK_CUR);
    return end >= 0 && ftruncate(descriptor, end) == 0;
}

/// Repeats until everything is transferred: the system may stop in the middle.
template <typename Transfer>
bool TransferAll(Transfer transfer, std::int32_t count, std::int32_t* transferred) {
    *transferred = 0;
    while (*transferred < count) {
        const ssize_t done = transfer(*transferred, static_cast<size_t>(count - *transferred));
        if (done == 0) {
            break;
        }
        if (done > 0) {
            *transferred += static_cast<std::int32_t>(done);
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

bool Read(void* handle, void* buffer, std::int32_t count, std::int32_t* transferred) {
    const auto transfer = [&](std::int32_t offset, size_t length) {
        return read(DescriptorOf(handle), static_cast<char*>(buffer) + offset, length);
    };
    return TransferAll(transfer, count, transferred);
}

bool Write(void* handle, const void* buffer, std::int32_t count, std::int32_t* transferred) {
    const auto transfer = [&](std::int32_t offset, size_t length) {
        return write(DescriptorOf(handle), static_cast<const char*>(buffer) + offset, length);
    };
    return TransferAll(transfer, count, transferred);
}

/// A descriptor that only reads is refused, as on Windows; the system would wait for the disk even
/// so. What is no file on a disk has nothing to flush.
bool Flush(void* handle) {
    if ((fcntl(DescriptorOf(handle), F_GETFL) & O_ACCMODE) == O_RDONLY) {
        errno = EBADF;
        return false;
    }
    return fdatasync(DescriptorOf(handle)) == 0 || errno == EINVAL || errno == EROFS;
}

int LastError() {
    return errno;
}

bool WasDenied() {
    return errno == EACCES || errno == EPERM;
}

bool WaitsForOthers() {
    if (errno != EWOULDBLOCK) {
        return false;
    }
    constexpr useconds_t moment = 20000;
    usleep(moment);
    return true;
}

// The kernel looks at the memory itself when it reads or writes; null is what remains.

bool IsReadable(const void* block, std::int32_t) {
    return block != nullptr;
}

bool IsWritable(void* block, std::int32_t) {
    return block != nullptr;
}

/// No byte of a UTF-8 character looks like another character.
bool IsLeadByte(unsigned char) {
    return false;
}

}  // namespace

FileSystemServices fileSystem = {Open,      Close,          Remove,     Size,       Seek,
                                 SetEnd,    Read,           Write,      Flush,      LastError,
                                 WasDenied, WaitsForOthers, IsReadable, IsWritable, IsLeadByte};
