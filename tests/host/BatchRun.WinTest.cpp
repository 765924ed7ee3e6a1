// Runs zandermolite-run.exe on the test filters: statuses, what is printed, what is written.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "host/picture/Picture.h"
#include "tests/support/OwnPreferences.Win.h"

namespace host {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

struct Output {
    int status;
    std::string out;
    std::string error;
};

std::string ReadText(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(stream), {}};
    std::erase(text, '\r');
    return text;
}

HANDLE FileForChild(const fs::path& file) {
    SECURITY_ATTRIBUTES inherited{sizeof(inherited), nullptr, TRUE};
    // A program with windows may start one of the system's, which inherits the file and outlives
    // it.
    return CreateFileW(file.c_str(), GENERIC_WRITE,
                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, &inherited,
                       CREATE_ALWAYS, 0, nullptr);
}

std::wstring CommandLine(const fs::path& program, const std::vector<std::string>& arguments) {
    std::wstring line = L"\"" + program.wstring() + L"\"";
    for (const std::string& argument : arguments) {
        line += L" \"" + PathFromUtf8(argument).wstring() + L"\"";
    }
    return line;
}

/// The programs lie where the build put them, beside this one's folder.
fs::path BuildFolder() {
    wchar_t name[MAX_PATH];
    GetModuleFileNameW(nullptr, name, MAX_PATH);
    return fs::path(name).parent_path();
}

class BatchRunTest : public testing::Test {
  protected:
    BatchRunTest()
        : folder(fs::path(testing::TempDir()) /
                 ("batch-run-" + std::to_string(GetCurrentProcessId()))),
          in(folder / "in.png"),
          out(folder / "out.png"),
          before(MakePicture(20, 10, 3, 100)) {
        fs::create_directories(folder);
        before.horizontalResolution = before.verticalResolution = 300;
        SavePicture(before, in);
    }
    ~BatchRunTest() override {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }

    Output Start(const std::vector<std::string>& arguments) const {
        const fs::path outText = folder / "stdout.txt", errorText = folder / "stderr.txt";
        STARTUPINFOW startup{};
        startup.cb = sizeof(startup);
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdOutput = FileForChild(outText);
        startup.hStdError = FileForChild(errorText);
        PROCESS_INFORMATION process{};
        std::wstring line = CommandLine(BuildFolder() / ZANDERMOLITE_RUN, arguments);
        const auto create = [&] {
            return CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                  &startup, &process) != FALSE;
        };
        // While other programs come and go Wine sometimes fails to set a process up; nothing of the
        // program has run then.
        EXPECT_TRUE(create() || (GetLastError() == ERROR_INTERNAL_ERROR && create()))
            << GetLastError();
        CloseHandle(startup.hStdOutput);
        CloseHandle(startup.hStdError);
        WaitForSingleObject(process.hProcess, INFINITE);
        DWORD status = 0;
        GetExitCodeProcess(process.hProcess, &status);
        CloseHandle(process.hProcess);
        CloseHandle(process.hThread);
        return {static_cast<int>(status), ReadText(outText), ReadText(errorText)};
    }

    /// The named test filter on the input picture.
    Output Run(const std::string& name, std::vector<std::string> arguments = {}) const {
        const std::vector<std::string> common = {
            "--image", Utf8Name(in), "--filter", Filters(), "--name", name, "--out", Utf8Name(out)};
        arguments.insert(arguments.begin(), common.begin(), common.end());
        return Start(arguments);
    }

    static std::string Filters() { return Utf8Name(BuildFolder() / "testfilters.8bf"); }
    bool IsWritten() const { return fs::exists(out); }
    int Written(int x, int y) const { return LoadPicture(out).Pixel(x, y)[0]; }

    const fs::path folder, in, out;
    Picture before;
};

constexpr const char* allSelectors =
    "selector 1 (parameters): 0\nselector 2 (prepare): 0\nselector 3 (start): 0\n"
    "selector 5 (finish): 0\n";

int Lines(const std::string& text) {
    return static_cast<int>(std::count(text.begin(), text.end(), '\n'));
}

}  // namespace

