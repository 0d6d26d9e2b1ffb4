#include "capi/json_text.h"

#include <json/json.h>

#include <cctype>
#include <cmath>
#include <memory>

namespace gsc::capi {
namespace {

// JsonCpp lists errors as "* Line L, Column C\n  reason\n"; the first one, on one line.
std::string FirstError(const std::string& errors) {
  const size_t start = errors.rfind("* ", 0) == 0 ? 2 : 0;
  const size_t newline = errors.find('\n', start);
  if (newline == std::string::npos) return errors.substr(start);
  std::string where = errors.substr(start, newline - start);
  for (char& c : where) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  const size_t reason = errors.find_first_not_of(' ', newline + 1);
  if (reason == std::string::npos) return where;
  const size_t end = errors.find('\n', reason);
  return where + ": " + errors.substr(reason, end == std::string::npos ? end : end - reason);
}

void NullNonFinite(Json::Value& value) {
  if (value.isArray() || value.isObject()) {
    for (Json::Value& member : value) NullNonFinite(member);
  } else if (value.type() == Json::realValue && !std::isfinite(value.asDouble())) {
    value = Json::Value();
  }
}

}  // namespace

bool ParseDocument(const char* text, size_t length, Json::Value& root, std::string& error) {
  Json::CharReaderBuilder builder;
  builder["collectComments"] = false;
  builder["failIfExtra"] = true;
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  std::string errors;
  try {
    if (reader->parse(text, text + length, &root, &errors)) return true;
  } catch (const Json::Exception& e) {
    // Nesting deeper than the reader's stack limit is refused by an exception, not an error.
    error = e.what();
    return false;
  }
  error = FirstError(errors);
  return false;
}

std::string WriteCompact(Json::Value& value) {
  NullNonFinite(value);
  Json::StreamWriterBuilder builder;
  builder["indentation"] = "";
  builder["emitUTF8"] = true;
  return Json::writeString(builder, value);
}

}  // namespace gsc::capi
