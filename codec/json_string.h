// The two string functions through which every text field passes.
#ifndef GUIDESCREEN_CODEC_CODEC_JSON_STRING_H
#define GUIDESCREEN_CODEC_CODEC_JSON_STRING_H

#include <json/value.h>

#include <cstddef>

#include "guidescreen_codec/export.h"

// Copies the text of `value` into `dest`, a field of `len` bytes: at most len - 1 bytes of text
// and always a terminator within the field. Nothing is written when `dest` is null or `len` < 1.
//
// What is copied, by the value's type:
//   string           its bytes, cut to len - 1;
//   number, boolean  its JsonCpp text ("42", "1.5", "true");
//   null, array, object  an empty text (never throws).
// With `utf8` true (every codec passes true) the text is taken as UTF-8 and a cut never splits a
// multi-byte character, so valid UTF-8 stays valid; with false the text is cut at the byte.
GSC_API void GetJsonString(const Json::Value& value, char* dest, int len, bool utf8);

// Makes `value` a JSON string holding the zero-terminated `text` (a null `text` gives "").
// The bytes are stored unchanged: with `utf8` true (every codec passes true) the caller's texts
// are UTF-8 already, and with false they are carried as opaque bytes.
GSC_API void SetJsonString(Json::Value& value, const char* text, bool utf8);

namespace gsc::codec {

// How many of the `size` bytes of `text` GetJsonString keeps in `room` bytes of text: all of
// them when they fit, else `room`, less up to three bytes so as not to split a UTF-8 character
// when `utf8` is set (on invalid input the cut stays at `room`).
size_t CutPoint(const char* text, size_t size, size_t room, bool utf8);

// GetJsonString on a Json::Value or on a value of a parsed text (TextValue).
template <typename V>
void GetText(const V& value, char* dest, int len, bool utf8);

}  // namespace gsc::codec

#endif  // GUIDESCREEN_CODEC_CODEC_JSON_STRING_H
