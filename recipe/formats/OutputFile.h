// A file that appears complete or not at all.
#pragma once

#include <cstdio>
#include <filesystem>

#include "recipe/tool/System.h"

namespace recipe {

/// Is written under another name beside the target, and renamed at the end. Until then a file of
/// the target's name stays as it is.
class OutputFile {
  public:
    /// All members throw std::runtime_error.
    explicit OutputFile(std::filesystem::path targetPath);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    /// Without Commit() nothing remains.
    ~OutputFile();

    std::FILE* Stream() const { return stream.get(); }
    void Write(const void* bytes, std::size_t count);
    void Commit();
    /// Throws the error of a failed write to Stream(), whose reason is in errno.
    [[noreturn]] void Fail() const;

  private:
    std::filesystem::path target;
    std::filesystem::path temporary;
    FileHandle stream;
};

}  // namespace recipe
