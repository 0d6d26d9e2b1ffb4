// One table per record: every member in declaration order, reserved bytes included, so that the
// tests can check each table against the record's layout.
#include "describe/record_tables.h"

#include "describe/enumerations.h"
#include "guidescreen_codec.h"

namespace gsc::fields {

namespace {

// ---- Small shared records --------------------------------------------------------------------

const RecordTable kRectTable = GSC_TABLE(tagNET_RECT, GSC_FIELD(nLeft), GSC_FIELD(nTop),
                                         GSC_FIELD(nRight), GSC_FIELD(nBottom));
const RecordTable kColorTable = GSC_TABLE(tagQX_COLOR_RGBA, GSC_FIELD(nRed), GSC_FIELD(nGreen),
                                          GSC_FIELD(nBlue), GSC_FIELD(nAlpha));
const RecordTable kTimeTable =
    GSC_TABLE(tagNET_TIME_OF_DAY, GSC_FIELD(nHour), GSC_FIELD(nMinute), GSC_FIELD(nSecond));
const RecordTable kDateTable =
    GSC_TABLE(tagNET_DATE_INFO, GSC_FIELD(nYear), GSC_FIELD(nMonth), GSC_FIELD(nDay));

// ---- Screen configuration --------------------------------------------------------------------

const RecordTable kOpeningTable = GSC_TABLE(
    tagNET_GUIDESCREEN_TIME_INFO, GSC_FIELD(bEnable), GSC_FIELD(emDateType, kDateTypeEnum),
    GSC_FIELD(nPlayDatesNum), GSC_FIELD(nPlayDates, "nPlayDatesNum"),
    GSC_FIELD(stuOpenTime, kTimeTable), GSC_FIELD(stuCloseTime, kTimeTable), GSC_FIELD(byReserved));
const RecordTable kSplitScreenTable =
    GSC_TABLE(tagNET_GUIDESCREEN_SPLITSCREEN_INFO, GSC_FIELD(szScreenId),
              GSC_FIELD(stuRect, kRectTable), GSC_FIELD(nChildScreenBright), GSC_FIELD(byReserved));
const RecordTable kSunTable = GSC_TABLE(tagNET_GUIDESCREEN_SUN_TIME_INFO, GSC_FIELD(nSunrise),
                                        GSC_FIELD(nSunset), GSC_FIELD(byReserved));
const RecordTable kAutoBrightTable =
    GSC_TABLE(tagNET_GUIDESCREEN_AUTO_BRIGHT_INFO, GSC_FIELD(bEnable), GSC_FIELD(nLightBright),
              GSC_FIELD(nDarkBright), GSC_FIELD(stuTime, kSunTable));

// ---- Programmes ------------------------------------------------------------------------------

const RecordTable kTextTable =
    GSC_TABLE(tagNET_GUIDESCREEN_TEXT_INFO, GSC_FIELD(szContent), GSC_FIELD(nFontSize),
              GSC_FIELD(stuFontColor, kColorTable), GSC_FIELD(szFontStyle), GSC_FIELD(dbLineHeight),
              GSC_FIELD(emTextHoriAlign, kHoriAlignEnum),
              GSC_FIELD(emTextVertAlign, kVertAlignEnum), GSC_FIELD(nPlayTime),
              GSC_FIELD(nPlayCount), GSC_FIELD(nStayTime), GSC_FIELD(emEnterStyle, kEnterStyleEnum),
              GSC_FIELD(emExitStyle, kExitStyleEnum), GSC_FIELD(byReserved));
const RecordTable kNoteTable =
    GSC_TABLE(tagNET_GUIDESCREEN_NOTE_INFO, GSC_FIELD(bEnable), GSC_FIELD(stuNoteInfo, kTextTable),
              GSC_FIELD(stuNoteRect, kRectTable), GSC_FIELD(byReserved));

// Every element record opens with its name and filler state and closes with its notes.
#define GSC_ELEMENT_HEAD GSC_FIELD(szName), GSC_FIELD(bFillerState)
#define GSC_ELEMENT_TAIL \
  GSC_FIELD(nNoteNum), GSC_FIELD(stuNote, kNoteTable, "nNoteNum"), GSC_FIELD(byReserved)

const RecordTable kVideoTable =
    GSC_TABLE(tagNET_VIDEO_ELEMENT_INFO, GSC_ELEMENT_HEAD, GSC_FIELD(szPath), GSC_FIELD(nPlayCount),
              GSC_ELEMENT_TAIL);
const RecordTable kPictureTable =
    GSC_TABLE(tagNET_PICTURE_ELEMENT_INFO, GSC_ELEMENT_HEAD, GSC_FIELD(szPath),
              GSC_FIELD(nPlayTime), GSC_FIELD(nPlayCount), GSC_FIELD(nDiaphaneity),
              GSC_FIELD(nStayTime), GSC_FIELD(emEnterStyle, kEnterStyleEnum),
              GSC_FIELD(emExitStyle, kExitStyleEnum), GSC_ELEMENT_TAIL);
const RecordTable kTextElementTable = GSC_TABLE(tagNET_TEXT_ELEMENT_INFO, GSC_ELEMENT_HEAD,
                                                GSC_FIELD(stuText, kTextTable), GSC_ELEMENT_TAIL);
const RecordTable kPlaceholderTable =
    GSC_TABLE(tagNET_PLACEHOLDER_ELEMENT_INFO, GSC_ELEMENT_HEAD, GSC_ELEMENT_TAIL);
const RecordTable kCaptureTable = GSC_TABLE(
    tagNET_CAPTURE_ELEMENT_INFO, GSC_ELEMENT_HEAD, GSC_FIELD(szUserName),
    GSC_FIELD_AS(szPassword, Kind::kSecret), GSC_FIELD(szIP), GSC_FIELD(nPort), GSC_FIELD(nChannel),
    GSC_FIELD(emCaptureType, kCaptureTypeEnum), GSC_FIELD(nPlayTime), GSC_ELEMENT_TAIL);

const std::vector<Variant> kElementKinds = {{EM_ELEMENT_TYPE_VIDEO, &kVideoTable},
                                            {EM_ELEMENT_TYPE_PICTURE, &kPictureTable},
                                            {EM_ELEMENT_TYPE_TEXT, &kTextElementTable},
                                            {EM_ELEMENT_TYPE_PLACEHOLDER, &kPlaceholderTable},
                                            {EM_ELEMENT_TYPE_CAPTURE, &kCaptureTable}};
// The entry header; its first field is the tag that picks the record after it.
const RecordTable kElementHeaderTable = [] {
  RecordTable table = GSC_TABLE(tagNET_ELEMENT_COMMON_INFO,
                                GSC_FIELD(emElementType, kElementTypeEnum), GSC_FIELD(byReserved));
  table.variants = &kElementKinds;
  return table;
}();

const RecordTable kWindowTable =
    GSC_TABLE(tagNET_PROGRAMME_WINDOW_INFO, GSC_FIELD(szWinID), GSC_FIELD(nVolume),
              GSC_FIELD(stuBackgroundColor, kColorTable), GSC_FIELD(nDiaphaneity),
              GSC_FIELD(emTourPeriod, kTourPeriodEnum), GSC_FIELD(nTourPeriodTime),
              GSC_FIELD(byReserved1), GSC_FIELD(nElementsNum),
              GSC_POINTER(pElementsBuf, Kind::kElements, kElementHeaderTable, "nElementsNum",
                          "nElementsBufLen"),
              GSC_FIELD(nElementsBufLen), GSC_FIELD(byReserved));
const RecordTable kOrdinaryTable =
    GSC_TABLE(tagNET_ORDINARY_PROGRAMME_INFO, GSC_FIELD(bTempletState), GSC_FIELD(szDescription),
              GSC_FIELD(nWindowsNum), GSC_FIELD(stuWindows, kWindowTable, "nWindowsNum"));

// ---- Plans -----------------------------------------------------------------------------------

const RecordTable kPlanProgrammeTable =
    GSC_TABLE(tagNET_PLAN_PROGRAMME_INFO, GSC_FIELD(szProgrammeName), GSC_FIELD(szProgrammeID),
              GSC_FIELD(bIsBgProgramme), GSC_FIELD(stuStartTime, kTimeTable),
              GSC_FIELD(stuEndTime, kTimeTable), GSC_FIELD(byReserved));

}  // namespace

const RecordTable kScreenTable =
    GSC_TABLE(tagNET_GUIDESCREEN_ATTRIBUTE_INFO, GSC_FIELD_AS(dwSize, Kind::kSize), GSC_FIELD(szID),
              GSC_FIELD(emStatus, kScreenStatusEnum), GSC_FIELD(bIsForeverOpen),
              GSC_FIELD(nTimeNum), GSC_FIELD(stuTime, kOpeningTable, "nTimeNum"),
              GSC_FIELD(nBright), GSC_FIELD(nContrast), GSC_FIELD(nSaturation), GSC_FIELD(nVolume),
              GSC_FIELD(nWidth), GSC_FIELD(nHeight), GSC_FIELD(nSplitScreenListNum),
              GSC_FIELD(stuSplitScreenList, kSplitScreenTable, "nSplitScreenListNum"),
              GSC_FIELD(stuAutoBright, kAutoBrightTable), GSC_FIELD(byReserved));

const RecordTable kProgrammeTable =
    GSC_TABLE(tagNET_PROGRAMME_INFO, GSC_FIELD(szProgrammeName), GSC_FIELD(szProgrammeID),
              GSC_FIELD(bEnable), GSC_FIELD(stuOrdinary, kOrdinaryTable), GSC_FIELD(byReserved));

const RecordTable kBriefProgrammeTable =
    GSC_TABLE(tagNET_BRIEFLY_PROGRAMME_INFO, GSC_FIELD(szProgrammeName), GSC_FIELD(szProgrammeID),
              GSC_FIELD(emProgrammeType, kProgrammeTypeEnum), GSC_FIELD(bEnable),
              GSC_FIELD(bTempletState), GSC_FIELD(byReserved));

const RecordTable kImmePlanTable =
    GSC_TABLE(tagNET_IMMEDIATELY_PLAN_INFO, GSC_FIELD(szPlanName), GSC_FIELD(szPlanID),
              GSC_FIELD(szSplitScreenID), GSC_FIELD(bEnable), GSC_FIELD(nPlayTime),
              GSC_FIELD(szProgrammeName), GSC_FIELD(szProgrammeID), GSC_FIELD(byReserved));

const RecordTable kTimerPlanTable = GSC_TABLE(
    tagNET_TIMER_PLAN_INFO, GSC_FIELD(szPlanName), GSC_FIELD(szPlanID), GSC_FIELD(szSplitScreenID),
    GSC_FIELD(emPeriodType, kPeriodTypeEnum), GSC_FIELD(nPlayDatesNum),
    GSC_FIELD(nPlayDates, "nPlayDatesNum"), GSC_FIELD(stuPlayStartDate, kDateTable),
    GSC_FIELD(stuPlayEndDate, kDateTable), GSC_FIELD(emReviewState, kReviewStateEnum),
    GSC_FIELD(szReviewOpinion), GSC_FIELD(bOverdue), GSC_FIELD(nProgrammesNum),
    GSC_FIELD(stuProgrammes, kPlanProgrammeTable, "nProgrammesNum"), GSC_FIELD(byReserved));

}  // namespace gsc::fields
