// The reporting overloads say nothing about what fits exactly: a text that fills its field, an
// array or a collection at its capacity, an element buffer taken to its last byte, a count at its
// capacity. One more byte, element, member or entry gives exactly the one finding for it.
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "guidescreen_codec/capi.h"
#include "guidescreen_codec/operations.h"
#include "support/fixtures.h"
#include "support/json_path.h"

namespace {

using gsc::FindingKind;
using gsc::Report;
using gsc::test::GuardedArray;
using gsc::test::GuardedBytes;
using gsc::test::J;
using gsc::test::MakePath;

template <typename Out>
Report Read(const Json::Value& answer, Out& out) {
  Report report;
  EXPECT_TRUE(deserialize(answer, out, report)) << report;
  return report;
}

template <typename Out>
Report ReadInto(const Json::Value& answer) {
  Out out{};
  return Read(answer, out);
}

// A programme answer, its first window given an element buffer that takes any two entries.
Report ReadProgramme(const Json::Value& answer) {
  const size_t length = GSC_ELEMENT_BUFFER_SIZE(2);
  GuardedBytes buffer(length, 4);
  tagNET_OUT_GET_PROGRAMME_BYID out{};
  out.stuProgramme.stuOrdinary.stuWindows[0].pElementsBuf = buffer.data();
  out.stuProgramme.stuOrdinary.stuWindows[0].nElementsBufLen = static_cast<uint32_t>(length);
  const Report report = Read(answer, out);
  EXPECT_TRUE(buffer.GuardsIntact());
  return report;
}

using Reader = Report (*)(const Json::Value&);
const Reader kScreen = ReadInto<tagNET_OUT_GET_GUIDESCREEN_CFG_BYID>;
const Reader kProgramme = ReadProgramme;
const Reader kPlan = ReadInto<tagNET_OUT_GET_PROGRAMMEPLAN_BYID>;
const Reader kAddedPlan = ReadInto<tagNET_OUT_ADD_PROGRAMMEPLAN>;

const char kElement[] = "Programme.Ordinary.Windows[0].Elements[0]";

Json::Value ElementAnswer(int type) {
  Json::Value answer;
  MakePath(answer, std::string(kElement) + ".Type") = type;
  return answer;
}

Json::Value TimerPlanAnswer() {
  return J(R"({"ProgrammePlan": {"PlanType": 1, "Timer": {}}})");
}

// Expects no finding for `at` and exactly one of `kind` at `path` for `beyond`.
void ExpectOneFindingBeyond(const Report& at, const Report& beyond, FindingKind kind,
                            const std::string& path) {
  EXPECT_TRUE(at.empty()) << at;
  ASSERT_EQ(beyond.size(), 1U) << beyond;
  EXPECT_EQ(beyond.findings()[0].kind, kind) << beyond;
  EXPECT_EQ(beyond.findings()[0].path, path);
}

// Texts of every field size, each placed at `path` of an answer otherwise `base`.
struct TextField {
  size_t size;  // bytes of the field, terminator included
  std::string path;
  Json::Value base;
  Reader read;
};

std::vector<TextField> TextFields() {
  const std::string element = kElement;
  return {
      {32, element + ".Text.FontStyle", ElementAnswer(2), kProgramme},
      {32, element + ".DeviceInfo.Password", ElementAnswer(4), kProgramme},
      {40, element + ".DeviceInfo.IP", ElementAnswer(4), kProgramme},
      {64, "DisplayScreenCfg.ID", Json::Value(), kScreen},
      {64, "ProgrammePlanID", Json::Value(), kAddedPlan},
      {64, "ProgrammePlan.ReviewOpinion", TimerPlanAnswer(), kPlan},
      {128, "Programme.Ordinary.Description", Json::Value(), kProgramme},
      {128, element + ".Video.Path", ElementAnswer(0), kProgramme},
      {512, element + ".Text.Content", ElementAnswer(2), kProgramme},
  };
}

Report ReadText(const TextField& field, const std::string& text) {
  Json::Value answer = field.base;
  MakePath(answer, field.path) = text;
  return field.read(answer);
}

TEST(NoFinding, ATextThatFillsItsFieldIsNotCutAndOneByteMoreIs) {
  const std::string eAcute = "\xC3\xA9";    // two bytes
  const std::string euro = "\xE2\x82\xAC";  // three bytes
  for (const TextField& field : TextFields()) {
    SCOPED_TRACE(field.path);
    const size_t room = field.size - 1;
    for (const std::string& fits : {std::string(room, 'a'), std::string(room - 2, 'a') + eAcute,
                                    std::string(room - 3, 'a') + euro}) {
      const Report report = ReadText(field, fits);
      EXPECT_TRUE(report.empty()) << fits.size() << " bytes: " << report;
    }
    const struct {
      std::string text;
      size_t kept;
    } cut[] = {{std::string(room + 1, 'a'), room}, {std::string(room - 1, 'a') + eAcute, room - 1}};
    for (const auto& c : cut) {
      const Report report = ReadText(field, c.text);
      ASSERT_EQ(report.size(), 1U) << report;
      EXPECT_EQ(report.findings()[0].kind, FindingKind::kTextCut);
      EXPECT_EQ(report.findings()[0].path, field.path);
      EXPECT_EQ(report.findings()[0].detail, std::to_string(c.text.size()) + " bytes received, " +
                                                 std::to_string(c.kept) + " kept in a field of " +
                                                 std::to_string(field.size));
    }
  }
}

// Arrays of `entry` at `path`, the answer otherwise `base`.
struct ArrayField {
  uint32_t capacity;
  std::string path;
  Json::Value base;
  Json::Value entry;
  Reader read;
};

TEST(NoFinding, AnArrayAtItsCapacityIsNotClampedAndOneElementMoreIs) {
  const Json::Value object(Json::objectValue);
  const ArrayField arrays[] = {
      {8, "DisplayScreenCfg.Time", Json::Value(), object, kScreen},
      {32, "DisplayScreenCfg.Time[0].PlayDates", Json::Value(), 1, kScreen},
      {16, "DisplayScreenCfg.SplitScreenList", Json::Value(), object, kScreen},
      {12, "DisplayScreenCfg.AutoBright.Time", Json::Value(), object, kScreen},
      {16, "Programme.Ordinary.Windows", Json::Value(), object, kProgramme},
      {4, std::string(kElement) + ".Note", ElementAnswer(3), object, kProgramme},
      {32, "ProgrammePlan.Timer.PlayDates", TimerPlanAnswer(), 1, kPlan},
      {32, "ProgrammePlan.Timer.Programmes", TimerPlanAnswer(), object, kPlan},
  };
  for (const ArrayField& array : arrays) {
    SCOPED_TRACE(array.path);
    const auto read = [&](uint32_t n) {
      Json::Value answer = array.base;
      Json::Value& at = MakePath(answer, array.path);
      at = Json::Value(Json::arrayValue);
      for (uint32_t i = 0; i < n; ++i) at.append(array.entry);
      return array.read(answer);
    };
    ExpectOneFindingBeyond(read(array.capacity), read(array.capacity + 1),
                           FindingKind::kArrayClamped, array.path);
  }
}

// Members named m00, m01, ..., each `member`.
Json::Value Members(uint32_t n, const Json::Value& member, Json::Value infos = Json::Value()) {
  for (uint32_t i = 0; i < n; ++i) {
    infos[(i < 10 ? "m0" : "m") + std::to_string(i)] = member;
  }
  return infos;
}

Json::Value Answer(const Json::Value& infos) {
  Json::Value answer;
  answer["infos"] = infos;
  return answer;
}

TEST(NoFinding, AKeyedCollectionAtTheCallersCapacityIsNotClampedAndOneMemberMoreIs) {
  const Json::Value object(Json::objectValue);
  const struct {
    const char* name;
    uint32_t capacity;
    std::function<Report(uint32_t members)> read;
  } collections[] = {
      {"GET_ALL_GUIDESCREEN_CFG", 3,
       [&](uint32_t n) {
         GuardedArray<tagNET_GUIDESCREEN_ATTRIBUTE_INFO> infos(3);
         tagNET_OUT_GET_ALL_GUIDESCREEN_CFG out{0, 3, 0, infos.data()};
         const Report report = Read(Answer(Members(n, object)), out);
         EXPECT_TRUE(infos.GuardsIntact());
         return report;
       }},
      {"GET_ALL_PROGRAMMES", 3,
       [&](uint32_t n) {
         GuardedArray<tagNET_PROGRAMME_INFO> infos(3);
         tagNET_OUT_GET_ALL_PROGRAMMES out{0, 3, 0, infos.data()};
         const Report report = Read(Answer(Members(n, object)), out);
         EXPECT_TRUE(infos.GuardsIntact());
         return report;
       }},
      {"GET_ALL_BRIEFLYPROGRAMMES", GSC_MAX_BRIEF_PROGRAMMES,
       [&](uint32_t n) {
         return ReadInto<tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES>(Answer(Members(n, object)));
       }},
      // Each kind of plan against the one capacity, the other kind filling its array exactly.
      {"GET_ALL_PROGRAMMEPLANS, immediate plans", 2,
       [&](uint32_t n) {
         Json::Value infos = Members(n, J(R"({"PlanType": 0})"));
         infos["t1"] = infos["t2"] = J(R"({"PlanType": 1})");
         GuardedArray<tagNET_IMMEDIATELY_PLAN_INFO> imme(2);
         GuardedArray<tagNET_TIMER_PLAN_INFO> timer(2);
         tagNET_OUT_GET_ALL_PROGRAMMEPLANS out{0, 2, 0, imme.data(), 0, timer.data()};
         const Report report = Read(Answer(infos), out);
         EXPECT_TRUE(imme.GuardsIntact() && timer.GuardsIntact());
         return report;
       }},
      {"GET_ALL_PROGRAMMEPLANS, timer plans", 2,
       [&](uint32_t n) {
         Json::Value infos = Members(n, J(R"({"PlanType": 1})"));
         infos["i1"] = infos["i2"] = J(R"({"PlanType": 0})");
         GuardedArray<tagNET_IMMEDIATELY_PLAN_INFO> imme(2);
         GuardedArray<tagNET_TIMER_PLAN_INFO> timer(2);
         tagNET_OUT_GET_ALL_PROGRAMMEPLANS out{0, 2, 0, imme.data(), 0, timer.data()};
         const Report report = Read(Answer(infos), out);
         EXPECT_TRUE(imme.GuardsIntact() && timer.GuardsIntact());
         return report;
       }},
  };
  for (const auto& c : collections) {
    SCOPED_TRACE(c.name);
    ExpectOneFindingBeyond(c.read(c.capacity), c.read(c.capacity + 1),
                           FindingKind::kCollectionClamped, "infos");
  }
}

TEST(NoFinding, AnElementBufferOfExactlyItsEntriesSizesIsNotFullAndOneByteLessIs) {
  constexpr size_t kHeader = sizeof(tagNET_ELEMENT_COMMON_INFO);
  const Json::Value answer = J(R"({"Programme": {"Ordinary": {"Windows": [{"Elements": [
      {"Type": 0}, {"Type": 2}, {"Type": 3}]}]}}})");
  const size_t exact = kHeader + sizeof(tagNET_VIDEO_ELEMENT_INFO) + kHeader +
                       sizeof(tagNET_TEXT_ELEMENT_INFO) + kHeader +
                       sizeof(tagNET_PLACEHOLDER_ELEMENT_INFO);
  const auto read = [&](size_t length, uint32_t stored) {
    GuardedBytes buffer(length, 4);
    tagNET_OUT_GET_PROGRAMME_BYID out{};
    out.stuProgramme.stuOrdinary.stuWindows[0].pElementsBuf = buffer.data();
    out.stuProgramme.stuOrdinary.stuWindows[0].nElementsBufLen = static_cast<uint32_t>(length);
    const Report report = Read(answer, out);
    EXPECT_EQ(out.stuProgramme.stuOrdinary.stuWindows[0].nElementsNum, stored) << length;
    EXPECT_TRUE(buffer.GuardsIntact());
    return report;
  };
  ExpectOneFindingBeyond(read(exact, 3), read(exact - 1, 2), FindingKind::kElementBufferFull,
                         "Programme.Ordinary.Windows[0].Elements");
}

