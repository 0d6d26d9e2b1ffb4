// The text readers against the tree path: for each answer text, parsing it with JsonCpp and
// calling deserialize must leave the same bytes, return value, exception and findings as
// deserialize_json on the text itself, plain and reporting, stopping and skipping.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "describe/operations_table.h"
#include "guidescreen_codec/json_text.h"
#include "support/tree_differential.h"

namespace gsc::test {
namespace {

// One programme listing in several spellings of the same facts, and in JsonCpp's odd cases.
const char* const kProgrammeAnswers[] = {
    R"({"infos":{}})",
    R"({"infos":null})",
    R"({})",
    R"(null)",
    R"({"infos":{"b":{"ProgrammeName":"second"},"a":{"ProgrammeName":"first","Enable":true}}})",
    // Keys in byte order, not text order: "10" before "9".
    R"({"infos":{"9":{"ProgrammeID":"nine"},"10":{"ProgrammeID":"ten"},"1":{}}})",
    // More members than room: the rest are named in the report.
    R"({"infos":{"a":{},"b":{},"c":{},"d":{},"e":{}}})",
    // The last of duplicate names wins, in the collection and in an object.
    R"({"infos":{"p":{"ProgrammeName":"one"},"p":{"ProgrammeName":"two","ProgrammeName":"three"}}})",
    // Numbers as JsonCpp reads them into texts and integers.
    R"({"infos":{"p":{"ProgrammeName":1.0,"ProgrammeID":-0,"Enable":1e-400}}})",
    R"({"infos":{"p":{"ProgrammeName":-1e-400,"ProgrammeID":-0.0,"Enable":-4.9e-324}}})",
    R"({"infos":{"p":{"ProgrammeName":123456789012345678901234567890,"ProgrammeID":-0.0}}})",
    R"({"infos":{"p":{"ProgrammeName":18446744073709551615,"ProgrammeID":-9223372036854775808}}})",
    R"({"infos":{"p":{"ProgrammeName":1e300,"ProgrammeID":0.1,"Enable":0.0}}})",
    R"({"infos":{"p":{"ProgrammeName":"a\u0000b","ProgrammeID":"\ud83d\ude00 \u00e9"}}})",
    // Values JsonCpp cannot convert: stop or skip.
    R"({"infos":{"p":{"Enable":"yes"}}})",
    R"({"infos":{"p":{"Enable":[1]},"q":{"Enable":{}}}})",
    R"({"infos":[1,2]})",
    R"({"infos":"text"})",
    R"([])",
    R"(5)",
    R"({"infos":{"p":[]}})",
    R"({"infos":{"p":{"Ordinary":{"Windows":[{"Volume":4294967296}]}}}})",
    R"({"infos":{"p":{"Ordinary":{"Windows":[{"Volume":2147483648.5}]}}}})",
    // Notes on entries that lie 8-byte aligned and on those that do not, a stopped read among
    // them, and a "Note" that is no array.
    R"({"infos":{"p":{"Ordinary":{"Windows":[{"Elements":[
      {"Type":3,"Note":[{"Enable":true},{"NoteRect":[1,2,3,4]}]},
      {"Type":0,"Note":[{"Enable":true},{},{},{},{"Enable":true}]},
      {"Type":2,"Note":[{"NoteInfo":{"LineHeight":2.5}}],"Text":{"LineHeight":0.5}},
      {"Type":4,"Note":{"Enable":true}},
      {"Type":1,"Note":[{"Enable":true},{"Enable":"no"}]}]}]}}}})",
    // A whole programme: windows, element kinds, notes, colours, unknown members.
    R"({"infos":{"p":{"ProgrammeName":"n","Enable":true,"Extra":[1,{"x":1}],"Ordinary":{
      "TempletState":true,"Description":"d","Windows":[
        {"WinID":"w0","BackgroundColor":[1,2,3,4],"Volume":5,"TourPeriod":2,"TourPeriodTime":9,
         "Elements":[
           {"Type":0,"Name":"v","Video":{"Path":"/v","PlayCount":2},"Note":[{"NoteInfo":{}}]},
           {"Type":1,"Picture":{"Path":"/p","EnterStyle":3,"ExitStyle":9,"Diaphaneity":1.5}},
           {"Type":2,"Text":{"Content":"t","FontColor":[1,2,3],"LineHeight":1.25,"FontSize":3}},
           {"Type":3,"Name":"h","FillerState":1,"Unknown":null,"Unknown":2},
           {"Type":4,"DeviceInfo":{"IP":"10.0.0.1","Port":"80","CaptureType":1}},
           {"Type":7},{"Type":"2"},null,5
         ]},
        {"WinID":7,"BackgroundColor":[1,2],"Elements":{}},
        {"Elements":[{"Type":2,"Text":{"LineHeight":true}}]}
      ]}}}})",
};

