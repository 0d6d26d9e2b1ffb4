// Element buffers, the programme record and the six programme operations. A record behind a
// 132-byte header may be 4 but not 8 aligned, so buffers are read through memcpy only.
#include <climits>
#include <cstring>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "guidescreen_codec/capi.h"
#include "guidescreen_codec/operations.h"
#include "programme/element_buffer.h"
#include "programme/programme_codecs.h"
#include "support/fixtures.h"

namespace {

using namespace gsc::programme;
using gsc::test::Compact;
using gsc::test::GuardedArray;
using gsc::test::GuardedBytes;
using gsc::test::J;
using gsc::test::SetText;

constexpr size_t kHeader = sizeof(tagNET_ELEMENT_COMMON_INFO);
// Bytes of one entry of each kind, header included, on the ABI the test is built for.
constexpr size_t kVideoEntry = kHeader + sizeof(tagNET_VIDEO_ELEMENT_INFO);
constexpr size_t kPictureEntry = kHeader + sizeof(tagNET_PICTURE_ELEMENT_INFO);
constexpr size_t kTextEntry = kHeader + sizeof(tagNET_TEXT_ELEMENT_INFO);
constexpr size_t kPlaceholderEntry = kHeader + sizeof(tagNET_PLACEHOLDER_ELEMENT_INFO);
constexpr size_t kCaptureEntry = kHeader + sizeof(tagNET_CAPTURE_ELEMENT_INFO);

tagNET_PROGRAMME_INFO OneWindow(GuardedBytes& buffer) {
  tagNET_PROGRAMME_INFO programme = {};
  programme.stuOrdinary.nWindowsNum = 1;
  programme.stuOrdinary.stuWindows[0].pElementsBuf = buffer.data();
  programme.stuOrdinary.stuWindows[0].nElementsBufLen = static_cast<uint32_t>(buffer.size());
  return programme;
}

const std::string kText = R"({"Content": "Hi", "FontSize": 18, "FontColor": [1, 2, 3, 4],
    "FontStyle": "bold", "LineHeight": 1.5, "TextHoriAlign": 1, "TextVertAlign": 2,
    "StayTime": 12, "PlayTime": 10, "PlayCount": 11, "EnterStyle": 3, "ExitStyle": 4})";
// One element of each kind, every member as its writer writes it, even when empty or 0.
const std::string kProgramme = R"({"ProgrammeName": "Lobby", "ProgrammeID": "P-1",
  "ProgrammeType": 0, "Enable": true, "Ordinary": {"TempletState": true, "Description": "d",
  "Windows": [{"WinID": "W1", "BackgroundColor": [5, 6, 7, 8], "Diaphaneity": 2147483647,
    "Volume": -3, "TourPeriod": 2, "TourPeriodTime": 45, "Elements": [
    {"Name": "v", "Type": 0, "FillerState": true, "Video": {"Path": "/v.mp4", "PlayCount": 0},
     "Note": [{"Enable": true, "NoteRect": [1, 2, 3, 4], "NoteInfo": )" +
                               kText + R"(},
              {"Enable": false, "NoteRect": [5, 6, 7, 8], "NoteInfo": )" +
                               kText + R"(}]},
    {"Name": "p", "Type": 1, "FillerState": false, "Picture": {"Path": "/p.png", "PlayTime": 5,
     "PlayCount": 6, "Diaphaneity": 7, "StayTime": 8, "EnterStyle": 0, "ExitStyle": 4}},
    {"Name": "t", "Type": 2, "FillerState": true, "Text": )" +
                               kText + R"(},
    {"Name": "s", "Type": 3, "FillerState": true},
    {"Name": "c", "Type": 4, "FillerState": true, "DeviceInfo": {"UserName": "u",
     "Password": "", "IP": "192.0.2.7", "Port": 37777, "Channel": 2, "CaptureType": 1,
     "PlayTime": 9}}]}]}})";

class ElementBufferAlignment : public ::testing::TestWithParam<size_t> {};

