#include "text/strict_json.h"

#include <charconv>
#include <system_error>

namespace gsc::text {
namespace {

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

int HexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// A recursive-descent reading of the grammar; recursion is bounded by kMaxDepth.
class Checker {
 public:
  Checker(std::string_view text, std::vector<size_t>* wideIntegers)
      : begin_(text.data()),
        at_(text.data()),
        end_(text.data() + text.size()),
        wideIntegers_(wideIntegers) {}

  bool Run() {
    static constexpr char kByteOrderMark[] = "\xEF\xBB\xBF";
    if (end_ - at_ >= 3 && std::string_view(at_, 3) == kByteOrderMark) at_ += 3;
    SkipSpace();
    if (!Value(0)) return false;
    SkipSpace();
    if (at_ != end_) return Fail(at_, "unexpected text after the value");
    return true;
  }

  const char* failedAt() const { return failedAt_; }
  const char* reason() const { return reason_; }

 private:
  bool Fail(const char* at, const char* reason) {
    failedAt_ = at;
    reason_ = reason;
    return false;
  }

  bool AtEnd() const { return at_ == end_; }

  void SkipSpace() {
    while (!AtEnd() && (*at_ == ' ' || *at_ == '\t' || *at_ == '\n' || *at_ == '\r')) ++at_;
  }

  bool Value(int depth) {
    if (AtEnd()) return Fail(at_, "unexpected end of text: a value was expected");
    switch (*at_) {
      case '{':
        return Object(depth);
      case '[':
        return Array(depth);
      case '"':
        return String();
      case 't':
        return Literal("true");
      case 'f':
        return Literal("false");
      case 'n':
        return Literal("null");
      default:
        if (*at_ == '-' || IsDigit(*at_)) return Number();
        return Fail(at_, "unexpected character: a value was expected");
    }
  }

  bool Enter(int depth) {
    if (depth >= kMaxDepth) return Fail(at_, "nesting deeper than 1000 levels");
    ++at_;
    SkipSpace();
    return true;
  }

  bool Object(int depth) {
    if (!Enter(depth)) return false;
    if (!AtEnd() && *at_ == '}') {
      ++at_;
      return true;
    }
    for (;;) {
      if (AtEnd()) return Fail(at_, "unexpected end of text: a member name was expected");
      if (*at_ != '"') return Fail(at_, "a member name was expected");
      if (!String()) return false;
      SkipSpace();
      if (AtEnd()) return Fail(at_, "unexpected end of text: ':' was expected");
      if (*at_ != ':') return Fail(at_, "':' was expected after the member name");
      ++at_;
      SkipSpace();
      if (!Value(depth + 1)) return false;
      SkipSpace();
      if (AtEnd()) return Fail(at_, "unexpected end of text: ',' or '}' was expected");
      if (*at_ == '}') {
        ++at_;
        return true;
      }
      if (*at_ != ',') return Fail(at_, "',' or '}' was expected");
      ++at_;
      SkipSpace();
    }
  }

  bool Array(int depth) {
    if (!Enter(depth)) return false;
    if (!AtEnd() && *at_ == ']') {
      ++at_;
      return true;
    }
    for (;;) {
      if (!Value(depth + 1)) return false;
      SkipSpace();
      if (AtEnd()) return Fail(at_, "unexpected end of text: ',' or ']' was expected");
      if (*at_ == ']') {
        ++at_;
        return true;
      }
      if (*at_ != ',') return Fail(at_, "',' or ']' was expected");
      ++at_;
      SkipSpace();
    }
  }

  bool Literal(std::string_view word) {
    if (static_cast<size_t>(end_ - at_) < word.size() || std::string_view(at_, word.size()) != word)
      return Fail(at_, "unexpected character: a value was expected");
    at_ += word.size();
    return true;
  }

  // Four hex digits after "\u" at `at_`; -1 when they are not.
  int Hex4() const {
    if (end_ - at_ < 6) return -1;
    int value = 0;
    for (int i = 2; i < 6; ++i) {
      const int digit = HexValue(at_[i]);
      if (digit < 0) return -1;
      value = value * 16 + digit;
    }
    return value;
  }

  bool Escape() {
    if (end_ - at_ < 2) return Fail(at_, "unterminated text");
    switch (at_[1]) {
      case '"':
      case '\\':
      case '/':
      case 'b':
      case 'f':
      case 'n':
      case 'r':
      case 't':
        at_ += 2;
        return true;
      case 'u':
        break;
      default:
        return Fail(at_, "invalid escape");
    }
    const int unit = Hex4();
    if (unit < 0) return Fail(at_, "invalid \\u escape: four hex digits must follow");
    if (unit >= 0xDC00 && unit <= 0xDFFF) return Fail(at_, "lone surrogate escape");
    if (unit >= 0xD800 && unit <= 0xDBFF) {
      const char* high = at_;
      at_ += 6;
      const int low = (end_ - at_ >= 2 && at_[0] == '\\' && at_[1] == 'u') ? Hex4() : -1;
      if (low < 0xDC00 || low > 0xDFFF) return Fail(high, "lone surrogate escape");
    }
    at_ += 6;
    return true;
  }

