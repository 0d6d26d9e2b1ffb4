// Skip mode: a reporting deserialize that goes past values JsonCpp cannot convert leaves exactly
// what the plain one leaves for the answer with those values replaced by null, and names each.
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "guidescreen_codec/operations.h"
#include "support/fixtures.h"

namespace {

using gsc::FindingKind;
using gsc::OnFailure;
using gsc::Report;
using gsc::test::GuardedBytes;
using gsc::test::J;

// Caller memory of one call: the output record and the arrays and buffers it points to, all
// restorable, so that two calls can be compared on the very same memory.
class CallerMemory {
 public:
  unsigned char* Add(size_t size, size_t offset = 0) {
    blocks_.push_back(std::make_unique<GuardedBytes>(size, offset, 0x5A));
    return blocks_.back()->data();
  }
  template <typename R>
  R& Record(size_t count = 1) {
    return *reinterpret_cast<R*>(Add(sizeof(R) * count));
  }
  std::vector<std::string> Snapshot() const {
    std::vector<std::string> bytes;
    for (const auto& block : blocks_)
      bytes.emplace_back(reinterpret_cast<const char*>(block->data()), block->size());
    return bytes;
  }
  void Restore(const std::vector<std::string>& bytes) {
    for (size_t i = 0; i < blocks_.size(); ++i)
      std::memcpy(blocks_[i]->data(), bytes[i].data(), bytes[i].size());
  }
  bool GuardsIntact() const {
    for (const auto& block : blocks_)
      if (!block->GuardsIntact()) return false;
    return true;
  }

