// The six programme operations.
#include <cstring>
#include <string>
#include <vector>

#include "guidescreen_codec/operations.h"
#include "support/fixtures.h"

namespace {

using gsc::test::GuardedArray;
using gsc::test::J;
using gsc::test::SetText;

// Five programmes whose names sort differently from the order they are listed in.
const char* const kFiveProgrammes = R"({"infos": {
    "p5": {"ProgrammeID": "5"}, "p1": {"ProgrammeID": "1"}, "p4": {"ProgrammeID": "4"},
    "p2": {"ProgrammeID": "2"}, "p3": {"ProgrammeID": "3"}}})";

TEST(GetProgrammeById, SendsTheIdAndMergesTheAnswersProgramme) {
  tagNET_IN_GET_PROGRAMME_BYID in = {};
  SetText(in.szProgrammeID, "P-7");
  Json::Value params(Json::objectValue);
  EXPECT_TRUE(serialize(in, params));
  EXPECT_JSON_EQ(R"({"ProgrammeID": "P-7"})", params);

  static tagNET_OUT_GET_PROGRAMME_BYID out = {};
  SetText(out.stuProgramme.szProgrammeName, "kept");
  out.stuProgramme.bEnable = true;
  EXPECT_TRUE(deserialize(J(R"({"Programme": {"ProgrammeID": "P-7", "Enable": true}})"), out));
  EXPECT_STREQ(out.stuProgramme.szProgrammeID, "P-7");
  EXPECT_STREQ(out.stuProgramme.szProgrammeName, "kept");
  EXPECT_TRUE(out.stuProgramme.bEnable);

  EXPECT_TRUE(deserialize(J("{}"), out));
  EXPECT_FALSE(out.stuProgramme.bEnable);
  EXPECT_STREQ(out.stuProgramme.szProgrammeID, "P-7");
}

TEST(GetAllProgrammes, CapacityZeroReturnsNothingWhateverInfosHolds) {
  GuardedArray<tagNET_PROGRAMME_INFO> infos(1);
  tagNET_OUT_GET_ALL_PROGRAMMES out = {sizeof out, 0, 99, infos.data()};
  EXPECT_TRUE(deserialize(J(kFiveProgrammes), out));
  EXPECT_EQ(out.nRetInfosNum, 0U);
  EXPECT_EQ(infos[0].szProgrammeID[0], '\0');
  EXPECT_TRUE(infos.GuardsIntact());

  tagNET_OUT_GET_ALL_PROGRAMMES noArray = {sizeof noArray, 5, 99, nullptr};
  EXPECT_TRUE(deserialize(J(kFiveProgrammes), noArray));
  EXPECT_EQ(noArray.nRetInfosNum, 0U);
}

TEST(GetAllProgrammes, FillsUpToCapacityInAscendingNameOrder) {
  // Four records, of which the caller offers three: the fourth must stay untouched too.
  GuardedArray<tagNET_PROGRAMME_INFO> infos(4);
  SetText(infos[3].szProgrammeID, "guard");
  tagNET_OUT_GET_ALL_PROGRAMMES out = {sizeof out, 3, 0, infos.data()};
  EXPECT_TRUE(deserialize(J(kFiveProgrammes), out));
  EXPECT_EQ(out.nRetInfosNum, 3U);
  EXPECT_STREQ(infos[0].szProgrammeID, "1");
  EXPECT_STREQ(infos[1].szProgrammeID, "2");
  EXPECT_STREQ(infos[2].szProgrammeID, "3");
  EXPECT_STREQ(infos[3].szProgrammeID, "guard");
  EXPECT_TRUE(infos.GuardsIntact());

  EXPECT_TRUE(deserialize(J("{}"), out));
  EXPECT_EQ(out.nRetInfosNum, 0U);
}

TEST(Listings, RequestsLeaveTheParametersAsGiven) {
  Json::Value params = J(R"({"from": "transport"})");
  EXPECT_TRUE(
      serialize(tagNET_IN_GET_ALL_PROGRAMMES{sizeof(tagNET_IN_GET_ALL_PROGRAMMES)}, params));
  EXPECT_TRUE(serialize(
      tagNET_IN_GET_ALL_BRIEFLYPROGRAMMES{sizeof(tagNET_IN_GET_ALL_BRIEFLYPROGRAMMES)}, params));
  EXPECT_JSON_EQ(R"({"from": "transport"})", params);
}

TEST(GetAllBriefProgrammes, FortyMembersFillThirtyTwo) {
  Json::Value answer;
  for (int i = 0; i < 40; ++i) {
    answer["infos"]["p" + std::to_string(100 + i)]["ProgrammeName"] = std::to_string(i);
  }
  static tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES out = {};
  EXPECT_TRUE(deserialize(answer, out));
  EXPECT_EQ(out.nRetInfosNum, 32U);
  EXPECT_STREQ(out.stuInfos[31].szProgrammeName, "31");
}

