// Hands parts of the picture to a filter and takes them back changed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>

#include "host/picture/Picture.h"
#include "host/picture/Selection.h"
#include "host/record/CheckedBlock.h"
#include "host/record/Faults.h"
#include "host/record/FilterHost.h"
#include "hostapi/FilterRecord.h"

namespace host {

struct ExchangeSettings {
    /// Where the picture's top left pixel lies in the filter's coordinates.
    hostapi::Point origin{0, 0};
    /// Rectangles beyond the picture are shrunk instead of refused...
    bool shrinkRectangles = false;
    /// ...and the record isn't told.
    bool shrinkSilently = false;
    /// Advance() drops what was written to the last outData; Store() alone stores.
    bool lastChunkOnly = false;
    /// The selection's mask goes to the filter.
    bool handOverMask = false;
    /// The fourth plane stays as it is, whatever the filter writes.
    bool protectTransparency = false;
    Matte matte = Matte::straight;
    /// By row of the selection; see HostSettings::failAdvance.
    std::map<int, std::int16_t> failAdvance;
};

/// The work of advanceState for one execution. The filter reads from the untouched picture and
/// writes to a working copy; the selection's mask is applied once, in Result(). Every delivered
/// rectangle is a block of its own, no byte longer than its rows, with guard zones around it.
class PixelExchange {
  public:
    PixelExchange(const Picture& picture, const Selection& selection,
                  const ExchangeSettings& settings, Faults& faults);

    /// Stores what the filter wrote to the last outData, then delivers what the record asks for.
    /// Returns 0; filterBadParameters, with a fault, if the request makes no sense; memFullErr; or
    /// the failure that the settings ask for. After an error nothing is delivered.
    std::int16_t Advance(hostapi::FilterRecord& record);
    /// Stores what the filter wrote to the last outData and takes the delivered blocks back.
    void Store();
    /// Reports writes to blocks that were taken back. After the last Store().
    void CheckLateWrites();
    /// The picture with the selected part changed to what was stored.
    Picture Result() const;

    const Picture& Original() const { return original; }
    /// Over all calls: the rows of outRect, or of inRect where nothing was to be written.
    int RowsDelivered() const { return rowsDelivered; }

  private:
    // A rectangle in picture coordinates and its interleaved planes.
    struct Request {
        hostapi::VRect rect;
        int firstPlane;
        int planes;
        // Bytes that the filter may touch, by its own idea of the rectangle, beyond the delivered
        // one.
        std::size_t excessBytes;

        std::size_t RowBytes() const;
        std::size_t Size() const;
    };
    struct Delivery {
        CheckedBlock block;
        Request request;
    };
    using Deliveries = std::optional<Delivery>;

    std::int16_t PlannedFailure(const hostapi::FilterRecord& record) const;
    bool Accept(const char* name, hostapi::Rect& rect, int firstPlane, int lastPlane,
                std::optional<Request>& request);
    void Deliver(const Request& request, const char* name, Deliveries& target);
    void DeliverInput(hostapi::FilterRecord& record, const std::optional<Request>& request);
    void DeliverOutput(hostapi::FilterRecord& record, const std::optional<Request>& request);
    void DeliverMask(hostapi::FilterRecord& record, const std::optional<Request>& request);
    void TakeBack(Deliveries& delivery);
    void CopyOut(const Picture& picture, Delivery& delivery) const;
    void CopyBack(Delivery& delivery);
    void ApplyMatte(Delivery& delivery) const;

    Picture original;
    Picture working;
    Selection selection;
    ExchangeSettings settings;
    Faults& faults;
    Deliveries input;
    Deliveries output;
    Deliveries mask;
    Quarantine quarantine;
    int rowsDelivered = 0;
};

}  // namespace host
