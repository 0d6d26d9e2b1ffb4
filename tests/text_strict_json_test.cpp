// Which texts the text readers take for JSON, and what they say of the others: one table per
// class of text. Each case is put to the strict checker (text::CheckJson) and to the readers,
// plain and reporting, which must agree with it; a refused text must leave the record untouched
// and say where and why, and a taken one must fill the record as JsonCpp's tree of it does.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "guidescreen_codec/json_text.h"
#include "support/tree_differential.h"
#include "text/strict_json.h"

namespace gsc::test {
namespace {

// A text and what the readers must make of it. For a refused text, a line of 0 leaves where it
// is refused unpinned, and a null reason leaves why.
struct Case {
  std::string text;
  bool json;
  unsigned line = 0;
  unsigned column = 0;
  const char* reason = nullptr;
};

Case Taken(std::string text) {
  return {std::move(text), true};
}
Case Refused(std::string text, unsigned line, unsigned column, const char* reason = nullptr) {
  return {std::move(text), false, line, column, reason};
}
// Text with NUL bytes in it.
template <size_t N>
std::string Bytes(const char (&text)[N]) {
  return std::string(text, N - 1);
}
std::string Repeat(const std::string& part, size_t times) {
  std::string text;
  for (size_t i = 0; i < times; ++i) text += part;
  return text;
}

// The checker's and both readers' verdicts on `c.text`, and for a refused text where and why.
void ExpectVerdict(const Case& c) {
  text::JsonProblem problem;
  const bool checked = text::CheckJson(c.text, &problem, nullptr);
  EXPECT_EQ(checked, c.json) << "CheckJson: " << problem.reason;

  Caller<tagNET_OUT_ADD_ONE_PROGRAMME> added;
  tagNET_OUT_ADD_ONE_PROGRAMME& one = added.Reset(0x5A);
  const std::string before = added.Snapshot();
  bool refused = false;
  try {
    deserialize_json(c.text, one);
  } catch (const JsonError& e) {
    refused = true;
    EXPECT_EQ(e.line(), problem.line);
    EXPECT_EQ(e.column(), problem.column);
    EXPECT_EQ(e.reason(), problem.reason);
    EXPECT_EQ(e.what(), "line " + std::to_string(e.line()) + ", column " +
                            std::to_string(e.column()) + ": " + e.reason());
    if (c.line != 0) {
      EXPECT_EQ(e.line(), c.line);
      EXPECT_EQ(e.column(), c.column);
    }
    if (c.reason != nullptr) {
      EXPECT_EQ(e.reason(), c.reason);
    }
  } catch (const Json::Exception&) {
    // JSON all the same: a value the reader cannot convert.
  }
  EXPECT_EQ(!refused, c.json) << "the plain reader";
  if (refused) {
    EXPECT_TRUE(added.Snapshot() == before) << "a refused text touched the record";
  }

  Caller<tagNET_OUT_GET_ALL_PROGRAMMES> listed;
  tagNET_OUT_GET_ALL_PROGRAMMES& all = listed.Reset(0xA5);
  const std::string listedBefore = listed.Snapshot();
  Report report(OnFailure::kSkip);
  const bool read = deserialize_json(c.text, all, report);
  size_t malformed = 0;
  for (const Finding& f : report.findings()) malformed += f.kind == FindingKind::kJsonMalformed;
  if (c.json) {
    EXPECT_EQ(malformed, 0U) << report;
    return;
  }
  EXPECT_FALSE(read);
  EXPECT_TRUE(listed.Snapshot() == listedBefore) << "a refused text touched the record";
  ASSERT_EQ(report.size(), 1U) << report;
  EXPECT_EQ(report.findings()[0].kind, FindingKind::kJsonMalformed);
  EXPECT_EQ(report.findings()[0].path, "");
  if (!checked) {
    EXPECT_EQ(report.findings()[0].detail, "line " + std::to_string(problem.line) + ", column " +
                                               std::to_string(problem.column) + ": " +
                                               problem.reason);
  }
}

// A whole text: its verdict, and when taken, the records of the readers against the tree's.
void ExpectText(const Case& c) {
  SCOPED_TRACE(testing::PrintToString(c.text.substr(0, 80)));
  ExpectVerdict(c);
  if (c.json) {
    ExpectSameAsTree<tagNET_OUT_ADD_ONE_PROGRAMME>(c.text);
    ExpectSameAsTree<tagNET_OUT_GET_ALL_PROGRAMMES>(c.text);
  }
}

// A value: as a whole text, and inside answers where the readers take it as a text, a number and
// a flag. Refused inside an answer, it is refused where it stands there.
void ExpectValue(const Case& c) {
  ExpectText(c);
  const std::string prefix = "{\"ProgrammeID\": ";
  Case inside = c;
  inside.text = prefix + c.text + "}";
  if (inside.line == 1) inside.column += prefix.size();
  // What follows a value inside an object is taken for the object's next token.
  if (c.reason != nullptr && std::string(c.reason) == "unexpected text after the value")
    inside.reason = "',' or '}' was expected";
  ExpectText(inside);
  if (c.json) {
    ExpectText(Taken(R"({"infos": {"p": {"ProgrammeName": )" + c.text + R"(, "Enable": )" + c.text +
                     R"(, "Ordinary": {"Windows": [{"WinID": )" + c.text + R"(, "Volume": )" +
                     c.text + "}]}}}}"));
  }
}

TEST(StrictJson, Numbers) {
  const Case cases[] = {
      Taken("0"),
      Taken("-0"),
      Taken("-0.0"),
      Taken("1E2"),
      Taken("1e+2"),
      Taken("1E-2"),
      Taken("-1.5e-3"),
      Taken("2147483647"),
      Taken("2147483648"),
      Taken("-2147483649"),
      Taken("2147483648.5"),
      Taken("9223372036854775807"),
      Taken("9223372036854775808"),
      Taken("18446744073709551615"),
      Taken("18446744073709551616"),
      Taken("-9223372036854775808"),
      Taken("-9223372036854775809"),
      Taken("123456789012345678901234567890"),
      Taken("1" + std::string(308, '0')),  // 1e308 written out: a real
      Taken("1.7976931348623157e308"),
      Taken("-1.7976931348623157e308"),
      Taken("0.01e309"),
      // Too small for a double reads as 0 (or the nearest subnormal); only too large is refused.
      Taken("1e-400"),
      Taken("-1e-400"),
      Taken("4.9e-324"),
      Taken("2.5e-324"),
      Taken("0e400"),
      Refused("01", 1, 1, "invalid number: leading zero"),
      Refused("-01", 1, 1, "invalid number: leading zero"),
      Refused("00", 1, 1, "invalid number: leading zero"),
      Refused("-", 1, 2, "invalid number: a digit was expected"),
      Refused("- 1", 1, 2, "invalid number: a digit was expected"),
      Refused("-.5", 1, 2, "invalid number: a digit was expected"),
      Refused("+1", 1, 1, "unexpected character: a value was expected"),
      Refused(".5", 1, 1, "unexpected character: a value was expected"),
      Refused("1.", 1, 3, "invalid number: a digit must follow '.'"),
      Refused("1.e5", 1, 3, "invalid number: a digit must follow '.'"),
      Refused("1e", 1, 3, "invalid number: a digit must follow the exponent"),
      Refused("1e+", 1, 4, "invalid number: a digit must follow the exponent"),
      Refused("1E-", 1, 4, "invalid number: a digit must follow the exponent"),
      Refused("1e1.5", 1, 4, "unexpected text after the value"),
      Refused("0x1F", 1, 2, "unexpected text after the value"),
      Refused("1_000", 1, 2, "unexpected text after the value"),
      Refused("1e400", 1, 1, "number out of range"),
      Refused("-1e400", 1, 1, "number out of range"),
      Refused("1.7976931348623159e308", 1, 1, "number out of range"),
      Refused("1" + std::string(309, '0'), 1, 1, "number out of range"),
      Refused("0.1e310", 1, 1, "number out of range"),
  };
  for (const Case& c : cases) ExpectValue(c);
}

// Where JsonCpp has no 64-bit integer for a number, it reads a real; the texts show which.
TEST(StrictJson, IntegersBeyondSixtyFourBitsAreReadAsReals) {
  const struct {
    const char* number;
    const char* text;
  } cases[] = {
      {"18446744073709551615", "18446744073709551615"},
      {"18446744073709551616", "1.8446744073709552e+19"},
      {"-9223372036854775808", "-9223372036854775808"},
      {"-9223372036854775809", "-9.2233720368547758e+18"},
      {"123456789012345678901234567890", "1.2345678901234568e+29"},
      {"-0", "0"},
      {"-0.0", "-0.0"},
      {"1e-400", "0.0"},
      {"1E2", "100.0"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.number);
    tagNET_OUT_ADD_ONE_PROGRAMME out{};
    out.dwSize = sizeof out;
    EXPECT_TRUE(deserialize_json(std::string("{\"ProgrammeID\": ") + c.number + "}", out));
    EXPECT_STREQ(out.szProgrammeID, c.text);
  }
}

TEST(StrictJson, TextsAndEscapes) {
  const Case cases[] = {
      Taken(R"("")"),
      Taken(R"("\"\\\/\b\f\n\r\t")"),
      Taken(R"("\u0041\u00e9\u20AC\uFFFF\uFEFF")"),
      Taken(R"("\ud83d\ude00")"),
      Taken(R"("\uD83D\uDE00")"),
      Taken(R"("\uDBFF\uDFFF")"),
      Taken(R"("a\u0000b")"),
      Taken("\"a\x7F\""),  // DEL is no control character to JSON
      Taken(R"("'")"),
      Refused(R"("\x41")", 1, 2, "invalid escape"),
      Refused(R"("\a")", 1, 2, "invalid escape"),
      Refused(R"("\'")", 1, 2, "invalid escape"),
      Refused(R"("\U0041")", 1, 2, "invalid escape"),
      Refused(R"("\0")", 1, 2, "invalid escape"),
      Refused(R"("\u12G4")", 1, 2, "invalid \\u escape: four hex digits must follow"),
      Refused(R"("\u123")", 1, 2, "invalid \\u escape: four hex digits must follow"),
      Refused(R"("\u")", 1, 2, "invalid \\u escape: four hex digits must follow"),
      Refused(R"("\u00)", 1, 2, "invalid \\u escape: four hex digits must follow"),
      Refused(R"("\ud800")", 1, 2, "lone surrogate escape"),
      Refused(R"("\udc00")", 1, 2, "lone surrogate escape"),
      Refused(R"("\udfff")", 1, 2, "lone surrogate escape"),
      Refused(R"("x\ud800y")", 1, 3, "lone surrogate escape"),
      Refused(R"("\ud800\u0041")", 1, 2, "lone surrogate escape"),
      Refused(R"("\ud800\ud800")", 1, 2, "lone surrogate escape"),
      Refused(R"("\ud800\n")", 1, 2, "lone surrogate escape"),
      Refused(R"("\ude00\ud83d")", 1, 2, "lone surrogate escape"),
      Refused("\"a\x01\"", 1, 3, "control character in a text: it must be escaped"),
      Refused("\"\t\"", 1, 2, "control character in a text: it must be escaped"),
      Refused("\"a\nb\"", 1, 3, "control character in a text: it must be escaped"),
      Refused("\"\x1F\"", 1, 2, "control character in a text: it must be escaped"),
      Refused(Bytes("\"\0\""), 1, 2, "control character in a text: it must be escaped"),
      Refused(R"("abc)", 1, 1, "unterminated text"),
  };
  for (const Case& c : cases) ExpectValue(c);
  // An escape that the end of the text cuts short.
  ExpectText(Refused(R"("abc\)", 1, 5, "unterminated text"));
}

TEST(StrictJson, Utf8) {
  const Case cases[] = {
      Taken("\"\xC2\x80\xDF\xBF\""),                   // U+0080, U+07FF
      Taken("\"\xC3\xA9\""),                           // two bytes
      Taken("\"\xE0\xA0\x80\xEF\xBF\xBF\""),           // U+0800, U+FFFF
      Taken("\"\xE2\x82\xAC\""),                       // three bytes
      Taken("\"\xED\x9F\xBF\xEE\x80\x80\""),           // either side of the surrogates
      Taken("\"\xEF\xBB\xBF\""),                       // U+FEFF inside a text is a character
      Taken("\"\xF0\x90\x80\x80\""),                   // U+10000
      Taken("\"\xF0\x9F\x98\x80\""),                   // four bytes
      Taken("\"\xF4\x8F\xBF\xBF\""),                   // U+10FFFF
      Refused("\"\xC0\x80\"", 1, 2, "invalid UTF-8"),  // overlong NUL
      Refused("\"\xC1\xBF\"", 1, 2, "invalid UTF-8"),
      Refused("\"\xE0\x80\x80\"", 1, 2, "invalid UTF-8"),
      Refused("\"\xE0\x9F\xBF\"", 1, 2, "invalid UTF-8"),
      Refused("\"\xF0\x80\x80\x80\"", 1, 2, "invalid UTF-8"),
      Refused("\"\xF0\x8F\xBF\xBF\"", 1, 2, "invalid UTF-8"),
      Refused("\"\xED\xA0\x80\"", 1, 2, "invalid UTF-8"),  // U+D800 encoded
      Refused("\"\xED\xBF\xBF\"", 1, 2, "invalid UTF-8"),
      Refused("\"\xF4\x90\x80\x80\"", 1, 2, "invalid UTF-8"),  // beyond U+10FFFF
      Refused("\"\xF5\x80\x80\x80\"", 1, 2, "invalid UTF-8"),
      Refused("\"\xF8\x88\x80\x80\x80\"", 1, 2, "invalid UTF-8"),
      Refused("\"\xFE\"", 1, 2, "invalid UTF-8"),
      Refused("\"\xFF\"", 1, 2, "invalid UTF-8"),
      Refused("\"\xC3\"", 1, 2, "invalid UTF-8"),  // cut short by the quote
      Refused("\"\xE2\x82\"", 1, 2, "invalid UTF-8"),
      Refused("\"\xF0\x9F\x98\"", 1, 2, "invalid UTF-8"),
      Refused("\"\xE2\x82", 1, 2, "invalid UTF-8"),  // cut short by the end
      Refused("\"\x80\"", 1, 2, "invalid UTF-8"),    // a stray continuation
      Refused("\"a\xC3\xA9\x80\"", 1, 5, "invalid UTF-8"),
      Refused("\"\xC3\xC3\xA9\"", 1, 2, "invalid UTF-8"),
      // Outside texts, no byte beyond ASCII is JSON.
      Refused("\x80", 1, 1, "unexpected character: a value was expected"),
      Refused("[1]\xC3\xA9", 1, 4, "unexpected text after the value"),
      Refused("[\xEF\xBB\xBF]", 1, 2, "unexpected character: a value was expected"),
  };
  for (const Case& c : cases) ExpectValue(c);
  // Member names are texts too.
  ExpectText(Taken("{\"\xC3\xA9\": 1, \"\xF0\x9F\x98\x80\": 2}"));
  ExpectText(Refused("{\"a\xFF\": 1}", 1, 4, "invalid UTF-8"));
  ExpectText(Refused("{\xC3\xA9: 1}", 1, 2, "a member name was expected"));
}

TEST(StrictJson, Structure) {
  const Case cases[] = {
      Taken("{}"),
      Taken("[]"),
      Taken("null"),
      Taken("true"),
      Taken("false"),
      Taken(R"("x")"),
      Taken("[[],{},[{}],[null,true,false]]"),
      Taken(R"({"ProgrammeID": "a", "ProgrammeID": "b"})"),  // the last one wins
      Taken(R"({"": 0})"),
      Refused("[1,]", 1, 4, "unexpected character: a value was expected"),
      Refused(R"({"a":1,})", 1, 8, "a member name was expected"),
      Refused("[,1]", 1, 2, "unexpected character: a value was expected"),
      Refused("[1,,2]", 1, 4, "unexpected character: a value was expected"),
      Refused("{,}", 1, 2, "a member name was expected"),
      Refused("[1 2]", 1, 4, "',' or ']' was expected"),
      Refused(R"({"a":1 "b":2})", 1, 8, "',' or '}' was expected"),
      Refused(R"({"a" 1})", 1, 6, "':' was expected after the member name"),
      Refused(R"({"a"})", 1, 5, "':' was expected after the member name"),
      Refused(R"({"a"=1})", 1, 5, "':' was expected after the member name"),
      Refused(R"({"a"::1})", 1, 6, "unexpected character: a value was expected"),
      Refused("// note\n{}", 1, 1, "unexpected character: a value was expected"),
      Refused("{} // note", 1, 4, "unexpected text after the value"),
      Refused("/* note */ {}", 1, 1, "unexpected character: a value was expected"),
      Refused("{/* note */}", 1, 2, "a member name was expected"),
      Refused("[1 /* note */]", 1, 4, "',' or ']' was expected"),
      Refused("# note\n{}", 1, 1, "unexpected character: a value was expected"),
      Refused("{'a': 1}", 1, 2, "a member name was expected"),
      Refused("['a']", 1, 2, "unexpected character: a value was expected"),
      Refused("{a: 1}", 1, 2, "a member name was expected"),
      Refused("{1: 1}", 1, 2, "a member name was expected"),
      Refused("{} {}", 1, 4, "unexpected text after the value"),
      Refused("1 2", 1, 3, "unexpected text after the value"),
      Refused(R"("a" "b")", 1, 5, "unexpected text after the value"),
      Refused("{}[]", 1, 3, "unexpected text after the value"),
      Refused("null null", 1, 6, "unexpected text after the value"),
      Refused("", 1, 1, "unexpected end of text: a value was expected"),
      Refused(" \n\t\r ", 2, 4, "unexpected end of text: a value was expected"),
      Refused("NaN", 1, 1, "unexpected character: a value was expected"),
      Refused("Infinity", 1, 1, "unexpected character: a value was expected"),
      Refused("-Infinity", 1, 2, "invalid number: a digit was expected"),
      Refused("[nan]", 1, 2, "unexpected character: a value was expected"),
      Refused("undefined", 1, 1, "unexpected character: a value was expected"),
      Refused("True", 1, 1, "unexpected character: a value was expected"),
      Refused("nul", 1, 1, "unexpected character: a value was expected"),
      Refused("truex", 1, 5, "unexpected text after the value"),
      Refused("[1", 1, 3, "unexpected end of text: ',' or ']' was expected"),
      Refused("{", 1, 2, "unexpected end of text: a member name was expected"),
      Refused(R"({"a")", 1, 5, "unexpected end of text: ':' was expected"),
      Refused(R"({"a":)", 1, 6, "unexpected end of text: a value was expected"),
      Refused(R"({"a":1)", 1, 7, "unexpected end of text: ',' or '}' was expected"),
      Refused("]", 1, 1, "unexpected character: a value was expected"),
      Refused("[}", 1, 2, "unexpected character: a value was expected"),
      Refused("{]", 1, 2, "a member name was expected"),
      Refused("[1}", 1, 3, "',' or ']' was expected"),
  };
  for (const Case& c : cases) ExpectText(c);
}

TEST(StrictJson, WhiteSpace) {
  const Case cases[] = {
      Taken(" \t\n\r{ \t\n\r\"ProgrammeID\" \t\n\r: \t\n\r[ \t\n\r1 \t\n\r, \t\n\r2 \t\n\r] "
            "\t\n\r} \t\n\r"),
      Taken("\r\n{}\r\n"),
      Refused("\f{}", 1, 1, "unexpected character: a value was expected"),
      Refused("{}\f", 1, 3, "unexpected text after the value"),
      Refused("[1,\f2]", 1, 4, "unexpected character: a value was expected"),
      Refused("{\v}", 1, 2, "a member name was expected"),
      Refused("\v{}", 1, 1, "unexpected character: a value was expected"),
      Refused("\xC2\xA0{}", 1, 1, "unexpected character: a value was expected"),  // U+00A0
      Refused("{}\xC2\xA0", 1, 3, "unexpected text after the value"),
      Refused("[1,\xC2\xA0"
              "2]",
              1, 4, "unexpected character: a value was expected"),
      Refused("\xE2\x80\xA8{}", 1, 1, "unexpected character: a value was expected"),  // U+2028
      Refused("\xE3\x80\x80{}", 1, 1, "unexpected character: a value was expected"),  // U+3000
      Refused(Bytes("{}\0"), 1, 3, "unexpected text after the value"),
      // Lines end at line feeds only; columns count bytes.
      Refused("{\n\"a\":\n}", 3, 1, "unexpected character: a value was expected"),
      Refused("{\r\n\"a\":}", 2, 5, "unexpected character: a value was expected"),
      Refused("\r\r[1,]", 1, 6, "unexpected character: a value was expected"),
      Refused("[\"\xC3\xA9\xE2\x82\xAC\",]", 1, 10, "unexpected character: a value was expected"),
  };
  for (const Case& c : cases) ExpectText(c);
}

TEST(StrictJson, NestingUpToAThousandLevels) {
  const std::string unit = "[{\"a\":";  // two levels
  // As JsonCpp counts levels, a value inside the deepest container is a level of its own: a
  // thousand containers are taken only when the deepest is empty.
  const Case cases[] = {
      Taken(Repeat("[", 1000) + Repeat("]", 1000)),
      Taken(Repeat("{\"a\":", 999) + "{}" + Repeat("}", 999)),
      Taken(Repeat(unit, 499) + "[{}]" + Repeat("}]", 499)),
      Taken("{\"infos\": {\"p\": " + Repeat("[", 998) + Repeat("]", 998) + "}}"),
      Taken(Repeat("[", 999) + "1" + Repeat("]", 999)),
      Taken(Repeat("{\"a\":", 999) + "1" + Repeat("}", 999)),
      Refused(Repeat("[", 1000) + "1" + Repeat("]", 1000), 1, 1001,
              "nesting deeper than 1000 levels"),
      Refused(Repeat("{\"a\":", 1000) + "1" + Repeat("}", 1000), 1, 5001,
              "nesting deeper than 1000 levels"),
      Refused(Repeat(unit, 500) + "1" + Repeat("}]", 500), 1, 3001,
              "nesting deeper than 1000 levels"),
      Refused(Repeat("[", 1001) + Repeat("]", 1001), 1, 1001, "nesting deeper than 1000 levels"),
      Refused(Repeat("{\"a\":", 1001) + "1" + Repeat("}", 1001), 1, 5001,
              "nesting deeper than 1000 levels"),
      Refused("[" + Repeat(unit, 500) + "1" + Repeat("}]", 500) + "]", 1, 2997,
              "nesting deeper than 1000 levels"),
      Refused("{\"infos\": {\"p\": " + Repeat("[", 999) + Repeat("]", 999) + "}}", 1, 1015,
              "nesting deeper than 1000 levels"),
      // Refused where the limit is passed, however deep the text goes on.
      Refused(Repeat("[", 100000), 1, 1001, "nesting deeper than 1000 levels"),
  };
  for (const Case& c : cases) ExpectText(c);
}

TEST(StrictJson, ByteOrderMark) {
  const std::string mark = "\xEF\xBB\xBF";
  const Case cases[] = {
      Taken(mark + "{}"),
      Taken(mark + R"({"ProgrammeID": "P", "infos": {"P": {"ProgrammeID": "P"}}})"),
      Taken(mark + " 1 "),
      Refused(" " + mark + "{}", 1, 2, "unexpected character: a value was expected"),
      Refused(mark, 1, 4, "unexpected end of text: a value was expected"),
      Refused(mark + mark + "{}", 1, 4, "unexpected character: a value was expected"),
      Refused("{}" + mark, 1, 3, "unexpected text after the value"),
      Refused("\xEF\xBB{}", 1, 1, "unexpected character: a value was expected"),
      Refused("\xFE\xFF{}", 1, 1, "unexpected character: a value was expected"),  // UTF-16's
      // The mark's bytes count in the column.
      Refused(mark + "[1,]", 1, 7, "unexpected character: a value was expected"),
      Refused(mark + "\n[1,]", 2, 4, "unexpected character: a value was expected"),
  };
  for (const Case& c : cases) ExpectText(c);
}

}  // namespace
}  // namespace gsc::test
