// Writing programme plans: an immediate plan (a fire drill interrupting the screen) and a timer
// plan (weekday programmes by time of day) added and modified, then both deleted.
#include <cstdio>

#include "example_support.h"
#include "operations/operations.h"

namespace examples {
namespace {

void FillDrillPlan(tagNET_IMMEDIATELY_PLAN_INFO& plan) {
  SetText(plan.szPlanName, "Fire drill");
  SetText(plan.szSplitScreenID, "left");
  plan.bEnable = true;
  plan.nPlayTime = 600;  // seconds
  SetText(plan.szProgrammeID, "P-2001");
  SetText(plan.szProgrammeName, "Drill");
}

void FillWeekdayPlan(tagNET_TIMER_PLAN_INFO& plan) {
  SetText(plan.szPlanName, "Weekday mornings");
  SetText(plan.szSplitScreenID, "left");
  plan.emPeriodType = EM_PLAN_PERIOD_TYPE_JSON_1;
  for (uint32_t day = 1; day <= 5; ++day) plan.nPlayDates[plan.nPlayDatesNum++] = day;
  plan.stuPlayStartDate = {2024, 3, 1};
  plan.stuPlayEndDate = {2024, 6, 30};
  plan.nProgrammesNum = 2;
  tagNET_PLAN_PROGRAMME_INFO& welcome = plan.stuProgrammes[0];
  SetText(welcome.szProgrammeID, "P-1001");
  SetText(welcome.szProgrammeName, "Lobby morning");
  welcome.stuStartTime = {8, 0, 0};
  welcome.stuEndTime = {11, 30, 0};
  tagNET_PLAN_PROGRAMME_INFO& menu = plan.stuProgrammes[1];
  SetText(menu.szProgrammeID, "P-1003");
  SetText(menu.szProgrammeName, "Cafeteria menu");
  menu.bIsBgProgramme = true;
  menu.stuStartTime = {11, 30, 0};
  menu.stuEndTime = {14, 0, 0};
}

// Both add operations answer with the same record: the ID the device gave the new plan.
void ReadNewPlanId(const char* answer, const char* kind) {
  auto out = Blank<tagNET_OUT_ADD_PROGRAMMEPLAN>();
  ReadAnswer(answer, out);
  std::printf("  the device named the new %s plan %s\n", kind, out.szProgrammePlanID);
}

}  // namespace

void AddImmeProgrammePlan() {
  auto in = Blank<tagNET_IN_ADD_IMME_PROGRAMMEPLAN>();
  FillDrillPlan(in.stuInfo);
  SendRequest(in);
  ReadNewPlanId(R"({"ProgrammePlanID": "plan-0007"})", "immediate");
}

void AddTimerProgrammePlan() {
  auto in = Blank<tagNET_IN_ADD_TIMER_PROGRAMMEPLAN>();
  FillWeekdayPlan(in.stuInfo);
  SendRequest(in);
  ReadNewPlanId(R"({"ProgrammePlanID": "plan-0042"})", "timer");
}

// Modifying sends the whole plan again, its own ID naming the plan to modify.
void ModifyImmeProgrammePlan() {
  auto in = Blank<tagNET_IN_MODIFY_IMME_PROGRAMMEPLAN>();
  FillDrillPlan(in.stuProgrammePlan);
  SetText(in.stuProgrammePlan.szPlanID, "plan-0007");
  in.stuProgrammePlan.nPlayTime = 900;
  SendExpectingNothing<tagNET_OUT_MODIFY_IMME_PROGRAMMEPLAN>(in, "{}");
}

void ModifyTimerProgrammePlan() {
  auto in = Blank<tagNET_IN_MODIFY_TIMER_PROGRAMMEPLAN>();
  FillWeekdayPlan(in.stuProgrammePlan);
  SetText(in.stuProgrammePlan.szPlanID, "plan-0042");
  in.stuProgrammePlan.stuPlayEndDate = {2024, 9, 30};  // runs through the summer too
  SendExpectingNothing<tagNET_OUT_MODIFY_TIMER_PROGRAMMEPLAN>(in, "{}");
}

void DelProgrammePlans() {
  auto in = Blank<tagNET_IN_DEL_PROGRAMMEPLANS>();
  SetTextList(in.szProgrammePlanIDList, in.nProgrammePlanIDListNum, {"plan-0007", "plan-0042"});
  SendExpectingNothing<tagNET_OUT_DEL_PROGRAMMEPLANS>(in, "{}");
}

}  // namespace examples
