// The timer plan: programmes scheduled by time of day under a "Timer" block, with the review
// opinion kept beside that block rather than inside it.
#include "plan/plan_codecs.h"

using namespace gsc::codec;
using gsc::plan::ReadPlanHeader;
using gsc::plan::WritePlanHeader;

namespace {

constexpr uint32_t kMaxPlayDates = 32;
constexpr uint32_t kMaxProgrammes = 32;
constexpr int kPeriodTypes = 4;
constexpr int kReviewStates = 2;

void ParsePlanProgramme(const Json::Value& json, tagNET_PLAN_PROGRAMME_INFO& programme) {
  ReadTextIfPresent(json, "ProgrammeID", programme.szProgrammeID);
  ReadTextIfPresent(json, "ProgrammeName", programme.szProgrammeName);
  ReadBool(json, "IsBgProgramme", programme.bIsBgProgramme);
  ReadTimeIfPresent(json, "StartTime", programme.stuStartTime);
  ReadTimeIfPresent(json, "EndTime", programme.stuEndTime);
}

void PacketPlanProgramme(const tagNET_PLAN_PROGRAMME_INFO& programme, Json::Value& json) {
  WriteText(json, "ProgrammeID", programme.szProgrammeID);
  WriteText(json, "ProgrammeName", programme.szProgrammeName);
  WriteBool(json, "IsBgProgramme", programme.bIsBgProgramme);
  WriteTime(json, "StartTime", programme.stuStartTime);
  WriteTime(json, "EndTime", programme.stuEndTime);
}

}  // namespace

void ParseTimerPlan(const Json::Value& plan, tagNET_TIMER_PLAN_INFO* info) {
  if (info == nullptr) return;
  ReadPlanHeader(plan, *info);
  const Json::Value& timer = Member(plan, "Timer");
  if (timer.isNull()) return;
  ReadEnum<kPeriodTypes>(timer, "PeriodType", info->emPeriodType);
  ReadArrayIfPresent(timer, "PlayDates", info->nPlayDatesNum, kMaxPlayDates,
                     [&](const Json::Value& date, uint32_t i) {
                       info->nPlayDates[i] = static_cast<uint32_t>(date.asInt());
                     });
  const Json::Value& customDates = Member(timer, "CustomPlayDate");
  ReadDateIfPresent(customDates, "PlayStartDate", info->stuPlayStartDate);
  ReadDateIfPresent(customDates, "PlayEndDate", info->stuPlayEndDate);
  ReadEnum<kReviewStates>(timer, "ReviewState", info->emReviewState);
  // The opinion sits beside "Timer", yet a plan without a "Timer" carries no review to read.
  ReadTextIfPresent(plan, "ReviewOpinion", info->szReviewOpinion);
  ReadBool(timer, "Overdue", info->bOverdue);
  ReadArrayIfPresent(timer, "Programmes", info->nProgrammesNum, kMaxProgrammes,
                     [&](const Json::Value& programme, uint32_t i) {
                       ParsePlanProgramme(programme, info->stuProgrammes[i]);
                     });
}

void PacketTimerPlan(const tagNET_TIMER_PLAN_INFO* info, Json::Value& plan) {
  if (info == nullptr) return;
  WritePlanHeader(*info, EM_PROGRAMMEPLAN_TYPE_TIMER, plan);
  Json::Value& timer = Put(plan, "Timer");
  WriteEnumIfSet(timer, "PeriodType", info->emPeriodType);
  WriteListOrNull(timer, "PlayDates", info->nPlayDatesNum, kMaxPlayDates,
                  [&](Json::Value& date, uint32_t i) { date = Json::Value(info->nPlayDates[i]); });
  Json::Value& customDates = Put(timer, "CustomPlayDate");
  WriteDate(customDates, "PlayStartDate", info->stuPlayStartDate);
  WriteDate(customDates, "PlayEndDate", info->stuPlayEndDate);
  WriteEnumIfSet(timer, "ReviewState", info->emReviewState);
  WriteText(plan, "ReviewOpinion", info->szReviewOpinion);
  WriteBool(timer, "Overdue", info->bOverdue);
  WriteListOrNull(timer, "Programmes", info->nProgrammesNum, kMaxProgrammes,
                  [&](Json::Value& programme, uint32_t i) {
                    PacketPlanProgramme(info->stuProgrammes[i], programme);
                  });
}
