// Rectangles and colours; the time and date texts are held to printf and scanf in
// codec_format_test.cpp, so only the presence rule is checked here.
#include "codec/field_codecs.h"
#include "codec/frame.h"
#include "support/fixtures.h"

namespace {

using gsc::test::J;

TEST(JsonRect, PacksFourIntegersInFieldOrder) {
  Json::Value rect, color;
  EXPECT_TRUE(JsonRect::pack<tagNET_RECT>(rect, tagNET_RECT{0, 0, 1920, 1080}));
  EXPECT_TRUE(JsonColor::pack<tagQX_COLOR_RGBA>(color, tagQX_COLOR_RGBA{255, 0, 0, 255}));
  EXPECT_JSON_EQ("[0, 0, 1920, 1080]", rect);
  EXPECT_JSON_EQ("[255, 0, 0, 255]", color);
}

TEST(JsonRect, ParsesOnlyArraysOfExactlyFour) {
  for (const char* text : {"[1, 2, 3]", "[1, 2, 3, 4, 5]", "{\"a\": 1}", "7", "null", "[]"}) {
    tagNET_RECT rect{9, 9, 9, 9};
    EXPECT_FALSE(JsonRect::parse(J(text), rect)) << text;
    EXPECT_EQ(rect.nLeft + rect.nTop + rect.nRight + rect.nBottom, 36) << text;
  }
  tagNET_RECT rect{};
  EXPECT_TRUE(JsonRect::parse(J("[1, 2, 3, 4]"), rect));
  EXPECT_EQ(rect.nLeft * 1000 + rect.nTop * 100 + rect.nRight * 10 + rect.nBottom, 1234);
  tagQX_COLOR_RGBA color{};
  EXPECT_TRUE(JsonColor::parse(J("[10, 20, 30, -1]"), color));
  EXPECT_EQ(color.nAlpha, -1);
}

constexpr auto kTimeKeys = gsc::codec::Keys("T");

// An array made in memory by assigning index 3 holds no elements 1 and 2, which read as null.
TEST(FieldArrays, IndexesAnArrayDoesNotHoldReadAsNull) {
  Json::Value sparse;
  sparse[0] = 1;
  sparse[3] = 4;
  tagNET_RECT rect{9, 9, 9, 9};
  EXPECT_TRUE(JsonRect::parse(static_cast<const Json::Value&>(sparse), rect));
  EXPECT_EQ(rect.nLeft * 1000 + rect.nTop * 100 + rect.nRight * 10 + rect.nBottom, 1004);
}

TEST(FieldTexts, AreReadOnlyWhenPresentAndNotNull) {
  tagNET_TIME_OF_DAY time{1, 2, 3};
  tagNET_DATE_INFO date{1, 2, 3};
  gsc::codec::Silent silent;
  for (const char* json : {"{}", R"({"T": null})"}) {
    const Json::Value value = J(json);
    const auto object = gsc::codec::MembersOf<kTimeKeys>(value, silent);
    gsc::codec::ReadTimeIfPresent(object, GSC_KEY("T"), time);
    gsc::codec::ReadDateIfPresent(object, GSC_KEY("T"), date);
  }
  EXPECT_EQ(time.nHour + time.nMinute + time.nSecond + date.nYear + date.nDay, 10);
  const Json::Value partial = J(R"({"T": "07:05"})");
  gsc::codec::ReadTimeIfPresent(gsc::codec::MembersOf<kTimeKeys>(partial, silent), GSC_KEY("T"),
                                time);
  EXPECT_EQ(time.nHour * 10000 + time.nMinute * 100 + time.nSecond, 70503);
}

}  // namespace
