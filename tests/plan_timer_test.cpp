#include <json/json.h>

#include <cstring>
#include <string>
#include <tuple>

#include "plan/plan_codecs.h"
#include "support/fixtures.h"

namespace gsc::test {
namespace {

// A record as a caller might leave it before a read, padding included, so memcmp is exact.
void FillCallerPlan(tagNET_TIMER_PLAN_INFO& info) {
  std::memset(&info, 0, sizeof info);
  SetText(info.szPlanName, "old name");
  SetText(info.szPlanID, "old-id");
  SetText(info.szSplitScreenID, "old-screen");
  info.emPeriodType = EM_PLAN_PERIOD_TYPE_JSON_2;
  info.nPlayDatesNum = 2;
  info.nPlayDates[0] = 5;
  info.nPlayDates[1] = 6;
  info.stuPlayStartDate = {2000, 1, 2};
  info.stuPlayEndDate = {2000, 12, 31};
  info.emReviewState = EM_PLAN_REVIEW_STATE_JSON_1;
  SetText(info.szReviewOpinion, "old opinion");
  info.bOverdue = true;
  info.nProgrammesNum = 1;
  tagNET_PLAN_PROGRAMME_INFO& programme = info.stuProgrammes[0];
  SetText(programme.szProgrammeName, "old programme");
  SetText(programme.szProgrammeID, "old-programme-id");
  programme.bIsBgProgramme = true;
  programme.stuStartTime = {1, 2, 3};
  programme.stuEndTime = {4, 5, 6};
}

// "Timer" members that re-read the caller's enumerations and overdue flag unchanged.
const std::string kSameTimer = R"("PeriodType": 2, "ReviewState": 1, "Overdue": true)";

// Reads `text` into a caller-filled record and expects exactly the changes that `adjust` makes.
template <typename Adjust>
void ExpectReadChanges(const std::string& text, Adjust adjust) {
  tagNET_TIMER_PLAN_INFO expected, info;
  FillCallerPlan(expected);
  std::memcpy(&info, &expected, sizeof info);
  adjust(expected);
  ParseTimerPlan(J(text), &info);
  EXPECT_EQ(0, std::memcmp(&expected, &info, sizeof info)) << text;
}
void ExpectReadKeepsRecord(const std::string& text) {
  ExpectReadChanges(text, [](tagNET_TIMER_PLAN_INFO&) {});
}

TEST(TimerPlanRead, PlanWithoutTimerIgnoresReviewOpinion) {
  ExpectReadChanges(R"({"PlanName": "n", "PlanID": "i", "SplitScreenID": "s",
                        "ReviewOpinion": "approved", "PeriodType": 1, "Overdue": false})",
                    [](tagNET_TIMER_PLAN_INFO& e) {
                      SetText(e.szPlanName, "n");
                      SetText(e.szPlanID, "i");
                      SetText(e.szSplitScreenID, "s");
                    });
  ExpectReadKeepsRecord(R"({"Timer": null, "ReviewOpinion": "approved"})");
}

TEST(TimerPlanRead, EmptyTimerSetsEnumerationsAndOverdueOnly) {
  const auto timerDefaults = [](tagNET_TIMER_PLAN_INFO& e) {
    e.emPeriodType = EM_PLAN_PERIOD_TYPE_JSON_0;
    e.emReviewState = EM_PLAN_REVIEW_STATE_JSON_0;
    e.bOverdue = false;
  };
  ExpectReadChanges(R"({"Timer": {}})", timerDefaults);
  // The opinion is a member of the plan; one inside "Timer" is not the plan's.
  ExpectReadChanges(R"({"Timer": {"ReviewOpinion": "inner"}})", timerDefaults);
  ExpectReadChanges(R"({"Timer": {}, "ReviewOpinion": "approved"})",
                    [&](tagNET_TIMER_PLAN_INFO& e) {
                      timerDefaults(e);
                      SetText(e.szReviewOpinion, "approved");
                    });
}

