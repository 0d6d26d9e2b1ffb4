// The operations by the names `gscodec list` shows, for the C interface: each with its records'
// sizes and alignments and the codecs behind it, reached through type-erased thunks.
#ifndef GUIDESCREEN_CODEC_CAPI_OPERATION_TABLE_H
#define GUIDESCREEN_CODEC_CAPI_OPERATION_TABLE_H

#include <json/value.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "guidescreen_codec/report.h"

namespace gsc::capi {

struct Operation {
  const char* name;
  size_t request_size;  // sizeof the input record, the dwSize it must carry
  size_t request_alignment;
  size_t answer_size;  // sizeof the output record
  size_t answer_alignment;
  // The operation's reporting serialize on the input record at `in`, and its reporting
  // deserialize_json from the answer's text into the output record at `out` (stopping at or
  // skipping a failed conversion as the report says). False when the text is not JSON (the
  // report's one finding is json-malformed, the record untouched) or a conversion failed and the
  // call stopped (the report's last finding says where and why). Other exceptions
  // (std::bad_alloc) pass.
  bool (*serialize)(const void* in, Json::Value& params, gsc::Report& report);
  bool (*deserialize_json)(std::string_view text, void* out, gsc::Report& report);
};

// The seventeen, in the order of operations.h.
const Operation* Operations();
size_t OperationCount();

// The operation `name` names in any case, or nullptr (also for a null name).
const Operation* FindOperation(const char* name);

// Up to three operations `name` (which names none) was probably meant to be, closest first: a few
// edits away, else those containing it. Empty when none is close.
std::vector<const Operation*> SimilarOperations(const char* name);

// "unknown operation: '<name>'" and the closest operations, for a message.
std::string UnknownOperation(const char* name);

}  // namespace gsc::capi

#endif  // GUIDESCREEN_CODEC_CAPI_OPERATION_TABLE_H
