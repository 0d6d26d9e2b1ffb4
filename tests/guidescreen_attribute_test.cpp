// The guide screen attribute record: reading rules, writing rules and how they differ.
#include "guidescreen/attribute_codec.h"
#include "guidescreen_support.h"

namespace {

using gsc::guidescreen::PacketGuidScreenAttribute;
using gsc::test::FilledScreen;
using gsc::test::J;

tagNET_GUIDESCREEN_ATTRIBUTE_INFO Read(const Json::Value& json,
                                       tagNET_GUIDESCREEN_ATTRIBUTE_INFO info = FilledScreen()) {
  ParseGuidScreenAttribute(json, &info);
  return info;
}

TEST(ParseGuidScreenAttribute, NullRecordIsIgnored) {
  ParseGuidScreenAttribute(J(R"({"ID": "x"})"), nullptr);
}

TEST(ParseGuidScreenAttribute, EmptyObjectResetsStatusAndNumbersOnly) {
  const tagNET_GUIDESCREEN_ATTRIBUTE_INFO before = FilledScreen();
  const tagNET_GUIDESCREEN_ATTRIBUTE_INFO info = Read(J("{}"));
  EXPECT_EQ(info.emStatus, EM_GUIDESCREEN_STATUS_UNKNOWN);
  for (uint32_t n :
       {info.nBright, info.nContrast, info.nSaturation, info.nVolume, info.nWidth, info.nHeight}) {
    EXPECT_EQ(n, 0U);
  }
  EXPECT_STREQ(info.szID, before.szID);
  EXPECT_TRUE(info.bIsForeverOpen);
  EXPECT_EQ(std::memcmp(info.stuTime, before.stuTime, sizeof info.stuTime), 0);
  EXPECT_EQ(info.nTimeNum, before.nTimeNum);
  EXPECT_EQ(std::memcmp(info.stuSplitScreenList, before.stuSplitScreenList,
                        sizeof info.stuSplitScreenList),
            0);
  EXPECT_EQ(std::memcmp(&info.stuAutoBright, &before.stuAutoBright, sizeof info.stuAutoBright), 0);
}

TEST(ParseGuidScreenAttribute, StatusIsTestedForPresence) {
  const std::pair<const char*, int> cases[] = {{R"({"Status": 0})", 1},    {R"({"Status": 1})", 2},
                                               {R"({"Status": 2})", 0},    {R"({"Status": -1})", 0},
                                               {R"({"Status": null})", 0}, {"{}", 0}};
  for (const auto& [json, status] : cases) EXPECT_EQ(Read(J(json)).emStatus, status) << json;
}

TEST(ParseGuidScreenAttribute, DateTypeIsReadWithoutPresenceTest) {
  const std::pair<const char*, int> cases[] = {{R"({})", 1},
                                               {R"({"DateType": 0})", 1},
                                               {R"({"DateType": 2})", 3},
                                               {R"({"DateType": 3})", 0},
                                               {R"({"DateType": -1})", 0}};
  for (const auto& [entry, type] : cases) {
    const Json::Value json = J(std::string(R"({"Time": [)") + entry + "]}");
    EXPECT_EQ(Read(json).stuTime[0].emDateType, type) << entry;
  }
}

TEST(ParseGuidScreenAttribute, ArraysAreClampedToTheirCapacities) {
  Json::Value json = J(R"({"Time": [], "SplitScreenList": []})");
  for (int i = 0; i < 10; ++i) json["Time"][i]["CloseTime"] = "01:02:03";
  for (int i = 0; i < 40; ++i) json["Time"][0]["PlayDates"][i] = i;
  for (int i = 0; i < 20; ++i) json["SplitScreenList"][i]["ChildScreenBright"] = i;
  const tagNET_GUIDESCREEN_ATTRIBUTE_INFO info = Read(json);
  EXPECT_EQ(info.nTimeNum, 8U);
  EXPECT_EQ(info.stuTime[7].stuCloseTime.nSecond, 3);
  EXPECT_EQ(info.stuTime[0].nPlayDatesNum, 32U);
  EXPECT_EQ(info.stuTime[0].nPlayDates[31], 31U);
  EXPECT_EQ(info.nSplitScreenListNum, 16U);
  EXPECT_EQ(info.stuSplitScreenList[15].nChildScreenBright, 15U);
}

TEST(ParseGuidScreenAttribute, OpeningTimeEntriesMergeIntoTheCallersEntries) {
  const tagNET_GUIDESCREEN_ATTRIBUTE_INFO info =
      Read(J(R"({"Time": [{"OpenTime": "07:05"}], "IsForeverOpen": false})"));
  const tagNET_GUIDESCREEN_TIME_INFO& t = info.stuTime[0];
  EXPECT_EQ(info.nTimeNum, 1U);
  EXPECT_TRUE(t.bEnable);  // "Enable" missing: kept
  EXPECT_EQ(t.nPlayDatesNum, 2U);
  EXPECT_EQ(t.stuOpenTime.nHour, 7);
  EXPECT_EQ(t.stuOpenTime.nMinute, 5);
  EXPECT_EQ(t.stuOpenTime.nSecond, 0);  // kept from 08:30:00
  EXPECT_EQ(t.stuCloseTime.nHour, 22);
  EXPECT_FALSE(info.bIsForeverOpen);
}

TEST(ParseGuidScreenAttribute, MalformedRectKeepsTheRectangle) {
  const tagNET_GUIDESCREEN_ATTRIBUTE_INFO info =
      Read(J(R"({"SplitScreenList": [{"Rect": [9, 9, 9], "ScreenId": "r"}]})"));
  EXPECT_EQ(info.stuSplitScreenList[0].stuRect.nBottom, 4);
  EXPECT_STREQ(info.stuSplitScreenList[0].szScreenId, "r");
  EXPECT_EQ(info.stuSplitScreenList[0].nChildScreenBright, 0U);  // read without a presence test
}

TEST(ParseGuidScreenAttribute, AutoBrightReadsAllTwelveSunEntries) {
  const tagNET_GUIDESCREEN_ATTRIBUTE_INFO info = Read(J(
      R"({"AutoBright": {"Time": [{"Sunrise": 1, "Sunset": 2}, {"Sunrise": 3}, {"Sunset": 4}]}})"));
  const tagNET_GUIDESCREEN_AUTO_BRIGHT_INFO& bright = info.stuAutoBright;
  EXPECT_FALSE(bright.bEnable);
  EXPECT_EQ(bright.nLightBright, 0U);
  EXPECT_EQ(bright.stuTime[0].nSunrise, 1U);
  EXPECT_EQ(bright.stuTime[0].nSunset, 2U);
  EXPECT_EQ(bright.stuTime[1].nSunset, 0U);
  EXPECT_EQ(bright.stuTime[2].nSunset, 4U);
  for (int i = 3; i < 12; ++i) {
    EXPECT_EQ(bright.stuTime[i].nSunrise, 0U) << i;
    EXPECT_EQ(bright.stuTime[i].nSunset, 0U) << i;
  }
}

TEST(ParseGuidScreenAttribute, AutoBrightWithoutTimeArrayKeepsSunEntries) {
  const tagNET_GUIDESCREEN_ATTRIBUTE_INFO info = Read(J(R"({"AutoBright": {"Enable": true}})"));
  EXPECT_EQ(info.stuAutoBright.stuTime[11].nSunset, 19U);
  EXPECT_EQ(info.stuAutoBright.nDarkBright, 0U);
}

TEST(ParseGuidScreenAttribute, LongIdIsCutToSixtyThreeBytes) {
  Json::Value json(Json::objectValue);
  json["ID"] = std::string(100, 'i');
  EXPECT_EQ(std::string(Read(json).szID), std::string(63, 'i'));
}

TEST(PacketGuidScreenAttribute, EmptyListsAreNullAndSunDefaultsAreSent) {
  tagNET_GUIDESCREEN_ATTRIBUTE_INFO info{};
  Json::Value json;
  PacketGuidScreenAttribute(info, json);
  EXPECT_TRUE(json["Time"].isNull());
  EXPECT_TRUE(json.isMember("Time"));
  EXPECT_TRUE(json["SplitScreenList"].isNull());
  EXPECT_TRUE(json.isMember("SplitScreenList"));
  EXPECT_FALSE(json.isMember("Status"));
  ASSERT_EQ(json["AutoBright"]["Time"].size(), 12U);
  for (const Json::Value& sun : json["AutoBright"]["Time"]) {
    EXPECT_JSON_EQ(R"({"Sunrise": 6, "Sunset": 18})", sun);
  }
}

TEST(PacketGuidScreenAttribute, WritesEveryFieldByItsRule) {
  tagNET_GUIDESCREEN_ATTRIBUTE_INFO info = FilledScreen("hall");
  info.stuTime[0].emDateType = EM_GUIDESCREEN_DATE_TYPE_UNKNOWN;
  info.stuAutoBright.stuTime[1] = {0, 20, {}};
  info.nBright = 500;  // no range check
  Json::Value json;
  PacketGuidScreenAttribute(info, json);
  EXPECT_JSON_EQ(R"({
    "ID": "hall", "Status": 1, "IsForeverOpen": true,
    "Time": [{"Enable": true, "PlayDates": [6, 7], "OpenTime": "08:30:00",
              "CloseTime": "22:00:00"}],
    "Bright": 500, "Contrast": 12, "Saturation": 13, "Volume": 14, "Width": 15, "Height": 16,
    "SplitScreenList": [{"ScreenId": "left", "Rect": [1, 2, 3, 4], "ChildScreenBright": 50}],
    "AutoBright": {"Enable": true, "LightBright": 90, "DarkBright": 30, "Time": [
      {"Sunrise": 5, "Sunset": 19}, {"Sunrise": 0, "Sunset": 20}, {"Sunrise": 5, "Sunset": 19},
      {"Sunrise": 5, "Sunset": 19}, {"Sunrise": 5, "Sunset": 19}, {"Sunrise": 5, "Sunset": 19},
      {"Sunrise": 5, "Sunset": 19}, {"Sunrise": 5, "Sunset": 19}, {"Sunrise": 5, "Sunset": 19},
      {"Sunrise": 5, "Sunset": 19}, {"Sunrise": 5, "Sunset": 19}, {"Sunrise": 5, "Sunset": 19}]}
  })",
                 json);
}

