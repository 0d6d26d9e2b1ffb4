// The reporting overloads: each kind of finding with its exact path, the same bytes and JSON as
// the plain overloads, and failed conversions caught where they happen.
#include <cstring>
#include <string>
#include <vector>

#include "guidescreen_codec/operations.h"
#include "support/fixtures.h"

namespace {

using gsc::FindingKind;
using gsc::Report;
using gsc::test::Compact;
using gsc::test::GuardedArray;
using gsc::test::GuardedBytes;
using gsc::test::J;
using gsc::test::SetText;

// "kind path" for each finding, in order.
std::vector<std::string> Where(const Report& report) {
  std::vector<std::string> out;
  for (const gsc::Finding& f : report.findings())
    out.push_back(std::string(to_string(f.kind)) + " " + f.path);
  return out;
}

// Reads `answer` into two copies of `out` (plain, then reporting) and expects the same bytes, the
// same exception message, and the reporting overload's result to say whether it ran to the end.
// Records that point to caller arrays or buffers are compared by the tests themselves.
template <typename Out>
Report ReadBoth(const Json::Value& answer, Out plain, Out reporting, bool compare = true) {
  std::string thrown;
  try {
    deserialize(answer, plain);
  } catch (const Json::Exception& e) {
    thrown = e.what();
  }
  Report report;
  const bool finished = deserialize(answer, reporting, report);
  EXPECT_EQ(finished, thrown.empty());
  if (compare) {
    EXPECT_EQ(0, std::memcmp(&plain, &reporting, sizeof plain)) << Compact(answer);
  }
  if (!thrown.empty()) {
    EXPECT_EQ(report.findings().back().kind, FindingKind::kConversionFailed);
    EXPECT_EQ(report.findings().back().detail, thrown);
  }
  return report;
}

template <typename In>
Report WriteBoth(const In& in) {
  Json::Value plain(Json::objectValue), reporting(Json::objectValue);
  serialize(in, plain);
  Report report;
  EXPECT_TRUE(serialize(in, reporting, report));
  EXPECT_EQ(Compact(plain), Compact(reporting));
  return report;
}

using Findings = std::vector<std::string>;

TEST(Report, TextsCutArraysClampedAndEnumerationsOutOfRangeAreNamedWhereTheyHappened) {
  const std::string longId(600, 'x');
  const Report cut = ReadBoth(J(R"({"ProgrammeID": ")" + longId + R"("})"),
                              tagNET_OUT_ADD_ONE_PROGRAMME{}, tagNET_OUT_ADD_ONE_PROGRAMME{});
  EXPECT_EQ(Where(cut), Findings{"text-cut ProgrammeID"});
  EXPECT_EQ(cut.findings()[0].detail, "600 bytes received, 63 kept in a field of 64");

  std::string windows;
  for (int i = 0; i < 20; ++i) windows += std::string(i ? "," : "") + "{}";
  const Report clamped =
      ReadBoth(J(R"({"Programme": {"Ordinary": {"Windows": [)" + windows + R"(]}}})"),
               tagNET_OUT_GET_PROGRAMME_BYID{}, tagNET_OUT_GET_PROGRAMME_BYID{});
  EXPECT_EQ(Where(clamped), Findings{"array-clamped Programme.Ordinary.Windows"});
  EXPECT_EQ(clamped.findings()[0].detail, "20 elements, capacity 16: 4 not read");

  const Report status =
      ReadBoth(J(R"({"DisplayScreenCfg": {"Status": 5, "Time": [{"DateType": -1}]}})"),
               tagNET_OUT_GET_GUIDESCREEN_CFG_BYID{}, tagNET_OUT_GET_GUIDESCREEN_CFG_BYID{});
  EXPECT_EQ(Where(status), (Findings{"enum-out-of-range DisplayScreenCfg.Status",
                                     "enum-out-of-range DisplayScreenCfg.Time[0].DateType"}));
  EXPECT_EQ(status.findings()[0].detail, "value 5 outside 0..1, stored as 0");
}

TEST(Report, CollectionsNameTheMembersTheCallersArrayHadNoRoomFor) {
  const Json::Value answer = J(R"({"infos": {"P-9": {}, "P-10": {}, "P-7": {}}})");
  GuardedArray<tagNET_PROGRAMME_INFO> plain(2), reporting(2);
  const Report report = ReadBoth(answer, tagNET_OUT_GET_ALL_PROGRAMMES{0, 2, 0, plain.data()},
                                 tagNET_OUT_GET_ALL_PROGRAMMES{0, 2, 0, reporting.data()}, false);
  EXPECT_EQ(Where(report), Findings{"collection-clamped infos"});
  EXPECT_EQ(report.findings()[0].detail, "room for 2 records: 1 not read (P-9)");
  EXPECT_EQ(0, std::memcmp(plain.data(), reporting.data(), 2 * sizeof(tagNET_PROGRAMME_INFO)));
  EXPECT_TRUE(reporting.GuardsIntact());

  // Plans fill two arrays; each reports its own overflow, and a plan of no known kind is neither.
  const Json::Value plans = J(R"({"infos": {"a": {"PlanType": 0}, "b": {"PlanType": 0},
                                            "c": {"PlanType": 1}, "d": {"PlanType": 7}}})");
  GuardedArray<tagNET_IMMEDIATELY_PLAN_INFO> imme(1), imme2(1);
  GuardedArray<tagNET_TIMER_PLAN_INFO> timer(1), timer2(1);
  const Report split =
      ReadBoth(plans, tagNET_OUT_GET_ALL_PROGRAMMEPLANS{0, 1, 0, imme.data(), 0, timer.data()},
               tagNET_OUT_GET_ALL_PROGRAMMEPLANS{0, 1, 0, imme2.data(), 0, timer2.data()}, false);
  EXPECT_EQ(0, std::memcmp(imme.data(), imme2.data(), sizeof(tagNET_IMMEDIATELY_PLAN_INFO)));
  EXPECT_EQ(0, std::memcmp(timer.data(), timer2.data(), sizeof(tagNET_TIMER_PLAN_INFO)));
  EXPECT_EQ(Where(split),
            (Findings{"enum-out-of-range infos.d.PlanType", "collection-clamped infos"}));
  EXPECT_EQ(split.findings()[1].detail, "room for 1 immediate plans: 1 not read (b)");
}

