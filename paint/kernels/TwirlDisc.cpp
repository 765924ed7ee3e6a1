#include "paint/kernels/TwirlDisc.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "paint/kernels/Dispatch.h"
#include "paint/math/EffectMath.h"
#include "paint/math/ExactMath.h"
#include "raster/Truncation.h"

namespace {

/// Columns of a strip of turned sources. The sources of a strip's next row lie beside those of the
/// last one, in whatever direction, so that their pixels are still in the processor's first cache.
constexpr int stripWidth = 16;

/// The fraction of turned sources that have no code: both halves are below any of a code.
constexpr std::uint32_t noFraction = 0x80008000;

/// The angle of a pixel, of which `arc` is the arcsine where dx is 0 or more, and the arccosine
/// elsewhere, for |dy|: it is the same for two pixels, and takes most of the time.
double AngleOf(int dx, int dy, double arc) {
    if (dy >= 0) {
        return arc;
    }
    return dx >= 0 ? -arc : 6.283185307179586 - arc;
}

/// The groups of a run of pixels: the last begins early rather than to be a smaller one. A run that
/// is shorter has none.
int GroupsOf(int count) {
    return count < estimatedGroup ? 0 : (count + estimatedGroup - 1) / estimatedGroup;
}

void AddWays(Spot first, const std::uint32_t* ways, int count, UndecidedStill* undecided) {
    for (int i = 0; i < count; ++i) {
        undecided->spots[undecided->count] = first + static_cast<Spot>(i);
        undecided->ways[undecided->count++] = ways[i];
    }
}

/// Still sources of one row.
class StillRuns {
  public:
    explicit StillRuns(const TwirlPlanes& newPlanes) : planes(newPlanes) {
        limits.Place(planes.cx, planes.radius);
    }

    /// The pixels of a row of the square from `first` to before `end`, around the torus.
    void Read(int row, const std::uint32_t* ways, int first, int end) {
        const int edge = planes.columns - planes.left;
        if (first < edge && edge < end) {
            ReadStraight(row, ways, first, edge);
            ReadStraight(row, ways, edge, end);
        } else {
            ReadStraight(row, ways, first, end);
        }
    }
    void Finish() { ReadStillExactly(planes, &undecided); }

  private:
    void ReadStraight(int row, const std::uint32_t* ways, int first, int end) {
        const int count = end - first;
        if (count < estimatedGroup) {
            AddWays(SpotAt(first, row), ways + first, count, &undecided);
        } else {
            ReadStill(planes, limits, SpotAt(first, row), ways + first, count, &undecided);
        }
        if (undecided.IsFull()) {
            Finish();
        }
    }

    const TwirlPlanes& planes;
    ColumnLimits limits;
    UndecidedStill undecided;
};

}  // namespace

TwirlDisc::TwirlDisc(short newRadius, double newQuotient)
    : radius(newRadius),
      quotient(newQuotient),
      keepsAll(radius <= largestKept),
      rowSize(static_cast<std::size_t>(2 * radius + 1)),
      places(2 * rowSize * (keepsAll ? rowSize : 1)),
      parts(keepsAll ? rowSize : 0),
      ways(keepsAll ? rowSize * rowSize : 0) {
    for (int dy = 0; dy < radius && keepsAll && !Failed(); ++dy) {
        ComputeRows(dy);
    }
    if (keepsAll && !Failed() && HasAvx2()) {
        Encode();
    }
}

int TwirlDisc::HalfWidth(int dy) const {
    if (hasCodes) {
        return radius - parts.Values()[RowNumber(dy)].first;
    }
    return static_cast<int>(std::sqrt(static_cast<double>(radius * radius - dy * dy - 1)));
}

std::size_t TwirlDisc::RowNumber(int dy) const {
    return static_cast<std::size_t>(keepsAll ? dy + radius : 0);
}

double* TwirlDisc::RowPlaces(int dy) const {
    return places.Values() + RowNumber(dy) * 2 * rowSize;
}

/// Rows dy and -dy.
void TwirlDisc::ComputeRows(int dy) {
    const int halfWidth = HalfWidth(dy);
    for (int dx = -halfWidth; dx <= halfWidth; ++dx) {
        const Polar polar = PolarOf(dx, dy);
        Rotate(polar, dx, dy);
        if (dy > 0) {
            Rotate(polar, dx, -dy);
        }
    }
}

