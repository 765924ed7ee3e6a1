#include "host/record/PixelExchange.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <string>
#include <utility>

#include "base/Rectangles.h"
#include "hostapi/Results.h"

namespace host {

namespace {

constexpr std::size_t guardBytes = 256;
// A filter that trusts its own idea of a rectangle writes beyond the delivered one by no more than
// this before it is found.
constexpr std::int64_t largestExcess = std::int64_t{1} << 20;
// Enough for many rows: a filter that writes to a row it has handed back is found.
constexpr std::size_t quarantineBytes = std::size_t{1} << 20;

bool IsInverted(const hostapi::VRect& rect) {
    return rect.right < rect.left || rect.bottom < rect.top;
}

std::string Text(const hostapi::Rect& rect) {
    return "(top " + std::to_string(rect.top) + ", left " + std::to_string(rect.left) +
           ", bottom " + std::to_string(rect.bottom) + ", right " + std::to_string(rect.right) +
           ")";
}

std::int64_t Area(const hostapi::VRect& rect) {
    return std::int64_t{Width(rect)} * Height(rect);
}

/// A row of pixels: the first byte wanted and the bytes to the next pixel.
template <typename Byte>
struct PixelRow {
    Byte* first;
    int step;
};

// `planes` bytes of each pixel.
void CopyPixels(PixelRow<const std::uint8_t> from, PixelRow<std::uint8_t> to, int planes,
                int pixels) {
    if (from.step == planes && to.step == planes) {
        std::memcpy(to.first, from.first,
                    static_cast<std::size_t>(planes) * static_cast<std::size_t>(pixels));
        return;
    }
    for (int x = 0; x < pixels; ++x) {
        std::memcpy(to.first, from.first, static_cast<std::size_t>(planes));
        from.first += from.step;
        to.first += to.step;
    }
}

// `from` to `to` by `weight` of 255, rounded.
std::uint8_t Blend(int from, int to, int weight) {
    return static_cast<std::uint8_t>((from * (255 - weight) + to * weight + 127) / 255);
}

int MatteValue(Matte matte) {
    switch (matte) {
        case Matte::white:
            return 255;
        case Matte::grey:
            return 128;
        default:
            return 0;
    }
}

}  // namespace

std::size_t PixelExchange::Request::RowBytes() const {
    return static_cast<std::size_t>(Width(rect)) * static_cast<std::size_t>(planes);
}

std::size_t PixelExchange::Request::Size() const {
    return RowBytes() * static_cast<std::size_t>(Height(rect));
}

PixelExchange::PixelExchange(const Picture& picture, const Selection& newSelection,
                             const ExchangeSettings& newSettings, Faults& newFaults)
    : original(picture),
      working(picture),
      selection(newSelection),
      settings(newSettings),
      faults(newFaults),
      quarantine(quarantineBytes) {}

std::int16_t PixelExchange::Advance(hostapi::FilterRecord& record) {
    if (settings.lastChunkOnly) {
        TakeBack(output);
    }
    Store();
    record.inData = record.outData = record.maskData = nullptr;
    record.inRowBytes = record.outRowBytes = record.maskRowBytes = 0;
    if (const std::int16_t failure = PlannedFailure(record); failure != 0) {
        return failure;
    }
    std::optional<Request> in, out, maskRequest;
    if (!Accept("inRect", record.inRect, record.inLoPlane, record.inHiPlane, in) ||
        !Accept("outRect", record.outRect, record.outLoPlane, record.outHiPlane, out) ||
        !Accept("maskRect", record.maskRect, 0, 0, maskRequest)) {
        return hostapi::filterBadParameters;
    }
    try {
        DeliverInput(record, in);
        DeliverOutput(record, out);
        DeliverMask(record, maskRequest);
    } catch (const std::bad_alloc&) {
        return hostapi::memFullErr;
    }
    if (out || in) {
        rowsDelivered += Height(out ? out->rect : in->rect);
    }
    return hostapi::noErr;
}

std::int16_t PixelExchange::PlannedFailure(const hostapi::FilterRecord& record) const {
    for (const auto& [row, code] : settings.failAdvance) {
        const int y = selection.bounds.top + row + settings.origin.v;
        auto covers = [y](int top, int bottom) { return y >= top && y < bottom; };
        if (covers(record.inRect.top, record.inRect.bottom) ||
            covers(record.outRect.top, record.outRect.bottom)) {
            return code;
        }
    }
    return hostapi::noErr;
}

// Whether a rectangle of the record makes sense; no request if it's empty.
bool PixelExchange::Accept(const char* name, hostapi::Rect& rect, int firstPlane, int lastPlane,
                           std::optional<Request>& request) {
    auto refuse = [&](const char* reason) {
        faults.Add(std::string("advanceState: ") + name + " " + Text(rect) + " " + reason);
        return false;
    };
    const hostapi::VRect asked = Offset(Widened(rect), -settings.origin.h, -settings.origin.v);
    if (IsInverted(asked)) {
        return refuse("is inverted");
    }
    if (IsEmpty(asked)) {
        return true;
    }
    if (firstPlane < 0 || lastPlane < firstPlane || lastPlane >= original.planes) {
        return refuse("has planes that the image doesn't have");
    }
    hostapi::VRect given = asked;
    if (!Contains(original.Bounds(), asked)) {
        if (!settings.shrinkRectangles && !settings.shrinkSilently) {
            return refuse("reaches beyond the image");
        }
        given = Intersect(asked, original.Bounds());
        if (IsEmpty(given)) {
            given = {0, 0, 0, 0};
        }
        if (!settings.shrinkSilently) {
            rect = Narrowed(IsEmpty(given) ? given
                                           : Offset(given, settings.origin.h, settings.origin.v));
        }
    }
    if (!IsEmpty(given)) {
        const int planes = lastPlane - firstPlane + 1;
        const std::int64_t excess = (Area(asked) - Area(given)) * planes;
        request = Request{given, firstPlane, planes,
                          static_cast<std::size_t>(std::min(excess, largestExcess))};
    }
    return true;
}

void PixelExchange::Deliver(const Request& request, const char* name, Deliveries& target) {
    target.emplace(
        Delivery{CheckedBlock(request.Size(), name, guardBytes + request.excessBytes), request});
}

void PixelExchange::DeliverInput(hostapi::FilterRecord& record,
                                 const std::optional<Request>& request) {
    if (!request) {
        return;
    }
    Deliver(*request, "inData", input);
    CopyOut(original, *input);
    ApplyMatte(*input);
    record.inData = input->block.Data();
    record.inRowBytes = static_cast<std::int32_t>(request->RowBytes());
}

void PixelExchange::DeliverOutput(hostapi::FilterRecord& record,
                                  const std::optional<Request>& request) {
    if (!request) {
        return;
    }
    Deliver(*request, "outData", output);
    CopyOut(working, *output);
    record.outData = output->block.Data();
    record.outRowBytes = static_cast<std::int32_t>(request->RowBytes());
}

void PixelExchange::DeliverMask(hostapi::FilterRecord& record,
                                const std::optional<Request>& request) {
    if (!request || !settings.handOverMask) {
        return;
    }
    Deliver(*request, "maskData", mask);
    std::uint8_t* byte = mask->block.Data();
    for (int y = request->rect.top; y < request->rect.bottom; ++y) {
        for (int x = request->rect.left; x < request->rect.right; ++x) {
            *byte++ = selection.Coverage(x, y);
        }
    }
    record.maskData = mask->block.Data();
    record.maskRowBytes = static_cast<std::int32_t>(request->RowBytes());
}

void PixelExchange::CopyOut(const Picture& picture, Delivery& delivery) const {
    const Request& request = delivery.request;
    std::uint8_t* target = delivery.block.Data();
    for (int y = request.rect.top; y < request.rect.bottom; ++y) {
        CopyPixels({picture.Pixel(request.rect.left, y) + request.firstPlane, picture.planes},
                   {target, request.planes}, request.planes, Width(request.rect));
        target += request.RowBytes();
    }
}

void PixelExchange::CopyBack(Delivery& delivery) {
    const Request& request = delivery.request;
    const std::uint8_t* source = delivery.block.Data();
    for (int y = request.rect.top; y < request.rect.bottom; ++y) {
        CopyPixels({source, request.planes},
                   {working.Pixel(request.rect.left, y) + request.firstPlane, working.planes},
                   request.planes, Width(request.rect));
        source += request.RowBytes();
    }
}

// Mixes the colour planes with the matte where the picture is transparent.
void PixelExchange::ApplyMatte(Delivery& delivery) const {
    if (original.planes != 4 || settings.matte < Matte::black) {
        return;
    }
    const Request& request = delivery.request;
    const int matte = MatteValue(settings.matte);
    std::uint8_t* byte = delivery.block.Data();
    for (int y = request.rect.top; y < request.rect.bottom; ++y) {
        for (int x = request.rect.left; x < request.rect.right; ++x) {
            const int opacity = original.Pixel(x, y)[3];
            for (int plane = 0; plane < request.planes; ++plane, ++byte) {
                if (request.firstPlane + plane < 3) {
                    *byte = Blend(matte, *byte, opacity);
                }
            }
        }
    }
}

void PixelExchange::Store() {
    if (output) {
        CopyBack(*output);
    }
    TakeBack(input);
    TakeBack(output);
    TakeBack(mask);
}

void PixelExchange::CheckLateWrites() {
    quarantine.Check(faults);
}

void PixelExchange::TakeBack(Deliveries& delivery) {
    if (!delivery) {
        return;
    }
    delivery->block.Check(faults);
    delivery->block.Retire();
    quarantine.Add(std::move(delivery->block), faults);
    delivery.reset();
}

Picture PixelExchange::Result() const {
    Picture result = original;
    const hostapi::VRect changed = Intersect(selection.bounds, original.Bounds());
    if (IsEmpty(changed)) {
        return result;
    }
    const int planes = settings.protectTransparency ? 3 : original.planes;
    for (int y = changed.top; y < changed.bottom; ++y) {
        const std::uint8_t* from = working.Pixel(changed.left, y);
        std::uint8_t* to = result.Pixel(changed.left, y);
        if (!selection.HasMask()) {
            CopyPixels({from, working.planes}, {to, result.planes}, planes, Width(changed));
            continue;
        }
        for (int x = changed.left; x < changed.right; ++x) {
            const int coverage = selection.Coverage(x, y);
            for (int plane = 0; plane < planes; ++plane) {
                to[plane] = Blend(to[plane], from[plane], coverage);
            }
            from += working.planes;
            to += result.planes;
        }
    }
    return result;
}

}  // namespace host
