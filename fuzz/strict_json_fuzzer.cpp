// Fuzzes the strict reading of JSON texts (text/strict_json.h) with arbitrary bytes, against the
// text readers, which parse with another parser and fall back on it only where that one refuses,
// and against JsonCpp.
//
// - A text reader reads a text exactly when CheckJson accepts it, with or without a byte order
//   mark in front; where it refuses, its JsonError carries CheckJson's line, column and reason,
//   and the place lies within the text.
// - For an accepted text, the integers CheckJson lists as wide are exactly the integer literals
//   that fit neither int64 nor uint64 (JsonCpp reads those as reals), by their end offsets.
// - JsonCpp's reader, lenient as it is, reads every accepted text whose values sit in fewer than
//   1000 containers (DeepestValue in fuzz_support.h says why not the others), with nothing after
//   the value.
#include <json/json.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "fuzz/fuzz_support.h"
#include "guidescreen_codec/json_text.h"
#include "text/strict_json.h"

namespace gsc::fuzz {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

struct Reading {
  bool read = false;
  unsigned line = 0;
  unsigned column = 0;
  std::string reason;
};

// What a text reader makes of `text`. MODIFY_ONE_PROGRAMME's answer carries nothing, so only the
// parse can fail.
Reading ReadText(std::string_view text) {
  tagNET_OUT_MODIFY_ONE_PROGRAMME out{};
  out.dwSize = sizeof out;
  Reading reading;
  try {
    reading.read = deserialize_json(text, out);
  } catch (const JsonError& e) {
    reading.line = e.line();
    reading.column = e.column();
    reading.reason = e.reason();
  }
  return reading;
}

void PrintProblem(const char* who, unsigned line, unsigned column, const std::string& reason) {
  std::fprintf(stderr, "%s: line %u, column %u: %s\n", who, line, column, reason.c_str());
}

// The reader's verdict on `text` must be CheckJson's, `problem` when it refuses.
void SameVerdict(std::string_view text, bool accepted, const text::JsonProblem& problem,
                 const char* which) {
  const Reading reading = ReadText(text);
  if (reading.read != accepted) {
    if (!accepted) PrintProblem("strict reading", problem.line, problem.column, problem.reason);
    if (!reading.read) PrintProblem("text reader", reading.line, reading.column, reading.reason);
    Fail("the text reader and the strict reading disagree on", which);
  }
  if (!accepted && (reading.line != problem.line || reading.column != problem.column ||
                    reading.reason != problem.reason)) {
    PrintProblem("strict reading", problem.line, problem.column, problem.reason);
    PrintProblem("text reader", reading.line, reading.column, reading.reason);
    Fail("the text reader refuses otherwise than the strict reading on", which);
  }
}

// The place a refusal names must be in the text (the end of the text included), with a reason.
void CheckPlace(std::string_view text, const text::JsonProblem& problem) {
  if (problem.line == 0 || problem.column == 0 || problem.reason.empty())
    Fail("a refusal without a place or a reason");
  size_t lineStart = 0;
  for (uint32_t line = 1; line < problem.line; ++line) {
    const size_t newline = text.find('\n', lineStart);
    if (newline == std::string_view::npos) Fail("a refusal past the last line");
    lineStart = newline + 1;
  }
  const size_t lineEnd = std::min(text.find('\n', lineStart), text.size());
  if (problem.column - 1 > lineEnd - lineStart) Fail("a refusal past the end of its line");
}

// The end offsets of the integer literals of an accepted text that fit neither int64 nor uint64.
std::vector<size_t> WideIntegers(std::string_view text) {
  std::vector<size_t> wide;
  bool inText = false;
  for (size_t i = 0; i < text.size(); ++i) {
    const char ch = text[i];
    if (inText) {
      if (ch == '\\') {
        ++i;
      } else if (ch == '"') {
        inText = false;
      }
      continue;
    }
    if (ch == '"') {
      inText = true;
      continue;
    }
    if (ch != '-' && (ch < '0' || ch > '9')) continue;
    size_t end = i;
    bool integer = true;
    while (end < text.size() &&
           (text[end] == '-' || text[end] == '+' || text[end] == '.' || text[end] == 'e' ||
            text[end] == 'E' || (text[end] >= '0' && text[end] <= '9'))) {
      if (text[end] == '.' || text[end] == 'e' || text[end] == 'E') integer = false;
      ++end;
    }
    if (integer) {
      const char* first = text.data() + i;
      const char* last = text.data() + end;
      std::errc ec;
      if (ch == '-') {
        int64_t value = 0;
        ec = std::from_chars(first, last, value).ec;
      } else {
        uint64_t value = 0;
        ec = std::from_chars(first, last, value).ec;
      }
      if (ec == std::errc::result_out_of_range) wide.push_back(end);
    }
    i = end - 1;
  }
  return wide;
}

}  // namespace
}  // namespace gsc::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace gsc::fuzz;
  const std::string_view text(reinterpret_cast<const char*>(data), size);

  gsc::text::JsonProblem problem;
  std::vector<size_t> wide;
  const bool accepted = gsc::text::CheckJson(text, &problem, &wide);
  SameVerdict(text, accepted, problem, "the text");
  if (!accepted) CheckPlace(text, problem);

  // A byte order mark in front changes nothing but the columns of line 1.
  if (text.substr(0, kByteOrderMark.size()) != kByteOrderMark) {
    const std::string marked = std::string(kByteOrderMark) + std::string(text);
    gsc::text::JsonProblem markedProblem;
    if (gsc::text::CheckJson(marked, &markedProblem, nullptr) != accepted)
      Fail("a byte order mark changes the strict reading's verdict");
    if (!accepted) {
      const uint32_t shift = problem.line == 1 ? kByteOrderMark.size() : 0;
      if (markedProblem.line != problem.line || markedProblem.column != problem.column + shift ||
          markedProblem.reason != problem.reason)
        Fail("a byte order mark moves the strict reading's refusal");
    }
    SameVerdict(marked, accepted, markedProblem, "the text after a byte order mark");
  }
  if (!accepted) return 0;

  if (wide != WideIntegers(text)) Fail("the wide integers listed are not the text's");

  if (DeepestValue(text) >= 1000) return 0;
  Json::CharReaderBuilder builder;
  builder["failIfExtra"] = true;
  builder["rejectDupKeys"] = false;
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  Json::Value value;
  std::string errors;
  try {
    if (!reader->parse(text.data(), text.data() + text.size(), &value, &errors)) {
      std::fprintf(stderr, "JsonCpp: %s\n", errors.c_str());
      Fail("JsonCpp refuses a text the strict reading accepts");
    }
  } catch (const Json::Exception& e) {
    Fail("JsonCpp threw on a text the strict reading accepts:", e.what());
  }
  return 0;
}
