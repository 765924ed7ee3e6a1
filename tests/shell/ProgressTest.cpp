#include "base/Progress.h"

#include <type_traits>

#include "base/FatalError.h"
#include "base/HostServices.h"
#include "tests/support/CoreTest.h"

namespace {

class BusyTickTest : public CoreTest {
  protected:
    /// Has BusyTick work at this very count, whenever it worked before.
    static void WorkAt(std::uint32_t ticks) {
        Log().ticks = ticks - 250;
        BusyTick();
        Log().ticks = ticks;
        BusyTick();
        Log().waitCursors = 0;
    }
    static int CursorsAt(std::uint32_t ticks) {
        Log().ticks = ticks;
        BusyTick();
        return Log().waitCursors;
    }
};

TEST_F(BusyTickTest, WorksEvery250Milliseconds) {
    WorkAt(10000);
    EXPECT_EQ(CursorsAt(10000), 0);
    EXPECT_EQ(CursorsAt(10249), 0);
    EXPECT_EQ(CursorsAt(10250), 1);
    EXPECT_EQ(CursorsAt(10499), 1);
    EXPECT_EQ(CursorsAt(10500), 2);
    EXPECT_EQ(CursorsAt(60000), 3);
}

TEST_F(BusyTickTest, TheTimeCountsFromTheLastWork) {
    WorkAt(10000);
    EXPECT_EQ(CursorsAt(10300), 1);
    EXPECT_EQ(CursorsAt(10549), 1);
    EXPECT_EQ(CursorsAt(10550), 2);
}

TEST_F(BusyTickTest, TheCounterMayWrap) {
    WorkAt(0xFFFFFF80);
    EXPECT_EQ(CursorsAt(0xFFFFFFFF), 0);
    EXPECT_EQ(CursorsAt(0xFFFFFF80u + 249u), 0);
    EXPECT_EQ(CursorsAt(0xFFFFFF80u + 250u), 1);
}

/// Stands in for the editor.
class RecordingTarget final : public ProgressTarget {
  public:
    RecordingTarget() {
        CursorClass::target = this;
        ShowClass::target = this;
    }
    RecordingTarget(const RecordingTarget&) = delete;
    RecordingTarget& operator=(const RecordingTarget&) = delete;
    ~RecordingTarget() {
        CursorClass::target = nullptr;
        ShowClass::target = nullptr;
    }
    void DrawProgress(short percent) override { percents.push_back(percent); }

    std::vector<short> percents;
};

static_assert(std::has_virtual_destructor_v<CursorClass>);
static_assert(std::has_virtual_destructor_v<ShowClass>);

class ProgressTest : public BusyTickTest {};

TEST_F(ProgressTest, ACursorIsSilentWithoutAnEditor) {
    WorkAt(10000);
    Log().ticks = 20000;
    {
        CursorClass cursor;
        cursor.Tick();
    }
    EXPECT_EQ(Log().waitCursors, 0);
    EXPECT_EQ(Log().arrowCursors, 0);
}

TEST_F(ProgressTest, ACursorIsBusyForItsLife) {
    const RecordingTarget target;
    WorkAt(10000);
    Log().ticks = 10250;
    {
        CursorClass cursor;
        EXPECT_EQ(Log().waitCursors, 1);
        cursor.Tick();
        EXPECT_EQ(Log().waitCursors, 1);
        Log().ticks = 10500;
        cursor.Tick();
        EXPECT_EQ(Log().waitCursors, 2);
        EXPECT_EQ(Log().arrowCursors, 0);
    }
    EXPECT_EQ(Log().arrowCursors, 1);
    EXPECT_TRUE(target.percents.empty());
}

TEST_F(ProgressTest, ProgressIsSilentWithoutAnEditor) {
    WorkAt(10000);
    Log().ticks = 20000;
    {
        ShowClass progress(10);
        EXPECT_EQ(progress.total, 10);
        EXPECT_EQ(progress.current, 0);
        EXPECT_FALSE(progress.Report(4));
        EXPECT_EQ(progress.current, 4);
    }
    EXPECT_EQ(Log().waitCursors, 0);
    EXPECT_EQ(Log().arrowCursors, 0);
}

TEST_F(ProgressTest, ProgressIsDrawnAndKeepsTheCursorBusy) {
    const RecordingTarget target;
    WorkAt(10000);
    Log().ticks = 10250;
    {
        ShowClass progress(8);
        EXPECT_EQ(Log().waitCursors, 1);
        EXPECT_TRUE(target.percents.empty()) << "nothing is drawn before the first report";
        Log().ticks = 10500;
        EXPECT_FALSE(progress.Report(1));
        EXPECT_FALSE(progress.Report(8));
        EXPECT_EQ(Log().waitCursors, 2);
        EXPECT_EQ(Log().arrowCursors, 0);
    }
    EXPECT_EQ(Log().arrowCursors, 1);
    EXPECT_EQ(target.percents, (std::vector<short>{12, 100}));
}

TEST_F(ProgressTest, EachClassHasATargetOfItsOwn) {
    const RecordingTarget target;
    CursorClass::target = nullptr;
    WorkAt(10000);
    Log().ticks = 20000;
    CursorClass cursor;
    EXPECT_EQ(Log().waitCursors, 0);
    ShowClass progress(1);
    EXPECT_EQ(Log().waitCursors, 1);
}

struct Percentage {
    short total;
    short value;
    short percent;
};

class PercentageTest : public CoreTest, public testing::WithParamInterface<Percentage> {};

TEST_P(PercentageTest, IsTruncatedTowardsZero) {
    const RecordingTarget target;
    ShowClass progress(GetParam().total);
    EXPECT_FALSE(progress.Report(GetParam().value));
    EXPECT_EQ(progress.current, GetParam().value);
    EXPECT_EQ(target.percents, std::vector<short>{GetParam().percent});
}

INSTANTIATE_TEST_SUITE_P(Values, PercentageTest,
                         testing::Values(Percentage{100, 0, 0}, Percentage{3, 1, 33},
                                         Percentage{3, 2, 66}, Percentage{7, 7, 100},
                                         Percentage{200, 1, 0}, Percentage{200, 199, 99},
                                         Percentage{1, 2, 200}, Percentage{10, -5, -50},
                                         Percentage{-4, 1, -25}, Percentage{-3, 2, -66},
                                         Percentage{32767, 32767, 100}, Percentage{0, 0, 0},
                                         Percentage{0, 5, 0}, Percentage{0, -5, 0}));

}  // namespace
