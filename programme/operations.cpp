// The six programme operations.
#include "guidescreen_codec/operations.h"

#include "codec/frame.h"
#include "programme/programme_codecs.h"

using namespace gsc::codec;

namespace {

// Both capacities are those of the records' own arrays (32 each).
constexpr uint32_t kMaxBriefProgrammes =
    sizeof(tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES::stuInfos) / sizeof(tagNET_BRIEFLY_PROGRAMME_INFO);
constexpr uint32_t kMaxDeletedIds = sizeof(tagNET_IN_DEL_PROGRAMMES::szProgrammeIDList) /
                                    sizeof(tagNET_IN_DEL_PROGRAMMES::szProgrammeIDList[0]);
constexpr int kProgrammeTypeValues = 2;

// A brief entry carries "TempletState" at its own top level, not inside "Ordinary", and leaves
// the caller's programme type alone when it says nothing about it.
void ParseBriefProgramme(const Json::Value& json, tagNET_BRIEFLY_PROGRAMME_INFO* info) {
  ReadTextIfPresent(json, "ProgrammeName", info->szProgrammeName);
  ReadTextIfPresent(json, "ProgrammeID", info->szProgrammeID);
  ReadEnumOrKeep<kProgrammeTypeValues>(json, "ProgrammeType", info->emProgrammeType);
  ReadBool(json, "Enable", info->bEnable);
  ReadBool(json, "TempletState", info->bTempletState);
}

}  // namespace

bool serialize(const tagNET_IN_GET_PROGRAMME_BYID& in, Json::Value& params) {
  WriteText(params, "ProgrammeID", in.szProgrammeID);
  return true;
}

bool deserialize(const Json::Value& result, tagNET_OUT_GET_PROGRAMME_BYID& out) {
  ParseProgramme(Member(result, "Programme"), &out.stuProgramme);
  return true;
}

bool serialize(const tagNET_IN_GET_ALL_PROGRAMMES& /*in*/, Json::Value& /*params*/) {
  return true;
}

bool deserialize(const Json::Value& result, tagNET_OUT_GET_ALL_PROGRAMMES& out) {
  const uint32_t capacity = out.pstuInfos != nullptr ? out.nMaxInfosNum : 0;
  out.nRetInfosNum = ReadKeyedCollection(result, capacity, out.pstuInfos, ParseProgramme);
  return true;
}

bool serialize(const tagNET_IN_GET_ALL_BRIEFLYPROGRAMMES& /*in*/, Json::Value& /*params*/) {
  return true;
}

bool deserialize(const Json::Value& result, tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES& out) {
  out.nRetInfosNum =
      ReadKeyedCollection(result, kMaxBriefProgrammes, out.stuInfos, ParseBriefProgramme);
  return true;
}

bool serialize(const tagNET_IN_ADD_ONE_PROGRAMME& in, Json::Value& params) {
  PacketPragramme(&in.stuInfo, Put(params, "info"));
  return true;
}

// The new ID is copied even when the answer has none, which stores an empty text.
bool deserialize(const Json::Value& result, tagNET_OUT_ADD_ONE_PROGRAMME& out) {
  ReadText(result, "ProgrammeID", out.szProgrammeID);
  return true;
}

// The device finds the programme by the top-level ID; the copy inside "Programme" is part of the
// programme object as every writer produces it.
bool serialize(const tagNET_IN_MODIFY_ONE_PROGRAMME& in, Json::Value& params) {
  WriteText(params, "ProgrammeID", in.stuProgramme.szProgrammeID);
  PacketPragramme(&in.stuProgramme, Put(params, "Programme"));
  return true;
}

bool deserialize(const Json::Value& /*result*/, tagNET_OUT_MODIFY_ONE_PROGRAMME& /*out*/) {
  return true;
}

bool serialize(const tagNET_IN_DEL_PROGRAMMES& in, Json::Value& params) {
  WriteListIfAny(params, "ProgrammeIDList", in.nProgrammeIDListNum, kMaxDeletedIds,
                 [&](Json::Value& id, uint32_t i) {
                   SetJsonText(id, in.szProgrammeIDList[i], sizeof in.szProgrammeIDList[i]);
                 });
  return true;
}

bool deserialize(const Json::Value& /*result*/, tagNET_OUT_DEL_PROGRAMMES& /*out*/) {
  return true;
}
