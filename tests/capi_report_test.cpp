// Findings through the C interface: the gsc_report handle filled by the reporting entry points.
#include <cstring>
#include <string>
#include <vector>

#include "capi/report_handle.h"
#include "guidescreen_codec/capi.h"
#include "support/fixtures.h"

namespace {

using gsc::test::GuardedBytes;
using gsc::test::J;

struct ReportHandle {
  ReportHandle() : report(gsc_report_new()) {}
  ~ReportHandle() { gsc_report_free(report); }
  ReportHandle(const ReportHandle&) = delete;
  ReportHandle& operator=(const ReportHandle&) = delete;
  gsc_report* report;
};

// "kind path: detail" of every finding, read through the handle.
std::vector<std::string> Findings(const gsc_report* report) {
  std::vector<std::string> out;
  for (size_t i = 0; i < gsc_report_count(report); ++i)
    out.push_back(std::string(gsc_report_kind(report, i)) + " " + gsc_report_path(report, i) +
                  ": " + gsc_report_detail(report, i));
  return out;
}

std::string ReportJson(const gsc_report* report) {
  size_t length = 0;
  EXPECT_EQ(gsc_report_json(report, nullptr, 0, &length), GSC_STATUS_BUFFER_TOO_SMALL);
  std::string text(length + 1, '\0');
  EXPECT_EQ(gsc_report_json(report, &text[0], text.size(), &length), GSC_STATUS_OK);
  text.resize(length);
  return text;
}

constexpr char kThreeProgrammes[] = R"({"infos": {
    "P-1": {"ProgrammeID": "P-1"},
    "P-2": {"ProgrammeID": "P-2", "Unknown": true},
    "P-3": {"ProgrammeID": "P-3", "Enable": "yes"}}})";

TEST(ReportHandle, StopModeEndsWithTheFailureAndSkipModeGoesOnToTheEnd) {
  ReportHandle handle;
  ASSERT_NE(handle.report, nullptr);
  static tagNET_PROGRAMME_INFO programmes[3];
  tagNET_OUT_GET_ALL_PROGRAMMES out{};
  out.dwSize = sizeof out;
  out.nMaxInfosNum = 3;
  out.pstuInfos = programmes;
  char message[256];

  EXPECT_EQ(gsc_deserialize_json_report("GET_ALL_PROGRAMMES", kThreeProgrammes,
                                        sizeof kThreeProgrammes - 1, &out, 0, handle.report,
                                        message, sizeof message),
            GSC_STATUS_CONVERSION_FAILED);
  EXPECT_STREQ(message, "failed conversion: infos.P-3.Enable: Value is not convertible to bool.");
  EXPECT_EQ(Findings(handle.report),
            (std::vector<std::string>{
                "unknown-member infos.P-2.Unknown: unknown member, ignored: true",
                "conversion-failed infos.P-3.Enable: Value is not convertible to bool."}));
  EXPECT_EQ(out.nRetInfosNum, 0U);

  EXPECT_EQ(gsc_deserialize_json_report("get_all_programmes", kThreeProgrammes,
                                        sizeof kThreeProgrammes - 1, &out, GSC_SKIP_FAILURES,
                                        handle.report, message, sizeof message),
            GSC_STATUS_OK);
  EXPECT_STREQ(message, "");
  EXPECT_EQ(gsc_report_count(handle.report), 2U);  // the report was cleared first
  EXPECT_EQ(out.nRetInfosNum, 3U);
  EXPECT_STREQ(programmes[2].szProgrammeID, "P-3");
  EXPECT_FALSE(programmes[2].bEnable);  // read as null
  EXPECT_EQ(gsc_report_kind(handle.report, 2), nullptr);
  EXPECT_EQ(gsc_report_path(handle.report, 2), nullptr);
  EXPECT_EQ(gsc_report_detail(handle.report, 2), nullptr);

  // Without a report, the same reading; flags the library does not know are refused.
  EXPECT_EQ(gsc_deserialize_json_report("GET_ALL_PROGRAMMES", kThreeProgrammes,
                                        sizeof kThreeProgrammes - 1, &out, GSC_SKIP_FAILURES,
                                        nullptr, nullptr, 0),
            GSC_STATUS_OK);
  EXPECT_EQ(gsc_deserialize_json_report("GET_ALL_PROGRAMMES", "{}", 2, &out, 2, handle.report,
                                        message, sizeof message),
            GSC_STATUS_INVALID_ARGUMENT);
  EXPECT_EQ(gsc_report_count(handle.report), 0U);
}

