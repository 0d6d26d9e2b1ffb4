// JSON text in and out of the C interface.
#ifndef GUIDESCREEN_CODEC_CAPI_JSON_TEXT_H
#define GUIDESCREEN_CODEC_CAPI_JSON_TEXT_H

#include <json/value.h>

#include <cstddef>
#include <string>

namespace gsc::capi {

// Parses `length` bytes as exactly one JSON document (white space may follow, nothing else).
// On failure returns false with `error` saying where and why: "line 1, column 9: Missing ',' or
// '}' in object declaration".
bool ParseDocument(const char* text, size_t length, Json::Value& root, std::string& error);

// `value` as compact text, UTF-8 unescaped. A number that is not finite has no JSON text and is
// written as null; `value` is changed to match.
std::string WriteCompact(Json::Value& value);

}  // namespace gsc::capi

#endif  // GUIDESCREEN_CODEC_CAPI_JSON_TEXT_H
