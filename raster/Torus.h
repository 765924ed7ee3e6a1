// The only place where coordinates wrap around the torus.
#pragma once

/// Reduces a coordinate to 0 .. size - 1: the remainder in signed arithmetic, plus `size` if that
/// is negative. `size` is above 0.
constexpr short Wrap(int coordinate, short size) {
    const int remainder = coordinate % size;
    return static_cast<short>(remainder < 0 ? remainder + size : remainder);
}

/// The same for coordinates that are at most one tile outside, without a division.
constexpr int WrapOnce(int coordinate, int size) {
    if (coordinate < 0) {
        return coordinate + size;
    }
    return coordinate < size ? coordinate : coordinate - size;
}

/// Wraps a coordinate that changes by small steps, by whole tiles, which saves a division for each
/// step.
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
    /// The start of the repeat of the tile that the walk is in.
    int tileStart = 0;
};
