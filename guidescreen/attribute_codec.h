// The guide screen attribute record: one screen's configuration and its JSON object.
#ifndef GUIDESCREEN_CODEC_GUIDESCREEN_ATTRIBUTE_CODEC_H
#define GUIDESCREEN_CODEC_GUIDESCREEN_ATTRIBUTE_CODEC_H

#include <json/value.h>

#include "codec/frame.h"
#include "guidescreen_codec/export.h"
#include "guidescreen_codec/guidescreen_records.h"

// Merges the attribute object `json` into `*info`; does nothing for a null `info`. Always set:
// emStatus (0 unless "Status" is 0 or 1) and the six picture and size numbers (missing reads 0).
// Kept when missing: the ID, the forever-open flag, the opening times, the split screens and the
// automatic brightness. Arrays are clamped to 8 opening times, 32 play dates and 16 split screens.
GSC_API void ParseGuidScreenAttribute(const Json::Value& json,
                                      tagNET_GUIDESCREEN_ATTRIBUTE_INFO* info);

namespace gsc::guidescreen {

// ParseGuidScreenAttribute's steps in either context (instantiated for Silent and Reporting).
template <typename Context>
void ReadGuidScreenAttribute(const Json::Value& json, tagNET_GUIDESCREEN_ATTRIBUTE_INFO& info,
                             Context& context);

// Writes `info` into the attribute object `json` (members created or replaced, never removed, so
// writing two records into one object merges them). "Time" and "SplitScreenList" are null when
// empty; sun entries stored as 0 and 0 are sent as 6 and 18.
template <typename Context>
void PacketGuidScreenAttribute(const tagNET_GUIDESCREEN_ATTRIBUTE_INFO& info,
                               const codec::Out<Context>& json);
GSC_API void PacketGuidScreenAttribute(const tagNET_GUIDESCREEN_ATTRIBUTE_INFO& info,
                                       Json::Value& json);

}  // namespace gsc::guidescreen

#endif  // GUIDESCREEN_CODEC_GUIDESCREEN_ATTRIBUTE_CODEC_H
