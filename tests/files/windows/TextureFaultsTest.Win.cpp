// A texture and its file when the system refuses.
#include <windows.h>

#include "shell/transfer/LastTexture.h"
#include "tests/files/TextureFaults.h"
#include "tests/files/windows/HoldingProcess.Win.h"

namespace {

// Under Wine a folder in which not even an administrator makes files, and a file for which there is
// never any room; elsewhere neither is there.
constexpr char readOnlyFolder[] = "Z:\\proc";
constexpr char fullFile[] = "Z:\\dev\\full";

class SystemTextureTest : public RefusedTextureTest {};

TEST_F(SystemTextureTest, AFileInUseByAnotherProcessIsNeitherLoadedNorReplaced) {
    Put(Fixture("baseline.jpg"));
    {
        const HoldingProcess holder(NameOf("a.jpg"));
        ASSERT_TRUE(holder.Holds());
        EXPECT_FALSE(LoadFrom(NameOf("a.jpg")));
        EXPECT_FALSE(SaveAs(NameOf("a.jpg")));
        ExpectTextureAsBefore();
    }
    EXPECT_EQ(BytesIn("a.jpg"), Fixture("baseline.jpg"));
    EXPECT_TRUE(LoadFrom(NameOf("a.jpg")));
}

TEST_F(SystemTextureTest, AReadOnlyFolderIsAFailedSave) {
    EXPECT_FALSE(SaveAs(std::string(readOnlyFolder) + "\\a.jpg"));
    EXPECT_FALSE(LoadFrom(std::string(readOnlyFolder) + "\\a.jpg"));
    ExpectTextureAsBefore();
}

TEST_F(SystemTextureTest, AFullDiskIsAFailedSave) {
    Put(Fixture("baseline.jpg"));
    const FileSystemOverride disk;
    static bool (*systemsWrite)(void*, const void*, std::int32_t, std::int32_t*);
    systemsWrite = fileSystem.write;
    // As the system does it on a disk that grows files without having room for them.
    fileSystem.write = [](void* handle, const void* buffer, std::int32_t,
                          std::int32_t* transferred) {
        return systemsWrite(handle, buffer, 100, transferred);
    };
    EXPECT_FALSE(SaveAs(NameOf("b.jpg")));
    EXPECT_EQ(BytesIn("b.jpg"), "");
    ExpectTextureAsBefore();
    EXPECT_TRUE(LoadFrom(NameOf("a.jpg")));
}

TEST_F(SystemTextureTest, AFullDiskIsTheStatusOfAWriteThatGrows) {
    file.SetPath(fullFile);
    const std::int16_t created = file.Create();
    if (created == 0) {
        EXPECT_EQ(file.Write("abc", 0, 3), 19011);
        EXPECT_EQ(file.Close(), 0);
    } else {
        EXPECT_EQ(created, 19007);
    }
    ExpectTextureAsBefore();
}

TEST_F(SystemTextureTest, NobodyRemovesAFileWhileItIsWritten) {
    static std::string path;
    static bool (*systemsWrite)(void*, const void*, std::int32_t, std::int32_t*);
    path = NameOf("a.jpg");
    systemsWrite = fileSystem.write;
    fileSystem.write = [](void* handle, const void* buffer, std::int32_t count,
                          std::int32_t* transferred) {
        EXPECT_FALSE(DeleteFileA(path.c_str()));
        return systemsWrite(handle, buffer, count, transferred);
    };
    EXPECT_TRUE(SaveAs(path));
    EXPECT_TRUE(LoadFrom(path));
}

TEST_F(SystemTextureTest, TheLastTexturesFileIsGivenUpWithoutAWord) {
    Log().temporaryPath = folder.Path().string();
    ASSERT_TRUE(SaveLastTexture(picture.get()));
    const std::string path = NameOf("Zandermolite.tmp");
    const std::string before = BytesOf(path);
    {
        const HoldingProcess holder(path);
        ASSERT_TRUE(holder.Holds());
        EXPECT_FALSE(SaveLastTexture(picture.get()));
        EXPECT_EQ(LoadLastTexture(), nullptr);
    }
    EXPECT_EQ(BytesOf(path), before);
    Log().temporaryPath = readOnlyFolder;
    EXPECT_FALSE(SaveLastTexture(picture.get()));
    EXPECT_EQ(LoadLastTexture(), nullptr);
    ExpectTextureAsBefore();
}

}  // namespace
