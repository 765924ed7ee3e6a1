// Progress of the work, on one line of the terminal.
#pragma once

namespace recipe {

/// Draws on standard error, and erases the line at its end.
class ProgressBar {
  public:
    /// An invisible bar does nothing.
    explicit ProgressBar(bool isVisible) : visible(isVisible) {}
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ~ProgressBar() { Clear(); }

    /// Draws if the percentage changes. `share` is 0 to 1.
    void Show(double share);
    /// Erases the line, so that other text can be written.
    void Clear();

  private:
    bool visible;
    /// The percentage on the line; -1 when the line is empty.
    int shownPercent = -1;
};

}  // namespace recipe
