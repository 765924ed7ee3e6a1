#include "framework/help/Help.Win.h"

#include <windows.h>

#include <shellapi.h>

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

}  // namespace

AddressOpener openAddress = OpenWithSystem;

void NorvantaDialog::HelpCommand() {
    char pages[textBufferSize];
    FatalError(LoadIndexedString(pages, stringHelpPage, 0), sourceName, __LINE__);
    char module[MAX_PATH];
    const DWORD length = GetModuleFileNameA(instanceHandle, module, MAX_PATH);
    if (length == 0 || length == MAX_PATH) {
        FatalError(faultResourceMissing, sourceName, __LINE__);
    }
    const std::intptr_t answer = openAddress(HelpAddress(module, pages, IsLeadByte).c_str());
    if (answer <= lastFailure) {
        throw static_cast<std::int16_t>(answer != 0 ? answer : std::intptr_t{hostapi::memFullErr});
    }
}
