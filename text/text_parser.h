// Parsing an answer's text into a tape the readers walk where it lies (codec::TextValue). The
// parser behind it is private to the library: nothing of it shows here.
#ifndef GUIDESCREEN_CODEC_TEXT_TEXT_PARSER_H
#define GUIDESCREEN_CODEC_TEXT_TEXT_PARSER_H

#include <cstddef>
#include <memory>
#include <string_view>

#include "codec/text_value.h"
#include "text/strict_json.h"

namespace gsc::text {

// Parses texts one after another, keeping its buffers (as large as the largest text so far) for
// the next, so that a warm parser allocates nothing.
class TextParser {
 public:
  TextParser();
  ~TextParser();
  TextParser(const TextParser&) = delete;
  TextParser& operator=(const TextParser&) = delete;

  // Parses `text` as CheckJson reads it. On success, returns its document, valid until this
  // parser parses again or is released; otherwise null, and `problem` says where and why. Throws
  // std::bad_alloc only. (The document comes back in a register: a root value written to memory
  // here and read whole by the caller would stall the store forwarding on every call.)
  const codec::TextDocument* Parse(std::string_view text, JsonProblem& problem);

  // Gives the buffers back; the next text allocates them again.
  void Release() noexcept;

  // Texts of at most this many bytes are read by the strict reading in one pass (TapeBuilder);
  // longer ones by the parser. Both give the same tape; tests set 0 or SIZE_MAX to compare them.
  static constexpr size_t kShortText = 128;

  // Whether the parser is used at all. On big-endian machines it is not: there, Debian's
  // simdjson 3.0.1 reads some numbers wrong (2.2250738585072011e-308 and 1.7976931348623157e308
  // among them, on s390x), and every text is read by the strict reading.
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
  static constexpr bool kParserTrusted = false;
#else
  static constexpr bool kParserTrusted = true;
#endif
  void set_short_text_limit(size_t limit) noexcept {
    shortTextLimit_ = limit;
  }

 private:
  struct State;
  std::unique_ptr<State> state_;
  size_t shortTextLimit_ = kShortText;
};

// The parser of the calling thread, made on first use.
TextParser& ThreadParser();

}  // namespace gsc::text

#endif  // GUIDESCREEN_CODEC_TEXT_TEXT_PARSER_H
