// Text blocks, notes and the steps every element kind shares.
#include "codec/frame.h"
#include "programme/element_common.h"
#include "programme/programme_codecs.h"

using namespace gsc::codec;

namespace {

constexpr int kAlignValues = 3;
constexpr int kStyleValues = 5;

}  // namespace

// StayTime is taken before PlayTime and PlayCount, as the device's text objects list them.
void ParseText(const Json::Value& json, tagNET_GUIDESCREEN_TEXT_INFO* info) {
  if (info == nullptr) return;
  ReadTextIfPresent(json, "Content", info->szContent);
  ReadNumber(json, "FontSize", info->nFontSize);
  ReadColorIfPresent(json, "FontColor", info->stuFontColor);
  ReadTextIfPresent(json, "FontStyle", info->szFontStyle);
  ReadReal(json, "LineHeight", info->dbLineHeight);
  ReadEnum<kAlignValues>(json, "TextHoriAlign", info->emTextHoriAlign);
  ReadEnum<kAlignValues>(json, "TextVertAlign", info->emTextVertAlign);
  ReadNumber(json, "StayTime", info->nStayTime);
  ReadNumber(json, "PlayTime", info->nPlayTime);
  ReadNumber(json, "PlayCount", info->nPlayCount);
  ReadEnum<kStyleValues>(json, "EnterStyle", info->emEnterStyle);
  ReadEnum<kStyleValues>(json, "ExitStyle", info->emExitStyle);
}

void PacketText(const tagNET_GUIDESCREEN_TEXT_INFO* info, Json::Value& json) {
  if (info == nullptr) return;
  WriteText(json, "Content", info->szContent);
  WriteUnsigned(json, "FontSize", info->nFontSize);
  WriteColor(json, "FontColor", info->stuFontColor);
  WriteText(json, "FontStyle", info->szFontStyle);
  WriteReal(json, "LineHeight", info->dbLineHeight);
  WriteEnumIfSet(json, "TextHoriAlign", info->emTextHoriAlign);
  WriteEnumIfSet(json, "TextVertAlign", info->emTextVertAlign);
  WriteUnsigned(json, "StayTime", info->nStayTime);
  WriteUnsigned(json, "PlayTime", info->nPlayTime);
  WriteUnsigned(json, "PlayCount", info->nPlayCount);
  WriteEnumIfSet(json, "EnterStyle", info->emEnterStyle);
  WriteEnumIfSet(json, "ExitStyle", info->emExitStyle);
}

void ParseNotes(const Json::Value& json, tagNET_GUIDESCREEN_NOTE_INFO* info) {
  if (info == nullptr) return;
  ReadBoolIfPresent(json, "Enable", info->bEnable);
  ReadRectIfPresent(json, "NoteRect", info->stuNoteRect);
  // Unlike a text element's "Text", a note's text block is left alone when the note has none.
  const Json::Value& noteInfo = Member(json, "NoteInfo");
  if (!noteInfo.isNull()) ParseText(noteInfo, &info->stuNoteInfo);
}

void PacketNotes(const tagNET_GUIDESCREEN_NOTE_INFO* info, Json::Value& json) {
  if (info == nullptr) return;
  WriteBool(json, "Enable", info->bEnable);
  WriteRect(json, "NoteRect", info->stuNoteRect);
  PacketText(&info->stuNoteInfo, Put(json, "NoteInfo"));
}

namespace gsc::programme {

void ReadElementHead(const Json::Value& json, char (&name)[64], bool& fillerState) {
  ReadTextIfPresent(json, "Name", name);
  ReadBool(json, "FillerState", fillerState);
}

void ReadNoteList(const Json::Value& json, uint32_t& noteNum,
                  tagNET_GUIDESCREEN_NOTE_INFO (&notes)[kMaxNotes]) {
  ReadArrayIfPresent(json, "Note", noteNum, kMaxNotes,
                     [&](const Json::Value& note, uint32_t i) { ParseNotes(note, &notes[i]); });
}

void WriteElementHead(const char (&name)[64], EM_ELEMENT_TYPE kind, bool fillerState,
                      Json::Value& json) {
  WriteText(json, "Name", name);
  WriteInt(json, "Type", JsonElementType(kind));
  WriteBool(json, "FillerState", fillerState);
}

void WriteNoteList(uint32_t noteNum, const tagNET_GUIDESCREEN_NOTE_INFO (&notes)[kMaxNotes],
                   Json::Value& json) {
  WriteListIfAny(json, "Note", noteNum, kMaxNotes,
                 [&](Json::Value& note, uint32_t i) { PacketNotes(&notes[i], note); });
}

}  // namespace gsc::programme
