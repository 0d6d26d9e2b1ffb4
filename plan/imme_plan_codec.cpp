// The immediate plan: one programme under an "Immediately" block.
#include "plan/plan_codecs.h"

using namespace gsc::codec;
using gsc::plan::ReadPlanHeader;
using gsc::plan::WritePlanHeader;

void ParseImmePlan(const Json::Value& plan, tagNET_IMMEDIATELY_PLAN_INFO* info) {
  if (info == nullptr) return;
  ReadPlanHeader(plan, *info);
  const Json::Value& immediately = Member(plan, "Immediately");
  if (immediately.isNull()) return;
  ReadBool(immediately, "Enable", info->bEnable);
  ReadNumber(immediately, "PlayTime", info->nPlayTime);
  ReadTextIfPresent(immediately, "ProgrammeName", info->szProgrammeName);
  ReadTextIfPresent(immediately, "ProgrammeID", info->szProgrammeID);
}

void PacketImmePlan(const tagNET_IMMEDIATELY_PLAN_INFO* info, Json::Value& plan) {
  if (info == nullptr) return;
  WritePlanHeader(*info, EM_PROGRAMMEPLAN_TYPE_IMMEDIATELY, plan);
  Json::Value& immediately = Put(plan, "Immediately");
  WriteBool(immediately, "Enable", info->bEnable);
  WriteUnsigned(immediately, "PlayTime", info->nPlayTime);
  WriteText(immediately, "ProgrammeName", info->szProgrammeName);
  WriteText(immediately, "ProgrammeID", info->szProgrammeID);
}