TEST(TextReaders, ReadProgrammeListingsAsTheTreePathDoes) {
  for (const char* text : kProgrammeAnswers) {
    ExpectSameAsTree<tagNET_OUT_GET_ALL_PROGRAMMES>(text);
    ExpectSameAsTree<tagNET_OUT_GET_ALL_PROGRAMMES>(text, 0x5A);
  }
}

TEST(TextReaders, ReadEveryOtherAnswerAsTheTreePathDoes) {
  const char* const texts[] = {
      R"({})",
      R"(null)",
      R"(true)",
      R"([1])",
      R"({"infos":{"s":{"SplitScreen":[{"ID":"x","Rect":[1,2,3,4]}],"Time":[]}}})",
      // Twelve sun entries are read from an array of any length: past its end they read as null.
      R"({"infos":{"s":{"AutoBright":{"Time":[{"Sunrise":7,"Sunset":17}]}},
                   "t":{"AutoBright":{"Time":[]}},
                   "u":{"AutoBright":{"Time":[1,2,3,4,5,6,7,8,9,10,11,12,13]}}}})",
      R"({"DisplayScreenCfg":{"AutoBright":{"Time":[{"Sunrise":7}]},"Time":[{"PlayDates":[1]}]}})",
      R"({"DisplayScreenCfg":{"Brightness":3,"Volume":"x"},"Programme":{"ProgrammeName":"x"}})",
      R"({"ProgrammePlan":{"PlanType":1,"Timer":{"PlayDates":[1,2],"StartTime":"07:05"}}})",
      R"({"infos":{"a":{"PlanType":0},"b":{"PlanType":1,"Timer":5},"c":{"PlanType":"1"}}})",
      R"({"ProgrammeID":12,"ProgrammePlanID":1.5,"infos":{"a":{"ProgrammeType":1,"Enable":2}}})",
      // Fewer sun entries than the twelve the reader reads: those missing read as null, and
      // nothing after the array is taken for them.
      R"({"DisplayScreenCfg":{"AutoBright":{"Time":[]},"Bright":5}})",
      R"({"infos":{"s":{"AutoBright":{"Time":[{"Sunrise":7}]},"ID":"x"}},"Bright":{}})",
  };
  // Each output record by an operation that answers with it; GET_ALL_PROGRAMMES has its own.
  using Check = void (*)(const std::string&, unsigned char);
  const std::pair<const char*, Check> readers[] = {
      {"SET_GUIDESCREEN_CFG", &ExpectSameAsTree<tagNET_OUT_SET_GUIDESCREEN_CFG>},
      {"GET_GUIDESCREEN_CFG_BYID", &ExpectSameAsTree<tagNET_OUT_GET_GUIDESCREEN_CFG_BYID>},
      {"GET_ALL_GUIDESCREEN_CFG", &ExpectSameAsTree<tagNET_OUT_GET_ALL_GUIDESCREEN_CFG>},
      {"SET_GD_STATUS", &ExpectSameAsTree<tagNET_OUT_SET_GD_STATUS>},
      {"GET_PROGRAMME_BYID", &ExpectSameAsTree<tagNET_OUT_GET_PROGRAMME_BYID>},
      {"GET_ALL_BRIEFLYPROGRAMMES", &ExpectSameAsTree<tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES>},
      {"ADD_ONE_PROGRAMME", &ExpectSameAsTree<tagNET_OUT_ADD_ONE_PROGRAMME>},
      {"MODIFY_ONE_PROGRAMME", &ExpectSameAsTree<tagNET_OUT_MODIFY_ONE_PROGRAMME>},
      {"DEL_PROGRAMMES", &ExpectSameAsTree<tagNET_OUT_DEL_PROGRAMMES>},
      {"GET_ALL_PROGRAMMEPLANS", &ExpectSameAsTree<tagNET_OUT_GET_ALL_PROGRAMMEPLANS>},
      {"GET_PROGRAMMEPLAN_BYID", &ExpectSameAsTree<tagNET_OUT_GET_PROGRAMMEPLAN_BYID>},
      {"ADD_IMME_PROGRAMMEPLAN", &ExpectSameAsTree<tagNET_OUT_ADD_PROGRAMMEPLAN>},
      {"MODIFY_IMME_PROGRAMMEPLAN", &ExpectSameAsTree<tagNET_OUT_MODIFY_IMME_PROGRAMMEPLAN>},
      {"MODIFY_TIMER_PROGRAMMEPLAN", &ExpectSameAsTree<tagNET_OUT_MODIFY_TIMER_PROGRAMMEPLAN>},
      {"DEL_PROGRAMMEPLANS", &ExpectSameAsTree<tagNET_OUT_DEL_PROGRAMMEPLANS>},
  };
  for (const char* text : texts) {
    for (const auto& [operation, check] : readers) check(text, 0);
  }
  // A new operation's output record needs its line here.
  std::set<std::string> covered{"tagNET_OUT_GET_ALL_PROGRAMMES"};
  for (const auto& reader : readers)
    covered.insert(gsc::fields::FindOperation(reader.first)->answer->name);
  std::set<std::string> answers;
  for (const gsc::fields::Operation& op : gsc::fields::Operations())
    answers.insert(op.answer->name);
  EXPECT_EQ(answers, covered);
}

