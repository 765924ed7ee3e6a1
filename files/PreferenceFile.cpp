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

/// The open store; closed on every way out. The machine's, or the user's where that is denied.
class Store {
  public:
    Store() {
        PreferenceStore opened = preferencePlace.open(PreferenceOwner::machine);
        isUsers = opened.handle == nullptr && opened.isDenied;
        if (isUsers) {
            opened = preferencePlace.open(PreferenceOwner::user);
        }
        handle = opened.handle;
        CheckStore(handle != nullptr);
    }
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;
    ~Store() {
        if (handle != nullptr) {
            preferencePlace.close(handle);
        }
    }

    void* Handle() const { return handle; }
    bool IsUsers() const { return isUsers; }
    void Close() {
        void* const closing = handle;
        handle = nullptr;
        CheckStore(preferencePlace.close(closing));
    }

  private:
    void* handle;
    bool isUsers;
};

}  // namespace

/// A path that the machine's store has for everybody comes first. Whether the file can be opened is
/// what counts: what is kept there for others may not be this user's to write.
bool PreferenceFile::OpenStored(void* store, bool isUsers) {
    if (isUsers && preferencePlace.readMachinePath(path, sizeof path) && TryOpen()) {
        return true;
    }
    return preferencePlace.readPath(store, path, sizeof path) && TryOpen();
}

/// Beside the module, or, where that is denied, among the user's data.
void PreferenceFile::OpenStandard(void* store) {
    char place[filePathCapacity];
    CheckStore(preferencePlace.modulePath(place, sizeof place));
    StoreStandardPath(store, place);
    if (!TryOpen() && fileSystem.wasDenied() && preferencePlace.userFolder(place, sizeof place)) {
        StoreStandardPath(store, place);
        TryOpen();
    }
}

void PreferenceFile::StoreStandardPath(void* store, const char* place) {
    SetPath(place);
    SetFileName(StringText(stringPreferenceFile));
    CheckStore(preferencePlace.writePath(store, path));
}

bool PreferenceFile::TryOpen() {
    handle = fileSystem.open(path, FileAccess::readAndWrite, FileDisposition::openOrCreate);
    return handle != nullptr;
}

std::int16_t PreferenceFile::OpenPreferenceFile() {
    Store store;
    if (!OpenStored(store.Handle(), store.IsUsers())) {
        OpenStandard(store.Handle());
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
