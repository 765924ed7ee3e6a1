#include "files/JPEGQuality.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

using Call = std::pair<int, int>;

std::vector<Call> calls;
std::int16_t shownAnswer;
std::int16_t rememberedAnswer;

std::int16_t Answer(File&, std::int16_t operation, std::int16_t value) {
    calls.emplace_back(operation, value);
    switch (operation) {
        case qualityShown:
            return shownAnswer != 0 ? shownAnswer : value;
        case qualityRemembered:
            return rememberedAnswer;
        default:
            return 0;
    }
}

class JPEGQualityTest : public testing::Test {
  protected:
    JPEGQualityTest() {
        calls.clear();
        shownAnswer = 0;
        rememberedAnswer = 0;
        file.callback = Answer;
    }
    ~JPEGQualityTest() override {
        // The quality that is remembered outlives the dialog.
        rememberedAnswer = 0;
        Open();
    }

    JPEGQualityChoice Open() {
        return {file, [this](std::int16_t quality) { applied.push_back(quality); }};
    }

    File file;
    std::vector<int> applied;
};

TEST_F(JPEGQualityTest, OpeningAsksForTheRememberedThenForTheShownQuality) {
    rememberedAnswer = 60;
    shownAnswer = 33;
    const JPEGQualityChoice choice = Open();
    EXPECT_EQ(calls, (std::vector<Call>{{102, 0}, {100, 60}}));
    EXPECT_EQ(choice.Current(), 33);
    EXPECT_EQ(choice.Default(), 60);
    EXPECT_EQ(applied, std::vector<int>{33});
}

TEST_F(JPEGQualityTest, TheAnswerIsRememberedForTheNextDialog) {
    rememberedAnswer = 60;
    Open();
    Open();
    EXPECT_EQ(calls[2], Call(102, 60));
}

TEST_F(JPEGQualityTest, OfTheRememberedQualitiesThoseFrom21OnAreTheDefault) {
    for (const auto& [remembered, standard] :
         {std::pair{-5, 75}, {0, 75}, {20, 75}, {21, 21}, {100, 100}, {300, 100}}) {
        rememberedAnswer = static_cast<std::int16_t>(remembered);
        EXPECT_EQ(Open().Default(), standard) << remembered;
    }
}

TEST_F(JPEGQualityTest, EveryChangeIsAppliedAndTold) {
    JPEGQualityChoice choice = Open();
    EXPECT_FALSE(choice.DefaultIsEnabled());
    choice.Change(40);
    EXPECT_EQ(choice.Current(), 40);
    EXPECT_TRUE(choice.DefaultIsEnabled());
    choice.Change(choice.Default());
    EXPECT_FALSE(choice.DefaultIsEnabled());
    EXPECT_EQ(applied, (std::vector<int>{75, 40, 75}));
    EXPECT_EQ(calls, (std::vector<Call>{{102, 0}, {100, 75}, {101, 40}, {101, 75}}));
}

TEST_F(JPEGQualityTest, StaysWithinTheFieldsRange) {
    shownAnswer = 5;
    JPEGQualityChoice choice = Open();
    EXPECT_EQ(choice.Current(), 20);
    choice.Change(101);
    EXPECT_EQ(choice.Current(), 100);
    choice.Change(-1);
    EXPECT_EQ(choice.Current(), 20);
}

TEST_F(JPEGQualityTest, WorksWithoutACallback) {
    file.callback = nullptr;
    JPEGQualityChoice choice = Open();
    EXPECT_EQ(choice.Current(), 75);
    choice.Change(50);
    EXPECT_EQ(applied, (std::vector<int>{75, 50}));
    EXPECT_TRUE(calls.empty());
    file.callback = Answer;
}

}  // namespace
