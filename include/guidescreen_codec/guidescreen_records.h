/* Guide screen configuration: the screen attribute record and the records of the four screen
 * operations (SET_GUIDESCREEN_CFG, GET_GUIDESCREEN_CFG_BYID, GET_ALL_GUIDESCREEN_CFG,
 * SET_GD_STATUS). Valid C99 and C++17. */
#ifndef GUIDESCREEN_CODEC_GUIDESCREEN_RECORDS_H
#define GUIDESCREEN_CODEC_GUIDESCREEN_RECORDS_H

#include "guidescreen_codec/field_records.h"

/* Screen status; "Status" 0 and 1 are stored as 1 and 2. Written only when 1 or 2. */
typedef GSC_ENUM(EM_GUIDESCREEN_STATUS){
    EM_GUIDESCREEN_STATUS_UNKNOWN = 0,
    EM_GUIDESCREEN_STATUS_JSON_0 = 1,
    EM_GUIDESCREEN_STATUS_JSON_1 = 2,
} EM_GUIDESCREEN_STATUS;

/* How the play dates of an opening-time entry are to be taken; "DateType" 0 to 2 stored as 1 to 3.
 * Written only when 1 to 3; a missing "DateType" reads as 1. */
typedef GSC_ENUM(EM_GUIDESCREEN_DATE_TYPE){
    EM_GUIDESCREEN_DATE_TYPE_UNKNOWN = 0,
    EM_GUIDESCREEN_DATE_TYPE_JSON_0 = 1,
    EM_GUIDESCREEN_DATE_TYPE_JSON_1 = 2,
    EM_GUIDESCREEN_DATE_TYPE_JSON_2 = 3,
} EM_GUIDESCREEN_DATE_TYPE;

/* The state of one display unit. Unlike the other enumerations it counts from 0 and travels as a
 * three-character code inside the "Status" text of SET_GD_STATUS; enumerators are named by code. */
typedef GSC_ENUM(EM_GD_STATUS){
    EM_GD_STATUS_CODE_100 = 0,
    EM_GD_STATUS_CODE_010 = 1,
    EM_GD_STATUS_CODE_001 = 2,
} EM_GD_STATUS;

/* One opening-time entry of a screen ("Time" element). */
typedef struct tagNET_GUIDESCREEN_TIME_INFO {
  bool bEnable;                            /* "Enable" */
  EM_GUIDESCREEN_DATE_TYPE emDateType;     /* "DateType" */
  uint32_t nPlayDatesNum;                  /* length of "PlayDates", 0 to 32 */
  uint32_t nPlayDates[GSC_MAX_PLAY_DATES]; /* "PlayDates" */
  tagNET_TIME_OF_DAY stuOpenTime;          /* "OpenTime" */
  tagNET_TIME_OF_DAY stuCloseTime;         /* "CloseTime" */
  uint8_t byReserved[128];
} tagNET_GUIDESCREEN_TIME_INFO;

/* One split screen ("SplitScreenList" element). */
typedef struct tagNET_GUIDESCREEN_SPLITSCREEN_INFO {
  char szScreenId[GSC_NAME_SIZE]; /* "ScreenId" */
  tagNET_RECT stuRect;            /* "Rect" */
  uint32_t nChildScreenBright;    /* "ChildScreenBright" */
  uint8_t byReserved[132];
} tagNET_GUIDESCREEN_SPLITSCREEN_INFO;

/* One sunrise and sunset entry of the automatic brightness. Both 0 are sent as 6 and 18. */
typedef struct tagNET_GUIDESCREEN_SUN_TIME_INFO {
  uint32_t nSunrise; /* "Sunrise" */
  uint32_t nSunset;  /* "Sunset" */
  uint8_t byReserved[32];
} tagNET_GUIDESCREEN_SUN_TIME_INFO;

