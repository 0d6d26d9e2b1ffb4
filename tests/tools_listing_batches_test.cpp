// A programme listing read and printed a batch at a time gives what reading it at once and
// printing the record gives: the same text, the same findings, the same result, whatever the
// batch and whatever the answer holds.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "describe/operations_table.h"
#include "describe/record_text.h"
#include "guidescreen_codec.h"
#include "listing_batches.h"

namespace {

using namespace gsc::fields;

// `count` programmes named p00 .. whose windows hold elements of every kind (and of none), with
// notes. Programmes differ in the order of their elements and in the members they give, so that
// a batch array read over without being cleared shows what an earlier programme left in it.
std::string Listing(int count, const std::string& extra = "") {
  std::string text = R"({"infos": {)";
  for (int p = 0; p < count; ++p) {
    const std::string n = std::to_string(p);
    // Members given by some programmes and not by the next one in the same slot of an array.
    const bool given = p % 3 == 0;
    const std::string content = given ? R"("Content": "note )" + n + R"(", )" : "";
    const std::string notes = given ? R"(, "Note": [{"Enable": true, "NoteInfo": {)" + content +
                                          R"("LineHeight": 1.25}}])"
                                    : "";
    std::vector<std::string> elements = {
        R"({"Type": 0, "Name": "v", "Video": {)" +
            (given ? R"("Path": "/v/)" + n + R"(", )" : std::string()) + R"("PlayCount": 2})" +
            notes + "}",
        R"({"Type": 1, "Picture": {"Path": "/p", "EnterStyle": 3})" + notes + "}",
        R"({"Type": 2, "Text": {)" + content +
            R"("FontColor": [1, 2, 3, 4]}, "Note": [{"NoteInfo": {)" + content +
            R"("FontSize": 3}}, {"NoteRect": [1, 2, 3, 4]}, {}, {}, {"Enable": true}]})",
        R"({"Type": 9})",
        R"({"Type": 3, "FillerState": true})",
        R"({"Type": 4, "DeviceInfo": {"IP": "10.0.0.)" + n + R"(", "Password": "secret"}})",
    };
    auto join = [](const std::vector<std::string>& list) {
      std::string joined;
      for (const std::string& element : list) joined += (joined.empty() ? "" : ", ") + element;
      return joined;
    };
    const std::string inOrder = join(elements);
    // The second window's entries in another order and number in each programme.
    std::rotate(elements.begin(), elements.begin() + p % elements.size(), elements.end());
    elements.resize(elements.size() - p % 3);
    text += std::string(p == 0 ? "" : ",") + "\"p" + (p < 10 ? "0" : "") + n + R"(": {
      "ProgrammeName": "Programme )" +
            n + R"(", "Enable": )" + (p % 2 ? "true" : "false") +
            R"(, "Ordinary": {"Description": "line\nbreak \"quoted\"", "Windows": [
        {"WinID": "w0", "Volume": )" +
            n + R"(, "TourPeriod": 3, "TourPeriodTime": 9, "Elements": [)" + inOrder + R"(]},
        {"WinID": "w1", "Elements": [)" +
            join(elements) + R"(]}]}})";
  }
  return text + extra + "}}";
}

struct Printed {
  std::string text;
  std::string findings;
  bool printedInParts = false;
};

std::string Captured(const std::function<void(std::FILE*)>& print) {
  char* bytes = nullptr;
  size_t size = 0;
  std::FILE* out = open_memstream(&bytes, &size);
  print(out);
  std::fclose(out);
  std::string text(bytes, size);
  std::free(bytes);
  return text;
}

Printed AtOnce(const std::string& answer, const Room& room, gsc::OnFailure mode,
               const ShowOptions& show) {
  const Operation& op = *FindOperation("GET_ALL_PROGRAMMES");
  gsc::Report report(mode);
  const auto received = ReceiveText(op, answer, room, &report);
  Printed printed;
  printed.text =
      Captured([&](std::FILE* out) { PrintRecord(out, *op.answer, received->record, show); });
  printed.findings = report.str();
  return printed;
}

Printed InBatches(const std::string& answer, const Room& room, uint32_t batch, gsc::OnFailure mode,
                  const ShowOptions& show) {
  const Operation& op = *FindOperation("GET_ALL_PROGRAMMES");
  gsc::Report report(mode);
  Printed printed;
  printed.text = Captured([&](std::FILE* out) {
    const BatchedRead read = ReadProgrammesInBatches(op, answer, room, batch, out, show, report);
    printed.printedInParts = read.printed;
    if (!read.printed) PrintRecord(out, *op.answer, read.received->record, show);
  });
  printed.findings = report.str();
  return printed;
}

TEST(ListingBatches, PrintWhatTheRecordReadAtOncePrints) {
  const Operation& op = *FindOperation("GET_ALL_PROGRAMMES");
  const std::string answers[] = {
      op.answer_sample,
      Listing(7),
      // Duplicates (the last wins), an unknown member, a programme of the wrong type (skipped or
      // stopping), and more programmes than room.
      Listing(5, R"(, "p01": {"ProgrammeName": "again"}, "zz": {"Unknown": 1})"),
      Listing(3, R"(, "q": {"Enable": "yes"}, "r": {})"),
      Listing(0),
      R"({"infos": null})",
      R"({"infos": [1]})",
  };
  for (const std::string& answer : answers) {
    SCOPED_TRACE(answer.substr(0, 80));
    for (const gsc::OnFailure mode : {gsc::OnFailure::kStop, gsc::OnFailure::kSkip}) {
      // Passwords are shown in one mode and masked in the other.
      const ShowOptions show{mode == gsc::OnFailure::kSkip};
      for (const uint32_t capacity : {2U, 40U}) {
        const Room room{capacity, 30000};
        const Printed whole = AtOnce(answer, room, mode, show);
        const Printed skipping = AtOnce(answer, room, gsc::OnFailure::kSkip, show);
        for (const uint32_t batch : {1U, 3U, 40U}) {
          SCOPED_TRACE("capacity " + std::to_string(capacity) + ", batch " + std::to_string(batch));
          const Printed parts = InBatches(answer, room, batch, mode, show);
          EXPECT_EQ(parts.findings, whole.findings);
          // A read stopped by a failed conversion prints nothing at once. In parts, the
          // programmes before the failure stand, as a read going past it prints them.
          const bool stopped = mode == gsc::OnFailure::kStop &&
                               whole.findings.find("conversion-failed") != std::string::npos;
          if (!stopped || !parts.printedInParts) {
            EXPECT_EQ(parts.text, whole.text);
          } else {
            EXPECT_EQ(skipping.text.compare(0, parts.text.size(), parts.text), 0);
            EXPECT_GT(parts.text.size(), 0U);
            EXPECT_LT(parts.text.size(), skipping.text.size());
          }
        }
      }
    }
  }
}

TEST(ListingBatches, AreChosenForListingsTooLargeToHoldAtOnce) {
  EXPECT_EQ(ListingBytes(Room{2, 1000}),
            2 * (sizeof(tagNET_PROGRAMME_INFO) + GSC_MAX_WINDOWS * size_t{1000}));
  const Room room{1000, 40000};
  const uint32_t batch = ProgrammesPerBatch(room, size_t{4} << 20);
  EXPECT_GE(batch, 1U);
  EXPECT_LE(ListingBytes(Room{batch, room.elements_buffer}), size_t{4} << 20);
  EXPECT_GT(ListingBytes(Room{batch + 1, room.elements_buffer}), size_t{4} << 20);
  // Never fewer than one, never more than the room.
  EXPECT_EQ(ProgrammesPerBatch(Room{3, 1 << 26}, 1), 1U);
  EXPECT_EQ(ProgrammesPerBatch(Room{3, 10}, size_t{1} << 30), 3U);
}

}  // namespace
