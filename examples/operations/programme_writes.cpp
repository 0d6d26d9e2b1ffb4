// Writing programmes: a new one added with elements of every kind, one modified, two deleted.
#include <cstdio>
#include <string>

#include "example_support.h"
#include "operations/operations.h"

namespace examples {
namespace {

// Lays a window's entries into its element buffer. Entries are packed, so a record may sit 4 but
// not 8 bytes aligned: gsc_element_append copies each in rather than the caller writing in place.
class ElementWriter {
 public:
  template <size_t N>
  ElementWriter(tagNET_PROGRAMME_WINDOW_INFO& window, unsigned char (&buffer)[N])
      : window_(window) {
    window_.pElementsBuf = buffer;
    window_.nElementsBufLen = 0;
    window_.nElementsNum = 0;
    capacity_ = N;
  }

  template <typename Record>
  void Add(EM_ELEMENT_TYPE kind, const Record& record) {
    if (gsc_element_append(window_.pElementsBuf, capacity_, &window_.nElementsBufLen, kind,
                           &record) != GSC_STATUS_OK) {
      throw ExampleFailure("the element buffer of window " + std::string(window_.szWinID) +
                           " is full");
    }
    ++window_.nElementsNum;
  }

 private:
  tagNET_PROGRAMME_WINDOW_INFO& window_;
  uint32_t capacity_;
};

tagNET_TEXT_ELEMENT_INFO TextElement(const char* name, const char* content, uint32_t font_size) {
  tagNET_TEXT_ELEMENT_INFO text = {};
  SetText(text.szName, name);
  SetText(text.stuText.szContent, content);
  text.stuText.nFontSize = font_size;
  return text;
}

}  // namespace

void AddOneProgramme() {
  auto in = Blank<tagNET_IN_ADD_ONE_PROGRAMME>();
  tagNET_PROGRAMME_INFO& programme = in.stuInfo;
  // No ID: the device gives the new programme one, in its answer.
  SetText(programme.szProgrammeName, "Lobby morning");
  programme.bEnable = true;
  SetText(programme.stuOrdinary.szDescription, "Welcome loop with visitor camera");
  programme.stuOrdinary.nWindowsNum = 2;

  tagNET_PROGRAMME_WINDOW_INFO& media = programme.stuOrdinary.stuWindows[0];
  SetText(media.szWinID, "media");
  media.nVolume = 40;
  media.stuBackgroundColor = {0, 0, 0, 255};
  media.emTourPeriod = EM_TOUR_PERIOD_TYPE_CUSTOM_TIME;
  media.nTourPeriodTime = 30;
  unsigned char media_buffer[GSC_ELEMENT_BUFFER_SIZE(2)];
  ElementWriter media_elements(media, media_buffer);
  tagNET_VIDEO_ELEMENT_INFO video = {};
  SetText(video.szName, "welcome clip");
  SetText(video.szPath, "/media/welcome.mp4");
  video.nPlayCount = 1;
  media_elements.Add(EM_ELEMENT_TYPE_VIDEO, video);
  tagNET_PICTURE_ELEMENT_INFO picture = {};
  SetText(picture.szName, "floor plan");
  SetText(picture.szPath, "/media/floor-plan.png");
  picture.nStayTime = 10;
  media_elements.Add(EM_ELEMENT_TYPE_PICTURE, picture);

  tagNET_PROGRAMME_WINDOW_INFO& info = programme.stuOrdinary.stuWindows[1];
  SetText(info.szWinID, "info");
  info.stuBackgroundColor = {255, 255, 255, 255};
  info.emTourPeriod = EM_TOUR_PERIOD_TYPE_JSON_0;
  unsigned char info_buffer[GSC_ELEMENT_BUFFER_SIZE(3)];
  ElementWriter info_elements(info, info_buffer);
  tagNET_TEXT_ELEMENT_INFO text = TextElement("opening hours", "Open daily 9:00 to 17:00", 32);
  text.stuText.stuFontColor = {0, 0, 0, 255};
  text.nNoteNum = 1;
  text.stuNote[0].bEnable = true;
  text.stuNote[0].stuNoteRect = {0, 900, 1080, 1000};
  SetText(text.stuNote[0].stuNoteInfo.szContent, "Closed on holidays");
  info_elements.Add(EM_ELEMENT_TYPE_TEXT, text);
  tagNET_PLACEHOLDER_ELEMENT_INFO placeholder = {};
  SetText(placeholder.szName, "announcement slot");
  placeholder.bFillerState = true;
  info_elements.Add(EM_ELEMENT_TYPE_PLACEHOLDER, placeholder);
  tagNET_CAPTURE_ELEMENT_INFO capture = {};
  SetText(capture.szName, "entrance camera");
  SetText(capture.szIP, "192.0.2.20");
  capture.nPort = 37777;
  capture.nChannel = 1;
  capture.emCaptureType = EM_CAPTURE_TYPE_JSON_0;
  info_elements.Add(EM_ELEMENT_TYPE_CAPTURE, capture);

  SendRequest(in);
  auto out = Blank<tagNET_OUT_ADD_ONE_PROGRAMME>();
  ReadAnswer(R"({"ProgrammeID": "P-1001"})", out);
  std::printf("  the device named the new programme %s\n", out.szProgrammeID);
}

void ModifyOneProgramme() {
  auto in = Blank<tagNET_IN_MODIFY_ONE_PROGRAMME>();
  tagNET_PROGRAMME_INFO& programme = in.stuProgramme;
  // The programme's own ID says which one to change.
  SetText(programme.szProgrammeID, "P-1003");
  SetText(programme.szProgrammeName, "Cafeteria menu (weekend)");
  programme.bEnable = true;
  programme.stuOrdinary.nWindowsNum = 1;
  tagNET_PROGRAMME_WINDOW_INFO& menu = programme.stuOrdinary.stuWindows[0];
  SetText(menu.szWinID, "menu");
  menu.emTourPeriod = EM_TOUR_PERIOD_TYPE_JSON_1;
  unsigned char menu_buffer[GSC_ELEMENT_BUFFER_SIZE(1)];
  ElementWriter menu_elements(menu, menu_buffer);
  menu_elements.Add(EM_ELEMENT_TYPE_TEXT, TextElement("dishes", "Brunch until 14:00", 40));
  SendExpectingNothing<tagNET_OUT_MODIFY_ONE_PROGRAMME>(in, "{}");
}

void DelProgrammes() {
  auto in = Blank<tagNET_IN_DEL_PROGRAMMES>();
  SetTextList(in.szProgrammeIDList, in.nProgrammeIDListNum, {"P-1003", "T-0001"});
  SendExpectingNothing<tagNET_OUT_DEL_PROGRAMMES>(in, "{}");
}

}  // namespace examples
