// Programme plans: the immediate and timer records and the plan operations.
#include <json/json.h>

#include <cstring>
#include <memory>
#include <string>
#include <tuple>

#include "guidescreen_codec/operations.h"
#include "plan/plan_codecs.h"
#include "support/fixtures.h"

namespace gsc::test {
namespace {

using Timer = tagNET_TIMER_PLAN_INFO;

// Plans with every member set, exactly as the writers send them.
const char* const kImme = R"({"PlanName": "name", "PlanID": "id", "SplitScreenID": "screen",
    "PlanType": 0, "Immediately": {"Enable": true, "PlayTime": 99, "ProgrammeName": "prog",
                                   "ProgrammeID": "prog-id"}})";
const char* const kTimer = R"({"PlanName": "name", "PlanID": "id", "SplitScreenID": "screen",
    "PlanType": 1, "ReviewOpinion": "opinion", "Timer": {"PeriodType": 2, "PlayDates": [5, 6],
    "CustomPlayDate": {"PlayStartDate": "2000:01:02", "PlayEndDate": "2000:12:31"},
    "ReviewState": 1, "Overdue": true, "Programmes": [{"ProgrammeID": "prog-id", "ProgrammeName":
    "prog", "IsBgProgramme": true, "StartTime": "01:02:03", "EndTime": "04:05:06"}]}})";

// Reads `filled`, then `text` into a zero record; expects exactly the changes `adjust` makes.
template <typename Plan>
void ExpectRead(const char* filled, void (*read)(const Json::Value&, Plan*),
                const std::string& text, void (*adjust)(Plan&)) {
  Plan expected, info;
  for (Plan* plan : {&expected, &info}) std::memset(plan, 0, sizeof *plan), read(J(filled), plan);
  adjust(expected);
  read(J(text), &info);
  EXPECT_EQ(0, std::memcmp(&expected, &info, sizeof info)) << text;
}

TEST(ImmePlanRead, OnlyAPresentImmediatelyResetsSwitchAndPlayTime) {
  ExpectRead(
      kImme, ParseImmePlan, R"({"Immediately": null, "Timer": {}})",
      +[](tagNET_IMMEDIATELY_PLAN_INFO&) {});
  ExpectRead(
      kImme, ParseImmePlan, R"({"Immediately": {}})",
      +[](tagNET_IMMEDIATELY_PLAN_INFO& e) { e.bEnable = false, e.nPlayTime = 0; });
}

const tagNET_DATE_INFO kMarch5 = {2024, 3, 5}, kMarch5Of24 = {24, 3, 5};

// A "Timer" re-reading kTimer's enumerations and flag, plus `members`.
std::string Same(const std::string& members) {
  return R"({"Timer": {"PeriodType": 2, "ReviewState": 1, "Overdue": true, )" + members + "}}";
}

TEST(TimerPlanRead, ChangesExactlyWhatThePlanCarries) {
  const std::pair<std::string, void (*)(Timer&)> cases[] = {
      {R"({"PlanName": "n", "ReviewOpinion": "r", "Timer": null})",
       [](Timer& e) { SetText(e.szPlanName, "n"); }},
      {R"({"Timer": {"ReviewOpinion": "inner"}, "ReviewOpinion": "r"})",
       [](Timer& e) {
         e.emPeriodType = EM_PLAN_PERIOD_TYPE_JSON_0, e.emReviewState = EM_PLAN_REVIEW_STATE_JSON_0;
         e.bOverdue = false, SetText(e.szReviewOpinion, "r");
       }},
      {R"({"Timer": {"PeriodType": 4, "ReviewState": 2, "Overdue": true}})",
       [](Timer& e) { e.emPeriodType = {}, e.emReviewState = {}; }},
      {Same(R"("PeriodType": -1, "PlayDates": [], "Programmes": [{}])"),
       [](Timer& e) {
         e.emPeriodType = {}, e.nPlayDatesNum = 0, e.stuProgrammes[0].bIsBgProgramme = false;
       }},
      {Same(R"("PlayDates": 5, "Programmes": {"0": {}})"), [](Timer&) {}},
      {Same(R"("CustomPlayDate": {"PlayStartDate": "2024:03:05", "PlayEndDate": "2024-03-05"})"),
       [](Timer& e) { e.stuPlayStartDate = kMarch5, e.stuPlayEndDate.nYear = 2024; }},
      {Same(R"("CustomPlayDate": {"PlayStartDate": "24:3:5", "PlayEndDate": "20240:01:01"})"),
       [](Timer& e) { e.stuPlayStartDate = kMarch5Of24, e.stuPlayEndDate.nYear = 2024; }},
  };
  for (const auto& [text, adjust] : cases) ExpectRead(kTimer, ParseTimerPlan, text, adjust);
}

