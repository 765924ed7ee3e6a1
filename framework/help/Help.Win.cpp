#include "framework/help/Help.Win.h"

#include <windows.h>

#include <shellapi.h>

#include "base/AnsiPath.Win.h"
#include "base/FatalError.h"
#include "base/LeadByte.Win.h"
#include "base/Module.Win.h"
#include "framework/dialog/NorvantaDialog.h"
#include "framework/drawing/InterfaceLib.Win.h"
#include "framework/help/HelpAddress.h"
#include "hostapi/Results.h"
#include "resources/Strings.h"

namespace {

constexpr char sourceName[] = "Help.Win";
/// Results of the system above this are successes.
constexpr std::intptr_t lastFailure = 32;

std::intptr_t OpenWithSystem(const char* address) {
    return reinterpret_cast<std::intptr_t>(
        ShellExecuteA(nullptr, "open", address, nullptr, nullptr, SW_SHOWNORMAL));
}

bool IsFile(const char* path) {
    const DWORD attributes = GetFileAttributesA(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

/// Empty where the system does not tell the module's path, or the text is missing.
std::string PageAddress() {
    char pages[textBufferSize];
    const bool hasText = LoadIndexedString(pages, stringHelpPage, 0) == 0;
    const std::string module = AnsiPathOf(instanceHandle);
    return hasText && !module.empty() ? HelpAddress(module, pages, IsLeadByte) : "";
}

}  // namespace

AddressOpener openAddress = OpenWithSystem;
FileTest isHelpThere = IsFile;

std::string HelpPagePath() {
    const std::string address = PageAddress();
    return address.empty() ? "" : address.substr(sizeof helpScheme - 1);
}

void NorvantaDialog::HelpCommand() {
    const std::string address = PageAddress();
    if (address.empty()) {
        FatalError(faultResourceMissing, sourceName, __LINE__);
    }
    const std::intptr_t answer = openAddress(address.c_str());
    if (answer <= lastFailure) {
        throw static_cast<std::int16_t>(answer != 0 ? answer : std::intptr_t{hostapi::memFullErr});
    }
}
