#include "codec/snprintf.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string>

// The reserved-looking name is part of the API, and the bounded print is variadic like printf.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,cert-dcl50-cpp)
// NOLINTBEGIN(cppcoreguidelines-pro-type-vararg)
int _snprintf(char* buffer, unsigned long limit, const char* format, ...) {
  va_list args;
  va_start(args, format);
  // The codecs print short texts; a stack buffer covers them without touching the heap.
  char local[512];
  va_list again;
  va_copy(again, args);
  const int length = std::vsnprintf(local, sizeof local, format, args);
  va_end(args);
  if (length < 0) {
    va_end(again);
    return -1;
  }
  const char* text = local;
  std::string large;
  if (static_cast<size_t>(length) >= sizeof local) {
    large.resize(static_cast<size_t>(length) + 1);
    (void)std::vsnprintf(&large[0], large.size(), format, again);  // the length is known
    text = large.data();
  }
  va_end(again);

  const unsigned long size = static_cast<unsigned long>(length);
  if (size < limit) {
    std::memcpy(buffer, text, size + 1);
    return length;
  }
  std::memcpy(buffer, text, limit);
  return size == limit ? length : -1;
}
// NOLINTEND(cppcoreguidelines-pro-type-vararg)
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,cert-dcl50-cpp)
