// What every C entry point needs at its boundary: exceptions turned into statuses, and texts
// written into the caller's bounded buffers.
#ifndef GUIDESCREEN_CODEC_CAPI_BOUNDARY_H
#define GUIDESCREEN_CODEC_CAPI_BOUNDARY_H

#include <cstddef>
#include <exception>
#include <new>
#include <string>

#include "guidescreen_codec/capi.h"

namespace gsc::capi {

// Runs `body`, which returns a status, so that no exception leaves it: running out of memory is
// GSC_STATUS_OUT_OF_MEMORY, anything else GSC_STATUS_INTERNAL_ERROR with its text in `detail`
// where one can be had.
template <typename Body>
int Guarded(std::string& detail, Body body) noexcept {
  try {
    return body();
  } catch (const std::bad_alloc&) {
    return GSC_STATUS_OUT_OF_MEMORY;
  } catch (const std::exception& e) {
    try {
      detail = e.what();
    } catch (...) {  // NOLINT(bugprone-empty-catch): the status alone still says what happened
    }
    return GSC_STATUS_INTERNAL_ERROR;
  } catch (...) {
    return GSC_STATUS_INTERNAL_ERROR;
  }
}

// Stores "<status message>" or "<status message>: <detail>" in `out`, `capacity` bytes, always
// terminated when the capacity is above 0 and cut before a UTF-8 character that would not fit
// whole. Success stores an empty text. Nothing for a null `out`. Allocates nothing.
void WriteMessage(char* out, size_t capacity, int status, const std::string& detail) noexcept;

// Stores `text` and its terminator in `out` (`capacity` bytes), and its length in `*length` (which
// may be null): GSC_STATUS_OK, or GSC_STATUS_BUFFER_TOO_SMALL with nothing stored when it does not
// fit. The size protocol of every function that hands out JSON text.
int WriteText(const std::string& text, char* out, size_t capacity, size_t* length) noexcept;

// The checks every function makes before touching a caller's record: its address suits its type
// and its leading dwSize is `size`. GSC_STATUS_OK, or the status that says which does not hold.
int CheckRecord(const void* record, size_t size, size_t alignment) noexcept;

}  // namespace gsc::capi

#endif  // GUIDESCREEN_CODEC_CAPI_BOUNDARY_H
