/* Programmes: text blocks and notes, the five element kinds, the programme record with its
 * windows and element buffers, and the records of the six programme operations
 * (GET_PROGRAMME_BYID, GET_ALL_PROGRAMMES, GET_ALL_BRIEFLYPROGRAMMES, ADD_ONE_PROGRAMME,
 * MODIFY_ONE_PROGRAMME, DEL_PROGRAMMES). Valid C99 and C++17. */
#ifndef GUIDESCREEN_CODEC_PROGRAMME_RECORDS_H
#define GUIDESCREEN_CODEC_PROGRAMME_RECORDS_H

#include "guidescreen_codec/field_records.h"

/* Text alignment and effects of a text block; the device defines the meaning of each value.
 * Written only when not 0 (any other value v as v - 1); a missing key reads as 1. */
typedef GSC_ENUM(EM_TEXT_HORI_ALIGN){
    EM_TEXT_HORI_ALIGN_UNKNOWN = 0,
    EM_TEXT_HORI_ALIGN_JSON_0 = 1,
    EM_TEXT_HORI_ALIGN_JSON_1 = 2,
    EM_TEXT_HORI_ALIGN_JSON_2 = 3,
} EM_TEXT_HORI_ALIGN;

/* Vertical alignment of a text block; same rules as EM_TEXT_HORI_ALIGN. */
typedef GSC_ENUM(EM_TEXT_VERT_ALIGN){
    EM_TEXT_VERT_ALIGN_UNKNOWN = 0,
    EM_TEXT_VERT_ALIGN_JSON_0 = 1,
    EM_TEXT_VERT_ALIGN_JSON_1 = 2,
    EM_TEXT_VERT_ALIGN_JSON_2 = 3,
} EM_TEXT_VERT_ALIGN;

/* How a text or picture enters ("EnterStyle"); same rules as EM_TEXT_HORI_ALIGN. */
typedef GSC_ENUM(EM_ENTER_STYLE){
    EM_ENTER_STYLE_UNKNOWN = 0, EM_ENTER_STYLE_JSON_0 = 1, EM_ENTER_STYLE_JSON_1 = 2,
    EM_ENTER_STYLE_JSON_2 = 3,  EM_ENTER_STYLE_JSON_3 = 4, EM_ENTER_STYLE_JSON_4 = 5,
} EM_ENTER_STYLE;

/* How a text or picture leaves ("ExitStyle"); same rules as EM_TEXT_HORI_ALIGN. */
typedef GSC_ENUM(EM_EXIT_STYLE){
    EM_EXIT_STYLE_UNKNOWN = 0, EM_EXIT_STYLE_JSON_0 = 1, EM_EXIT_STYLE_JSON_1 = 2,
    EM_EXIT_STYLE_JSON_2 = 3,  EM_EXIT_STYLE_JSON_3 = 4, EM_EXIT_STYLE_JSON_4 = 5,
} EM_EXIT_STYLE;

/* The kind of a window element; travels as the element's "Type" (value - 1). */
typedef GSC_ENUM(EM_ELEMENT_TYPE){
    EM_ELEMENT_TYPE_UNKNOWN = 0,     /* no record follows the header */
    EM_ELEMENT_TYPE_VIDEO = 1,       /* tagNET_VIDEO_ELEMENT_INFO, "Type" 0 */
    EM_ELEMENT_TYPE_PICTURE = 2,     /* tagNET_PICTURE_ELEMENT_INFO, "Type" 1 */
    EM_ELEMENT_TYPE_TEXT = 3,        /* tagNET_TEXT_ELEMENT_INFO, "Type" 2 */
    EM_ELEMENT_TYPE_PLACEHOLDER = 4, /* tagNET_PLACEHOLDER_ELEMENT_INFO, "Type" 3 */
    EM_ELEMENT_TYPE_CAPTURE = 5,     /* tagNET_CAPTURE_ELEMENT_INFO, "Type" 4 */
} EM_ELEMENT_TYPE;

/* Capture type of a capture element ("CaptureType" 0 or 1). */
typedef GSC_ENUM(EM_CAPTURE_TYPE){
    EM_CAPTURE_TYPE_UNKNOWN = 0,
    EM_CAPTURE_TYPE_JSON_0 = 1,
    EM_CAPTURE_TYPE_JSON_1 = 2,
} EM_CAPTURE_TYPE;

