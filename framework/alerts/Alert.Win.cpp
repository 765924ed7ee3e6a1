#include "framework/alerts/Alert.Win.h"

#include "base/Callback.Win.h"
#include "base/FatalError.h"
#include "base/LeadByte.Win.h"
#include "base/Module.Win.h"
#include "base/WindowContext.Win.h"
#include "base/WindowPlace.Win.h"
#include "framework/dialog/DisabledWindows.Win.h"
#include "resources/Strings.h"

namespace {

constexpr int okControl = 1;
constexpr int cancelControl = 2;
constexpr int textCapacity = 256;
/// Where the icon stands, in dialog units from the left and the top.
constexpr int iconPlace = 7;

/// The data of one alert's window procedure; lives as long as the alert runs.
struct AlertRun {
    const AlertTexts& texts;
    AlertIcon icon;
    bool wasOpened = false;
};

void FillTexts(HWND alert, const AlertTexts& texts) {
    for (HWND control = GetWindow(alert, GW_CHILD); control != nullptr;
         control = GetWindow(control, GW_HWNDNEXT)) {
        char text[textCapacity];
        if (GetDlgCtrlID(control) >= cancelControl &&
            GetWindowTextA(control, text, sizeof text) > 0) {
            SetWindowTextA(control, SubstituteTexts(text, texts, IsLeadByte).c_str());
        }
    }
}

void SetUp(HWND alert, AlertRun& run) {
    run.wasOpened = true;
    char title[textCapacity];
    if (LoadStringA(instanceHandle, stringAlertTitle, title, sizeof title) > 0) {
        SetWindowTextA(alert, title);
    }
    FillTexts(alert, run.texts);
    PlaceOverOwner(alert);
}

void DrawStockIcon(HWND alert, AlertIcon icon) {
    const PaintContext context(alert);
    RECT place{iconPlace, iconPlace, iconPlace, iconPlace};
    MapDialogRect(alert, &place);
    DrawIcon(context.Get(), place.left, place.top,
             LoadIcon(nullptr, icon == AlertIcon::stop ? IDI_HAND : IDI_EXCLAMATION));
}

INT_PTR TakeMessage(HWND alert, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            SetWindowLongPtrA(alert, DWLP_USER, lParam);
            SetUp(alert, *reinterpret_cast<AlertRun*>(lParam));
            return TRUE;
        case WM_PAINT:
            DrawStockIcon(
                alert,
                reinterpret_cast<const AlertRun*>(GetWindowLongPtrA(alert, DWLP_USER))->icon);
            return TRUE;
        case WM_COMMAND:
            // The close box and Escape come as the cancel control, whether there is one or not.
            if (LOWORD(wParam) == okControl || LOWORD(wParam) == cancelControl) {
                EndDialog(alert, LOWORD(wParam));
                return TRUE;
            }
            return FALSE;
        default:
            return FALSE;
    }
}

/// Without memory for its texts an alert shows them as they are in the resource.
INT_PTR CALLBACK AlertProcedure(HWND alert, UINT message, WPARAM wParam, LPARAM lParam) {
    const INT_PTR unhandled = message == WM_INITDIALOG ? TRUE : FALSE;
    return Guarded(unhandled, [&] { return TakeMessage(alert, message, wParam, lParam); });
}

}  // namespace

int RunAlert(HWND parent, int id, const AlertTexts& texts, AlertIcon icon) {
    const LPCSTR resource = MAKEINTRESOURCEA(id);
    if (FindResourceA(instanceHandle, resource, MAKEINTRESOURCEA(5 /* RT_DIALOG */)) == nullptr) {
        return 0;
    }
    AlertRun run{texts, icon};
    DisabledWindows others;
    others.Disable(parent);
    const INT_PTR result =
        DialogBoxParamA(instanceHandle, resource, IsWindow(parent) ? parent : nullptr,
                        AlertProcedure, reinterpret_cast<LPARAM>(&run));
    if (result > 0) {
        return static_cast<int>(result);
    }
    // The end of the program has ended the loop.
    return run.wasOpened ? cancelControl : 0;
}

int Alert(HWND parent, std::int16_t id, const AlertTexts& texts) {
    const int answer = RunAlert(parent, id, texts, AlertIcon::warning);
    if (answer == 0) {
        char text[2];
        const bool hasString =
            LoadStringA(instanceHandle, static_cast<UINT>(id), text, sizeof text) > 0;
        FatalError(hasString ? id : std::int16_t{faultResourceMissing}, "Alert.Win", __LINE__);
    }
    return answer;
}
