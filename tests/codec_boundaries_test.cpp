// Every enumeration and element kind tried at both ends of its range and at the first value past
// each end, reading and writing: an enumeration of N values travels as 0 to N - 1 and is stored as
// 1 to N, 0 meaning not set.
#include <cstring>
#include <functional>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#include "guidescreen_codec/operations.h"
#include "guidescreen_codec/record_codecs.h"
#include "support/fixtures.h"
#include "support/json_path.h"

namespace {

using gsc::test::Compact;
using gsc::test::FindPath;
using gsc::test::GuardedBytes;
using gsc::test::J;
using gsc::test::MakePath;
using gsc::test::SetText;

// What the caller's field held before the answer was read.
constexpr int kPrior = 77;

// An object holding `value` at `path` ("Timer.ReviewState"), the objects and arrays on the way
// made as needed; without a value, the last member is left out but its parent is made.
Json::Value Holding(const std::string& path, const Json::Value* value) {
  Json::Value root(Json::objectValue);
  const size_t dot = path.rfind('.');
  Json::Value& parent = dot == std::string::npos ? root : MakePath(root, path.substr(0, dot));
  if (parent.isNull()) parent = Json::Value(Json::objectValue);
  if (value != nullptr) parent[path.substr(dot == std::string::npos ? 0 : dot + 1)] = *value;
  return root;
}

// How a reader takes a missing member.
enum class Missing { kStoresZero, kStoresOne, kKeeps };

struct EnumReader {
  const char* name;
  int values;  // N
  Missing missing;
  // Reads an answer holding `value` (or no member) into a record whose field was kPrior and
  // returns what the field then holds.
  std::function<int(const Json::Value* value)> read;
};

// The field of a record, for tables: GSC_FIELD(stuInfo.emStatus).
#define GSC_FIELD(member)     \
  [](auto& record) -> auto& { \
    return record.member;     \
  }

// An enumeration read by a record reader or by an operation's answer reader.
template <typename Record, typename Get>
std::function<int(const Json::Value*)> ViaParser(const char* path,
                                                 void (*parse)(const Json::Value&, Record*),
                                                 Get field) {
  return [=](const Json::Value* value) {
    Record record{};
    auto& stored = field(record);
    stored = static_cast<std::remove_reference_t<decltype(stored)>>(kPrior);
    parse(Holding(path, value), &record);
    return static_cast<int>(stored);
  };
}
template <typename Out, typename Get>
std::function<int(const Json::Value*)> ViaAnswer(const char* path, Get field) {
  return ViaParser<Out>(
      path, +[](const Json::Value& answer, Out* out) { deserialize(answer, *out); }, field);
}

std::vector<EnumReader> EnumReaders() {
  using Text = tagNET_GUIDESCREEN_TEXT_INFO;
  using Picture = tagNET_PICTURE_ELEMENT_INFO;
  using Capture = tagNET_CAPTURE_ELEMENT_INFO;
  using Programme = tagNET_PROGRAMME_INFO;
  using Timer = tagNET_TIMER_PLAN_INFO;
  using ScreenById = tagNET_OUT_GET_GUIDESCREEN_CFG_BYID;
  using Briefs = tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES;
  using PlanById = tagNET_OUT_GET_PROGRAMMEPLAN_BYID;
  return {
      {"Status", 2, Missing::kStoresZero,
       ViaAnswer<ScreenById>("DisplayScreenCfg.Status", GSC_FIELD(stuInfo.emStatus))},
      {"DateType", 3, Missing::kStoresOne,
       ViaAnswer<ScreenById>("DisplayScreenCfg.Time[0].DateType",
                             GSC_FIELD(stuInfo.stuTime[0].emDateType))},
      {"TextHoriAlign", 3, Missing::kStoresOne,
       ViaParser<Text>("TextHoriAlign", ParseText, GSC_FIELD(emTextHoriAlign))},
      {"TextVertAlign", 3, Missing::kStoresOne,
       ViaParser<Text>("TextVertAlign", ParseText, GSC_FIELD(emTextVertAlign))},
      {"text EnterStyle", 5, Missing::kStoresOne,
       ViaParser<Text>("EnterStyle", ParseText, GSC_FIELD(emEnterStyle))},
      {"text ExitStyle", 5, Missing::kStoresOne,
       ViaParser<Text>("ExitStyle", ParseText, GSC_FIELD(emExitStyle))},
      {"picture EnterStyle", 5, Missing::kStoresOne,
       ViaParser<Picture>("Picture.EnterStyle", ParsePictureElement, GSC_FIELD(emEnterStyle))},
      {"picture ExitStyle", 5, Missing::kStoresOne,
       ViaParser<Picture>("Picture.ExitStyle", ParsePictureElement, GSC_FIELD(emExitStyle))},
      {"CaptureType", 2, Missing::kStoresOne,
       ViaParser<Capture>("DeviceInfo.CaptureType", ParseCaptureElement, GSC_FIELD(emCaptureType))},
      {"TourPeriod", 3, Missing::kStoresOne,
       ViaParser<Programme>("Ordinary.Windows[0].TourPeriod", ParseProgramme,
                            GSC_FIELD(stuOrdinary.stuWindows[0].emTourPeriod))},
      {"brief ProgrammeType", 2, Missing::kKeeps,
       ViaAnswer<Briefs>("infos.a.ProgrammeType", GSC_FIELD(stuInfos[0].emProgrammeType))},
      {"PlanType", 2, Missing::kStoresOne,
       ViaAnswer<PlanById>("ProgrammePlan.PlanType", GSC_FIELD(emPlanType))},
      {"PeriodType", 4, Missing::kStoresOne,
       ViaParser<Timer>("Timer.PeriodType", ParseTimerPlan, GSC_FIELD(emPeriodType))},
      {"ReviewState", 2, Missing::kStoresOne,
       ViaParser<Timer>("Timer.ReviewState", ParseTimerPlan, GSC_FIELD(emReviewState))},
  };
}

TEST(EnumBoundaries, ReadersStoreBothEndsAndZeroForTheFirstValueBeyondEither) {
  for (const EnumReader& e : EnumReaders()) {
    SCOPED_TRACE(e.name);
    const struct {
      int json;
      int stored;
    } cases[] = {{-1, 0}, {0, 1}, {e.values - 1, e.values}, {e.values, 0}};
    for (const auto& c : cases) {
      const Json::Value value(c.json);
      EXPECT_EQ(e.read(&value), c.stored) << "JSON " << c.json;
    }
    const int missing = e.missing == Missing::kStoresZero  ? 0
                        : e.missing == Missing::kStoresOne ? 1
                                                           : kPrior;
    EXPECT_EQ(e.read(nullptr), missing) << "member missing";
  }
}

// The get-all plans operation sorts by the same "PlanType": beyond either end a plan is skipped.
TEST(EnumBoundaries, PlansOfATypeJustBeyondEitherEndGoToNeitherArray) {
  const struct {
    const char* plan;
    uint32_t imme, timer;
  } cases[] = {
      {R"({"PlanType": -1})", 0, 0},
      {R"({"PlanType": 0})", 1, 0},
      {R"({"PlanType": 1})", 0, 1},
      {R"({"PlanType": 2})", 0, 0},
      {"{}", 1, 0},
  };
  for (const auto& c : cases) {
    tagNET_IMMEDIATELY_PLAN_INFO imme[1] = {};
    tagNET_TIMER_PLAN_INFO timer[1] = {};
    tagNET_OUT_GET_ALL_PROGRAMMEPLANS out{0, 1, 7, imme, 7, timer};
    deserialize(J(std::string(R"({"infos": {"p": )") + c.plan + "}}"), out);
    EXPECT_EQ(out.nRetImmePlanNum, c.imme) << c.plan;
    EXPECT_EQ(out.nRetTimerPlanNum, c.timer) << c.plan;
  }
}

enum class Form { kRangeTested, kZeroTested };

struct EnumWriter {
  const char* name;
  int values;  // N
  Form form;
  // Writes a record whose field holds `stored`; returns the member written, if any.
  std::function<std::optional<Json::Value>(int stored)> write;
};

// The member `key` of the object at `path` of a written request, if it was written.
std::optional<Json::Value> Sent(const Json::Value& json, const std::string& path, const char* key) {
  const Json::Value* object = FindPath(json, path);
  if (object == nullptr || !object->isObject() || !object->isMember(key)) return std::nullopt;
  return (*object)[key];
}

// An enumeration written by a record writer; `setup` fills what the writer needs to reach it.
template <typename Record, typename Get>
std::function<std::optional<Json::Value>(int)> ViaPacket(
    void (*packet)(const Record*, Json::Value&), Get field, const char* path, const char* key,
    void (*setup)(Record&) = nullptr) {
  return [=](int stored) {
    Record record{};
    if (setup != nullptr) setup(record);
    auto& value = field(record);
    value = static_cast<std::remove_reference_t<decltype(value)>>(stored);
    Json::Value json(Json::objectValue);
    packet(&record, json);
    return Sent(json, path, key);
  };
}

// An enumeration of a screen, written by the set-configuration request under the screen's ID.
void PacketScreen(const tagNET_GUIDESCREEN_ATTRIBUTE_INFO* info, Json::Value& json) {
  tagNET_GUIDESCREEN_ATTRIBUTE_INFO screen = *info;
  Json::Value params(Json::objectValue);
  serialize(tagNET_IN_SET_GUIDESCREEN_CFG{0, 1, &screen}, params);
  json = params["infos"][screen.szID];
}

std::vector<EnumWriter> EnumWriters() {
  using Screen = tagNET_GUIDESCREEN_ATTRIBUTE_INFO;
  using Text = tagNET_GUIDESCREEN_TEXT_INFO;
  using Picture = tagNET_PICTURE_ELEMENT_INFO;
  using Capture = tagNET_CAPTURE_ELEMENT_INFO;
  using Programme = tagNET_PROGRAMME_INFO;
  using Timer = tagNET_TIMER_PLAN_INFO;
  const auto oneEntry = +[](Screen& screen) {
    SetText(screen.szID, "s");
    screen.nTimeNum = 1;
  };
  const auto oneWindow = +[](Programme& programme) { programme.stuOrdinary.nWindowsNum = 1; };
  return {
      {"Status", 2, Form::kRangeTested,
       ViaPacket<Screen>(PacketScreen, GSC_FIELD(emStatus), "", "Status", oneEntry)},
      {"DateType", 3, Form::kRangeTested,
       ViaPacket<Screen>(PacketScreen, GSC_FIELD(stuTime[0].emDateType), "Time[0]", "DateType",
                         oneEntry)},
      {"TextHoriAlign", 3, Form::kZeroTested,
       ViaPacket<Text>(PacketText, GSC_FIELD(emTextHoriAlign), "", "TextHoriAlign")},
      {"TextVertAlign", 3, Form::kZeroTested,
       ViaPacket<Text>(PacketText, GSC_FIELD(emTextVertAlign), "", "TextVertAlign")},
      {"text EnterStyle", 5, Form::kZeroTested,
       ViaPacket<Text>(PacketText, GSC_FIELD(emEnterStyle), "", "EnterStyle")},
      {"text ExitStyle", 5, Form::kZeroTested,
       ViaPacket<Text>(PacketText, GSC_FIELD(emExitStyle), "", "ExitStyle")},
      {"picture EnterStyle", 5, Form::kZeroTested,
       ViaPacket<Picture>(PacketPictureElement, GSC_FIELD(emEnterStyle), "Picture", "EnterStyle")},
      {"picture ExitStyle", 5, Form::kZeroTested,
       ViaPacket<Picture>(PacketPictureElement, GSC_FIELD(emExitStyle), "Picture", "ExitStyle")},
      {"CaptureType", 2, Form::kZeroTested,
       ViaPacket<Capture>(PacketCaptureElement, GSC_FIELD(emCaptureType), "DeviceInfo",
                          "CaptureType")},
      {"TourPeriod", 3, Form::kZeroTested,
       ViaPacket<Programme>(PacketPragramme, GSC_FIELD(stuOrdinary.stuWindows[0].emTourPeriod),
                            "Ordinary.Windows[0]", "TourPeriod", oneWindow)},
      {"PeriodType", 4, Form::kZeroTested,
       ViaPacket<Timer>(PacketTimerPlan, GSC_FIELD(emPeriodType), "Timer", "PeriodType")},
      {"ReviewState", 2, Form::kZeroTested,
       ViaPacket<Timer>(PacketTimerPlan, GSC_FIELD(emReviewState), "Timer", "ReviewState")},
  };
}

TEST(EnumBoundaries, RangeTestedWritersSendOnlyStoredValuesInRangeAndZeroTestedOnesAllButZero) {
  for (const EnumWriter& e : EnumWriters()) {
    SCOPED_TRACE(e.name);
    const bool ranged = e.form == Form::kRangeTested;
    const struct {
      int stored;
      std::optional<int> sent;
    } cases[] = {
        {0, std::nullopt},
        {1, 0},
        {e.values, e.values - 1},
        {e.values + 1, ranged ? std::nullopt : std::optional<int>(e.values)},
        {-1, ranged ? std::nullopt : std::optional<int>(-2)},
    };
    for (const auto& c : cases) {
      const std::optional<Json::Value> sent = e.write(c.stored);
      ASSERT_EQ(sent.has_value(), c.sent.has_value()) << "stored " << c.stored;
      if (sent) {
        EXPECT_TRUE(sent->isInt()) << "stored " << c.stored;
        EXPECT_EQ(sent->asInt(), *c.sent) << "stored " << c.stored;
      }
    }
  }
}

// The tour period time belongs to the third period only, in both directions.
TEST(EnumBoundaries, TourPeriodTimeTravelsOnlyWithTheLastTourPeriod) {
  for (int json = 0; json <= 3; ++json) {
    tagNET_PROGRAMME_INFO read{};
    read.stuOrdinary.stuWindows[0].nTourPeriodTime = kPrior;
    ParseProgramme(J(R"({"Ordinary": {"Windows": [{"TourPeriod": )" + std::to_string(json) +
                     R"(, "TourPeriodTime": 30}]}})"),
                   &read);
    EXPECT_EQ(read.stuOrdinary.stuWindows[0].nTourPeriodTime, json == 2 ? 30U : kPrior) << json;
  }
  for (int stored = 2; stored <= 4; ++stored) {
    tagNET_PROGRAMME_INFO written{};
    written.stuOrdinary.nWindowsNum = 1;
    written.stuOrdinary.stuWindows[0].emTourPeriod = static_cast<EM_TOUR_PERIOD_TYPE>(stored);
    written.stuOrdinary.stuWindows[0].nTourPeriodTime = 30;
    Json::Value json(Json::objectValue);
    PacketPragramme(&written, json);
    EXPECT_EQ(json["Ordinary"]["Windows"][0].isMember("TourPeriodTime"), stored == 3) << stored;
  }
}

constexpr size_t kHeader = sizeof(tagNET_ELEMENT_COMMON_INFO);

// The record bytes behind a header of `kind`: none for a kind without a record.
size_t RecordSize(int kind) {
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

int KindAt(const unsigned char* header) {
  int kind = 0;
  std::memcpy(&kind, header, sizeof kind);
  return kind;
}

// Each "Type" is followed by a placeholder, whose header shows how far the first entry reached.
TEST(ElementKinds, ATypeJustBeyondEitherEndIsAHeaderAloneAndTheEndsAreVideoAndCapture) {
  const struct {
    const char* type;
    int kind;
  } cases[] = {{"-1", 0}, {"0", 1}, {"4", 5}, {"5", 0}, {"null", 1}};
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string("Type ") + c.type);
    const size_t length = 2 * (kHeader + sizeof(tagNET_TEXT_ELEMENT_INFO));
    GuardedBytes buffer(length, 4, 0xEE);
    tagNET_PROGRAMME_INFO programme{};
    programme.stuOrdinary.stuWindows[0].pElementsBuf = buffer.data();
    programme.stuOrdinary.stuWindows[0].nElementsBufLen = static_cast<uint32_t>(length);
    ParseProgramme(J(std::string(R"({"Ordinary": {"Windows": [{"Elements": [{"Type": )") + c.type +
                     R"(}, {"Type": 3, "Name": "next"}]}]}})"),
                   &programme);
    EXPECT_EQ(programme.stuOrdinary.stuWindows[0].nElementsNum, 2U);
    EXPECT_EQ(KindAt(buffer.data()), c.kind);
    const size_t next = kHeader + RecordSize(c.kind);
    EXPECT_EQ(KindAt(buffer.data() + next), EM_ELEMENT_TYPE_PLACEHOLDER);
    tagNET_PLACEHOLDER_ELEMENT_INFO placeholder;
    std::memcpy(&placeholder, buffer.data() + next + kHeader, sizeof placeholder);
    EXPECT_STREQ(placeholder.szName, "next");
    EXPECT_TRUE(buffer.GuardsIntact());
  }
}

