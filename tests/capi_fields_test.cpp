// The field-named form through the C interface: forms to requests, answers to forms, and forms in
// and out of a caller's own records and storage, with the size protocol and every way they fail.
// Output buffers and storage end in guard bytes.
#include <cstring>
#include <string>
#include <vector>

#include "describe/operations_table.h"
#include "guidescreen_codec.h"
#include "support/fixtures.h"

namespace {

using gsc::test::GuardedBytes;

// A call's status, the text it wrote, the length it gave and the message.
struct Out {
  int status = -1;
  std::string text;
  size_t length = 0;
  std::string message;
  bool guards = false;
};

Out Encode(const char* op, const std::string& form, size_t capacity = 1 << 16,
           gsc_report* report = nullptr) {
  GuardedBytes json(capacity, 0, 0xEE);
  char message[256];
  Out out;
  char* at = capacity > 0 ? reinterpret_cast<char*>(json.data()) : nullptr;
  out.status = gsc_encode_fields(op, form.data(), form.size(), at, capacity, &out.length, report,
                                 message, sizeof message);
  if (at != nullptr) out.text = std::string(at, strnlen(at, capacity));
  out.message = message;
  out.guards = json.GuardsIntact();
  return out;
}

Out Decode(const char* op, const std::string& answer, uint32_t capacity = GSC_ROOM_FOR_ALL,
           unsigned flags = 0, gsc_report* report = nullptr, size_t room = 1 << 20) {
  GuardedBytes fields(room, 0, 0xEE);
  char message[256];
  Out out;
  char* at = room > 0 ? reinterpret_cast<char*>(fields.data()) : nullptr;
  out.status = gsc_decode_fields(op, answer.data(), answer.size(), capacity, GSC_ROOM_FOR_ALL,
                                 flags, at, room, &out.length, report, message, sizeof message);
  if (at != nullptr) out.text = std::string(at, strnlen(at, room));
  out.message = message;
  out.guards = fields.GuardsIntact();
  return out;
}

std::string ToFields(const char* op, int which, const void* record, unsigned flags = 0) {
  std::vector<char> text(1 << 20);
  size_t length = 0;
  EXPECT_EQ(GSC_STATUS_OK,
            gsc_record_to_fields(op, which, record, flags, text.data(), text.size(), &length));
  return std::string(text.data(), length);
}

// A record of `op` filled from `form` in caller memory: the record and its storage, guarded.
struct Filled {
  int status;
  size_t used;
  std::string message;
  GuardedBytes record;
  GuardedBytes storage;
};
Filled FromFields(const char* op, int which, const std::string& form, size_t storage_size,
                  unsigned char fill = 0x5A) {
  const size_t size = which == GSC_REQUEST_RECORD ? gsc_request_size(op) : gsc_answer_size(op);
  Filled filled{-1, 0, "", GuardedBytes(size, 0, fill), GuardedBytes(storage_size, 0, fill)};
  char message[256];
  filled.status = gsc_record_from_fields(op, which, form.data(), form.size(), filled.record.data(),
                                         size, storage_size > 0 ? filled.storage.data() : nullptr,
                                         storage_size, &filled.used, message, sizeof message);
  filled.message = message;
  return filled;
}

// Every operation: a request from a form is what serialize writes for the record the same form
// fills in caller memory, and the form read back from that record is the form again.
TEST(FieldForms, EncodeWritesWhatSerializeWritesForTheRecordTheFormFills) {
  for (const gsc::fields::Operation& op : gsc::fields::Operations()) {
    SCOPED_TRACE(op.name);
    const Out encoded = Encode(op.name, op.request_sample);
    ASSERT_EQ(GSC_STATUS_OK, encoded.status) << encoded.message;
    EXPECT_TRUE(encoded.guards);
    EXPECT_EQ(encoded.text.size(), encoded.length);

    const Filled probe = FromFields(op.name, GSC_REQUEST_RECORD, op.request_sample, 0);
    ASSERT_TRUE(probe.status == GSC_STATUS_OK || probe.status == GSC_STATUS_BUFFER_TOO_SMALL);
    Filled filled = FromFields(op.name, GSC_REQUEST_RECORD, op.request_sample, probe.used);
    ASSERT_EQ(GSC_STATUS_OK, filled.status) << filled.message;
    EXPECT_EQ(probe.used, filled.used);
    EXPECT_TRUE(filled.record.GuardsIntact() && filled.storage.GuardsIntact());
    std::vector<char> json(1 << 16);
    size_t length = 0;
    ASSERT_EQ(GSC_STATUS_OK,
              gsc_serialize_json(op.name, filled.record.data(), json.data(), json.size(), &length));
    EXPECT_EQ(encoded.text, std::string(json.data(), length));

    const std::string form = ToFields(op.name, GSC_REQUEST_RECORD, filled.record.data());
    Filled again = FromFields(op.name, GSC_REQUEST_RECORD, form, filled.used);
    ASSERT_EQ(GSC_STATUS_OK, again.status) << again.message;
    EXPECT_EQ(form, ToFields(op.name, GSC_REQUEST_RECORD, again.record.data()));
  }
}

// Every operation: the form of an answer, read back into a caller's output record, gives the same
// form; and it is what deserialize_json leaves in a record prepared with the same room.
TEST(FieldForms, DecodedFormsFillOutputRecordsThatShowTheSameForm) {
  for (const gsc::fields::Operation& op : gsc::fields::Operations()) {
    SCOPED_TRACE(op.name);
    const Out decoded = Decode(op.name, op.answer_sample);
    ASSERT_EQ(GSC_STATUS_OK, decoded.status) << decoded.message;
    EXPECT_TRUE(decoded.guards);
    const Filled probe = FromFields(op.name, GSC_ANSWER_RECORD, decoded.text, 0);
    Filled filled = FromFields(op.name, GSC_ANSWER_RECORD, decoded.text, probe.used);
    ASSERT_EQ(GSC_STATUS_OK, filled.status) << filled.message;
    EXPECT_EQ(decoded.text, ToFields(op.name, GSC_ANSWER_RECORD, filled.record.data()));
  }
}

TEST(FieldForms, StorageThatIsTooSmallLeavesRecordAndStorageUntouched) {
  const gsc::fields::Operation& op = *gsc::fields::FindOperation("ADD_ONE_PROGRAMME");
  const Filled probe = FromFields(op.name, GSC_REQUEST_RECORD, op.request_sample, 0);
  ASSERT_EQ(GSC_STATUS_BUFFER_TOO_SMALL, probe.status);
  ASSERT_GT(probe.used, 0u);
  Filled short_by_one = FromFields(op.name, GSC_REQUEST_RECORD, op.request_sample, probe.used - 1);
  EXPECT_EQ(GSC_STATUS_BUFFER_TOO_SMALL, short_by_one.status);
  EXPECT_EQ(probe.used, short_by_one.used);
  const std::vector<unsigned char> untouched(probe.used, 0x5A);
  EXPECT_EQ(0, std::memcmp(short_by_one.storage.data(), untouched.data(), probe.used - 1));
  EXPECT_EQ(0x5A, short_by_one.record.data()[0]);
  EXPECT_TRUE(short_by_one.storage.GuardsIntact() && short_by_one.record.GuardsIntact());
}

TEST(FieldForms, FormsThatDoNotDescribeTheRecordAreRefusedWithWhere) {
  struct Case {
    const char* form;
    int status;
    const char* says;
  };
  const Case cases[] = {
      {R"({"szScreenID": "a",})", GSC_STATUS_MALFORMED_JSON, "line 1, column 20"},
      {R"({"szScreenID": "a", "szScreenID": "b"})", GSC_STATUS_INVALID_FIELDS, "szScreenID"},
      {R"({"szScreen": "a"})", GSC_STATUS_INVALID_FIELDS, "unknown field 'szScreen'"},
      {R"({"szScreenID": 5})", GSC_STATUS_INVALID_FIELDS, "field 'szScreenID': expected text"},
      {R"({"dwSize": 5})", GSC_STATUS_INVALID_FIELDS, "unknown field 'dwSize'"},
      {"[]", GSC_STATUS_INVALID_FIELDS, "expected an object"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.form);
    const Out encoded = Encode("GET_GUIDESCREEN_CFG_BYID", c.form);
    EXPECT_EQ(c.status, encoded.status);
    EXPECT_NE(std::string::npos, encoded.message.find(c.says)) << encoded.message;
    EXPECT_EQ("", encoded.text);
    Filled filled = FromFields("GET_GUIDESCREEN_CFG_BYID", GSC_REQUEST_RECORD, c.form, 64);
    EXPECT_EQ(c.status, filled.status);
    EXPECT_EQ(0x5A, filled.record.data()[0]);
  }
  const Out unknown = Encode("GET_ALL_PROGRAMS", "{}");
  EXPECT_EQ(GSC_STATUS_UNKNOWN_OPERATION, unknown.status);
  EXPECT_NE(std::string::npos, unknown.message.find("GET_ALL_PROGRAMMES")) << unknown.message;
}

TEST(FieldForms, ArgumentsOutsideTheirRangeAreInvalid) {
  tagNET_IN_GET_GUIDESCREEN_CFG_BYID in = {};
  in.dwSize = sizeof in;
  char text[64];
  EXPECT_EQ(GSC_STATUS_INVALID_ARGUMENT, gsc_record_to_fields("GET_GUIDESCREEN_CFG_BYID", 2, &in, 0,
                                                              text, sizeof text, nullptr));
  EXPECT_EQ(GSC_STATUS_INVALID_ARGUMENT,
            gsc_record_to_fields("GET_GUIDESCREEN_CFG_BYID", GSC_REQUEST_RECORD, &in, 4, text,
                                 sizeof text, nullptr));
  in.dwSize = 1;
  EXPECT_EQ(GSC_STATUS_WRONG_RECORD_SIZE,
            gsc_record_to_fields("GET_GUIDESCREEN_CFG_BYID", GSC_REQUEST_RECORD, &in, 0, text,
                                 sizeof text, nullptr));
  alignas(16) unsigned char storage[80];
  EXPECT_EQ(GSC_STATUS_INVALID_ARGUMENT,
            gsc_record_from_fields("GET_GUIDESCREEN_CFG_BYID", GSC_REQUEST_RECORD, "{}", 2, &in,
                                   sizeof in, storage + 4, 64, nullptr, nullptr, 0));
  EXPECT_EQ(GSC_STATUS_INVALID_ARGUMENT,
            gsc_record_from_fields("GET_GUIDESCREEN_CFG_BYID", GSC_REQUEST_RECORD, "{}", 2, &in,
                                   sizeof in - 1, nullptr, 0, nullptr, nullptr, 0));
  EXPECT_EQ(GSC_STATUS_INVALID_ARGUMENT, Decode("GET_ALL_PROGRAMMES", "{}", 1u << 21).status);
  EXPECT_EQ(GSC_STATUS_INVALID_ARGUMENT, Decode("GET_ALL_PROGRAMMES", "{}", 1, 4).status);
}

constexpr char kTwoScreens[] = R"({"infos": {"a": {"ID": "a", "Bright": 10},
                                             "b": {"ID": "b", "Bright": "high"}}})";