TEST(Report, ElementsOfUnknownTypeAndElementsThatDoNotFitAreNamed) {
  const Json::Value answer = J(R"({"Programme": {"Ordinary": {"Windows": [{"Elements": [
      {"Type": 7}, {"Type": 3, "Name": "p"}, {"Type": 0}]}]}}})");
  // Room for the header of the unknown element and a placeholder, not for the video after them.
  const size_t room = 132 + 132 + sizeof(tagNET_PLACEHOLDER_ELEMENT_INFO) + 100;
  GuardedBytes plainBuffer(room, 4), reportingBuffer(room, 4);
  tagNET_OUT_GET_PROGRAMME_BYID plain{}, reporting{};
  plain.stuProgramme.stuOrdinary.stuWindows[0].pElementsBuf = plainBuffer.data();
  plain.stuProgramme.stuOrdinary.stuWindows[0].nElementsBufLen = static_cast<uint32_t>(room);
  reporting.stuProgramme.stuOrdinary.stuWindows[0].pElementsBuf = reportingBuffer.data();
  reporting.stuProgramme.stuOrdinary.stuWindows[0].nElementsBufLen = static_cast<uint32_t>(room);
  const Report report = ReadBoth(answer, plain, reporting, false);
  EXPECT_EQ(0, std::memcmp(plainBuffer.data(), reportingBuffer.data(), room));
  EXPECT_EQ(Where(report),
            (Findings{"unknown-element-type Programme.Ordinary.Windows[0].Elements[0].Type",
                      "element-buffer-full Programme.Ordinary.Windows[0].Elements"}));
  EXPECT_EQ(report.findings()[1].detail,
            "3 entries received, 2 stored: the next needs " +
                std::to_string(132 + sizeof(tagNET_VIDEO_ELEMENT_INFO)) + " bytes, 100 left");
  EXPECT_TRUE(reportingBuffer.GuardsIntact());
}

TEST(Report, UnknownMembersAreNamedAndOddNamesQuoted) {
  const Json::Value answer = J(R"({"Programme": {"Enable": true, "a.b": 1, "Ordinary":
      {"Windows": [{"WinID": "w", "Colour": [1, 2, 3, 4]}]}}, "Extra": null})");
  const Report report =
      ReadBoth(answer, tagNET_OUT_GET_PROGRAMME_BYID{}, tagNET_OUT_GET_PROGRAMME_BYID{});
  EXPECT_EQ(Where(report), (Findings{"unknown-member Extra", R"(unknown-member Programme["a.b"])",
                                     "unknown-member Programme.Ordinary.Windows[0].Colour"}));
  EXPECT_EQ(report.findings()[1].detail, "unknown member, ignored: number 1");
}

