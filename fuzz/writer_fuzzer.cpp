// Fuzzes every writer with input records built from arbitrary bytes.
//
// The request of every operation in the operations list, and a record of each kind the record
// writers take, is generated from the bytes by its description (fields::Generate): booleans are 0
// or 1 (any other byte in a bool is undefined behaviour in the caller's program, not a case the
// library can meet), counts range up to 2^32 - 1, enumerations over any int, texts are empty,
// terminated at any length or fill their whole field without a terminator. Element buffers hold
// at least nElementsNum entries under headers of any kind, unknown ones included, and start 4 but
// not 8 bytes aligned; the writers trust that layout, as they trust nInfosNum.
//
// Every record sits in a guarded block whose guards are poisoned, so a read past a caller's
// array or element buffer stops at once. After each call the input records must be unchanged,
// every text the JSON carries must fit the field it came from (a longer one was read past its
// field), and the JSON must be written to text and parse back to the same text.
#include <json/json.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "fuzz/fuzz_support.h"
#include "guidescreen/attribute_codec.h"
#include "guidescreen_codec/operations.h"
#include "plan/plan_codecs.h"
#include "programme/programme_codecs.h"

namespace gsc::fuzz {
namespace {

// Input memory for one run: records and element buffers in guarded blocks, with a copy of each
// block's bytes taken once the records are built.
class Inputs {
 public:
  unsigned char* Add(size_t size, size_t offset) {
    blocks_.push_back(std::make_unique<GuardedBlock>(size, offset, 0));
    return blocks_.back()->data();
  }
  void Seal() {
    copies_.clear();
    for (const auto& block : blocks_)
      copies_.emplace_back(block->data(), block->data() + block->size());
  }
  void CheckUnchanged(const char* call) const {
    for (size_t i = 0; i < blocks_.size(); ++i) {
      const GuardedBlock& block = *blocks_[i];
      if (!block.Intact()) Fail("guard bytes changed by", call);
      if (block.size() != 0 && std::memcmp(block.data(), copies_[i].data(), block.size()) != 0)
        Fail("input record changed by", call);
    }
  }

 private:
  std::vector<std::unique_ptr<GuardedBlock>> blocks_;
  std::vector<std::vector<unsigned char>> copies_;
};

// Caller arrays and element buffers of the generated records, in guarded blocks of their own;
// element buffers start 4 but not 8 bytes aligned, as a record after an element header would.
class InputMemory final : public fields::Memory {
 public:
  explicit InputMemory(Inputs& inputs) : inputs_(inputs) {}
  unsigned char* Allocate(size_t bytes, bool elements) override {
    return inputs_.Add(bytes, elements ? 4 : 0);
  }

