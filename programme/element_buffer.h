// A window's element buffer: entries of a 132-byte tagNET_ELEMENT_COMMON_INFO header followed by
// the record of the kind it names (nothing for an unknown kind), laid end to end in caller
// memory. Since the header is 132 bytes, a record may start 4 but not 8 bytes aligned: a record
// is read in place where its address suits its type, otherwise through an aligned copy of the
// bytes the reader may write; headers are only ever copied in and out with memcpy.
#ifndef GUIDESCREEN_CODEC_PROGRAMME_ELEMENT_BUFFER_H
#define GUIDESCREEN_CODEC_PROGRAMME_ELEMENT_BUFFER_H

#include <json/value.h>

#include <cstddef>
#include <cstdint>

#include "codec/frame.h"
#include "guidescreen_codec/programme_records.h"

namespace gsc::programme {

// Bytes of an entry header; the record of its kind follows right after.
constexpr size_t kElementHeaderSize = sizeof(tagNET_ELEMENT_COMMON_INFO);

// Bytes one entry of `kind` takes: the header and the kind's record, or the header alone for a
// kind without a record (0, or anything outside 1 to 5).
size_t ElementEntrySize(EM_ELEMENT_TYPE kind);

// The kind stored for an element whose "Type" is `type`: type + 1 for 0 to 4, otherwise 0.
EM_ELEMENT_TYPE ElementKindOfType(int type);

// Lays the entries of the "Elements" array `elements` into `buffer` of `length` bytes and
// returns how many were stored. An entry that would not fit whole ends the list; no byte at or
// past buffer + length is written, and a null buffer holds nothing. Only the header's kind is
// written, never its reserved bytes; a record is merged with what the buffer held before.
// When reporting, an entry of unknown "Type" and the entries that did not fit are noted.
template <typename V, typename Context>
uint32_t ReadElementList(const V& elements, unsigned char* buffer, uint32_t length,
                         Context& context);
uint32_t ReadElementList(const Json::Value& elements, unsigned char* buffer, uint32_t length);

// Writes `count` entries from `buffer` into element j of `elements`, trusting the headers (the
// caller laid them out); an entry of unknown kind leaves element j untouched, a null hole when a
// later entry is written (noted when reporting, as pElementsBuf[j]). A null buffer writes
// nothing.
template <typename Context>
void WriteElementList(const unsigned char* buffer, uint32_t count,
                      const codec::Out<Context>& elements);
void WriteElementList(const unsigned char* buffer, uint32_t count, Json::Value& elements);

}  // namespace gsc::programme

#endif  // GUIDESCREEN_CODEC_PROGRAMME_ELEMENT_BUFFER_H
