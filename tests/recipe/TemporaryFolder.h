// Files for tests.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// An empty folder of the test's own, gone with all in it at the end. It is the current folder
/// meanwhile.
class TemporaryFolder {
  public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    const std::filesystem::path& Path() const { return path; }
    /// All names in it, in alphabetical order.
    std::vector<std::string> FileNames() const;

  private:
    std::filesystem::path path;
    std::filesystem::path previousFolder;
};

void WriteFile(const std::filesystem::path& file, const std::string& bytes);
/// Fails the test if the file is not there.
std::string ReadFile(const std::filesystem::path& file);
