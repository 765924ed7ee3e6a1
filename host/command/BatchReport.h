// The output of the batch program, as lines or as JSON.
#pragma once

#include <string>
#include <vector>

#include "host/plugin/PluginFile.h"
#include "host/record/FilterHost.h"

namespace host {

/// Exit statuses of the batch program.
enum BatchStatus : int {
    statusDone = 0,
    statusUnusable = 2,
    statusFilterRefused = 3,
    statusFaults = 4,
    statusCrashed = 5,
};

/// The worst of all runs: faults before results.
BatchStatus StatusOf(const std::vector<RunReport>& runs);

/// "parameters", "start" and so on; "unknown" for others.
const char* SelectorName(std::int16_t selector);

/// One line a selector, one a fault; a heading for each run if there are several.
std::string ReportLines(const std::vector<RunReport>& runs);

/// One object: "runs" with "calls" (selector, name, result), "result", "completed", "faults",
/// "callbacks" (those called at least once), "rowsDelivered"; "status"; "written" (the file or
/// null).
std::string ReportJson(const std::vector<RunReport>& runs, const std::string& writtenFile);

/// The line of a list for one filter.
struct FilterLine {
    std::string file;
    FilterDescription description;
};

/// A line each: category, name, entry, modes, file, parted by tabs.
std::string ListLines(const std::vector<FilterLine>& filters);
/// An array of objects: "category", "name", "entry32", "entry64" (or null), "modes", "version",
/// "cases", "file".
std::string ListJson(const std::vector<FilterLine>& filters);

}  // namespace host
