// Whole runs of the product in which the system or the host refuses something at one point after
// the other.
//
// SWEEP in the environment says how many calls of each series are refused: "all", or a number; they
// are taken evenly from the calls that a run without refusals makes. SWEEP_CALL is the number of
// one call, which alone is refused then. SWEEP_LOG is a file of the points tried so far, which are
// left out (scripts/sweep).
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <utility>

#include "files/PreferenceFile.h"
#include "files/PreferenceFormat.h"
#include "fixtures/GuiDriver.Win.h"
#include "fixtures/PreferencesInMemory.h"
#include "tests/shell/windows/ImportPatch.Win.h"
#include "tests/shell/windows/Libraries.Win.h"
#include "tests/shell/windows/RecordPatch.h"
#include "tests/shell/windows/Refusals.h"
#include "tests/shell/windows/SweepLog.h"
#include "tests/shell/windows/SweepUser.Win.h"
#include "tests/support/OwnPreferences.Win.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/Transfers.h"
#include "tests/support/windows/Levels.Win.h"

namespace {

constexpr hostapi::VRect bounds{5, 6, 29, 66};
/// A blank texture, of which the selection takes a few. With few rows: the operations report each,
/// by calls that are all alike.
constexpr int tileWidth = 24;
constexpr int tileHeight = 10;
constexpr char lastTexture[] = "Zandermolite.tmp";
constexpr char settingsFile[] = "Zandermolite3.prf";
constexpr char savedTexture[] = "saved.jpg";

std::string NameOf(const RefusedPoint& point) {
    return std::string(refusedNames[static_cast<std::size_t>(point.kind)]) + ", call " +
           std::to_string(point.call) + (point.andAllAfter ? " and all after it" : " alone");
}

/// The settings as a whole file, or none.
bool IsWholePreferenceFile(const std::string& bytes) {
    if (bytes.empty()) {
        return true;
    }
    Preferences read;
    try {
        ReadFromBytes(bytes, read);
    } catch (std::int16_t) {
        return false;
    }
    return true;
}

/// Whether all of the selection repeats one tile of this size, and the rest is as it was.
bool IsTiled(const host::Picture& before, const host::Picture& picture) {
    const auto pixel = [](const host::Picture& of, int x, int y) {
        const auto at = static_cast<std::size_t>((y * of.width + x) * of.planes);
        return std::array<std::uint8_t, 3>{of.pixels[at], of.pixels[at + 1], of.pixels[at + 2]};
    };
    const auto expected = [&](int x, int y) {
        const bool isSelected =
            x >= bounds.left && x < bounds.right && y >= bounds.top && y < bounds.bottom;
        return isSelected ? pixel(picture, bounds.left + (x - bounds.left) % tileWidth,
                                  bounds.top + (y - bounds.top) % tileHeight)
                          : pixel(before, x, y);
    };
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            if (pixel(picture, x, y) != expected(x, y)) {
                return false;
            }
        }
    }
    return true;
}

/// The outcome of runs without refusals.
struct Baseline {
    /// The preference file, with a preset in it.
    std::string settings;
    CallCounts calls{};
    /// Some systems keep a handle for each file dialog that is not cancelled.
    int handlesKept = 0;
};

/// Numbers from 1 to `calls`, as many as the environment asks for.
std::vector<int> WantedCalls(int calls) {
    if (const char* const single = std::getenv("SWEEP_CALL")) {
        return {std::atoi(single)};
    }
    const char* const wanted = std::getenv("SWEEP");
    const bool all = wanted != nullptr && std::strcmp(wanted, "all") == 0;
    const int count = all ? calls : wanted != nullptr ? std::min(calls, std::atoi(wanted)) : 1;
    std::vector<int> numbers;
    for (int i = 0; i < count; ++i) {
        // From the middle of each part: the first calls of all fail early.
        numbers.push_back(1 + static_cast<int>((2LL * i + 1) * calls / (2LL * count)));
    }
    return numbers;
}

class SweepTest : public testing::Test {
  protected:
    SweepTest() {
        GetEnvironmentVariableA("TMP", temporaryBefore, sizeof temporaryBefore);
        SetEnvironmentVariableA("TMP", folder.Path().string().c_str());
    }
    ~SweepTest() override { SetEnvironmentVariableA("TMP", temporaryBefore); }

