#include "recipe/formats/OutputFile.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "tests/recipe/TemporaryFolder.h"

using namespace recipe;

namespace {

class OutputFileTest : public testing::Test {
  protected:
    TemporaryFolder folder;
    const std::filesystem::path target = folder.Path() / "file.bin";
};

}  // namespace

TEST_F(OutputFileTest, AppearsAtCommitOnly) {
    OutputFile file(target);
    file.Write("abc", 3);
    EXPECT_FALSE(std::filesystem::exists(target));
    file.Commit();
    EXPECT_EQ(ReadFile(target), "abc");
    EXPECT_EQ(folder.FileNames(), std::vector<std::string>{"file.bin"});
}

TEST_F(OutputFileTest, ReplacesWhatWasThere) {
    WriteFile(target, "old and longer");
    OutputFile file(target);
    file.Write("new", 3);
    EXPECT_EQ(ReadFile(target), "old and longer");
    file.Commit();
    EXPECT_EQ(ReadFile(target), "new");
}

TEST_F(OutputFileTest, LeavesNothingWithoutCommit) {
    WriteFile(target, "old");
    {
        OutputFile file(target);
        file.Write("new", 3);
    }
    EXPECT_EQ(ReadFile(target), "old");
    EXPECT_EQ(folder.FileNames(), std::vector<std::string>{"file.bin"});
}

TEST_F(OutputFileTest, NamesTheTargetWhenItCannotBegin) {
    const auto missing = folder.Path() / "missing" / "file.bin";
    try {
        const OutputFile file(missing);
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_NE(std::string(error.what()).find("file.bin' cannot be written: "),
                  std::string::npos)
            << error.what();
    }
}

TEST_F(OutputFileTest, NamesTheTargetWhenItCannotEnd) {
    std::filesystem::create_directories(target / "in the way");
    OutputFile file(target);
    file.Write("abc", 3);
    try {
        file.Commit();
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_NE(std::string(error.what()).find("file.bin' cannot be written: "),
                  std::string::npos)
            << error.what();
    }
}

TEST_F(OutputFileTest, TakesNamesInAnyScript) {
    const auto name = folder.Path() / std::filesystem::path(u8"Fl\u00E4che \u6728.bin");
    OutputFile file(name);
    file.Write("abc", 3);
    file.Commit();
    EXPECT_EQ(ReadFile(name), "abc");
}
