// The guide screen attribute record: one screen's configuration and its JSON object.
#ifndef GUIDESCREEN_CODEC_GUIDESCREEN_ATTRIBUTE_CODEC_H
#define GUIDESCREEN_CODEC_GUIDESCREEN_ATTRIBUTE_CODEC_H

#include <json/value.h>

#include "codec/frame.h"
#include "guidescreen_codec/guidescreen_records.h"
#include "guidescreen_codec/record_codecs.h"

namespace gsc::guidescreen {

// ParseGuidScreenAttribute's steps (record_codecs.h) in either context, instantiated for Silent
// and Reporting.
template <typename V, typename Context>
void ReadGuidScreenAttribute(const V& json, tagNET_GUIDESCREEN_ATTRIBUTE_INFO& info,
                             Context& context);

// PacketGuidScreenAttribute (record_codecs.h) in either context.
template <typename Context>
void PacketGuidScreenAttribute(const tagNET_GUIDESCREEN_ATTRIBUTE_INFO& info,
                               const codec::Out<Context>& json);

}  // namespace gsc::guidescreen

#endif  // GUIDESCREEN_CODEC_GUIDESCREEN_ATTRIBUTE_CODEC_H
