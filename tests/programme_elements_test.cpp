// Text blocks, notes and the five element kinds.
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "programme/programme_codecs.h"
#include "support/fixtures.h"

namespace {

using gsc::test::J;
using gsc::test::SetText;

tagNET_GUIDESCREEN_TEXT_INFO OldText() {
  tagNET_GUIDESCREEN_TEXT_INFO text = {};
  ParseText(J(R"({"Content": "old", "FontStyle": "bold", "FontColor": [1, 2, 3, 4], "FontSize": 9,
      "PlayTime": 9, "PlayCount": 9, "StayTime": 9, "LineHeight": 9.5, "TextHoriAlign": 1,
      "TextVertAlign": 1, "EnterStyle": 2, "ExitStyle": 2})"),
            &text);
  return text;
}

// Texts and colour kept, numbers 0, enumerations 1.
void ExpectReset(const tagNET_GUIDESCREEN_TEXT_INFO& t) {
  EXPECT_EQ(std::string(t.szContent) + t.szFontStyle + std::to_string(t.stuFontColor.nAlpha),
            "oldbold4");
  EXPECT_EQ(t.nFontSize + t.nPlayTime + t.nPlayCount + t.nStayTime + t.dbLineHeight, 0.0);
  for (int e : {+t.emTextHoriAlign, +t.emTextVertAlign, +t.emEnterStyle, +t.emExitStyle})
    EXPECT_EQ(e, 1);
}

template <typename Record>
Json::Value Written(void (*packet)(const Record*, Json::Value&), const Record& record) {
  Json::Value json;
  packet(&record, json);
  return json;
}

TEST(TextBlock, MissingOrEmptyBlockKeepsTextsAndColourAndResetsTheRest) {
  tagNET_GUIDESCREEN_TEXT_INFO text = OldText();
  ParseText(J("{}"), &text);
  ExpectReset(text);
  tagNET_TEXT_ELEMENT_INFO element = {};
  element.stuText = OldText();
  ParseTextElement(J(R"({"Name": "no text"})"), &element);
  ExpectReset(element.stuText);

  tagNET_GUIDESCREEN_NOTE_INFO note = {};
  note.bEnable = true;
  note.stuNoteRect = {1, 2, 3, 4};
  note.stuNoteInfo = OldText();
  ParseNotes(J("{}"), &note);
  EXPECT_TRUE(note.bEnable);
  EXPECT_EQ(note.stuNoteRect.nBottom, 4);
  EXPECT_EQ(note.stuNoteInfo.nFontSize, 9U);
  ParseNotes(J(R"({"NoteInfo": {}})"), &note);
  ExpectReset(note.stuNoteInfo);
}

TEST(Enumerations, ReadAsJsonPlusOneAndOutOfRangeAsZero) {
  for (const auto& [json, stored] : std::vector<std::pair<std::string, std::vector<int>>>{
           {R"({"TextHoriAlign": -1, "TextVertAlign": 2, "EnterStyle": 4, "ExitStyle": 5})",
            {0, 3, 5, 0}},
           {R"({"TextHoriAlign": 0, "TextVertAlign": 3, "EnterStyle": 5, "ExitStyle": 4})",
            {1, 0, 0, 5}}}) {
    tagNET_GUIDESCREEN_TEXT_INFO t = OldText();
    ParseText(J(json), &t);
    EXPECT_EQ(
        std::vector<int>({t.emTextHoriAlign, t.emTextVertAlign, t.emEnterStyle, t.emExitStyle}),
        stored)
        << json;
  }
  for (const auto& [type, stored] :
       std::initializer_list<std::pair<int, int>>{{0, 1}, {1, 2}, {2, 0}, {-1, 0}}) {
    tagNET_CAPTURE_ELEMENT_INFO capture = {};
    ParseCaptureElement(J(R"({"DeviceInfo": {"CaptureType": )" + std::to_string(type) + "}}"),
                        &capture);
    EXPECT_EQ(capture.emCaptureType, stored) << type;
  }
}

TEST(Enumerations, WrittenLessOneOnlyWhenNotZeroAndWithoutUpperBound) {
  for (const int stored : {0, 1, 9, -3}) {
    tagNET_GUIDESCREEN_TEXT_INFO text = {};
    text.emExitStyle = static_cast<EM_EXIT_STYLE>(stored);
    const Json::Value expected = stored == 0 ? Json::Value("absent") : Json::Value(stored - 1);
    EXPECT_EQ(Written(PacketText, text).get("ExitStyle", "absent"), expected) << stored;
  }
}

TEST(ElementReaders, MissingObjectKeepsNameTextsAndNotesAndResetsNumbersAndFillerState) {
  tagNET_CAPTURE_ELEMENT_INFO capture = {};
  SetText(capture.szName, "n");
  SetText(capture.szUserName, "u");
  SetText(capture.szPassword, "p");
  SetText(capture.szIP, "ip");
  capture.bFillerState = true;
  capture.nPort = capture.nChannel = capture.nPlayTime = capture.nNoteNum = 2;
  ParseCaptureElement(J(R"({"PlayTime": 9})"), &capture);
  EXPECT_EQ(std::string(capture.szName) + capture.szUserName + capture.szPassword + capture.szIP,
            "nupip");
  EXPECT_EQ(capture.nPort + capture.nChannel + capture.nPlayTime, 0U);
  EXPECT_EQ(capture.emCaptureType, 1);
  EXPECT_FALSE(capture.bFillerState);
  EXPECT_EQ(capture.nNoteNum, 2U);
}

tagNET_PLACEHOLDER_ELEMENT_INFO WithNotes(uint32_t notes) {
  tagNET_PLACEHOLDER_ELEMENT_INFO element = {};
  element.nNoteNum = notes;
  for (auto& note : element.stuNote) SetText(note.stuNoteInfo.szContent, "kept");
  return element;
}

TEST(NoteList, ArrayReplacesCountClampedToFourAnythingElseKeepsIt) {
  for (const auto& [json, notes, first] :
       std::vector<std::tuple<const char*, uint32_t, const char*>>{
           {R"({"Note": [{}, {}, {}, {}, {}, {"NoteInfo": {"Content": "6"}}]})", 4, "kept"},
           {R"({"Note": []})", 0, "kept"},
           {R"({"Note": {"0": {"NoteInfo": {"Content": "x"}}}})", 3, "kept"},
           {R"({})", 3, "kept"},
           {R"({"Note": [null, {"NoteInfo": {"Content": "2"}}]})", 2, "kept"}}) {
    tagNET_PLACEHOLDER_ELEMENT_INFO element = WithNotes(3);
    ParsePlaceHolderElement(J(json), &element);
    EXPECT_EQ(element.nNoteNum, notes) << json;
    EXPECT_STREQ(element.stuNote[0].stuNoteInfo.szContent, first) << json;
    EXPECT_STREQ(element.stuNote[3].stuNoteInfo.szContent, "kept") << json;
  }
  const Json::Value all = Written(PacketPlaceHolderElement, WithNotes(4294967295U));
  ASSERT_EQ(all["Note"].size(), 4U);
  EXPECT_EQ(all["Note"][3]["NoteInfo"]["Content"], Json::Value("kept"));
}

}  // namespace
