#include "codec/field_codecs.h"

#include <algorithm>
#include <cctype>
#include <string>

#include "codec/frame.h"
#include "codec/json_string.h"

namespace gsc::codec {

void PackFourInts(Json::Value& target, int32_t a, int32_t b, int32_t c, int32_t d) {
  target[0] = Json::Value(a);
  target[1] = Json::Value(b);
  target[2] = Json::Value(c);
  target[3] = Json::Value(d);
}

bool ParseFourInts(const Json::Value& source, int32_t& a, int32_t& b, int32_t& c, int32_t& d) {
  Silent silent{};
  return ReadFourInts(silent, source, "", a, b, c, d);
}

namespace {

// Time and date texts hold at most 15 characters (the 16-byte buffer of the bounded print, with
// room for the terminator).
constexpr size_t kTextLimit = 15;

// Appends `value` as printf's "%0<width>d" would print it: a minus sign for negatives, then the
// decimal digits, zero-padded after the sign to `width` characters in all. INT_MIN is printed
// from its unsigned magnitude. Returns the new end.
char* PrintPadded(char* out, int32_t value, int width) {
  uint32_t magnitude = static_cast<uint32_t>(value);
  if (value < 0) {
    *out++ = '-';
    magnitude = 0U - magnitude;
    --width;
  }
  char digits[10];
  int count = 0;
  do {
    digits[count++] = static_cast<char>('0' + magnitude % 10U);
    magnitude /= 10U;
  } while (magnitude != 0U);
  for (int pad = width - count; pad > 0; --pad) *out++ = '0';
  while (count > 0) *out++ = digits[--count];
  return out;
}

// Stores "%0<firstWidth>d:%02d:%02d" of the three values into `target`, cut to 15 characters:
// the text the bounded print makes into a zero-filled 16-byte buffer with the limit 15.
void PackText(Json::Value& target, int firstWidth, int32_t a, int32_t b, int32_t c) {
  char text[3 * 11 + 3];  // three signed 32-bit numbers, two colons and a terminator
  char* end = PrintPadded(text, a, firstWidth);
  *end++ = ':';
  end = PrintPadded(end, b, 2);
  *end++ = ':';
  end = PrintPadded(end, c, 2);
  text[std::min(static_cast<size_t>(end - text), kTextLimit)] = '\0';
  SetJsonString(target, text, true);
}

// The text ends at `end` or at its first zero byte, as the scanner sees a terminated copy.
bool AtEnd(const char* at, const char* end) {
  return at == end || *at == '\0';
}

// Scans one "%<width>d" of the standard scanner at `at`: white space skipped, an optional sign
// counted in the width, then decimal digits up to the width. Sets `field` and moves `at` past the
// number only when at least one digit was read.
inline bool ScanNumber(const char*& at, const char* end, int width, int32_t& field) {
  while (!AtEnd(at, end) && std::isspace(static_cast<unsigned char>(*at))) ++at;
  if (AtEnd(at, end)) return false;
  const char* p = at;
  const bool negative = *p == '-';
  if (*p == '-' || *p == '+') {
    ++p;
    --width;
  }
  int32_t value = 0;  // at most four digits: no overflow
  const char* digits = p;
  for (; width > 0 && !AtEnd(p, end) && *p >= '0' && *p <= '9'; ++p, --width) {
    value = value * 10 + (*p - '0');
  }
  if (p == digits) return false;
  field = negative ? -value : value;
  at = p;
  return true;
}

// Scans "%0<firstWidth>d:%02d:%02d" as sscanf does: the fields up to the first failure are set,
// the others keep their values. A literal ':' must follow directly, without white space.
ScanResult ScanThree(const char* at, const char* end, int firstWidth, int32_t& a, int32_t& b,
                     int32_t& c) {
  if (!ScanNumber(at, end, firstWidth, a)) return {0, false};
  if (AtEnd(at, end) || *at != ':') return {1, false};
  ++at;
  if (!ScanNumber(at, end, 2, b)) return {1, false};
  if (AtEnd(at, end) || *at != ':') return {2, false};
  ++at;
  if (!ScanNumber(at, end, 2, c)) return {2, false};
  return {3, at == end};
}

template <typename V>
ScanResult ScanText(const V& source, int firstWidth, int32_t& a, int32_t& b, int32_t& c) {
  // A string is scanned where it lies; any other value through its JsonCpp text (asString's
  // conversions, and its exceptions for arrays and objects).
  const char* begin = nullptr;
  const char* end = nullptr;
  if (source.isString() && source.getString(&begin, &end)) {
    return ScanThree(begin, end, firstWidth, a, b, c);
  }
  const std::string converted = source.asString();
  return ScanThree(converted.data(), converted.data() + converted.size(), firstWidth, a, b, c);
}

}  // namespace

void PackTimeOfDay(Json::Value& target, const tagNET_TIME_OF_DAY& time) {
  PackText(target, 2, time.nHour, time.nMinute, time.nSecond);
}

template <typename V>
ScanResult ParseTimeOfDay(const V& source, tagNET_TIME_OF_DAY& time) {
  return ScanText(source, 2, time.nHour, time.nMinute, time.nSecond);
}

void PackDate(Json::Value& target, const tagNET_DATE_INFO& date) {
  PackText(target, 4, date.nYear, date.nMonth, date.nDay);
}

template <typename V>
ScanResult ParseDate(const V& source, tagNET_DATE_INFO& date) {
  return ScanText(source, 4, date.nYear, date.nMonth, date.nDay);
}

template ScanResult ParseTimeOfDay(const Json::Value&, tagNET_TIME_OF_DAY&);
template ScanResult ParseTimeOfDay(const TextValue&, tagNET_TIME_OF_DAY&);
template ScanResult ParseDate(const Json::Value&, tagNET_DATE_INFO&);
template ScanResult ParseDate(const TextValue&, tagNET_DATE_INFO&);

}  // namespace gsc::codec
