// The guide screen operations: a screen's configuration sent, read back by its ID and in the
// listing of all screens, and the states of its display units set.
#include <cstdio>
#include <vector>

#include "example_support.h"
#include "operations/operations.h"

namespace examples {
namespace {

void PrintScreen(const tagNET_GUIDESCREEN_ATTRIBUTE_INFO& screen) {
  const char* hours = screen.bIsForeverOpen ? ", always open" : "";
  std::printf("  screen %s: %ux%u, brightness %u, volume %u%s\n", screen.szID, screen.nWidth,
              screen.nHeight, screen.nBright, screen.nVolume, hours);
  // Counts come from the device: never trust them past the arrays' capacities.
  for (uint32_t i = 0; i < screen.nTimeNum && i < GSC_MAX_SCREEN_TIMES; ++i) {
    const tagNET_GUIDESCREEN_TIME_INFO& time = screen.stuTime[i];
    std::printf("    opens %s-%s on %u day(s)%s\n", TimeText(time.stuOpenTime).c_str(),
                TimeText(time.stuCloseTime).c_str(), time.nPlayDatesNum,
                time.bEnable ? "" : " (disabled)");
  }
  for (uint32_t i = 0; i < screen.nSplitScreenListNum && i < GSC_MAX_SPLIT_SCREENS; ++i) {
    const tagNET_GUIDESCREEN_SPLITSCREEN_INFO& split = screen.stuSplitScreenList[i];
    std::printf("    split screen %s: [%d, %d, %d, %d]\n", split.szScreenId, split.stuRect.nLeft,
                split.stuRect.nTop, split.stuRect.nRight, split.stuRect.nBottom);
  }
}

}  // namespace

void SetGuidescreenCfg() {
  auto screen = Blank<tagNET_GUIDESCREEN_ATTRIBUTE_INFO>();
  SetText(screen.szID, "hall-1");
  screen.nWidth = 1920;
  screen.nHeight = 1080;
  screen.emStatus = EM_GUIDESCREEN_STATUS_JSON_1;
  // Every field is sent, zero or not: set each one the screen is to keep.
  screen.nBright = 80;
  screen.nContrast = 50;
  screen.nSaturation = 50;
  screen.nVolume = 30;

  // Open on weekdays only.
  screen.nTimeNum = 1;
  tagNET_GUIDESCREEN_TIME_INFO& weekdays = screen.stuTime[0];
  weekdays.bEnable = true;
  weekdays.emDateType = EM_GUIDESCREEN_DATE_TYPE_JSON_1;
  weekdays.nPlayDatesNum = 5;
  for (uint32_t day = 0; day < 5; ++day) weekdays.nPlayDates[day] = day + 1;
  weekdays.stuOpenTime = {8, 30, 0};
  weekdays.stuCloseTime = {20, 0, 0};

  screen.nSplitScreenListNum = 1;
  SetText(screen.stuSplitScreenList[0].szScreenId, "left");
  screen.stuSplitScreenList[0].stuRect = {0, 0, 960, 1080};
  screen.stuSplitScreenList[0].nChildScreenBright = 70;

  // Brighter by day; a month left at 0 is sent as sunrise 6, sunset 18.
  screen.stuAutoBright.bEnable = true;
  screen.stuAutoBright.nLightBright = 90;
  screen.stuAutoBright.nDarkBright = 40;
  screen.stuAutoBright.stuTime[5].nSunrise = 5;  // June
  screen.stuAutoBright.stuTime[5].nSunset = 21;

  const tagNET_IN_SET_GUIDESCREEN_CFG in = {sizeof in, 1, &screen};
  SendExpectingNothing<tagNET_OUT_SET_GUIDESCREEN_CFG>(in, "{}");
}

void GetGuidescreenCfgById() {
  auto in = Blank<tagNET_IN_GET_GUIDESCREEN_CFG_BYID>();
  SetText(in.szScreenID, "lobby");
  SendRequest(in);

  const char* answer = R"({"DisplayScreenCfg": {
      "ID": "lobby", "Status": 0, "IsForeverOpen": false, "Bright": 65, "Contrast": 45,
      "Saturation": 55, "Volume": 10, "Width": 1280, "Height": 720,
      "Time": [{"Enable": true, "DateType": 0, "PlayDates": [1, 2, 3, 4, 5, 6, 7],
                "OpenTime": "07:00:00", "CloseTime": "22:30:00"}],
      "SplitScreenList": [{"ScreenId": "top", "Rect": [0, 0, 1280, 540], "ChildScreenBright": 65},
                          {"ScreenId": "ticker", "Rect": [0, 540, 1280, 720],
                           "ChildScreenBright": 80}]}})";
  auto out = Blank<tagNET_OUT_GET_GUIDESCREEN_CFG_BYID>();
  out.stuInfo.dwSize = sizeof out.stuInfo;
  ReadAnswer(answer, out);
  PrintScreen(out.stuInfo);
}

void GetAllGuidescreenCfg() {
  SendRequest(Blank<tagNET_IN_GET_ALL_GUIDESCREEN_CFG>());

  const char* answer = R"({"infos": {
      "lobby": {"ID": "lobby", "Status": 0, "Bright": 65, "Width": 1280, "Height": 720},
      "hall-1": {"ID": "hall-1", "Status": 1, "Bright": 80, "Width": 1920, "Height": 1080,
                 "Volume": 30},
      "hall-2": {"ID": "hall-2", "Status": 1, "IsForeverOpen": true, "Bright": 100,
                 "Width": 3840, "Height": 2160}}})";
  // Room for as many screens as the site has; a longer listing is cut to it (and reported).
  std::vector<tagNET_GUIDESCREEN_ATTRIBUTE_INFO> screens(8);
  for (tagNET_GUIDESCREEN_ATTRIBUTE_INFO& screen : screens) screen.dwSize = sizeof screen;
  auto out = Blank<tagNET_OUT_GET_ALL_GUIDESCREEN_CFG>();
  out.nMaxInfosNum = static_cast<uint32_t>(screens.size());
  out.pstuInfos = screens.data();
  ReadAnswer(answer, out);
  std::printf("  %u screen(s), in ascending order of their keys\n", out.nRetInfosNum);
  for (uint32_t i = 0; i < out.nRetInfosNum; ++i) PrintScreen(screens[i]);
}

void SetGdStatus() {
  auto in = Blank<tagNET_IN_SET_GD_STATUS>();
  SetText(in.szScreenId, "hall-1");
  // One state per display unit, in the device's order of units.
  const EM_GD_STATUS units[] = {EM_GD_STATUS_CODE_100, EM_GD_STATUS_CODE_100, EM_GD_STATUS_CODE_001,
                                EM_GD_STATUS_CODE_010};
  for (EM_GD_STATUS state : units) in.emStatus[in.nGDNum++] = state;
  SendExpectingNothing<tagNET_OUT_SET_GD_STATUS>(in, "{}");
}

}  // namespace examples
