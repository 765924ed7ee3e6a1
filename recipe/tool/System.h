// The tool's whole boundary to the system it runs on. System.Native.cpp and System.Win.cpp fill it.
#pragma once

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace recipe {

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FileHandle = std::unique_ptr<std::FILE, FileCloser>;

/// As std::fopen, for any file name; null on failure with the reason in errno.
FileHandle OpenFile(const std::filesystem::path& path, const char* mode);

/// The file's name as the core's own files take it: as it is, or in Windows' code page. Throws
/// std::runtime_error for one that cannot be said in it.
std::string CoreFileName(const std::filesystem::path& path);

/// Returns the arguments after the program's name, as UTF-8.
std::vector<std::string> CommandLineArguments(int argc, char** argv);

/// From here on standard input delivers the bytes as they are.
void MakeStandardInputBinary();

bool StandardErrorIsTerminal();

/// Tells this process from all that run at the same time.
unsigned long ProcessId();

struct ChildResult {
    /// The exit status; -1 if the child ended in another way.
    int status;
    /// All that it wrote on standard error.
    std::string errors;
};

/// The file of the program that runs.
std::filesystem::path ThisProgram();

/// Runs a program and waits for its end. `input` is its standard input; it shares the standard
/// output. May be called from several threads at once. Throws std::runtime_error if no process can
/// be had.
ChildResult RunProgram(const std::filesystem::path& program,
                       const std::vector<std::string>& arguments, std::string_view input);

}  // namespace recipe
