// What the fuzz harnesses share: caller memory fenced by guard bytes, laid out for the readers
// from control bytes and the description of the records; a hard stop that names the call at fault;
// the round trip of a JSON value through its text; and how deep a JSON text nests its values.
#ifndef GUIDESCREEN_CODEC_FUZZ_FUZZ_SUPPORT_H
#define GUIDESCREEN_CODEC_FUZZ_FUZZ_SUPPORT_H

#include <json/json.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "describe/field_access.h"
#include "describe/operations_table.h"
#include "describe/record_generator.h"

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
// The harnesses' own walks over the records are not what is fuzzed: their branches would only
// slow every run with coverage callbacks and blur the coverage that guides the fuzzer.
#if defined(__clang__)
#define GSC_FUZZ_HARNESS __attribute__((no_sanitize("coverage")))
#else
#define GSC_FUZZ_HARNESS
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
//   1      bit 0: the value of every boolean field; bits 1 to 4: caller array slot k is null
//   2 3 4  capacity slots 0 to 2 of the caller arrays (mod 4)
//   5      bits 0 to 3: element buffer slot k is null; bits 4 to 7: its length is then 2^32 - 1
//   6..13  four element buffer lengths, 16 bits each (mod 16384)
//   14     length passed to GetJsonString, minus 4
//   15     the byte element buffers are pre-filled with
// Slots follow the description (ArraySlot, CapacitySlot): caller arrays by the record they hold
// (screens, programmes, immediate plans, timer plans), capacities by their field (screens,
// programmes, plans), element buffers in turn as a record is laid out (window j of a programme
// takes slot j mod 4).
constexpr size_t kControlBytes = 16;
constexpr size_t kArraySlots = 4;
constexpr size_t kCapacitySlots = 3;
constexpr size_t kBufferSlots = 4;
constexpr uint32_t kNoLength = 0xFFFFFFFFU;

struct Control {
  unsigned char fill = 0;
  bool boolValue = false;
  bool nullArray[kArraySlots] = {};
  uint32_t capacity[kCapacitySlots] = {};
  bool nullBuffer[kBufferSlots] = {};
  uint32_t bufferLength[kBufferSlots] = {};
  int textLength = 0;
  unsigned char elementFill = 0;

