/* The fixed sizes of the records: how many entries each array holds and how many bytes each text
 * field takes, its terminator included. The records are declared with these names, so code that
 * walks an array or fills a text field can use them in place of a bare number. Valid C99 and
 * C++17; preprocessor constants, so that C callers may size arrays with them. */
#ifndef GUIDESCREEN_CODEC_CAPACITIES_H
#define GUIDESCREEN_CODEC_CAPACITIES_H

/* ---- Text fields, in bytes with the terminator ---------------------------------------------- */

#define GSC_NAME_SIZE 64           /* names and identifiers of screens, programmes, plans, ... */
#define GSC_REVIEW_OPINION_SIZE 64 /* szReviewOpinion of a timer plan */
#define GSC_DESCRIPTION_SIZE 128   /* szDescription of a programme */
#define GSC_PATH_SIZE 128          /* szPath of a video or picture element */
#define GSC_CONTENT_SIZE 512       /* szContent of a text block */
#define GSC_FONT_STYLE_SIZE 32     /* szFontStyle of a text block */
#define GSC_USER_NAME_SIZE 32      /* szUserName of a capture element */
#define GSC_PASSWORD_SIZE 32       /* szPassword of a capture element */
#define GSC_IP_SIZE 40             /* szIP of a capture element */

/* ---- Arrays, in entries --------------------------------------------------------------------- */

#define GSC_MAX_SCREEN_TIMES 8      /* opening-time entries of a screen (stuTime) */
#define GSC_MAX_PLAY_DATES 32       /* play dates of an opening-time entry or a timer plan */
#define GSC_MAX_SPLIT_SCREENS 16    /* split screens of a screen (stuSplitScreenList) */
#define GSC_SUN_TIME_COUNT 12       /* sunrise and sunset entries, all always valid */
#define GSC_MAX_DISPLAY_UNITS 170   /* display unit states of SET_GD_STATUS */
#define GSC_MAX_NOTES 4             /* notes of an element (stuNote) */
#define GSC_MAX_WINDOWS 16          /* windows of a programme (stuWindows) */
#define GSC_MAX_BRIEF_PROGRAMMES 32 /* entries of the brief programme listing */
#define GSC_MAX_PROGRAMME_IDS 32    /* identifiers of DEL_PROGRAMMES */
#define GSC_MAX_PLAN_PROGRAMMES 32  /* programmes of a timer plan (stuProgrammes) */
#define GSC_MAX_PLAN_IDS 32         /* identifiers of DEL_PROGRAMMEPLANS */

#endif /* GUIDESCREEN_CODEC_CAPACITIES_H */
