#include "capi/json_text.h"

#include <json/json.h>

#include <cmath>

namespace gsc::capi {
namespace {

void NullNonFinite(Json::Value& value) {
  if (value.isArray() || value.isObject()) {
    for (Json::Value& member : value) NullNonFinite(member);
  } else if (value.type() == Json::realValue && !std::isfinite(value.asDouble())) {
    value = Json::Value();
  }
}

}  // namespace

std::string WriteCompact(Json::Value& value) {
  NullNonFinite(value);
  Json::StreamWriterBuilder builder;
  builder["indentation"] = "";
  builder["emitUTF8"] = true;
  return Json::writeString(builder, value);
}

}  // namespace gsc::capi
