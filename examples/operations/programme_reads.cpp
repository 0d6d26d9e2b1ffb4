// Reading programmes: one whole programme by its ID, and the brief listing of all of them.
#include <cstdio>
#include <vector>

#include "example_support.h"
#include "operations/operations.h"
#include "operations/programme_print.h"

namespace examples {

void GetProgrammeById() {
  auto in = Blank<tagNET_IN_GET_PROGRAMME_BYID>();
  SetText(in.szProgrammeID, "P-1003");
  SendRequest(in);

  const char* answer = R"({"Programme": {
      "ProgrammeName": "Cafeteria menu", "ProgrammeID": "P-1003", "ProgrammeType": 0,
      "Enable": true,
      "Ordinary": {"TempletState": false, "Description": "Today's dishes beside the queue camera",
        "Windows": [
          {"WinID": "menu", "BackgroundColor": [250, 240, 220, 255], "Volume": 0, "TourPeriod": 1,
           "Elements": [
             {"Name": "dishes", "Type": 2, "FillerState": false,
              "Text": {"Content": "Soup, risotto, apple pie", "FontSize": 40,
                       "FontColor": [40, 40, 40, 255], "TextHoriAlign": 1}},
             {"Name": "dessert photo", "Type": 1, "FillerState": false,
              "Picture": {"Path": "/media/pie.jpg", "StayTime": 8, "EnterStyle": 2}}]},
          {"WinID": "queue", "BackgroundColor": [0, 0, 0, 255], "Volume": 0, "TourPeriod": 0,
           "Elements": [
             {"Name": "queue camera", "Type": 4, "FillerState": false,
              "DeviceInfo": {"UserName": "viewer", "IP": "192.0.2.31", "Port": 37777,
                             "Channel": 2, "CaptureType": 1, "PlayTime": 0}}]}]}}})";
  // The reader stores each window's entries in a buffer the caller attached beforehand: room
  // for 4 entries of any kind in every window.
  auto out = Blank<tagNET_OUT_GET_PROGRAMME_BYID>();
  std::vector<unsigned char> storage(gsc::element_storage_size(1, 4));
  if (!gsc::attach_element_buffers(&out.stuProgramme, 1, 4, storage.data(), storage.size())) {
    throw ExampleFailure("no room for the element buffers");
  }
  ReadAnswer(answer, out);
  PrintProgramme(out.stuProgramme);
}

void GetAllBrieflyProgrammes() {
  SendRequest(Blank<tagNET_IN_GET_ALL_BRIEFLYPROGRAMMES>());

  // Names and states only, to fill a picker without reading every programme's windows.
  const char* answer = R"({"infos": {
      "P-1001": {"ProgrammeID": "P-1001", "ProgrammeName": "Lobby morning", "ProgrammeType": 0,
                 "Enable": true, "TempletState": false},
      "P-1003": {"ProgrammeID": "P-1003", "ProgrammeName": "Cafeteria menu", "ProgrammeType": 0,
                 "Enable": true, "TempletState": false},
      "T-0001": {"ProgrammeID": "T-0001", "ProgrammeName": "Event template", "ProgrammeType": 1,
                 "Enable": false, "TempletState": true}}})";
  auto out = Blank<tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES>();
  ReadAnswer(answer, out);
  std::printf("  %u programme(s)\n", out.nRetInfosNum);
  for (uint32_t i = 0; i < out.nRetInfosNum && i < GSC_MAX_BRIEF_PROGRAMMES; ++i) {
    const tagNET_BRIEFLY_PROGRAMME_INFO& brief = out.stuInfos[i];
    std::printf("  %s \"%s\": %s, %s%s\n", brief.szProgrammeID, brief.szProgrammeName,
                brief.emProgrammeType == EM_PROGRAMME_TYPE_ORDINARY ? "ordinary" : "other kind",
                brief.bEnable ? "enabled" : "disabled", brief.bTempletState ? ", template" : "");
  }
}

}  // namespace examples
