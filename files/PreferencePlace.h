// Where the system keeps the path of the preference file: one table of functions, filled by
// PreferencePlace.Win.cpp (the registry) or PreferencePlace.Native.cpp. Tests exchange members.
//
// The machine has a store for all users. Ordinary users may not write there, and have each one of
// their own.
#pragma once

#include <cstddef>

enum class PreferenceOwner { machine, user };

/// An attempt to open a store.
struct PreferenceStore {
    /// The system's handle; null on failure.
    void* handle;
    /// Whether the failure is that the user has no right to write there.
    bool isDenied;
};

// Paths are zero-terminated. What gives one returns false if there is none, or none that fits.
struct PreferencePlaceServices {
    /// Opens the owner's store for writing, making it if need be.
    PreferenceStore (*open)(PreferenceOwner owner);
    /// The path in the machine's store, for those who may only read there.
    bool (*readMachinePath)(char* path, std::size_t capacity);
    /// The path in an open store.
    bool (*readPath)(void* store, char* path, std::size_t capacity);
    bool (*writePath)(void* store, const char* path);
    bool (*close)(void* store);
    /// The file of the module that this code is in.
    bool (*modulePath)(char* path, std::size_t capacity);
    /// The product's folder among the user's application data, made if need be; a separator ends
    /// it.
    bool (*userFolder)(char* path, std::size_t capacity);
};

extern PreferencePlaceServices preferencePlace;
