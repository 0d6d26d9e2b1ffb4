// The seven programme plan operations.
#include "guidescreen_codec/operations.h"

#include <string>
#include <vector>

#include "codec/frame.h"
#include "plan/plan_codecs.h"
#include "text/read_text.h"

using namespace gsc::codec;
using gsc::plan::kPlanTypes;
using gsc::plan::PacketPlan;
using gsc::plan::ReadPlan;
using gsc::text::ReadTextReporting;
using gsc::text::ReadTextSilently;

namespace {

constexpr auto kPlanResultKeys = Keys("ProgrammePlan");
constexpr auto kAddedPlanResultKeys = Keys("ProgrammePlanID");

// An array the caller did not supply takes no plans, whatever the shared capacity says.
template <typename Plan>
uint32_t CapacityOf(const Plan* plans, uint32_t capacity) {
  return plans != nullptr ? capacity : 0;
}

// The plan kind, read without a presence test: a plan without "PlanType" is an immediate plan.
template <typename V, typename C>
EM_PROGRAMMEPLAN_TYPE ReadPlanType(const V& plan, C& context) {
  EM_PROGRAMMEPLAN_TYPE kind = EM_PROGRAMMEPLAN_TYPE_UNKNOWN;
  ReadEnumValue<kPlanTypes>(context, KeySegment("PlanType"), Member(plan, "PlanType"), kind);
  return kind;
}

// The plans of one kind, read into the caller's array of that kind while it has room.
template <typename Plan>
struct PlanArray {
  PlanArray(Plan* array, uint32_t arrayCapacity)
      : plans(array), capacity(CapacityOf(array, arrayCapacity)) {}

  Plan* plans;
  uint32_t capacity;
  uint32_t count = 0;
  std::vector<std::string> notRead;

  template <typename V, typename C>
  void Read(const V& plan, const char* name, const char* end, C& context) {
    if (count < capacity) {
      ReadPlan(plan, plans[count++], context);
    } else if constexpr (C::kReporting) {
      notRead.emplace_back(name, end);
    }
  }
};

template <typename V, typename C>
void ReadAllPlans(const V& result, tagNET_OUT_GET_ALL_PROGRAMMEPLANS& out, C& context) {
  PlanArray<tagNET_IMMEDIATELY_PLAN_INFO> imme(out.pstuImmePlans, out.nMaxPlanNum);
  PlanArray<tagNET_TIMER_PLAN_INFO> timer(out.pstuTimerPlans, out.nMaxPlanNum);
  const auto object = MembersOf<kKeyedResultKeys>(result, context);
  const auto& infos = object[GSC_KEY("infos")];
  Step<C> step(context, KeySegment("infos"));
  // One array filling up must not end the walk: later plans of the other kind still fit.
  ForEachKeyedMember(context, infos, [&](const auto& member, const char* name, const char* end) {
    const auto& plan = ObjectOrNull(context, member);
    const EM_PROGRAMMEPLAN_TYPE kind = ReadPlanType(plan, context);
    if (kind == EM_PROGRAMMEPLAN_TYPE_IMMEDIATELY) imme.Read(plan, name, end, context);
    if (kind == EM_PROGRAMMEPLAN_TYPE_TIMER) timer.Read(plan, name, end, context);
    return true;
  });
  if constexpr (C::kReporting) {
    if (!imme.notRead.empty()) {
      NoteCollectionClamped(context, "immediate plans", imme.capacity, imme.notRead);
    }
    if (!timer.notRead.empty()) {
      NoteCollectionClamped(context, "timer plans", timer.capacity, timer.notRead);
    }
  }
  out.nRetImmePlanNum = imme.count;
  out.nRetTimerPlanNum = timer.count;
}

template <typename C>
void WritePlanId(const tagNET_IN_GET_PROGRAMMEPLAN_BYID& in, Json::Value& params, C& context) {
  WriteText(Out<C>{params, context}, "ProgrammePlanID", in.szProgrammePlanID);
}

template <typename V, typename C>
void ReadPlanById(const V& result, tagNET_OUT_GET_PROGRAMMEPLAN_BYID& out, C& context) {
  const auto object = MembersOf<kPlanResultKeys>(result, context);
  ReadObject(object, GSC_KEY("ProgrammePlan"), [&](const auto& plan) {
    out.emPlanType = EM_PROGRAMMEPLAN_TYPE_UNKNOWN;
    out.emPlanType = ReadPlanType(plan, context);
    if (out.emPlanType == EM_PROGRAMMEPLAN_TYPE_IMMEDIATELY)
      ReadPlan(plan, out.stuImmePlan, context);
    if (out.emPlanType == EM_PROGRAMMEPLAN_TYPE_TIMER) ReadPlan(plan, out.stuTimerPlan, context);
  });
}

template <typename C, typename In>
void WriteAddedPlan(const In& in, Json::Value& params, C& context) {
  Step<C> step(context, FieldNamed("stuInfo"));
  PacketPlan(in.stuInfo, Out<C>{Put(params, "info"), context});
}

// Read without a presence test: an answer without an ID must not leave the caller a stale one.
template <typename V, typename C>
void ReadAddedPlan(const V& result, tagNET_OUT_ADD_PROGRAMMEPLAN& out, C& context) {
  const auto object = MembersOf<kAddedPlanResultKeys>(result, context);
  ReadText(object, GSC_KEY("ProgrammePlanID"), out.szProgrammePlanID);
}

// The device finds the plan by the top-level ID; the plan object repeats it as "PlanID", where
// the report names the field.
template <typename C, typename In>
void WriteModifiedPlan(const In& in, Json::Value& params, C& context) {
  SetJsonText(Put(params, "ProgrammePlanID"), in.stuProgrammePlan.szPlanID,
              sizeof in.stuProgrammePlan.szPlanID);
  Step<C> step(context, FieldNamed("stuProgrammePlan"));
  PacketPlan(in.stuProgrammePlan, Out<C>{Put(params, "ProgrammePlan"), context});
}

template <typename C>
void WriteDeletedPlans(const tagNET_IN_DEL_PROGRAMMEPLANS& in, Json::Value& params, C& context) {
  WriteListIfAny(Out<C>{params, context}, "ProgrammePlanIDList", in.nProgrammePlanIDListNum,
                 in.szProgrammePlanIDList,
                 [](const Out<C>& id, const char(&field)[64]) { WriteTextElement(id, field); });
}

}  // namespace

