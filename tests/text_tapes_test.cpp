// Short texts are read by the strict reading in one pass, longer ones by the parser: both must
// leave the same values, down to the bits of every number and the bytes of every text.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "codec/members.h"
#include "codec/text_value.h"
#include "text/text_parser.h"

namespace gsc::test {
namespace {

using codec::TextValue;

// The value as a line of text that keeps what matters: types, number bits, text bytes, member
// names in text order (duplicates included) and element counts.
std::string Dump(const TextValue& value) {
  std::string out(1, value.Tag());
  switch (value.Tag()) {
    case 'l':
    case 'u':
    case 'd': {
      uint64_t bits = 0;
      std::memcpy(&bits, value.word() + 1, sizeof bits);
      out += std::to_string(bits);
      break;
    }
    case '"': {
      const char* begin = nullptr;
      const char* end = nullptr;
      value.getString(&begin, &end);
      out += std::to_string(end - begin) + ":" + std::string(begin, end);
      break;
    }
    case '[':
    case '{': {
      out += std::to_string(value.size()) + "(";
      for (const uint64_t* at = value.First(); at != value.End();) {
        if (value.isObject()) {
          const char* name = nullptr;
          uint32_t length = 0;
          TextValue::Name(value.document(), at, &name, &length);
          out += std::string(name, length) + "=";
          ++at;
        }
        out += Dump(TextValue(value.document(), at)) + ",";
        at = TextValue::After(value.document(), at);
      }
      out += ")";
      break;
    }
    default:
      break;
  }
  return out;
}

std::string Read(text::TextParser& parser, const std::string& json) {
  text::JsonProblem problem;
  const codec::TextDocument* document = parser.Parse(json, problem);
  if (document == nullptr) {
    return "refused " + std::to_string(problem.line) + ":" + std::to_string(problem.column) + " " +
           problem.reason;
  }
  return Dump(TextValue::Root(document));
}

TEST(TextTapes, ShortTextsReadAsTheParserReadsThem) {
  const std::string texts[] = {
      "null",
      "true",
      "false",
      "0",
      "-0",
      "-0.0",
      "0.0",
      "1.0",
      "1e2",
      "1E-2",
      "-1.5e+3",
      "9223372036854775807",
      "-9223372036854775808",
      "9223372036854775808",
      "18446744073709551615",
      "18446744073709551616",
      "-9223372036854775809",
      "123456789012345678901234567890",
      "1e-400",
      "-1e-400",
      "4.9e-324",
      "2.4e-324",
      "2.2250738585072011e-308",
      "1.7976931348623157e308",
      "0.1",
      "3.141592653589793238462643",
      "1.00000000000000011102230246251565404236316680908203125",
      "9007199254740993",
      R"("")",
      R"("a\"b\\c\/d\b\f\n\r\t")",
      R"("\u0000\u001f\u007f\u0080\u07ff\u0800\uffff")",
      R"("\ud83d\ude00 \uD834\uDD1E")",
      "\"\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\"",
      R"([])",
      R"({})",
      R"([[],{},[[]],{"":{}}])",
      R"({"a":1,"a":2,"b":[1,2,3],"":null})",
      "\xEF\xBB\xBF {\"x\" : [ 1 , 2 ] } \t\r\n",
      R"({"infos":{"p":{"Enable":true}}})",
      std::string(500, '[') + std::string(500, ']'),
      "[" + std::string(300, '1') + "]",
      // Numbers whose digits outweigh a long exponent: beyond range, and within it.
      "0." + std::string(100001, '0') + "1e1000000",
      "1" + std::string(90000, '0') + "e-90001",
      "-0." + std::string(400, '0') + "1e+100",
      "1" + std::string(400, '0') + "e-100",
      // Refused alike, at the same place.
      "",
      " ",
      "[1,]",
      "01",
      "-",
      "+1",
      "[1 2]",
      "{\"a\" 1}",
      "\"\\uD800\"",
      "\"\\x\"",
      "1e400",
      "\"\xED\xA0\x80\"",
      "\"\x01\"",
      "[",
      "nul",
      "{\"a\":1}}",
      "\xEF\xBB\xBF",
  };
  text::TextParser shortReader;
  shortReader.set_short_text_limit(std::numeric_limits<size_t>::max());
  text::TextParser parser;
  parser.set_short_text_limit(0);
  for (const std::string& json : texts) {
    SCOPED_TRACE(json.substr(0, 80));
    const std::string expected = Read(parser, json);
    EXPECT_EQ(Read(shortReader, json), expected);
  }
}

// Keys of every length the comparison by words treats apart: below eight bytes, eight, between
// eight and sixteen, sixteen, and beyond.
constexpr auto kLengthKeys = codec::Keys("a", "Abcdefg", "Abcdefgh", "Abcdefghi", "Abcdefghijklmno",
                                         "Abcdefghijklmnop", "Abcdefghijklmnopq");

// Which of kLengthKeys the object `json` holds, as a member walk of a parsed text finds them.
std::string KeysFound(text::TextParser& parser, const std::string& json) {
  text::JsonProblem problem;
  const codec::TextDocument* document = parser.Parse(json, problem);
  if (document == nullptr) return "refused";
  codec::Silent silent;
  const auto object = codec::MembersOf<kLengthKeys>(TextValue::Root(document), silent);
  std::string found;
  auto note = [&](const codec::ValueRef<TextValue>& member) {
    found += member.isNull() ? '-' : static_cast<char>('0' + member.asInt());
  };
  note(object[GSC_KEY("a")]);
  note(object[GSC_KEY("Abcdefg")]);
  note(object[GSC_KEY("Abcdefgh")]);
  note(object[GSC_KEY("Abcdefghi")]);
  note(object[GSC_KEY("Abcdefghijklmno")]);
  note(object[GSC_KEY("Abcdefghijklmnop")]);
  note(object[GSC_KEY("Abcdefghijklmnopq")]);
  return found;
}

TEST(TextTapes, MemberNamesMatchKeysByEveryByteAtEveryLength) {
  struct Case {
    std::string json;
    const char* found;
  };
  const Case cases[] = {
      {R"({"a":1,"Abcdefg":2,"Abcdefgh":3,"Abcdefghi":4,"Abcdefghijklmno":5,
           "Abcdefghijklmnop":6,"Abcdefghijklmnopq":7})",
       "1234567"},
      // Unknown names differing in the first, a middle or the last byte, or one byte longer or
      // shorter, each followed by what would match if the comparison read on.
      {R"({"b":1,"bbcdefg":2,"Abcdefgi":3,"Abcdefghj":4,"Abcdefghijklmnn":5})", "-------"},
      {R"({"A":1,"Abcdeff":2,"Abcdeffh":3,"AbcdefgXi":4,"AbcdefgXijklmno":5,
           "AbcdefghijklmnoX":6,"AbcdefghijklmnopX":7})",
       "-------"},
      {R"({"ab":1,"Abcdef":2,"Abcdefghh":3,"Abcdefgh":4,"Abcdefghijklmnop":5})", "--4--5-"},
      {R"({"Abcdefghijklmn":1,"Abcdefghijklmnopqr":2,"Abcdefghijklmnoq":3})", "-------"},
      // A name cut short by an escape decodes to the key.
      {R"({"\u0061":1,"Abcdefgh\u0069":4})", "1--4---"},
  };
  text::TextParser shortReader;
  shortReader.set_short_text_limit(std::numeric_limits<size_t>::max());
  text::TextParser parser;
  parser.set_short_text_limit(0);
  for (const Case& c : cases) {
    SCOPED_TRACE(c.json);
    EXPECT_EQ(KeysFound(parser, c.json), c.found);
    EXPECT_EQ(KeysFound(shortReader, c.json), c.found);
  }
}

}  // namespace
}  // namespace gsc::test
