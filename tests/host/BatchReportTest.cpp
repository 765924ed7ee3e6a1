#include "host/command/BatchReport.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace host {

namespace {

using Json = nlohmann::json;

RunReport Good() {
    RunReport run;
    run.calls = {{1, 0}, {3, 0}};
    run.counts[Service::advanceState] = 12;
    run.rowsDelivered = 12;
    return run;
}

RunReport Refused() {
    RunReport run;
    run.calls = {{3, -108}};
    run.result = -108;
    return run;
}

RunReport Faulty() {
    RunReport run = Refused();
    run.faults = {"a leak", "another \"leak\""};
    run.completed = false;
    return run;
}

FilterLine Listed() {
    FilterLine line;
    line.file = "a\\b.8bf";
    line.description.category = "Blur";
    line.description.name = "Bl\xFCr";
    line.description.entry32 = line.description.entry64 = "MAIN";
    line.description.modes = modeRGB;
    line.description.version = 0x40000;
    return line;
}

}  // namespace

TEST(BatchReportTest, TheStatusIsTheWorst) {
    EXPECT_EQ(StatusOf({Good(), Good()}), statusDone);
    EXPECT_EQ(StatusOf({Good(), Refused()}), statusFilterRefused);
    EXPECT_EQ(StatusOf({Faulty(), Refused()}), statusFaults);
    EXPECT_EQ(static_cast<int>(statusDone), 0);
    EXPECT_EQ(static_cast<int>(statusUnusable), 2);
    EXPECT_EQ(static_cast<int>(statusFilterRefused), 3);
    EXPECT_EQ(static_cast<int>(statusFaults), 4);
}

TEST(BatchReportTest, LinesTellSelectorsAndFaults) {
    EXPECT_EQ(ReportLines({Good()}), "selector 1 (parameters): 0\nselector 3 (start): 0\n");
    EXPECT_EQ(ReportLines({Good(), Faulty()}),
              "run 1\nselector 1 (parameters): 0\nselector 3 (start): 0\n"
              "run 2\nselector 3 (start): -108\nfault: a leak\nfault: another \"leak\"\n");
}

TEST(BatchReportTest, SelectorsHaveNames) {
    EXPECT_STREQ(SelectorName(0), "about");
    EXPECT_STREQ(SelectorName(5), "finish");
    EXPECT_STREQ(SelectorName(6), "unknown");
    EXPECT_STREQ(SelectorName(-1), "unknown");
}

TEST(BatchReportTest, JsonTellsTheSame) {
    const Json json = Json::parse(ReportJson({Good(), Faulty()}, "out.png"));
    EXPECT_EQ(json["status"], 4);
    EXPECT_EQ(json["written"], "out.png");
    const Json& good = json["runs"][0];
    EXPECT_EQ(good["calls"][1], (Json{{"selector", 3}, {"name", "start"}, {"result", 0}}));
    EXPECT_EQ(good["result"], 0);
    EXPECT_EQ(good["completed"], true);
    EXPECT_EQ(good["callbacks"], (Json{{"advanceState", 12}}));
    EXPECT_EQ(good["rowsDelivered"], 12);
    const Json& faulty = json["runs"][1];
    EXPECT_EQ(faulty["result"], -108);
    EXPECT_EQ(faulty["completed"], false);
    EXPECT_EQ(faulty["faults"], (Json{"a leak", "another \"leak\""}));
    EXPECT_TRUE(Json::parse(ReportJson({}, ""))["written"].is_null());
}

TEST(BatchReportTest, AListHasALineForEachFilter) {
    EXPECT_EQ(ListLines({Listed()}), "Blur\tBl\xFCr\tMAIN\tRGB\ta\\b.8bf\n");
    FilterLine noCode = Listed();
    noCode.description.entry32.clear();
    noCode.description.entry64.clear();
    EXPECT_EQ(ListLines({noCode}), "Blur\tBl\xFCr\tno code for this host\tRGB\ta\\b.8bf\n");
}

TEST(BatchReportTest, AListInJsonIsSoundWhateverTheNames) {
    FilterLine noCases = Listed();
    noCases.description.entry64.clear();
    FilterLine cases = Listed();
    cases.description.cases.emplace();
    (*cases.description.cases)[6] = {Matte::white, Matte::straight, 0, 0};
    const Json json = Json::parse(ListJson({noCases, cases}));
    EXPECT_EQ(json[0]["category"], "Blur");
    EXPECT_EQ(json[0]["name"], "Bl\xEF\xBF\xBDr");
    EXPECT_TRUE(json[0]["entry64"].is_null());
    EXPECT_TRUE(json[0]["cases"].is_null());
    EXPECT_EQ(json[1]["cases"][6], (Json{4, 1}));
    EXPECT_EQ(json[1]["version"], 0x40000);
    EXPECT_EQ(ListJson({}), "[]\n");
}

}  // namespace host