TEST(PlanRecords, ZeroAndOutOfRangeValues) {
  auto info = std::make_unique<Timer>();
  Json::Value plan;
  PacketTimerPlan(info.get(), plan);
  EXPECT_JSON_EQ(R"({"PlayDates": null, "Overdue": false, "Programmes": null, "CustomPlayDate":
                     {"PlayStartDate": "0000:00:00", "PlayEndDate": "0000:00:00"}})",
                 plan["Timer"]);
  info->emPeriodType = static_cast<EM_PLAN_PERIOD_TYPE>(7);
  info->nPlayDatesNum = 33;
  info->nProgrammesNum = 4294967295u;
  info->stuPlayStartDate = kMarch5;
  info->stuPlayEndDate = {1234567890, 3, 5};
  PacketTimerPlan(info.get(), plan);
  EXPECT_EQ(6, plan["Timer"]["PeriodType"].asInt());
  EXPECT_EQ(32u, plan["Timer"]["PlayDates"].size());
  EXPECT_EQ(32u, plan["Timer"]["Programmes"].size());
  EXPECT_JSON_EQ(R"({"PlayStartDate": "2024:03:05", "PlayEndDate": "1234567890:03:0"})",
                 plan["Timer"]["CustomPlayDate"]);

  plan = Json::Value();
  for (int i = 0; i < 40; ++i) {
    plan["Timer"]["PlayDates"][i] = i;
    plan["Timer"]["Programmes"][i]["ProgrammeID"] = std::to_string(i);
  }
  ParseTimerPlan(plan, info.get());
  EXPECT_EQ(32u, info->nPlayDatesNum);
  EXPECT_EQ(31u, info->nPlayDates[31]);
  EXPECT_EQ(32u, info->nProgrammesNum);
  EXPECT_STREQ("31", info->stuProgrammes[31].szProgrammeID);

  tagNET_IMMEDIATELY_PLAN_INFO imme = {};
  imme.nPlayTime = 3000000000u;
  PacketImmePlan(&imme, plan = Json::Value());
  EXPECT_EQ("3000000000", Compact(plan["Immediately"]["PlayTime"]));
  EXPECT_THROW(ParseImmePlan(plan, &imme), Json::Exception);

  PacketTimerPlan(nullptr, plan = Json::Value());  // a null record writes and reads nothing
  EXPECT_TRUE(plan.isNull());
  ParseTimerPlan(J(kTimer), nullptr);
}

// Reads `answer` into arrays of `capacity`; returns both counts and each "<imme ID>/<timer ID>".
std::string ReadAll(const char* answer, uint32_t capacity, bool immeArray = true) {
  GuardedArray<tagNET_IMMEDIATELY_PLAN_INFO> imme(capacity);
  GuardedArray<Timer> timer(capacity);
  tagNET_OUT_GET_ALL_PROGRAMMEPLANS out = {
      sizeof out, capacity, 99, immeArray ? imme.data() : nullptr, 99, timer.data()};
  EXPECT_TRUE(deserialize(J(answer), out));
  EXPECT_TRUE(imme.GuardsIntact() && timer.GuardsIntact()) << answer;
  std::string ids = std::to_string(out.nRetImmePlanNum) + std::to_string(out.nRetTimerPlanNum);
  for (uint32_t i = 0; i < capacity; ++i)
    ids += " " + std::string(imme[i].szPlanID) + "/" + timer[i].szPlanID;
  return ids;
}

