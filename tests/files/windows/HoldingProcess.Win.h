// A file in use by another process.
#pragma once

#include <windows.h>

#include <string>

/// Starts the program hold-file, which lies beside this one. While the object lives, nobody can
/// open the file.
class HoldingProcess {
  public:
    explicit HoldingProcess(const std::string& path);
    HoldingProcess(const HoldingProcess&) = delete;
    HoldingProcess& operator=(const HoldingProcess&) = delete;
    ~HoldingProcess();

    bool Holds() const { return holds; }

  private:
    HANDLE process = nullptr;
    HANDLE input = nullptr;
    bool holds = false;
};
