// The time and date texts and the bounded print's "%s" path, checked against the C library's
// own printf and scanf over many inputs: the codecs must produce and accept exactly what those do.
#include <gtest/gtest.h>
#include <json/json.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "codec/field_codecs.h"
#include "codec/snprintf.h"

namespace {

using gsc::codec::PackDate;
using gsc::codec::PackTimeOfDay;
using gsc::codec::ParseDate;
using gsc::codec::ParseTimeOfDay;

// What the bounded print with the limit 15 leaves in a zero-filled 16-byte buffer.
std::string Printed(const char* format, int a, int b, int c) {
  char text[64];
  std::snprintf(text, sizeof text, format, a, b, c);
  return std::string(text).substr(0, 15);
}

TEST(FieldTextFormat, WritesWhatPrintfPrintsForEveryKindOfValue) {
  const std::vector<int> values = {INT_MIN, INT_MIN + 1, -1000000000, -99999, -1000,      -999,
                                   -100,    -99,         -10,         -9,     -1,         0,
                                   1,       9,           10,          99,     100,        999,
                                   1000,    9999,        10000,       123456, 1234567890, INT_MAX};
  for (int a : values) {
    for (int b : values) {
      for (int c : values) {
        Json::Value time;
        PackTimeOfDay(time, tagNET_TIME_OF_DAY{a, b, c});
        ASSERT_EQ(time.asString(), Printed("%02d:%02d:%02d", a, b, c)) << a << " " << b << " " << c;
        Json::Value date;
        PackDate(date, tagNET_DATE_INFO{a, b, c});
        ASSERT_EQ(date.asString(), Printed("%04d:%02d:%02d", a, b, c)) << a << " " << b << " " << c;
      }
    }
  }
}

// Scans `text` both ways from the same starting fields and expects the same fields.
void ExpectScannedAsScanf(const std::string& text) {
  constexpr int kSentinel = -12345;
  tagNET_TIME_OF_DAY time{kSentinel, kSentinel, kSentinel};
  ParseTimeOfDay(Json::Value(text.data(), text.data() + text.size()), time);
  int h = kSentinel, m = kSentinel, s = kSentinel;
  (void)std::sscanf(text.c_str(), "%02d:%02d:%02d", &h, &m, &s);
  EXPECT_EQ(time.nHour, h) << '"' << text << '"';
  EXPECT_EQ(time.nMinute, m) << '"' << text << '"';
  EXPECT_EQ(time.nSecond, s) << '"' << text << '"';

  tagNET_DATE_INFO date{kSentinel, kSentinel, kSentinel};
  ParseDate(Json::Value(text.data(), text.data() + text.size()), date);
  int y = kSentinel, mo = kSentinel, d = kSentinel;
  (void)std::sscanf(text.c_str(), "%04d:%02d:%02d", &y, &mo, &d);
  EXPECT_EQ(date.nYear, y) << '"' << text << '"';
  EXPECT_EQ(date.nMonth, mo) << '"' << text << '"';
  EXPECT_EQ(date.nDay, d) << '"' << text << '"';
}

TEST(FieldTextScan, ReadsWhatScanfReads) {
  // The documented examples and the corners of the scanner's rules, separated by '|'.
  const std::string texts =
      "| |07:05:00|7:5:9|07:05|123:00:00|2024:03:05|2024-03-05|20240:01:01|24:3:5|-1:-2:-3|"
      "+1:+2:+3|-:1:1|+|- 1| \t\n7: 8:\v9|07 :05:00|0x1:2:3|-0:-0:-0|99999|1:2:3:4|12:34:56 x|" +
      std::string(80, '1');
  for (size_t at = 0, bar; at <= texts.size(); at = bar + 1) {
    bar = std::min(texts.find('|', at), texts.size());
    ExpectScannedAsScanf(texts.substr(at, bar - at));
  }
  // Texts with a zero byte inside end there, as the scanner reads a terminated copy.
  ExpectScannedAsScanf(
      std::string("12:3\0"
                  "4:56",
                  10));

  std::mt19937 random(20240305);
  const char alphabet[] = "0123456789:::--++  \t\nx\0";
  std::uniform_int_distribution<size_t> pick(0, sizeof alphabet - 1);
  std::uniform_int_distribution<int> length(0, 14);
  for (int i = 0; i < 20000; ++i) {
    std::string text;
    for (int n = length(random); n > 0; --n) text += alphabet[pick(random)];
    ExpectScannedAsScanf(text);
  }
}

// The lone "%s" is stored without formatting; it must match the general way byte for byte.
TEST(BoundedPrint, LoneStringMatchesTheFormattedWay) {
  for (const char* text : {"", "1", "10", "100", "1000", "abcdefgh"}) {
    for (unsigned long limit = 0; limit <= 10; ++limit) {
      char direct[16];
      char formatted[16];
      std::memset(direct, 0x5A, sizeof direct);
      std::memset(formatted, 0x5A, sizeof formatted);
      const int directResult = _snprintf(direct, limit, "%s", text);
      const int formattedResult = _snprintf(formatted, limit, "%s%s", text, "");
      EXPECT_EQ(directResult, formattedResult) << text << " " << limit;
      EXPECT_EQ(0, std::memcmp(direct, formatted, sizeof direct)) << text << " " << limit;
    }
  }
}

}  // namespace
