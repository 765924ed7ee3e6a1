// The preference file: where it is, and plain sequential reading and writing.
#pragma once

#include "files/File.h"

/// Thrown as a std::int16_t by reading and writing; the callers report all of them alike.
enum PreferenceFault : std::int16_t {
    preferenceShortWrite = -34,
    preferenceShortRead = -39,
    preferenceBadHead = -43,
    preferenceNoMemory = -108,
};

/// Raised when there is no preference file and none can be made.
constexpr std::int16_t faultNoPreferenceFile = 19000;

/// Closes itself.
class PreferenceFile : public File {
  public:
    PreferenceFile() = default;
    ~PreferenceFile() { Close(); }

    /// Finds the file through the system's store, or beside the program's own module, and opens it
    /// for reading and writing, empty if it is new. A stored path that cannot be opened is replaced
    /// by that beside the module. A user who has no right to the machine's store has a store of
    /// their own, and one who has no right to the file beside the module a file among their own
    /// data, which their own store leads to. For a file that somebody else has open it waits, a
    /// second at most. Returns 0. FatalError 20008 when the store cannot be used, 19000 when no
    /// file can be opened.
    std::int16_t OpenPreferenceFile();

    // From the handle's current position on; the file's own position stays as it is. Throws the
    // system's error as a std::int16_t when the call fails.
    /// Throws preferenceShortRead at the end of the file.
    void ReadNext(void* buffer, std::int32_t count);
    /// Throws preferenceShortWrite when the system takes less.
    void WriteNext(const void* buffer, std::int32_t count);

    /// Stays 0.
    std::int16_t unused = 0;

  private:
    bool OpenStored(void* store, bool isUsers);
    bool OpenBesideModule(void* store);
    void OpenAmongUsersData(void* store);
    void OpenUsersOwn();
    /// `place` is a path in the folder that the file goes to.
    void StoreStandardPath(void* store, const char* place);
    bool TryOpen();

    /// Attempts to open the file since OpenPreferenceFile began.
    int attempts = 0;
};
