// The members of one JSON object as a reader sees them: the object's members are walked once, in
// the order JsonCpp keeps them, and matched against the sorted table of the keys that the
// object's codecs know. Each step then finds its member in a slot instead of descending the
// member map again, and a member that matches no key is what reveals a key no reader or writer
// uses.
#ifndef GUIDESCREEN_CODEC_CODEC_MEMBERS_H
#define GUIDESCREEN_CODEC_CODEC_MEMBERS_H

#include <json/value.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

#include "codec/reporting.h"
#include "codec/text_value.h"

namespace gsc::codec {

// Orders names as JsonCpp orders an object's members: bytes compared unsigned up to the shorter
// length, then the shorter name first. Negative, zero or positive like memcmp.
constexpr int CompareNames(const char* a, size_t aLength, const char* b, size_t bLength) {
  const size_t common = aLength < bLength ? aLength : bLength;
  for (size_t i = 0; i < common; ++i) {
    const auto x = static_cast<unsigned char>(a[i]);
    const auto y = static_cast<unsigned char>(b[i]);
    if (x != y) return x < y ? -1 : 1;
  }
  if (aLength == bLength) return 0;
  return aLength < bLength ? -1 : 1;
}

// The first `count` (at most 8) bytes at `bytes` as a 64-bit load from memory would read them on
// this machine, the other bytes 0.
constexpr uint64_t WordOf(const char* bytes, size_t count) {
  uint64_t word = 0;
  for (size_t i = 0; i < count; ++i) {
    const uint64_t byte = static_cast<unsigned char>(bytes[i]);
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
    word |= byte << (56U - 8U * i);
#else
    word |= byte << (8U * i);
#endif
  }
  return word;
}

// The bits of the first `count` (below 8) bytes of a word loaded from memory.
constexpr uint64_t LowBytesMask(size_t count) {
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
  return count == 0 ? 0 : ~uint64_t{0} << (64U - 8U * count);
#else
  return (uint64_t{1} << (8U * count)) - 1;
#endif
}

// The keys one object's codecs know, kept in JsonCpp's member order.
template <size_t N>
struct KeyTable {
  static constexpr size_t kSize = N;
  struct Key {
    const char* name;
    uint32_t length;
    // The name's first eight bytes (those there are) and its last eight, as a load from memory
    // reads them, for a comparison by words (see IsKey).
    uint64_t head = 0;
    uint64_t tail = 0;
  };
  Key keys[N];

  // The index of `name`, or N when it is not one of the keys; for the steps, at compile time.
  constexpr size_t IndexOf(const char* name, size_t length) const {
    for (size_t i = 0; i < N; ++i) {
      if (CompareNames(keys[i].name, keys[i].length, name, length) == 0) return i;
    }
    return N;
  }
};

// The key of a step: GSC_KEY("FontSize"). A literal passed as an argument is no constant
// expression inside the callee, so the step would find its key in the table only at run time; a
// stateless lambda returning it is, so a step whose key the object does not know fails to compile.
// ("" refuses anything but a literal.)
#define GSC_KEY(name) ([]() -> const auto& { return "" name; })

// Whether `Key` is what GSC_KEY makes: a callable returning a literal.
template <typename Key, typename = void>
constexpr bool kIsKeyName = false;
template <typename Key>
constexpr bool kIsKeyName<
    Key,
    std::enable_if_t<std::is_array_v<std::remove_reference_t<std::invoke_result_t<const Key&>>>>> =
    true;

// The table of `names`, given in any order (codecs list them in the order of their steps).
template <size_t... K>
constexpr KeyTable<sizeof...(K)> Keys(const char (&... names)[K]) {
  KeyTable<sizeof...(K)> table{{{names, static_cast<uint32_t>(K - 1)}...}};
  // Insertion sort: tables are small and this runs at compile time.
  for (size_t i = 1; i < sizeof...(K); ++i) {
    for (size_t j = i; j > 0; --j) {
      auto& a = table.keys[j - 1];
      auto& b = table.keys[j];
      if (CompareNames(a.name, a.length, b.name, b.length) <= 0) break;
      const auto swapped = a;
      a = b;
      b = swapped;
    }
  }
  for (auto& key : table.keys) {
    key.head = WordOf(key.name, key.length < 8 ? key.length : 8);
    if (key.length > 8) key.tail = WordOf(key.name + key.length - 8, 8);
  }
  return table;
}

// Whether key `i` of `Table` is `name`, where at least eight bytes can be read from `name` on
// (a parsed text's strings are followed by more). A name of up to sixteen bytes is compared as
// two words, overlapping when shorter.
template <const auto& Table>
inline bool IsKey(size_t i, const char* name, size_t length) {
  const auto& key = Table.keys[i];
  if (key.length != length) return false;
  if (length > 16) return std::memcmp(key.name, name, length) == 0;
  uint64_t head = 0;
  std::memcpy(&head, name, sizeof head);
  if (length < 8) return (head & LowBytesMask(length)) == key.head;
  uint64_t tail = 0;
  std::memcpy(&tail, name + length - 8, sizeof tail);
  return head == key.head && (length == 8 || tail == key.tail);
}

// The index of `name` in `Table`, or N when it is not one of its keys. Key `hint` is tried first:
// members tend to come in the same order in every object of a kind, so the key after the last one
// found is usually the next.
template <const auto& Table>
size_t FindKeyInTable(const char* name, size_t length) {
  constexpr size_t N = std::remove_reference_t<decltype(Table)>::kSize;
  for (size_t i = 0; i < N; ++i) {
    if (IsKey<Table>(i, name, length)) return i;
  }
  return N;
}
template <const auto& Table>
inline size_t FindKey(const char* name, size_t length, size_t hint = 0) {
  constexpr size_t N = std::remove_reference_t<decltype(Table)>::kSize;
  if (hint < N && IsKey<Table>(hint, name, length)) return hint;
  return FindKeyInTable<Table>(name, length);
}

// The members of `json` against the keys of `Table`. `json` is only walked when it is an object;
// a value of any other type has no members, and the first step that looks one up raises exactly
// what JsonCpp's lookup raises for it, at that step (or, when the report skips failures, `json`
// is noted once and read as null: see ObjectOrNull).
//
// The table is a template argument so that a step finds its slot at compile time.
template <typename Context, const auto& Table, typename V = Json::Value>
class Members {
  static constexpr size_t N = std::remove_reference_t<decltype(Table)>::kSize;
  static constexpr bool kText = std::is_same_v<V, TextValue>;

