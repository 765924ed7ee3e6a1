// How far the work has come, on one line of the terminal.
#pragma once

namespace recipe {

/// Draws on standard error, and leaves nothing there at its end.
class ProgressBar {
  public:
    /// One that is not visible does nothing.
    explicit ProgressBar(bool isVisible) : visible(isVisible) {}
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ~ProgressBar() { Clear(); }

    /// `share` from 0 to 1. Draws only if that shows.
    void Show(double share);
    /// Makes room for a line of other text.
    void Clear();

  private:
    bool visible;
    /// The percentage on the line; -1 when the line is empty.
    int shownPercent = -1;
};

}  // namespace recipe
