/* Compiled as C99: the caller-facing records header must be plain C. The sizes seen by a C
 * compiler are handed to the C++ tests, which compare them with their own. */
#include <stddef.h>

#include "guidescreen_codec.h"

#define GSC_C_CHECK(name, condition) typedef char name[(condition) ? 1 : -1]

GSC_C_CHECK(c_attribute_size, sizeof(tagNET_GUIDESCREEN_ATTRIBUTE_INFO) == 7032);
GSC_C_CHECK(c_video_size, sizeof(tagNET_VIDEO_ELEMENT_INFO) == 3888);
GSC_C_CHECK(c_header_size, sizeof(tagNET_ELEMENT_COMMON_INFO) == 132);
GSC_C_CHECK(c_enum_size, sizeof(EM_ELEMENT_TYPE) == 4);

size_t gsc_c_sizeof(int which);

/* The size of record `which` as the C compiler lays it out, or 0 past the last. */
size_t gsc_c_sizeof(int which) {
  static const size_t sizes[] = {
#define LAYOUT(expression) expression,
#include "record_layouts.inc"
#undef LAYOUT
  };
  return which >= 0 && (size_t)which < sizeof sizes / sizeof sizes[0] ? sizes[which] : 0;
}