TEST(TextReaders, RefuseTextThatIsNotJsonBeforeTouchingTheRecord) {
  Caller<tagNET_OUT_GET_ALL_PROGRAMMES> caller;
  tagNET_OUT_GET_ALL_PROGRAMMES& out = caller.Reset(0x33);
  const std::string before = caller.Snapshot();
  try {
    deserialize_json("{\"infos\":\n  {\"a\": 01}}", out);
    ADD_FAILURE() << "no JsonError";
  } catch (const JsonError& e) {
    EXPECT_EQ(e.line(), 2U);
    EXPECT_EQ(e.column(), 9U);
    EXPECT_STREQ(e.what(), "line 2, column 9: invalid number: leading zero");
  }
  EXPECT_TRUE(caller.Snapshot() == before);

  Report report(OnFailure::kSkip);
  EXPECT_FALSE(deserialize_json("{\"infos\": {},}", out, report));
  ASSERT_EQ(report.findings().size(), 1U);
  EXPECT_EQ(report.findings()[0].kind, FindingKind::kJsonMalformed);
  EXPECT_EQ(report.findings()[0].path, "");
  EXPECT_EQ(report.findings()[0].detail, "line 1, column 14: a member name was expected");
  EXPECT_TRUE(caller.Snapshot() == before);
  EXPECT_STREQ(to_string(FindingKind::kJsonMalformed), "json-malformed");
}

TEST(TextReaders, ReadAgainAfterTheBuffersAreReleased) {
  tagNET_OUT_ADD_ONE_PROGRAMME out{};
  out.dwSize = sizeof out;
  EXPECT_TRUE(deserialize_json(R"({"ProgrammeID":"first"})", out));
  release_json_buffers();
  release_json_buffers();
  EXPECT_TRUE(deserialize_json(R"({"ProgrammeID":"second"})", out));
  EXPECT_STREQ(out.szProgrammeID, "second");
}

