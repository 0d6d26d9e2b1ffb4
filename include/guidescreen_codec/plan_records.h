/* Programme plans: the immediate and timer plan records and the records of the seven plan
 * operations (GET_ALL_PROGRAMMEPLANS, GET_PROGRAMMEPLAN_BYID, ADD_IMME_PROGRAMMEPLAN,
 * ADD_TIMER_PROGRAMMEPLAN, MODIFY_IMME_PROGRAMMEPLAN, MODIFY_TIMER_PROGRAMMEPLAN,
 * DEL_PROGRAMMEPLANS). Valid C99 and C++17. */
#ifndef GUIDESCREEN_CODEC_PLAN_RECORDS_H
#define GUIDESCREEN_CODEC_PLAN_RECORDS_H

#include "guidescreen_codec/field_records.h"

/* The kind of a plan object, from its "PlanType" (0 immediate, 1 timer). */
typedef GSC_ENUM(EM_PROGRAMMEPLAN_TYPE){
    EM_PROGRAMMEPLAN_TYPE_UNKNOWN = 0, /* no plan was recognised */
    EM_PROGRAMMEPLAN_TYPE_IMMEDIATELY = 1,
    EM_PROGRAMMEPLAN_TYPE_TIMER = 2,
} EM_PROGRAMMEPLAN_TYPE;

/* Period type of a timer plan ("PeriodType" 0 to 3); the device defines the meanings. Written
 * when not 0 (any other value v as v - 1); a missing key reads as 1. */
typedef GSC_ENUM(EM_PLAN_PERIOD_TYPE){
    EM_PLAN_PERIOD_TYPE_UNKNOWN = 0, EM_PLAN_PERIOD_TYPE_JSON_0 = 1, EM_PLAN_PERIOD_TYPE_JSON_1 = 2,
    EM_PLAN_PERIOD_TYPE_JSON_2 = 3,  EM_PLAN_PERIOD_TYPE_JSON_3 = 4,
} EM_PLAN_PERIOD_TYPE;

/* Review state of a timer plan ("ReviewState" 0 or 1); same writing and reading rules. */
typedef GSC_ENUM(EM_PLAN_REVIEW_STATE){
    EM_PLAN_REVIEW_STATE_UNKNOWN = 0,
    EM_PLAN_REVIEW_STATE_JSON_0 = 1,
    EM_PLAN_REVIEW_STATE_JSON_1 = 2,
} EM_PLAN_REVIEW_STATE;

/* An immediate plan: one programme played at once on a split screen. */
typedef struct tagNET_IMMEDIATELY_PLAN_INFO {
  char szPlanName[GSC_NAME_SIZE];      /* "PlanName" */
  char szPlanID[GSC_NAME_SIZE];        /* "PlanID" */
  char szSplitScreenID[GSC_NAME_SIZE]; /* "SplitScreenID" */
  bool bEnable;                        /* "Immediately"."Enable" */
  uint32_t nPlayTime; /* "Immediately"."PlayTime": written unsigned, read as a signed int */
  char szProgrammeName[GSC_NAME_SIZE]; /* "Immediately"."ProgrammeName" */
  char szProgrammeID[GSC_NAME_SIZE];   /* "Immediately"."ProgrammeID" */
  uint8_t byReserved[512];
} tagNET_IMMEDIATELY_PLAN_INFO;

/* One programme of a timer plan ("Timer"."Programmes" element). */
typedef struct tagNET_PLAN_PROGRAMME_INFO {
  char szProgrammeName[GSC_NAME_SIZE]; /* "ProgrammeName" */
  char szProgrammeID[GSC_NAME_SIZE];   /* "ProgrammeID" */
  bool bIsBgProgramme;                 /* "IsBgProgramme" */
  tagNET_TIME_OF_DAY stuStartTime;     /* "StartTime" */
  tagNET_TIME_OF_DAY stuEndTime;       /* "EndTime" */
  uint8_t byReserved[128];
} tagNET_PLAN_PROGRAMME_INFO;

