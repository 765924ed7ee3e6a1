// A folder of a test's own.
#pragma once

#include <filesystem>
#include <string>

/// Empty at first; gone with all in it at the end.
class ScratchFolder {
  public:
    ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder();

    const std::filesystem::path& Path() const { return path; }

  private:
    std::filesystem::path path;
};

/// Empty if there is no such file.
std::string BytesOf(const std::filesystem::path& file);

/// Replaces the file.
void WriteBytes(const std::filesystem::path& file, const std::string& bytes);
