// Fuzzes every reader with arbitrary device answers.
//
// Input: 16 control bytes (Control in fuzz_support.h: pattern bytes, booleans, null arrays and
// capacities, element buffer lengths), then the answer's JSON text (a text JsonCpp rejects is
// skipped).
//
// The parsed value goes to every deserialize, plain and reporting on the same caller memory (same
// bytes, same exception, findings that agree with what happened; in skip mode, the bytes the plain
// one leaves for the answer with each value it could not convert replaced by null), then it and its
// first members or elements go to every record reader. Caller arrays, brief listings, element
// buffers and single records sit in guarded blocks whose guards are checked after every call;
// element buffers start 4 but not 8 bytes aligned. Json::Exception is how an answer of the wrong
// type ends; anything else is a bug.
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

constexpr size_t kMembersFed = 4;

// A pattern byte in a bool is undefined behaviour, so each is set explicitly.
template <typename Element>
void FixElementBools(Element& r, bool v) {
  r.bFillerState = v;
  for (auto& note : r.stuNote) FixBools(note, v);
}
// ---- Checks on what a reader left ---------------------------------------------------------

// A count the reader changed must be within its capacity.
void CheckCount(uint32_t now, uint32_t before, uint32_t capacity, const char* what) {
  if (now != before && now > capacity) Fail("count past its capacity:", what);
}

// A text the reader touched is terminated within its field; an untouched one is all pattern.
template <size_t N>
void CheckText(const char (&field)[N], unsigned char fill, const char* what) {
  if (std::memchr(field, '\0', N) != nullptr) return;
  for (char ch : field)
    if (static_cast<unsigned char>(ch) != fill) Fail("text left unterminated:", what);
}

void CheckAttribute(const tagNET_GUIDESCREEN_ATTRIBUTE_INFO& r, const Control& c) {
  CheckText(r.szID, c.fill, "screen ID");
  CheckCount(r.nTimeNum, c.Word(), 8, "opening times");
  CheckCount(r.nSplitScreenListNum, c.Word(), 16, "split screens");
  for (const auto& time : r.stuTime) CheckCount(time.nPlayDatesNum, c.Word(), 32, "play dates");
  for (const auto& split : r.stuSplitScreenList) CheckText(split.szScreenId, c.fill, "split ID");
}

void CheckTimerPlan(const tagNET_TIMER_PLAN_INFO& r, const Control& c) {
  CheckText(r.szPlanName, c.fill, "plan name");
  CheckText(r.szPlanID, c.fill, "plan ID");
  CheckText(r.szReviewOpinion, c.fill, "review opinion");
  CheckCount(r.nPlayDatesNum, c.Word(), 32, "timer play dates");
  CheckCount(r.nProgrammesNum, c.Word(), 32, "timer programmes");
  for (const auto& programme : r.stuProgrammes)
    CheckText(programme.szProgrammeID, c.fill, "plan programme ID");
}

void CheckImmePlan(const tagNET_IMMEDIATELY_PLAN_INFO& r, const Control& c) {
  CheckText(r.szPlanName, c.fill, "plan name");
  CheckText(r.szProgrammeID, c.fill, "plan programme ID");
}

// Bytes one element buffer entry takes, from the record layouts (independent of the library).
size_t EntrySize(int32_t kind) {
  static const size_t kRecordSizes[] = {0,
                                        sizeof(tagNET_VIDEO_ELEMENT_INFO),
                                        sizeof(tagNET_PICTURE_ELEMENT_INFO),
                                        sizeof(tagNET_TEXT_ELEMENT_INFO),
                                        sizeof(tagNET_PLACEHOLDER_ELEMENT_INFO),
                                        sizeof(tagNET_CAPTURE_ELEMENT_INFO)};
  return sizeof(tagNET_ELEMENT_COMMON_INFO) + kRecordSizes[kind];
}

// The entries a reader counted must lie within the buffer, each under a header of a known kind.
void CheckElementEntries(const unsigned char* buffer, uint32_t length, uint32_t count) {
  const size_t capacity = buffer != nullptr ? length : 0;
  size_t used = 0;
  for (uint32_t e = 0; e < count; ++e) {
    if (capacity - used < sizeof(tagNET_ELEMENT_COMMON_INFO)) Fail("element entries overrun");
    int32_t kind = 0;
    std::memcpy(&kind, buffer + used, sizeof kind);
    if (kind < 0 || kind > 5) Fail("element header of a kind never stored");
    const size_t entry = EntrySize(kind);
    if (capacity - used < entry) Fail("element entry past the buffer");
    used += entry;
  }
}

