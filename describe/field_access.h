// Reading and writing the fields of a record at any address: every value is copied with memcpy,
// so a record may sit 4 but not 8 aligned inside an element buffer.
#ifndef GUIDESCREEN_CODEC_DESCRIBE_FIELD_ACCESS_H
#define GUIDESCREEN_CODEC_DESCRIBE_FIELD_ACCESS_H

#include <cstdint>
#include <cstring>

#include "describe/field_table.h"

namespace gsc::fields {

using Bytes = unsigned char*;
using ConstBytes = const unsigned char*;

template <typename T>
T Load(ConstBytes at) {
  T value;
  std::memcpy(&value, at, sizeof value);
  return value;
}
template <typename T>
void Store(Bytes at, T value) {
  std::memcpy(at, &value, sizeof value);
}

// The unsigned field `name` of the record at `record`, as a count or a capacity; 0 without one.
inline uint32_t Number(const RecordTable& table, ConstBytes record, const char* name) {
  const Field* f = name != nullptr ? table.Find(name) : nullptr;
  return f ? Load<uint32_t>(record + f->offset) : 0;
}
inline void SetNumber(const RecordTable& table, Bytes record, const char* name, uint32_t value) {
  if (const Field* f = table.Find(name)) Store(record + f->offset, value);
}

// The record an element entry of kind `tag` holds after its header, or nullptr.
inline const RecordTable* VariantOf(const RecordTable& header, int tag) {
  for (const Variant& v : *header.variants)
    if (v.tag == tag) return v.record;
  return nullptr;
}
inline int TagOf(const RecordTable& header, ConstBytes entry) {
  return Load<int32_t>(entry + header.fields.front().offset);
}

}  // namespace gsc::fields

#endif  // GUIDESCREEN_CODEC_DESCRIBE_FIELD_ACCESS_H