 private:
  Inputs& inputs_;
};

// ---- Checks on the JSON a writer produced ---------------------------------------------------

// The longest text each key can carry: the size of its field, less the terminator when the
// field holds one (a field without one is sent whole). Times and dates are cut at 15 characters,
// the display status text holds 170 codes of three.
const std::map<std::string, size_t>& TextLimits() {
  static const std::map<std::string, size_t> limits = {
      {"ID", 64},
      {"ScreenId", 64},
      {"ScreenID", 64},
      {"Name", 64},
      {"WinID", 64},
      {"ProgrammeName", 64},
      {"ProgrammeID", 64},
      {"PlanName", 64},
      {"PlanID", 64},
      {"SplitScreenID", 64},
      {"ReviewOpinion", 64},
      {"ProgrammePlanID", 64},
      {"Path", 128},
      {"Description", 128},
      {"Content", 512},
      {"FontStyle", 32},
      {"UserName", 32},
      {"Password", 32},
      {"IP", 40},
      {"OpenTime", 15},
      {"CloseTime", 15},
      {"StartTime", 15},
      {"EndTime", 15},
      {"PlayStartDate", 15},
      {"PlayEndDate", 15},
      {"Status", 170 * 3},
      {"ProgrammeIDList", 64},
      {"ProgrammePlanIDList", 64},
  };
  return limits;
}

void CheckTexts(const Json::Value& value, const std::string& key, const char* call) {
  if (value.isString()) {
    const auto limit = TextLimits().find(key);
    if (limit == TextLimits().end()) Fail("text under an unexpected key:", key.c_str());
    const char* begin = nullptr;
    const char* end = nullptr;
    value.getString(&begin, &end);
    if (static_cast<size_t>(end - begin) > limit->second) {
      std::fprintf(stderr, "key %s: %zu bytes\n", key.c_str(), static_cast<size_t>(end - begin));
      Fail("text longer than its field, written by", call);
    }
    if (std::memchr(begin, '\0', static_cast<size_t>(end - begin)) != nullptr)
      Fail("text carries a zero byte, written by", call);
  } else if (value.isArray()) {
    for (const Json::Value& element : value) CheckTexts(element, key, call);
  } else if (value.isObject()) {
    for (auto it = value.begin(); it != value.end(); ++it) {
      const std::string name = it.name();
      // Screens are sent under their IDs.
      if (key == "infos" && name.size() > 64) Fail("screen key longer than its ID field");
      CheckTexts(*it, key == "infos" ? std::string() : name, call);
    }
  }
}

template <typename Write>
Json::Value Check(const Inputs& inputs, const char* call, Write write) {
  Json::Value json(Json::objectValue);
  write(json);
  inputs.CheckUnchanged(call);
  CheckTexts(json, std::string(), call);
  RoundTrip(json, call);
  return json;
}

bool HasFinding(const gsc::Report& report, gsc::FindingKind kind, const std::string& path) {
  for (const gsc::Finding& f : report.findings())
    if (f.kind == kind && f.path == path) return true;
  return false;
}

// Runs the plain and the reporting serialize: the same JSON, only writing findings, each with
// the path of a field. Returns the request and the report.
std::pair<Json::Value, gsc::Report> Serialize(const Inputs& inputs, const fields::Operation& op,
                                              const unsigned char* in) {
  const char* call = op.name;
  const Json::Value plain = Check(inputs, call, [&](Json::Value& json) {
    if (!op.serialize(in, json, nullptr)) Fail("serialize returned false:", call);
  });
  gsc::Report report;
  const Json::Value reported = Check(inputs, call, [&](Json::Value& json) {
    if (!op.serialize(in, json, &report)) Fail("the reporting serialize returned false:", call);
  });
  // Compared as text: a NaN is not equal to itself as a value.
  Json::StreamWriterBuilder writer;
  writer["useSpecialFloats"] = true;
  if (Json::writeString(writer, plain) != Json::writeString(writer, reported))
    Fail("the reporting serialize wrote other JSON:", call);
  for (const gsc::Finding& f : report.findings()) {
    if (f.kind < gsc::FindingKind::kCountBeyondCapacity || f.path.empty())
      Fail("a finding that is no writer's:", call);
  }
  return {plain, report};
}

// What a writer writes under `from`, the reader of `reader` reads back under `to` without meeting
// a member it does not know.
void ReadBack(const Json::Value& params, const char* from, const char* reader, const char* to,
              const char* call) {
  Json::Value result(Json::objectValue);
  result[to] = params[from];
  gsc::Report report;
  fields::Receive(*fields::FindOperation(reader), result, fields::Room{3, 0}, &report);
  for (const gsc::Finding& f : report.findings())
    if (f.kind == gsc::FindingKind::kUnknownMember) Fail("read back, an unknown member:", call);
}

// A count finding appears exactly when the count was above the capacity.
void CheckCount(const gsc::Report& report, const char* path, uint32_t count, uint32_t capacity) {
  if (HasFinding(report, gsc::FindingKind::kCountBeyondCapacity, path) != (count > capacity))
    Fail("count finding disagrees with the count:", path);
}

// A text finding appears exactly when the field had no terminator.
template <size_t N>
void CheckTerminated(const gsc::Report& report, const std::string& path, const char (&field)[N]) {
  const bool unterminated = std::memchr(field, '\0', N) == nullptr;
  if (HasFinding(report, gsc::FindingKind::kTextUnterminated, path) != unterminated)
    Fail("text finding disagrees with the field:", path.c_str());
}

// The input records of one run: one request for each operation of the list, and a record of each
// kind the record writers take, all generated from the fuzzer's bytes by their description.
class Records {
 public:
  explicit Records(const uint8_t* data, size_t size) : in_(data, size), memory_(inputs_) {
    bounds_.ascii_texts = in_.Bool();
    for (const fields::Operation& op : fields::Operations()) requests_.push_back(Make(*op.request));
  }

