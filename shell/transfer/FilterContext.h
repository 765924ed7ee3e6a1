// The argument of every selector handler, and the block that survives between host calls.
#pragma once

#include <cstddef>
#include <cstdint>

#include "hostapi/FilterRecord.h"

struct FilterContext {
    /// The call's result to the host.
    std::int16_t result;
    hostapi::FilterRecord* record;
};

/// The host keeps it through FilterRecord::parameters and returns it on later calls. Read and
/// written by dereferencing the handle each time, without locking it.
struct ParametersBlock {
    /// "VELK"; written at creation and read by nobody.
    char tag[4];
    /// 0: the next start is interactive; 1: it repeats the last texture.
    std::int32_t ran;
    /// 1 once the last-texture file has been written under this block.
    std::uint8_t haveLastTexture;
    std::uint8_t reserved[3];
};
static_assert(sizeof(ParametersBlock) == 12);
static_assert(offsetof(ParametersBlock, ran) == 4);
static_assert(offsetof(ParametersBlock, haveLastTexture) == 8);

/// The record's block; null where the host has none, or lost it.
inline ParametersBlock* ParametersOf(const hostapi::FilterRecord& record) {
    const hostapi::Handle handle = record.parameters;
    return handle != nullptr ? reinterpret_cast<ParametersBlock*>(*handle) : nullptr;
}