TEST(FieldForms, DecodeTakesTheRoomAndTheModeItIsGiven) {
  gsc_report* report = gsc_report_new();
  const Out stopped = Decode("GET_ALL_GUIDESCREEN_CFG", kTwoScreens, GSC_ROOM_FOR_ALL, 0, report);
  EXPECT_EQ(GSC_STATUS_CONVERSION_FAILED, stopped.status);
  EXPECT_NE(std::string::npos, stopped.message.find("infos.b.Bright")) << stopped.message;
  EXPECT_EQ("", stopped.text);

  const Out skipped =
      Decode("GET_ALL_GUIDESCREEN_CFG", kTwoScreens, GSC_ROOM_FOR_ALL, GSC_SKIP_FAILURES, report);
  ASSERT_EQ(GSC_STATUS_OK, skipped.status) << skipped.message;
  ASSERT_EQ(1u, gsc_report_count(report));
  EXPECT_STREQ("conversion-failed", gsc_report_kind(report, 0));
  const Json::Value form = gsc::test::J(skipped.text);
  EXPECT_EQ(2u, form["nRetInfosNum"].asUInt());
  EXPECT_EQ(0u, form["pstuInfos"][1]["nBright"].asUInt());

  const Out clamped = Decode("GET_ALL_GUIDESCREEN_CFG", kTwoScreens, 1, GSC_SKIP_FAILURES, report);
  ASSERT_EQ(GSC_STATUS_OK, clamped.status) << clamped.message;
  EXPECT_EQ(1u, gsc::test::J(clamped.text)["pstuInfos"].size());
  ASSERT_EQ(1u, gsc_report_count(report));
  EXPECT_STREQ("collection-clamped", gsc_report_kind(report, 0));
  gsc_report_free(report);

  const Out malformed = Decode("GET_ALL_GUIDESCREEN_CFG", "{\"infos\": {}");
  EXPECT_EQ(GSC_STATUS_MALFORMED_JSON, malformed.status);
  EXPECT_NE(std::string::npos, malformed.message.find("line 1, column 13")) << malformed.message;
}

