// Builders for guide screen records shared by the screen tests.
#ifndef GUIDESCREEN_CODEC_TESTS_GUIDESCREEN_SUPPORT_H
#define GUIDESCREEN_CODEC_TESTS_GUIDESCREEN_SUPPORT_H

#include <cstring>
#include <string>

#include "guidescreen_codec.h"
#include "support/fixtures.h"

namespace gsc::test {

// A record with every field set to something a reader would visibly change.
inline tagNET_GUIDESCREEN_ATTRIBUTE_INFO FilledScreen(const std::string& id = "screen") {
  tagNET_GUIDESCREEN_ATTRIBUTE_INFO info{};
  SetText(info.szID, id);
  info.emStatus = EM_GUIDESCREEN_STATUS_JSON_1;
  info.bIsForeverOpen = true;
  info.nTimeNum = 1;
  info.stuTime[0].bEnable = true;
  info.stuTime[0].emDateType = EM_GUIDESCREEN_DATE_TYPE_JSON_2;
  info.stuTime[0].nPlayDatesNum = 2;
  info.stuTime[0].nPlayDates[0] = 6;
  info.stuTime[0].nPlayDates[1] = 7;
  info.stuTime[0].stuOpenTime = {8, 30, 0};
  info.stuTime[0].stuCloseTime = {22, 0, 0};
  info.nBright = 11;
  info.nContrast = 12;
  info.nSaturation = 13;
  info.nVolume = 14;
  info.nWidth = 15;
  info.nHeight = 16;
  info.nSplitScreenListNum = 1;
  SetText(info.stuSplitScreenList[0].szScreenId, "left");
  info.stuSplitScreenList[0].stuRect = {1, 2, 3, 4};
  info.stuSplitScreenList[0].nChildScreenBright = 50;
  info.stuAutoBright.bEnable = true;
  info.stuAutoBright.nLightBright = 90;
  info.stuAutoBright.nDarkBright = 30;
  for (auto& sun : info.stuAutoBright.stuTime) sun = {5, 19, {}};
  return info;
}

}  // namespace gsc::test

#endif  // GUIDESCREEN_CODEC_TESTS_GUIDESCREEN_SUPPORT_H
