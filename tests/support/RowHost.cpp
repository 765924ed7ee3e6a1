#include "tests/support/RowHost.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <utility>

#include "base/HostServices.h"
#include "base/Rectangles.h"

using hostapi::Rect;

namespace {

RowHost* serving = nullptr;

Rect Intersection(const Rect& a, const Rect& b) {
    const Rect both{std::max(a.top, b.top), std::max(a.left, b.left), std::min(a.bottom, b.bottom),
                    std::min(a.right, b.right)};
    return IsEmpty(both) ? Rect{} : both;
}

std::size_t Columns(const Rect& rect) {
    return static_cast<std::size_t>(rect.right - rect.left);
}

/// A null pointer for a block without bytes.
std::uint8_t* Data(std::vector<std::uint8_t>& bytes) {
    return bytes.empty() ? nullptr : bytes.data();
}

}  // namespace

std::uint8_t* HostImage::At(int x, int y) {
    return bytes.data() + ((y - bounds.top) * Width() + x - bounds.left) * planes;
}

const std::uint8_t* HostImage::At(int x, int y) const {
    return bytes.data() + ((y - bounds.top) * Width() + x - bounds.left) * planes;
}

HostImage NoiseImage(const Rect& bounds, int planes, unsigned seed) {
    HostImage image{bounds, planes, {}};
    image.bytes.resize(static_cast<std::size_t>(image.Width() * image.Height() * planes));
    std::mt19937 generator(seed);
    std::generate(image.bytes.begin(), image.bytes.end(),
                  [&] { return static_cast<std::uint8_t>(generator()); });
    return image;
}

struct RowHost::Callbacks {
    static hostapi::Boolean8 HOST_CALL Abort() {
        serving->events.emplace_back("abort?");
        return serving->abortCalls++ == serving->abortAt ? 1 : 0;
    }
    static void HOST_CALL Progress(std::int32_t done, std::int32_t total) {
        serving->events.push_back("progress " + std::to_string(done) + "/" + std::to_string(total));
    }
    static std::int16_t HOST_CALL AdvanceState() { return serving->Advance(); }
};

RowHost::RowHost(HostImage newImage) : image(std::move(newImage)) {}

RowHost::~RowHost() {
    if (serving == this) {
        serving = nullptr;
    }
}

void RowHost::Attach(hostapi::FilterRecord& newRecord) {
    serving = this;
    record = &newRecord;
    record->imageMode = hostapi::imageModeRGB;
    record->planes = static_cast<std::int16_t>(image.planes);
    record->filterRect = image.bounds;
    record->abortProc = Callbacks::Abort;
    record->progressProc = Callbacks::Progress;
    record->advanceState = Callbacks::AdvanceState;
}

void RowHost::Finish() {
    const Rect& rect = output.rect;
    const std::size_t rowBytes = Columns(rect) * static_cast<std::size_t>(image.planes);
    auto from = output.bytes.begin();
    for (int y = rect.top; y < rect.bottom && !output.bytes.empty(); ++y) {
        std::copy_n(from, rowBytes, image.At(rect.left, y));
        from += static_cast<std::ptrdiff_t>(rowBytes);
    }
    output = {};
}

/// Leaves the rectangle as it is where the host shrinks silently.
void RowHost::Deliver(Rect& asked, Delivery& delivery) const {
    delivery = {};
    delivery.rect = Intersection(asked, image.bounds);
    if (!AreEqual(delivery.rect, asked)) {
        EXPECT_NE(shrinking, Shrinking::none) << "a rectangle beyond the image";
        if (shrinking == Shrinking::openly) {
            asked = delivery.rect;
        }
    }
    const std::size_t rowBytes = Columns(delivery.rect) * static_cast<std::size_t>(image.planes);
    for (int y = delivery.rect.top; y < delivery.rect.bottom; ++y) {
        const std::uint8_t* const row = image.At(delivery.rect.left, y);
        delivery.bytes.insert(delivery.bytes.end(), row, row + rowBytes);
    }
    delivery.bytes.shrink_to_fit();
}

void RowHost::DeliverMask(int call) {
    record->maskData = nullptr;
    record->maskRowBytes = 0;
    maskRow = {};
    if (mask.empty() || IsEmpty(record->maskRect)) {
        return;
    }
    maskRow.rect = Intersection(record->maskRect, image.bounds);
    if (shrinking == Shrinking::openly) {
        record->maskRect = maskRow.rect;
    }
    for (int y = maskRow.rect.top; y < maskRow.rect.bottom; ++y) {
        const auto row = mask.begin() + (y - image.bounds.top) * image.Width() + maskRow.rect.left -
                         image.bounds.left;
        maskRow.bytes.insert(maskRow.bytes.end(), row,
                             row + static_cast<std::ptrdiff_t>(Columns(maskRow.rect)));
    }
    maskRow.bytes.shrink_to_fit();
    record->maskRowBytes = static_cast<std::int32_t>(Columns(maskRow.rect));
    if (withoutMaskDataFrom < 0 || call < withoutMaskDataFrom) {
        record->maskData = Data(maskRow.bytes);
    }
}

std::int16_t RowHost::Advance() {
    events.emplace_back("advance");
    const int call = static_cast<int>(requests.size());
    requests.push_back({record->inRect, record->outRect, record->maskRect, record->inLoPlane,
                        record->inHiPlane, record->outLoPlane, record->outHiPlane});
    Finish();
    record->inData = nullptr;
    record->outData = nullptr;
    if (onAdvance) {
        onAdvance();
    }
    if (const auto failure = failAdvance.find(call); failure != failAdvance.end()) {
        return failure->second;
    }
    Deliver(record->inRect, input);
    Deliver(record->outRect, output);
    record->inRowBytes = static_cast<std::int32_t>(Columns(input.rect)) * image.planes;
    record->outRowBytes = static_cast<std::int32_t>(Columns(output.rect)) * image.planes;
    if (withoutInDataFrom < 0 || call < withoutInDataFrom) {
        record->inData = Data(input.bytes);
    }
    if (withoutOutDataFrom < 0 || call < withoutOutDataFrom) {
        record->outData = Data(output.bytes);
    }
    DeliverMask(call);
    return 0;
}
