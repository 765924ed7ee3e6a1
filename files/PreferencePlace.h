// Where the system keeps the path of the preference file: one table of functions, filled by
// PreferencePlace.Win.cpp (the registry) or PreferencePlace.Native.cpp. Tests exchange members.
#pragma once

#include <cstddef>

struct PreferencePlaceServices {
    /// Opens the store, making it if need be. Null on failure.
    void* (*open)();
    /// The stored path, zero-terminated. False if there is none, or none that fits.
    bool (*readPath)(void* store, char* path, std::size_t capacity);
    bool (*writePath)(void* store, const char* path);
    bool (*close)(void* store);
    /// The file of the module that this code is in, zero-terminated. False on failure.
    bool (*modulePath)(char* path, std::size_t capacity);
};

extern PreferencePlaceServices preferencePlace;