 private:
  std::vector<std::unique_ptr<GuardedBytes>> blocks_;
};

// Booleans are set in every record the tests prepare: a 0x5A byte is no bool.
void ClearBools(tagNET_PROGRAMME_INFO& p) {
  p.bEnable = false;
  p.stuOrdinary.bTempletState = false;
}

// Reads `answer` in skip mode into `out`, then `nulled` (the answer with the failed values
// replaced by null) with the plain overload into the same memory as it was before: both must
// leave the same bytes. Returns the skip mode's report; the memory is left as skip mode left it.
template <typename Out>
Report SkipAgainstNulls(CallerMemory& memory, Out& out, const std::string& answer,
                        const std::string& nulled) {
  const auto before = memory.Snapshot();
  Report report(OnFailure::kSkip);
  EXPECT_EQ(report.on_failure(), OnFailure::kSkip);
  EXPECT_TRUE(deserialize(J(answer), out, report)) << answer;
  const auto skipped = memory.Snapshot();
  memory.Restore(before);
  EXPECT_NO_THROW(deserialize(J(nulled), out)) << nulled;
  EXPECT_TRUE(memory.Snapshot() == skipped) << answer;
  memory.Restore(skipped);
  EXPECT_TRUE(memory.GuardsIntact());
  return report;
}

// "kind path detail" of each failed conversion, in order.
std::vector<std::string> Failures(const Report& report) {
  std::vector<std::string> out;
  for (const gsc::Finding& f : report.findings())
    if (f.kind == FindingKind::kConversionFailed) out.push_back(f.path + " " + f.detail);
  return out;
}

constexpr char kNotInt[] = "Value is not convertible to Int.";
constexpr char kNotBool[] = "Value is not convertible to bool.";
constexpr char kNotObject[] = "in Json::Value::find(begin, end): requires objectValue or nullValue";

// A programme of one window with one text element, its "FontSize" as given.
std::string Programme(const std::string& id, const std::string& fontSize) {
  return R"({"ProgrammeID": ")" + id +
         R"(", "Enable": true, "Ordinary": {"Windows": [{"WinID": "w", "Volume": 3,
           "Elements": [{"Type": 2, "Name": "news", "Text": {"Content": "hello",
             "FontSize": )" +
         fontSize + R"(, "LineHeight": 1.5, "PlayCount": 7}}]}]}})";
}

TEST(SkipMode, ATextWhereANumberBelongsReadsAsAMissingNumberAndTheListingKeepsEveryProgramme) {
  const std::string answer = R"({"infos": {"P-1": )" + Programme("P-1", "12") + R"(, "P-2": )" +
                             Programme("P-2", "14") + R"(, "P-3": )" +
                             Programme("P-3", R"("big")") + "}}";
  const std::string nulled = R"({"infos": {"P-1": )" + Programme("P-1", "12") + R"(, "P-2": )" +
                             Programme("P-2", "14") + R"(, "P-3": )" + Programme("P-3", "null") +
                             "}}";
  CallerMemory memory;
  auto& out = memory.Record<tagNET_OUT_GET_ALL_PROGRAMMES>();
  auto* programmes = &memory.Record<tagNET_PROGRAMME_INFO>(3);
  out.nMaxInfosNum = 3;
  out.pstuInfos = programmes;
  for (int p = 0; p < 3; ++p) {
    ClearBools(programmes[p]);
    tagNET_PROGRAMME_WINDOW_INFO& window = programmes[p].stuOrdinary.stuWindows[0];
    window.nElementsBufLen = 8192;
    window.pElementsBuf = memory.Add(window.nElementsBufLen, 4);
  }
  const auto prepared = memory.Snapshot();

  // Stopping, as by default: nothing is counted.
  Report stopping;
  EXPECT_FALSE(deserialize(J(answer), out, stopping));
  EXPECT_EQ(out.nRetInfosNum, 0x5A5A5A5AU);
  memory.Restore(prepared);

  const Report report = SkipAgainstNulls(memory, out, answer, nulled);
  EXPECT_EQ(out.nRetInfosNum, 3U);
  EXPECT_EQ(Failures(report),
            std::vector<std::string>{"infos.P-3.Ordinary.Windows[0].Elements[0].Text.FontSize " +
                                     std::string(kNotInt)});
  // The steps after the failure were read.
  tagNET_TEXT_ELEMENT_INFO text;
  std::memcpy(&text, programmes[2].stuOrdinary.stuWindows[0].pElementsBuf + 132, sizeof text);
  EXPECT_EQ(text.stuText.nFontSize, 0U);
  EXPECT_EQ(text.stuText.nPlayCount, 7U);
  EXPECT_EQ(text.stuText.dbLineHeight, 1.5);
}

// A value that must be looked into (an object, the members of a collection) but is a number, or a
// value of a type a step cannot convert: read as null, whatever the step does with null (skips it,
// keeps the field, stores 0, or reads every member as null).
TEST(SkipMode, AContainerThatCannotBeEnteredOrAPresenceTestedValueReadsAsNull) {
  const struct {
    const char* answer;
    const char* nulled;
    std::vector<std::string> failures;
  } cases[] = {
      {R"({"DisplayScreenCfg": 5})",
       R"({"DisplayScreenCfg": null})",
       {"DisplayScreenCfg " + std::string(kNotObject)}},
      {R"({"DisplayScreenCfg": {"ID": "s", "AutoBright": 5, "Bright": 3}})",
       R"({"DisplayScreenCfg": {"ID": "s", "AutoBright": null, "Bright": 3}})",
       {"DisplayScreenCfg.AutoBright " + std::string(kNotObject)}},
      {R"({"DisplayScreenCfg": {"Time": [5, {"DateType": 1}], "SplitScreenList": [[1]]}})",
       R"({"DisplayScreenCfg": {"Time": [null, {"DateType": 1}], "SplitScreenList": [null]}})",
       {"DisplayScreenCfg.Time[0] " + std::string(kNotObject),
        "DisplayScreenCfg.SplitScreenList[0] " + std::string(kNotObject)}},
      {R"({"DisplayScreenCfg": {"Status": "on", "IsForeverOpen": "no", "Width": "9",
            "Time": [{"OpenTime": {}, "DateType": [], "Enable": "x", "PlayDates": [{}]}]}})",
       R"({"DisplayScreenCfg": {"Status": null, "IsForeverOpen": null, "Width": null,
            "Time": [{"OpenTime": null, "DateType": null, "Enable": null, "PlayDates": [null]}]}})",
       {"DisplayScreenCfg.Status " + std::string(kNotInt),
        "DisplayScreenCfg.IsForeverOpen " + std::string(kNotBool),
        "DisplayScreenCfg.Time[0].Enable " + std::string(kNotBool),
        "DisplayScreenCfg.Time[0].DateType " + std::string(kNotInt),
        "DisplayScreenCfg.Time[0].PlayDates[0] " + std::string(kNotInt),
        "DisplayScreenCfg.Time[0].OpenTime Type is not convertible to string",
        "DisplayScreenCfg.Width " + std::string(kNotInt)}},
      {R"({"DisplayScreenCfg": {"AutoBright": {"Time": [1, {"Sunrise": {}}], "Enable": 2}}})",
       R"({"DisplayScreenCfg": {"AutoBright": {"Time": [null, {"Sunrise": null}], "Enable": 2}}})",
       {"DisplayScreenCfg.AutoBright.Time[0] " + std::string(kNotObject),
        "DisplayScreenCfg.AutoBright.Time[1].Sunrise " + std::string(kNotInt)}},
  };
  for (const auto& c : cases) {
    CallerMemory memory;
    auto& out = memory.Record<tagNET_OUT_GET_GUIDESCREEN_CFG_BYID>();
    out.stuInfo.bIsForeverOpen = true;
    for (auto& time : out.stuInfo.stuTime) time.bEnable = true;
    out.stuInfo.stuAutoBright.bEnable = true;
    EXPECT_EQ(Failures(SkipAgainstNulls(memory, out, c.answer, c.nulled)), c.failures) << c.answer;
  }

  // {"infos": 5} reads as no records: the count is set as for a complete read.
  CallerMemory memory;
  auto& all = memory.Record<tagNET_OUT_GET_ALL_GUIDESCREEN_CFG>();
  all.nMaxInfosNum = 2;
  all.pstuInfos = &memory.Record<tagNET_GUIDESCREEN_ATTRIBUTE_INFO>(2);
  const Report report = SkipAgainstNulls(memory, all, R"({"infos": 5})", R"({"infos": null})");
  EXPECT_EQ(all.nRetInfosNum, 0U);
  EXPECT_EQ(Failures(report),
            std::vector<std::string>{
                "infos in Json::Value::getMemberNames(), value must be objectValue"});
}

