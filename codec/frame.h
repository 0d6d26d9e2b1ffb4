// The vocabulary of the codec frame: one helper per rule by which a field travels, so that each
// record codec reads like its field table, one line per field.
//
// Reading rules (the record is never cleared; what the JSON does not carry keeps its value):
//   ...IfPresent  read only when the member is present and not null;
//   Read...       read always: a missing member converts as JSON null (0, false, 0.0).
// Writing rules: members are created with non-const access under static keys (every key is a
// string literal, so JsonCpp does not copy it).
#ifndef GUIDESCREEN_CODEC_CODEC_FRAME_H
#define GUIDESCREEN_CODEC_CODEC_FRAME_H

#include <json/value.h>

#include <cstddef>
#include <cstdint>

#include "codec/field_codecs.h"
#include "codec/json_string.h"

namespace gsc::codec {

// Member `key` of `object` for writing, created null when missing. `key` must be a literal.
// (Non-const access is what creates the member; the analyser does not see JsonCpp's headers.)
// cppcheck-suppress constParameter
inline Json::Value& Put(Json::Value& object, const char* key) {
  return object[Json::StaticString(key)];
}

// Member `key` of `object` for reading: exactly what const operator[] gives (the member, null when
// missing, and JsonCpp's exception when `object` is neither an object nor null), looked up once
// with the literal's length instead of measuring it. `key` must be a literal.
template <size_t K>
const Json::Value& Member(const Json::Value& object, const char (&key)[K]) {
  const Json::Value* member = object.find(key, key + (K - 1));
  return member != nullptr ? *member : Json::Value::nullSingleton();
}

// ---- Counts ----------------------------------------------------------------------------------

// A count clamped to a capacity, compared unsigned (2^31 and above count as large).
constexpr uint32_t ClampCount(uint32_t count, uint32_t capacity) {
  return count < capacity ? count : capacity;
}

// ---- Reading ---------------------------------------------------------------------------------

// A text read only when present: GetJsonString into the whole field.
template <size_t N, size_t K>
void ReadTextIfPresent(const Json::Value& object, const char (&key)[K], char (&field)[N]) {
  static_assert(N <= 0x7FFFFFFF, "field length must fit GetJsonString's int");
  const Json::Value& member = Member(object, key);
  if (!member.isNull()) GetJsonString(member, field, static_cast<int>(N), true);
}

// A text read always: a missing or null member stores an empty text.
template <size_t N, size_t K>
void ReadText(const Json::Value& object, const char (&key)[K], char (&field)[N]) {
  GetJsonString(Member(object, key), field, static_cast<int>(N), true);
}

// A number always read with asInt (missing gives 0); an unsigned field stores the signed value's
// bits (-1 becomes 4294967295).
template <size_t K>
void ReadNumber(const Json::Value& object, const char (&key)[K], uint32_t& field) {
  field = static_cast<uint32_t>(Member(object, key).asInt());
}
template <size_t K>
void ReadNumber(const Json::Value& object, const char (&key)[K], int32_t& field) {
  field = Member(object, key).asInt();
}
template <size_t K>
void ReadReal(const Json::Value& object, const char (&key)[K], double& field) {
  field = Member(object, key).asDouble();
}

// A boolean always read (missing gives false) or only when present.
template <size_t K>
void ReadBool(const Json::Value& object, const char (&key)[K], bool& field) {
  field = Member(object, key).asBool();
}
template <size_t K>
void ReadBoolIfPresent(const Json::Value& object, const char (&key)[K], bool& field) {
  const Json::Value& member = Member(object, key);
  if (!member.isNull()) field = member.asBool();
}

// Enumerations travel counted from 0 and are stored counted from 1 (0 = not set); N values.
template <int N, typename Enum>
void StoreEnum(int json, Enum& field) {
  field = static_cast<Enum>(json >= 0 && json < N ? json + 1 : 0);
}

// An enumeration read without a presence test: a missing member reads as JSON 0 and stores 1.
template <int N, typename Enum, size_t K>
void ReadEnum(const Json::Value& object, const char (&key)[K], Enum& field) {
  field = static_cast<Enum>(0);
  StoreEnum<N>(Member(object, key).asInt(), field);
}

// An enumeration read with a presence test: a missing member stores 0.
template <int N, typename Enum, size_t K>
void ReadEnumIfPresent(const Json::Value& object, const char (&key)[K], Enum& field) {
  field = static_cast<Enum>(0);
  const Json::Value& member = Member(object, key);
  if (!member.isNull()) StoreEnum<N>(member.asInt(), field);
}

// An enumeration that keeps the caller's value when the member is missing or null.
template <int N, typename Enum, size_t K>
void ReadEnumOrKeep(const Json::Value& object, const char (&key)[K], Enum& field) {
  const Json::Value& member = Member(object, key);
  if (!member.isNull()) StoreEnum<N>(member.asInt(), field);
}

// Rectangles, colours, times and dates are read only when present; a malformed rectangle or
// colour leaves the field as it was, a malformed time or date sets what the scan reached.
template <size_t K>
void ReadRectIfPresent(const Json::Value& object, const char (&key)[K], tagNET_RECT& field) {
  const Json::Value& member = Member(object, key);
  if (!member.isNull()) JsonRect::parse(member, field);
}
template <size_t K>
void ReadColorIfPresent(const Json::Value& object, const char (&key)[K], tagQX_COLOR_RGBA& field) {
  const Json::Value& member = Member(object, key);
  if (!member.isNull()) JsonColor::parse(member, field);
}
template <size_t K>
void ReadTimeIfPresent(const Json::Value& object, const char (&key)[K], tagNET_TIME_OF_DAY& field) {
  const Json::Value& member = Member(object, key);
  if (!member.isNull()) ParseTimeOfDay(member, field);
}
template <size_t K>
void ReadDateIfPresent(const Json::Value& object, const char (&key)[K], tagNET_DATE_INFO& field) {
  const Json::Value& member = Member(object, key);
  if (!member.isNull()) ParseDate(member, field);
}

// An array read only when present, not null and an array: `count` becomes its size clamped to
// `capacity`, and read(element, index) runs for index 0 to count - 1. Otherwise count and
// elements keep their values.
template <typename ReadElement, size_t K>
void ReadArrayIfPresent(const Json::Value& object, const char (&key)[K], uint32_t& count,
                        uint32_t capacity, ReadElement read) {
  const Json::Value& member = Member(object, key);
  if (!member.isArray()) return;
  count = ClampCount(member.size(), capacity);
  for (uint32_t i = 0; i < count; ++i) read(member[i], i);
}

// ---- Writing ---------------------------------------------------------------------------------

// The text of a fixed field. A field without terminator is sent whole (all N bytes) rather than
// read past its end.
void SetJsonText(Json::Value& target, const char* field, size_t size);

template <size_t N>
void WriteText(Json::Value& object, const char* key, const char (&field)[N]) {
  SetJsonText(Put(object, key), field, N);
}
// A number, flag, rectangle, colour, time or date, always written under `key`.
inline void WriteUnsigned(Json::Value& object, const char* key, uint32_t value) {
  Put(object, key) = Json::Value(static_cast<Json::UInt>(value));
}
inline void WriteInt(Json::Value& object, const char* key, int32_t value) {
  Put(object, key) = Json::Value(static_cast<Json::Int>(value));
}
inline void WriteBool(Json::Value& object, const char* key, bool value) {
  Put(object, key) = Json::Value(value);
}
inline void WriteReal(Json::Value& object, const char* key, double value) {
  Put(object, key) = Json::Value(value);
}
inline void WriteRect(Json::Value& object, const char* key, const tagNET_RECT& rect) {
  JsonRect::pack(Put(object, key), rect);
}
inline void WriteColor(Json::Value& object, const char* key, const tagQX_COLOR_RGBA& color) {
  JsonColor::pack(Put(object, key), color);
}
inline void WriteTime(Json::Value& object, const char* key, const tagNET_TIME_OF_DAY& time) {
  PackTimeOfDay(Put(object, key), time);
}
inline void WriteDate(Json::Value& object, const char* key, const tagNET_DATE_INFO& date) {
  PackDate(Put(object, key), date);
}

// An enumeration, range-tested form: written as v - 1 only when 1 <= v <= N.
template <int N, typename Enum>
void WriteEnumInRange(Json::Value& object, const char* key, Enum value) {
  const int32_t stored = static_cast<int32_t>(value);
  if (static_cast<uint32_t>(stored) - 1U < static_cast<uint32_t>(N))
    WriteInt(object, key, stored - 1);
}

// An enumeration, zero-tested form: written as v - 1 for any v but 0 (no upper bound).
template <typename Enum>
void WriteEnumIfSet(Json::Value& object, const char* key, Enum value) {
  const int32_t stored = static_cast<int32_t>(value);
  // Computed unsigned: INT32_MIN - 1 wraps to INT32_MAX instead of overflowing.
  if (stored != 0) WriteInt(object, key, static_cast<int32_t>(static_cast<uint32_t>(stored) - 1U));
}

// A list whose member is created before the count is looked at: it travels as null when empty.
// write(element, index) fills elements 0 to min(count, capacity) - 1.
template <typename WriteElement>
Json::Value& WriteListOrNull(Json::Value& object, const char* key, uint32_t count,
                             uint32_t capacity, WriteElement write) {
  Json::Value& list = Put(object, key);
  const uint32_t n = ClampCount(count, capacity);
  for (uint32_t i = 0; i < n; ++i) write(list[i], i);
  return list;
}

// A list that writes no member at all when empty.
template <typename WriteElement>
void WriteListIfAny(Json::Value& object, const char* key, uint32_t count, uint32_t capacity,
                    WriteElement write) {
  if (ClampCount(count, capacity) == 0) return;
  WriteListOrNull(object, key, count, capacity, write);
}

// ---- Keyed collections -----------------------------------------------------------------------

// Visits the members of result["infos"] in ascending byte order of their names (the order of
// getMemberNames) until visit(member) returns false. A missing or null "infos" has no members;
// an "infos" of another type raises what JsonCpp's member listing raises.
template <typename Visit>
void ForEachKeyedMember(const Json::Value& result, Visit visit) {
  const Json::Value& infos = Member(result, "infos");
  if (!infos.isObject()) {
    (void)infos.getMemberNames();  // empty for null; JsonCpp throws for any other type
    return;
  }
  for (Json::Value::const_iterator it = infos.begin(); it != infos.end(); ++it) {
    if (!visit(*it)) return;
  }
}

// Reads the members of result["infos"] into records[0 ..) with parse(member, record) until the
// capacity is reached (unsigned) or the members run out; returns the number read. With a capacity
// of 0 no record is touched.
template <typename Record, typename Parse>
uint32_t ReadKeyedCollection(const Json::Value& result, uint32_t capacity, Record* records,
                             Parse parse) {
  uint32_t count = 0;
  ForEachKeyedMember(result, [&](const Json::Value& member) {
    if (count >= capacity) return false;
    parse(member, &records[count]);
    ++count;
    return count < capacity;
  });
  return count;
}

}  // namespace gsc::codec

#endif  // GUIDESCREEN_CODEC_CODEC_FRAME_H
