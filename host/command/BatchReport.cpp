#include "host/command/BatchReport.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

namespace host {

namespace {

using Json = nlohmann::ordered_json;

Json CallbackCounts(const ServiceCounts& counts) {
    Json json = Json::object();
    for (std::size_t index = 0; index < serviceCount; ++index) {
        const auto service = static_cast<Service>(index);
        if (counts[service] != 0) {
            json[ServiceName(service)] = counts[service];
        }
    }
    return json;
}

Json RunJson(const RunReport& run) {
    Json calls = Json::array();
    for (const SelectorCall& call : run.calls) {
        calls.push_back({{"selector", call.selector},
                         {"name", SelectorName(call.selector)},
                         {"result", call.result}});
    }
    return {{"calls", calls},
            {"result", run.result},
            {"completed", run.completed},
            {"faults", run.faults},
            {"callbacks", CallbackCounts(run.counts)},
            {"rowsDelivered", run.rowsDelivered}};
}

Json TextOrNull(const std::string& text) {
    return text.empty() ? Json(nullptr) : Json(text);
}

// Text from a file may not be UTF-8; what isn't is replaced.
std::string Dump(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

Json CasesJson(const FilterDescription& description) {
    if (!description.cases) {
        return nullptr;
    }
    Json rows = Json::array();
    for (const FilterCase& row : *description.cases) {
        rows.push_back({static_cast<int>(row.input), static_cast<int>(row.output)});
    }
    return rows;
}

}  // namespace

BatchStatus StatusOf(const std::vector<RunReport>& runs) {
    if (std::any_of(runs.begin(), runs.end(),
                    [](const RunReport& r) { return !r.faults.empty(); })) {
        return statusFaults;
    }
    if (std::any_of(runs.begin(), runs.end(), [](const RunReport& r) { return r.result != 0; })) {
        return statusFilterRefused;
    }
    return statusDone;
}

const char* SelectorName(std::int16_t selector) {
    constexpr std::array<const char*, 6> names = {"about", "parameters", "prepare",
                                                  "start", "continue",   "finish"};
    if (selector < 0 || static_cast<std::size_t>(selector) >= names.size()) {
        return "unknown";
    }
    return names[static_cast<std::size_t>(selector)];
}

std::string ReportLines(const std::vector<RunReport>& runs) {
    std::string lines;
    for (std::size_t index = 0; index < runs.size(); ++index) {
        if (runs.size() > 1) {
            lines += "run " + std::to_string(index + 1) + "\n";
        }
        for (const SelectorCall& call : runs[index].calls) {
            lines += "selector " + std::to_string(call.selector) + " (" +
                     SelectorName(call.selector) + "): " + std::to_string(call.result) + "\n";
        }
        for (const std::string& fault : runs[index].faults) {
            lines += "fault: " + fault + "\n";
        }
    }
    return lines;
}

std::string ReportJson(const std::vector<RunReport>& runs, const std::string& writtenFile) {
    Json list = Json::array();
    for (const RunReport& run : runs) {
        list.push_back(RunJson(run));
    }
    return Dump({{"runs", list},
                 {"status", static_cast<int>(StatusOf(runs))},
                 {"written", TextOrNull(writtenFile)}});
}

std::string ListLines(const std::vector<FilterLine>& filters) {
    std::string lines;
    for (const FilterLine& filter : filters) {
        const FilterDescription& description = filter.description;
        const std::string& entry = description.Entry();
        lines += description.category + "\t" + description.name + "\t" +
                 (entry.empty() ? "no code for this host" : entry) + "\t" +
                 description.ModeNames() + "\t" + filter.file + "\n";
    }
    return lines;
}

std::string ListJson(const std::vector<FilterLine>& filters) {
    Json list = Json::array();
    for (const FilterLine& filter : filters) {
        const FilterDescription& description = filter.description;
        list.push_back({{"category", description.category},
                        {"name", description.name},
                        {"entry32", TextOrNull(description.entry32)},
                        {"entry64", TextOrNull(description.entry64)},
                        {"modes", description.ModeNames()},
                        {"version", description.version},
                        {"cases", CasesJson(description)},
                        {"file", filter.file}});
    }
    return Dump(list);
}

}  // namespace host