// Requests: a count at its array's capacity sends every entry without a finding.
TEST(NoFinding, ACountAtItsCapacityIsSentWholeAndOneMoreIsReported) {
  const auto write = [](const auto& in) {
    Json::Value params(Json::objectValue);
    Report report;
    EXPECT_TRUE(serialize(in, params, report));
    return report;
  };
  const auto screen = [&](auto set) {
    return [=](uint32_t n) {
      tagNET_GUIDESCREEN_ATTRIBUTE_INFO info{};
      set(info, n);
      return write(tagNET_IN_SET_GUIDESCREEN_CFG{0, 1, &info});
    };
  };
  const auto programme = [&](auto set) {
    return [=](uint32_t n) {
      tagNET_IN_ADD_ONE_PROGRAMME in{};
      set(in.stuInfo, n);
      return write(in);
    };
  };
  const auto timer = [&](auto set) {
    return [=](uint32_t n) {
      tagNET_IN_ADD_TIMER_PROGRAMMEPLAN in{};
      set(in.stuInfo, n);
      return write(in);
    };
  };
  // One placeholder entry, for the notes of an element.
  GuardedBytes placeholder(sizeof(tagNET_ELEMENT_COMMON_INFO) +
                           sizeof(tagNET_PLACEHOLDER_ELEMENT_INFO));
  const struct {
    uint32_t capacity;
    const char* path;
    std::function<Report(uint32_t count)> write;
  } counts[] = {
      {8, "pstuInfos[0].nTimeNum", screen([](auto& s, uint32_t n) { s.nTimeNum = n; })},
      {32, "pstuInfos[0].stuTime[0].nPlayDatesNum", screen([](auto& s, uint32_t n) {
         s.nTimeNum = 1;
         s.stuTime[0].nPlayDatesNum = n;
       })},
      {16, "pstuInfos[0].nSplitScreenListNum",
       screen([](auto& s, uint32_t n) { s.nSplitScreenListNum = n; })},
      {16, "stuInfo.stuOrdinary.nWindowsNum",
       programme([](auto& p, uint32_t n) { p.stuOrdinary.nWindowsNum = n; })},
      {4, "stuInfo.stuOrdinary.stuWindows[0].pElementsBuf[0].nNoteNum",
       programme([&placeholder](auto& p, uint32_t n) {
         tagNET_PLACEHOLDER_ELEMENT_INFO record{};
         record.nNoteNum = n;
         const int kind = EM_ELEMENT_TYPE_PLACEHOLDER;
         std::memcpy(placeholder.data(), &kind, sizeof kind);
         std::memcpy(placeholder.data() + sizeof(tagNET_ELEMENT_COMMON_INFO), &record,
                     sizeof record);
         p.stuOrdinary.nWindowsNum = 1;
         p.stuOrdinary.stuWindows[0].pElementsBuf = placeholder.data();
         p.stuOrdinary.stuWindows[0].nElementsNum = 1;
       })},
      {32, "stuInfo.nPlayDatesNum", timer([](auto& t, uint32_t n) { t.nPlayDatesNum = n; })},
      {32, "stuInfo.nProgrammesNum", timer([](auto& t, uint32_t n) { t.nProgrammesNum = n; })},
      {32, "nProgrammeIDListNum",
       [&](uint32_t n) {
         tagNET_IN_DEL_PROGRAMMES in{};
         in.nProgrammeIDListNum = n;
         return write(in);
       }},
      {32, "nProgrammePlanIDListNum",
       [&](uint32_t n) {
         tagNET_IN_DEL_PROGRAMMEPLANS in{};
         in.nProgrammePlanIDListNum = n;
         return write(in);
       }},
      {170, "nGDNum",
       [&](uint32_t n) {
         tagNET_IN_SET_GD_STATUS in{};
         in.nGDNum = n;
         return write(in);
       }},
  };
  for (const auto& c : counts) {
    SCOPED_TRACE(c.path);
    ExpectOneFindingBeyond(c.write(c.capacity), c.write(c.capacity + 1),
                           FindingKind::kCountBeyondCapacity, c.path);
  }
}

}  // namespace