void TwirlDisc::ComputeRow(int dy) {
    const int halfWidth = HalfWidth(dy);
    for (int dx = -halfWidth; dx <= halfWidth; ++dx) {
        Rotate(PolarOf(dx, std::abs(dy)), dx, dy);
    }
}

/// `dy` is 0 or more. The centre has no angle; the twirl puts it back unchanged.
TwirlDisc::Polar TwirlDisc::PolarOf(int dx, int dy) const {
    if (dx == 0 && dy == 0) {
        return {0, 0, 0};
    }
    const double distance = std::sqrt(static_cast<double>(dx * dx + dy * dy));
    const double t = (radius - distance) / quotient;
    const short twist = TruncateToShort(t * t * t * t);
    return {distance, DegreesToRadians(twist),
            dx >= 0 ? ExactAsin(dy / distance) : ExactAcos(dx / distance)};
}

void TwirlDisc::Rotate(const Polar& polar, int dx, int dy) const {
    const SinCos turned = ExactSinCos(polar.twist + AngleOf(dx, dy, polar.arc));
    double* const place = RowPlaces(dy) + radius + dx;
    place[0] = turned.cos * polar.distance;
    place[rowSize] = turned.sin * polar.distance;
}

void TwirlDisc::Encode() {
    if (parts.Failed() || ways.Failed()) {
        return;
    }
    for (int dy = 1 - radius; dy < radius; ++dy) {
        parts.Values()[RowNumber(dy)] = EncodeStill(dy);
    }
    if (AllocateGroups()) {
        EncodeTurned();
        hasCodes = ListUncoded();
    }
}

bool TwirlDisc::AllocateGroups() {
    const auto count = static_cast<std::size_t>(CountGroups());
    groups.emplace(count);
    groupSpots.emplace(count + estimatedGroup - 1);
    return !groups->Failed() && !groupSpots->Failed();
}

/// The still sources before the first turned one and after the last have codes as such; those
/// between, as after a twist by a whole turn, are too near to whole numbers for the estimates.
TwirlDisc::RowParts TwirlDisc::EncodeStill(int dy) {
    const int halfWidth = HalfWidth(dy);
    const double* const x = RowPlaces(dy);
    const double* const y = x + rowSize;
    const auto isStill = [&](int i) {
        return StillSource(x[i], y[i], i - radius, dy, &RowWays(dy)[i]);
    };
    RowParts row = {radius - halfWidth, radius - halfWidth, radius + halfWidth + 1,
                    radius + halfWidth + 1};
    while (row.firstTurned < row.end && isStill(row.firstTurned)) {
        ++row.firstTurned;
    }
    while (row.endTurned > row.firstTurned && isStill(row.endTurned - 1)) {
        --row.endTurned;
    }
    return row;
}

int TwirlDisc::CountGroups() const {
    int count = 0;
    for (int row = 1; row < 2 * radius; ++row) {
        count += GroupsOf(parts.Values()[row].endTurned - parts.Values()[row].firstTurned);
    }
    return count;
}

void TwirlDisc::EncodeTurned() {
    for (int strip = 0; strip <= 2 * radius / stripWidth; ++strip) {
        EncodeStrip(strip);
    }
    std::fill_n(groupSpots->Values() + groupCount, estimatedGroup - 1, Spot{0});
}

void TwirlDisc::EncodeStrip(int strip) {
    const auto firstAt = [](int column, int start) {
        return std::max(0, (column - start + estimatedGroup - 1) / estimatedGroup);
    };
    for (int row = 1; row < 2 * radius; ++row) {
        const RowParts& part = parts.Values()[row];
        const int count = GroupsOf(part.endTurned - part.firstTurned);
        const int begin = firstAt(strip * stripWidth, part.firstTurned);
        const int end = std::min(count, firstAt((strip + 1) * stripWidth, part.firstTurned));
        for (int i = begin; i < end; ++i) {
            EncodeGroup(row, std::min(part.firstTurned + i * estimatedGroup,
                                      part.endTurned - estimatedGroup));
        }
    }
}

