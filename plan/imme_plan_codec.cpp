// The immediate plan: one programme under an "Immediately" block.
#include "plan/plan_codecs.h"

using namespace gsc::codec;

namespace gsc::plan {
namespace {

constexpr auto kImmePlanKeys =
    Keys("PlanName", "PlanID", "SplitScreenID", "PlanType", "Immediately");
constexpr auto kImmediatelyKeys = Keys("Enable", "PlayTime", "ProgrammeName", "ProgrammeID");

}  // namespace

template <typename V, typename C>
void ReadPlan(const V& json, tagNET_IMMEDIATELY_PLAN_INFO& info, C& context) {
  const auto plan = MembersOf<kImmePlanKeys>(json, context);
  ReadPlanHeader(plan, info);
  ReadObjectIfPresent(plan, GSC_KEY("Immediately"), [&](const auto& block) {
    const auto immediately = MembersOf<kImmediatelyKeys>(block, context);
    ReadBool(immediately, GSC_KEY("Enable"), info.bEnable);
    ReadNumber(immediately, GSC_KEY("PlayTime"), info.nPlayTime);
    ReadTextIfPresent(immediately, GSC_KEY("ProgrammeName"), info.szProgrammeName);
    ReadTextIfPresent(immediately, GSC_KEY("ProgrammeID"), info.szProgrammeID);
  });
}

template <typename C>
void PacketPlan(const tagNET_IMMEDIATELY_PLAN_INFO& info, const Out<C>& plan) {
  WritePlanHeader(info, EM_PROGRAMMEPLAN_TYPE_IMMEDIATELY, plan);
  const Out<C> immediately = Put(plan, "Immediately");
  WriteBool(immediately, "Enable", info.bEnable);
  WriteUnsigned(immediately, "PlayTime", info.nPlayTime);
  WriteText(immediately, "ProgrammeName", info.szProgrammeName);
  WriteText(immediately, "ProgrammeID", info.szProgrammeID);
}

template void ReadPlan(const Json::Value&, tagNET_IMMEDIATELY_PLAN_INFO&, Silent&);
template void ReadPlan(const TextValue&, tagNET_IMMEDIATELY_PLAN_INFO&, Silent&);
template void ReadPlan(const Json::Value&, tagNET_IMMEDIATELY_PLAN_INFO&, Reporting&);
template void ReadPlan(const TextValue&, tagNET_IMMEDIATELY_PLAN_INFO&, Reporting&);
template void PacketPlan(const tagNET_IMMEDIATELY_PLAN_INFO&, const Out<Silent>&);
template void PacketPlan(const tagNET_IMMEDIATELY_PLAN_INFO&, const Out<Reporting>&);

}  // namespace gsc::plan

void ParseImmePlan(const Json::Value& plan, tagNET_IMMEDIATELY_PLAN_INFO* info) {
  ParseSilently(plan, info, gsc::plan::ReadPlan<Json::Value, Silent>);
}

void PacketImmePlan(const tagNET_IMMEDIATELY_PLAN_INFO* info, Json::Value& plan) {
  PacketSilently(info, plan, gsc::plan::PacketPlan<Silent>);
}