  // One UTF-8 character of two to four bytes at `at_` (RFC 3629: shortest form, no surrogates,
  // nothing above U+10FFFF).
  bool Utf8() {
    const auto lead = static_cast<unsigned char>(*at_);
    int continuations = 0;
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
    if (lead >= 0xC2 && lead <= 0xDF) {
      continuations = 1;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
      continuations = 2;
      if (lead == 0xE0) low = 0xA0;
      if (lead == 0xED) high = 0x9F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
      continuations = 3;
      if (lead == 0xF0) low = 0x90;
      if (lead == 0xF4) high = 0x8F;
    } else {
      return Fail(at_, "invalid UTF-8");
    }
    if (end_ - at_ <= continuations) return Fail(at_, "invalid UTF-8");
    for (int i = 1; i <= continuations; ++i) {
      const auto byte = static_cast<unsigned char>(at_[i]);
      if (byte < (i == 1 ? low : 0x80) || byte > (i == 1 ? high : 0xBF))
        return Fail(at_, "invalid UTF-8");
    }
    at_ += continuations + 1;
    return true;
  }

  bool String() {
    const char* open = at_++;
    for (;;) {
      if (AtEnd()) return Fail(open, "unterminated text");
      const auto byte = static_cast<unsigned char>(*at_);
      if (byte == '"') {
        ++at_;
        return true;
      }
      if (byte == '\\') {
        if (!Escape()) return false;
      } else if (byte < 0x20) {
        return Fail(at_, "control character in a text: it must be escaped");
      } else if (byte < 0x80) {
        ++at_;
      } else if (!Utf8()) {
        return false;
      }
    }
  }

  bool Number() {
    const char* start = at_;
    const bool negative = *at_ == '-';
    if (negative) ++at_;
    if (AtEnd() || !IsDigit(*at_)) return Fail(at_, "invalid number: a digit was expected");
    const char* digits = at_;
    if (*at_ == '0') {
      ++at_;
      if (!AtEnd() && IsDigit(*at_)) return Fail(start, "invalid number: leading zero");
    } else {
      while (!AtEnd() && IsDigit(*at_)) ++at_;
    }
    const size_t integerDigits = static_cast<size_t>(at_ - digits);
    bool integer = true;
    if (!AtEnd() && *at_ == '.') {
      ++at_;
      if (AtEnd() || !IsDigit(*at_)) return Fail(at_, "invalid number: a digit must follow '.'");
      while (!AtEnd() && IsDigit(*at_)) ++at_;
      integer = false;
    }
    if (!AtEnd() && (*at_ == 'e' || *at_ == 'E')) {
      ++at_;
      if (!AtEnd() && (*at_ == '+' || *at_ == '-')) ++at_;
      if (AtEnd() || !IsDigit(*at_))
        return Fail(at_, "invalid number: a digit must follow the exponent");
      while (!AtEnd() && IsDigit(*at_)) ++at_;
      integer = false;
    }
    if (integer && integerDigits >= 19 && !FitsSixtyFourBits(digits, integerDigits, negative)) {
      if (wideIntegers_ != nullptr) wideIntegers_->push_back(static_cast<size_t>(at_ - begin_));
    }
    if (!integer || integerDigits >= 19) {
      if (Overflows(start, at_, digits, integerDigits)) return Fail(start, "number out of range");
    }
    return true;
  }

  // Whether the integer's digits fit int64 (negative) or uint64 (otherwise).
  static bool FitsSixtyFourBits(const char* digits, size_t count, bool negative) {
    const std::string_view limit = negative ? "9223372036854775808" : "18446744073709551615";
    if (count != limit.size()) return count < limit.size();
    return std::string_view(digits, count) <= limit;
  }

  // Whether the number is beyond a double's range (one that is too small reads as 0).
  static bool Overflows(const char* start, const char* end, const char* digits,
                        size_t integerDigits) {
    double value = 0;
    const std::from_chars_result result = std::from_chars(start, end, value);
    if (result.ec != std::errc::result_out_of_range) return false;
    // Out of range both ways: tell them apart by the decimal exponent of the leading digit.
    long exponent = 0;
    const char* at = digits + integerDigits;
    if (integerDigits == 1 && *digits == '0') {
      exponent = -1;
      if (at < end && *at == '.') {
        for (++at; at < end && *at == '0'; ++at) --exponent;
      }
    } else {
      exponent = static_cast<long>(integerDigits) - 1;
    }
    while (at < end && *at != 'e' && *at != 'E') ++at;
    if (at < end) {
      ++at;
      const bool negativeExponent = *at == '-';
      if (*at == '+' || *at == '-') ++at;
      long explicitExponent = 0;
      for (; at < end && explicitExponent < 100000; ++at)
        explicitExponent = explicitExponent * 10 + (*at - '0');
      exponent += negativeExponent ? -explicitExponent : explicitExponent;
    }
    return exponent > 0;
  }

  const char* begin_;
  const char* at_;
  const char* end_;
  std::vector<size_t>* wideIntegers_;
  const char* failedAt_ = nullptr;
  const char* reason_ = "";
};

}  // namespace

bool CheckJson(std::string_view text, JsonProblem* problem, std::vector<size_t>* wideIntegers) {
  if (wideIntegers != nullptr) wideIntegers->clear();
  Checker checker(text, wideIntegers);
  if (checker.Run()) return true;
  if (problem != nullptr) {
    problem->line = 1;
    problem->column = 1;
    for (const char* at = text.data(); at != checker.failedAt(); ++at) {
      if (*at == '\n') {
        ++problem->line;
        problem->column = 1;
      } else {
        ++problem->column;
      }
    }
    problem->reason = checker.reason();
  }
  return false;
}

}  // namespace gsc::text
