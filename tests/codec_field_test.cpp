// Rectangles, colours, times of day and dates.
#include "codec/field_codecs.h"
#include "codec/frame.h"
#include "support/fixtures.h"

namespace {

using gsc::test::J;

TEST(JsonRect, PacksFourIntegersInFieldOrder) {
  Json::Value value;
  EXPECT_TRUE(JsonRect::pack<tagNET_RECT>(value, tagNET_RECT{0, 0, 1920, 1080}));
  EXPECT_JSON_EQ("[0, 0, 1920, 1080]", value);
  Json::Value color;
  EXPECT_TRUE(JsonColor::pack<tagQX_COLOR_RGBA>(color, tagQX_COLOR_RGBA{255, 0, 0, 255}));
  EXPECT_JSON_EQ("[255, 0, 0, 255]", color);
}

TEST(JsonRect, ParsesOnlyArraysOfExactlyFour) {
  const char* rejected[] = {"[1, 2, 3]", "[1, 2, 3, 4, 5]", "{\"a\": 1}", "7", "null", "[]"};
  for (const char* text : rejected) {
    tagNET_RECT rect{9, 9, 9, 9};
    EXPECT_FALSE(JsonRect::parse(J(text), rect)) << text;
    EXPECT_EQ(rect.nLeft + rect.nTop + rect.nRight + rect.nBottom, 36) << text;
  }
  tagNET_RECT rect{};
  EXPECT_TRUE(JsonRect::parse(J("[1, 2, 3, 4]"), rect));
  EXPECT_EQ(rect.nLeft, 1);
  EXPECT_EQ(rect.nTop, 2);
  EXPECT_EQ(rect.nRight, 3);
  EXPECT_EQ(rect.nBottom, 4);
  tagQX_COLOR_RGBA color{};
  EXPECT_TRUE(JsonColor::parse(J("[10, 20, 30, -1]"), color));
  EXPECT_EQ(color.nAlpha, -1);
}

TEST(TimeOfDay, WritesTwoDigitFieldsAndOutOfRangeValuesAsTheyAre) {
  struct Case {
    tagNET_TIME_OF_DAY time;
    const char* text;
  };
  const Case cases[] = {{{7, 5, 0}, "07:05:00"},
                        {{23, 59, 59}, "23:59:59"},
                        {{-1, 0, 0}, "-1:00:00"},
                        {{123, 0, 0}, "123:00:00"},
                        {{-2147483647 - 1, -2147483647 - 1, 0}, "-2147483648:-21"}};
  for (const Case& c : cases) {
    Json::Value value;
    gsc::codec::PackTimeOfDay(value, c.time);
    EXPECT_EQ(value.asString(), c.text);
  }
}

TEST(TimeOfDay, ReadingSetsTheFieldsTheScanReaches) {
  struct Case {
    const char* text;
    tagNET_TIME_OF_DAY expected;  // read into {1, 2, 3}
  };
  const Case cases[] = {
      {"7:5:9", {7, 5, 9}},      {"07:05", {7, 5, 3}},       {"", {1, 2, 3}},
      {"123:00:00", {12, 2, 3}}, {"23:59:59", {23, 59, 59}}, {" 8: 30:00", {8, 30, 0}},
      {"-1:00:00", {-1, 0, 0}},  {"ab:00:00", {1, 2, 3}}};
  for (const Case& c : cases) {
    tagNET_TIME_OF_DAY time{1, 2, 3};
    gsc::codec::ParseTimeOfDay(Json::Value(c.text), time);
    EXPECT_EQ(time.nHour, c.expected.nHour) << c.text;
    EXPECT_EQ(time.nMinute, c.expected.nMinute) << c.text;
    EXPECT_EQ(time.nSecond, c.expected.nSecond) << c.text;
  }
}

TEST(Date, WritesColonSeparatedTextCutToFifteenCharacters) {
  struct Case {
    tagNET_DATE_INFO date;
    const char* text;
  };
  const Case cases[] = {{{2024, 3, 9}, "2024:03:09"},
                        {{0, 0, 0}, "0000:00:00"},
                        {{1234567890, 3, 5}, "1234567890:03:0"},
                        {{24, 3, 5}, "0024:03:05"}};
  for (const Case& c : cases) {
    Json::Value value;
    gsc::codec::PackDate(value, c.date);
    EXPECT_EQ(value.asString(), c.text);
  }
}

TEST(Date, ReadingSetsTheFieldsTheScanReaches) {
  struct Case {
    const char* text;
    tagNET_DATE_INFO expected;  // read into {1, 2, 3}
  };
  const Case cases[] = {{"2024:03:05", {2024, 3, 5}},
                        {"24:3:5", {24, 3, 5}},
                        {"2024-03-05", {2024, 2, 3}},
                        {"20240:01:01", {2024, 2, 3}}};
  for (const Case& c : cases) {
    tagNET_DATE_INFO date{1, 2, 3};
    gsc::codec::ParseDate(Json::Value(c.text), date);
    EXPECT_EQ(date.nYear, c.expected.nYear) << c.text;
    EXPECT_EQ(date.nMonth, c.expected.nMonth) << c.text;
    EXPECT_EQ(date.nDay, c.expected.nDay) << c.text;
  }
}

TEST(TimeOfDay, MissingOrNullMemberChangesNothing) {
  tagNET_TIME_OF_DAY time{1, 2, 3};
  gsc::codec::ReadTimeIfPresent(J(R"({"Other": "07:05:00", "Null": null})"), "Time", time);
  gsc::codec::ReadTimeIfPresent(J(R"({"Time": null})"), "Time", time);
  EXPECT_EQ(time.nHour, 1);
  EXPECT_EQ(time.nSecond, 3);
}

}  // namespace
