// The programme operations: a programme whose windows hold elements of every kind is added, then
// read back from a sample answer into the caller's element buffers.
#include <cstdio>
#include <cstring>
#include <iostream>

#include "demos.h"
#include "guidescreen_codec.h"

namespace {

// Element buffers are packed, so a record may sit on an address that is 4 but not 8 aligned:
// entries are appended and read back through the library's element buffer functions (capi.h),
// which copy them in and out.
class ElementWriter {
 public:
  ElementWriter(uint8_t* buffer, uint32_t length) : buffer_(buffer), length_(length) {}

  template <typename Record>
  bool Add(EM_ELEMENT_TYPE kind, const Record& record) {
    if (gsc_element_append(buffer_, length_, &used_, kind, &record) != GSC_STATUS_OK) return false;
    ++count_;
    return true;
  }
  uint32_t count() const { return count_; }
  uint32_t used() const { return used_; }

 private:
  uint8_t* buffer_;
  uint32_t length_;
  uint32_t used_ = 0;
  uint32_t count_ = 0;
};

// Prints a window's entries, each copied out of the buffer by gsc_element_next.
void PrintElements(const tagNET_PROGRAMME_WINDOW_INFO& window) {
  uint32_t offset = 0;
  for (uint32_t j = 0; j < window.nElementsNum; ++j) {
    EM_ELEMENT_TYPE kind = EM_ELEMENT_TYPE_UNKNOWN;
    static gsc_element_record record;
    if (gsc_element_next(window.pElementsBuf, window.nElementsBufLen, &offset, &kind, &record,
                         sizeof record) != GSC_STATUS_OK)
      break;
    switch (kind) {
      case EM_ELEMENT_TYPE_VIDEO: {
        const tagNET_VIDEO_ELEMENT_INFO& video = record.stuVideo;
        std::printf("      video \"%s\": %s, played %u times\n", video.szName, video.szPath,
                    video.nPlayCount);
        break;
      }
      case EM_ELEMENT_TYPE_PICTURE: {
        const tagNET_PICTURE_ELEMENT_INFO& picture = record.stuPicture;
        std::printf("      picture \"%s\": %s, stays %u, effects %d/%d\n", picture.szName,
                    picture.szPath, picture.nStayTime, static_cast<int>(picture.emEnterStyle),
                    static_cast<int>(picture.emExitStyle));
        break;
      }
      case EM_ELEMENT_TYPE_TEXT: {
        const tagNET_TEXT_ELEMENT_INFO& text = record.stuText;
        std::printf("      text \"%s\": \"%s\", size %u, %u note(s)\n", text.szName,
                    text.stuText.szContent, text.stuText.nFontSize, text.nNoteNum);
        for (uint32_t n = 0; n < text.nNoteNum && n < GSC_MAX_NOTES; ++n) {
          std::printf("        note: \"%s\"\n", text.stuNote[n].stuNoteInfo.szContent);
        }
        break;
      }
      case EM_ELEMENT_TYPE_PLACEHOLDER:
        std::printf("      placeholder \"%s\", filler %d\n", record.stuPlaceHolder.szName,
                    record.stuPlaceHolder.bFillerState);
        break;
      case EM_ELEMENT_TYPE_CAPTURE: {
        const tagNET_CAPTURE_ELEMENT_INFO& capture = record.stuCapture;
        std::printf("      capture \"%s\": %s:%u channel %u, type %d\n", capture.szName,
                    capture.szIP, capture.nPort, capture.nChannel,
                    static_cast<int>(capture.emCaptureType));
        break;
      }
      default:
        std::printf("      (element of unknown kind)\n");
        break;
    }
  }
}

void PrintProgramme(const tagNET_PROGRAMME_INFO& programme) {
  const tagNET_ORDINARY_PROGRAMME_INFO& ordinary = programme.stuOrdinary;
  std::printf("  programme \"%s\" (%s), enabled %d, \"%s\", %u window(s)\n",
              programme.szProgrammeName, programme.szProgrammeID, programme.bEnable,
              ordinary.szDescription, ordinary.nWindowsNum);
  for (uint32_t i = 0; i < ordinary.nWindowsNum && i < GSC_MAX_WINDOWS; ++i) {
    const tagNET_PROGRAMME_WINDOW_INFO& window = ordinary.stuWindows[i];
    std::printf("    window \"%s\": volume %d, tour period %d (%u s), %u element(s)\n",
                window.szWinID, window.nVolume, static_cast<int>(window.emTourPeriod),
                window.nTourPeriodTime, window.nElementsNum);
    PrintElements(window);
  }
}

void AddProgramme() {
  // Room for the entries each window gets, whatever their kinds.
  static uint8_t media[GSC_ELEMENT_BUFFER_SIZE(2)];
  static uint8_t info[GSC_ELEMENT_BUFFER_SIZE(3)];
  static tagNET_IN_ADD_ONE_PROGRAMME in = {};
  in.dwSize = sizeof in;
  tagNET_PROGRAMME_INFO& programme = in.stuInfo;
  std::strcpy(programme.szProgrammeName, "Lobby morning");
  programme.bEnable = true;
  std::strcpy(programme.stuOrdinary.szDescription, "Welcome loop with visitor camera");
  programme.stuOrdinary.nWindowsNum = 2;

  tagNET_PROGRAMME_WINDOW_INFO& left = programme.stuOrdinary.stuWindows[0];
  std::strcpy(left.szWinID, "media");
  left.nVolume = 40;
  left.stuBackgroundColor = {0, 0, 0, 255};
  left.emTourPeriod = EM_TOUR_PERIOD_TYPE_CUSTOM_TIME;
  left.nTourPeriodTime = 30;
  ElementWriter leftElements(media, sizeof media);
  static tagNET_VIDEO_ELEMENT_INFO video = {};
  std::strcpy(video.szName, "welcome clip");
  std::strcpy(video.szPath, "/media/welcome.mp4");
  video.nPlayCount = 1;
  leftElements.Add(EM_ELEMENT_TYPE_VIDEO, video);
  static tagNET_PICTURE_ELEMENT_INFO picture = {};
  std::strcpy(picture.szName, "floor plan");
  std::strcpy(picture.szPath, "/media/floor-plan.png");
  picture.nStayTime = 10;
  picture.emEnterStyle = EM_ENTER_STYLE_JSON_1;
  picture.emExitStyle = EM_EXIT_STYLE_JSON_1;
  leftElements.Add(EM_ELEMENT_TYPE_PICTURE, picture);
  left.pElementsBuf = media;
  left.nElementsNum = leftElements.count();
  left.nElementsBufLen = leftElements.used();

  tagNET_PROGRAMME_WINDOW_INFO& right = programme.stuOrdinary.stuWindows[1];
  std::strcpy(right.szWinID, "info");
  right.stuBackgroundColor = {255, 255, 255, 255};
  right.emTourPeriod = EM_TOUR_PERIOD_TYPE_JSON_0;
  ElementWriter rightElements(info, sizeof info);
  static tagNET_TEXT_ELEMENT_INFO text = {};
  std::strcpy(text.szName, "opening hours");
  std::strcpy(text.stuText.szContent, "Open daily 9:00 to 17:00");
  text.stuText.nFontSize = 32;
  text.stuText.stuFontColor = {0, 0, 0, 255};
  text.stuText.emTextHoriAlign = EM_TEXT_HORI_ALIGN_JSON_1;
  text.nNoteNum = 1;
  text.stuNote[0].bEnable = true;
  text.stuNote[0].stuNoteRect = {0, 900, 1080, 1000};
  std::strcpy(text.stuNote[0].stuNoteInfo.szContent, "Closed on holidays");
  rightElements.Add(EM_ELEMENT_TYPE_TEXT, text);
  static tagNET_PLACEHOLDER_ELEMENT_INFO placeholder = {};
  std::strcpy(placeholder.szName, "announcement slot");
  placeholder.bFillerState = true;
  rightElements.Add(EM_ELEMENT_TYPE_PLACEHOLDER, placeholder);
  static tagNET_CAPTURE_ELEMENT_INFO capture = {};
  std::strcpy(capture.szName, "entrance camera");
  std::strcpy(capture.szUserName, "viewer");
  std::strcpy(capture.szIP, "192.0.2.20");
  capture.nPort = 37777;
  capture.nChannel = 1;
  capture.emCaptureType = EM_CAPTURE_TYPE_JSON_0;
  capture.nPlayTime = 15;
  rightElements.Add(EM_ELEMENT_TYPE_CAPTURE, capture);
  right.pElementsBuf = info;
  right.nElementsNum = rightElements.count();
  right.nElementsBufLen = rightElements.used();

  Json::Value params(Json::objectValue);
  serialize(in, params);
  PrintJson("ADD_ONE_PROGRAMME request", params);

  const Json::Value answer = ParseJson(R"({"ProgrammeID": "P-1001"})");
  PrintJson("ADD_ONE_PROGRAMME answer", answer);
  tagNET_OUT_ADD_ONE_PROGRAMME out = {};
  out.dwSize = sizeof out;
  deserialize(answer, out);
  std::printf("--- ADD_ONE_PROGRAMME record received\n  new programme ID \"%s\"\n",
              out.szProgrammeID);
}

void GetProgrammeById() {
  tagNET_IN_GET_PROGRAMME_BYID in = {};
  in.dwSize = sizeof in;
  std::strcpy(in.szProgrammeID, "P-1001");
  Json::Value params(Json::objectValue);
  serialize(in, params);
  PrintJson("GET_PROGRAMME_BYID request", params);

  const Json::Value answer = ParseJson(R"({"Programme": {
      "ProgrammeName": "Lobby morning", "ProgrammeID": "P-1001", "ProgrammeType": 0,
      "Enable": true,
      "Ordinary": {"TempletState": false, "Description": "Welcome loop with visitor camera",
        "Windows": [
          {"WinID": "media", "BackgroundColor": [0, 0, 0, 255], "Volume": 40, "Diaphaneity": 0,
           "TourPeriod": 2, "TourPeriodTime": 30,
           "Elements": [
             {"Name": "welcome clip", "Type": 0, "FillerState": false,
              "Video": {"Path": "/media/welcome.mp4", "PlayCount": 1}},
             {"Name": "floor plan", "Type": 1, "FillerState": false,
              "Picture": {"Path": "/media/floor-plan.png", "PlayTime": 0, "PlayCount": 0,
                          "Diaphaneity": 0, "StayTime": 10, "EnterStyle": 1, "ExitStyle": 1}}]},
          {"WinID": "info", "BackgroundColor": [255, 255, 255, 255], "Volume": 0,
           "Diaphaneity": 0, "TourPeriod": 0,
           "Elements": [
             {"Name": "opening hours", "Type": 2, "FillerState": false,
              "Text": {"Content": "Open daily 9:00 to 17:00", "FontSize": 32,
                       "FontColor": [0, 0, 0, 255], "FontStyle": "", "LineHeight": 1.0,
                       "TextHoriAlign": 1, "StayTime": 0, "PlayTime": 0, "PlayCount": 0},
              "Note": [{"Enable": true, "NoteRect": [0, 900, 1080, 1000],
                        "NoteInfo": {"Content": "Closed on holidays", "FontSize": 20}}]},
             {"Name": "announcement slot", "Type": 3, "FillerState": true},
             {"Name": "entrance camera", "Type": 4, "FillerState": false,
              "DeviceInfo": {"UserName": "viewer", "Password": "", "IP": "192.0.2.20",
                             "Port": 37777, "Channel": 1, "CaptureType": 0, "PlayTime": 15}}]}]}}})");
  PrintJson("GET_PROGRAMME_BYID answer", answer);

  // The caller gives every window an element buffer before reading; the reader fills it.
  static uint8_t buffers[2][GSC_ELEMENT_BUFFER_SIZE(8)];
  static tagNET_OUT_GET_PROGRAMME_BYID out = {};
  out.dwSize = sizeof out;
  for (int i = 0; i < 2; ++i) {
    out.stuProgramme.stuOrdinary.stuWindows[i].pElementsBuf = buffers[i];
    out.stuProgramme.stuOrdinary.stuWindows[i].nElementsBufLen = sizeof buffers[i];
  }
  deserialize(answer, out);
  std::cout << "--- GET_PROGRAMME_BYID record received\n";
  PrintProgramme(out.stuProgramme);
}

}  // namespace

void RunProgrammeDemo() {
  AddProgramme();
  GetProgrammeById();
}
