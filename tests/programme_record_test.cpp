// The programme record: windows, and the element buffer in which entries of mixed kinds lie end
// to end. Buffers are inspected the way a careful caller would, through memcpy only, since a
// record behind a 132-byte header need not be 8 aligned.
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "programme/element_buffer.h"
#include "programme/programme_codecs.h"
#include "support/fixtures.h"

namespace {

using gsc::test::GuardedBytes;
using gsc::test::J;
using gsc::test::SetText;

constexpr size_t kHeader = 132;

template <typename Record>
Record LoadAt(const unsigned char* at) {
  Record record;
  std::memcpy(&record, at, sizeof record);
  return record;
}

int KindAt(const unsigned char* at) {
  int32_t kind;
  std::memcpy(&kind, at, sizeof kind);
  return kind;
}

// Appends an entry at `at` and returns where the next one starts.
template <typename Record>
size_t PutEntry(unsigned char* buffer, size_t at, EM_ELEMENT_TYPE kind, const Record& record) {
  std::memcpy(buffer + at, &kind, sizeof kind);
  std::memcpy(buffer + at + kHeader, &record, sizeof record);
  return at + kHeader + sizeof record;
}
size_t PutUnknownEntry(unsigned char* buffer, size_t at, int32_t kind) {
  std::memcpy(buffer + at, &kind, sizeof kind);
  return at + kHeader;
}

// A zero record with every enumeration set, so that nothing reads back differently.
template <typename Record>
Record Cleared() {
  Record record;
  std::memset(&record, 0, sizeof record);
  return record;
}

tagNET_GUIDESCREEN_TEXT_INFO SampleText(const char* content) {
  auto text = Cleared<tagNET_GUIDESCREEN_TEXT_INFO>();
  SetText(text.szContent, content);
  SetText(text.szFontStyle, "bold");
  text.nFontSize = 18;
  text.stuFontColor = {255, 255, 0, 255};
  text.dbLineHeight = 1.5;
  text.emTextHoriAlign = EM_TEXT_HORI_ALIGN_JSON_1;
  text.emTextVertAlign = EM_TEXT_VERT_ALIGN_JSON_2;
  text.nPlayTime = 10;
  text.nPlayCount = 1;
  text.nStayTime = 2;
  text.emEnterStyle = EM_ENTER_STYLE_JSON_3;
  text.emExitStyle = EM_EXIT_STYLE_JSON_4;
  return text;
}

template <typename Element>
Element SampleElement(const char* name, uint32_t notes) {
  auto element = Cleared<Element>();
  SetText(element.szName, name);
  element.bFillerState = true;
  element.nNoteNum = notes;
  for (uint32_t i = 0; i < notes; ++i) {
    element.stuNote[i].bEnable = true;
    element.stuNote[i].stuNoteRect = {0, 0, 200, static_cast<int32_t>(40 + i)};
    element.stuNote[i].stuNoteInfo = SampleText("note");
  }
  return element;
}

// One entry of each kind; returns the bytes used.
size_t PutEveryKind(unsigned char* buffer) {
  auto video = SampleElement<tagNET_VIDEO_ELEMENT_INFO>("video", 1);
  SetText(video.szPath, "/media/a.mp4");
  video.nPlayCount = 3;
  auto picture = SampleElement<tagNET_PICTURE_ELEMENT_INFO>("picture", 0);
  SetText(picture.szPath, "/media/b.png");
  picture.nPlayTime = 5;
  picture.nDiaphaneity = 20;
  picture.emEnterStyle = EM_ENTER_STYLE_JSON_0;
  picture.emExitStyle = EM_EXIT_STYLE_JSON_1;
  auto text = SampleElement<tagNET_TEXT_ELEMENT_INFO>("text", 4);
  text.stuText = SampleText("Opening hours 9 to 5");
  const auto placeholder = SampleElement<tagNET_PLACEHOLDER_ELEMENT_INFO>("placeholder", 2);
  auto capture = SampleElement<tagNET_CAPTURE_ELEMENT_INFO>("capture", 0);
  SetText(capture.szIP, "192.0.2.7");
  capture.nPort = 554;
  capture.emCaptureType = EM_CAPTURE_TYPE_JSON_0;
  size_t at = PutEntry(buffer, 0, EM_ELEMENT_TYPE_VIDEO, video);
  at = PutEntry(buffer, at, EM_ELEMENT_TYPE_PICTURE, picture);
  at = PutEntry(buffer, at, EM_ELEMENT_TYPE_TEXT, text);
  at = PutEntry(buffer, at, EM_ELEMENT_TYPE_PLACEHOLDER, placeholder);
  return PutEntry(buffer, at, EM_ELEMENT_TYPE_CAPTURE, capture);
}

// A programme of one window whose element buffer is `buffer`.
tagNET_PROGRAMME_INFO OneWindow(GuardedBytes& buffer) {
  auto programme = Cleared<tagNET_PROGRAMME_INFO>();
  programme.stuOrdinary.nWindowsNum = 1;
  programme.stuOrdinary.stuWindows[0].emTourPeriod = EM_TOUR_PERIOD_TYPE_JSON_0;
  programme.stuOrdinary.stuWindows[0].pElementsBuf = buffer.data();
  programme.stuOrdinary.stuWindows[0].nElementsBufLen = static_cast<uint32_t>(buffer.size());
  return programme;
}

Json::Value WithElements(const std::string& elements) {
  return J(R"({"Ordinary": {"Windows": [{"Elements": )" + elements + "}]}}");
}

class ElementBufferAlignment : public ::testing::TestWithParam<size_t> {};

// Written from a buffer at one alignment and read into a buffer at the other, every record of
// every kind passes through both a 4-but-not-8 and an 8 aligned address.
TEST_P(ElementBufferAlignment, EveryKindComesBackByteForByteThroughJson) {
  GuardedBytes sent(30000, GetParam());
  const size_t used = PutEveryKind(sent.data());
  tagNET_PROGRAMME_INFO programme = OneWindow(sent);
  programme.stuOrdinary.stuWindows[0].nElementsNum = 5;
  Json::Value json;
  PacketPragramme(&programme, json);
  ASSERT_EQ(json["Ordinary"]["Windows"][0]["Elements"].size(), 5U);

  GuardedBytes received(used, GetParam() == 0 ? 4 : 0);
  tagNET_PROGRAMME_INFO read = OneWindow(received);
  ParseProgramme(json, &read);
  EXPECT_EQ(read.stuOrdinary.stuWindows[0].nElementsNum, 5U);
  EXPECT_EQ(0, std::memcmp(sent.data(), received.data(), used));
  EXPECT_TRUE(received.GuardsIntact());
}

INSTANTIATE_TEST_SUITE_P(Offsets, ElementBufferAlignment, ::testing::Values(0, 4));

TEST(ElementBuffer, TypesZeroSevenTwoLieAtZero4020And4152AndWriteBackWithAHole) {
  GuardedBytes buffer(20000, 4);
  // Marks where the headers will lie and the byte after the last entry.
  for (size_t header : {0, 4020, 4152}) std::memset(buffer.data() + header, 0xEE, kHeader);
  buffer.data()[4152 + 4628] = 0xEE;
  tagNET_PROGRAMME_INFO programme = OneWindow(buffer);
  ParseProgramme(
      WithElements(
          R"([{"Type": 0, "Name": "v"}, {"Type": 7, "Name": "x"}, {"Type": 2, "Name": "t"}])"),
      &programme);
  const tagNET_PROGRAMME_WINDOW_INFO& window = programme.stuOrdinary.stuWindows[0];
  EXPECT_EQ(window.nElementsNum, 3U);
  EXPECT_EQ(KindAt(buffer.data()), EM_ELEMENT_TYPE_VIDEO);
  EXPECT_EQ(KindAt(buffer.data() + 4020), EM_ELEMENT_TYPE_UNKNOWN);
  EXPECT_EQ(KindAt(buffer.data() + 4152), EM_ELEMENT_TYPE_TEXT);
  EXPECT_STREQ(LoadAt<tagNET_TEXT_ELEMENT_INFO>(buffer.data() + 4152 + kHeader).szName, "t");
  // Only the kind is stored: the headers' reserved bytes keep what the caller left there.
  for (size_t header : {0, 4020, 4152}) {
    for (size_t i = 4; i < kHeader; ++i) ASSERT_EQ(buffer.data()[header + i], 0xEE) << header;
  }
  EXPECT_EQ(buffer.data()[4152 + 4628], 0xEE);

  Json::Value json;
  PacketPragramme(&programme, json);
  const Json::Value& elements = json["Ordinary"]["Windows"][0]["Elements"];
  ASSERT_EQ(elements.size(), 3U);
  EXPECT_EQ(elements[0]["Type"], Json::Value(0));
  EXPECT_TRUE(elements[1].isNull());
  EXPECT_EQ(elements[2]["Type"], Json::Value(2));

  // The hole has no "Type", so a reader takes it for a video element.
  GuardedBytes again(20000, 4);
  tagNET_PROGRAMME_INFO reread = OneWindow(again);
  ParseProgramme(json, &reread);
  EXPECT_EQ(KindAt(again.data() + 4020), EM_ELEMENT_TYPE_VIDEO);
  EXPECT_EQ(KindAt(again.data() + 8040), EM_ELEMENT_TYPE_TEXT);
}

TEST(ElementBuffer, ExactFitTakesNEntriesAndOneByteLessTakesOneFewer) {
  const Json::Value json = WithElements(
      R"([{"Type": 0}, {"Type": 1}, {"Type": 2}, {"Type": 3}, {"Type": 4}, {"Type": -1}, {}])");
  const std::vector<size_t> entry = {4020, 4036, 4628, 3884, 4004, 132, 4020};
  size_t fit = 0;
  for (uint32_t n = 1; n <= entry.size(); ++n) {
    fit += entry[n - 1];
    for (const size_t length : {fit, fit - 1}) {
      const uint32_t expected = length == fit ? n : n - 1;
      GuardedBytes buffer(length, 4, 0xEE);
      tagNET_PROGRAMME_INFO programme = OneWindow(buffer);
      ParseProgramme(json, &programme);
      EXPECT_EQ(programme.stuOrdinary.stuWindows[0].nElementsNum, expected) << length;
      EXPECT_TRUE(buffer.GuardsIntact()) << length;
      if (length != fit) {
        EXPECT_EQ(buffer.data()[length - 1], 0xEE) << "partial entry written at " << length;
      }
    }
  }
}

TEST(ElementBuffer, EmptyOrMissingBufferStoresNothing) {
  GuardedBytes empty(0, 4);
  tagNET_PROGRAMME_INFO programme = OneWindow(empty);
  programme.stuOrdinary.stuWindows[0].nElementsNum = 9;
  ParseProgramme(WithElements(R"([{"Type": -5}])"), &programme);
  EXPECT_EQ(programme.stuOrdinary.stuWindows[0].nElementsNum, 0U);
  EXPECT_TRUE(empty.GuardsIntact());

  programme.stuOrdinary.stuWindows[0].pElementsBuf = nullptr;
  programme.stuOrdinary.stuWindows[0].nElementsBufLen = 100000;
  ParseProgramme(WithElements(R"([{"Type": 3}])"), &programme);
  EXPECT_EQ(programme.stuOrdinary.stuWindows[0].nElementsNum, 0U);
}

TEST(ElementBuffer, RecordsMergeWithWhatTheBufferHeld) {
  GuardedBytes buffer(5000, 4);
  auto video = Cleared<tagNET_VIDEO_ELEMENT_INFO>();
  SetText(video.szPath, "/media/old.mp4");
  video.nPlayCount = 8;
  PutEntry(buffer.data(), 0, EM_ELEMENT_TYPE_VIDEO, video);
  tagNET_PROGRAMME_INFO programme = OneWindow(buffer);
  ParseProgramme(WithElements(R"([{"Name": "no type, no path"}])"), &programme);
  const auto read = LoadAt<tagNET_VIDEO_ELEMENT_INFO>(buffer.data() + kHeader);
  EXPECT_STREQ(read.szName, "no type, no path");
  EXPECT_STREQ(read.szPath, "/media/old.mp4");
  EXPECT_EQ(read.nPlayCount, 0U);
}

TEST(ElementBuffer, ElementsThatAreNotAnArrayKeepCountAndBuffer) {
  GuardedBytes buffer(5000, 4, 0xEE);
  tagNET_PROGRAMME_INFO programme = OneWindow(buffer);
  programme.stuOrdinary.stuWindows[0].nElementsNum = 2;
  ParseProgramme(WithElements(R"({"0": {"Type": 0}})"), &programme);
  ParseProgramme(WithElements("null"), &programme);
  EXPECT_EQ(programme.stuOrdinary.stuWindows[0].nElementsNum, 2U);
  EXPECT_EQ(buffer.data()[0], 0xEE);
}

TEST(ElementBuffer, WriterStopsTheArrayBeforeTrailingUnknownEntries) {
  GuardedBytes buffer(5000);
  size_t at = PutUnknownEntry(buffer.data(), 0, 0);
  at = PutEntry(buffer.data(), at, EM_ELEMENT_TYPE_PLACEHOLDER,
                SampleElement<tagNET_PLACEHOLDER_ELEMENT_INFO>("p", 0));
  PutUnknownEntry(buffer.data(), at, 6);
  tagNET_PROGRAMME_INFO programme = OneWindow(buffer);
  programme.stuOrdinary.stuWindows[0].nElementsNum = 3;
  Json::Value json;
  PacketPragramme(&programme, json);
  EXPECT_JSON_EQ(R"([null, {"Name": "p", "Type": 3, "FillerState": true}])",
                 json["Ordinary"]["Windows"][0]["Elements"]);

  programme.stuOrdinary.stuWindows[0].nElementsNum = 1;
  Json::Value onlyUnknown;
  PacketPragramme(&programme, onlyUnknown);
  EXPECT_TRUE(onlyUnknown["Ordinary"]["Windows"][0]["Elements"].isNull());
}

// Headers hold whatever int the caller stored; the extremes are unknown kinds like any other.
TEST(ElementBuffer, ExtremeUnknownKindsAreHeadersAloneOnBothSides) {
  for (const int32_t kind : {INT32_MIN, INT32_MAX, -1}) {
    SCOPED_TRACE(kind);
    EXPECT_EQ(kHeader, gsc::programme::ElementEntrySize(static_cast<EM_ELEMENT_TYPE>(kind)));
    GuardedBytes buffer(2 * kHeader + sizeof(tagNET_PLACEHOLDER_ELEMENT_INFO), 4);
    const size_t at = PutUnknownEntry(buffer.data(), 0, kind);
    PutEntry(buffer.data(), at, EM_ELEMENT_TYPE_PLACEHOLDER,
             SampleElement<tagNET_PLACEHOLDER_ELEMENT_INFO>("p", 0));
    tagNET_PROGRAMME_INFO programme = OneWindow(buffer);
    programme.stuOrdinary.stuWindows[0].nElementsNum = 2;
    Json::Value json;
    PacketPragramme(&programme, json);
    EXPECT_JSON_EQ(R"([null, {"Name": "p", "Type": 3, "FillerState": true}])",
                   json["Ordinary"]["Windows"][0]["Elements"]);
    EXPECT_TRUE(buffer.GuardsIntact());
  }
}

TEST(Window, TourPeriodAndItsTime) {
  struct Case {
    const char* window;
    int tourPeriod;
    uint32_t tourPeriodTime;
  };
  for (const Case& c :
       {Case{R"({})", 1, 77}, Case{R"({"TourPeriod": 2, "TourPeriodTime": 30})", 3, 30},
        Case{R"({"TourPeriod": 1, "TourPeriodTime": 30})", 2, 77},
        Case{R"({"TourPeriod": 3, "TourPeriodTime": 30})", 0, 77}}) {
    auto programme = Cleared<tagNET_PROGRAMME_INFO>();
    programme.stuOrdinary.stuWindows[0].nTourPeriodTime = 77;
    ParseProgramme(J(std::string(R"({"Ordinary": {"Windows": [)") + c.window + "]}}"), &programme);
    EXPECT_EQ(programme.stuOrdinary.stuWindows[0].emTourPeriod, c.tourPeriod) << c.window;
    EXPECT_EQ(programme.stuOrdinary.stuWindows[0].nTourPeriodTime, c.tourPeriodTime) << c.window;
  }
}

TEST(Window, TourPeriodIsWrittenLessOneAndItsTimeOnlyForTheCustomPeriod) {
  struct Case {
    int tourPeriod;
    const char* written;
  };
  for (const Case& c : {Case{0, R"({})"}, Case{3, R"({"TourPeriod": 2, "TourPeriodTime": 45})"},
                        Case{7, R"({"TourPeriod": 6})"}, Case{1, R"({"TourPeriod": 0})"}}) {
    auto programme = Cleared<tagNET_PROGRAMME_INFO>();
    programme.stuOrdinary.nWindowsNum = 1;
    programme.stuOrdinary.stuWindows[0].emTourPeriod =
        static_cast<EM_TOUR_PERIOD_TYPE>(c.tourPeriod);
    programme.stuOrdinary.stuWindows[0].nTourPeriodTime = 45;
    Json::Value json;
    PacketPragramme(&programme, json);
    Json::Value& window = json["Ordinary"]["Windows"][0];
    Json::Value tour(Json::objectValue);
    for (const char* key : {"TourPeriod", "TourPeriodTime"}) {
      if (window.isMember(key)) tour[key] = window[key];
    }
    EXPECT_JSON_EQ(c.written, tour) << c.tourPeriod;
  }
}

TEST(Programme, IsWrittenWithTypeZeroAndNullListsWhenEmpty) {
  auto programme = Cleared<tagNET_PROGRAMME_INFO>();
  SetText(programme.szProgrammeName, "Lobby");
  SetText(programme.szProgrammeID, "P-1");
  programme.bEnable = true;
  SetText(programme.stuOrdinary.szDescription, "morning");
  Json::Value noWindows;
  PacketPragramme(&programme, noWindows);
  EXPECT_JSON_EQ(R"({"ProgrammeName": "Lobby", "ProgrammeID": "P-1", "ProgrammeType": 0,
                     "Enable": true, "Ordinary": {"TempletState": false,
                     "Description": "morning", "Windows": null}})",
                 noWindows);

  programme.stuOrdinary.nWindowsNum = 1;
  tagNET_PROGRAMME_WINDOW_INFO& window = programme.stuOrdinary.stuWindows[0];
  SetText(window.szWinID, "W1");
  window.nVolume = -3;
  window.stuBackgroundColor = {0, 0, 0, 255};
  window.nDiaphaneity = 4294967295U;
  Json::Value noElements;
  PacketPragramme(&programme, noElements);
  EXPECT_JSON_EQ(R"({"WinID": "W1", "BackgroundColor": [0, 0, 0, 255],
                     "Diaphaneity": 4294967295, "Volume": -3, "Elements": null})",
                 noElements["Ordinary"]["Windows"][0]);
}

