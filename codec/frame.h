// The vocabulary of the codec frame: one helper per rule by which a field travels, so that each
// record codec reads like its field table, one line per field, in the order of its steps.
//
// Reading rules (the record is never cleared; what the JSON does not carry keeps its value):
//   ...IfPresent  read only when the member is present and not null;
//   Read...       read always: a missing member converts as JSON null (0, false, 0.0).
// Readers take the object's Members (walked once against its key table) and a key made with
// GSC_KEY, which must be in that table or the reader does not compile; writers take an Out,
// the object being written. Both carry the context: Silent for the plain overloads, Reporting
// for the reporting ones, which also hold the path of each step and note what a conversion lost.
// Writing rules: members are created with non-const access under static keys (every key is a
// string literal, so JsonCpp does not copy it).
#ifndef GUIDESCREEN_CODEC_CODEC_FRAME_H
#define GUIDESCREEN_CODEC_CODEC_FRAME_H

#include <json/value.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

#include "codec/checks.h"
#include "codec/field_codecs.h"
#include "codec/json_string.h"
#include "codec/members.h"
#include "codec/reporting.h"

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

template <size_t K>
TextValue Member(const TextValue& object, const char (&key)[K]) {
  TextValue member;
  object.find(key, key + (K - 1), member);
  return member;
}

template <size_t K>
Segment KeySegment(const char (&key)[K]) {
  return Segment::Member(key, K - 1);
}
template <typename Key>
Segment KeySegment(Key key) {
  static_assert(kIsKeyName<Key>, "a step names its key with GSC_KEY(\"...\")");
  return KeySegment(key());
}

// ---- Counts ----------------------------------------------------------------------------------

// A count clamped to a capacity, compared unsigned (2^31 and above count as large).
constexpr uint32_t ClampCount(uint32_t count, uint32_t capacity) {
  return count < capacity ? count : capacity;
}

// The number of entries of a record's array.
template <typename T, size_t N>
constexpr uint32_t Capacity(const T (&/*array*/)[N]) {
  static_assert(N <= 0xFFFFFFFFU, "capacities are 32-bit");
  return static_cast<uint32_t>(N);
}

// ---- Reading ---------------------------------------------------------------------------------

// The first `count` elements of an array in index order, as indexing reads them: an index the
// array does not hold reads as null. (An array made in memory by assigning a later index holds
// no element at the indexes before it, yet counts them in its size.) An iterator is used because
// indexing descends JsonCpp's map for every element.
template <typename V>
class ArrayCursor {
 public:
  ArrayCursor(const Json::Value& array, uint32_t count) : next_(array.begin()), end_(array.end()) {
    // The positions hold strictly increasing indexes from 0, so when position count - 1 holds
    // index count - 1, every position before it holds its own index and none need be looked at.
    if (count == 0) return;
    Json::Value::const_iterator last = next_;
    for (uint32_t i = 1; i < count && last != end_; ++i) ++last;
    dense_ = last != end_ && last.index() == count - 1;
  }

  // Element `index`; calls must ask for 0, 1, 2, ... in turn, below the count.
  const Json::Value& At(Json::ArrayIndex index) {
    if (dense_ || (next_ != end_ && next_.index() == index)) return *next_++;
    return Json::Value::nullSingleton();
  }

 private:
  Json::Value::const_iterator next_;
  Json::Value::const_iterator end_;
  bool dense_ = false;
};

// The elements of a parsed array lie in order, one after the other; past the last, indexes read
// as null.
template <>
class ArrayCursor<TextValue> {
 public:
  ArrayCursor(const TextValue& array, uint32_t /*count*/)
      : document_(array.document()), next_(array.First()), end_(array.End()) {}

  TextValue At(Json::ArrayIndex /*index*/) {
    if (next_ == end_) return TextValue();
    const TextValue element(document_, next_);
    next_ = TextValue::After(document_, next_);
    return element;
  }

 private:
  const TextDocument* document_;
  const uint64_t* next_;
  const uint64_t* end_;
};

