// The system's store for the preference file's path, as tests watch it and make it fail.
#pragma once

#include <string>

#include "files/PreferencePlace.h"

/// What the store holds, and what it refuses.
struct PreferencePlaceState {
    std::string module;
    std::string stored;
    bool hasPath = false;
    bool canOpen = true;
    bool canWrite = true;
    bool canClose = true;
    int writes = 0;
    int closes = 0;
};

/// Stands for the system's store while it lives. One at a time.
class PreferencePlaceInMemory {
  public:
    /// `module` is the file that the program takes for its own.
    explicit PreferencePlaceInMemory(const std::string& module) : saved(preferencePlace) {
        state = {};
        state.module = module;
        preferencePlace.open = []() -> void* { return state.canOpen ? &state : nullptr; };
        preferencePlace.readPath = ReadPath;
        preferencePlace.writePath = WritePath;
        preferencePlace.close = Close;
        preferencePlace.modulePath = ModulePath;
    }
    PreferencePlaceInMemory(const PreferencePlaceInMemory&) = delete;
    PreferencePlaceInMemory& operator=(const PreferencePlaceInMemory&) = delete;
    ~PreferencePlaceInMemory() { preferencePlace = saved; }

    PreferencePlaceState* operator->() { return &state; }

  private:
    static bool Copy(const std::string& text, char* path, std::size_t capacity) {
        if (text.size() >= capacity) {
            return false;
        }
        path[text.copy(path, capacity)] = '\0';
        return true;
    }
    static bool ReadPath(void*, char* path, std::size_t capacity) {
        return state.hasPath && Copy(state.stored, path, capacity);
    }
    static bool WritePath(void*, const char* path) {
        ++state.writes;
        if (state.canWrite) {
            state.stored = path;
            state.hasPath = true;
        }
        return state.canWrite;
    }
    static bool Close(void*) {
        ++state.closes;
        return state.canClose;
    }
    static bool ModulePath(char* path, std::size_t capacity) {
        return !state.module.empty() && Copy(state.module, path, capacity);
    }

    static inline PreferencePlaceState state;
    PreferencePlaceServices saved;
};
