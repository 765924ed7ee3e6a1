#include "files/PreferenceFile.h"

#include "files/FileSystem.h"
#include "files/PreferencePlace.h"
#include "resources/Strings.h"

namespace {

constexpr char source[] = "PreferenceFile";
/// How often a file that somebody else has open is tried again: about a second in all. Another
/// host's plug-in, or a scanner, has it for a few milliseconds, and a failure would cost the
/// texture that is being applied.
constexpr int patience = 50;

[[noreturn]] void ThrowSystemError() {
    throw static_cast<std::int16_t>(fileSystem.lastError());
}

void CheckStore(bool succeeded) {
    if (!succeeded) {
        FatalError(faultBadArgument, source, __LINE__);
    }
}

/// An open store; closed on every way out.
class Store {
  public:
    /// The machine's, or the user's where that is denied.
    Store() {
        PreferenceStore opened = preferencePlace.open(PreferenceOwner::machine);
        isUsers = opened.handle == nullptr && opened.isDenied;
        if (isUsers) {
            opened = preferencePlace.open(PreferenceOwner::user);
        }
        handle = opened.handle;
        CheckStore(handle != nullptr);
    }
    explicit Store(PreferenceOwner owner)
        : handle(preferencePlace.open(owner).handle), isUsers(owner == PreferenceOwner::user) {
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

/// A path that the machine's store has for everybody comes first. What is kept there for others may
/// not be this user's to write, and then they have their own; a file that fails for another reason
/// is replaced like any stored one.
bool PreferenceFile::OpenStored(void* store, bool isUsers) {
    if (isUsers && preferencePlace.readMachinePath(path, sizeof path)) {
        if (TryOpen()) {
            return true;
        }
        if (!fileSystem.wasDenied()) {
            return false;
        }
    }
    return preferencePlace.readPath(store, path, sizeof path) && TryOpen();
}

bool PreferenceFile::OpenBesideModule(void* store) {
    char place[filePathCapacity];
    CheckStore(preferencePlace.modulePath(place, sizeof place));
    StoreStandardPath(store, place);
    return TryOpen();
}

void PreferenceFile::OpenAmongUsersData(void* store) {
    char place[filePathCapacity];
    if (preferencePlace.userFolder(place, sizeof place)) {
        StoreStandardPath(store, place);
        TryOpen();
    }
}

/// The place for a user who may write the machine's store but not beside the module. The machine's
/// store leads no other user to this user's data: each has a store of their own.
void PreferenceFile::OpenUsersOwn() {
    Store own(PreferenceOwner::user);
    if (!preferencePlace.readPath(own.Handle(), path, sizeof path) || !TryOpen()) {
        OpenAmongUsersData(own.Handle());
    }
    own.Close();
}

void PreferenceFile::StoreStandardPath(void* store, const char* place) {
    SetPath(place);
    SetFileName(StringText(stringPreferenceFile));
    CheckStore(preferencePlace.writePath(store, path));
}

bool PreferenceFile::TryOpen() {
    do {
        handle = fileSystem.open(path, FileAccess::readAndWrite, FileDisposition::openOrCreate);
    } while (handle == nullptr && attempts++ < patience && fileSystem.waitsForOthers());
    return handle != nullptr;
}

std::int16_t PreferenceFile::OpenPreferenceFile() {
    attempts = 0;
    Store store;
    if (!OpenStored(store.Handle(), store.IsUsers()) && !OpenBesideModule(store.Handle()) &&
        fileSystem.wasDenied()) {
        if (store.IsUsers()) {
            OpenAmongUsersData(store.Handle());
        } else {
            OpenUsersOwn();
        }
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
