#include "programme/element_buffer.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "codec/frame.h"
#include "describe/enumerations.h"
#include "programme/element_common.h"
#include "programme/programme_codecs.h"

namespace gsc::programme {
namespace {

// The bytes of an element record a reader may write: all before its notes, and the notes an
// answer's "Note" array reaches. (The notes are most of the record, and most elements have none.)
struct TouchedBytes {
  size_t head;
  size_t notesEnd;
};

template <typename Record, typename V>
TouchedBytes Touched(const V& json) {
  constexpr size_t head = offsetof(Record, stuNote);
  uint32_t notes = 0;
  if (json.isObject()) {
    const auto& list = codec::Member(json, "Note");
    if (list.isArray()) notes = std::min<uint32_t>(list.size(), kMaxNotes);
  }
  return {head, head + notes * sizeof(tagNET_GUIDESCREEN_NOTE_INFO)};
}

// A record at a position of the buffer that does not suit its alignment (a record after a
// 132-byte header may sit 4 but not 8 bytes aligned), read through aligned storage: the bytes
// the reader may write are copied in, and copied back on every way out, so that a reader stopped
// by an exception leaves the buffer as partly filled as a reader working in place would.
template <typename Record>
class StagedRecord {
 public:
  StagedRecord(unsigned char* at, TouchedBytes touched) : at_(at), touched_(touched) {
    std::memcpy(&record_, at_, touched_.head);
    Copy(&record_, at_);
  }
  ~StagedRecord() {
    std::memcpy(at_, &record_, touched_.head);
    Copy(at_, &record_);
  }
  StagedRecord(const StagedRecord&) = delete;
  StagedRecord& operator=(const StagedRecord&) = delete;
  StagedRecord(StagedRecord&&) = delete;
  StagedRecord& operator=(StagedRecord&&) = delete;
  Record& get() { return record_; }

 private:
  void Copy(void* to, const void* from) const {
    const size_t notes = offsetof(Record, stuNote);
    if (touched_.notesEnd > notes) {
      std::memcpy(static_cast<unsigned char*>(to) + notes,
                  static_cast<const unsigned char*>(from) + notes, touched_.notesEnd - notes);
    }
  }

  unsigned char* at_;
  TouchedBytes touched_;
  Record record_;
};

// A record is read where it lies when its position suits its type, which is every other entry
// of a buffer of records of even size that starts 8-byte aligned.
template <typename Record, typename V, typename C>
void ParseAt(const V& json, unsigned char* at, C& context) {
  // Alignment is a property of the address as a number; the caller's buffer holds the record.
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast)
  if (reinterpret_cast<uintptr_t>(at) % alignof(Record) == 0) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast)
    ReadElement(json, *reinterpret_cast<Record*>(at), context);
    return;
  }
  StagedRecord<Record> record(at, Touched<Record>(json));
  ReadElement(json, record.get(), context);
}

// Reads `json` into the record of `kind` (one of the five with a record) at `at`.
template <typename V, typename C>
void ParseEntry(EM_ELEMENT_TYPE kind, const V& json, unsigned char* at, C& context) {
  switch (kind) {
    case EM_ELEMENT_TYPE_VIDEO:
      return ParseAt<tagNET_VIDEO_ELEMENT_INFO>(json, at, context);
    case EM_ELEMENT_TYPE_PICTURE:
      return ParseAt<tagNET_PICTURE_ELEMENT_INFO>(json, at, context);
    case EM_ELEMENT_TYPE_TEXT:
      return ParseAt<tagNET_TEXT_ELEMENT_INFO>(json, at, context);
    case EM_ELEMENT_TYPE_PLACEHOLDER:
      return ParseAt<tagNET_PLACEHOLDER_ELEMENT_INFO>(json, at, context);
    case EM_ELEMENT_TYPE_CAPTURE:
      return ParseAt<tagNET_CAPTURE_ELEMENT_INFO>(json, at, context);
    default:
      return;
  }
}

template <typename C, typename Record>
void PacketAt(const unsigned char* at, const codec::Out<C>& json) {
  Record record;
  std::memcpy(&record, at, sizeof record);
  PacketElement(record, json);
}

// One element kind: the size of its record and its writer working on a position in the buffer.
template <typename C>
struct ElementKind {
  size_t recordSize;
  void (*packetAt)(const unsigned char* at, const codec::Out<C>& json);
};

template <typename C, typename Record>
constexpr ElementKind<C> KindOf() {
  return {sizeof(Record), &PacketAt<C, Record>};
}

// The kinds with a record: EM_ELEMENT_TYPE 1 to 5.
constexpr int kKindCount = fields::kElementTypeEnum.JsonValues();

// The kinds' table in one context, indexed by EM_ELEMENT_TYPE - 1.
template <typename C>
const ElementKind<C>* KindTable() {
  static constexpr ElementKind<C> kKinds[] = {
      KindOf<C, tagNET_VIDEO_ELEMENT_INFO>(),   KindOf<C, tagNET_PICTURE_ELEMENT_INFO>(),
      KindOf<C, tagNET_TEXT_ELEMENT_INFO>(),    KindOf<C, tagNET_PLACEHOLDER_ELEMENT_INFO>(),
      KindOf<C, tagNET_CAPTURE_ELEMENT_INFO>(),
  };
  static_assert(sizeof kKinds / sizeof kKinds[0] == kKindCount, "one entry per kind");
  return kKinds;
}

