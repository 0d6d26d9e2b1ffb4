// The order in which the programme readers take their steps, shown by an answer whose value at
// one step cannot be converted: what comes before it is stored, what comes after it keeps the
// caller's value, in the record and in the window's element buffer alike.
#include <string>
#include <vector>

#include "guidescreen_codec/capi.h"
#include "guidescreen_codec/operations.h"
#include "guidescreen_codec/record_codecs.h"
#include "support/fixtures.h"
#include "support/read_order.h"

namespace {

using gsc::test::Append;
using gsc::test::Breaks;
using gsc::test::BreaksAt;
using gsc::test::Embed;
using gsc::test::ExpectReadOrder;
using gsc::test::J;
using gsc::test::Never;
using gsc::test::OrderStep;
using gsc::test::ReadOrderCase;
using gsc::test::Span;

using TextBlock = tagNET_GUIDESCREEN_TEXT_INFO;
using Note = tagNET_GUIDESCREEN_NOTE_INFO;
using Window = tagNET_PROGRAMME_WINDOW_INFO;
using Programme = tagNET_PROGRAMME_INFO;
using Brief = tagNET_BRIEFLY_PROGRAMME_INFO;

constexpr size_t kHeader = sizeof(tagNET_ELEMENT_COMMON_INFO);

const char kTextBlock[] = R"({"Content": "hello", "FontSize": 12, "FontColor": [1, 2, 3, 4],
    "FontStyle": "bold", "LineHeight": 1.5, "TextHoriAlign": 1, "TextVertAlign": 2,
    "StayTime": 7, "PlayTime": 8, "PlayCount": 9, "EnterStyle": 3, "ExitStyle": 4})";

std::string Notes() {
  return std::string(R"([{"Enable": true, "NoteRect": [1, 2, 3, 4], "NoteInfo": )") + kTextBlock +
         R"(}, {"Enable": false, "NoteRect": [5, 6, 7, 8], "NoteInfo": )" + kTextBlock + "}]";
}

// StayTime comes before PlayTime and PlayCount.
std::vector<OrderStep> TextBlockSteps() {
  return {
      Never("Content", {GSC_SPAN(TextBlock, szContent)}),
      Breaks("FontSize", {GSC_SPAN(TextBlock, nFontSize)}),
      BreaksAt("FontColor", {GSC_SPAN(TextBlock, stuFontColor)}, "FontColor[0]"),
      Never("FontStyle", {GSC_SPAN(TextBlock, szFontStyle)}),
      Breaks("LineHeight", {GSC_SPAN(TextBlock, dbLineHeight)}),
      Breaks("TextHoriAlign", {GSC_SPAN(TextBlock, emTextHoriAlign)}),
      Breaks("TextVertAlign", {GSC_SPAN(TextBlock, emTextVertAlign)}),
      Breaks("StayTime", {GSC_SPAN(TextBlock, nStayTime)}),
      Breaks("PlayTime", {GSC_SPAN(TextBlock, nPlayTime)}),
      Breaks("PlayCount", {GSC_SPAN(TextBlock, nPlayCount)}),
      Breaks("EnterStyle", {GSC_SPAN(TextBlock, emEnterStyle)}),
      Breaks("ExitStyle", {GSC_SPAN(TextBlock, emExitStyle)}),
  };
}

std::vector<OrderStep> NoteSteps() {
  std::vector<OrderStep> steps = {
      Breaks("Enable", {GSC_SPAN(Note, bEnable)}),
      BreaksAt("NoteRect", {GSC_SPAN(Note, stuNoteRect)}, "NoteRect[0]"),
  };
  Append(steps, Embed(TextBlockSteps(), "NoteInfo", offsetof(Note, stuNoteInfo)));
  return steps;
}

TEST(ProgrammeReadOrder, TextBlocksAndNotesReadTheirMembersStepByStep) {
  ExpectReadOrder(ReadOrderCase<TextBlock>{
      "ParseText", J(kTextBlock), TextBlockSteps(),
      [](const Json::Value& json, TextBlock& text) { ParseText(json, &text); }, nullptr, nullptr});
  ExpectReadOrder(ReadOrderCase<Note>{
      "ParseNotes", J(Notes())[0], NoteSteps(),
      [](const Json::Value& json, Note& note) { ParseNotes(json, &note); }, nullptr, nullptr});
}

