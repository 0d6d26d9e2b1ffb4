// A value of a parsed JSON text, read where the parser left it: the codecs run on it exactly as
// they run on a Json::Value, through the part of JsonCpp's interface they use.
//
// The parsed document is a tape of 64-bit words in document order. A word's top byte says what it
// is ('n' 't' 'f' null and booleans, 'l' 'u' 'd' a number whose 64 bits follow in the next word,
// '"' a text, '[' '{' a container, ']' '}' its end); a container's low 32 bits give the index of
// the word after its end, and a text's low 56 bits the offset of its 32-bit length and bytes in
// the string buffer. Inside an object each member is its name's word followed by its value.
//
// Every conversion gives what JsonCpp gives for the value it would have parsed from the same text
// (the same number type, the same exception and message): what is not a plain fast case is
// handed to a Json::Value made of the scalar. Objects are seen as JsonCpp sees them: the last of
// duplicate names wins, and a walk in name order (KeyedMembers) visits each name once.
#ifndef GUIDESCREEN_CODEC_CODEC_TEXT_VALUE_H
#define GUIDESCREEN_CODEC_CODEC_TEXT_VALUE_H

#include <json/value.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace gsc::codec {

// The tape and strings of one parsed text, valid until the parser that made them parses again.
struct TextDocument {
  const uint64_t* tape;
  const char* strings;
};

class TextValue {
 public:
  // Null (also what a missing member reads as).
  TextValue() noexcept : document_(nullptr), word_(&kNullWord) {}
  TextValue(const TextDocument* document, const uint64_t* word) noexcept
      : document_(document), word_(word) {}

  // The root value of a parsed document (the word after the root word).
  static TextValue Root(const TextDocument* document) noexcept {
    return TextValue(document, document->tape + 1);
  }
  static TextValue nullSingleton() noexcept { return TextValue(); }

  char Tag() const noexcept { return static_cast<char>(*word_ >> 56U); }
  const uint64_t* word() const noexcept { return word_; }
  const TextDocument* document() const noexcept { return document_; }

  Json::ValueType type() const noexcept;
  bool isNull() const noexcept { return Tag() == 'n'; }
  bool isBool() const noexcept { return Tag() == 't' || Tag() == 'f'; }
  bool isString() const noexcept { return Tag() == '"'; }
  bool isArray() const noexcept { return Tag() == '['; }
  bool isObject() const noexcept { return Tag() == '{'; }
  bool isNumeric() const noexcept { return Tag() == 'l' || Tag() == 'u' || Tag() == 'd'; }

  // JsonCpp's conversions, with its exceptions.
  int asInt() const {
    if (Tag() == 'l') {
      const int64_t value = Int64();
      if (value >= INT32_MIN && value <= INT32_MAX) return static_cast<int>(value);
    }
    return Scalar().asInt();
  }
  bool asBool() const {
    switch (Tag()) {
      case 't':
        return true;
      case 'f':
      case 'n':
        return false;
      case 'l':
        return Int64() != 0;
      default:
        return Scalar().asBool();
    }
  }
  double asDouble() const {
    if (Tag() == 'd') return Double();
    if (Tag() == 'l') return static_cast<double>(Int64());
    return Scalar().asDouble();
  }
  std::string asString() const;

  // A text's bytes where they lie; false for any other value.
  bool getString(const char** begin, const char** end) const noexcept {
    if (!isString()) return false;
    const char* at = document_->strings + (*word_ & kPayload);
    uint32_t length = 0;
    std::memcpy(&length, at, sizeof length);
    *begin = at + sizeof length;
    *end = *begin + length;
    return true;
  }

  // Elements of an array; members of an object by distinct name (JsonCpp's count); 0 otherwise.
  Json::ArrayIndex size() const;

  // The member `key` of an object (the last of that name), or an absent value; null has no
  // members; any other value raises what JsonCpp's find raises.
  bool find(const char* begin, const char* end, TextValue& member) const;
  // JsonCpp's member names, for the values whose listing raises or is empty (an object lists
  // its names in JsonCpp's order).
  std::vector<std::string> getMemberNames() const;

  // Walking a container: its first element or member name, its closing word (where a walk
  // ends), and the word after any value.
  const uint64_t* First() const noexcept { return word_ + 1; }
  const uint64_t* End() const noexcept {
    return document_->tape + static_cast<uint32_t>(*word_) - 1;
  }
  static const uint64_t* After(const TextDocument* document, const uint64_t* word) noexcept {
    switch (static_cast<char>(*word >> 56U)) {
      case '[':
      case '{':
        return document->tape + static_cast<uint32_t>(*word);
      case 'l':
      case 'u':
      case 'd':
        return word + 2;
      default:
        return word + 1;
    }
  }

  // A member name's bytes (the word before its value). At least eight bytes can be read from
  // its first on: the strings after it, or the padding both tape builders leave after the last.
  static void Name(const TextDocument* document, const uint64_t* word, const char** begin,
                   uint32_t* length) noexcept {
    const char* at = document->strings + (*word & kPayload);
    std::memcpy(length, at, sizeof *length);
    *begin = at + sizeof *length;
  }

  // The same scalar as a Json::Value (an array or object as an empty one of its type), for the
  // conversions and messages JsonCpp alone defines.
  Json::Value Scalar() const;

 private:
  static constexpr uint64_t kPayload = 0x00FFFFFFFFFFFFFFULL;
  static const uint64_t kNullWord;

  int64_t Int64() const noexcept {
    int64_t value = 0;
    std::memcpy(&value, word_ + 1, sizeof value);
    return value;
  }
  uint64_t UInt64() const noexcept {
    uint64_t value = 0;
    std::memcpy(&value, word_ + 1, sizeof value);
    return value;
  }
  double Double() const noexcept {
    double value = 0;
    std::memcpy(&value, word_ + 1, sizeof value);
    return value;
  }

  const TextDocument* document_;
  const uint64_t* word_;
};

// The members of an object in JsonCpp's order (names compared as unsigned bytes, the shorter
// first), the last of duplicate names only. `scratch` is reused between calls.
struct NamedValue {
  const char* name;
  uint32_t length;
  TextValue value;
};
void KeyedMembers(const TextValue& object, std::vector<NamedValue>& scratch);

// A vector for KeyedMembers that keeps its storage between calls on a thread (a nested use gets
// one of its own), so that a warm reader allocates nothing.
class KeyedScratch {
 public:
  KeyedScratch();
  ~KeyedScratch();
  KeyedScratch(const KeyedScratch&) = delete;
  KeyedScratch& operator=(const KeyedScratch&) = delete;
  KeyedScratch(KeyedScratch&&) = delete;
  KeyedScratch& operator=(KeyedScratch&&) = delete;
  std::vector<NamedValue>& members() { return *members_; }

 private:
  std::vector<NamedValue> own_;
  std::vector<NamedValue>* members_;
  bool leased_;
};

}  // namespace gsc::codec

#endif  // GUIDESCREEN_CODEC_CODEC_TEXT_VALUE_H
