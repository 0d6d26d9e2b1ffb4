// The field tables behind gscodec: every table matches its record's layout, record -> field-named
// JSON -> record is the identity for every operation's records, and bad forms are refused with
// the field named.
#include <gtest/gtest.h>
#include <json/json.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "describe/operations_table.h"
#include "guidescreen_codec.h"
#include "support/fixtures.h"

namespace {

using namespace gsc::fields;
using gsc::test::Compact;
using gsc::test::J;

bool IsPointer(const Field& f) {
  return f.kind == Kind::kCallerArray || f.kind == Kind::kElements;
}

// Every table reachable from the operations, each once.
void Collect(const RecordTable* table, std::set<const RecordTable*>& seen) {
  if (!seen.insert(table).second) return;
  for (const Field& f : table->fields)
    if (f.record) Collect(f.record, seen);
  if (table->variants)
    for (const Variant& v : *table->variants) Collect(v.record, seen);
}
std::set<const RecordTable*> AllTables() {
  std::set<const RecordTable*> seen;
  for (const Operation& op : Operations()) {
    Collect(op.request, seen);
    Collect(op.answer, seen);
  }
  return seen;
}

bool HasPointers(const RecordTable& table) {
  return std::any_of(table.fields.begin(), table.fields.end(), [](const Field& f) {
    return IsPointer(f) || (f.kind == Kind::kRecord && HasPointers(*f.record));
  });
}

TEST(FieldTables, DescribeEveryByteOfTheirRecords) {
  for (const RecordTable* table : AllTables()) {
    SCOPED_TRACE(table->name);
    std::vector<const Field*> fields;
    for (const Field& f : table->fields) fields.push_back(&f);
    std::sort(fields.begin(), fields.end(),
              [](const Field* a, const Field* b) { return a->offset < b->offset; });
    size_t end = 0;
    for (const Field* f : fields) {
      SCOPED_TRACE(f->name);
      ASSERT_GE(f->offset, end) << "overlaps the field before it";
      EXPECT_LT(f->offset - end, f->alignment) << "bytes before it are described by no field";
      end = f->offset + f->size * f->extent;
      for (const char* name : {f->count, f->limit}) {
        if (!name) continue;
        const Field* counter = table->Find(name);
        ASSERT_NE(counter, nullptr) << name;
        EXPECT_EQ(counter->kind, Kind::kUnsigned) << name;
      }
    }
    EXPECT_LE(end, table->size);
    EXPECT_LT(table->size - end, table->alignment) << "bytes at the end are described by no field";
  }
}

// ---- Round trip ------------------------------------------------------------------------------

class RandomRecords {
 public:
  explicit RandomRecords(unsigned seed) : rng_(seed) {}

  // Fills every described field of the zeroed record at `at` with random values; arrays get a
  // random count (now and then above their extent), caller arrays and element buffers random
  // entries from `arena`. Reserved bytes stay zero.
  void Fill(const RecordTable& table, unsigned char* at, Arena& arena) {
    for (const Field& f : table.fields) {
      if (f.kind == Kind::kSize) Put(at + f.offset, static_cast<uint32_t>(table.size));
      if (f.extent == 1 && !f.count && !IsPointer(f)) Value(f, at + f.offset, arena);
    }
    for (const Field& f : table.fields) {
      if (f.kind == Kind::kCallerArray) {
        const uint32_t n = Below(3);
        unsigned char* array = arena.Allocate(n * f.record->size);
        for (uint32_t i = 0; i < n; ++i) Fill(*f.record, array + i * f.record->size, arena);
        Put(at + f.offset, n || Below(2) ? array : nullptr);
        SetCount(table, at, f.count, n);
        if (f.limit) SetCount(table, at, f.limit, n + Below(2));
      } else if (f.kind == Kind::kElements) {
        Elements(table, f, at, arena);
      } else if (f.extent > 1 || f.count) {
        uint32_t n = f.extent;
        if (f.count) {
          n = Below(f.extent + 3);
          SetCount(table, at, f.count, n);
        }
        for (uint32_t i = 0; i < std::min(n, f.extent); ++i)
          Value(f, at + f.offset + i * f.size, arena);
      }
    }
  }

