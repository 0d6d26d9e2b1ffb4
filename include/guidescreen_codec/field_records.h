/* Small records shared by every subsystem: rectangles, colours, times of day and dates.
 *
 * Every record header of this library is valid C99 as well as C++17. Records are plain structures
 * with natural alignment; callers own them and may place them anywhere suitably aligned.
 *
 * Enumerations: an enumeration field holds whatever 32-bit value the caller stores. In C++ each
 * enumeration therefore has the fixed underlying type `int` (any int is a valid value); in C the
 * compiler picks an int-sized type for the same enumerators. Enumerations whose values the device
 * defines without naming them have enumerators named after the JSON number they travel as
 * (`..._JSON_0` travels as 0 and is stored as 1): the library carries numbers, not meanings.
 */
#ifndef GUIDESCREEN_CODEC_FIELD_RECORDS_H
#define GUIDESCREEN_CODEC_FIELD_RECORDS_H

#ifdef __cplusplus
#include <cstdint>
#else
#include <stdbool.h>
#include <stdint.h>
#endif

#include "guidescreen_codec/capacities.h"
#include "guidescreen_codec/record_abi.h"

/* Declares `enum name` with an int underlying type in C++ and a plain enumeration in C. */
#ifdef __cplusplus
#define GSC_ENUM(name) enum name : int
#else
#define GSC_ENUM(name) enum name
#endif

/* A rectangle; travels as the JSON array [nLeft, nTop, nRight, nBottom]. */
typedef struct tagNET_RECT {
  int32_t nLeft;
  int32_t nTop;
  int32_t nRight;
  int32_t nBottom;
} tagNET_RECT;

/* An RGBA colour; travels as the JSON array [nRed, nGreen, nBlue, nAlpha]. */
typedef struct tagQX_COLOR_RGBA {
  int32_t nRed;
  int32_t nGreen;
  int32_t nBlue;
  int32_t nAlpha;
} tagQX_COLOR_RGBA;

/* A time of day, three fields inside its parent record; travels as the text "HH:MM:SS"
 * ("%02d:%02d:%02d"). Values are not range-checked in either direction. */
typedef struct tagNET_TIME_OF_DAY {
  int32_t nHour;
  int32_t nMinute;
  int32_t nSecond;
} tagNET_TIME_OF_DAY;

/* A calendar date, three fields inside its parent record; travels as the text "YYYY:MM:DD"
 * ("%04d:%02d:%02d", colons, not hyphens). Values are not range-checked. */
typedef struct tagNET_DATE_INFO {
  int32_t nYear;
  int32_t nMonth;
  int32_t nDay;
} tagNET_DATE_INFO;

#ifdef __cplusplus
/* Sizes on LP64, ILP32 with an 8-byte double, ILP32 with a 4-byte double (record_abi.h). */
GSC_RECORD_SIZE(tagNET_RECT, 16, 16, 16);
GSC_RECORD_SIZE(tagQX_COLOR_RGBA, 16, 16, 16);
GSC_RECORD_SIZE(tagNET_TIME_OF_DAY, 12, 12, 12);
GSC_RECORD_SIZE(tagNET_DATE_INFO, 12, 12, 12);
#endif

#endif /* GUIDESCREEN_CODEC_FIELD_RECORDS_H */
