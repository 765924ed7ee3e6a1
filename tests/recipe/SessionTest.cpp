#include "recipe/tool/Session.h"

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <stdexcept>

#include "base/FatalError.h"
#include "base/HostServices.h"
#include "tests/support/Pictures.h"

using namespace recipe;

namespace {

/// The work of these tests' operations.
std::function<void(Session&)> step;

void RunStep(Session& session, const Arguments&) {
    step(session);
}

const OperationDefinition beginning = {
    "begin", TextureUse::begins, {}, [](Session& session, const Arguments&) {
        session.SetTexture(NewTexture(8, 8));
    }};
const OperationDefinition changing = {"change", TextureUse::changes, {}, RunStep};
const OperationDefinition keeping = {"keep", TextureUse::keeps, {}, RunStep};

/// Runs one operation after a beginning one; "LINE: message" if it fails.
std::string FailureOf(const std::function<void(Session&)>& run) {
    step = run;
    Session session(FilePlaces("", ""));
    try {
        session.Run({{&beginning, 3, {}}, {&keeping, 7, {}}});
        return {};
    } catch (const RecipeError& error) {
        return std::to_string(error.line) + ": " + error.what();
    }
}

void Whiten(Session& session) {
    session.Texture().FillWhite();
}

void Blacken(Session& session) {
    session.Texture().FillColor(black16);
}

}  // namespace

TEST(Session, TakesTheSnapshotBeforeAChange) {
    Session session(FilePlaces("", ""));
    step = Blacken;
    session.Run({{&beginning, 1, {}}, {&changing, 2, {}}});
    session.Texture().SwapUndo();
    EXPECT_EQ(ColorsOf(session.Texture()), std::vector<Pixel>(64, Color(255, 255, 255)));
    session.Texture().SwapUndo();
    step = Whiten;
    session.Run({{&changing, 1, {}}});
    session.Texture().SwapUndo();
    EXPECT_EQ(ColorsOf(session.Texture()), std::vector<Pixel>(64, Color(0, 0, 0)));
}

TEST(Session, TakesNoSnapshotOtherwise) {
    Session session(FilePlaces("", ""));
    step = Blacken;
    session.Run({{&beginning, 1, {}}, {&changing, 2, {}}, {&keeping, 3, {}}});
    session.Texture().SwapUndo();
    EXPECT_EQ(ColorsOf(session.Texture()), std::vector<Pixel>(64, Color(255, 255, 255)));
}

TEST(Session, StopsAtTheFirstFailure) {
    int runs = 0;
    step = [&](Session&) {
        ++runs;
        throw std::runtime_error("the reason");
    };
    Session session(FilePlaces("", ""));
    EXPECT_THROW(session.Run({{&beginning, 1, {}}, {&keeping, 2, {}}, {&keeping, 3, {}}}),
                 RecipeError);
    EXPECT_EQ(runs, 1);
}

TEST(Session, TellsWhatFailedAndWhere) {
    EXPECT_EQ(FailureOf([](Session&) {}), "");
    EXPECT_EQ(FailureOf([](Session&) { throw std::runtime_error("the reason"); }), "7: the reason");
    EXPECT_EQ(FailureOf([](Session&) { throw std::bad_alloc(); }), "7: not enough memory");
}

TEST(Session, TellsTheFaultsOfTheCore) {
    EXPECT_EQ(FailureOf([](Session& session) { session.Texture().GetPixel(8, 0); }),
              "7: assertion failed: PicClass / Zeile 322 !((x < grX) && (x >= 0) && (y < grY) && "
              "(y >= 0))");
    EXPECT_EQ(FailureOf([](Session&) { FatalError(faultHostService, "Somewhere.cpp", 12); }),
              "7: fault 17500 in Somewhere.cpp, line 12");
    // Faults that the core reports to nobody.
    EXPECT_EQ(FailureOf([](Session&) { FatalError(-108, "Somewhere.cpp", 12); }), "7: fault -108");
}

TEST(Session, ReportsGrowingProgress) {
    std::vector<double> shares;
    Session session(FilePlaces("", ""), [&](double share) { shares.push_back(share); });
    step = [](Session& s) { s.ReportProgress(0.5); };
    session.Run({{&beginning, 1, {}}, {&keeping, 2, {}}});
    EXPECT_EQ(shares, (std::vector<double>{0.0, 0.5, 0.5, 0.75, 1.0}));
}

TEST(Session, GivesTheTextureTheColors) {
    Session session(FilePlaces("", ""));
    session.Run({{&beginning, 1, {}}});
    EXPECT_EQ(session.Texture().foreColor, &session.foreground);
    EXPECT_EQ(session.Texture().backColor, &session.background);
}

TEST(CoreHost, PutsBackWhatWasThere) {
    const auto clock = platformServices.clockSeconds;
    const auto report = platformServices.reportFault;
    hostapi::FilterRecord record{};
    {
        const RecordInUse inUse(&record);
        {
            const CoreHost core;
            CoreHost::SetClock(42);
            EXPECT_EQ(platformServices.clockSeconds(), 42u);
            EXPECT_NE(filterRecord, &record);
        }
        EXPECT_EQ(filterRecord, &record);
    }
    EXPECT_EQ(filterRecord, nullptr);
    EXPECT_EQ(platformServices.clockSeconds, clock);
    EXPECT_EQ(platformServices.reportFault, report);
}

TEST(CoreHost, ForgetsTheFaultsOfTheOneBefore) {
    EXPECT_NE(FailureOf([](Session&) { Assert(false, "an expression"); }), "");
    const CoreHost core;
    EXPECT_EQ(CoreHost::FaultText(5), "fault 5");
}