template <typename V>
ArrayCursor(const V&, uint32_t) -> ArrayCursor<V>;

// A text read only when present: GetJsonString into the whole field.
template <typename C, const auto& Table, typename V, typename Key, size_t F>
void ReadTextIfPresent(const Members<C, Table, V>& object, Key key, char (&field)[F]) {
  static_assert(F <= 0x7FFFFFFF, "field length must fit GetJsonString's int");
  const auto& member = object[key];
  if (member.isNull()) return;
  GetText(member, field, static_cast<int>(F), true);
  if constexpr (C::kReporting) NoteText(object.context(), KeySegment(key), member, F);
}

// A text read always: a missing or null member stores an empty text.
template <typename C, const auto& Table, typename V, typename Key, size_t F>
void ReadText(const Members<C, Table, V>& object, Key key, char (&field)[F]) {
  static_assert(F <= 0x7FFFFFFF, "field length must fit GetJsonString's int");
  const auto& member = object[key];
  GetText(member, field, static_cast<int>(F), true);
  if constexpr (C::kReporting) NoteText(object.context(), KeySegment(key), member, F);
}

// An integer read with asInt, as every number and enumeration is, at the path under way or at
// that path extended by `at`. Stores into `out` and returns true, or, when the report skips
// failures and JsonCpp cannot convert the value, leaves `out` and returns false (the value reads
// as null: 0 where the step reads null, nothing where it tests for presence).
template <typename C, typename V>
bool ReadIntInto(C& context, const V& value, int32_t& out) {
  if constexpr (C::kReporting) NoteInt(context, value);
  return Converted(context, value, out, [](const auto& v) { return v.asInt(); });
}
template <typename C, typename V>
bool ReadIntInto(C& context, const Segment& at, const V& value, int32_t& out) {
  Step<C> step(context, at);
  return ReadIntInto(context, value, out);
}
template <typename C, typename V>
int32_t ReadInt(C& context, const V& value) {
  int32_t out = 0;  // what null reads as
  ReadIntInto(context, value, out);
  return out;
}
template <typename C, typename V>
int32_t ReadInt(C& context, const Segment& at, const V& value) {
  Step<C> step(context, at);
  return ReadInt(context, value);
}

// A number always read with asInt (missing gives 0); an unsigned field stores the signed value's
// bits (-1 becomes 4294967295).
template <typename C, const auto& Table, typename V, typename Key>
void ReadNumber(const Members<C, Table, V>& object, Key key, uint32_t& field) {
  field = static_cast<uint32_t>(ReadInt(object.context(), KeySegment(key), object[key]));
}
template <typename C, const auto& Table, typename V, typename Key>
void ReadNumber(const Members<C, Table, V>& object, Key key, int32_t& field) {
  field = ReadInt(object.context(), KeySegment(key), object[key]);
}
template <typename C, const auto& Table, typename V, typename Key>
void ReadReal(const Members<C, Table, V>& object, Key key, double& field) {
  const auto& member = object[key];
  Step<C> step(object.context(), KeySegment(key));
  if constexpr (C::kReporting) NoteReal(object.context(), member);
  double value = 0.0;  // what null reads as
  Converted(object.context(), member, value, [](const auto& v) { return v.asDouble(); });
  field = value;
}

// A boolean read with asBool into `field`; false when it cannot be (see ReadIntInto).
template <typename C, typename V>
bool ReadBoolInto(C& context, const Segment& at, const V& value, bool& field) {
  Step<C> step(context, at);
  if constexpr (C::kReporting) NoteBool(context, value);
  return Converted(context, value, field, [](const auto& v) { return v.asBool(); });
}

