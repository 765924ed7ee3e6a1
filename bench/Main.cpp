// Runs all measurements and prints, for each that has a reference, the ratio of the two.
//
// Names are "operation/variant" with the variants "fast", "plain" (the straightforward loop),
// "copy" (a plain memory copy of the same bytes) and "opencv" (that library's nearest equivalent).
//
// --table prints the ratios as a table in Markdown, and nothing else. --imagemagick=FILE adds the
// times that bench/imagemagick.sh has written to FILE: a name, a tab and milliseconds a line.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct Options {
    bool onlyTable = false;
    std::string imageMagick;
};

/// Prints the usual table and keeps the shortest time of each measurement: the processor's, which
/// other programs and the disk lengthen least.
class RatioReporter : public benchmark::ConsoleReporter {
  public:
    explicit RatioReporter(bool newOnlyTable) : onlyTable(newOnlyTable) {}

    bool ReportContext(const Context& context) override {
        return onlyTable || ConsoleReporter::ReportContext(context);
    }

    void ReportRuns(const std::vector<Run>& runs) override {
        if (!onlyTable) {
            ConsoleReporter::ReportRuns(runs);
        }
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration) {
                Note(run.run_name.function_name, run.GetAdjustedCPUTime());
            }
        }
    }

    /// `time` is in milliseconds.
    void Note(const std::string& name, double time) {
        const std::size_t slash = name.rfind('/');
        Times& times = shortest[name.substr(0, slash)];
        const auto [entry, isNew] = times.emplace(name.substr(slash + 1), time);
        if (!isNew && time < entry->second) {
            entry->second = time;
        }
    }

    void PrintRatios() const {
        constexpr const char* others[] = {"plain", "opencv", "imagemagick", "copy"};
        std::printf("\n| %-30s | fast, ms ", "operation");
        for (const char* const other : others) {
            std::printf("| %11s / fast ", other);
        }
        std::printf("|\n|---|---:|---:|---:|---:|---:|\n");
        for (const auto& [operation, times] : shortest) {
            const auto fast = times.find("fast");
            if (fast != times.end()) {
                std::printf("| %-30s | %8.3f ", operation.c_str(), fast->second);
                for (const char* const other : others) {
                    PrintRatio(times, other, fast->second);
                }
                std::printf("|\n");
            }
        }
    }

  private:
    using Times = std::map<std::string, double>;

    static void PrintRatio(const Times& times, const char* variant, double fast) {
        const auto found = times.find(variant);
        if (found != times.end()) {
            std::printf("| %18.2f ", found->second / fast);
        } else {
            std::printf("| %18s ", "");
        }
    }

    bool onlyTable;
    std::map<std::string, Times> shortest;
};

/// Takes our own options from the arguments; the library's stay.
Options TakeOptions(int* argc, char** argv) {
    constexpr std::string_view fileOption = "--imagemagick=";
    Options options;
    const auto isOurs = [&](const char* argument) {
        const std::string_view text(argument);
        if (text == "--table") {
            options.onlyTable = true;
            return true;
        }
        if (text.starts_with(fileOption)) {
            options.imageMagick = text.substr(fileOption.size());
            return true;
        }
        return false;
    };
    *argc = static_cast<int>(std::remove_if(argv + 1, argv + *argc, isOurs) - argv);
    return options;
}

/// False if the file cannot be read.
bool NoteImageMagick(const std::string& path, RatioReporter* reporter) {
    std::ifstream file(path);
    std::string line;
    while (std::getline(file, line)) {
        const std::size_t tab = line.rfind('\t');
        if (tab != std::string::npos) {
            reporter->Note(line.substr(0, tab) + "/imagemagick",
                           std::strtod(line.c_str() + tab, nullptr));
        }
    }
    return file.eof();
}

}  // namespace

int main(int argc, char** argv) {
    const Options options = TakeOptions(&argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 2;
    }
    RatioReporter reporter(options.onlyTable);
    if (!options.imageMagick.empty() && !NoteImageMagick(options.imageMagick, &reporter)) {
        std::fprintf(stderr, "cannot read %s\n", options.imageMagick.c_str());
        return 2;
    }
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.PrintRatios();
    return 0;
}