TEST(TimerPlanRead, EnumerationsOutsideTheirRangeReadAsUnknown) {
  const struct {
    int periodJson, reviewJson, period, review;
  } cases[] = {{0, 1, 1, 2}, {3, 2, 4, 0}, {4, -1, 0, 0}, {-1, 0, 0, 1}};
  for (const auto& c : cases) {
    Json::Value plan;
    plan["Timer"]["PeriodType"] = c.periodJson;
    plan["Timer"]["ReviewState"] = c.reviewJson;
    tagNET_TIMER_PLAN_INFO info;
    FillCallerPlan(info);
    ParseTimerPlan(plan, &info);
    EXPECT_EQ(c.period, info.emPeriodType) << c.periodJson;
    EXPECT_EQ(c.review, info.emReviewState) << c.reviewJson;
  }
}

TEST(TimerPlanRead, ListsAreClampedToThirtyTwoOrKeptWhenNotAnArray) {
  Json::Value plan;
  for (int i = 0; i < 40; ++i) {
    plan["Timer"]["PlayDates"][i] = 100 + i;
    plan["Timer"]["Programmes"][i]["ProgrammeID"] = std::to_string(i);
  }
  plan["Timer"]["PlayDates"][0] = -1;
  tagNET_TIMER_PLAN_INFO info;
  FillCallerPlan(info);
  ParseTimerPlan(plan, &info);
  EXPECT_EQ(32u, info.nPlayDatesNum);
  EXPECT_EQ(4294967295u, info.nPlayDates[0]);
  EXPECT_EQ(131u, info.nPlayDates[31]);
  EXPECT_EQ(32u, info.nProgrammesNum);
  EXPECT_STREQ("31", info.stuProgrammes[31].szProgrammeID);

  ExpectReadChanges(R"({"Timer": {"PlayDates": [], )" + kSameTimer + "}}",
                    [](tagNET_TIMER_PLAN_INFO& e) { e.nPlayDatesNum = 0; });
  for (const char* notAnArray : {"5", "null", R"({"0": 1})"}) {
    ExpectReadKeepsRecord(R"({"Timer": {"PlayDates": )" + std::string(notAnArray) +
                          R"(, "Programmes": )" + notAnArray + ", " + kSameTimer + "}}");
  }
}

TEST(TimerPlanRead, CustomDateTextsSetTheFieldsTheScanReaches) {
  const struct {
    const char* text;
    tagNET_DATE_INFO date;
  } cases[] = {{"2024:03:05", {2024, 3, 5}},
               {"2024-03-05", {2024, -7, -7}},
               {"24:3:5", {24, 3, 5}},
               {"20240:01:01", {2024, -7, -7}}};
  for (const auto& c : cases) {
    Json::Value plan;
    plan["Timer"]["CustomPlayDate"]["PlayStartDate"] = c.text;
    plan["Timer"]["CustomPlayDate"]["PlayEndDate"] = c.text;
    tagNET_TIMER_PLAN_INFO info;
    FillCallerPlan(info);
    info.stuPlayStartDate = info.stuPlayEndDate = {-7, -7, -7};
    ParseTimerPlan(plan, &info);
    for (const tagNET_DATE_INFO& read : {info.stuPlayStartDate, info.stuPlayEndDate}) {
      EXPECT_EQ(std::make_tuple(c.date.nYear, c.date.nMonth, c.date.nDay),
                std::make_tuple(read.nYear, read.nMonth, read.nDay))
          << c.text;
    }
  }
}

TEST(TimerPlanRead, ProgrammesAlwaysSetTheBackgroundFlagAndKeepMissingMembers) {
  ExpectReadChanges(R"({"Timer": {"Programmes": [{}, {"ProgrammeID": "p2", "ProgrammeName": "B",
                         "IsBgProgramme": true, "StartTime": "07:05", "EndTime": "23:59:59"}], )" +
                        kSameTimer + "}}",
                    [](tagNET_TIMER_PLAN_INFO& e) {
                      e.nProgrammesNum = 2;
                      e.stuProgrammes[0].bIsBgProgramme = false;
                      tagNET_PLAN_PROGRAMME_INFO& second = e.stuProgrammes[1];
                      SetText(second.szProgrammeID, "p2");
                      SetText(second.szProgrammeName, "B");
                      second.bIsBgProgramme = true;
                      second.stuStartTime = {7, 5, 0};  // the text carried no second
                      second.stuEndTime = {23, 59, 59};
                    });
}

