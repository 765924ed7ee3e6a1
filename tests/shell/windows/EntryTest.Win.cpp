// ENTRYPOINT linked into this program, where the tests set the clock, and the product's own.
#include <array>

#include "base/FatalError.h"
#include "base/HostServices.h"
#include "base/Module.Win.h"
#include "host/command/DialogUser.Win.h"
#include "host/record/FilterHost.h"
#include "hostapi/FilterRecord.h"
#include "shell/Zandermolite.h"
#include "tests/shell/windows/Libraries.Win.h"
#include "tests/support/CoreTest.h"
#include "tests/support/OwnPreferences.Win.h"
#include "tests/support/RowHost.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/ServedTraits.h"
#include "tests/support/windows/DialogDriver.Win.h"

extern "C" void __cdecl ENTRYPOINT(std::int16_t selector, hostapi::FilterRecord* record, void* data,
                                   std::int16_t* result);
extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID);

namespace {

struct FloatingPoint {
    std::uint16_t x87;
    std::uint32_t sse;
    bool operator==(const FloatingPoint&) const = default;
};

FloatingPoint ReadFloatingPoint() {
    FloatingPoint state{};
    asm volatile("fnstcw %0" : "=m"(state.x87));
    asm volatile("stmxcsr %0" : "=m"(state.sse));
    return state;
}

void WriteFloatingPoint(const FloatingPoint& state) {
    asm volatile("fldcw %0" : : "m"(state.x87));
    asm volatile("ldmxcsr %0" : : "m"(state.sse));
}

class EntryTest : public CoreTest {
  protected:
    EntryTest() {
        instanceHandle = GetModuleHandleA(nullptr);
        Log().temporaryPath = folder.Path().string();
        rowHost.Attach(record);
    }
    ~EntryTest() override {
        instanceHandle = nullptr;
        hostWindow = nullptr;
        errorCell = 0;
    }

    /// The image after an interactive run whose entry is called by `call`.
    template <typename Call>
    HostImage RunThrough(Call call) {
        RowHost fresh(NoiseImage({0, 0, 30, 40}, 3));
        fresh.Attach(record);
        constexpr std::int16_t selectors[] = {1, 2, 3, 5};
        for (const std::int16_t selector : selectors) {
            std::int16_t result = 999;
            call(selector, &record, &result);
            EXPECT_EQ(result, 0);
        }
        fresh.Finish();
        memory.DisposeKept(record.parameters);
        record.parameters = nullptr;
        return fresh.image;
    }