/* A timer plan: programmes scheduled by time of day over play dates and a date range. */
typedef struct tagNET_TIMER_PLAN_INFO {
  char szPlanName[GSC_NAME_SIZE];                /* "PlanName" */
  char szPlanID[GSC_NAME_SIZE];                  /* "PlanID" */
  char szSplitScreenID[GSC_NAME_SIZE];           /* "SplitScreenID" */
  EM_PLAN_PERIOD_TYPE emPeriodType;              /* "Timer"."PeriodType" */
  uint32_t nPlayDatesNum;                        /* length of "Timer"."PlayDates", at most 32 */
  uint32_t nPlayDates[GSC_MAX_PLAY_DATES];       /* "Timer"."PlayDates" */
  tagNET_DATE_INFO stuPlayStartDate;             /* "Timer"."CustomPlayDate"."PlayStartDate" */
  tagNET_DATE_INFO stuPlayEndDate;               /* "Timer"."CustomPlayDate"."PlayEndDate" */
  EM_PLAN_REVIEW_STATE emReviewState;            /* "Timer"."ReviewState" */
  char szReviewOpinion[GSC_REVIEW_OPINION_SIZE]; /* "ReviewOpinion", beside "Timer" */
  bool bOverdue;                                 /* "Timer"."Overdue" */
  uint32_t nProgrammesNum;                       /* length of "Timer"."Programmes", at most 32 */
  tagNET_PLAN_PROGRAMME_INFO stuProgrammes[GSC_MAX_PLAN_PROGRAMMES]; /* "Timer"."Programmes" */
  uint8_t byReserved[512];
} tagNET_TIMER_PLAN_INFO;

/* GET_ALL_PROGRAMMEPLANS: the request has no parameters. */
typedef struct tagNET_IN_GET_ALL_PROGRAMMEPLANS {
  uint32_t dwSize;
} tagNET_IN_GET_ALL_PROGRAMMEPLANS;

/* One capacity for two arrays: immediate plans fill pstuImmePlans, timer plans pstuTimerPlans,
 * each up to nMaxPlanNum records. Both returned counts are always set. */
typedef struct tagNET_OUT_GET_ALL_PROGRAMMEPLANS {
  uint32_t dwSize;
  uint32_t nMaxPlanNum;                        /* capacity of each array, set by the caller */
  uint32_t nRetImmePlanNum;                    /* immediate plans filled */
  tagNET_IMMEDIATELY_PLAN_INFO* pstuImmePlans; /* caller's array of nMaxPlanNum records */
  uint32_t nRetTimerPlanNum;                   /* timer plans filled */
  tagNET_TIMER_PLAN_INFO* pstuTimerPlans;      /* caller's array of nMaxPlanNum records */
} tagNET_OUT_GET_ALL_PROGRAMMEPLANS;

/* GET_PROGRAMMEPLAN_BYID: the plan asked for, sent as "ProgrammePlanID". */
typedef struct tagNET_IN_GET_PROGRAMMEPLAN_BYID {
  uint32_t dwSize;
  char szProgrammePlanID[GSC_NAME_SIZE]; /* "ProgrammePlanID" */
} tagNET_IN_GET_PROGRAMMEPLAN_BYID;

/* emPlanType is always set and says which slot was filled; the other slot is left untouched. */
typedef struct tagNET_OUT_GET_PROGRAMMEPLAN_BYID {
  uint32_t dwSize;
  EM_PROGRAMMEPLAN_TYPE emPlanType;
  tagNET_IMMEDIATELY_PLAN_INFO stuImmePlan;
  tagNET_TIMER_PLAN_INFO stuTimerPlan;
} tagNET_OUT_GET_PROGRAMMEPLAN_BYID;

/* ADD_IMME_PROGRAMMEPLAN: the new immediate plan, sent as "info" with "PlanType" 0. */
typedef struct tagNET_IN_ADD_IMME_PROGRAMMEPLAN {
  uint32_t dwSize;
  tagNET_IMMEDIATELY_PLAN_INFO stuInfo; /* "info" */
} tagNET_IN_ADD_IMME_PROGRAMMEPLAN;

/* ADD_TIMER_PROGRAMMEPLAN: the new timer plan, sent as "info" with "PlanType" 1. */
typedef struct tagNET_IN_ADD_TIMER_PROGRAMMEPLAN {
  uint32_t dwSize;
  tagNET_TIMER_PLAN_INFO stuInfo; /* "info" */
} tagNET_IN_ADD_TIMER_PROGRAMMEPLAN;

/* The answer of both add operations. */
typedef struct tagNET_OUT_ADD_PROGRAMMEPLAN {
  uint32_t dwSize;
  char szProgrammePlanID[GSC_NAME_SIZE]; /* "ProgrammePlanID" of the new plan */
} tagNET_OUT_ADD_PROGRAMMEPLAN;

