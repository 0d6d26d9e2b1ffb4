// The six programme operations.
#include "guidescreen_codec/operations.h"

#include <exception>

#include "codec/frame.h"
#include "describe/enumerations.h"
#include "programme/programme_codecs.h"
#include "text/read_text.h"

using namespace gsc::codec;
using gsc::programme::PacketProgramme;
using gsc::programme::ReadProgramme;
using gsc::text::ReadTextReporting;
using gsc::text::ReadTextSilently;

namespace {

constexpr int kProgrammeTypeValues = gsc::fields::kProgrammeTypeEnum.JsonValues();

constexpr auto kBriefProgrammeKeys =
    Keys("ProgrammeName", "ProgrammeID", "ProgrammeType", "Enable", "TempletState");
constexpr auto kProgrammeResultKeys = Keys("Programme");
constexpr auto kAddedProgrammeResultKeys = Keys("ProgrammeID");

// A brief entry carries "TempletState" at its own top level, not inside "Ordinary", and leaves
// the caller's programme type alone when it says nothing about it.
template <typename V, typename C>
void ReadBriefProgramme(const V& json, tagNET_BRIEFLY_PROGRAMME_INFO& info, C& context) {
  const auto object = MembersOf<kBriefProgrammeKeys>(json, context);
  ReadTextIfPresent(object, GSC_KEY("ProgrammeName"), info.szProgrammeName);
  ReadTextIfPresent(object, GSC_KEY("ProgrammeID"), info.szProgrammeID);
  ReadEnumOrKeep<kProgrammeTypeValues>(object, GSC_KEY("ProgrammeType"), info.emProgrammeType);
  ReadBool(object, GSC_KEY("Enable"), info.bEnable);
  ReadBool(object, GSC_KEY("TempletState"), info.bTempletState);
}

template <typename C>
void WriteProgrammeId(const tagNET_IN_GET_PROGRAMME_BYID& in, Json::Value& params, C& context) {
  WriteText(Out<C>{params, context}, "ProgrammeID", in.szProgrammeID);
}

template <typename V, typename C>
void ReadProgrammeById(const V& result, tagNET_OUT_GET_PROGRAMME_BYID& out, C& context) {
  const auto object = MembersOf<kProgrammeResultKeys>(result, context);
  ReadObject(object, GSC_KEY("Programme"),
             [&](const auto& programme) { ReadProgramme(programme, out.stuProgramme, context); });
}

template <typename V, typename C>
void ReadAllProgrammes(const V& result, tagNET_OUT_GET_ALL_PROGRAMMES& out, C& context) {
  const uint32_t capacity = out.pstuInfos != nullptr ? out.nMaxInfosNum : 0;
  out.nRetInfosNum = ReadKeyedCollection(
      result, capacity, out.pstuInfos, context,
      [&](const auto& programme, auto& info) { ReadProgramme(programme, info, context); });
}

template <typename V, typename C>
void ReadBriefProgrammes(const V& result, tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES& out, C& context) {
  out.nRetInfosNum = ReadKeyedCollection(
      result, Capacity(out.stuInfos), out.stuInfos, context,
      [&](const auto& brief, auto& info) { ReadBriefProgramme(brief, info, context); });
}

template <typename C>
void WriteAddedProgramme(const tagNET_IN_ADD_ONE_PROGRAMME& in, Json::Value& params, C& context) {
  Step<C> step(context, FieldNamed("stuInfo"));
  PacketProgramme(in.stuInfo, Out<C>{Put(params, "info"), context});
}

// The new ID is copied even when the answer has none, which stores an empty text.
template <typename V, typename C>
void ReadAddedProgramme(const V& result, tagNET_OUT_ADD_ONE_PROGRAMME& out, C& context) {
  const auto object = MembersOf<kAddedProgrammeResultKeys>(result, context);
  ReadText(object, GSC_KEY("ProgrammeID"), out.szProgrammeID);
}

// The device finds the programme by the top-level ID; the copy inside "Programme" is part of the
// programme object as every writer produces it, and the report names the field once, there.
template <typename C>
void WriteModifiedProgramme(const tagNET_IN_MODIFY_ONE_PROGRAMME& in, Json::Value& params,
                            C& context) {
  SetJsonText(Put(params, "ProgrammeID"), in.stuProgramme.szProgrammeID,
              sizeof in.stuProgramme.szProgrammeID);
  Step<C> step(context, FieldNamed("stuProgramme"));
  PacketProgramme(in.stuProgramme, Out<C>{Put(params, "Programme"), context});
}

template <typename C>
void WriteDeletedProgrammes(const tagNET_IN_DEL_PROGRAMMES& in, Json::Value& params, C& context) {
  WriteListIfAny(Out<C>{params, context}, "ProgrammeIDList", in.nProgrammeIDListNum,
                 in.szProgrammeIDList,
                 [](const Out<C>& id, const char(&field)[64]) { WriteTextElement(id, field); });
}

}  // namespace

