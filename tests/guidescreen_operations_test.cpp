// The four guide screen operations, request and answer side.
#include <vector>

#include "guidescreen_support.h"

namespace {

using gsc::test::FilledScreen;
using gsc::test::GuardedArray;
using gsc::test::J;

TEST(SetGuideScreenCfg, NoRecordsSendsNullInfos) {
  tagNET_IN_SET_GUIDESCREEN_CFG in{sizeof in, 0, nullptr};
  Json::Value params(Json::objectValue);
  EXPECT_TRUE(serialize(in, params));
  EXPECT_JSON_EQ(R"({"infos": null})", params);
}

TEST(SetGuideScreenCfg, RecordsAreKeyedByTheirId) {
  std::vector<tagNET_GUIDESCREEN_ATTRIBUTE_INFO> screens = {FilledScreen("b"), FilledScreen("a"),
                                                            FilledScreen("")};
  tagNET_IN_SET_GUIDESCREEN_CFG in{sizeof in, 3, screens.data()};
  Json::Value params(Json::objectValue);
  serialize(in, params);
  EXPECT_EQ(params["infos"].getMemberNames(), (Json::Value::Members{"", "a", "b"}));
  EXPECT_EQ(params["infos"]["a"]["ID"], "a");
  EXPECT_EQ(params["infos"][""]["ID"], "");
}

TEST(SetGuideScreenCfg, SameIdTwiceMergesIntoOneMember) {
  std::vector<tagNET_GUIDESCREEN_ATTRIBUTE_INFO> screens = {FilledScreen("x"), FilledScreen("x")};
  screens[0].nTimeNum = 2;
  screens[1].emStatus = EM_GUIDESCREEN_STATUS_UNKNOWN;  // leaves the first record's "Status"
  screens[1].stuTime[0].nPlayDatesNum = 0;              // leaves the first record's play dates
  screens[1].nBright = 99;
  screens[1].nSplitScreenListNum = 0;  // "SplitScreenList" found, not reset
  tagNET_IN_SET_GUIDESCREEN_CFG in{sizeof in, 2, screens.data()};
  Json::Value params(Json::objectValue);
  serialize(in, params);
  const Json::Value& merged = params["infos"]["x"];
  EXPECT_EQ(params["infos"].size(), 1U);
  EXPECT_EQ(merged["Status"], 1);
  EXPECT_EQ(merged["Bright"].asInt(), 99);
  EXPECT_EQ(merged["Time"].size(), 2U);
  EXPECT_JSON_EQ("[6, 7]", merged["Time"][0]["PlayDates"]);
  EXPECT_EQ(merged["SplitScreenList"].size(), 1U);
}

TEST(GetGuideScreenCfgById, SendsTheScreenId) {
  tagNET_IN_GET_GUIDESCREEN_CFG_BYID in{};
  gsc::test::SetText(in.szScreenID, "hall-1");
  Json::Value params(Json::objectValue);
  serialize(in, params);
  EXPECT_JSON_EQ(R"({"ScreenID": "hall-1"})", params);
}

TEST(GetGuideScreenCfgById, ReadsDisplayScreenCfg) {
  tagNET_OUT_GET_GUIDESCREEN_CFG_BYID out{};
  EXPECT_TRUE(
      deserialize(J(R"({"DisplayScreenCfg": {"ID": "s1", "Status": 0, "Width": 64}})"), out));
  EXPECT_STREQ(out.stuInfo.szID, "s1");
  EXPECT_EQ(out.stuInfo.emStatus, EM_GUIDESCREEN_STATUS_JSON_0);
  EXPECT_EQ(out.stuInfo.nWidth, 64U);
}

TEST(GetGuideScreenCfgById, MissingConfigurationResetsOnlyStatusAndNumbers) {
  tagNET_OUT_GET_GUIDESCREEN_CFG_BYID out{};
  out.dwSize = 1234;
  out.stuInfo = FilledScreen("kept");
  deserialize(J("{}"), out);
  EXPECT_EQ(out.dwSize, 1234U);
  EXPECT_STREQ(out.stuInfo.szID, "kept");
  EXPECT_EQ(out.stuInfo.emStatus, EM_GUIDESCREEN_STATUS_UNKNOWN);
  EXPECT_EQ(out.stuInfo.nBright, 0U);
  EXPECT_EQ(out.stuInfo.nTimeNum, 1U);
  EXPECT_TRUE(out.stuInfo.stuAutoBright.bEnable);
}

TEST(GetAllGuideScreenCfg, WritesNoParameters) {
  Json::Value params = J(R"({"kept": 1})");
  EXPECT_TRUE(serialize(tagNET_IN_GET_ALL_GUIDESCREEN_CFG{}, params));
  EXPECT_JSON_EQ(R"({"kept": 1})", params);
}

TEST(GetAllGuideScreenCfg, FillsUpToCapacityInMemberNameOrder) {
  const Json::Value answer = J(R"({"infos": {
      "e": {"ID": "E"}, "c": {"ID": "C"}, "a": {"ID": "A"}, "d": {"ID": "D"}, "b": {"ID": "B"}}})");
  GuardedArray<tagNET_GUIDESCREEN_ATTRIBUTE_INFO> screens(3);
  tagNET_OUT_GET_ALL_GUIDESCREEN_CFG out{sizeof out, 3, 77, screens.data()};
  deserialize(answer, out);
  EXPECT_EQ(out.nRetInfosNum, 3U);
  EXPECT_STREQ(screens[0].szID, "A");
  EXPECT_STREQ(screens[1].szID, "B");
  EXPECT_STREQ(screens[2].szID, "C");
  EXPECT_TRUE(screens.GuardsIntact());
}

