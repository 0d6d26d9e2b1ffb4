// The order in which the plan readers take their steps, shown by an answer whose value at one
// step cannot be converted: what comes before it is stored, what comes after it keeps the
// caller's value. The get operations read "PlanType" before the plan it selects.
#include <string>
#include <vector>

#include "guidescreen_codec/operations.h"
#include "guidescreen_codec/record_codecs.h"
#include "support/fixtures.h"
#include "support/read_order.h"

namespace {

using gsc::test::Append;
using gsc::test::Breaks;
using gsc::test::BreaksAt;
using gsc::test::Embed;
using gsc::test::ExpectReadOrder;
using gsc::test::J;
using gsc::test::Never;
using gsc::test::NotAText;
using gsc::test::OrderStep;
using gsc::test::ReadOrderCase;

using Imme = tagNET_IMMEDIATELY_PLAN_INFO;
using Timer = tagNET_TIMER_PLAN_INFO;
using PlanProgramme = tagNET_PLAN_PROGRAMME_INFO;

const char kImmePlan[] = R"({"PlanName": "now", "PlanID": "I-1", "SplitScreenID": "left",
    "PlanType": 0, "Immediately": {"Enable": true, "PlayTime": 30, "ProgrammeName": "news",
    "ProgrammeID": "P-1"}})";

const char kTimerPlan[] = R"({"PlanName": "daily", "PlanID": "T-1", "SplitScreenID": "right",
    "PlanType": 1, "ReviewOpinion": "fine", "Timer": {"PeriodType": 2, "PlayDates": [3, 4],
    "CustomPlayDate": {"PlayStartDate": "2024:03:05", "PlayEndDate": "2024:12:31"},
    "ReviewState": 1, "Overdue": true, "Programmes": [
      {"ProgrammeID": "P-1", "ProgrammeName": "news", "IsBgProgramme": true,
       "StartTime": "07:00:00", "EndTime": "08:30:00"},
      {"ProgrammeID": "P-2", "ProgrammeName": "weather", "IsBgProgramme": false,
       "StartTime": "09:15:00", "EndTime": "10:45:30"}]}})";

std::vector<OrderStep> ImmeSteps() {
  return {
      Never("PlanName", {GSC_SPAN(Imme, szPlanName)}),
      Never("PlanID", {GSC_SPAN(Imme, szPlanID)}),
      Never("SplitScreenID", {GSC_SPAN(Imme, szSplitScreenID)}),
      Breaks("Immediately.Enable", {GSC_SPAN(Imme, bEnable)}),
      Breaks("Immediately.PlayTime", {GSC_SPAN(Imme, nPlayTime)}),
      Never("Immediately.ProgrammeName", {GSC_SPAN(Imme, szProgrammeName)}),
      Never("Immediately.ProgrammeID", {GSC_SPAN(Imme, szProgrammeID)}),
  };
}

// The review opinion sits beside "Timer" but is read between its review state and its overdue
// flag; a programme's ID is read before its name.
std::vector<OrderStep> TimerSteps() {
  std::vector<OrderStep> steps = {
      Never("PlanName", {GSC_SPAN(Timer, szPlanName)}),
      Never("PlanID", {GSC_SPAN(Timer, szPlanID)}),
      Never("SplitScreenID", {GSC_SPAN(Timer, szSplitScreenID)}),
      Breaks("Timer.PeriodType", {GSC_SPAN(Timer, emPeriodType)}),
      Never("Timer.PlayDates: count", {GSC_SPAN(Timer, nPlayDatesNum)}),
      Breaks("Timer.PlayDates[0]", {GSC_SPAN(Timer, nPlayDates[0])}),
      Breaks("Timer.PlayDates[1]", {GSC_SPAN(Timer, nPlayDates[1])}),
      Breaks("Timer.CustomPlayDate.PlayStartDate", {GSC_SPAN(Timer, stuPlayStartDate)}, NotAText()),
      Breaks("Timer.CustomPlayDate.PlayEndDate", {GSC_SPAN(Timer, stuPlayEndDate)}, NotAText()),
      Breaks("Timer.ReviewState", {GSC_SPAN(Timer, emReviewState)}),
      Never("ReviewOpinion", {GSC_SPAN(Timer, szReviewOpinion)}),
      Breaks("Timer.Overdue", {GSC_SPAN(Timer, bOverdue)}),
      Never("Timer.Programmes: count", {GSC_SPAN(Timer, nProgrammesNum)}),
  };
  for (size_t i = 0; i < 2; ++i) {
    Append(steps,
           Embed(
               {
                   Never("ProgrammeID", {GSC_SPAN(PlanProgramme, szProgrammeID)}),
                   Never("ProgrammeName", {GSC_SPAN(PlanProgramme, szProgrammeName)}),
                   Breaks("IsBgProgramme", {GSC_SPAN(PlanProgramme, bIsBgProgramme)}),
                   Breaks("StartTime", {GSC_SPAN(PlanProgramme, stuStartTime)}, NotAText()),
                   Breaks("EndTime", {GSC_SPAN(PlanProgramme, stuEndTime)}, NotAText()),
               },
               "Timer.Programmes[" + std::to_string(i) + "]", GSC_ENTRY(Timer, stuProgrammes, i)));
  }
  return steps;
}

