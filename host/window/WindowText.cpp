#include "host/window/WindowText.h"

#include <cstdio>

#include "base/Rectangles.h"
#include "hostapi/Results.h"

namespace host {

namespace {

constexpr const char* times = " \u00D7 ";

// Up to `digits` after the point, 1 at least, and no zeros at the end.
std::string Decimal(double value, int digits) {
    char text[32];
    std::snprintf(text, sizeof text, "%.*f", digits, value);
    std::string result = text;
    result.erase(result.find_last_not_of('0') + 1);
    if (result.back() == '.') {
        result.pop_back();
    }
    return result;
}

std::string SizeText(int width, int height) {
    return std::to_string(width) + times + std::to_string(height);
}

std::string FaultCount(std::size_t faults) {
    if (faults == 0) {
        return {};
    }
    return faults == 1 ? "; 1 fault found" : "; " + std::to_string(faults) + " faults found";
}

std::string ResultText(const RunReport& report, const std::string& name, bool changed) {
    if (!report.completed) {
        return name + " did not come to an end and was stopped";
    }
    if (report.result == hostapi::userCanceledErr) {
        return name + ": cancelled";
    }
    if (report.result != hostapi::noErr) {
        const std::string words = ResultWords(report.result);
        return "The filter answered " + std::to_string(report.result) +
               (words.empty() ? "" : " (" + words + ")");
    }
    return name + (changed ? ": done" : ": done, nothing changed");
}

}  // namespace

std::string ShortName(const FilterDescription& filter) {
    constexpr const char* dots = "...";
    return filter.name.ends_with(dots) ? filter.name.substr(0, filter.name.size() - 3)
                                       : filter.name;
}

std::string ResultWords(std::int16_t result) {
    switch (result) {
        case hostapi::memFullErr:
            return "out of memory";
        case hostapi::userCanceledErr:
            return "cancelled";
        case hostapi::filterBadParameters:
            return "it cannot work with this picture or this host";
        case hostapi::errPlugInHostInsufficient:
            return "this host lacks a service";
        default:
            return {};
    }
}

std::string OutcomeText(const RunReport& report, const std::string& name, bool changed) {
    return ResultText(report, name, changed) + FaultCount(report.faults.size());
}

// Files that count in whole pixels a metre hold 72.009 for 72, so more digits would only puzzle.
std::string PictureText(const Picture& picture) {
    std::string resolution = Decimal(picture.horizontalResolution, 1);
    const std::string vertical = Decimal(picture.verticalResolution, 1);
    if (vertical != resolution) {
        resolution += times + vertical;
    }
    return SizeText(picture.width, picture.height) + ", " + resolution + " ppi, " +
           (picture.planes == 4 ? "RGB with transparency" : "RGB");
}

std::string SelectionText(const Selection& selection) {
    return selection.isExplicit ? BoundsText(selection.bounds) : "Nothing selected";
}

std::string BoundsText(const hostapi::VRect& bounds) {
    if (IsEmpty(bounds)) {
        return {};
    }
    return PlaceText({bounds.left, bounds.top}) + " to " +
           PlaceText({bounds.right, bounds.bottom}) + " (" +
           SizeText(Width(bounds), Height(bounds)) + ")";
}

std::string PlaceText(Place pixel) {
    return std::to_string(pixel.x) + ", " + std::to_string(pixel.y);
}

std::string ZoomText(double scale) {
    return Decimal(scale * 100.0, 2) + " %";
}

}  // namespace host
