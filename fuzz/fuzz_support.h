// What both fuzz harnesses share: caller memory fenced by guard bytes, a hard stop that names the
// call at fault, and the round trip of a JSON value through its text.
#ifndef GUIDESCREEN_CODEC_FUZZ_FUZZ_SUPPORT_H
#define GUIDESCREEN_CODEC_FUZZ_FUZZ_SUPPORT_H

#include <json/json.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define GSC_FUZZ_ASAN 1
#endif
#endif
#if defined(__SANITIZE_ADDRESS__)
#define GSC_FUZZ_ASAN 1
#endif
#ifdef GSC_FUZZ_ASAN
#include <sanitizer/asan_interface.h>
// The guard check reads the poisoned guards on purpose.
#define GSC_FUZZ_READS_GUARDS __attribute__((no_sanitize("address")))
#else
#define GSC_FUZZ_READS_GUARDS
#endif

namespace gsc::fuzz {

// Stops the run: libFuzzer records the input as a crash.
[[noreturn]] inline void Fail(const char* what, const char* detail = "") {
  std::fprintf(stderr, "fuzz check failed: %s %s\n", what, detail);
  std::abort();
}

constexpr unsigned char kGuardByte = 0xA5;
constexpr size_t kGuardBytes = 64;

// `size` bytes of caller memory at `offset` (0 to 15) past a 16-byte aligned address, fenced on
// both sides by guard bytes. Under AddressSanitizer the guards are poisoned as well, so a stray
// access stops at once with a stack trace; the pattern check catches what poisoning cannot
// express (the bytes of an 8-byte granule before a start that is 4 but not 8 aligned).
class GuardedBlock {
 public:
  GuardedBlock(size_t size, size_t offset, unsigned char fill)
      : size_(size), offset_(offset), storage_(new (std::align_val_t{16}) unsigned char[Total()]) {
    std::memset(storage_.get(), kGuardByte, Total());
    std::memset(data(), fill, size_);
    Poison(true);
  }
  ~GuardedBlock() { Poison(false); }
  GuardedBlock(const GuardedBlock&) = delete;
  GuardedBlock& operator=(const GuardedBlock&) = delete;

  unsigned char* data() { return storage_.get() + kGuardBytes + offset_; }
  const unsigned char* data() const { return storage_.get() + kGuardBytes + offset_; }
  size_t size() const { return size_; }

  // True while no guard byte has changed.
  GSC_FUZZ_READS_GUARDS bool Intact() const {
    const unsigned char* begin = storage_.get();
    const unsigned char* end = begin + Total();
    for (const unsigned char* p = begin; p < data(); ++p)
      if (*p != kGuardByte) return false;
    for (const unsigned char* p = data() + size_; p < end; ++p)
      if (*p != kGuardByte) return false;
    return true;
  }

 private:
  size_t Total() const { return kGuardBytes + offset_ + size_ + kGuardBytes; }
  void Poison(bool on) {
#ifdef GSC_FUZZ_ASAN
    unsigned char* base = storage_.get();
    const size_t before = kGuardBytes + offset_;
    const size_t after = Total() - before - size_;
    if (on) {
      ASAN_POISON_MEMORY_REGION(base, before);
      ASAN_POISON_MEMORY_REGION(data() + size_, after);
    } else {
      ASAN_UNPOISON_MEMORY_REGION(base, Total());
    }
#else
    (void)on;
#endif
  }
  struct AlignedDelete {
    void operator()(unsigned char* p) const { ::operator delete[](p, std::align_val_t{16}); }
  };
  size_t size_;
  size_t offset_;
  std::unique_ptr<unsigned char[], AlignedDelete> storage_;
};

// A caller's array of `count` records in a guarded block (count may be 0).
template <typename Record>
class GuardedArray {
 public:
  GuardedArray(size_t count, unsigned char fill)
      : count_(count), block_(sizeof(Record) * count, 0, fill) {}
  Record* data() { return count_ != 0 ? reinterpret_cast<Record*>(block_.data()) : nullptr; }
  Record& operator[](size_t i) { return data()[i]; }
  size_t size() const { return count_; }
  const GuardedBlock& block() const { return block_; }

