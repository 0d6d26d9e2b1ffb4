#include "describe/operations_table.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

#include "describe/record_tables.h"
#include "guidescreen_codec.h"

namespace gsc::fields {

namespace {

// ---- Records of the operations ---------------------------------------------------------------

#define GSC_SIZE_ONLY(Type) GSC_TABLE(Type, GSC_FIELD_AS(dwSize, Kind::kSize))
#define GSC_SIZE GSC_FIELD_AS(dwSize, Kind::kSize)

const RecordTable kSetScreensIn =
    GSC_TABLE(tagNET_IN_SET_GUIDESCREEN_CFG, GSC_SIZE, GSC_FIELD(nInfosNum),
              GSC_POINTER(pstuInfos, Kind::kCallerArray, kScreenTable, "nInfosNum", nullptr));
const RecordTable kSetScreensOut = GSC_SIZE_ONLY(tagNET_OUT_SET_GUIDESCREEN_CFG);
const RecordTable kGetScreenIn =
    GSC_TABLE(tagNET_IN_GET_GUIDESCREEN_CFG_BYID, GSC_SIZE, GSC_FIELD(szScreenID));
const RecordTable kGetScreenOut =
    GSC_TABLE(tagNET_OUT_GET_GUIDESCREEN_CFG_BYID, GSC_SIZE, GSC_FIELD(stuInfo, kScreenTable));
const RecordTable kGetScreensIn = GSC_SIZE_ONLY(tagNET_IN_GET_ALL_GUIDESCREEN_CFG);
const RecordTable kGetScreensOut = GSC_TABLE(
    tagNET_OUT_GET_ALL_GUIDESCREEN_CFG, GSC_SIZE, GSC_FIELD(nMaxInfosNum), GSC_FIELD(nRetInfosNum),
    GSC_POINTER(pstuInfos, Kind::kCallerArray, kScreenTable, "nRetInfosNum", "nMaxInfosNum"));
const RecordTable kSetStatusIn =
    GSC_TABLE(tagNET_IN_SET_GD_STATUS, GSC_SIZE, GSC_FIELD(szScreenId), GSC_FIELD(nGDNum),
              GSC_FIELD(emStatus, kGdStatusEnum, "nGDNum"));
const RecordTable kSetStatusOut = GSC_SIZE_ONLY(tagNET_OUT_SET_GD_STATUS);

const RecordTable kGetProgrammeIn =
    GSC_TABLE(tagNET_IN_GET_PROGRAMME_BYID, GSC_SIZE, GSC_FIELD(szProgrammeID));
const RecordTable kGetProgrammeOut =
    GSC_TABLE(tagNET_OUT_GET_PROGRAMME_BYID, GSC_SIZE, GSC_FIELD(stuProgramme, kProgrammeTable));
const RecordTable kGetProgrammesIn = GSC_SIZE_ONLY(tagNET_IN_GET_ALL_PROGRAMMES);
const RecordTable kGetProgrammesOut = GSC_TABLE(
    tagNET_OUT_GET_ALL_PROGRAMMES, GSC_SIZE, GSC_FIELD(nMaxInfosNum), GSC_FIELD(nRetInfosNum),
    GSC_POINTER(pstuInfos, Kind::kCallerArray, kProgrammeTable, "nRetInfosNum", "nMaxInfosNum"));
const RecordTable kGetBriefIn = GSC_SIZE_ONLY(tagNET_IN_GET_ALL_BRIEFLYPROGRAMMES);
const RecordTable kGetBriefOut =
    GSC_TABLE(tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES, GSC_SIZE, GSC_FIELD(nRetInfosNum),
              GSC_FIELD(stuInfos, kBriefProgrammeTable, "nRetInfosNum"));
const RecordTable kAddProgrammeIn =
    GSC_TABLE(tagNET_IN_ADD_ONE_PROGRAMME, GSC_SIZE, GSC_FIELD(stuInfo, kProgrammeTable));
const RecordTable kAddProgrammeOut =
    GSC_TABLE(tagNET_OUT_ADD_ONE_PROGRAMME, GSC_SIZE, GSC_FIELD(szProgrammeID));
const RecordTable kModifyProgrammeIn =
    GSC_TABLE(tagNET_IN_MODIFY_ONE_PROGRAMME, GSC_SIZE, GSC_FIELD(stuProgramme, kProgrammeTable));
const RecordTable kModifyProgrammeOut = GSC_SIZE_ONLY(tagNET_OUT_MODIFY_ONE_PROGRAMME);
const RecordTable kDelProgrammesIn =
    GSC_TABLE(tagNET_IN_DEL_PROGRAMMES, GSC_SIZE, GSC_FIELD(nProgrammeIDListNum),
              GSC_FIELD(szProgrammeIDList, "nProgrammeIDListNum"));
const RecordTable kDelProgrammesOut = GSC_SIZE_ONLY(tagNET_OUT_DEL_PROGRAMMES);

const RecordTable kGetPlansIn = GSC_SIZE_ONLY(tagNET_IN_GET_ALL_PROGRAMMEPLANS);
const RecordTable kGetPlansOut = GSC_TABLE(
    tagNET_OUT_GET_ALL_PROGRAMMEPLANS, GSC_SIZE, GSC_FIELD(nMaxPlanNum), GSC_FIELD(nRetImmePlanNum),
    GSC_POINTER(pstuImmePlans, Kind::kCallerArray, kImmePlanTable, "nRetImmePlanNum",
                "nMaxPlanNum"),
    GSC_FIELD(nRetTimerPlanNum),
    GSC_POINTER(pstuTimerPlans, Kind::kCallerArray, kTimerPlanTable, "nRetTimerPlanNum",
                "nMaxPlanNum"));
const RecordTable kGetPlanIn =
    GSC_TABLE(tagNET_IN_GET_PROGRAMMEPLAN_BYID, GSC_SIZE, GSC_FIELD(szProgrammePlanID));
const RecordTable kGetPlanOut =
    GSC_TABLE(tagNET_OUT_GET_PROGRAMMEPLAN_BYID, GSC_SIZE, GSC_FIELD(emPlanType, kPlanTypeEnum),
              GSC_FIELD(stuImmePlan, kImmePlanTable), GSC_FIELD(stuTimerPlan, kTimerPlanTable));
const RecordTable kAddImmeIn =
    GSC_TABLE(tagNET_IN_ADD_IMME_PROGRAMMEPLAN, GSC_SIZE, GSC_FIELD(stuInfo, kImmePlanTable));
const RecordTable kAddTimerIn =
    GSC_TABLE(tagNET_IN_ADD_TIMER_PROGRAMMEPLAN, GSC_SIZE, GSC_FIELD(stuInfo, kTimerPlanTable));
const RecordTable kAddPlanOut =
    GSC_TABLE(tagNET_OUT_ADD_PROGRAMMEPLAN, GSC_SIZE, GSC_FIELD(szProgrammePlanID));
const RecordTable kModifyImmeIn = GSC_TABLE(tagNET_IN_MODIFY_IMME_PROGRAMMEPLAN, GSC_SIZE,
                                            GSC_FIELD(stuProgrammePlan, kImmePlanTable));
const RecordTable kModifyImmeOut = GSC_SIZE_ONLY(tagNET_OUT_MODIFY_IMME_PROGRAMMEPLAN);
const RecordTable kModifyTimerIn = GSC_TABLE(tagNET_IN_MODIFY_TIMER_PROGRAMMEPLAN, GSC_SIZE,
                                             GSC_FIELD(stuProgrammePlan, kTimerPlanTable));
const RecordTable kModifyTimerOut = GSC_SIZE_ONLY(tagNET_OUT_MODIFY_TIMER_PROGRAMMEPLAN);
const RecordTable kDelPlansIn =
    GSC_TABLE(tagNET_IN_DEL_PROGRAMMEPLANS, GSC_SIZE, GSC_FIELD(nProgrammePlanIDListNum),
              GSC_FIELD(szProgrammePlanIDList, "nProgrammePlanIDListNum"));
const RecordTable kDelPlansOut = GSC_SIZE_ONLY(tagNET_OUT_DEL_PROGRAMMEPLANS);

// ---- Samples ---------------------------------------------------------------------------------
// Device answers for decode, input records in field-named form for encode.

const std::string kScreenAnswer =
    R"({"ID": "hall-1", "Status": 1, "IsForeverOpen": false,
      "Time": [{"Enable": true, "DateType": 1, "PlayDates": [1, 2, 3, 4, 5],
                "OpenTime": "08:30:00", "CloseTime": "20:00:00"}],
      "Bright": 80, "Contrast": 50, "Saturation": 50, "Volume": 30, "Width": 1920,
      "Height": 1080,
      "SplitScreenList": [{"ScreenId": "left", "Rect": [0, 0, 960, 1080],
                           "ChildScreenBright": 70}],
      "AutoBright": {"Enable": true, "LightBright": 90, "DarkBright": 40,
                     "Time": [{"Sunrise": 7, "Sunset": 17}]}})";

