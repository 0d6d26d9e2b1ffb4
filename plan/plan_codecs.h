// The two plan records and their JSON objects. The get operations pick the reader by the plan
// object's "PlanType"; each writer stamps its own kind, so a plan written here is always read
// back by the matching reader.
#ifndef GUIDESCREEN_CODEC_PLAN_PLAN_CODECS_H
#define GUIDESCREEN_CODEC_PLAN_PLAN_CODECS_H

#include <json/value.h>

#include "codec/frame.h"
#include "describe/enumerations.h"
#include "guidescreen_codec/plan_records.h"
#include "guidescreen_codec/record_codecs.h"

namespace gsc::plan {

// "PlanType" travels as an EM_PROGRAMMEPLAN_TYPE counted from 0: 0 immediate, 1 timer.
constexpr int kPlanTypes = fields::kPlanTypeEnum.JsonValues();

// The plan codecs in either context (instantiated for Silent and Reporting); the public
// ParseImmePlan, PacketTimerPlan, ... (record_codecs.h) run them silently.
template <typename V, typename Context>
void ReadPlan(const V& plan, tagNET_IMMEDIATELY_PLAN_INFO& info, Context& context);
template <typename V, typename Context>
void ReadPlan(const V& plan, tagNET_TIMER_PLAN_INFO& info, Context& context);
template <typename Context>
void PacketPlan(const tagNET_IMMEDIATELY_PLAN_INFO& info, const codec::Out<Context>& plan);
template <typename Context>
void PacketPlan(const tagNET_TIMER_PLAN_INFO& info, const codec::Out<Context>& plan);

// The three texts that open both plan kinds, laid out and coded alike.
template <typename C, const auto& Table, typename V, typename Plan>
void ReadPlanHeader(const codec::Members<C, Table, V>& plan, Plan& info) {
  codec::ReadTextIfPresent(plan, GSC_KEY("PlanName"), info.szPlanName);
  codec::ReadTextIfPresent(plan, GSC_KEY("PlanID"), info.szPlanID);
  codec::ReadTextIfPresent(plan, GSC_KEY("SplitScreenID"), info.szSplitScreenID);
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
