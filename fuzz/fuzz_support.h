// What the fuzz harnesses share: caller memory fenced by guard bytes, laid out for the readers
// from control bytes; a hard stop that names the call at fault; the round trip of a JSON value
// through its text; and how deep a JSON text nests its values.
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
#include <string_view>
#include <vector>

#include "guidescreen_codec/guidescreen_records.h"
#include "guidescreen_codec/plan_records.h"
#include "guidescreen_codec/programme_records.h"

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

// ---- The caller memory a reader writes into, laid out from control bytes ------------------

// Input of the reader harnesses: these control bytes, then the answer's text.
//   0      the byte every caller record is pre-filled with
//   1      bit 0: the value of every boolean field; bits 1 to 4: null caller array for screens,
//          programmes, immediate plans, timer plans
//   2 3 4  capacities of the screen, programme and plan arrays (mod 4, 3, 4)
//   5      bits 0 to 3: element buffer slot k is null; bits 4 to 7: its length is then 2^32 - 1
//   6..13  four element buffer lengths, 16 bits each (mod 16384); window j uses slot j mod 4
//   14     length passed to GetJsonString, minus 4
//   15     the byte element buffers are pre-filled with
constexpr size_t kControlBytes = 16;
constexpr size_t kBufferSlots = 4;
constexpr uint32_t kNoLength = 0xFFFFFFFFU;

struct Control {
  unsigned char fill = 0;
  bool boolValue = false;
  bool nullScreens = false;
  bool nullProgrammes = false;
  bool nullImme = false;
  bool nullTimer = false;
  uint32_t screenCapacity = 0;
  uint32_t programmeCapacity = 0;
  uint32_t planCapacity = 0;
  bool nullBuffer[kBufferSlots] = {};
  uint32_t bufferLength[kBufferSlots] = {};
  int textLength = 0;
  unsigned char elementFill = 0;

  explicit Control(const uint8_t* b)
      : fill(b[0]),
        boolValue((b[1] & 1U) != 0),
        nullScreens((b[1] & 2U) != 0),
        nullProgrammes((b[1] & 4U) != 0),
        nullImme((b[1] & 8U) != 0),
        nullTimer((b[1] & 16U) != 0),
        screenCapacity(b[2] % 4U),
        programmeCapacity(b[3] % 3U),
        planCapacity(b[4] % 4U),
        textLength(static_cast<int>(b[14]) - 4),
        elementFill(b[15]) {
    for (size_t k = 0; k < kBufferSlots; ++k) {
      nullBuffer[k] = (b[5] & (1U << k)) != 0;
      const uint32_t length = static_cast<uint32_t>(b[6 + 2 * k] | (b[7 + 2 * k] << 8)) % 16384U;
      bufferLength[k] = nullBuffer[k] && (b[5] & (16U << k)) != 0 ? kNoLength : length;
    }
  }
  // Every 32-bit field of a pre-filled record starts as this word.
  uint32_t Word() const { return fill * 0x01010101U; }
};

// Every guarded block made for one call; all are checked after the call.
class Guards {
 public:
  GuardedBlock& Add(size_t size, size_t offset, unsigned char fill) {
    blocks_.push_back(std::make_unique<GuardedBlock>(size, offset, fill));
    return *blocks_.back();
  }
  void Check(const char* call) const {
    for (const auto& block : blocks_)
      if (!block->Intact()) Fail("guard bytes changed by", call);
  }
  // The caller memory of every block, to compare two calls on the same memory.
  std::vector<std::vector<unsigned char>> Snapshot() const {
    std::vector<std::vector<unsigned char>> bytes;
    for (const auto& block : blocks_)
      bytes.emplace_back(block->data(), block->data() + block->size());
    return bytes;
  }
  void Restore(const std::vector<std::vector<unsigned char>>& bytes) {
    for (size_t i = 0; i < blocks_.size(); ++i) {
      if (!bytes[i].empty()) std::memcpy(blocks_[i]->data(), bytes[i].data(), bytes[i].size());
    }
  }

 private:
  std::vector<std::unique_ptr<GuardedBlock>> blocks_;
};

// `count` records of type R pre-filled with the control's pattern, in a guarded block.
template <typename R>
R& NewRecord(Guards& guards, const Control& c, size_t count = 1) {
  return *reinterpret_cast<R*>(guards.Add(sizeof(R) * count, 0, c.fill).data());
}

// A pattern byte in a bool is undefined behaviour, so each is set explicitly.
inline void FixBools(tagNET_GUIDESCREEN_ATTRIBUTE_INFO& r, bool v) {
  r.bIsForeverOpen = v;
  for (auto& time : r.stuTime) time.bEnable = v;
  r.stuAutoBright.bEnable = v;
}
inline void FixBools(tagNET_GUIDESCREEN_NOTE_INFO& r, bool v) {
  r.bEnable = v;
}
inline void FixBools(tagNET_BRIEFLY_PROGRAMME_INFO& r, bool v) {
  r.bEnable = v;
  r.bTempletState = v;
}
inline void FixBools(tagNET_IMMEDIATELY_PLAN_INFO& r, bool v) {
  r.bEnable = v;
}
inline void FixBools(tagNET_TIMER_PLAN_INFO& r, bool v) {
  r.bOverdue = v;
  for (auto& programme : r.stuProgrammes) programme.bIsBgProgramme = v;
}

// An element buffer of `length` bytes starting 4 but not 8 bytes aligned, as a record after an
// element header would.
inline unsigned char* ElementBuffer(Guards& guards, const Control& c, uint32_t length) {
  return guards.Add(length, 4, c.elementFill).data();
}

// Sets a pre-filled programme's booleans and gives window j the element buffer of slot j mod 4.
inline void PrepareProgramme(Guards& guards, const Control& c, tagNET_PROGRAMME_INFO& p) {
  p.bEnable = c.boolValue;
  p.stuOrdinary.bTempletState = c.boolValue;
  for (size_t j = 0; j < 16; ++j) {
    tagNET_PROGRAMME_WINDOW_INFO& w = p.stuOrdinary.stuWindows[j];
    const size_t slot = j % kBufferSlots;
    w.nElementsBufLen = c.bufferLength[slot];
    w.pElementsBuf = c.nullBuffer[slot] ? nullptr : ElementBuffer(guards, c, c.bufferLength[slot]);
  }
}

// ---- JSON text ------------------------------------------------------------------------------

// The most containers any value of a JSON text sits in (0 for a scalar text). JsonCpp's reader
// counts values, not containers, against its limit of 1000: it refuses a text where this is 1000
// or more, even when no container nests deeper than 1000.
inline size_t DeepestValue(std::string_view json) {
  size_t open = 0;
  size_t deepest = 0;
  bool inText = false;
  for (size_t i = 0; i < json.size(); ++i) {
    const char ch = json[i];
    if (inText) {
      if (ch == '\\') {
        ++i;
      } else if (ch == '"') {
        inText = false;
      }
      continue;
    }
    switch (ch) {
      case ']':
      case '}':
        if (open > 0) --open;
        continue;
      case ',':
      case ':':
      case ' ':
      case '\t':
      case '\n':
      case '\r':
        continue;
      case '"':
        inText = true;
        break;
      default:
        break;
    }
    if (open > deepest) deepest = open;
    if (ch == '[' || ch == '{') ++open;
  }
  return deepest;
}

}  // namespace gsc::fuzz

#endif  // GUIDESCREEN_CODEC_FUZZ_FUZZ_SUPPORT_H
