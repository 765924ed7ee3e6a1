// Operations of the core with any settings at all, as many as asked for.
//
//     fuzz-any-record COUNT [FIRST_SEED]
//
// The program exits with status 1 and prints the seed at the first run that leaks. A sanitizer ends
// it by itself; the file named in FUZZ_SEED_FILE, if any, has the seed of that run.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <vector>

#include "base/HostServices.h"
#include "base/Platform.h"
#include "hostapi/FilterRecord.h"
#include "tests/support/AnyOperation.h"

namespace {

struct Tally {
    unsigned runs = 0;
    unsigned assertions = 0;
    double seconds = 0;
    double longest = 0;
    unsigned longestSeed = 0;
};

double ProcessorSeconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

std::uint32_t clockSeconds = 0;

void NoteSeed(std::FILE* file, unsigned seed) {
    if (file != nullptr) {
        std::rewind(file);
        std::fprintf(file, "%10u\n", seed);
        std::fflush(file);
    }
}

bool RunOne(unsigned seed, host::MemorySuites& memory, std::vector<Tally>& tallies) {
    clockSeconds = seed;
    const double before = ProcessorSeconds();
    const AnyRun run = RunAnyOperation(seed, memory);
    const double seconds = ProcessorSeconds() - before;
    Tally& tally = tallies[run.operation];
    ++tally.runs;
    tally.assertions += run.assertionFailed ? 1 : 0;
    tally.seconds += seconds;
    if (seconds > tally.longest) {
        tally.longest = seconds;
        tally.longestSeed = seed;
    }
    if (run.cloneLeft || memory.LiveBuffers() != 0 || !memory.FoundFaults().IsEmpty()) {
        std::printf("seed %u: %s left something behind\n", seed, AnyOperationName(run.operation));
        for (const std::string& line : memory.FoundFaults().Lines()) {
            std::printf("  %s\n", line.c_str());
        }
        return false;
    }
    return true;
}

void Print(const std::vector<Tally>& tallies) {
    std::printf("%-20s %9s %11s %10s %13s\n", "operation", "runs", "assertions", "CPU s",
                "longest ms");
    for (std::size_t i = 0; i < tallies.size(); ++i) {
        const Tally& tally = tallies[i];
        std::printf("%-20s %9u %11u %10.1f %13.1f (seed %u)\n", AnyOperationName(i), tally.runs,
                    tally.assertions, tally.seconds, tally.longest * 1000.0, tally.longestSeed);
    }
}

}  // namespace

int main(int argc, char** argv) {
    const auto number = [&](int i) {
        return i < argc ? static_cast<unsigned>(std::strtoul(argv[i], nullptr, 10)) : 0;
    };
    const unsigned count = number(1);
    if (count == 0) {
        std::fprintf(stderr, "usage: fuzz-any-record COUNT [FIRST_SEED]\n");
        return 2;
    }
    platformServices.clockSeconds = [] { return clockSeconds; };
    platformServices.reportFault = [](std::int16_t, const char*, int) {};
    host::MemorySuites memory;
    hostapi::FilterRecord record{};
    record.bufferProcs = memory.Buffers();
    record.handleProcs = memory.Handles();
    filterRecord = &record;
    const char* const seedFileName = std::getenv("FUZZ_SEED_FILE");
    std::FILE* const seedFile = seedFileName != nullptr ? std::fopen(seedFileName, "w") : nullptr;
    std::vector<Tally> tallies(AnyOperationCount());
    bool isGood = true;
    for (unsigned i = 0; i < count && isGood; ++i) {
        NoteSeed(seedFile, number(2) + i);
        isGood = RunOne(number(2) + i, memory, tallies);
    }
    if (seedFile != nullptr) {
        std::fclose(seedFile);
    }
    Print(tallies);
    return isGood ? 0 : 1;
}
