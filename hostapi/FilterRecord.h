// The record that a host hands to a filter plug-in with every selector but About.
#pragma once

#include "hostapi/Suites.h"

namespace hostapi {

/// The target of FilterRecord::platformData, and the first field of the About record.
struct PlatformData {
    /// The host's window (an HWND).
    void* window;
};

/// The About selector's record, in place of a FilterRecord. It is shorter: touch no other field.
struct AboutRecord {
    PlatformData* platformData;
};

// Packed to 4 in both bitnesses, so in a 64-bit process a pointer may stand at an offset that is a
// multiple of 4 only.
#pragma pack(push, 4)
struct FilterRecord {
    std::int32_t serial;
    Boolean8(HOST_CALL* abortProc)();
    void(HOST_CALL* progressProc)(std::int32_t done, std::int32_t total);
    /// The plug-in's block; the host keeps it from call to call.
    Handle parameters;
    Point imageSize;
    /// Interleaved planes of inData and outData; also the step between pixels.
    std::int16_t planes;
    /// The selection's bounds, in image coordinates.
    Rect filterRect;
    RGBColor background;
    RGBColor foreground;
    std::int32_t maxSpace;
    /// Bytes that the plug-in asks the host to keep free for it.
    std::int32_t bufferSpace;
    Rect inRect;
    std::int16_t inLoPlane;
    std::int16_t inHiPlane;
    Rect outRect;
    std::int16_t outLoPlane;
    std::int16_t outHiPlane;
    std::uint8_t* inData;
    std::int32_t inRowBytes;
    std::uint8_t* outData;
    std::int32_t outRowBytes;
    Boolean8 isFloating;
    /// 1 only if the selection mask is handed over in maskData.
    Boolean8 haveMask;
    Boolean8 autoMask;
    Rect maskRect;
    std::uint8_t* maskData;
    std::int32_t maskRowBytes;
    std::uint8_t backColor[4];
    std::uint8_t foreColor[4];
    std::int32_t hostSig;
    void* hostProc;
    std::int16_t imageMode;
    /// Pixels per inch.
    Fixed imageHRes;
    Fixed imageVRes;
    Point floatCoord;
    Point wholeSize;
    /// The monitor's primaries and gamma.
    Fixed monitor[10];
    PlatformData* platformData;
    BufferProcs* bufferProcs;
    void* resourceProcs;
    void* processEvent;
    std::int16_t(HOST_CALL* displayPixels)(const PSPixelMap* source, const VRect* sourceRect,
                                           std::int32_t dstRow, std::int32_t dstCol,
                                           void* platformContext);
    HandleProcs* handleProcs;
    Boolean8 supportsDummyChannels;
    Boolean8 supportsAlternateLayouts;
    std::int16_t wantLayout;
    /// 1 to 7: the row of the filter case table that applies.
    std::int16_t filterCase;
    std::int16_t dummyPlaneValue;
    void* premiereHook;
    std::int16_t(HOST_CALL* advanceState)();
    Boolean8 supportsAbsolute;
    Boolean8 wantsAbsolute;
    void* getProperty;
    Boolean8 cannotUndo;
    Boolean8 supportsPadding;
    std::int16_t inputPadding;
    std::int16_t outputPadding;
    std::int16_t maskPadding;
    std::int8_t samplingSupport;
    std::int8_t reservedByte;
    Fixed inputRate;
    Fixed maskRate;
    std::int16_t(HOST_CALL* colorServices)(ColorServicesInfo* info);
    std::int16_t layers[19];
    /// Everything from here on may be missing in a host of version 3: don't read it.
    std::int32_t inColumnBytes;
    std::int32_t inPlaneBytes;
    std::int32_t outColumnBytes;
    std::int32_t outPlaneBytes;
    void* imageServicesProcs;
    void* propertyProcs;
    std::int16_t tiles[16];
    void* descriptorParameters;
    void* errorString;
    void* channelPortProcs;
    void* documentInfo;
    void* sSPBasic;
    void* plugInRef;
    std::int32_t depth;
    Handle iccProfileData;
    std::int32_t iccProfileSize;
    std::int32_t canUseICCProfiles;
    std::uint8_t reserved[116];
};
#pragma pack(pop)

static_assert(offsetof(FilterRecord, serial) == ByBitness(0, 0));
static_assert(offsetof(FilterRecord, abortProc) == ByBitness(4, 4));
static_assert(offsetof(FilterRecord, progressProc) == ByBitness(8, 12));
static_assert(offsetof(FilterRecord, parameters) == ByBitness(12, 20));
static_assert(offsetof(FilterRecord, imageSize) == ByBitness(16, 28));
static_assert(offsetof(FilterRecord, planes) == ByBitness(20, 32));
static_assert(offsetof(FilterRecord, filterRect) == ByBitness(22, 34));
static_assert(offsetof(FilterRecord, background) == ByBitness(30, 42));
static_assert(offsetof(FilterRecord, foreground) == ByBitness(36, 48));
static_assert(offsetof(FilterRecord, maxSpace) == ByBitness(44, 56));
static_assert(offsetof(FilterRecord, bufferSpace) == ByBitness(48, 60));
static_assert(offsetof(FilterRecord, inRect) == ByBitness(52, 64));
static_assert(offsetof(FilterRecord, inLoPlane) == ByBitness(60, 72));
static_assert(offsetof(FilterRecord, inHiPlane) == ByBitness(62, 74));
static_assert(offsetof(FilterRecord, outRect) == ByBitness(64, 76));
static_assert(offsetof(FilterRecord, outLoPlane) == ByBitness(72, 84));
static_assert(offsetof(FilterRecord, outHiPlane) == ByBitness(74, 86));
static_assert(offsetof(FilterRecord, inData) == ByBitness(76, 88));
static_assert(offsetof(FilterRecord, inRowBytes) == ByBitness(80, 96));
static_assert(offsetof(FilterRecord, outData) == ByBitness(84, 100));
static_assert(offsetof(FilterRecord, outRowBytes) == ByBitness(88, 108));
static_assert(offsetof(FilterRecord, isFloating) == ByBitness(92, 112));
static_assert(offsetof(FilterRecord, haveMask) == ByBitness(93, 113));
static_assert(offsetof(FilterRecord, autoMask) == ByBitness(94, 114));
static_assert(offsetof(FilterRecord, maskRect) == ByBitness(96, 116));
static_assert(offsetof(FilterRecord, maskData) == ByBitness(104, 124));
static_assert(offsetof(FilterRecord, maskRowBytes) == ByBitness(108, 132));
static_assert(offsetof(FilterRecord, backColor) == ByBitness(112, 136));
static_assert(offsetof(FilterRecord, foreColor) == ByBitness(116, 140));
static_assert(offsetof(FilterRecord, hostSig) == ByBitness(120, 144));
static_assert(offsetof(FilterRecord, hostProc) == ByBitness(124, 148));
static_assert(offsetof(FilterRecord, imageMode) == ByBitness(128, 156));
static_assert(offsetof(FilterRecord, imageHRes) == ByBitness(132, 160));
static_assert(offsetof(FilterRecord, imageVRes) == ByBitness(136, 164));
static_assert(offsetof(FilterRecord, floatCoord) == ByBitness(140, 168));
static_assert(offsetof(FilterRecord, wholeSize) == ByBitness(144, 172));
static_assert(offsetof(FilterRecord, monitor) == ByBitness(148, 176));
static_assert(offsetof(FilterRecord, platformData) == ByBitness(188, 216));
static_assert(offsetof(FilterRecord, bufferProcs) == ByBitness(192, 224));
static_assert(offsetof(FilterRecord, resourceProcs) == ByBitness(196, 232));
static_assert(offsetof(FilterRecord, processEvent) == ByBitness(200, 240));
static_assert(offsetof(FilterRecord, displayPixels) == ByBitness(204, 248));
static_assert(offsetof(FilterRecord, handleProcs) == ByBitness(208, 256));
static_assert(offsetof(FilterRecord, supportsDummyChannels) == ByBitness(212, 264));
static_assert(offsetof(FilterRecord, supportsAlternateLayouts) == ByBitness(213, 265));
static_assert(offsetof(FilterRecord, wantLayout) == ByBitness(214, 266));
static_assert(offsetof(FilterRecord, filterCase) == ByBitness(216, 268));
static_assert(offsetof(FilterRecord, dummyPlaneValue) == ByBitness(218, 270));
static_assert(offsetof(FilterRecord, premiereHook) == ByBitness(220, 272));
static_assert(offsetof(FilterRecord, advanceState) == ByBitness(224, 280));
static_assert(offsetof(FilterRecord, supportsAbsolute) == ByBitness(228, 288));
static_assert(offsetof(FilterRecord, wantsAbsolute) == ByBitness(229, 289));
static_assert(offsetof(FilterRecord, getProperty) == ByBitness(232, 292));
static_assert(offsetof(FilterRecord, cannotUndo) == ByBitness(236, 300));
static_assert(offsetof(FilterRecord, supportsPadding) == ByBitness(237, 301));
static_assert(offsetof(FilterRecord, inputPadding) == ByBitness(238, 302));
static_assert(offsetof(FilterRecord, outputPadding) == ByBitness(240, 304));
static_assert(offsetof(FilterRecord, maskPadding) == ByBitness(242, 306));
static_assert(offsetof(FilterRecord, samplingSupport) == ByBitness(244, 308));
static_assert(offsetof(FilterRecord, reservedByte) == ByBitness(245, 309));
static_assert(offsetof(FilterRecord, inputRate) == ByBitness(248, 312));
static_assert(offsetof(FilterRecord, maskRate) == ByBitness(252, 316));
static_assert(offsetof(FilterRecord, colorServices) == ByBitness(256, 320));
static_assert(offsetof(FilterRecord, layers) == ByBitness(260, 328));
static_assert(offsetof(FilterRecord, inColumnBytes) == ByBitness(300, 368));
static_assert(offsetof(FilterRecord, inPlaneBytes) == ByBitness(304, 372));
static_assert(offsetof(FilterRecord, outColumnBytes) == ByBitness(308, 376));
static_assert(offsetof(FilterRecord, outPlaneBytes) == ByBitness(312, 380));
static_assert(offsetof(FilterRecord, imageServicesProcs) == ByBitness(316, 384));
static_assert(offsetof(FilterRecord, propertyProcs) == ByBitness(320, 392));
static_assert(offsetof(FilterRecord, tiles) == ByBitness(324, 400));
static_assert(offsetof(FilterRecord, descriptorParameters) == ByBitness(356, 432));
static_assert(offsetof(FilterRecord, errorString) == ByBitness(360, 440));
static_assert(offsetof(FilterRecord, channelPortProcs) == ByBitness(364, 448));
static_assert(offsetof(FilterRecord, documentInfo) == ByBitness(368, 456));
static_assert(offsetof(FilterRecord, sSPBasic) == ByBitness(372, 464));
static_assert(offsetof(FilterRecord, plugInRef) == ByBitness(376, 472));
static_assert(offsetof(FilterRecord, depth) == ByBitness(380, 480));
static_assert(offsetof(FilterRecord, iccProfileData) == ByBitness(384, 484));
static_assert(offsetof(FilterRecord, iccProfileSize) == ByBitness(388, 492));
static_assert(offsetof(FilterRecord, canUseICCProfiles) == ByBitness(392, 496));
static_assert(offsetof(FilterRecord, reserved) == ByBitness(396, 500));
static_assert(sizeof(FilterRecord) == ByBitness(512, 616));

}  // namespace hostapi
