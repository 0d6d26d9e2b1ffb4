// Every operation at once from many threads, each on its own records and JSON values. The codecs
// keep no state, so every thread must get exactly what one thread alone gets; run under
// ThreadSanitizer (tools/check-tsan), any shared state they touched would also be reported.
#include <atomic>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "guidescreen/attribute_codec.h"
#include "guidescreen_codec/operations.h"
#include "plan/plan_codecs.h"
#include "programme/programme_codecs.h"
#include "support/fixtures.h"

namespace {

using gsc::test::Compact;
using gsc::test::J;
using gsc::test::SetText;

constexpr int kThreads = 8;
constexpr int kRounds = 12;

template <typename Record>
std::unique_ptr<Record> Zeroed() {
  auto record = std::make_unique<Record>();
  std::memset(record.get(), 0, sizeof(Record));
  return record;
}

// ---- Answers as a device sends them ---------------------------------------------------------

const char* const kScreenAnswer = R"({"DisplayScreenCfg": {"ID": "hall", "Status": 1,
  "IsForeverOpen": true, "Time": [{"Enable": true, "DateType": 2, "PlayDates": [1, 3, 5],
  "OpenTime": "07:30:00", "CloseTime": "22:00:00"}], "Bright": 80, "Width": 1920,
  "Height": 1080, "SplitScreenList": [{"ScreenId": "left", "Rect": [0, 0, 960, 1080],
  "ChildScreenBright": 70}], "AutoBright": {"Enable": true, "LightBright": 90, "DarkBright": 20,
  "Time": [{"Sunrise": 6, "Sunset": 19}]}}})";

const char* const kScreensAnswer = R"({"infos": {"b": {"ID": "b", "Volume": 3},
  "a": {"ID": "a", "Time": [{"OpenTime": "08:00:00"}]}, "c": {"ID": "c"}}})";

const char* const kProgrammeObject = R"({"ProgrammeName": "Welcome", "ProgrammeID": "P-1",
  "Enable": true, "Ordinary": {"TempletState": true, "Description": "lobby", "Windows": [
  {"WinID": "w1", "Volume": 5, "BackgroundColor": [0, 0, 0, 255], "TourPeriod": 2,
   "TourPeriodTime": 30, "Elements": [
    {"Type": 0, "Name": "clip", "FillerState": true, "Video": {"Path": "/v.mp4", "PlayCount": 2}},
    {"Type": 1, "Name": "logo", "Picture": {"Path": "/p.png", "EnterStyle": 3}},
    {"Type": 2, "Name": "news", "Text": {"Content": "hello", "FontColor": [255, 0, 0, 255],
     "LineHeight": 1.25}, "Note": [{"Enable": true, "NoteRect": [1, 2, 3, 4],
     "NoteInfo": {"Content": "note"}}]},
    {"Type": 3, "Name": "gap"},
    {"Type": 4, "Name": "cam", "DeviceInfo": {"IP": "10.0.0.9", "Port": 37777, "Channel": 1}},
    {"Type": 9, "Name": "unknown"}]}]}})";

const char* const kBriefAnswer = R"({"infos": {"x": {"ProgrammeName": "X", "ProgrammeID": "1",
  "ProgrammeType": 0, "Enable": true}, "y": {"ProgrammeName": "Y", "TempletState": true}}})";

const char* const kPlansAnswer = R"({"infos": {
  "a": {"PlanType": 0, "PlanID": "i1", "Immediately": {"Enable": true, "PlayTime": 60,
        "ProgrammeID": "P-1"}},
  "b": {"PlanType": 1, "PlanID": "t1", "ReviewOpinion": "ok", "Timer": {"PeriodType": 1,
        "PlayDates": [2, 4], "CustomPlayDate": {"PlayStartDate": "2024:03:05",
        "PlayEndDate": "2024:12:31"}, "Overdue": false, "Programmes": [{"ProgrammeID": "P-1",
        "StartTime": "09:00:00", "EndTime": "17:30:00", "IsBgProgramme": true}]}},
  "c": {"PlanType": 1, "PlanID": "t2", "Timer": {}}}})";

const char* const kPlanAnswer = R"({"ProgrammePlan": {"PlanType": 1, "PlanName": "day",
  "Timer": {"PeriodType": 0, "Programmes": [{"ProgrammeName": "Welcome"}]}}})";

