// The text readers against the tree path: for each answer text, parsing it with JsonCpp and
// calling deserialize must leave the same bytes, return value, exception and findings as
// deserialize_json on the text itself, plain and reporting, stopping and skipping.
#include <gtest/gtest.h>
#include <json/json.h>

#include <cstring>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "guidescreen_codec/json_text.h"
#include "guidescreen_codec/operations.h"
#include "support/fixtures.h"

namespace gsc::test {
namespace {

// Caller memory an output record reaches: the record, its arrays and element buffers, each
// followed by guard bytes, all filled with one byte before each call.
class CallerMemory {
 public:
  template <typename T>
  T* Add(size_t count = 1) {
    blocks_.push_back(std::make_unique<GuardedBytes>(count * sizeof(T)));
    return reinterpret_cast<T*>(blocks_.back()->data());
  }
  // An element buffer, 4 but not 8 bytes aligned as a record after a header would be.
  unsigned char* AddBuffer(size_t size) {
    blocks_.push_back(std::make_unique<GuardedBytes>(size, 4));
    return blocks_.back()->data();
  }
  void Fill(unsigned char byte) {
    for (auto& block : blocks_) std::memset(block->data(), byte, block->size());
  }
  std::string Snapshot() const {
    std::string bytes;
    for (const auto& block : blocks_) {
      EXPECT_TRUE(block->GuardsIntact());
      bytes.append(reinterpret_cast<const char*>(block->data()), block->size());
    }
    return bytes;
  }

 private:
  std::vector<std::unique_ptr<GuardedBytes>> blocks_;
};

// Attaches what the record points to: 3 entries per caller array, element buffers of 3000 bytes.
void Attach(tagNET_OUT_GET_ALL_PROGRAMMES& out, CallerMemory& memory) {
  out.nMaxInfosNum = 3;
  out.pstuInfos = memory.Add<tagNET_PROGRAMME_INFO>(3);
}
void Attach(tagNET_OUT_GET_ALL_GUIDESCREEN_CFG& out, CallerMemory& memory) {
  out.nMaxInfosNum = 3;
  out.pstuInfos = memory.Add<tagNET_GUIDESCREEN_ATTRIBUTE_INFO>(3);
}
void Attach(tagNET_OUT_GET_ALL_PROGRAMMEPLANS& out, CallerMemory& memory) {
  out.nMaxPlanNum = 2;
  out.pstuImmePlans = memory.Add<tagNET_IMMEDIATELY_PLAN_INFO>(2);
  out.pstuTimerPlans = memory.Add<tagNET_TIMER_PLAN_INFO>(2);
}
template <typename Out>
void Attach(Out& /*out*/, CallerMemory& /*memory*/) {}

void AttachBuffers(tagNET_PROGRAMME_INFO& programme, CallerMemory& memory) {
  for (auto& window : programme.stuOrdinary.stuWindows) {
    window.nElementsBufLen = 3000;
    window.pElementsBuf = memory.AddBuffer(window.nElementsBufLen);
  }
}

// Fills the caller memory with `fill` and attaches arrays and buffers again (the fill wipes the
// pointers), so that both paths start from the same bytes.
template <typename Out>
class Caller {
 public:
  Caller() : out_(memory_.Add<Out>()) {
    Attach(*out_, memory_);
    // Element buffers are attached once: their addresses then stay the same for every call.
    if constexpr (std::is_same_v<Out, tagNET_OUT_GET_ALL_PROGRAMMES>) {
      for (uint32_t i = 0; i < out_->nMaxInfosNum; ++i) AttachBuffers(out_->pstuInfos[i], memory_);
    }
    if constexpr (std::is_same_v<Out, tagNET_OUT_GET_PROGRAMME_BYID>) {
      AttachBuffers(out_->stuProgramme, memory_);
    }
    pointers_ = Pointers();
  }

  Out& Reset(unsigned char fill) {
    memory_.Fill(fill);
    Restore();
    return *out_;
  }
  std::string Snapshot() const { return memory_.Snapshot(); }

 private:
  // The pointer fields the fill overwrote, saved after attaching and written back after a fill.
  std::vector<std::pair<void*, std::vector<unsigned char>>> Pointers() {
    std::vector<std::pair<void*, std::vector<unsigned char>>> saved;
    auto save = [&](void* field, size_t size) {
      const auto* bytes = static_cast<const unsigned char*>(field);
      saved.emplace_back(field, std::vector<unsigned char>(bytes, bytes + size));
    };
    if constexpr (std::is_same_v<Out, tagNET_OUT_GET_ALL_PROGRAMMES>) {
      save(out_, sizeof *out_);
      for (uint32_t i = 0; i < out_->nMaxInfosNum; ++i) SaveWindows(out_->pstuInfos[i], save);
    } else if constexpr (std::is_same_v<Out, tagNET_OUT_GET_PROGRAMME_BYID>) {
      SaveWindows(out_->stuProgramme, save);
    } else if constexpr (std::is_same_v<Out, tagNET_OUT_GET_ALL_GUIDESCREEN_CFG> ||
                         std::is_same_v<Out, tagNET_OUT_GET_ALL_PROGRAMMEPLANS>) {
      save(out_, sizeof *out_);
    }
    return saved;
  }
  template <typename Save>
  static void SaveWindows(tagNET_PROGRAMME_INFO& programme, Save save) {
    for (auto& window : programme.stuOrdinary.stuWindows) {
      save(&window.pElementsBuf, sizeof window.pElementsBuf);
      save(&window.nElementsBufLen, sizeof window.nElementsBufLen);
    }
  }
  void Restore() {
    for (const auto& [field, bytes] : pointers_) std::memcpy(field, bytes.data(), bytes.size());
  }