TEST(Report, SilentConversionsAndMalformedValuesAreNamed) {
  const Json::Value answer = J(R"({"DisplayScreenCfg": {"ID": {"a": 1}, "Bright": 1.5,
      "IsForeverOpen": 2, "Contrast": true, "Time": {"x": 1},
      "SplitScreenList": [{"ScreenId": 42, "Rect": [1, 2, 3]}],
      "AutoBright": {"Time": [{"Sunrise": 6.25}]}}})");
  const Report report = ReadBoth(answer, tagNET_OUT_GET_GUIDESCREEN_CFG_BYID{},
                                 tagNET_OUT_GET_GUIDESCREEN_CFG_BYID{});
  EXPECT_EQ(
      Where(report),
      (Findings{"value-converted DisplayScreenCfg.ID",
                "value-converted DisplayScreenCfg.IsForeverOpen",
                "value-malformed DisplayScreenCfg.Time", "value-converted DisplayScreenCfg.Bright",
                "value-converted DisplayScreenCfg.Contrast",
                "value-converted DisplayScreenCfg.SplitScreenList[0].ScreenId",
                "value-malformed DisplayScreenCfg.SplitScreenList[0].Rect",
                "value-converted DisplayScreenCfg.AutoBright.Time[0].Sunrise"}));
  EXPECT_EQ(report.findings()[0].detail, "object of 1 member read as an empty text");
  EXPECT_EQ(report.findings()[3].detail, "number 1.5 read as 1");
  EXPECT_EQ(report.findings()[4].detail, "true read as 1");
  EXPECT_EQ(report.findings()[5].detail, "number 42 read as the text \"42\"");

  const Report times =
      ReadBoth(J(R"({"ProgrammePlan": {"PlanType": 1, "Timer": {"Programmes": [{"StartTime": "7-5",
          "EndTime": "07:05:00 "}], "CustomPlayDate": {"PlayStartDate": 2024}}}})"),
               tagNET_OUT_GET_PROGRAMMEPLAN_BYID{}, tagNET_OUT_GET_PROGRAMMEPLAN_BYID{});
  EXPECT_EQ(Where(times),
            (Findings{"value-malformed ProgrammePlan.Timer.CustomPlayDate.PlayStartDate",
                      "value-malformed ProgrammePlan.Timer.Programmes[0].StartTime",
                      "value-malformed ProgrammePlan.Timer.Programmes[0].EndTime"}));
}

TEST(Report, AFailedConversionStopsReadingAtItsPathAndLeavesWhatThePlainReaderLeaves) {
  // The fourth window's third element has a font size JsonCpp cannot convert.
  std::string windows = "{}, {}, {}, ";
  windows += R"({"Elements": [{"Type": 3}, {"Type": 3}, {"Type": 2, "Text": {"Content": "c",
                 "FontSize": "big", "PlayTime": 4}}]})";
  const Json::Value answer =
      J(R"({"infos": {"P-7": {"Ordinary": {"Windows": [)" + windows + "]}}}}");
  std::vector<GuardedBytes> buffers;
  for (int i = 0; i < 2; ++i) buffers.emplace_back(20000, 4);
  GuardedArray<tagNET_PROGRAMME_INFO> plain(1), reporting(1);
  plain[0].stuOrdinary.stuWindows[3].pElementsBuf = buffers[0].data();
  plain[0].stuOrdinary.stuWindows[3].nElementsBufLen = 20000;
  reporting[0].stuOrdinary.stuWindows[3].pElementsBuf = buffers[1].data();
  reporting[0].stuOrdinary.stuWindows[3].nElementsBufLen = 20000;
  const Report report = ReadBoth(answer, tagNET_OUT_GET_ALL_PROGRAMMES{0, 1, 0, plain.data()},
                                 tagNET_OUT_GET_ALL_PROGRAMMES{0, 1, 0, reporting.data()}, false);
  reporting[0].stuOrdinary.stuWindows[3].pElementsBuf = buffers[0].data();
  EXPECT_EQ(Where(report),
            Findings{"conversion-failed infos.P-7.Ordinary.Windows[3].Elements[2].Text.FontSize"});
  EXPECT_EQ(report.findings()[0].detail, "Value is not convertible to Int.");
  EXPECT_EQ(0, std::memcmp(plain.data(), reporting.data(), sizeof(tagNET_PROGRAMME_INFO)));
  EXPECT_EQ(0, std::memcmp(buffers[0].data(), buffers[1].data(), 20000));
}

TEST(Report, ReadOrderFollowsTheStepsSoAFailedHeightLeavesVolumeUntouched) {
  tagNET_OUT_GET_GUIDESCREEN_CFG_BYID plain{}, reporting{};
  plain.stuInfo.nVolume = reporting.stuInfo.nVolume = 77;
  const Report report =
      ReadBoth(J(R"({"DisplayScreenCfg": {"Width": 1920, "Height": "tall", "Volume": 5}})"), plain,
               reporting);
  EXPECT_EQ(Where(report), Findings{"conversion-failed DisplayScreenCfg.Height"});
  tagNET_OUT_GET_GUIDESCREEN_CFG_BYID again{};
  again.stuInfo.nVolume = 77;
  EXPECT_THROW(deserialize(J(R"({"DisplayScreenCfg": {"Width": 1920, "Height": "tall"}})"), again),
               Json::Exception);
  EXPECT_EQ(again.stuInfo.nWidth, 1920U);
  EXPECT_EQ(again.stuInfo.nVolume, 77U);
}