// `room` programmes in guarded caller memory, element buffers attached, all filled with one byte.
class ProgrammeArray {
 public:
  ProgrammeArray(uint32_t room, unsigned char fill)
      : room_(room), fill_(fill), infos_(memory_.Add<tagNET_PROGRAMME_INFO>(room)) {
    for (uint32_t i = 0; i < room; ++i) {
      for (auto& buffer : buffers_.emplace_back()) buffer = memory_.AddBuffer(3000);
    }
    Prepare();
  }
  // Back to the state before any read: the fill, buffers attached.
  tagNET_PROGRAMME_INFO* Prepare() {
    memory_.Fill(fill_);
    for (uint32_t i = 0; i < room_; ++i) {
      auto& windows = infos_[i].stuOrdinary.stuWindows;
      for (size_t w = 0; w < std::size(windows); ++w) {
        windows[w].pElementsBuf = buffers_[i][w];
        windows[w].nElementsBufLen = 3000;
      }
    }
    return infos_;
  }
  // Record i and its element buffers, without the buffers' addresses.
  std::string Bytes(uint32_t i) const {
    tagNET_PROGRAMME_INFO record;
    std::memcpy(&record, &infos_[i], sizeof record);
    std::string bytes;
    for (auto& window : record.stuOrdinary.stuWindows) {
      bytes.append(static_cast<const char*>(static_cast<const void*>(window.pElementsBuf)), 3000);
      window.pElementsBuf = nullptr;
    }
    bytes.append(static_cast<const char*>(static_cast<const void*>(&record)), sizeof record);
    return bytes;
  }
  bool GuardsIntact() const {
    memory_.Snapshot();  // fails the test when a guard byte changed
    return true;
  }

 private:
  CallerMemory memory_;
  uint32_t room_;
  unsigned char fill_;
  tagNET_PROGRAMME_INFO* infos_;
  std::vector<std::array<unsigned char*, GSC_MAX_WINDOWS>> buffers_;
};

// What the one-call read and the batched one leave: the programmes read, in order, and the rest.
struct ListingRead {
  std::vector<std::string> programmes;
  bool returned = false;
  uint32_t count = 0;
  std::string findings;
};

ListingRead ReadInOneCall(const std::string& text, uint32_t capacity, OnFailure onFailure) {
  ProgrammeArray array(capacity, 0x5A);
  tagNET_OUT_GET_ALL_PROGRAMMES out{};
  out.nMaxInfosNum = capacity;
  out.nRetInfosNum = 0xA5A5A5A5;
  out.pstuInfos = array.Prepare();
  Report report(onFailure);
  ListingRead read;
  read.returned = deserialize_json(text, out, report);
  read.count = out.nRetInfosNum;
  read.findings = report.str();
  for (uint32_t i = 0; i < std::min(capacity, out.nRetInfosNum); ++i)
    read.programmes.push_back(array.Bytes(i));
  return read;
}

