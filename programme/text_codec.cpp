// Text blocks and notes.
#include "describe/enumerations.h"
#include "programme/programme_codecs.h"

using namespace gsc::codec;

namespace gsc::programme {
namespace {

constexpr int kHoriAlignValues = fields::kHoriAlignEnum.JsonValues();
constexpr int kVertAlignValues = fields::kVertAlignEnum.JsonValues();
constexpr int kEnterStyleValues = fields::kEnterStyleEnum.JsonValues();
constexpr int kExitStyleValues = fields::kExitStyleEnum.JsonValues();

constexpr auto kTextBlockKeys =
    Keys("Content", "FontSize", "FontColor", "FontStyle", "LineHeight", "TextHoriAlign",
         "TextVertAlign", "StayTime", "PlayTime", "PlayCount", "EnterStyle", "ExitStyle");
constexpr auto kNoteKeys = Keys("Enable", "NoteRect", "NoteInfo");

}  // namespace

// StayTime is taken before PlayTime and PlayCount, as the device's text objects list them.
template <typename V, typename C>
void ReadTextBlock(const V& json, tagNET_GUIDESCREEN_TEXT_INFO& info, C& context) {
  const auto object = MembersOf<kTextBlockKeys>(json, context);
  ReadTextIfPresent(object, GSC_KEY("Content"), info.szContent);
  ReadNumber(object, GSC_KEY("FontSize"), info.nFontSize);
  ReadColorIfPresent(object, GSC_KEY("FontColor"), info.stuFontColor);
  ReadTextIfPresent(object, GSC_KEY("FontStyle"), info.szFontStyle);
  ReadReal(object, GSC_KEY("LineHeight"), info.dbLineHeight);
  ReadEnum<kHoriAlignValues>(object, GSC_KEY("TextHoriAlign"), info.emTextHoriAlign);
  ReadEnum<kVertAlignValues>(object, GSC_KEY("TextVertAlign"), info.emTextVertAlign);
  ReadNumber(object, GSC_KEY("StayTime"), info.nStayTime);
  ReadNumber(object, GSC_KEY("PlayTime"), info.nPlayTime);
  ReadNumber(object, GSC_KEY("PlayCount"), info.nPlayCount);
  ReadEnum<kEnterStyleValues>(object, GSC_KEY("EnterStyle"), info.emEnterStyle);
  ReadEnum<kExitStyleValues>(object, GSC_KEY("ExitStyle"), info.emExitStyle);
}

template <typename C>
void PacketTextBlock(const tagNET_GUIDESCREEN_TEXT_INFO& info, const Out<C>& json) {
  WriteText(json, "Content", info.szContent);
  WriteUnsigned(json, "FontSize", info.nFontSize);
  WriteColor(json, "FontColor", info.stuFontColor);
  WriteText(json, "FontStyle", info.szFontStyle);
  WriteReal(json, "LineHeight", info.dbLineHeight);
  WriteEnumIfSet(json, "TextHoriAlign", info.emTextHoriAlign);
  WriteEnumIfSet(json, "TextVertAlign", info.emTextVertAlign);
  WriteUnsigned(json, "StayTime", info.nStayTime);
  WriteUnsigned(json, "PlayTime", info.nPlayTime);
  WriteUnsigned(json, "PlayCount", info.nPlayCount);
  WriteEnumIfSet(json, "EnterStyle", info.emEnterStyle);
  WriteEnumIfSet(json, "ExitStyle", info.emExitStyle);
}

// Unlike a text element's "Text", a note's text block is left alone when the note has none.
template <typename V, typename C>
void ReadNote(const V& json, tagNET_GUIDESCREEN_NOTE_INFO& info, C& context) {
  const auto object = MembersOf<kNoteKeys>(json, context);
  ReadBoolIfPresent(object, GSC_KEY("Enable"), info.bEnable);
  ReadRectIfPresent(object, GSC_KEY("NoteRect"), info.stuNoteRect);
  ReadObjectIfPresent(object, GSC_KEY("NoteInfo"),
                      [&](const auto& text) { ReadTextBlock(text, info.stuNoteInfo, context); });
}

template <typename C>
void PacketNote(const tagNET_GUIDESCREEN_NOTE_INFO& info, const Out<C>& json) {
  WriteBool(json, "Enable", info.bEnable);
  WriteRect(json, "NoteRect", info.stuNoteRect);
  WriteRecord(json, "NoteInfo",
              [&](const Out<C>& text) { PacketTextBlock(info.stuNoteInfo, text); });
}

template void ReadTextBlock(const Json::Value&, tagNET_GUIDESCREEN_TEXT_INFO&, Silent&);
template void ReadTextBlock(const TextValue&, tagNET_GUIDESCREEN_TEXT_INFO&, Silent&);
template void ReadTextBlock(const Json::Value&, tagNET_GUIDESCREEN_TEXT_INFO&, Reporting&);
template void ReadTextBlock(const TextValue&, tagNET_GUIDESCREEN_TEXT_INFO&, Reporting&);
template void PacketTextBlock(const tagNET_GUIDESCREEN_TEXT_INFO&, const Out<Silent>&);
template void PacketTextBlock(const tagNET_GUIDESCREEN_TEXT_INFO&, const Out<Reporting>&);
template void ReadNote(const Json::Value&, tagNET_GUIDESCREEN_NOTE_INFO&, Silent&);
template void ReadNote(const TextValue&, tagNET_GUIDESCREEN_NOTE_INFO&, Silent&);
template void ReadNote(const Json::Value&, tagNET_GUIDESCREEN_NOTE_INFO&, Reporting&);
template void ReadNote(const TextValue&, tagNET_GUIDESCREEN_NOTE_INFO&, Reporting&);
template void PacketNote(const tagNET_GUIDESCREEN_NOTE_INFO&, const Out<Silent>&);
template void PacketNote(const tagNET_GUIDESCREEN_NOTE_INFO&, const Out<Reporting>&);

}  // namespace gsc::programme

using gsc::programme::PacketNote;
using gsc::programme::PacketTextBlock;
using gsc::programme::ReadNote;
using gsc::programme::ReadTextBlock;

void ParseText(const Json::Value& json, tagNET_GUIDESCREEN_TEXT_INFO* info) {
  ParseSilently(json, info, ReadTextBlock<Json::Value, Silent>);
}

void PacketText(const tagNET_GUIDESCREEN_TEXT_INFO* info, Json::Value& json) {
  PacketSilently(info, json, PacketTextBlock<Silent>);
}

void ParseNotes(const Json::Value& json, tagNET_GUIDESCREEN_NOTE_INFO* info) {
  ParseSilently(json, info, ReadNote<Json::Value, Silent>);
}

void PacketNotes(const tagNET_GUIDESCREEN_NOTE_INFO* info, Json::Value& json) {
  PacketSilently(info, json, PacketNote<Silent>);
}