TEST(PlanReadOrder, PlanRecordsReadTheirMembersStepByStep) {
  ExpectReadOrder(ReadOrderCase<Imme>{
      "ParseImmePlan", J(kImmePlan), ImmeSteps(),
      [](const Json::Value& json, Imme& plan) { ParseImmePlan(json, &plan); }, nullptr, nullptr});
  ExpectReadOrder(ReadOrderCase<Timer>{
      "ParseTimerPlan", J(kTimerPlan), TimerSteps(),
      [](const Json::Value& json, Timer& plan) { ParseTimerPlan(json, &plan); }, nullptr, nullptr});
}

// The kind is stored before the plan it selects is read, and the other slot is never touched.
TEST(PlanReadOrder, GetByIdStoresThePlanKindBeforeReadingThePlan) {
  using Out = tagNET_OUT_GET_PROGRAMMEPLAN_BYID;
  const struct {
    const char* plan;
    std::vector<OrderStep> steps;
    size_t slot;
  } kinds[] = {
      {kImmePlan, ImmeSteps(), offsetof(Out, stuImmePlan)},
      {kTimerPlan, TimerSteps(), offsetof(Out, stuTimerPlan)},
  };
  for (const auto& kind : kinds) {
    Json::Value good;
    good["ProgrammePlan"] = J(kind.plan);
    std::vector<OrderStep> steps = {Breaks("ProgrammePlan.PlanType", {GSC_SPAN(Out, emPlanType)})};
    Append(steps, Embed(kind.steps, "ProgrammePlan", kind.slot));
    ExpectReadOrder(
        ReadOrderCase<Out>{"GET_PROGRAMMEPLAN_BYID", good, std::move(steps),
                           [](const Json::Value& answer, Out& out) { deserialize(answer, out); },
                           [](const Json::Value& answer, Out& out, gsc::Report& report) {
                             return deserialize(answer, out, report);
                           },
                           nullptr});
  }
}

// Each member's "PlanType" is read before the member's plan, plans go to the array of their kind
// in member order, and both counts are stored once every member has been visited.
struct AllPlans {
  tagNET_OUT_GET_ALL_PROGRAMMEPLANS out;
  Imme imme[2];
  Timer timer[2];
};

TEST(PlanReadOrder, GetAllReadsEachKindBeforeItsPlanAndStoresBothCountsLast) {
  Json::Value good;
  good["infos"]["a"] = J(kImmePlan);
  good["infos"]["b"] = J(kTimerPlan);
  good["infos"]["c"] = J(kImmePlan);
  good["infos"]["c"]["PlanName"] = "later";
  ExpectReadOrder(ReadOrderCase<AllPlans>{
      "GET_ALL_PROGRAMMEPLANS",
      good,
      {
          Breaks("infos.a.PlanType", {}),
          BreaksAt("infos.a", {GSC_SPAN(AllPlans, imme[0])}, "infos.a.Immediately.Enable"),
          Breaks("infos.b.PlanType", {}),
          BreaksAt("infos.b", {GSC_SPAN(AllPlans, timer[0])}, "infos.b.Timer.PeriodType"),
          Breaks("infos.c.PlanType", {}),
          BreaksAt("infos.c", {GSC_SPAN(AllPlans, imme[1])}, "infos.c.Immediately.PlayTime"),
          Never("nRetImmePlanNum", {GSC_SPAN(AllPlans, out.nRetImmePlanNum)}),
          Never("nRetTimerPlanNum", {GSC_SPAN(AllPlans, out.nRetTimerPlanNum)}),
      },
      [](const Json::Value& answer, AllPlans& s) { deserialize(answer, s.out); },
      [](const Json::Value& answer, AllPlans& s, gsc::Report& report) {
        return deserialize(answer, s.out, report);
      },
      [](AllPlans& s) {
        s.out.nMaxPlanNum = 2;
        s.out.pstuImmePlans = s.imme;
        s.out.pstuTimerPlans = s.timer;
      },
  });
}

}  // namespace
