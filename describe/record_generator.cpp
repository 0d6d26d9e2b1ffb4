#include "describe/record_generator.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <set>

#include "describe/field_access.h"
#include "describe/operations_table.h"
#include "guidescreen_codec/capi.h"

namespace gsc::fields {

uint64_t ByteSource::Take(unsigned bytes) {
  uint64_t value = 0;
  for (unsigned i = 0; i < bytes; ++i, ++used_)
    if (used_ < size_) value |= uint64_t{data_[used_]} << (8 * i);
  used_ = std::min(used_, size_);
  return value;
}

uint32_t ByteSource::Below(uint32_t n) {
  if (n <= 1) return 0;
  const unsigned bytes = n <= 0x100U ? 1 : n <= 0x10000U ? 2 : 4;
  return static_cast<uint32_t>(Take(bytes) % n);
}

uint32_t ByteSource::Word() {
  return static_cast<uint32_t>(Take(4));
}

uint64_t ByteSource::Wide() {
  return Take(8);
}

namespace {

// Whether `f` is the count or the capacity of another field of `table`: such fields are set with
// what they count, never on their own.
bool IsCounter(const RecordTable& table, const Field& f) {
  return std::any_of(table.fields.begin(), table.fields.end(), [&](const Field& other) {
    return (other.count && std::strcmp(other.count, f.name) == 0) ||
           (other.limit && std::strcmp(other.limit, f.name) == 0);
  });
}

[[noreturn]] void Broken(const char* what) {
  std::fprintf(stderr, "record generator: %s\n", what);
  std::abort();
}

// Zeroed memory for building an element record before it is copied into a buffer, in 8-byte words
// (no record is aligned to more). Words with no padding: a vector of std::max_align_t is not
// zeroed in its padding, which left bytes of the heap in the generated records.
struct Scratch {
  explicit Scratch(size_t bytes) : words(bytes / sizeof(uint64_t) + 1) {}
  Bytes data() { return reinterpret_cast<Bytes>(words.data()); }
  std::vector<uint64_t> words;
};

class Generator {
 public:
  Generator(ByteSource* source, const Plausible* plausible, Memory& memory, const Bounds& bounds)
      : in_(source), plausible_(plausible), memory_(memory), bounds_(bounds) {}

  // `walked`: whether anything that honours the counts reaches this record's pointers.
  void Record(const RecordTable& table, Bytes at, bool walked) {
    std::vector<const char*> capacities;  // capacity fields set by an array already
    for (const Field& f : table.fields) {
      if (IsCounter(table, f)) continue;
      Bytes field = at + f.offset;
      if (f.kind == Kind::kSize) {
        Store<uint32_t>(field, plausible_ || in_->Below(8) != 0 ? static_cast<uint32_t>(table.size)
                                                                : in_->Word());
      } else if (f.kind == Kind::kCallerArray) {
        CallerArray(table, f, at, walked, capacities);
      } else if (f.kind == Kind::kElements) {
        Elements(table, f, at, walked);
      } else if (f.kind == Kind::kHidden) {
        if (!plausible_) std::memset(field, static_cast<int>(in_->Below(256)), f.size * f.extent);
      } else if (f.count) {
        const uint32_t n = Count(f.count, f.extent);
        SetNumber(table, at, f.count, n);
        const uint32_t filled = plausible_ ? std::min(n, f.extent) : f.extent;
        for (uint32_t i = 0; i < filled; ++i) Value(f, field + size_t{i} * f.size, walked && i < n);
      } else {
        for (uint32_t i = 0; i < f.extent; ++i) Value(f, field + size_t{i} * f.size, walked);
      }
    }
    // Capacities no array set (every array null): anything, as nothing is behind them.
    for (const Field& f : table.fields) {
      if (f.kind != Kind::kCallerArray || !f.limit) continue;
      const bool set = std::any_of(capacities.begin(), capacities.end(), [&](const char* name) {
        return std::strcmp(name, f.limit) == 0;
      });
      if (!set) SetNumber(table, at, f.limit, Number());
    }
  }

 private:
  void Value(const Field& f, Bytes at, bool walked) {
    switch (f.kind) {
      case Kind::kText:
      case Kind::kSecret:
        return plausible_ ? PlausibleText(f, at) : Text(at, f.size);
      case Kind::kUnsigned:
      case Kind::kSigned:
        return Store<uint32_t>(at, Number());
      case Kind::kReal:
        return Store<double>(at, Real());
      case Kind::kBool:
        *at = plausible_ ? static_cast<unsigned char>(Next() % 2) : in_->Bool() ? 1 : 0;
        return;
      case Kind::kEnum:
        return Store<int32_t>(at, Enumeration(*f.enumeration));
      case Kind::kRecord:
        return Record(*f.record, at, walked);
      default:
        return;
    }
  }

  // ---- Values ---------------------------------------------------------------------------------

  // A counter that changes with every plausible value, so that neighbours differ.
  uint32_t Next() { return static_cast<uint32_t>(plausible_->seed) + ordinal_++; }