    std::string File(const char* name) const { return BytesOf(folder.Path() / name); }
    void Remove(const char* name) const { std::filesystem::remove(folder.Path() / name); }

    /// All that the sweep's user can do. The host's memory and rows serve more where the texture
    /// begins with its selection.
    SweepWork FullWork(Refused kind, const std::string& presetName = "Second") const {
        return {true,       kind == Refused::host,       tileWidth, tileHeight,
                presetName, folder.Path() / savedTexture};
    }
    static SweepWork BriefWork() { return {false, false, tileWidth, tileHeight, "", ""}; }

    /// A host loads the product, runs it and frees it again.
    void Run(const RefusedPoint& point, const SweepWork& work) {
        Remove(lastTexture);
        Remove(savedTexture);
        hasEnteredFile = false;
        const LoadedPlugin plugin;
        host::FilterHost filterHost;
        const host::Picture before = host::MakePicture(80, 40, 3, 100);
        host::Picture picture = before;
        host::RunReport report;
        Refusals::Begin(point);
        {
            const ImportPatch patch(plugin.Module());
            RunWithUser(
                [&] {
                    report = filterHost.Run(EntryWithRefusals(plugin.Entry()), picture,
                                            host::SelectRectangle(bounds));
                },
                [&](const GuiDriver& gui) {
                    SweepUser user(gui, work);
                    user.Work();
                    hasEnteredFile = user.HasEnteredFile();
                });
        }
        EXPECT_TRUE(report.completed);
        EXPECT_EQ(report.faults, std::vector<std::string>{});
        EXPECT_EQ(filterHost.Memory().LiveBuffers(), 0u);
        isWritten = picture != before;
        if (isWritten) {
            ExpectWhole(before, picture);
        }
        ExpectNoOtherFile();
    }

    /// All of the selection is the last texture, and nothing else has changed. The file may be
    /// what was refused: then a tile that repeats tells.
    void ExpectWhole(const host::Picture& before, const host::Picture& picture) const {
        const std::string file = File(lastTexture);
        constexpr std::size_t header = 4;
        if (file.size() > header) {
            const HostImage image{hostapi::Narrowed(before.Bounds()), before.planes, before.pixels};
            const HostImage expected =
                Tiled(image, TileOfFile(file), hostapi::Narrowed(bounds), hostapi::Height(bounds));
            EXPECT_TRUE(picture.pixels == expected.bytes);
        } else {
            EXPECT_TRUE(IsTiled(before, picture));
        }
    }