 private:
  uint32_t Below(uint32_t n) { return static_cast<uint32_t>(rng_() % n); }
  template <typename T>
  static void Put(unsigned char* at, T value) {
    std::memcpy(at, &value, sizeof value);
  }
  static void SetCount(const RecordTable& table, unsigned char* at, const char* name, uint32_t n) {
    Put(at + table.Find(name)->offset, n);
  }

  void Value(const Field& f, unsigned char* at, Arena& arena) {
    switch (f.kind) {
      case Kind::kText:
      case Kind::kSecret:
        for (size_t i = 0, n = Below(static_cast<uint32_t>(f.size) + 1); i < n; ++i)
          at[i] = static_cast<unsigned char>(' ' + Below(95));
        break;
      case Kind::kUnsigned:
      case Kind::kSigned:
        Put(at, static_cast<uint32_t>(rng_()));
        break;
      case Kind::kReal:
        Put(at, std::uniform_real_distribution<double>(-1e9, 1e9)(rng_));
        break;
      case Kind::kBool:
        *at = static_cast<unsigned char>(Below(2));
        break;
      case Kind::kEnum: {
        const auto& values = f.enumeration->values;
        const uint32_t pick = Below(static_cast<uint32_t>(values.size()) + 1);
        Put(at, pick < values.size() ? values[pick].value : static_cast<int32_t>(rng_()));
        break;
      }
      case Kind::kRecord:
        Fill(*f.record, at, arena);
        break;
      default:
        break;
    }
  }

  // Entries of every kind, unknown kinds included, laid end to end with spare room after them.
  void Elements(const RecordTable& table, const Field& f, unsigned char* at, Arena& arena) {
    const RecordTable& header = *f.record;
    const int tags[] = {0, 1, 2, 3, 4, 5, 77};
    std::vector<std::pair<int, const RecordTable*>> entries(Below(4));
    size_t used = 0;
    for (auto& [tag, record] : entries) {
      tag = tags[Below(7)];
      record = nullptr;
      for (const Variant& v : *header.variants)
        if (v.tag == tag) record = v.record;
      used += header.size + (record ? record->size : 0);
    }
    const uint32_t length = static_cast<uint32_t>(used + Below(3) * 8);
    unsigned char* buffer = arena.Allocate(length);
    unsigned char* entry = buffer;
    for (const auto& [tag, record] : entries) {
      Put(entry, static_cast<int32_t>(tag));
      if (record) Fill(*record, entry + header.size, arena);
      entry += header.size + (record ? record->size : 0);
    }
    Put(at + f.offset, entries.empty() && Below(2) ? nullptr : buffer);
    SetCount(table, at, f.count, static_cast<uint32_t>(entries.size()));
    SetCount(table, at, f.limit, length);
  }

