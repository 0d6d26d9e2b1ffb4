// The programme record: its ordinary part, its windows and each window's element buffer.
#include "describe/enumerations.h"
#include "programme/element_buffer.h"
#include "programme/programme_codecs.h"

using namespace gsc::codec;

namespace gsc::programme {
namespace {

constexpr int kTourPeriodValues = fields::kTourPeriodEnum.JsonValues();
// The one programme kind this record describes, written with its "Ordinary" object.
constexpr int32_t kOrdinaryProgrammeType = 0;

constexpr auto kProgrammeKeys =
    Keys("ProgrammeName", "ProgrammeID", "ProgrammeType", "Enable", "Ordinary");
constexpr auto kOrdinaryKeys = Keys("TempletState", "Description", "Windows");
constexpr auto kWindowKeys = Keys("WinID", "BackgroundColor", "Volume", "Diaphaneity", "TourPeriod",
                                  "TourPeriodTime", "Elements");

// An "Elements" array is laid into the window's own buffer and replaces nElementsNum; anything
// else keeps the count.
template <typename C, const auto& Table, typename V>
void ReadElementsIfPresent(const Members<C, Table, V>& object,
                           tagNET_PROGRAMME_WINDOW_INFO& window) {
  const auto& elements = object[GSC_KEY("Elements")];
  if (!elements.isArray()) {
    if constexpr (C::kReporting) {
      if (!elements.isNull()) {
        NoteMalformed(object.context(), KeySegment("Elements"), elements, "an array");
      }
    }
    return;
  }
  Step<C> step(object.context(), KeySegment("Elements"));
  window.nElementsNum =
      ReadElementList(elements, window.pElementsBuf, window.nElementsBufLen, object.context());
}

template <typename V, typename C>
void ReadWindow(const V& json, tagNET_PROGRAMME_WINDOW_INFO& window, C& context) {
  const auto object = MembersOf<kWindowKeys>(json, context);
  ReadTextIfPresent(object, GSC_KEY("WinID"), window.szWinID);
  ReadColorIfPresent(object, GSC_KEY("BackgroundColor"), window.stuBackgroundColor);
  ReadNumber(object, GSC_KEY("Volume"), window.nVolume);
  ReadNumber(object, GSC_KEY("Diaphaneity"), window.nDiaphaneity);
  ReadEnum<kTourPeriodValues>(object, GSC_KEY("TourPeriod"), window.emTourPeriod);
  if (window.emTourPeriod == EM_TOUR_PERIOD_TYPE_CUSTOM_TIME) {
    ReadNumber(object, GSC_KEY("TourPeriodTime"), window.nTourPeriodTime);
  }
  ReadElementsIfPresent(object, window);
}

template <typename C>
void PacketWindow(const tagNET_PROGRAMME_WINDOW_INFO& window, const Out<C>& json) {
  WriteText(json, "WinID", window.szWinID);
  WriteColor(json, "BackgroundColor", window.stuBackgroundColor);
  WriteUnsigned(json, "Diaphaneity", window.nDiaphaneity);
  WriteInt(json, "Volume", window.nVolume);
  WriteEnumIfSet(json, "TourPeriod", window.emTourPeriod);
  if (window.emTourPeriod == EM_TOUR_PERIOD_TYPE_CUSTOM_TIME) {
    WriteUnsigned(json, "TourPeriodTime", window.nTourPeriodTime);
  }
  // Created before the entries are walked: a window without any stays "Elements": null.
  WriteElementList(window.pElementsBuf, window.nElementsNum, Put(json, "Elements"));
}

template <typename V, typename C>
void ReadOrdinary(const V& json, tagNET_ORDINARY_PROGRAMME_INFO& ordinary, C& context) {
  const auto object = MembersOf<kOrdinaryKeys>(json, context);
  ReadBool(object, GSC_KEY("TempletState"), ordinary.bTempletState);
  ReadTextIfPresent(object, GSC_KEY("Description"), ordinary.szDescription);
  ReadArrayIfPresent(object, GSC_KEY("Windows"), ordinary.nWindowsNum, ordinary.stuWindows,
                     [&](const auto& window, tagNET_PROGRAMME_WINDOW_INFO& info) {
                       ReadWindow(window, info, context);
                     });
}

template <typename C>
void PacketOrdinary(const tagNET_ORDINARY_PROGRAMME_INFO& ordinary, const Out<C>& json) {
  WriteBool(json, "TempletState", ordinary.bTempletState);
  WriteText(json, "Description", ordinary.szDescription);
  WriteListOrNull(json, "Windows", ordinary.nWindowsNum, ordinary.stuWindows,
                  [](const Out<C>& window, const tagNET_PROGRAMME_WINDOW_INFO& info) {
                    PacketWindow(info, window);
                  });
}

}  // namespace

// "ProgrammeType" is not read here: the record holds only the ordinary kind.
template <typename V, typename C>
void ReadProgramme(const V& json, tagNET_PROGRAMME_INFO& info, C& context) {
  const auto object = MembersOf<kProgrammeKeys>(json, context);
  ReadTextIfPresent(object, GSC_KEY("ProgrammeName"), info.szProgrammeName);
  ReadTextIfPresent(object, GSC_KEY("ProgrammeID"), info.szProgrammeID);
  ReadBool(object, GSC_KEY("Enable"), info.bEnable);
  ReadObjectIfPresent(object, GSC_KEY("Ordinary"), [&](const auto& ordinary) {
    ReadOrdinary(ordinary, info.stuOrdinary, context);
  });
}

template <typename C>
void PacketProgramme(const tagNET_PROGRAMME_INFO& info, const Out<C>& json) {
  WriteText(json, "ProgrammeName", info.szProgrammeName);
  WriteText(json, "ProgrammeID", info.szProgrammeID);
  WriteInt(json, "ProgrammeType", kOrdinaryProgrammeType);
  WriteBool(json, "Enable", info.bEnable);
  WriteRecord(json, "Ordinary",
              [&](const Out<C>& ordinary) { PacketOrdinary(info.stuOrdinary, ordinary); });
}

template void ReadProgramme(const Json::Value&, tagNET_PROGRAMME_INFO&, Silent&);
template void ReadProgramme(const TextValue&, tagNET_PROGRAMME_INFO&, Silent&);
template void ReadProgramme(const Json::Value&, tagNET_PROGRAMME_INFO&, Reporting&);
template void ReadProgramme(const TextValue&, tagNET_PROGRAMME_INFO&, Reporting&);
template void PacketProgramme(const tagNET_PROGRAMME_INFO&, const Out<Silent>&);
template void PacketProgramme(const tagNET_PROGRAMME_INFO&, const Out<Reporting>&);

}  // namespace gsc::programme

void ParseProgramme(const Json::Value& json, tagNET_PROGRAMME_INFO* info) {
  ParseSilently(json, info, gsc::programme::ReadProgramme<Json::Value, Silent>);
}

void PacketPragramme(const tagNET_PROGRAMME_INFO* info, Json::Value& json) {
  PacketSilently(info, json, gsc::programme::PacketProgramme<Silent>);
}
