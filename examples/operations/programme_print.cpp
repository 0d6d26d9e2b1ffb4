#include "operations/programme_print.h"

#include <cstdio>

namespace examples {
namespace {

void PrintElement(EM_ELEMENT_TYPE kind, const gsc_element_record& record) {
  switch (kind) {
    case EM_ELEMENT_TYPE_VIDEO:
      std::printf("      video \"%s\": %s\n", record.stuVideo.szName, record.stuVideo.szPath);
      break;
    case EM_ELEMENT_TYPE_PICTURE:
      std::printf("      picture \"%s\": %s, %u s\n", record.stuPicture.szName,
                  record.stuPicture.szPath, record.stuPicture.nStayTime);
      break;
    case EM_ELEMENT_TYPE_TEXT:
      std::printf("      text \"%s\": \"%s\"\n", record.stuText.szName,
                  record.stuText.stuText.szContent);
      break;
    case EM_ELEMENT_TYPE_PLACEHOLDER:
      std::printf("      placeholder \"%s\"\n", record.stuPlaceHolder.szName);
      break;
    case EM_ELEMENT_TYPE_CAPTURE:
      std::printf("      capture \"%s\": %s:%u channel %u\n", record.stuCapture.szName,
                  record.stuCapture.szIP, record.stuCapture.nPort, record.stuCapture.nChannel);
      break;
    default:  // a "Type" this program does not know: the entry is a header alone
      std::printf("      element of an unknown kind\n");
      break;
  }
}

// Entries in a buffer may sit 4 but not 8 bytes aligned: each is copied out by gsc_element_next,
// never read in place.
void PrintElements(const tagNET_PROGRAMME_WINDOW_INFO& window) {
  uint32_t offset = 0;
  for (uint32_t i = 0; i < window.nElementsNum; ++i) {
    EM_ELEMENT_TYPE kind = EM_ELEMENT_TYPE_UNKNOWN;
    gsc_element_record record;
    if (gsc_element_next(window.pElementsBuf, window.nElementsBufLen, &offset, &kind, &record,
                         sizeof record) != GSC_STATUS_OK) {
      break;
    }
    PrintElement(kind, record);
  }
}

}  // namespace

void PrintProgramme(const tagNET_PROGRAMME_INFO& programme) {
  const tagNET_ORDINARY_PROGRAMME_INFO& ordinary = programme.stuOrdinary;
  std::printf("  programme \"%s\" (%s)%s: %u window(s)\n", programme.szProgrammeName,
              programme.szProgrammeID, programme.bEnable ? "" : ", disabled", ordinary.nWindowsNum);
  for (uint32_t i = 0; i < ordinary.nWindowsNum && i < GSC_MAX_WINDOWS; ++i) {
    const tagNET_PROGRAMME_WINDOW_INFO& window = ordinary.stuWindows[i];
    std::printf("    window %s: %u element(s)\n", window.szWinID, window.nElementsNum);
    PrintElements(window);
  }
}

}  // namespace examples