TEST(GetAllGuideScreenCfg, CapacityZeroOrNoInfosReturnsNothing) {
  GuardedArray<tagNET_GUIDESCREEN_ATTRIBUTE_INFO> screens(0);
  tagNET_OUT_GET_ALL_GUIDESCREEN_CFG out{sizeof out, 0, 77, screens.data()};
  deserialize(J(R"({"infos": {"a": {"ID": "A"}}})"), out);
  EXPECT_EQ(out.nRetInfosNum, 0U);
  EXPECT_TRUE(screens.GuardsIntact());

  tagNET_GUIDESCREEN_ATTRIBUTE_INFO one = FilledScreen("kept");
  tagNET_OUT_GET_ALL_GUIDESCREEN_CFG missing{sizeof missing, 1, 77, &one};
  deserialize(J("{}"), missing);
  EXPECT_EQ(missing.nRetInfosNum, 0U);
  EXPECT_EQ(one.nBright, 11U);

  tagNET_OUT_GET_ALL_GUIDESCREEN_CFG no_array{sizeof no_array, 5, 77, nullptr};
  deserialize(J(R"({"infos": {"a": {}}})"), no_array);
  EXPECT_EQ(no_array.nRetInfosNum, 0U);
}

// Display status: each unit's state travels as a three-character code in one text.
struct StatusCase {
  uint32_t count;
  std::vector<int> states;
  int gd_num;
  std::string text;
};

Json::Value SendStatus(const StatusCase& c) {
  tagNET_IN_SET_GD_STATUS in{};
  gsc::test::SetText(in.szScreenId, "s");
  in.nGDNum = c.count;
  for (size_t i = 0; i < c.states.size(); ++i)
    in.emStatus[i] = static_cast<EM_GD_STATUS>(c.states[i]);
  Json::Value params(Json::objectValue);
  serialize(in, params);
  return params;
}

TEST(SetGdStatus, JoinsTheCodesOfTheFirstUnits) {
  const StatusCase cases[] = {
      {0, {}, 0, ""},
      {3, {0, 2, 1}, 3, "100001010"},
      {3, {0, 1, 2}, 3, "100010001"},
      {2, {0, 1, 2}, 2, "100010"},
      // A state without a code ends the text; the count still says 3.
      {3, {0, 3, 1}, 3, "100"},
      {3, {-1, 0, 0}, 3, ""},
  };
  for (const StatusCase& c : cases) {
    const Json::Value params = SendStatus(c);
    EXPECT_EQ(params["ScreenId"], "s");
    EXPECT_EQ(params["GDNum"], c.gd_num);
    EXPECT_EQ(params["Status"].asString(), c.text) << c.count;
  }
}

TEST(SetGdStatus, ClampsToOneHundredSeventyUnits) {
  for (uint32_t count : {170U, 200U, 4294967295U}) {
    const Json::Value params = SendStatus({count, std::vector<int>(170, 2), 170, ""});
    EXPECT_EQ(params["GDNum"], 170);
    EXPECT_EQ(params["Status"].asString().size(), 510U);
    EXPECT_EQ(params["Status"].asString().substr(507), "001");
  }
}

TEST(AnswersWithoutContent, ReadNothing) {
  tagNET_OUT_SET_GUIDESCREEN_CFG set{42};
  tagNET_OUT_SET_GD_STATUS status{43};
  EXPECT_TRUE(deserialize(J(R"({"x": 1})"), set));
  EXPECT_TRUE(deserialize(J(R"({"x": 1})"), status));
  EXPECT_EQ(set.dwSize, 42U);
  EXPECT_EQ(status.dwSize, 43U);
}

}  // namespace