// Every element kind: the name and filler state, the kind's own members, then the notes (the
// count stored before the first note is read).
template <typename Element>
void ExpectElementOrder(const char* reader, const std::string& ownMembers,
                        std::vector<OrderStep> own, void (*parse)(const Json::Value&, Element*)) {
  std::vector<OrderStep> steps = {
      Never("Name", {GSC_SPAN(Element, szName)}),
      Breaks("FillerState", {GSC_SPAN(Element, bFillerState)}),
  };
  Append(steps, std::move(own));
  Append(steps,
         {
             Never("Note: count", {GSC_SPAN(Element, nNoteNum)}),
             BreaksAt("Note[0]", {GSC_SPAN(Element, stuNote[0])}, "Note[0].Enable"),
             BreaksAt("Note[1]", {GSC_SPAN(Element, stuNote[1])}, "Note[1].NoteInfo.PlayTime"),
         });
  const std::string good = R"({"Name": "element", "FillerState": true, )" + ownMembers +
                           (ownMembers.empty() ? "" : ", ") + R"("Note": )" + Notes() + "}";
  ExpectReadOrder(ReadOrderCase<Element>{
      reader, J(good), std::move(steps),
      [parse](const Json::Value& json, Element& element) { parse(json, &element); }, nullptr,
      nullptr});
}

TEST(ProgrammeReadOrder, EachElementKindReadsItsHeadItsOwnMembersAndThenItsNotes) {
  using Video = tagNET_VIDEO_ELEMENT_INFO;
  ExpectElementOrder<Video>("ParseVideoElement", R"("Video": {"Path": "/v.mp4", "PlayCount": 3})",
                            {Never("Video.Path", {GSC_SPAN(Video, szPath)}),
                             Breaks("Video.PlayCount", {GSC_SPAN(Video, nPlayCount)})},
                            ParseVideoElement);

  using Picture = tagNET_PICTURE_ELEMENT_INFO;
  ExpectElementOrder<Picture>(
      "ParsePictureElement",
      R"("Picture": {"Path": "/p.png", "PlayTime": 5, "PlayCount": 6, "Diaphaneity": 7,
                     "StayTime": 8, "EnterStyle": 2, "ExitStyle": 3})",
      {Never("Picture.Path", {GSC_SPAN(Picture, szPath)}),
       Breaks("Picture.PlayTime", {GSC_SPAN(Picture, nPlayTime)}),
       Breaks("Picture.PlayCount", {GSC_SPAN(Picture, nPlayCount)}),
       Breaks("Picture.Diaphaneity", {GSC_SPAN(Picture, nDiaphaneity)}),
       Breaks("Picture.StayTime", {GSC_SPAN(Picture, nStayTime)}),
       Breaks("Picture.EnterStyle", {GSC_SPAN(Picture, emEnterStyle)}),
       Breaks("Picture.ExitStyle", {GSC_SPAN(Picture, emExitStyle)})},
      ParsePictureElement);

  using Text = tagNET_TEXT_ELEMENT_INFO;
  ExpectElementOrder<Text>("ParseTextElement", std::string(R"("Text": )") + kTextBlock,
                           Embed(TextBlockSteps(), "Text", offsetof(Text, stuText)),
                           ParseTextElement);

  using PlaceHolder = tagNET_PLACEHOLDER_ELEMENT_INFO;
  ExpectElementOrder<PlaceHolder>("ParsePlaceHolderElement", "", {}, ParsePlaceHolderElement);

  using Capture = tagNET_CAPTURE_ELEMENT_INFO;
  ExpectElementOrder<Capture>(
      "ParseCaptureElement",
      R"("DeviceInfo": {"UserName": "user", "Password": "secret", "IP": "192.0.2.7",
                        "Port": 37777, "Channel": 2, "CaptureType": 1, "PlayTime": 9})",
      {Never("DeviceInfo.UserName", {GSC_SPAN(Capture, szUserName)}),
       Never("DeviceInfo.Password", {GSC_SPAN(Capture, szPassword)}),
       Never("DeviceInfo.IP", {GSC_SPAN(Capture, szIP)}),
       Breaks("DeviceInfo.Port", {GSC_SPAN(Capture, nPort)}),
       Breaks("DeviceInfo.Channel", {GSC_SPAN(Capture, nChannel)}),
       Breaks("DeviceInfo.CaptureType", {GSC_SPAN(Capture, emCaptureType)}),
       Breaks("DeviceInfo.PlayTime", {GSC_SPAN(Capture, nPlayTime)})},
      ParseCaptureElement);
}

