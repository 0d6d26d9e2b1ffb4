// The four guide screen operations, end to end.
#include <cstdio>
#include <cstring>
#include <iostream>

#include "demos.h"
#include "guidescreen_codec.h"

namespace {

void PrintScreen(const tagNET_GUIDESCREEN_ATTRIBUTE_INFO& info) {
  std::printf("  screen \"%s\": status %d, forever open %d, bright %u, %ux%u, volume %u\n",
              info.szID, static_cast<int>(info.emStatus), info.bIsForeverOpen, info.nBright,
              info.nWidth, info.nHeight, info.nVolume);
  for (uint32_t i = 0; i < info.nTimeNum && i < 8; ++i) {
    const tagNET_GUIDESCREEN_TIME_INFO& t = info.stuTime[i];
    std::printf("    opening %u: %02d:%02d:%02d-%02d:%02d:%02d, date type %d, %u play dates\n", i,
                t.stuOpenTime.nHour, t.stuOpenTime.nMinute, t.stuOpenTime.nSecond,
                t.stuCloseTime.nHour, t.stuCloseTime.nMinute, t.stuCloseTime.nSecond,
                static_cast<int>(t.emDateType), t.nPlayDatesNum);
  }
  for (uint32_t i = 0; i < info.nSplitScreenListNum && i < 16; ++i) {
    const tagNET_GUIDESCREEN_SPLITSCREEN_INFO& s = info.stuSplitScreenList[i];
    std::printf("    split screen \"%s\" [%d, %d, %d, %d], bright %u\n", s.szScreenId,
                s.stuRect.nLeft, s.stuRect.nTop, s.stuRect.nRight, s.stuRect.nBottom,
                s.nChildScreenBright);
  }
  std::printf("    auto bright %d (light %u, dark %u), January %u-%u\n", info.stuAutoBright.bEnable,
              info.stuAutoBright.nLightBright, info.stuAutoBright.nDarkBright,
              info.stuAutoBright.stuTime[0].nSunrise, info.stuAutoBright.stuTime[0].nSunset);
}

void SetConfiguration() {
  static tagNET_GUIDESCREEN_ATTRIBUTE_INFO screen = {};
  std::strcpy(screen.szID, "hall-1");
  screen.emStatus = EM_GUIDESCREEN_STATUS_JSON_1;
  screen.nTimeNum = 1;
  screen.stuTime[0].bEnable = true;
  screen.stuTime[0].emDateType = EM_GUIDESCREEN_DATE_TYPE_JSON_1;
  screen.stuTime[0].nPlayDatesNum = 5;
  for (uint32_t d = 0; d < 5; ++d) screen.stuTime[0].nPlayDates[d] = d + 1;
  screen.stuTime[0].stuOpenTime = {8, 30, 0};
  screen.stuTime[0].stuCloseTime = {20, 0, 0};
  screen.nBright = 80;
  screen.nContrast = 50;
  screen.nSaturation = 50;
  screen.nVolume = 30;
  screen.nWidth = 1920;
  screen.nHeight = 1080;
  screen.nSplitScreenListNum = 1;
  std::strcpy(screen.stuSplitScreenList[0].szScreenId, "left");
  screen.stuSplitScreenList[0].stuRect = {0, 0, 960, 1080};
  screen.stuSplitScreenList[0].nChildScreenBright = 70;
  screen.stuAutoBright.bEnable = true;
  screen.stuAutoBright.nLightBright = 90;
  screen.stuAutoBright.nDarkBright = 40;

  tagNET_IN_SET_GUIDESCREEN_CFG in = {sizeof in, 1, &screen};
  Json::Value params(Json::objectValue);
  serialize(in, params);
  PrintJson("SET_GUIDESCREEN_CFG request", params);
}

void GetConfigurationById() {
  tagNET_IN_GET_GUIDESCREEN_CFG_BYID in = {};
  in.dwSize = sizeof in;
  std::strcpy(in.szScreenID, "hall-1");
  Json::Value params(Json::objectValue);
  serialize(in, params);
  PrintJson("GET_GUIDESCREEN_CFG_BYID request", params);

  const Json::Value answer = ParseJson(R"({"DisplayScreenCfg": {
      "ID": "hall-1", "Status": 1, "IsForeverOpen": false,
      "Time": [{"Enable": true, "DateType": 1, "PlayDates": [1, 2, 3, 4, 5],
                "OpenTime": "08:30:00", "CloseTime": "20:00:00"}],
      "Bright": 80, "Contrast": 50, "Saturation": 50, "Volume": 30, "Width": 1920, "Height": 1080,
      "SplitScreenList": [{"ScreenId": "left", "Rect": [0, 0, 960, 1080], "ChildScreenBright": 70}],
      "AutoBright": {"Enable": true, "LightBright": 90, "DarkBright": 40,
                     "Time": [{"Sunrise": 7, "Sunset": 17}]}}})");
  PrintJson("GET_GUIDESCREEN_CFG_BYID answer", answer);
  static tagNET_OUT_GET_GUIDESCREEN_CFG_BYID out = {};
  out.dwSize = sizeof out;
  deserialize(answer, out);
  std::cout << "--- GET_GUIDESCREEN_CFG_BYID record received\n";
  PrintScreen(out.stuInfo);
}

void GetAllConfigurations() {
  const Json::Value answer = ParseJson(R"({"infos": {
      "lobby": {"ID": "lobby", "Status": 0, "Bright": 60, "Width": 1280, "Height": 720},
      "hall-1": {"ID": "hall-1", "Status": 1, "Bright": 80, "Width": 1920, "Height": 1080}}})");
  PrintJson("GET_ALL_GUIDESCREEN_CFG answer", answer);
  static tagNET_GUIDESCREEN_ATTRIBUTE_INFO screens[4] = {};
  tagNET_OUT_GET_ALL_GUIDESCREEN_CFG out = {sizeof out, 4, 0, screens};
  deserialize(answer, out);
  std::printf("--- GET_ALL_GUIDESCREEN_CFG record received: %u of %u\n", out.nRetInfosNum,
              out.nMaxInfosNum);
  for (uint32_t i = 0; i < out.nRetInfosNum; ++i) PrintScreen(screens[i]);
}

void SetDisplayStatus() {
  tagNET_IN_SET_GD_STATUS in = {};
  in.dwSize = sizeof in;
  std::strcpy(in.szScreenId, "hall-1");
  in.nGDNum = 3;
  in.emStatus[0] = EM_GD_STATUS_CODE_100;
  in.emStatus[1] = EM_GD_STATUS_CODE_001;
  in.emStatus[2] = EM_GD_STATUS_CODE_010;
  Json::Value params(Json::objectValue);
  serialize(in, params);
  PrintJson("SET_GD_STATUS request", params);
}

}  // namespace

void RunScreenDemo() {
  SetConfiguration();
  GetConfigurationById();
  GetAllConfigurations();
  SetDisplayStatus();
}
