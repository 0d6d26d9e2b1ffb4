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

template <typename Record, void (*Parse)(const Json::Value&, Record*)>
void ParseAt(const Json::Value& json, unsigned char* at) {
  BufferedRecord<Record> record(at);
  Parse(json, record.get());
}

template <typename Record, void (*Packet)(const Record*, Json::Value&)>
void PacketAt(const unsigned char* at, Json::Value& json) {
  Record record;
  std::memcpy(&record, at, sizeof record);
  Packet(&record, json);
}

// One element kind: the size of its record and its codecs working on a position in the buffer.
struct ElementKind {
  size_t recordSize;
  void (*parseAt)(const Json::Value& json, unsigned char* at);
  void (*packetAt)(const unsigned char* at, Json::Value& json);
};

template <typename Record, void (*Parse)(const Json::Value&, Record*),
          void (*Packet)(const Record*, Json::Value&)>
constexpr ElementKind KindOf() {
  return {sizeof(Record), &ParseAt<Record, Parse>, &PacketAt<Record, Packet>};
}

// Indexed by EM_ELEMENT_TYPE - 1.
constexpr ElementKind kKinds[] = {
    KindOf<tagNET_VIDEO_ELEMENT_INFO, ParseVideoElement, PacketVideoElement>(),
    KindOf<tagNET_PICTURE_ELEMENT_INFO, ParsePictureElement, PacketPictureElement>(),
    KindOf<tagNET_TEXT_ELEMENT_INFO, ParseTextElement, PacketTextElement>(),
    KindOf<tagNET_PLACEHOLDER_ELEMENT_INFO, ParsePlaceHolderElement, PacketPlaceHolderElement>(),
    KindOf<tagNET_CAPTURE_ELEMENT_INFO, ParseCaptureElement, PacketCaptureElement>(),
};
constexpr int kKindCount = static_cast<int>(sizeof kKinds / sizeof kKinds[0]);

// The kind's entry of the table, or null for a kind without a record.
const ElementKind* FindKind(EM_ELEMENT_TYPE kind) {
  // Range-tested before subtracting: a header may hold any int, INT_MIN included.
  const int value = static_cast<int>(kind);
  return value >= 1 && value <= kKindCount ? &kKinds[value - 1] : nullptr;
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
  const ElementKind* known = FindKind(kind);
  return kElementHeaderSize + (known != nullptr ? known->recordSize : 0);
}

EM_ELEMENT_TYPE ElementKindOfType(int type) {
  return static_cast<EM_ELEMENT_TYPE>(type >= 0 && type < kKindCount ? type + 1 : 0);
}

uint32_t ReadElementList(const Json::Value& elements, unsigned char* buffer, uint32_t length) {
  const size_t capacity = buffer != nullptr ? length : 0;
  size_t used = 0;
  uint32_t stored = 0;
  for (Json::ArrayIndex j = 0; j < elements.size(); ++j) {
    const Json::Value& element = elements[j];
    const EM_ELEMENT_TYPE kind = ElementKindOfType(codec::Member(element, "Type").asInt());
    const size_t entry = ElementEntrySize(kind);
    // used never exceeds capacity, so the room left is computed without wrapping.
    if (entry > capacity - used) break;
    unsigned char* header = buffer + used;
    StoreKind(header, kind);
    if (const ElementKind* known = FindKind(kind))
      known->parseAt(element, header + kElementHeaderSize);
    used += entry;
    ++stored;
  }
  return stored;
}

void WriteElementList(const unsigned char* buffer, uint32_t count, Json::Value& elements) {
  if (buffer == nullptr) return;
  const unsigned char* header = buffer;
  for (uint32_t j = 0; j < count; ++j) {
    const EM_ELEMENT_TYPE kind = LoadKind(header);
    if (const ElementKind* known = FindKind(kind))
      known->packetAt(header + kElementHeaderSize, elements[j]);
    header += ElementEntrySize(kind);
  }
}

}  // namespace gsc::programme