 private:
  size_t count_;
  GuardedBlock block_;
};

// True when `text` is well-formed UTF-8 (no overlong forms, no surrogates, at most U+10FFFF).
inline bool IsUtf8(const char* begin, const char* end) {
  const auto* p = reinterpret_cast<const unsigned char*>(begin);
  const auto* e = reinterpret_cast<const unsigned char*>(end);
  while (p < e) {
    const unsigned lead = *p;
    size_t n = 0;
    unsigned min = 0;
    if (lead < 0x80U) {
      ++p;
      continue;
    } else if ((lead & 0xE0U) == 0xC0U) {
      n = 1, min = 0x80U;
    } else if ((lead & 0xF0U) == 0xE0U) {
      n = 2, min = 0x800U;
    } else if ((lead & 0xF8U) == 0xF0U) {
      n = 3, min = 0x10000U;
    } else {
      return false;
    }
    if (static_cast<size_t>(e - p) <= n) return false;
    unsigned code = lead & (0x3FU >> n);
    for (size_t i = 1; i <= n; ++i) {
      if ((p[i] & 0xC0U) != 0x80U) return false;
      code = (code << 6) | (p[i] & 0x3FU);
    }
    if (code < min || code > 0x10FFFFU || (code >= 0xD800U && code <= 0xDFFFU)) return false;
    p += n + 1;
  }
  return true;
}

// True when every string and member name in `value` is well-formed UTF-8.
inline bool AllUtf8(const Json::Value& value) {
  if (value.isString()) {
    const char* begin = nullptr;
    const char* end = nullptr;
    value.getString(&begin, &end);
    return IsUtf8(begin, end);
  }
  if (value.isObject()) {
    for (auto it = value.begin(); it != value.end(); ++it) {
      const std::string name = it.name();
      if (!IsUtf8(name.data(), name.data() + name.size()) || !AllUtf8(*it)) return false;
    }
  }
  if (value.isArray()) {
    for (const Json::Value& element : value)
      if (!AllUtf8(element)) return false;
  }
  return true;
}

// Writes `value` as text and parses the text back; the parse must succeed. When every text is
// UTF-8, as the codecs' texts are meant to be, writing the parsed value again must also give the
// same text (other bytes are carried unchanged by the codecs, and JsonCpp's writer escapes them
// in a way its reader does not restore byte for byte). Returns the text.
//
// Non-finite reals travel as NaN and Infinity: a record's double is carried unchanged (a line
// height of infinity stays infinity), and strict JSON has no text for it; JsonCpp's default
// writer prints 1e+9999, which its own reader rejects. Which form goes on the wire is the
// transport's choice of writer settings, not the codecs'.
inline std::string RoundTrip(const Json::Value& value, const char* call) {
  Json::StreamWriterBuilder writer;
  writer["indentation"] = "";
  writer["useSpecialFloats"] = true;
  const std::string text = Json::writeString(writer, value);
  Json::CharReaderBuilder builder;
  builder["allowSpecialFloats"] = true;
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  Json::Value back;
  std::string errors;
  bool parsed = false;
  try {
    parsed = reader->parse(text.data(), text.data() + text.size(), &back, &errors);
  } catch (const Json::Exception& e) {
    errors = e.what();
  }
  if (!parsed) {
    std::fprintf(stderr, "text: %s\nerrors: %s\n", text.c_str(), errors.c_str());
    Fail("written JSON does not parse back:", call);
  }
  const std::string again = Json::writeString(writer, back);
  if (again != text && AllUtf8(value)) {
    std::fprintf(stderr, "text: %s\nagain: %s\n", text.c_str(), again.c_str());
    Fail("written JSON changes on a round trip:", call);
  }
  return text;
}

}  // namespace gsc::fuzz

#endif  // GUIDESCREEN_CODEC_FUZZ_FUZZ_SUPPORT_H