TEST(SkipMode, AFailureInsideAnElementBufferLeavesTheEntryAndTheOnesAfterIt) {
  const std::string answer = R"({"Programme": {"Ordinary": {"Windows": [{"Elements": [
      7, {"Type": "text"}, {"Type": 1, "Picture": {"PlayTime": [], "EnterStyle": 2}},
      {"Type": 3, "Name": "hold", "FillerState": "no", "Note": [{"NoteInfo": 4}]}]}]}}})";
  const std::string nulled = R"({"Programme": {"Ordinary": {"Windows": [{"Elements": [
      null, {"Type": null}, {"Type": 1, "Picture": {"PlayTime": null, "EnterStyle": 2}},
      {"Type": 3, "Name": "hold", "FillerState": null, "Note": [{"NoteInfo": null}]}]}]}}})";
  CallerMemory memory;
  auto& out = memory.Record<tagNET_OUT_GET_PROGRAMME_BYID>();
  ClearBools(out.stuProgramme);
  tagNET_PROGRAMME_WINDOW_INFO& window = out.stuProgramme.stuOrdinary.stuWindows[0];
  window.nElementsBufLen = 4 * 8192;
  window.pElementsBuf = memory.Add(window.nElementsBufLen, 4);
  std::memset(window.pElementsBuf, 0, window.nElementsBufLen);  // booleans in the records
  const Report report = SkipAgainstNulls(memory, out, answer, nulled);
  const std::string at = "Programme.Ordinary.Windows[0].Elements";
  EXPECT_EQ(Failures(report), (std::vector<std::string>{
                                  at + "[0] " + kNotObject,
                                  at + "[1].Type " + kNotInt,
                                  at + "[2].Picture.PlayTime " + kNotInt,
                                  at + "[3].FillerState " + kNotBool,
                                  at + "[3].Note[0].NoteInfo " + kNotObject,
                              }));
  EXPECT_EQ(window.nElementsNum, 4U);
}

