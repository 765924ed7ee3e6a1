// The one place that knows the torus: a coordinate beyond an edge comes in on the other side.
#pragma once

/// Reduces a coordinate to 0 .. size - 1: the remainder in signed arithmetic, plus `size` if that
/// is negative. `size` is above 0.
constexpr short Wrap(int coordinate, short size) {
    const int remainder = coordinate % size;
    return static_cast<short>(remainder < 0 ? remainder + size : remainder);
}

/// One coordinate of a walk that is never far from its last place: follows the torus by whole
/// tiles, which spares a division for each step.
class WrappedWalk {
  public:
    /// `newSize` is above 0.
    explicit WrappedWalk(short newSize) : size(newSize) {}

    /// The same as Wrap(coordinate, size).
    int Place(short coordinate) {
        int place = coordinate - tileStart;
        while (place < 0) {
            place += size;
            tileStart -= size;
        }
        while (place >= size) {
            place -= size;
            tileStart += size;
        }
        return place;
    }

  private:
    int size;
    /// Where the repeat of the tile begins that the walk is on.
    int tileStart = 0;
};
