#include "codec/json_string.h"

#include <cstring>
#include <string>

#include "codec/text_value.h"

namespace {

bool IsUtf8Continuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

void CopyCut(const char* text, size_t size, char* dest, int len, bool utf8) {
  const size_t cut = gsc::codec::CutPoint(text, size, static_cast<size_t>(len) - 1, utf8);
  if (cut > 0) std::memcpy(dest, text, cut);
  dest[cut] = '\0';
}

}  // namespace

namespace gsc::codec {

size_t CutPoint(const char* text, size_t size, size_t room, bool utf8) {
  if (size <= room) return size;
  size_t cut = room;
  if (utf8) {
    for (int back = 0; back < 3 && cut > 0 && IsUtf8Continuation(text[cut]); ++back) --cut;
    if (IsUtf8Continuation(text[cut])) cut = room;
  }
  return cut;
}

template <typename V>
void GetText(const V& value, char* dest, int len, bool utf8) {
  if (dest == nullptr || len < 1) return;
  switch (value.type()) {
    case Json::stringValue: {
      const char* begin = nullptr;
      const char* end = nullptr;
      if (value.getString(&begin, &end)) {
        CopyCut(begin, static_cast<size_t>(end - begin), dest, len, utf8);
      } else {
        dest[0] = '\0';
      }
      return;
    }
    case Json::intValue:
    case Json::uintValue:
    case Json::realValue:
    case Json::booleanValue: {
      const std::string text = value.asString();
      CopyCut(text.data(), text.size(), dest, len, utf8);
      return;
    }
    case Json::nullValue:
    case Json::arrayValue:
    case Json::objectValue:
      break;
  }
  dest[0] = '\0';
}

template void GetText(const Json::Value&, char*, int, bool);
template void GetText(const TextValue&, char*, int, bool);

}  // namespace gsc::codec

void GetJsonString(const Json::Value& value, char* dest, int len, bool utf8) {
  gsc::codec::GetText(value, dest, len, utf8);
}

void SetJsonString(Json::Value& value, const char* text, bool /*utf8*/) {
  value = Json::Value(text != nullptr ? text : "");
}
