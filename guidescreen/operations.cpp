// The four guide screen configuration operations.
#include "guidescreen_codec/operations.h"

#include <cstring>
#include <string>

#include "codec/frame.h"
#include "codec/snprintf.h"
#include "guidescreen/attribute_codec.h"
#include "text/read_text.h"

using namespace gsc::codec;
using gsc::guidescreen::PacketGuidScreenAttribute;
using gsc::guidescreen::ReadGuidScreenAttribute;
using gsc::text::ReadTextReporting;
using gsc::text::ReadTextSilently;

namespace {

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

constexpr auto kScreenByIdResultKeys = Keys("DisplayScreenCfg");

template <typename C>
void WriteScreens(const tagNET_IN_SET_GUIDESCREEN_CFG& in, Json::Value& params, C& context) {
  Json::Value& infos = Put(params, "infos");
  if (in.pstuInfos == nullptr) return;
  // Every record the count names is sent. Members are found by ID before they are written, so
  // records sharing an ID merge into one member, the later one's keys winning.
  Step<C> array(context, FieldNamed("pstuInfos"));
  for (uint32_t i = 0; i < in.nInfosNum; ++i) {
    Step<C> entry(context, Segment::Index(i));
    const tagNET_GUIDESCREEN_ATTRIBUTE_INFO& info = in.pstuInfos[i];
    const std::string id(info.szID, strnlen(info.szID, sizeof info.szID));
    PacketGuidScreenAttribute(info, Out<C>{infos[id], context});
  }
}

template <typename V, typename C>
void ReadScreenById(const V& result, tagNET_OUT_GET_GUIDESCREEN_CFG_BYID& out, C& context) {
  const auto object = MembersOf<kScreenByIdResultKeys>(result, context);
  ReadObject(object, GSC_KEY("DisplayScreenCfg"),
             [&](const auto& screen) { ReadGuidScreenAttribute(screen, out.stuInfo, context); });
}

template <typename V, typename C>
void ReadAllScreens(const V& result, tagNET_OUT_GET_ALL_GUIDESCREEN_CFG& out, C& context) {
  const uint32_t capacity = out.pstuInfos != nullptr ? out.nMaxInfosNum : 0;
  out.nRetInfosNum = ReadKeyedCollection(
      result, capacity, out.pstuInfos, context,
      [&](const auto& screen, auto& info) { ReadGuidScreenAttribute(screen, info, context); });
}

template <typename C>
void WriteScreenId(const tagNET_IN_GET_GUIDESCREEN_CFG_BYID& in, Json::Value& params, C& context) {
  WriteText(Out<C>{params, context}, "ScreenID", in.szScreenID);
}

template <typename C>
void WriteDisplayStatus(const tagNET_IN_SET_GD_STATUS& in, Json::Value& params, C& context) {
  const Out<C> object{params, context};
  // 170 codes of three characters and a terminator fit; the buffer starts all zero.
  char status[512] = {};
  WriteText(object, "ScreenId", in.szScreenId);
  const uint32_t units = ClampCount(in.nGDNum, Capacity(in.emStatus));
  if constexpr (C::kReporting) {
    if (in.nGDNum > units) NoteCountBeyondCapacity(context, FieldNamed("nGDNum"), in.nGDNum, units);
  }
  WriteInt(object, "GDNum", static_cast<int32_t>(units));
  bool ended = false;
  for (uint32_t i = 0; i < units; ++i) {
    // A state without a code stores nothing: the zero bytes there end the text.
    const char* code = DisplayUnitCode(in.emStatus[i]);
    if (code != nullptr) {
      // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): the bounded print is variadic by design.
      _snprintf(status + kCodeLength * i, kCodeLength, "%s", code);
    } else if (!ended) {
      ended = true;
      if constexpr (C::kReporting) {
        NoteDisplayUnitWithoutCode(context, i, static_cast<int32_t>(in.emStatus[i]), units);
      }
    }
  }
  SetJsonString(Put(params, "Status"), status, true);
}

}  // namespace

