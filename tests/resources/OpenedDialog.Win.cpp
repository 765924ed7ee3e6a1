#include "tests/resources/OpenedDialog.Win.h"

#include <algorithm>
#include <map>
#include <memory>

#include "fixtures/DialogTemplate.Win.h"
#include "fixtures/LargeScreen.Win.h"

namespace {

constexpr std::size_t textCapacity = 512;

INT_PTR CALLBACK IgnoreMessages(HWND, UINT, WPARAM, LPARAM) {
    return FALSE;
}

std::wstring TextOf(HWND window) {
    wchar_t text[textCapacity];
    const int length = GetWindowTextW(window, text, textCapacity);
    return {text, static_cast<std::size_t>(length)};
}

Control Describe(HWND dialog, HWND window) {
    Control control;
    control.window = window;
    control.id = GetDlgCtrlID(window);
    wchar_t name[64];
    control.className.assign(name, static_cast<std::size_t>(GetClassNameW(window, name, 64)));
    control.style = static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE));
    control.text = TextOf(window);
    GetWindowRect(window, &control.bounds);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&control.bounds), 2);
    return control;
}

BOOL CALLBACK CollectId(HMODULE, LPCSTR, LPSTR name, LONG_PTR parameter) {
    reinterpret_cast<std::vector<int>*>(parameter)->push_back(
        static_cast<int>(reinterpret_cast<ULONG_PTR>(name)));
    return TRUE;
}

}  // namespace

DWORD Control::Type() const {
    return style & (className == L"Static" ? SS_TYPEMASK : BS_TYPEMASK);
}

OpenedDialog::OpenedDialog(int id, int dotsPerInch) : resolution(dotsPerInch), window(nullptr) {
    DialogTemplate resource(nullptr, id);
    if (resource.IsEmpty()) {
        return;
    }
    resource.ScaleFont(resolution * 96 / ScreenResolution());
    units = resource.Units();
    window = CreateDialogIndirectParamA(GetModuleHandleA(nullptr), resource.Address(), nullptr,
                                        IgnoreMessages, 0);
}

OpenedDialog::~OpenedDialog() {
    if (window != nullptr) {
        DestroyWindow(window);
    }
}

std::wstring OpenedDialog::Title() const {
    return TextOf(window);
}

RECT OpenedDialog::ClientArea() const {
    const SIZE size = Pixels(units.cx, units.cy);
    return {0, 0, size.cx, size.cy};
}

std::vector<Control> OpenedDialog::Controls() const {
    std::vector<Control> controls;
    for (HWND child = GetWindow(window, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        controls.push_back(Describe(window, child));
    }
    return controls;
}

Control OpenedDialog::Item(int id) const {
    const HWND item = GetDlgItem(window, id);
    return item != nullptr ? Describe(window, item) : Control{};
}

SIZE OpenedDialog::Pixels(int horizontalUnits, int verticalUnits) const {
    RECT rect{0, 0, horizontalUnits, verticalUnits};
    MapDialogRect(window, &rect);
    return {rect.right, rect.bottom};
}

SIZE OpenedDialog::Measure(const std::wstring& text, int width) const {
    RECT room{0, 0, width > 0 ? width : 32000, 0};
    const HDC context = GetDC(window);
    const HGDIOBJ font =
        SelectObject(context, reinterpret_cast<HGDIOBJ>(SendMessageA(window, WM_GETFONT, 0, 0)));
    DrawTextW(context, text.c_str(), -1, &room,
              DT_CALCRECT | (width > 0 ? DT_WORDBREAK : DT_SINGLELINE));
    SelectObject(context, font);
    ReleaseDC(window, context);
    return {room.right, room.bottom};
}

const OpenedDialog& Opened(int id, int resolution) {
    static std::map<std::pair<int, int>, std::unique_ptr<OpenedDialog>> dialogs;
    auto& dialog = dialogs[{id, resolution}];
    if (dialog == nullptr) {
        dialog = std::make_unique<OpenedDialog>(id, resolution);
    }
    return *dialog;
}

std::vector<int> Resolutions() {
    constexpr int plainResolution = 96;
    const int screens = ScreenResolution();
    return screens == plainResolution ? std::vector{plainResolution, 120, 144, 192}
                                      : std::vector{screens};
}

std::vector<int> DialogResources() {
    std::vector<int> ids;
    EnumResourceNamesA(nullptr, MAKEINTRESOURCEA(5 /* RT_DIALOG */), CollectId,
                       reinterpret_cast<LONG_PTR>(&ids));
    std::sort(ids.begin(), ids.end());
    return ids;
}
