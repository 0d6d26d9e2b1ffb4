// The library's one list of the seventeen operations, which the C interface, gscodec, the fuzzers
// and the tests all take theirs from: names, JSON keys, record tables,
// embedded samples and the library's serialize/deserialize pair behind each.
#ifndef GUIDESCREEN_CODEC_DESCRIBE_OPERATIONS_TABLE_H
#define GUIDESCREEN_CODEC_DESCRIBE_OPERATIONS_TABLE_H

#include <json/value.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "describe/field_table.h"
#include "guidescreen_codec/report.h"

namespace gsc::fields {

struct Operation {
  const char* name;
  const char* request_keys;    // top-level members serialize writes
  const char* answer_keys;     // top-level members deserialize reads
  const RecordTable* request;  // the input record
  const RecordTable* answer;   // the output record
  std::string request_sample;  // an input record in field-named form
  std::string answer_sample;   // a device answer (the result deserialize receives)
  // The library's pair; with a report, its reporting overloads (false: a failed conversion).
  bool (*serialize)(const void* in, Json::Value& params, gsc::Report* report);
  bool (*deserialize)(const Json::Value& result, void* out, gsc::Report* report);
  // The library's text reader (deserialize_json): deserialize on the answer's text. Text that is
  // not JSON throws gsc::JsonError, or with a report is its one json-malformed finding (false).
  bool (*deserialize_json)(std::string_view text, void* out, gsc::Report* report);
};

// All seventeen, in the order of the library's headers. Not to be called before main starts.
const std::vector<Operation>& Operations();

// The operation called `name`, or nullptr.
const Operation* FindOperation(const std::string& name);

// The request parameters serialize writes for the input record given in field-named form.
// Throws FieldError for a form that does not describe the record. With a report, serialize's
// reporting overload runs and fills it.
Json::Value Encode(const Operation& op, const Json::Value& form, gsc::Report* report = nullptr);

// A caller's output record as deserialize filled it, with the memory its arrays and element
// buffers lie in.
struct Received {
  Arena arena;
  unsigned char* record = nullptr;
};

// The output record of `op` zero-filled and prepared with `room` as a caller would, then read
// from `result` by deserialize. What JsonCpp raises for a value of the wrong type passes through;
// with a report, the reporting overload runs instead, and a failed conversion is its last finding.
std::unique_ptr<Received> Receive(const Operation& op, const Json::Value& result, const Room& room,
                                  gsc::Report* report = nullptr);

// Receive from the answer's text, read by deserialize_json where it lies, with no tree: the same
// record as Receive on the text parsed by JsonCpp, for text that is JSON. Text that is not JSON
// leaves the record as prepared, and throws gsc::JsonError or, with a report, is its one
// json-malformed finding.
std::unique_ptr<Received> ReceiveText(const Operation& op, std::string_view text, const Room& room,
                                      gsc::Report* report = nullptr);

// What the caller's output record receives from `result` (Receive), in field-named form.
Json::Value Decode(const Operation& op, const Json::Value& result, const Room& room,
                   const ShowOptions& options, gsc::Report* report = nullptr);

}  // namespace gsc::fields

#endif  // GUIDESCREEN_CODEC_DESCRIBE_OPERATIONS_TABLE_H
