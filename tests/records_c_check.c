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
      sizeof(tagNET_GUIDESCREEN_ATTRIBUTE_INFO),
      sizeof(tagNET_IN_SET_GD_STATUS),
      sizeof(tagNET_GUIDESCREEN_TEXT_INFO),
      sizeof(tagNET_GUIDESCREEN_NOTE_INFO),
      sizeof(tagNET_VIDEO_ELEMENT_INFO),
      sizeof(tagNET_PICTURE_ELEMENT_INFO),
      sizeof(tagNET_TEXT_ELEMENT_INFO),
      sizeof(tagNET_PLACEHOLDER_ELEMENT_INFO),
      sizeof(tagNET_CAPTURE_ELEMENT_INFO),
      sizeof(tagNET_PROGRAMME_INFO),
      sizeof(tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES),
      sizeof(tagNET_IMMEDIATELY_PLAN_INFO),
      sizeof(tagNET_TIMER_PLAN_INFO),
      sizeof(tagNET_OUT_GET_PROGRAMMEPLAN_BYID),
      sizeof(tagNET_OUT_GET_ALL_PROGRAMMEPLANS),
      offsetof(tagNET_PROGRAMME_WINDOW_INFO, pElementsBuf),
      offsetof(tagNET_CAPTURE_ELEMENT_INFO, nNoteNum),
      offsetof(tagNET_TIMER_PLAN_INFO, stuProgrammes),
  };
  return which >= 0 && (size_t)which < sizeof sizes / sizeof sizes[0] ? sizes[which] : 0;
}