TEST_F(BatchRunTest, AFilterRunsAndItsResultIsWritten) {
    const Output output = Run("Invert", {"--selection", "5,2,9,6"});
    EXPECT_EQ(output.status, 0) << output.error;
    EXPECT_EQ(output.out, allSelectors);
    EXPECT_EQ(output.error, "");
    Picture expected = before;
    for (int y = 2; y < 6; ++y) {
        std::fill(expected.Pixel(5, y), expected.Pixel(9, y), std::uint8_t{155});
    }
    const Picture written = LoadPicture(out);
    EXPECT_EQ(written.pixels, expected.pixels);
    EXPECT_NEAR(written.horizontalResolution, 300, 0.02);
}

TEST_F(BatchRunTest, TheFirstFilterOfAFileIsTheDefault) {
    EXPECT_EQ(
        Start({"--image", Utf8Name(in), "--filter", Filters(), "--out", Utf8Name(out)}).status, 0);
    EXPECT_EQ(Written(0, 0), 155);
}

TEST_F(BatchRunTest, MasksAndEllipsesSelect) {
    Picture mask = MakePicture(20, 10, 3, 0);
    mask.Pixel(3, 3)[0] = mask.Pixel(3, 3)[1] = mask.Pixel(3, 3)[2] = 255;
    SavePicture(mask, folder / "mask.png");
    EXPECT_EQ(Run("Invert", {"--mask", Utf8Name(folder / "mask.png")}).status, 0);
    EXPECT_EQ(Written(3, 3), 155);
    EXPECT_EQ(Written(4, 3), 100);
    EXPECT_EQ(Run("Invert", {"--ellipse", "2"}).status, 0);
    EXPECT_EQ(Written(10, 5), 155);
    EXPECT_EQ(Written(0, 0), 100);
}

TEST_F(BatchRunTest, SeveralRunsPassThePictureOn) {
    const Output output = Run("Count", {"--times", "3", "--repeat"});
    EXPECT_EQ(output.status, 0);
    const std::string repeated =
        "selector 2 (prepare): 0\nselector 3 (start): 0\nselector 5 (finish): 0\n";
    EXPECT_EQ(output.out,
              std::string("run 1\n") + allSelectors + "run 2\n" + repeated + "run 3\n" + repeated);
    EXPECT_EQ(Written(0, 0), 100 + 1 + 2 + 3);
    EXPECT_EQ(Run("Count", {"--times", "3", "--trait", "zero-record"}).status, 0);
    EXPECT_EQ(Written(0, 0), 103);
    EXPECT_EQ(Run("Count", {"--repeat"}).out, repeated);
    EXPECT_EQ(Run("Count", {"--times", "2", "--trait", "free-library"}).status, 0);
    EXPECT_EQ(Written(0, 0), 103);
}

TEST_F(BatchRunTest, PressesWorkInTheFiltersDialogs) {
    const OwnPreferences preferences(folder);
    const Output output =
        Start({"--image", Utf8Name(in), "--filter", Utf8Name(BuildFolder() / PLUGIN_FILE), "--out",
               Utf8Name(out), "--selection", "5,2,9,6", "--press", "New:1", "--press",
               "Zandermolite:52", "--press", "Zandermolite:1"});
    EXPECT_EQ(output.status, 0) << output.error;
    EXPECT_EQ(output.out, allSelectors);
    // A blank texture, inverted.
    EXPECT_EQ(Written(5, 2), 0);
    EXPECT_EQ(Written(4, 2), 100);
}

TEST_F(BatchRunTest, APressThatFindsNoDialogIsTold) {
    const Output output = Run("Invert", {"--press", "New:1"});
    EXPECT_EQ(output.status, 2);
    EXPECT_EQ(output.error, "zandermolite-run: the filter opened no dialog 'New' with an item 1\n");
}

TEST_F(BatchRunTest, ARefusalWritesNothing) {
    const Output output = Run("Refuse");
    EXPECT_EQ(output.status, 3);
    EXPECT_EQ(output.out,
              "selector 1 (parameters): 0\nselector 2 (prepare): 0\nselector 3 (start): -30100\n");
    EXPECT_FALSE(IsWritten());
    // The runs that would have followed don't.
    EXPECT_EQ(Run("Refuse", {"--times", "5"}).out, output.out);
}

