// What a conversion lost, noted while reporting: each function adds at most one finding, at the
// path of the step under way (extended by `at` where one is given). Only the reporting codecs
// call these; the plain ones never look.
#ifndef GUIDESCREEN_CODEC_CODEC_CHECKS_H
#define GUIDESCREEN_CODEC_CODEC_CHECKS_H

#include <json/value.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "codec/field_codecs.h"
#include "codec/reporting.h"

namespace gsc::codec {

// Reading.
// A text `value` stored into a field of `size` bytes: cut, or converted from another type.
template <typename V>
void NoteText(Reporting& context, const Segment& at, const V& value, size_t size);
// A value about to be read with asInt, asBool or asDouble: what that conversion loses silently
// (1.5 read as 1, true read as 1, 2 read as true). What it cannot convert, JsonCpp raises.
template <typename V>
void NoteInt(Reporting& context, const V& value);
template <typename V>
void NoteBool(Reporting& context, const V& value);
template <typename V>
void NoteReal(Reporting& context, const V& value);
void NoteEnumOutOfRange(Reporting& context, const Segment& at, int32_t json, int values);
template <typename V>
void NoteScan(Reporting& context, const V& value, ScanResult scan, const char* what);
// A present value of a shape the reader skips; `expected` says what it takes ("an array").
template <typename V>
void NoteMalformed(Reporting& context, const Segment& at, const V& value, const char* expected);
template <typename V>
void NoteMalformed(Reporting& context, const V& value, const char* expected);
void NoteArrayClamped(Reporting& context, uint32_t length, uint32_t capacity);
// Members of a keyed collection left unread because `what` ("records", "timer plans") had room
// for `capacity` only.
void NoteCollectionClamped(Reporting& context, const char* what, uint32_t capacity,
                           const std::vector<std::string>& notRead);
// An element whose "Type" is none of the five kinds, stored as a header alone.
void NoteUnknownElementType(Reporting& context, int32_t type);
// An element list whose entries did not all fit: `needed` bytes for the next, `left` free.
void NoteElementBufferFull(Reporting& context, uint32_t received, uint32_t stored, size_t needed,
                           size_t left);

// Writing.
void NoteUnterminated(Reporting& context, const Segment& at, const char* field, size_t size);
void NoteUnterminated(Reporting& context, const char* field, size_t size);
void NoteEnumNotSent(Reporting& context, const Segment& at, int32_t stored, int values);
// Entry `entry` of an element buffer, of no known kind, skipped.
void NoteElementKindSkipped(Reporting& context, uint32_t entry, int32_t kind);
// The first display unit (of `units`) whose state has no code: the status text ends there.
void NoteDisplayUnitWithoutCode(Reporting& context, uint32_t unit, int32_t state, uint32_t units);
void NoteCountBeyondCapacity(Reporting& context, const Segment& at, uint32_t count,
                             uint32_t capacity);

}  // namespace gsc::codec

#endif  // GUIDESCREEN_CODEC_CODEC_CHECKS_H