/* Automatic brightness ("AutoBright"); all twelve sun entries are always valid. */
typedef struct tagNET_GUIDESCREEN_AUTO_BRIGHT_INFO {
  bool bEnable;                                                 /* "Enable" */
  uint32_t nLightBright;                                        /* "LightBright" */
  uint32_t nDarkBright;                                         /* "DarkBright" */
  tagNET_GUIDESCREEN_SUN_TIME_INFO stuTime[GSC_SUN_TIME_COUNT]; /* "Time" */
} tagNET_GUIDESCREEN_AUTO_BRIGHT_INFO;

/* The configuration of one guide screen. */
typedef struct tagNET_GUIDESCREEN_ATTRIBUTE_INFO {
  uint32_t dwSize;                                            /* set by the caller; never touched */
  char szID[GSC_NAME_SIZE];                                   /* "ID" */
  EM_GUIDESCREEN_STATUS emStatus;                             /* "Status" */
  bool bIsForeverOpen;                                        /* "IsForeverOpen" */
  uint32_t nTimeNum;                                          /* length of "Time", 0 to 8 */
  tagNET_GUIDESCREEN_TIME_INFO stuTime[GSC_MAX_SCREEN_TIMES]; /* "Time" */
  uint32_t nBright;                                           /* "Bright" */
  uint32_t nContrast;                                         /* "Contrast" */
  uint32_t nSaturation;                                       /* "Saturation" */
  uint32_t nVolume;                                           /* "Volume" */
  uint32_t nWidth;                                            /* "Width" */
  uint32_t nHeight;                                           /* "Height" */
  uint32_t nSplitScreenListNum; /* length of "SplitScreenList", 0 to 16 */
  tagNET_GUIDESCREEN_SPLITSCREEN_INFO
      stuSplitScreenList[GSC_MAX_SPLIT_SCREENS];     /* "SplitScreenList" */
  tagNET_GUIDESCREEN_AUTO_BRIGHT_INFO stuAutoBright; /* "AutoBright" */
  uint8_t byReserved[640];
} tagNET_GUIDESCREEN_ATTRIBUTE_INFO;

/* SET_GUIDESCREEN_CFG: every one of the nInfosNum records is sent (no clamp), under "infos" keyed
 * by its szID; two records with the same szID merge into one member. */
typedef struct tagNET_IN_SET_GUIDESCREEN_CFG {
  uint32_t dwSize;
  uint32_t nInfosNum;
  tagNET_GUIDESCREEN_ATTRIBUTE_INFO* pstuInfos; /* caller's array of nInfosNum records */
} tagNET_IN_SET_GUIDESCREEN_CFG;

/* The answer of SET_GUIDESCREEN_CFG: nothing is read into it. */
typedef struct tagNET_OUT_SET_GUIDESCREEN_CFG {
  uint32_t dwSize;
} tagNET_OUT_SET_GUIDESCREEN_CFG;

/* GET_GUIDESCREEN_CFG_BYID. szScreenID holds 64 bytes like every other identifier of screens;
 * an identifier that fills all 64 bytes without a terminator is sent whole. */
typedef struct tagNET_IN_GET_GUIDESCREEN_CFG_BYID {
  uint32_t dwSize;
  char szScreenID[GSC_NAME_SIZE]; /* "ScreenID" */
} tagNET_IN_GET_GUIDESCREEN_CFG_BYID;

/* The answer of GET_GUIDESCREEN_CFG_BYID: the screen read into stuInfo, merged. */
typedef struct tagNET_OUT_GET_GUIDESCREEN_CFG_BYID {
  uint32_t dwSize;
  tagNET_GUIDESCREEN_ATTRIBUTE_INFO stuInfo; /* merged from "DisplayScreenCfg" */
} tagNET_OUT_GET_GUIDESCREEN_CFG_BYID;

/* GET_ALL_GUIDESCREEN_CFG: the request has no parameters. */
typedef struct tagNET_IN_GET_ALL_GUIDESCREEN_CFG {
  uint32_t dwSize;
} tagNET_IN_GET_ALL_GUIDESCREEN_CFG;

