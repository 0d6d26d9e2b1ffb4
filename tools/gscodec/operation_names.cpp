#include "operation_names.h"

#include <cstring>

#include "guidescreen_codec/capi.h"

namespace gsc::fields {

const Operation* MatchOperation(const std::string& typed) {
  const char* name = gsc_operation_lookup(typed.c_str());
  if (name == nullptr) return nullptr;
  for (const Operation& op : Operations())
    if (std::strcmp(op.name, name) == 0) return &op;
  return nullptr;
}

std::vector<std::string> SimilarOperations(const std::string& typed) {
  std::vector<std::string> names;
  for (size_t i = 0; const char* name = gsc_operation_suggestion(typed.c_str(), i); ++i)
    names.emplace_back(name);
  return names;
}

}  // namespace gsc::fields