bool serialize(const tagNET_IN_GET_ALL_PROGRAMMEPLANS& /*in*/, Json::Value& /*params*/) {
  return true;
}
bool serialize(const tagNET_IN_GET_ALL_PROGRAMMEPLANS& /*in*/, Json::Value& /*params*/,
               gsc::Report& report) {
  return RunReporting(report, [](Reporting& /*context*/) {});
}
bool deserialize(const Json::Value& result, tagNET_OUT_GET_ALL_PROGRAMMEPLANS& out) {
  return RunSilent([&](Silent& context) { ReadAllPlans(result, out, context); });
}
bool deserialize(const Json::Value& result, tagNET_OUT_GET_ALL_PROGRAMMEPLANS& out,
                 gsc::Report& report) {
  return RunReporting(report, [&](Reporting& context) { ReadAllPlans(result, out, context); });
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_GET_ALL_PROGRAMMEPLANS& out) {
  return ReadTextSilently(
      text, [&](const TextValue& result, Silent& context) { ReadAllPlans(result, out, context); });
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_GET_ALL_PROGRAMMEPLANS& out,
                           gsc::Report& report) {
  return ReadTextReporting(text, report, [&](const TextValue& result, Reporting& context) {
    ReadAllPlans(result, out, context);
  });
}

bool serialize(const tagNET_IN_GET_PROGRAMMEPLAN_BYID& in, Json::Value& params) {
  return RunSilent([&](Silent& context) { WritePlanId(in, params, context); });
}
bool serialize(const tagNET_IN_GET_PROGRAMMEPLAN_BYID& in, Json::Value& params,
               gsc::Report& report) {
  return RunReporting(report, [&](Reporting& context) { WritePlanId(in, params, context); });
}
bool deserialize(const Json::Value& result, tagNET_OUT_GET_PROGRAMMEPLAN_BYID& out) {
  return RunSilent([&](Silent& context) { ReadPlanById(result, out, context); });
}
bool deserialize(const Json::Value& result, tagNET_OUT_GET_PROGRAMMEPLAN_BYID& out,
                 gsc::Report& report) {
  return RunReporting(report, [&](Reporting& context) { ReadPlanById(result, out, context); });
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_GET_PROGRAMMEPLAN_BYID& out) {
  return ReadTextSilently(
      text, [&](const TextValue& result, Silent& context) { ReadPlanById(result, out, context); });
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_GET_PROGRAMMEPLAN_BYID& out,
                           gsc::Report& report) {
  return ReadTextReporting(text, report, [&](const TextValue& result, Reporting& context) {
    ReadPlanById(result, out, context);
  });
}

bool serialize(const tagNET_IN_ADD_IMME_PROGRAMMEPLAN& in, Json::Value& params) {
  return RunSilent([&](Silent& context) { WriteAddedPlan(in, params, context); });
}
bool serialize(const tagNET_IN_ADD_IMME_PROGRAMMEPLAN& in, Json::Value& params,
               gsc::Report& report) {
  return RunReporting(report, [&](Reporting& context) { WriteAddedPlan(in, params, context); });
}