bool serialize(const tagNET_IN_GET_PROGRAMME_BYID& in, Json::Value& params) {
  return RunSilent([&](Silent& context) { WriteProgrammeId(in, params, context); });
}
bool serialize(const tagNET_IN_GET_PROGRAMME_BYID& in, Json::Value& params, gsc::Report& report) {
  return RunReporting(report, [&](Reporting& context) { WriteProgrammeId(in, params, context); });
}
bool deserialize(const Json::Value& result, tagNET_OUT_GET_PROGRAMME_BYID& out) {
  return RunSilent([&](Silent& context) { ReadProgrammeById(result, out, context); });
}
bool deserialize(const Json::Value& result, tagNET_OUT_GET_PROGRAMME_BYID& out,
                 gsc::Report& report) {
  return RunReporting(report, [&](Reporting& context) { ReadProgrammeById(result, out, context); });
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_GET_PROGRAMME_BYID& out) {
  return ReadTextSilently(text, [&](const TextValue& result, Silent& context) {
    ReadProgrammeById(result, out, context);
  });
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_GET_PROGRAMME_BYID& out,
                           gsc::Report& report) {
  return ReadTextReporting(text, report, [&](const TextValue& result, Reporting& context) {
    ReadProgrammeById(result, out, context);
  });
}

bool serialize(const tagNET_IN_GET_ALL_PROGRAMMES& /*in*/, Json::Value& /*params*/) {
  return true;
}
bool serialize(const tagNET_IN_GET_ALL_PROGRAMMES& /*in*/, Json::Value& /*params*/,
               gsc::Report& report) {
  return RunReporting(report, [](Reporting& /*context*/) {});
}
bool deserialize(const Json::Value& result, tagNET_OUT_GET_ALL_PROGRAMMES& out) {
  return RunSilent([&](Silent& context) { ReadAllProgrammes(result, out, context); });
}
bool deserialize(const Json::Value& result, tagNET_OUT_GET_ALL_PROGRAMMES& out,
                 gsc::Report& report) {
  return RunReporting(report, [&](Reporting& context) { ReadAllProgrammes(result, out, context); });
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_GET_ALL_PROGRAMMES& out) {
  return ReadTextSilently(text, [&](const TextValue& result, Silent& context) {
    ReadAllProgrammes(result, out, context);
  });
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_GET_ALL_PROGRAMMES& out,
                           gsc::Report& report) {
  return ReadTextReporting(text, report, [&](const TextValue& result, Reporting& context) {
    ReadAllProgrammes(result, out, context);
  });
}

bool gsc::deserialize_json_in_batches(std::string_view text, tagNET_OUT_GET_ALL_PROGRAMMES& out,
                                      uint32_t capacity, gsc::Report& report,
                                      const gsc::ProgrammeBatchSink& sink) {
  // What the sink throws must pass the reading's own handling of conversion failures untouched.
  struct SinkThrew {};
  std::exception_ptr thrown;
  const uint32_t room = out.pstuInfos != nullptr ? out.nMaxInfosNum : 0;
  const uint32_t batchRoom = out.nMaxInfosNum;
  try {
    return ReadTextReporting(text, report, [&](const TextValue& result, Reporting& context) {
      out.nRetInfosNum = ReadKeyedCollectionInBatches(
          result, room == 0 ? 0 : capacity, room, out.pstuInfos, context,
          [&](const auto& programme, auto& info) { ReadProgramme(programme, info, context); },
          [&](uint32_t first, uint32_t count, uint32_t total) {
            const uint32_t before = out.nRetInfosNum;
            out.nRetInfosNum = count;
            try {
              sink(out, gsc::ProgrammeBatch{first, count, total});
            } catch (...) {
              thrown = std::current_exception();
              throw SinkThrew{};
            }
            out.nRetInfosNum = before;
            out.nMaxInfosNum = batchRoom;
          });
    });
  } catch (const SinkThrew&) {
    std::rethrow_exception(thrown);
  }
}

