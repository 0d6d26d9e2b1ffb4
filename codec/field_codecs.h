// Field codecs: rectangles and colours (JSON arrays of four integers, declared with the public
// API in guidescreen_codec/field_codecs.h) and the time-of-day and date texts.
#ifndef GUIDESCREEN_CODEC_CODEC_FIELD_CODECS_H
#define GUIDESCREEN_CODEC_CODEC_FIELD_CODECS_H

#include <json/value.h>

#include <cstdint>

#include "guidescreen_codec/field_codecs.h"
#include "guidescreen_codec/field_records.h"

namespace gsc::codec {

// How far the scan of a time or date text got: fields set (0 to 3), and whether it stopped
// exactly at the end of the text.
struct ScanResult {
  int fields;
  bool whole;
};

// Writes "%02d:%02d:%02d" into `target` (values outside 0..99 printed as they are, the text cut
// to 15 characters).
void PackTimeOfDay(Json::Value& target, const tagNET_TIME_OF_DAY& time);

// Scans `source`'s text with "%02d:%02d:%02d": the fields the scan reaches are set, the others
// keep their values ("07:05" sets hour and minute). The caller tests for presence.
template <typename V>
ScanResult ParseTimeOfDay(const V& source, tagNET_TIME_OF_DAY& time);

// Writes "%04d:%02d:%02d" into `target`, cut to 15 characters (year 1234567890, month 3, day 5
// gives "1234567890:03:0").
void PackDate(Json::Value& target, const tagNET_DATE_INFO& date);

// Scans `source`'s text with "%04d:%02d:%02d", setting the fields the scan reaches
// ("2024-03-05" sets the year only).
template <typename V>
ScanResult ParseDate(const V& source, tagNET_DATE_INFO& date);

}  // namespace gsc::codec

#endif  // GUIDESCREEN_CODEC_CODEC_FIELD_CODECS_H
