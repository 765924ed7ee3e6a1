#include "framework/About.Win.h"

#include "hostapi/HostTypes.h"
#include "shell/FatalError.h"
#include "shell/Module.Win.h"
#include "tests/shell/windows/Libraries.Win.h"
#include "tests/shell/windows/StandInToolbox.Win.h"
#include "tests/support/CoreTest.h"

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
    EXPECT_EQ(toolbox.Find<LastTagProcedure>("LastTag")(),
              hostapi::FourCharacters('A', 'b', 't', 'B'));
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
