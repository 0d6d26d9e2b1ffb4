// Reading programme plans: all of them, and one by its ID, whose answer may hold either kind.
#include <cstdio>
#include <vector>

#include "example_support.h"
#include "operations/operations.h"

namespace examples {
namespace {

void PrintImmediatePlan(const tagNET_IMMEDIATELY_PLAN_INFO& plan) {
  std::printf("  immediate plan \"%s\" (%s) on %s: %s for %u s%s\n", plan.szPlanName, plan.szPlanID,
              plan.szSplitScreenID, plan.szProgrammeID, plan.nPlayTime,
              plan.bEnable ? "" : ", disabled");
}

void PrintTimerPlan(const tagNET_TIMER_PLAN_INFO& plan) {
  std::printf("  timer plan \"%s\" (%s) on %s: %s to %s%s, review \"%s\"\n", plan.szPlanName,
              plan.szPlanID, plan.szSplitScreenID, DateText(plan.stuPlayStartDate).c_str(),
              DateText(plan.stuPlayEndDate).c_str(), plan.bOverdue ? ", overdue" : "",
              plan.szReviewOpinion);
  for (uint32_t i = 0; i < plan.nProgrammesNum && i < GSC_MAX_PLAN_PROGRAMMES; ++i) {
    const tagNET_PLAN_PROGRAMME_INFO& slot = plan.stuProgrammes[i];
    std::printf("    %s-%s %s%s\n", TimeText(slot.stuStartTime).c_str(),
                TimeText(slot.stuEndTime).c_str(), slot.szProgrammeID,
                slot.bIsBgProgramme ? " (background)" : "");
  }
}

}  // namespace

void GetAllProgrammePlans() {
  SendRequest(Blank<tagNET_IN_GET_ALL_PROGRAMMEPLANS>());

  const char* answer = R"({"infos": {
      "plan-0007": {"PlanType": 0, "PlanID": "plan-0007", "PlanName": "Fire drill",
                    "SplitScreenID": "left",
                    "Immediately": {"Enable": false, "PlayTime": 600, "ProgrammeID": "P-2001",
                                    "ProgrammeName": "Drill"}},
      "plan-0042": {"PlanType": 1, "PlanID": "plan-0042", "PlanName": "Weekday mornings",
                    "SplitScreenID": "left", "ReviewOpinion": "approved",
                    "Timer": {"PeriodType": 1, "PlayDates": [1, 2, 3, 4, 5], "ReviewState": 1,
                              "CustomPlayDate": {"PlayStartDate": "2024:03:01",
                                                 "PlayEndDate": "2024:06:30"},
                              "Programmes": [
                                {"ProgrammeID": "P-1001", "StartTime": "08:00:00",
                                 "EndTime": "11:30:00"},
                                {"ProgrammeID": "P-1003", "IsBgProgramme": true,
                                 "StartTime": "11:30:00", "EndTime": "14:00:00"}]}},
      "plan-0051": {"PlanType": 1, "PlanID": "plan-0051", "PlanName": "Open day",
                    "SplitScreenID": "right",
                    "Timer": {"PeriodType": 0, "Overdue": true,
                              "CustomPlayDate": {"PlayStartDate": "2024:01:20",
                                                 "PlayEndDate": "2024:01:20"}}}}})";
  // One capacity serves both arrays: each kind of plan fills its own.
  std::vector<tagNET_IMMEDIATELY_PLAN_INFO> immediate(8);
  std::vector<tagNET_TIMER_PLAN_INFO> timer(8);
  auto out = Blank<tagNET_OUT_GET_ALL_PROGRAMMEPLANS>();
  out.nMaxPlanNum = 8;
  out.pstuImmePlans = immediate.data();
  out.pstuTimerPlans = timer.data();
  ReadAnswer(answer, out);
  std::printf("  %u immediate plan(s), %u timer plan(s)\n", out.nRetImmePlanNum,
              out.nRetTimerPlanNum);
  for (uint32_t i = 0; i < out.nRetImmePlanNum; ++i) PrintImmediatePlan(immediate[i]);
  for (uint32_t i = 0; i < out.nRetTimerPlanNum; ++i) PrintTimerPlan(timer[i]);
}

void GetProgrammePlanById() {
  auto in = Blank<tagNET_IN_GET_PROGRAMMEPLAN_BYID>();
  SetText(in.szProgrammePlanID, "plan-0042");
  SendRequest(in);

  const char* answer = R"({"ProgrammePlan": {
      "PlanType": 1, "PlanID": "plan-0042", "PlanName": "Weekday mornings",
      "SplitScreenID": "left", "ReviewOpinion": "approved",
      "Timer": {"PeriodType": 1, "PlayDates": [1, 2, 3, 4, 5], "ReviewState": 1, "Overdue": false,
                "CustomPlayDate": {"PlayStartDate": "2024:03:01", "PlayEndDate": "2024:09:30"},
                "Programmes": [{"ProgrammeID": "P-1001", "ProgrammeName": "Lobby morning",
                                "StartTime": "08:00:00", "EndTime": "11:30:00"}]}}})";
  auto out = Blank<tagNET_OUT_GET_PROGRAMMEPLAN_BYID>();
  ReadAnswer(answer, out);
  // The caller asked by ID and cannot know the kind: emPlanType says which slot was filled.
  switch (out.emPlanType) {
    case EM_PROGRAMMEPLAN_TYPE_IMMEDIATELY:
      PrintImmediatePlan(out.stuImmePlan);
      break;
    case EM_PROGRAMMEPLAN_TYPE_TIMER:
      PrintTimerPlan(out.stuTimerPlan);
      break;
    default:
      throw ExampleFailure("the answer held no plan");
  }
}

}  // namespace examples