// Programme records with an element buffer per window (window j takes slot j mod 4); checks that
// a reader kept every buffer field and laid only whole entries into each buffer.
class Programmes {
 public:
  Programmes(Guards& guards, const Control& c) : guards_(guards), c_(c) {}

  void Prepare(tagNET_PROGRAMME_INFO& p) {
    PrepareProgramme(guards_, c_, p);
    Prepared prepared{&p, {}};
    for (size_t j = 0; j < 16; ++j) prepared.buffers[j] = p.stuOrdinary.stuWindows[j].pElementsBuf;
    prepared_.push_back(prepared);
  }

  unsigned char* Buffer(uint32_t length) { return ElementBuffer(guards_, c_, length); }

  void Check() const {
    for (const Prepared& prepared : prepared_) {
      const tagNET_PROGRAMME_INFO& p = *prepared.programme;
      CheckText(p.szProgrammeName, c_.fill, "programme name");
      CheckText(p.szProgrammeID, c_.fill, "programme ID");
      CheckText(p.stuOrdinary.szDescription, c_.fill, "description");
      CheckCount(p.stuOrdinary.nWindowsNum, c_.Word(), 16, "windows");
      for (size_t j = 0; j < 16; ++j) {
        const tagNET_PROGRAMME_WINDOW_INFO& w = p.stuOrdinary.stuWindows[j];
        if (w.pElementsBuf != prepared.buffers[j] ||
            w.nElementsBufLen != c_.bufferLength[j % kBufferSlots])
          Fail("element buffer fields changed");
        CheckText(w.szWinID, c_.fill, "window ID");
        if (w.nElementsNum != c_.Word())
          CheckElementEntries(w.pElementsBuf, w.nElementsBufLen, w.nElementsNum);
      }
    }
  }

 private:
  struct Prepared {
    const tagNET_PROGRAMME_INFO* programme;
    unsigned char* buffers[16];
  };
  Guards& guards_;
  const Control& c_;
  std::vector<Prepared> prepared_;
};

// One call on fresh caller memory: `run(guards, programmes)` makes its records and calls the
// codec; the guards and the programme records are checked afterwards, whether the call ended
// normally or by a Json::Exception. Returns true when it ended normally.
template <typename Run>
bool Call(const Control& c, const char* name, Run run) {
  Guards guards;
  Programmes programmes(guards, c);
  bool normal = true;
  try {
    run(guards, programmes);
  } catch (const Json::Exception&) {
    normal = false;
  }
  guards.Check(name);
  programmes.Check();
  return normal;
}

