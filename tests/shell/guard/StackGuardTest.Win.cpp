// The guard of the stack, in processes of its own: these programs start themselves again with one
// of the tests that are disabled otherwise.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <set>
#include <string>

extern "C" std::uintptr_t __stack_chk_guard;

namespace {

/// The exit status of this program with the one test, disabled or not.
DWORD StatusOf(const std::string& test) {
    char path[MAX_PATH];
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    std::string command = '"' + std::string(path) +
                          "\" --gtest_also_run_disabled_tests --gtest_brief=1 --gtest_filter=" +
                          "StackGuardTest.DISABLED_" + test;
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &process)) {
        ADD_FAILURE() << command << ": error " << GetLastError();
        return 0;
    }
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD status = 0;
    GetExitCodeProcess(process.hProcess, &status);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return status;
}

void Fill(volatile char* bytes, int count) {
    for (int i = 0; i < count; ++i) {
        bytes[i] = 'A';
    }
}

[[gnu::noinline]] void FillArray(int count) {
    char array[16];
    Fill(array, count);
}

TEST(StackGuardTest, DISABLED_Fits) {
    FillArray(16);
    ExitProcess(7);
}

TEST(StackGuardTest, DISABLED_DoesNotFit) {
    FillArray(64);
    ExitProcess(7);
}

TEST(StackGuardTest, DISABLED_TellsTheGuard) {
    ExitProcess(static_cast<UINT>(__stack_chk_guard));
}

TEST(StackGuardTest, AnOverwrittenReturnAddressEndsTheProcess) {
    EXPECT_EQ(StatusOf("Fits"), 7u);
    EXPECT_EQ(StatusOf("DoesNotFit"), 0xC0000409u) << "STATUS_STACK_BUFFER_OVERRUN";
}

TEST(StackGuardTest, EachProcessHasAGuardOfItsOwn) {
    const std::set<DWORD> guards = {StatusOf("TellsTheGuard"), StatusOf("TellsTheGuard"),
                                    static_cast<DWORD>(__stack_chk_guard)};
    EXPECT_EQ(guards.size(), 3u);
    EXPECT_EQ(guards.count(0), 0u);
}

}  // namespace
