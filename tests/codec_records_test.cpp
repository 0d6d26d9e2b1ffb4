// Record layouts: each size and offset is the one stated for the compiler's ABI, the C and C++
// compilers agree on it, and the element figures callers know from x86_64 hold there.
#include <cstddef>

#include "guidescreen_codec.h"
#include "support/fixtures.h"

extern "C" size_t gsc_c_layout(int which);

namespace {

struct Layout {
  const char* expression;
  size_t actual;
  size_t stated;
};

const Layout kLayouts[] = {
#define LAYOUT(expression, lp64, ilp32_d8, ilp32_d4) \
  {#expression, expression, GSC_PER_ABI(lp64, ilp32_d8, ilp32_d4)},
#include "record_layouts.inc"
#undef LAYOUT
};

TEST(RecordLayout, EverySizeAndOffsetIsTheOneStatedForThisAbiInCAndCpp) {
  int i = 0;
  for (const Layout& layout : kLayouts) {
    EXPECT_EQ(layout.actual, layout.stated) << layout.expression;
    EXPECT_EQ(gsc_c_layout(i++), layout.actual) << "C compiler: " << layout.expression;
  }
  EXPECT_EQ(gsc_c_layout(i), 0U) << "the C list is longer";
}

// Records holding a double are aligned like it, so the one behind a 132-byte header is
// misaligned exactly on the ABIs where a double wants 8 bytes: why buffers are read by copy.
TEST(RecordLayout, ElementRecordsAreAlignedLikeADoubleInARecord) {
  const size_t doubleAlignment = offsetof(gsc_double_probe, gsc_double);
  EXPECT_EQ(alignof(tagNET_VIDEO_ELEMENT_INFO), doubleAlignment);
  EXPECT_EQ(alignof(tagNET_TEXT_ELEMENT_INFO), doubleAlignment);
  EXPECT_EQ(sizeof(tagNET_ELEMENT_COMMON_INFO) % doubleAlignment, GSC_PER_ABI(4U, 4U, 0U));
}

// The figures of the element-buffer drawing, as callers on x86_64 have them.
TEST(RecordLayout, X86_64KeepsTheDocumentedElementFigures) {
#if defined(__x86_64__)
  EXPECT_EQ(sizeof(tagNET_ELEMENT_COMMON_INFO), 132U);
  EXPECT_EQ(sizeof(tagNET_VIDEO_ELEMENT_INFO), 3888U);
  EXPECT_EQ(sizeof(tagNET_PICTURE_ELEMENT_INFO), 3904U);
  EXPECT_EQ(sizeof(tagNET_TEXT_ELEMENT_INFO), 4496U);
  EXPECT_EQ(sizeof(tagNET_PLACEHOLDER_ELEMENT_INFO), 3752U);
  EXPECT_EQ(sizeof(tagNET_CAPTURE_ELEMENT_INFO), 3872U);
#else
  GTEST_SKIP() << "x86_64 only; the list of stated layouts covers this ABI";
#endif
}

}  // namespace
