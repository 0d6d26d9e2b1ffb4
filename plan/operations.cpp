// The seven programme plan operations.
#include "guidescreen_codec/operations.h"

#include "codec/frame.h"
#include "plan/plan_codecs.h"

using namespace gsc::codec;

namespace gsc::plan {
namespace {

constexpr uint32_t kMaxDeletedPlans = 32;

// An array the caller did not supply takes no plans, whatever the shared capacity says.
template <typename Plan>
uint32_t CapacityOf(const Plan* plans, uint32_t capacity) {
  return plans != nullptr ? capacity : 0;
}

}  // namespace
}  // namespace gsc::plan

using gsc::plan::CapacityOf;
using gsc::plan::kPlanTypes;

bool serialize(const tagNET_IN_GET_ALL_PROGRAMMEPLANS& /*in*/, Json::Value& /*params*/) {
  return true;
}

bool deserialize(const Json::Value& result, tagNET_OUT_GET_ALL_PROGRAMMEPLANS& out) {
  const uint32_t immeCapacity = CapacityOf(out.pstuImmePlans, out.nMaxPlanNum);
  const uint32_t timerCapacity = CapacityOf(out.pstuTimerPlans, out.nMaxPlanNum);
  uint32_t imme = 0;
  uint32_t timer = 0;
  // One array filling up must not end the walk: later plans of the other kind still fit.
  ForEachKeyedMember(result, [&](const Json::Value& plan) {
    // A plan without "PlanType" reads as JSON 0, an immediate plan.
    EM_PROGRAMMEPLAN_TYPE kind = EM_PROGRAMMEPLAN_TYPE_UNKNOWN;
    ReadEnum<kPlanTypes>(plan, "PlanType", kind);
    if (kind == EM_PROGRAMMEPLAN_TYPE_IMMEDIATELY && imme < immeCapacity) {
      ParseImmePlan(plan, &out.pstuImmePlans[imme++]);
    } else if (kind == EM_PROGRAMMEPLAN_TYPE_TIMER && timer < timerCapacity) {
      ParseTimerPlan(plan, &out.pstuTimerPlans[timer++]);
    }
    return true;
  });
  out.nRetImmePlanNum = imme;
  out.nRetTimerPlanNum = timer;
  return true;
}

bool serialize(const tagNET_IN_GET_PROGRAMMEPLAN_BYID& in, Json::Value& params) {
  WriteText(params, "ProgrammePlanID", in.szProgrammePlanID);
  return true;
}

bool deserialize(const Json::Value& result, tagNET_OUT_GET_PROGRAMMEPLAN_BYID& out) {
  const Json::Value& plan = Member(result, "ProgrammePlan");
  ReadEnum<kPlanTypes>(plan, "PlanType", out.emPlanType);
  if (out.emPlanType == EM_PROGRAMMEPLAN_TYPE_IMMEDIATELY) {
    ParseImmePlan(plan, &out.stuImmePlan);
  } else if (out.emPlanType == EM_PROGRAMMEPLAN_TYPE_TIMER) {
    ParseTimerPlan(plan, &out.stuTimerPlan);
  }
  return true;
}

bool serialize(const tagNET_IN_ADD_IMME_PROGRAMMEPLAN& in, Json::Value& params) {
  PacketImmePlan(&in.stuInfo, Put(params, "info"));
  return true;
}

bool serialize(const tagNET_IN_ADD_TIMER_PROGRAMMEPLAN& in, Json::Value& params) {
  PacketTimerPlan(&in.stuInfo, Put(params, "info"));
  return true;
}

// Read without a presence test: an answer without an ID must not leave the caller a stale one.
bool deserialize(const Json::Value& result, tagNET_OUT_ADD_PROGRAMMEPLAN& out) {
  ReadText(result, "ProgrammePlanID", out.szProgrammePlanID);
  return true;
}

// The device finds the plan by the top-level ID; the plan object repeats it as "PlanID".
bool serialize(const tagNET_IN_MODIFY_IMME_PROGRAMMEPLAN& in, Json::Value& params) {
  WriteText(params, "ProgrammePlanID", in.stuProgrammePlan.szPlanID);
  PacketImmePlan(&in.stuProgrammePlan, Put(params, "ProgrammePlan"));
  return true;
}

bool deserialize(const Json::Value& /*result*/, tagNET_OUT_MODIFY_IMME_PROGRAMMEPLAN& /*out*/) {
  return true;
}

bool serialize(const tagNET_IN_MODIFY_TIMER_PROGRAMMEPLAN& in, Json::Value& params) {
  WriteText(params, "ProgrammePlanID", in.stuProgrammePlan.szPlanID);
  PacketTimerPlan(&in.stuProgrammePlan, Put(params, "ProgrammePlan"));
  return true;
}

bool deserialize(const Json::Value& /*result*/, tagNET_OUT_MODIFY_TIMER_PROGRAMMEPLAN& /*out*/) {
  return true;
}

bool serialize(const tagNET_IN_DEL_PROGRAMMEPLANS& in, Json::Value& params) {
  WriteListIfAny(params, "ProgrammePlanIDList", in.nProgrammePlanIDListNum,
                 gsc::plan::kMaxDeletedPlans, [&](Json::Value& id, uint32_t i) {
                   SetJsonText(id, in.szProgrammePlanIDList[i], sizeof in.szProgrammePlanIDList[i]);
                 });
  return true;
}

bool deserialize(const Json::Value& /*result*/, tagNET_OUT_DEL_PROGRAMMEPLANS& /*out*/) {
  return true;
}
