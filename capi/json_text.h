// Request text out of the C interface. Answers come in through the text readers
// (guidescreen_codec/json_text.h), without a tree.
#ifndef GUIDESCREEN_CODEC_CAPI_JSON_TEXT_H
#define GUIDESCREEN_CODEC_CAPI_JSON_TEXT_H

#include <json/value.h>

#include <string>

namespace gsc::capi {

// `value` as compact text, UTF-8 unescaped. A number that is not finite has no JSON text and is
// written as null; `value` is changed to match.
std::string WriteCompact(Json::Value& value);

}  // namespace gsc::capi

#endif  // GUIDESCREEN_CODEC_CAPI_JSON_TEXT_H