void TwirlDisc::EncodeGroup(int row, int column) {
    const double* const x = RowPlaces(row - radius) + column;
    const double* const y = x + rowSize;
    TurnedGroup& group = groups->Values()[groupCount];
    for (int i = 0; i < estimatedGroup; ++i) {
        SourceCode code{};
        const bool hasCode = TurnedSource(x[i], y[i], radius, &code);
        group.cells[i] = code.cell;
        group.fractions[i] = hasCode ? code.fraction : noFraction;
    }
    groupSpots->Values()[groupCount++] = SpotAt(column, row);
}

/// Calls `take(column, row)` for the turned sources that have no code, or too few neighbours for a
/// group.
template <typename Take>
void TwirlDisc::ForEachUncoded(Take take) const {
    for (int i = 0; i < groupCount * estimatedGroup; ++i) {
        const int group = i / estimatedGroup;
        if (groups->Values()[group].fractions[i % estimatedGroup] == noFraction) {
            const Spot spot = groupSpots->Values()[group];
            take(static_cast<int>(spot & 0xFFFF) + i % estimatedGroup,
                 static_cast<int>(spot >> 16));
        }
    }
    for (int row = 1; row < 2 * radius; ++row) {
        const RowParts& part = parts.Values()[row];
        const bool hasGroups = GroupsOf(part.endTurned - part.firstTurned) > 0;
        for (int i = part.firstTurned; i < part.endTurned && !hasGroups; ++i) {
            take(i, row);
        }
    }
}

/// False if there was no memory.
bool TwirlDisc::ListUncoded() {
    ForEachUncoded([this](int, int) { ++uncodedCount; });
    const auto size = static_cast<std::size_t>(uncodedCount) + 3;
    uncodedSpots.emplace(size);
    uncodedX.emplace(size);
    uncodedY.emplace(size);
    if (uncodedSpots->Failed() || uncodedX->Failed() || uncodedY->Failed()) {
        return false;
    }
    int next = 0;
    const auto add = [&](int column, int row) {
        const double* const x = RowPlaces(row - radius) + column;
        uncodedSpots->Values()[next] = SpotAt(column, row);
        uncodedX->Values()[next] = x[0];
        uncodedY->Values()[next++] = x[rowSize];
    };
    ForEachUncoded(add);
    const Spot last = uncodedCount > 0 ? uncodedSpots->Values()[uncodedCount - 1] : 0;
    for (int i = 0; i < 3 && uncodedCount > 0; ++i) {
        add(static_cast<int>(last & 0xFFFF), static_cast<int>(last >> 16));
    }
    return true;
}

Positions TwirlDisc::Row(int dy, int centreX, int centreY) {
    if (!keepsAll) {
        ComputeRow(dy);
    }
    const int halfWidth = HalfWidth(dy);
    const double* const x = RowPlaces(dy) + radius - halfWidth;
    return {static_cast<double>(centreX), static_cast<double>(centreY), x, x + rowSize,
            2 * halfWidth + 1};
}

void TwirlDisc::Write(const TwirlPlanes& planes) const {
    WriteStill(planes);
    WriteTurned(planes);
}

void TwirlDisc::WriteStill(const TwirlPlanes& planes) const {
    StillRuns runs(planes);
    for (int dy = 1 - radius; dy < radius; ++dy) {
        const RowParts& row = parts.Values()[RowNumber(dy)];
        runs.Read(dy + radius, RowWays(dy), row.first, row.firstTurned);
        runs.Read(dy + radius, RowWays(dy), row.endTurned, row.end);
    }
    runs.Finish();
}

void TwirlDisc::WriteTurned(const TwirlPlanes& planes) const {
    UndecidedSpots undecided;
    for (int i = 0; i < groupCount; i += mostTurnedGroups) {
        const int before = undecided.count;
        ReadTurned(planes, groups->Values() + i, groupSpots->Values() + i,
                   std::min(mostTurnedGroups, groupCount - i), &undecided);
        PrefetchPlaces(Places(), undecided, before);
        if (undecided.IsFull()) {
            ReadTurnedExactly(planes, Places(), &undecided);
        }
    }
    ReadTurnedExactly(planes, Places(), &undecided);
    ReadPlaces(planes, uncodedSpots->Values(), uncodedX->Values(), uncodedY->Values(),
               uncodedCount);
}