TEST(PacketGuidScreenAttribute, CountsAreClampedUnsigned) {
  tagNET_GUIDESCREEN_ATTRIBUTE_INFO info = FilledScreen();
  info.nTimeNum = 4294967295U;
  info.stuTime[0].nPlayDatesNum = 2147483648U;
  info.nSplitScreenListNum = 17;
  Json::Value json;
  PacketGuidScreenAttribute(info, json);
  EXPECT_EQ(json["Time"].size(), 8U);
  EXPECT_EQ(json["Time"][0]["PlayDates"].size(), 32U);
  EXPECT_FALSE(json["Time"][1].isMember("PlayDates"));  // zero play dates: no key
  EXPECT_EQ(json["SplitScreenList"].size(), 16U);
}

TEST(GuidScreenAttribute, RoundTripShowsTheDocumentedDifferences) {
  tagNET_GUIDESCREEN_ATTRIBUTE_INFO sent = FilledScreen();
  sent.emStatus = static_cast<EM_GUIDESCREEN_STATUS>(3);
  sent.stuTime[0].emDateType = EM_GUIDESCREEN_DATE_TYPE_UNKNOWN;
  for (auto& sun : sent.stuAutoBright.stuTime) sun = {0, 0, {}};
  Json::Value json;
  PacketGuidScreenAttribute(sent, json);
  tagNET_GUIDESCREEN_ATTRIBUTE_INFO back{};
  ParseGuidScreenAttribute(json, &back);
  EXPECT_EQ(back.emStatus, EM_GUIDESCREEN_STATUS_UNKNOWN);
  EXPECT_EQ(back.stuTime[0].emDateType, EM_GUIDESCREEN_DATE_TYPE_JSON_0);
  EXPECT_EQ(back.stuAutoBright.stuTime[4].nSunrise, 6U);
  EXPECT_EQ(back.stuAutoBright.stuTime[4].nSunset, 18U);
  EXPECT_STREQ(back.szID, sent.szID);
  EXPECT_EQ(back.stuTime[0].nPlayDates[1], 7U);
  EXPECT_EQ(back.stuSplitScreenList[0].stuRect.nRight, 3);
  EXPECT_EQ(back.nHeight, 16U);
}

}  // namespace