// Read at one alignment and read back at the other, every record passes through an address that
// is 4 but not 8 aligned.
TEST_P(ElementBufferAlignment, EveryKindIsWrittenAsReadAndReadBackByteForByte) {
  const size_t used = kVideoEntry + kPictureEntry + kTextEntry + kPlaceholderEntry + kCaptureEntry;
  GuardedBytes first(used, GetParam()), second(used, 4 - GetParam());
  tagNET_PROGRAMME_INFO programme = OneWindow(first), again = OneWindow(second);
  ParseProgramme(J(kProgramme), &programme);
  Json::Value written;
  PacketPragramme(&programme, written);
  EXPECT_EQ(Compact(J(kProgramme)), Compact(written));
  ParseProgramme(written, &again);
  EXPECT_EQ(again.stuOrdinary.stuWindows[0].nElementsNum, 5U);
  EXPECT_EQ(0, std::memcmp(first.data(), second.data(), used));
  EXPECT_TRUE(first.GuardsIntact() && second.GuardsIntact());
}

INSTANTIATE_TEST_SUITE_P(Offsets, ElementBufferAlignment, ::testing::Values(0, 4));

TEST(ElementBuffer, TypesZeroSevenTwoLieEndToEndAndWriteBackWithAHole) {
  GuardedBytes buffer(20000, 4);
  const size_t unknownAt = kVideoEntry, textAt = kVideoEntry + kHeader, end = textAt + kTextEntry;
  for (size_t header : {size_t{0}, unknownAt, textAt})
    std::memset(buffer.data() + header, 0xEE, kHeader);
  buffer.data()[end] = 0xEE;
  EXPECT_EQ(3U, ReadElementList(J(R"([{"Type": 0}, {"Type": 7}, {"Type": 2, "Name": "t"}])"),
                                buffer.data(), 20000));
  for (size_t header : {size_t{0}, unknownAt, textAt})
    for (size_t i = 4; i < kHeader; ++i) ASSERT_EQ(buffer.data()[header + i], 0xEE) << "reserved";
  EXPECT_EQ(0, std::memcmp(buffer.data() + unknownAt, "\0\0\0", 4)) << "unknown kind stored as 0";
  EXPECT_STREQ(reinterpret_cast<const char*>(buffer.data() + textAt + kHeader), "t");
  EXPECT_EQ(buffer.data()[end], 0xEE);
  Json::Value elements;
  WriteElementList(buffer.data(), 3, elements);
  ASSERT_EQ(elements.size(), 3U);
  // Read back as it stands in memory, the hole holds no element yet reads as null: Type 0.
  GuardedBytes again(20000, 4);
  EXPECT_EQ(ReadElementList(static_cast<const Json::Value&>(elements), again.data(), 20000), 3U);
  const size_t videoEntry = kHeader + sizeof(tagNET_VIDEO_ELEMENT_INFO);
  EXPECT_STREQ(reinterpret_cast<const char*>(again.data() + 2 * videoEntry + kHeader), "t");
  EXPECT_EQ(elements[0]["Type"], Json::Value(0));
  EXPECT_TRUE(elements[1].isNull());
  EXPECT_EQ(elements[2]["Name"], Json::Value("t"));
}

TEST(ElementBuffer, ExactFitTakesNEntriesOneByteLessTakesOneFewerAndNullHoldsNone) {
  const Json::Value elements = J(R"([{"Type": 0}, {"Type": 1}, {"Type": 2}, {"Type": 3},
      {"Type": 4}, {"Type": -2147483648}, {"Type": 2147483647}, {}])");
  const size_t entry[] = {kVideoEntry,   kPictureEntry, kTextEntry, kPlaceholderEntry,
                          kCaptureEntry, kHeader,       kHeader,    kVideoEntry};
  size_t fit = 0;
  for (uint32_t n = 1; n <= 8; ++n) {
    fit += entry[n - 1];
    for (const size_t length : {fit, fit - 1}) {
      GuardedBytes buffer(length, 4, 0xEE);
      EXPECT_EQ(ReadElementList(elements, buffer.data(), static_cast<uint32_t>(length)),
                length == fit ? n : n - 1)
          << length;
      EXPECT_TRUE(buffer.GuardsIntact()) << length;
      EXPECT_TRUE(length == fit || buffer.data()[length - 1] == 0xEE) << "partial " << length;
    }
  }
  GuardedBytes empty(0, 4);
  EXPECT_EQ(ReadElementList(elements, empty.data(), 0), 0U);
  EXPECT_TRUE(empty.GuardsIntact());
  EXPECT_EQ(ReadElementList(elements, nullptr, 100000), 0U);
}

