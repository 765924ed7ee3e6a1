#include "base/FatalError.h"

#include <limits>

#include "tests/support/CoreTest.h"

namespace {

class FatalErrorTest : public CoreTest {
  protected:
    FatalErrorTest() { errorCell = 0; }
    ~FatalErrorTest() override { errorCell = 0; }
};

TEST_F(FatalErrorTest, AnIdOfZeroDoesNothing) {
    errorCell = 77;
    EXPECT_EQ(FaultOf([] { FatalError(0, "Somewhere", 12); }), 0);
    EXPECT_EQ(errorCell, 77);
    EXPECT_TRUE(Log().faults.empty());
}

TEST_F(FatalErrorTest, ReportsWithItsPlaceThenThrows) {
    constexpr std::int16_t ids[] = {1, 2, 17500, 18018, 19000, 20001, 20008, 32511};
    for (const std::int16_t id : ids) {
        Log().faults.clear();
        EXPECT_EQ(FaultOf([id] { FatalError(id, "folder\\Somewhere", 12); }), id);
        EXPECT_EQ(errorCell, id);
        ASSERT_EQ(Log().faults.size(), 1u) << id;
        EXPECT_EQ(Log().faults[0].id, id);
        EXPECT_EQ(Log().faults[0].file, "folder\\Somewhere");
        EXPECT_EQ(Log().faults[0].line, 12);
    }
}

TEST_F(FatalErrorTest, SilentIdsAreThrownUnseen) {
    constexpr std::int16_t most = std::numeric_limits<std::int16_t>::max();
    constexpr std::int16_t least = std::numeric_limits<std::int16_t>::min();
    constexpr std::int16_t ids[] = {32512, most, -1, -34, -108, least};
    for (const std::int16_t id : ids) {
        EXPECT_EQ(FaultOf([id] { FatalError(id, "Somewhere", 12); }), id);
        EXPECT_EQ(errorCell, id);
    }
    EXPECT_TRUE(Log().faults.empty());
}

TEST_F(FatalErrorTest, TheErrorCellIsSetBeforeTheReport) {
    static int cellAtReport;
    cellAtReport = 0;
    platformServices.reportFault = [](std::int16_t, const char*, int) { cellAtReport = errorCell; };
    EXPECT_EQ(FaultOf([] { FatalError(faultBadArgument, "Somewhere", 12); }), 20008);
    EXPECT_EQ(cellAtReport, 20008);
}

TEST_F(FatalErrorTest, NothingClearsTheErrorCell) {
    EXPECT_EQ(FaultOf([] { FatalError(faultFileState, "Somewhere", 12); }), 20002);
    FatalError(0, "Somewhere", 13);
    Assert(true, "Test / Zeile 1 !(true)");
    CheckError(this, faultBadArgument, "Somewhere", 14);
    EXPECT_EQ(errorCell, 20002);
    EXPECT_EQ(FaultOf([] { FatalError(-108, "Somewhere", 15); }), -108);
    EXPECT_EQ(errorCell, -108);
}

TEST_F(FatalErrorTest, CheckErrorTestsThePointer) {
    const int object = 0;
    EXPECT_EQ(FaultOf([&] { CheckError(&object, 20008, "Somewhere", 12); }), 0);
    EXPECT_EQ(FaultOf([] { CheckError(nullptr, 0, "Somewhere", 12); }), 0);
    EXPECT_TRUE(Log().faults.empty());
    EXPECT_EQ(FaultOf([] { CheckError(nullptr, 20008, "Somewhere", 12); }), 20008);
    ASSERT_EQ(Log().faults.size(), 1u);
    EXPECT_EQ(Log().faults[0].file, "Somewhere");
    EXPECT_EQ(Log().faults[0].line, 12);
}

TEST_F(FatalErrorTest, AFailedAssertionShowsItsTextInPlaceOfTheFile) {
    EXPECT_EQ(FaultOf([] { Assert(true, "Test / Zeile 1 !(true)"); }), 0);
    EXPECT_TRUE(Log().faults.empty());
    EXPECT_EQ(errorCell, 0);
    EXPECT_EQ(AssertionOf([] { Assert(false, "SimpleLink / Zeile 25 !(ptr != NULL)"); }),
              "SimpleLink / Zeile 25 !(ptr != NULL)");
    EXPECT_EQ(errorCell, 2);
}

}  // namespace