  uint32_t Number() {
    if (plausible_) return 1 + Next() % 12;
    switch (in_->Below(4)) {
      case 0: {  // small, zero first
        const uint32_t v = in_->Below(103);
        return v <= 100 ? v : static_cast<uint32_t>(100 - static_cast<int32_t>(v));
      }
      case 1: {
        static const uint32_t kEdges[] = {0x80000000U, 0x7FFFFFFFU, 0xFFFFFFFFU, 1U};
        return kEdges[in_->Below(4)];
      }
      default:
        return in_->Word();
    }
  }

  double Real() {
    if (plausible_) return 1.25 + 0.25 * (Next() % 4);
    using Limits = std::numeric_limits<double>;
    switch (in_->Below(4)) {
      case 0: {
        static const double kEdgeReals[] = {0.0,
                                            -0.0,
                                            Limits::infinity(),
                                            -Limits::infinity(),
                                            Limits::quiet_NaN(),
                                            -Limits::quiet_NaN(),
                                            Limits::denorm_min(),
                                            -Limits::denorm_min(),
                                            Limits::min() / 3,  // subnormal
                                            Limits::min(),
                                            Limits::max(),
                                            Limits::lowest(),
                                            Limits::epsilon(),
                                            1.5};
        return kEdgeReals[in_->Below(sizeof kEdgeReals / sizeof kEdgeReals[0])];
      }
      case 1:
        return (static_cast<double>(in_->Below(4001)) - 2000.0) / 8.0;
      default: {
        const uint64_t bits = in_->Wide();
        double value;
        std::memcpy(&value, &bits, sizeof value);
        return value;
      }
    }
  }

  int32_t Enumeration(const EnumType& type) {
    const auto& values = type.values;
    if (plausible_) {
      const size_t skip = values.size() > 1 ? 1 : 0;
      return values[skip + Next() % (values.size() - skip)].value;
    }
    switch (in_->Below(8)) {
      case 5:
        return 0;
      case 6: {  // past the last
        int32_t top = std::numeric_limits<int32_t>::min();
        for (const Enumerator& e : values) top = std::max(top, e.value);
        return top + 1 + static_cast<int32_t>(in_->Below(4));
      }
      case 7:
        return in_->Bool() ? -1 - static_cast<int32_t>(in_->Below(4))
                           : static_cast<int32_t>(in_->Word());
      default:
        return values[in_->Below(static_cast<uint32_t>(values.size()))].value;
    }
  }

  // A count of an array of `capacity` entries.
  uint32_t Count(const char* name, uint32_t capacity) {
    if (plausible_) {
      for (const auto& [counted, n] : plausible_->counts)
        if (counted == name) return n;
      return capacity;
    }
    switch (in_->Below(8)) {
      case 5:
        return capacity + 1;
      case 6:
        return in_->Bool() ? 0xFFFFFFFFU : 0x80000000U;
      case 7:
        return in_->Word();
      default:
        return in_->Below(capacity + 1);
    }
  }

  char Printable(unsigned char ch) const {
    if (bounds_.ascii_texts) return static_cast<char>(' ' + ch % 95U);
    return ch == 0 ? 'Z' : static_cast<char>(ch);
  }

  // Empty, terminated at any length, or filling the whole field without a terminator. The bytes
  // after a terminator are not zero, so that a reader of the field past it shows.
  void Text(Bytes at, size_t size) {
    std::memset(at, 'T', size);
    switch (in_->Below(4)) {
      case 0:
        at[0] = '\0';
        return;
      case 3: {  // a short run repeated over the field, no zero in it
        const uint32_t run = 1 + in_->Below(8);
        unsigned char bytes[8];
        for (uint32_t i = 0; i < run; ++i) bytes[i] = static_cast<unsigned char>(in_->Below(256));
        for (size_t i = 0; i < size; ++i)
          at[i] = static_cast<unsigned char>(Printable(bytes[i % run]));
        return;
      }
      default: {
        const size_t length = in_->Below(static_cast<uint32_t>(size));
        for (size_t i = 0; i < length; ++i) {
          const auto ch = static_cast<unsigned char>(in_->Below(256));
          at[i] = bounds_.ascii_texts ? static_cast<unsigned char>(Printable(ch)) : ch;
        }
        at[length] = '\0';
        return;
      }
    }
  }

  void PlausibleText(const Field& f, Bytes at) {
    const char* name = f.name;
    while (*name >= 'a' && *name <= 'z') ++name;  // the type prefix: sz, stu
    char word[64];
    std::snprintf(word, sizeof word, "%s-%d", name, plausible_->seed);
    std::string text = word;
    while (text.size() < f.size / 8) text += std::string(" ") + word;
    const size_t length = std::min(text.size(), f.size - 1);
    std::memcpy(at, text.data(), length);
    at[length] = '\0';
  }

  // ---- Pointers -------------------------------------------------------------------------------

