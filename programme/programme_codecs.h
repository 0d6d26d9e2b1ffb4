// The record codecs of programmes: text blocks, notes, the five element kinds and the programme
// record itself. The programme operations are their only users outside this directory.
//
// Readers merge into the record they are given (nothing is cleared first); the comment on each
// reader names the fields it always overwrites. Writers create or replace members, never remove
// them. None of them catches what JsonCpp raises for a value of the wrong type.
#ifndef GUIDESCREEN_CODEC_PROGRAMME_PROGRAMME_CODECS_H
#define GUIDESCREEN_CODEC_PROGRAMME_PROGRAMME_CODECS_H

#include <json/value.h>

#include "codec/frame.h"
#include "guidescreen_codec/export.h"
#include "guidescreen_codec/programme_records.h"

// ---- Text block and note ---------------------------------------------------------------------

// Merges a text block object into `*info`; nothing for a null `info`. Content, colour and style
// are kept when missing; the five numbers are always set (missing reads 0) and so are the four
// enumerations (missing reads JSON 0, stored 1; out of range stores 0).
GSC_API void ParseText(const Json::Value& json, tagNET_GUIDESCREEN_TEXT_INFO* info);

// Writes a text block object; nothing for a null `info`. Every member but the four enumerations
// is always written; an enumeration stored as 0 is left out, any other value v goes as v - 1.
GSC_API void PacketText(const tagNET_GUIDESCREEN_TEXT_INFO* info, Json::Value& json);

// Merges ONE note object into `*info`; nothing for a null `info`. "Enable", "NoteRect" and
// "NoteInfo" are each read only when present, so a missing "NoteInfo" keeps the whole text block.
GSC_API void ParseNotes(const Json::Value& json, tagNET_GUIDESCREEN_NOTE_INFO* info);

// Writes ONE note object with "Enable", "NoteRect" and "NoteInfo" always; nothing for null.
GSC_API void PacketNotes(const tagNET_GUIDESCREEN_NOTE_INFO* info, Json::Value& json);

// ---- Elements --------------------------------------------------------------------------------
//
// Readers never read "Type" (the programme reader dispatches on it) and take a record that must
// not be null. Each always sets bFillerState (missing reads false) and the kind's numbers and
// enumerations; the name, texts and note list are kept when missing. A "Note" array replaces
// nNoteNum with its size clamped to 4.
//
// Writers do nothing for a null record. Each writes "Name", its own constant "Type" (video 0,
// picture 1, text 2, placeholder 3, capture 4) and "FillerState", then the kind's object, then
// "Note" with min(nNoteNum, 4) notes, or no "Note" at all when that is 0.

// "Video": "Path" kept when missing; "PlayCount" always set.
GSC_API void ParseVideoElement(const Json::Value& json, tagNET_VIDEO_ELEMENT_INFO* info);
GSC_API void PacketVideoElement(const tagNET_VIDEO_ELEMENT_INFO* info, Json::Value& json);

// "Picture": "Path" kept when missing; the four numbers always set; the two effects always set
// (missing reads 1) and written only when not 0.
GSC_API void ParsePictureElement(const Json::Value& json, tagNET_PICTURE_ELEMENT_INFO* info);
GSC_API void PacketPictureElement(const tagNET_PICTURE_ELEMENT_INFO* info, Json::Value& json);

// "Text" is read even when missing, as ParseText reads a null value: numbers 0, enumerations 1.
GSC_API void ParseTextElement(const Json::Value& json, tagNET_TEXT_ELEMENT_INFO* info);
GSC_API void PacketTextElement(const tagNET_TEXT_ELEMENT_INFO* info, Json::Value& json);

// Nothing beyond the common fields and the note list.
GSC_API void ParsePlaceHolderElement(const Json::Value& json,
                                     tagNET_PLACEHOLDER_ELEMENT_INFO* info);
GSC_API void PacketPlaceHolderElement(const tagNET_PLACEHOLDER_ELEMENT_INFO* info,
                                      Json::Value& json);