// A record is read in place where its address suits it and through an aligned copy elsewhere:
// a buffer starting 8-byte aligned and one starting 4 bytes later put every entry on the other
// path, so both must end up holding the same bytes (notes, stops and merges included).
TEST(ElementBuffer, EntriesReadAlikeWhetherOrNotTheyLieAligned) {
  const Json::Value elements = J(R"([
      {"Type": 3, "Note": [{"Enable": true}, {"NoteRect": [1, 2, 3, 4]}]},
      {"Type": 0, "Note": [{"Enable": true}, {}, {}, {}, {"Enable": true}], "Video": {}},
      {"Type": 2, "Note": [{"NoteInfo": {"LineHeight": 2.5}}], "Text": {"LineHeight": 0.5}},
      {"Type": 4, "Note": {"Enable": true}, "DeviceInfo": {"Port": 8}},
      {"Type": 1, "Note": [{"Enable": true}, {"Enable": false}, {"Enable": "no"}]}])");
  const size_t length =
      kPlaceholderEntry + kVideoEntry + kTextEntry + kCaptureEntry + kPictureEntry;
  GuardedBytes aligned(length, 0, 0x5A);
  GuardedBytes shifted(length, 4, 0x5A);
  for (GuardedBytes* buffer : {&aligned, &shifted}) {
    EXPECT_THROW(ReadElementList(elements, buffer->data(), static_cast<uint32_t>(length)),
                 Json::Exception);
    EXPECT_TRUE(buffer->GuardsIntact());
  }
  EXPECT_EQ(0, std::memcmp(aligned.data(), shifted.data(), length));
}

TEST(ElementBuffer, RecordsMergeWithWhatTheBufferHeld) {
  GuardedBytes buffer(5000, 4);
  ReadElementList(J(R"([{"Video": {"Path": "/old.mp4", "PlayCount": 8}}])"), buffer.data(), 5000);
  ReadElementList(J(R"([{"Name": "new"}])"), buffer.data(), 5000);
  gsc_element_record entry;
  uint32_t offset = 0;
  EM_ELEMENT_TYPE kind = EM_ELEMENT_TYPE_UNKNOWN;
  ASSERT_EQ(gsc_element_next(buffer.data(), 5000, &offset, &kind, &entry, sizeof entry), 0);
  EXPECT_EQ(kind, EM_ELEMENT_TYPE_VIDEO);
  EXPECT_EQ(std::string(entry.stuVideo.szName) + entry.stuVideo.szPath, "new/old.mp4");
  EXPECT_EQ(entry.stuVideo.nPlayCount, 0U);
}

TEST(ElementBuffer, UnknownKindsAreHeadersAloneAndWrittenAsHoles) {
  for (const int32_t kind : {0, 6, INT32_MIN, INT32_MAX}) {
    EXPECT_EQ(kHeader, ElementEntrySize(static_cast<EM_ELEMENT_TYPE>(kind))) << kind;
    const auto length = static_cast<uint32_t>(kHeader + kPlaceholderEntry + kHeader);
    GuardedBytes buffer(length, 4);
    tagNET_PLACEHOLDER_ELEMENT_INFO placeholder = {};
    SetText(placeholder.szName, "p");
    uint32_t used = 0;
    const auto unknown = static_cast<EM_ELEMENT_TYPE>(kind);
    ASSERT_EQ(gsc_element_append(buffer.data(), length, &used, unknown, nullptr), 0);
    ASSERT_EQ(
        gsc_element_append(buffer.data(), length, &used, EM_ELEMENT_TYPE_PLACEHOLDER, &placeholder),
        0);
    ASSERT_EQ(gsc_element_append(buffer.data(), length, &used, unknown, nullptr), 0);
    EXPECT_EQ(used, length);
    Json::Value elements, onlyUnknown;
    WriteElementList(buffer.data(), 3, elements);
    WriteElementList(buffer.data(), 1, onlyUnknown);
    EXPECT_JSON_EQ(R"([null, {"Name": "p", "Type": 3, "FillerState": false}])", elements) << kind;
    EXPECT_TRUE(onlyUnknown.isNull()) << kind;
    EXPECT_TRUE(buffer.GuardsIntact()) << kind;
  }
}

