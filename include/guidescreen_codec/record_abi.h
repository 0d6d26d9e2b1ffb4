/* The ABIs whose record layouts this library states and checks.
 *
 * Records use natural alignment and no packing, so a caller's compiler lays them out exactly as
 * ours does on the same ABI. Two properties of an ABI change the records' sizes: the width of a
 * pointer and the alignment of a double inside a structure. Three combinations are supported:
 *
 *   GSC_ABI_LP64      64-bit pointers, double 8-byte aligned (x86_64, aarch64, s390x)
 *   GSC_ABI_ILP32_D8  32-bit pointers, double 8-byte aligned (armhf)
 *   GSC_ABI_ILP32_D4  32-bit pointers, double 4-byte aligned inside structures (i386)
 *
 * docs/record-sizes.md gives every record's size on each. Any other ABI stops a C++ build here;
 * its sizes must be worked out and added to the layout checks before the library can be used
 * there. Valid C99 and C++17. */
#ifndef GUIDESCREEN_CODEC_RECORD_ABI_H
#define GUIDESCREEN_CODEC_RECORD_ABI_H

#ifdef __cplusplus
#include <cstddef>
#else
#include <stddef.h>
#endif

/* Where a double lands after a char tells its alignment inside a structure, which on i386
 * differs from alignof(double). */
typedef struct gsc_double_probe {
  char gsc_before;
  double gsc_double;
} gsc_double_probe;

#define GSC_ABI_UNLISTED 0
#define GSC_ABI_LP64 1
#define GSC_ABI_ILP32_D8 2
#define GSC_ABI_ILP32_D4 3

/* The ABI the compiler lays records out for: one of the GSC_ABI_ values, as a constant
 * expression (offsetof and sizeof are out of the preprocessor's reach). */
#define GSC_RECORD_ABI                                                                    \
  (sizeof(void*) == 8 && offsetof(gsc_double_probe, gsc_double) == 8   ? GSC_ABI_LP64     \
   : sizeof(void*) == 4 && offsetof(gsc_double_probe, gsc_double) == 8 ? GSC_ABI_ILP32_D8 \
   : sizeof(void*) == 4 && offsetof(gsc_double_probe, gsc_double) == 4 ? GSC_ABI_ILP32_D4 \
                                                                       : GSC_ABI_UNLISTED)

/* The one of three figures that belongs to the compiler's ABI; 0, which no size or offset in
 * the layout checks is, on an unlisted ABI. */
#define GSC_PER_ABI(lp64, ilp32_d8, ilp32_d4)        \
  (GSC_RECORD_ABI == GSC_ABI_LP64       ? (lp64)     \
   : GSC_RECORD_ABI == GSC_ABI_ILP32_D8 ? (ilp32_d8) \
   : GSC_RECORD_ABI == GSC_ABI_ILP32_D4 ? (ilp32_d4) \
                                        : 0)

#ifdef __cplusplus
/* States a record's size on each supported ABI, and checks the one of the compiler's. On an
 * unlisted ABI only the assertion below fails, so its message is the one the build shows. */
#define GSC_RECORD_SIZE(record, lp64, ilp32_d8, ilp32_d4)                  \
  static_assert(sizeof(record) == GSC_PER_ABI(lp64, ilp32_d8, ilp32_d4) || \
                    GSC_RECORD_ABI == GSC_ABI_UNLISTED,                    \
                #record ": not the size stated for this ABI in docs/record-sizes.md")

static_assert(GSC_RECORD_ABI != GSC_ABI_UNLISTED,
              "guidescreen-codec: unsupported ABI. Record layouts are stated for LP64 (x86_64, "
              "aarch64, s390x), ILP32 with an 8-byte aligned double (armhf) and ILP32 with a "
              "4-byte aligned double (i386) only; see docs/record-sizes.md");
#endif

#endif /* GUIDESCREEN_CODEC_RECORD_ABI_H */