TEST(Report, AResultOfTheWrongTypeFailsAtTheRoot) {
  Report report;
  tagNET_OUT_GET_PROGRAMME_BYID out{};
  EXPECT_FALSE(deserialize(J("[1]"), out, report));
  EXPECT_EQ(Where(report), Findings{"conversion-failed "});
  EXPECT_EQ(report.str().substr(0, 26), "(root): conversion-failed:");
}

TEST(Report, WritersNameTheFieldsOfTheInputRecord) {
  tagNET_IN_ADD_TIMER_PROGRAMMEPLAN timer{};
  timer.stuInfo.nPlayDatesNum = 40;
  timer.stuInfo.nProgrammesNum = 4;
  std::memset(timer.stuInfo.stuProgrammes[3].szProgrammeName, 'n', 64);
  const Report plan = WriteBoth(timer);
  EXPECT_EQ(Where(plan), (Findings{"count-beyond-capacity stuInfo.nPlayDatesNum",
                                   "text-unterminated stuInfo.stuProgrammes[3].szProgrammeName"}));
  EXPECT_EQ(plan.findings()[0].detail, "count 40, capacity 32: 8 not sent");

  tagNET_GUIDESCREEN_ATTRIBUTE_INFO screens[2] = {};
  screens[1].emStatus = static_cast<EM_GUIDESCREEN_STATUS>(7);
  screens[1].nTimeNum = 1;
  screens[1].stuTime[0].emDateType = static_cast<EM_GUIDESCREEN_DATE_TYPE>(-1);
  SetText(screens[1].szID, "s");
  const Report config = WriteBoth(tagNET_IN_SET_GUIDESCREEN_CFG{0, 2, screens});
  EXPECT_EQ(Where(config), (Findings{"enum-not-sent pstuInfos[1].emStatus",
                                     "enum-not-sent pstuInfos[1].stuTime[0].emDateType"}));

  tagNET_IN_SET_GD_STATUS units{};
  units.nGDNum = 171;
  for (EM_GD_STATUS& state : units.emStatus) state = EM_GD_STATUS_CODE_100;
  units.emStatus[2] = static_cast<EM_GD_STATUS>(9);
  units.emStatus[5] = static_cast<EM_GD_STATUS>(9);
  const Report status = WriteBoth(units);
  EXPECT_EQ(Where(status),
            (Findings{"count-beyond-capacity nGDNum", "display-unit-without-code emStatus[2]"}));

  tagNET_IN_DEL_PROGRAMMES deleted{};
  deleted.nProgrammeIDListNum = 2;
  std::memset(deleted.szProgrammeIDList[1], 'i', 64);
  EXPECT_EQ(Where(WriteBoth(deleted)), Findings{"text-unterminated szProgrammeIDList[1]"});
}

TEST(Report, ElementEntriesOfUnknownKindAreNamedByTheirPlaceInTheBuffer) {
  GuardedBytes buffer(3 * 132, 4);
  const int kinds[3] = {3, 9, 3};  // placeholder headers need their records: use unknown kinds
  std::memcpy(buffer.data(), &kinds[1], 4);
  std::memcpy(buffer.data() + 132, &kinds[1], 4);
  tagNET_IN_ADD_ONE_PROGRAMME in{};
  in.stuInfo.stuOrdinary.nWindowsNum = 1;
  in.stuInfo.stuOrdinary.stuWindows[0].pElementsBuf = buffer.data();
  in.stuInfo.stuOrdinary.stuWindows[0].nElementsNum = 2;
  EXPECT_EQ(Where(WriteBoth(in)),
            (Findings{"element-kind-skipped stuInfo.stuOrdinary.stuWindows[0].pElementsBuf[0]",
                      "element-kind-skipped stuInfo.stuOrdinary.stuWindows[0].pElementsBuf[1]"}));
}

TEST(Report, IsClearedByEachCallAndPrintsOneLinePerFinding) {
  Report report;
  report.add(FindingKind::kTextCut, "stale", "left from before");
  tagNET_OUT_ADD_PROGRAMMEPLAN out{};
  EXPECT_TRUE(deserialize(J(R"({"ProgrammePlanID": "x", "Why": 1})"), out, report));
  EXPECT_EQ(report.str(), "Why: unknown-member: unknown member, ignored: number 1\n");
  EXPECT_STREQ(to_string(static_cast<FindingKind>(0)), "unknown");
}

}  // namespace
