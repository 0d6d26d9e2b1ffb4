// The default room of gscodec decode and check, found from the answer's text without a tree: the
// room a tree of the same text would give, duplicate and escaped names included, and no harm
// from text that is not JSON (the reader refuses that text after).
#include <gtest/gtest.h>
#include <json/json.h>

#include <algorithm>
#include <string>

#include "describe/answer_room.h"
#include "guidescreen_codec/capi.h"
#include "support/fixtures.h"

namespace {

using gsc::fields::Room;
using gsc::fields::RoomForAnswerText;

struct Case {
  std::string text;
  uint32_t records;
  uint32_t elements;  // of the longest "Elements" array
};

// What the room was when it was found from the answer's JsonCpp tree: the reference.
uint32_t MostElements(const Json::Value& value) {
  uint32_t most = 0;
  if (value.isObject()) {
    for (auto it = value.begin(); it != value.end(); ++it) {
      if (it.name() == "Elements" && it->isArray()) most = std::max(most, it->size());
      most = std::max(most, MostElements(*it));
    }
  } else if (value.isArray()) {
    for (const Json::Value& element : value) most = std::max(most, MostElements(element));
  }
  return most;
}

void ExpectRoom(const Case& c) {
  SCOPED_TRACE(c.text);
  const Room room = RoomForAnswerText(c.text);
  EXPECT_EQ(room.capacity, c.records);
  EXPECT_EQ(room.elements_buffer, gsc_element_buffer_size(c.elements));
  const Json::Value tree = gsc::test::J(c.text);
  static constexpr char kInfos[] = "infos";
  const Json::Value* infos =
      tree.isObject() ? tree.find(kInfos, kInfos + sizeof kInfos - 1) : nullptr;
  EXPECT_EQ(c.records, infos != nullptr && infos->isObject() ? infos->size() : 0U);
  EXPECT_EQ(c.elements, MostElements(tree));
}

TEST(AnswerRoom, RecordsAreTheDistinctNamesOfTheRootsLastInfosObject) {
  const Case cases[] = {
      {"{}", 0, 0},
      {"null", 0, 0},
      {"[{\"infos\": {\"a\": {}}}]", 0, 0},
      {R"({"infos": {}})", 0, 0},
      {R"({"infos": {"a": {}, "b": 1, "c": null}})", 3, 0},
      {R"({"infos": {"a": {}, "b": {}, "a": {}}})", 2, 0},
      {R"({"infos": {"a": {}}, "infos": {"b": {}, "c": {}}})", 2, 0},
      {R"({"infos": {"a": {}, "b": {}}, "infos": 5})", 0, 0},
      {R"({"infos": ["a", "b", "c"]})", 0, 0},
      {R"({"x": {"infos": {"a": {}}}})", 0, 0},
      // Names are compared as a tree holds them: unescaped, a NUL being a byte like any other.
      {R"({"infos": {"\u0061": {}, "a": {}, "\/": {}, "/": {}}})", 2, 0},
      {R"({"infos": {"\ud83d\ude00": {}, "😀": {}, "\u00e9": {}, "é": {}}})", 2, 0},
      {R"({"infos": {"a\u0000": {}, "a": {}, "\"": {}, "\\": {}}})", 4, 0},
      {R"({"\u0069nfos": {"a": {}}})", 1, 0},
      {"\xEF\xBB\xBF{\"infos\": {\"a\": {}}}", 1, 0},
  };
  for (const Case& c : cases) ExpectRoom(c);
}

TEST(AnswerRoom, ElementBuffersTakeTheLongestElementsArrayATreeWouldHold) {
  const Case cases[] = {
      {R"({"Elements": [1, 2, 3]})", 0, 3},
      {R"({"Elements": {"a": 1, "b": 2}})", 0, 0},
      {R"({"Elements": "[1, 2, 3]"})", 0, 0},
      {R"({"infos": {"p": {"Ordinary": {"Windows": [{"Elements": [1, 2]},
          {"Elements": [{}, {}, {}, {}]}]}}, "q": {"Elements": []}}})",
       2, 4},
      {R"([{"Elements": [1, 2]}, [[{"Elements": [1, 2, 3]}]]])", 0, 3},
      {R"({"Elements": [{"Elements": [1, 2, 3, 4]}, 2]})", 0, 4},
      {R"({"Elem\u0065nts": [1, 2]})", 0, 2},
      // Only the last of duplicate names is in a tree, with everything under it.
      {R"({"Elements": [1, 2, 3], "Elements": [1]})", 0, 1},
      {R"({"Elements": [1, 2, 3], "Elements": null})", 0, 0},
      {R"({"w": {"Elements": [1, 2, 3, 4, 5]}, "x": 1, "w": {"Elements": [1]}})", 0, 1},
      {R"({"w": {"Elements": [1]}, "w\u0000": {"Elements": [1, 2]}})", 0, 2},
      // Brackets, quotes and the name inside texts are text.
      {R"({"a": "[\"Elements\": [1, 2, 3, 4]", "Elements": ["]", "\\", "\"", "}"]})", 0, 4},
  };
  for (const Case& c : cases) ExpectRoom(c);
}

TEST(AnswerRoom, TextThatIsNotJsonGivesBoundedRoomAndNoFault) {
  const std::string texts[] = {
      "",
      "   ",
      R"({"infos": {"a": {}, "b")",
      R"({"infos": {"a": {}, "b": [1, 2)",
      R"({"Elements": [1, 2, 3)",
      R"({"a": "unterminated)",
      "{\"a\": \"escape at the end\\",
      R"({"infos" {"a": {}}})",
      R"(}}}]]])",
      R"({"infos": {"a": {},}})",
      std::string(100000, '['),
      std::string(100000, '{'),
      "[" + std::string(5000, ',') + "]",
  };
  for (const std::string& text : texts) {
    SCOPED_TRACE(text.substr(0, 40));
    const Room room = RoomForAnswerText(text);
    EXPECT_LE(room.capacity, text.size());
    EXPECT_LE(room.elements_buffer, gsc_element_buffer_size(static_cast<uint32_t>(text.size())));
  }
}

}  // namespace
