// The plug-in's own part of the run-time library, linked into a program: more threads, exceptions
// and bytes than it has places for.
#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <atomic>
#include <exception>
#include <string>
#include <vector>

namespace {

/// As many as the library has states for.
constexpr int states = 1024;
/// Address space for a thread's stack, in bytes; a process of 32 bits has 2 GB in all.
constexpr SIZE_T smallStack = 0x10000;

/// Throws the number. Returns the number that is caught; -1 for anything else.
int CaughtFrom(int number) {
    try {
        throw number;
    } catch (int caught) {
        return caught;
    } catch (...) {
        return -1;
    }
}

/// Catches so many at a time, each within the handler of the one before, and adds them up.
int SumOfNested(int depth) {
    if (depth == 0) {
        return 0;
    }
    try {
        throw depth;
    } catch (int caught) {
        return caught + SumOfNested(depth - 1);
    }
}

/// Throws, waits until it may go on, and throws again.
class ThrowingThread {
  public:
    ThrowingThread(int newNumber, HANDLE newGoOn)
        : number(newNumber),
          goOn(newGoOn),
          hasThrown(CreateEventA(nullptr, TRUE, FALSE, nullptr)),
          thread(CreateThread(nullptr, smallStack, &Run, this, STACK_SIZE_PARAM_IS_A_RESERVATION,
                              nullptr)) {}
    ThrowingThread(const ThrowingThread&) = delete;
    ThrowingThread& operator=(const ThrowingThread&) = delete;
    ~ThrowingThread() {
        CloseHandle(thread);
        CloseHandle(hasThrown);
    }

    bool IsThere() const { return thread != nullptr && hasThrown != nullptr; }
    void WaitForThrow() const { WaitForSingleObject(hasThrown, INFINITE); }
    void WaitForEnd() const { WaitForSingleObject(thread, INFINITE); }
    bool HasCaughtBoth() const { return first == number && second == number + 1; }

  private:
    static DWORD WINAPI Run(void* object) {
        auto& self = *static_cast<ThrowingThread*>(object);
        self.first = CaughtFrom(self.number);
        SetEvent(self.hasThrown);
        WaitForSingleObject(self.goOn, INFINITE);
        self.second = CaughtFrom(self.number + 1);
        return 0;
    }

    int number;
    HANDLE goOn;
    HANDLE hasThrown;
    std::atomic<int> first = 0;
    std::atomic<int> second = 0;
    /// Last: it uses the others.
    HANDLE thread;
};

/// One after the other throws, and all of them live until each has thrown again.
void ThrowInMoreThreadsThanStates() {
    const HANDLE goOn = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    std::vector<std::unique_ptr<ThrowingThread>> threads;
    for (int i = 0; i < states + 2; ++i) {
        threads.push_back(std::make_unique<ThrowingThread>(10 * i, goOn));
        ASSERT_TRUE(threads.back()->IsThere()) << i << ": error " << GetLastError();
        threads.back()->WaitForThrow();
    }
    SetEvent(goOn);
    for (const auto& thread : threads) {
        thread->WaitForEnd();
        EXPECT_TRUE(thread->HasCaughtBoth());
    }
    CloseHandle(goOn);
}

TEST(RuntimeExceptionsTest, MoreThreadsThanStatesThrow) {
    int caught = 0;
    try {
        throw 7;
    } catch (int) {
        // This thread's state is in use, and not for others.
        ThrowInMoreThreadsThanStates();
        try {
            throw;
        } catch (int again) {
            caught = again;
        }
    }
    EXPECT_EQ(caught, 7);
}

TEST(RuntimeExceptionsTest, MoreAreHandledAtATimeThanHavePlaces) {
    // Twice: the places are free again afterwards.
    EXPECT_EQ(SumOfNested(100), 5050);
    EXPECT_EQ(SumOfNested(100), 5050);
}

TEST(RuntimeExceptionsTest, LargeObjectsAreThrownToo) {
    using Large = std::array<char, 5000>;
    Large large;
    large.fill('x');
    bool isCaught = false;
    try {
        throw large;
    } catch (const Large& caught) {
        isCaught = caught == large;
    }
    EXPECT_TRUE(isCaught);
}

/// An exception, and what another thread caught of it.
struct Handed {
    std::exception_ptr exception;
    int caught = 0;
};

DWORD WINAPI ThrowHanded(void* object) {
    auto& handed = *static_cast<Handed*>(object);
    try {
        std::rethrow_exception(handed.exception);
    } catch (int number) {
        handed.caught = number;
    }
    return 0;
}

TEST(RuntimeExceptionsTest, OneIsHandedOnToAnotherThread) {
    Handed handed;
    try {
        throw 77;
    } catch (...) {
        handed.exception = std::current_exception();
    }
    const HANDLE thread = CreateThread(nullptr, 0, &ThrowHanded, &handed, 0, nullptr);
    ASSERT_NE(thread, nullptr);
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
    EXPECT_EQ(handed.caught, 77);
}

TEST(RuntimeExceptionsTest, TheyAreCountedWhileTheyAreOnTheirWay) {
    struct Counter {
        int& count;
        ~Counter() { count = std::uncaught_exceptions(); }
    };
    int onTheWay = 0;
    try {
        const Counter counter{onTheWay};
        throw 1;
    } catch (int) {
        EXPECT_EQ(std::uncaught_exceptions(), 0);
    }
    EXPECT_EQ(onTheWay, 1);
}

}  // namespace
