#include "host/window/StatusBar.Win.h"

#include <commctrl.h>

#include <algorithm>
#include <numeric>
#include <stdexcept>

#include "base/WindowContext.Win.h"
#include "host/window/NativeWindow.Win.h"

namespace host {

namespace {

// The widest that the parts to the right usually hold.
constexpr const wchar_t* widestPointer = L"30000, 30000";
constexpr const wchar_t* widestSelection = L"8888, 8888 to 8888, 8888 (8888 \u00D7 8888)";
constexpr const wchar_t* widestZoom = L"3200 %";
constexpr int partPadding = 14;
constexpr int smallestMessage = 120;
// Drawing the bar for each percent took longer than most filters do.
constexpr DWORD millisecondsBetweenDraws = 100;

HWND CreateControl(const wchar_t* className, DWORD style, HWND parent) {
    HWND control = CreateWindowExW(0, className, L"", style, 0, 0, 0, 0, parent, nullptr,
                                   GetModuleHandleW(nullptr), nullptr);
    if (control == nullptr) {
        throw std::runtime_error("A part of the window cannot be made.");
    }
    return control;
}

}  // namespace

void StatusBar::Create(HWND parent) {
    bar = CreateControl(STATUSCLASSNAMEW, WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, parent);
    progress = CreateControl(PROGRESS_CLASSW, WS_CHILD, bar);
    SendMessageW(progress, PBM_SETRANGE32, 0, 100);
    PlaceParts();
}

int StatusBar::Layout() {
    SendMessageW(bar, WM_SIZE, 0, 0);
    PlaceParts();
    RECT rect{};
    GetWindowRect(bar, &rect);
    return rect.bottom - rect.top;
}

void StatusBar::SetText(Part part, const std::string& text) {
    std::wstring wide = Wide(text);
    if (wide == texts[part]) {
        return;
    }
    texts[part] = std::move(wide);
    PlaceParts();
    SendMessageW(bar, SB_SETTEXTW, part, reinterpret_cast<LPARAM>(texts[part].c_str()));
}

void StatusBar::BeginProgress() {
    RECT first{}, last{};
    SendMessageW(bar, SB_GETRECT, pointer, reinterpret_cast<LPARAM>(&first));
    SendMessageW(bar, SB_GETRECT, selectionInfo, reinterpret_cast<LPARAM>(&last));
    SetWindowPos(progress, nullptr, first.left, first.top, last.right - first.left,
                 first.bottom - first.top, SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW);
    lastDrawn = GetTickCount();
    SendMessageW(progress, PBM_SETPOS, 0, 0);
    UpdateWindow(bar);
}

void StatusBar::SetProgress(int done, int total) {
    const DWORD now = GetTickCount();
    if (now - lastDrawn < millisecondsBetweenDraws) {
        return;
    }
    lastDrawn = now;
    const int percent = std::clamp(MulDiv(done, 100, std::max(total, 1)), 0, 100);
    SendMessageW(progress, PBM_SETPOS, static_cast<WPARAM>(percent), 0);
    UpdateWindow(progress);
}

void StatusBar::EndProgress() {
    ShowWindow(progress, SW_HIDE);
}

int StatusBar::TextWidth(const std::wstring& text) const {
    if (text.empty()) {
        return 0;
    }
    const WindowContext owner(bar);
    HDC context = owner.Get();
    HGDIOBJ font = reinterpret_cast<HGDIOBJ>(SendMessageW(bar, WM_GETFONT, 0, 0));
    HGDIOBJ previous = SelectObject(context, font);
    SIZE size{};
    GetTextExtentPoint32W(context, text.c_str(), static_cast<int>(text.size()), &size);
    SelectObject(context, previous);
    return size.cx + ScaledToScreen(partPadding);
}

// From the right: what is left over is the message's. Where that is too little, the others make
// room, those first that are least missed.
void StatusBar::PlaceParts() {
    std::array<int, partCount> widths{TextWidth(texts[message]), TextWidth(texts[pictureInfo]),
                                      TextWidth(widestPointer), TextWidth(widestSelection),
                                      // Beside the grip.
                                      TextWidth(widestZoom) + GetSystemMetrics(SM_CXVSCROLL)};
    const int width = ClientSize(bar).width;
    for (Part part : {pictureInfo, pointer, zoom}) {
        if (std::accumulate(widths.begin(), widths.end(), 0) > width) {
            widths[part] = 0;
        }
    }
    const int others = std::accumulate(widths.begin() + pictureInfo, widths.end(), 0);
    widths[message] = std::max(width - others, ScaledToScreen(smallestMessage));
    std::array<int, partCount> edges{};
    std::partial_sum(widths.begin(), widths.end(), edges.begin());
    if (edges == shownEdges) {
        return;
    }
    shownEdges = edges;
    SendMessageW(bar, SB_SETPARTS, partCount, reinterpret_cast<LPARAM>(edges.data()));
}

}  // namespace host