TEST(GetAllBriefProgrammes, EntryRules) {
  struct Case {
    const char* entry;
    int programmeType;
    bool templetState;
  };
  for (const Case& c :
       {Case{R"({"ProgrammeType": 1, "TempletState": true})", 2, true},
        Case{R"({"ProgrammeType": 0})", 1, false}, Case{R"({"ProgrammeType": 2})", 0, false},
        Case{R"({"ProgrammeType": -1})", 0, false}, Case{R"({"ProgrammeType": null})", 2, false},
        Case{R"({"Ordinary": {"TempletState": true}})", 2, false}}) {
    static tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES out = {};
    out.stuInfos[0].emProgrammeType = EM_PROGRAMME_TYPE_JSON_1;
    out.stuInfos[0].bTempletState = true;
    out.stuInfos[0].bEnable = true;
    SetText(out.stuInfos[0].szProgrammeID, "kept");
    Json::Value answer;
    answer["infos"]["only"] = J(c.entry);
    EXPECT_TRUE(deserialize(answer, out));
    EXPECT_EQ(out.nRetInfosNum, 1U);
    EXPECT_EQ(out.stuInfos[0].emProgrammeType, c.programmeType) << c.entry;
    EXPECT_EQ(out.stuInfos[0].bTempletState, c.templetState) << c.entry;
    EXPECT_FALSE(out.stuInfos[0].bEnable) << c.entry;
    EXPECT_STREQ(out.stuInfos[0].szProgrammeID, "kept") << c.entry;
  }
}

TEST(AddOneProgramme, SendsTheProgrammeUnderInfoAndCopiesTheNewId) {
  static tagNET_IN_ADD_ONE_PROGRAMME in = {};
  SetText(in.stuInfo.szProgrammeName, "Lobby");
  Json::Value params(Json::objectValue);
  EXPECT_TRUE(serialize(in, params));
  EXPECT_EQ(params.getMemberNames(), std::vector<std::string>{"info"});
  EXPECT_EQ(params["info"]["ProgrammeName"], Json::Value("Lobby"));
  EXPECT_EQ(params["info"]["ProgrammeType"], Json::Value(0));

  tagNET_OUT_ADD_ONE_PROGRAMME out = {};
  EXPECT_TRUE(deserialize(J(R"({"ProgrammeID": "P-42"})"), out));
  EXPECT_STREQ(out.szProgrammeID, "P-42");
  EXPECT_TRUE(deserialize(J("{}"), out));
  EXPECT_STREQ(out.szProgrammeID, "");
}

TEST(ModifyOneProgramme, SendsTheIdBothAtTopLevelAndInsideTheProgramme) {
  static tagNET_IN_MODIFY_ONE_PROGRAMME in = {};
  SetText(in.stuProgramme.szProgrammeID, "P-9");
  Json::Value params(Json::objectValue);
  EXPECT_TRUE(serialize(in, params));
  EXPECT_EQ(params["ProgrammeID"], Json::Value("P-9"));
  EXPECT_EQ(params["Programme"]["ProgrammeID"], Json::Value("P-9"));
  tagNET_OUT_MODIFY_ONE_PROGRAMME out = {};
  EXPECT_TRUE(deserialize(J(R"({"anything": 1})"), out));
}

TEST(DelProgrammes, SendsNoListForNoIdsAndAtMostThirtyTwo) {
  static tagNET_IN_DEL_PROGRAMMES in = {};
  Json::Value none(Json::objectValue);
  EXPECT_TRUE(serialize(in, none));
  EXPECT_JSON_EQ("{}", none);

  in.nProgrammeIDListNum = 2;
  SetText(in.szProgrammeIDList[0], "P-1");
  SetText(in.szProgrammeIDList[1], "P-2");
  Json::Value two(Json::objectValue);
  EXPECT_TRUE(serialize(in, two));
  EXPECT_JSON_EQ(R"({"ProgrammeIDList": ["P-1", "P-2"]})", two);

  in.nProgrammeIDListNum = 4294967295U;
  std::memset(in.szProgrammeIDList[31], 'z', sizeof in.szProgrammeIDList[31]);
  Json::Value all(Json::objectValue);
  EXPECT_TRUE(serialize(in, all));
  EXPECT_EQ(all["ProgrammeIDList"].size(), 32U);
  EXPECT_EQ(all["ProgrammeIDList"][31], Json::Value(std::string(64, 'z')));
  tagNET_OUT_DEL_PROGRAMMES out = {};
  EXPECT_TRUE(deserialize(J("{}"), out));
}

}  // namespace
