// What the five element kinds share: the leading name and filler state, the "Type" each writer
// stamps, and the trailing note list.
#ifndef GUIDESCREEN_CODEC_PROGRAMME_ELEMENT_COMMON_H
#define GUIDESCREEN_CODEC_PROGRAMME_ELEMENT_COMMON_H

#include <json/value.h>

#include <cstdint>

#include "guidescreen_codec/programme_records.h"

namespace gsc::programme {

// Notes an element holds (stuNote[4]); a longer "Note" array is clamped to it.
constexpr uint32_t kMaxNotes = 4;

// The "Type" an element of `kind` travels with (kind - 1).
constexpr int32_t JsonElementType(EM_ELEMENT_TYPE kind) {
  return static_cast<int32_t>(kind) - 1;
}

// "Name" when present, "FillerState" always (missing reads false).
void ReadElementHead(const Json::Value& json, char (&name)[64], bool& fillerState);

// A "Note" array replaces the count (clamped to 4) and merges into the first notes; anything
// else keeps both.
void ReadNoteList(const Json::Value& json, uint32_t& noteNum,
                  tagNET_GUIDESCREEN_NOTE_INFO (&notes)[kMaxNotes]);

// "Name", the kind's "Type" and "FillerState", always.
void WriteElementHead(const char (&name)[64], EM_ELEMENT_TYPE kind, bool fillerState,
                      Json::Value& json);

// "Note" with min(noteNum, 4) notes; no member at all when that is 0.
void WriteNoteList(uint32_t noteNum, const tagNET_GUIDESCREEN_NOTE_INFO (&notes)[kMaxNotes],
                   Json::Value& json);

}  // namespace gsc::programme

#endif  // GUIDESCREEN_CODEC_PROGRAMME_ELEMENT_COMMON_H
