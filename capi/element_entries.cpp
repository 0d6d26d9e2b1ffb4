// The element buffer functions of the C interface, on the entry sizes the codecs themselves use.
#include <cstdint>
#include <cstring>

#include "guidescreen_codec/capi.h"
#include "programme/element_buffer.h"

namespace {

using gsc::programme::ElementEntrySize;
using gsc::programme::kElementHeaderSize;

size_t LargestEntry() {
  size_t largest = kElementHeaderSize;
  for (const EM_ELEMENT_TYPE kind :
       {EM_ELEMENT_TYPE_VIDEO, EM_ELEMENT_TYPE_PICTURE, EM_ELEMENT_TYPE_TEXT,
        EM_ELEMENT_TYPE_PLACEHOLDER, EM_ELEMENT_TYPE_CAPTURE}) {
    const size_t entry = ElementEntrySize(kind);
    if (entry > largest) largest = entry;
  }
  return largest;
}

}  // namespace

extern "C" uint32_t gsc_element_entry_size(EM_ELEMENT_TYPE kind) {
  return static_cast<uint32_t>(ElementEntrySize(kind));
}

extern "C" uint32_t gsc_element_max_entry_size(void) {
  return static_cast<uint32_t>(LargestEntry());
}

extern "C" size_t gsc_element_buffer_size(uint32_t entries) {
  const size_t largest = LargestEntry();
  return entries > SIZE_MAX / largest ? SIZE_MAX : entries * largest;
}

extern "C" int gsc_element_append(unsigned char* buffer, uint32_t length, uint32_t* used,
                                  EM_ELEMENT_TYPE kind, const void* record) {
  if (buffer == nullptr || used == nullptr || *used > length) return GSC_STATUS_INVALID_ARGUMENT;
  const size_t entry = ElementEntrySize(kind);
  const size_t record_size = entry - kElementHeaderSize;
  if (record_size > 0 && record == nullptr) return GSC_STATUS_INVALID_ARGUMENT;
  if (entry > length - *used) return GSC_STATUS_BUFFER_TOO_SMALL;
  // A fresh header: the kind, and reserved bytes that hold nothing of the caller's stack.
  tagNET_ELEMENT_COMMON_INFO header;
  std::memset(&header, 0, sizeof header);
  header.emElementType = kind;
  unsigned char* at = buffer + *used;
  std::memcpy(at, &header, sizeof header);
  if (record_size > 0) std::memcpy(at + kElementHeaderSize, record, record_size);
  *used += static_cast<uint32_t>(entry);
  return GSC_STATUS_OK;
}

extern "C" int gsc_element_next(const unsigned char* buffer, uint32_t length, uint32_t* offset,
                                EM_ELEMENT_TYPE* kind, void* record, size_t record_capacity) {
  if (buffer == nullptr || offset == nullptr || kind == nullptr || *offset > length)
    return GSC_STATUS_INVALID_ARGUMENT;
  const uint32_t left = length - *offset;
  if (left < kElementHeaderSize) return GSC_STATUS_BUFFER_TOO_SMALL;
  const unsigned char* at = buffer + *offset;
  EM_ELEMENT_TYPE stored = EM_ELEMENT_TYPE_UNKNOWN;
  std::memcpy(&stored, at, sizeof stored);
  const size_t entry = ElementEntrySize(stored);
  const size_t record_size = entry - kElementHeaderSize;
  if (entry > left || (record != nullptr && record_size > record_capacity))
    return GSC_STATUS_BUFFER_TOO_SMALL;
  *kind = stored;
  if (record != nullptr && record_size > 0)
    std::memcpy(record, at + kElementHeaderSize, record_size);
  *offset += static_cast<uint32_t>(entry);
  return GSC_STATUS_OK;
}
