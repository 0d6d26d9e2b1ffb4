// The two kinds of JSON value the readers run on: a Json::Value tree, and a value of a parsed text
// read where it lies (TextValue). Readers are templates over the value type and hold values
// through ValueRef.
#ifndef GUIDESCREEN_CODEC_CODEC_VALUE_H
#define GUIDESCREEN_CODEC_CODEC_VALUE_H

#include <json/value.h>

#include "codec/text_value.h"

namespace gsc::codec {

// How a reader holds a value of each kind of document: a Json::Value by reference, a value of a
// parsed text by copy (it is two pointers).
template <typename V>
struct ValueTraits {
  using Ref = const V&;
  static Ref Null() { return Json::Value::nullSingleton(); }
};
template <>
struct ValueTraits<TextValue> {
  using Ref = TextValue;
  static Ref Null() { return TextValue(); }
};
template <typename V>
using ValueRef = typename ValueTraits<V>::Ref;

}  // namespace gsc::codec

#endif  // GUIDESCREEN_CODEC_CODEC_VALUE_H