TEST(SkipMode, AFailureInAKeyedCollectionsMemberTakesItsPlaceAsANullMember) {
  const std::string answer = R"({"infos": {
      "a": 5,
      "b": {"PlanType": 1, "PlanName": "night", "Timer": {"PeriodType": "daily",
            "PlayDates": [1, "2", 3], "Programmes": [{"StartTime": [8]}]}},
      "c": {"PlanType": "timer", "PlanName": "x"},
      "d": {"PlanType": 1, "Timer": 9}}})";
  const std::string nulled = R"({"infos": {
      "a": null,
      "b": {"PlanType": 1, "PlanName": "night", "Timer": {"PeriodType": null,
            "PlayDates": [1, null, 3], "Programmes": [{"StartTime": null}]}},
      "c": {"PlanType": null, "PlanName": "x"},
      "d": {"PlanType": 1, "Timer": null}}})";
  CallerMemory memory;
  auto& out = memory.Record<tagNET_OUT_GET_ALL_PROGRAMMEPLANS>();
  out.nMaxPlanNum = 3;
  out.pstuImmePlans = &memory.Record<tagNET_IMMEDIATELY_PLAN_INFO>(3);
  out.pstuTimerPlans = &memory.Record<tagNET_TIMER_PLAN_INFO>(3);
  for (uint32_t i = 0; i < 3; ++i) {
    out.pstuImmePlans[i].bEnable = false;
    out.pstuTimerPlans[i].bOverdue = false;
    for (auto& programme : out.pstuTimerPlans[i].stuProgrammes) programme.bIsBgProgramme = false;
  }
  const Report report = SkipAgainstNulls(memory, out, answer, nulled);
  EXPECT_EQ(Failures(report), (std::vector<std::string>{
                                  "infos.a " + std::string(kNotObject),
                                  "infos.b.Timer.PeriodType " + std::string(kNotInt),
                                  "infos.b.Timer.PlayDates[1] " + std::string(kNotInt),
                                  "infos.b.Timer.Programmes[0].StartTime " +
                                      std::string("Type is not convertible to string"),
                                  "infos.c.PlanType " + std::string(kNotInt),
                                  "infos.d.Timer " + std::string(kNotObject),
                              }));
  // "a" and "c" read as plans without "PlanType": immediate ones.
  EXPECT_EQ(out.nRetImmePlanNum, 2U);
  EXPECT_EQ(out.nRetTimerPlanNum, 2U);
}

// Findings before the first failure are those of the stop mode, which ends with the failure;
// skip mode then goes on and the later findings follow in the order met.
TEST(SkipMode, FindingsKeepTheOrderMetAndStartWithThoseOfTheStopMode) {
  const Json::Value answer = J(R"({"Programme": {"ProgrammeID": "P", "Extra": 1,
      "Enable": "yes", "Ordinary": {"Description": 5, "TempletState": []}}})");
  tagNET_OUT_GET_PROGRAMME_BYID stopped{};
  tagNET_OUT_GET_PROGRAMME_BYID skipped{};
  Report stop;
  Report skip(OnFailure::kSkip);
  EXPECT_FALSE(deserialize(answer, stopped, stop));
  EXPECT_TRUE(deserialize(answer, skipped, skip));
  ASSERT_EQ(stop.size(), 2U);
  ASSERT_EQ(skip.size(), 4U);
  for (size_t i = 0; i < stop.size(); ++i) {
    EXPECT_EQ(skip.findings()[i].kind, stop.findings()[i].kind);
    EXPECT_EQ(skip.findings()[i].path, stop.findings()[i].path);
    EXPECT_EQ(skip.findings()[i].detail, stop.findings()[i].detail);
  }
  EXPECT_EQ(skip.str(),
            "Programme.Extra: unknown-member: unknown member, ignored: number 1\n"
            "Programme.Enable: conversion-failed: Value is not convertible to bool.\n"
            "Programme.Ordinary.TempletState: conversion-failed: Value is not convertible to "
            "bool.\n"
            "Programme.Ordinary.Description: value-converted: number 5 read as the text \"5\"\n");
}

}  // namespace