bool serialize(const tagNET_IN_SET_GUIDESCREEN_CFG& in, Json::Value& params) {
  return RunSilent([&](Silent& context) { WriteScreens(in, params, context); });
}
bool serialize(const tagNET_IN_SET_GUIDESCREEN_CFG& in, Json::Value& params, gsc::Report& report) {
  return RunReporting(report, [&](Reporting& context) { WriteScreens(in, params, context); });
}
bool deserialize(const Json::Value& /*result*/, tagNET_OUT_SET_GUIDESCREEN_CFG& /*out*/) {
  return true;
}
bool deserialize(const Json::Value& /*result*/, tagNET_OUT_SET_GUIDESCREEN_CFG& /*out*/,
                 gsc::Report& report) {
  return RunReporting(report, [](Reporting& /*context*/) {});
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_SET_GUIDESCREEN_CFG& /*out*/) {
  return ReadTextSilently(text, [](const TextValue& /*result*/, Silent& /*context*/) {});
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_SET_GUIDESCREEN_CFG& /*out*/,
                           gsc::Report& report) {
  return ReadTextReporting(text, report,
                           [](const TextValue& /*result*/, Reporting& /*context*/) {});
}

bool serialize(const tagNET_IN_GET_GUIDESCREEN_CFG_BYID& in, Json::Value& params) {
  return RunSilent([&](Silent& context) { WriteScreenId(in, params, context); });
}
bool serialize(const tagNET_IN_GET_GUIDESCREEN_CFG_BYID& in, Json::Value& params,
               gsc::Report& report) {
  return RunReporting(report, [&](Reporting& context) { WriteScreenId(in, params, context); });
}
bool deserialize(const Json::Value& result, tagNET_OUT_GET_GUIDESCREEN_CFG_BYID& out) {
  return RunSilent([&](Silent& context) { ReadScreenById(result, out, context); });
}
bool deserialize(const Json::Value& result, tagNET_OUT_GET_GUIDESCREEN_CFG_BYID& out,
                 gsc::Report& report) {
  return RunReporting(report, [&](Reporting& context) { ReadScreenById(result, out, context); });
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_GET_GUIDESCREEN_CFG_BYID& out) {
  return ReadTextSilently(text, [&](const TextValue& result, Silent& context) {
    ReadScreenById(result, out, context);
  });
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_GET_GUIDESCREEN_CFG_BYID& out,
                           gsc::Report& report) {
  return ReadTextReporting(text, report, [&](const TextValue& result, Reporting& context) {
    ReadScreenById(result, out, context);
  });
}

bool serialize(const tagNET_IN_GET_ALL_GUIDESCREEN_CFG& /*in*/, Json::Value& /*params*/) {
  return true;
}
bool serialize(const tagNET_IN_GET_ALL_GUIDESCREEN_CFG& /*in*/, Json::Value& /*params*/,
               gsc::Report& report) {
  return RunReporting(report, [](Reporting& /*context*/) {});
}
bool deserialize(const Json::Value& result, tagNET_OUT_GET_ALL_GUIDESCREEN_CFG& out) {
  return RunSilent([&](Silent& context) { ReadAllScreens(result, out, context); });
}
bool deserialize(const Json::Value& result, tagNET_OUT_GET_ALL_GUIDESCREEN_CFG& out,
                 gsc::Report& report) {
  return RunReporting(report, [&](Reporting& context) { ReadAllScreens(result, out, context); });
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_GET_ALL_GUIDESCREEN_CFG& out) {
  return ReadTextSilently(text, [&](const TextValue& result, Silent& context) {
    ReadAllScreens(result, out, context);
  });
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_GET_ALL_GUIDESCREEN_CFG& out,
                           gsc::Report& report) {
  return ReadTextReporting(text, report, [&](const TextValue& result, Reporting& context) {
    ReadAllScreens(result, out, context);
  });
}

bool serialize(const tagNET_IN_SET_GD_STATUS& in, Json::Value& params) {
  return RunSilent([&](Silent& context) { WriteDisplayStatus(in, params, context); });
}
bool serialize(const tagNET_IN_SET_GD_STATUS& in, Json::Value& params, gsc::Report& report) {
  return RunReporting(report, [&](Reporting& context) { WriteDisplayStatus(in, params, context); });
}
bool deserialize(const Json::Value& /*result*/, tagNET_OUT_SET_GD_STATUS& /*out*/) {
  return true;
}
bool deserialize(const Json::Value& /*result*/, tagNET_OUT_SET_GD_STATUS& /*out*/,
                 gsc::Report& report) {
  return RunReporting(report, [](Reporting& /*context*/) {});
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_SET_GD_STATUS& /*out*/) {
  return ReadTextSilently(text, [](const TextValue& /*result*/, Silent& /*context*/) {});
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_SET_GD_STATUS& /*out*/,
                           gsc::Report& report) {
  return ReadTextReporting(text, report,
                           [](const TextValue& /*result*/, Reporting& /*context*/) {});
}
