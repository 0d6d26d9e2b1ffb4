/* Compiled as C: the caller-facing records header must be plain C. Every size and offset the C
 * compiler gives must be the one stated for its ABI, or the build stops; the C++ tests then
 * compare them with their own. */
#include <stddef.h>

#include "guidescreen_codec.h"

/* A failed check is a negative array size, named after its line of record_layouts.inc. */
#define GSC_C_CHECK(name, condition) typedef char name[(condition) ? 1 : -1]
#define GSC_C_JOIN(a, b) a##b
#define GSC_C_LINE_CHECK(line, condition) GSC_C_CHECK(GSC_C_JOIN(c_layout_line_, line), condition)

GSC_C_CHECK(unsupported_abi_records_are_stated_for_lp64_ilp32_d8_ilp32_d4_only,
            GSC_RECORD_ABI != GSC_ABI_UNLISTED);
GSC_C_CHECK(c_enum_size, sizeof(EM_ELEMENT_TYPE) == 4);

#define LAYOUT(expression, lp64, ilp32_d8, ilp32_d4)                                  \
  GSC_C_LINE_CHECK(__LINE__, (expression) == GSC_PER_ABI(lp64, ilp32_d8, ilp32_d4) || \
                                 GSC_RECORD_ABI == GSC_ABI_UNLISTED);
#include "record_layouts.inc"
#undef LAYOUT

size_t gsc_c_layout(int which);

/* Size or offset number `which` of the list as the C compiler lays it out, or 0 past the last. */
size_t gsc_c_layout(int which) {
  static const size_t values[] = {
#define LAYOUT(expression, lp64, ilp32_d8, ilp32_d4) expression,
#include "record_layouts.inc"
#undef LAYOUT
  };
  return which >= 0 && (size_t)which < sizeof values / sizeof values[0] ? values[which] : 0;
}