// The kind's entry of the table, or null for a kind without a record.
template <typename C>
const ElementKind<C>* FindKind(EM_ELEMENT_TYPE kind) {
  // Range-tested before subtracting: a header may hold any int, INT_MIN included.
  const int value = static_cast<int>(kind);
  if (value < 1 || value > kKindCount) return nullptr;
  return KindTable<C>() + (value - 1);
}

// The header's kind is its first 4 bytes; the 128 reserved bytes after it belong to the caller.
static_assert(offsetof(tagNET_ELEMENT_COMMON_INFO, emElementType) == 0, "kind leads the header");

EM_ELEMENT_TYPE LoadKind(const unsigned char* header) {
  EM_ELEMENT_TYPE kind = EM_ELEMENT_TYPE_UNKNOWN;
  std::memcpy(&kind, header, sizeof kind);
  return kind;
}

void StoreKind(unsigned char* header, EM_ELEMENT_TYPE kind) {
  std::memcpy(header, &kind, sizeof kind);
}

// A listing's element buffers are many megabytes the caller has not touched lately, and an entry
// is written in a few fields spread over its first kilobyte (the header, the record's head, its
// first note). Asking for the next entry's lines while this one is read overlaps their misses
// with the reading instead of taking them one store at a time. `room` is what the buffer holds
// from `next` on.
void PrefetchEntryAt(const unsigned char* next, size_t room) {
  constexpr size_t kSpan = 1024;
  constexpr size_t kLine = 64;
  if (room < kSpan) return;
  for (size_t line = 0; line < kSpan; line += kLine) __builtin_prefetch(next + line, 1);
}

}  // namespace

size_t ElementEntrySize(EM_ELEMENT_TYPE kind) {
  const ElementKind<codec::Silent>* known = FindKind<codec::Silent>(kind);
  return kElementHeaderSize + (known != nullptr ? known->recordSize : 0);
}

EM_ELEMENT_TYPE ElementKindOfType(int type) {
  return static_cast<EM_ELEMENT_TYPE>(type >= 0 && type < kKindCount ? type + 1 : 0);
}

template <typename V, typename C>
uint32_t ReadElementList(const V& elements, unsigned char* buffer, uint32_t length, C& context) {
  const size_t capacity = buffer != nullptr ? length : 0;
  size_t used = 0;
  uint32_t stored = 0;
  size_t needed = 0;
  const Json::ArrayIndex size = elements.size();
  codec::ArrayCursor cursor(elements, size);
  for (Json::ArrayIndex j = 0; j < size; ++j) {
    codec::Step<C> step(context, codec::Segment::Index(j));
    const auto& element = codec::ObjectOrNull(context, cursor.At(j));
    const int type =
        codec::ReadInt(context, codec::KeySegment("Type"), codec::Member(element, "Type"));
    const EM_ELEMENT_TYPE kind = ElementKindOfType(type);
    const size_t entry = ElementEntrySize(kind);
    // used never exceeds capacity, so the room left is computed without wrapping.
    if (entry > capacity - used) {
      needed = entry;
      break;
    }
    unsigned char* header = buffer + used;
    PrefetchEntryAt(header + entry, capacity - used - entry);
    StoreKind(header, kind);
    if (FindKind<C>(kind) != nullptr) {
      ParseEntry(kind, element, header + kElementHeaderSize, context);
    } else if constexpr (C::kReporting) {
      codec::NoteUnknownElementType(context, type);
    }
    used += entry;
    ++stored;
  }
  if constexpr (C::kReporting) {
    if (stored < size) {
      codec::NoteElementBufferFull(context, size, stored, needed, capacity - used);
    }
  }
  return stored;
}

uint32_t ReadElementList(const Json::Value& elements, unsigned char* buffer, uint32_t length) {
  codec::Silent context{};
  return ReadElementList(elements, buffer, length, context);
}

template <typename C>
void WriteElementList(const unsigned char* buffer, uint32_t count, const codec::Out<C>& elements) {
  if (buffer == nullptr) return;
  codec::Step<C> step(elements.context, codec::FieldNamed("pElementsBuf"));
  const unsigned char* header = buffer;
  for (uint32_t j = 0; j < count; ++j) {
    const EM_ELEMENT_TYPE kind = LoadKind(header);
    if (const ElementKind<C>* known = FindKind<C>(kind)) {
      codec::Step<C> entry(elements.context, codec::Segment::Index(j));
      known->packetAt(header + kElementHeaderSize,
                      codec::Out<C>{elements.json[j], elements.context});
    } else if constexpr (C::kReporting) {
      codec::NoteElementKindSkipped(elements.context, j, static_cast<int32_t>(kind));
    }
    header += ElementEntrySize(kind);
  }
}

void WriteElementList(const unsigned char* buffer, uint32_t count, Json::Value& elements) {
  codec::Silent context{};
  WriteElementList(buffer, count, codec::Out<codec::Silent>{elements, context});
}

template uint32_t ReadElementList(const Json::Value&, unsigned char*, uint32_t, codec::Silent&);
template uint32_t ReadElementList(const codec::TextValue&, unsigned char*, uint32_t,
                                  codec::Silent&);
template uint32_t ReadElementList(const Json::Value&, unsigned char*, uint32_t, codec::Reporting&);
template uint32_t ReadElementList(const codec::TextValue&, unsigned char*, uint32_t,
                                  codec::Reporting&);
template void WriteElementList(const unsigned char*, uint32_t, const codec::Out<codec::Silent>&);
template void WriteElementList(const unsigned char*, uint32_t, const codec::Out<codec::Reporting>&);

}  // namespace gsc::programme
