// The transfer of a 512 by 512 tile into a selection of 8000 by 8000, besides the host's own work:
// this host hands out the same row buffer each time and does nothing else.
#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

#include "base/HostServices.h"
#include "bench/CoreHost.h"
#include "shell/transfer/Transfer.h"

namespace {

constexpr short tileSide = 512;
constexpr std::int16_t selectionSide = 8000;

std::vector<unsigned char> row;

class IdleHost : public CoreHost {
  public:
    explicit IdleHost(std::int16_t planes) {
        row.assign(static_cast<std::size_t>(selectionSide) * static_cast<std::size_t>(planes), 7);
        record.planes = planes;
        record.filterRect = {0, 0, selectionSide, selectionSide};
        record.advanceState = [] {
            filterRecord->outData = row.data();
            filterRecord->outRowBytes = static_cast<std::int32_t>(row.size());
            benchmark::DoNotOptimize(row.data());
            benchmark::ClobberMemory();
            return std::int16_t{0};
        };
    }
};

void FastTransfer(benchmark::State& state, std::int16_t planes) {
    IdleHost host(planes);
    const PaintClass pic(tileSide, tileSide);
    FilterContext context{0, &host.record};
    for (auto _ : state) {
        WriteTileToSelection(&context, TileOf(pic));
    }
}

/// The plain loop: pixel by pixel, with a remainder for the row only.
void PlainTransfer(benchmark::State& state, std::int16_t planes) {
    IdleHost host(planes);
    const PaintClass pic(tileSide, tileSide);
    for (auto _ : state) {
        for (int y = 0; y < selectionSide; ++y) {
            host.record.advanceState();
            const unsigned char* const start = pic.Base() + y % tileSide * pic.RowBytes();
            const unsigned char* source = start;
            unsigned char* target = host.record.outData;
            for (int column = 0, x = 0; column < selectionSide; ++column) {
                target[0] = source[0];
                target[1] = source[1];
                target[2] = source[2];
                source += 4;
                if (++x == tileSide) {
                    x = 0;
                    source = start;
                }
                target += planes;
            }
        }
    }
}

/// As many bytes, from rows that differ as the tile's do.
void PlainCopy(benchmark::State& state, std::int16_t planes) {
    IdleHost host(planes);
    const std::vector<unsigned char> rows(row.size() * 8, 9);
    for (auto _ : state) {
        for (std::size_t y = 0; y < static_cast<std::size_t>(selectionSide); ++y) {
            host.record.advanceState();
            std::memcpy(host.record.outData, rows.data() + y % 8 * row.size(), row.size());
        }
    }
}

const bool registered = [] {
    using benchmark::RegisterBenchmark;
    for (const std::int16_t planes : {std::int16_t{3}, std::int16_t{4}}) {
        const std::string name = "Transfer, " + std::to_string(planes) + " planes";
        RegisterBenchmark((name + "/fast").c_str(), FastTransfer, planes)
            ->Unit(benchmark::kMillisecond);
        RegisterBenchmark((name + "/plain").c_str(), PlainTransfer, planes)
            ->Unit(benchmark::kMillisecond);
        RegisterBenchmark((name + "/copy").c_str(), PlainCopy, planes)
            ->Unit(benchmark::kMillisecond);
    }
    return true;
}();

}  // namespace
