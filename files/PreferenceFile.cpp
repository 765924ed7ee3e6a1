#include "files/PreferenceFile.h"

#include "files/FileSystem.h"
#include "files/PreferencePlace.h"
#include "resources/Strings.h"

namespace {

constexpr char source[] = "PreferenceFile";

[[noreturn]] void ThrowSystemError() {
    throw static_cast<std::int16_t>(fileSystem.lastError());
}

void CheckStore(bool succeeded) {
    if (!succeeded) {
        FatalError(faultBadArgument, source, __LINE__);
    }
}

/// The open store; closed on every way out.
class Store {
  public:
    Store() : handle(preferencePlace.open()) { CheckStore(handle != nullptr); }
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;
    ~Store() {
        if (handle != nullptr) {
            preferencePlace.close(handle);
        }
    }

    void* Handle() const { return handle; }
    void Close() {
        void* const closing = handle;
        handle = nullptr;
        CheckStore(preferencePlace.close(closing));
    }

  private:
    void* handle;
};

}  // namespace

void PreferenceFile::UseStandardPath(void* store) {
    char modulePath[filePathCapacity];
    CheckStore(preferencePlace.modulePath(modulePath, sizeof modulePath));
    SetPath(modulePath);
    SetFileName(StringText(stringPreferenceFile));
    CheckStore(preferencePlace.writePath(store, path));
}

bool PreferenceFile::TryOpen() {
    handle = fileSystem.open(path, FileAccess::readAndWrite, FileDisposition::openOrCreate);
    return handle != nullptr;
}

std::int16_t PreferenceFile::OpenPreferenceFile() {
    Store store;
    const bool isStored = preferencePlace.readPath(store.Handle(), path, sizeof path);
    if (!isStored || !TryOpen()) {
        UseStandardPath(store.Handle());
        TryOpen();
    }
    store.Close();
    CheckError(handle, faultNoPreferenceFile, source, __LINE__);
    return fileSucceeded;
}

void PreferenceFile::ReadNext(void* buffer, std::int32_t count) {
    std::int32_t transferred = 0;
    if (!fileSystem.read(handle, buffer, count, &transferred)) {
        ThrowSystemError();
    }
    if (transferred != count) {
        throw std::int16_t{preferenceShortRead};
    }
}

void PreferenceFile::WriteNext(const void* buffer, std::int32_t count) {
    std::int32_t transferred = 0;
    if (!fileSystem.write(handle, buffer, count, &transferred)) {
        ThrowSystemError();
    }
    if (transferred != count) {
        throw std::int16_t{preferenceShortWrite};
    }
}
