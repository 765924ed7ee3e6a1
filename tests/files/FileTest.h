// A file in a folder of its own, and what its operations fail with.
#pragma once

#include <filesystem>
#include <string>

#include "files/File.h"
#include "tests/support/CoreTest.h"
#include "tests/support/FileSystemOverride.h"
#include "tests/support/ScratchFolder.h"

class FileTest : public CoreTest {
  protected:
    FileTest() { lastFileError = 1; }
    ~FileTest() override {
        file.Close();
        lastFileError = 0;
        errorCell = 0;
    }

    std::filesystem::path PathOf(const char* name) const { return folder.Path() / name; }
    void Name(const char* name) { file.SetPath(PathOf(name).string()); }
    /// Names a file with these bytes.
    void Put(const std::string& bytes) {
        Name("some.dat");
        WriteBytes(file.path, bytes);
    }
    std::string Bytes() const { return BytesOf(file.path); }

    /// The id thrown, which must have been reported from File.
    template <typename Operation>
    static int Fault(Operation operation) {
        const int id = FaultOf(operation);
        if (id != 0) {
            EXPECT_EQ(Log().faults.back().id, id);
            EXPECT_EQ(Log().faults.back().file, "File");
        }
        return id;
    }

    ScratchFolder folder;
    FileSystemOverride system;
    File file;
};
