// A disk that takes no more bytes, by the system's limit on the size of a file.
#include <sys/resource.h>

#include <algorithm>
#include <csignal>

#include "tests/recipe/ProgramTest.h"

namespace {

/// Files of this process and its children end at so many bytes.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t bytes) : previousHandler(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &previous);
        const rlimit limit = {bytes, previous.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &previous);
        std::signal(SIGXFSZ, previousHandler);
    }

  private:
    void (*previousHandler)(int);
    rlimit previous{};
};

class FullDiskTest : public ProgramTest, public testing::WithParamInterface<const char*> {};

}  // namespace

TEST_P(FullDiskTest, LeavesNoHalfWrittenFile) {
    WriteFile("image.bmp", std::string("BM") + std::string("\x3A\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0"
                                                           "\1\0\0\0\1\0\0\0\1\0\x18\0\0\0\0\0"
                                                           "\4\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"
                                                           "\0\0\1\2\3\0",
                                                           56));
    WriteFile("small.png", "what was there before");
    ProgramResult result;
    {
        const FileSizeLimit limit(60);
        result = Run({"-"}, std::string("new\nlines\n") + GetParam());
    }
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.errors.starts_with("-:3: ")) << result.errors;
    EXPECT_NE(result.errors.find("cannot be written"), std::string::npos) << result.errors;
    EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1);
    EXPECT_EQ(folder.FileNames(), (std::vector<std::string>{"image.bmp", "small.png"}));
    EXPECT_EQ(ReadFile("small.png"), "what was there before");
}

INSTANTIATE_TEST_SUITE_P(Operations, FullDiskTest,
                         testing::Values("save file=small.png", "save file=new.tmp",
                                         "save file=new.jpg", "repeat file=small.png",
                                         "apply image=image.bmp file=small.png"));
