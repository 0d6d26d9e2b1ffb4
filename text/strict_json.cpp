#include "text/strict_json.h"

#include <charconv>
#include <cstdint>
#include <cstring>
#include <string>
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

// The bytes a text holds as they stand: printable ASCII but the quote and the backslash.
struct PlainBytes {
  bool plain[256];
  constexpr PlainBytes() : plain{} {
    for (int byte = 0x20; byte < 0x80; ++byte) plain[byte] = byte != '"' && byte != '\\';
  }
  constexpr bool operator[](unsigned char byte) const { return plain[byte]; }
};
constexpr PlainBytes kPlain;

// The bytes of `bytes` that are not plain (none at or above 0x80, below 0x20, a quote or a
// backslash), as their high bits. A byte's test may borrow from the bytes above it only when it
// holds, so the lowest bit set is exact, and none is set when all eight are plain.
inline uint64_t NotPlain(uint64_t bytes) {
  constexpr uint64_t kOnes = 0x0101010101010101ULL;
  constexpr uint64_t kHighs = 0x8080808080808080ULL;
  const auto anyZero = [](uint64_t word) { return (word - kOnes) & ~word & kHighs; };
  const uint64_t below20 = (bytes - 0x20U * kOnes) & ~bytes & kHighs;
  return (bytes & kHighs) | below20 | anyZero(bytes ^ ('"' * kOnes)) |
         anyZero(bytes ^ ('\\' * kOnes));
}

// The first byte from `at` on that is not plain, or `end`: eight bytes at a time, the first
// byte that is not plain found within its eight where the machine's byte order puts the first
// byte lowest, then byte by byte. (Kept apart from the reader's members, which every byte the
// sink stores might alias.)
inline const char* SkipPlain(const char* at, const char* end) {
  while (end - at >= 8) {
    uint64_t eight = 0;
    std::memcpy(&eight, at, sizeof eight);
    const uint64_t found = NotPlain(eight);
    if (found != 0) {
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
      return at + (__builtin_ctzll(found) >> 3U);
#else
      break;
#endif
    }
    at += 8;
  }
  while (at != end && kPlain[static_cast<unsigned char>(*at)]) ++at;
  return at;
}

// What the strict reading tells of a text as it goes, when nothing is to be kept of it.
struct NoSink {
  static constexpr bool kKeeps = false;
  void Literal(char /*tag*/) {}
  void Integer(int64_t /*value*/) {}
  void Unsigned(uint64_t /*value*/) {}
  void Real(double /*value*/) {}
  void StringStart() {}
  void StringBytes(const char* /*bytes*/, size_t /*count*/) {}
  void StringEnd() {}
  void WholeString(const char* /*bytes*/, size_t /*count*/) {}
  void Open(char /*tag*/) {}
  void Close(char /*tag*/, uint32_t /*count*/) {}
};

// A recursive-descent reading of the grammar; recursion is bounded by kMaxDepth. Every value is
// told to `sink` as it is read.
template <typename Sink>
class Checker {
 public:
  Checker(std::string_view text, std::vector<size_t>* wideIntegers, Sink& sink)
      : begin_(text.data()),
        at_(text.data()),
        end_(text.data() + text.size()),
        wideIntegers_(wideIntegers),
        sink_(sink) {}

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

  // `depth` counts the containers around the value. As JsonCpp and the parser count levels, a
  // value of any kind is a level: a thousand containers are taken only when the deepest is empty.
  bool Value(int depth) {
    if (AtEnd()) return Fail(at_, "unexpected end of text: a value was expected");
    if (depth >= kMaxDepth) return Fail(at_, "nesting deeper than 1000 levels");
    switch (*at_) {
      case '{':
        return Object(depth);
      case '[':
        return Array(depth);
      case '"':
        return String();
      case 't':
        return Literal("true", 't');
      case 'f':
        return Literal("false", 'f');
      case 'n':
        return Literal("null", 'n');
      default:
        if (*at_ == '-' || IsDigit(*at_)) return Number();
        return Fail(at_, "unexpected character: a value was expected");
    }
  }

  void Enter() {
    ++at_;
    SkipSpace();
  }