TEST(ReportHandle, AnUnknownOperationLeavesItEmptyAndMalformedTextIsItsOneFinding) {
  ReportHandle handle;
  tagNET_OUT_ADD_PROGRAMMEPLAN out{};
  out.dwSize = sizeof out;
  char message[128];
  const struct {
    const char* operation;
    const char* json;
    int status;
    const char* message;
    std::vector<std::string> findings;
  } cases[] = {
      {"ADD_PROGRAMMEPLAN",
       "{}",
       GSC_STATUS_UNKNOWN_OPERATION,
       "unknown operation: 'ADD_PROGRAMMEPLAN'; did you mean DEL_PROGRAMMEPLANS or "
       "ADD_IMME_PROGRAMMEPLAN?",
       {}},
      {"ADD_IMME_PROGRAMMEPLAN",
       "{\"ProgrammePlanID\": ",
       GSC_STATUS_MALFORMED_JSON,
       "malformed JSON: line 1, column 21: unexpected end of text: a value was expected",
       {"json-malformed : line 1, column 21: unexpected end of text: a value was expected"}},
      // Malformed before any value could be converted, in skip mode too: nothing was read.
      {"ADD_IMME_PROGRAMMEPLAN",
       "{\"ProgrammePlanID\": {}, }",
       GSC_STATUS_MALFORMED_JSON,
       "malformed JSON: line 1, column 25: a member name was expected",
       {"json-malformed : line 1, column 25: a member name was expected"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.json);
    EXPECT_EQ(
        gsc_deserialize_json_report(c.operation, c.json, std::strlen(c.json), &out,
                                    GSC_SKIP_FAILURES, handle.report, message, sizeof message),
        c.status);
    EXPECT_STREQ(message, c.message);
    EXPECT_EQ(Findings(handle.report), c.findings);
  }
  EXPECT_STREQ(out.szProgrammePlanID, "");
}

TEST(ReportHandle, SerializeReportsWhatTheRequestCouldNotSend) {
  ReportHandle handle;
  tagNET_IN_DEL_PROGRAMMEPLANS in{};
  in.dwSize = sizeof in;
  in.nProgrammePlanIDListNum = 33;
  char json[4096];
  size_t length = 0;
  EXPECT_EQ(gsc_serialize_json_report("DEL_PROGRAMMEPLANS", &in, json, sizeof json, &length,
                                      handle.report),
            GSC_STATUS_OK);
  EXPECT_EQ(Findings(handle.report),
            std::vector<std::string>{"count-beyond-capacity nProgrammePlanIDListNum: count 33, "
                                     "capacity 32: 1 not sent"});
  // The request is the one gsc_serialize_json writes.
  char plain[4096];
  EXPECT_EQ(gsc_serialize_json("DEL_PROGRAMMEPLANS", &in, plain, sizeof plain, nullptr),
            GSC_STATUS_OK);
  EXPECT_STREQ(json, plain);
}

TEST(ReportHandle, JsonIsValidUtf8WithTheSizeProtocolOfTheOtherTexts) {
  ReportHandle handle;
  EXPECT_EQ(ReportJson(handle.report), "[]");
  // A member name with a quote and a control character, escaped in the answer.
  const std::string answer = "{\"ProgrammeID\": \"P\", \"a\\\"b\\u0001\xc3\xa9\": 1}";
  tagNET_OUT_ADD_ONE_PROGRAMME out{};
  out.dwSize = sizeof out;
  ASSERT_EQ(gsc_deserialize_json_report("ADD_ONE_PROGRAMME", answer.data(), answer.size(), &out, 0,
                                        handle.report, nullptr, 0),
            GSC_STATUS_OK);
  std::string text = ReportJson(handle.report);
  Json::Value findings = J(text);
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0]["kind"].asString(), "unknown-member");
  EXPECT_EQ(findings[0]["path"].asString(), "[\"a\\\"b\\u0001\xc3\xa9\"]");
  EXPECT_EQ(findings[0]["detail"].asString(), "unknown member, ignored: number 1");
  // Answers that are not UTF-8 are refused before anything is read, so a byte that is not UTF-8
  // can only reach a report by another way; the JSON still holds U+FFFD in its place.
  handle.report->report.add(gsc::FindingKind::kUnknownMember, "a\xff\xc3\xa9", "b\xc3");
  text = ReportJson(handle.report);
  findings = J(text);
  ASSERT_EQ(findings.size(), 2U);
  EXPECT_EQ(findings[1]["path"].asString(), "a\xef\xbf\xbd\xc3\xa9");
  EXPECT_EQ(findings[1]["detail"].asString(), "b\xef\xbf\xbd");

  // Too small: an empty text and the length needed; nothing past the capacity.
  GuardedBytes small(text.size());
  size_t length = 0;
  EXPECT_EQ(
      gsc_report_json(handle.report, reinterpret_cast<char*>(small.data()), small.size(), &length),
      GSC_STATUS_BUFFER_TOO_SMALL);
  EXPECT_EQ(length, text.size());
  EXPECT_EQ(small.data()[0], 0);
  EXPECT_TRUE(small.GuardsIntact());
  EXPECT_EQ(gsc_report_json(nullptr, nullptr, 0, &length), GSC_STATUS_INVALID_ARGUMENT);
  EXPECT_EQ(gsc_report_count(nullptr), 0U);
  EXPECT_EQ(gsc_report_kind(nullptr, 0), nullptr);
  gsc_report_free(nullptr);
}

TEST(OperationNames, AreTakenInAnyCaseAndTheClosestAreSuggested) {
  EXPECT_STREQ(gsc_operation_lookup("Get_All_Programmes"), "GET_ALL_PROGRAMMES");
  EXPECT_EQ(gsc_operation_lookup("GET_ALL_PROGRAMS"), nullptr);
  EXPECT_EQ(gsc_operation_lookup(nullptr), nullptr);
  EXPECT_STREQ(gsc_operation_suggestion("GET_ALL_PROGRAMS", 0), "GET_ALL_PROGRAMMES");
  EXPECT_STREQ(gsc_operation_suggestion("plans", 1), "DEL_PROGRAMMEPLANS");
  EXPECT_EQ(gsc_operation_suggestion("plans", 2), nullptr);
  EXPECT_EQ(gsc_operation_suggestion("GET_ALL_PROGRAMMES", 0), nullptr);  // it names one
  EXPECT_EQ(gsc_operation_suggestion("everything", 0), nullptr);
}

}  // namespace
