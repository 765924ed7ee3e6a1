// Starts the recipe tool itself.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

#include "tests/recipe/TemporaryFolder.h"

struct ProgramResult {
    int status;
    std::string output;
    /// With the line ends that the program wrote, before the system translated them.
    std::string errors;

    bool operator==(const ProgramResult&) const = default;
    friend std::ostream& operator<<(std::ostream& stream, const ProgramResult& result) {
        return stream << "status " << result.status << ", output \"" << result.output
                      << "\", errors \"" << result.errors << "\"";
    }
};

class ProgramTest : public testing::Test {
  protected:
    static ProgramResult Run(const std::vector<std::string>& arguments,
                             const std::string& input = "");

    TemporaryFolder folder;
};

/// Nothing to say, on either stream.
inline const ProgramResult quietSuccess = {0, "", ""};

/// The folder of the examples, absolute.
std::filesystem::path SourceFolder();
