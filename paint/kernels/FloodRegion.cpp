#include "paint/kernels/FloodRegion.h"

#include <algorithm>
#include <cstdlib>

#include "base/FatalError.h"
#include "raster/Torus.h"

using hostapi::Point;

namespace {

/// Finds all that is connected with the start, by runs of columns.
class RunFlood {
  public:
    explicit RunFlood(PixelBits& newOpen)
        : open(newOpen), queue(static_cast<std::size_t>(open.CountRuns()) + 1) {}

    /// True if there was no memory.
    bool Failed() const { return queue.Failed(); }

    void Grow(int x, int y) {
        Add({y, open.TakeRun(x, y), x, 0});
        for (int next = 0; next < end; ++next) {
            const Entry entry = queue.Values()[next];
            VisitRow(entry, entry.y + 1 == open.Height() ? 0 : entry.y + 1);
            VisitRow(entry, (entry.y == 0 ? open.Height() : entry.y) - 1);
            VisitSeam(entry);
        }
    }

    /// No pixel of the region is further from the start than this, in steps from pixel to pixel.
    int Farthest() const { return farthest; }

  private:
    /// A run of the region and the length of one way from the start to one of its columns.
    struct Entry {
        int y;
        BitRun run;
        int column;
        int distance;
    };

    /// Takes the run around (x, y), which is reached from one of the columns of `from` next to it.
    BitRun Take(int x, int y, const Entry& from) {
        const BitRun run = open.TakeRun(x, y);
        const int column = std::clamp(from.column, std::max(run.first, from.run.first),
                                      std::min(run.last, from.run.last));
        Add({y, run, column, from.distance + std::abs(column - from.column) + 1});
        return run;
    }

    void Add(const Entry& entry) {
        queue.Values()[end++] = entry;
        const int across = std::max(entry.column - entry.run.first, entry.run.last - entry.column);
        farthest = std::max(farthest, entry.distance + across);
    }

    void VisitRow(const Entry& from, int y) {
        int x = open.NextSet(from.run.first, y);
        while (x <= from.run.last) {
            x = open.NextSet(Take(x, y, from).last + 1, y);
        }
    }

    /// The row's ends are neighbours.
    void VisitSeam(const Entry& from) {
        const int right = open.Width() - 1;
        if (from.run.first == 0 && open.IsSet(right, from.y)) {
            const BitRun run = open.TakeRun(right, from.y);
            Add({from.y, run, right, from.distance + from.column + 1});
        }
        if (from.run.last == right && open.IsSet(0, from.y)) {
            const BitRun run = open.TakeRun(0, from.y);
            Add({from.y, run, 0, from.distance + right - from.column + 1});
        }
    }

    PixelBits& open;
    HandleArray<Entry> queue;
    int end = 0;
    int farthest = 0;
};

/// Wraps any 16-bit coordinate by a table: the queue visits places in no order, and a division for
/// each would take most of its time.
class WrapTable {
  public:
    explicit WrapTable(short size) : places(count) {
        std::uint16_t place = static_cast<std::uint16_t>(Wrap(lowest, size));
        for (int coordinate = lowest; coordinate < -lowest && !Failed(); ++coordinate) {
            places.Values()[static_cast<std::uint16_t>(coordinate)] = place;
            ++place;
            place = place == size ? std::uint16_t{0} : place;
        }
    }

    /// True if there was no memory.
    bool Failed() const { return places.Failed(); }

    int operator[](short coordinate) const {
        return places.Values()[static_cast<std::uint16_t>(coordinate)];
    }

  private:
    static constexpr int lowest = -32768;
    static constexpr std::size_t count = 65536;

    HandleArray<std::uint16_t> places;
};

/// Grows the region as it is defined, one queue entry for each of its pixels.
class QueueFlood {
  public:
    explicit QueueFlood(PixelBits& newOpen)
        : open(newOpen),
          columns(static_cast<short>(open.Width())),
          rows(static_cast<short>(open.Height())),
          capacity(static_cast<std::size_t>(open.Width()) *
                       static_cast<std::size_t>(open.Height()) +
                   spareEntries),
          queue(capacity) {}

    /// True if there was no memory.
    bool Failed() const { return columns.Failed() || rows.Failed() || queue.Failed(); }

    void Grow(Point start) {
        Visit(start.h, start.v);
        for (std::size_t next = 0; next < end; ++next) {
            Assert(end + 18 < capacity,
                   "PaintClass6 / Zeile 810 !((pos + 18) < (size / sizeof (Point)))");
            const Point place = queue.Values()[next];
            Visit(static_cast<short>(place.h + 1), place.v);
            Visit(static_cast<short>(place.h - 1), place.v);
            Visit(place.h, static_cast<short>(place.v + 1));
            Visit(place.h, static_cast<short>(place.v - 1));
        }
    }

  private:
    static constexpr std::size_t spareEntries = 19;

    /// The place is queued unwrapped: where its 16 bits overflow makes a difference.
    void Visit(short x, short y) {
        const int column = columns[x];
        const int row = rows[y];
        if (open.IsSet(column, row)) {
            open.Clear(column, row);
            queue.Values()[end++] = {.v = y, .h = x};
        }
    }

    PixelBits& open;
    WrapTable columns;
    WrapTable rows;
    /// Entries of the queue.
    std::size_t capacity;
    HandleArray<Point> queue;
    std::size_t end = 0;
};

/// Whether 16 bits overflow to the same place of the torus.
bool OverflowsInPlace(int size) {
    return 65536 % size == 0;
}

/// Whether a way of this length from the start can overflow.
bool MayOverflow(Point start, int distance) {
    return std::max(std::abs(start.h), std::abs(start.v)) + distance >= 32767;
}

void Copy(const PixelBits& from, PixelBits& to) {
    std::copy_n(from.Row(0), static_cast<std::ptrdiff_t>(from.RowWords()) * from.Height(),
                to.Row(0));
}

}  // namespace

bool TakeRegion(const PixelBits& similar, Point start, PixelBits& rest) {
    Copy(similar, rest);
    {
        RunFlood flood(rest);
        if (flood.Failed()) {
            return false;
        }
        flood.Grow(Wrap(start.h, static_cast<short>(rest.Width())),
                   Wrap(start.v, static_cast<short>(rest.Height())));
        if ((OverflowsInPlace(rest.Width()) && OverflowsInPlace(rest.Height())) ||
            !MayOverflow(start, flood.Farthest())) {
            return true;
        }
    }
    Copy(similar, rest);
    QueueFlood flood(rest);
    if (flood.Failed()) {
        return false;
    }
    flood.Grow(start);
    return true;
}
