// What every example does the same way: send a request as the transport layer would, read the
// device's answer text into the caller's record, and stop with a message when the library could
// not do either.
#ifndef GUIDESCREEN_CODEC_EXAMPLES_EXAMPLE_SUPPORT_H
#define GUIDESCREEN_CODEC_EXAMPLES_EXAMPLE_SUPPORT_H

#include <json/value.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <string_view>

#include "guidescreen_codec.h"

namespace examples {

// An exchange the library could not carry out; the runner prints it and exits non-zero.
class ExampleFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Throws an ExampleFailure saying that `call` could not run to its end, and why.
[[noreturn]] void Fail(const char* call, const gsc::Report& report);

// Findings are not failures: a device may send more than a record holds, and the caller still
// uses what it got. They are printed so that nothing is dropped unseen.
void PrintFindings(const gsc::Report& report);
void PrintRequest(const Json::Value& params);

// "08:30" and "2024-03-01", for printing what a record received.
std::string TimeText(const tagNET_TIME_OF_DAY& time);
std::string DateText(const tagNET_DATE_INFO& date);

// A zeroed record whose dwSize holds its size, as the library expects every record it is given.
template <typename Record>
Record Blank() {
  Record record = {};
  record.dwSize = sizeof record;
  return record;
}

// Text fields are fixed arrays: a copy that never writes past the field and always terminates.
template <size_t N>
void SetText(char (&field)[N], const char* text) {
  std::snprintf(field, N, "%s", text);
}

// Fills a list of identifiers and its count, as far as the list has room.
template <size_t N, size_t M>
void SetTextList(char (&list)[N][M], uint32_t& count, std::initializer_list<const char*> texts) {
  count = 0;
  for (const char* text : texts) {
    if (count < N) SetText(list[count++], text);
  }
}

// The request parameters for `in`, printed on one line as the transport sends them.
template <typename In>
Json::Value SendRequest(const In& in) {
  Json::Value params(Json::objectValue);
  gsc::Report report;
  if (!serialize(in, params, report)) Fail("serialize", report);
  PrintFindings(report);
  PrintRequest(params);
  return params;
}

// Reads the answer text (the result object, as the transport receives it) into `out`.
template <typename Out>
void ReadAnswer(std::string_view text, Out& out) {
  gsc::Report report;
  if (!gsc::deserialize_json(text, out, report)) Fail("deserialize_json", report);
  PrintFindings(report);
}

// Sends `in` for an operation whose answer carries nothing: reading the answer still tells a
// device fault (an answer that is not JSON) from success.
template <typename Out, typename In>
void SendExpectingNothing(const In& in, std::string_view answer) {
  SendRequest(in);
  Out out = Blank<Out>();
  ReadAnswer(answer, out);
  std::printf("  answer read: the device accepted the request\n");
}

}  // namespace examples

#endif  // GUIDESCREEN_CODEC_EXAMPLES_EXAMPLE_SUPPORT_H