// ---- Requests ---------------------------------------------------------------------------------

// One entry of an element buffer: the kind, then the record.
template <typename Record>
void PutEntry(std::vector<unsigned char>& buffer, EM_ELEMENT_TYPE kind, const Record& record) {
  tagNET_ELEMENT_COMMON_INFO header;
  std::memset(&header, 0, sizeof header);
  header.emElementType = kind;
  const size_t at = buffer.size();
  buffer.resize(at + sizeof header + sizeof record);
  std::memcpy(buffer.data() + at, &header, sizeof header);
  std::memcpy(buffer.data() + at + sizeof header, &record, sizeof record);
}

// A thread's whole world: its own records, element buffers and answers.
class Workload {
 public:
  Workload() {
    for (auto& text : {kScreenAnswer, kScreensAnswer, kBriefAnswer, kPlansAnswer, kPlanAnswer})
      answers_.push_back(J(text));
    programmeAnswer_["Programme"] = J(kProgrammeObject);
    programmesAnswer_["infos"]["p"] = J(kProgrammeObject);
    programmesAnswer_["infos"]["q"] = J(R"({"ProgrammeID": "P-2", "Enable": false})");
    idAnswer_ = J(R"({"ProgrammeID": "P-9", "ProgrammePlanID": "PL-9"})");
    BuildRequests();
  }

  // Runs every operation once and returns everything they produced, as text.
  std::string Run() {
    std::string out;
    Requests(out);
    Answers(out);
    return out;
  }

