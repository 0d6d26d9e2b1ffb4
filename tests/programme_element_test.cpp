// The five element kinds: their own members, their JSON objects and the "Type" each writes.
#include <cstring>
#include <string>
#include <vector>

#include "programme/programme_codecs.h"
#include "support/fixtures.h"

namespace {

using gsc::test::J;
using gsc::test::SetText;

// A record whose every byte holds `fill`: no terminated text, huge counts, odd enumerations
// (a fill of 1 keeps the booleans valid).
template <typename Record>
Record Filled(unsigned char fill) {
  Record record;
  std::memset(&record, fill, sizeof record);
  return record;
}

template <typename Record>
int WrittenType(void (*packet)(const Record*, Json::Value&)) {
  const Record record = Filled<Record>(0x01);
  Json::Value json;
  packet(&record, json);
  return json["Type"].asInt();
}

TEST(ElementWriters, EachKindWritesItsOwnTypeWhateverTheRecordHolds) {
  EXPECT_EQ(WrittenType(PacketVideoElement), 0);
  EXPECT_EQ(WrittenType(PacketPictureElement), 1);
  EXPECT_EQ(WrittenType(PacketTextElement), 2);
  EXPECT_EQ(WrittenType(PacketPlaceHolderElement), 3);
  EXPECT_EQ(WrittenType(PacketCaptureElement), 4);
}

TEST(ElementWriters, NullRecordWritesNothing) {
  Json::Value json;
  PacketVideoElement(nullptr, json);
  PacketPictureElement(nullptr, json);
  PacketTextElement(nullptr, json);
  PacketPlaceHolderElement(nullptr, json);
  PacketCaptureElement(nullptr, json);
  EXPECT_TRUE(json.isNull());
}

TEST(VideoElement, ReadsNameAndPathMergingTheRest) {
  tagNET_VIDEO_ELEMENT_INFO video = {};
  video.bFillerState = true;
  video.nPlayCount = 7;
  video.nNoteNum = 1;
  SetText(video.stuNote[0].stuNoteInfo.szContent, "note");
  ParseVideoElement(J(R"({"Name": "intro", "Video": {"Path": "/media/intro.mp4"}})"), &video);
  EXPECT_STREQ(video.szName, "intro");
  EXPECT_STREQ(video.szPath, "/media/intro.mp4");
  EXPECT_FALSE(video.bFillerState);
  EXPECT_EQ(video.nPlayCount, 0U);
  EXPECT_EQ(video.nNoteNum, 1U);
  EXPECT_STREQ(video.stuNote[0].stuNoteInfo.szContent, "note");

  video.nPlayCount = 7;
  ParseVideoElement(J(R"({"PlayCount": 3})"), &video);
  EXPECT_STREQ(video.szPath, "/media/intro.mp4");
  EXPECT_EQ(video.nPlayCount, 0U);
}

TEST(VideoElement, EmptyRecordStillWritesPathAndPlayCount) {
  const tagNET_VIDEO_ELEMENT_INFO video = {};
  Json::Value json;
  PacketVideoElement(&video, json);
  EXPECT_JSON_EQ(R"({"Name": "", "Type": 0, "FillerState": false,
                     "Video": {"Path": "", "PlayCount": 0}})",
                 json);
}

TEST(PictureElement, WritesEveryMemberInsidePicture) {
  tagNET_PICTURE_ELEMENT_INFO picture = {};
  SetText(picture.szName, "logo");
  SetText(picture.szPath, "/media/logo.png");
  picture.nPlayTime = 10;
  picture.nPlayCount = 2;
  picture.nDiaphaneity = 40;
  picture.nStayTime = 3;
  picture.emEnterStyle = EM_ENTER_STYLE_JSON_4;
  picture.emExitStyle = EM_EXIT_STYLE_JSON_0;
  Json::Value json;
  PacketPictureElement(&picture, json);
  EXPECT_JSON_EQ(R"({"Name": "logo", "Type": 1, "FillerState": false,
                     "Picture": {"Path": "/media/logo.png", "PlayTime": 10, "PlayCount": 2,
                                 "Diaphaneity": 40, "StayTime": 3, "EnterStyle": 4,
                                 "ExitStyle": 0}})",
                 json);

  picture.emEnterStyle = EM_ENTER_STYLE_UNKNOWN;
  picture.emExitStyle = EM_EXIT_STYLE_UNKNOWN;
  Json::Value unset;
  PacketPictureElement(&picture, unset);
  EXPECT_EQ(unset["Picture"].getMemberNames(),
            (std::vector<std::string>{"Diaphaneity", "Path", "PlayCount", "PlayTime", "StayTime"}));
}