// Batches of `room` into two arrays taken in turn; a stopped read leaves its last, unfinished
// batch out, as the one-call read's caller would see it only partly read.
ListingRead ReadInBatches(const std::string& text, uint32_t capacity, uint32_t room,
                          OnFailure onFailure) {
  ProgrammeArray arrays[] = {ProgrammeArray(room, 0x5A), ProgrammeArray(room, 0x5A)};
  int current = 0;
  tagNET_OUT_GET_ALL_PROGRAMMES out{};
  out.nMaxInfosNum = room;
  out.nRetInfosNum = 0xA5A5A5A5;
  out.pstuInfos = arrays[current].Prepare();
  Report report(onFailure);
  ListingRead read;
  read.returned = deserialize_json_in_batches(
      text, out, capacity, report,
      [&](tagNET_OUT_GET_ALL_PROGRAMMES& batch, const ProgrammeBatch& b) {
        EXPECT_EQ(b.first, read.programmes.size());
        EXPECT_EQ(batch.nRetInfosNum, b.count);
        EXPECT_EQ(batch.nMaxInfosNum, room);
        EXPECT_LE(b.first + b.count, b.total);
        EXPECT_TRUE(b.count == room || b.first + b.count == b.total);
        for (uint32_t i = 0; i < b.count; ++i) read.programmes.push_back(arrays[current].Bytes(i));
        current = 1 - current;
        batch.pstuInfos = arrays[current].Prepare();
      });
  EXPECT_EQ(out.nMaxInfosNum, room);
  read.count = out.nRetInfosNum;
  read.findings = report.str();
  for (const ProgrammeArray& array : arrays) EXPECT_TRUE(array.GuardsIntact());
  return read;
}

TEST(TextReaders, ReadListingsInBatchesAsInOneCall) {
  std::vector<std::string> texts(std::begin(kProgrammeAnswers), std::end(kProgrammeAnswers));
  // A listing of seven, one of them unreadable in the middle.
  std::string seven = R"({"infos":{)";
  for (char name = 'a'; name < 'h'; ++name) {
    seven += std::string(name == 'a' ? "" : ",") + '"' + name + R"(":{"ProgrammeName":")" + name +
             R"(","Ordinary":{"Windows":[{"Elements":[{"Type":2,"Text":{"Content":"x"}}]}]}})";
  }
  texts.push_back(seven + "}}");
  texts.push_back(seven + R"(,"d2":{"Enable":"no"}}})");
  for (const std::string& text : texts) {
    SCOPED_TRACE(text.substr(0, 120));
    for (const OnFailure onFailure : {OnFailure::kStop, OnFailure::kSkip}) {
      for (const uint32_t capacity : {0U, 2U, 5U, 9U}) {
        const ListingRead whole = ReadInOneCall(text, capacity, onFailure);
        for (const uint32_t room : {1U, 2U, 3U, 9U}) {
          SCOPED_TRACE("capacity " + std::to_string(capacity) + ", room " + std::to_string(room));
          const ListingRead batched = ReadInBatches(text, capacity, room, onFailure);
          EXPECT_EQ(whole.returned, batched.returned);
          EXPECT_EQ(whole.count, batched.count);
          EXPECT_EQ(whole.findings, batched.findings);
          if (whole.returned) {
            EXPECT_TRUE(whole.programmes == batched.programmes) << "the programmes differ";
          } else {
            // The stopped one-call read left its count alone: all its records are compared.
            ASSERT_LE(batched.programmes.size(), whole.programmes.size());
            for (size_t i = 0; i < batched.programmes.size(); ++i)
              EXPECT_TRUE(batched.programmes[i] == whole.programmes[i]) << "programme " << i;
          }
        }
      }
    }
  }
}

TEST(TextReaders, LetWhatTheBatchSinkThrowsReachTheCaller) {
  ProgrammeArray array(1, 0);
  const std::string text = R"({"infos":{"a":{},"b":{},"c":{}}})";
  auto readThrowing = [&](auto error) {
    tagNET_OUT_GET_ALL_PROGRAMMES out{};
    out.nMaxInfosNum = 1;
    out.pstuInfos = array.Prepare();
    Report report(OnFailure::kSkip);
    int batches = 0;
    deserialize_json_in_batches(text, out, 3, report,
                                [&](tagNET_OUT_GET_ALL_PROGRAMMES&, const ProgrammeBatch&) {
                                  if (++batches == 2) throw error;
                                });
  };
  EXPECT_THROW(readThrowing(std::runtime_error("printer gone")), std::runtime_error);
  // Not taken for a value that could not be converted.
  EXPECT_THROW(readThrowing(Json::LogicError("sink")), Json::LogicError);
}

}  // namespace
}  // namespace gsc::test
