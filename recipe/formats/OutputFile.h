// A file that appears complete or not at all.
#pragma once

#include <cstdio>
#include <filesystem>

#include "recipe/tool/System.h"

namespace recipe {

/// Written under another name beside the target, and renamed at the end. Until then whatever stood
/// at the target stays.
class OutputFile {
  public:
    /// Throws std::runtime_error, as all here.
    explicit OutputFile(std::filesystem::path targetPath);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    /// Without Commit() nothing remains.
    ~OutputFile();

    std::FILE* Stream() const { return stream.get(); }
    void Write(const void* bytes, std::size_t count);
    void Commit();
    /// Throws for a write to Stream() that failed, with the reason in errno.
    [[noreturn]] void Fail() const;

  private:
    std::filesystem::path target;
    std::filesystem::path temporary;
    FileHandle stream;
};

}  // namespace recipe
