// The checks the C interface makes on a caller's record before it touches it, for the request
// records of gsc_serialize_json and the answer records of gsc_deserialize_json alike: an address
// misaligned for the record's type is an invalid argument, a dwSize other than the record's size
// (the other direction's record size included) is a wrong record size, and a refused record is
// left exactly as it was. Sizes and alignments come from the records as this ABI lays them out.
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "guidescreen_codec/capi.h"
#include "support/fixtures.h"

namespace {

using gsc::test::GuardedBytes;

struct Shape {
  size_t size;
  size_t alignment;
};

struct Operation {
  const char* name;
  Shape request;
  Shape answer;
};

#define GSC_OPERATION(name, In, Out)     \
  {                                      \
#name, {sizeof(In), alignof(In) }, { \
      sizeof(Out), alignof(Out)          \
    }                                    \
  }

const Operation kOperations[] = {
    GSC_OPERATION(SET_GUIDESCREEN_CFG, tagNET_IN_SET_GUIDESCREEN_CFG,
                  tagNET_OUT_SET_GUIDESCREEN_CFG),
    GSC_OPERATION(GET_GUIDESCREEN_CFG_BYID, tagNET_IN_GET_GUIDESCREEN_CFG_BYID,
                  tagNET_OUT_GET_GUIDESCREEN_CFG_BYID),
    GSC_OPERATION(GET_ALL_GUIDESCREEN_CFG, tagNET_IN_GET_ALL_GUIDESCREEN_CFG,
                  tagNET_OUT_GET_ALL_GUIDESCREEN_CFG),
    GSC_OPERATION(SET_GD_STATUS, tagNET_IN_SET_GD_STATUS, tagNET_OUT_SET_GD_STATUS),
    GSC_OPERATION(GET_PROGRAMME_BYID, tagNET_IN_GET_PROGRAMME_BYID, tagNET_OUT_GET_PROGRAMME_BYID),
    GSC_OPERATION(GET_ALL_PROGRAMMES, tagNET_IN_GET_ALL_PROGRAMMES, tagNET_OUT_GET_ALL_PROGRAMMES),
    GSC_OPERATION(GET_ALL_BRIEFLYPROGRAMMES, tagNET_IN_GET_ALL_BRIEFLYPROGRAMMES,
                  tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES),
    GSC_OPERATION(ADD_ONE_PROGRAMME, tagNET_IN_ADD_ONE_PROGRAMME, tagNET_OUT_ADD_ONE_PROGRAMME),
    GSC_OPERATION(MODIFY_ONE_PROGRAMME, tagNET_IN_MODIFY_ONE_PROGRAMME,
                  tagNET_OUT_MODIFY_ONE_PROGRAMME),
    GSC_OPERATION(DEL_PROGRAMMES, tagNET_IN_DEL_PROGRAMMES, tagNET_OUT_DEL_PROGRAMMES),
    GSC_OPERATION(GET_ALL_PROGRAMMEPLANS, tagNET_IN_GET_ALL_PROGRAMMEPLANS,
                  tagNET_OUT_GET_ALL_PROGRAMMEPLANS),
    GSC_OPERATION(GET_PROGRAMMEPLAN_BYID, tagNET_IN_GET_PROGRAMMEPLAN_BYID,
                  tagNET_OUT_GET_PROGRAMMEPLAN_BYID),
    GSC_OPERATION(ADD_IMME_PROGRAMMEPLAN, tagNET_IN_ADD_IMME_PROGRAMMEPLAN,
                  tagNET_OUT_ADD_PROGRAMMEPLAN),
    GSC_OPERATION(ADD_TIMER_PROGRAMMEPLAN, tagNET_IN_ADD_TIMER_PROGRAMMEPLAN,
                  tagNET_OUT_ADD_PROGRAMMEPLAN),
    GSC_OPERATION(MODIFY_IMME_PROGRAMMEPLAN, tagNET_IN_MODIFY_IMME_PROGRAMMEPLAN,
                  tagNET_OUT_MODIFY_IMME_PROGRAMMEPLAN),
    GSC_OPERATION(MODIFY_TIMER_PROGRAMMEPLAN, tagNET_IN_MODIFY_TIMER_PROGRAMMEPLAN,
                  tagNET_OUT_MODIFY_TIMER_PROGRAMMEPLAN),
    GSC_OPERATION(DEL_PROGRAMMEPLANS, tagNET_IN_DEL_PROGRAMMEPLANS, tagNET_OUT_DEL_PROGRAMMEPLANS),
};

// An answer every operation's reader finds something in, so a record it were let at would change.
const std::string kAnswer =
    R"({"DisplayScreenCfg": {}, "Programme": {}, "ProgrammePlan": {}, "infos": {"a": {}},
        "ProgrammeID": "new", "ProgrammePlanID": "new"})";

enum class Direction { kRequest, kAnswer };

struct Call {
  int status;
  std::string json;  // what gsc_serialize_json stored
  size_t length;
  std::string message;  // what gsc_deserialize_json stored
};