// "DeviceInfo": the three texts kept when missing; port, channel and play time always set;
// "CaptureType" always set (missing reads 1) and written only when not 0.
GSC_API void ParseCaptureElement(const Json::Value& json, tagNET_CAPTURE_ELEMENT_INFO* info);
GSC_API void PacketCaptureElement(const tagNET_CAPTURE_ELEMENT_INFO* info, Json::Value& json);

// ---- Programme -------------------------------------------------------------------------------

// Merges a programme object into `*info`; nothing for a null `info`. "Enable" is always set;
// without "Ordinary" nothing more is read. Inside it "TempletState" is always set and a
// "Windows" array replaces nWindowsNum (clamped to 16). A window's "Volume", "Diaphaneity" and
// "TourPeriod" are always set ("TourPeriod" missing reads 1), "TourPeriodTime" only with period 3.
// An "Elements" array is laid into the window's own pElementsBuf, never past nElementsBufLen (a
// null buffer counts as empty), and replaces nElementsNum; neither buffer field is changed.
GSC_API void ParseProgramme(const Json::Value& json, tagNET_PROGRAMME_INFO* info);

// Writes a programme object; nothing for a null `info`. "ProgrammeType" is always 0. "Windows"
// is null without windows, and a window's "Elements" null without entries. The element buffer
// is walked for nElementsNum entries as their headers describe (nElementsBufLen is not looked
// at); an entry of unknown kind leaves a null hole at its index.
GSC_API void PacketPragramme(const tagNET_PROGRAMME_INFO* info, Json::Value& json);

// ---- The same codecs in either context -------------------------------------------------------
//
// The functions above run these with the Silent context; the reporting operations run them with
// Reporting. Each is instantiated for both in its own source file.

namespace gsc::programme {

template <typename Context>
void ReadTextBlock(const Json::Value& json, tagNET_GUIDESCREEN_TEXT_INFO& info, Context& context);
template <typename Context>
void PacketTextBlock(const tagNET_GUIDESCREEN_TEXT_INFO& info, const codec::Out<Context>& json);
template <typename Context>
void ReadNote(const Json::Value& json, tagNET_GUIDESCREEN_NOTE_INFO& info, Context& context);
template <typename Context>
void PacketNote(const tagNET_GUIDESCREEN_NOTE_INFO& info, const codec::Out<Context>& json);

template <typename Context>
void ReadElement(const Json::Value& json, tagNET_VIDEO_ELEMENT_INFO& info, Context& context);
template <typename Context>
void ReadElement(const Json::Value& json, tagNET_PICTURE_ELEMENT_INFO& info, Context& context);
template <typename Context>
void ReadElement(const Json::Value& json, tagNET_TEXT_ELEMENT_INFO& info, Context& context);
template <typename Context>
void ReadElement(const Json::Value& json, tagNET_PLACEHOLDER_ELEMENT_INFO& info, Context& context);
template <typename Context>
void ReadElement(const Json::Value& json, tagNET_CAPTURE_ELEMENT_INFO& info, Context& context);
template <typename Context>
void PacketElement(const tagNET_VIDEO_ELEMENT_INFO& info, const codec::Out<Context>& json);
template <typename Context>
void PacketElement(const tagNET_PICTURE_ELEMENT_INFO& info, const codec::Out<Context>& json);
template <typename Context>
void PacketElement(const tagNET_TEXT_ELEMENT_INFO& info, const codec::Out<Context>& json);
template <typename Context>
void PacketElement(const tagNET_PLACEHOLDER_ELEMENT_INFO& info, const codec::Out<Context>& json);
template <typename Context>
void PacketElement(const tagNET_CAPTURE_ELEMENT_INFO& info, const codec::Out<Context>& json);

template <typename Context>
void ReadProgramme(const Json::Value& json, tagNET_PROGRAMME_INFO& info, Context& context);
template <typename Context>
void PacketProgramme(const tagNET_PROGRAMME_INFO& info, const codec::Out<Context>& json);

}  // namespace gsc::programme

#endif  // GUIDESCREEN_CODEC_PROGRAMME_PROGRAMME_CODECS_H
