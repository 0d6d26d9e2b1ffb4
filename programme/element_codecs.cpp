// The five element kinds. Each reads its name and filler state, then its own members, then its
// note list; each writes the same three common members first and the note list last.
#include "describe/enumerations.h"
#include "programme/element_common.h"
#include "programme/programme_codecs.h"

using namespace gsc::codec;

namespace gsc::programme {
namespace {

constexpr int kEnterStyleValues = fields::kEnterStyleEnum.JsonValues();
constexpr int kExitStyleValues = fields::kExitStyleEnum.JsonValues();
constexpr int kCaptureTypeValues = fields::kCaptureTypeEnum.JsonValues();

constexpr auto kVideoElementKeys = ElementKeys("Video");
constexpr auto kVideoKeys = Keys("Path", "PlayCount");
constexpr auto kPictureElementKeys = ElementKeys("Picture");
constexpr auto kPictureKeys =
    Keys("Path", "PlayTime", "PlayCount", "Diaphaneity", "StayTime", "EnterStyle", "ExitStyle");
constexpr auto kTextElementKeys = ElementKeys("Text");
constexpr auto kCaptureElementKeys = ElementKeys("DeviceInfo");
constexpr auto kDeviceKeys =
    Keys("UserName", "Password", "IP", "Port", "Channel", "CaptureType", "PlayTime");

}  // namespace

// A missing "Video" object is looked into all the same: its members read as null.
template <typename V, typename C>
void ReadElement(const V& json, tagNET_VIDEO_ELEMENT_INFO& info, C& context) {
  const auto object = MembersOf<kVideoElementKeys>(json, context);
  ReadElementHead(object, info.szName, info.bFillerState);
  ReadObject(object, GSC_KEY("Video"), [&](const auto& kindObject) {
    const auto video = MembersOf<kVideoKeys>(kindObject, context);
    ReadTextIfPresent(video, GSC_KEY("Path"), info.szPath);
    ReadNumber(video, GSC_KEY("PlayCount"), info.nPlayCount);
  });
  ReadNoteList(object, info.nNoteNum, info.stuNote);
}

template <typename C>
void PacketElement(const tagNET_VIDEO_ELEMENT_INFO& info, const Out<C>& json) {
  WriteElementHead(json, info.szName, EM_ELEMENT_TYPE_VIDEO, info.bFillerState);
  const Out<C> video = Put(json, "Video");
  WriteText(video, "Path", info.szPath);
  WriteUnsigned(video, "PlayCount", info.nPlayCount);
  WriteNoteList(json, info.nNoteNum, info.stuNote);
}

template <typename V, typename C>
void ReadElement(const V& json, tagNET_PICTURE_ELEMENT_INFO& info, C& context) {
  const auto object = MembersOf<kPictureElementKeys>(json, context);
  ReadElementHead(object, info.szName, info.bFillerState);
  ReadObject(object, GSC_KEY("Picture"), [&](const auto& kindObject) {
    const auto picture = MembersOf<kPictureKeys>(kindObject, context);
    ReadTextIfPresent(picture, GSC_KEY("Path"), info.szPath);
    ReadNumber(picture, GSC_KEY("PlayTime"), info.nPlayTime);
    ReadNumber(picture, GSC_KEY("PlayCount"), info.nPlayCount);
    ReadNumber(picture, GSC_KEY("Diaphaneity"), info.nDiaphaneity);
    ReadNumber(picture, GSC_KEY("StayTime"), info.nStayTime);
    ReadEnum<kEnterStyleValues>(picture, GSC_KEY("EnterStyle"), info.emEnterStyle);
    ReadEnum<kExitStyleValues>(picture, GSC_KEY("ExitStyle"), info.emExitStyle);
  });
  ReadNoteList(object, info.nNoteNum, info.stuNote);
}

template <typename C>
void PacketElement(const tagNET_PICTURE_ELEMENT_INFO& info, const Out<C>& json) {
  WriteElementHead(json, info.szName, EM_ELEMENT_TYPE_PICTURE, info.bFillerState);
  const Out<C> picture = Put(json, "Picture");
  WriteText(picture, "Path", info.szPath);
  WriteUnsigned(picture, "PlayTime", info.nPlayTime);
  WriteUnsigned(picture, "PlayCount", info.nPlayCount);
  WriteUnsigned(picture, "Diaphaneity", info.nDiaphaneity);
  WriteUnsigned(picture, "StayTime", info.nStayTime);
  WriteEnumIfSet(picture, "EnterStyle", info.emEnterStyle);
  WriteEnumIfSet(picture, "ExitStyle", info.emExitStyle);
  WriteNoteList(json, info.nNoteNum, info.stuNote);
}

// "Text" has no presence test of its own: a missing one still resets the block's numbers.
template <typename V, typename C>
void ReadElement(const V& json, tagNET_TEXT_ELEMENT_INFO& info, C& context) {
  const auto object = MembersOf<kTextElementKeys>(json, context);
  ReadElementHead(object, info.szName, info.bFillerState);
  ReadObject(object, GSC_KEY("Text"),
             [&](const auto& text) { ReadTextBlock(text, info.stuText, context); });
  ReadNoteList(object, info.nNoteNum, info.stuNote);
}

template <typename C>
void PacketElement(const tagNET_TEXT_ELEMENT_INFO& info, const Out<C>& json) {
  WriteElementHead(json, info.szName, EM_ELEMENT_TYPE_TEXT, info.bFillerState);
  WriteRecord(json, "Text", [&](const Out<C>& text) { PacketTextBlock(info.stuText, text); });
  WriteNoteList(json, info.nNoteNum, info.stuNote);
}

template <typename V, typename C>
void ReadElement(const V& json, tagNET_PLACEHOLDER_ELEMENT_INFO& info, C& context) {
  const auto object = MembersOf<kPlaceHolderElementKeys>(json, context);
  ReadElementHead(object, info.szName, info.bFillerState);
  ReadNoteList(object, info.nNoteNum, info.stuNote);
}

template <typename C>
void PacketElement(const tagNET_PLACEHOLDER_ELEMENT_INFO& info, const Out<C>& json) {
  WriteElementHead(json, info.szName, EM_ELEMENT_TYPE_PLACEHOLDER, info.bFillerState);
  WriteNoteList(json, info.nNoteNum, info.stuNote);
}

// The source device's fields lie flat in the record but travel inside "DeviceInfo", together
// with the capture type and the play time.
template <typename V, typename C>
void ReadElement(const V& json, tagNET_CAPTURE_ELEMENT_INFO& info, C& context) {
  const auto object = MembersOf<kCaptureElementKeys>(json, context);
  ReadElementHead(object, info.szName, info.bFillerState);
  ReadObject(object, GSC_KEY("DeviceInfo"), [&](const auto& kindObject) {
    const auto device = MembersOf<kDeviceKeys>(kindObject, context);
    ReadTextIfPresent(device, GSC_KEY("UserName"), info.szUserName);
    ReadTextIfPresent(device, GSC_KEY("Password"), info.szPassword);
    ReadTextIfPresent(device, GSC_KEY("IP"), info.szIP);
    ReadNumber(device, GSC_KEY("Port"), info.nPort);
    ReadNumber(device, GSC_KEY("Channel"), info.nChannel);
    ReadEnum<kCaptureTypeValues>(device, GSC_KEY("CaptureType"), info.emCaptureType);
    ReadNumber(device, GSC_KEY("PlayTime"), info.nPlayTime);
  });
  ReadNoteList(object, info.nNoteNum, info.stuNote);
}

template <typename C>
void PacketElement(const tagNET_CAPTURE_ELEMENT_INFO& info, const Out<C>& json) {
  WriteElementHead(json, info.szName, EM_ELEMENT_TYPE_CAPTURE, info.bFillerState);
  const Out<C> device = Put(json, "DeviceInfo");
  WriteText(device, "UserName", info.szUserName);
  WriteText(device, "Password", info.szPassword);
  WriteText(device, "IP", info.szIP);
  WriteUnsigned(device, "Port", info.nPort);
  WriteUnsigned(device, "Channel", info.nChannel);
  WriteEnumIfSet(device, "CaptureType", info.emCaptureType);
  WriteUnsigned(device, "PlayTime", info.nPlayTime);
  WriteNoteList(json, info.nNoteNum, info.stuNote);
}

// Both contexts of every kind.
template void ReadElement(const Json::Value&, tagNET_VIDEO_ELEMENT_INFO&, Silent&);
template void ReadElement(const TextValue&, tagNET_VIDEO_ELEMENT_INFO&, Silent&);
template void ReadElement(const Json::Value&, tagNET_VIDEO_ELEMENT_INFO&, Reporting&);
template void ReadElement(const TextValue&, tagNET_VIDEO_ELEMENT_INFO&, Reporting&);
template void PacketElement(const tagNET_VIDEO_ELEMENT_INFO&, const Out<Silent>&);
template void PacketElement(const tagNET_VIDEO_ELEMENT_INFO&, const Out<Reporting>&);
template void ReadElement(const Json::Value&, tagNET_PICTURE_ELEMENT_INFO&, Silent&);
template void ReadElement(const TextValue&, tagNET_PICTURE_ELEMENT_INFO&, Silent&);
template void ReadElement(const Json::Value&, tagNET_PICTURE_ELEMENT_INFO&, Reporting&);
template void ReadElement(const TextValue&, tagNET_PICTURE_ELEMENT_INFO&, Reporting&);
template void PacketElement(const tagNET_PICTURE_ELEMENT_INFO&, const Out<Silent>&);
template void PacketElement(const tagNET_PICTURE_ELEMENT_INFO&, const Out<Reporting>&);
template void ReadElement(const Json::Value&, tagNET_TEXT_ELEMENT_INFO&, Silent&);
template void ReadElement(const TextValue&, tagNET_TEXT_ELEMENT_INFO&, Silent&);
template void ReadElement(const Json::Value&, tagNET_TEXT_ELEMENT_INFO&, Reporting&);
template void ReadElement(const TextValue&, tagNET_TEXT_ELEMENT_INFO&, Reporting&);
template void PacketElement(const tagNET_TEXT_ELEMENT_INFO&, const Out<Silent>&);
template void PacketElement(const tagNET_TEXT_ELEMENT_INFO&, const Out<Reporting>&);
template void ReadElement(const Json::Value&, tagNET_PLACEHOLDER_ELEMENT_INFO&, Silent&);
template void ReadElement(const TextValue&, tagNET_PLACEHOLDER_ELEMENT_INFO&, Silent&);
template void ReadElement(const Json::Value&, tagNET_PLACEHOLDER_ELEMENT_INFO&, Reporting&);
template void ReadElement(const TextValue&, tagNET_PLACEHOLDER_ELEMENT_INFO&, Reporting&);
template void PacketElement(const tagNET_PLACEHOLDER_ELEMENT_INFO&, const Out<Silent>&);
template void PacketElement(const tagNET_PLACEHOLDER_ELEMENT_INFO&, const Out<Reporting>&);
template void ReadElement(const Json::Value&, tagNET_CAPTURE_ELEMENT_INFO&, Silent&);
template void ReadElement(const TextValue&, tagNET_CAPTURE_ELEMENT_INFO&, Silent&);
template void ReadElement(const Json::Value&, tagNET_CAPTURE_ELEMENT_INFO&, Reporting&);
template void ReadElement(const TextValue&, tagNET_CAPTURE_ELEMENT_INFO&, Reporting&);
template void PacketElement(const tagNET_CAPTURE_ELEMENT_INFO&, const Out<Silent>&);
template void PacketElement(const tagNET_CAPTURE_ELEMENT_INFO&, const Out<Reporting>&);

}  // namespace gsc::programme