/* The plan's own szPlanID names the plan to modify; it is sent twice. */
typedef struct tagNET_IN_MODIFY_IMME_PROGRAMMEPLAN {
  uint32_t dwSize;
  tagNET_IMMEDIATELY_PLAN_INFO stuProgrammePlan; /* "ProgrammePlan" */
} tagNET_IN_MODIFY_IMME_PROGRAMMEPLAN;

/* The answer of MODIFY_IMME_PROGRAMMEPLAN: nothing is read into it. */
typedef struct tagNET_OUT_MODIFY_IMME_PROGRAMMEPLAN {
  uint32_t dwSize;
} tagNET_OUT_MODIFY_IMME_PROGRAMMEPLAN;

/* The plan's own szPlanID names the timer plan to modify; it is sent twice. */
typedef struct tagNET_IN_MODIFY_TIMER_PROGRAMMEPLAN {
  uint32_t dwSize;
  tagNET_TIMER_PLAN_INFO stuProgrammePlan; /* "ProgrammePlan" */
} tagNET_IN_MODIFY_TIMER_PROGRAMMEPLAN;

/* The answer of MODIFY_TIMER_PROGRAMMEPLAN: nothing is read into it. */
typedef struct tagNET_OUT_MODIFY_TIMER_PROGRAMMEPLAN {
  uint32_t dwSize;
} tagNET_OUT_MODIFY_TIMER_PROGRAMMEPLAN;

/* At most 32 identifiers are sent; with none, no member is written at all. */
typedef struct tagNET_IN_DEL_PROGRAMMEPLANS {
  uint32_t dwSize;
  uint32_t nProgrammePlanIDListNum;
  char szProgrammePlanIDList[GSC_MAX_PLAN_IDS][GSC_NAME_SIZE]; /* "ProgrammePlanIDList" */
} tagNET_IN_DEL_PROGRAMMEPLANS;

/* The answer of DEL_PROGRAMMEPLANS: nothing is read into it. */
typedef struct tagNET_OUT_DEL_PROGRAMMEPLANS {
  uint32_t dwSize;
} tagNET_OUT_DEL_PROGRAMMEPLANS;

#ifdef __cplusplus
/* Sizes on LP64, ILP32 with an 8-byte double, ILP32 with a 4-byte double (record_abi.h). */
GSC_RECORD_SIZE(tagNET_IMMEDIATELY_PLAN_INFO, 840, 840, 840);
GSC_RECORD_SIZE(tagNET_PLAN_PROGRAMME_INFO, 284, 284, 284);
GSC_RECORD_SIZE(tagNET_TIMER_PLAN_INFO, 10028, 10028, 10028);
GSC_RECORD_SIZE(tagNET_IN_GET_ALL_PROGRAMMEPLANS, 4, 4, 4);
GSC_RECORD_SIZE(tagNET_OUT_GET_ALL_PROGRAMMEPLANS, 40, 24, 24);
GSC_RECORD_SIZE(tagNET_IN_GET_PROGRAMMEPLAN_BYID, 68, 68, 68);
GSC_RECORD_SIZE(tagNET_OUT_GET_PROGRAMMEPLAN_BYID, 10876, 10876, 10876);
GSC_RECORD_SIZE(tagNET_IN_ADD_IMME_PROGRAMMEPLAN, 844, 844, 844);
GSC_RECORD_SIZE(tagNET_IN_ADD_TIMER_PROGRAMMEPLAN, 10032, 10032, 10032);
GSC_RECORD_SIZE(tagNET_OUT_ADD_PROGRAMMEPLAN, 68, 68, 68);
GSC_RECORD_SIZE(tagNET_IN_MODIFY_IMME_PROGRAMMEPLAN, 844, 844, 844);
GSC_RECORD_SIZE(tagNET_OUT_MODIFY_IMME_PROGRAMMEPLAN, 4, 4, 4);
GSC_RECORD_SIZE(tagNET_IN_MODIFY_TIMER_PROGRAMMEPLAN, 10032, 10032, 10032);
GSC_RECORD_SIZE(tagNET_OUT_MODIFY_TIMER_PROGRAMMEPLAN, 4, 4, 4);
GSC_RECORD_SIZE(tagNET_IN_DEL_PROGRAMMEPLANS, 2056, 2056, 2056);
GSC_RECORD_SIZE(tagNET_OUT_DEL_PROGRAMMEPLANS, 4, 4, 4);
#endif

#endif /* GUIDESCREEN_CODEC_PLAN_RECORDS_H */