// A boolean always read (missing gives false) or only when present.
template <typename C, const auto& Table, typename V, typename Key>
void ReadBool(const Members<C, Table, V>& object, Key key, bool& field) {
  bool value = false;  // what null reads as
  ReadBoolInto(object.context(), KeySegment(key), object[key], value);
  field = value;
}
template <typename C, const auto& Table, typename V, typename Key>
void ReadBoolIfPresent(const Members<C, Table, V>& object, Key key, bool& field) {
  const auto& member = object[key];
  if (!member.isNull()) ReadBoolInto(object.context(), KeySegment(key), member, field);
}

// Enumerations travel counted from 0 and are stored counted from 1 (0 = not set); N values.
template <int N, typename Enum>
void StoreEnum(int json, Enum& field) {
  field = static_cast<Enum>(json >= 0 && json < N ? json + 1 : 0);
}

// Reads one enumeration value and stores it; `at` names it. A value that cannot be converted,
// when skipped, stores what null does (JSON 0) unless `nullKeeps`: then the field is left alone,
// as a presence-tested step leaves it for null.
template <int N, typename C, typename V, typename Enum>
void ReadEnumValue(C& context, const Segment& at, const V& value, Enum& field,
                   bool nullKeeps = false) {
  int32_t json = 0;
  if (!ReadIntInto(context, at, value, json) && nullKeeps) return;
  StoreEnum<N>(json, field);
  if constexpr (C::kReporting) {
    if (json < 0 || json >= N) NoteEnumOutOfRange(context, at, json, N);
  }
}

// An enumeration read without a presence test: a missing member reads as JSON 0 and stores 1.
template <int N, typename C, const auto& Table, typename V, typename Enum, typename Key>
void ReadEnum(const Members<C, Table, V>& object, Key key, Enum& field) {
  field = static_cast<Enum>(0);
  ReadEnumValue<N>(object.context(), KeySegment(key), object[key], field);
}

// An enumeration read with a presence test: a missing member stores 0.
template <int N, typename C, const auto& Table, typename V, typename Enum, typename Key>
void ReadEnumIfPresent(const Members<C, Table, V>& object, Key key, Enum& field) {
  field = static_cast<Enum>(0);
  const auto& member = object[key];
  if (!member.isNull()) ReadEnumValue<N>(object.context(), KeySegment(key), member, field, true);
}

// An enumeration that keeps the caller's value when the member is missing or null.
template <int N, typename C, const auto& Table, typename V, typename Enum, typename Key>
void ReadEnumOrKeep(const Members<C, Table, V>& object, Key key, Enum& field) {
  const auto& member = object[key];
  if (!member.isNull()) ReadEnumValue<N>(object.context(), KeySegment(key), member, field, true);
}

// Four integers from a JSON array of exactly four elements, each under its index's path; any
// other shape changes nothing (reported as `what`, "rectangle" or "colour"). Returns whether
// the array was read.
template <typename C, typename V>
bool ReadFourInts(C& context, const V& source, const char* what, int32_t& a, int32_t& b, int32_t& c,
                  int32_t& d) {
  if (!source.isArray() || source.size() != 4) {
    if constexpr (C::kReporting) {
      const std::string shape = std::string("a ") + what + " of four numbers";
      NoteMalformed(context, source, shape.c_str());
    }
    return false;
  }
  ArrayCursor element(source, 4);
  a = ReadInt(context, Segment::Index(0), element.At(0));
  b = ReadInt(context, Segment::Index(1), element.At(1));
  c = ReadInt(context, Segment::Index(2), element.At(2));
  d = ReadInt(context, Segment::Index(3), element.At(3));
  return true;
}