TEST(PictureElement, EffectsReadWithoutPresenceTest) {
  tagNET_PICTURE_ELEMENT_INFO picture = {};
  ParsePictureElement(J(R"({"Picture": {"EnterStyle": 4, "ExitStyle": 5}})"), &picture);
  EXPECT_EQ(picture.emEnterStyle, 5);
  EXPECT_EQ(picture.emExitStyle, 0);
  ParsePictureElement(J(R"({"Picture": {}})"), &picture);
  EXPECT_EQ(picture.emEnterStyle, 1);
  EXPECT_EQ(picture.emExitStyle, 1);
}

TEST(TextElement, MissingTextStillResetsTheBlocksNumbersAndEnumerations) {
  tagNET_TEXT_ELEMENT_INFO text = {};
  SetText(text.stuText.szContent, "kept");
  text.stuText.stuFontColor = {1, 2, 3, 4};
  text.stuText.nFontSize = 20;
  text.stuText.emTextHoriAlign = EM_TEXT_HORI_ALIGN_JSON_2;
  ParseTextElement(J(R"({"Name": "news"})"), &text);
  EXPECT_STREQ(text.stuText.szContent, "kept");
  EXPECT_EQ(text.stuText.stuFontColor.nRed, 1);
  EXPECT_EQ(text.stuText.nFontSize, 0U);
  EXPECT_EQ(text.stuText.emTextHoriAlign, 1);
}

TEST(TextElement, AlwaysWritesATextObject) {
  const tagNET_TEXT_ELEMENT_INFO text = {};
  Json::Value json;
  PacketTextElement(&text, json);
  EXPECT_EQ(json.getMemberNames(),
            (std::vector<std::string>{"FillerState", "Name", "Text", "Type"}));
  EXPECT_EQ(json["Text"].size(), 8U);
}

TEST(CaptureElement, WritesDeviceFieldsInsideDeviceInfo) {
  tagNET_CAPTURE_ELEMENT_INFO capture = {};
  SetText(capture.szName, "door camera");
  SetText(capture.szUserName, "viewer");
  SetText(capture.szIP, "192.0.2.10");
  capture.nPort = 37777;
  capture.nChannel = 1;
  capture.emCaptureType = EM_CAPTURE_TYPE_JSON_1;
  capture.nPlayTime = 60;
  Json::Value json;
  PacketCaptureElement(&capture, json);
  EXPECT_JSON_EQ(R"({"Name": "door camera", "Type": 4, "FillerState": false,
                     "DeviceInfo": {"UserName": "viewer", "Password": "", "IP": "192.0.2.10",
                                    "Port": 37777, "Channel": 1, "CaptureType": 1,
                                    "PlayTime": 60}})",
                 json);
}

TEST(CaptureElement, MissingDeviceInfoKeepsTextsAndResetsTheRest) {
  tagNET_CAPTURE_ELEMENT_INFO capture = {};
  SetText(capture.szUserName, "u");
  SetText(capture.szPassword, "p");
  SetText(capture.szIP, "ip");
  capture.nPort = capture.nChannel = capture.nPlayTime = 5;
  ParseCaptureElement(J(R"({"PlayTime": 9})"), &capture);
  EXPECT_STREQ(capture.szUserName, "u");
  EXPECT_STREQ(capture.szPassword, "p");
  EXPECT_STREQ(capture.szIP, "ip");
  EXPECT_EQ(capture.nPort + capture.nChannel + capture.nPlayTime, 0U);
  EXPECT_EQ(capture.emCaptureType, 1);
}

TEST(CaptureElement, CaptureTypeFormsOnBothSides) {
  for (const auto& [json, stored] :
       std::vector<std::pair<int, int>>{{0, 1}, {1, 2}, {2, 0}, {-1, 0}}) {
    tagNET_CAPTURE_ELEMENT_INFO capture = {};
    Json::Value element;
    element["DeviceInfo"]["CaptureType"] = json;
    ParseCaptureElement(element, &capture);
    EXPECT_EQ(capture.emCaptureType, stored) << json;
  }
  for (const auto& [stored, written] : std::vector<std::pair<int, int>>{{2, 1}, {5, 4}, {-1, -2}}) {
    tagNET_CAPTURE_ELEMENT_INFO capture = {};
    capture.emCaptureType = static_cast<EM_CAPTURE_TYPE>(stored);
    Json::Value json;
    PacketCaptureElement(&capture, json);
    EXPECT_EQ(json["DeviceInfo"]["CaptureType"], Json::Value(written)) << stored;
  }
  const tagNET_CAPTURE_ELEMENT_INFO unset = {};
  Json::Value json;
  PacketCaptureElement(&unset, json);
  EXPECT_FALSE(json["DeviceInfo"].isMember("CaptureType"));
}

TEST(PlaceholderElement, WithoutNotesWritesOnlyTheCommonMembers) {
  tagNET_PLACEHOLDER_ELEMENT_INFO placeholder = {};
  SetText(placeholder.szName, "slot");
  placeholder.bFillerState = true;
  Json::Value json;
  PacketPlaceHolderElement(&placeholder, json);
  EXPECT_JSON_EQ(R"({"Name": "slot", "Type": 3, "FillerState": true})", json);
}

}  // namespace
