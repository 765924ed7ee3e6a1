// The host's services, as thin wrappers over the callbacks of its record.
//
// Declared here, below everything that uses them; defined in shell/PhotoshopUtilities, where the
// host's record is known.
//
// "Missing" below means that the record's field, or the member of its suite, is null. Version and
// count of a suite are ignored: hosts leave them at 0.
#pragma once

#include <cstdint>

#include "hostapi/FilterRecord.h"

/// The record of the call that is running; the entry rewrites it on every call, and it is valid
/// only during one. Null before the first.
extern hostapi::FilterRecord* filterRecord;

/// The host's window (an HWND), over which dialogs and alerts open; every run notes it. Null if the
/// host gives none.
extern void* hostWindow;

/// Returns false when the service is missing.
bool TestAbort();
/// Does nothing when the service is missing, or when there is nothing to measure against: some
/// hosts divide by `total`.
void ShowProgress(std::int32_t done, std::int32_t total);
/// Stores the previous rectangles and fetches the next. Returns the host's result, or 17500 when
/// the service is missing.
std::int16_t AdvanceState();

// Memory of the host. A missing service is FatalError 17500.
/// Null when the host has no memory left.
hostapi::Handle NewHostHandle(std::int32_t size);
/// A null handle is ignored.
void DisposeHostHandle(hostapi::Handle handle);
/// Bytes free. May be the same large number whatever is taken, up to 0x7FFFFFFF.
std::int32_t BufferSpace();
/// 0 or the host's error; `*id` names the block. Blocks are not cleared.
std::int16_t AllocateBuffer(std::int32_t size, hostapi::BufferID* id);
void* LockBuffer(hostapi::BufferID id, bool moveHigh);
void FreeBuffer(hostapi::BufferID id);

/// The target of DisplayPixels: the head of a dialog's window record.
struct ViewTarget {
    /// HWND.
    void* window;
    /// HRGN; null leaves the drawing unclipped.
    void* clipRegion;
};

/// Draws the map's rectangle at (`row`, `column`) of the target. Returns the host's result, or
/// 17500 when the service is missing. FatalError 20008 when the window gives no device context.
/// The map's stored bounds may be inclusive: they are raised to the rectangle's.
/// Defined with the window system, in shell/PhotoshopUtilities.Win.cpp.
std::int16_t DisplayPixels(const hostapi::PSPixelMap* map, const hostapi::VRect* rect,
                           std::int32_t row, std::int32_t column, const ViewTarget* target);

/// The same for a window that is drawn again: without a device context nothing is drawn.
std::int16_t DisplayPixelsIfDrawable(const hostapi::PSPixelMap* map, const hostapi::VRect* rect,
                                     std::int32_t row, std::int32_t column,
                                     const ViewTarget* target);

/// Converts `count` colours between two image modes through the host, one call each. Both arrays
/// are packed, one byte a component, with as many components as the mode has planes. Equal modes
/// are a no-op that leaves `target` alone. Returns 0, the first other result of the host,
/// filterBadParameters for a mode that has no colour space, or 17500 when the service is missing.
std::int16_t ConvertColors(hostapi::ImageMode sourceMode, hostapi::ImageMode targetMode,
                           std::int32_t count, const std::uint8_t* source, std::uint8_t* target);