// Rectangles, colours, times and dates are read only when present; a malformed rectangle or
// colour leaves the field as it was, a malformed time or date sets what the scan reached.
template <typename C, const auto& Table, typename V, typename Key>
void ReadRectIfPresent(const Members<C, Table, V>& object, Key key, tagNET_RECT& field) {
  const auto& member = object[key];
  if (member.isNull()) return;
  Step<C> step(object.context(), KeySegment(key));
  ReadFourInts(object.context(), member, "rectangle", field.nLeft, field.nTop, field.nRight,
               field.nBottom);
}
template <typename C, const auto& Table, typename V, typename Key>
void ReadColorIfPresent(const Members<C, Table, V>& object, Key key, tagQX_COLOR_RGBA& field) {
  const auto& member = object[key];
  if (member.isNull()) return;
  Step<C> step(object.context(), KeySegment(key));
  ReadFourInts(object.context(), member, "colour", field.nRed, field.nGreen, field.nBlue,
               field.nAlpha);
}
// The text of an array or object has no conversion: when skipped, the field is left as for null.
template <typename C, const auto& Table, typename V, typename Key>
void ReadTimeIfPresent(const Members<C, Table, V>& object, Key key, tagNET_TIME_OF_DAY& field) {
  const auto& member = object[key];
  if (member.isNull()) return;
  Step<C> step(object.context(), KeySegment(key));
  ScanResult scan{};
  if (!Converted(object.context(), member, scan,
                 [&](const auto& v) { return ParseTimeOfDay(v, field); })) {
    return;
  }
  if constexpr (C::kReporting) NoteScan(object.context(), member, scan, "time of day");
}
template <typename C, const auto& Table, typename V, typename Key>
void ReadDateIfPresent(const Members<C, Table, V>& object, Key key, tagNET_DATE_INFO& field) {
  const auto& member = object[key];
  if (member.isNull()) return;
  Step<C> step(object.context(), KeySegment(key));
  ScanResult scan{};
  if (!Converted(object.context(), member, scan,
                 [&](const auto& v) { return ParseDate(v, field); })) {
    return;
  }
  if constexpr (C::kReporting) NoteScan(object.context(), member, scan, "date");
}

// The object under `key` for a step that reads it only when present: null when missing, or when
// it is no object and the report skips failures (noted under the key's path).
template <typename C, const auto& Table, typename V, typename Key>
ValueRef<V> ObjectIfPresent(const Members<C, Table, V>& object, Key key) {
  const auto& member = object[key];
  if (member.isNull()) return member;
  Step<C> step(object.context(), KeySegment(key));
  return ObjectOrNull(object.context(), member);
}

// An object read only when present and not null: read(member) runs under the member's path.
template <typename C, const auto& Table, typename V, typename Key, typename ReadBody>
void ReadObjectIfPresent(const Members<C, Table, V>& object, Key key, ReadBody read) {
  const auto& member = ObjectIfPresent(object, key);
  if (member.isNull()) return;
  Step<C> step(object.context(), KeySegment(key));
  read(member);
}

// The members of `member`, the object under `key` (from ObjectIfPresent), for a reader whose steps
// on that object are interleaved with steps on its parent: each run of steps on it goes under
// Step(key). Unknown members are noted under the object's own path.
template <const auto& Nested, typename C, typename V, size_t K>
Members<C, Nested, V> NestedMembers(C& context, const char (&key)[K], const V& member) {
  Step<C> step(context, KeySegment(key));
  return Members<C, Nested, V>(member, context);
}

// An object read always: a missing one is read as null, whose members all read as null.
template <typename C, const auto& Table, typename V, typename Key, typename ReadBody>
void ReadObject(const Members<C, Table, V>& object, Key key, ReadBody read) {
  const auto& member = object[key];
  Step<C> step(object.context(), KeySegment(key));
  read(ObjectOrNull(object.context(), member));
}

// An array read only when present, not null and an array: `count` becomes its size clamped to
// the capacity of `array`, and read(element, entry) runs for the first `count` elements.
// Otherwise count and elements keep their values.
template <typename C, const auto& Table, typename V, typename Key, typename T, size_t Cap,
          typename ReadElement>
