// The rules of the codec frame: enumeration forms, clamped lists, bounded texts, keyed collections.
#include "codec/frame.h"
#include "support/fixtures.h"

namespace {

using gsc::test::J;
using namespace gsc::codec;

enum TestEnum : int { kUnset = 0 };

// Every test object of this file has at most the members "E", "ID", "L", "Null", "Absent", "T".
constexpr auto kTestKeys = Keys("E", "ID", "L", "Null", "Absent", "T");
Silent silent;

Members<Silent, kTestKeys> Read(const Json::Value& json) {
  return MembersOf<kTestKeys>(json, silent);
}
Out<Silent> Write(Json::Value& json) {
  return Out<Silent>{json, silent};
}

TEST(EnumWriters, RangeTestedWritesOneToNAndZeroTestedWritesAllButZero) {
  struct Case {
    int stored;
    const char* range_tested;  // WriteEnumInRange<3>
    const char* zero_tested;   // WriteEnumIfSet
  };
  const Case cases[] = {{0, "{}", "{}"},
                        {1, R"({"E": 0})", R"({"E": 0})"},
                        {3, R"({"E": 2})", R"({"E": 2})"},
                        {9, "{}", R"({"E": 8})"},
                        {-1, "{}", R"({"E": -2})"},
                        {-2147483647 - 1, "{}", R"({"E": 2147483647})"}};
  for (const Case& c : cases) {
    Json::Value a(Json::objectValue), b(Json::objectValue);
    WriteEnumInRange<3>(Write(a), "E", static_cast<TestEnum>(c.stored));
    WriteEnumIfSet(Write(b), "E", static_cast<TestEnum>(c.stored));
    EXPECT_JSON_EQ(c.range_tested, a) << c.stored;
    EXPECT_JSON_EQ(c.zero_tested, b) << c.stored;
  }
}

TEST(EnumReaders, StoreJsonValuePlusOneInRangeAndZeroOtherwise) {
  struct Case {
    const char* json;
    int without_test;  // ReadEnum<3>
    int with_test;     // ReadEnumIfPresent<3>
    int or_keep;       // ReadEnumOrKeep<3>, field preset to 7
  };
  const Case cases[] = {
      {R"({"E": 0})", 1, 1, 1},  {R"({"E": 2})", 3, 3, 3}, {R"({"E": 3})", 0, 0, 0},
      {R"({"E": -1})", 0, 0, 0}, {R"({})", 1, 0, 7},       {R"({"E": null})", 1, 0, 7},
  };
  for (const Case& c : cases) {
    const Json::Value object = J(c.json);
    TestEnum a = static_cast<TestEnum>(7), b = a, d = a;
    ReadEnum<3>(Read(object), GSC_KEY("E"), a);
    ReadEnumIfPresent<3>(Read(object), GSC_KEY("E"), b);
    ReadEnumOrKeep<3>(Read(object), GSC_KEY("E"), d);
    EXPECT_EQ(a, c.without_test) << c.json;
    EXPECT_EQ(b, c.with_test) << c.json;
    EXPECT_EQ(d, c.or_keep) << c.json;
  }
}

TEST(Lists, AreClampedUnsignedAndEmptyOnesAreNullOrAbsentByForm) {
  EXPECT_EQ(ClampCount(4294967295U, 8), 8U);
  EXPECT_EQ(ClampCount(2147483648U, 8), 8U);
  EXPECT_EQ(ClampCount(3, 8), 3U);
  Json::Value object(Json::objectValue);
  const uint32_t four[4] = {0, 1, 2, 3};
  const uint32_t eight[8] = {};
  int written = 0;
  WriteListOrNull(Write(object), "L", 4294967295U, four, [&](const Out<Silent>& e, uint32_t v) {
    e.json = Json::Value(v);
    ++written;
  });
  EXPECT_EQ(written, 4);
  const auto never = [](const Out<Silent>&, uint32_t) { ADD_FAILURE(); };
  WriteListOrNull(Write(object), "Null", 0, eight, never);
  WriteListIfAny(Write(object), "Absent", 0, eight, never);
  EXPECT_JSON_EQ(R"({"L": [0, 1, 2, 3], "Null": null})", object);
}

TEST(WriteText, SendsAnUnterminatedFieldWholeWithoutReadingPastIt) {
  struct {
    char field[4];
    char after[4];
  } record = {{'a', 'b', 'c', 'd'}, {'X', 'Y', 'Z', '\0'}};
  Json::Value object(Json::objectValue);
  WriteText(Write(object), "T", record.field);
  EXPECT_EQ(object["T"].asString(), "abcd");
}

// A keyed collection of records that remember which member they were read from.
struct Named {
  char id[8];
};
void ParseNamed(const Json::Value& json, Named& named) {
  ReadTextIfPresent(Read(json), GSC_KEY("ID"), named.id);
}

TEST(KeyedCollection, ReadsMembersInAscendingByteOrderUpToTheCapacity) {
  const Json::Value result = J(R"({"infos": {"b": {"ID": "b"}, "a": {"ID": "a"},
                                             "B": {"ID": "B"}}})");
  gsc::test::GuardedArray<Named> records(2);
  EXPECT_EQ(ReadKeyedCollection(result, 2, records.data(), silent, ParseNamed), 2U);
  EXPECT_STREQ(records[0].id, "B");
  EXPECT_STREQ(records[1].id, "a");
  EXPECT_TRUE(records.GuardsIntact());
}

TEST(KeyedCollection, InfosOfAnotherTypeRaisesJsonCppsError) {
  Named record{};
  EXPECT_THROW(ReadKeyedCollection(J(R"({"infos": [1]})"), 5, &record, silent, ParseNamed),
               Json::Exception);
  EXPECT_THROW(ReadKeyedCollection(J(R"({"infos": "x"})"), 0, &record, silent, ParseNamed),
               Json::Exception);
}

}  // namespace