  CallerMemory memory_;
  Out* out_;
  std::vector<std::pair<void*, std::vector<unsigned char>>> pointers_;
};

Json::Value ParseWithJsonCpp(const std::string& text) {
  Json::CharReaderBuilder builder;
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  Json::Value value;
  std::string errors;
  EXPECT_TRUE(reader->parse(text.data(), text.data() + text.size(), &value, &errors)) << errors;
  return value;
}

struct Outcome {
  std::string bytes;
  bool returned = false;
  std::string thrown;
  std::string findings;
};

// Both paths on `text`, from caller memory filled with `fill`, in every mode.
template <typename Out>
void ExpectSameAsTree(const std::string& text, unsigned char fill = 0) {
  SCOPED_TRACE(text.substr(0, 200));
  const Json::Value tree = ParseWithJsonCpp(text);
  Caller<Out> caller;
  auto both = [&](const char* mode, auto viaTree, auto viaText) {
    SCOPED_TRACE(mode);
    Outcome expected;
    try {
      expected.returned = viaTree(caller.Reset(fill));
    } catch (const Json::Exception& e) {
      expected.thrown = e.what();
    }
    expected.bytes = caller.Snapshot();
    Outcome actual;
    try {
      actual.returned = viaText(caller.Reset(fill));
    } catch (const Json::Exception& e) {
      actual.thrown = e.what();
    }
    actual.bytes = caller.Snapshot();
    EXPECT_EQ(expected.returned, actual.returned);
    EXPECT_EQ(expected.thrown, actual.thrown);
    EXPECT_TRUE(expected.bytes == actual.bytes) << "the records differ";
  };
  both(
      "plain", [&](Out& out) { return deserialize(tree, out); },
      [&](Out& out) { return deserialize_json(text, out); });
  for (const OnFailure onFailure : {OnFailure::kStop, OnFailure::kSkip}) {
    Report viaTree(onFailure);
    Report viaText(onFailure);
    both(
        onFailure == OnFailure::kStop ? "reporting, stopping" : "reporting, skipping",
        [&](Out& out) { return deserialize(tree, out, viaTree); },
        [&](Out& out) { return deserialize_json(text, out, viaText); });
    EXPECT_EQ(viaTree.str(), viaText.str());
  }
}

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
      R"({"DisplayScreenCfg":{"Brightness":3,"Volume":"x"},"Programme":{"ProgrammeName":"x"}})",
      R"({"ProgrammePlan":{"PlanType":1,"Timer":{"PlayDates":[1,2],"StartTime":"07:05"}}})",
      R"({"infos":{"a":{"PlanType":0},"b":{"PlanType":1,"Timer":5},"c":{"PlanType":"1"}}})",
      R"({"ProgrammeID":12,"ProgrammePlanID":1.5,"infos":{"a":{"ProgrammeType":1,"Enable":2}}})",
  };
  for (const char* text : texts) {
    ExpectSameAsTree<tagNET_OUT_SET_GUIDESCREEN_CFG>(text);
    ExpectSameAsTree<tagNET_OUT_GET_GUIDESCREEN_CFG_BYID>(text);
    ExpectSameAsTree<tagNET_OUT_GET_ALL_GUIDESCREEN_CFG>(text);
    ExpectSameAsTree<tagNET_OUT_SET_GD_STATUS>(text);
    ExpectSameAsTree<tagNET_OUT_GET_PROGRAMME_BYID>(text);
    ExpectSameAsTree<tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES>(text);
    ExpectSameAsTree<tagNET_OUT_ADD_ONE_PROGRAMME>(text);
    ExpectSameAsTree<tagNET_OUT_MODIFY_ONE_PROGRAMME>(text);
    ExpectSameAsTree<tagNET_OUT_DEL_PROGRAMMES>(text);
    ExpectSameAsTree<tagNET_OUT_GET_ALL_PROGRAMMEPLANS>(text);
    ExpectSameAsTree<tagNET_OUT_GET_PROGRAMMEPLAN_BYID>(text);
    ExpectSameAsTree<tagNET_OUT_ADD_PROGRAMMEPLAN>(text);
    ExpectSameAsTree<tagNET_OUT_MODIFY_IMME_PROGRAMMEPLAN>(text);
    ExpectSameAsTree<tagNET_OUT_MODIFY_TIMER_PROGRAMMEPLAN>(text);
    ExpectSameAsTree<tagNET_OUT_DEL_PROGRAMMEPLANS>(text);
  }
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

}  // namespace
}  // namespace gsc::test
