#include "guidescreen/attribute_codec.h"

#include "codec/frame.h"

using namespace gsc::codec;

namespace {

constexpr uint32_t kMaxTimes = 8;
constexpr uint32_t kMaxPlayDates = 32;
constexpr uint32_t kMaxSplitScreens = 16;
constexpr uint32_t kSunEntries = 12;
constexpr int kStatusValues = 2;
constexpr int kDateTypeValues = 3;
// A sun entry left at 0 and 0 is sent as sunrise at 6 and sunset at 18.
constexpr int32_t kDefaultSunrise = 6;
constexpr int32_t kDefaultSunset = 18;

void ParseTime(const Json::Value& json, tagNET_GUIDESCREEN_TIME_INFO& time) {
  ReadBoolIfPresent(json, "Enable", time.bEnable);
  ReadEnum<kDateTypeValues>(json, "DateType", time.emDateType);
  ReadArrayIfPresent(json, "PlayDates", time.nPlayDatesNum, kMaxPlayDates,
                     [&](const Json::Value& date, uint32_t i) {
                       time.nPlayDates[i] = static_cast<uint32_t>(date.asInt());
                     });
  ReadTimeIfPresent(json, "OpenTime", time.stuOpenTime);
  ReadTimeIfPresent(json, "CloseTime", time.stuCloseTime);
}

void ParseSplitScreen(const Json::Value& json, tagNET_GUIDESCREEN_SPLITSCREEN_INFO& screen) {
  ReadTextIfPresent(json, "ScreenId", screen.szScreenId);
  ReadRectIfPresent(json, "Rect", screen.stuRect);
  ReadNumber(json, "ChildScreenBright", screen.nChildScreenBright);
}

void ParseAutoBright(const Json::Value& json, tagNET_GUIDESCREEN_AUTO_BRIGHT_INFO& bright) {
  ReadBool(json, "Enable", bright.bEnable);
  ReadNumber(json, "LightBright", bright.nLightBright);
  ReadNumber(json, "DarkBright", bright.nDarkBright);
  const Json::Value& times = Member(json, "Time");
  if (!times.isArray()) return;
  // All twelve entries are read whatever the array's size; missing ones read as 0.
  for (uint32_t i = 0; i < kSunEntries; ++i) {
    ReadNumber(times[i], "Sunrise", bright.stuTime[i].nSunrise);
    ReadNumber(times[i], "Sunset", bright.stuTime[i].nSunset);
  }
}

void PacketTime(const tagNET_GUIDESCREEN_TIME_INFO& time, Json::Value& json) {
  WriteBool(json, "Enable", time.bEnable);
  WriteEnumInRange<kDateTypeValues>(json, "DateType", time.emDateType);
  WriteListIfAny(json, "PlayDates", time.nPlayDatesNum, kMaxPlayDates,
                 [&](Json::Value& date, uint32_t i) { date = Json::Value(time.nPlayDates[i]); });
  WriteTime(json, "OpenTime", time.stuOpenTime);
  WriteTime(json, "CloseTime", time.stuCloseTime);
}

void PacketSplitScreen(const tagNET_GUIDESCREEN_SPLITSCREEN_INFO& screen, Json::Value& json) {
  WriteText(json, "ScreenId", screen.szScreenId);
  WriteRect(json, "Rect", screen.stuRect);
  WriteUnsigned(json, "ChildScreenBright", screen.nChildScreenBright);
}

void PacketSunTime(const tagNET_GUIDESCREEN_SUN_TIME_INFO& sun, Json::Value& json) {
  if (sun.nSunrise != 0 || sun.nSunset != 0) {
    WriteUnsigned(json, "Sunrise", sun.nSunrise);
    WriteUnsigned(json, "Sunset", sun.nSunset);
  } else {
    WriteInt(json, "Sunrise", kDefaultSunrise);
    WriteInt(json, "Sunset", kDefaultSunset);
  }
}

void PacketAutoBright(const tagNET_GUIDESCREEN_AUTO_BRIGHT_INFO& bright, Json::Value& json) {
  WriteBool(json, "Enable", bright.bEnable);
  WriteUnsigned(json, "LightBright", bright.nLightBright);
  WriteUnsigned(json, "DarkBright", bright.nDarkBright);
  WriteListOrNull(json, "Time", kSunEntries, kSunEntries,
                  [&](Json::Value& sun, uint32_t i) { PacketSunTime(bright.stuTime[i], sun); });
}

}  // namespace

void ParseGuidScreenAttribute(const Json::Value& json, tagNET_GUIDESCREEN_ATTRIBUTE_INFO* info) {
  if (info == nullptr) return;
  ReadTextIfPresent(json, "ID", info->szID);
  ReadEnumIfPresent<kStatusValues>(json, "Status", info->emStatus);
  ReadBoolIfPresent(json, "IsForeverOpen", info->bIsForeverOpen);
  ReadArrayIfPresent(
      json, "Time", info->nTimeNum, kMaxTimes,
      [&](const Json::Value& time, uint32_t i) { ParseTime(time, info->stuTime[i]); });
  ReadNumber(json, "Bright", info->nBright);
  ReadNumber(json, "Contrast", info->nContrast);
  ReadNumber(json, "Saturation", info->nSaturation);
  ReadNumber(json, "Volume", info->nVolume);
  ReadNumber(json, "Width", info->nWidth);
  ReadNumber(json, "Height", info->nHeight);
  ReadArrayIfPresent(json, "SplitScreenList", info->nSplitScreenListNum, kMaxSplitScreens,
                     [&](const Json::Value& screen, uint32_t i) {
                       ParseSplitScreen(screen, info->stuSplitScreenList[i]);
                     });
  const Json::Value& autoBright = Member(json, "AutoBright");
  if (!autoBright.isNull()) ParseAutoBright(autoBright, info->stuAutoBright);
}

namespace gsc::guidescreen {

void PacketGuidScreenAttribute(const tagNET_GUIDESCREEN_ATTRIBUTE_INFO& info, Json::Value& json) {
  WriteText(json, "ID", info.szID);
  WriteEnumInRange<kStatusValues>(json, "Status", info.emStatus);
  WriteBool(json, "IsForeverOpen", info.bIsForeverOpen);
  WriteListOrNull(json, "Time", info.nTimeNum, kMaxTimes,
                  [&](Json::Value& time, uint32_t i) { PacketTime(info.stuTime[i], time); });
  WriteUnsigned(json, "Bright", info.nBright);
  WriteUnsigned(json, "Contrast", info.nContrast);
  WriteUnsigned(json, "Saturation", info.nSaturation);
  WriteUnsigned(json, "Width", info.nWidth);
  WriteUnsigned(json, "Height", info.nHeight);
  WriteUnsigned(json, "Volume", info.nVolume);
  WriteListOrNull(json, "SplitScreenList", info.nSplitScreenListNum, kMaxSplitScreens,
                  [&](Json::Value& screen, uint32_t i) {
                    PacketSplitScreen(info.stuSplitScreenList[i], screen);
                  });
  PacketAutoBright(info.stuAutoBright, Put(json, "AutoBright"));
}

}  // namespace gsc::guidescreen
