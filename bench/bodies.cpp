#include "bodies.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "guidescreen_codec/capi.h"

namespace gsc::bench {
namespace {

template <size_t N>
void SetText(char (&field)[N], const char* format, int seed) {
  std::snprintf(field, N, format, seed);
}

void FillTextBlock(tagNET_GUIDESCREEN_TEXT_INFO& text, int seed) {
  SetText(text.szContent, "Welcome to hall %d: opening hours and today's timetable", seed);
  text.nFontSize = 24 + static_cast<uint32_t>(seed % 8);
  text.stuFontColor = {255, seed % 256, 0, 255};
  SetText(text.szFontStyle, "Regular %d", seed % 4);
  text.dbLineHeight = 1.25;
  text.emTextHoriAlign = static_cast<EM_TEXT_HORI_ALIGN>(1 + seed % 3);
  text.emTextVertAlign = static_cast<EM_TEXT_VERT_ALIGN>(1 + (seed + 1) % 3);
  text.nPlayTime = 30;
  text.nPlayCount = 2;
  text.nStayTime = 5;
  text.emEnterStyle = static_cast<EM_ENTER_STYLE>(1 + seed % 5);
  text.emExitStyle = static_cast<EM_EXIT_STYLE>(1 + (seed + 2) % 5);
}

template <typename Element>
void FillCommon(Element& element, int seed) {
  SetText(element.szName, "element-%d", seed);
  element.bFillerState = seed % 2 == 0;
  // Up to two notes, varying with the element.
  element.nNoteNum = static_cast<uint32_t>(seed % 3);
  for (uint32_t n = 0; n < element.nNoteNum; ++n) {
    tagNET_GUIDESCREEN_NOTE_INFO& note = element.stuNote[n];
    note.bEnable = true;
    note.stuNoteRect = {10, 10, 400, 80};
    FillTextBlock(note.stuNoteInfo, seed + static_cast<int>(n));
  }
}

// Appends one entry to the window's buffer through the library, as a caller lays it out.
template <typename Element>
void AppendEntry(std::vector<unsigned char>& buffer, uint32_t& used, EM_ELEMENT_TYPE kind,
                 const Element& element) {
  if (gsc_element_append(buffer.data(), static_cast<uint32_t>(buffer.size()), &used, kind,
                         &element) != GSC_STATUS_OK) {
    std::fprintf(stderr, "bench: element buffer too small\n");
    std::abort();
  }
}

// Appends one element of the kind `seed` selects.
void PutElement(std::vector<unsigned char>& buffer, uint32_t& used, int seed) {
  switch (seed % 5) {
    case 0: {
      auto element = std::make_unique<tagNET_VIDEO_ELEMENT_INFO>();
      FillCommon(*element, seed);
      SetText(element->szPath, "/media/video/clip-%04d.mp4", seed);
      element->nPlayCount = 3;
      return AppendEntry(buffer, used, EM_ELEMENT_TYPE_VIDEO, *element);
    }
    case 1: {
      auto element = std::make_unique<tagNET_PICTURE_ELEMENT_INFO>();
      FillCommon(*element, seed);
      SetText(element->szPath, "/media/pictures/poster-%04d.png", seed);
      element->nPlayTime = 10;
      element->nPlayCount = 1;
      element->nDiaphaneity = 100;
      element->nStayTime = 8;
      element->emEnterStyle = EM_ENTER_STYLE_JSON_1;
      element->emExitStyle = EM_EXIT_STYLE_JSON_2;
      return AppendEntry(buffer, used, EM_ELEMENT_TYPE_PICTURE, *element);
    }
    case 2: {
      auto element = std::make_unique<tagNET_TEXT_ELEMENT_INFO>();
      FillCommon(*element, seed);
      FillTextBlock(element->stuText, seed);
      return AppendEntry(buffer, used, EM_ELEMENT_TYPE_TEXT, *element);
    }
    case 3: {
      auto element = std::make_unique<tagNET_PLACEHOLDER_ELEMENT_INFO>();
      FillCommon(*element, seed);
      return AppendEntry(buffer, used, EM_ELEMENT_TYPE_PLACEHOLDER, *element);
    }
    default: {
      auto element = std::make_unique<tagNET_CAPTURE_ELEMENT_INFO>();
      FillCommon(*element, seed);
      SetText(element->szUserName, "viewer%d", seed % 10);
      SetText(element->szPassword, "secret-%d", seed % 100);
      SetText(element->szIP, "192.0.2.%d", seed % 250);
      element->nPort = 37777;
      element->nChannel = static_cast<uint32_t>(seed % 16);
      element->emCaptureType = EM_CAPTURE_TYPE_JSON_0;
      element->nPlayTime = 60;
      return AppendEntry(buffer, used, EM_ELEMENT_TYPE_CAPTURE, *element);
    }
  }
}

Json::Value Parsed(const Json::Value& written) {
  return FromText(ToText(written));
}

}  // namespace

size_t ElementBufferSize(uint32_t elements) {
  return gsc_element_buffer_size(elements);
}

void FillProgramme(tagNET_PROGRAMME_INFO& programme, int seed, uint32_t windows, uint32_t elements,
                   std::vector<std::vector<unsigned char>>& buffers) {
  SetText(programme.szProgrammeName, "Morning programme %d", seed);
  SetText(programme.szProgrammeID, "programme-%05d", seed);
  programme.bEnable = true;
  tagNET_ORDINARY_PROGRAMME_INFO& ordinary = programme.stuOrdinary;
  ordinary.bTempletState = seed % 2 == 1;
  SetText(ordinary.szDescription, "Layout %d with a banner, a video wall and a ticker", seed);
  ordinary.nWindowsNum = windows;
  for (uint32_t w = 0; w < windows; ++w) {
    tagNET_PROGRAMME_WINDOW_INFO& window = ordinary.stuWindows[w];
    const int windowSeed = seed * 16 + static_cast<int>(w);
    SetText(window.szWinID, "win-%d", windowSeed);
    window.nVolume = 50;
    window.stuBackgroundColor = {0, 0, windowSeed % 256, 255};
    window.nDiaphaneity = 100;
    window.emTourPeriod = static_cast<EM_TOUR_PERIOD_TYPE>(1 + windowSeed % 3);
    window.nTourPeriodTime = 15;
    buffers.emplace_back(ElementBufferSize(elements));
    std::vector<unsigned char>& buffer = buffers.back();
    uint32_t used = 0;
    for (uint32_t e = 0; e < elements; ++e)
      PutElement(buffer, used, windowSeed * 8 + static_cast<int>(e));
    window.nElementsNum = elements;
    window.pElementsBuf = buffer.data();
    window.nElementsBufLen = static_cast<uint32_t>(buffer.size());
  }
}

void FillScreen(tagNET_GUIDESCREEN_ATTRIBUTE_INFO& screen, int seed) {
  SetText(screen.szID, "screen-%04d", seed);
  screen.emStatus = EM_GUIDESCREEN_STATUS_JSON_1;
  screen.bIsForeverOpen = seed % 2 == 0;
  screen.nTimeNum = 8;
  for (uint32_t t = 0; t < 8; ++t) {
    tagNET_GUIDESCREEN_TIME_INFO& time = screen.stuTime[t];
    time.bEnable = true;
    time.emDateType = static_cast<EM_GUIDESCREEN_DATE_TYPE>(1 + t % 3);
    time.nPlayDatesNum = 32;
    for (uint32_t d = 0; d < 32; ++d) time.nPlayDates[d] = d + 1;
    time.stuOpenTime = {8, static_cast<int32_t>(t * 5), 0};
    time.stuCloseTime = {20, 30, static_cast<int32_t>(t)};
  }
  screen.nBright = 80;
  screen.nContrast = 50;
  screen.nSaturation = 55;
  screen.nVolume = 30;
  screen.nWidth = 1920;
  screen.nHeight = 1080;
  screen.nSplitScreenListNum = 16;
  for (uint32_t s = 0; s < 16; ++s) {
    tagNET_GUIDESCREEN_SPLITSCREEN_INFO& split = screen.stuSplitScreenList[s];
    SetText(split.szScreenId, "split-%d", seed * 16 + static_cast<int>(s));
    const int32_t x = static_cast<int32_t>(s % 4) * 480;
    const int32_t y = static_cast<int32_t>(s / 4) * 270;
    split.stuRect = {x, y, x + 480, y + 270};
    split.nChildScreenBright = 70;
  }
  screen.stuAutoBright.bEnable = true;
  screen.stuAutoBright.nLightBright = 90;
  screen.stuAutoBright.nDarkBright = 20;
  for (uint32_t m = 0; m < 12; ++m) {
    screen.stuAutoBright.stuTime[m].nSunrise = 6 + m % 2;
    screen.stuAutoBright.stuTime[m].nSunset = 18 + m % 3;
  }
}

void FillImmePlan(tagNET_IMMEDIATELY_PLAN_INFO& plan, int seed) {
  SetText(plan.szPlanName, "Announcement %d", seed);
  SetText(plan.szPlanID, "plan-%05d", seed);
  SetText(plan.szSplitScreenID, "split-%d", seed % 16);
  plan.bEnable = true;
  plan.nPlayTime = 300;
  SetText(plan.szProgrammeName, "Notice board %d", seed);
  SetText(plan.szProgrammeID, "programme-%05d", seed);
}

void FillTimerPlan(tagNET_TIMER_PLAN_INFO& plan, int seed, uint32_t programmes) {
  SetText(plan.szPlanName, "Weekly schedule %d", seed);
  SetText(plan.szPlanID, "plan-%05d", seed);
  SetText(plan.szSplitScreenID, "split-%d", seed % 16);
  plan.emPeriodType = EM_PLAN_PERIOD_TYPE_JSON_1;
  plan.nPlayDatesNum = 32;
  for (uint32_t d = 0; d < 32; ++d) plan.nPlayDates[d] = d % 7;
  plan.stuPlayStartDate = {2024, 3, 1};
  plan.stuPlayEndDate = {2024, 12, 31};
  plan.emReviewState = static_cast<EM_PLAN_REVIEW_STATE>(1 + seed % 2);
  SetText(plan.szReviewOpinion, "Approved by operator %d", seed % 7);
  plan.bOverdue = false;
  plan.nProgrammesNum = programmes;
  for (uint32_t p = 0; p < programmes; ++p) {
    tagNET_PLAN_PROGRAMME_INFO& programme = plan.stuProgrammes[p];
    SetText(programme.szProgrammeName, "Slot programme %d", seed * 32 + static_cast<int>(p));
    SetText(programme.szProgrammeID, "programme-%05d", static_cast<int>(p));
    programme.bIsBgProgramme = p == 0;
    programme.stuStartTime = {static_cast<int32_t>(p % 24), 0, 0};
    programme.stuEndTime = {static_cast<int32_t>(p % 24), 59, 59};
  }
}

std::string ToText(const Json::Value& value) {
  Json::StreamWriterBuilder builder;
  builder["indentation"] = "";
  return Json::writeString(builder, value);
}

Json::Value FromText(const std::string& text) {
  Json::CharReaderBuilder builder;
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  Json::Value value;
  std::string errors;
  if (!reader->parse(text.data(), text.data() + text.size(), &value, &errors)) {
    std::fprintf(stderr, "benchmark body does not parse: %s\n", errors.c_str());
    std::abort();
  }
  return value;
}

Json::Value AllProgrammesAnswer(uint32_t members, uint32_t windows, uint32_t elements) {
  Json::Value result;
  Json::Value& infos = result["infos"];
  std::vector<std::vector<unsigned char>> buffers;
  auto programme = std::make_unique<tagNET_PROGRAMME_INFO>();
  for (uint32_t i = 0; i < members; ++i) {
    *programme = tagNET_PROGRAMME_INFO{};
    buffers.clear();
    FillProgramme(*programme, static_cast<int>(i), windows, elements, buffers);
    tagNET_IN_ADD_ONE_PROGRAMME in{};
    in.stuInfo = *programme;
    Json::Value params;
    serialize(in, params);
    infos[programme->szProgrammeID] = params["info"];
  }
  return Parsed(result);
}

Json::Value AllScreensAnswer(uint32_t members) {
  Records<tagNET_GUIDESCREEN_ATTRIBUTE_INFO> screens(members);
  for (uint32_t i = 0; i < members; ++i) FillScreen(screens[i], static_cast<int>(i));
  tagNET_IN_SET_GUIDESCREEN_CFG in{};
  in.nInfosNum = members;
  in.pstuInfos = screens.data();
  Json::Value params;
  serialize(in, params);
  return Parsed(params);
}

Json::Value AllPlansAnswer(uint32_t members) {
  Json::Value result;
  Json::Value& infos = result["infos"];
  auto imme = std::make_unique<tagNET_IN_ADD_IMME_PROGRAMMEPLAN>();
  auto timer = std::make_unique<tagNET_IN_ADD_TIMER_PROGRAMMEPLAN>();
  for (uint32_t i = 0; i < members; ++i) {
    Json::Value params;
    if (i % 2 == 0) {
      *imme = tagNET_IN_ADD_IMME_PROGRAMMEPLAN{};
      FillImmePlan(imme->stuInfo, static_cast<int>(i));
      serialize(*imme, params);
    } else {
      *timer = tagNET_IN_ADD_TIMER_PROGRAMMEPLAN{};
      FillTimerPlan(timer->stuInfo, static_cast<int>(i), 8);
      serialize(*timer, params);
    }
    char name[32];
    std::snprintf(name, sizeof name, "plan-%05u", i);
    infos[name] = params["info"];
  }
  return Parsed(result);
}

Json::Value BriefProgrammesAnswer(uint32_t members) {
  Json::Value result;
  Json::Value& infos = result["infos"];
  for (uint32_t i = 0; i < members; ++i) {
    char id[32];
    std::snprintf(id, sizeof id, "programme-%05u", i);
    char name[64];
    std::snprintf(name, sizeof name, "Morning programme %u", i);
    Json::Value& entry = infos[id];
    entry["ProgrammeName"] = name;
    entry["ProgrammeID"] = id;
    entry["ProgrammeType"] = i % 2;
    entry["Enable"] = true;
    entry["TempletState"] = i % 3 == 0;
  }
  return Parsed(result);
}

Json::Value ScreenByIdAnswer() {
  const Json::Value all = AllScreensAnswer(1);
  Json::Value result;
  result["DisplayScreenCfg"] = *all["infos"].begin();
  return Parsed(result);
}

Json::Value PlanByIdAnswer(uint32_t programmes) {
  auto timer = std::make_unique<tagNET_IN_ADD_TIMER_PROGRAMMEPLAN>();
  FillTimerPlan(timer->stuInfo, 7, programmes);
  Json::Value params;
  serialize(*timer, params);
  Json::Value result;
  result["ProgrammePlan"] = params["info"];
  return Parsed(result);
}

ProgrammeTargets::ProgrammeTargets(uint32_t count, uint32_t windows, uint32_t elements)
    : programmes(count) {
  buffers.reserve(static_cast<size_t>(count) * windows);
  for (uint32_t i = 0; i < count; ++i) {
    for (uint32_t w = 0; w < windows; ++w) {
      tagNET_PROGRAMME_WINDOW_INFO& window = programmes[i].stuOrdinary.stuWindows[w];
      buffers.emplace_back(ElementBufferSize(elements));
      window.pElementsBuf = buffers.back().data();
      window.nElementsBufLen = static_cast<uint32_t>(buffers.back().size());
    }
  }
}

}  // namespace gsc::bench
