// The string functions and the bounded print.
#include <climits>
#include <cstring>
#include <string>

#include "codec/json_string.h"
#include "codec/snprintf.h"
#include "support/fixtures.h"

namespace {

using gsc::test::GuardedBytes;

// Runs GetJsonString into a field of `len` bytes with guard bytes after it.
std::string Get(const Json::Value& value, int len, bool utf8 = true) {
  GuardedBytes field(static_cast<size_t>(len), 0, 'x');
  GetJsonString(value, reinterpret_cast<char*>(field.data()), len, utf8);
  EXPECT_TRUE(field.GuardsIntact());
  EXPECT_NE(std::memchr(field.data(), '\0', field.size()), nullptr) << "text not terminated";
  return reinterpret_cast<const char*>(field.data());
}

TEST(GetJsonString, CopiesShortTextWhole) {
  EXPECT_EQ(Get("hall-1", 64), "hall-1");
}

TEST(GetJsonString, CutsLongTextToOneByteLessThanTheField) {
  EXPECT_EQ(Get("hall-1", 64), "hall-1");
  EXPECT_EQ(Get(std::string(600, 'a'), 512), std::string(511, 'a'));
  EXPECT_EQ(Get("abcd", 4), "abc");
  EXPECT_EQ(Get("abc", 4), "abc");
  EXPECT_EQ(Get("abc", 1), "");
}

TEST(GetJsonString, StoresTheTextOfScalarsAndEmptyTextForTheRest) {
  struct Case {
    Json::Value value;
    const char* expected;
  };
  const Case cases[] = {
      {Json::Value(), ""},
      {Json::Value(Json::arrayValue), ""},
      {gsc::test::J(R"({"a": "b"})"), ""},
      {Json::Value(42), "42"},
      {Json::Value(4294967295U), "4294967295"},
      {Json::Value(true), "true"},
      {Json::Value(-1.5), "-1.5"},
  };
  for (const Case& c : cases)
    EXPECT_EQ(Get(c.value, 64), c.expected) << gsc::test::Compact(c.value);
}

TEST(GetJsonString, NeverSplitsAUtf8Character) {
  // "é" is two bytes, "€" three, "😀" four; the limit falls inside each of them.
  EXPECT_EQ(Get("ab\xC3\xA9", 4), "ab");                // 3 bytes of room, é would need 4
  EXPECT_EQ(Get("a\xE2\x82\xAC", 5), "a\xE2\x82\xAC");  // fits exactly
  EXPECT_EQ(Get("a\xE2\x82\xAC", 4), "a");
  EXPECT_EQ(Get("ab\xE2\x82\xAC", 4), "ab");
  EXPECT_EQ(Get("\xF0\x9F\x98\x80z", 4), "");
  EXPECT_EQ(Get("\xF0\x9F\x98\x80z", 5), "\xF0\x9F\x98\x80");
  EXPECT_EQ(Get("ab\xC3\xA9", 4, false), "ab\xC3");  // not UTF-8: cut at the byte
}

TEST(GetJsonString, WritesNothingWithoutRoom) {
  char field[2] = {'x', 'y'};
  GetJsonString(Json::Value("abc"), field, 0, true);
  GetJsonString(Json::Value("abc"), nullptr, 8, true);
  EXPECT_EQ(field[0], 'x');
  EXPECT_EQ(field[1], 'y');
}

TEST(SetJsonString, MakesAStringValue) {
  Json::Value value(7);
  SetJsonString(value, "text", true);
  EXPECT_EQ(value, Json::Value("text"));
  SetJsonString(value, "", true);
  EXPECT_EQ(value, Json::Value(""));
  SetJsonString(value, nullptr, true);
  EXPECT_EQ(value, Json::Value(""));
}

// The bounded print stores at most `limit` characters and a terminator only when there is room.
TEST(BoundedPrint, TerminatesOnlyTextsShorterThanTheLimit) {
  struct Case {
    unsigned long limit;
    const char* text;
    const char* stored;  // what the zero-filled buffer holds afterwards
    int result;
  };
  const Case cases[] = {
      {15, "07:05:00", "07:05:00", 8},
      {3, "100", "100", 3},     // exactly the limit: no terminator
      {3, "10010", "100", -1},  // longer: cut, no terminator
      {15, "1234567890:03:05", "1234567890:03:0", -1},
      {0, "abc", "", -1},
  };
  for (const Case& c : cases) {
    char buffer[32];
    std::memset(buffer, '#', sizeof buffer);
    EXPECT_EQ(_snprintf(buffer, c.limit, "%s", c.text), c.result) << c.text;
    EXPECT_EQ(std::string(buffer, std::strlen(c.stored)), c.stored);
    const size_t len = std::strlen(c.stored);
    if (len < c.limit) {
      EXPECT_EQ(buffer[len], '\0');
      EXPECT_EQ(buffer[len + 1], '#') << "wrote past the terminator";
    } else {
      EXPECT_EQ(buffer[c.limit], '#') << "wrote past the limit";
    }
  }
}

TEST(BoundedPrint, HandlesTextsLongerThanItsStackBuffer) {
  const std::string long_text(2000, 'z');
  std::string buffer(1500, '\0');
  EXPECT_EQ(_snprintf(&buffer[0], 1000, "%s", long_text.c_str()), -1);
  EXPECT_EQ(buffer.substr(0, 1000), std::string(1000, 'z'));
  EXPECT_EQ(buffer[1000], '\0');
}

}  // namespace
