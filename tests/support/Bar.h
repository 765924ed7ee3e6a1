// The editor's progress bar, as tests watch it.
#pragma once

#include <vector>

#include "base/Progress.h"

/// Stands as the editor's bar while it lives. One at a time.
class Bar final : public ProgressTarget {
  public:
    Bar() { ShowClass::target = this; }
    Bar(const Bar&) = delete;
    Bar& operator=(const Bar&) = delete;
    ~Bar() { ShowClass::target = nullptr; }

    void DrawProgress(short percent) override { percents.push_back(percent); }

    std::vector<short> percents;
};
