// The four guide screen configuration operations.
#include "guidescreen_codec/operations.h"

#include <cstring>
#include <string>

#include "codec/frame.h"
#include "codec/snprintf.h"
#include "guidescreen/attribute_codec.h"

using namespace gsc::codec;

namespace {

constexpr uint32_t kMaxDisplayUnits = 170;
constexpr size_t kCodeLength = 3;

// The three-character code of a display unit state, or null for a state without one.
const char* DisplayUnitCode(EM_GD_STATUS state) {
  switch (static_cast<int>(state)) {
    case EM_GD_STATUS_CODE_100:
      return "100";
    case EM_GD_STATUS_CODE_010:
      return "010";
    case EM_GD_STATUS_CODE_001:
      return "001";
    default:
      return nullptr;
  }
}

}  // namespace

bool serialize(const tagNET_IN_SET_GUIDESCREEN_CFG& in, Json::Value& params) {
  Json::Value& infos = Put(params, "infos");
  if (in.pstuInfos == nullptr) return true;
  // Every record the count names is sent. Members are found by ID before they are written, so
  // records sharing an ID merge into one member, the later one's keys winning.
  for (uint32_t i = 0; i < in.nInfosNum; ++i) {
    const tagNET_GUIDESCREEN_ATTRIBUTE_INFO& info = in.pstuInfos[i];
    const std::string id(info.szID, strnlen(info.szID, sizeof info.szID));
    gsc::guidescreen::PacketGuidScreenAttribute(info, infos[id]);
  }
  return true;
}

bool deserialize(const Json::Value& /*result*/, tagNET_OUT_SET_GUIDESCREEN_CFG& /*out*/) {
  return true;
}

bool serialize(const tagNET_IN_GET_GUIDESCREEN_CFG_BYID& in, Json::Value& params) {
  WriteText(params, "ScreenID", in.szScreenID);
  return true;
}

bool deserialize(const Json::Value& result, tagNET_OUT_GET_GUIDESCREEN_CFG_BYID& out) {
  ParseGuidScreenAttribute(Member(result, "DisplayScreenCfg"), &out.stuInfo);
  return true;
}

bool serialize(const tagNET_IN_GET_ALL_GUIDESCREEN_CFG& /*in*/, Json::Value& /*params*/) {
  return true;
}

bool deserialize(const Json::Value& result, tagNET_OUT_GET_ALL_GUIDESCREEN_CFG& out) {
  const uint32_t capacity = out.pstuInfos != nullptr ? out.nMaxInfosNum : 0;
  out.nRetInfosNum = ReadKeyedCollection(result, capacity, out.pstuInfos, ParseGuidScreenAttribute);
  return true;
}

bool serialize(const tagNET_IN_SET_GD_STATUS& in, Json::Value& params) {
  // 170 codes of three characters and a terminator fit; the buffer starts all zero.
  char status[512] = {};
  WriteText(params, "ScreenId", in.szScreenId);
  const uint32_t units = ClampCount(in.nGDNum, kMaxDisplayUnits);
  WriteInt(params, "GDNum", static_cast<int32_t>(units));
  for (uint32_t i = 0; i < units; ++i) {
    // A state without a code stores nothing: the zero bytes there end the text.
    const char* code = DisplayUnitCode(in.emStatus[i]);
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): the bounded print is variadic by design.
    if (code != nullptr) _snprintf(status + kCodeLength * i, kCodeLength, "%s", code);
  }
  SetJsonString(Put(params, "Status"), status, true);
  return true;
}

bool deserialize(const Json::Value& /*result*/, tagNET_OUT_SET_GD_STATUS& /*out*/) {
  return true;
}