const std::string kProgrammeAnswer =
    R"({"ProgrammeName": "Lobby morning", "ProgrammeID": "P-1001", "ProgrammeType": 0,
      "Enable": true,
      "Ordinary": {"TempletState": false, "Description": "Welcome loop with visitor camera",
        "Windows": [
          {"WinID": "media", "BackgroundColor": [0, 0, 0, 255], "Volume": 40,
           "Diaphaneity": 0, "TourPeriod": 2, "TourPeriodTime": 30,
           "Elements": [
             {"Name": "welcome clip", "Type": 0, "FillerState": false,
              "Video": {"Path": "/media/welcome.mp4", "PlayCount": 1}},
             {"Name": "floor plan", "Type": 1, "FillerState": false,
              "Picture": {"Path": "/media/floor-plan.png", "StayTime": 10,
                          "EnterStyle": 1, "ExitStyle": 1}}]},
          {"WinID": "info", "BackgroundColor": [255, 255, 255, 255], "TourPeriod": 0,
           "Elements": [
             {"Name": "opening hours", "Type": 2, "FillerState": false,
              "Text": {"Content": "Open daily 9:00 to 17:00", "FontSize": 32,
                       "FontColor": [0, 0, 0, 255], "LineHeight": 1.5, "TextHoriAlign": 1},
              "Note": [{"Enable": true, "NoteRect": [0, 900, 1080, 1000],
                        "NoteInfo": {"Content": "Closed on holidays", "FontSize": 20}}]},
             {"Name": "announcement slot", "Type": 3, "FillerState": true},
             {"Name": "entrance camera", "Type": 4, "FillerState": false,
              "DeviceInfo": {"UserName": "viewer", "Password": "door-2024",
                             "IP": "192.0.2.20", "Port": 37777, "Channel": 1,
                             "CaptureType": 0, "PlayTime": 15}}]}]}})";

