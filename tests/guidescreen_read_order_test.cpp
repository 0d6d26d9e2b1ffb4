// The order in which the screen configuration readers take their steps, shown by an answer whose
// value at one step cannot be converted: what comes before it is stored, what comes after it
// keeps the caller's value.
#include <string>
#include <vector>

#include "guidescreen_codec/operations.h"
#include "support/fixtures.h"
#include "support/read_order.h"

namespace {

using gsc::test::Append;
using gsc::test::Breaks;
using gsc::test::BreaksAt;
using gsc::test::Embed;
using gsc::test::ExpectReadOrder;
using gsc::test::J;
using gsc::test::Never;
using gsc::test::NotAText;
using gsc::test::OrderStep;
using gsc::test::ReadOrderCase;

using Screen = tagNET_GUIDESCREEN_ATTRIBUTE_INFO;
using Time = tagNET_GUIDESCREEN_TIME_INFO;
using Split = tagNET_GUIDESCREEN_SPLITSCREEN_INFO;
using Bright = tagNET_GUIDESCREEN_AUTO_BRIGHT_INFO;
using Sun = tagNET_GUIDESCREEN_SUN_TIME_INFO;

std::string Index(const char* key, size_t i) {
  return key + ("[" + std::to_string(i) + "]");
}

// One opening-time entry: the count of its play dates is stored before the dates are read.
std::vector<OrderStep> TimeSteps() {
  return {
      Breaks("Enable", {GSC_SPAN(Time, bEnable)}),
      Breaks("DateType", {GSC_SPAN(Time, emDateType)}),
      Never("PlayDates: count", {GSC_SPAN(Time, nPlayDatesNum)}),
      Breaks("PlayDates[0]", {GSC_SPAN(Time, nPlayDates[0])}),
      Breaks("PlayDates[1]", {GSC_SPAN(Time, nPlayDates[1])}),
      Breaks("OpenTime", {GSC_SPAN(Time, stuOpenTime)}, NotAText()),
      Breaks("CloseTime", {GSC_SPAN(Time, stuCloseTime)}, NotAText()),
  };
}

std::vector<OrderStep> SplitScreenSteps() {
  return {
      Never("ScreenId", {GSC_SPAN(Split, szScreenId)}),
      BreaksAt("Rect", {GSC_SPAN(Split, stuRect)}, "Rect[0]"),
      Breaks("ChildScreenBright", {GSC_SPAN(Split, nChildScreenBright)}),
  };
}

// All twelve sun entries are read, whatever the array holds.
std::vector<OrderStep> AutoBrightSteps() {
  std::vector<OrderStep> steps = {
      Breaks("Enable", {GSC_SPAN(Bright, bEnable)}),
      Breaks("LightBright", {GSC_SPAN(Bright, nLightBright)}),
      Breaks("DarkBright", {GSC_SPAN(Bright, nDarkBright)}),
  };
  for (size_t i = 0; i < GSC_SUN_TIME_COUNT; ++i) {
    Append(steps, Embed({Breaks("Sunrise", {GSC_SPAN(Sun, nSunrise)}),
                         Breaks("Sunset", {GSC_SPAN(Sun, nSunset)})},
                        Index("Time", i), GSC_ENTRY(Bright, stuTime, i)));
  }
  return steps;
}

std::vector<OrderStep> ScreenSteps() {
  std::vector<OrderStep> steps = {
      Never("ID", {GSC_SPAN(Screen, szID)}),
      Breaks("Status", {GSC_SPAN(Screen, emStatus)}),
      Breaks("IsForeverOpen", {GSC_SPAN(Screen, bIsForeverOpen)}),
      Never("Time: count", {GSC_SPAN(Screen, nTimeNum)}),
  };
  for (size_t i = 0; i < 2; ++i)
    Append(steps, Embed(TimeSteps(), Index("Time", i), GSC_ENTRY(Screen, stuTime, i)));
  Append(steps, {
                    Breaks("Bright", {GSC_SPAN(Screen, nBright)}),
                    Breaks("Contrast", {GSC_SPAN(Screen, nContrast)}),
                    Breaks("Saturation", {GSC_SPAN(Screen, nSaturation)}),
                    Breaks("Width", {GSC_SPAN(Screen, nWidth)}),
                    Breaks("Height", {GSC_SPAN(Screen, nHeight)}),
                    Breaks("Volume", {GSC_SPAN(Screen, nVolume)}),
                    Never("SplitScreenList: count", {GSC_SPAN(Screen, nSplitScreenListNum)}),
                });
  for (size_t i = 0; i < 2; ++i) {
    Append(steps, Embed(SplitScreenSteps(), Index("SplitScreenList", i),
                        GSC_ENTRY(Screen, stuSplitScreenList, i)));
  }
  Append(steps, Embed(AutoBrightSteps(), "AutoBright", offsetof(Screen, stuAutoBright)));
  return steps;
}

// Every value distinct from its neighbours and from what the caller held.
Json::Value GoodScreen(const std::string& id) {
  Json::Value screen = J(R"({"ID": ")" + id + R"(", "Status": 1, "IsForeverOpen": true,
      "Time": [{"Enable": true, "DateType": 2, "PlayDates": [11, 12], "OpenTime": "07:05:09",
                "CloseTime": "21:30:15"},
               {"Enable": false, "DateType": 0, "PlayDates": [21, 22], "OpenTime": "08:01:02",
                "CloseTime": "20:03:04"}],
      "Bright": 31, "Contrast": 32, "Saturation": 33, "Width": 1920, "Height": 1080,
      "Volume": 35,
      "SplitScreenList": [{"ScreenId": "left", "Rect": [1, 2, 3, 4], "ChildScreenBright": 41},
                          {"ScreenId": "right", "Rect": [5, 6, 7, 8], "ChildScreenBright": 42}],
      "AutoBright": {"Enable": true, "LightBright": 51, "DarkBright": 52}})");
  Json::Value& sun = screen["AutoBright"]["Time"];
  for (int i = 0; i < GSC_SUN_TIME_COUNT; ++i) {
    sun[i]["Sunrise"] = 60 + i;
    sun[i]["Sunset"] = 80 + i;
  }
  return screen;
}

