// The operations by the names `gscodec list` shows, for the C interface: each with its records'
// sizes and alignments and the codecs behind it, reached through type-erased thunks.
#ifndef GUIDESCREEN_CODEC_CAPI_OPERATION_TABLE_H
#define GUIDESCREEN_CODEC_CAPI_OPERATION_TABLE_H

#include <json/value.h>

#include <cstddef>
#include <string>

namespace gsc::capi {

struct Operation {
  const char* name;
  size_t request_size;  // sizeof the input record, the dwSize it must carry
  size_t request_alignment;
  size_t answer_size;  // sizeof the output record
  size_t answer_alignment;
  // The operation's serialize on the input record at `in`. False, with `failure` set, when a
  // conversion failed; other exceptions (std::bad_alloc) pass.
  bool (*serialize)(const void* in, Json::Value& params, std::string& failure);
  // The operation's deserialize into the output record at `out`. False, with `failure` set to
  // why, when a conversion failed and reading stopped; other exceptions pass.
  bool (*deserialize)(const Json::Value& result, void* out, std::string& failure);
};

// The seventeen, in the order of operations.h.
const Operation* Operations();
size_t OperationCount();

// The operation called exactly `name`, or nullptr (also for a null name).
const Operation* FindOperation(const char* name);

}  // namespace gsc::capi

#endif  // GUIDESCREEN_CODEC_CAPI_OPERATION_TABLE_H