// A programme answer of two windows, each with a video and a text element, read into a record
// whose windows' element buffers lie in the same structure.
constexpr size_t kBufferBytes = GSC_ELEMENT_BUFFER_SIZE(2);

struct ProgrammeById {
  tagNET_OUT_GET_PROGRAMME_BYID out;
  unsigned char buffers[2][kBufferBytes];
};

// A window's element list: each entry's kind is stored in its header before its record is read,
// and the number of entries once the list is done. Spans are given in the subject's bytes.
std::vector<OrderStep> WindowSteps(size_t window, size_t buffer) {
  constexpr size_t kVideoEntry = kHeader + sizeof(tagNET_VIDEO_ELEMENT_INFO);
  std::vector<OrderStep> steps = Embed(
      {
          Never("WinID", {GSC_SPAN(Window, szWinID)}),
          BreaksAt("BackgroundColor", {GSC_SPAN(Window, stuBackgroundColor)}, "BackgroundColor[0]"),
          Breaks("Volume", {GSC_SPAN(Window, nVolume)}),
          Breaks("Diaphaneity", {GSC_SPAN(Window, nDiaphaneity)}),
          Breaks("TourPeriod", {GSC_SPAN(Window, emTourPeriod)}),
          Breaks("TourPeriodTime", {GSC_SPAN(Window, nTourPeriodTime)}),
      },
      "", window);
  Append(steps,
         {
             Breaks("Elements[0].Type", {Span{buffer, sizeof(EM_ELEMENT_TYPE)}}),
             BreaksAt("Elements[0]", {Span{buffer + kHeader, sizeof(tagNET_VIDEO_ELEMENT_INFO)}},
                      "Elements[0].Video.PlayCount"),
             Breaks("Elements[1].Type", {Span{buffer + kVideoEntry, sizeof(EM_ELEMENT_TYPE)}}),
             BreaksAt("Elements[1]",
                      {Span{buffer + kVideoEntry + kHeader, sizeof(tagNET_TEXT_ELEMENT_INFO)}},
                      "Elements[1].FillerState"),
         });
  Append(steps, Embed({Never("Elements: count", {GSC_SPAN(Window, nElementsNum)})}, "", window));
  return steps;
}

std::vector<OrderStep> ProgrammeSteps(size_t programme, size_t buffers) {
  std::vector<OrderStep> steps = Embed(
      {
          Never("ProgrammeName", {GSC_SPAN(Programme, szProgrammeName)}),
          Never("ProgrammeID", {GSC_SPAN(Programme, szProgrammeID)}),
          Breaks("Enable", {GSC_SPAN(Programme, bEnable)}),
          Breaks("Ordinary.TempletState", {GSC_SPAN(Programme, stuOrdinary.bTempletState)}),
          Never("Ordinary.Description", {GSC_SPAN(Programme, stuOrdinary.szDescription)}),
          Never("Ordinary.Windows: count", {GSC_SPAN(Programme, stuOrdinary.nWindowsNum)}),
      },
      "", programme);
  for (size_t w = 0; w < 2; ++w) {
    const size_t window = programme + GSC_ENTRY(Programme, stuOrdinary.stuWindows, w);
    Append(steps, Embed(WindowSteps(window, buffers + w * kBufferBytes),
                        "Ordinary.Windows[" + std::to_string(w) + "]", 0));
  }
  return steps;
}

