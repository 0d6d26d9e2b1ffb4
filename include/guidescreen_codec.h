/* guidescreen-codec: the request and response codecs of the guide screen client.
 *
 * Include this one header. From C it declares the records, their capacities and the C interface
 * (capi.h: element buffers and every operation over JSON text); from C++ it also declares the
 * serialize/deserialize pair of every operation and the record codecs (JsonCpp's Json::Value). */
#ifndef GUIDESCREEN_CODEC_H
#define GUIDESCREEN_CODEC_H

#include "guidescreen_codec/capacities.h"
#include "guidescreen_codec/capi.h"
#include "guidescreen_codec/field_records.h"
#include "guidescreen_codec/guidescreen_records.h"
#include "guidescreen_codec/plan_records.h"
#include "guidescreen_codec/programme_records.h"
#include "guidescreen_codec/version.h"

#ifdef __cplusplus
#include "guidescreen_codec/json_text.h"
#include "guidescreen_codec/listing_room.h"
#include "guidescreen_codec/operations.h"
#include "guidescreen_codec/record_codecs.h"
#endif

#endif /* GUIDESCREEN_CODEC_H */
