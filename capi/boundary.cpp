#include "capi/boundary.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace gsc::capi {
namespace {

bool IsUtf8Continuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// Appends `text` at out[*used] while room is left for the terminator; false once it was cut.
bool Append(char* out, size_t capacity, size_t* used, const char* text) {
  const size_t size = std::strlen(text);
  const size_t room = capacity - 1 - *used;
  if (size <= room) {
    std::copy_n(text, size, out + *used);
    *used += size;
    return true;
  }
  // Give back the continuation bytes of a character cut in two, and its lead byte.
  size_t cut = room;
  while (cut > 0 && IsUtf8Continuation(text[cut])) --cut;
  std::copy_n(text, cut, out + *used);
  *used += cut;
  return false;
}

}  // namespace

void WriteMessage(char* out, size_t capacity, int status, const std::string& detail) noexcept {
  if (out == nullptr || capacity == 0) return;
  size_t used = 0;
  if (status != GSC_STATUS_OK && Append(out, capacity, &used, gsc_status_message(status)) &&
      !detail.empty() && Append(out, capacity, &used, ": "))
    Append(out, capacity, &used, detail.c_str());
  out[used] = '\0';
}

int CheckRecord(const void* record, size_t size, size_t alignment) noexcept {
  if (record == nullptr) return GSC_STATUS_INVALID_ARGUMENT;
  // Alignment is a property of the address as a number.
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast)
  if (reinterpret_cast<uintptr_t>(record) % alignment != 0) return GSC_STATUS_INVALID_ARGUMENT;
  uint32_t dwSize = 0;
  std::memcpy(&dwSize, record, sizeof dwSize);
  return dwSize == size ? GSC_STATUS_OK : GSC_STATUS_WRONG_RECORD_SIZE;
}

int WriteText(const std::string& text, char* out, size_t capacity, size_t* length) noexcept {
  if (length != nullptr) *length = text.size();
  if (text.size() >= capacity) return GSC_STATUS_BUFFER_TOO_SMALL;
  std::copy_n(text.data(), text.size(), out);
  out[text.size()] = '\0';
  return GSC_STATUS_OK;
}

}  // namespace gsc::capi
