#include "describe/field_table.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "describe/field_access.h"
#include "guidescreen_codec/capi.h"

namespace gsc::fields {

const Field* RecordTable::Find(const std::string& name) const {
  for (const Field& f : fields)
    if (name == f.name) return &f;
  return nullptr;
}

namespace {

// ---- Record -> JSON --------------------------------------------------------------------------

Json::Value ShowValue(const Field& f, ConstBytes at, const ShowOptions& options) {
  switch (f.kind) {
    case Kind::kText:
    case Kind::kSecret: {
      const char* text = reinterpret_cast<const char*>(at);
      const size_t size = strnlen(text, f.size);
      if (f.kind == Kind::kSecret && !options.show_secrets && size > 0) return "***";
      return Json::Value(text, text + size);
    }
    case Kind::kUnsigned:
      return Json::Value(static_cast<Json::UInt>(Load<uint32_t>(at)));
    case Kind::kSigned:
      return Json::Value(static_cast<Json::Int>(Load<int32_t>(at)));
    case Kind::kReal:
      return Json::Value(Load<double>(at));
    case Kind::kBool:
      return Json::Value(*at != 0);
    case Kind::kEnum: {
      Json::Value value(Json::objectValue);
      const int32_t v = Load<int32_t>(at);
      value[Json::StaticString("value")] = v;
      if (const char* name = f.enumeration->NameOf(v))
        value[Json::StaticString("name")] = Json::StaticString(name);
      return value;
    }
    case Kind::kRecord:
      return ToJson(*f.record, at, options);
    default:
      return Json::Value();
  }
}

// Entries laid end to end, walked with the library's own entry sizes: each a header, then the
// record its tag names. Stops at `count` entries or at the first entry that would not lie whole
// inside `length` bytes.
Json::Value ShowElements(const RecordTable& header, ConstBytes buffer, uint32_t count,
                         uint32_t length, const ShowOptions& options) {
  Json::Value entries(Json::arrayValue);
  uint32_t offset = 0;
  for (uint32_t i = 0; i < count; ++i) {
    const uint32_t at = offset;
    EM_ELEMENT_TYPE kind = EM_ELEMENT_TYPE_UNKNOWN;
    if (gsc_element_next(buffer, length, &offset, &kind, nullptr, 0) != GSC_STATUS_OK) break;
    Json::Value entry = ToJson(header, buffer + at, options);
    if (const RecordTable* record = VariantOf(header, kind))
      entry[Json::StaticString("record")] = ToJson(*record, buffer + at + header.size, options);
    entries.append(std::move(entry));
  }
  return entries;
}

// ---- JSON -> record --------------------------------------------------------------------------

const char* TypeName(const Json::Value& v) {
  switch (v.type()) {
    case Json::nullValue:
      return "null";
    case Json::intValue:
    case Json::uintValue:
      return "an integer";
    case Json::realValue:
      return "a real number";
    case Json::stringValue:
      return "text";
    case Json::booleanValue:
      return "a boolean";
    case Json::arrayValue:
      return "an array";
    default:
      return "an object";
  }
}

[[noreturn]] void Fail(const std::string& path, const std::string& what) {
  throw FieldError("field '" + path + "': " + what);
}
[[noreturn]] void WrongType(const std::string& path, const char* expected, const Json::Value& v) {
  Fail(path, std::string("expected ") + expected + ", got " + TypeName(v));
}

void Fill(const RecordTable& table, const Json::Value& form, Bytes record, Arena& arena,
          const std::string& path);

int ParseEnum(const Field& f, const Json::Value& v, const std::string& path) {
  if (v.isInt()) return v.asInt();
  if (v.isObject() && v.isMember("value")) return ParseEnum(f, v["value"], path + ".value");
  if (v.isString()) {
    for (const Enumerator& e : f.enumeration->values)
      if (v.asString() == e.name) return e.value;
    std::string names;
    for (const Enumerator& e : f.enumeration->values) names += std::string(" ") + e.name;
    Fail(path, "'" + v.asString() + "' is no enumerator of " + f.enumeration->name + " (" +
                   names.substr(1) + ")");
  }
  WrongType(path, "an enumerator, its value or {\"value\": v}", v);
}

void ParseValue(const Field& f, const Json::Value& v, Bytes at, Arena& arena,
                const std::string& path) {
  switch (f.kind) {
    case Kind::kText:
    case Kind::kSecret: {
      if (!v.isString()) WrongType(path, "text", v);
      const std::string text = v.asString();
      if (text.size() > f.size)
        Fail(path, "text longer than its " + std::to_string(f.size) + " bytes");
      std::memcpy(at, text.data(), text.size());
      return;
    }
    case Kind::kUnsigned:
      if (!v.isUInt()) WrongType(path, "an unsigned 32-bit integer", v);
      return Store<uint32_t>(at, v.asUInt());
    case Kind::kSigned:
      if (!v.isInt()) WrongType(path, "a signed 32-bit integer", v);
      return Store<int32_t>(at, v.asInt());
    case Kind::kReal:
      if (!v.isNumeric() || v.isBool()) WrongType(path, "a number", v);
      return Store<double>(at, v.asDouble());
    case Kind::kBool:
      if (!v.isBool()) WrongType(path, "true or false", v);
      *at = v.asBool() ? 1 : 0;
      return;
    case Kind::kEnum:
      return Store<int32_t>(at, ParseEnum(f, v, path));
    case Kind::kRecord:
      return Fill(*f.record, v, at, arena, path);
    default:
      return;
  }
}

// A caller array: as many records as the form lists, the count or the capacity asks for.
void FillCallerArray(const RecordTable& table, const Field& f, const Json::Value& v, Bytes record,
                     Arena& arena, const std::string& path) {
  if (v.isNull()) return;
  if (!v.isArray()) WrongType(path, "an array of records", v);
  const RecordTable& element = *f.record;
  size_t n = v.size();
  n = std::max<size_t>(n, Number(table, record, f.count));
  if (f.limit) n = std::max<size_t>(n, Number(table, record, f.limit));
  if (n > (size_t{1} << 30) / element.size) Fail(path, "too many records for a caller array");
  Bytes array = arena.Allocate(n * element.size);
  for (Json::ArrayIndex i = 0; i < v.size(); ++i)
    Fill(element, v[i], array + i * element.size, arena, path + "[" + std::to_string(i) + "]");
  Store(record + f.offset, array);
}

// An element buffer: the entries laid end to end by the library's gsc_element_append, then
// header-only entries up to the count (so a count above the entries listed never walks off the
// buffer), then room up to the length. Returns the buffer's length.
size_t FillElements(const RecordTable& table, const Field& f, const Json::Value& v, Bytes record,
                    Arena& arena, const std::string& path) {
  if (v.isNull()) return Number(table, record, f.limit);
  if (!v.isArray()) WrongType(path, "an array of element entries", v);
  const RecordTable& header = *f.record;
  const uint32_t count = Number(table, record, f.count);
  std::vector<EM_ELEMENT_TYPE> kinds;
  size_t used = 0;
  for (Json::ArrayIndex i = 0; i < v.size(); ++i) {
    const std::string at = path + "[" + std::to_string(i) + "]";
    if (!v[i].isObject()) WrongType(at, "an element entry", v[i]);
    Json::Value head = v[i];
    head.removeMember("record");
    std::vector<unsigned char> bytes(header.size);
    Fill(header, head, bytes.data(), arena, at);
    const auto kind = static_cast<EM_ELEMENT_TYPE>(TagOf(header, bytes.data()));
    if (!VariantOf(header, kind) && v[i].isMember("record"))
      Fail(at + ".record", "this kind of entry has no record");
    kinds.push_back(kind);
    used += gsc_element_entry_size(kind);
  }
  if (count > v.size()) used += (count - v.size()) * size_t{GSC_ELEMENT_HEADER_SIZE};
  const size_t length = std::max<size_t>(used, Number(table, record, f.limit));
  if (length > UINT32_MAX) Fail(path, "element buffer larger than 4 GiB");
  Bytes buffer = arena.Allocate(length);
  uint32_t offset = 0;
  for (Json::ArrayIndex i = 0; i < v.size(); ++i) {
    // Filled in aligned memory, then copied in: the record may land 4 but not 8 aligned.
    gsc_element_record entry;
    std::memset(&entry, 0, sizeof entry);
    if (const RecordTable* kind = VariantOf(header, kinds[i]))
      Fill(*kind, v[i]["record"], reinterpret_cast<Bytes>(&entry), arena,
           path + "[" + std::to_string(i) + "].record");
    if (gsc_element_append(buffer, static_cast<uint32_t>(length), &offset, kinds[i], &entry) !=
        GSC_STATUS_OK)
      Fail(path, "element buffer layout");  // cannot happen: the length was computed above
  }
  Store(record + f.offset, buffer);
  return length;
}

bool IsPointer(const Field& f) {
  return f.kind == Kind::kCallerArray || f.kind == Kind::kElements;
}

void Fill(const RecordTable& table, const Json::Value& form, Bytes record, Arena& arena,
          const std::string& path) {
  const std::string prefix = path.empty() ? "" : path + ".";
  if (!form.isObject()) WrongType(path.empty() ? table.name : path, "an object", form);
  for (const std::string& name : form.getMemberNames()) {
    const Field* f = table.Find(name);
    if (!f || f->kind == Kind::kHidden || f->kind == Kind::kSize)
      throw FieldError("unknown field '" + prefix + name + "' in " + table.name);
  }
  // Plain fields first, so that counts, capacities and lengths are known to the pointers.
  for (const bool pointers : {false, true}) {
    for (const Field& f : table.fields) {
      if (f.kind == Kind::kSize)
        Store<uint32_t>(record + f.offset, static_cast<uint32_t>(table.size));
      if (IsPointer(f) != pointers || !form.isMember(f.name)) continue;
      const Json::Value& v = form[f.name];
      const std::string at = prefix + f.name;
      if (f.kind == Kind::kCallerArray) {
        if (!form.isMember(f.count) && v.isArray()) SetNumber(table, record, f.count, v.size());
        FillCallerArray(table, f, v, record, arena, at);
      } else if (f.kind == Kind::kElements) {
        if (!form.isMember(f.count) && v.isArray()) SetNumber(table, record, f.count, v.size());
        const size_t length = FillElements(table, f, v, record, arena, at);
        if (!form.isMember(f.limit))
          SetNumber(table, record, f.limit, static_cast<uint32_t>(length));
      } else if (f.extent == 1 && !f.count) {
        ParseValue(f, v, record + f.offset, arena, at);
      } else {
        if (!v.isArray()) WrongType(at, "an array", v);
        if (v.size() > f.extent) Fail(at, "holds at most " + std::to_string(f.extent) + " values");
        for (Json::ArrayIndex i = 0; i < v.size(); ++i)
          ParseValue(f, v[i], record + f.offset + i * f.size, arena,
                     at + "[" + std::to_string(i) + "]");
        if (f.count && !form.isMember(f.count)) SetNumber(table, record, f.count, v.size());
      }
    }
  }
}

}  // namespace

Json::Value ToJson(const RecordTable& table, const void* record, const ShowOptions& options) {
  const auto bytes = static_cast<ConstBytes>(record);
  Json::Value json(Json::objectValue);
  for (const Field& f : table.fields) {
    if (f.kind == Kind::kHidden || f.kind == Kind::kSize) continue;
    ConstBytes at = bytes + f.offset;
    // Names are the tables' literals, so JsonCpp need not copy them.
    Json::Value& shown = json[Json::StaticString(f.name)];
    if (f.kind == Kind::kCallerArray || f.kind == Kind::kElements) {
      const auto pointer = Load<ConstBytes>(at);
      const uint32_t count = Number(table, bytes, f.count);
      const uint32_t limit = f.limit ? Number(table, bytes, f.limit) : count;
      if (!pointer) continue;  // shown as null
      if (f.kind == Kind::kElements) {
        shown = ShowElements(*f.record, pointer, count, limit, options);
        continue;
      }
      shown = Json::Value(Json::arrayValue);
      for (uint32_t i = 0; i < std::min(count, limit); ++i)
        shown.append(ToJson(*f.record, pointer + size_t{i} * f.record->size, options));
    } else if (f.extent == 1 && !f.count) {
      shown = ShowValue(f, at, options);
    } else {
      shown = Json::Value(Json::arrayValue);
      const uint32_t n = f.count ? std::min(Number(table, bytes, f.count), f.extent) : f.extent;
      for (uint32_t i = 0; i < n; ++i) shown.append(ShowValue(f, at + i * f.size, options));
    }
  }
  return json;
}

void FromJson(const RecordTable& table, const Json::Value& form, void* record, Arena& arena) {
  Fill(table, form, static_cast<Bytes>(record), arena, "");
}

void Prepare(const RecordTable& table, void* record, Arena& arena, const Room& room) {
  const auto bytes = static_cast<Bytes>(record);
  for (const Field& f : table.fields) {
    Bytes at = bytes + f.offset;
    if (f.kind == Kind::kSize) {
      Store<uint32_t>(at, static_cast<uint32_t>(table.size));
    } else if (f.kind == Kind::kRecord) {
      for (uint32_t i = 0; i < f.extent; ++i) Prepare(*f.record, at + i * f.size, arena, room);
    } else if (f.kind == Kind::kCallerArray) {
      Bytes array = arena.Allocate(size_t{room.capacity} * f.record->size);
      for (uint32_t i = 0; i < room.capacity; ++i)
        Prepare(*f.record, array + size_t{i} * f.record->size, arena, room);
      Store(at, array);
      if (f.limit) SetNumber(table, bytes, f.limit, room.capacity);
    } else if (f.kind == Kind::kElements) {
      Store(at, arena.Allocate(room.elements_buffer));
      SetNumber(table, bytes, f.limit, room.elements_buffer);
    }
  }
}

void SetCapacities(const RecordTable& table, void* record, uint32_t capacity) {
  for (const Field& f : table.fields) {
    if (f.kind == Kind::kCallerArray && f.limit != nullptr)
      SetNumber(table, static_cast<Bytes>(record), f.limit, capacity);
  }
}

}  // namespace gsc::fields