const std::string kTimerPlanAnswer =
    R"({"PlanType": 1, "PlanID": "plan-0042", "PlanName": "Weekday mornings",
      "SplitScreenID": "left", "ReviewOpinion": "approved",
      "Timer": {"PeriodType": 1, "PlayDates": [1, 2, 3, 4, 5], "ReviewState": 1,
                "Overdue": false,
                "CustomPlayDate": {"PlayStartDate": "2024:03:01", "PlayEndDate": "2024:06:30"},
                "Programmes": [{"ProgrammeID": "P-1001", "ProgrammeName": "Lobby morning",
                                "IsBgProgramme": false, "StartTime": "08:00:00",
                                "EndTime": "11:30:00"}]}})";

const std::string kImmePlanAnswer =
    R"({"PlanType": 0, "PlanID": "plan-0007", "PlanName": "Fire drill", "SplitScreenID": "left",
      "Immediately": {"Enable": true, "PlayTime": 600, "ProgrammeID": "P-2001",
                      "ProgrammeName": "Drill"}})";

const std::string kScreenForm =
    R"({"szID": "hall-1", "emStatus": "EM_GUIDESCREEN_STATUS_JSON_1", "bIsForeverOpen": false,
      "stuTime": [{"bEnable": true, "emDateType": "EM_GUIDESCREEN_DATE_TYPE_JSON_1",
                   "nPlayDates": [1, 2, 3, 4, 5],
                   "stuOpenTime": {"nHour": 8, "nMinute": 30},
                   "stuCloseTime": {"nHour": 20}}],
      "nBright": 80, "nContrast": 50, "nSaturation": 50, "nVolume": 30,
      "nWidth": 1920, "nHeight": 1080,
      "stuSplitScreenList": [{"szScreenId": "left", "nChildScreenBright": 70,
                              "stuRect": {"nRight": 960, "nBottom": 1080}}],
      "stuAutoBright": {"bEnable": true, "nLightBright": 90, "nDarkBright": 40,
                        "stuTime": [{"nSunrise": 7, "nSunset": 17}]}})";

