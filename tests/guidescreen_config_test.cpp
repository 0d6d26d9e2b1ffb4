// Guide screens: the attribute record and the four screen operations.
#include <json/json.h>

#include <cstring>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "guidescreen/attribute_codec.h"
#include "guidescreen_codec/operations.h"
#include "support/fixtures.h"

namespace gsc::test {
namespace {

using Screen = tagNET_GUIDESCREEN_ATTRIBUTE_INFO;

// A screen as the writer sends it; sun entries 2 to 11, read as 6 and 18, would also be sent so.
Json::Value FilledJson() {
  Json::Value json = J(R"({"ID": "hall", "Status": 1, "IsForeverOpen": true, "Time": [{
      "Enable": true, "DateType": 2, "PlayDates": [6, 7], "OpenTime": "08:30:00",
      "CloseTime": "22:00:00"}], "Bright": 11, "Contrast": 12, "Saturation": 13, "Volume": 14,
      "Width": 15, "Height": 16, "SplitScreenList": [{"ScreenId": "left", "Rect": [1, 2, 3, 4],
      "ChildScreenBright": 50}], "AutoBright": {"Enable": true, "LightBright": 90, "DarkBright": 30,
      "Time": [{"Sunrise": 5, "Sunset": 19}, {"Sunrise": 0, "Sunset": 20}]}})");
  for (int i = 2; i < 12; ++i) json["AutoBright"]["Time"][i] = J(R"({"Sunrise": 6, "Sunset": 18})");
  return json;
}

std::unique_ptr<Screen> Read(const Json::Value& json) {
  auto info = std::make_unique<Screen>();
  ParseGuidScreenAttribute(json, info.get());
  return info;
}

Json::Value Write(const Screen& info) {
  Json::Value json;
  guidescreen::PacketGuidScreenAttribute(info, json);
  return json;
}

// Reads `text` over the filled screen: the status and six numbers become 0, the rest as `adjust`.
void ExpectRead(const char* text, void (*adjust)(Screen&)) {
  auto expected = Read(FilledJson()), info = Read(FilledJson());
  Screen& e = *expected;
  e.emStatus = EM_GUIDESCREEN_STATUS_UNKNOWN;
  e.nBright = e.nContrast = e.nSaturation = e.nVolume = e.nWidth = e.nHeight = 0;
  adjust(*expected);
  ParseGuidScreenAttribute(J(text), info.get());
  EXPECT_EQ(0, std::memcmp(expected.get(), info.get(), sizeof(Screen))) << text;
}

TEST(ScreenRead, MergesIntoTheRecordWithDefaultsAndCapacities) {
  ExpectRead("{}", [](Screen&) {});
  ExpectRead(R"({"Time": [{}]})",  // only the date type is read without a presence test
             [](Screen& e) { e.stuTime[0].emDateType = EM_GUIDESCREEN_DATE_TYPE_JSON_0; });
  ExpectRead(R"({"SplitScreenList": [{"Rect": [9, 9, 9]}]})",
             [](Screen& e) { e.stuSplitScreenList[0].nChildScreenBright = 0; });
  ExpectRead(R"({"AutoBright": {"Time": [{"Sunrise": 1, "Sunset": 2}, {}, {}]}})", [](Screen& e) {
    tagNET_GUIDESCREEN_AUTO_BRIGHT_INFO& bright = e.stuAutoBright;
    bright.bEnable = false, bright.nLightBright = bright.nDarkBright = 0;
    for (auto& sun : bright.stuTime) sun.nSunrise = sun.nSunset = 0;
    bright.stuTime[0].nSunrise = 1, bright.stuTime[0].nSunset = 2;
  });
  const std::pair<const char*, int> status[] = {
      {R"({"Status": 0})", 1}, {R"({"Status": 1})", 2}, {R"({"Status": 2})", 0}, {"{}", 0}};
  for (const auto& [text, value] : status) EXPECT_EQ(value, Read(J(text))->emStatus) << text;
  const std::pair<const char*, int> dateType[] = {
      {R"({"DateType": 2})", 3}, {R"({"DateType": 3})", 0}, {R"({"DateType": -1})", 0}};
  for (const auto& [entry, value] : dateType)
    EXPECT_EQ(value, Read(J(R"({"Time": [)" + std::string(entry) + "]}"))->stuTime[0].emDateType);
  Json::Value json;
  for (int i = 0; i < 10; ++i) json["Time"][i]["CloseTime"] = "01:02:03";
  for (int i = 0; i < 40; ++i) json["Time"][0]["PlayDates"][i] = i;
  for (int i = 0; i < 20; ++i) json["SplitScreenList"][i]["ChildScreenBright"] = i;
  const auto info = Read(json);
  EXPECT_EQ(8u, info->nTimeNum);
  EXPECT_EQ(32u, info->stuTime[0].nPlayDatesNum);
  EXPECT_EQ(16u, info->nSplitScreenListNum);
}