/* How a window tours its elements ("TourPeriod" 0 to 2). */
typedef GSC_ENUM(EM_TOUR_PERIOD_TYPE){
    EM_TOUR_PERIOD_TYPE_UNKNOWN = 0, EM_TOUR_PERIOD_TYPE_JSON_0 = 1, EM_TOUR_PERIOD_TYPE_JSON_1 = 2,
    EM_TOUR_PERIOD_TYPE_CUSTOM_TIME = 3, /* the period is nTourPeriodTime ("TourPeriodTime") */
} EM_TOUR_PERIOD_TYPE;

/* Kind of programme in the brief listing ("ProgrammeType" 0 or 1). */
typedef GSC_ENUM(EM_PROGRAMME_TYPE){
    EM_PROGRAMME_TYPE_UNKNOWN = 0,
    EM_PROGRAMME_TYPE_ORDINARY = 1, /* the kind written with an "Ordinary" object */
    EM_PROGRAMME_TYPE_JSON_1 = 2,   /* a second kind the device defines */
} EM_PROGRAMME_TYPE;

/* A run of formatted text: the body of a text element and of every note. */
typedef struct tagNET_GUIDESCREEN_TEXT_INFO {
  char szContent[GSC_CONTENT_SIZE];      /* "Content" */
  uint32_t nFontSize;                    /* "FontSize" */
  tagQX_COLOR_RGBA stuFontColor;         /* "FontColor" */
  char szFontStyle[GSC_FONT_STYLE_SIZE]; /* "FontStyle" */
  double dbLineHeight;                   /* "LineHeight" */
  EM_TEXT_HORI_ALIGN emTextHoriAlign;    /* "TextHoriAlign" */
  EM_TEXT_VERT_ALIGN emTextVertAlign;    /* "TextVertAlign" */
  uint32_t nPlayTime;                    /* "PlayTime" */
  uint32_t nPlayCount;                   /* "PlayCount" */
  uint32_t nStayTime;                    /* "StayTime" */
  EM_ENTER_STYLE emEnterStyle;           /* "EnterStyle" */
  EM_EXIT_STYLE emExitStyle;             /* "ExitStyle" */
  uint8_t byReserved[128];
} tagNET_GUIDESCREEN_TEXT_INFO;

/* A note attached to an element: a text block with a rectangle of its own. */
typedef struct tagNET_GUIDESCREEN_NOTE_INFO {
  bool bEnable;                             /* "Enable" */
  tagNET_GUIDESCREEN_TEXT_INFO stuNoteInfo; /* "NoteInfo" */
  tagNET_RECT stuNoteRect;                  /* "NoteRect" */
  uint8_t byReserved[128];
} tagNET_GUIDESCREEN_NOTE_INFO;

/* Every element record starts with szName and bFillerState and ends with nNoteNum, stuNote and
 * byReserved; the kind's own fields sit in between, at the same level. */

/* A video element ("Type" 0). */
typedef struct tagNET_VIDEO_ELEMENT_INFO {
  char szName[GSC_NAME_SIZE];                          /* "Name" */
  bool bFillerState;                                   /* "FillerState" */
  char szPath[GSC_PATH_SIZE];                          /* "Video"."Path" */
  uint32_t nPlayCount;                                 /* "Video"."PlayCount" */
  uint32_t nNoteNum;                                   /* length of "Note", 0 to 4 */
  tagNET_GUIDESCREEN_NOTE_INFO stuNote[GSC_MAX_NOTES]; /* "Note" */
  uint8_t byReserved[128];
} tagNET_VIDEO_ELEMENT_INFO;

/* A picture element ("Type" 1). */
typedef struct tagNET_PICTURE_ELEMENT_INFO {
  char szName[GSC_NAME_SIZE];  /* "Name" */
  bool bFillerState;           /* "FillerState" */
  char szPath[GSC_PATH_SIZE];  /* "Picture"."Path" */
  uint32_t nPlayTime;          /* "Picture"."PlayTime" */
  uint32_t nPlayCount;         /* "Picture"."PlayCount" */
  uint32_t nDiaphaneity;       /* "Picture"."Diaphaneity" */
  uint32_t nStayTime;          /* "Picture"."StayTime" */
  EM_ENTER_STYLE emEnterStyle; /* "Picture"."EnterStyle" */
  EM_EXIT_STYLE emExitStyle;   /* "Picture"."ExitStyle" */
  uint32_t nNoteNum;
  tagNET_GUIDESCREEN_NOTE_INFO stuNote[GSC_MAX_NOTES];
  uint8_t byReserved[128];
} tagNET_PICTURE_ELEMENT_INFO;

