#include <algorithm>
#include <cstring>

#include "describe/field_access.h"
#include "describe/field_table.h"

namespace gsc::fields {
namespace {

// Whether `f` bounds a caller array or an element buffer of its record: kept, as the pointer is.
bool IsBound(const RecordTable& table, const Field& f) {
  return std::any_of(table.fields.begin(), table.fields.end(), [&](const Field& other) {
    return other.limit != nullptr && std::strcmp(other.limit, f.name) == 0;
  });
}

void Reset(const RecordTable& table, Bytes record) {
  for (const Field& f : table.fields) {
    Bytes at = record + f.offset;
    switch (f.kind) {
      case Kind::kSize:  // the caller's, which no read touches
        break;
      case Kind::kRecord:
        for (uint32_t i = 0; i < f.extent; ++i) Reset(*f.record, at + size_t{i} * f.size);
        break;
      case Kind::kCallerArray: {
        const auto array = Load<Bytes>(at);
        const uint32_t capacity = f.limit != nullptr ? Number(table, record, f.limit) : 0;
        if (array == nullptr) break;
        for (uint32_t i = 0; i < capacity; ++i)
          Reset(*f.record, array + size_t{i} * f.record->size);
        break;
      }
      case Kind::kElements: {
        const auto buffer = Load<Bytes>(at);
        if (buffer != nullptr) std::memset(buffer, 0, Number(table, record, f.limit));
        break;
      }
      default:
        if (!IsBound(table, f)) std::memset(at, 0, f.size * f.extent);
        break;
    }
  }
}

}  // namespace

void ResetForRead(const RecordTable& table, void* record) {
  Reset(table, static_cast<Bytes>(record));
}

}  // namespace gsc::fields
