#include "codec/field_codecs.h"

#include <cstdio>
#include <cstring>
#include <string>

#include "codec/json_string.h"
#include "codec/snprintf.h"

namespace gsc::codec {

void PackFourInts(Json::Value& target, int32_t a, int32_t b, int32_t c, int32_t d) {
  target[0] = Json::Value(a);
  target[1] = Json::Value(b);
  target[2] = Json::Value(c);
  target[3] = Json::Value(d);
}

bool ParseFourInts(const Json::Value& source, int32_t& a, int32_t& b, int32_t& c, int32_t& d) {
  if (!source.isArray() || source.size() != 4) return false;
  a = source[0].asInt();
  b = source[1].asInt();
  c = source[2].asInt();
  d = source[3].asInt();
  return true;
}

namespace {

// Time and date texts are printed into a zero-filled 16-byte buffer with the limit 15, so the
// text is always terminated.
constexpr unsigned long kTextLimit = 15;

template <typename... Fields>
void PackText(Json::Value& target, const char* format, Fields... fields) {
  char buffer[16] = {};
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): the bounded print is variadic by design.
  _snprintf(buffer, kTextLimit, format, fields...);
  SetJsonString(target, buffer, true);
}

void ScanText(const Json::Value& source, const char* format, int32_t& a, int32_t& b, int32_t& c) {
  // Time and date texts are short: scan a terminated copy on the stack, and fall back to the
  // value's own text (JsonCpp's conversion rules, heap for long texts) for anything else.
  char local[64];
  const char* begin = nullptr;
  const char* end = nullptr;
  std::string converted;
  const char* text = local;
  if (source.isString() && source.getString(&begin, &end) &&
      static_cast<size_t>(end - begin) < sizeof local) {
    std::memcpy(local, begin, static_cast<size_t>(end - begin));
    // Read through `text` by sscanf below.
    // cppcheck-suppress unreadVariable
    local[end - begin] = '\0';
  } else {
    converted = source.asString();
    text = converted.c_str();
  }
  // The count of fields scanned is deliberately ignored: unreached fields keep their values.
  // NOLINTNEXTLINE(cert-err34-c,cppcoreguidelines-pro-type-vararg): partial scans are the contract.
  (void)std::sscanf(text, format, &a, &b, &c);
}

}  // namespace

void PackTimeOfDay(Json::Value& target, const tagNET_TIME_OF_DAY& time) {
  PackText(target, "%02d:%02d:%02d", time.nHour, time.nMinute, time.nSecond);
}

void ParseTimeOfDay(const Json::Value& source, tagNET_TIME_OF_DAY& time) {
  ScanText(source, "%02d:%02d:%02d", time.nHour, time.nMinute, time.nSecond);
}

void PackDate(Json::Value& target, const tagNET_DATE_INFO& date) {
  PackText(target, "%04d:%02d:%02d", date.nYear, date.nMonth, date.nDay);
}

void ParseDate(const Json::Value& source, tagNET_DATE_INFO& date) {
  ScanText(source, "%04d:%02d:%02d", date.nYear, date.nMonth, date.nDay);
}

}  // namespace gsc::codec
