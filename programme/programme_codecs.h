// The codecs of programmes in either context: text blocks, notes, the five element kinds and the
// programme record itself. What each reads and writes is documented at the public record codecs
// (guidescreen_codec/record_codecs.h), which run them silently.
#ifndef GUIDESCREEN_CODEC_PROGRAMME_PROGRAMME_CODECS_H
#define GUIDESCREEN_CODEC_PROGRAMME_PROGRAMME_CODECS_H

#include <json/value.h>

#include "codec/frame.h"
#include "guidescreen_codec/programme_records.h"
#include "guidescreen_codec/record_codecs.h"

// The public record codecs (ParseText, PacketPragramme, ...; record_codecs.h) run these with the
// Silent context; the reporting operations run them with Reporting. Each is instantiated for both
// in its own source file.

namespace gsc::programme {

template <typename V, typename Context>
void ReadTextBlock(const V& json, tagNET_GUIDESCREEN_TEXT_INFO& info, Context& context);
template <typename Context>
void PacketTextBlock(const tagNET_GUIDESCREEN_TEXT_INFO& info, const codec::Out<Context>& json);
template <typename V, typename Context>
void ReadNote(const V& json, tagNET_GUIDESCREEN_NOTE_INFO& info, Context& context);
template <typename Context>
void PacketNote(const tagNET_GUIDESCREEN_NOTE_INFO& info, const codec::Out<Context>& json);

template <typename V, typename Context>
void ReadElement(const V& json, tagNET_VIDEO_ELEMENT_INFO& info, Context& context);
template <typename V, typename Context>
void ReadElement(const V& json, tagNET_PICTURE_ELEMENT_INFO& info, Context& context);
template <typename V, typename Context>
void ReadElement(const V& json, tagNET_TEXT_ELEMENT_INFO& info, Context& context);
template <typename V, typename Context>
void ReadElement(const V& json, tagNET_PLACEHOLDER_ELEMENT_INFO& info, Context& context);
template <typename V, typename Context>
void ReadElement(const V& json, tagNET_CAPTURE_ELEMENT_INFO& info, Context& context);
template <typename Context>
void PacketElement(const tagNET_VIDEO_ELEMENT_INFO& info, const codec::Out<Context>& json);
template <typename Context>
void PacketElement(const tagNET_PICTURE_ELEMENT_INFO& info, const codec::Out<Context>& json);
template <typename Context>
void PacketElement(const tagNET_TEXT_ELEMENT_INFO& info, const codec::Out<Context>& json);
template <typename Context>
void PacketElement(const tagNET_PLACEHOLDER_ELEMENT_INFO& info, const codec::Out<Context>& json);
template <typename Context>
void PacketElement(const tagNET_CAPTURE_ELEMENT_INFO& info, const codec::Out<Context>& json);

template <typename V, typename Context>
void ReadProgramme(const V& json, tagNET_PROGRAMME_INFO& info, Context& context);
template <typename Context>
void PacketProgramme(const tagNET_PROGRAMME_INFO& info, const codec::Out<Context>& json);

}  // namespace gsc::programme

#endif  // GUIDESCREEN_CODEC_PROGRAMME_PROGRAMME_CODECS_H
