// The C interface over JSON text: what gsc_serialize_json and gsc_deserialize_json store, the
// status and message of every way they fail, and the operation list. Output buffers end in guard
// bytes.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <set>
#include <string>

#include "capi/boundary.h"
#include "guidescreen_codec.h"
#include "support/fixtures.h"

namespace {

using gsc::test::GuardedBytes;
using gsc::test::SetText;

tagNET_IN_GET_GUIDESCREEN_CFG_BYID ScreenRequest(const char* id) {
  tagNET_IN_GET_GUIDESCREEN_CFG_BYID in = {};
  in.dwSize = sizeof in;
  SetText(in.szScreenID, id);
  return in;
}

// Serializes into a guarded buffer of `capacity` bytes; the status, the text and the length.
struct Written {
  int status;
  std::string text;
  size_t length;
  bool guards;
};
Written Serialize(const char* operation, const void* record, size_t capacity) {
  GuardedBytes buffer(capacity, 0, 0xEE);
  size_t length = 12345;
  char* json = capacity > 0 ? reinterpret_cast<char*>(buffer.data()) : nullptr;
  const int status = gsc_serialize_json(operation, record, json, capacity, &length);
  return {status, json != nullptr ? std::string(json, strnlen(json, capacity)) : std::string(),
          length, buffer.GuardsIntact()};
}

// Deserializes `text` with a guarded message buffer of `capacity` bytes.
struct Read {
  int status;
  std::string message;
  bool guards;
};
template <typename Out>
Read Deserialize(const char* operation, const std::string& text, Out& out, size_t capacity = 256) {
  GuardedBytes message(capacity, 0, 0xEE);
  char* at = reinterpret_cast<char*>(message.data());
  const int status = gsc_deserialize_json(operation, text.data(), text.size(), &out,
                                          capacity > 0 ? at : nullptr, capacity);
  return {status, capacity > 0 ? std::string(at, strnlen(at, capacity)) : std::string(),
          message.GuardsIntact()};
}

TEST(SerializeJson, StoresTheTerminatedTextAndItsLength) {
  const auto in = ScreenRequest("hall-1");
  const Written written = Serialize("GET_GUIDESCREEN_CFG_BYID", &in, 64);
  EXPECT_EQ(written.status, GSC_STATUS_OK);
  EXPECT_EQ(written.text, R"({"ScreenID":"hall-1"})");
  EXPECT_EQ(written.length, written.text.size());
  EXPECT_TRUE(written.guards);
}

TEST(SerializeJson, ABufferWithoutRoomForTheTerminatorGetsAnEmptyTextAndTheLengthNeeded) {
  const auto in = ScreenRequest("hall-1");
  const size_t needed = std::strlen(R"({"ScreenID":"hall-1"})");
  for (const size_t capacity : {needed, size_t{1}, size_t{0}}) {
    const Written written = Serialize("GET_GUIDESCREEN_CFG_BYID", &in, capacity);
    EXPECT_EQ(written.status, GSC_STATUS_BUFFER_TOO_SMALL) << capacity;
    EXPECT_EQ(written.text, "") << capacity;
    EXPECT_EQ(written.length, needed) << capacity;
    EXPECT_TRUE(written.guards) << capacity;
  }
  EXPECT_EQ(Serialize("GET_GUIDESCREEN_CFG_BYID", &in, needed + 1).status, GSC_STATUS_OK);
}

TEST(SerializeJson, NumbersThatAreNotFiniteAreWrittenAsNull) {
  const auto record = std::make_unique<tagNET_IN_ADD_ONE_PROGRAMME>();
  tagNET_IN_ADD_ONE_PROGRAMME& in = *record;
  in.dwSize = sizeof in;
  unsigned char buffer[GSC_ELEMENT_BUFFER_SIZE(1)];
  tagNET_PROGRAMME_WINDOW_INFO& window = in.stuInfo.stuOrdinary.stuWindows[0];
  in.stuInfo.stuOrdinary.nWindowsNum = 1;
  window.pElementsBuf = buffer;
  window.nElementsNum = 1;
  for (const double height : {std::nan(""), HUGE_VAL, -HUGE_VAL, 1.5}) {
    tagNET_TEXT_ELEMENT_INFO text = {};
    text.stuText.dbLineHeight = height;
    uint32_t used = 0;
    ASSERT_EQ(gsc_element_append(buffer, sizeof buffer, &used, EM_ELEMENT_TYPE_TEXT, &text), 0);
    const Written written = Serialize("ADD_ONE_PROGRAMME", &in, 4096);
    EXPECT_EQ(written.status, GSC_STATUS_OK);
    const std::string expected =
        std::isfinite(height) ? R"("LineHeight":1.5)" : R"("LineHeight":null)";
    EXPECT_NE(written.text.find(expected), std::string::npos) << written.text;
  }
}

TEST(SerializeJson, RefusesUnknownOperationsWrongSizesAndMissingArguments) {
  auto in = ScreenRequest("x");
  auto wrong = ScreenRequest("x");
  wrong.dwSize = sizeof wrong + 4;
  alignas(8) unsigned char shifted[sizeof in + 1];
  std::memcpy(shifted + 1, &in, sizeof in);
  const struct {
    const char* operation;
    const void* record;
    int status;
  } cases[] = {
      {"GET_SCREEN", &in, GSC_STATUS_UNKNOWN_OPERATION},
      {nullptr, &in, GSC_STATUS_INVALID_ARGUMENT},
      {"GET_GUIDESCREEN_CFG_BYID", nullptr, GSC_STATUS_INVALID_ARGUMENT},
      {"GET_GUIDESCREEN_CFG_BYID", shifted + 1, GSC_STATUS_INVALID_ARGUMENT},
      {"GET_GUIDESCREEN_CFG_BYID", &wrong, GSC_STATUS_WRONG_RECORD_SIZE},
      // An output record's size is not an input record's.
      {"GET_ALL_GUIDESCREEN_CFG", &in, GSC_STATUS_WRONG_RECORD_SIZE},
  };
  for (const auto& c : cases) {
    const Written written = Serialize(c.operation, c.record, 64);
    EXPECT_EQ(written.status, c.status) << (c.operation ? c.operation : "null");
    EXPECT_EQ(written.text, "");
    EXPECT_EQ(written.length, 0U);
  }
  size_t length = 0;
  EXPECT_EQ(gsc_serialize_json("GET_GUIDESCREEN_CFG_BYID", &in, nullptr, 8, &length),
            GSC_STATUS_INVALID_ARGUMENT);
  // Names are taken in any case.
  EXPECT_EQ(Serialize("get_guidescreen_CFG_byid", &in, 64).text, R"({"ScreenID":"x"})");
}

TEST(DeserializeJson, MergesTheAnswerAsDeserializeDoesAndEmptiesTheMessage) {
  // A zeroed record of this run: one kept from an earlier run would already hold the answer.
  const auto record = std::make_unique<tagNET_OUT_GET_GUIDESCREEN_CFG_BYID>();
  tagNET_OUT_GET_GUIDESCREEN_CFG_BYID& out = *record;
  out.dwSize = sizeof out;
  out.stuInfo.nTimeNum = 3;  // kept: the answer has no "Time"
  const Read read = Deserialize("GET_GUIDESCREEN_CFG_BYID",
                                R"({"DisplayScreenCfg": {"ID": "hall-1", "Width": 1920}})", out);
  EXPECT_EQ(read.status, GSC_STATUS_OK);
  EXPECT_EQ(read.message, "");
  EXPECT_STREQ(out.stuInfo.szID, "hall-1");
  EXPECT_EQ(out.stuInfo.nWidth, 1920U);
  EXPECT_EQ(out.stuInfo.nTimeNum, 3U);
}

TEST(DeserializeJson, MalformedTextIsRefusedWithWhereAndWhy) {
  const struct {
    const char* text;
    const char* message;
  } cases[] = {
      {"{\"infos\": \n", "malformed JSON: line 2, column 1: "},
      {"{} {}", "malformed JSON: line 1, column 4: "},  // a second document
      {"{\"a\": NaN}", "malformed JSON: line 1, column 7: "},
      {"", "malformed JSON: line 1, column 1: "},
  };
  for (const auto& c : cases) {
    tagNET_OUT_DEL_PROGRAMMES out = {sizeof out};
    const Read read = Deserialize("DEL_PROGRAMMES", c.text, out);
    EXPECT_EQ(read.status, GSC_STATUS_MALFORMED_JSON) << c.text;
    EXPECT_EQ(read.message.rfind(c.message, 0), 0U) << read.message;
    EXPECT_TRUE(read.guards);
  }
  // Nesting beyond the reader's limit is refused too, without an exception.
  tagNET_OUT_DEL_PROGRAMMES out = {sizeof out};
  EXPECT_EQ(Deserialize("DEL_PROGRAMMES", std::string(5000, '['), out).status,
            GSC_STATUS_MALFORMED_JSON);
}

TEST(DeserializeJson, RefusesWhatALenientParserWouldTakeAndLeavesTheRecordUntouched) {
  const struct {
    const char* text;
    const char* message;
  } cases[] = {
      {"{\"ProgrammeID\": \"P\"} // kept", "line 1, column 22: unexpected text after the value"},
      {"/* a */ {\"ProgrammeID\": \"P\"}",
       "line 1, column 1: unexpected character: a value was expected"},
      {"{\"ProgrammeID\": \"P\",}", "line 1, column 21: a member name was expected"},
      {"{\"ProgrammeID\": [1,]}", "line 1, column 20: unexpected character: a value was expected"},
      {"{\"ProgrammeID\": 012}", "line 1, column 17: invalid number: leading zero"},
      {"{\"ProgrammeID\": -}", "line 1, column 18: invalid number: a digit was expected"},
      {"{\"ProgrammeID\": +1}", "line 1, column 17: unexpected character: a value was expected"},
      {"{\"ProgrammeID\": .5}", "line 1, column 17: unexpected character: a value was expected"},
      {"{\"ProgrammeID\": 1.}", "line 1, column 19: invalid number: a digit must follow '.'"},
      {"{\"ProgrammeID\": 1e400}", "line 1, column 17: number out of range"},
      {"{\"ProgrammeID\": \"P\xC0\xAF\"}", "line 1, column 19: invalid UTF-8"},
      {"{\"ProgrammeID\": \"\\ud800\"}", "line 1, column 18: lone surrogate escape"},
      {"{\"ProgrammeID\": \"a\tb\"}",
       "line 1, column 19: control character in a text: it must be escaped"},
      {"{'ProgrammeID': 'P'}", "line 1, column 2: a member name was expected"},
      {"{ProgrammeID: \"P\"}", "line 1, column 2: a member name was expected"},
      {"\n\n  {\"ProgrammeID\" \"P\"}",
       "line 3, column 18: ':' was expected after the member name"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    tagNET_OUT_ADD_ONE_PROGRAMME out = {sizeof out, {}};
    std::memset(out.szProgrammeID, 'x', sizeof out.szProgrammeID - 1);
    const tagNET_OUT_ADD_ONE_PROGRAMME before = out;
    const Read read = Deserialize("ADD_ONE_PROGRAMME", c.text, out);
    EXPECT_EQ(read.status, GSC_STATUS_MALFORMED_JSON);
    EXPECT_EQ(read.message, std::string("malformed JSON: ") + c.message);
    EXPECT_EQ(std::memcmp(&out, &before, sizeof out), 0);
  }
  // A leading byte order mark is skipped, one after white space is not.
  tagNET_OUT_ADD_ONE_PROGRAMME out = {sizeof out, {}};
  EXPECT_EQ(Deserialize("ADD_ONE_PROGRAMME", "\xEF\xBB\xBF{\"ProgrammeID\": \"P\"}", out).status,
            GSC_STATUS_OK);
  EXPECT_STREQ(out.szProgrammeID, "P");
  EXPECT_EQ(Deserialize("ADD_ONE_PROGRAMME", " \xEF\xBB\xBF{}", out).message,
            "malformed JSON: line 1, column 2: unexpected character: a value was expected");
}

TEST(DeserializeJson, AFailedConversionGivesItsPathAndJsonCppsReasonAndLeavesWhatWasRead) {
  const auto record = std::make_unique<tagNET_OUT_GET_GUIDESCREEN_CFG_BYID>();
  tagNET_OUT_GET_GUIDESCREEN_CFG_BYID& out = *record;
  out.dwSize = sizeof out;
  const Read read = Deserialize("GET_GUIDESCREEN_CFG_BYID",
                                R"({"DisplayScreenCfg": {"ID": "hall-1", "Bright": {}}})", out);
  EXPECT_EQ(read.status, GSC_STATUS_CONVERSION_FAILED);
  EXPECT_EQ(read.message,
            "failed conversion: DisplayScreenCfg.Bright: Value is not convertible to Int.");
  EXPECT_STREQ(out.stuInfo.szID, "hall-1");
  // A result that is no object fails the same way.
  tagNET_OUT_ADD_PROGRAMMEPLAN plan = {sizeof plan, {}};
  EXPECT_EQ(Deserialize("ADD_IMME_PROGRAMMEPLAN", "[1]", plan).status,
            GSC_STATUS_CONVERSION_FAILED);
}

TEST(DeserializeJson, TheMessageIsCutToItsCapacityAndAlwaysTerminated) {
  tagNET_OUT_DEL_PROGRAMMES wrong = {sizeof wrong + 1};
  for (const size_t capacity : {size_t{1}, size_t{7}, size_t{200}}) {
    const Read read = Deserialize("DEL_PROGRAMMES", "{}", wrong, capacity);
    EXPECT_EQ(read.status, GSC_STATUS_WRONG_RECORD_SIZE);
    EXPECT_EQ(
        read.message,
        std::string(gsc_status_message(GSC_STATUS_WRONG_RECORD_SIZE)).substr(0, capacity - 1));
    EXPECT_TRUE(read.guards) << capacity;
  }
  EXPECT_EQ(Deserialize("DEL_PROGRAMMES", "{}", wrong, 0).status, GSC_STATUS_WRONG_RECORD_SIZE);
  // A cut never splits a UTF-8 character of the detail.
  const std::string detail = "caf\xC3\xA9 \xE2\x82\xAC";  // "café €"
  const std::string whole = "failed conversion: " + detail;
  for (size_t capacity = 1; capacity <= whole.size() + 1; ++capacity) {
    GuardedBytes out(capacity);
    char* text = reinterpret_cast<char*>(out.data());
    gsc::capi::WriteMessage(text, capacity, GSC_STATUS_CONVERSION_FAILED, detail);
    const std::string message(text);
    EXPECT_EQ(message, whole.substr(0, message.size())) << capacity;
    const size_t kept = message.size();
    EXPECT_TRUE(kept == whole.size() || (static_cast<unsigned char>(whole[kept]) & 0xC0) != 0x80)
        << "split at " << kept;
    EXPECT_GE(kept + 3, std::min(capacity - 1, whole.size())) << capacity;
    EXPECT_TRUE(out.GuardsIntact()) << capacity;
  }
}

TEST(DeserializeJson, RefusesUnknownOperationsWrongSizesAndMissingArguments) {
  tagNET_OUT_DEL_PROGRAMMES out = {sizeof out};
  tagNET_OUT_DEL_PROGRAMMES wrong = {0};
  EXPECT_EQ(Deserialize("DEL_PROGRAMME", "{}", out).status, GSC_STATUS_UNKNOWN_OPERATION);
  EXPECT_EQ(Deserialize("DEL_PROGRAMME", "{}", out).message,
            "unknown operation: 'DEL_PROGRAMME'; did you mean DEL_PROGRAMMES?");
  EXPECT_EQ(Deserialize("del_programmes", "{}", out).status, GSC_STATUS_OK);
  EXPECT_EQ(Deserialize("DEL_PROGRAMMES", "{}", wrong).status, GSC_STATUS_WRONG_RECORD_SIZE);
  char message[64];
  EXPECT_EQ(gsc_deserialize_json("DEL_PROGRAMMES", nullptr, 2, &out, message, sizeof message),
            GSC_STATUS_INVALID_ARGUMENT);
  EXPECT_EQ(gsc_deserialize_json("DEL_PROGRAMMES", "{}", 2, nullptr, message, sizeof message),
            GSC_STATUS_INVALID_ARGUMENT);
  EXPECT_STREQ(message, "invalid argument");
  EXPECT_EQ(gsc_deserialize_json(nullptr, "{}", 2, &out, nullptr, 0), GSC_STATUS_INVALID_ARGUMENT);
  // The text needs no terminator: only `length` bytes are read.
  EXPECT_EQ(gsc_deserialize_json("DEL_PROGRAMMES", "{}garbage", 2, &out, nullptr, 0),
            GSC_STATUS_OK);
}

TEST(CInterface, StatusesHaveDistinctMessages) {
  std::set<std::string> messages;
  for (int status = GSC_STATUS_OK; status <= GSC_STATUS_INVALID_FIELDS; ++status)
    EXPECT_TRUE(messages.insert(gsc_status_message(status)).second) << status;
  EXPECT_STREQ(gsc_status_message(GSC_STATUS_INVALID_FIELDS + 1), "unknown status");
  EXPECT_STREQ(gsc_status_message(-1), "unknown status");
}

TEST(CInterface, ListsSeventeenOperationsWithTheirRecordSizes) {
  ASSERT_EQ(gsc_operation_count(), 17U);
  std::set<std::string> names;
  for (size_t i = 0; i < gsc_operation_count(); ++i) {
    const char* name = gsc_operation_name(i);
    ASSERT_NE(name, nullptr);
    EXPECT_TRUE(names.insert(name).second) << name;
    EXPECT_GE(gsc_request_size(name), sizeof(uint32_t)) << name;
    EXPECT_GE(gsc_answer_size(name), sizeof(uint32_t)) << name;
  }
  EXPECT_EQ(gsc_operation_name(17), nullptr);
  EXPECT_EQ(gsc_request_size("SET_GD_STATUS"), sizeof(tagNET_IN_SET_GD_STATUS));
  EXPECT_EQ(gsc_answer_size("GET_PROGRAMMEPLAN_BYID"), sizeof(tagNET_OUT_GET_PROGRAMMEPLAN_BYID));
  EXPECT_EQ(gsc_request_size("NOPE"), 0U);
  EXPECT_EQ(gsc_answer_size(nullptr), 0U);
}

TEST(CInterface, TheLoadedLibraryHasTheHeadersVersion) {
  EXPECT_STREQ(gsc_version(), GSC_VERSION_STRING);
  EXPECT_EQ(std::string(GSC_VERSION_STRING), std::to_string(GSC_VERSION_MAJOR) + "." +
                                                 std::to_string(GSC_VERSION_MINOR) + "." +
                                                 std::to_string(GSC_VERSION_PATCH));
}

}  // namespace
