#include "codec/text_value.h"

#include <algorithm>

#include "codec/members.h"

namespace gsc::codec {

const uint64_t TextValue::kNullWord = static_cast<uint64_t>('n') << 56U;

Json::ValueType TextValue::type() const noexcept {
  switch (Tag()) {
    case 't':
    case 'f':
      return Json::booleanValue;
    case 'l':
      return Json::intValue;
    case 'u':
      return Json::uintValue;
    case 'd':
      return Json::realValue;
    case '"':
      return Json::stringValue;
    case '[':
      return Json::arrayValue;
    case '{':
      return Json::objectValue;
    default:
      return Json::nullValue;
  }
}

Json::Value TextValue::Scalar() const {
  switch (Tag()) {
    case 't':
      return Json::Value(true);
    case 'f':
      return Json::Value(false);
    case 'l':
      return Json::Value(static_cast<Json::Int64>(Int64()));
    case 'u':
      return Json::Value(static_cast<Json::UInt64>(UInt64()));
    case 'd':
      return Json::Value(Double());
    case '"': {
      const char* begin = nullptr;
      const char* end = nullptr;
      getString(&begin, &end);
      return Json::Value(begin, end);
    }
    case '[':
      return Json::Value(Json::arrayValue);
    case '{':
      return Json::Value(Json::objectValue);
    default:
      return Json::Value();
  }
}

std::string TextValue::asString() const {
  const char* begin = nullptr;
  const char* end = nullptr;
  if (getString(&begin, &end)) return std::string(begin, end);
  return Scalar().asString();
}

Json::ArrayIndex TextValue::size() const {
  if (isArray()) {
    // The parser counts elements up to 2^24 - 1; a count at that mark may be larger.
    constexpr uint32_t kCountSaturated = 0xFFFFFF;
    const auto counted = static_cast<uint32_t>((*word_ >> 32U) & kCountSaturated);
    if (counted < kCountSaturated) return counted;
    Json::ArrayIndex count = 0;
    for (const uint64_t* at = First(); at != End(); at = After(document_, at)) ++count;
    return count;
  }
  if (isObject()) {
    std::vector<NamedValue> members;
    KeyedMembers(*this, members);
    return static_cast<Json::ArrayIndex>(members.size());
  }
  return 0;
}

bool TextValue::find(const char* begin, const char* end, TextValue& member) const {
  if (!isObject()) {
    // Null has no members; JsonCpp raises for any other type.
    if (!isNull()) Scalar().find(begin, end);
    return false;
  }
  const auto length = static_cast<size_t>(end - begin);
  bool found = false;
  for (const uint64_t* at = First(); at != End();) {
    const char* name = nullptr;
    uint32_t nameLength = 0;
    Name(document_, at, &name, &nameLength);
    const uint64_t* value = at + 1;
    if (nameLength == length && std::memcmp(name, begin, length) == 0) {
      member = TextValue(document_, value);
      found = true;
    }
    at = After(document_, value);
  }
  return found;
}

std::vector<std::string> TextValue::getMemberNames() const {
  if (!isObject()) return Scalar().getMemberNames();
  std::vector<NamedValue> members;
  KeyedMembers(*this, members);
  std::vector<std::string> names(members.size());
  std::transform(members.begin(), members.end(), names.begin(),
                 [](const NamedValue& member) { return std::string(member.name, member.length); });
  return names;
}

namespace {

struct ThreadScratch {
  std::vector<NamedValue> members;
  bool inUse = false;
};

ThreadScratch& Scratch() {
  thread_local ThreadScratch scratch;
  return scratch;
}

}  // namespace

KeyedScratch::KeyedScratch() : members_(&own_), leased_(false) {
  ThreadScratch& shared = Scratch();
  if (!shared.inUse) {
    shared.inUse = true;
    members_ = &shared.members;
    leased_ = true;
  }
}

KeyedScratch::~KeyedScratch() {
  if (leased_) Scratch().inUse = false;
}

void KeyedMembers(const TextValue& object, std::vector<NamedValue>& scratch) {
  scratch.clear();
  if (!object.isObject()) return;
  const TextDocument* document = object.document();
  for (const uint64_t* at = object.First(); at != object.End();) {
    NamedValue member{nullptr, 0, TextValue(document, at + 1)};
    TextValue::Name(document, at, &member.name, &member.length);
    scratch.push_back(member);
    at = TextValue::After(document, at + 1);
  }
  const auto before = [](const NamedValue& a, const NamedValue& b) {
    return CompareNames(a.name, a.length, b.name, b.length) < 0;
  };
  // Equal names keep their order in the text (their words' order), so that the last is kept.
  const auto sortedBefore = [&](const NamedValue& a, const NamedValue& b) {
    const int order = CompareNames(a.name, a.length, b.name, b.length);
    return order != 0 ? order < 0 : a.value.word() < b.value.word();
  };
  if (!std::is_sorted(scratch.begin(), scratch.end(), sortedBefore)) {
    std::sort(scratch.begin(), scratch.end(), sortedBefore);
  }
  size_t kept = 0;
  for (size_t i = 0; i < scratch.size(); ++i) {
    if (i + 1 < scratch.size() && !before(scratch[i], scratch[i + 1])) continue;
    scratch[kept++] = scratch[i];
  }
  scratch.resize(kept);
}

}  // namespace gsc::codec