// A header of a kind without a record is stepped over alone and leaves its JSON element null.
TEST(ElementKinds, TheWriterSkipsKindsJustBeyondEitherEndAndWritesBothEnds) {
  const struct {
    int kind;
    int type;  // -1: a null hole
  } cases[] = {{-1, -1}, {0, -1}, {1, 0}, {5, 4}, {6, -1}};
  for (const auto& c : cases) {
    SCOPED_TRACE("kind " + std::to_string(c.kind));
    const size_t first = kHeader + RecordSize(c.kind);
    GuardedBytes buffer(first + kHeader + sizeof(tagNET_PLACEHOLDER_ELEMENT_INFO), 4);
    std::memcpy(buffer.data(), &c.kind, sizeof c.kind);
    const int placeholder = EM_ELEMENT_TYPE_PLACEHOLDER;
    std::memcpy(buffer.data() + first, &placeholder, sizeof placeholder);
    tagNET_PROGRAMME_INFO programme{};
    programme.stuOrdinary.nWindowsNum = 1;
    programme.stuOrdinary.stuWindows[0].pElementsBuf = buffer.data();
    programme.stuOrdinary.stuWindows[0].nElementsNum = 2;
    Json::Value json(Json::objectValue);
    PacketPragramme(&programme, json);
    const Json::Value& elements = json["Ordinary"]["Windows"][0]["Elements"];
    ASSERT_EQ(elements.size(), 2U) << Compact(elements);
    if (c.type < 0) {
      EXPECT_TRUE(elements[0].isNull()) << Compact(elements[0]);
    } else {
      EXPECT_EQ(elements[0]["Type"].asInt(), c.type);
    }
    EXPECT_EQ(elements[1]["Type"].asInt(), 3);
  }
}

// Display unit states count from 0 and have three codes; 3 and -1 have none, and end the text.
TEST(DisplayUnits, StatesJustBeyondEitherEndHaveNoCodeAndEndTheStatusText) {
  const struct {
    int state;
    const char* status;
  } cases[] = {{-1, "100"}, {0, "100100010"}, {2, "100001010"}, {3, "100"}};
  for (const auto& c : cases) {
    tagNET_IN_SET_GD_STATUS in{};
    in.nGDNum = 3;
    in.emStatus[0] = EM_GD_STATUS_CODE_100;
    in.emStatus[1] = static_cast<EM_GD_STATUS>(c.state);
    in.emStatus[2] = EM_GD_STATUS_CODE_010;
    Json::Value params(Json::objectValue);
    serialize(in, params);
    EXPECT_EQ(params["Status"].asString(), c.status) << c.state;
    EXPECT_EQ(params["GDNum"].asInt(), 3) << c.state;
  }
}

}  // namespace