bool serialize(const tagNET_IN_GET_ALL_BRIEFLYPROGRAMMES& /*in*/, Json::Value& /*params*/) {
  return true;
}
bool serialize(const tagNET_IN_GET_ALL_BRIEFLYPROGRAMMES& /*in*/, Json::Value& /*params*/,
               gsc::Report& report) {
  return RunReporting(report, [](Reporting& /*context*/) {});
}
bool deserialize(const Json::Value& result, tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES& out) {
  return RunSilent([&](Silent& context) { ReadBriefProgrammes(result, out, context); });
}
bool deserialize(const Json::Value& result, tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES& out,
                 gsc::Report& report) {
  return RunReporting(report,
                      [&](Reporting& context) { ReadBriefProgrammes(result, out, context); });
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES& out) {
  return ReadTextSilently(text, [&](const TextValue& result, Silent& context) {
    ReadBriefProgrammes(result, out, context);
  });
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES& out,
                           gsc::Report& report) {
  return ReadTextReporting(text, report, [&](const TextValue& result, Reporting& context) {
    ReadBriefProgrammes(result, out, context);
  });
}

bool serialize(const tagNET_IN_ADD_ONE_PROGRAMME& in, Json::Value& params) {
  return RunSilent([&](Silent& context) { WriteAddedProgramme(in, params, context); });
}
bool serialize(const tagNET_IN_ADD_ONE_PROGRAMME& in, Json::Value& params, gsc::Report& report) {
  return RunReporting(report,
                      [&](Reporting& context) { WriteAddedProgramme(in, params, context); });
}
bool deserialize(const Json::Value& result, tagNET_OUT_ADD_ONE_PROGRAMME& out) {
  return RunSilent([&](Silent& context) { ReadAddedProgramme(result, out, context); });
}
bool deserialize(const Json::Value& result, tagNET_OUT_ADD_ONE_PROGRAMME& out,
                 gsc::Report& report) {
  return RunReporting(report,
                      [&](Reporting& context) { ReadAddedProgramme(result, out, context); });
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_ADD_ONE_PROGRAMME& out) {
  return ReadTextSilently(text, [&](const TextValue& result, Silent& context) {
    ReadAddedProgramme(result, out, context);
  });
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_ADD_ONE_PROGRAMME& out,
                           gsc::Report& report) {
  return ReadTextReporting(text, report, [&](const TextValue& result, Reporting& context) {
    ReadAddedProgramme(result, out, context);
  });
}

bool serialize(const tagNET_IN_MODIFY_ONE_PROGRAMME& in, Json::Value& params) {
  return RunSilent([&](Silent& context) { WriteModifiedProgramme(in, params, context); });
}
bool serialize(const tagNET_IN_MODIFY_ONE_PROGRAMME& in, Json::Value& params, gsc::Report& report) {
  return RunReporting(report,
                      [&](Reporting& context) { WriteModifiedProgramme(in, params, context); });
}
bool deserialize(const Json::Value& /*result*/, tagNET_OUT_MODIFY_ONE_PROGRAMME& /*out*/) {
  return true;
}
bool deserialize(const Json::Value& /*result*/, tagNET_OUT_MODIFY_ONE_PROGRAMME& /*out*/,
                 gsc::Report& report) {
  return RunReporting(report, [](Reporting& /*context*/) {});
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_MODIFY_ONE_PROGRAMME& /*out*/) {
  return ReadTextSilently(text, [](const TextValue& /*result*/, Silent& /*context*/) {});
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_MODIFY_ONE_PROGRAMME& /*out*/,
                           gsc::Report& report) {
  return ReadTextReporting(text, report,
                           [](const TextValue& /*result*/, Reporting& /*context*/) {});
}

bool serialize(const tagNET_IN_DEL_PROGRAMMES& in, Json::Value& params) {
  return RunSilent([&](Silent& context) { WriteDeletedProgrammes(in, params, context); });
}
bool serialize(const tagNET_IN_DEL_PROGRAMMES& in, Json::Value& params, gsc::Report& report) {
  return RunReporting(report,
                      [&](Reporting& context) { WriteDeletedProgrammes(in, params, context); });
}
bool deserialize(const Json::Value& /*result*/, tagNET_OUT_DEL_PROGRAMMES& /*out*/) {
  return true;
}
bool deserialize(const Json::Value& /*result*/, tagNET_OUT_DEL_PROGRAMMES& /*out*/,
                 gsc::Report& report) {
  return RunReporting(report, [](Reporting& /*context*/) {});
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_DEL_PROGRAMMES& /*out*/) {
  return ReadTextSilently(text, [](const TextValue& /*result*/, Silent& /*context*/) {});
}
bool gsc::deserialize_json(std::string_view text, tagNET_OUT_DEL_PROGRAMMES& /*out*/,
                           gsc::Report& report) {
  return ReadTextReporting(text, report,
                           [](const TextValue& /*result*/, Reporting& /*context*/) {});
}