 private:
  void BuildRequests() {
    screens_ = std::vector<tagNET_GUIDESCREEN_ATTRIBUTE_INFO>(2);
    std::memset(screens_.data(), 0, sizeof(screens_[0]) * screens_.size());
    SetText(screens_[0].szID, "hall");
    screens_[0].emStatus = EM_GUIDESCREEN_STATUS_JSON_1;
    screens_[0].nTimeNum = 1;
    screens_[0].stuTime[0] = {
        true, EM_GUIDESCREEN_DATE_TYPE_JSON_1, 2, {1, 7}, {7, 0, 0}, {23, 0, 0}, {}};
    screens_[0].nSplitScreenListNum = 1;
    SetText(screens_[0].stuSplitScreenList[0].szScreenId, "left");
    SetText(screens_[1].szID, "gate");
    screens_[1].nBright = 55;

    status_ = Zeroed<tagNET_IN_SET_GD_STATUS>();
    SetText(status_->szScreenId, "hall");
    status_->nGDNum = 170;
    for (uint32_t i = 0; i < 170; ++i) status_->emStatus[i] = static_cast<EM_GD_STATUS>(i % 3);

    auto video = Zeroed<tagNET_VIDEO_ELEMENT_INFO>();
    SetText(video->szName, "clip");
    SetText(video->szPath, "/v.mp4");
    video->nNoteNum = 1;
    SetText(video->stuNote[0].stuNoteInfo.szContent, "caption");
    auto text = Zeroed<tagNET_TEXT_ELEMENT_INFO>();
    SetText(text->szName, "news");
    SetText(text->stuText.szContent, "breaking");
    text->stuText.dbLineHeight = 1.5;
    text->stuText.emTextHoriAlign = EM_TEXT_HORI_ALIGN_JSON_2;
    auto capture = Zeroed<tagNET_CAPTURE_ELEMENT_INFO>();
    SetText(capture->szName, "cam");
    SetText(capture->szIP, "10.0.0.9");
    capture->nPort = 37777;
    PutEntry(elements_, EM_ELEMENT_TYPE_VIDEO, *video);
    PutEntry(elements_, EM_ELEMENT_TYPE_TEXT, *text);
    PutEntry(elements_, EM_ELEMENT_TYPE_CAPTURE, *capture);

    addProgramme_ = Zeroed<tagNET_IN_ADD_ONE_PROGRAMME>();
    tagNET_PROGRAMME_INFO& programme = addProgramme_->stuInfo;
    SetText(programme.szProgrammeName, "Welcome");
    SetText(programme.szProgrammeID, "P-1");
    programme.stuOrdinary.nWindowsNum = 1;
    tagNET_PROGRAMME_WINDOW_INFO& window = programme.stuOrdinary.stuWindows[0];
    SetText(window.szWinID, "w1");
    window.emTourPeriod = EM_TOUR_PERIOD_TYPE_CUSTOM_TIME;
    window.nTourPeriodTime = 15;
    window.nElementsNum = 3;
    window.pElementsBuf = elements_.data();
    window.nElementsBufLen = static_cast<uint32_t>(elements_.size());
    modifyProgramme_ = Zeroed<tagNET_IN_MODIFY_ONE_PROGRAMME>();
    modifyProgramme_->stuProgramme = programme;

    delProgrammes_ = Zeroed<tagNET_IN_DEL_PROGRAMMES>();
    delProgrammes_->nProgrammeIDListNum = 2;
    SetText(delProgrammes_->szProgrammeIDList[0], "P-1");
    SetText(delProgrammes_->szProgrammeIDList[1], "P-2");

    addImme_ = Zeroed<tagNET_IN_ADD_IMME_PROGRAMMEPLAN>();
    SetText(addImme_->stuInfo.szPlanName, "now");
    SetText(addImme_->stuInfo.szProgrammeID, "P-1");
    addImme_->stuInfo.bEnable = true;
    addImme_->stuInfo.nPlayTime = 90;
    addTimer_ = Zeroed<tagNET_IN_ADD_TIMER_PROGRAMMEPLAN>();
    tagNET_TIMER_PLAN_INFO& timer = addTimer_->stuInfo;
    SetText(timer.szPlanName, "week");
    timer.emPeriodType = EM_PLAN_PERIOD_TYPE_JSON_1;
    timer.nPlayDatesNum = 3;
    timer.nPlayDates[0] = 1;
    timer.stuPlayStartDate = {2024, 3, 5};
    timer.stuPlayEndDate = {2024, 12, 31};
    timer.nProgrammesNum = 1;
    SetText(timer.stuProgrammes[0].szProgrammeID, "P-1");
    timer.stuProgrammes[0].stuStartTime = {9, 0, 0};
    timer.stuProgrammes[0].stuEndTime = {17, 30, 0};
    modifyImme_ = Zeroed<tagNET_IN_MODIFY_IMME_PROGRAMMEPLAN>();
    modifyImme_->stuProgrammePlan = addImme_->stuInfo;
    modifyTimer_ = Zeroed<tagNET_IN_MODIFY_TIMER_PROGRAMMEPLAN>();
    modifyTimer_->stuProgrammePlan = timer;
    delPlans_ = Zeroed<tagNET_IN_DEL_PROGRAMMEPLANS>();
    delPlans_->nProgrammePlanIDListNum = 1;
    SetText(delPlans_->szProgrammePlanIDList[0], "PL-1");
  }

  template <typename In>
  static void Request(const In& in, std::string& out) {
    Json::Value params(Json::objectValue);
    EXPECT_TRUE(serialize(in, params));
    out += Compact(params);
    out += '\n';
  }

  void Requests(std::string& out) {
    tagNET_IN_SET_GUIDESCREEN_CFG setCfg = {0, static_cast<uint32_t>(screens_.size()),
                                            screens_.data()};
    Request(setCfg, out);
    tagNET_IN_GET_GUIDESCREEN_CFG_BYID byId = {0, {}};
    SetText(byId.szScreenID, "hall");
    Request(byId, out);
    Request(tagNET_IN_GET_ALL_GUIDESCREEN_CFG{0}, out);
    Request(*status_, out);
    tagNET_IN_GET_PROGRAMME_BYID programmeById = {0, {}};
    SetText(programmeById.szProgrammeID, "P-1");
    Request(programmeById, out);
    Request(tagNET_IN_GET_ALL_PROGRAMMES{0}, out);
    Request(tagNET_IN_GET_ALL_BRIEFLYPROGRAMMES{0}, out);
    Request(*addProgramme_, out);
    Request(*modifyProgramme_, out);
    Request(*delProgrammes_, out);
    Request(tagNET_IN_GET_ALL_PROGRAMMEPLANS{0}, out);
    tagNET_IN_GET_PROGRAMMEPLAN_BYID planById = {0, {}};
    SetText(planById.szProgrammePlanID, "PL-1");
    Request(planById, out);
    Request(*addImme_, out);
    Request(*addTimer_, out);
    Request(*modifyImme_, out);
    Request(*modifyTimer_, out);
    Request(*delPlans_, out);
  }

