// Fuzzes every writer with input records built from arbitrary bytes.
//
// Records are built field by field: booleans are 0 or 1 (any other byte in a bool is undefined
// behaviour in the caller's program, not a case the library can meet), counts range up to
// 2^32 - 1, enumerations over any int, texts are empty, terminated at any length or fill their
// whole field without a terminator. Element buffers hold exactly nElementsNum entries under valid
// headers of any kind, unknown ones included, and start 4 but not 8 bytes aligned; the writers
// trust that layout, as they trust nInfosNum.
//
// Every record sits in a guarded block whose guards are poisoned, so a read past a caller's
// array or element buffer stops at once. After each call the input records must be unchanged,
// every text the JSON carries must fit the field it came from (a longer one was read past its
// field), and the JSON must be written to text and parse back to the same text.
#include <fuzzer/FuzzedDataProvider.h>
#include <json/json.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
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
  template <typename R>
  R* New(size_t count = 1) {
    return reinterpret_cast<R*>(Add(sizeof(R) * count, 0));
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

// Field values drawn from the fuzzer's bytes, biased towards the edges that matter.
class Maker {
 public:
  // With `asciiTexts` every text is printable ASCII, so the round trip can be checked byte for
  // byte; otherwise texts hold any bytes.
  Maker(FuzzedDataProvider& in, Inputs& inputs, bool asciiTexts)
      : in_(in), inputs_(inputs), ascii_(asciiTexts) {}

  bool Bool() { return in_.ConsumeBool(); }

  // A count: mostly around the capacity, sometimes huge or anything.
  uint32_t Count(uint32_t capacity) {
    switch (in_.ConsumeIntegralInRange(0, 4)) {
      case 0:
        return in_.ConsumeIntegralInRange<uint32_t>(0, capacity + 1);
      case 1:
        return std::numeric_limits<uint32_t>::max();
      case 2:
        return 0x80000000U;
      case 3:
        return in_.ConsumeIntegral<uint32_t>();
      default:
        return in_.ConsumeIntegralInRange<uint32_t>(0, capacity);
    }
  }

  int32_t Int() {
    switch (in_.ConsumeIntegralInRange(0, 3)) {
      case 0:
        return in_.ConsumeIntegralInRange(-2, 100);
      case 1:
        return in_.PickValueInArray(
            {std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max(), -1, 0});
      default:
        return in_.ConsumeIntegral<int32_t>();
    }
  }
  uint32_t Unsigned() { return static_cast<uint32_t>(Int()); }

  template <typename E>
  void Enumeration(E& field) {
    field = static_cast<E>(in_.ConsumeBool() ? in_.ConsumeIntegralInRange(-1, 7) : Int());
  }

  double Real() {
    switch (in_.ConsumeIntegralInRange(0, 3)) {
      case 0:
        return in_.PickValueInArray(
            {0.0, -0.0, std::numeric_limits<double>::infinity(),
             -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN(),
             std::numeric_limits<double>::denorm_min(), std::numeric_limits<double>::max(), 1.5});
      case 1:
        return in_.ConsumeFloatingPoint<double>();
      default: {
        double value = 0;
        const std::vector<uint8_t> bits = in_.ConsumeBytes<uint8_t>(sizeof value);
        if (!bits.empty()) std::memcpy(&value, bits.data(), bits.size());
        return value;
      }
    }
  }

  // Empty, terminated at any length, or filling the whole field without a terminator.
  template <size_t N>
  void Text(char (&field)[N]) {
    std::memset(field, 'T', N);
    const int mode = in_.ConsumeIntegralInRange(0, 3);
    if (mode == 0) {
      field[0] = '\0';
      return;
    }
    if (mode == 3) {
      // Unterminated: a short run of bytes repeated over the whole field, zeros replaced.
      const std::string run = in_.ConsumeBytesAsString(in_.ConsumeIntegralInRange<size_t>(1, 8));
      for (size_t i = 0; i < N && !run.empty(); ++i) field[i] = run[i % run.size()];
      for (char& ch : field) ch = Printable(ch);
      return;
    }
    const size_t length = in_.ConsumeIntegralInRange<size_t>(0, N - 1);
    const std::string text = in_.ConsumeBytesAsString(length);
    std::memcpy(field, text.data(), text.size());
    field[text.size()] = '\0';
    if (ascii_)
      for (size_t i = 0; i < text.size(); ++i) field[i] = Printable(field[i]);
  }

  // Never a zero byte; printable ASCII in the ASCII mode.
  char Printable(char ch) const {
    if (ascii_) return static_cast<char>(' ' + static_cast<unsigned char>(ch) % 95U);
    return ch == '\0' ? 'Z' : ch;
  }

  template <size_t N>
  void Bytes(uint8_t (&field)[N]) {
    std::memset(field, in_.ConsumeIntegral<uint8_t>(), N);
  }

  void Rect(tagNET_RECT& r) { r = {Int(), Int(), Int(), Int()}; }
  void Color(tagQX_COLOR_RGBA& r) { r = {Int(), Int(), Int(), Int()}; }
  void Time(tagNET_TIME_OF_DAY& t) { t = {Int(), Int(), Int()}; }
  void Date(tagNET_DATE_INFO& d) { d = {Int(), Int(), Int()}; }

  // ---- Records --------------------------------------------------------------------------------

  void Make(tagNET_GUIDESCREEN_ATTRIBUTE_INFO& r) {
    r.dwSize = sizeof r;
    Text(r.szID);
    Enumeration(r.emStatus);
    r.bIsForeverOpen = Bool();
    r.nTimeNum = Count(8);
    for (auto& time : r.stuTime) {
      time.bEnable = Bool();
      Enumeration(time.emDateType);
      time.nPlayDatesNum = Count(32);
      for (auto& date : time.nPlayDates) date = Unsigned();
      Time(time.stuOpenTime);
      Time(time.stuCloseTime);
      Bytes(time.byReserved);
    }
    r.nBright = Unsigned();
    r.nContrast = Unsigned();
    r.nSaturation = Unsigned();
    r.nVolume = Unsigned();
    r.nWidth = Unsigned();
    r.nHeight = Unsigned();
    r.nSplitScreenListNum = Count(16);
    for (auto& split : r.stuSplitScreenList) {
      Text(split.szScreenId);
      Rect(split.stuRect);
      split.nChildScreenBright = Unsigned();
      Bytes(split.byReserved);
    }
    r.stuAutoBright.bEnable = Bool();
    r.stuAutoBright.nLightBright = Unsigned();
    r.stuAutoBright.nDarkBright = Unsigned();
    for (auto& sun : r.stuAutoBright.stuTime) {
      const bool unset = Bool();
      sun.nSunrise = unset ? 0 : Unsigned();
      sun.nSunset = unset ? 0 : Unsigned();
      Bytes(sun.byReserved);
    }
    Bytes(r.byReserved);
  }

  void Make(tagNET_GUIDESCREEN_TEXT_INFO& r) {
    Text(r.szContent);
    r.nFontSize = Unsigned();
    Color(r.stuFontColor);
    Text(r.szFontStyle);
    r.dbLineHeight = Real();
    Enumeration(r.emTextHoriAlign);
    Enumeration(r.emTextVertAlign);
    r.nPlayTime = Unsigned();
    r.nPlayCount = Unsigned();
    r.nStayTime = Unsigned();
    Enumeration(r.emEnterStyle);
    Enumeration(r.emExitStyle);
    Bytes(r.byReserved);
  }

  void Make(tagNET_GUIDESCREEN_NOTE_INFO& r) {
    r.bEnable = Bool();
    Make(r.stuNoteInfo);
    Rect(r.stuNoteRect);
    Bytes(r.byReserved);
  }

  template <typename Element>
  void Common(Element& r) {
    Text(r.szName);
    r.bFillerState = Bool();
    r.nNoteNum = Count(4);
    for (auto& note : r.stuNote) Make(note);
    Bytes(r.byReserved);
  }

  void Make(tagNET_VIDEO_ELEMENT_INFO& r) {
    Common(r);
    Text(r.szPath);
    r.nPlayCount = Unsigned();
  }
  void Make(tagNET_PICTURE_ELEMENT_INFO& r) {
    Common(r);
    Text(r.szPath);
    r.nPlayTime = Unsigned();
    r.nPlayCount = Unsigned();
    r.nDiaphaneity = Unsigned();
    r.nStayTime = Unsigned();
    Enumeration(r.emEnterStyle);
    Enumeration(r.emExitStyle);
  }
  void Make(tagNET_TEXT_ELEMENT_INFO& r) {
    Common(r);
    Make(r.stuText);
  }
  void Make(tagNET_PLACEHOLDER_ELEMENT_INFO& r) { Common(r); }
  void Make(tagNET_CAPTURE_ELEMENT_INFO& r) {
    Common(r);
    Text(r.szUserName);
    Text(r.szPassword);
    Text(r.szIP);
    r.nPort = Unsigned();
    r.nChannel = Unsigned();
    Enumeration(r.emCaptureType);
    r.nPlayTime = Unsigned();
  }

  // One entry of an element buffer: a header of `kind`, then the kind's record built here.
  template <typename Element>
  static void Entry(unsigned char*& at, Maker& maker) {
    Element element;
    maker.Make(element);
    std::memcpy(at, &element, sizeof element);
    at += sizeof element;
  }

  // Lays `count` entries of drawn kinds into a buffer of exactly their size.
  void ElementBuffer(tagNET_PROGRAMME_WINDOW_INFO& w) {
    if (in_.ConsumeIntegralInRange(0, 7) == 0) {
      // No buffer: whatever the count, nothing is written.
      w.pElementsBuf = nullptr;
      w.nElementsNum = Count(4);
      w.nElementsBufLen = Unsigned();
      return;
    }
    const uint32_t count = in_.ConsumeIntegralInRange<uint32_t>(0, 4);
    std::vector<int32_t> kinds;
    size_t total = 0;
    for (uint32_t e = 0; e < count; ++e) {
      const int32_t kind = in_.ConsumeBool() ? in_.ConsumeIntegralInRange(0, 5) : Int();
      kinds.push_back(kind);
      total += sizeof(tagNET_ELEMENT_COMMON_INFO) + RecordSize(kind);
    }
    unsigned char* buffer = inputs_.Add(total, 4);
    unsigned char* at = buffer;
    for (const int32_t kind : kinds) {
      tagNET_ELEMENT_COMMON_INFO header;
      header.emElementType = static_cast<EM_ELEMENT_TYPE>(kind);
      Bytes(header.byReserved);
      std::memcpy(at, &header, sizeof header);
      at += sizeof header;
      switch (kind) {
        case EM_ELEMENT_TYPE_VIDEO:
          Entry<tagNET_VIDEO_ELEMENT_INFO>(at, *this);
          break;
        case EM_ELEMENT_TYPE_PICTURE:
          Entry<tagNET_PICTURE_ELEMENT_INFO>(at, *this);
          break;
        case EM_ELEMENT_TYPE_TEXT:
          Entry<tagNET_TEXT_ELEMENT_INFO>(at, *this);
          break;
        case EM_ELEMENT_TYPE_PLACEHOLDER:
          Entry<tagNET_PLACEHOLDER_ELEMENT_INFO>(at, *this);
          break;
        case EM_ELEMENT_TYPE_CAPTURE:
          Entry<tagNET_CAPTURE_ELEMENT_INFO>(at, *this);
          break;
        default:
          break;  // a header alone
      }
    }
    w.pElementsBuf = buffer;
    w.nElementsNum = count;
    // Not looked at by the writers: anything goes.
    w.nElementsBufLen = in_.ConsumeBool() ? static_cast<uint32_t>(total) : Unsigned();
  }

  static size_t RecordSize(int32_t kind) {
    switch (kind) {
      case EM_ELEMENT_TYPE_VIDEO:
        return sizeof(tagNET_VIDEO_ELEMENT_INFO);
      case EM_ELEMENT_TYPE_PICTURE:
        return sizeof(tagNET_PICTURE_ELEMENT_INFO);
      case EM_ELEMENT_TYPE_TEXT:
        return sizeof(tagNET_TEXT_ELEMENT_INFO);
      case EM_ELEMENT_TYPE_PLACEHOLDER:
        return sizeof(tagNET_PLACEHOLDER_ELEMENT_INFO);
      case EM_ELEMENT_TYPE_CAPTURE:
        return sizeof(tagNET_CAPTURE_ELEMENT_INFO);
      default:
        return 0;
    }
  }

  void Make(tagNET_PROGRAMME_INFO& r) {
    Text(r.szProgrammeName);
    Text(r.szProgrammeID);
    r.bEnable = Bool();
    tagNET_ORDINARY_PROGRAMME_INFO& o = r.stuOrdinary;
    o.bTempletState = Bool();
    Text(o.szDescription);
    o.nWindowsNum = Count(16);
    const uint32_t walked = o.nWindowsNum < 16 ? o.nWindowsNum : 16;
    for (uint32_t j = 0; j < 16; ++j) {
      tagNET_PROGRAMME_WINDOW_INFO& w = o.stuWindows[j];
      Text(w.szWinID);
      w.nVolume = Int();
      Color(w.stuBackgroundColor);
      w.nDiaphaneity = Unsigned();
      Enumeration(w.emTourPeriod);
      if (in_.ConsumeBool()) w.emTourPeriod = EM_TOUR_PERIOD_TYPE_CUSTOM_TIME;
      w.nTourPeriodTime = Unsigned();
      Bytes(w.byReserved1);
      Bytes(w.byReserved);
      if (j < walked) {
        ElementBuffer(w);
      } else {
        w.pElementsBuf = nullptr;  // never walked: the count says so
        w.nElementsNum = Unsigned();
        w.nElementsBufLen = Unsigned();
      }
    }
    Bytes(r.byReserved);
  }

  void Make(tagNET_IMMEDIATELY_PLAN_INFO& r) {
    Text(r.szPlanName);
    Text(r.szPlanID);
    Text(r.szSplitScreenID);
    r.bEnable = Bool();
    r.nPlayTime = Unsigned();
    Text(r.szProgrammeName);
    Text(r.szProgrammeID);
    Bytes(r.byReserved);
  }

  void Make(tagNET_TIMER_PLAN_INFO& r) {
    Text(r.szPlanName);
    Text(r.szPlanID);
    Text(r.szSplitScreenID);
    Enumeration(r.emPeriodType);
    r.nPlayDatesNum = Count(32);
    for (auto& date : r.nPlayDates) date = Unsigned();
    Date(r.stuPlayStartDate);
    Date(r.stuPlayEndDate);
    Enumeration(r.emReviewState);
    Text(r.szReviewOpinion);
    r.bOverdue = Bool();
    r.nProgrammesNum = Count(32);
    for (auto& programme : r.stuProgrammes) {
      Text(programme.szProgrammeName);
      Text(programme.szProgrammeID);
      programme.bIsBgProgramme = Bool();
      Time(programme.stuStartTime);
      Time(programme.stuEndTime);
      Bytes(programme.byReserved);
    }
    Bytes(r.byReserved);
  }

  template <size_t N>
  void IdList(uint32_t& count, char (&ids)[32][N]) {
    count = Count(32);
    for (auto& id : ids) Text(id);
  }

 private:
  FuzzedDataProvider& in_;
  Inputs& inputs_;
  bool ascii_;
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
template <typename R>
std::pair<Json::Value, gsc::Report> Serialize(const Inputs& inputs, const R& in, const char* call) {
  const Json::Value plain = Check(inputs, call, [&](Json::Value& json) {
    if (!serialize(in, json)) Fail("serialize returned false:", call);
  });
  gsc::Report report;
  const Json::Value reported = Check(inputs, call, [&](Json::Value& json) {
    if (!serialize(in, json, report)) Fail("the reporting serialize returned false:", call);
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

// What a writer writes, its reader reads back without meeting a member it does not know.
template <typename Out>
void ReadBack(const Json::Value& result, Out& out, const char* call) {
  gsc::Report report;
  deserialize(result, out, report);
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

}  // namespace
}  // namespace gsc::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace gsc::fuzz;
  FuzzedDataProvider in(data, size);
  Inputs inputs;
  Maker make(in, inputs, in.ConsumeBool());

  // Screens: nInfosNum is trusted, so the array holds exactly that many records, or is null.
  auto* setCfg = inputs.New<tagNET_IN_SET_GUIDESCREEN_CFG>();
  if (in.ConsumeIntegralInRange(0, 5) == 0) {
    setCfg->pstuInfos = nullptr;
    setCfg->nInfosNum = make.Count(4);
  } else {
    setCfg->nInfosNum = in.ConsumeIntegralInRange<uint32_t>(0, 3);
    setCfg->pstuInfos = inputs.New<tagNET_GUIDESCREEN_ATTRIBUTE_INFO>(setCfg->nInfosNum);
    for (uint32_t i = 0; i < setCfg->nInfosNum; ++i) make.Make(setCfg->pstuInfos[i]);
  }
  auto* byId = inputs.New<tagNET_IN_GET_GUIDESCREEN_CFG_BYID>();
  make.Text(byId->szScreenID);
  auto* status = inputs.New<tagNET_IN_SET_GD_STATUS>();
  make.Text(status->szScreenId);
  status->nGDNum = make.Count(170);
  for (auto& state : status->emStatus)
    state =
        static_cast<EM_GD_STATUS>(in.ConsumeBool() ? in.ConsumeIntegralInRange(0, 3) : make.Int());

  auto* programmeById = inputs.New<tagNET_IN_GET_PROGRAMME_BYID>();
  make.Text(programmeById->szProgrammeID);
  auto* addProgramme = inputs.New<tagNET_IN_ADD_ONE_PROGRAMME>();
  make.Make(addProgramme->stuInfo);
  auto* modifyProgramme = inputs.New<tagNET_IN_MODIFY_ONE_PROGRAMME>();
  make.Make(modifyProgramme->stuProgramme);
  auto* delProgrammes = inputs.New<tagNET_IN_DEL_PROGRAMMES>();
  make.IdList(delProgrammes->nProgrammeIDListNum, delProgrammes->szProgrammeIDList);

  auto* planById = inputs.New<tagNET_IN_GET_PROGRAMMEPLAN_BYID>();
  make.Text(planById->szProgrammePlanID);
  auto* addImme = inputs.New<tagNET_IN_ADD_IMME_PROGRAMMEPLAN>();
  make.Make(addImme->stuInfo);
  auto* addTimer = inputs.New<tagNET_IN_ADD_TIMER_PROGRAMMEPLAN>();
  make.Make(addTimer->stuInfo);
  auto* modifyImme = inputs.New<tagNET_IN_MODIFY_IMME_PROGRAMMEPLAN>();
  make.Make(modifyImme->stuProgrammePlan);
  auto* modifyTimer = inputs.New<tagNET_IN_MODIFY_TIMER_PROGRAMMEPLAN>();
  make.Make(modifyTimer->stuProgrammePlan);
  auto* delPlans = inputs.New<tagNET_IN_DEL_PROGRAMMEPLANS>();
  make.IdList(delPlans->nProgrammePlanIDListNum, delPlans->szProgrammePlanIDList);

  // Records for the record writers called directly.
  auto* text = inputs.New<tagNET_GUIDESCREEN_TEXT_INFO>();
  make.Make(*text);
  auto* note = inputs.New<tagNET_GUIDESCREEN_NOTE_INFO>();
  make.Make(*note);
  auto* video = inputs.New<tagNET_VIDEO_ELEMENT_INFO>();
  make.Make(*video);
  auto* picture = inputs.New<tagNET_PICTURE_ELEMENT_INFO>();
  make.Make(*picture);
  auto* textElement = inputs.New<tagNET_TEXT_ELEMENT_INFO>();
  make.Make(*textElement);
  auto* placeholder = inputs.New<tagNET_PLACEHOLDER_ELEMENT_INFO>();
  make.Make(*placeholder);
  auto* capture = inputs.New<tagNET_CAPTURE_ELEMENT_INFO>();
  make.Make(*capture);
  auto* attribute = inputs.New<tagNET_GUIDESCREEN_ATTRIBUTE_INFO>();
  make.Make(*attribute);
  inputs.Seal();

  // The requests without parameters share one empty record kind each.
  auto* getAllCfg = inputs.New<tagNET_IN_GET_ALL_GUIDESCREEN_CFG>();
  auto* getAllProgrammes = inputs.New<tagNET_IN_GET_ALL_PROGRAMMES>();
  auto* getBrief = inputs.New<tagNET_IN_GET_ALL_BRIEFLYPROGRAMMES>();
  auto* getAllPlans = inputs.New<tagNET_IN_GET_ALL_PROGRAMMEPLANS>();
  inputs.Seal();

  const auto config = Serialize(inputs, *setCfg, "SET_GUIDESCREEN_CFG");
  {
    tagNET_GUIDESCREEN_ATTRIBUTE_INFO screens[3] = {};
    tagNET_OUT_GET_ALL_GUIDESCREEN_CFG out{0, 3, 0, screens};
    ReadBack(config.first, out, "SET_GUIDESCREEN_CFG");
  }
  CheckTerminated(Serialize(inputs, *byId, "GET_GUIDESCREEN_CFG_BYID").second, "szScreenID",
                  byId->szScreenID);
  Serialize(inputs, *getAllCfg, "GET_ALL_GUIDESCREEN_CFG");
  {
    const gsc::Report report = Serialize(inputs, *status, "SET_GD_STATUS").second;
    CheckCount(report, "nGDNum", status->nGDNum, 170);
    bool codeless = false;
    for (uint32_t i = 0; i < status->nGDNum && i < 170; ++i) {
      const int state = static_cast<int>(status->emStatus[i]);
      codeless = codeless || (state != EM_GD_STATUS_CODE_100 && state != EM_GD_STATUS_CODE_010 &&
                              state != EM_GD_STATUS_CODE_001);
    }
    bool reported = false;
    for (const gsc::Finding& f : report.findings())
      reported = reported || f.kind == gsc::FindingKind::kDisplayUnitWithoutCode;
    if (reported != codeless) Fail("display unit finding disagrees with the states");
  }
  Serialize(inputs, *programmeById, "GET_PROGRAMME_BYID");
  Serialize(inputs, *getAllProgrammes, "GET_ALL_PROGRAMMES");
  Serialize(inputs, *getBrief, "GET_ALL_BRIEFLYPROGRAMMES");
  {
    const Json::Value added = Serialize(inputs, *addProgramme, "ADD_ONE_PROGRAMME").first;
    Json::Value result;
    result["Programme"] = added["info"];
    tagNET_OUT_GET_PROGRAMME_BYID out{};
    ReadBack(result, out, "ADD_ONE_PROGRAMME");
    const gsc::Report modified = Serialize(inputs, *modifyProgramme, "MODIFY_ONE_PROGRAMME").second;
    CheckTerminated(modified, "stuProgramme.szProgrammeID",
                    modifyProgramme->stuProgramme.szProgrammeID);
    CheckCount(modified, "stuProgramme.stuOrdinary.nWindowsNum",
               modifyProgramme->stuProgramme.stuOrdinary.nWindowsNum, 16);
  }
  {
    const gsc::Report report = Serialize(inputs, *delProgrammes, "DEL_PROGRAMMES").second;
    CheckCount(report, "nProgrammeIDListNum", delProgrammes->nProgrammeIDListNum, 32);
    for (uint32_t i = 0; i < delProgrammes->nProgrammeIDListNum && i < 32; ++i) {
      CheckTerminated(report, "szProgrammeIDList[" + std::to_string(i) + "]",
                      delProgrammes->szProgrammeIDList[i]);
    }
  }
  Serialize(inputs, *getAllPlans, "GET_ALL_PROGRAMMEPLANS");
  Serialize(inputs, *planById, "GET_PROGRAMMEPLAN_BYID");
  for (const auto& plan : {Serialize(inputs, *addImme, "ADD_IMME_PROGRAMMEPLAN"),
                           Serialize(inputs, *addTimer, "ADD_TIMER_PROGRAMMEPLAN")}) {
    Json::Value result;
    result["ProgrammePlan"] = plan.first["info"];
    tagNET_OUT_GET_PROGRAMMEPLAN_BYID out{};
    ReadBack(result, out, "ADD_PROGRAMMEPLAN");
  }
  {
    const gsc::Report timer = Serialize(inputs, *addTimer, "ADD_TIMER_PROGRAMMEPLAN").second;
    CheckCount(timer, "stuInfo.nPlayDatesNum", addTimer->stuInfo.nPlayDatesNum, 32);
    CheckCount(timer, "stuInfo.nProgrammesNum", addTimer->stuInfo.nProgrammesNum, 32);
    CheckTerminated(timer, "stuInfo.szReviewOpinion", addTimer->stuInfo.szReviewOpinion);
  }
  Serialize(inputs, *modifyImme, "MODIFY_IMME_PROGRAMMEPLAN");
  Serialize(inputs, *modifyTimer, "MODIFY_TIMER_PROGRAMMEPLAN");
  Serialize(inputs, *delPlans, "DEL_PROGRAMMEPLANS");

  Check(inputs, "PacketGuidScreenAttribute",
        [&](Json::Value& json) { gsc::guidescreen::PacketGuidScreenAttribute(*attribute, json); });
  Check(inputs, "PacketText", [&](Json::Value& json) {
    PacketText(nullptr, json);
    PacketText(text, json);
  });
  Check(inputs, "PacketNotes", [&](Json::Value& json) {
    PacketNotes(nullptr, json);
    PacketNotes(note, json);
  });
  Check(inputs, "PacketVideoElement", [&](Json::Value& json) { PacketVideoElement(video, json); });
  Check(inputs, "PacketPictureElement",
        [&](Json::Value& json) { PacketPictureElement(picture, json); });
  Check(inputs, "PacketTextElement",
        [&](Json::Value& json) { PacketTextElement(textElement, json); });
  Check(inputs, "PacketPlaceHolderElement",
        [&](Json::Value& json) { PacketPlaceHolderElement(placeholder, json); });
  Check(inputs, "PacketCaptureElement",
        [&](Json::Value& json) { PacketCaptureElement(capture, json); });
  Check(inputs, "PacketPragramme", [&](Json::Value& json) {
    PacketPragramme(nullptr, json);
    PacketPragramme(&addProgramme->stuInfo, json);
  });
  Check(inputs, "PacketImmePlan", [&](Json::Value& json) {
    PacketImmePlan(nullptr, json);
    PacketImmePlan(&addImme->stuInfo, json);
  });
  Check(inputs, "PacketTimerPlan", [&](Json::Value& json) {
    PacketTimerPlan(nullptr, json);
    PacketTimerPlan(&addTimer->stuInfo, json);
  });
  return 0;
}