    /// Nothing is left in the folder for settings and temporary files but what has a name there.
    void ExpectNoOtherFile() const {
        for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
            const std::string name = entry.path().filename().string();
            EXPECT_TRUE(name == lastTexture || name == settingsFile || name == savedTexture)
                << name << " was left";
        }
    }

    /// Settings as each point finds them.
    void RestoreSettings() const { WriteBytes(folder.Path() / settingsFile, baseline.settings); }

    /// Runs all the work with the call refused, then a short run with none refused. Returns the
    /// levels after both.
    Levels RunRefused(const RefusedPoint& point) {
        RestoreSettings();
        Run(point, FullWork(point.kind));
        handlesKept = hasEnteredFile ? baseline.handlesKept : 0;
        const std::string left = File(settingsFile);
        EXPECT_TRUE(left == baseline.settings || IsWholePreferenceFile(left));
        Run({}, BriefWork());
        EXPECT_TRUE(isWritten) << "the next run works";
        return SettledLevels();
    }

    /// False if an earlier run of the program has done it.
    bool RunLogged(const RefusedPoint& point) {
        const std::string name = NameOf(point);
        if (log.HasBegun(name)) {
            return false;
        }
        SCOPED_TRACE(name);
        // Who ends the process is known by the last line.
        std::printf("%s\n", name.c_str());
        std::fflush(stdout);
        log.Begin(name);
        const int failuresBefore = Failures();
        RunPoint(point);
        log.End(Failures() == failuresBefore ? "passed" : "failed");
        return true;
    }

    static int Failures() {
        return testing::UnitTest::GetInstance()->current_test_info()->result()->total_part_count();
    }

    void RunPoint(const RefusedPoint& point) {
        Levels levels = RunRefused(point);
        EXPECT_EQ(levels.windows, levelsBefore.windows);
        EXPECT_EQ(levels.menus, levelsBefore.menus);
        EXPECT_EQ(levels.freeSlots, levelsBefore.freeSlots);
        // The system keeps some objects of first uses, and its own threads come and go; what a run
        // leaves it leaves each time.
        constexpr int again = 3;
        for (int i = 0; i < again && HoldsMore(levels); ++i) {
            levelsBefore = levels;
            levels = RunRefused(point);
        }
        EXPECT_FALSE(HoldsMore(levels))
            << testing::PrintToString(levelsBefore) << "; after another time "
            << testing::PrintToString(levels);
        levelsBefore = levels;
    }

    /// More than before the last run, and than a run without refusals leaves.
    bool HoldsMore(const Levels& now) const {
        return now.kernelHandles > levelsBefore.kernelHandles + handlesKept ||
               now.gdiObjects > levelsBefore.gdiObjects || now.icons > levelsBefore.icons;
    }

    /// The system's own threads may still take a moment to go, with what they hold: the levels as
    /// soon as they are no higher than before, or when they stay the same.
    Levels SettledLevels() const {
        constexpr int looks = 20;
        constexpr DWORD betweenLooks = 50;
        Levels levels = CountLevels();
        bool isSettled = false;
        for (int i = 0; i < looks && HoldsMore(levels) && !isSettled; ++i) {
            Sleep(betweenLooks);
            const Levels earlier = std::exchange(levels, CountLevels());
            isSettled = levels == earlier;
        }
        return levels;
    }

    /// Several runs: the first one makes the settings, and the system keeps what it has made for
    /// first uses.
    void MakeBaseline() {
        // The system keeps the two registry keys by which it makes its first sound.
        MessageBeep(MB_OK);
        Run({}, FullWork(Refused::host, "First"));
        EXPECT_TRUE(isWritten);
        baseline.settings = File(settingsFile);
        EXPECT_TRUE(IsWholePreferenceFile(baseline.settings));
        const Levels before = RunRefused({});
        RestoreSettings();
        Run({Refused::host}, FullWork(Refused::host));
        baseline.calls = Refusals::Calls();
        EXPECT_TRUE(isWritten);
        EXPECT_NE(File(savedTexture), "");
        EXPECT_GT(File(settingsFile).size(), baseline.settings.size()) << "a preset is saved";
        baseline.handlesKept = SettledLevels().kernelHandles - before.kernelHandles;
        EXPECT_LE(baseline.handlesKept, 1);
    }

    /// Points of the series, evenly.
    void RunSeries(Refused kind) {
        if (baseline.settings.empty()) {
            MakeBaseline();
        }
        levelsBefore = SettledLevels();
        const int calls = baseline.calls[static_cast<std::size_t>(kind)];
        EXPECT_GT(calls, 0);
        const auto start = std::chrono::steady_clock::now();
        int points = 0;
        for (const int call : WantedCalls(calls)) {
            points += RunLogged({kind, call, false}) ? 1 : 0;
            points += RunLogged({kind, call, true}) ? 1 : 0;
        }
        const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
        std::printf("%s: %d points over %d calls in %.1f s\n",
                    refusedNames[static_cast<std::size_t>(kind)], points, calls, seconds.count());
    }

    ScratchFolder folder;
    OwnPreferences preferences{folder.Path()};
    char temporaryBefore[MAX_PATH] = "";
    /// None, before the first run of the series.
    Levels levelsBefore{};
    static inline Baseline baseline;
    static inline SweepLog log;
    bool isWritten = false;
    /// In the last run, and in the one of them with a call refused.
    bool hasEnteredFile = false;
    int handlesKept = 0;
};

TEST_F(SweepTest, WithoutObjectsToDrawWith) {
    RunSeries(Refused::drawing);
}

TEST_F(SweepTest, WithoutMemory) {
    RunSeries(Refused::memory);
}

TEST_F(SweepTest, WithoutFiles) {
    RunSeries(Refused::files);
}

TEST_F(SweepTest, WithoutTheRegistry) {
    RunSeries(Refused::registry);
}

TEST_F(SweepTest, WithAHostWhoseCallbacksFail) {
    RunSeries(Refused::host);
}

}  // namespace
