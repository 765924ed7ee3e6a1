#include "tests/files/memory/JPEGMemory.h"

#include <cstdio>
#include <cstdlib>
// After <cstdio>, whose types it uses.
#include <jpeglib.h>

namespace {

int asked = 0;
int failFrom = 0;
int live = 0;

void* Allocate(std::size_t size) {
    ++asked;
    const bool fails = failFrom != 0 && asked >= failFrom;
    void* const block = fails ? nullptr : std::malloc(size);
    live += block != nullptr ? 1 : 0;
    return block;
}

void Free(void* block) {
    live -= block != nullptr ? 1 : 0;
    std::free(block);
}

}  // namespace

void CountJPEGBlocks(int nth) {
    asked = 0;
    live = 0;
    failFrom = nth;
}

int JPEGBlocksAsked() {
    return asked;
}

int JPEGBlocksLive() {
    return live;
}

// The library's link to memory, by its names; its headers for programs don't declare them.
extern "C" {

void* jpeg_get_small(j_common_ptr info, std::size_t size);
void jpeg_free_small(j_common_ptr info, void* block, std::size_t size);
void* jpeg_get_large(j_common_ptr info, std::size_t size);
void jpeg_free_large(j_common_ptr info, void* block, std::size_t size);
std::size_t jpeg_mem_available(j_common_ptr info, std::size_t least, std::size_t most,
                               std::size_t taken);
void jpeg_open_backing_store(j_common_ptr info, void* store, long size);
long jpeg_mem_init(j_common_ptr info);
void jpeg_mem_term(j_common_ptr info);

void* jpeg_get_small(j_common_ptr, std::size_t size) {
    return Allocate(size);
}
void jpeg_free_small(j_common_ptr, void* block, std::size_t) {
    Free(block);
}
void* jpeg_get_large(j_common_ptr, std::size_t size) {
    return Allocate(size);
}
void jpeg_free_large(j_common_ptr, void* block, std::size_t) {
    Free(block);
}
std::size_t jpeg_mem_available(j_common_ptr, std::size_t, std::size_t most, std::size_t) {
    return most;
}
void jpeg_open_backing_store(j_common_ptr info, void*, long) {
    info->err->error_exit(info);
}
long jpeg_mem_init(j_common_ptr) {
    return 0;
}
void jpeg_mem_term(j_common_ptr) {}
}