// A record that starts with dwSize: the codecs must leave it alone.
template <typename R>
void CheckSize(const R& r, const Control& c, const char* name) {
  if (r.dwSize != c.Word()) Fail("dwSize changed by", name);
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
template <typename Out>
void CheckSkipMode(Guards& g, const Json::Value& v, Out& out, const Report& stopped,
                   const std::vector<std::vector<unsigned char>>& before, const char* name) {
  g.Restore(before);
  Report skipping(gsc::OnFailure::kSkip);
  if (!deserialize(v, out, skipping)) Fail("the skipping deserialize stopped:", name);
  const auto skipped = g.Snapshot();
  const auto& found = skipping.findings();
  if (found.size() < stopped.size() ||
      !std::equal(stopped.findings().begin(), stopped.findings().end(), found.begin(), SameFinding))
    Fail("skip mode found otherwise than stop mode up to the failure:", name);
  const Json::Value nulled = NullAtFailures(v, skipping, name);
  g.Restore(before);
  Report again;
  if (!deserialize(nulled, out, again)) Fail("the answer with nulls still fails:", name);
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
template <typename Out>
Report BothWays(Guards& g, const Json::Value& v, Out& out, const char* name) {
  const auto before = g.Snapshot();
  std::exception_ptr exception;
  std::string thrown;
  try {
    deserialize(v, out);
  } catch (const Json::Exception& e) {
    exception = std::current_exception();
    thrown = e.what();
  }
  const auto plain = g.Snapshot();
  g.Restore(before);
  Report report;
  const bool finished = deserialize(v, out, report);
  if (g.Snapshot() != plain) Fail("the reporting deserialize left other bytes:", name);
  if (finished == (exception != nullptr)) Fail("the reporting deserialize ended otherwise:", name);
  CheckFindings(report, exception != nullptr, thrown, name);
  CheckSkipMode(g, v, out, report, before, name);
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

// Operations whose answer carries nothing still must not touch the record.
template <typename Out>
void Empty(const Json::Value& v, const Control& c, const char* name) {
  Call(c, name, [&](Guards& g, Programmes&) {
    Out& out = NewRecord<Out>(g, c);
    if (!BothWays(g, v, out, name).empty()) Fail("findings for an answer nobody reads:", name);
    CheckSize(out, c, name);
  });
}

void AllDeserializers(const Json::Value& v, const Control& c) {
  Empty<tagNET_OUT_SET_GUIDESCREEN_CFG>(v, c, "SET_GUIDESCREEN_CFG");
  Empty<tagNET_OUT_SET_GD_STATUS>(v, c, "SET_GD_STATUS");
  Empty<tagNET_OUT_MODIFY_ONE_PROGRAMME>(v, c, "MODIFY_ONE_PROGRAMME");
  Empty<tagNET_OUT_DEL_PROGRAMMES>(v, c, "DEL_PROGRAMMES");
  Empty<tagNET_OUT_MODIFY_IMME_PROGRAMMEPLAN>(v, c, "MODIFY_IMME_PROGRAMMEPLAN");
  Empty<tagNET_OUT_MODIFY_TIMER_PROGRAMMEPLAN>(v, c, "MODIFY_TIMER_PROGRAMMEPLAN");
  Empty<tagNET_OUT_DEL_PROGRAMMEPLANS>(v, c, "DEL_PROGRAMMEPLANS");

  Call(c, "GET_GUIDESCREEN_CFG_BYID", [&](Guards& g, Programmes&) {
    auto& out = NewRecord<tagNET_OUT_GET_GUIDESCREEN_CFG_BYID>(g, c);
    FixBools(out.stuInfo, c.boolValue);
    try {
      BothWays(g, v, out, "GET_GUIDESCREEN_CFG_BYID");
    } catch (const Json::Exception&) {
      CheckAttribute(out.stuInfo, c);
      throw;
    }
    CheckAttribute(out.stuInfo, c);
    CheckSize(out, c, "GET_GUIDESCREEN_CFG_BYID");
  });

  Call(c, "GET_ALL_GUIDESCREEN_CFG", [&](Guards& g, Programmes&) {
    auto& out = NewRecord<tagNET_OUT_GET_ALL_GUIDESCREEN_CFG>(g, c);
    auto* infos = c.nullScreens
                      ? nullptr
                      : &NewRecord<tagNET_GUIDESCREEN_ATTRIBUTE_INFO>(g, c, c.screenCapacity);
    for (uint32_t i = 0; infos != nullptr && i < c.screenCapacity; ++i)
      FixBools(infos[i], c.boolValue);
    out.nMaxInfosNum = c.screenCapacity;
    out.pstuInfos = infos;
    const bool normal = [&] {
      try {
        const Report report = BothWays(g, v, out, "GET_ALL_GUIDESCREEN_CFG");
        CheckCollection(report, v, infos != nullptr ? c.screenCapacity : 0,
                        "GET_ALL_GUIDESCREEN_CFG");
        return true;
      } catch (const Json::Exception&) {
        return false;
      }
    }();
    for (uint32_t i = 0; infos != nullptr && i < c.screenCapacity; ++i) CheckAttribute(infos[i], c);
    if (out.pstuInfos != infos || out.nMaxInfosNum != c.screenCapacity)
      Fail("caller array fields changed by GET_ALL_GUIDESCREEN_CFG");
    if (normal && out.nRetInfosNum > (infos != nullptr ? c.screenCapacity : 0))
      Fail("GET_ALL_GUIDESCREEN_CFG returned more screens than the array holds");
  });

  Call(c, "GET_PROGRAMME_BYID", [&](Guards& g, Programmes& p) {
    auto& out = NewRecord<tagNET_OUT_GET_PROGRAMME_BYID>(g, c);
    p.Prepare(out.stuProgramme);
    BothWays(g, v, out, "GET_PROGRAMME_BYID");
    CheckSize(out, c, "GET_PROGRAMME_BYID");
  });

  Call(c, "GET_ALL_PROGRAMMES", [&](Guards& g, Programmes& p) {
    auto& out = NewRecord<tagNET_OUT_GET_ALL_PROGRAMMES>(g, c);
    auto* infos =
        c.nullProgrammes ? nullptr : &NewRecord<tagNET_PROGRAMME_INFO>(g, c, c.programmeCapacity);
    for (uint32_t i = 0; infos != nullptr && i < c.programmeCapacity; ++i) p.Prepare(infos[i]);
    out.nMaxInfosNum = c.programmeCapacity;
    out.pstuInfos = infos;
    const Report report = BothWays(g, v, out, "GET_ALL_PROGRAMMES");
    CheckCollection(report, v, infos != nullptr ? c.programmeCapacity : 0, "GET_ALL_PROGRAMMES");
    if (out.nRetInfosNum > (infos != nullptr ? c.programmeCapacity : 0))
      Fail("GET_ALL_PROGRAMMES returned more programmes than the array holds");
  });

  Call(c, "GET_ALL_BRIEFLYPROGRAMMES", [&](Guards& g, Programmes&) {
    auto& out = NewRecord<tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES>(g, c);
    for (auto& info : out.stuInfos) FixBools(info, c.boolValue);
    CheckCollection(BothWays(g, v, out, "GET_ALL_BRIEFLYPROGRAMMES"), v, 32,
                    "GET_ALL_BRIEFLYPROGRAMMES");
    if (out.nRetInfosNum > 32) Fail("brief listing past 32 entries");
    for (const auto& info : out.stuInfos) {
      CheckText(info.szProgrammeName, c.fill, "brief name");
      CheckText(info.szProgrammeID, c.fill, "brief ID");
    }
  });

  Call(c, "ADD_ONE_PROGRAMME", [&](Guards& g, Programmes&) {
    auto& out = NewRecord<tagNET_OUT_ADD_ONE_PROGRAMME>(g, c);
    const Report report = BothWays(g, v, out, "ADD_ONE_PROGRAMME");
    // A text-cut finding appears exactly when the text did not fit.
    const Json::Value* id = v.isObject() ? &v["ProgrammeID"] : nullptr;
    const bool long_text = id != nullptr && id->isString() && id->asString().size() > 63;
    if (HasFinding(report, FindingKind::kTextCut, "ProgrammeID") != long_text)
      Fail("text-cut finding disagrees with the text's length");
    if (std::memchr(out.szProgrammeID, '\0', sizeof out.szProgrammeID) == nullptr)
      Fail("new programme ID unterminated");
  });

  Call(c, "GET_ALL_PROGRAMMEPLANS", [&](Guards& g, Programmes&) {
    auto& out = NewRecord<tagNET_OUT_GET_ALL_PROGRAMMEPLANS>(g, c);
    auto* imme =
        c.nullImme ? nullptr : &NewRecord<tagNET_IMMEDIATELY_PLAN_INFO>(g, c, c.planCapacity);
    auto* timer = c.nullTimer ? nullptr : &NewRecord<tagNET_TIMER_PLAN_INFO>(g, c, c.planCapacity);
    for (uint32_t i = 0; i < c.planCapacity; ++i) {
      if (imme != nullptr) FixBools(imme[i], c.boolValue);
      if (timer != nullptr) FixBools(timer[i], c.boolValue);
    }
    out.nMaxPlanNum = c.planCapacity;
    out.pstuImmePlans = imme;
    out.pstuTimerPlans = timer;
    const bool normal = [&] {
      try {
        BothWays(g, v, out, "GET_ALL_PROGRAMMEPLANS");
        return true;
      } catch (const Json::Exception&) {
        return false;
      }
    }();
    for (uint32_t i = 0; i < c.planCapacity; ++i) {
      if (imme != nullptr) CheckImmePlan(imme[i], c);
      if (timer != nullptr) CheckTimerPlan(timer[i], c);
    }
    if (normal && (out.nRetImmePlanNum > (imme != nullptr ? c.planCapacity : 0) ||
                   out.nRetTimerPlanNum > (timer != nullptr ? c.planCapacity : 0)))
      Fail("GET_ALL_PROGRAMMEPLANS returned more plans than an array holds");
  });

  Call(c, "GET_PROGRAMMEPLAN_BYID", [&](Guards& g, Programmes&) {
    auto& out = NewRecord<tagNET_OUT_GET_PROGRAMMEPLAN_BYID>(g, c);
    FixBools(out.stuImmePlan, c.boolValue);
    FixBools(out.stuTimerPlan, c.boolValue);
    BothWays(g, v, out, "GET_PROGRAMMEPLAN_BYID");
    if (out.emPlanType < EM_PROGRAMMEPLAN_TYPE_UNKNOWN ||
        out.emPlanType > EM_PROGRAMMEPLAN_TYPE_TIMER)
      Fail("plan kind out of range");
    CheckImmePlan(out.stuImmePlan, c);
    CheckTimerPlan(out.stuTimerPlan, c);
  });

  Call(c, "ADD_PROGRAMMEPLAN", [&](Guards& g, Programmes&) {
    auto& out = NewRecord<tagNET_OUT_ADD_PROGRAMMEPLAN>(g, c);
    BothWays(g, v, out, "ADD_PROGRAMMEPLAN");
    if (std::memchr(out.szProgrammePlanID, '\0', sizeof out.szProgrammePlanID) == nullptr)
      Fail("new plan ID unterminated");
  });
}

// An element reader on a pre-filled, aligned record of its kind.
template <typename Element>
void ElementReader(const Json::Value& v, const Control& c, const char* name,
                   void (*parse)(const Json::Value&, Element*)) {
  Call(c, name, [&](Guards& g, Programmes&) {
    Element& e = NewRecord<Element>(g, c);
    FixElementBools(e, c.boolValue);
    parse(v, &e);
    CheckText(e.szName, c.fill, name);
    CheckCount(e.nNoteNum, c.Word(), 4, "notes");
  });
}

void AllRecordReaders(const Json::Value& v, const Control& c) {
  Call(c, "ParseGuidScreenAttribute", [&](Guards& g, Programmes&) {
    auto& info = NewRecord<tagNET_GUIDESCREEN_ATTRIBUTE_INFO>(g, c);
    FixBools(info, c.boolValue);
    ParseGuidScreenAttribute(v, nullptr);
    ParseGuidScreenAttribute(v, &info);
    CheckAttribute(info, c);
  });
  Call(c, "ParseText", [&](Guards& g, Programmes&) {
    auto& info = NewRecord<tagNET_GUIDESCREEN_TEXT_INFO>(g, c);
    ParseText(v, nullptr);
    ParseText(v, &info);
    CheckText(info.szContent, c.fill, "content");
    CheckText(info.szFontStyle, c.fill, "font style");
  });
  Call(c, "ParseNotes", [&](Guards& g, Programmes&) {
    auto& info = NewRecord<tagNET_GUIDESCREEN_NOTE_INFO>(g, c);
    FixBools(info, c.boolValue);
    ParseNotes(v, nullptr);
    ParseNotes(v, &info);
    CheckText(info.stuNoteInfo.szContent, c.fill, "note content");
  });
  ElementReader<tagNET_VIDEO_ELEMENT_INFO>(v, c, "ParseVideoElement", ParseVideoElement);
  ElementReader<tagNET_PICTURE_ELEMENT_INFO>(v, c, "ParsePictureElement", ParsePictureElement);
  ElementReader<tagNET_TEXT_ELEMENT_INFO>(v, c, "ParseTextElement", ParseTextElement);
  ElementReader<tagNET_PLACEHOLDER_ELEMENT_INFO>(v, c, "ParsePlaceHolderElement",
                                                 ParsePlaceHolderElement);
  ElementReader<tagNET_CAPTURE_ELEMENT_INFO>(v, c, "ParseCaptureElement", ParseCaptureElement);
  Call(c, "ParseProgramme", [&](Guards& g, Programmes& p) {
    auto& info = NewRecord<tagNET_PROGRAMME_INFO>(g, c);
    p.Prepare(info);
    ParseProgramme(v, nullptr);
    ParseProgramme(v, &info);
  });
  Call(c, "ReadElementList", [&](Guards&, Programmes& p) {
    const uint32_t length = c.bufferLength[0] == kNoLength ? 0 : c.bufferLength[0];
    unsigned char* buffer = p.Buffer(length);
    CheckElementEntries(buffer, length, programme::ReadElementList(v, buffer, length));
    if (programme::ReadElementList(v, nullptr, kNoLength) != 0) Fail("null buffer held entries");
  });
  Call(c, "ParseImmePlan", [&](Guards& g, Programmes&) {
    auto& info = NewRecord<tagNET_IMMEDIATELY_PLAN_INFO>(g, c);
    FixBools(info, c.boolValue);
    ParseImmePlan(v, nullptr);
    ParseImmePlan(v, &info);
    CheckImmePlan(info, c);
  });
  Call(c, "ParseTimerPlan", [&](Guards& g, Programmes&) {
    auto& info = NewRecord<tagNET_TIMER_PLAN_INFO>(g, c);
    FixBools(info, c.boolValue);
    ParseTimerPlan(v, nullptr);
    ParseTimerPlan(v, &info);
    CheckTimerPlan(info, c);
  });
}

// The field readers under every record reader.
void FieldReaders(const Json::Value& v, const Control& c) {
  Call(c, "GetJsonString", [&](Guards& g, Programmes&) {
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
  Call(c, "field codecs", [&](Guards& g, Programmes&) {
    auto& time = NewRecord<tagNET_TIME_OF_DAY>(g, c);
    auto& date = NewRecord<tagNET_DATE_INFO>(g, c);
    auto& rect = NewRecord<tagNET_RECT>(g, c);
    auto& color = NewRecord<tagQX_COLOR_RGBA>(g, c);
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