  explicit Control(const uint8_t* b)
      : fill(b[0]),
        boolValue((b[1] & 1U) != 0),
        textLength(static_cast<int>(b[14]) - 4),
        elementFill(b[15]) {
    for (size_t k = 0; k < kArraySlots; ++k) nullArray[k] = (b[1] & (2U << k)) != 0;
    for (size_t k = 0; k < kCapacitySlots; ++k) capacity[k] = b[2 + k] % 4U;
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

using fields::Field;
using fields::Kind;
using fields::RecordTable;

// The caller arrays and capacities of the operations' answers in the order first met: a caller
// array takes the control slot of the record it holds, its capacity the slot of its field.
struct Slots {
  std::vector<const RecordTable*> arrays;
  std::vector<std::pair<const RecordTable*, std::string>> capacities;

  static const Slots& Get() {
    static const Slots slots = [] {
      Slots s;
      std::vector<const RecordTable*> seen;
      for (const fields::Operation& op : fields::Operations()) s.Walk(*op.answer, seen);
      return s;
    }();
    return slots;
  }

 private:
  void Walk(const RecordTable& table, std::vector<const RecordTable*>& seen) {
    if (std::find(seen.begin(), seen.end(), &table) != seen.end()) return;
    seen.push_back(&table);
    for (const Field& f : table.fields) {
      if (f.kind == Kind::kCallerArray) {
        if (std::find(arrays.begin(), arrays.end(), f.record) == arrays.end())
          arrays.push_back(f.record);
        if (f.limit) {
          const std::pair<const RecordTable*, std::string> capacity(&table, f.limit);
          if (std::find(capacities.begin(), capacities.end(), capacity) == capacities.end())
            capacities.push_back(capacity);
        }
      }
      if (f.record) Walk(*f.record, seen);
    }
  }
};

GSC_FUZZ_HARNESS inline size_t ArraySlot(const RecordTable& element) {
  const auto& arrays = Slots::Get().arrays;
  return static_cast<size_t>(std::find(arrays.begin(), arrays.end(), &element) - arrays.begin()) %
         kArraySlots;
}
GSC_FUZZ_HARNESS inline size_t CapacitySlot(const RecordTable& table, const char* limit) {
  const auto& capacities = Slots::Get().capacities;
  const auto found = std::find_if(capacities.begin(), capacities.end(), [&](const auto& capacity) {
    return capacity.first == &table && capacity.second == limit;
  });
  return static_cast<size_t>(found - capacities.begin()) % kCapacitySlots;
}

// The operations, one for each record of answer (two share tagNET_OUT_ADD_PROGRAMMEPLAN).
inline const std::vector<const fields::Operation*>& DistinctAnswers() {
  static const std::vector<const fields::Operation*> operations = [] {
    std::vector<const fields::Operation*> found;
    for (const fields::Operation& op : fields::Operations()) {
      if (std::none_of(found.begin(), found.end(),
                       [&](const fields::Operation* other) { return other->answer == op.answer; }))
        found.push_back(&op);
    }
    return found;
  }();
  return operations;
}

// Output records laid out as a caller prepares them before a read, from the control bytes and the
// description: every byte the pattern, booleans the control's value (a pattern byte in a bool
// would be undefined behaviour), caller arrays null or of their capacity slot's records, element
// buffers of their slot's length, 4 but not 8 aligned, all in guarded blocks. Check then tells
// whether what a read left could be a caller's record.
class Layout {
 public:
  Layout(Guards& guards, const Control& c) : guards_(guards), c_(c) {}

  // `count` records of `table`; `answer`: the output record of an operation, whose listing
  // counts every finished read sets.
  GSC_FUZZ_HARNESS unsigned char* Record(const RecordTable& table, size_t count = 1,
                                         bool answer = false) {
    unsigned char* records = guards_.Add(table.size * count, 0, c_.fill).data();
    for (size_t i = 0; i < count; ++i) {
      Prepare(table, records + i * table.size);
      laid_.push_back({&table, records + i * table.size, answer});
    }
    return records;
  }
  // A record of the type R, whose table is `name`.
  template <typename R>
  R& New(const char* name) {
    const RecordTable* table = fields::FindRecordTable(name);
    if (table == nullptr || table->size != sizeof(R)) Fail("no table describes", name);
    return *reinterpret_cast<R*>(Record(*table));
  }
  // An element buffer of `length` bytes starting 4 but not 8 bytes aligned, as a record after an
  // element header would.
  unsigned char* Buffer(uint32_t length) { return guards_.Add(length, 4, c_.elementFill).data(); }

  // Checks every record laid out, after a read that `finished` or threw:
  //   dwSize, caller array and element buffer pointers and their capacities and lengths as laid;
  //   every text terminated within its field, or untouched (all pattern);
  //   every count the read changed within its array, and after a finished read the listing
  //   counts of an answer within the caller's room;
  //   every enumeration untouched or one of its values;
  //   element entries counted by a changed count whole within their buffer, under a header of a
  //   known kind (sizes from the description, not from the library).
  GSC_FUZZ_HARNESS void Check(const char* name, bool finished) const {
    for (const Laid& laid : laid_) CheckRecord(*laid.table, laid.at, laid.answer && finished, name);
    for (const Pointer& p : pointers_) {
      if (fields::Load<unsigned char*>(p.field) != p.pointer ||
          (p.limit != nullptr && fields::Load<uint32_t>(p.limit) != p.capacity))
        Fail("a pointer or the capacity behind it changed by", name);
    }
  }

 private:
  struct Laid {
    const RecordTable* table;
    unsigned char* at;
    bool answer;
  };
  struct Pointer {
    unsigned char* field;
    unsigned char* pointer;
    unsigned char* limit;
    uint32_t capacity;
  };

  GSC_FUZZ_HARNESS void Prepare(const RecordTable& table, unsigned char* record) {
    for (const Field& f : table.fields) {
      unsigned char* at = record + f.offset;
      unsigned char* limit = f.limit ? record + table.Find(f.limit)->offset : nullptr;
      if (f.kind == Kind::kBool) {
        for (uint32_t i = 0; i < f.extent; ++i) at[i] = c_.boolValue ? 1 : 0;
      } else if (f.kind == Kind::kRecord) {
        for (uint32_t i = 0; i < f.extent; ++i) Prepare(*f.record, at + size_t{i} * f.size);
      } else if (f.kind == Kind::kCallerArray) {
        const uint32_t capacity = f.limit ? c_.capacity[CapacitySlot(table, f.limit)] : 0;
        unsigned char* array = nullptr;
        if (!c_.nullArray[ArraySlot(*f.record)]) {
          array = guards_.Add(f.record->size * capacity, 0, c_.fill).data();
          for (uint32_t i = 0; i < capacity; ++i) Prepare(*f.record, array + i * f.record->size);
        }
        fields::Store(at, array);
        if (limit) fields::Store(limit, capacity);
        pointers_.push_back({at, array, limit, capacity});
      } else if (f.kind == Kind::kElements) {
        const size_t slot = buffers_++ % kBufferSlots;
        unsigned char* buffer = c_.nullBuffer[slot] ? nullptr : Buffer(c_.bufferLength[slot]);
        fields::Store(at, buffer);
        if (limit) fields::Store(limit, c_.bufferLength[slot]);
        pointers_.push_back({at, buffer, limit, c_.bufferLength[slot]});
      }
    }
  }

  GSC_FUZZ_HARNESS void CheckText(const unsigned char* text, size_t size, const char* name) const {
    if (std::memchr(text, '\0', size) != nullptr) return;
    for (size_t i = 0; i < size; ++i)
      if (text[i] != c_.fill) Fail("text left unterminated by", name);
  }

  // The entries a reader counted must lie within the buffer, each under a header of a known kind.
 public:
  GSC_FUZZ_HARNESS static void CheckEntries(const RecordTable& header, const unsigned char* buffer,
                                            uint32_t length, uint32_t count) {
    const size_t capacity = buffer != nullptr ? length : 0;
    const Field& tag = header.fields.front();
    size_t used = 0;
    for (uint32_t e = 0; e < count; ++e) {
      if (capacity - used < header.size) Fail("element entries overrun");
      const int32_t kind = fields::Load<int32_t>(buffer + used + tag.offset);
      if (tag.enumeration->NameOf(kind) == nullptr) Fail("element header of a kind never stored");
      const RecordTable* record = fields::VariantOf(header, kind);
      const size_t entry = header.size + (record != nullptr ? record->size : 0);
      if (capacity - used < entry) Fail("element entry past the buffer");
      used += entry;
    }
  }

 private:
  // `listing`: the record is an answer after a finished read, whose counts must be set.
  GSC_FUZZ_HARNESS void CheckRecord(const RecordTable& table, const unsigned char* record,
                                    bool listing, const char* name) const {
    for (const Field& f : table.fields) {
      const unsigned char* at = record + f.offset;
      const uint32_t count = f.count ? fields::Number(table, record, f.count) : 0;
      const bool counted = f.count != nullptr && count != c_.Word();
      switch (f.kind) {
        case Kind::kSize:
          if (fields::Load<uint32_t>(at) != c_.Word()) Fail("dwSize changed by", name);
          break;
        case Kind::kText:
        case Kind::kSecret:
          for (uint32_t i = 0; i < f.extent; ++i) CheckText(at + size_t{i} * f.size, f.size, name);
          break;
        case Kind::kEnum:
          for (uint32_t i = 0; i < f.extent; ++i) {
            const int32_t value = fields::Load<int32_t>(at + size_t{i} * f.size);
            if (value != static_cast<int32_t>(c_.Word()) && !f.enumeration->NameOf(value))
              Fail("enumeration set out of its values by", name);
          }
          break;
        case Kind::kRecord:
          for (uint32_t i = 0; i < f.extent; ++i)
            CheckRecord(*f.record, at + size_t{i} * f.size, false, name);
          break;
        case Kind::kCallerArray: {
          const auto* array = fields::Load<const unsigned char*>(at);
          const uint32_t capacity = array && f.limit ? fields::Number(table, record, f.limit) : 0;
          for (uint32_t i = 0; array && i < capacity; ++i)
            CheckRecord(*f.record, array + size_t{i} * f.record->size, false, name);
          if (listing && count > capacity)
            Fail("more records counted than the array holds by", name);
          break;
        }
        case Kind::kElements:
          if (counted) {
            CheckEntries(*f.record, fields::Load<const unsigned char*>(at),
                         fields::Number(table, record, f.limit), count);
          }
          break;
        default:
          break;
      }
      if (f.kind != Kind::kCallerArray && f.kind != Kind::kElements && f.count &&
          (counted || listing) && count > f.extent)
        Fail("count past its array's extent, set by", name);
    }
  }

  Guards& guards_;
  const Control& c_;
  std::vector<Laid> laid_;
  std::vector<Pointer> pointers_;
  size_t buffers_ = 0;
};

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
