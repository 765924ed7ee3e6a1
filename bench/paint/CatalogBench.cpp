// Every operation of the catalogue with its defaults, and with the records of bench/Records.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>

#include "base/Platform.h"
#include "bench/CoreHost.h"
#include "bench/Noise.h"
#include "bench/Records.h"
#include "paint/Catalog.h"
#include "paint/PaintClass.h"
#include "plain/PlainSteps.h"

namespace {

struct TileSize {
    short width = 512;
    short height = 512;
};

/// Times a run step on the same noise and with the same random numbers again and again.
void Register(const std::string& name, PlainStep run, const AnyRecord& record, TileSize size) {
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
        const CoreHost host;
        platformServices.clockSeconds = [] { return std::uint32_t{1}; };
        PaintClass noise(size.width, size.height);
        FillWithNoise(noise);
        PaintClass pic(size.width, size.height);
        for (auto _ : state) {
            state.PauseTiming();
            std::copy_n(noise.Base(), noise.RowBytes() * size.height, pic.Base());
            state.ResumeTiming();
            if (!run(pic, record.Data())) {
                state.SkipWithError("no memory, or nothing to do");
            }
        }
    })->Unit(benchmark::kMillisecond);
}

void RegisterBoth(const CatalogRow& row, const std::string& variant, const AnyRecord& record,
                  TileSize size) {
    const std::string name = std::string(row.name) + ", " + variant;
    Register(name + "/fast", row.run, record, size);
    if (const PlainStep plain = PlainStepOf(row.name)) {
        Register(name + "/plain", plain, record, size);
    }
}

const bool registered = [] {
    for (const CatalogRow& row : Catalog()) {
        RegisterBoth(row, "default", AnyRecord(row), {});
    }
    for (const MeasuredRecord& measured : MeasuredRecords()) {
        RegisterBoth(CatalogRowNamed(measured.operation), measured.variant, RecordOf(measured),
                     {measured.width, measured.height});
    }
    return true;
}();

}  // namespace
