// The field-named form of the records: each record is described once, by a table of its fields
// (name, offset, kind), and that table drives both directions, record -> JSON for printing and
// JSON -> record for encoding. Every field is reached by byte offset and copied with memcpy, so a
// record may sit anywhere in memory, including 4-but-not-8 aligned inside an element buffer.
#ifndef GUIDESCREEN_CODEC_DESCRIBE_FIELD_TABLE_H
#define GUIDESCREEN_CODEC_DESCRIBE_FIELD_TABLE_H

#include <json/value.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "describe/arena.h"
#include "describe/enumerations.h"

namespace gsc::fields {

// How a field is stored and shown.
enum class Kind {
  kHidden,       // described for the layout only, never shown (reserved bytes)
  kSize,         // dwSize: never shown; set to the record's size when the tool fills a record
  kText,         // char[size]: shown as text (up to the first zero byte, or all `size` bytes)
  kSecret,       // char[size]: a text shown as "***" unless secrets are asked for
  kUnsigned,     // uint32_t
  kSigned,       // int32_t
  kReal,         // double
  kBool,         // bool
  kEnum,         // 32-bit enumeration: shown as {"value": v, "name": enumerator}
  kRecord,       // a nested record described by `record`
  kCallerArray,  // pointer to a caller's array of `record`s, `count` of them shown
  kElements,     // pointer to a window's element buffer: `count` entries, `limit` bytes
};

struct RecordTable;

// One field of a record. A field with `extent` above 1 is a fixed array of that many values,
// `size` bytes apart; when `count` names a field, that field bounds the values shown.
struct Field {
  const char* name;
  Kind kind;
  size_t offset;
  size_t size;                  // bytes of one value (of one text, of one record, of the pointer)
  size_t alignment;             // alignment of one value, for the layout check
  uint32_t extent = 1;          // values in the array; 1 for a single value
  const char* count = nullptr;  // the unsigned field counting the values or entries shown
  const char* limit = nullptr;  // capacity field of a caller array; byte length of elements
  const EnumType* enumeration = nullptr;  // kEnum
  const RecordTable* record = nullptr;    // kRecord, kCallerArray; entry header of kElements
};

// The records an element buffer entry may hold after its header, by the header's first field.
struct Variant {
  int tag;
  const RecordTable* record;
};

// A record type and its fields in declaration order.
struct RecordTable {
  const char* name;
  size_t size;
  size_t alignment;
  std::vector<Field> fields;
  const std::vector<Variant>* variants = nullptr;  // set on the header of element entries
  // The field named `name`, or nullptr.
  const Field* Find(const std::string& name) const;
};

// Raised for a field-named form that does not describe a record; the message names the field.
class FieldError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// How ToJson shows a record.
struct ShowOptions {
  bool show_secrets = false;
};

// Room a reading caller gives a record before deserialize: records per caller array and bytes
// per element buffer.
struct Room {
  uint32_t capacity = 32;
  uint32_t elements_buffer = 0;
};

// The field-named form of the record at `record`: every shown field under its member name, texts
// as text, arrays bounded by their counts, element buffers as entries. Reads nothing beyond the
// counts, capacities and buffer lengths the record itself gives.
Json::Value ToJson(const RecordTable& table, const void* record, const ShowOptions& options = {});

// Fills the zero-filled record at `record` from its field-named form. Missing fields stay zero; a
// count missing beside its array becomes the array's length. Caller arrays and element buffers
// are allocated from `arena` and laid out here (entries end to end, headers of 132 bytes).
// Throws FieldError naming the field for an unknown name, a wrong type or a value out of range.
void FromJson(const RecordTable& table, const Json::Value& form, void* record, Arena& arena);

// Prepares the zero-filled record at `record` for reading as a caller does: dwSize set, caller
// arrays of `room.capacity` records with their capacity fields, element buffers of
// `room.elements_buffer` bytes with their lengths, all allocated from `arena`.
void Prepare(const RecordTable& table, void* record, Arena& arena, const Room& room);

// Sets the capacity field of every caller array of the record at `record` to `capacity`.
void SetCapacities(const RecordTable& table, void* record, uint32_t capacity);

// Brings the record at `record` back to what a prepared record holds before any read: every field
// zero but dwSize (of the record and of records inside it: the caller's), the pointers to caller
// arrays and element buffers, and the capacities and lengths that bound them. The records of its
// caller arrays, up to their capacities, are reset the same way, and its element buffers are zeroed
// over their lengths, since a read merges into what a buffer holds. Touches nothing beyond those
// capacities and lengths.
void ResetForRead(const RecordTable& table, void* record);

// ---- Describing fields (used by the record tables) -------------------------------------------

// A field of type T at `offset`: the kind follows from the type (texts, numbers, booleans);
// arrays of them take their extent from T.
template <typename T>
Field Describe(const char* name, size_t offset, const char* count = nullptr) {
  using Element = std::remove_all_extents_t<T>;
  Field f{name, Kind::kHidden, offset, sizeof(Element), alignof(Element)};
  if constexpr (std::is_same_v<Element, char>) {
    f.kind = Kind::kText;
    f.size = std::is_array_v<std::remove_extent_t<T>> ? sizeof(std::remove_extent_t<T>) : sizeof(T);
  } else if constexpr (std::is_same_v<Element, bool>) {
    f.kind = Kind::kBool;
  } else if constexpr (std::is_same_v<Element, double>) {
    f.kind = Kind::kReal;
  } else if constexpr (std::is_same_v<Element, uint32_t>) {
    f.kind = Kind::kUnsigned;
  } else if constexpr (std::is_same_v<Element, int32_t>) {
    f.kind = Kind::kSigned;
  } else {
    static_assert(std::is_same_v<Element, unsigned char>, "describe this field explicitly");
  }
  f.extent = static_cast<uint32_t>(sizeof(T) / f.size);
  f.count = count;
  return f;
}

// An enumeration field (or array of them).
template <typename T>
Field Describe(const char* name, size_t offset, const EnumType& type, const char* count = nullptr) {
  using Element = std::remove_all_extents_t<T>;
  static_assert(std::is_enum_v<Element> && sizeof(Element) == 4, "32-bit enumerations only");
  Field f{name, Kind::kEnum, offset, 4, 4, sizeof(T) / 4, count};
  f.enumeration = &type;
  return f;
}

// A nested record field (or array of them).
template <typename T>
Field Describe(const char* name, size_t offset, const RecordTable& table,
               const char* count = nullptr) {
  using Element = std::remove_all_extents_t<T>;
  static_assert(std::is_class_v<Element>, "records only");
  Field f{
      name, Kind::kRecord, offset, sizeof(Element), alignof(Element), sizeof(T) / sizeof(Element),
      count};
  f.record = &table;
  return f;
}

// `f` stored the same way but shown as `kind` (kSecret for a text, kSize for dwSize).
inline Field WithKind(Field f, Kind kind) {
  f.kind = kind;
  return f;
}

// A pointer field: a caller array of `table` records or an element buffer (`table` is then the
// entry header), `count` shown, bounded by `limit`.
inline Field DescribePointer(const char* name, size_t offset, Kind kind, const RecordTable& table,
                             const char* count, const char* limit) {
  Field f{name, kind, offset, sizeof(void*), alignof(void*), 1, count, limit};
  f.record = &table;
  return f;
}

// The table of the record type R from its fields.
template <typename R>
RecordTable Table(const char* name, std::vector<Field> fields) {
  return RecordTable{name, sizeof(R), alignof(R), std::move(fields)};
}

}  // namespace gsc::fields

// The table of the record `Type`, whose fields are listed with the macros below.
#define GSC_TABLE(Type, ...)                              \
  [] {                                                    \
    using R = Type;                                       \
    return ::gsc::fields::Table<R>(#Type, {__VA_ARGS__}); \
  }()
// Table entries for a member of the record type R in scope.
#define GSC_FIELD(member, ...) \
  ::gsc::fields::Describe<decltype(R::member)>(#member, offsetof(R, member), ##__VA_ARGS__)
#define GSC_FIELD_AS(member, kind) ::gsc::fields::WithKind(GSC_FIELD(member), kind)
#define GSC_POINTER(member, kind, table, count, limit) \
  ::gsc::fields::DescribePointer(#member, offsetof(R, member), kind, table, count, limit)
#endif  // GUIDESCREEN_CODEC_DESCRIBE_FIELD_TABLE_H