  unsigned char* Make(const fields::RecordTable& table) {
    unsigned char* record = inputs_.Add(table.size, 0);
    fields::Generate(table, record, in_, memory_, bounds_);
    return record;
  }
  template <typename R>
  const R& Make(const char* type) {
    const fields::RecordTable* table = fields::FindRecordTable(type);
    if (table == nullptr || table->size != sizeof(R)) Fail("no table describes", type);
    return *reinterpret_cast<const R*>(Make(*table));
  }

  // The request of the operation `name`, as its record type.
  template <typename R>
  const R& Request(const char* name) const {
    const auto& operations = fields::Operations();
    for (size_t i = 0; i < operations.size(); ++i) {
      if (std::strcmp(operations[i].name, name) == 0 && operations[i].request->size == sizeof(R))
        return *reinterpret_cast<const R*>(requests_[i]);
    }
    Fail("no request record for", name);
  }
  const std::vector<unsigned char*>& requests() const { return requests_; }
  Inputs& inputs() { return inputs_; }

 private:
  fields::ByteSource in_;
  Inputs inputs_;
  InputMemory memory_;
  fields::Bounds bounds_;
  std::vector<unsigned char*> requests_;
};

// What the writer of one operation promises beyond what every writer does.
void CheckOperation(const fields::Operation& op, const Json::Value& params,
                    const gsc::Report& report, const Records& records) {
  const std::string name = op.name;
  if (name == "SET_GUIDESCREEN_CFG") {
    ReadBack(params, "infos", "GET_ALL_GUIDESCREEN_CFG", "infos", op.name);
  } else if (name == "GET_GUIDESCREEN_CFG_BYID") {
    const auto& in = records.Request<tagNET_IN_GET_GUIDESCREEN_CFG_BYID>(op.name);
    CheckTerminated(report, "szScreenID", in.szScreenID);
  } else if (name == "SET_GD_STATUS") {
    const auto& in = records.Request<tagNET_IN_SET_GD_STATUS>(op.name);
    CheckCount(report, "nGDNum", in.nGDNum, 170);
    bool codeless = false;
    for (uint32_t i = 0; i < in.nGDNum && i < 170; ++i) {
      const int state = static_cast<int>(in.emStatus[i]);
      codeless = codeless || (state != EM_GD_STATUS_CODE_100 && state != EM_GD_STATUS_CODE_010 &&
                              state != EM_GD_STATUS_CODE_001);
    }
    bool reported = false;
    for (const gsc::Finding& f : report.findings())
      reported = reported || f.kind == gsc::FindingKind::kDisplayUnitWithoutCode;
    if (reported != codeless) Fail("display unit finding disagrees with the states");
  } else if (name == "ADD_ONE_PROGRAMME") {
    ReadBack(params, "info", "GET_PROGRAMME_BYID", "Programme", op.name);
  } else if (name == "MODIFY_ONE_PROGRAMME") {
    const auto& in = records.Request<tagNET_IN_MODIFY_ONE_PROGRAMME>(op.name);
    CheckTerminated(report, "stuProgramme.szProgrammeID", in.stuProgramme.szProgrammeID);
    CheckCount(report, "stuProgramme.stuOrdinary.nWindowsNum",
               in.stuProgramme.stuOrdinary.nWindowsNum, 16);
  } else if (name == "DEL_PROGRAMMES") {
    const auto& in = records.Request<tagNET_IN_DEL_PROGRAMMES>(op.name);
    CheckCount(report, "nProgrammeIDListNum", in.nProgrammeIDListNum, 32);
    for (uint32_t i = 0; i < in.nProgrammeIDListNum && i < 32; ++i) {
      CheckTerminated(report, "szProgrammeIDList[" + std::to_string(i) + "]",
                      in.szProgrammeIDList[i]);
    }
  } else if (name == "ADD_IMME_PROGRAMMEPLAN") {
    ReadBack(params, "info", "GET_PROGRAMMEPLAN_BYID", "ProgrammePlan", op.name);
  } else if (name == "ADD_TIMER_PROGRAMMEPLAN") {
    ReadBack(params, "info", "GET_PROGRAMMEPLAN_BYID", "ProgrammePlan", op.name);
    const auto& in = records.Request<tagNET_IN_ADD_TIMER_PROGRAMMEPLAN>(op.name);
    CheckCount(report, "stuInfo.nPlayDatesNum", in.stuInfo.nPlayDatesNum, 32);
    CheckCount(report, "stuInfo.nProgrammesNum", in.stuInfo.nProgrammesNum, 32);
    CheckTerminated(report, "stuInfo.szReviewOpinion", in.stuInfo.szReviewOpinion);
  }
}

}  // namespace
}  // namespace gsc::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace gsc::fuzz;
  Records records(data, size);
  // Records for the record writers called directly.
  const auto& text = records.Make<tagNET_GUIDESCREEN_TEXT_INFO>("tagNET_GUIDESCREEN_TEXT_INFO");
  const auto& note = records.Make<tagNET_GUIDESCREEN_NOTE_INFO>("tagNET_GUIDESCREEN_NOTE_INFO");
  const auto& video = records.Make<tagNET_VIDEO_ELEMENT_INFO>("tagNET_VIDEO_ELEMENT_INFO");
  const auto& picture = records.Make<tagNET_PICTURE_ELEMENT_INFO>("tagNET_PICTURE_ELEMENT_INFO");
  const auto& textElement = records.Make<tagNET_TEXT_ELEMENT_INFO>("tagNET_TEXT_ELEMENT_INFO");
  const auto& placeholder =
      records.Make<tagNET_PLACEHOLDER_ELEMENT_INFO>("tagNET_PLACEHOLDER_ELEMENT_INFO");
  const auto& capture = records.Make<tagNET_CAPTURE_ELEMENT_INFO>("tagNET_CAPTURE_ELEMENT_INFO");
  const auto& attribute =
      records.Make<tagNET_GUIDESCREEN_ATTRIBUTE_INFO>("tagNET_GUIDESCREEN_ATTRIBUTE_INFO");
  Inputs& inputs = records.inputs();
  inputs.Seal();

  const auto& operations = gsc::fields::Operations();
  for (size_t i = 0; i < operations.size(); ++i) {
    const auto written = Serialize(inputs, operations[i], records.requests()[i]);
    CheckOperation(operations[i], written.first, written.second, records);
  }

  Check(inputs, "PacketGuidScreenAttribute",
        [&](Json::Value& json) { gsc::guidescreen::PacketGuidScreenAttribute(attribute, json); });
  Check(inputs, "PacketText", [&](Json::Value& json) {
    PacketText(nullptr, json);
    PacketText(&text, json);
  });
  Check(inputs, "PacketNotes", [&](Json::Value& json) {
    PacketNotes(nullptr, json);
    PacketNotes(&note, json);
  });
  Check(inputs, "PacketVideoElement", [&](Json::Value& json) { PacketVideoElement(&video, json); });
  Check(inputs, "PacketPictureElement",
        [&](Json::Value& json) { PacketPictureElement(&picture, json); });
  Check(inputs, "PacketTextElement",
        [&](Json::Value& json) { PacketTextElement(&textElement, json); });
  Check(inputs, "PacketPlaceHolderElement",
        [&](Json::Value& json) { PacketPlaceHolderElement(&placeholder, json); });
  Check(inputs, "PacketCaptureElement",
        [&](Json::Value& json) { PacketCaptureElement(&capture, json); });
  const auto& addProgramme = records.Request<tagNET_IN_ADD_ONE_PROGRAMME>("ADD_ONE_PROGRAMME");
  Check(inputs, "PacketPragramme", [&](Json::Value& json) {
    PacketPragramme(nullptr, json);
    PacketPragramme(&addProgramme.stuInfo, json);
  });
  const auto& addImme = records.Request<tagNET_IN_ADD_IMME_PROGRAMMEPLAN>("ADD_IMME_PROGRAMMEPLAN");
  Check(inputs, "PacketImmePlan", [&](Json::Value& json) {
    PacketImmePlan(nullptr, json);
    PacketImmePlan(&addImme.stuInfo, json);
  });
  const auto& addTimer =
      records.Request<tagNET_IN_ADD_TIMER_PROGRAMMEPLAN>("ADD_TIMER_PROGRAMMEPLAN");
  Check(inputs, "PacketTimerPlan", [&](Json::Value& json) {
    PacketTimerPlan(nullptr, json);
    PacketTimerPlan(&addTimer.stuInfo, json);
  });
  return 0;
}