TEST_F(BatchRunTest, FaultsHaveAStatusOfTheirOwn) {
    const Output behind = Run("Behind row", {"--selection", "0,0,4,1"});
    EXPECT_EQ(behind.status, 4);
    EXPECT_EQ(behind.out,
              std::string(allSelectors) +
                  "fault: outData: written behind its end: 1 byte, the first at offset 12\n");
    EXPECT_TRUE(IsWritten());
    EXPECT_EQ(Run("Leak").out,
              std::string(allSelectors) + "fault: buffer 1 (1000 bytes): never freed\n");
    EXPECT_EQ(Run("Free twice").status, 4);
}

TEST_F(BatchRunTest, ContinuingWithoutEndIsCutOff) {
    const Output output = Run("Endless", {"--continue-limit", "3"});
    EXPECT_EQ(output.status, 4);
    EXPECT_NE(output.out.find("fault: the filter continues without end"), std::string::npos);
    EXPECT_FALSE(IsWritten());
}

TEST_F(BatchRunTest, ACrashIsTold) {
    const Output crash = Run("Crash");
    EXPECT_EQ(crash.status, 5);
    EXPECT_EQ(crash.error, "zandermolite-run: the filter crashed (exception 0xC0000005)\n");
    const Output thrown = Run("Throw");
    EXPECT_EQ(thrown.status, 5);
    // The filter's own run-time library says something before.
    EXPECT_TRUE(thrown.error.ends_with("the filter crashed (it ended the program)\n"));
    EXPECT_FALSE(IsWritten());
}

TEST_F(BatchRunTest, StarvingReachesTheFilter) {
    EXPECT_EQ(Run("Invert", {"--abort-after", "4"}).status, 3);
    const Output failed = Run("Invert", {"--fail-advance", "2=-36"});
    EXPECT_NE(failed.out.find("selector 3 (start): -36\n"), std::string::npos);
    EXPECT_NE(Run("Count", {"--memory", "0"}).out.find("start): -108"), std::string::npos);
    EXPECT_NE(Run("Count", {"--fail-allocation", "1"}).out.find("start): -108"), std::string::npos);
    EXPECT_FALSE(IsWritten());
}

TEST_F(BatchRunTest, EveryTraitLeavesAGoodFilterGood) {
    for (const char* trait :
         {"zero-record",       "empty-suites",      "constant-space",  "display-ignores-origin",
          "refuse-conversion", "shrink-rectangles", "shrink-silently", "fpu-27f",
          "fpu-37f",           "misalign-stack",    "free-library",    "no-automask",
          "withhold-mask",     "rubbish-tail",      "negative-origin", "ignore-matte",
          "move-parameters",   "dumb-handles",      "lose-parameters", "space-in-kilobytes",
          "negative-space",    "ignore-results",    "sixteen-bits"}) {
        const Output output = Run("Invert", {"--trait", trait, "--times", "3"});
        EXPECT_EQ(output.status, 0) << trait << ": " << output.error;
        EXPECT_EQ(Written(7, 7), 155) << trait;
    }
}

TEST_F(BatchRunTest, TheControlWordIsTheTraits) {
    EXPECT_NE(Run("Control", {"--trait", "fpu-27f"}).out.find("parameters): 639"),
              std::string::npos);
    EXPECT_NE(Run("Control", {"--trait", "fpu-37f"}).out.find("parameters): 895"),
              std::string::npos);
    // It may be the process's own control word, which the other trait would change.
    EXPECT_NE(
        Run("Control", {"--trait", "fpu-27f", "--trait", "fpu-37f"}).out.find("parameters): 895"),
        std::string::npos);
}

TEST_F(BatchRunTest, SingleSelectorsNeedNoPicture) {
    const Output about = Start({"--filter", Filters(), "--name", "About", "--about"});
    EXPECT_EQ(about.status, 3);
    EXPECT_EQ(about.out, "selector 0 (about): 7\n");
    EXPECT_EQ(Start({"--filter", Filters(), "--selector", "6"}).out, "selector 6 (unknown): 0\n");
    EXPECT_EQ(Start({"--filter", Filters(), "--selector", "-1"}).out, "selector -1 (unknown): 0\n");
}

TEST_F(BatchRunTest, JsonHoldsEverything) {
    const Json json = Json::parse(Run("Invert", {"--json"}).out);
    EXPECT_EQ(json["status"], 0);
    EXPECT_EQ(json["written"], Utf8Name(out));
    EXPECT_EQ(json["runs"][0]["calls"].size(), 4U);
    EXPECT_EQ(json["runs"][0]["callbacks"]["advanceState"], 10);
}

