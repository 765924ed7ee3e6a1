#include "host/window/ScrollBars.Win.h"

#include <algorithm>

namespace host {

Size RoomOf(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return {rect.right - rect.left, rect.bottom - rect.top};
}

// A bar that appears takes room from the other direction, so the two are decided together.
Size PageFor(Size content, Size room) {
    const int barWidth = GetSystemMetrics(SM_CXVSCROLL);
    const int barHeight = GetSystemMetrics(SM_CYHSCROLL);
    bool needsHorizontal = content.width > room.width;
    const bool needsVertical = content.height > room.height - (needsHorizontal ? barHeight : 0);
    needsHorizontal = content.width > room.width - (needsVertical ? barWidth : 0);
    return {room.width - (needsVertical ? barWidth : 0),
            room.height - (needsHorizontal ? barHeight : 0)};
}

void UpdateScrollBar(HWND window, int bar, int length, int page, int position) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMax = std::max(length - 1, 0);
    info.nPage = static_cast<UINT>(std::max(page, 0));
    info.nPos = position;
    SetScrollInfo(window, bar, &info, TRUE);
}

int RequestedPosition(HWND window, int bar, int request) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    GetScrollInfo(window, bar, &info);
    const int page = static_cast<int>(info.nPage);
    int position = info.nPos;
    switch (request) {
        case SB_LINEUP:
            position -= scrolledLine;
            break;
        case SB_LINEDOWN:
            position += scrolledLine;
            break;
        case SB_PAGEUP:
            position -= page;
            break;
        case SB_PAGEDOWN:
            position += page;
            break;
        case SB_TOP:
            position = info.nMin;
            break;
        case SB_BOTTOM:
            position = info.nMax;
            break;
        case SB_THUMBTRACK:
        case SB_THUMBPOSITION:
            position = info.nTrackPos;
            break;
        default:
            break;
    }
    return position;
}

}  // namespace host
