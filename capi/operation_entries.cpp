// The list of operations and their record sizes, for C callers.
#include "capi/operation_table.h"
#include "guidescreen_codec/capi.h"

extern "C" size_t gsc_operation_count(void) {
  return gsc::capi::OperationCount();
}

extern "C" const char* gsc_operation_name(size_t index) {
  return index < gsc::capi::OperationCount() ? gsc::capi::Operations()[index].name : nullptr;
}

extern "C" size_t gsc_request_size(const char* operation) {
  const gsc::capi::Operation* op = gsc::capi::FindOperation(operation);
  return op != nullptr ? op->request_size : 0;
}

extern "C" size_t gsc_answer_size(const char* operation) {
  const gsc::capi::Operation* op = gsc::capi::FindOperation(operation);
  return op != nullptr ? op->answer_size : 0;
}
