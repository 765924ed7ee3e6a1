// Where undo stores get their files from while a test lasts.
#pragma once

#include "raster/PicStorage.h"

/// Puts another source of files in place of the system's for as long as it lives.
class FileSource {
  public:
    explicit FileSource(FilePointer (*source)()) : saved(PicStorage::openFile) {
        PicStorage::openFile = source;
    }
    FileSource(const FileSource&) = delete;
    FileSource& operator=(const FileSource&) = delete;
    ~FileSource() { PicStorage::openFile = saved; }

  private:
    FilePointer (*saved)();
};