using gsc::programme::PacketElement;
using gsc::programme::ReadElement;

void ParseVideoElement(const Json::Value& json, tagNET_VIDEO_ELEMENT_INFO* info) {
  ParseSilently(json, info, ReadElement<Json::Value, Silent>);
}
void PacketVideoElement(const tagNET_VIDEO_ELEMENT_INFO* info, Json::Value& json) {
  PacketSilently(info, json, PacketElement<Silent>);
}
void ParsePictureElement(const Json::Value& json, tagNET_PICTURE_ELEMENT_INFO* info) {
  ParseSilently(json, info, ReadElement<Json::Value, Silent>);
}
void PacketPictureElement(const tagNET_PICTURE_ELEMENT_INFO* info, Json::Value& json) {
  PacketSilently(info, json, PacketElement<Silent>);
}
void ParseTextElement(const Json::Value& json, tagNET_TEXT_ELEMENT_INFO* info) {
  ParseSilently(json, info, ReadElement<Json::Value, Silent>);
}
void PacketTextElement(const tagNET_TEXT_ELEMENT_INFO* info, Json::Value& json) {
  PacketSilently(info, json, PacketElement<Silent>);
}
void ParsePlaceHolderElement(const Json::Value& json, tagNET_PLACEHOLDER_ELEMENT_INFO* info) {
  ParseSilently(json, info, ReadElement<Json::Value, Silent>);
}
void PacketPlaceHolderElement(const tagNET_PLACEHOLDER_ELEMENT_INFO* info, Json::Value& json) {
  PacketSilently(info, json, PacketElement<Silent>);
}
void ParseCaptureElement(const Json::Value& json, tagNET_CAPTURE_ELEMENT_INFO* info) {
  ParseSilently(json, info, ReadElement<Json::Value, Silent>);
}
void PacketCaptureElement(const tagNET_CAPTURE_ELEMENT_INFO* info, Json::Value& json) {
  PacketSilently(info, json, PacketElement<Silent>);
}