bool serialize(const tagNET_IN_ADD_TIMER_PROGRAMMEPLAN& in, Json::Value& params) {
  return RunSilent([&](Silent& context) { WriteAddedPlan(in, params, context); });
}
bool serialize(const tagNET_IN_ADD_TIMER_PROGRAMMEPLAN& in, Json::Value& params,
               gsc::Report& report) {
  return RunReporting(report, [&](Reporting& context) { WriteAddedPlan(in, params, context); });
}
bool deserialize(const Json::Value& result, tagNET_OUT_ADD_PROGRAMMEPLAN& out) {
  return RunSilent([&](Silent& context) { ReadAddedPlan(result, out, context); });
}
bool deserialize(const Json::Value& result, tagNET_OUT_ADD_PROGRAMMEPLAN& out,
                 gsc::Report& report) {
  return RunReporting(report, [&](Reporting& context) { ReadAddedPlan(result, out, context); });
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_ADD_PROGRAMMEPLAN& out) {
  return ReadTextSilently(
      text, [&](const TextValue& result, Silent& context) { ReadAddedPlan(result, out, context); });
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_ADD_PROGRAMMEPLAN& out,
                           gsc::Report& report) {
  return ReadTextReporting(text, report, [&](const TextValue& result, Reporting& context) {
    ReadAddedPlan(result, out, context);
  });
}

bool serialize(const tagNET_IN_MODIFY_IMME_PROGRAMMEPLAN& in, Json::Value& params) {
  return RunSilent([&](Silent& context) { WriteModifiedPlan(in, params, context); });
}
bool serialize(const tagNET_IN_MODIFY_IMME_PROGRAMMEPLAN& in, Json::Value& params,
               gsc::Report& report) {
  return RunReporting(report, [&](Reporting& context) { WriteModifiedPlan(in, params, context); });
}
bool deserialize(const Json::Value& /*result*/, tagNET_OUT_MODIFY_IMME_PROGRAMMEPLAN& /*out*/) {
  return true;
}
bool deserialize(const Json::Value& /*result*/, tagNET_OUT_MODIFY_IMME_PROGRAMMEPLAN& /*out*/,
                 gsc::Report& report) {
  return RunReporting(report, [](Reporting& /*context*/) {});
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_MODIFY_IMME_PROGRAMMEPLAN& /*out*/) {
  return ReadTextSilently(text, [](const TextValue& /*result*/, Silent& /*context*/) {});
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_MODIFY_IMME_PROGRAMMEPLAN& /*out*/,
                           gsc::Report& report) {
  return ReadTextReporting(text, report,
                           [](const TextValue& /*result*/, Reporting& /*context*/) {});
}

bool serialize(const tagNET_IN_MODIFY_TIMER_PROGRAMMEPLAN& in, Json::Value& params) {
  return RunSilent([&](Silent& context) { WriteModifiedPlan(in, params, context); });
}
bool serialize(const tagNET_IN_MODIFY_TIMER_PROGRAMMEPLAN& in, Json::Value& params,
               gsc::Report& report) {
  return RunReporting(report, [&](Reporting& context) { WriteModifiedPlan(in, params, context); });
}
bool deserialize(const Json::Value& /*result*/, tagNET_OUT_MODIFY_TIMER_PROGRAMMEPLAN& /*out*/) {
  return true;
}
bool deserialize(const Json::Value& /*result*/, tagNET_OUT_MODIFY_TIMER_PROGRAMMEPLAN& /*out*/,
                 gsc::Report& report) {
  return RunReporting(report, [](Reporting& /*context*/) {});
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_MODIFY_TIMER_PROGRAMMEPLAN& /*out*/) {
  return ReadTextSilently(text, [](const TextValue& /*result*/, Silent& /*context*/) {});
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_MODIFY_TIMER_PROGRAMMEPLAN& /*out*/,
                           gsc::Report& report) {
  return ReadTextReporting(text, report,
                           [](const TextValue& /*result*/, Reporting& /*context*/) {});
}

bool serialize(const tagNET_IN_DEL_PROGRAMMEPLANS& in, Json::Value& params) {
  return RunSilent([&](Silent& context) { WriteDeletedPlans(in, params, context); });
}
bool serialize(const tagNET_IN_DEL_PROGRAMMEPLANS& in, Json::Value& params, gsc::Report& report) {
  return RunReporting(report, [&](Reporting& context) { WriteDeletedPlans(in, params, context); });
}
bool deserialize(const Json::Value& /*result*/, tagNET_OUT_DEL_PROGRAMMEPLANS& /*out*/) {
  return true;
}
bool deserialize(const Json::Value& /*result*/, tagNET_OUT_DEL_PROGRAMMEPLANS& /*out*/,
                 gsc::Report& report) {
  return RunReporting(report, [](Reporting& /*context*/) {});
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_DEL_PROGRAMMEPLANS& /*out*/) {
  return ReadTextSilently(text, [](const TextValue& /*result*/, Silent& /*context*/) {});
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_DEL_PROGRAMMEPLANS& /*out*/,
                           gsc::Report& report) {
  return ReadTextReporting(text, report,
                           [](const TextValue& /*result*/, Reporting& /*context*/) {});
}