  std::mt19937 rng_;
};

TEST(FieldTables, RecordToFieldNamedJsonToRecordIsTheIdentity) {
  const ShowOptions everything{true};
  for (const Operation& op : Operations()) {
    for (const RecordTable* table : {op.request, op.answer}) {
      SCOPED_TRACE(std::string(op.name) + " " + table->name);
      for (unsigned seed = 1; seed <= 12; ++seed) {
        Arena arena;
        unsigned char* record = arena.Allocate(table->size);
        RandomRecords(seed).Fill(*table, record, arena);
        const std::string text = Compact(ToJson(*table, record, everything));

        unsigned char* back = arena.Allocate(table->size);
        FromJson(*table, J(text), back, arena);
        ASSERT_EQ(Compact(ToJson(*table, back, everything)), text) << "seed " << seed;
        if (!HasPointers(*table)) {
          ASSERT_EQ(std::memcmp(record, back, table->size), 0) << "seed " << seed;
        }
      }
    }
  }
}

// ---- Encoding --------------------------------------------------------------------------------

TEST(FieldTables, EncodeLaysOutElementEntriesEndToEnd) {
  const Operation& op = *FindOperation("ADD_ONE_PROGRAMME");
  const Json::Value form = J(R"({"stuInfo": {"stuOrdinary": {"stuWindows": [{"pElementsBuf": [
      {"emElementType": "EM_ELEMENT_TYPE_TEXT", "record": {"szName": "hours",
                                                           "stuText": {"szContent": "9-17"}}},
      {"emElementType": 1, "record": {"szName": "clip", "nPlayCount": 2}},
      {"emElementType": {"value": 0}}]}]}}})");
  Arena arena;
  tagNET_IN_ADD_ONE_PROGRAMME in = {};
  FromJson(*op.request, form, &in, arena);
  const tagNET_PROGRAMME_WINDOW_INFO& window = in.stuInfo.stuOrdinary.stuWindows[0];
  ASSERT_EQ(in.stuInfo.stuOrdinary.nWindowsNum, 1u);
  ASSERT_EQ(window.nElementsNum, 3u);
  constexpr size_t kHeader = sizeof(tagNET_ELEMENT_COMMON_INFO);
  constexpr size_t kVideoAt = kHeader + sizeof(tagNET_TEXT_ELEMENT_INFO);  // 4628
  EXPECT_EQ(window.nElementsBufLen,
            kVideoAt + kHeader + sizeof(tagNET_VIDEO_ELEMENT_INFO) + kHeader);
  EXPECT_EQ(reinterpret_cast<uintptr_t>(window.pElementsBuf + kHeader) % 8, 4u);

  EM_ELEMENT_TYPE kinds[3] = {};
  uint32_t offset = 0;
  for (EM_ELEMENT_TYPE& kind : kinds)
    ASSERT_EQ(
        gsc_element_next(window.pElementsBuf, window.nElementsBufLen, &offset, &kind, nullptr, 0),
        GSC_STATUS_OK);
  EXPECT_EQ(kinds[0], EM_ELEMENT_TYPE_TEXT);
  EXPECT_EQ(kinds[1], EM_ELEMENT_TYPE_VIDEO);
  EXPECT_EQ(kinds[2], EM_ELEMENT_TYPE_UNKNOWN);
  EXPECT_EQ(offset, window.nElementsBufLen);

  const Json::Value elements = Encode(op, form)["info"]["Ordinary"]["Windows"][0]["Elements"];
  EXPECT_EQ(Compact(elements[0]["Text"]["Content"]), R"("9-17")");
  EXPECT_EQ(Compact(elements[1]["Video"]), R"({"Path":"","PlayCount":2})");
  EXPECT_EQ(elements.size(), 2u) << "the entry of unknown kind is not sent";
}