std::string GoodWindow(int w) {
  const std::string n = std::to_string(w);
  return R"({"WinID": "w)" + n + R"(", "BackgroundColor": [1, 2, 3, )" + n +
         R"(], "Volume": -3, "Diaphaneity": 40, "TourPeriod": 2, "TourPeriodTime": 45,
      "Elements": [{"Type": 0, "Name": "clip", "FillerState": true,
                    "Video": {"Path": "/v.mp4", "PlayCount": 2}},
                   {"Type": 2, "Name": "caption", "FillerState": true, "Text": )" +
         kTextBlock + "}]}";
}

TEST(ProgrammeReadOrder, GetByIdReadsTheProgrammeItsWindowsAndTheirElementListsStepByStep) {
  const Json::Value good = J(R"({"Programme": {"ProgrammeName": "morning", "ProgrammeID": "P-1",
      "ProgrammeType": 0, "Enable": true, "Ordinary": {"TempletState": true,
      "Description": "two windows", "Windows": [)" +
                             GoodWindow(0) + ", " + GoodWindow(1) + "]}}}");
  ExpectReadOrder(ReadOrderCase<ProgrammeById>{
      "GET_PROGRAMME_BYID",
      good,
      Embed(ProgrammeSteps(offsetof(ProgrammeById, out.stuProgramme),
                           offsetof(ProgrammeById, buffers)),
            "Programme", 0),
      [](const Json::Value& answer, ProgrammeById& s) { deserialize(answer, s.out); },
      [](const Json::Value& answer, ProgrammeById& s, gsc::Report& report) {
        return deserialize(answer, s.out, report);
      },
      [](ProgrammeById& s) {
        for (size_t w = 0; w < 2; ++w) {
          s.out.stuProgramme.stuOrdinary.stuWindows[w].pElementsBuf = s.buffers[w];
          s.out.stuProgramme.stuOrdinary.stuWindows[w].nElementsBufLen = kBufferBytes;
        }
      },
  });
}

struct AllProgrammes {
  tagNET_OUT_GET_ALL_PROGRAMMES out;
  Programme infos[3];
};

TEST(ProgrammeReadOrder, GetAllFillsProgrammesInMemberOrderAndStoresTheCountLast) {
  const Json::Value good = J(R"({"infos": {
      "P-9": {"ProgrammeName": "nine", "Enable": true,
              "Ordinary": {"TempletState": true, "Description": "d9"}},
      "P-10": {"ProgrammeName": "ten", "Enable": true,
               "Ordinary": {"TempletState": false, "Description": "d10"}}}})");
  ExpectReadOrder(ReadOrderCase<AllProgrammes>{
      "GET_ALL_PROGRAMMES",
      good,
      {
          BreaksAt("infos.P-10", {GSC_SPAN(AllProgrammes, infos[0])}, "infos.P-10.Enable"),
          BreaksAt("infos.P-9", {GSC_SPAN(AllProgrammes, infos[1])},
                   "infos.P-9.Ordinary.TempletState"),
          Never("nRetInfosNum", {GSC_SPAN(AllProgrammes, out.nRetInfosNum)}),
      },
      [](const Json::Value& answer, AllProgrammes& s) { deserialize(answer, s.out); },
      [](const Json::Value& answer, AllProgrammes& s, gsc::Report& report) {
        return deserialize(answer, s.out, report);
      },
      [](AllProgrammes& s) {
        s.out.nMaxInfosNum = 3;
        s.out.pstuInfos = s.infos;
      },
  });
}

TEST(ProgrammeReadOrder, BriefListingReadsEachEntryStepByStepAndStoresTheCountLast) {
  using Out = tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES;
  const Json::Value good = J(R"({"infos": {
      "B-9": {"ProgrammeName": "nine", "ProgrammeID": "P-9", "ProgrammeType": 0,
              "Enable": true, "TempletState": false},
      "B-10": {"ProgrammeName": "ten", "ProgrammeID": "P-10", "ProgrammeType": 1,
               "Enable": false, "TempletState": true}}})");
  std::vector<OrderStep> steps = Embed(
      {
          Never("ProgrammeName", {GSC_SPAN(Brief, szProgrammeName)}),
          Never("ProgrammeID", {GSC_SPAN(Brief, szProgrammeID)}),
          Breaks("ProgrammeType", {GSC_SPAN(Brief, emProgrammeType)}),
          Breaks("Enable", {GSC_SPAN(Brief, bEnable)}),
          Breaks("TempletState", {GSC_SPAN(Brief, bTempletState)}),
      },
      "infos.B-10", GSC_ENTRY(Out, stuInfos, 0));
  Append(steps, {
                    BreaksAt("infos.B-9", {GSC_SPAN(Out, stuInfos[1])}, "infos.B-9.Enable"),
                    Never("nRetInfosNum", {GSC_SPAN(Out, nRetInfosNum)}),
                });
  ExpectReadOrder(
      ReadOrderCase<Out>{"GET_ALL_BRIEFLYPROGRAMMES", good, std::move(steps),
                         [](const Json::Value& answer, Out& out) { deserialize(answer, out); },
                         [](const Json::Value& answer, Out& out, gsc::Report& report) {
                           return deserialize(answer, out, report);
                         },
                         nullptr});
}

}  // namespace