TEST(Window, TourPeriodIsWrittenLessOneAndReadPlusOneWithItsTimeOnlyWhenCustom) {
  for (const auto& [stored, written, readBack, time] :
       std::vector<std::tuple<int, const char*, int, uint32_t>>{
           {0, "", 1, 77},
           {2, R"(, "TourPeriod": 1)", 2, 77},
           {3, R"(, "TourPeriod": 2, "TourPeriodTime": 45)", 3, 30},
           {7, R"(, "TourPeriod": 6)", 0, 77}}) {
    tagNET_PROGRAMME_INFO programme = {};
    tagNET_PROGRAMME_WINDOW_INFO& window = programme.stuOrdinary.stuWindows[0];
    programme.stuOrdinary.nWindowsNum = 1;
    window.emTourPeriod = static_cast<EM_TOUR_PERIOD_TYPE>(stored);
    window.nTourPeriodTime = 45;
    Json::Value json;
    PacketPragramme(&programme, json);
    EXPECT_EQ(Compact(J(std::string(R"({"WinID": "", "BackgroundColor": [0, 0, 0, 0],
        "Diaphaneity": 0, "Volume": 0, "Elements": null)") +
                        written + "}")),
              Compact(json["Ordinary"]["Windows"][0]));
    json["Ordinary"]["Windows"][0]["TourPeriodTime"] = 30;
    window.nTourPeriodTime = 77;
    ParseProgramme(json, &programme);
    EXPECT_EQ(window.emTourPeriod, readBack) << stored;
    EXPECT_EQ(window.nTourPeriodTime, time) << stored;
  }
}

TEST(Programme, EmptyWindowsAreNullAndEnableTempletStateAreAlwaysSetOrdinaryMerged) {
  tagNET_PROGRAMME_INFO programme = {};
  Json::Value none, all;
  PacketPragramme(&programme, none);
  EXPECT_JSON_EQ(R"({"ProgrammeName": "", "ProgrammeID": "", "ProgrammeType": 0, "Enable": false,
      "Ordinary": {"TempletState": false, "Description": "", "Windows": null}})",
                 none);
  programme.stuOrdinary.nWindowsNum = 4294967295U;
  PacketPragramme(&programme, all);
  EXPECT_EQ(all["Ordinary"]["Windows"].size(), 16U);
}

TEST(Programme, WindowsAndElementsArraysReplaceCountsAnythingElseKeepsThem) {
  std::string twenty = "{}";
  for (int i = 1; i < 20; ++i) twenty += ", {}";
  for (const auto& [ordinary, windows, elements] :
       std::vector<std::tuple<std::string, uint32_t, uint32_t>>{
           {R"({"Windows": [)" + twenty + "]}", 16, 2},
           {R"({"Windows": []})", 0, 2},
           {R"({"Windows": {"0": {}}})", 3, 2},
           {R"({"Windows": [{"Elements": {"0": {}}}]})", 1, 2}}) {
    GuardedBytes buffer(5000, 4, 0xEE);
    tagNET_PROGRAMME_INFO programme = OneWindow(buffer);
    programme.stuOrdinary.nWindowsNum = 3;
    programme.stuOrdinary.stuWindows[0].nElementsNum = 2;
    ParseProgramme(J(R"({"Ordinary": )" + ordinary + "}"), &programme);
    EXPECT_EQ(programme.stuOrdinary.nWindowsNum, windows) << ordinary;
    EXPECT_EQ(programme.stuOrdinary.stuWindows[0].nElementsNum, elements) << ordinary;
    EXPECT_EQ(buffer.data()[0], 0xEE) << ordinary;
  }
}