TEST(ScreenReadOrder, GetByIdReadsTheAttributeRecordStepByStep) {
  using Out = tagNET_OUT_GET_GUIDESCREEN_CFG_BYID;
  Json::Value good;
  good["DisplayScreenCfg"] = GoodScreen("screen-1");
  ExpectReadOrder(ReadOrderCase<Out>{
      "GET_GUIDESCREEN_CFG_BYID",
      good,
      Embed(ScreenSteps(), "DisplayScreenCfg", offsetof(Out, stuInfo)),
      [](const Json::Value& answer, Out& out) { deserialize(answer, out); },
      [](const Json::Value& answer, Out& out, gsc::Report& report) {
        return deserialize(answer, out, report);
      },
      nullptr,
  });
}

// Records are filled in ascending byte order of the member names ("S-10" before "S-9"), and the
// returned count is stored once the walk is over.
struct AllScreens {
  tagNET_OUT_GET_ALL_GUIDESCREEN_CFG out;
  Screen infos[3];
};

TEST(ScreenReadOrder, GetAllFillsRecordsInMemberOrderAndStoresTheCountLast) {
  Json::Value good;
  good["infos"]["S-9"] = GoodScreen("nine");
  good["infos"]["S-10"] = GoodScreen("ten");
  ExpectReadOrder(ReadOrderCase<AllScreens>{
      "GET_ALL_GUIDESCREEN_CFG",
      good,
      {
          BreaksAt("infos.S-10", {GSC_SPAN(AllScreens, infos[0])}, "infos.S-10.Bright"),
          BreaksAt("infos.S-9", {GSC_SPAN(AllScreens, infos[1])}, "infos.S-9.Bright"),
          Never("nRetInfosNum", {GSC_SPAN(AllScreens, out.nRetInfosNum)}),
      },
      [](const Json::Value& answer, AllScreens& s) { deserialize(answer, s.out); },
      [](const Json::Value& answer, AllScreens& s, gsc::Report& report) {
        return deserialize(answer, s.out, report);
      },
      [](AllScreens& s) {
        s.out.nMaxInfosNum = 3;
        s.out.pstuInfos = s.infos;
      },
  });
}

}  // namespace
