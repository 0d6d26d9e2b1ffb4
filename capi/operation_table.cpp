#include "capi/operation_table.h"

#include <cstring>

#include "guidescreen_codec/operations.h"

namespace gsc::capi {
namespace {

// Every call of the C interface into a codec passes through these two thunks: here is where a
// conversion JsonCpp refuses becomes a failure with its path and reason.
template <typename In>
bool SerializeFrom(const void* in, Json::Value& params, std::string& failure) {
  try {
    return serialize(*static_cast<const In*>(in), params);
  } catch (const Json::Exception& e) {
    failure = e.what();
    return false;
  }
}

// The reporting overload: a failed conversion comes back with the path where it happened.
template <typename Out>
bool DeserializeInto(const Json::Value& result, void* out, std::string& failure) {
  gsc::Report report;
  if (deserialize(result, *static_cast<Out*>(out), report)) return true;
  const gsc::Finding& failed = report.findings().back();
  failure = (failed.path.empty() ? std::string("the result") : failed.path) + ": " + failed.detail;
  return false;
}

template <typename In, typename Out>
constexpr Operation Op(const char* name) {
  return {name,         sizeof(In),         alignof(In),          sizeof(Out),
          alignof(Out), &SerializeFrom<In>, &DeserializeInto<Out>};
}

constexpr Operation kOperations[] = {
    Op<tagNET_IN_SET_GUIDESCREEN_CFG, tagNET_OUT_SET_GUIDESCREEN_CFG>("SET_GUIDESCREEN_CFG"),
    Op<tagNET_IN_GET_GUIDESCREEN_CFG_BYID, tagNET_OUT_GET_GUIDESCREEN_CFG_BYID>(
        "GET_GUIDESCREEN_CFG_BYID"),
    Op<tagNET_IN_GET_ALL_GUIDESCREEN_CFG, tagNET_OUT_GET_ALL_GUIDESCREEN_CFG>(
        "GET_ALL_GUIDESCREEN_CFG"),
    Op<tagNET_IN_SET_GD_STATUS, tagNET_OUT_SET_GD_STATUS>("SET_GD_STATUS"),
    Op<tagNET_IN_GET_PROGRAMME_BYID, tagNET_OUT_GET_PROGRAMME_BYID>("GET_PROGRAMME_BYID"),
    Op<tagNET_IN_GET_ALL_PROGRAMMES, tagNET_OUT_GET_ALL_PROGRAMMES>("GET_ALL_PROGRAMMES"),
    Op<tagNET_IN_GET_ALL_BRIEFLYPROGRAMMES, tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES>(
        "GET_ALL_BRIEFLYPROGRAMMES"),
    Op<tagNET_IN_ADD_ONE_PROGRAMME, tagNET_OUT_ADD_ONE_PROGRAMME>("ADD_ONE_PROGRAMME"),
    Op<tagNET_IN_MODIFY_ONE_PROGRAMME, tagNET_OUT_MODIFY_ONE_PROGRAMME>("MODIFY_ONE_PROGRAMME"),
    Op<tagNET_IN_DEL_PROGRAMMES, tagNET_OUT_DEL_PROGRAMMES>("DEL_PROGRAMMES"),
    Op<tagNET_IN_GET_ALL_PROGRAMMEPLANS, tagNET_OUT_GET_ALL_PROGRAMMEPLANS>(
        "GET_ALL_PROGRAMMEPLANS"),
    Op<tagNET_IN_GET_PROGRAMMEPLAN_BYID, tagNET_OUT_GET_PROGRAMMEPLAN_BYID>(
        "GET_PROGRAMMEPLAN_BYID"),
    Op<tagNET_IN_ADD_IMME_PROGRAMMEPLAN, tagNET_OUT_ADD_PROGRAMMEPLAN>("ADD_IMME_PROGRAMMEPLAN"),
    Op<tagNET_IN_ADD_TIMER_PROGRAMMEPLAN, tagNET_OUT_ADD_PROGRAMMEPLAN>("ADD_TIMER_PROGRAMMEPLAN"),
    Op<tagNET_IN_MODIFY_IMME_PROGRAMMEPLAN, tagNET_OUT_MODIFY_IMME_PROGRAMMEPLAN>(
        "MODIFY_IMME_PROGRAMMEPLAN"),
    Op<tagNET_IN_MODIFY_TIMER_PROGRAMMEPLAN, tagNET_OUT_MODIFY_TIMER_PROGRAMMEPLAN>(
        "MODIFY_TIMER_PROGRAMMEPLAN"),
    Op<tagNET_IN_DEL_PROGRAMMEPLANS, tagNET_OUT_DEL_PROGRAMMEPLANS>("DEL_PROGRAMMEPLANS"),
};

}  // namespace

const Operation* Operations() {
  return kOperations;
}

size_t OperationCount() {
  return sizeof kOperations / sizeof kOperations[0];
}

const Operation* FindOperation(const char* name) {
  if (name == nullptr) return nullptr;
  for (const Operation& op : kOperations)
    if (std::strcmp(op.name, name) == 0) return &op;
  return nullptr;
}

}  // namespace gsc::capi
