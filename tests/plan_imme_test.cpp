#include <json/json.h>

#include <cstring>
#include <string>

#include "plan/plan_codecs.h"
#include "support/fixtures.h"

namespace gsc::test {
namespace {

// A record as a caller might leave it before a read, padding included, so memcmp is exact.
void FillCallerPlan(tagNET_IMMEDIATELY_PLAN_INFO& info) {
  std::memset(&info, 0, sizeof info);
  SetText(info.szPlanName, "old name");
  SetText(info.szPlanID, "old-id");
  SetText(info.szSplitScreenID, "old-screen");
  info.bEnable = true;
  info.nPlayTime = 99;
  SetText(info.szProgrammeName, "old programme");
  SetText(info.szProgrammeID, "old-programme-id");
}

TEST(ImmePlanRead, OnlyAPresentImmediatelyBlockResetsSwitchAndPlayTime) {
  const struct {
    const char* text;
    bool reset;
  } cases[] = {{R"({})", false},
               {R"({"Immediately": null, "PlanID": null})", false},
               {R"({"PlanType": 1, "Timer": {"Overdue": true}})", false},
               {R"({"Immediately": {}})", true}};
  for (const auto& c : cases) {
    tagNET_IMMEDIATELY_PLAN_INFO expected, info;
    FillCallerPlan(expected);
    std::memcpy(&info, &expected, sizeof info);
    if (c.reset) expected.bEnable = false, expected.nPlayTime = 0;
    ParseImmePlan(J(c.text), &info);
    EXPECT_EQ(0, std::memcmp(&expected, &info, sizeof info)) << c.text;
  }
}

TEST(ImmePlanWrite, ZeroRecordWritesEveryMemberWithPlanTypeZero) {
  const tagNET_IMMEDIATELY_PLAN_INFO info = {};
  Json::Value plan;
  PacketImmePlan(&info, plan);
  EXPECT_JSON_EQ(R"({"PlanName": "", "PlanID": "", "SplitScreenID": "", "PlanType": 0,
                     "Immediately": {"Enable": false, "PlayTime": 0, "ProgrammeName": "",
                                     "ProgrammeID": ""}})",
                 plan);
}

TEST(ImmePlanWrite, WrittenPlanReadsBackIntoAnEqualRecord) {
  tagNET_IMMEDIATELY_PLAN_INFO sent, received;
  FillCallerPlan(sent);
  std::memset(&received, 0, sizeof received);
  Json::Value plan;
  PacketImmePlan(&sent, plan);
  ParseImmePlan(plan, &received);
  EXPECT_EQ(0, std::memcmp(&sent, &received, sizeof sent)) << Compact(plan);
}

TEST(ImmePlanWrite, PlayTimeAboveSignedRangeIsSentUnsignedAndRaisesWhenReadBack) {
  tagNET_IMMEDIATELY_PLAN_INFO info = {};
  info.nPlayTime = 3000000000u;
  Json::Value plan;
  PacketImmePlan(&info, plan);
  EXPECT_EQ("3000000000", Compact(plan["Immediately"]["PlayTime"]));
  EXPECT_THROW(ParseImmePlan(plan, &info), Json::LogicError);
}

TEST(PlanRecords, NullRecordPointerReadsAndWritesNothing) {
  Json::Value plan;
  PacketImmePlan(nullptr, plan);
  PacketTimerPlan(nullptr, plan);
  EXPECT_TRUE(plan.isNull());
  ParseImmePlan(J(R"({"PlanID": "x", "Immediately": {}})"), nullptr);
  ParseTimerPlan(J(R"({"PlanID": "x", "Timer": {}})"), nullptr);
}

}  // namespace
}  // namespace gsc::test
