// The smallest host that a transfer needs: an image of any number of planes, served a rectangle at
// a time.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "hostapi/FilterRecord.h"

/// Interleaved rows from the top, in a rectangle of the host's coordinates.
struct HostImage {
    hostapi::Rect bounds;
    int planes;
    std::vector<std::uint8_t> bytes;

    int Width() const { return bounds.right - bounds.left; }
    int Height() const { return bounds.bottom - bounds.top; }
    /// `x` and `y` in the host's coordinates.
    std::uint8_t* At(int x, int y);
    const std::uint8_t* At(int x, int y) const;
    bool operator==(const HostImage& other) const { return bytes == other.bytes; }
};

/// An image of random bytes, the same for the same `seed`.
HostImage NoiseImage(const hostapi::Rect& bounds, int planes, unsigned seed = 1);

enum class Shrinking { none, openly, silently };

/// The request of one call of advanceState.
struct AdvanceRequest {
    hostapi::Rect in;
    hostapi::Rect out;
    hostapi::Rect mask;
    std::int16_t inLoPlane;
    std::int16_t inHiPlane;
    std::int16_t outLoPlane;
    std::int16_t outHiPlane;
};

/// Delivers every rectangle in a block of its own that ends after its last pixel, so that a memory
/// checker sees each byte too many, and stores what was written at the next call or in Finish().
/// Attach() makes it the one object that serves; it must outlive the use of the record.
class RowHost {
  public:
    explicit RowHost(HostImage newImage);
    RowHost(const RowHost&) = delete;
    RowHost& operator=(const RowHost&) = delete;
    ~RowHost();

    /// Sets planes, filterRect (the whole image), abort, progress and advance procedures.
    void Attach(hostapi::FilterRecord& newRecord);
    /// Stores the last row. A real host does it when the start selector has returned.
    void Finish();

    /// As it stands, stored rows included.
    HostImage image;
    /// One byte a pixel of the image, handed over whatever haveMask says; or none.
    std::vector<std::uint8_t> mask;

    Shrinking shrinking = Shrinking::none;
    /// advanceState returns the code instead of delivering, by its call from 0 on.
    std::map<int, std::int16_t> failAdvance;
    /// abortProc returns true at its call number, from 0 on; -1 never.
    int abortAt = -1;
    /// From this call of advanceState on the pointers are null, though it returns 0; -1 never.
    int withoutInDataFrom = -1;
    int withoutOutDataFrom = -1;
    int withoutMaskDataFrom = -1;
    /// Runs at the start of every advanceState; may throw.
    std::function<void()> onAdvance;

    /// "progress 0/5", "abort?", "advance", in order.
    std::vector<std::string> events;
    std::vector<AdvanceRequest> requests;

  private:
    struct Callbacks;
    struct Delivery {
        hostapi::Rect rect{};
        std::vector<std::uint8_t> bytes;
    };

    std::int16_t Advance();
    void Deliver(hostapi::Rect& asked, Delivery& delivery) const;
    void DeliverMask(int call);

    hostapi::FilterRecord* record = nullptr;
    int abortCalls = 0;
    Delivery input;
    Delivery output;
    Delivery maskRow;
};
