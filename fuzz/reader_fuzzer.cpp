// Fuzzes every reader with arbitrary device answers.
//
// Input: 16 control bytes (Control in fuzz_support.h: pattern bytes, booleans, null arrays and
// capacities, element buffer lengths), then the answer's JSON text (a text JsonCpp rejects is
// skipped).
//
// The parsed value goes to the deserialize of every operation in the operations list, plain and
// reporting on the same caller memory (same bytes, same exception, findings that agree with what
// happened; in skip mode, the bytes the plain one leaves for the answer with each value it could
// not convert replaced by null), then it and its first members or elements go to every record
// reader. Every record is laid out by its description (Layout in fuzz_support.h): caller arrays,
// brief listings, element buffers and single records sit in guarded blocks whose guards are
// checked after every call, and what the read left in them is checked field by field; element
// buffers start 4 but not 8 bytes aligned. Json::Exception is how an answer of the wrong type ends;
// anything else is a bug.
#include <json/json.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <exception>
#include <memory>
#include <string>
#include <vector>

#include "codec/field_codecs.h"
#include "codec/json_string.h"
#include "codec/reporting.h"
#include "fuzz/fuzz_support.h"
#include "guidescreen/attribute_codec.h"
#include "guidescreen_codec/operations.h"
#include "plan/plan_codecs.h"
#include "programme/element_buffer.h"
#include "programme/programme_codecs.h"