void ReadArrayIfPresent(const Members<C, Table, V>& object, Key key, uint32_t& count,
                        T (&array)[Cap], ReadElement read) {
  const auto& member = object[key];
  if (!member.isArray()) {
    if constexpr (C::kReporting) {
      if (!member.isNull()) NoteMalformed(object.context(), KeySegment(key), member, "an array");
    }
    return;
  }
  Step<C> step(object.context(), KeySegment(key));
  const uint32_t size = member.size();
  count = ClampCount(size, Capacity(array));
  if constexpr (C::kReporting) {
    if (size > count) NoteArrayClamped(object.context(), size, count);
  }
  ArrayCursor element(member, count);
  for (uint32_t i = 0; i < count; ++i) {
    Step<C> entry(object.context(), Segment::Index(i));
    read(element.At(i), array[i]);
  }
}

// ---- Writing ---------------------------------------------------------------------------------

// The object being written and the context of the write. `Out`s of nested JSON objects share
// their parent's record path: request paths name the record's fields, not the JSON's.
template <typename C>
struct Out {
  Json::Value& json;
  C& context;
};

template <typename C>
Out<C> Put(const Out<C>& object, const char* key) {
  return {Put(object.json, key), object.context};
}

// The record field that travels under `key`: its type prefix and the key ("sz" + "PlanName").
template <size_t K>
Segment FieldSegment(const char* prefix, const char (&key)[K], const char* suffix = "") {
  Segment segment = Segment::Field(prefix, key, K - 1);
  segment.suffix = suffix;
  return segment;
}

// A record field named in full, where its name is not its key's ("pstuInfos").
template <size_t K>
Segment FieldNamed(const char (&name)[K]) {
  return Segment::Field("", name, K - 1);
}

// The text of a fixed field. A field without terminator is sent whole (all N bytes) rather than
// read past its end.
void SetJsonText(Json::Value& target, const char* field, size_t size);

template <typename C, size_t K, size_t F>
void WriteText(const Out<C>& object, const char (&key)[K], const char (&field)[F]) {
  SetJsonText(Put(object.json, key), field, F);
  if constexpr (C::kReporting) {
    NoteUnterminated(object.context, FieldSegment("sz", key), field, F);
  }
}

// A text field that is an element of a list: the path under way names it.
template <typename C, size_t F>
void WriteTextElement(const Out<C>& element, const char (&field)[F]) {
  SetJsonText(element.json, field, F);
  if constexpr (C::kReporting) NoteUnterminated(element.context, field, F);
}

// A number, flag, rectangle, colour, time or date, always written under `key`.
template <typename C>
void WriteUnsigned(const Out<C>& object, const char* key, uint32_t value) {
  Put(object.json, key) = Json::Value(static_cast<Json::UInt>(value));
}
template <typename C>
void WriteInt(const Out<C>& object, const char* key, int32_t value) {
  Put(object.json, key) = Json::Value(static_cast<Json::Int>(value));
}
template <typename C>
void WriteBool(const Out<C>& object, const char* key, bool value) {
  Put(object.json, key) = Json::Value(value);
}
template <typename C>
void WriteReal(const Out<C>& object, const char* key, double value) {
  Put(object.json, key) = Json::Value(value);
}
template <typename C>
void WriteRect(const Out<C>& object, const char* key, const tagNET_RECT& rect) {
  JsonRect::pack(Put(object.json, key), rect);
}
template <typename C>
void WriteColor(const Out<C>& object, const char* key, const tagQX_COLOR_RGBA& color) {
  JsonColor::pack(Put(object.json, key), color);
}
template <typename C>
void WriteTime(const Out<C>& object, const char* key, const tagNET_TIME_OF_DAY& time) {
  PackTimeOfDay(Put(object.json, key), time);
}
template <typename C>
void WriteDate(const Out<C>& object, const char* key, const tagNET_DATE_INFO& date) {
  PackDate(Put(object.json, key), date);
}

// An enumeration, range-tested form: written as v - 1 only when 1 <= v <= N. Any other value
// but 0 (not set) is left out and reported.
template <int N, typename C, size_t K, typename Enum>
void WriteEnumInRange(const Out<C>& object, const char (&key)[K], Enum value) {
  const auto stored = static_cast<int32_t>(value);
  if (static_cast<uint32_t>(stored) - 1U < static_cast<uint32_t>(N)) {
    WriteInt(object, key, stored - 1);
  } else if constexpr (C::kReporting) {
    if (stored != 0) NoteEnumNotSent(object.context, FieldSegment("em", key), stored, N);
  }
}

