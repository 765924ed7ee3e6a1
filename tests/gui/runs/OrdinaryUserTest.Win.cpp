// The whole run of a user who may write neither the machine's registry nor the plug-in's folder.
#include <filesystem>

#include "files/PreferencePlace.h"
#include "resources/Ids.h"
#include "tests/gui/DialogWork.Win.h"
#include "tests/gui/PluginRun.Win.h"
#include "tests/support/windows/OwnRegistry.Win.h"

namespace {

/// Before the fixture puts its own in place.
const PreferencePlaceServices systemsPlace = preferencePlace;

std::string modulePath;

class OrdinaryUserRunTest : public PluginRunTest {
  protected:
    OrdinaryUserRunTest() {
        std::filesystem::create_directories(moduleFolder);
        std::filesystem::create_directories(dataFolder);
        modulePath = (moduleFolder / "Zandermolite.8bf").string();
        preferencePlace = systemsPlace;
        preferencePlace.modulePath = [](char* path, std::size_t capacity) {
            path[modulePath.copy(path, capacity - 1)] = '\0';
            return true;
        };
        // The system denies everybody to open a folder as a file, also the administrator that the
        // tests may be.
        std::filesystem::create_directory(moduleFolder / "Zandermolite3.prf");
        user.SetDataFolder(dataFolder.wstring());
        machine.DenyWriting();
    }
    ~OrdinaryUserRunTest() override { machine.AllowWriting(); }

    std::filesystem::path StoredFile() const {
        return dataFolder / "Zandermolite" / "Zandermolite3.prf";
    }

    const std::filesystem::path moduleFolder = folder.Path() / "plug-ins";
    const std::filesystem::path dataFolder = folder.Path() / "data";
    OwnRegistry machine{REG_OPTION_NON_VOLATILE};
    OwnRegistry user{REG_OPTION_NON_VOLATILE, HKEY_CURRENT_USER};
};

void Work(const GuiDriver& gui) {
    const DrivenDialog opening = gui.WaitFor(createrDialog);
    opening.PressToOpen(okItem);
    const DrivenDialog editor = gui.WaitFor(textureDialog);
    editor.PressToOpen(TextureItems::lines);
    const DrivenDialog lines = gui.WaitFor(linesDialog);
    EXPECT_EQ(Entries(lines, ApplyItems::presets), (std::vector<std::string>{"Last Used", ""}));
    TypeInto(gui, lines, LinesItems::angle, "33");
    lines.PressToOpen(ApplyItems::save);
    const DrivenDialog name = gui.WaitFor(presetDialog);
    TypeInto(gui, name, PresetItems::name, "Mine");
    CloseWith(name, okItem);
    CloseWith(lines, okItem);
    editor.PressToOpen(TextureItems::apply);
    editor.WaitUntilClosed();
}

void FindAllAgain(const GuiDriver& gui) {
    const DrivenDialog opening = gui.WaitFor(createrDialog);
    opening.PressToOpen(okItem);
    const DrivenDialog editor = gui.WaitFor(textureDialog);
    editor.PressToOpen(TextureItems::lines);
    const DrivenDialog lines = gui.WaitFor(linesDialog);
    EXPECT_EQ(lines.Text(LinesItems::angle), "33");
    EXPECT_EQ(Entries(lines, ApplyItems::presets),
              (std::vector<std::string>{"Last Used", "", "Mine"}));
    CloseWith(lines, cancelItem);
    editor.PressToOpen(TextureItems::apply);
    editor.WaitUntilClosed();
}

TEST_F(OrdinaryUserRunTest, KeepsItsSettingsAmongTheUsersOwn) {
    const host::RunReport first = Run(Work);
    EXPECT_TRUE(first.Succeeded());
    ExpectFilledWithApplied();
    EXPECT_FALSE(picture.pixels == before.pixels);
    EXPECT_TRUE(Log().alerts.empty());
    EXPECT_TRUE(std::filesystem::is_regular_file(StoredFile()));
    EXPECT_TRUE(std::filesystem::is_empty(moduleFolder / "Zandermolite3.prf"));
    DWORD type = REG_NONE;
    EXPECT_EQ(user.Value(type).c_str(), StoredFile().string());
    EXPECT_EQ(machine.Value(type), "(none)");

    // A process that has just started knows nothing of the first run but what is stored.
    dialogPlaces = {};
    const host::RunReport second = Run(FindAllAgain);
    EXPECT_TRUE(second.Succeeded());
    EXPECT_TRUE(Log().alerts.empty());
}

}  // namespace
