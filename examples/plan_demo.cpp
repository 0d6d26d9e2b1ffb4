// The programme plan operations: adding a timer plan end to end, then reading all plans back.
#include <cstdio>
#include <cstring>
#include <iostream>

#include "demos.h"
#include "guidescreen_codec.h"

namespace {

void AddTimerPlan() {
  static tagNET_IN_ADD_TIMER_PROGRAMMEPLAN in = {};
  in.dwSize = sizeof in;
  tagNET_TIMER_PLAN_INFO& plan = in.stuInfo;
  std::strcpy(plan.szPlanName, "Weekday mornings");
  std::strcpy(plan.szSplitScreenID, "left");
  plan.emPeriodType = EM_PLAN_PERIOD_TYPE_JSON_1;
  plan.nPlayDatesNum = 5;
  for (uint32_t d = 0; d < 5; ++d) plan.nPlayDates[d] = d + 1;
  plan.stuPlayStartDate = {2024, 3, 1};
  plan.stuPlayEndDate = {2024, 6, 30};
  plan.nProgrammesNum = 2;
  std::strcpy(plan.stuProgrammes[0].szProgrammeID, "prog-welcome");
  std::strcpy(plan.stuProgrammes[0].szProgrammeName, "Welcome");
  plan.stuProgrammes[0].stuStartTime = {7, 0, 0};
  plan.stuProgrammes[0].stuEndTime = {9, 30, 0};
  std::strcpy(plan.stuProgrammes[1].szProgrammeID, "prog-news");
  std::strcpy(plan.stuProgrammes[1].szProgrammeName, "News loop");
  plan.stuProgrammes[1].bIsBgProgramme = true;
  plan.stuProgrammes[1].stuStartTime = {9, 30, 0};
  plan.stuProgrammes[1].stuEndTime = {12, 0, 0};

  Json::Value params(Json::objectValue);
  serialize(in, params);
  PrintJson("ADD_TIMER_PROGRAMMEPLAN request", params);

  const Json::Value answer = ParseJson(R"({"ProgrammePlanID": "plan-0042"})");
  PrintJson("ADD_TIMER_PROGRAMMEPLAN answer", answer);
  tagNET_OUT_ADD_PROGRAMMEPLAN out = {};
  out.dwSize = sizeof out;
  deserialize(answer, out);
  std::printf("--- ADD_TIMER_PROGRAMMEPLAN record received\n  new plan ID \"%s\"\n",
              out.szProgrammePlanID);
}

void GetAllPlans() {
  const Json::Value answer = ParseJson(R"({"infos": {
      "plan-0007": {"PlanType": 0, "PlanID": "plan-0007", "PlanName": "Fire drill",
                    "SplitScreenID": "left",
                    "Immediately": {"Enable": true, "PlayTime": 600,
                                    "ProgrammeID": "prog-drill", "ProgrammeName": "Drill"}},
      "plan-0042": {"PlanType": 1, "PlanID": "plan-0042", "PlanName": "Weekday mornings",
                    "SplitScreenID": "left", "ReviewOpinion": "approved",
                    "Timer": {"PeriodType": 1, "PlayDates": [1, 2, 3, 4, 5], "ReviewState": 1,
                              "Overdue": false,
                              "CustomPlayDate": {"PlayStartDate": "2024:03:01",
                                                 "PlayEndDate": "2024:06:30"},
                              "Programmes": [{"ProgrammeID": "prog-welcome",
                                              "ProgrammeName": "Welcome", "IsBgProgramme": false,
                                              "StartTime": "07:00:00", "EndTime": "09:30:00"}]}}}})");
  PrintJson("GET_ALL_PROGRAMMEPLANS answer", answer);
  static tagNET_IMMEDIATELY_PLAN_INFO immediate[4] = {};
  static tagNET_TIMER_PLAN_INFO timer[4] = {};
  tagNET_OUT_GET_ALL_PROGRAMMEPLANS out = {sizeof out, 4, 0, immediate, 0, timer};
  deserialize(answer, out);
  std::printf("--- GET_ALL_PROGRAMMEPLANS record received: %u immediate, %u timer\n",
              out.nRetImmePlanNum, out.nRetTimerPlanNum);
  for (uint32_t i = 0; i < out.nRetImmePlanNum; ++i) {
    const tagNET_IMMEDIATELY_PLAN_INFO& p = immediate[i];
    std::printf("  immediate \"%s\" (%s) on \"%s\": %s, enabled %d, play time %u\n", p.szPlanName,
                p.szPlanID, p.szSplitScreenID, p.szProgrammeName, p.bEnable, p.nPlayTime);
  }
  for (uint32_t i = 0; i < out.nRetTimerPlanNum; ++i) {
    const tagNET_TIMER_PLAN_INFO& p = timer[i];
    std::printf(
        "  timer \"%s\" (%s) on \"%s\": %04d-%02d-%02d to %04d-%02d-%02d, review %d \"%s\"\n",
        p.szPlanName, p.szPlanID, p.szSplitScreenID, p.stuPlayStartDate.nYear,
        p.stuPlayStartDate.nMonth, p.stuPlayStartDate.nDay, p.stuPlayEndDate.nYear,
        p.stuPlayEndDate.nMonth, p.stuPlayEndDate.nDay, static_cast<int>(p.emReviewState),
        p.szReviewOpinion);
    for (uint32_t k = 0; k < p.nProgrammesNum && k < 32; ++k) {
      const tagNET_PLAN_PROGRAMME_INFO& e = p.stuProgrammes[k];
      std::printf("    %02d:%02d-%02d:%02d %s%s\n", e.stuStartTime.nHour, e.stuStartTime.nMinute,
                  e.stuEndTime.nHour, e.stuEndTime.nMinute, e.szProgrammeName,
                  e.bIsBgProgramme ? " (background)" : "");
    }
  }
}

}  // namespace

void RunPlanDemo() {
  AddTimerPlan();
  GetAllPlans();
}