    ScratchFolder folder;
    RowHost rowHost{NoiseImage({0, 0, 30, 40}, 3)};
};

TEST_F(EntryTest, RunsTheSelector) {
    std::int16_t result = 999;
    ENTRYPOINT(2, &record, nullptr, &result);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(record.bufferSpace, 65535);
    EXPECT_EQ(filterRecord, &record);
    ENTRYPOINT(6, &record, nullptr, &result);
    EXPECT_EQ(result, -30100);
    ENTRYPOINT(-1, &record, nullptr, &result);
    EXPECT_EQ(result, -30100);
}

TEST_F(EntryTest, LeavesTheHostsDataAlone) {
    std::int32_t data = 0x12345678;
    for (std::int16_t selector = -1; selector <= 6; ++selector) {
        std::int16_t result = 999;
        ENTRYPOINT(selector, &record, &data, &result);
        EXPECT_EQ(data, 0x12345678);
    }
    memory.DisposeKept(record.parameters);
}

TEST_F(EntryTest, OnlyTheSelectorsLowHalfCounts) {
    // A host may leave anything in the other half of the stack's word.
    const auto wide =
        reinterpret_cast<void(__cdecl*)(std::uint32_t, hostapi::FilterRecord*, void*,
                                        std::int16_t*)>(reinterpret_cast<void*>(&ENTRYPOINT));
    for (const std::uint32_t rubbish : {0x00010000u, 0x7FFF0000u, 0xFFFF0000u}) {
        std::int16_t result = 999;
        record.bufferSpace = 0;
        wide(rubbish | 2, &record, nullptr, &result);
        EXPECT_EQ(result, 0);
        EXPECT_EQ(record.bufferSpace, 65535);
    }
}

TEST_F(EntryTest, AttachAloneNotesTheInstance) {
    const auto handle = [](std::uintptr_t number) { return reinterpret_cast<HINSTANCE>(number); };
    instanceHandle = nullptr;
    for (const DWORD reason : {DWORD{DLL_PROCESS_DETACH}, DWORD{DLL_THREAD_ATTACH},
                               DWORD{DLL_THREAD_DETACH}, DWORD{77}}) {
        EXPECT_EQ(DllMain(handle(8), reason, nullptr), 1);
        EXPECT_EQ(instanceHandle, nullptr);
    }
    EXPECT_EQ(DllMain(handle(4), DLL_PROCESS_ATTACH, nullptr), 1);
    EXPECT_EQ(instanceHandle, handle(4));
}

TEST_F(EntryTest, WithoutAnInstanceItWarnsAndRunsAllTheSame) {
    instanceHandle = nullptr;
    const SeenDialog dialog = DriveDialog(
        [&] {
            std::int16_t result = 999;
            ENTRYPOINT(2, &record, nullptr, &result);
            EXPECT_EQ(result, 0);
        },
        Ending::enter);
    EXPECT_EQ(dialog.title, "");
    EXPECT_EQ(dialog.owner, nullptr);
    EXPECT_EQ(dialog.Text(0xFFFF), "The DLL instance handle is nil.\nThe plug-in will quit.");
    EXPECT_EQ(record.bufferSpace, 65535);
}

TEST_F(EntryTest, WhatEscapesTheSwitchEndsHere) {
    // The beep is the first thing that follows a fault; here it throws one of its own.
    static int beeps;
    beeps = 0;
    platformServices.beep = [] {
        ++beeps;
        throw std::int16_t{1};
    };
    record.handleProcs = nullptr;
    std::int16_t result = 999;
    ENTRYPOINT(1, &record, nullptr, &result);
    EXPECT_EQ(beeps, 1);
}

// Precision, rounding and unmasked exceptions of x87; flushing, rounding and masks of SSE.
constexpr FloatingPoint hostStates[] = {
    {0x37F, 0x1F80}, {0x27F, 0x1F80}, {0x07F, 0x1F80}, {0xF7F, 0x1F80},
    {0x340, 0x1F80}, {0x37F, 0x9FC0}, {0x37F, 0x3F80}, {0x37F, 0x5F80},
    {0x37F, 0x7F80}, {0x37F, 0x1000}, {0x240, 0x8000},
};

TEST_F(EntryTest, NeitherPixelsNorTheHostsSettingsDependOnEachOther) {
    const HostImage expected = RunThrough([](std::int16_t selector, auto* called, auto* result) {
        ENTRYPOINT(selector, called, nullptr, result);
    });
    for (const FloatingPoint& state : hostStates) {
        const HostImage image = RunThrough([&](std::int16_t selector, auto* called, auto* result) {
            const FloatingPoint own = ReadFloatingPoint();
            WriteFloatingPoint(state);
            ENTRYPOINT(selector, called, nullptr, result);
            const FloatingPoint after = ReadFloatingPoint();
            WriteFloatingPoint(own);
            EXPECT_EQ(after.x87, state.x87) << std::hex << state.x87;
            EXPECT_EQ(after.sse, state.sse) << std::hex << state.sse;
        });
        EXPECT_EQ(image, expected) << std::hex << state.x87 << ", " << state.sse;
    }
}

TEST_F(EntryTest, AFaultGivesTheHostsSettingsBackToo) {
    const FloatingPoint own = ReadFloatingPoint();
    const FloatingPoint state{0x27F, 0x3F80};
    record.handleProcs = nullptr;
    std::int16_t result = 999;
    WriteFloatingPoint(state);
    ENTRYPOINT(1, &record, nullptr, &result);
    const FloatingPoint after = ReadFloatingPoint();
    WriteFloatingPoint(own);
    EXPECT_EQ(after, state);
    EXPECT_EQ(Log().beeps, 1);
}

/// The product in a strict host with the given habits.
class ProductTest : public testing::TestWithParam<host::Trait> {
  protected:
    ScratchFolder folder;
    OwnPreferences preferences{folder.Path()};
};

TEST_P(ProductTest, RunsAndRepeats) {
    const LoadedPlugin plugin;
    host::HostSettings settings;
    settings.traits.Insert(GetParam());
    host::FilterHost filterHost(settings);
    for (const int planes : {3, 4}) {
        const host::Picture before = host::MakePicture(80, 60, planes, 100);
        host::Picture first = before;
        const host::Selection selection = host::SelectRectangle({5, 6, 45, 66});
        host::DialogUser user(UsualPresses());
        const host::RunReport report = filterHost.Run(plugin.Entry(), first, selection);
        EXPECT_EQ(user.Finish(), std::nullopt);
        EXPECT_TRUE(report.Succeeded()) << report.result;
        EXPECT_EQ(report.faults, std::vector<std::string>{});
        EXPECT_NE(first.pixels, before.pixels);
        host::Picture second = before;
        const host::RunReport repeat =
            filterHost.Run(plugin.Entry(), second, selection, host::Execution::repeat);
        EXPECT_TRUE(repeat.Succeeded()) << repeat.result;
        EXPECT_EQ(repeat.faults, std::vector<std::string>{});
        EXPECT_EQ(second.pixels, first.pixels);
    }
}

INSTANTIATE_TEST_SUITE_P(Traits, ProductTest, testing::ValuesIn(ServedTraits()),
                         [](const auto& test) {
                             std::string name = host::TraitName(test.param);
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

TEST(ProductFaultTest, ALackingHostIsToldInADialogOverItsWindow) {
    const ScratchFolder folder;
    const OwnPreferences preferences(folder.Path());
    const LoadedPlugin plugin;
    const HWND window = CreateWindowExA(0, "STATIC", "Host", WS_POPUP | WS_VISIBLE, 100, 100, 600,
                                        400, nullptr, nullptr, nullptr, nullptr);
    host::HostSettings settings;
    settings.without[host::Service::bufferProcs] = true;
    settings.hooks.window = window;
    host::FilterHost filterHost(settings);
    const host::Picture before = host::MakePicture(80, 60, 3, 100);
    host::Picture picture = before;
    host::RunReport report;
    const std::vector<SeenDialog> seen = DriveDialogs(
        [&] {
            report = filterHost.Run(plugin.Entry(), picture, host::SelectRectangle({5, 6, 45, 66}));
        },
        {Ending::pressOk, Ending::pressOk});
    DestroyWindow(window);
    ASSERT_EQ(seen.size(), 2u);
    EXPECT_EQ(seen[0].title, "New");
    EXPECT_EQ(seen[0].owner, window);
    const SeenDialog& dialog = seen[1];
    EXPECT_EQ(dialog.title, "Zandermolite");
    EXPECT_EQ(dialog.owner, window);
    EXPECT_EQ(dialog.Text(3), "A fatal error of type = 17500 occured.");
    EXPECT_EQ(dialog.Text(4), "File: PhotoshopUtilities");
    EXPECT_EQ(report.result, 0);
    EXPECT_TRUE(report.completed);
    EXPECT_EQ(report.faults, std::vector<std::string>{});
    EXPECT_EQ(picture, before);
}

}  // namespace
