// Reading and writing an open file.
#include <algorithm>
#include <cstring>
#include <limits>

#include "tests/files/FileTest.h"

namespace {

// Reading.

TEST_F(FileTest, ReadsFromAnyPlace) {
    Put("0123456789");
    ASSERT_EQ(file.Open("r"), 0);
    std::string read(4, '-');
    EXPECT_EQ(file.Read(read.data(), 3, 4), 4);
    EXPECT_EQ(read, "3456");
    EXPECT_EQ(file.position, 7);
    EXPECT_EQ(file.Read(read.data(), file.position, 2), 2);
    EXPECT_EQ(read, "7856");
    EXPECT_EQ(file.position, 9);
    EXPECT_EQ(GetLastFileError(), 0);
}

TEST_F(FileTest, ReadsNoFurtherThanTheEnd) {
    Put("0123456789");
    ASSERT_EQ(file.Open("r"), 0);
    std::string read(4, '-');
    EXPECT_EQ(file.Read(read.data(), 8, 4), 2);
    EXPECT_EQ(read, "89--");
    EXPECT_EQ(file.position, 10);
    EXPECT_EQ(file.Read(read.data(), 10, 4), 0);
    EXPECT_EQ(file.position, 10);
}

TEST_F(FileTest, ReadFromBehindTheEndLeavesThePositionAtTheEnd) {
    Put("0123456789");
    ASSERT_EQ(file.Open("r"), 0);
    char byte = '-';
    for (const std::int32_t start : {11, 1000, std::numeric_limits<std::int32_t>::max()}) {
        EXPECT_EQ(file.Read(&byte, start, 1), 0);
        EXPECT_EQ(file.position, 10);
    }
    EXPECT_EQ(byte, '-');
    EXPECT_EQ(file.Read(nullptr, 11, 1), 0) << "nothing is read, so nothing is checked";
}

TEST_F(FileTest, ReadOfACountBelowZeroReadsNothing) {
    Put("0123456789");
    ASSERT_EQ(file.Open("r"), 0);
    EXPECT_EQ(file.Read(nullptr, 5, -2), 0);
    EXPECT_EQ(file.position, 3);
    constexpr auto lowest = std::numeric_limits<std::int32_t>::min();
    EXPECT_EQ(file.Read(nullptr, lowest, lowest), 0);
    EXPECT_EQ(file.position, lowest);
}

TEST_F(FileTest, ReadFromBelowZeroIsAnError) {
    Put("0123456789");
    ASSERT_EQ(file.Open("r"), 0);
    char bytes[4];
    EXPECT_EQ(Fault([&] { file.Read(bytes, -1, 4); }), 20002);
}

TEST_F(FileTest, AClosedFileReadsNothing) {
    Put("abc");
    char byte = '-';
    file.position = 7;
    EXPECT_EQ(file.Read(&byte, 0, 1), 0);
    EXPECT_EQ(byte, '-');
    EXPECT_EQ(file.position, 7);
    EXPECT_EQ(GetLastFileError(), 0);
}

TEST_F(FileTest, FailuresOfReadingAreFaults) {
    Put("abc");
    ASSERT_EQ(file.Open("r"), 0);
    char bytes[3];
    EXPECT_EQ(Fault([&] { file.Read(nullptr, 0, 3); }), 20008);
    {
        const FileSystemOverride step;
        fileSystem.isWritable = [](void*, std::int32_t) { return false; };
        EXPECT_EQ(Fault([&] { file.Read(bytes, 0, 3); }), 20008);
    }
    {
        const FileSystemOverride step;
        fileSystem.seek = [](void*, std::int32_t) { return false; };
        EXPECT_EQ(Fault([&] { file.Read(bytes, 0, 3); }), 20002);
    }
    {
        const FileSystemOverride step;
        fileSystem.read = [](void*, void*, std::int32_t, std::int32_t*) { return false; };
        EXPECT_EQ(Fault([&] { file.Read(bytes, 0, 3); }), 20002);
    }
    {
        const FileSystemOverride step;
        fileSystem.read = [](void*, void*, std::int32_t count, std::int32_t* transferred) {
            *transferred = count - 1;
            return true;
        };
        EXPECT_EQ(Fault([&] { file.Read(bytes, 0, 3); }), 20008);
    }
    {
        const FileSystemOverride step;
        fileSystem.size = [](void*) { return std::int64_t{-1}; };
        EXPECT_EQ(Fault([&] { file.Read(bytes, 0, 3); }), 20002);
        EXPECT_EQ(Fault([&] { file.GetSize(); }), 20002);
    }
    EXPECT_EQ(file.Read(bytes, 0, 3), 3);
}

// Writing.

TEST_F(FileTest, WritesToAnyPlace) {
    Put("0123456789");
    ASSERT_EQ(file.Open(), 0);
    EXPECT_EQ(file.Write("abc", 3, 3), 0);
    EXPECT_EQ(file.position, 6);
    EXPECT_EQ(file.GetSize(), 10);
    EXPECT_EQ(file.Write("xyz", 9, 3), 0);
    EXPECT_EQ(file.position, 12);
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(Bytes(), "012abc678xyz");
}

TEST_F(FileTest, WriteBehindTheEndGrowsTheFileFirst) {
    Put("012");
    ASSERT_EQ(file.Open(), 0);
    static std::vector<std::string> steps;
    static FileSystemServices real;
    steps.clear();
    real = fileSystem;
    fileSystem.setEnd = [](void* handle) {
        steps.push_back("end");
        return real.setEnd(handle);
    };
    fileSystem.write = [](void* handle, const void* buffer, std::int32_t count,
                          std::int32_t* transferred) {
        steps.push_back("write");
        return real.write(handle, buffer, count, transferred);
    };
    fileSystem.flush = [](void* handle) {
        steps.push_back("flush");
        return real.flush(handle);
    };
    EXPECT_EQ(file.Write("ab", 6, 2), 0);
    EXPECT_EQ(steps, (std::vector<std::string>{"end", "write", "flush"}));
    EXPECT_EQ(file.position, 8);
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(Bytes(), std::string("012\0\0\0ab", 8));
}

TEST_F(FileTest, AClosedFileOnlyGetsItsPosition) {
    Put("abc");
    EXPECT_EQ(file.Write("xy", 5, 2), 0);
    EXPECT_EQ(file.position, 7);
    EXPECT_EQ(Bytes(), "abc");
}

TEST_F(FileTest, NothingToWriteOnlyGrowsTheFile) {
    Put("abc");
    ASSERT_EQ(file.Open(), 0);
    EXPECT_EQ(file.Write(nullptr, 2, 0), 0);
    EXPECT_EQ(file.position, 2);
    EXPECT_EQ(file.GetSize(), 3);
    EXPECT_EQ(file.Write(nullptr, 5, 0), 0);
    EXPECT_EQ(file.position, 5);
    EXPECT_EQ(file.GetSize(), 5);
    EXPECT_EQ(file.Write("x", 7, -1), 0);
    EXPECT_EQ(file.position, 7);
    EXPECT_EQ(file.GetSize(), 5);
}

TEST_F(FileTest, PlacesThatNoFileHasAreRefused) {
    Put("abc");
    ASSERT_EQ(file.Open(), 0);
    EXPECT_EQ(file.Write("xy", std::numeric_limits<std::int32_t>::max(), 2), 19011);
    EXPECT_EQ(file.Write("xy", -2, 2), 19011);
    EXPECT_EQ(GetLastFileError(), 19011);
    EXPECT_EQ(file.GetSize(), 3);
    EXPECT_EQ(file.position, 0);
}

TEST_F(FileTest, FailuresOfWriting) {
    Put("abc");
    ASSERT_EQ(file.Open(), 0);
    EXPECT_EQ(Fault([&] { file.Write(nullptr, 0, 3); }), 20008);
    {
        const FileSystemOverride step;
        fileSystem.isReadable = [](const void*, std::int32_t) { return false; };
        EXPECT_EQ(Fault([&] { file.Write("xyz", 0, 3); }), 20008);
    }
    {
        const FileSystemOverride step;
        fileSystem.setEnd = [](void*) { return false; };
        EXPECT_EQ(file.Write("wxyz", 0, 4), 19011);
        EXPECT_EQ(GetLastFileError(), 19011);
    }
    {
        const FileSystemOverride step;
        fileSystem.seek = [](void*, std::int32_t) { return false; };
        EXPECT_EQ(file.Write("xyz", 0, 3), 19011);
        EXPECT_EQ(GetLastFileError(), 19011);
        EXPECT_EQ(file.SetSize(3), 19011);
    }
    {
        const FileSystemOverride step;
        fileSystem.write = [](void*, const void*, std::int32_t, std::int32_t*) { return false; };
        EXPECT_EQ(Fault([&] { file.Write("xyz", 0, 3); }), 20002);
    }
    {
        const FileSystemOverride step;
        fileSystem.write = [](void*, const void*, std::int32_t count, std::int32_t* transferred) {
            *transferred = count - 1;
            return true;
        };
        EXPECT_EQ(Fault([&] { file.Write("xyz", 0, 3); }), 20008);
    }
    EXPECT_EQ(file.position, 0);
    {
        const FileSystemOverride step;
        fileSystem.flush = [](void*) { return false; };
        EXPECT_EQ(Fault([&] { file.Write("xyz", 0, 3); }), 20008);
    }
    EXPECT_EQ(file.Write("XYZ", 0, 3), 0);
}

// Sizes.

TEST_F(FileTest, TheSizeCanBeAskedAndSet) {
    EXPECT_EQ(Fault([&] { file.GetSize(); }), 20002);
    EXPECT_EQ(file.SetSize(3), 19011) << "a closed file has no size";
    Put("0123456789");
    ASSERT_EQ(file.Open(), 0);
    EXPECT_EQ(file.GetSize(), 10);
    EXPECT_EQ(file.SetSize(4), 0);
    EXPECT_EQ(file.GetSize(), 4);
    EXPECT_EQ(file.SetSize(6), 0);
    EXPECT_EQ(file.SetSize(-1), 19011);
    EXPECT_EQ(GetLastFileError(), 19011);
    file.Close();
    EXPECT_EQ(Bytes(), std::string("0123\0\0", 6));
}

TEST_F(FileTest, ALargerSizeThanANumberHoldsIsTheLargest) {
    Put("abc");
    ASSERT_EQ(file.Open(), 0);
    fileSystem.size = [](void*) { return std::int64_t{1} << 32; };
    EXPECT_EQ(file.GetSize(), std::numeric_limits<std::int32_t>::max());
}

}  // namespace
