#include "programme/element_buffer.h"

#include <cstring>

#include "codec/frame.h"
#include "programme/programme_codecs.h"

namespace gsc::programme {
namespace {

// A record of the buffer, copied into aligned storage for the life of this object and copied
// back when it ends. The copy back runs on every way out, so a reader stopped by an exception
// leaves the buffer as partly filled as a reader working in place would.
template <typename Record>
class BufferedRecord {
 public:
  explicit BufferedRecord(unsigned char* at) : at_(at) {
    std::memcpy(&record_, at_, sizeof record_);
  }
  ~BufferedRecord() { std::memcpy(at_, &record_, sizeof record_); }
  BufferedRecord(const BufferedRecord&) = delete;
  BufferedRecord& operator=(const BufferedRecord&) = delete;
  BufferedRecord(BufferedRecord&&) = delete;
  BufferedRecord& operator=(BufferedRecord&&) = delete;
  Record* get() { return &record_; }

 private:
  unsigned char* at_;
  Record record_;
};

template <typename Record, typename V, typename C>
void ParseAt(const V& json, unsigned char* at, C& context) {
  BufferedRecord<Record> record(at);
  ReadElement(json, *record.get(), context);
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
constexpr int kKindCount = 5;

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
