// Field codecs: rectangles and colours (JSON arrays of four integers) and the time-of-day and
// date texts.
#ifndef GUIDESCREEN_CODEC_CODEC_FIELD_CODECS_H
#define GUIDESCREEN_CODEC_CODEC_FIELD_CODECS_H

#include <json/value.h>

#include <cstdint>

#include "guidescreen_codec/field_records.h"

namespace gsc::codec {

// Stores the four integers at indexes 0 to 3 of `target`, which becomes an array.
void PackFourInts(Json::Value& target, int32_t a, int32_t b, int32_t c, int32_t d);

// Reads a JSON array of exactly four elements into four integers. Any other shape returns false
// and changes nothing; an element that is not convertible to int throws (JsonCpp's rule).
bool ParseFourInts(const Json::Value& source, int32_t& a, int32_t& b, int32_t& c, int32_t& d);

// How far the scan of a time or date text got: fields set (0 to 3), and whether it stopped
// exactly at the end of the text.
struct ScanResult {
  int fields;
  bool whole;
};

}  // namespace gsc::codec

// The rectangle codec: [nLeft, nTop, nRight, nBottom].
struct JsonRect {
  // Writes the rectangle into `target` as an array of four integers; always true.
  template <typename Rect>
  static bool pack(Json::Value& target, const Rect& rect) {
    gsc::codec::PackFourInts(target, rect.nLeft, rect.nTop, rect.nRight, rect.nBottom);
    return true;
  }
  // Reads an array of exactly four integers; false, with `rect` unchanged, for any other shape.
  template <typename Rect>
  static bool parse(const Json::Value& source, Rect& rect) {
    return gsc::codec::ParseFourInts(source, rect.nLeft, rect.nTop, rect.nRight, rect.nBottom);
  }
};

// The colour codec: [nRed, nGreen, nBlue, nAlpha].
struct JsonColor {
  // Writes the colour into `target` as an array of four integers; always true.
  template <typename Color>
  static bool pack(Json::Value& target, const Color& color) {
    gsc::codec::PackFourInts(target, color.nRed, color.nGreen, color.nBlue, color.nAlpha);
    return true;
  }
  // Reads an array of exactly four integers; false, with `color` unchanged, for any other shape.
  template <typename Color>
  static bool parse(const Json::Value& source, Color& color) {
    return gsc::codec::ParseFourInts(source, color.nRed, color.nGreen, color.nBlue, color.nAlpha);
  }
};

namespace gsc::codec {

// Writes "%02d:%02d:%02d" into `target` (values outside 0..99 printed as they are, the text cut
// to 15 characters).
void PackTimeOfDay(Json::Value& target, const tagNET_TIME_OF_DAY& time);

// Scans `source`'s text with "%02d:%02d:%02d": the fields the scan reaches are set, the others
// keep their values ("07:05" sets hour and minute). The caller tests for presence.
ScanResult ParseTimeOfDay(const Json::Value& source, tagNET_TIME_OF_DAY& time);

// Writes "%04d:%02d:%02d" into `target`, cut to 15 characters (year 1234567890, month 3, day 5
// gives "1234567890:03:0").
void PackDate(Json::Value& target, const tagNET_DATE_INFO& date);

// Scans `source`'s text with "%04d:%02d:%02d", setting the fields the scan reaches
// ("2024-03-05" sets the year only).
ScanResult ParseDate(const Json::Value& source, tagNET_DATE_INFO& date);

}  // namespace gsc::codec

#endif  // GUIDESCREEN_CODEC_CODEC_FIELD_CODECS_H