Call CallWith(Direction direction, const char* operation, unsigned char* record) {
  Call call{};
  if (direction == Direction::kRequest) {
    char json[4096];
    std::memset(json, 'x', sizeof json);
    call.length = 99;
    call.status = gsc_serialize_json(operation, record, json, sizeof json, &call.length);
    call.json.assign(json, strnlen(json, sizeof json));  // a missing terminator shows as x's
  } else {
    char message[256];
    std::memset(message, 'x', sizeof message);
    call.status = gsc_deserialize_json(operation, kAnswer.data(), kAnswer.size(), record, message,
                                       sizeof message);
    call.message.assign(message, strnlen(message, sizeof message));
  }
  return call;
}

// A record `offset` bytes past a 16-byte aligned address: its dwSize set, its other bytes `fill`.
GuardedBytes RecordAt(const Shape& shape, size_t offset, uint32_t dwSize, unsigned char fill) {
  GuardedBytes record(shape.size, offset, fill);
  std::memcpy(record.data(), &dwSize, sizeof dwSize);
  return record;
}

// Expects the call refused with `status` and the record and its surroundings left as they were.
void ExpectRefused(Direction direction, const char* operation, GuardedBytes& record, int status) {
  const std::vector<unsigned char> before(record.data(), record.data() + record.size());
  const Call call = CallWith(direction, operation, record.data());
  EXPECT_EQ(call.status, status);
  EXPECT_EQ(0, std::memcmp(before.data(), record.data(), record.size())) << "record changed";
  EXPECT_TRUE(record.GuardsIntact());
  if (direction == Direction::kRequest) {
    EXPECT_EQ(call.json, "");
    EXPECT_EQ(call.length, 0U);
  } else {
    EXPECT_EQ(call.message, gsc_status_message(status));
  }
}

struct Side {
  Direction direction;
  const char* name;
  Shape Operation::*shape;
  Shape Operation::*other;
};

const Side kSides[] = {
    {Direction::kRequest, "request", &Operation::request, &Operation::answer},
    {Direction::kAnswer, "answer", &Operation::answer, &Operation::request},
};

TEST(CRecordChecks, TheTableCoversEveryOperationWithTheSizesTheLibraryExpects) {
  std::set<std::string> listed;
  for (const Operation& op : kOperations) {
    listed.insert(op.name);
    EXPECT_EQ(gsc_request_size(op.name), op.request.size) << op.name;
    EXPECT_EQ(gsc_answer_size(op.name), op.answer.size) << op.name;
  }
  std::set<std::string> named;
  for (size_t i = 0; i < gsc_operation_count(); ++i) named.insert(gsc_operation_name(i));
  EXPECT_EQ(listed, named);
}

// Where pointers are 8 bytes, records holding one need 8-byte addresses and the others 4; an
// address 4 but not 8 aligned is then refused for the former only.
TEST(CRecordChecks, ARecordIsTakenAtEveryAddressItsAlignmentAllowsAndRefusedAtAnyOther) {
  std::set<size_t> alignments;
  for (const Operation& op : kOperations) {
    for (const Side& side : kSides) {
      const Shape& shape = op.*side.shape;
      alignments.insert(shape.alignment);
      for (size_t offset : {0, 1, 2, 4, 8, 12}) {
        SCOPED_TRACE(std::string(op.name) + " " + side.name + " at offset " +
                     std::to_string(offset));
        if (offset % shape.alignment == 0) {
          GuardedBytes record = RecordAt(shape, offset, static_cast<uint32_t>(shape.size), 0);
          EXPECT_EQ(CallWith(side.direction, op.name, record.data()).status, GSC_STATUS_OK);
          EXPECT_TRUE(record.GuardsIntact());
        } else {
          GuardedBytes record = RecordAt(shape, offset, static_cast<uint32_t>(shape.size), 0x5A);
          ExpectRefused(side.direction, op.name, record, GSC_STATUS_INVALID_ARGUMENT);
        }
      }
    }
  }
  if (alignof(void*) == 8) {
    EXPECT_EQ(alignments, (std::set<size_t>{4, 8}));
  }
}

TEST(CRecordChecks, ADwSizeOtherThanTheRecordsOwnIsRefusedInBothDirections) {
  for (const Operation& op : kOperations) {
    for (const Side& side : kSides) {
      const Shape& shape = op.*side.shape;
      const size_t other = (op.*side.other).size;
      std::vector<size_t> wrong = {0, shape.size - 1, shape.size + 1, shape.size + 4, 0xFFFFFFFF};
      if (other != shape.size) wrong.push_back(other);
      for (size_t dwSize : wrong) {
        SCOPED_TRACE(std::string(op.name) + " " + side.name + " with dwSize " +
                     std::to_string(dwSize));
        GuardedBytes record = RecordAt(shape, 0, static_cast<uint32_t>(dwSize), 0x5A);
        ExpectRefused(side.direction, op.name, record, GSC_STATUS_WRONG_RECORD_SIZE);
      }
    }
  }
}

}  // namespace
