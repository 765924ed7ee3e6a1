// Records, sizes and numbers to try operations with, from a generator of their own.
#pragma once

#include <cstring>
#include <random>

class RandomInput {
  public:
    explicit RandomInput(unsigned seed) : generator(seed) {}

    /// `lo` to `hi`, both included.
    short Number(int lo, int hi) {
        const auto count = static_cast<unsigned>(hi - lo + 1);
        return static_cast<short>(static_cast<int>(generator() % count) + lo);
    }
    unsigned Seed() { return static_cast<unsigned>(generator()); }

    /// A record of any bytes at all.
    template <typename Record>
    Record AnyBytes() {
        unsigned char bytes[sizeof(Record)];
        for (unsigned char& byte : bytes) {
            byte = static_cast<unsigned char>(generator());
        }
        Record record;
        std::memcpy(&record, bytes, sizeof record);
        return record;
    }

  private:
    std::mt19937 generator;
};
