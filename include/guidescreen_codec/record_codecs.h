// The record codecs: the reader (Parse...) and writer (Packet...) of each record that several
// operations share. The operations of operations.h are built from them; transport code may call
// them on records and JSON objects of its own, for example to keep a programme on disk in the
// device's form.
//
// Readers merge the JSON object into the record they are given: nothing is cleared first, so
// what the object does not carry keeps the caller's value, except the fields each reader always
// sets (named below). Arrays are clamped to the record's capacity (capacities.h), over-long texts
// cut, out-of-range enumerations read as 0. A value of a JSON type JsonCpp cannot convert (an
// object where a number belongs) raises Json::Exception, which passes to the caller with the
// record partly filled.
//
// Writers add the record's members to the JSON value given (normally an empty object or a null
// member just created), creating or replacing members and never removing one. They never read
// a text past its field, and they write nothing for a null record.
#ifndef GUIDESCREEN_CODEC_RECORD_CODECS_H
#define GUIDESCREEN_CODEC_RECORD_CODECS_H

#include <json/value.h>

#include "guidescreen_codec/export.h"
#include "guidescreen_codec/field_codecs.h"
#include "guidescreen_codec/guidescreen_records.h"
#include "guidescreen_codec/plan_records.h"
#include "guidescreen_codec/programme_records.h"

// ---- Screen configuration --------------------------------------------------------------------

// Merges a screen attribute object into `*info`; nothing for a null `info`. Always set: emStatus
// (0 unless "Status" is 0 or 1) and the six picture and size numbers (missing reads 0). Kept when
// missing: the ID, the forever-open flag, the opening times, the split screens and the automatic
// brightness.
GSC_API void ParseGuidScreenAttribute(const Json::Value& json,
                                      tagNET_GUIDESCREEN_ATTRIBUTE_INFO* info);

namespace gsc::guidescreen {

// Writes `info` into the attribute object `json`, the form SET_GUIDESCREEN_CFG sends under each
// screen's ID. "Time" and "SplitScreenList" are null when empty; sun entries stored as 0 and 0
// are sent as 6 and 18. (The device's protocol names no writer for this record; this one lives
// in the library's namespace.)
GSC_API void PacketGuidScreenAttribute(const tagNET_GUIDESCREEN_ATTRIBUTE_INFO& info,
                                       Json::Value& json);

}  // namespace gsc::guidescreen

// ---- Text block and note ---------------------------------------------------------------------

// A text block object: content, colour and style are kept when missing; the five numbers are
// always set (missing reads 0) and so are the four enumerations (missing reads JSON 0, stored 1).
// The writer leaves out an enumeration stored as 0 and sends any other value v as v - 1.
GSC_API void ParseText(const Json::Value& json, tagNET_GUIDESCREEN_TEXT_INFO* info);
GSC_API void PacketText(const tagNET_GUIDESCREEN_TEXT_INFO* info, Json::Value& json);

// ONE note object: "Enable", "NoteRect" and "NoteInfo" are each read only when present, and
// always written.
GSC_API void ParseNotes(const Json::Value& json, tagNET_GUIDESCREEN_NOTE_INFO* info);
GSC_API void PacketNotes(const tagNET_GUIDESCREEN_NOTE_INFO* info, Json::Value& json);

// ---- Elements --------------------------------------------------------------------------------
//
// The element object of each kind. Readers do not read "Type" (the programme reader dispatches on
// it) and do nothing for a null record; each always sets bFillerState and the kind's
// numbers and enumerations, keeps the name, texts and notes when missing, and replaces nNoteNum
// with the length of a "Note" array (at most GSC_MAX_NOTES). Writers write "Name", the kind's
// "Type" (video 0, picture 1, text 2, placeholder 3, capture 4), "FillerState", the kind's own
// object and "Note" (left out when there are no notes).
//
// Records inside a window's element buffer may be 4 but not 8 aligned: copy them out (capi.h
// has gsc_element_next) before passing them here.

GSC_API void ParseVideoElement(const Json::Value& json, tagNET_VIDEO_ELEMENT_INFO* info);
GSC_API void PacketVideoElement(const tagNET_VIDEO_ELEMENT_INFO* info, Json::Value& json);
GSC_API void ParsePictureElement(const Json::Value& json, tagNET_PICTURE_ELEMENT_INFO* info);
GSC_API void PacketPictureElement(const tagNET_PICTURE_ELEMENT_INFO* info, Json::Value& json);
GSC_API void ParseTextElement(const Json::Value& json, tagNET_TEXT_ELEMENT_INFO* info);
GSC_API void PacketTextElement(const tagNET_TEXT_ELEMENT_INFO* info, Json::Value& json);
GSC_API void ParsePlaceHolderElement(const Json::Value& json,
                                     tagNET_PLACEHOLDER_ELEMENT_INFO* info);
GSC_API void PacketPlaceHolderElement(const tagNET_PLACEHOLDER_ELEMENT_INFO* info,
                                      Json::Value& json);
GSC_API void ParseCaptureElement(const Json::Value& json, tagNET_CAPTURE_ELEMENT_INFO* info);
GSC_API void PacketCaptureElement(const tagNET_CAPTURE_ELEMENT_INFO* info, Json::Value& json);

// ---- Programme -------------------------------------------------------------------------------

// Merges a programme object into `*info`. Before the call, set pElementsBuf and nElementsBufLen
// of every window the answer may fill: an "Elements" array is laid into that buffer, never past
// its length, and replaces nElementsNum. "Enable" is always set; without "Ordinary" nothing more
// is read. A window's "Volume", "Diaphaneity" and "TourPeriod" are always set.
GSC_API void ParseProgramme(const Json::Value& json, tagNET_PROGRAMME_INFO* info);

// Writes a programme object with "ProgrammeType" 0, walking each window's element buffer for
// nElementsNum entries as their headers say; an entry of unknown kind leaves a null hole.
GSC_API void PacketPragramme(const tagNET_PROGRAMME_INFO* info, Json::Value& json);

// ---- Plans -----------------------------------------------------------------------------------

// An immediate plan object. The reader looks at "Immediately" only when present, and then always
// sets bEnable and nPlayTime; the writer stamps "PlanType" 0.
GSC_API void ParseImmePlan(const Json::Value& plan, tagNET_IMMEDIATELY_PLAN_INFO* info);
GSC_API void PacketImmePlan(const tagNET_IMMEDIATELY_PLAN_INFO* info, Json::Value& plan);

// A timer plan object. Without "Timer" the reader takes only the three plan texts; with it, both
// enumerations and bOverdue are always set. The writer stamps "PlanType" 1 and sends
// "ReviewOpinion" beside "Timer"; empty play date and programme lists travel as null.
GSC_API void ParseTimerPlan(const Json::Value& plan, tagNET_TIMER_PLAN_INFO* info);
GSC_API void PacketTimerPlan(const tagNET_TIMER_PLAN_INFO* info, Json::Value& plan);

#endif  // GUIDESCREEN_CODEC_RECORD_CODECS_H
