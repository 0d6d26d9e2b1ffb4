// The string functions and field codecs that every record codec is built from: GetJsonString and
// SetJsonString, through which every text field passes, and JsonRect and JsonColor, the codecs of
// rectangles and colours. They are public so that transport code can read and write fields of
// its own the way the codecs do, and so that no application defines a function of the same name
// (the shared library exports these names; a static link would meet them twice).
#ifndef GUIDESCREEN_CODEC_PUBLIC_FIELD_CODECS_H
#define GUIDESCREEN_CODEC_PUBLIC_FIELD_CODECS_H

#include <json/value.h>

#include <cstdint>

#include "guidescreen_codec/export.h"
#include "guidescreen_codec/field_records.h"

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

// Stores the four integers at indexes 0 to 3 of `target`, which becomes an array.
GSC_API void PackFourInts(Json::Value& target, int32_t a, int32_t b, int32_t c, int32_t d);

// Reads a JSON array of exactly four elements into four integers. Any other shape returns false
// and changes nothing; an element that is not convertible to int throws (JsonCpp's rule).
GSC_API bool ParseFourInts(const Json::Value& source, int32_t& a, int32_t& b, int32_t& c,
                           int32_t& d);

}  // namespace gsc::codec

// The rectangle codec: [nLeft, nTop, nRight, nBottom] (tagNET_RECT).
struct JsonRect {
  // Writes the rectangle into `target` as an array of four integers; always true.
  template <typename Rect>
  static bool pack(Json::Value& target, const Rect& rect) {
    gsc::codec::PackFourInts(target, rect.nLeft, rect.nTop, rect.nRight, rect.nBottom);
    return true;
  }
  // Reads an array of exactly four integers; false, with `rect` unchanged, for any other shape.
  // An element JsonCpp cannot convert to int raises Json::Exception.
  template <typename Rect>
  static bool parse(const Json::Value& source, Rect& rect) {
    return gsc::codec::ParseFourInts(source, rect.nLeft, rect.nTop, rect.nRight, rect.nBottom);
  }
};

// The colour codec: [nRed, nGreen, nBlue, nAlpha] (tagQX_COLOR_RGBA).
struct JsonColor {
  // Writes the colour into `target` as an array of four integers; always true.
  template <typename Color>
  static bool pack(Json::Value& target, const Color& color) {
    gsc::codec::PackFourInts(target, color.nRed, color.nGreen, color.nBlue, color.nAlpha);
    return true;
  }
  // Reads an array of exactly four integers; false, with `color` unchanged, for any other shape.
  // An element JsonCpp cannot convert to int raises Json::Exception.
  template <typename Color>
  static bool parse(const Json::Value& source, Color& color) {
    return gsc::codec::ParseFourInts(source, color.nRed, color.nGreen, color.nBlue, color.nAlpha);
  }
};

#endif  // GUIDESCREEN_CODEC_PUBLIC_FIELD_CODECS_H
