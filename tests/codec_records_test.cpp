// Record layouts: the C and C++ compilers agree, and fields sit where callers expect them.
#include <cstddef>

#include "guidescreen_codec.h"
#include "support/fixtures.h"

extern "C" size_t gsc_c_sizeof(int which);

namespace {

TEST(RecordLayout, CAndCppCompilersAgree) {
  const size_t cpp_sizes[] = {
#define LAYOUT(expression) expression,
#include "record_layouts.inc"
#undef LAYOUT
  };
  int i = 0;
  for (size_t size : cpp_sizes) EXPECT_EQ(gsc_c_sizeof(i++), size) << "record " << i - 1;
  EXPECT_EQ(gsc_c_sizeof(i), 0U);
}

TEST(RecordLayout, FieldsSitAtTheirNaturalOffsets) {
  EXPECT_EQ(offsetof(tagNET_GUIDESCREEN_ATTRIBUTE_INFO, szID), 4U);
  EXPECT_EQ(offsetof(tagNET_GUIDESCREEN_ATTRIBUTE_INFO, emStatus), 68U);
  EXPECT_EQ(offsetof(tagNET_GUIDESCREEN_ATTRIBUTE_INFO, nTimeNum), 76U);
  EXPECT_EQ(offsetof(tagNET_GUIDESCREEN_ATTRIBUTE_INFO, stuAutoBright), 5900U);
  EXPECT_EQ(offsetof(tagNET_GUIDESCREEN_TIME_INFO, stuOpenTime), 140U);
  EXPECT_EQ(offsetof(tagNET_GUIDESCREEN_TEXT_INFO, dbLineHeight), 568U);
  EXPECT_EQ(offsetof(tagNET_GUIDESCREEN_NOTE_INFO, stuNoteInfo), 8U);
  EXPECT_EQ(offsetof(tagNET_VIDEO_ELEMENT_INFO, szPath), 65U);
  EXPECT_EQ(offsetof(tagNET_VIDEO_ELEMENT_INFO, stuNote), 208U);
  EXPECT_EQ(offsetof(tagNET_TEXT_ELEMENT_INFO, stuText), 72U);
  EXPECT_EQ(offsetof(tagNET_PLACEHOLDER_ELEMENT_INFO, nNoteNum), 68U);
  EXPECT_EQ(offsetof(tagNET_CAPTURE_ELEMENT_INFO, nPort), 172U);
  EXPECT_EQ(offsetof(tagNET_PROGRAMME_WINDOW_INFO, nElementsNum), 100U);
  EXPECT_EQ(offsetof(tagNET_TIMER_PLAN_INFO, szReviewOpinion), 356U);
  EXPECT_EQ(offsetof(tagNET_OUT_GET_PROGRAMMEPLAN_BYID, stuTimerPlan), 848U);
  EXPECT_EQ(alignof(tagNET_VIDEO_ELEMENT_INFO), 8U);  // why element buffers need copies
}

}  // namespace
