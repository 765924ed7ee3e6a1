// A texture and its file when the system refuses.
#include "shell/transfer/LastTexture.h"
#include "tests/files/Refusals.Native.h"
#include "tests/files/TextureFaults.h"

namespace {

/// Names are those in the test's folder.
class TextureFaultsTest : public RefusedTextureTest {
  protected:
    bool Save(const std::string& name) { return SaveAs(NameOf(name)); }
    bool Load(const std::string& name) { return LoadFrom(NameOf(name)); }
};

TEST_F(TextureFaultsTest, AFullDiskIsAFailedSave) {
    std::filesystem::create_symlink("/dev/full", NameOf("full.jpg"));
    EXPECT_FALSE(Save("full.jpg"));
    EXPECT_EQ(GetLastFileError(), 0) << "of the closing behind the write that failed";
    {
        const FileSizeLimit limit(200);
        EXPECT_FALSE(Save("a.jpg"));
        EXPECT_TRUE(std::filesystem::exists(NameOf("a.jpg"))) << "what fitted stays";
    }
    ExpectTextureAsBefore();
    EXPECT_TRUE(Save("a.jpg")) << "once there is room";
    EXPECT_TRUE(Load("a.jpg"));
}

TEST_F(TextureFaultsTest, AReadOnlyFolderIsAFailedSaveButCanBeLoadedFrom) {
    Put(Fixture("baseline.jpg"));
    chmod(NameOf("a.jpg").c_str(), 0444);
    {
        const ReadOnlyFolder readOnly(folder.Path());
        EXPECT_FALSE(Save("new.jpg"));
        EXPECT_FALSE(Save("a.jpg"));
        ExpectTextureAsBefore();
        EXPECT_TRUE(Load("a.jpg"));
    }
    EXPECT_FALSE(std::filesystem::exists(NameOf("new.jpg")));
    EXPECT_EQ(BytesIn("a.jpg"), Fixture("baseline.jpg"));
    EXPECT_EQ(editor.textureName, "a.jpg");
}

TEST_F(TextureFaultsTest, AFileInUseByAnotherProcessIsNeitherLoadedNorReplaced) {
    Put(Fixture("baseline.jpg"));
    {
        const HoldingProcess holder(NameOf("a.jpg"));
        ASSERT_TRUE(holder.Holds());
        EXPECT_FALSE(Load("a.jpg"));
        EXPECT_FALSE(Save("a.jpg"));
        ExpectTextureAsBefore();
    }
    EXPECT_EQ(BytesIn("a.jpg"), Fixture("baseline.jpg"));
    EXPECT_TRUE(Load("a.jpg"));
}

TEST_F(TextureFaultsTest, AFileThatGoesAwayWhileItIsWrittenCostsThatFileAlone) {
    static std::string path;
    static bool (*systemsWrite)(void*, const void*, std::int32_t, std::int32_t*);
    path = NameOf("a.jpg");
    systemsWrite = fileSystem.write;
    fileSystem.write = [](void* handle, const void* buffer, std::int32_t count,
                          std::int32_t* transferred) {
        unlink(path.c_str());
        return systemsWrite(handle, buffer, count, transferred);
    };
    EXPECT_TRUE(Save("a.jpg")) << "the system keeps it until it is closed";
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_EQ(PixelsOf(*picture), pixels);
    fileSystem.write = systemsWrite;
    EXPECT_TRUE(Save("a.jpg"));
    EXPECT_TRUE(Load("a.jpg"));
}

TEST_F(TextureFaultsTest, AFileThatIsCutWhileItIsReadIsAFaultAndKeepsTheTexture) {
    Put(Fixture("large-segment.jpg"));
    static std::string path;
    static int reads;
    static bool (*systemsRead)(void*, void*, std::int32_t, std::int32_t*);
    path = NameOf("a.jpg");
    reads = 0;
    systemsRead = fileSystem.read;
    fileSystem.read = [](void* handle, void* buffer, std::int32_t count,
                         std::int32_t* transferred) {
        if (++reads == 3) {
            std::filesystem::resize_file(path, 4200);
        }
        return systemsRead(handle, buffer, count, transferred);
    };
    EXPECT_EQ(FaultOf([&] { Load("a.jpg"); }), 20008);
    EXPECT_EQ(Log().faults.size(), 1u);
    EXPECT_EQ(PixelsOf(*picture), pixels);
    EXPECT_EQ(editor.textureName, "before.jpg");
    EXPECT_EQ(file.handle, nullptr);
}

TEST_F(TextureFaultsTest, TheLastTexturesFileIsGivenUpWithoutAWord) {
    Log().temporaryPath = folder.Path().string();
    ASSERT_TRUE(SaveLastTexture(picture.get()));
    const std::string path = NameOf("Zandermolite.tmp");
    const std::string before = BytesOf(path);
    chmod(path.c_str(), 0444);
    {
        const ReadOnlyFolder readOnly(folder.Path());
        EXPECT_FALSE(SaveLastTexture(picture.get()));
        EXPECT_NE(LoadLastTexture(), nullptr);
    }
    EXPECT_EQ(BytesOf(path), before);
    std::filesystem::remove(path);
    EXPECT_EQ(LoadLastTexture(), nullptr);
    {
        const FileSizeLimit limit(400);
        const PaintClass large(200, 200);
        EXPECT_FALSE(SaveLastTexture(&large));
        EXPECT_EQ(LoadLastTexture(), nullptr) << "what fitted is no texture";
        // A small one meets the end of the disk when the file is closed; that is not looked at.
        EXPECT_TRUE(SaveLastTexture(picture.get()));
        EXPECT_EQ(LoadLastTexture(), nullptr);
    }
    ExpectTextureAsBefore();
}

}  // namespace