TEST(ScreenWrite, EmptyListsAreNullZeroMembersAbsentAndCountsClampedUnsigned) {
  EXPECT_JSON_EQ(Compact(FilledJson()), Write(*Read(FilledJson())));
  auto info = std::make_unique<Screen>();
  Json::Value json = Write(*info);
  json.removeMember("AutoBright");
  EXPECT_JSON_EQ(R"({"ID": "", "IsForeverOpen": false, "Time": null, "Bright": 0, "Contrast": 0,
                     "Saturation": 0, "Volume": 0, "Width": 0, "Height": 0,
                     "SplitScreenList": null})",
                 json);
  info->nTimeNum = 1;
  EXPECT_JSON_EQ(R"([{"Enable": false, "OpenTime": "00:00:00", "CloseTime": "00:00:00"}])",
                 Write(*info)["Time"]);
  info->nTimeNum = 4294967295u;
  info->stuTime[0].nPlayDatesNum = 2147483648u;
  info->nSplitScreenListNum = 17;
  info->emStatus = static_cast<EM_GUIDESCREEN_STATUS>(3);  // out of range: left out
  info->stuTime[0].emDateType = static_cast<EM_GUIDESCREEN_DATE_TYPE>(4);
  json = Write(*info);
  EXPECT_FALSE(json.isMember("Status") || json["Time"][0].isMember("DateType"));
  EXPECT_EQ(8u, json["Time"].size());
  EXPECT_EQ(32u, json["Time"][0]["PlayDates"].size());
  EXPECT_EQ(16u, json["SplitScreenList"].size());
}

TEST(SetGuideScreenCfg, RecordsAreKeyedByIdAndTheSameIdMerges) {
  std::vector<Screen> screens(3);
  ParseGuidScreenAttribute(FilledJson(), &screens[0]);
  ParseGuidScreenAttribute(J(R"({"ID": "hall", "Time": [{}], "Bright": 99})"), &screens[1]);
  tagNET_IN_SET_GUIDESCREEN_CFG in = {sizeof in, 0, screens.data()};
  Json::Value params(Json::objectValue);
  EXPECT_TRUE(serialize(in, params));
  EXPECT_JSON_EQ(R"({"infos": null})", params);
  in.nInfosNum = 3;
  EXPECT_TRUE(serialize(in, params));
  // The second record's members win; what it leaves out, or finds already there, stays.
  Json::Value expected = Write(screens[1]);
  expected["Status"] = 1;
  expected["Time"][0]["PlayDates"] = J("[6, 7]");
  expected["SplitScreenList"] = FilledJson()["SplitScreenList"];
  EXPECT_EQ(Compact(expected), Compact(params["infos"]["hall"]));
  EXPECT_EQ((Json::Value::Members{"", "hall"}), params["infos"].getMemberNames());
}

TEST(GetGuideScreenCfgById, SendsTheIdAndReadsDisplayScreenCfg) {
  const tagNET_IN_GET_GUIDESCREEN_CFG_BYID in = {sizeof in, "hall-1"};
  Json::Value params(Json::objectValue);
  EXPECT_TRUE(serialize(in, params));
  EXPECT_JSON_EQ(R"({"ScreenID": "hall-1"})", params);
  auto out = std::make_unique<tagNET_OUT_GET_GUIDESCREEN_CFG_BYID>();
  EXPECT_TRUE(deserialize(J(R"({"DisplayScreenCfg": {"ID": "s1", "Width": 64}})"), *out));
  EXPECT_EQ("s1 64", std::string(out->stuInfo.szID) + " " + std::to_string(out->stuInfo.nWidth));
  EXPECT_TRUE(deserialize(J("{}"), *out));  // read as an empty object
  EXPECT_EQ("s1 0", std::string(out->stuInfo.szID) + " " + std::to_string(out->stuInfo.nWidth));
}

TEST(GetAllGuideScreenCfg, FillsAtMostCapacityInMemberNameOrder) {
  const char* const five = R"({"infos": {"e": {"ID": "E"}, "c": {"ID": "C"}, "a": {"ID": "A"},
                                          "d": {"ID": "D"}, "b": {"ID": "B"}}})";
  const std::tuple<const char*, uint32_t, bool, const char*> cases[] = {
      {five, 3, true, "3 A B C"},
      {five, 0, true, "0"},
      {five, 3, false, "0   "},
      {"{}", 1, true, "0 "},
      {R"({"infos": null})", 1, true, "0 "}};
  for (const auto& [answer, capacity, array, filled] : cases) {
    GuardedArray<Screen> screens(capacity);
    tagNET_OUT_GET_ALL_GUIDESCREEN_CFG out = {sizeof out, capacity, 77,
                                              array ? screens.data() : nullptr};
    EXPECT_TRUE(deserialize(J(answer), out));
    std::string ids = std::to_string(out.nRetInfosNum);
    for (uint32_t i = 0; i < capacity; ++i) ids += std::string(" ") + screens[i].szID;
    EXPECT_EQ(filled, ids) << answer;
    EXPECT_TRUE(screens.GuardsIntact());
  }
}

TEST(SetGdStatus, JoinsTheCodesOfAtMost170Units) {
  std::string all001, all2(170, '2');
  for (int i = 0; i < 170; ++i) all001 += "001";
  // Count, states as digits, "GDNum", "Status": a state without a code ends the text.
  const std::tuple<uint32_t, std::string, int, std::string> cases[] = {
      {0, "", 0, ""},          {3, "021", 3, "100001010"}, {3, "012", 3, "100010001"},
      {2, "012", 2, "100010"}, {3, "031", 3, "100"},       {200, all2, 170, all001}};
  for (const auto& [count, states, units, text] : cases) {
    tagNET_IN_SET_GD_STATUS in = {sizeof in, "s", count, {}};
    for (size_t i = 0; i < states.size(); ++i)
      in.emStatus[i] = static_cast<EM_GD_STATUS>(states[i] - '0');
    Json::Value params(Json::objectValue);
    EXPECT_TRUE(serialize(in, params));
    EXPECT_EQ(units, params["GDNum"].asInt()) << count;
    EXPECT_EQ(text, params["Status"].asString()) << count;
    EXPECT_EQ("s", params["ScreenId"].asString());
  }
}

}  // namespace
}  // namespace gsc::test
