#include "shell/FatalError.Win.h"

#include <windows.h>

#include <cstring>
#include <string>

#include "base/HostServices.h"
#include "base/Module.Win.h"
#include "framework/alerts/Alert.Win.h"
#include "framework/dialog/DialogState.h"
#include "framework/dialog/DialogWindow.Win.h"

namespace {

constexpr int generalDialog = 20900;
constexpr int namedDialog = 20901;

const char* BehindLastBackslash(const char* path) {
    const char* const backslash = std::strrchr(path, '\\');
    return backslash != nullptr ? backslash + 1 : path;
}

/// The time that the user is told. The dialogs know of the fault already; a dialog that ended now
/// would let the host's window take input under the box.
class FaultSection {
  public:
    FaultSection() : before(dialogState.isTellingFault) { dialogState.isTellingFault = true; }
    FaultSection(const FaultSection&) = delete;
    FaultSection& operator=(const FaultSection&) = delete;
    ~FaultSection() { dialogState.isTellingFault = before; }

  private:
    bool before;
    const DialogSuspension suspension;
};

}  // namespace

void ShowFatalError(std::int16_t id, const char* file, int line) {
    if (instanceHandle == nullptr) {
        return;
    }
    const FaultSection section;
    const HWND parent = DialogWindow::InFront();
    const std::string lineText = std::to_string(line);
    const char* const place = BehindLastBackslash(file);
    const AlertTexts plain{};
    if (RunAlert(parent, id, plain, AlertIcon::stop) != 0) {
        return;
    }
    char text[256];
    if (LoadStringA(instanceHandle, static_cast<UINT>(id), text, sizeof text) > 0) {
        RunAlert(parent, namedDialog, {text, place, lineText.c_str()}, AlertIcon::stop);
    } else {
        const std::string number = std::to_string(id);
        RunAlert(parent, generalDialog, {number.c_str(), place, lineText.c_str()}, AlertIcon::stop);
    }
}
