// The strict reading of JSON texts: RFC 8259 as UTF-8, with the limits a reader may set. It is
// what the text readers accept, and what says where and why a text they refuse is not JSON.
#ifndef GUIDESCREEN_CODEC_TEXT_STRICT_JSON_H
#define GUIDESCREEN_CODEC_TEXT_STRICT_JSON_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "codec/text_value.h"

namespace gsc::text {

// Values nest at most this deep, counting each value inside its containers as a level (JsonCpp's
// reader stops at the same depth): a thousand containers are taken only when the deepest is empty.
constexpr int kMaxDepth = 1000;

// Where a text stops being JSON: line and column from 1, the column counted in bytes.
struct JsonProblem {
  uint32_t line = 0;
  uint32_t column = 0;
  std::string reason;
};

// Whether `text` is exactly one JSON text: white space, one value, white space. Refused besides
// what the grammar refuses: invalid UTF-8 (overlong forms and encoded surrogates included), an
// escape of a lone surrogate, nesting deeper than kMaxDepth and a number beyond a double's range.
// A UTF-8 byte order mark at the very start is skipped, as RFC 8259 lets a reader do.
//
// On failure `problem` (when given) says where and why. On success `wideIntegers` (when given)
// receives the end offset of each integer that fits neither 64-bit type, in text order: JsonCpp
// reads those as reals.
bool CheckJson(std::string_view text, JsonProblem* problem, std::vector<size_t>* wideIntegers);

// The strict reading writing the tape a codec::TextValue reads, as the text parser writes it, in
// one pass: for short texts, where the parser's fixed cost per text is most of the cost. Keeps its
// buffers from one text to the next.
class TapeBuilder {
 public:
  // Reads `text` as CheckJson does; on success document() holds its tape until the next Build.
  bool Build(std::string_view text, JsonProblem* problem);
  const codec::TextDocument* document() const { return &document_; }

 private:
  // Sized for the largest text so far and left uninitialised: a page costs memory only once a
  // text reaches it.
  std::unique_ptr<uint64_t[]> tape_;
  size_t tapeWords_ = 0;
  std::unique_ptr<char[]> strings_;
  size_t stringBytes_ = 0;
  std::vector<size_t> open_;
  codec::TextDocument document_{nullptr, nullptr};
};

}  // namespace gsc::text

#endif  // GUIDESCREEN_CODEC_TEXT_STRICT_JSON_H