/* A text element ("Type" 2): one text block and its notes. */
typedef struct tagNET_TEXT_ELEMENT_INFO {
  char szName[GSC_NAME_SIZE];           /* "Name" */
  bool bFillerState;                    /* "FillerState" */
  tagNET_GUIDESCREEN_TEXT_INFO stuText; /* "Text" */
  uint32_t nNoteNum;
  tagNET_GUIDESCREEN_NOTE_INFO stuNote[GSC_MAX_NOTES];
  uint8_t byReserved[128];
} tagNET_TEXT_ELEMENT_INFO;

/* A placeholder element ("Type" 3): the common fields and notes only. */
typedef struct tagNET_PLACEHOLDER_ELEMENT_INFO {
  char szName[GSC_NAME_SIZE]; /* "Name" */
  bool bFillerState;          /* "FillerState" */
  uint32_t nNoteNum;
  tagNET_GUIDESCREEN_NOTE_INFO stuNote[GSC_MAX_NOTES];
  uint8_t byReserved[128];
} tagNET_PLACEHOLDER_ELEMENT_INFO;

/* A capture element; the password travels as plain text like every other string. */
typedef struct tagNET_CAPTURE_ELEMENT_INFO {
  char szName[GSC_NAME_SIZE];          /* "Name" */
  bool bFillerState;                   /* "FillerState" */
  char szUserName[GSC_USER_NAME_SIZE]; /* "DeviceInfo"."UserName" */
  char szPassword[GSC_PASSWORD_SIZE];  /* "DeviceInfo"."Password" */
  char szIP[GSC_IP_SIZE];              /* "DeviceInfo"."IP" */
  uint32_t nPort;                      /* "DeviceInfo"."Port", any 32-bit value is carried */
  uint32_t nChannel;                   /* "DeviceInfo"."Channel" */
  EM_CAPTURE_TYPE emCaptureType;       /* "DeviceInfo"."CaptureType" */
  uint32_t nPlayTime;                  /* "DeviceInfo"."PlayTime" */
  uint32_t nNoteNum;
  tagNET_GUIDESCREEN_NOTE_INFO stuNote[GSC_MAX_NOTES];
  uint8_t byReserved[128];
} tagNET_CAPTURE_ELEMENT_INFO;

/* The header of one entry of a window's element buffer. Entries are laid end to end: a header,
 * then the record of its kind (nothing for kind 0). Because the header is 132 bytes, a record may
 * start at an offset that is a multiple of 4 but not of 8; the codecs access a record in place
 * only where its address suits its type, and otherwise through an aligned copy. */
typedef struct tagNET_ELEMENT_COMMON_INFO {
  EM_ELEMENT_TYPE emElementType;
  uint8_t byReserved[128]; /* never touched by the codecs */
} tagNET_ELEMENT_COMMON_INFO;

/* One window of a programme. Before reading, the caller sets pElementsBuf and nElementsBufLen;
 * the reader never writes past nElementsBufLen bytes. Before writing, the caller lays
 * nElementsNum entries into pElementsBuf. */
typedef struct tagNET_PROGRAMME_WINDOW_INFO {
  char szWinID[GSC_NAME_SIZE];         /* "WinID" */
  int32_t nVolume;                     /* "Volume" */
  tagQX_COLOR_RGBA stuBackgroundColor; /* "BackgroundColor" */
  uint32_t nDiaphaneity;               /* "Diaphaneity" */
  EM_TOUR_PERIOD_TYPE emTourPeriod;    /* "TourPeriod" */
  uint32_t nTourPeriodTime; /* "TourPeriodTime", only with EM_TOUR_PERIOD_TYPE_CUSTOM_TIME */
  uint8_t byReserved1[4];
  uint32_t nElementsNum;    /* entries in the element buffer, length of "Elements" */
  uint8_t* pElementsBuf;    /* the caller's element buffer */
  uint32_t nElementsBufLen; /* its length in bytes */
  uint8_t byReserved[128];
} tagNET_PROGRAMME_WINDOW_INFO;

