#include "guidescreen/attribute_codec.h"

#include "describe/enumerations.h"

using namespace gsc::codec;

namespace gsc::guidescreen {
namespace {

constexpr int kStatusValues = fields::kScreenStatusEnum.JsonValues();
constexpr int kDateTypeValues = fields::kDateTypeEnum.JsonValues();
constexpr uint32_t kSunEntries = 12;
// A sun entry left at 0 and 0 is sent as sunrise at 6 and sunset at 18.
constexpr int32_t kDefaultSunrise = 6;
constexpr int32_t kDefaultSunset = 18;

// The members each object's codecs know.
constexpr auto kScreenKeys =
    Keys("ID", "Status", "IsForeverOpen", "Time", "Bright", "Contrast", "Saturation", "Width",
         "Height", "Volume", "SplitScreenList", "AutoBright");
constexpr auto kTimeKeys = Keys("Enable", "DateType", "PlayDates", "OpenTime", "CloseTime");
constexpr auto kSplitScreenKeys = Keys("ScreenId", "Rect", "ChildScreenBright");
constexpr auto kAutoBrightKeys = Keys("Enable", "LightBright", "DarkBright", "Time");
constexpr auto kSunTimeKeys = Keys("Sunrise", "Sunset");

template <typename V, typename C>
void ReadTime(const V& json, tagNET_GUIDESCREEN_TIME_INFO& time, C& context) {
  const auto object = MembersOf<kTimeKeys>(json, context);
  ReadBoolIfPresent(object, GSC_KEY("Enable"), time.bEnable);
  ReadEnum<kDateTypeValues>(object, GSC_KEY("DateType"), time.emDateType);
  ReadArrayIfPresent(object, GSC_KEY("PlayDates"), time.nPlayDatesNum, time.nPlayDates,
                     [&](const auto& date, uint32_t& field) {
                       field = static_cast<uint32_t>(ReadInt(context, date));
                     });
  ReadTimeIfPresent(object, GSC_KEY("OpenTime"), time.stuOpenTime);
  ReadTimeIfPresent(object, GSC_KEY("CloseTime"), time.stuCloseTime);
}

template <typename V, typename C>
void ReadSplitScreen(const V& json, tagNET_GUIDESCREEN_SPLITSCREEN_INFO& screen, C& context) {
  const auto object = MembersOf<kSplitScreenKeys>(json, context);
  ReadTextIfPresent(object, GSC_KEY("ScreenId"), screen.szScreenId);
  ReadRectIfPresent(object, GSC_KEY("Rect"), screen.stuRect);
  ReadNumber(object, GSC_KEY("ChildScreenBright"), screen.nChildScreenBright);
}

// All twelve sun entries are read whatever the array's size; missing ones read as 0.
template <typename V, typename C>
void ReadAutoBright(const V& json, tagNET_GUIDESCREEN_AUTO_BRIGHT_INFO& bright, C& context) {
  const auto object = MembersOf<kAutoBrightKeys>(json, context);
  ReadBool(object, GSC_KEY("Enable"), bright.bEnable);
  ReadNumber(object, GSC_KEY("LightBright"), bright.nLightBright);
  ReadNumber(object, GSC_KEY("DarkBright"), bright.nDarkBright);
  const auto& times = object[GSC_KEY("Time")];
  if (!times.isArray()) {
    if constexpr (C::kReporting) {
      if (!times.isNull()) NoteMalformed(context, KeySegment("Time"), times, "an array");
    }
    return;
  }
  Step<C> step(context, KeySegment("Time"));
  if constexpr (C::kReporting) {
    if (times.size() > kSunEntries) NoteArrayClamped(context, times.size(), kSunEntries);
  }
  ArrayCursor element(times, kSunEntries);
  for (uint32_t i = 0; i < kSunEntries; ++i) {
    Step<C> entry(context, Segment::Index(i));
    const auto sun = MembersOf<kSunTimeKeys>(element.At(i), context);
    ReadNumber(sun, GSC_KEY("Sunrise"), bright.stuTime[i].nSunrise);
    ReadNumber(sun, GSC_KEY("Sunset"), bright.stuTime[i].nSunset);
  }
}

template <typename C>
void PacketTime(const tagNET_GUIDESCREEN_TIME_INFO& time, const Out<C>& json) {
  WriteBool(json, "Enable", time.bEnable);
  WriteEnumInRange<kDateTypeValues>(json, "DateType", time.emDateType);
  WriteListIfAny(json, "PlayDates", time.nPlayDatesNum, time.nPlayDates,
                 [](const Out<C>& date, uint32_t value) { date.json = Json::Value(value); });
  WriteTime(json, "OpenTime", time.stuOpenTime);
  WriteTime(json, "CloseTime", time.stuCloseTime);
}

template <typename C>
void PacketSplitScreen(const tagNET_GUIDESCREEN_SPLITSCREEN_INFO& screen, const Out<C>& json) {
  WriteText(json, "ScreenId", screen.szScreenId);
  WriteRect(json, "Rect", screen.stuRect);
  WriteUnsigned(json, "ChildScreenBright", screen.nChildScreenBright);
}

template <typename C>
void PacketSunTime(const tagNET_GUIDESCREEN_SUN_TIME_INFO& sun, const Out<C>& json) {
  if (sun.nSunrise != 0 || sun.nSunset != 0) {
    WriteUnsigned(json, "Sunrise", sun.nSunrise);
    WriteUnsigned(json, "Sunset", sun.nSunset);
  } else {
    WriteInt(json, "Sunrise", kDefaultSunrise);
    WriteInt(json, "Sunset", kDefaultSunset);
  }
}

template <typename C>
void PacketAutoBright(const tagNET_GUIDESCREEN_AUTO_BRIGHT_INFO& bright, const Out<C>& json) {
  WriteBool(json, "Enable", bright.bEnable);
  WriteUnsigned(json, "LightBright", bright.nLightBright);
  WriteUnsigned(json, "DarkBright", bright.nDarkBright);
  WriteListOrNull(json, "Time", kSunEntries, bright.stuTime,
                  [](const Out<C>& sun, const auto& entry) { PacketSunTime(entry, sun); });
}

}  // namespace

template <typename V, typename C>
void ReadGuidScreenAttribute(const V& json, tagNET_GUIDESCREEN_ATTRIBUTE_INFO& info, C& context) {
  const auto object = MembersOf<kScreenKeys>(json, context);
  ReadTextIfPresent(object, GSC_KEY("ID"), info.szID);
  ReadEnumIfPresent<kStatusValues>(object, GSC_KEY("Status"), info.emStatus);
  ReadBoolIfPresent(object, GSC_KEY("IsForeverOpen"), info.bIsForeverOpen);
  ReadArrayIfPresent(object, GSC_KEY("Time"), info.nTimeNum, info.stuTime,
                     [&](const auto& time, auto& entry) { ReadTime(time, entry, context); });
  ReadNumber(object, GSC_KEY("Bright"), info.nBright);
  ReadNumber(object, GSC_KEY("Contrast"), info.nContrast);
  ReadNumber(object, GSC_KEY("Saturation"), info.nSaturation);
  ReadNumber(object, GSC_KEY("Width"), info.nWidth);
  ReadNumber(object, GSC_KEY("Height"), info.nHeight);
  ReadNumber(object, GSC_KEY("Volume"), info.nVolume);
  ReadArrayIfPresent(
      object, GSC_KEY("SplitScreenList"), info.nSplitScreenListNum, info.stuSplitScreenList,
      [&](const auto& screen, auto& entry) { ReadSplitScreen(screen, entry, context); });
  ReadObjectIfPresent(object, GSC_KEY("AutoBright"), [&](const auto& bright) {
    ReadAutoBright(bright, info.stuAutoBright, context);
  });
}

template <typename C>
void PacketGuidScreenAttribute(const tagNET_GUIDESCREEN_ATTRIBUTE_INFO& info, const Out<C>& json) {
  WriteText(json, "ID", info.szID);
  WriteEnumInRange<kStatusValues>(json, "Status", info.emStatus);
  WriteBool(json, "IsForeverOpen", info.bIsForeverOpen);
  WriteListOrNull(json, "Time", info.nTimeNum, info.stuTime,
                  [](const Out<C>& time, const auto& entry) { PacketTime(entry, time); });
  WriteUnsigned(json, "Bright", info.nBright);
  WriteUnsigned(json, "Contrast", info.nContrast);
  WriteUnsigned(json, "Saturation", info.nSaturation);
  WriteUnsigned(json, "Width", info.nWidth);
  WriteUnsigned(json, "Height", info.nHeight);
  WriteUnsigned(json, "Volume", info.nVolume);
  WriteListOrNull(
      json, "SplitScreenList", info.nSplitScreenListNum, info.stuSplitScreenList,
      [](const Out<C>& screen, const auto& entry) { PacketSplitScreen(entry, screen); });
  WriteRecord(json, "AutoBright",
              [&](const Out<C>& bright) { PacketAutoBright(info.stuAutoBright, bright); });
}

template void ReadGuidScreenAttribute(const Json::Value&, tagNET_GUIDESCREEN_ATTRIBUTE_INFO&,
                                      Silent&);
template void ReadGuidScreenAttribute(const TextValue&, tagNET_GUIDESCREEN_ATTRIBUTE_INFO&,
                                      Silent&);
template void ReadGuidScreenAttribute(const Json::Value&, tagNET_GUIDESCREEN_ATTRIBUTE_INFO&,
                                      Reporting&);
template void ReadGuidScreenAttribute(const TextValue&, tagNET_GUIDESCREEN_ATTRIBUTE_INFO&,
                                      Reporting&);
template void PacketGuidScreenAttribute(const tagNET_GUIDESCREEN_ATTRIBUTE_INFO&,
                                        const Out<Silent>&);
template void PacketGuidScreenAttribute(const tagNET_GUIDESCREEN_ATTRIBUTE_INFO&,
                                        const Out<Reporting>&);

void PacketGuidScreenAttribute(const tagNET_GUIDESCREEN_ATTRIBUTE_INFO& info, Json::Value& json) {
  PacketSilently(&info, json, PacketGuidScreenAttribute<Silent>);
}

}  // namespace gsc::guidescreen

void ParseGuidScreenAttribute(const Json::Value& json, tagNET_GUIDESCREEN_ATTRIBUTE_INFO* info) {
  ParseSilently(json, info, gsc::guidescreen::ReadGuidScreenAttribute<Json::Value, Silent>);
}
