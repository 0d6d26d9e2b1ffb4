// Text blocks, notes and the rules every element kind shares (name, filler state, note list).
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "programme/programme_codecs.h"
#include "support/fixtures.h"

namespace {

using gsc::test::J;
using gsc::test::SetText;

tagNET_GUIDESCREEN_TEXT_INFO FilledText() {
  tagNET_GUIDESCREEN_TEXT_INFO text = {};
  SetText(text.szContent, "old content");
  SetText(text.szFontStyle, "old style");
  text.stuFontColor = {1, 2, 3, 4};
  text.nFontSize = text.nPlayTime = text.nPlayCount = text.nStayTime = 9;
  text.dbLineHeight = 9.5;
  text.emTextHoriAlign = EM_TEXT_HORI_ALIGN_JSON_1;
  text.emTextVertAlign = EM_TEXT_VERT_ALIGN_JSON_1;
  text.emEnterStyle = EM_ENTER_STYLE_JSON_2;
  text.emExitStyle = EM_EXIT_STYLE_JSON_2;
  return text;
}

std::vector<std::string> Members(const Json::Value& object) {
  return object.getMemberNames();
}

TEST(TextBlock, EmptyObjectKeepsTextsAndColourButResetsNumbersAndReadsEnumerationsAsOne) {
  tagNET_GUIDESCREEN_TEXT_INFO text = FilledText();
  ParseText(J("{}"), &text);
  EXPECT_STREQ(text.szContent, "old content");
  EXPECT_STREQ(text.szFontStyle, "old style");
  EXPECT_EQ(text.stuFontColor.nAlpha, 4);
  EXPECT_EQ(text.nFontSize + text.nPlayTime + text.nPlayCount + text.nStayTime, 0U);
  EXPECT_EQ(text.dbLineHeight, 0.0);
  EXPECT_EQ(text.emTextHoriAlign, 1);
  EXPECT_EQ(text.emTextVertAlign, 1);
  EXPECT_EQ(text.emEnterStyle, 1);
  EXPECT_EQ(text.emExitStyle, 1);
}

TEST(TextBlock, EnumerationsStoreJsonPlusOneAndOutOfRangeAsZero) {
  struct Case {
    const char* key;
    int json;
    int stored;
  };
  for (const Case& c :
       {Case{"TextHoriAlign", -1, 0}, Case{"TextHoriAlign", 0, 1}, Case{"TextHoriAlign", 2, 3},
        Case{"TextHoriAlign", 3, 0}, Case{"TextVertAlign", 2, 3}, Case{"EnterStyle", 4, 5},
        Case{"EnterStyle", 5, 0}, Case{"ExitStyle", 4, 5}, Case{"ExitStyle", -1, 0}}) {
    Json::Value json(Json::objectValue);
    json[c.key] = c.json;
    tagNET_GUIDESCREEN_TEXT_INFO text = FilledText();
    ParseText(json, &text);
    const std::map<std::string, int> stored = {{"TextHoriAlign", text.emTextHoriAlign},
                                               {"TextVertAlign", text.emTextVertAlign},
                                               {"EnterStyle", text.emEnterStyle},
                                               {"ExitStyle", text.emExitStyle}};
    EXPECT_EQ(stored.at(c.key), c.stored) << c.key << " " << c.json;
  }
}

TEST(TextBlock, UnsetEnumerationsAreLeftOutLeavingExactlyEightMembers) {
  tagNET_GUIDESCREEN_TEXT_INFO text = {};
  Json::Value json;
  PacketText(&text, json);
  EXPECT_EQ(Members(json),
            (std::vector<std::string>{"Content", "FontColor", "FontSize", "FontStyle", "LineHeight",
                                      "PlayCount", "PlayTime", "StayTime"}));
  EXPECT_EQ(json["Content"], Json::Value(""));
}

TEST(TextBlock, EnumerationAboveRangeIsWrittenLessOneAndReadsBackAsZero) {
  tagNET_GUIDESCREEN_TEXT_INFO text = {};
  text.emExitStyle = static_cast<EM_EXIT_STYLE>(9);
  text.emEnterStyle = static_cast<EM_ENTER_STYLE>(-3);
  Json::Value json;
  PacketText(&text, json);
  EXPECT_EQ(json["ExitStyle"].asInt(), 8);
  EXPECT_EQ(json["EnterStyle"].asInt(), -4);
  ParseText(json, &text);
  EXPECT_EQ(text.emExitStyle, 0);
  EXPECT_EQ(text.emEnterStyle, 0);
}

TEST(TextBlock, RoundTripKeepsEveryFieldAndTurnsUnsetEnumerationIntoOne) {
  // Cleared byte for byte, padding included, so that the records compare with memcmp.
  tagNET_GUIDESCREEN_TEXT_INFO sent;
  tagNET_GUIDESCREEN_TEXT_INFO received;
  std::memset(&sent, 0, sizeof sent);
  std::memset(&received, 0, sizeof received);
  SetText(sent.szContent, "Welcome to the hall");
  SetText(sent.szFontStyle, "bold");
  sent.nFontSize = 24;
  sent.stuFontColor = {255, 128, 0, 255};
  sent.dbLineHeight = 1.25;
  sent.emTextHoriAlign = EM_TEXT_HORI_ALIGN_JSON_2;
  sent.emTextVertAlign = EM_TEXT_VERT_ALIGN_JSON_0;
  sent.nPlayTime = 30;
  sent.nPlayCount = 2147483647U;
  sent.nStayTime = 5;
  sent.emEnterStyle = EM_ENTER_STYLE_JSON_4;
  sent.emExitStyle = EM_EXIT_STYLE_JSON_0;
  Json::Value json;
  PacketText(&sent, json);
  ParseText(json, &received);
  EXPECT_EQ(0, std::memcmp(&sent, &received, sizeof sent));

  sent.emTextVertAlign = EM_TEXT_VERT_ALIGN_UNKNOWN;
  Json::Value unset;
  PacketText(&sent, unset);
  ParseText(unset, &received);
  EXPECT_EQ(received.emTextVertAlign, 1);
}

TEST(TextBlock, OverlongContentIsCutToTheFieldLessOne) {
  tagNET_GUIDESCREEN_TEXT_INFO text = {};
  Json::Value json;
  json["Content"] = std::string(600, 'x');
  ParseText(json, &text);
  EXPECT_EQ(std::strlen(text.szContent), 511U);
}

TEST(Note, MissingMembersKeepFlagRectangleAndWholeTextBlock) {
  tagNET_GUIDESCREEN_NOTE_INFO note = {};
  note.bEnable = true;
  note.stuNoteRect = {1, 2, 3, 4};
  note.stuNoteInfo = FilledText();
  ParseNotes(J(R"({"NoteRect": [9, 9]})"), &note);
  EXPECT_TRUE(note.bEnable);
  EXPECT_EQ(note.stuNoteRect.nBottom, 4);
  EXPECT_EQ(note.stuNoteInfo.nFontSize, 9U);

  ParseNotes(J(R"({"Enable": false, "NoteInfo": {}, "NoteRect": [5, 6, 7, 8]})"), &note);
  EXPECT_FALSE(note.bEnable);
  EXPECT_EQ(note.stuNoteRect.nLeft, 5);
  EXPECT_EQ(note.stuNoteInfo.nFontSize, 0U);
  EXPECT_EQ(note.stuNoteInfo.emEnterStyle, 1);
  EXPECT_STREQ(note.stuNoteInfo.szContent, "old content");
}

TEST(Note, IsAlwaysWrittenWithFlagRectangleAndTextObject) {
  tagNET_GUIDESCREEN_NOTE_INFO note = {};
  note.stuNoteRect = {0, 0, 100, 50};
  Json::Value json;
  PacketNotes(&note, json);
  EXPECT_EQ(Members(json), (std::vector<std::string>{"Enable", "NoteInfo", "NoteRect"}));
  EXPECT_JSON_EQ("[0, 0, 100, 50]", json["NoteRect"]);
  EXPECT_EQ(json["NoteInfo"].size(), 8U);
}

TEST(TextBlockAndNote, NullRecordIsIgnored) {
  Json::Value json;
  ParseText(J(R"({"FontSize": 1})"), nullptr);
  ParseNotes(J(R"({"Enable": true})"), nullptr);
  PacketText(nullptr, json);
  PacketNotes(nullptr, json);
  EXPECT_TRUE(json.isNull());
}

// The common element rules, seen through the smallest kind.
tagNET_PLACEHOLDER_ELEMENT_INFO ElementWithNotes(uint32_t notes) {
  tagNET_PLACEHOLDER_ELEMENT_INFO element = {};
  SetText(element.szName, "old");
  element.bFillerState = true;
  element.nNoteNum = notes;
  for (tagNET_GUIDESCREEN_NOTE_INFO& note : element.stuNote)
    SetText(note.stuNoteInfo.szContent, "kept");
  return element;
}

TEST(ElementCommon, MissingFillerStateReadsFalseWhileMissingNameKeepsIt) {
  tagNET_PLACEHOLDER_ELEMENT_INFO element = ElementWithNotes(2);
  ParsePlaceHolderElement(J("{}"), &element);
  EXPECT_STREQ(element.szName, "old");
  EXPECT_FALSE(element.bFillerState);
  EXPECT_EQ(element.nNoteNum, 2U);
}

TEST(ElementCommon, NoteArrayReplacesCountClampedToFour) {
  struct Case {
    const char* json;
    uint32_t notes;
  };
  for (const Case& c :
       {Case{R"({"Note": [{}, {}, {}, {}, {}, {"NoteInfo": {"Content": "sixth"}}]})", 4},
        Case{R"({"Note": []})", 0}, Case{R"({"Note": {"0": {}}})", 3}, Case{R"({})", 3},
        Case{R"({"Note": null})", 3}}) {
    tagNET_PLACEHOLDER_ELEMENT_INFO element = ElementWithNotes(3);
    ParsePlaceHolderElement(J(c.json), &element);
    EXPECT_EQ(element.nNoteNum, c.notes) << c.json;
    EXPECT_STREQ(element.stuNote[3].stuNoteInfo.szContent, "kept") << c.json;
  }
}

TEST(ElementCommon, NullNoteEntryCountsButLeavesItsNote) {
  tagNET_PLACEHOLDER_ELEMENT_INFO element = ElementWithNotes(0);
  ParsePlaceHolderElement(J(R"({"Note": [null, {"NoteInfo": {"Content": "second"}}]})"), &element);
  EXPECT_EQ(element.nNoteNum, 2U);
  EXPECT_STREQ(element.stuNote[0].stuNoteInfo.szContent, "kept");
  EXPECT_STREQ(element.stuNote[1].stuNoteInfo.szContent, "second");
}

TEST(ElementCommon, NoteListIsLeftOutWhenEmptyAndClampedToFourWhenHuge) {
  Json::Value none;
  const tagNET_PLACEHOLDER_ELEMENT_INFO empty = ElementWithNotes(0);
  PacketPlaceHolderElement(&empty, none);
  EXPECT_FALSE(none.isMember("Note"));

  Json::Value all;
  const tagNET_PLACEHOLDER_ELEMENT_INFO huge = ElementWithNotes(4294967295U);
  PacketPlaceHolderElement(&huge, all);
  ASSERT_TRUE(all["Note"].isArray());
  EXPECT_EQ(all["Note"].size(), 4U);
  EXPECT_EQ(all["Note"][3]["NoteInfo"]["Content"], Json::Value("kept"));
}

}  // namespace
