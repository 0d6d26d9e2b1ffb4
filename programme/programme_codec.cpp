// The programme record: its ordinary part, its windows and each window's element buffer.
#include "codec/frame.h"
#include "programme/element_buffer.h"
#include "programme/programme_codecs.h"

using namespace gsc::codec;
using namespace gsc::programme;

namespace {

constexpr uint32_t kMaxWindows = 16;
constexpr int kTourPeriodValues = 3;
// The one programme kind this record describes, written with its "Ordinary" object.
constexpr int32_t kOrdinaryProgrammeType = 0;

void ParseWindow(const Json::Value& json, tagNET_PROGRAMME_WINDOW_INFO& window) {
  ReadTextIfPresent(json, "WinID", window.szWinID);
  ReadColorIfPresent(json, "BackgroundColor", window.stuBackgroundColor);
  ReadNumber(json, "Volume", window.nVolume);
  ReadNumber(json, "Diaphaneity", window.nDiaphaneity);
  ReadEnum<kTourPeriodValues>(json, "TourPeriod", window.emTourPeriod);
  if (window.emTourPeriod == EM_TOUR_PERIOD_TYPE_CUSTOM_TIME) {
    ReadNumber(json, "TourPeriodTime", window.nTourPeriodTime);
  }
  const Json::Value& elements = Member(json, "Elements");
  if (elements.isArray()) {
    window.nElementsNum = ReadElementList(elements, window.pElementsBuf, window.nElementsBufLen);
  }
}

void PacketWindow(const tagNET_PROGRAMME_WINDOW_INFO& window, Json::Value& json) {
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

void ParseOrdinary(const Json::Value& json, tagNET_ORDINARY_PROGRAMME_INFO& ordinary) {
  ReadBool(json, "TempletState", ordinary.bTempletState);
  ReadTextIfPresent(json, "Description", ordinary.szDescription);
  ReadArrayIfPresent(
      json, "Windows", ordinary.nWindowsNum, kMaxWindows,
      [&](const Json::Value& window, uint32_t i) { ParseWindow(window, ordinary.stuWindows[i]); });
}

void PacketOrdinary(const tagNET_ORDINARY_PROGRAMME_INFO& ordinary, Json::Value& json) {
  WriteBool(json, "TempletState", ordinary.bTempletState);
  WriteText(json, "Description", ordinary.szDescription);
  WriteListOrNull(
      json, "Windows", ordinary.nWindowsNum, kMaxWindows,
      [&](Json::Value& window, uint32_t i) { PacketWindow(ordinary.stuWindows[i], window); });
}

}  // namespace

// "ProgrammeType" is not read here: the record holds only the ordinary kind.
void ParseProgramme(const Json::Value& json, tagNET_PROGRAMME_INFO* info) {
  if (info == nullptr) return;
  ReadTextIfPresent(json, "ProgrammeName", info->szProgrammeName);
  ReadTextIfPresent(json, "ProgrammeID", info->szProgrammeID);
  ReadBool(json, "Enable", info->bEnable);
  const Json::Value& ordinary = Member(json, "Ordinary");
  if (!ordinary.isNull()) ParseOrdinary(ordinary, info->stuOrdinary);
}

void PacketPragramme(const tagNET_PROGRAMME_INFO* info, Json::Value& json) {
  if (info == nullptr) return;
  WriteText(json, "ProgrammeName", info->szProgrammeName);
  WriteText(json, "ProgrammeID", info->szProgrammeID);
  WriteInt(json, "ProgrammeType", kOrdinaryProgrammeType);
  WriteBool(json, "Enable", info->bEnable);
  PacketOrdinary(info->stuOrdinary, Put(json, "Ordinary"));
}