TEST(Programme, WindowCountIsClampedToSixteenOnBothSides) {
  auto programme = Cleared<tagNET_PROGRAMME_INFO>();
  programme.stuOrdinary.nWindowsNum = 4294967295U;
  Json::Value json;
  PacketPragramme(&programme, json);
  EXPECT_EQ(json["Ordinary"]["Windows"].size(), 16U);

  json["Ordinary"]["Windows"][19] = Json::Value(Json::objectValue);
  programme.stuOrdinary.nWindowsNum = 0;
  ParseProgramme(json, &programme);
  EXPECT_EQ(programme.stuOrdinary.nWindowsNum, 16U);

  ParseProgramme(J(R"({"Ordinary": {"Windows": {"0": {}}}})"), &programme);
  EXPECT_EQ(programme.stuOrdinary.nWindowsNum, 16U);
  ParseProgramme(J(R"({"Ordinary": {"Windows": []}})"), &programme);
  EXPECT_EQ(programme.stuOrdinary.nWindowsNum, 0U);
}

TEST(Programme, EnableIsAlwaysSetWhileAMissingOrdinaryIsKept) {
  auto programme = Cleared<tagNET_PROGRAMME_INFO>();
  programme.bEnable = true;
  programme.stuOrdinary.bTempletState = true;
  SetText(programme.stuOrdinary.szDescription, "kept");
  programme.stuOrdinary.nWindowsNum = 2;
  const auto before = programme;
  ParseProgramme(J(R"({"ProgrammeType": 1})"), &programme);
  EXPECT_FALSE(programme.bEnable);
  programme.bEnable = true;
  EXPECT_EQ(0, std::memcmp(&before, &programme, sizeof programme));

  ParseProgramme(J(R"({"Ordinary": {}})"), &programme);
  EXPECT_FALSE(programme.stuOrdinary.bTempletState);
  EXPECT_STREQ(programme.stuOrdinary.szDescription, "kept");
  EXPECT_EQ(programme.stuOrdinary.nWindowsNum, 2U);
}

TEST(Programme, NullRecordIsIgnoredAndWrongTypesRaiseToTheCaller) {
  Json::Value json;
  PacketPragramme(nullptr, json);
  EXPECT_TRUE(json.isNull());
  ParseProgramme(J(R"({"Enable": true})"), nullptr);

  auto programme = Cleared<tagNET_PROGRAMME_INFO>();
  EXPECT_THROW(ParseProgramme(J(R"({"Ordinary": {"Windows": [{"Volume": {}}]}})"), &programme),
               Json::Exception);
}

}  // namespace