/* The content of an ordinary programme ("Ordinary"). */
typedef struct tagNET_ORDINARY_PROGRAMME_INFO {
  bool bTempletState;                                       /* "TempletState" */
  char szDescription[GSC_DESCRIPTION_SIZE];                 /* "Description" */
  uint32_t nWindowsNum;                                     /* length of "Windows", at most 16 */
  tagNET_PROGRAMME_WINDOW_INFO stuWindows[GSC_MAX_WINDOWS]; /* "Windows" */
} tagNET_ORDINARY_PROGRAMME_INFO;

/* One programme: a named layout of windows. */
typedef struct tagNET_PROGRAMME_INFO {
  char szProgrammeName[GSC_NAME_SIZE];        /* "ProgrammeName" */
  char szProgrammeID[GSC_NAME_SIZE];          /* "ProgrammeID" */
  bool bEnable;                               /* "Enable" */
  tagNET_ORDINARY_PROGRAMME_INFO stuOrdinary; /* "Ordinary" */
  uint8_t byReserved[640];
} tagNET_PROGRAMME_INFO;

/* One entry of the brief programme listing. */
typedef struct tagNET_BRIEFLY_PROGRAMME_INFO {
  char szProgrammeName[GSC_NAME_SIZE]; /* "ProgrammeName" */
  char szProgrammeID[GSC_NAME_SIZE];   /* "ProgrammeID" */
  EM_PROGRAMME_TYPE emProgrammeType;   /* "ProgrammeType"; kept when the key is missing */
  bool bEnable;                        /* "Enable" */
  bool bTempletState;                  /* "TempletState", from the entry's own top level */
  uint8_t byReserved[512];
} tagNET_BRIEFLY_PROGRAMME_INFO;

/* GET_PROGRAMME_BYID: the programme asked for, sent as "ProgrammeID". */
typedef struct tagNET_IN_GET_PROGRAMME_BYID {
  uint32_t dwSize;
  char szProgrammeID[GSC_NAME_SIZE]; /* "ProgrammeID" */
} tagNET_IN_GET_PROGRAMME_BYID;

/* The caller sets the element buffers of stuProgramme's windows before the call. */
typedef struct tagNET_OUT_GET_PROGRAMME_BYID {
  uint32_t dwSize;
  tagNET_PROGRAMME_INFO stuProgramme; /* merged from "Programme" */
} tagNET_OUT_GET_PROGRAMME_BYID;

/* GET_ALL_PROGRAMMES: the request has no parameters. */
typedef struct tagNET_IN_GET_ALL_PROGRAMMES {
  uint32_t dwSize;
} tagNET_IN_GET_ALL_PROGRAMMES;

/* Members of "infos" in ascending byte order of their names fill pstuInfos[0 .. nRetInfosNum). */
typedef struct tagNET_OUT_GET_ALL_PROGRAMMES {
  uint32_t dwSize;
  uint32_t nMaxInfosNum;            /* capacity of pstuInfos, set by the caller */
  uint32_t nRetInfosNum;            /* records filled */
  tagNET_PROGRAMME_INFO* pstuInfos; /* caller's array, element buffers set up */
} tagNET_OUT_GET_ALL_PROGRAMMES;

/* GET_ALL_BRIEFLYPROGRAMMES: the request has no parameters. */
typedef struct tagNET_IN_GET_ALL_BRIEFLYPROGRAMMES {
  uint32_t dwSize;
} tagNET_IN_GET_ALL_BRIEFLYPROGRAMMES;

/* At most 32 entries are returned. */
typedef struct tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES {
  uint32_t dwSize;
  uint32_t nRetInfosNum;
  tagNET_BRIEFLY_PROGRAMME_INFO stuInfos[GSC_MAX_BRIEF_PROGRAMMES];
} tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES;

/* ADD_ONE_PROGRAMME: the new programme (its element buffers laid out by the caller). */
typedef struct tagNET_IN_ADD_ONE_PROGRAMME {
  uint32_t dwSize;
  tagNET_PROGRAMME_INFO stuInfo; /* "info" */
} tagNET_IN_ADD_ONE_PROGRAMME;

/* The answer of ADD_ONE_PROGRAMME: the identifier the device gave the programme. */
typedef struct tagNET_OUT_ADD_ONE_PROGRAMME {
  uint32_t dwSize;
  char szProgrammeID[GSC_NAME_SIZE]; /* "ProgrammeID" of the new programme */
} tagNET_OUT_ADD_ONE_PROGRAMME;

