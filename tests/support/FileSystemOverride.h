// For tests that make a step of the system's files fail.
#pragma once

#include "files/FileSystem.h"

/// Puts the table back as it was when the object goes.
class FileSystemOverride {
  public:
    FileSystemOverride() : saved(fileSystem) {}
    FileSystemOverride(const FileSystemOverride&) = delete;
    FileSystemOverride& operator=(const FileSystemOverride&) = delete;
    ~FileSystemOverride() { fileSystem = saved; }

  private:
    FileSystemServices saved;
};