// An enumeration, zero-tested form: written as v - 1 for any v but 0 (no upper bound).
template <typename C, typename Enum>
void WriteEnumIfSet(const Out<C>& object, const char* key, Enum value) {
  const auto stored = static_cast<int32_t>(value);
  // Computed unsigned: INT32_MIN - 1 wraps to INT32_MAX instead of overflowing.
  if (stored != 0) WriteInt(object, key, static_cast<int32_t>(static_cast<uint32_t>(stored) - 1U));
}

// A nested record written as the object under `key`; write(Out) runs under the record's field
// path ("stu" + key).
template <typename C, size_t K, typename WriteObject>
void WriteRecord(const Out<C>& object, const char (&key)[K], WriteObject write) {
  Step<C> step(object.context, FieldSegment("stu", key));
  write(Put(object, key));
}

// The type prefix of a record array's field name.
template <typename T>
constexpr const char* ArrayPrefix() {
  if constexpr (std::is_array_v<T>) return "sz";
  if constexpr (std::is_arithmetic_v<T>) return "n";
  return "stu";
}

// A list whose member is created before the count is looked at: it travels as null when empty.
// write(element, entry) fills elements 0 to min(count, capacity of `array`) - 1; a count beyond
// the capacity is reported against its field (n<Key>Num).
template <typename C, size_t K, typename T, size_t Cap, typename WriteElement>
Json::Value& WriteListOrNull(const Out<C>& object, const char (&key)[K], uint32_t count,
                             const T (&array)[Cap], WriteElement write) {
  Json::Value& list = Put(object.json, key);
  const uint32_t n = ClampCount(count, Capacity(array));
  if constexpr (C::kReporting) {
    if (count > n) NoteCountBeyondCapacity(object.context, FieldSegment("n", key, "Num"), count, n);
  }
  Step<C> step(object.context, FieldSegment(ArrayPrefix<T>(), key));
  for (uint32_t i = 0; i < n; ++i) {
    Step<C> entry(object.context, Segment::Index(i));
    write(Out<C>{list[i], object.context}, array[i]);
  }
  return list;
}

// A list that writes no member at all when empty.
template <typename C, size_t K, typename T, size_t Cap, typename WriteElement>
void WriteListIfAny(const Out<C>& object, const char (&key)[K], uint32_t count,
                    const T (&array)[Cap], WriteElement write) {
  if (ClampCount(count, Capacity(array)) == 0) return;
  WriteListOrNull(object, key, count, array, write);
}

// ---- Record codecs in their plain form ------------------------------------------------------

// Runs a record reader silently; nothing for a null record.
template <typename Record>
void ParseSilently(const Json::Value& json, Record* record,
                   void (*read)(const Json::Value&, Record&, Silent&)) {
  if (record == nullptr) return;
  Silent context{};
  read(json, *record, context);
}

// Runs a record writer silently; nothing for a null record.
template <typename Record>
void PacketSilently(const Record* record, Json::Value& json,
                    void (*packet)(const Record&, const Out<Silent>&)) {
  if (record == nullptr) return;
  Silent context{};
  packet(*record, Out<Silent>{json, context});
}

// ---- Keyed collections -----------------------------------------------------------------------

