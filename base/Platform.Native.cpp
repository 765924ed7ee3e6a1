// For programs without windows: the recipe tool and the unit tests, on every system.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "base/Platform.h"
#include "hostapi/Results.h"

namespace {

std::uint32_t ClockSeconds() {
    return static_cast<std::uint32_t>(std::time(nullptr));
}

std::uint32_t TickCount() {
    using namespace std::chrono;
    return static_cast<std::uint32_t>(
        duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

void Nothing() {}

/// The text of the fatal error dialog on one line.
void ReportFault(std::int16_t id, const char* file, int line) {
    std::fprintf(stderr, "A fatal error of type = %d occured. File: %s Line Number: %d\n", id, file,
                 line);
}

/// No user can answer, so the safe button is returned.
int ShowAlert(std::int16_t id, const std::array<const char*, 4>& texts) {
    std::fprintf(stderr, "Alert %d", id);
    for (const char* const text : texts) {
        std::fprintf(stderr, "%s%s", text != nullptr ? " " : "", text != nullptr ? text : "");
    }
    std::fprintf(stderr, "\n");
    return 2;
}

bool RunFileDialog(FileDialog&) {
    return false;
}

/// The program has no such dialog here.
std::int16_t RunQualityDialog(JPEGQualityChoice&) {
    return hostapi::memFullErr;
}

int TemporaryPath(char* buffer, int size) {
    const char* folder = std::getenv("TMPDIR");
    if (folder == nullptr || *folder == '\0') {
        folder = std::getenv("TEMP");
    }
    if (folder == nullptr || *folder == '\0') {
        folder = "/tmp";
    }
    const std::size_t length = std::strlen(folder);
    if (length >= static_cast<std::size_t>(size)) {
        return static_cast<int>(length);
    }
    std::memcpy(buffer, folder, length + 1);
    return static_cast<int>(length);
}

constexpr char pathSeparator =
#ifdef _WIN32
    '\\';
#else
    '/';
#endif

}  // namespace

PlatformServices platformServices = {
    ClockSeconds,  TickCount, Nothing,       Nothing,   Nothing,       ReportFault,
    TemporaryPath, Nothing,   pathSeparator, ShowAlert, RunFileDialog, RunQualityDialog,
};
