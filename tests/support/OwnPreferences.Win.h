// The settings of a test's own, for tests that load the product itself.
#pragma once

#include <windows.h>

#include <filesystem>
#include <stdexcept>
#include <string>

/// While the object lives the product keeps its settings in a new file in `folder`. It finds that
/// file by the registry, so only one of the tests that load it may run at a time.
class OwnPreferences {
  public:
    explicit OwnPreferences(const std::filesystem::path& folder) {
        if (RegCreateKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE\\Norvanta\\Brenvalder 3.0\\Zandermolite",
                            0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key,
                            nullptr) != ERROR_SUCCESS) {
            throw std::runtime_error("the product's registry key cannot be opened");
        }
        DWORD size = sizeof before;
        hasBefore = RegQueryValueExA(key, value, nullptr, nullptr, before, &size) == ERROR_SUCCESS;
        sizeBefore = size;
        const std::string path = (folder / "Zandermolite3.prf").string();
        RegSetValueExA(key, value, 0, REG_SZ, reinterpret_cast<const BYTE*>(path.c_str()),
                       static_cast<DWORD>(path.size()));
    }
    OwnPreferences(const OwnPreferences&) = delete;
    OwnPreferences& operator=(const OwnPreferences&) = delete;
    ~OwnPreferences() {
        if (hasBefore) {
            RegSetValueExA(key, value, 0, REG_SZ, before, sizeBefore);
        } else {
            RegDeleteValueA(key, value);
        }
        RegCloseKey(key);
    }

  private:
    static constexpr char value[] = "PreferenceFile";

    HKEY key = nullptr;
    BYTE before[MAX_PATH] = {};
    DWORD sizeBefore = 0;
    bool hasBefore = false;
};