  void CallerArray(const RecordTable& table, const Field& f, Bytes record, bool walked,
                   std::vector<const char*>& capacities) {
    const RecordTable& element = *f.record;
    if (!plausible_ && (!walked || in_->Below(8) == 0)) {
      Store<Bytes>(record + f.offset, nullptr);
      SetNumber(table, record, f.count, Count(f.count, bounds_.caller_array));
      return;
    }
    // Arrays sharing a capacity field hold as many records each.
    const bool shared =
        f.limit && std::any_of(capacities.begin(), capacities.end(),
                               [&](const char* name) { return std::strcmp(name, f.limit) == 0; });
    const uint32_t n = shared       ? fields::Number(table, record, f.limit)
                       : plausible_ ? Count(f.count, 1)
                                    : in_->Below(bounds_.caller_array + 1);
    Bytes array = memory_.Allocate(size_t{n} * element.size, false);
    for (uint32_t i = 0; i < n; ++i) Record(element, array + size_t{i} * element.size, true);
    Store(record + f.offset, array);
    if (f.limit) {
      SetNumber(table, record, f.limit, n);
      capacities.push_back(f.limit);
      SetNumber(table, record, f.count, plausible_ ? n : Count(f.count, n));
    } else {
      SetNumber(table, record, f.count, n);
    }
  }

  void Elements(const RecordTable& table, const Field& f, Bytes record, bool walked) {
    const RecordTable& header = *f.record;
    if (!plausible_ && (!walked || in_->Below(8) == 0)) {
      Store<Bytes>(record + f.offset, nullptr);
      SetNumber(table, record, f.count, Count(f.count, bounds_.entries));
      SetNumber(table, record, f.limit, Number());
      return;
    }
    const uint32_t n = plausible_ ? Count(f.count, 1) : in_->Below(bounds_.entries + 1);
    const EnumType& kinds = *header.fields.front().enumeration;
    std::vector<int32_t> tags(n);
    size_t used = 0;
    size_t last = 0;
    for (int32_t& tag : tags) {
      tag = Enumeration(kinds);
      const RecordTable* variant = VariantOf(header, tag);
      last = header.size + (variant ? variant->size : 0);
      used += last;
    }
    // Exact, with room after the entries, or cut inside the last entry.
    const uint32_t shape = plausible_ ? 0 : in_->Below(4);
    const size_t room = shape == 2 ? 1 + in_->Below(64) : 0;
    const size_t length =
        shape == 3 && n > 0 ? used - 1 - in_->Below(static_cast<uint32_t>(last)) : used + room;
    Bytes buffer = memory_.Allocate(used + room, true);
    uint32_t offset = 0;
    Scratch head(header.size);
    for (const int32_t tag : tags) {
      const RecordTable* variant = VariantOf(header, tag);
      if (variant && variant->alignment > alignof(uint64_t)) Broken("an entry aligned past 8");
      Scratch entry(variant ? variant->size : 0);
      if (variant) Record(*variant, entry.data(), true);
      const uint32_t at = offset;
      if (gsc_element_append(buffer, static_cast<uint32_t>(used + room), &offset,
                             static_cast<EM_ELEMENT_TYPE>(tag), entry.data()) != GSC_STATUS_OK ||
          offset - at != header.size + (variant ? variant->size : 0))
        Broken("the entry sizes differ from the library's");
      // The library leaves the header's reserved bytes zero: give them bytes of their own.
      Record(header, head.data(), true);
      Store<int32_t>(head.data() + header.fields.front().offset, tag);
      std::memcpy(buffer + at, head.data(), header.size);
    }
    Store(record + f.offset, buffer);
    SetNumber(table, record, f.count, plausible_ || in_->Below(8) != 0 ? n : in_->Below(n + 1));
    SetNumber(table, record, f.limit, static_cast<uint32_t>(length));
  }

  ByteSource* in_;
  const Plausible* plausible_;
  Memory& memory_;
  Bounds bounds_;
  uint32_t ordinal_ = 0;
};

void Collect(const RecordTable* table, std::set<const RecordTable*>& seen,
             std::vector<const RecordTable*>& tables) {
  if (!seen.insert(table).second) return;
  tables.push_back(table);
  for (const Field& f : table->fields)
    if (f.record) Collect(f.record, seen, tables);
  if (table->variants)
    for (const Variant& v : *table->variants) Collect(v.record, seen, tables);
}

}  // namespace

void Generate(const RecordTable& table, void* record, ByteSource& source, Memory& memory,
              const Bounds& bounds) {
  Generator(&source, nullptr, memory, bounds).Record(table, static_cast<Bytes>(record), true);
}

void GeneratePlausible(const RecordTable& table, void* record, Memory& memory,
                       const Plausible& plausible) {
  Generator(nullptr, &plausible, memory, Bounds{}).Record(table, static_cast<Bytes>(record), true);
}

const std::vector<const RecordTable*>& AllRecordTables() {
  static const std::vector<const RecordTable*> tables = [] {
    std::set<const RecordTable*> seen;
    std::vector<const RecordTable*> found;
    for (const Operation& op : Operations()) {
      Collect(op.request, seen, found);
      Collect(op.answer, seen, found);
    }
    return found;
  }();
  return tables;
}

const RecordTable* FindRecordTable(const std::string& name) {
  for (const RecordTable* table : AllRecordTables())
    if (name == table->name) return table;
  return nullptr;
}

}  // namespace gsc::fields
