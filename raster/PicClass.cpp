#include "raster/PicClass.h"

#include <algorithm>
#include <limits>

#include "base/TryMake.h"
#include "hostapi/Results.h"
#include "raster/Truncation.h"

namespace {

/// The size of a raster's pixels in bytes; 0 for a raster that cannot be.
std::int32_t PixelBlockSize(short width, short height) {
    if (width < 1 || height < 1) {
        return 0;
    }
    const std::int64_t size = static_cast<std::int64_t>(width) * height * bytesPerPixel;
    return size <= std::numeric_limits<std::int32_t>::max() ? static_cast<std::int32_t>(size) : 0;
}

hostapi::PSPixelMap MapOf(short width, short height, unsigned char* base) {
    hostapi::PSPixelMap map{};
    map.version = 1;
    map.bounds = {0, 0, height - 1, width - 1};
    map.imageMode = hostapi::imageModeRGB;
    map.rowBytes = width * bytesPerPixel;
    map.colBytes = bytesPerPixel;
    map.planeBytes = 1;
    map.baseAddr = base;
    return map;
}

/// Whether the host could give one more block of this size.
bool ProbeMemory(std::int32_t size) {
    HostBuffer probe;
    const bool enough = probe.Allocate(size) == hostapi::noErr;
    probe.Free();
    return enough;
}

}  // namespace

PicClass::PicClass(short width, short height, bool withUndo) {
    if (!AllocatePixels(width, height)) {
        Discard();
        return;
    }
    if (withUndo) {
        // The first undo state is the white raster.
        undo = TryMake<PicStorage>(this);
        if (!undo) {
            Discard();
            return;
        }
    }
    if (!ProbeMemory(storage.Size())) {
        Discard();
    }
}

PicClass::~PicClass() = default;

bool PicClass::AllocatePixels(short width, short height) {
    const std::int32_t size = PixelBlockSize(width, height);
    if (size == 0) {
        return false;
    }
    pixelMap = TryMake<hostapi::PSPixelMap>();
    if (!pixelMap || storage.Allocate(size) != hostapi::noErr) {
        return false;
    }
    base = static_cast<unsigned char*>(storage.Lock(false));
    if (base == nullptr) {
        return false;
    }
    *pixelMap = MapOf(width, height, base);
    // White; the alpha bytes are written as well, since the block is not cleared and a saved
    // texture should not contain old memory.
    std::memset(base, 0xFF, static_cast<std::size_t>(size));
    grX = width;
    grY = height;
    rowBytes = width * bytesPerPixel;
    locked = true;
    return true;
}

/// Makes the raster a failed one: without pixels, so that every access to it fails its assertion.
void PicClass::Discard() {
    undo.reset();
    pixelMap.reset();
    base = nullptr;
    locked = false;
    storage.Free();
}

void PicClass::GetPixelInterpolated(double x, double y, unsigned char rgb[3]) const {
    AssertLocked("PicClass / Zeile 419 !(locked)");
    const short ix = TruncateToShort(x);
    const short iy = TruncateToShort(y);
    const auto nextX = static_cast<short>(ix + 1);
    const auto nextY = static_cast<short>(iy + 1);
    const unsigned char* a = PixelAddressWrapped(ix, iy);
    const unsigned char* b = PixelAddressWrapped(nextX, iy);
    const unsigned char* c = PixelAddressWrapped(ix, nextY);
    const unsigned char* d = PixelAddressWrapped(nextX, nextY);
    // Negative for a negative coordinate, since truncation goes towards zero; hence the clamp.
    const double fx = x - ix;
    const double fy = y - iy;
    for (int i = 0; i < 3; ++i) {
        const double alongY = (1 - fy) * (a[i] + b[i]) + (c[i] + d[i]) * fy;
        const double alongX = (1 - fx) * (a[i] + c[i]) + (b[i] + d[i]) * fx;
        const double value = alongY * 0.25 + alongX * 0.25;
        rgb[i] = static_cast<unsigned char>(TruncateToShort(std::clamp(value, 0.0, 255.0)));
    }
}

void PicClass::SetAllAlpha(unsigned char value) {
    AssertLocked(lockedAtSetAlpha);
    // Whole pixels, which the compiler takes several at a time.
    const Pixel alpha = Pixel{value} << 24;
    unsigned char* const end = base + grY * rowBytes;
    for (unsigned char* address = base; address != end; address += bytesPerPixel) {
        const Pixel pixel = (Load(address) & 0x00FFFFFF) | alpha;
        std::memcpy(address, &pixel, sizeof pixel);
    }
}

void PicClass::AlphaFromGrey() {
    AssertLocked(lockedAtGetPixel);
    unsigned char* const end = base + grY * rowBytes;
    for (unsigned char* pixel = base; pixel != end; pixel += bytesPerPixel) {
        pixel[3] = static_cast<unsigned char>(pixel[0] / 3 + pixel[1] / 3 + pixel[2] / 3);
    }
}

PicClass* PicClass::GetClone() {
    if (!clone) {
        clone = TryMake<PicClass>(grX, grY, false);
        if (clone && !clone->pixelMap) {
            clone.reset();
        }
    }
    return clone.get();
}

bool PicClass::HasRoomForClone() const {
    if (clone) {
        return true;
    }
    HostBuffer pixels;
    return pixels.Allocate(storage.Size()) == hostapi::noErr && pixels.Lock(false) != nullptr &&
           ProbeMemory(storage.Size());
}

/// Both have the same size: a clone is built with its raster's and neither changes.
void PicClass::CopyPixels(const PicClass& from, PicClass& to) {
    from.AssertLocked(lockedAtGetPixel);
    to.AssertLocked(lockedAtSetPixel);
    std::memcpy(to.base, from.base, static_cast<std::size_t>(from.grY * from.rowBytes));
}

void PicClass::CopyToClone() {
    if (clone) {
        CopyPixels(*this, *clone);
    }
}

void PicClass::CopyFromClone() {
    if (clone) {
        CopyPixels(*clone, *this);
    }
}

void PicClass::DeleteClone() {
    clone.reset();
}

bool PicClass::SaveUndo() {
    Assert(undo != nullptr, "PicClass.Win / Zeile 333 !(undo != nil)");
    return undo->Store(this);
}

void PicClass::SwapUndo() {
    Assert(undo != nullptr, "PicClass.Win / Zeile 360 !(undo != nil)");
    undo->Swap(this);
}