  // Output records are written back as JSON with the record writers, so that the text holds
  // what the readers stored without the thread's own pointers.
  void Answers(std::string& out) {
    Json::Value got;
    auto screen = Zeroed<tagNET_OUT_GET_GUIDESCREEN_CFG_BYID>();
    EXPECT_TRUE(deserialize(answers_[0], *screen));
    gsc::guidescreen::PacketGuidScreenAttribute(screen->stuInfo, got["screen"]);

    std::vector<tagNET_GUIDESCREEN_ATTRIBUTE_INFO> screens(2);
    std::memset(screens.data(), 0, sizeof(screens[0]) * screens.size());
    tagNET_OUT_GET_ALL_GUIDESCREEN_CFG all = {0, 2, 0, screens.data()};
    EXPECT_TRUE(deserialize(answers_[1], all));
    for (uint32_t i = 0; i < all.nRetInfosNum; ++i)
      gsc::guidescreen::PacketGuidScreenAttribute(screens[i], got["screens"][i]);

    // Element buffers are the thread's own: 3 kB short of six entries, so the list is cut.
    std::vector<unsigned char> buffer(20000);
    auto programme = Zeroed<tagNET_OUT_GET_PROGRAMME_BYID>();
    programme->stuProgramme.stuOrdinary.stuWindows[0].pElementsBuf = buffer.data();
    programme->stuProgramme.stuOrdinary.stuWindows[0].nElementsBufLen = 20000;
    EXPECT_TRUE(deserialize(programmeAnswer_, *programme));
    PacketPragramme(&programme->stuProgramme, got["programme"]);

    std::vector<std::vector<unsigned char>> buffers(2, std::vector<unsigned char>(9000));
    auto programmes = std::make_unique<tagNET_PROGRAMME_INFO[]>(2);
    std::memset(programmes.get(), 0, 2 * sizeof(tagNET_PROGRAMME_INFO));
    for (int i = 0; i < 2; ++i) {
      programmes[i].stuOrdinary.stuWindows[0].pElementsBuf = buffers[i].data();
      programmes[i].stuOrdinary.stuWindows[0].nElementsBufLen = 9000;
    }
    tagNET_OUT_GET_ALL_PROGRAMMES allProgrammes = {0, 2, 0, programmes.get()};
    EXPECT_TRUE(deserialize(programmesAnswer_, allProgrammes));
    for (uint32_t i = 0; i < allProgrammes.nRetInfosNum; ++i)
      PacketPragramme(&programmes[i], got["programmes"][i]);

    auto brief = Zeroed<tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES>();
    EXPECT_TRUE(deserialize(answers_[2], *brief));
    for (uint32_t i = 0; i < brief->nRetInfosNum; ++i) {
      const tagNET_BRIEFLY_PROGRAMME_INFO& info = brief->stuInfos[i];
      got["brief"][i] = std::string(info.szProgrammeName) + "/" + info.szProgrammeID + "/" +
                        std::to_string(info.emProgrammeType) + "/" + std::to_string(info.bEnable) +
                        std::to_string(info.bTempletState);
    }

    std::vector<tagNET_IMMEDIATELY_PLAN_INFO> imme(2);
    auto timers = std::make_unique<tagNET_TIMER_PLAN_INFO[]>(2);
    std::memset(imme.data(), 0, sizeof(imme[0]) * imme.size());
    std::memset(timers.get(), 0, 2 * sizeof(tagNET_TIMER_PLAN_INFO));
    tagNET_OUT_GET_ALL_PROGRAMMEPLANS plans = {0, 2, 0, imme.data(), 0, timers.get()};
    EXPECT_TRUE(deserialize(answers_[3], plans));
    for (uint32_t i = 0; i < plans.nRetImmePlanNum; ++i) PacketImmePlan(&imme[i], got["imme"][i]);
    for (uint32_t i = 0; i < plans.nRetTimerPlanNum; ++i)
      PacketTimerPlan(&timers[i], got["timer"][i]);

    auto plan = Zeroed<tagNET_OUT_GET_PROGRAMMEPLAN_BYID>();
    EXPECT_TRUE(deserialize(answers_[4], *plan));
    got["planType"] = static_cast<int>(plan->emPlanType);
    PacketTimerPlan(&plan->stuTimerPlan, got["plan"]);

    tagNET_OUT_ADD_ONE_PROGRAMME added = {0, {}};
    EXPECT_TRUE(deserialize(idAnswer_, added));
    tagNET_OUT_ADD_PROGRAMMEPLAN addedPlan = {0, {}};
    EXPECT_TRUE(deserialize(idAnswer_, addedPlan));
    got["ids"] = std::string(added.szProgrammeID) + "," + addedPlan.szProgrammePlanID;

    // The operations whose answers carry nothing.
    tagNET_OUT_SET_GUIDESCREEN_CFG setCfg = {1};
    tagNET_OUT_SET_GD_STATUS status = {2};
    tagNET_OUT_MODIFY_ONE_PROGRAMME modified = {3};
    tagNET_OUT_DEL_PROGRAMMES deleted = {4};
    tagNET_OUT_MODIFY_IMME_PROGRAMMEPLAN modifiedImme = {5};
    tagNET_OUT_MODIFY_TIMER_PROGRAMMEPLAN modifiedTimer = {6};
    tagNET_OUT_DEL_PROGRAMMEPLANS deletedPlans = {7};
    EXPECT_TRUE(deserialize(idAnswer_, setCfg) && deserialize(idAnswer_, status) &&
                deserialize(idAnswer_, modified) && deserialize(idAnswer_, deleted) &&
                deserialize(idAnswer_, modifiedImme) && deserialize(idAnswer_, modifiedTimer) &&
                deserialize(idAnswer_, deletedPlans));
    got["sizes"] = std::to_string(setCfg.dwSize + status.dwSize + modified.dwSize + deleted.dwSize +
                                  modifiedImme.dwSize + modifiedTimer.dwSize + deletedPlans.dwSize);
    out += Compact(got);
  }