 public:
  // The slots are left uninitialised: `found_` says which hold a member, and clearing them all
  // for every object costs more than reading the object's few members.
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
  Members(const V& json, Context& context) : json_(ObjectOrNull(context, json)), context_(context) {
    if (json_.isObject()) Walk();
  }

  // The member under `key` (GSC_KEY of one of the table's keys), null when missing.
  template <typename Key>
  ValueRef<V> operator[](Key key) const {
    static_assert(kIsKeyName<Key>, "a step names its key with GSC_KEY(\"...\")");
    // Calling the lambda reads none of the parameter's state, so this is a constant expression.
    constexpr const auto& name = key();
    constexpr size_t length = sizeof name - 1;
    constexpr size_t slot = Table.IndexOf(name, length);
    static_assert(slot < N, "the key is missing from the object's key table");
    // (Guarded so that a missing key fails with the assertion alone.)
    if constexpr (slot < N) {
      if (json_.isObject()) {
        if ((found_ & (uint64_t{1} << slot)) == 0) return ValueTraits<V>::Null();
        const auto* member = slots_[slot];
        if constexpr (kText) {
          return TextValue(json_.document(), member);
        } else {
          return *member;
        }
      }
    }
    // Null has no members; any other type throws from JsonCpp's own lookup.
    if constexpr (kText) {
      TextValue member;
      json_.find(name, name + length, member);
      return member;
    } else {
      const Json::Value* member = json_.find(name, name + length);
      return member != nullptr ? *member : Json::Value::nullSingleton();
    }
  }

  Context& context() const { return context_; }

 private:
  void Walk() {
    if constexpr (kText) {
      WalkText();
    } else {
      WalkTree();
    }
  }

  // JsonCpp keeps members in name order: one merge against the sorted table.
  void WalkTree() {
    size_t next = 0;
    const auto end = json_.end();
    for (auto it = json_.begin(); it != end; ++it) {
      const char* nameEnd = nullptr;
      const char* name = it.memberName(&nameEnd);
      const auto length = static_cast<size_t>(nameEnd - name);
      int order = 1;
      while (next < N && (order = CompareNames(Table.keys[next].name, Table.keys[next].length, name,
                                               length)) < 0) {
        ++next;
      }
      if (next < N && order == 0) {
        found_ |= uint64_t{1} << next;
        slots_[next++] = &*it;
      } else if constexpr (Context::kReporting) {
        context_.Add(gsc::FindingKind::kUnknownMember,
                     Segment::Member(name, static_cast<uint32_t>(length)),
                     "unknown member, ignored: " + Describe(*it));
      }
    }
  }

  // A text keeps members in its own order, duplicates included: each key's slot takes the last
  // member of its name, and unknown members are noted as JsonCpp would list them.
  void WalkText() {
    const TextDocument* document = json_.document();
    bool unknown = false;
    size_t hint = 0;
    for (const uint64_t* at = json_.First(); at != json_.End();) {
      const char* name = nullptr;
      uint32_t length = 0;
      TextValue::Name(document, at, &name, &length);
      const size_t slot = FindKey<Table>(name, length, hint);
      if (slot < N) {
        found_ |= uint64_t{1} << slot;
        slots_[slot] = at + 1;
        hint = slot + 1;
      } else {
        unknown = true;
      }
      at = TextValue::After(document, at + 1);
    }
    if constexpr (Context::kReporting) {
      if (unknown) NoteUnknownMembers();
    }
  }

  void NoteUnknownMembers() {
    std::vector<NamedValue> members;
    KeyedMembers(json_, members);
    for (const NamedValue& member : members) {
      if (FindKey<Table>(member.name, member.length) < N) continue;
      context_.Add(gsc::FindingKind::kUnknownMember, Segment::Member(member.name, member.length),
                   "unknown member, ignored: " + Describe(member.value));
    }
  }

  using SlotPointer = std::conditional_t<kText, const uint64_t*, const Json::Value*>;

  static_assert(N <= 64, "one bit of found_ per key");

  ValueRef<V> json_;
  Context& context_;
  uint64_t found_ = 0;
  SlotPointer slots_[N];
};

// The members of `json` as a reader of the object whose keys are `Table` sees them.
template <const auto& Table, typename Context, typename V>
Members<Context, Table, V> MembersOf(const V& json, Context& context) {
  return Members<Context, Table, V>(json, context);
}

}  // namespace gsc::codec

#endif  // GUIDESCREEN_CODEC_CODEC_MEMBERS_H
