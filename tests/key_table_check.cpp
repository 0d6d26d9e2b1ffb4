// A reader with one step, compiled by tests/key_table_check with the step's key given as
// STEP_KEY: it must compile when the key is in the object's table and fail when it is not.
#include "codec/frame.h"

namespace {

constexpr auto kKeys = gsc::codec::Keys("FontSize", "Content", "FontName", "Speed");

template <typename V>
int32_t ReadStep(const V& json) {
  gsc::codec::Silent silent;
  const auto object = gsc::codec::MembersOf<kKeys>(json, silent);
  int32_t field = 0;
  gsc::codec::ReadNumber(object, STEP_KEY, field);  // the step
  return field;
}

}  // namespace

int32_t ReadBoth(const Json::Value& tree, const gsc::codec::TextValue& text) {
  return ReadStep(tree) + ReadStep(text);
}