TEST_F(BatchRunTest, FiltersAreListed) {
    const Output file = Start({"--list", Filters()});
    EXPECT_EQ(file.status, 0);
    EXPECT_EQ(Lines(file.out), 14);
    EXPECT_EQ(file.out.find("Tests\tInvert\tINVERT\tRGB\t" + Filters() + "\n"), 0U) << file.out;
    // A folder may hold files that are no filters.
    const fs::path plugins = folder / "plugins" / "inner";
    fs::create_directories(plugins);
    fs::copy_file(PathFromUtf8(Filters()), plugins / "A.8BF");
    std::ofstream(plugins / "b.8bf") << "nonsense";
    std::ofstream(plugins / "c.txt") << "nonsense";
    const Output list = Start({"--list", Utf8Name(folder / "plugins"), "--json"});
    EXPECT_EQ(list.status, 0);
    const Json json = Json::parse(list.out);
    ASSERT_EQ(json.size(), 14U);
    EXPECT_EQ(json[1]["name"], "Continue");
    EXPECT_EQ(json[12]["cases"][6], (Json{0, 0}));
    EXPECT_EQ(list.error,
              Utf8Name(plugins / "b.8bf") + ": not a plug-in, or it cannot be opened\n");
}

TEST_F(BatchRunTest, WhatCannotBeUsedGetsOneLine) {
    const std::string text = Utf8Name(folder / "text.png");
    std::ofstream(folder / "text.png") << "no picture";
    auto fails = [&](const std::vector<std::string>& arguments, const std::string& expected) {
        const Output output = Start(arguments);
        EXPECT_EQ(output.status, 2);
        EXPECT_EQ(output.out, "");
        EXPECT_EQ(output.error, "zandermolite-run: " + expected + "\n");
    };
    const std::string image = Utf8Name(in);
    fails({}, "--filter is missing");
    fails({"--image", text, "--filter", Filters()}, text + ": not a PNG, JPEG or BMP picture");
    fails({"--image", "none.png", "--filter", Filters()}, "none.png: cannot be opened");
    fails({"--image", image, "--filter", "none.8bf"},
          "none.8bf: not a plug-in, or it cannot be opened");
    fails({"--image", image, "--filter", text}, text + ": not a plug-in, or it cannot be opened");
    fails({"--image", image, "--filter", "C:\\windows\\system32\\kernel32.dll"},
          "C:\\windows\\system32\\kernel32.dll: has no PIPL resource");
    fails({"--image", image, "--filter", Filters(), "--name", "none"},
          Filters() + ": has no filter named none");
    fails({"--image", image, "--filter", Filters(), "--name", "No entry"},
          Filters() + ": exports no MISSING");
    fails({"--image", image, "--filter", Filters(), "--selection", "0,0,21,10"},
          "the selection reaches beyond the picture");
    fails({"--list", "no-folder"}, "no-folder: not a plug-in, or it cannot be opened");
    const std::string nowhere = Utf8Name(folder / "none" / "out.png");
    fails({"--image", image, "--filter", Filters(), "--out", nowhere},
          nowhere + ": cannot be written");
}

TEST_F(BatchRunTest, APictureTheFilterCannotHandleIsRefused) {
    SavePicture(MakePicture(4, 4, 4), in);
    EXPECT_EQ(Run("Invert").status, 0);
    const Output output = Run("Flat only");
    EXPECT_EQ(output.status, 2);
    EXPECT_EQ(output.error, "zandermolite-run: " + Filters() +
                                ": the filter doesn't work on such a picture and selection\n");
    EXPECT_EQ(Run("Flat only", {"--layer", "flat"}).status, 0);
}

TEST_F(BatchRunTest, FilesMayHaveAnyName) {
    const fs::path named = folder / PathFromUtf8("\xCE\xB1 \xE4\xB8\xAD.png");
    fs::copy_file(in, named);
    EXPECT_EQ(
        Start({"--image", Utf8Name(named), "--filter", Filters(), "--out", Utf8Name(named)}).status,
        0);
    EXPECT_EQ(LoadPicture(named).Pixel(0, 0)[0], 155);
}

}  // namespace host
