#include <json/json.h>

#include <memory>
#include <string>
#include <utility>

#include "guidescreen_codec/operations.h"
#include "support/fixtures.h"

namespace gsc::test {
namespace {

// The caller's two plan arrays, each with guard bytes after its capacity.
struct PlanArrays {
  explicit PlanArrays(uint32_t capacity) : imme(capacity), timer(capacity) {
    out.nMaxPlanNum = capacity;
    out.nRetImmePlanNum = out.nRetTimerPlanNum = 99;
    out.pstuImmePlans = imme.data();
    out.pstuTimerPlans = timer.data();
  }
  bool GuardsIntact() const { return imme.GuardsIntact() && timer.GuardsIntact(); }
  GuardedArray<tagNET_IMMEDIATELY_PLAN_INFO> imme;
  GuardedArray<tagNET_TIMER_PLAN_INFO> timer;
  tagNET_OUT_GET_ALL_PROGRAMMEPLANS out = {};
};

// Member names sort the immediate plans first, so the timer plans come after a full array.
const char* const kThreeImmediateTwoTimer = R"({"infos": {
    "a": {"PlanType": 0, "PlanID": "imme-a"},
    "b": {"PlanType": 0, "PlanID": "imme-b"},
    "c": {"PlanType": 0, "PlanID": "imme-c"},
    "d": {"PlanType": 1, "PlanID": "timer-d", "Timer": {}},
    "e": {"PlanType": 1, "PlanID": "timer-e"}}})";

TEST(GetAllPlans, FullImmediateArrayDoesNotEndTheWalk) {
  PlanArrays plans(2);
  plans.imme[0].nPlayTime = 5;
  EXPECT_TRUE(deserialize(J(kThreeImmediateTwoTimer), plans.out));
  EXPECT_EQ(2u, plans.out.nRetImmePlanNum);
  EXPECT_EQ(2u, plans.out.nRetTimerPlanNum);
  EXPECT_STREQ("imme-a", plans.imme[0].szPlanID);
  EXPECT_STREQ("imme-b", plans.imme[1].szPlanID);
  EXPECT_EQ(5u, plans.imme[0].nPlayTime);  // elements are merged into, not cleared
  EXPECT_STREQ("timer-d", plans.timer[0].szPlanID);
  EXPECT_EQ(EM_PLAN_PERIOD_TYPE_JSON_0, plans.timer[0].emPeriodType);
  EXPECT_STREQ("timer-e", plans.timer[1].szPlanID);
  EXPECT_TRUE(plans.GuardsIntact());
}

TEST(GetAllPlans, MissingArrayTakesNoPlansOfItsKind) {
  PlanArrays plans(2);
  plans.out.pstuImmePlans = nullptr;
  deserialize(J(kThreeImmediateTwoTimer), plans.out);
  EXPECT_EQ(0u, plans.out.nRetImmePlanNum);
  EXPECT_EQ(2u, plans.out.nRetTimerPlanNum);
}

TEST(GetAllPlans, NoRoomOrNoPlansStillSetsBothCountsToZero) {
  const struct {
    const char* answer;
    uint32_t capacity;
  } cases[] = {{kThreeImmediateTwoTimer, 0},
               {R"({"infos": {}})", 1},
               {R"({})", 1},
               {R"({"infos": null})", 1}};
  for (const auto& c : cases) {
    PlanArrays plans(c.capacity);
    EXPECT_TRUE(deserialize(J(c.answer), plans.out));
    EXPECT_EQ(0u, plans.out.nRetImmePlanNum) << c.answer;
    EXPECT_EQ(0u, plans.out.nRetTimerPlanNum) << c.answer;
    EXPECT_TRUE(plans.GuardsIntact()) << c.answer;
  }
}

TEST(GetAllPlans, PlanKindComesFromPlanTypeWithMissingMeaningImmediate) {
  PlanArrays plans(4);
  deserialize(J(R"({"infos": {"a": {"PlanID": "untyped"}, "b": {"PlanType": 2, "PlanID": "two"},
                              "c": {"PlanType": -1}, "d": {"PlanType": 1, "PlanID": "timer"}}})"),
              plans.out);
  EXPECT_EQ(1u, plans.out.nRetImmePlanNum);
  EXPECT_STREQ("untyped", plans.imme[0].szPlanID);
  EXPECT_EQ(1u, plans.out.nRetTimerPlanNum);
  EXPECT_STREQ("timer", plans.timer[0].szPlanID);
}

TEST(GetAllPlans, PlanOfWrongJsonTypeRaisesToCaller) {
  PlanArrays plans(2);
  EXPECT_THROW(deserialize(J(R"({"infos": {"a": 5}})"), plans.out), Json::LogicError);
}