TEST(Programme, EnableAndTempletStateAreAlwaysSetWhileAMissingOrdinaryIsKept) {
  tagNET_PROGRAMME_INFO programme = {};
  programme.bEnable = programme.stuOrdinary.bTempletState = true;
  SetText(programme.stuOrdinary.szDescription, "kept");
  programme.stuOrdinary.nWindowsNum = 2;
  ParseProgramme(J(R"({"ProgrammeType": 1})"), &programme);
  EXPECT_FALSE(programme.bEnable);
  EXPECT_TRUE(programme.stuOrdinary.bTempletState);
  ParseProgramme(J(R"({"Ordinary": {}})"), &programme);
  EXPECT_FALSE(programme.stuOrdinary.bTempletState);
  EXPECT_STREQ(programme.stuOrdinary.szDescription, "kept");
  EXPECT_EQ(programme.stuOrdinary.nWindowsNum, 2U);
}

// ---- Operations ------------------------------------------------------------------------------

TEST(GetAllProgrammes, FillsUpToCapacityInAscendingNameOrder) {
  const Json::Value five = J(R"({"infos": {"p5": {"ProgrammeID": "5"}, "p1": {"ProgrammeID": "1"},
      "p4": {"ProgrammeID": "4"}, "p2": {"ProgrammeID": "2"}, "p3": {"ProgrammeID": "3"}}})");
  GuardedArray<tagNET_PROGRAMME_INFO> infos(4);
  SetText(infos[3].szProgrammeID, "guard");
  for (const uint32_t capacity : {0U, 3U}) {
    tagNET_OUT_GET_ALL_PROGRAMMES out = {sizeof out, capacity, 99, infos.data()};
    EXPECT_TRUE(deserialize(five, out));
    EXPECT_EQ(out.nRetInfosNum, capacity);
    EXPECT_STREQ(infos[0].szProgrammeID, capacity == 0 ? "" : "1");
  }
  EXPECT_EQ(std::string(infos[1].szProgrammeID) + infos[2].szProgrammeID + infos[3].szProgrammeID,
            "23guard");
  EXPECT_TRUE(infos.GuardsIntact());
  tagNET_OUT_GET_ALL_PROGRAMMES noArray = {sizeof noArray, 5, 99, nullptr};
  EXPECT_TRUE(deserialize(five, noArray));
  EXPECT_EQ(noArray.nRetInfosNum, 0U);
}

TEST(GetAllBriefProgrammes, FortyFillThirtyTwoAndRequestsLeaveTheParametersAsGiven) {
  Json::Value answer, params = J(R"({"from": "transport"})");
  for (int i = 0; i < 40; ++i)
    answer["infos"]["p" + std::to_string(100 + i)]["ProgrammeName"] = std::to_string(i);
  // Zeroed on the heap: a record kept from an earlier run would already hold what is expected.
  const auto out = std::make_unique<tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES>();
  EXPECT_TRUE(deserialize(answer, *out));
  EXPECT_EQ(out->nRetInfosNum, 32U);
  EXPECT_STREQ(out->stuInfos[31].szProgrammeName, "31");
  EXPECT_TRUE(serialize(tagNET_IN_GET_ALL_PROGRAMMES{}, params));
  EXPECT_TRUE(serialize(tagNET_IN_GET_ALL_BRIEFLYPROGRAMMES{}, params));
  EXPECT_JSON_EQ(R"({"from": "transport"})", params);
}

