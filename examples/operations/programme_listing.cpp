// Polling the listing of all programmes with their windows' elements: the records and their
// element buffers are set up once, from one block of storage, and reused for every poll.
#include <cstdio>
#include <vector>

#include "example_support.h"
#include "operations/operations.h"
#include "operations/programme_print.h"

namespace examples {
namespace {

const char* const kFirstAnswer = R"({"infos": {
    "P-1001": {"ProgrammeName": "Lobby morning", "ProgrammeID": "P-1001", "Enable": true,
      "Ordinary": {"Description": "Welcome loop", "Windows": [
        {"WinID": "media", "TourPeriod": 2, "TourPeriodTime": 30, "Elements": [
          {"Name": "welcome clip", "Type": 0, "Video": {"Path": "/media/welcome.mp4"}},
          {"Name": "floor plan", "Type": 1, "Picture": {"Path": "/media/plan.png", "StayTime": 10}},
          {"Name": "announcement slot", "Type": 3, "FillerState": true}]},
        {"WinID": "info", "Elements": [
          {"Name": "opening hours", "Type": 2, "Text": {"Content": "Open daily 9:00 to 17:00"}}]}]}},
    "P-1003": {"ProgrammeName": "Cafeteria menu", "ProgrammeID": "P-1003", "Enable": true,
      "Ordinary": {"Windows": [
        {"WinID": "menu", "Elements": [
          {"Name": "dishes", "Type": 2, "Text": {"Content": "Soup, risotto, apple pie"}}]}]}}}})";

// Later the same day: the cafeteria programme is gone and the lobby's media window holds one clip.
const char* const kSecondAnswer = R"({"infos": {
    "P-1001": {"ProgrammeName": "Lobby afternoon", "ProgrammeID": "P-1001", "Enable": true,
      "Ordinary": {"Windows": [
        {"WinID": "media", "Elements": [
          {"Name": "tour clip", "Type": 0, "Video": {"Path": "/media/tour.mp4"}}]}]}}}})";

void PrintListing(const char* poll, const tagNET_OUT_GET_ALL_PROGRAMMES& out) {
  std::printf("  %s: %u programme(s)\n", poll, out.nRetInfosNum);
  for (uint32_t i = 0; i < out.nRetInfosNum; ++i) PrintProgramme(out.pstuInfos[i]);
}

}  // namespace

void GetAllProgrammes() {
  SendRequest(Blank<tagNET_IN_GET_ALL_PROGRAMMES>());

  // Room for 4 programmes of up to 4 entries per window; the reader cuts a larger listing to it
  // and reports what it left out.
  constexpr uint32_t kProgrammes = 4;
  constexpr uint32_t kEntriesPerWindow = 4;
  std::vector<tagNET_PROGRAMME_INFO> programmes(kProgrammes);
  std::vector<unsigned char> storage(gsc::element_storage_size(kProgrammes, kEntriesPerWindow));
  if (!gsc::attach_element_buffers(programmes.data(), kProgrammes, kEntriesPerWindow,
                                   storage.data(), storage.size())) {
    throw ExampleFailure("no room for the element buffers");
  }
  auto out = Blank<tagNET_OUT_GET_ALL_PROGRAMMES>();
  out.nMaxInfosNum = kProgrammes;
  out.pstuInfos = programmes.data();

  ReadAnswer(kFirstAnswer, out);
  PrintListing("first poll", out);

  // A read merges into what the record holds: a field the next answer leaves out (the lobby's
  // description) would keep the first poll's value. reset_for_read clears the records and the
  // element buffers, and keeps them attached.
  gsc::reset_for_read(out);
  ReadAnswer(kSecondAnswer, out);
  PrintListing("second poll", out);
  std::printf("  lobby description after the second poll: \"%s\"\n",
              programmes[0].stuOrdinary.szDescription);
}

}  // namespace examples
