#include "codec/snprintf.h"

#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string>

// The reserved-looking name is part of the API, and the bounded print is variadic like printf.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,cert-dcl50-cpp)
// NOLINTBEGIN(cppcoreguidelines-pro-type-vararg)
namespace {

// Stores `length` characters of `text` under the limit's rules and returns the result.
int StoreBounded(char* buffer, unsigned long limit, const char* text, size_t length) {
  const unsigned long size = static_cast<unsigned long>(length);
  if (size < limit) {
    std::memcpy(buffer, text, size + 1);
    return static_cast<int>(length);
  }
  std::memcpy(buffer, text, limit);
  return size == limit ? static_cast<int>(length) : -1;
}

}  // namespace

int _snprintf(char* buffer, unsigned long limit, const char* format, ...) {
  va_list args;
  va_start(args, format);
  // A lone "%s" of a terminated text is that text: stored without formatting it first. A null
  // pointer and texts too long for an int take the general way, as the platform prints them.
  if (format[0] == '%' && format[1] == 's' && format[2] == '\0') {
    va_list peek;
    va_copy(peek, args);
    const char* text = va_arg(peek, const char*);
    va_end(peek);
    if (text != nullptr) {
      const size_t length = std::strlen(text);
      if (length < static_cast<size_t>(INT_MAX)) {
        va_end(args);
        return StoreBounded(buffer, limit, text, length);
      }
    }
  }
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
  return StoreBounded(buffer, limit, text, static_cast<size_t>(length));
}
// NOLINTEND(cppcoreguidelines-pro-type-vararg)
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,cert-dcl50-cpp)
