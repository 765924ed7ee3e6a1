// The one-level undo buffer of a raster: in the host's memory, or else in an anonymous temporary
// file. The user gets no message either way.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>

#include "raster/HostBuffer.h"

class PicClass;

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FilePointer = std::unique_ptr<std::FILE, FileCloser>;

/// A temporary file without a name, readable and writable, gone when it is closed; null on failure.
/// Platform-bound.
FilePointer OpenAnonymousFile();

class PicStorage {
  public:
    /// Sizes itself to `pic` and stores its pixels at once. With neither memory nor disk the object
    /// is valid all the same, and undo is silently unavailable.
    explicit PicStorage(PicClass* pic);
    PicStorage(const PicStorage&) = delete;
    PicStorage& operator=(const PicStorage&) = delete;
    virtual ~PicStorage();

    // Each asserts that `pic` has the size that the storage was built for.

    /// Saves the pixels. False without memory and disk, or if the disk is full.
    bool Store(PicClass* pic);
    /// Exchanges the saved pixels with those of `pic`, all four bytes of each.
    void Swap(PicClass* pic);
    /// Copies the saved pixels back and leaves the store as it is.
    void Restore(PicClass* pic);

    bool InFile() const { return inFile; }

    /// Where the file comes from; tests put in files that fail.
    static FilePointer (*openFile)();

  private:
    void ReserveFile();
    void SwapWithMemory(PicClass* pic);
    void SwapWithFile(PicClass* pic);
    std::size_t PixelCount() const;

    unsigned char* memory = nullptr;
    bool inFile = false;
    short grX;
    short grY;
    FilePointer file;
    HostBuffer storage;
};
