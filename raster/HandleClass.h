// A system memory block for the pixel work of the filters.
#pragma once

#include <cstddef>

class HandleClass {
  public:
    explicit HandleClass(std::size_t size);
    HandleClass(const HandleClass&) = delete;
    HandleClass& operator=(const HandleClass&) = delete;
    virtual ~HandleClass();

    /// The block's address. Test `failed` first; null where there is no block.
    void* Lock();
    /// Asserts that there is a block.
    void Unlock();

    /// The allocator: the system's, or a test's that runs short. A null result is a failure.
    static void* (*allocate)(std::size_t size);

    /// True if the allocation failed.
    bool failed;
    /// The system's handle, or null.
    void* handle;
};