  std::vector<Json::Value> answers_;
  Json::Value programmeAnswer_;
  Json::Value programmesAnswer_;
  Json::Value idAnswer_;
  std::vector<tagNET_GUIDESCREEN_ATTRIBUTE_INFO> screens_;
  std::unique_ptr<tagNET_IN_SET_GD_STATUS> status_;
  std::vector<unsigned char> elements_;
  std::unique_ptr<tagNET_IN_ADD_ONE_PROGRAMME> addProgramme_;
  std::unique_ptr<tagNET_IN_MODIFY_ONE_PROGRAMME> modifyProgramme_;
  std::unique_ptr<tagNET_IN_DEL_PROGRAMMES> delProgrammes_;
  std::unique_ptr<tagNET_IN_ADD_IMME_PROGRAMMEPLAN> addImme_;
  std::unique_ptr<tagNET_IN_ADD_TIMER_PROGRAMMEPLAN> addTimer_;
  std::unique_ptr<tagNET_IN_MODIFY_IMME_PROGRAMMEPLAN> modifyImme_;
  std::unique_ptr<tagNET_IN_MODIFY_TIMER_PROGRAMMEPLAN> modifyTimer_;
  std::unique_ptr<tagNET_IN_DEL_PROGRAMMEPLANS> delPlans_;
};

TEST(Concurrency, EveryOperationFromManyThreadsGivesWhatOneThreadGets) {
  const std::string expected = Workload().Run();
  // The reference must hold what the workload is there to exercise.
  for (const char* part : {"\"infos\":{\"gate\"", "\"Status\":\"100010001", "\"Type\":4",
                           "\"PlayStartDate\":\"2024:03:05\"", "\"ids\":\"P-9,PL-9\"",
                           "\"sizes\":\"28\"", "\"Content\":\"hello\""}) {
    EXPECT_NE(std::string::npos, expected.find(part)) << part;
  }

  std::atomic<int> ready{0};
  std::atomic<int> mismatches{0};
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&] {
      Workload workload;  // built before the start line, so the rounds overlap
      ready.fetch_add(1);
      while (ready.load() < kThreads) std::this_thread::yield();
      for (int round = 0; round < kRounds; ++round)
        if (workload.Run() != expected) mismatches.fetch_add(1);
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(0, mismatches.load());
}

}  // namespace
