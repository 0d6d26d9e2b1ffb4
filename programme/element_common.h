// What the five element kinds share: the leading name and filler state, the "Type" each writer
// stamps, and the trailing note list.
#ifndef GUIDESCREEN_CODEC_PROGRAMME_ELEMENT_COMMON_H
#define GUIDESCREEN_CODEC_PROGRAMME_ELEMENT_COMMON_H

#include <json/value.h>

#include <cstdint>

#include "codec/frame.h"
#include "guidescreen_codec/programme_records.h"
#include "programme/programme_codecs.h"

namespace gsc::programme {

// Notes an element holds (stuNote[4]); a longer "Note" array is clamped to it.
constexpr uint32_t kMaxNotes = 4;

// The members an element of one kind knows: the common ones and, for all kinds but the
// placeholder, the object of the kind's own.
constexpr auto kPlaceHolderElementKeys = codec::Keys("Name", "Type", "FillerState", "Note");
template <size_t K>
constexpr auto ElementKeys(const char (&kindObject)[K]) {
  return codec::Keys("Name", "Type", "FillerState", "Note", kindObject);
}

// The "Type" an element of `kind` travels with (kind - 1).
constexpr int32_t JsonElementType(EM_ELEMENT_TYPE kind) {
  return static_cast<int32_t>(kind) - 1;
}

// "Name" when present, "FillerState" always (missing reads false).
template <typename C, const auto& Table, typename V>
void ReadElementHead(const codec::Members<C, Table, V>& object, char (&name)[64],
                     bool& fillerState) {
  codec::ReadTextIfPresent(object, GSC_KEY("Name"), name);
  codec::ReadBool(object, GSC_KEY("FillerState"), fillerState);
}

// A "Note" array replaces the count (clamped to 4) and merges into the first notes; anything
// else keeps both.
template <typename C, const auto& Table, typename V>
void ReadNoteList(const codec::Members<C, Table, V>& object, uint32_t& noteNum,
                  tagNET_GUIDESCREEN_NOTE_INFO (&notes)[kMaxNotes]) {
  codec::ReadArrayIfPresent(object, GSC_KEY("Note"), noteNum, notes,
                            [&](const auto& note, tagNET_GUIDESCREEN_NOTE_INFO& info) {
                              ReadNote(note, info, object.context());
                            });
}

// "Name", the kind's "Type" and "FillerState", always.
template <typename C>
void WriteElementHead(const codec::Out<C>& json, const char (&name)[64], EM_ELEMENT_TYPE kind,
                      bool fillerState) {
  codec::WriteText(json, "Name", name);
  codec::WriteInt(json, "Type", JsonElementType(kind));
  codec::WriteBool(json, "FillerState", fillerState);
}

// "Note" with min(noteNum, 4) notes; no member at all when that is 0.
template <typename C>
void WriteNoteList(const codec::Out<C>& json, uint32_t noteNum,
                   const tagNET_GUIDESCREEN_NOTE_INFO (&notes)[kMaxNotes]) {
  codec::WriteListIfAny(json, "Note", noteNum, notes,
                        [](const codec::Out<C>& note, const tagNET_GUIDESCREEN_NOTE_INFO& info) {
                          PacketNote(info, note);
                        });
}

}  // namespace gsc::programme

#endif  // GUIDESCREEN_CODEC_PROGRAMME_ELEMENT_COMMON_H