// Visits the members of `infos` (a result's "infos") in ascending byte order of their names (the
// order of getMemberNames), each under its name's path, until visit(member, name, end) refuses
// one by returning false. A missing or null "infos" has no members; an "infos" of another type
// raises what JsonCpp's member listing raises. When reporting, the names of the refused member and
// of those after it are added to `notVisited`.
template <typename C, typename V, typename Visit, typename Counted = void (*)(size_t)>
void ForEachKeyedMember(
    C& context, const V& infos, Visit visit, std::vector<std::string>* notVisited = nullptr,
    Counted counted = [](size_t) {}) {
  if (!infos.isObject()) {
    // Empty for null; JsonCpp throws for any other type (noted and read as null when skipping).
    size_t count = 0;
    Converted(context, infos, count, [](const V& v) { return v.getMemberNames().size(); });
    return;
  }
  if constexpr (std::is_same_v<V, TextValue>) {
    KeyedScratch scratch;
    KeyedMembers(infos, scratch.members());
    const auto& members = scratch.members();
    counted(members.size());
    size_t i = 0;
    for (; i < members.size(); ++i) {
      Step<C> step(context, Segment::Member(members[i].name, members[i].length));
      if (!visit(members[i].value, members[i].name, members[i].name + members[i].length)) break;
    }
    if constexpr (C::kReporting) {
      for (; notVisited != nullptr && i < members.size(); ++i) {
        notVisited->emplace_back(members[i].name, members[i].length);
      }
    }
  } else {
    counted(infos.size());
    auto it = infos.begin();
    const auto end = infos.end();
    for (; it != end; ++it) {
      const char* nameEnd = nullptr;
      const char* name = it.memberName(&nameEnd);
      Step<C> step(context, Segment::Member(name, static_cast<uint32_t>(nameEnd - name)));
      if (!visit(*it, name, nameEnd)) break;
    }
    if constexpr (C::kReporting) {
      for (; notVisited != nullptr && it != end; ++it) {
        const char* nameEnd = nullptr;
        const char* name = it.memberName(&nameEnd);
        notVisited->emplace_back(name, nameEnd);
      }
    }
  }
}

// The result object of a get-all answer: "infos" is its only member.
inline constexpr auto kKeyedResultKeys = Keys("infos");

// ReadKeyedCollection (below) with room for `room` records at a time: record `first + i` of the
// whole is read into records[i], and once `room` records (or the last ones) are read,
// handOver(first, count, total) is called, where total is the number the whole read fills. handOver
// may point `records` elsewhere for the next batch.
template <typename C, typename V, typename Record, typename Read, typename HandOver>
uint32_t ReadKeyedCollectionInBatches(const V& result, uint32_t capacity, uint32_t room,
                                      Record*& records, C& context, Read read, HandOver handOver) {
  const auto object = MembersOf<kKeyedResultKeys>(result, context);
  const auto& infos = object[GSC_KEY("infos")];
  Step<C> step(context, KeySegment("infos"));
  uint32_t count = 0;
  uint32_t first = 0;
  uint32_t total = 0;
  std::vector<std::string> notRead;
  ForEachKeyedMember(
      context, infos,
      [&](const auto& member, const char* /*name*/, const char* /*end*/) {
        if (count >= capacity) return false;
        read(member, records[count - first]);
        ++count;
        if (count - first == room) {
          handOver(first, count - first, total);
          first = count;
        }
        return true;
      },
      C::kReporting ? &notRead : nullptr,
      [&](size_t members) { total = static_cast<uint32_t>(std::min<size_t>(members, capacity)); });
  if (count != first) handOver(first, count - first, total);
  if constexpr (C::kReporting) {
    if (!notRead.empty()) NoteCollectionClamped(context, "records", capacity, notRead);
  }
  return count;
}

// Reads the members of result["infos"] into records[0 ..) with read(member, record) until the
// capacity is reached (unsigned) or the members run out; returns the number read. With a capacity
// of 0 no record is touched. Members left unread are reported with their names.
template <typename C, typename V, typename Record, typename Read>
uint32_t ReadKeyedCollection(const V& result, uint32_t capacity, Record* records, C& context,
                             Read read) {
  return ReadKeyedCollectionInBatches(result, capacity, capacity, records, context, read,
                                      [](uint32_t /*first*/, uint32_t /*count*/, uint32_t) {});
}

}  // namespace gsc::codec

#endif  // GUIDESCREEN_CODEC_CODEC_FRAME_H
