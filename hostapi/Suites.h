// The callback suites and records that hang off a FilterRecord. Natural alignment.
#pragma once

#include "hostapi/HostTypes.h"

namespace hostapi {

/// Blocks that count against the host's memory. A host may leave version and count at 0 although
/// the functions are there: test the pointers.
struct BufferProcs {
    std::int16_t version;
    std::int16_t count;
    std::int16_t(HOST_CALL* allocateProc)(std::int32_t size, BufferID* id);
    void*(HOST_CALL* lockProc)(BufferID id, Boolean8 moveHigh);
    void(HOST_CALL* unlockProc)(BufferID id);
    void(HOST_CALL* freeProc)(BufferID id);
    std::int32_t(HOST_CALL* spaceProc)();
};

/// Relocatable blocks. A size query may return 0 and a resize do nothing.
struct HandleProcs {
    std::int16_t version;
    std::int16_t count;
    Handle(HOST_CALL* newProc)(std::int32_t size);
    void(HOST_CALL* disposeProc)(Handle handle);
    std::int32_t(HOST_CALL* getSizeProc)(Handle handle);
    std::int16_t(HOST_CALL* setSizeProc)(Handle handle, std::int32_t size);
    void*(HOST_CALL* lockProc)(Handle handle, Boolean8 moveHigh);
    void(HOST_CALL* unlockProc)(Handle handle);
    void(HOST_CALL* recoverSpaceProc)(std::int32_t size);
    /// Newer hosts only.
    void(HOST_CALL* disposeRegularHandleProc)(Handle handle);
};

/// Describes pixels in memory for displayPixels.
struct PSPixelMap {
    std::int32_t version;
    VRect bounds;
    std::int32_t imageMode;
    std::int32_t rowBytes;
    std::int32_t colBytes;
    std::int32_t planeBytes;
    void* baseAddr;
    void* mat;
    void* masks;
    std::int32_t maskPhaseRow;
    std::int32_t maskPhaseCol;
};

/// Values of PSPixelMap::imageMode and FilterRecord::imageMode.
enum ImageMode : std::int16_t {
    imageModeGrey = 1,
    imageModeRGB = 3,
    imageModeCMYK = 4,
    imageModeHSL = 5,
    imageModeHSB = 6,
    imageModeLab = 9,
    imageModeRGB48 = 11,  // 16 bits a channel
};

enum ColorServicesSelector : std::int16_t {
    colorServicesChooseColor = 0,
    colorServicesConvertColor = 1,
    colorServicesSamplePoint = 2,
    colorServicesGetSpecialColor = 3,
};

enum ColorSpace : std::int16_t {
    colorSpaceChosen = -1,
    colorSpaceRGB = 0,
    colorSpaceHSB = 1,
    colorSpaceCMYK = 2,
    colorSpaceLab = 3,
    colorSpaceGrey = 4,
    colorSpaceHSL = 5,
    colorSpaceXYZ = 6,
};

/// For 8-bit data the components run from 0 to 255. The reserved pointers must be null.
struct ColorServicesInfo {
    std::int32_t infoSize;
    std::int16_t selector;
    std::int16_t sourceSpace;
    std::int16_t resultSpace;
    Boolean8 resultGamutInfoValid;
    Boolean8 resultInGamut;
    void* reservedSourceSpaceInfo;
    void* reservedResultSpaceInfo;
    std::int16_t colorComponents[4];
    void* reserved;
    /// The prompt, the sampled point or the special colour's number, by selector.
    union {
        void* pickerPrompt;
        Point* globalSamplePoint;
        std::intptr_t specialColorID;
    } selectorParameter;
};

constexpr bool is64Bit = sizeof(void*) == 8;
/// The first value for a 32-bit build, the second for a 64-bit one.
constexpr std::size_t ByBitness(std::size_t in32, std::size_t in64) {
    return is64Bit ? in64 : in32;
}

static_assert(offsetof(BufferProcs, allocateProc) == ByBitness(4, 8));
static_assert(offsetof(BufferProcs, spaceProc) == ByBitness(20, 40));
static_assert(offsetof(HandleProcs, newProc) == ByBitness(4, 8));
static_assert(offsetof(HandleProcs, disposeRegularHandleProc) == ByBitness(32, 64));
static_assert(offsetof(PSPixelMap, bounds) == 4);
static_assert(offsetof(PSPixelMap, imageMode) == 20);
static_assert(offsetof(PSPixelMap, planeBytes) == 32);
static_assert(offsetof(PSPixelMap, baseAddr) == ByBitness(36, 40));
static_assert(offsetof(PSPixelMap, mat) == ByBitness(40, 48));
static_assert(offsetof(PSPixelMap, masks) == ByBitness(44, 56));
static_assert(offsetof(PSPixelMap, maskPhaseRow) == ByBitness(48, 64));
static_assert(sizeof(PSPixelMap) == ByBitness(56, 72));
static_assert(offsetof(ColorServicesInfo, selector) == 4);
static_assert(offsetof(ColorServicesInfo, sourceSpace) == 6);
static_assert(offsetof(ColorServicesInfo, resultSpace) == 8);
static_assert(offsetof(ColorServicesInfo, resultGamutInfoValid) == 10);
static_assert(offsetof(ColorServicesInfo, reservedSourceSpaceInfo) == ByBitness(12, 16));
static_assert(offsetof(ColorServicesInfo, colorComponents) == ByBitness(20, 32));
static_assert(offsetof(ColorServicesInfo, reserved) == ByBitness(28, 40));
static_assert(offsetof(ColorServicesInfo, selectorParameter) == ByBitness(32, 48));

}  // namespace hostapi
