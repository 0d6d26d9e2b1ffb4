#include "codec/checks.h"

#include <climits>
#include <cmath>
#include <cstring>

#include "codec/json_string.h"

namespace gsc::codec {
namespace {

using gsc::FindingKind;

// A real that asInt takes without raising: within the int range.
bool FitsInt(double value) {
  return value >= INT_MIN && value <= INT_MAX;
}

std::string Plural(uint64_t count, const char* one, const char* many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

std::string Unterminated(size_t size) {
  return "no terminator in its " + std::to_string(size) + " bytes: all of them sent";
}

}  // namespace

template <typename V>
void NoteText(Reporting& context, const Segment& at, const V& value, size_t size) {
  const char* begin = nullptr;
  const char* end = nullptr;
  std::string converted;
  switch (value.type()) {
    case Json::nullValue:
      return;
    case Json::stringValue:
      if (!value.getString(&begin, &end)) return;
      break;
    case Json::arrayValue:
    case Json::objectValue:
      context.Add(FindingKind::kValueConverted, at, Describe(value) + " read as an empty text");
      return;
    default:
      converted = value.asString();
      begin = converted.data();
      end = begin + converted.size();
      context.Add(FindingKind::kValueConverted, at,
                  Describe(value) + " read as the text \"" + converted + "\"");
      break;
  }
  const auto received = static_cast<size_t>(end - begin);
  if (received <= size - 1) return;
  const size_t kept = CutPoint(begin, received, size - 1, true);
  context.Add(FindingKind::kTextCut, at,
              std::to_string(received) + " bytes received, " + std::to_string(kept) +
                  " kept in a field of " + std::to_string(size));
}

template <typename V>
void NoteInt(Reporting& context, const V& value) {
  if (value.isBool()) {
    context.Add(FindingKind::kValueConverted,
                Describe(value) + " read as " + (value.asBool() ? "1" : "0"));
  } else if (value.type() == Json::realValue) {
    const double real = value.asDouble();
    if (FitsInt(real) && std::trunc(real) != real) {
      context.Add(FindingKind::kValueConverted,
                  Describe(value) + " read as " + std::to_string(static_cast<int>(real)));
    }
  }
}

template <typename V>
void NoteBool(Reporting& context, const V& value) {
  if (value.isNumeric() && !value.isBool()) {
    context.Add(FindingKind::kValueConverted,
                Describe(value) + " read as " + (value.asBool() ? "true" : "false"));
  }
}

template <typename V>
void NoteReal(Reporting& context, const V& value) {
  if (value.isBool()) {
    context.Add(FindingKind::kValueConverted,
                Describe(value) + " read as " + (value.asBool() ? "1" : "0"));
  }
}

void NoteEnumOutOfRange(Reporting& context, const Segment& at, int32_t json, int values) {
  context.Add(FindingKind::kEnumOutOfRange, at,
              "value " + std::to_string(json) + " outside 0.." + std::to_string(values - 1) +
                  ", stored as 0");
}

template <typename V>
void NoteScan(Reporting& context, const V& value, ScanResult scan, const char* what) {
  if (scan.fields == 3 && scan.whole) return;
  const std::string text = value.isString() ? Describe(value) : "its text";
  if (scan.fields < 3) {
    context.Add(FindingKind::kValueMalformed, std::string(what) + " " + text + " read in part: " +
                                                  std::to_string(scan.fields) + " of 3 fields set");
  } else {
    context.Add(FindingKind::kValueMalformed,
                std::string(what) + " " + text + ": what follows the third field is ignored");
  }
}

template <typename V>
void NoteMalformed(Reporting& context, const Segment& at, const V& value, const char* expected) {
  context.Add(FindingKind::kValueMalformed, at,
              Describe(value) + " where " + expected + " belongs, left unchanged");
}

template <typename V>
void NoteMalformed(Reporting& context, const V& value, const char* expected) {
  context.Add(FindingKind::kValueMalformed,
              Describe(value) + " where " + expected + " belongs, left unchanged");
}

void NoteArrayClamped(Reporting& context, uint32_t length, uint32_t capacity) {
  context.Add(FindingKind::kArrayClamped, Plural(length, "element", "elements") + ", capacity " +
                                              std::to_string(capacity) + ": " +
                                              std::to_string(length - capacity) + " not read");
}

void NoteCollectionClamped(Reporting& context, const char* what, uint32_t capacity,
                           const std::vector<std::string>& notRead) {
  // Long lists are cut: the count says how many were left in all.
  constexpr size_t kNamesShown = 16;
  std::string detail = "room for " + std::to_string(capacity) + " " + what + ": " +
                       std::to_string(notRead.size()) + " not read (";
  for (size_t i = 0; i < notRead.size() && i < kNamesShown; ++i) {
    if (i > 0) detail += ", ";
    detail += PathName(notRead[i].data(), notRead[i].size());
  }
  if (notRead.size() > kNamesShown) {
    detail += ", and " + std::to_string(notRead.size() - kNamesShown) + " more";
  }
  context.Add(FindingKind::kCollectionClamped, detail + ")");
}

void NoteUnknownElementType(Reporting& context, int32_t type) {
  context.Add(FindingKind::kUnknownElementType, Segment::Member("Type", 4),
              "type " + std::to_string(type) + " outside 0..4: stored as a header alone");
}

void NoteElementBufferFull(Reporting& context, uint32_t received, uint32_t stored, size_t needed,
                           size_t left) {
  context.Add(FindingKind::kElementBufferFull,
              Plural(received, "entry", "entries") + " received, " + std::to_string(stored) +
                  " stored: the next needs " + std::to_string(needed) + " bytes, " +
                  std::to_string(left) + " left");
}

void NoteElementKindSkipped(Reporting& context, uint32_t entry, int32_t kind) {
  context.Add(FindingKind::kElementKindSkipped, Segment::Index(entry),
              "kind " + std::to_string(kind) +
                  " unknown: the entry is not sent, leaving a null hole in \"Elements\"");
}

void NoteUnterminated(Reporting& context, const Segment& at, const char* field, size_t size) {
  if (std::memchr(field, '\0', size) == nullptr) {
    context.Add(FindingKind::kTextUnterminated, at, Unterminated(size));
  }
}

void NoteUnterminated(Reporting& context, const char* field, size_t size) {
  if (std::memchr(field, '\0', size) == nullptr) {
    context.Add(FindingKind::kTextUnterminated, Unterminated(size));
  }
}

void NoteEnumNotSent(Reporting& context, const Segment& at, int32_t stored, int values) {
  context.Add(
      FindingKind::kEnumNotSent, at,
      "value " + std::to_string(stored) + " outside 1.." + std::to_string(values) + ": not sent");
}

void NoteCountBeyondCapacity(Reporting& context, const Segment& at, uint32_t count,
                             uint32_t capacity) {
  context.Add(FindingKind::kCountBeyondCapacity, at,
              "count " + std::to_string(count) + ", capacity " + std::to_string(capacity) + ": " +
                  std::to_string(static_cast<uint64_t>(count) - capacity) + " not sent");
}

void NoteDisplayUnitWithoutCode(Reporting& context, uint32_t unit, int32_t state, uint32_t units) {
  context.Push(Segment::Field("", "emStatus", 8));
  context.Add(FindingKind::kDisplayUnitWithoutCode, Segment::Index(unit),
              "state " + std::to_string(state) +
                  " has no code: the \"Status\" text ends here, so units " + std::to_string(unit) +
                  " to " + std::to_string(units - 1) + " are not sent");
  context.Pop();
}

// Both kinds of value.
#define GSC_NOTES_FOR(V)                                                          \
  template void NoteText(Reporting&, const Segment&, const V&, size_t);           \
  template void NoteInt(Reporting&, const V&);                                    \
  template void NoteBool(Reporting&, const V&);                                   \
  template void NoteReal(Reporting&, const V&);                                   \
  template void NoteScan(Reporting&, const V&, ScanResult, const char*);          \
  template void NoteMalformed(Reporting&, const Segment&, const V&, const char*); \
  template void NoteMalformed(Reporting&, const V&, const char*);
GSC_NOTES_FOR(Json::Value)
GSC_NOTES_FOR(TextValue)
#undef GSC_NOTES_FOR

}  // namespace gsc::codec