const std::string kProgrammeForm =
    R"({"szProgrammeName": "Lobby morning", "szProgrammeID": "P-1001", "bEnable": true,
      "stuOrdinary": {"szDescription": "Welcome loop with visitor camera",
        "stuWindows": [
          {"szWinID": "media", "nVolume": 40, "stuBackgroundColor": {"nAlpha": 255},
           "emTourPeriod": "EM_TOUR_PERIOD_TYPE_CUSTOM_TIME", "nTourPeriodTime": 30,
           "pElementsBuf": [
             {"emElementType": "EM_ELEMENT_TYPE_VIDEO",
              "record": {"szName": "welcome clip", "szPath": "/media/welcome.mp4",
                         "nPlayCount": 1}},
             {"emElementType": "EM_ELEMENT_TYPE_PICTURE",
              "record": {"szName": "floor plan", "szPath": "/media/floor-plan.png",
                         "nStayTime": 10, "emEnterStyle": "EM_ENTER_STYLE_JSON_1",
                         "emExitStyle": "EM_EXIT_STYLE_JSON_1"}}]},
          {"szWinID": "info",
           "stuBackgroundColor": {"nRed": 255, "nGreen": 255, "nBlue": 255, "nAlpha": 255},
           "emTourPeriod": "EM_TOUR_PERIOD_TYPE_JSON_0",
           "pElementsBuf": [
             {"emElementType": "EM_ELEMENT_TYPE_TEXT",
              "record": {"szName": "opening hours",
                         "stuText": {"szContent": "Open daily 9:00 to 17:00", "nFontSize": 32,
                                     "stuFontColor": {"nAlpha": 255}, "dbLineHeight": 1.5,
                                     "emTextHoriAlign": "EM_TEXT_HORI_ALIGN_JSON_1"},
                         "stuNote": [{"bEnable": true,
                                      "stuNoteRect": {"nTop": 900, "nRight": 1080,
                                                      "nBottom": 1000},
                                      "stuNoteInfo": {"szContent": "Closed on holidays",
                                                      "nFontSize": 20}}]}},
             {"emElementType": "EM_ELEMENT_TYPE_PLACEHOLDER",
              "record": {"szName": "announcement slot", "bFillerState": true}},
             {"emElementType": "EM_ELEMENT_TYPE_CAPTURE",
              "record": {"szName": "entrance camera", "szUserName": "viewer",
                         "szPassword": "door-2024", "szIP": "192.0.2.20", "nPort": 37777,
                         "nChannel": 1, "emCaptureType": "EM_CAPTURE_TYPE_JSON_0",
                         "nPlayTime": 15}}]}]}})";

