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

extern "C" const char* gsc_operation_lookup(const char* name) {
  const gsc::capi::Operation* op = gsc::capi::FindOperation(name);
  return op != nullptr ? op->name : nullptr;
}

extern "C" const char* gsc_operation_suggestion(const char* name, size_t index) {
  try {
    if (gsc::capi::FindOperation(name) != nullptr) return nullptr;
    const auto similar = gsc::capi::SimilarOperations(name);
    return index < similar.size() ? similar[index]->name : nullptr;
  } catch (...) {  // out of memory: no suggestion
    return nullptr;
  }
}