namespace gsc::fuzz {
namespace {

using gsc::Finding;
using gsc::FindingKind;
using gsc::Report;
using gsc::fields::Operation;

constexpr size_t kMembersFed = 4;

// One call on fresh caller memory: `run(guards, layout)` lays out its records and calls the
// codec; the guards and the records laid out are checked afterwards, whether the call ended
// normally or by a Json::Exception. Returns true when it ended normally.
template <typename Run>
bool Call(const Control& c, const char* name, Run run) {
  Guards guards;
  Layout layout(guards, c);
  bool normal = true;
  try {
    run(guards, layout);
  } catch (const Json::Exception&) {
    normal = false;
  }
  guards.Check(name);
  layout.Check(name, normal);
  return normal;
}

// The findings of a reading call: only reading kinds, and a failed conversion exactly when the
// plain call threw, last, with JsonCpp's message.
void CheckFindings(const Report& report, bool threw, const std::string& thrown, const char* name) {
  size_t failures = 0;
  for (const Finding& f : report.findings()) {
    if (f.kind < FindingKind::kTextCut || f.kind > FindingKind::kConversionFailed)
      Fail("a writing finding from", name);
    if (f.kind == FindingKind::kConversionFailed) ++failures;
    if (f.kind != FindingKind::kConversionFailed && f.path.empty())
      Fail("finding without a path:", name);
  }
  if (failures != (threw ? 1U : 0U)) Fail("failed conversions disagree with the plain call:", name);
  if (threw && (report.findings().back().kind != FindingKind::kConversionFailed ||
                report.findings().back().detail != thrown))
    Fail("the failed conversion is not the plain call's exception:", name);
}

bool SameFinding(const Finding& a, const Finding& b) {
  return a.kind == b.kind && a.path == b.path && a.detail == b.detail;
}

// The answer with the value at the path of every failed conversion replaced by null.
Json::Value NullAtFailures(const Json::Value& v, const Report& report, const char* name) {
  Json::Value nulled = v;
  for (const Finding& f : report.findings()) {
    if (f.kind != FindingKind::kConversionFailed) continue;
    const Json::Value* at = codec::ValueAtPath(nulled, f.path);
    if (at == nullptr) Fail("a failed conversion's path names no value:", name);
    *const_cast<Json::Value*>(at) = Json::Value();  // a value of `nulled`, which is ours
  }
  return nulled;
}

// Skip mode on the same caller memory: it runs to the end; its findings start with those of the
// stop mode (all of them, the failure included); and it leaves exactly the bytes the plain
// deserialize leaves for the answer with each value it could not convert replaced by null, where
// the reporting call finds what skip mode found but the failures.
void CheckSkipMode(Guards& g, const Json::Value& v, const Operation& op, void* out,
                   const Report& stopped, const std::vector<std::vector<unsigned char>>& before) {
  const char* name = op.name;
  g.Restore(before);
  Report skipping(gsc::OnFailure::kSkip);
  if (!op.deserialize(v, out, &skipping)) Fail("the skipping deserialize stopped:", name);
  const auto skipped = g.Snapshot();
  const auto& found = skipping.findings();
  if (found.size() < stopped.size() ||
      !std::equal(stopped.findings().begin(), stopped.findings().end(), found.begin(), SameFinding))
    Fail("skip mode found otherwise than stop mode up to the failure:", name);
  const Json::Value nulled = NullAtFailures(v, skipping, name);
  g.Restore(before);
  Report again;
  if (!op.deserialize(nulled, out, &again)) Fail("the answer with nulls still fails:", name);
  if (g.Snapshot() != skipped) Fail("skip mode left other bytes than the answer with nulls:", name);
  std::vector<Finding> notFailures;
  for (const Finding& f : found)
    if (f.kind != FindingKind::kConversionFailed) notFailures.push_back(f);
  if (!std::equal(notFailures.begin(), notFailures.end(), again.findings().begin(),
                  again.findings().end(), SameFinding))
    Fail("skip mode found otherwise than the answer with nulls:", name);
}

// Runs the plain deserialize, then the reporting one on the same caller memory restored to what
// it held before: both must leave the same bytes and end the same way; then skip mode
// (CheckSkipMode). The memory is left as the plain call left it, whose exception, if any, is then
// raised again, as the plain call alone would have.
Report BothWays(Guards& g, const Json::Value& v, const Operation& op, void* out) {
  const char* name = op.name;
  const auto before = g.Snapshot();
  std::exception_ptr exception;
  std::string thrown;
  try {
    op.deserialize(v, out, nullptr);
  } catch (const Json::Exception& e) {
    exception = std::current_exception();
    thrown = e.what();
  }
  const auto plain = g.Snapshot();
  g.Restore(before);
  Report report;
  const bool finished = op.deserialize(v, out, &report);
  if (g.Snapshot() != plain) Fail("the reporting deserialize left other bytes:", name);
  if (finished == (exception != nullptr)) Fail("the reporting deserialize ended otherwise:", name);
  CheckFindings(report, exception != nullptr, thrown, name);
  CheckSkipMode(g, v, op, out, report, before);
  g.Restore(plain);
  if (exception) std::rethrow_exception(exception);
  return report;
}

bool HasFinding(const Report& report, FindingKind kind, const std::string& path) {
  for (const Finding& f : report.findings())
    if (f.kind == kind && f.path == path) return true;
  return false;
}

// A keyed collection finding appears exactly when "infos" had more members than room.
void CheckCollection(const Report& report, const Json::Value& v, uint32_t room, const char* name) {
  const Json::Value* infos = v.isObject() ? &v["infos"] : nullptr;
  const bool over = infos != nullptr && infos->isObject() && infos->size() > room;
  if (HasFinding(report, FindingKind::kCollectionClamped, "infos") != over)
    Fail("collection finding disagrees with the member count:", name);
}

// The fields of `table` that are shown.
std::vector<const Field*> Shown(const RecordTable& table) {
  std::vector<const Field*> shown;
  for (const Field& f : table.fields)
    if (f.kind != Kind::kHidden && f.kind != Kind::kSize) shown.push_back(&f);
  return shown;
}

// The room of an answer's one listing (a caller array, or an array of the record itself) for the
// members of "infos"; false for answers with no listing or with more than one.
bool ListingRoom(const RecordTable& table, const unsigned char* out, uint32_t& room) {
  const Field* listing = nullptr;
  for (const Field* f : Shown(table)) {
    if (f->kind != Kind::kCallerArray && !(f->kind == Kind::kRecord && f->count)) continue;
    if (listing != nullptr) return false;
    listing = f;
  }
  if (listing == nullptr) return false;
  room = listing->extent;
  if (listing->kind == Kind::kCallerArray) {
    room = gsc::fields::Load<const unsigned char*>(out + listing->offset) != nullptr
               ? gsc::fields::Number(table, out, listing->limit)
               : 0;
  }
  return true;
}

// Every deserialize on the caller memory a caller lays out for it, read plain, reporting and
// skipping (BothWays) and checked by the layout, then by what each kind of answer promises.
void AllDeserializers(const Json::Value& v, const Control& c) {
  for (const Operation* op : DistinctAnswers()) {
    const RecordTable& table = *op->answer;
    const std::vector<const Field*> shown = Shown(table);
    Call(c, op->name, [&](Guards& g, Layout& layout) {
      unsigned char* out = layout.Record(table, 1, true);
      const Report report = BothWays(g, v, *op, out);
      // An answer that carries nothing is not read at all.
      if (shown.empty() && !report.empty()) Fail("findings for an answer nobody reads:", op->name);
      uint32_t room = 0;
      if (std::string(op->answer_keys) == "infos" && ListingRoom(table, out, room))
        CheckCollection(report, v, room, op->name);
      // An answer of one text: cut exactly when it did not fit, and always terminated.
      if (shown.size() == 1 && shown[0]->kind == Kind::kText) {
        const Field& f = *shown[0];
        const Json::Value* text = v.isObject() ? &v[op->answer_keys] : nullptr;
        const bool long_text =
            text != nullptr && text->isString() && text->asString().size() >= f.size;
        if (HasFinding(report, FindingKind::kTextCut, op->answer_keys) != long_text)
          Fail("text-cut finding disagrees with the text's length:", op->name);
        if (std::memchr(out + f.offset, '\0', f.size) == nullptr)
          Fail("answered text unterminated:", op->name);
      }
      // A plan read always says which kind it was.
      if (std::strcmp(op->name, "GET_PROGRAMMEPLAN_BYID") == 0) {
        const auto& plan = *reinterpret_cast<const tagNET_OUT_GET_PROGRAMMEPLAN_BYID*>(out);
        if (plan.emPlanType < EM_PROGRAMMEPLAN_TYPE_UNKNOWN ||
            plan.emPlanType > EM_PROGRAMMEPLAN_TYPE_TIMER)
          Fail("plan kind out of range");
      }
    });
  }
}

// A record reader on a pre-filled record of its kind, null first.
template <typename R>
void RecordReader(const Json::Value& v, const Control& c, const char* type, const char* name,
                  void (*parse)(const Json::Value&, R*)) {
  Call(c, name, [&](Guards&, Layout& layout) {
    R& record = layout.New<R>(type);
    parse(v, nullptr);
    parse(v, &record);
  });
}
#define GSC_RECORD_READER(Type, parse) \
  RecordReader<Type>(v, c, #Type, #parse, [](const Json::Value& v, Type* r) { parse(v, r); })

void AllRecordReaders(const Json::Value& v, const Control& c) {
  GSC_RECORD_READER(tagNET_GUIDESCREEN_ATTRIBUTE_INFO, ParseGuidScreenAttribute);
  GSC_RECORD_READER(tagNET_GUIDESCREEN_TEXT_INFO, ParseText);
  GSC_RECORD_READER(tagNET_GUIDESCREEN_NOTE_INFO, ParseNotes);
  GSC_RECORD_READER(tagNET_VIDEO_ELEMENT_INFO, ParseVideoElement);
  GSC_RECORD_READER(tagNET_PICTURE_ELEMENT_INFO, ParsePictureElement);
  GSC_RECORD_READER(tagNET_TEXT_ELEMENT_INFO, ParseTextElement);
  GSC_RECORD_READER(tagNET_PLACEHOLDER_ELEMENT_INFO, ParsePlaceHolderElement);
  GSC_RECORD_READER(tagNET_CAPTURE_ELEMENT_INFO, ParseCaptureElement);
  GSC_RECORD_READER(tagNET_PROGRAMME_INFO, ParseProgramme);
  GSC_RECORD_READER(tagNET_IMMEDIATELY_PLAN_INFO, ParseImmePlan);
  GSC_RECORD_READER(tagNET_TIMER_PLAN_INFO, ParseTimerPlan);
  Call(c, "ReadElementList", [&](Guards&, Layout& layout) {
    const uint32_t length = c.bufferLength[0] == kNoLength ? 0 : c.bufferLength[0];
    unsigned char* buffer = layout.Buffer(length);
    const uint32_t count = programme::ReadElementList(v, buffer, length);
    layout.CheckEntries(*gsc::fields::FindRecordTable("tagNET_ELEMENT_COMMON_INFO"), buffer, length,
                        count);
    if (programme::ReadElementList(v, nullptr, kNoLength) != 0) Fail("null buffer held entries");
  });
}
#undef GSC_RECORD_READER

// The field readers under every record reader.
void FieldReaders(const Json::Value& v, const Control& c) {
  Call(c, "GetJsonString", [&](Guards& g, Layout&) {
    const int length = c.textLength;
    char* dest = reinterpret_cast<char*>(g.Add(length > 0 ? length : 0, 0, c.fill).data());
    GetJsonString(v, length > 0 ? dest : nullptr, length, true);
    GetJsonString(v, dest, length, true);
    if (length > 0 && std::memchr(dest, '\0', static_cast<size_t>(length)) == nullptr)
      Fail("GetJsonString left the text unterminated");
    GetJsonString(v, dest, length, false);
    if (length > 0 && std::memchr(dest, '\0', static_cast<size_t>(length)) == nullptr)
      Fail("GetJsonString left the text unterminated");
  });
  Call(c, "field codecs", [&](Guards&, Layout& layout) {
    auto& time = layout.New<tagNET_TIME_OF_DAY>("tagNET_TIME_OF_DAY");
    auto& date = layout.New<tagNET_DATE_INFO>("tagNET_DATE_INFO");
    auto& rect = layout.New<tagNET_RECT>("tagNET_RECT");
    auto& color = layout.New<tagQX_COLOR_RGBA>("tagQX_COLOR_RGBA");
    codec::ParseTimeOfDay(v, time);
    codec::ParseDate(v, date);
    JsonRect::parse(v, rect);
    JsonColor::parse(v, color);
  });
}

void FeedRecordReaders(const Json::Value& v, const Control& c) {
  AllRecordReaders(v, c);
  FieldReaders(v, c);
}

}  // namespace
}  // namespace gsc::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace gsc::fuzz;
  if (size < kControlBytes) return 0;
  const Control control(data);
  const char* text = reinterpret_cast<const char*>(data + kControlBytes);
  Json::CharReaderBuilder builder;
  builder["allowSpecialFloats"] = true;  // NaN and Infinity reach the readers as reals
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  Json::Value answer;
  try {
    if (!reader->parse(text, text + (size - kControlBytes), &answer, nullptr)) return 0;
  } catch (const Json::Exception&) {
    return 0;  // nested too deep for the reader
  }

  AllDeserializers(answer, control);
  FeedRecordReaders(answer, control);
  // Record readers are normally handed members of the answer: feed them the first few too.
  if (answer.isObject() || answer.isArray()) {
    size_t fed = 0;
    for (const Json::Value& member : answer) {
      if (fed++ == kMembersFed) break;
      FeedRecordReaders(member, control);
    }
  }
  return 0;
}