TEST(FieldTables, RefuseFormsThatDescribeNoRecordAndNameTheField) {
  const std::string long_id(65, 'x');
  std::string ids;
  for (int i = 0; i < 33; ++i) ids += std::string(i ? "," : "") + "\"p\"";
  const struct {
    const char* operation;
    std::string form;
    const char* message;
  } cases[] = {
      {"ADD_TIMER_PROGRAMMEPLAN", R"({"stuInfo": {"szPlanNme": "x"}})",
       "unknown field 'stuInfo.szPlanNme' in tagNET_TIMER_PLAN_INFO"},
      {"ADD_ONE_PROGRAMME", R"({"dwSize": 4})", "unknown field 'dwSize'"},
      {"SET_GD_STATUS", R"({"nGDNum": "3"})",
       "field 'nGDNum': expected an unsigned 32-bit integer, got text"},
      {"SET_GD_STATUS", R"({"nGDNum": -1})", "field 'nGDNum': expected an unsigned 32-bit"},
      {"SET_GD_STATUS", R"({"emStatus": [0, "EM_GD_STATUS_CODE_111"]})",
       "field 'emStatus[1]': 'EM_GD_STATUS_CODE_111' is no enumerator of EM_GD_STATUS"},
      {"GET_PROGRAMME_BYID", R"({"szProgrammeID": ")" + long_id + R"("})",
       "field 'szProgrammeID': text longer than its 64 bytes"},
      {"DEL_PROGRAMMES", R"({"szProgrammeIDList": [)" + ids + "]}",
       "field 'szProgrammeIDList': holds at most 32 values"},
      {"MODIFY_ONE_PROGRAMME",
       R"({"stuProgramme": {"stuOrdinary": {"stuWindows": [{"pElementsBuf": [
           {"emElementType": 5, "record": {"nPort": "37777"}}]}]}}})",
       "field 'stuProgramme.stuOrdinary.stuWindows[0].pElementsBuf[0].record.nPort': expected"},
      {"ADD_ONE_PROGRAMME",
       R"({"stuInfo": {"stuOrdinary": {"stuWindows": [{"pElementsBuf": [
           {"emElementType": 0, "record": {}}]}]}}})",
       "pElementsBuf[0].record': this kind of entry has no record"},
      {"ADD_IMME_PROGRAMMEPLAN", R"({"stuInfo": {"bEnable": 1}})",
       "field 'stuInfo.bEnable': expected true or false, got an integer"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.form);
    try {
      Encode(*FindOperation(c.operation), J(c.form));
      ADD_FAILURE() << "accepted";
    } catch (const FieldError& e) {
      EXPECT_NE(std::string(e.what()).find(c.message), std::string::npos) << e.what();
    }
  }
}

// ---- Decoding --------------------------------------------------------------------------------

TEST(FieldTables, DecodeShowsWhatTheCallersRecordReceived) {
  const Operation& plan = *FindOperation("GET_PROGRAMMEPLAN_BYID");
  const Json::Value timer = Decode(plan, J(plan.answer_sample), Room{}, {});
  EXPECT_EQ(Compact(timer["emPlanType"]), R"({"name":"EM_PROGRAMMEPLAN_TYPE_TIMER","value":2})");
  EXPECT_EQ(Compact(timer["stuTimerPlan"]["stuProgrammes"]), Compact(J(R"([{
      "bIsBgProgramme": false, "szProgrammeID": "P-1001", "szProgrammeName": "Lobby morning",
      "stuStartTime": {"nHour": 8, "nMinute": 0, "nSecond": 0},
      "stuEndTime": {"nHour": 11, "nMinute": 30, "nSecond": 0}}])")));

  // Capacities bound what is read and shown; a buffer too small for an entry holds none.
  const Operation& all = *FindOperation("GET_ALL_PROGRAMMES");
  const Json::Value one = Decode(all, J(all.answer_sample), Room{1, 200}, {});
  EXPECT_EQ(one["nRetInfosNum"].asUInt(), 1u);
  ASSERT_EQ(one["pstuInfos"].size(), 1u);
  const Json::Value& window = one["pstuInfos"][0]["stuOrdinary"]["stuWindows"][0];
  EXPECT_EQ(Compact(window["pElementsBuf"]), "[]");
  EXPECT_EQ(window["nElementsBufLen"].asUInt(), 200u);

  // Passwords are hidden unless asked for.
  const Operation& get = *FindOperation("GET_PROGRAMME_BYID");
  for (const bool show : {false, true}) {
    const Json::Value programme = Decode(get, J(get.answer_sample), Room{1, 1 << 16}, {show});
    const Json::Value& capture =
        programme["stuProgramme"]["stuOrdinary"]["stuWindows"][1]["pElementsBuf"][2]["record"];
    EXPECT_EQ(capture["szPassword"].asString(), show ? "door-2024" : "***");
  }
}

}  // namespace