const std::string kImmePlanForm =
    R"({"szPlanName": "Fire drill", "szPlanID": "plan-0007", "szSplitScreenID": "left",
      "bEnable": true, "nPlayTime": 600, "szProgrammeName": "Drill",
      "szProgrammeID": "P-2001"})";

const std::string kTimerPlanForm =
    R"({"szPlanName": "Weekday mornings", "szPlanID": "plan-0042", "szSplitScreenID": "left",
      "emPeriodType": "EM_PLAN_PERIOD_TYPE_JSON_1", "nPlayDates": [1, 2, 3, 4, 5],
      "stuPlayStartDate": {"nYear": 2024, "nMonth": 3, "nDay": 1},
      "stuPlayEndDate": {"nYear": 2024, "nMonth": 6, "nDay": 30},
      "emReviewState": "EM_PLAN_REVIEW_STATE_JSON_1", "szReviewOpinion": "approved",
      "stuProgrammes": [{"szProgrammeName": "Lobby morning", "szProgrammeID": "P-1001",
                         "stuStartTime": {"nHour": 8},
                         "stuEndTime": {"nHour": 11, "nMinute": 30}}]})";

template <typename In, typename Out>
Operation Op(const char* name, const char* request_keys, const char* answer_keys,
             const RecordTable& request, const RecordTable& answer, std::string request_sample,
             std::string answer_sample) {
  if (request.size != sizeof(In) || answer.size != sizeof(Out)) {
    std::fprintf(stderr, "guidescreen_codec: the tables of %s do not match its records\n", name);
    std::abort();
  }
  return {name,
          request_keys,
          answer_keys,
          &request,
          &answer,
          std::move(request_sample),
          std::move(answer_sample),
          [](const void* in, Json::Value& params, gsc::Report* report) {
            const auto& record = *static_cast<const In*>(in);
            return report != nullptr ? serialize(record, params, *report)
                                     : serialize(record, params);
          },
          [](const Json::Value& result, void* out, gsc::Report* report) {
            auto& record = *static_cast<Out*>(out);
            return report != nullptr ? deserialize(result, record, *report)
                                     : deserialize(result, record);
          },
          [](std::string_view text, void* out, gsc::Report* report) {
            auto& record = *static_cast<Out*>(out);
            return report != nullptr ? gsc::deserialize_json(text, record, *report)
                                     : gsc::deserialize_json(text, record);
          }};
}

}  // namespace