TEST(GetAllPlans, EachKindFillsItsOwnArrayInMemberNameOrder) {
  // One plan of kind 2, three immediate plans (one without "PlanType") and two timer plans.
  const char* const plans = R"({"infos": {"0": {"PlanType": 2, "PlanID": "two"},
      "a": {"PlanID": "imme-a"}, "b": {"PlanType": 0, "PlanID": "imme-b"},
      "c": {"PlanType": 0, "PlanID": "imme-c"}, "e": {"PlanType": 1, "PlanID": "timer-e"},
      "f": {"PlanType": 1, "PlanID": "timer-f"}}})";
  EXPECT_EQ("22 imme-a/timer-e imme-b/timer-f", ReadAll(plans, 2));
  EXPECT_EQ("00", ReadAll(plans, 0));
  EXPECT_EQ("02 /timer-e /timer-f /", ReadAll(plans, 3, false));
  for (const char* none : {R"({"infos": {}})", "{}", R"({"infos": null})"})
    EXPECT_EQ("00 /", ReadAll(none, 1));
}

TEST(GetPlanById, PlanTypeChoosesTheOnlySlotFilled) {
  const std::tuple<const char*, int, const char*, const char*> cases[] = {
      {R"({"ProgrammePlan": {"PlanType": 1, "PlanID": "new"}})", 2, "old", "new"},
      {R"({"ProgrammePlan": {"PlanType": 5, "PlanID": "new"}})", 0, "old", "old"},
      {R"({"ProgrammePlan": {"PlanID": "new"}})", 1, "new", "old"},
      {"{}", 1, "old", "old"}};
  for (const auto& [answer, kind, immeId, timerId] : cases) {
    auto out = std::make_unique<tagNET_OUT_GET_PROGRAMMEPLAN_BYID>();
    out->emPlanType = static_cast<EM_PROGRAMMEPLAN_TYPE>(99);
    SetText(out->stuImmePlan.szPlanID, "old");
    SetText(out->stuTimerPlan.szPlanID, "old");
    EXPECT_TRUE(deserialize(J(answer), *out));
    EXPECT_EQ(kind, out->emPlanType) << answer;
    EXPECT_STREQ(immeId, out->stuImmePlan.szPlanID) << answer;
    EXPECT_STREQ(timerId, out->stuTimerPlan.szPlanID) << answer;
  }
}

// The parameters of request `In` for the plan `text`, as compact text.
template <typename In, typename Plan>
std::string Sent(Plan In::*member, const char* text, void (*read)(const Json::Value&, Plan*)) {
  const auto in = std::make_unique<In>();
  read(J(text), &((*in).*member));
  Json::Value params(Json::objectValue);
  EXPECT_TRUE(serialize(*in, params));
  return Compact(params);
}

TEST(PlanRequests, AddSendsThePlanUnderInfoAndModifyRepeatsItsIdOutside) {
  const std::string imme = Compact(J(kImme)), timer = Compact(J(kTimer));
  const std::string id = R"(,"ProgrammePlanID":"id"})";
  EXPECT_EQ(R"({"info":)" + imme + "}",
            Sent(&tagNET_IN_ADD_IMME_PROGRAMMEPLAN::stuInfo, kImme, ParseImmePlan));
  EXPECT_EQ(R"({"info":)" + timer + "}",
            Sent(&tagNET_IN_ADD_TIMER_PROGRAMMEPLAN::stuInfo, kTimer, ParseTimerPlan));
  EXPECT_EQ(R"({"ProgrammePlan":)" + imme + id,
            Sent(&tagNET_IN_MODIFY_IMME_PROGRAMMEPLAN::stuProgrammePlan, kImme, ParseImmePlan));
  EXPECT_EQ(R"({"ProgrammePlan":)" + timer + id,
            Sent(&tagNET_IN_MODIFY_TIMER_PROGRAMMEPLAN::stuProgrammePlan, kTimer, ParseTimerPlan));
}

TEST(PlanRequests, DeleteSendsAtMostThirtyTwoIdsAndNoMemberForNone) {
  tagNET_IN_DEL_PROGRAMMEPLANS in = {};
  for (int i = 0; i < 32; ++i) SetText(in.szProgrammePlanIDList[i], "id-" + std::to_string(i));
  Json::Value none(Json::objectValue), some(Json::objectValue);
  EXPECT_TRUE(serialize(in, none));
  EXPECT_JSON_EQ("{}", none);
  in.nProgrammePlanIDListNum = 40;
  EXPECT_TRUE(serialize(in, some));
  ASSERT_EQ(32u, some["ProgrammePlanIDList"].size());
  EXPECT_EQ("id-31", some["ProgrammePlanIDList"][31].asString());
}

}  // namespace
}  // namespace gsc::test
