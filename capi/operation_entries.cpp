// The list of operations and their record sizes, for C callers. The list is built on first use;
// should memory run out then, these answer as if no operation had the name.
#include "capi/operation_table.h"
#include "guidescreen_codec/capi.h"

namespace {

// The operation `name` names, or null, without an exception.
const gsc::capi::Operation* Named(const char* name) noexcept {
  try {
    return gsc::capi::FindOperation(name);
  } catch (...) {
    return nullptr;
  }
}

}  // namespace

extern "C" size_t gsc_operation_count(void) {
  try {
    return gsc::fields::Operations().size();
  } catch (...) {
    return 0;
  }
}

extern "C" const char* gsc_operation_name(size_t index) {
  try {
    const auto& operations = gsc::fields::Operations();
    return index < operations.size() ? operations[index].name : nullptr;
  } catch (...) {
    return nullptr;
  }
}

extern "C" size_t gsc_request_size(const char* operation) {
  const gsc::capi::Operation* op = Named(operation);
  return op != nullptr ? op->request->size : 0;
}

extern "C" size_t gsc_answer_size(const char* operation) {
  const gsc::capi::Operation* op = Named(operation);
  return op != nullptr ? op->answer->size : 0;
}

extern "C" const char* gsc_operation_lookup(const char* name) {
  const gsc::capi::Operation* op = Named(name);
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