const std::vector<Operation>& Operations() {
  static const std::vector<Operation> operations = {
      Op<tagNET_IN_SET_GUIDESCREEN_CFG, tagNET_OUT_SET_GUIDESCREEN_CFG>(
          "SET_GUIDESCREEN_CFG", "infos", "-", kSetScreensIn, kSetScreensOut,
          R"({"pstuInfos": [)" + kScreenForm + "]}", "{}"),
      Op<tagNET_IN_GET_GUIDESCREEN_CFG_BYID, tagNET_OUT_GET_GUIDESCREEN_CFG_BYID>(
          "GET_GUIDESCREEN_CFG_BYID", "ScreenID", "DisplayScreenCfg", kGetScreenIn, kGetScreenOut,
          R"({"szScreenID": "hall-1"})", R"({"DisplayScreenCfg": )" + kScreenAnswer + "}"),
      Op<tagNET_IN_GET_ALL_GUIDESCREEN_CFG, tagNET_OUT_GET_ALL_GUIDESCREEN_CFG>(
          "GET_ALL_GUIDESCREEN_CFG", "-", "infos", kGetScreensIn, kGetScreensOut, "{}",
          R"({"infos": {"hall-1": )" + kScreenAnswer + R"(,
              "lobby": {"ID": "lobby", "Status": 0, "Bright": 60, "Width": 1280,
                        "Height": 720}}})"),
      Op<tagNET_IN_SET_GD_STATUS, tagNET_OUT_SET_GD_STATUS>(
          "SET_GD_STATUS", "ScreenId GDNum Status", "-", kSetStatusIn, kSetStatusOut,
          R"({"szScreenId": "hall-1",
              "emStatus": ["EM_GD_STATUS_CODE_100", "EM_GD_STATUS_CODE_001", 1]})",
          "{}"),
      Op<tagNET_IN_GET_PROGRAMME_BYID, tagNET_OUT_GET_PROGRAMME_BYID>(
          "GET_PROGRAMME_BYID", "ProgrammeID", "Programme", kGetProgrammeIn, kGetProgrammeOut,
          R"({"szProgrammeID": "P-1001"})", R"({"Programme": )" + kProgrammeAnswer + "}"),
      Op<tagNET_IN_GET_ALL_PROGRAMMES, tagNET_OUT_GET_ALL_PROGRAMMES>(
          "GET_ALL_PROGRAMMES", "-", "infos", kGetProgrammesIn, kGetProgrammesOut, "{}",
          R"({"infos": {"P-1001": )" + kProgrammeAnswer + R"(,
              "P-1002": {"ProgrammeName": "Evening", "ProgrammeID": "P-1002", "Enable": false,
                         "Ordinary": {"Windows": [{"WinID": "full", "Elements": [
                           {"Name": "news", "Type": 2, "Text": {"Content": "Tonight"}}]}]}}}})"),
      Op<tagNET_IN_GET_ALL_BRIEFLYPROGRAMMES, tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES>(
          "GET_ALL_BRIEFLYPROGRAMMES", "-", "infos", kGetBriefIn, kGetBriefOut, "{}",
          R"({"infos": {
              "P-1001": {"ProgrammeName": "Lobby morning", "ProgrammeID": "P-1001",
                         "ProgrammeType": 0, "Enable": true, "TempletState": false},
              "P-1002": {"ProgrammeName": "Evening", "ProgrammeID": "P-1002",
                         "ProgrammeType": 1, "Enable": false, "TempletState": true}}})"),
      Op<tagNET_IN_ADD_ONE_PROGRAMME, tagNET_OUT_ADD_ONE_PROGRAMME>(
          "ADD_ONE_PROGRAMME", "info", "ProgrammeID", kAddProgrammeIn, kAddProgrammeOut,
          R"({"stuInfo": )" + kProgrammeForm + "}", R"({"ProgrammeID": "P-1001"})"),
      Op<tagNET_IN_MODIFY_ONE_PROGRAMME, tagNET_OUT_MODIFY_ONE_PROGRAMME>(
          "MODIFY_ONE_PROGRAMME", "Programme ProgrammeID", "-", kModifyProgrammeIn,
          kModifyProgrammeOut, R"({"stuProgramme": )" + kProgrammeForm + "}", "{}"),
      Op<tagNET_IN_DEL_PROGRAMMES, tagNET_OUT_DEL_PROGRAMMES>(
          "DEL_PROGRAMMES", "ProgrammeIDList", "-", kDelProgrammesIn, kDelProgrammesOut,
          R"({"szProgrammeIDList": ["P-1001", "P-1002"]})", "{}"),
      Op<tagNET_IN_GET_ALL_PROGRAMMEPLANS, tagNET_OUT_GET_ALL_PROGRAMMEPLANS>(
          "GET_ALL_PROGRAMMEPLANS", "-", "infos", kGetPlansIn, kGetPlansOut, "{}",
          R"({"infos": {"plan-0007": )" + kImmePlanAnswer + R"(, "plan-0042": )" +
              kTimerPlanAnswer + "}}"),
      Op<tagNET_IN_GET_PROGRAMMEPLAN_BYID, tagNET_OUT_GET_PROGRAMMEPLAN_BYID>(
          "GET_PROGRAMMEPLAN_BYID", "ProgrammePlanID", "ProgrammePlan", kGetPlanIn, kGetPlanOut,
          R"({"szProgrammePlanID": "plan-0042"})",
          R"({"ProgrammePlan": )" + kTimerPlanAnswer + "}"),
      Op<tagNET_IN_ADD_IMME_PROGRAMMEPLAN, tagNET_OUT_ADD_PROGRAMMEPLAN>(
          "ADD_IMME_PROGRAMMEPLAN", "info", "ProgrammePlanID", kAddImmeIn, kAddPlanOut,
          R"({"stuInfo": )" + kImmePlanForm + "}", R"({"ProgrammePlanID": "plan-0007"})"),
      Op<tagNET_IN_ADD_TIMER_PROGRAMMEPLAN, tagNET_OUT_ADD_PROGRAMMEPLAN>(
          "ADD_TIMER_PROGRAMMEPLAN", "info", "ProgrammePlanID", kAddTimerIn, kAddPlanOut,
          R"({"stuInfo": )" + kTimerPlanForm + "}", R"({"ProgrammePlanID": "plan-0042"})"),
      Op<tagNET_IN_MODIFY_IMME_PROGRAMMEPLAN, tagNET_OUT_MODIFY_IMME_PROGRAMMEPLAN>(
          "MODIFY_IMME_PROGRAMMEPLAN", "ProgrammePlan ProgrammePlanID", "-", kModifyImmeIn,
          kModifyImmeOut, R"({"stuProgrammePlan": )" + kImmePlanForm + "}", "{}"),
      Op<tagNET_IN_MODIFY_TIMER_PROGRAMMEPLAN, tagNET_OUT_MODIFY_TIMER_PROGRAMMEPLAN>(
          "MODIFY_TIMER_PROGRAMMEPLAN", "ProgrammePlan ProgrammePlanID", "-", kModifyTimerIn,
          kModifyTimerOut, R"({"stuProgrammePlan": )" + kTimerPlanForm + "}", "{}"),
      Op<tagNET_IN_DEL_PROGRAMMEPLANS, tagNET_OUT_DEL_PROGRAMMEPLANS>(
          "DEL_PROGRAMMEPLANS", "ProgrammePlanIDList", "-", kDelPlansIn, kDelPlansOut,
          R"({"szProgrammePlanIDList": ["plan-0007", "plan-0042"]})", "{}"),
  };
  return operations;
}