TEST(FieldForms, FormsFollowTheSizeProtocolAndHideSecretsOnlyWhenAsked) {
  const gsc::fields::Operation& op = *gsc::fields::FindOperation("GET_PROGRAMME_BYID");
  const Out whole = Decode(op.name, op.answer_sample);
  ASSERT_EQ(GSC_STATUS_OK, whole.status);
  EXPECT_NE(std::string::npos, whole.text.find("\"door-2024\""));
  const Out hidden = Decode(op.name, op.answer_sample, GSC_ROOM_FOR_ALL, GSC_HIDE_SECRETS);
  EXPECT_EQ(std::string::npos, hidden.text.find("door-2024"));
  EXPECT_NE(std::string::npos, hidden.text.find("\"***\""));

  const Out probe = Decode(op.name, op.answer_sample, GSC_ROOM_FOR_ALL, 0, nullptr, 0);
  EXPECT_EQ(GSC_STATUS_BUFFER_TOO_SMALL, probe.status);
  EXPECT_EQ(whole.length, probe.length);
  const Out short_by_one =
      Decode(op.name, op.answer_sample, GSC_ROOM_FOR_ALL, 0, nullptr, whole.length);
  EXPECT_EQ(GSC_STATUS_BUFFER_TOO_SMALL, short_by_one.status);
  EXPECT_EQ("", short_by_one.text);
  EXPECT_TRUE(short_by_one.guards);
  const Out exact =
      Decode(op.name, op.answer_sample, GSC_ROOM_FOR_ALL, 0, nullptr, whole.length + 1);
  EXPECT_EQ(GSC_STATUS_OK, exact.status);
  EXPECT_EQ(whole.text, exact.text);
  EXPECT_TRUE(exact.guards);
}

// A capacity far beyond the answer reads as room for what it holds, and is shown as given.
TEST(FieldForms, DecodeMakesOnlyTheRecordsAnAnswerCanFill) {
  const gsc::fields::Operation& op = *gsc::fields::FindOperation("GET_ALL_PROGRAMMES");
  const Out all = Decode(op.name, op.answer_sample);
  const Out huge = Decode(op.name, op.answer_sample, 1u << 20);
  ASSERT_EQ(GSC_STATUS_OK, huge.status) << huge.message;
  Json::Value expected = gsc::test::J(all.text);
  expected["nMaxInfosNum"] = 1u << 20;
  EXPECT_EQ(gsc::test::Compact(expected), gsc::test::Compact(gsc::test::J(huge.text)));
  // No records to read, or no object to read them from: read as with room to spare.
  for (const char* answer : {R"({"infos": 5})", R"({"infos": {}})", "{}"}) {
    SCOPED_TRACE(answer);
    EXPECT_EQ(Decode(op.name, answer, 7).status, Decode(op.name, answer, 1).status);
    const Out big = Decode(op.name, answer, 1u << 20);
    EXPECT_EQ(Decode(op.name, answer, 5).message, big.message);
  }
}

}  // namespace
