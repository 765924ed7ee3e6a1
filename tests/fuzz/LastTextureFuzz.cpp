// Reads any bytes as the file of the last texture; for libFuzzer.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "base/HostServices.h"
#include "host/record/MemorySuites.h"
#include "raster/PicStorage.h"
#include "shell/transfer/LastTexture.h"
#include "tests/fuzz/Require.h"

namespace {

/// Little, so that runs are quick: textures of more than some 180 by 180 meet a shortage.
constexpr std::int32_t hostMemory = 1 << 18;

/// Writing again gives the bytes that were read.
void CheckWritten(const PaintClass& pic, const std::uint8_t* data, std::size_t size) {
    char* written = nullptr;
    std::size_t writtenSize = 0;
    {
        const FilePointer stream(open_memstream(&written, &writtenSize));
        Require(WriteTexture(stream.get(), pic));
    }
    Require(writtenSize <= size && std::memcmp(written, data, writtenSize) == 0);
    std::free(written);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;  // no stream can be had of nothing
    }
    host::MemorySettings settings;
    settings.budget = hostMemory;
    host::MemorySuites suites(settings);
    hostapi::FilterRecord record{};
    record.bufferProcs = suites.Buffers();
    record.handleProcs = suites.Handles();
    filterRecord = &record;
    {
        std::string copy(reinterpret_cast<const char*>(data), size);
        const FilePointer stream(fmemopen(copy.data(), copy.size(), "rb"));
        const auto pic = ReadTexture(stream.get());
        if (pic) {
            CheckWritten(*pic, data, size);
        }
    }
    filterRecord = nullptr;
    suites.CheckAtEnd();
    Require(suites.FoundFaults().IsEmpty());
    return 0;
}