TEST(GetPlanById, PlanTypeChoosesTheOnlySlotFilled) {
  const struct {
    const char* answer;
    int kind;
    const char* immeId;
    const char* timerId;
  } cases[] = {
      {R"({"ProgrammePlan": {"PlanType": 0, "PlanID": "new"}})", 1, "new", "old"},
      {R"({"ProgrammePlan": {"PlanType": 1, "PlanID": "new", "Timer": {}}})", 2, "old", "new"},
      {R"({"ProgrammePlan": {"PlanType": 5, "PlanID": "new"}})", 0, "old", "old"},
      {R"({"ProgrammePlan": {"PlanType": 2, "PlanID": "new"}})", 0, "old", "old"},
      {R"({})", 1, "old", "old"},
  };
  for (const auto& c : cases) {
    auto out = std::make_unique<tagNET_OUT_GET_PROGRAMMEPLAN_BYID>();
    out->emPlanType = static_cast<EM_PROGRAMMEPLAN_TYPE>(99);
    SetText(out->stuImmePlan.szPlanID, "old");
    SetText(out->stuTimerPlan.szPlanID, "old");
    out->stuTimerPlan.emPeriodType = EM_PLAN_PERIOD_TYPE_JSON_3;
    EXPECT_TRUE(deserialize(J(c.answer), *out));
    EXPECT_EQ(c.kind, out->emPlanType) << c.answer;
    EXPECT_STREQ(c.immeId, out->stuImmePlan.szPlanID) << c.answer;
    EXPECT_STREQ(c.timerId, out->stuTimerPlan.szPlanID) << c.answer;
    const bool timerRead = c.kind == EM_PROGRAMMEPLAN_TYPE_TIMER;
    EXPECT_EQ(timerRead ? EM_PLAN_PERIOD_TYPE_JSON_0 : EM_PLAN_PERIOD_TYPE_JSON_3,
              out->stuTimerPlan.emPeriodType);
  }
}

// The parameters that serialize writes for a request whose plan record has the ID "plan-9".
template <typename In, typename Plan>
Json::Value RequestFor(Plan In::*plan) {
  const auto in = std::make_unique<In>();
  SetText(((*in).*plan).szPlanID, "plan-9");
  Json::Value params(Json::objectValue);
  EXPECT_TRUE(serialize(*in, params));
  return params;
}

TEST(PlanRequests, AddSendsThePlanUnderInfoWithItsKind) {
  for (const auto& [params, kind] :
       {std::make_pair(RequestFor(&tagNET_IN_ADD_IMME_PROGRAMMEPLAN::stuInfo), 0),
        std::make_pair(RequestFor(&tagNET_IN_ADD_TIMER_PROGRAMMEPLAN::stuInfo), 1)}) {
    EXPECT_EQ(Json::Value::Members{"info"}, params.getMemberNames());
    EXPECT_EQ("plan-9", params["info"]["PlanID"].asString());
    EXPECT_EQ(kind, params["info"]["PlanType"].asInt());
  }
}

TEST(PlanRequests, ModifySendsThePlanIdTwice) {
  for (const auto& [params, kind] :
       {std::make_pair(RequestFor(&tagNET_IN_MODIFY_IMME_PROGRAMMEPLAN::stuProgrammePlan), 0),
        std::make_pair(RequestFor(&tagNET_IN_MODIFY_TIMER_PROGRAMMEPLAN::stuProgrammePlan), 1)}) {
    EXPECT_EQ((Json::Value::Members{"ProgrammePlan", "ProgrammePlanID"}), params.getMemberNames());
    EXPECT_EQ("plan-9", params["ProgrammePlanID"].asString());
    EXPECT_EQ("plan-9", params["ProgrammePlan"]["PlanID"].asString());
    EXPECT_EQ(kind, params["ProgrammePlan"]["PlanType"].asInt());
  }
}

TEST(PlanRequests, AddAnswerAlwaysReplacesTheId) {
  const struct {
    const char* answer;
    const char* id;
  } cases[] = {{R"({"ProgrammePlanID": "new-1"})", "new-1"},
               {R"({"ProgrammePlanID": null})", ""},
               {R"({})", ""}};
  for (const auto& c : cases) {
    tagNET_OUT_ADD_PROGRAMMEPLAN out = {};
    SetText(out.szProgrammePlanID, "old");
    EXPECT_TRUE(deserialize(J(c.answer), out));
    EXPECT_STREQ(c.id, out.szProgrammePlanID) << c.answer;
  }
}

TEST(DeletePlans, SendsAtMostThirtyTwoIdsAndNoMemberForNone) {
  const struct {
    uint32_t count;
    uint32_t sent;
  } cases[] = {{0, 0}, {2, 2}, {40, 32}, {4294967295u, 32}};
  for (const auto& c : cases) {
    tagNET_IN_DEL_PROGRAMMEPLANS in = {};
    in.nProgrammePlanIDListNum = c.count;
    for (int i = 0; i < 32; ++i) SetText(in.szProgrammePlanIDList[i], "id-" + std::to_string(i));
    Json::Value params(Json::objectValue);
    EXPECT_TRUE(serialize(in, params));
    if (c.sent == 0) {
      EXPECT_JSON_EQ("{}", params);
      continue;
    }
    const Json::Value& list = params["ProgrammePlanIDList"];
    ASSERT_EQ(c.sent, list.size()) << c.count;
    EXPECT_EQ("id-0", list[0].asString());
    EXPECT_EQ("id-" + std::to_string(c.sent - 1), list[c.sent - 1].asString());
  }
}

}  // namespace
}  // namespace gsc::test