const Operation* FindOperation(const std::string& name) {
  for (const Operation& op : Operations())
    if (name == op.name) return &op;
  return nullptr;
}

Json::Value Encode(const Operation& op, const Json::Value& form, gsc::Report* report) {
  Arena arena;
  unsigned char* record = arena.Allocate(op.request->size);
  FromJson(*op.request, form, record, arena);
  Json::Value params(Json::objectValue);
  op.serialize(record, params, report);
  return params;
}

namespace {

// The output record of `op`, zero-filled and prepared with `room` as a caller would.
std::unique_ptr<Received> Prepared(const Operation& op, const Room& room) {
  auto received = std::make_unique<Received>();
  received->record = received->arena.Allocate(op.answer->size);
  Prepare(*op.answer, received->record, received->arena, room);
  return received;
}

}  // namespace

std::unique_ptr<Received> Receive(const Operation& op, const Json::Value& result, const Room& room,
                                  gsc::Report* report) {
  auto received = Prepared(op, room);
  op.deserialize(result, received->record, report);
  return received;
}

std::unique_ptr<Received> ReceiveText(const Operation& op, std::string_view text, const Room& room,
                                      gsc::Report* report) {
  auto received = Prepared(op, room);
  op.deserialize_json(text, received->record, report);
  return received;
}

Json::Value Decode(const Operation& op, const Json::Value& result, const Room& room,
                   const ShowOptions& options, gsc::Report* report) {
  return ToJson(*op.answer, Receive(op, result, room, report)->record, options);
}

}  // namespace gsc::fields
