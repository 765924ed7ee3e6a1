// The preference file when memory runs out at any moment of its loading.
#include <array>
#include <memory>

#include "files/Preferences.h"
#include "fixtures/PreferencePlaceInMemory.h"
#include "tests/shell/allocation/FailingAllocator.h"
#include "tests/support/CoreTest.h"
#include "tests/support/FileSystemOverride.h"
#include "tests/support/PreferenceBytes.h"
#include "tests/support/ScratchFolder.h"

namespace {

int shownAlert = 0;

class PreferencesMemoryTest : public CoreTest {
  protected:
    PreferencesMemoryTest() : place((folder.Path() / "Zandermolite.8bf").string()) {
        dialogPlaces = {};
        place->stored = File().string();
        place->hasPath = true;
        platformServices.showAlert = [](std::int16_t id, const std::array<const char*, 4>&) {
            shownAlert = id;
            return 1;
        };
        bytes = FirstPreferenceFile();
        bytes.replace(listsOffset + 2 * presetSkew, 2,
                      WordBytes(3) + NameBytes("one") + FromHex("01000000") + NameBytes("two") +
                          FromHex("02000000"));
    }

    std::filesystem::path File() const { return folder.Path() / "Zandermolite3.prf"; }

    /// Loads with the nth allocation failing. Nothing may be left of it but the presets.
    void Load(int nth) {
        WriteBytes(File(), bytes);
        shownAlert = 0;
        auto preferences = std::make_unique<Preferences>();
        CountAllocations(nth);
        {
            const CountingSwitch on(true);
            loaded = LoadPreferences(*preferences);
        }
        presets = 0;
        void* data = nullptr;
        while (preferences->presets[presetSkew].DataAt(static_cast<short>(presets + 1), &data)) {
            ++presets;
        }
        EXPECT_EQ(AllocationsLive(), 2 * presets) << "a node and a record each";
        preferences.reset();
        EXPECT_EQ(AllocationsLive(), 0);
    }

    ScratchFolder folder;
    FileSystemOverride system;
    PreferencePlaceInMemory place;
    std::string bytes;
    bool loaded = false;
    int presets = 0;
};

TEST_F(PreferencesMemoryTest, WithoutARecordTheFileIsReportedAndDeletedWithoutANodeAPresetIsLost) {
    Load(0);
    ASSERT_TRUE(loaded);
    ASSERT_EQ(presets, 2);
    const int all = AllocationsAsked();
    int reported = 0;
    int lost = 0;
    for (int nth = 1; nth <= all; ++nth) {
        SCOPED_TRACE(nth);
        Load(nth);
        if (loaded) {
            EXPECT_EQ(presets, 1);
            EXPECT_EQ(shownAlert, 0);
            EXPECT_EQ(BytesOf(File()), bytes);
            ++lost;
        } else {
            EXPECT_EQ(shownAlert, 16104);
            EXPECT_FALSE(std::filesystem::exists(File()));
            ++reported;
        }
    }
    EXPECT_EQ(reported, 2);
    EXPECT_EQ(lost, 2);
    EXPECT_EQ(all, reported + lost);
}

}  // namespace
