// The timer plan: programmes scheduled by time of day under a "Timer" block, with the review
// opinion kept beside that block rather than inside it.
#include "describe/enumerations.h"
#include "plan/plan_codecs.h"

using namespace gsc::codec;

namespace gsc::plan {
namespace {

constexpr int kPeriodTypes = fields::kPeriodTypeEnum.JsonValues();
constexpr int kReviewStates = fields::kReviewStateEnum.JsonValues();

constexpr auto kTimerPlanKeys =
    Keys("PlanName", "PlanID", "SplitScreenID", "PlanType", "Timer", "ReviewOpinion");
constexpr auto kTimerKeys =
    Keys("PeriodType", "PlayDates", "CustomPlayDate", "ReviewState", "Overdue", "Programmes");
constexpr auto kCustomDateKeys = Keys("PlayStartDate", "PlayEndDate");
constexpr auto kPlanProgrammeKeys =
    Keys("ProgrammeID", "ProgrammeName", "IsBgProgramme", "StartTime", "EndTime");

template <typename V, typename C>
void ReadPlanProgramme(const V& json, tagNET_PLAN_PROGRAMME_INFO& programme, C& context) {
  const auto object = MembersOf<kPlanProgrammeKeys>(json, context);
  ReadTextIfPresent(object, GSC_KEY("ProgrammeID"), programme.szProgrammeID);
  ReadTextIfPresent(object, GSC_KEY("ProgrammeName"), programme.szProgrammeName);
  ReadBool(object, GSC_KEY("IsBgProgramme"), programme.bIsBgProgramme);
  ReadTimeIfPresent(object, GSC_KEY("StartTime"), programme.stuStartTime);
  ReadTimeIfPresent(object, GSC_KEY("EndTime"), programme.stuEndTime);
}

template <typename C>
void PacketPlanProgramme(const tagNET_PLAN_PROGRAMME_INFO& programme, const Out<C>& json) {
  WriteText(json, "ProgrammeID", programme.szProgrammeID);
  WriteText(json, "ProgrammeName", programme.szProgrammeName);
  WriteBool(json, "IsBgProgramme", programme.bIsBgProgramme);
  WriteTime(json, "StartTime", programme.stuStartTime);
  WriteTime(json, "EndTime", programme.stuEndTime);
}

}  // namespace

template <typename V, typename C>
void ReadPlan(const V& json, tagNET_TIMER_PLAN_INFO& info, C& context) {
  const auto plan = MembersOf<kTimerPlanKeys>(json, context);
  ReadPlanHeader(plan, info);
  const auto& timerObject = ObjectIfPresent(plan, GSC_KEY("Timer"));
  if (timerObject.isNull()) return;
  // The opinion sits beside "Timer", in the middle of its steps; a plan without a "Timer"
  // carries no review to read.
  const auto timer = NestedMembers<kTimerKeys>(context, "Timer", timerObject);
  {
    const Step<C> step(context, KeySegment("Timer"));
    ReadEnum<kPeriodTypes>(timer, GSC_KEY("PeriodType"), info.emPeriodType);
    ReadArrayIfPresent(timer, GSC_KEY("PlayDates"), info.nPlayDatesNum, info.nPlayDates,
                       [&](const auto& date, uint32_t& field) {
                         field = static_cast<uint32_t>(ReadInt(context, date));
                       });
    ReadObject(timer, GSC_KEY("CustomPlayDate"), [&](const auto& dates) {
      const auto customDates = MembersOf<kCustomDateKeys>(dates, context);
      ReadDateIfPresent(customDates, GSC_KEY("PlayStartDate"), info.stuPlayStartDate);
      ReadDateIfPresent(customDates, GSC_KEY("PlayEndDate"), info.stuPlayEndDate);
    });
    ReadEnum<kReviewStates>(timer, GSC_KEY("ReviewState"), info.emReviewState);
  }
  ReadTextIfPresent(plan, GSC_KEY("ReviewOpinion"), info.szReviewOpinion);
  const Step<C> step(context, KeySegment("Timer"));
  ReadBool(timer, GSC_KEY("Overdue"), info.bOverdue);
  ReadArrayIfPresent(timer, GSC_KEY("Programmes"), info.nProgrammesNum, info.stuProgrammes,
                     [&](const auto& programme, tagNET_PLAN_PROGRAMME_INFO& entry) {
                       ReadPlanProgramme(programme, entry, context);
                     });
}

template <typename C>
void PacketPlan(const tagNET_TIMER_PLAN_INFO& info, const Out<C>& plan) {
  WritePlanHeader(info, EM_PROGRAMMEPLAN_TYPE_TIMER, plan);
  const Out<C> timer = Put(plan, "Timer");
  WriteEnumIfSet(timer, "PeriodType", info.emPeriodType);
  WriteListOrNull(timer, "PlayDates", info.nPlayDatesNum, info.nPlayDates,
                  [](const Out<C>& date, uint32_t value) { date.json = Json::Value(value); });
  const Out<C> customDates = Put(timer, "CustomPlayDate");
  WriteDate(customDates, "PlayStartDate", info.stuPlayStartDate);
  WriteDate(customDates, "PlayEndDate", info.stuPlayEndDate);
  WriteEnumIfSet(timer, "ReviewState", info.emReviewState);
  WriteText(plan, "ReviewOpinion", info.szReviewOpinion);
  WriteBool(timer, "Overdue", info.bOverdue);
  WriteListOrNull(timer, "Programmes", info.nProgrammesNum, info.stuProgrammes,
                  [](const Out<C>& json, const tagNET_PLAN_PROGRAMME_INFO& programme) {
                    PacketPlanProgramme(programme, json);
                  });
}

template void ReadPlan(const Json::Value&, tagNET_TIMER_PLAN_INFO&, Silent&);
template void ReadPlan(const TextValue&, tagNET_TIMER_PLAN_INFO&, Silent&);
template void ReadPlan(const Json::Value&, tagNET_TIMER_PLAN_INFO&, Reporting&);
template void ReadPlan(const TextValue&, tagNET_TIMER_PLAN_INFO&, Reporting&);
template void PacketPlan(const tagNET_TIMER_PLAN_INFO&, const Out<Silent>&);
template void PacketPlan(const tagNET_TIMER_PLAN_INFO&, const Out<Reporting>&);

}  // namespace gsc::plan

void ParseTimerPlan(const Json::Value& plan, tagNET_TIMER_PLAN_INFO* info) {
  ParseSilently(plan, info, gsc::plan::ReadPlan<Json::Value, Silent>);
}

void PacketTimerPlan(const tagNET_TIMER_PLAN_INFO* info, Json::Value& plan) {
  PacketSilently(info, plan, gsc::plan::PacketPlan<Silent>);
}
