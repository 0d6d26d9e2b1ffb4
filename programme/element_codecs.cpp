// The five element kinds. Each reads its name and filler state, then its own members, then its
// note list; each writes the same three common members first and the note list last.
#include "codec/frame.h"
#include "programme/element_common.h"
#include "programme/programme_codecs.h"

using namespace gsc::codec;
using namespace gsc::programme;

namespace {

constexpr int kStyleValues = 5;
constexpr int kCaptureTypeValues = 2;

}  // namespace

// A missing "Video" object is looked into all the same: its members read as null.
void ParseVideoElement(const Json::Value& json, tagNET_VIDEO_ELEMENT_INFO* info) {
  ReadElementHead(json, info->szName, info->bFillerState);
  const Json::Value& video = Member(json, "Video");
  ReadTextIfPresent(video, "Path", info->szPath);
  ReadNumber(video, "PlayCount", info->nPlayCount);
  ReadNoteList(json, info->nNoteNum, info->stuNote);
}

void PacketVideoElement(const tagNET_VIDEO_ELEMENT_INFO* info, Json::Value& json) {
  if (info == nullptr) return;
  WriteElementHead(info->szName, EM_ELEMENT_TYPE_VIDEO, info->bFillerState, json);
  Json::Value& video = Put(json, "Video");
  WriteText(video, "Path", info->szPath);
  WriteUnsigned(video, "PlayCount", info->nPlayCount);
  WriteNoteList(info->nNoteNum, info->stuNote, json);
}

void ParsePictureElement(const Json::Value& json, tagNET_PICTURE_ELEMENT_INFO* info) {
  ReadElementHead(json, info->szName, info->bFillerState);
  const Json::Value& picture = Member(json, "Picture");
  ReadTextIfPresent(picture, "Path", info->szPath);
  ReadNumber(picture, "PlayTime", info->nPlayTime);
  ReadNumber(picture, "PlayCount", info->nPlayCount);
  ReadNumber(picture, "Diaphaneity", info->nDiaphaneity);
  ReadNumber(picture, "StayTime", info->nStayTime);
  ReadEnum<kStyleValues>(picture, "EnterStyle", info->emEnterStyle);
  ReadEnum<kStyleValues>(picture, "ExitStyle", info->emExitStyle);
  ReadNoteList(json, info->nNoteNum, info->stuNote);
}

void PacketPictureElement(const tagNET_PICTURE_ELEMENT_INFO* info, Json::Value& json) {
  if (info == nullptr) return;
  WriteElementHead(info->szName, EM_ELEMENT_TYPE_PICTURE, info->bFillerState, json);
  Json::Value& picture = Put(json, "Picture");
  WriteText(picture, "Path", info->szPath);
  WriteUnsigned(picture, "PlayTime", info->nPlayTime);
  WriteUnsigned(picture, "PlayCount", info->nPlayCount);
  WriteUnsigned(picture, "Diaphaneity", info->nDiaphaneity);
  WriteUnsigned(picture, "StayTime", info->nStayTime);
  WriteEnumIfSet(picture, "EnterStyle", info->emEnterStyle);
  WriteEnumIfSet(picture, "ExitStyle", info->emExitStyle);
  WriteNoteList(info->nNoteNum, info->stuNote, json);
}

// "Text" has no presence test of its own: a missing one still resets the block's numbers.
void ParseTextElement(const Json::Value& json, tagNET_TEXT_ELEMENT_INFO* info) {
  ReadElementHead(json, info->szName, info->bFillerState);
  ParseText(Member(json, "Text"), &info->stuText);
  ReadNoteList(json, info->nNoteNum, info->stuNote);
}

void PacketTextElement(const tagNET_TEXT_ELEMENT_INFO* info, Json::Value& json) {
  if (info == nullptr) return;
  WriteElementHead(info->szName, EM_ELEMENT_TYPE_TEXT, info->bFillerState, json);
  PacketText(&info->stuText, Put(json, "Text"));
  WriteNoteList(info->nNoteNum, info->stuNote, json);
}

void ParsePlaceHolderElement(const Json::Value& json, tagNET_PLACEHOLDER_ELEMENT_INFO* info) {
  ReadElementHead(json, info->szName, info->bFillerState);
  ReadNoteList(json, info->nNoteNum, info->stuNote);
}

void PacketPlaceHolderElement(const tagNET_PLACEHOLDER_ELEMENT_INFO* info, Json::Value& json) {
  if (info == nullptr) return;
  WriteElementHead(info->szName, EM_ELEMENT_TYPE_PLACEHOLDER, info->bFillerState, json);
  WriteNoteList(info->nNoteNum, info->stuNote, json);
}

// The source device's fields lie flat in the record but travel inside "DeviceInfo", together
// with the capture type and the play time.
void ParseCaptureElement(const Json::Value& json, tagNET_CAPTURE_ELEMENT_INFO* info) {
  ReadElementHead(json, info->szName, info->bFillerState);
  const Json::Value& device = Member(json, "DeviceInfo");
  ReadTextIfPresent(device, "UserName", info->szUserName);
  ReadTextIfPresent(device, "Password", info->szPassword);
  ReadTextIfPresent(device, "IP", info->szIP);
  ReadNumber(device, "Port", info->nPort);
  ReadNumber(device, "Channel", info->nChannel);
  ReadEnum<kCaptureTypeValues>(device, "CaptureType", info->emCaptureType);
  ReadNumber(device, "PlayTime", info->nPlayTime);
  ReadNoteList(json, info->nNoteNum, info->stuNote);
}

void PacketCaptureElement(const tagNET_CAPTURE_ELEMENT_INFO* info, Json::Value& json) {
  if (info == nullptr) return;
  WriteElementHead(info->szName, EM_ELEMENT_TYPE_CAPTURE, info->bFillerState, json);
  Json::Value& device = Put(json, "DeviceInfo");
  WriteText(device, "UserName", info->szUserName);
  WriteText(device, "Password", info->szPassword);
  WriteText(device, "IP", info->szIP);
  WriteUnsigned(device, "Port", info->nPort);
  WriteUnsigned(device, "Channel", info->nChannel);
  WriteEnumIfSet(device, "CaptureType", info->emCaptureType);
  WriteUnsigned(device, "PlayTime", info->nPlayTime);
  WriteNoteList(info->nNoteNum, info->stuNote, json);
}