/* GET_ALL_GUIDESCREEN_CFG: members of "infos" in ascending byte order of their names fill
 * pstuInfos[0 .. nRetInfosNum); at most nMaxInfosNum records are written. */
typedef struct tagNET_OUT_GET_ALL_GUIDESCREEN_CFG {
  uint32_t dwSize;
  uint32_t nMaxInfosNum;                        /* capacity of pstuInfos, set by the caller */
  uint32_t nRetInfosNum;                        /* records filled */
  tagNET_GUIDESCREEN_ATTRIBUTE_INFO* pstuInfos; /* caller's array of nMaxInfosNum records */
} tagNET_OUT_GET_ALL_GUIDESCREEN_CFG;

/* SET_GD_STATUS: "GDNum" is nGDNum clamped to 170; "Status" joins the three-character codes of
 * the first "GDNum" units. A state other than 0, 1 or 2 has no code: nothing is stored at its
 * place, so the text ends there and later units are not sent, while "GDNum" keeps the full count.
 * (The device reads the text and the count together; inventing a code could switch a unit into a
 * state nobody asked for, so the request keeps this conservative, literal behaviour.) */
typedef struct tagNET_IN_SET_GD_STATUS {
  uint32_t dwSize;
  char szScreenId[GSC_NAME_SIZE];               /* "ScreenId" */
  uint32_t nGDNum;                              /* "GDNum", at most 170 are sent */
  EM_GD_STATUS emStatus[GSC_MAX_DISPLAY_UNITS]; /* "Status" */
} tagNET_IN_SET_GD_STATUS;

/* The answer of SET_GD_STATUS: nothing is read into it. */
typedef struct tagNET_OUT_SET_GD_STATUS {
  uint32_t dwSize;
} tagNET_OUT_SET_GD_STATUS;

#ifdef __cplusplus
/* Sizes on LP64, ILP32 with an 8-byte double, ILP32 with a 4-byte double (record_abi.h). */
static_assert(sizeof(EM_GUIDESCREEN_STATUS) == 4 && sizeof(EM_GD_STATUS) == 4, "enum width");
GSC_RECORD_SIZE(tagNET_GUIDESCREEN_TIME_INFO, 292, 292, 292);
GSC_RECORD_SIZE(tagNET_GUIDESCREEN_SPLITSCREEN_INFO, 216, 216, 216);
GSC_RECORD_SIZE(tagNET_GUIDESCREEN_SUN_TIME_INFO, 40, 40, 40);
GSC_RECORD_SIZE(tagNET_GUIDESCREEN_AUTO_BRIGHT_INFO, 492, 492, 492);
GSC_RECORD_SIZE(tagNET_GUIDESCREEN_ATTRIBUTE_INFO, 7032, 7032, 7032);
GSC_RECORD_SIZE(tagNET_IN_SET_GUIDESCREEN_CFG, 16, 12, 12);
GSC_RECORD_SIZE(tagNET_OUT_SET_GUIDESCREEN_CFG, 4, 4, 4);
GSC_RECORD_SIZE(tagNET_IN_GET_GUIDESCREEN_CFG_BYID, 68, 68, 68);
GSC_RECORD_SIZE(tagNET_OUT_GET_GUIDESCREEN_CFG_BYID, 7036, 7036, 7036);
GSC_RECORD_SIZE(tagNET_IN_GET_ALL_GUIDESCREEN_CFG, 4, 4, 4);
GSC_RECORD_SIZE(tagNET_OUT_GET_ALL_GUIDESCREEN_CFG, 24, 16, 16);
GSC_RECORD_SIZE(tagNET_IN_SET_GD_STATUS, 752, 752, 752);
GSC_RECORD_SIZE(tagNET_OUT_SET_GD_STATUS, 4, 4, 4);
#endif

#endif /* GUIDESCREEN_CODEC_GUIDESCREEN_RECORDS_H */
