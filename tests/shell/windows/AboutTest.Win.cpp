#include "framework/help/About.Win.h"

#include <windows.h>

#include <tlhelp32.h>

#include "base/FatalError.h"
#include "base/Module.Win.h"
#include "fixtures/Screenshot.Win.h"
#include "framework/help/LoadedModule.Win.h"
#include "hostapi/SharedLibrary.h"
#include "tests/shell/windows/Libraries.Win.h"
#include "tests/shell/windows/StandInToolbox.Win.h"
#include "tests/support/CoreTest.h"
#include "tests/support/windows/DialogDriver.Win.h"
#include "tests/support/windows/ImportTable.Win.h"

namespace {

class AboutTest : public CoreTest {
  protected:
    AboutTest() { instanceHandle = GetModuleHandleA(nullptr); }
    ~AboutTest() override {
        instanceHandle = nullptr;
        errorCell = 0;
    }
};

TEST_F(AboutTest, NothingHappensWithoutTheLibrary) {
    ASSERT_EQ(GetModuleHandleA("Quorlinbench"), nullptr);
    ShowAbout();
    EXPECT_TRUE(Log().faults.empty());
}

TEST_F(AboutTest, TheLibrarysServiceShowsTheBox) {
    const LoadedLibrary toolbox(Arguments().toolbox);
    const auto count = toolbox.Find<AboutCountProcedure>("AboutCount");
    ShowAbout();
    EXPECT_EQ(count(), 1);
    EXPECT_EQ(toolbox.Find<LastTagProcedure>("LastTag")(), hostapi::aboutServiceTag);
    ShowAbout();
    EXPECT_EQ(count(), 2);
}

TEST_F(AboutTest, NothingHappensWithoutTheService) {
    const LoadedLibrary toolbox(Arguments().toolbox);
    const auto setMode = toolbox.Find<SetToolboxModeProcedure>("SetToolboxMode");
    for (const ToolboxMode mode :
         {ToolboxMode::refuses, ToolboxMode::grantsNull, ToolboxMode::lacksProcedure}) {
        setMode(mode);
        ShowAbout();
    }
    EXPECT_EQ(toolbox.Find<AboutCountProcedure>("AboutCount")(), 0);
    EXPECT_TRUE(Log().faults.empty());
}

/// The library that the host loads.
class FamilyLibraryTest : public AboutTest {
  protected:
    const LoadedLibrary family{Arguments().family};
};

TEST_F(FamilyLibraryTest, IsFoundByItsOwnName) {
    EXPECT_EQ(GetModuleHandleA("Quorlinbench"), nullptr) << "no file has the name";
    EXPECT_EQ(FindLoadedModule("Quorlinbench").get(), family.Module());
    EXPECT_EQ(FindLoadedModule("quorlinBENCH").get(), family.Module());
    EXPECT_EQ(FindLoadedModule("Hadrowen").get(), family.Module());
    EXPECT_EQ(FindLoadedModule("Quorlin").get(), nullptr);
    EXPECT_EQ(FindLoadedModule("kernel32").get(), GetModuleHandleA("kernel32"));
}

/// A library that another thread has freed since the system made its list.
BOOL WINAPI FirstIsFreed(HANDLE, MODULEENTRY32* entry) {
    entry->modBaseAddr = static_cast<BYTE*>(VirtualAlloc(nullptr, 1, MEM_RESERVE, PAGE_NOACCESS));
    VirtualFree(entry->modBaseAddr, 0, MEM_RELEASE);
    return TRUE;
}

TEST_F(FamilyLibraryTest, ALibraryThatIsFreedDuringTheSearchIsPassedOver) {
    ImportExchange imports(GetModuleHandleA(nullptr));
    ASSERT_TRUE(imports.Exchange("Module32First", reinterpret_cast<void*>(&FirstIsFreed)));
    EXPECT_EQ(FindLoadedModule("Quorlinbench").get(), family.Module());
}

TEST_F(FamilyLibraryTest, IsKeptWhileItIsHeld) {
    const HeldModule held = FindLoadedModule("Quorlinbench");
    ASSERT_NE(held, nullptr);
    // The host's own.
    EXPECT_TRUE(FreeLibrary(family.Module()));
    EXPECT_EQ(GetModuleHandleA("Hadrowen"), held.get());
    EXPECT_EQ(LoadLibraryA(Arguments().family.c_str()), held.get());
}

TEST_F(FamilyLibraryTest, ShowsTheAboutBox) {
    const SeenDialog box = DriveDialog(ShowAbout);
    EXPECT_EQ(box.title, "About Zandermolite");
    EXPECT_TRUE(box.closed);
    EXPECT_TRUE(box.cutControls.empty());
    KeepPicture(box.picture, "family-about");
    EXPECT_TRUE(DriveDialog(ShowAbout, Ending::escape).closed);
}

TEST_F(FamilyLibraryTest, TheProductShowsItForTheHost) {
    const LoadedPlugin plugin;
    hostapi::PlatformData platformData{};
    hostapi::AboutRecord about{&platformData};
    std::int16_t result = 999;
    const SeenDialog box = DriveDialog([&] {
        plugin.Entry()(0, reinterpret_cast<hostapi::FilterRecord*>(&about), nullptr, &result);
    });
    EXPECT_EQ(box.title, "About Zandermolite");
    EXPECT_EQ(result, 0);
}

TEST_F(FamilyLibraryTest, KeepsTheServicesOfOthersAsWell) {
    const auto lookup = family.Find<hostapi::LookupService>("ICCLookup");
    const auto add = family.Find<hostapi::RegisterService>("ICCRegister");
    const auto remove = family.Find<hostapi::RemoveService>("ICCRemove");
    constexpr hostapi::ServiceTag tag = hostapi::FourCharacters('T', 'e', 's', 't');
    int own = 0;
    void* found = &own;
    EXPECT_EQ(lookup(tag, &found), 0);
    EXPECT_EQ(found, nullptr);
    EXPECT_NE(add(tag, &own), 0);
    EXPECT_EQ(add(tag, &own), 0) << "taken";
    EXPECT_NE(lookup(tag, &found), 0);
    EXPECT_EQ(found, &own);
    EXPECT_NE(remove(tag), 0);
    EXPECT_EQ(remove(tag), 0);
    EXPECT_NE(lookup(hostapi::aboutServiceTag, &found), 0);
    EXPECT_EQ(static_cast<hostapi::AboutService*>(found)->flag, 1);
}

TEST_F(AboutTest, MissingNamesAreAFault) {
    const LoadedLibrary toolbox(Arguments().toolbox);
    // A module without the plug-in's strings.
    instanceHandle = toolbox.Module();
    EXPECT_EQ(FaultOf([] { ShowAbout(); }), 20001);
    ASSERT_EQ(Log().faults.size(), 1u);
    EXPECT_EQ(Log().faults[0].id, 20001);
    EXPECT_EQ(toolbox.Find<AboutCountProcedure>("AboutCount")(), 0);
}

TEST_F(AboutTest, TheProductAnswersTheAboutSelector) {
    const LoadedPlugin plugin;
    hostapi::PlatformData platformData{};
    hostapi::AboutRecord about{&platformData};
    const auto call = [&] {
        std::int16_t result = 999;
        plugin.Entry()(0, reinterpret_cast<hostapi::FilterRecord*>(&about), nullptr, &result);
        return result;
    };
    EXPECT_EQ(call(), 0) << "without the library";
    const LoadedLibrary toolbox(Arguments().toolbox);
    EXPECT_EQ(call(), 0);
    EXPECT_EQ(toolbox.Find<AboutCountProcedure>("AboutCount")(), 1);
}

}  // namespace