TEST(GetAllBriefProgrammes, TypeIsKeptWhenMissingAndTempletStateReadAtTopLevelOnly) {
  const auto record = std::make_unique<tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES>();
  tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES& out = *record;
  for (const auto& [entry, type, templet] : std::vector<std::tuple<std::string, int, bool>>{
           {R"({"ProgrammeType": 1, "TempletState": true})", 2, true},
           {R"({"ProgrammeType": 0})", 1, false},
           {R"({"ProgrammeType": 2})", 0, false},
           {R"({"ProgrammeType": -1})", 0, false},
           {R"({"Ordinary": {"TempletState": true}})", 2, false}}) {
    out.stuInfos[0].emProgrammeType = EM_PROGRAMME_TYPE_JSON_1;
    out.stuInfos[0].bTempletState = out.stuInfos[0].bEnable = true;
    EXPECT_TRUE(deserialize(J(R"({"infos": {"only": )" + entry + "}}"), out));
    EXPECT_EQ(out.nRetInfosNum, 1U);
    EXPECT_EQ(out.stuInfos[0].emProgrammeType, type) << entry;
    EXPECT_EQ(out.stuInfos[0].bTempletState, templet) << entry;
    EXPECT_FALSE(out.stuInfos[0].bEnable) << entry;
  }
}

TEST(Requests, CarryTheirIdsAndProgrammesAndAtMostThirtyTwoIdsToDelete) {
  // Fresh zeroed records on every run: the count set below must not reach a later run of the
  // test in the same process (--gtest_repeat), where "none" would then hold 32 IDs.
  const auto byIdRecord = std::make_unique<tagNET_IN_GET_PROGRAMME_BYID>();
  const auto addRecord = std::make_unique<tagNET_IN_ADD_ONE_PROGRAMME>();
  const auto modifyRecord = std::make_unique<tagNET_IN_MODIFY_ONE_PROGRAMME>();
  const auto delRecord = std::make_unique<tagNET_IN_DEL_PROGRAMMES>();
  tagNET_IN_GET_PROGRAMME_BYID& byId = *byIdRecord;
  tagNET_IN_ADD_ONE_PROGRAMME& add = *addRecord;
  tagNET_IN_MODIFY_ONE_PROGRAMME& modify = *modifyRecord;
  tagNET_IN_DEL_PROGRAMMES& del = *delRecord;
  SetText(byId.szProgrammeID, "P-7");
  SetText(add.stuInfo.szProgrammeName, "Lobby");
  SetText(modify.stuProgramme.szProgrammeID, "P-9");
  Json::Value got, added, modified, none(Json::objectValue), all;
  EXPECT_TRUE(serialize(byId, got) && serialize(add, added) && serialize(modify, modified));
  EXPECT_JSON_EQ(R"({"ProgrammeID": "P-7"})", got);
  EXPECT_EQ(added["info"]["ProgrammeName"], Json::Value("Lobby"));
  EXPECT_EQ(modified["ProgrammeID"], Json::Value("P-9"));
  EXPECT_EQ(modified["Programme"]["ProgrammeID"], Json::Value("P-9"));
  EXPECT_TRUE(serialize(del, none));
  EXPECT_JSON_EQ("{}", none);
  del.nProgrammeIDListNum = 4294967295U;
  std::memset(del.szProgrammeIDList[31], 'z', sizeof del.szProgrammeIDList[31]);
  EXPECT_TRUE(serialize(del, all));
  ASSERT_EQ(all["ProgrammeIDList"].size(), 32U);
  EXPECT_EQ(all["ProgrammeIDList"][31], Json::Value(std::string(64, 'z')));
}

TEST(Answers, ProgrammeByIdIsReadAndTheNewIdIsCopiedEvenWhenMissing) {
  const auto got = std::make_unique<tagNET_OUT_GET_PROGRAMME_BYID>();
  EXPECT_TRUE(deserialize(J(R"({"Programme": {"ProgrammeID": "P-7", "Enable": true}})"), *got));
  EXPECT_EQ(std::string(got->stuProgramme.szProgrammeID), "P-7");
  EXPECT_TRUE(got->stuProgramme.bEnable);
  tagNET_OUT_ADD_ONE_PROGRAMME added = {};
  EXPECT_TRUE(deserialize(J(R"({"ProgrammeID": "P-42"})"), added));
  EXPECT_STREQ(added.szProgrammeID, "P-42");
  EXPECT_TRUE(deserialize(J("{}"), added));
  EXPECT_STREQ(added.szProgrammeID, "");
}

}  // namespace