/* The programme's own szProgrammeID names the programme to modify; it is sent twice. */
typedef struct tagNET_IN_MODIFY_ONE_PROGRAMME {
  uint32_t dwSize;
  tagNET_PROGRAMME_INFO stuProgramme; /* "Programme" */
} tagNET_IN_MODIFY_ONE_PROGRAMME;

/* The answer of MODIFY_ONE_PROGRAMME: nothing is read into it. */
typedef struct tagNET_OUT_MODIFY_ONE_PROGRAMME {
  uint32_t dwSize;
} tagNET_OUT_MODIFY_ONE_PROGRAMME;

/* The list holds 32 identifiers, as many as the brief listing returns and the plan deletion
 * takes; a larger count sends the first 32. */
typedef struct tagNET_IN_DEL_PROGRAMMES {
  uint32_t dwSize;
  uint32_t nProgrammeIDListNum;
  char szProgrammeIDList[GSC_MAX_PROGRAMME_IDS][GSC_NAME_SIZE]; /* "ProgrammeIDList" */
} tagNET_IN_DEL_PROGRAMMES;

/* The answer of DEL_PROGRAMMES: nothing is read into it. */
typedef struct tagNET_OUT_DEL_PROGRAMMES {
  uint32_t dwSize;
} tagNET_OUT_DEL_PROGRAMMES;

#ifdef __cplusplus
/* Sizes on LP64, ILP32 with an 8-byte double, ILP32 with a 4-byte double (record_abi.h). */
GSC_RECORD_SIZE(tagNET_GUIDESCREEN_TEXT_INFO, 736, 736, 728);
GSC_RECORD_SIZE(tagNET_GUIDESCREEN_NOTE_INFO, 888, 888, 876);
GSC_RECORD_SIZE(tagNET_VIDEO_ELEMENT_INFO, 3888, 3888, 3836);
GSC_RECORD_SIZE(tagNET_PICTURE_ELEMENT_INFO, 3904, 3904, 3856);
GSC_RECORD_SIZE(tagNET_TEXT_ELEMENT_INFO, 4496, 4496, 4432);
GSC_RECORD_SIZE(tagNET_PLACEHOLDER_ELEMENT_INFO, 3752, 3752, 3704);
GSC_RECORD_SIZE(tagNET_CAPTURE_ELEMENT_INFO, 3872, 3872, 3824);
GSC_RECORD_SIZE(tagNET_ELEMENT_COMMON_INFO, 132, 132, 132);
GSC_RECORD_SIZE(tagNET_PROGRAMME_WINDOW_INFO, 248, 240, 240);
GSC_RECORD_SIZE(tagNET_ORDINARY_PROGRAMME_INFO, 4104, 3976, 3976);
GSC_RECORD_SIZE(tagNET_PROGRAMME_INFO, 4880, 4748, 4748);
GSC_RECORD_SIZE(tagNET_BRIEFLY_PROGRAMME_INFO, 648, 648, 648);
GSC_RECORD_SIZE(tagNET_IN_GET_PROGRAMME_BYID, 68, 68, 68);
GSC_RECORD_SIZE(tagNET_OUT_GET_PROGRAMME_BYID, 4888, 4752, 4752);
GSC_RECORD_SIZE(tagNET_IN_GET_ALL_PROGRAMMES, 4, 4, 4);
GSC_RECORD_SIZE(tagNET_OUT_GET_ALL_PROGRAMMES, 24, 16, 16);
GSC_RECORD_SIZE(tagNET_IN_GET_ALL_BRIEFLYPROGRAMMES, 4, 4, 4);
GSC_RECORD_SIZE(tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES, 20744, 20744, 20744);
GSC_RECORD_SIZE(tagNET_IN_ADD_ONE_PROGRAMME, 4888, 4752, 4752);
GSC_RECORD_SIZE(tagNET_OUT_ADD_ONE_PROGRAMME, 68, 68, 68);
GSC_RECORD_SIZE(tagNET_IN_MODIFY_ONE_PROGRAMME, 4888, 4752, 4752);
GSC_RECORD_SIZE(tagNET_OUT_MODIFY_ONE_PROGRAMME, 4, 4, 4);
GSC_RECORD_SIZE(tagNET_IN_DEL_PROGRAMMES, 2056, 2056, 2056);
GSC_RECORD_SIZE(tagNET_OUT_DEL_PROGRAMMES, 4, 4, 4);
#endif

#endif /* GUIDESCREEN_CODEC_PROGRAMME_RECORDS_H */
