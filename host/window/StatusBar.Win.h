// The bar at the window's foot: a message, what there is to know of picture and selection, and the
// progress of a filter.
#pragma once

#include <windows.h>

#include <array>
#include <string>

namespace host {

class StatusBar {
  public:
    enum Part { message, pictureInfo, pointer, selectionInfo, zoom };
    static constexpr std::size_t partCount = zoom + 1;

    /// Throws std::runtime_error.
    void Create(HWND parent);
    /// After the parent's size has changed. Returns the bar's height.
    int Layout();
    /// `text` in UTF-8.
    void SetText(Part part, const std::string& text);
    /// Shows the bar of progress in the place of pointer and selection.
    void BeginProgress();
    void SetProgress(int done, int total);
    void EndProgress();

  private:
    int TextWidth(const std::wstring& text) const;
    void PlaceParts();

    HWND bar = nullptr;
    HWND progress = nullptr;
    std::array<std::wstring, partCount> texts;
    /// The parts' right edges.
    std::array<int, partCount> shownEdges{};
    /// By GetTickCount().
    DWORD lastDrawn = 0;
};

}  // namespace host