TEST(TimerPlanWrite, ZeroRecordSendsNullListsZeroDatesAndPlanTypeOne) {
  const tagNET_TIMER_PLAN_INFO info = {};
  Json::Value plan;
  PacketTimerPlan(&info, plan);
  EXPECT_JSON_EQ(R"({"PlanName": "", "PlanID": "", "SplitScreenID": "", "PlanType": 1,
                     "ReviewOpinion": "",
                     "Timer": {"PlayDates": null, "Overdue": false, "Programmes": null,
                               "CustomPlayDate": {"PlayStartDate": "0000:00:00",
                                                  "PlayEndDate": "0000:00:00"}}})",
                 plan);
}

TEST(TimerPlanWrite, FilledRecordPutsReviewOpinionBesideTimer) {
  tagNET_TIMER_PLAN_INFO info;
  FillCallerPlan(info);
  Json::Value plan;
  PacketTimerPlan(&info, plan);
  EXPECT_JSON_EQ(R"({"PlanName": "old name", "PlanID": "old-id", "SplitScreenID": "old-screen",
                     "PlanType": 1, "ReviewOpinion": "old opinion",
                     "Timer": {"PeriodType": 2, "PlayDates": [5, 6], "ReviewState": 1,
                               "Overdue": true,
                               "CustomPlayDate": {"PlayStartDate": "2000:01:02",
                                                  "PlayEndDate": "2000:12:31"},
                               "Programmes": [{"ProgrammeID": "old-programme-id",
                                               "ProgrammeName": "old programme",
                                               "IsBgProgramme": true, "StartTime": "01:02:03",
                                               "EndTime": "04:05:06"}]}})",
                 plan);
}

TEST(TimerPlanWrite, DatesAreColonSeparatedAndCutToFifteenCharacters) {
  const struct {
    tagNET_DATE_INFO date;
    const char* text;
  } cases[] = {{{2024, 3, 5}, "2024:03:05"},
               {{0, 0, 0}, "0000:00:00"},
               {{1234567890, 3, 5}, "1234567890:03:0"}};
  for (const auto& c : cases) {
    tagNET_TIMER_PLAN_INFO info = {};
    info.stuPlayEndDate = c.date;
    Json::Value plan;
    PacketTimerPlan(&info, plan);
    EXPECT_EQ(c.text, plan["Timer"]["CustomPlayDate"]["PlayEndDate"].asString());
  }
}

TEST(TimerPlanWrite, ValuesBeyondTheirRangesAreSentAsTheyAreOrClamped) {
  for (uint32_t count : {33u, 4294967295u}) {
    tagNET_TIMER_PLAN_INFO info = {};
    info.emPeriodType = static_cast<EM_PLAN_PERIOD_TYPE>(7);
    info.emReviewState = static_cast<EM_PLAN_REVIEW_STATE>(-5);
    info.nPlayDatesNum = info.nProgrammesNum = count;
    info.nPlayDates[31] = 4294967295u;
    Json::Value plan;
    PacketTimerPlan(&info, plan);
    const Json::Value& timer = plan["Timer"];
    EXPECT_EQ("6", Compact(timer["PeriodType"]));
    EXPECT_EQ("-6", Compact(timer["ReviewState"]));
    ASSERT_EQ(32u, timer["PlayDates"].size());
    EXPECT_EQ("4294967295", Compact(timer["PlayDates"][31]));
    ASSERT_EQ(32u, timer["Programmes"].size());
    EXPECT_EQ(5u, timer["Programmes"][31].size());
  }
}

}  // namespace
}  // namespace gsc::test
