/* guidescreen-codec: the request and response codecs of the guide screen client.
 *
 * Include this one header. From C it declares the records and enumerations only; from C++ it
 * also declares the serialize/deserialize pair of every operation (JsonCpp's Json::Value). */
#ifndef GUIDESCREEN_CODEC_H
#define GUIDESCREEN_CODEC_H

#include "guidescreen_codec/field_records.h"
#include "guidescreen_codec/guidescreen_records.h"
#include "guidescreen_codec/plan_records.h"
#include "guidescreen_codec/programme_records.h"

#ifdef __cplusplus
#include "guidescreen_codec/operations.h"
#endif

#endif /* GUIDESCREEN_CODEC_H */
