// Runs all measurements and prints, for each that has a reference, the ratio of the two.
//
// Names are "operation/variant" with the variants "fast", "plain" (the straightforward loop),
// "copy" (a plain memory copy of the same bytes) and "opencv" (that library's nearest equivalent).
#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>

namespace {

/// Prints the usual table and keeps the shortest time of each measurement: the processor's, which
/// other programs and the disk lengthen least.
class RatioReporter : public benchmark::ConsoleReporter {
  public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration) {
                Note(run.run_name.function_name, run.GetAdjustedCPUTime());
            }
        }
    }

    void PrintRatios() const {
        std::printf("\n%-32s %12s %14s %14s %14s\n", "operation", "fast, ms", "plain / fast",
                    "opencv / fast", "copy / fast");
        for (const auto& [operation, times] : shortest) {
            const auto fast = times.find("fast");
            if (fast != times.end()) {
                std::printf("%-32s %12.3f", operation.c_str(), fast->second);
                PrintRatio(times, "plain", fast->second);
                PrintRatio(times, "opencv", fast->second);
                PrintRatio(times, "copy", fast->second);
                std::printf("\n");
            }
        }
    }

  private:
    using Times = std::map<std::string, double>;

    void Note(const std::string& name, double time) {
        const std::size_t slash = name.rfind('/');
        Times& times = shortest[name.substr(0, slash)];
        const auto [entry, isNew] = times.emplace(name.substr(slash + 1), time);
        if (!isNew && time < entry->second) {
            entry->second = time;
        }
    }

    static void PrintRatio(const Times& times, const char* variant, double fast) {
        const auto found = times.find(variant);
        if (found != times.end()) {
            std::printf(" %14.2f", found->second / fast);
        } else {
            std::printf(" %14s", "");
        }
    }

    std::map<std::string, Times> shortest;
};

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 2;
    }
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.PrintRatios();
    return 0;
}
