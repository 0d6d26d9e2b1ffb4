#include "codec/frame.h"

#include <cstring>

namespace gsc::codec {

void SetJsonText(Json::Value& target, const char* field, size_t size) {
  if (std::memchr(field, '\0', size) != nullptr) {
    SetJsonString(target, field, true);
  } else {
    target = Json::Value(field, field + size);
  }
}

}  // namespace gsc::codec
