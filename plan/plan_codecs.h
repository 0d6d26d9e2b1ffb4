// The two plan records and their JSON objects. The get operations pick the reader by the plan
// object's "PlanType"; each writer stamps its own kind, so a plan written here is always read
// back by the matching reader.
#ifndef GUIDESCREEN_CODEC_PLAN_PLAN_CODECS_H
#define GUIDESCREEN_CODEC_PLAN_PLAN_CODECS_H

#include <json/value.h>

#include "codec/frame.h"
#include "guidescreen_codec/export.h"
#include "guidescreen_codec/plan_records.h"

// Merges the immediate plan object `plan` into `*info`; does nothing for a null `info`. Texts are
// read only when present; a present "Immediately" always sets bEnable and nPlayTime (missing
// members read as false and 0). "PlanType" is not looked at.
GSC_API void ParseImmePlan(const Json::Value& plan, tagNET_IMMEDIATELY_PLAN_INFO* info);

// Writes every member of `*info` into `plan` (created by non-const access, so `plan` may start
// null), with "PlanType" 0. Does nothing for a null `info`. Texts never read past their field.
GSC_API void PacketImmePlan(const tagNET_IMMEDIATELY_PLAN_INFO* info, Json::Value& plan);

// Merges the timer plan object `plan` into `*info`; does nothing for a null `info`. Without a
// "Timer" member only the three plan texts are read, not even the plan-level "ReviewOpinion".
// With one, both enumerations and bOverdue are always set; play dates and programmes are read
// only from arrays (at most 32 each), dates and times only when present. "PlanType" is not read.
GSC_API void ParseTimerPlan(const Json::Value& plan, tagNET_TIMER_PLAN_INFO* info);

// Writes `*info` into `plan` with "PlanType" 1 and "ReviewOpinion" beside "Timer". Empty play
// date and programme lists travel as null members; at most 32 of each are sent; an enumeration
// of 0 is left out. Does nothing for a null `info`.
GSC_API void PacketTimerPlan(const tagNET_TIMER_PLAN_INFO* info, Json::Value& plan);

namespace gsc::plan {

// "PlanType" travels as an EM_PROGRAMMEPLAN_TYPE counted from 0: 0 immediate, 1 timer.
constexpr int kPlanTypes = 2;

// The plan codecs in either context (instantiated for Silent and Reporting).
template <typename Context>
void ReadPlan(const Json::Value& plan, tagNET_IMMEDIATELY_PLAN_INFO& info, Context& context);
template <typename Context>
void ReadPlan(const Json::Value& plan, tagNET_TIMER_PLAN_INFO& info, Context& context);
template <typename Context>
void PacketPlan(const tagNET_IMMEDIATELY_PLAN_INFO& info, const codec::Out<Context>& plan);
template <typename Context>
void PacketPlan(const tagNET_TIMER_PLAN_INFO& info, const codec::Out<Context>& plan);

// The three texts that open both plan kinds, laid out and coded alike.
template <typename C, const auto& Table, typename Plan>
void ReadPlanHeader(const codec::Members<C, Table>& plan, Plan& info) {
  codec::ReadTextIfPresent(plan, "PlanName", info.szPlanName);
  codec::ReadTextIfPresent(plan, "PlanID", info.szPlanID);
  codec::ReadTextIfPresent(plan, "SplitScreenID", info.szSplitScreenID);
}

// The shared texts followed by the plan's own kind.
template <typename C, typename Plan>
void WritePlanHeader(const Plan& info, EM_PROGRAMMEPLAN_TYPE kind, const codec::Out<C>& plan) {
  codec::WriteText(plan, "PlanName", info.szPlanName);
  codec::WriteText(plan, "PlanID", info.szPlanID);
  codec::WriteText(plan, "SplitScreenID", info.szSplitScreenID);
  codec::WriteEnumInRange<kPlanTypes>(plan, "PlanType", kind);
}

}  // namespace gsc::plan

#endif  // GUIDESCREEN_CODEC_PLAN_PLAN_CODECS_H
