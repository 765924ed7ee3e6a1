// All that the tool asks of the system; implemented in System.Native.cpp and System.Win.cpp.
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

/// The file's name in the form that the core opens: as it is, or in Windows' code page. Throws
/// std::runtime_error if the code page lacks a character.
std::string CoreFileName(const std::filesystem::path& path);

/// Returns the arguments after the program's name, as UTF-8.
std::vector<std::string> CommandLineArguments(int argc, char** argv);

/// Makes standard input deliver its bytes unchanged.
void MakeStandardInputBinary();

bool StandardErrorIsTerminal();

/// Differs between all processes that run at the same time.
unsigned long ProcessId();

struct ChildResult {
    /// The exit status; -1 if the child ended in another way.
    int status;
    /// All that it wrote on standard error.
    std::string errors;
};

/// The file of the program that runs.
std::filesystem::path ThisProgram();

/// Runs a program with `input` as its standard input and this one's standard output, and waits for
/// its end. May be called from several threads at once. Throws std::runtime_error if the process
/// cannot be started.
ChildResult RunProgram(const std::filesystem::path& program,
                       const std::vector<std::string>& arguments, std::string_view input);

}  // namespace recipe