  bool Object(int depth) {
    Enter();
    sink_.Open('{');
    uint32_t count = 0;
    if (!AtEnd() && *at_ == '}') {
      ++at_;
      sink_.Close('}', count);
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
      ++count;
      SkipSpace();
      if (AtEnd()) return Fail(at_, "unexpected end of text: ',' or '}' was expected");
      if (*at_ == '}') {
        ++at_;
        sink_.Close('}', count);
        return true;
      }
      if (*at_ != ',') return Fail(at_, "',' or '}' was expected");
      ++at_;
      SkipSpace();
    }
  }

  bool Array(int depth) {
    Enter();
    sink_.Open('[');
    uint32_t count = 0;
    if (!AtEnd() && *at_ == ']') {
      ++at_;
      sink_.Close(']', count);
      return true;
    }
    for (;;) {
      if (!Value(depth + 1)) return false;
      ++count;
      SkipSpace();
      if (AtEnd()) return Fail(at_, "unexpected end of text: ',' or ']' was expected");
      if (*at_ == ']') {
        ++at_;
        sink_.Close(']', count);
        return true;
      }
      if (*at_ != ',') return Fail(at_, "',' or ']' was expected");
      ++at_;
      SkipSpace();
    }
  }

  bool Literal(std::string_view word, char tag) {
    if (static_cast<size_t>(end_ - at_) < word.size() || std::string_view(at_, word.size()) != word)
      return Fail(at_, "unexpected character: a value was expected");
    at_ += word.size();
    sink_.Literal(tag);
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
        sink_.StringBytes(at_ + 1, 1);
        at_ += 2;
        return true;
      case 'b':
        return Escaped('\b');
      case 'f':
        return Escaped('\f');
      case 'n':
        return Escaped('\n');
      case 'r':
        return Escaped('\r');
      case 't':
        return Escaped('\t');
      case 'u':
        break;
      default:
        return Fail(at_, "invalid escape");
    }
    const int unit = Hex4();
    if (unit < 0) return Fail(at_, "invalid \\u escape: four hex digits must follow");
    if (unit >= 0xDC00 && unit <= 0xDFFF) return Fail(at_, "lone surrogate escape");
    uint32_t codePoint = static_cast<uint32_t>(unit);
    if (unit >= 0xD800 && unit <= 0xDBFF) {
      const char* high = at_;
      at_ += 6;
      const int low = (end_ - at_ >= 2 && at_[0] == '\\' && at_[1] == 'u') ? Hex4() : -1;
      if (low < 0xDC00 || low > 0xDFFF) return Fail(high, "lone surrogate escape");
      codePoint =
          0x10000U + ((codePoint - 0xD800U) << 10U) + (static_cast<uint32_t>(low) - 0xDC00U);
    }
    at_ += 6;
    if constexpr (Sink::kKeeps) CodePoint(codePoint);
    return true;
  }

  bool Escaped(char byte) {
    sink_.StringBytes(&byte, 1);
    at_ += 2;
    return true;
  }

  // The UTF-8 bytes of `codePoint` (never a surrogate).
  void CodePoint(uint32_t codePoint) {
    char bytes[4];
    size_t count = 0;
    if (codePoint < 0x80) {
      bytes[count++] = static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
      bytes[count++] = static_cast<char>(0xC0U | (codePoint >> 6U));
      bytes[count++] = static_cast<char>(0x80U | (codePoint & 0x3FU));
    } else if (codePoint < 0x10000) {
      bytes[count++] = static_cast<char>(0xE0U | (codePoint >> 12U));
      bytes[count++] = static_cast<char>(0x80U | ((codePoint >> 6U) & 0x3FU));
      bytes[count++] = static_cast<char>(0x80U | (codePoint & 0x3FU));
    } else {
      bytes[count++] = static_cast<char>(0xF0U | (codePoint >> 18U));
      bytes[count++] = static_cast<char>(0x80U | ((codePoint >> 12U) & 0x3FU));
      bytes[count++] = static_cast<char>(0x80U | ((codePoint >> 6U) & 0x3FU));
      bytes[count++] = static_cast<char>(0x80U | (codePoint & 0x3FU));
    }
    sink_.StringBytes(bytes, count);
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
    // Most texts hold nothing to escape or decode: their bytes go to the sink in one piece.
    const char* close = SkipPlain(at_ + 1, end_);
    if (close != end_ && *close == '"') {
      sink_.WholeString(at_ + 1, static_cast<size_t>(close - at_ - 1));
      at_ = close + 1;
      return true;
    }
    const char* open = at_++;
    sink_.StringStart();
    const char* run = at_;  // bytes taken as they stand, not yet told to the sink
    for (;;) {
      at_ = SkipPlain(at_, end_);
      if (AtEnd()) return Fail(open, "unterminated text");
      const auto byte = static_cast<unsigned char>(*at_);
      if (byte == '"') {
        sink_.StringBytes(run, static_cast<size_t>(at_ - run));
        ++at_;
        sink_.StringEnd();
        return true;
      }
      if (byte == '\\') {
        sink_.StringBytes(run, static_cast<size_t>(at_ - run));
        if (!Escape()) return false;
        run = at_;
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
    const bool wide =
        integer && integerDigits >= 19 && !FitsSixtyFourBits(digits, integerDigits, negative);
    if (wide && wideIntegers_ != nullptr) {
      wideIntegers_->push_back(static_cast<size_t>(at_ - begin_));
    }
    double real = 0;
    if (!integer || integerDigits >= 19) {
      if (Overflows(start, at_, digits, integerDigits, real)) {
        return Fail(start, "number out of range");
      }
    }
    if constexpr (Sink::kKeeps) {
      // JsonCpp's types: an integer of 64 bits as one (unsigned only above the signed range),
      // a wider one or any other number as a real.
      if (!integer || wide) {
        sink_.Real(real);
      } else {
        uint64_t magnitude = 0;
        for (const char* d = digits; d != digits + integerDigits; ++d) {
          magnitude = magnitude * 10U + static_cast<uint64_t>(*d - '0');
        }
        if (negative) {
          sink_.Integer(static_cast<int64_t>(0U - magnitude));
        } else if (magnitude > static_cast<uint64_t>(INT64_MAX)) {
          sink_.Unsigned(magnitude);
        } else {
          sink_.Integer(static_cast<int64_t>(magnitude));
        }
      }
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
  // `value` is the number, correctly rounded (0 when too small).
  static bool Overflows(const char* start, const char* end, const char* digits,
                        size_t integerDigits, double& value) {
    const std::from_chars_result result = std::from_chars(start, end, value);
    if (result.ec != std::errc::result_out_of_range) return false;
    value = *start == '-' ? -0.0 : 0.0;
    // Out of range both ways: tell them apart by the decimal exponent of the leading digit. The
    // written exponent saturates far beyond what any count of digits in a text could offset.
    constexpr int64_t kSaturated = int64_t{1} << 50;
    int64_t exponent = 0;
    const char* at = digits + integerDigits;
    if (integerDigits == 1 && *digits == '0') {
      exponent = -1;
      if (at < end && *at == '.') {
        for (++at; at < end && *at == '0'; ++at) --exponent;
      }
    } else {
      exponent = static_cast<int64_t>(integerDigits) - 1;
    }
    while (at < end && *at != 'e' && *at != 'E') ++at;
    if (at < end) {
      ++at;
      const bool negativeExponent = *at == '-';
      if (*at == '+' || *at == '-') ++at;
      int64_t written = 0;
      for (; at < end; ++at) {
        if (written < kSaturated) written = written * 10 + (*at - '0');
      }
      exponent += negativeExponent ? -written : written;
    }
    return exponent > 0;
  }

  const char* begin_;
  const char* at_;
  const char* end_;
  std::vector<size_t>* wideIntegers_;
  Sink& sink_;
  const char* failedAt_ = nullptr;
  const char* reason_ = "";
};

// Where the reading stopped, as a line and a byte column.
template <typename Sink>
void Locate(std::string_view text, const Checker<Sink>& checker, JsonProblem* problem) {
  if (problem == nullptr) return;
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

// Builds the tape as the values are read: a container's word is written when it opens and
// completed when it closes, with the index after its end and its count of members or elements.
// The caller sizes both buffers for the text beforehand (see TapeBuilder::Build), so that writing
// needs no test of room.
class TapeSink {
 public:
  static constexpr bool kKeeps = true;
  TapeSink(uint64_t* tape, char* strings, std::vector<size_t>& open)
      : tape_(tape), strings_(strings), open_(open) {}

  void Literal(char tag) { tape_[words_++] = Word(tag, 0); }
  void Integer(int64_t value) { Number('l', &value); }
  void Unsigned(uint64_t value) { Number('u', &value); }
  void Real(double value) { Number('d', &value); }
  void StringStart() {
    tape_[words_++] = Word('"', used_);
    used_ += sizeof(uint32_t);
    stringStart_ = used_;
  }
  void StringBytes(const char* bytes, size_t count) {
    std::memcpy(strings_ + used_, bytes, count);
    used_ += count;
  }
  void StringEnd() {
    const auto length = static_cast<uint32_t>(used_ - stringStart_);
    std::memcpy(strings_ + stringStart_ - sizeof length, &length, sizeof length);
    strings_[used_++] = '\0';
  }
  // StringStart, StringBytes and StringEnd in one.
  void WholeString(const char* bytes, size_t count) {
    size_t used = used_;
    tape_[words_++] = Word('"', used);
    const auto length = static_cast<uint32_t>(count);
    std::memcpy(strings_ + used, &length, sizeof length);
    used += sizeof length;
    std::memcpy(strings_ + used, bytes, count);
    used += count;
    strings_[used++] = '\0';
    used_ = used;
  }
  void Open(char tag) {
    open_.push_back(words_);
    tape_[words_++] = Word(tag, 0);
  }
  void Close(char tag, uint32_t count) {
    const size_t start = open_.back();
    open_.pop_back();
    tape_[words_++] = Word(tag, start);
    constexpr uint32_t kCountSaturated = 0xFFFFFF;
    const uint64_t counted = count < kCountSaturated ? count : kCountSaturated;
    tape_[start] = Word(static_cast<char>(tape_[start] >> 56U), (counted << 32U) | words_);
  }
  void Root() { tape_[words_++] = Word('r', 0); }

 private:
  static uint64_t Word(char tag, uint64_t payload) {
    return (static_cast<uint64_t>(static_cast<unsigned char>(tag)) << 56U) | payload;
  }
  void Number(char tag, const void* bits) {
    tape_[words_++] = Word(tag, 0);
    std::memcpy(&tape_[words_++], bits, sizeof(uint64_t));
  }

  uint64_t* tape_;
  char* strings_;
  std::vector<size_t>& open_;
  size_t words_ = 0;
  size_t used_ = 0;
  size_t stringStart_ = 0;
};

}  // namespace

bool CheckJson(std::string_view text, JsonProblem* problem, std::vector<size_t>* wideIntegers) {
  if (wideIntegers != nullptr) wideIntegers->clear();
  NoSink sink;
  Checker<NoSink> checker(text, wideIntegers, sink);
  if (checker.Run()) return true;
  Locate(text, checker, problem);
  return false;
}

bool TapeBuilder::Build(std::string_view text, JsonProblem* problem) {
  // Every value takes at least one byte of text per tape word it writes, but for the root's two
  // words; a text's bytes decode to at most as many, and its length and terminator take five
  // more for at least the two bytes of its quotes. Eight more bytes after the last string let a
  // name be compared by words (as the parser's own buffer pads its strings).
  const size_t words = 2 * text.size() + 4;
  const size_t bytes = 4 * text.size() + 16;
  // Allocated uninitialised (make_unique would clear every page); owned by the unique_ptr.
  if (tapeWords_ < words) {
    tape_.reset(new uint64_t[words]);  // NOLINT(cppcoreguidelines-owning-memory)
    tapeWords_ = words;
  }
  if (stringBytes_ < bytes) {
    strings_.reset(new char[bytes]);  // NOLINT(cppcoreguidelines-owning-memory)
    stringBytes_ = bytes;
  }
  open_.clear();
  TapeSink sink(tape_.get(), strings_.get(), open_);
  // The root word's payload is never read: the value starts at the second word.
  sink.Root();
  Checker<TapeSink> checker(text, nullptr, sink);
  if (!checker.Run()) {
    Locate(text, checker, problem);
    return false;
  }
  sink.Root();
  document_ = codec::TextDocument{tape_.get(), strings_.get()};
  return true;
}

}  // namespace gsc::text
