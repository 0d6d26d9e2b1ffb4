// The record generator the fuzzers and benchmarks fill records with: from varied bytes it reaches
// every field of every table of every operation with the values that matter, lays out nothing
// its counts, capacities and lengths do not promise, writes nothing outside the memory it was
// given, and makes the same record from the same bytes; its plausible records are ones the codecs
// have nothing to report about.
#include <gtest/gtest.h>
#include <json/json.h>

#include <cmath>
#include <cstring>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "describe/field_access.h"
#include "describe/operations_table.h"
#include "describe/record_generator.h"
#include "guidescreen_codec.h"
#include "support/fixtures.h"

namespace {

using namespace gsc::fields;

constexpr unsigned char kGuard = 0xA5;
constexpr size_t kGuardBytes = 32;

// Blocks fenced by guard bytes, element buffers 4 but not 8 aligned as the fuzzers give them.
class GuardedMemory final : public Memory {
 public:
  unsigned char* Allocate(size_t bytes, bool elements) override {
    const size_t offset = elements ? 4 : 0;
    auto& block = blocks_.emplace_back();
    block.storage.assign(kGuardBytes + 16 + offset + bytes + kGuardBytes, kGuard);
    const auto base = reinterpret_cast<uintptr_t>(block.storage.data()) + kGuardBytes;
    block.data = reinterpret_cast<unsigned char*>((base + 15) / 16 * 16 + offset);
    block.size = bytes;
    std::memset(block.data, 0, bytes);
    return block.data;
  }
  bool Intact() const {
    for (const Block& b : blocks_) {
      for (const unsigned char* p = b.storage.data(); p < b.data; ++p)
        if (*p != kGuard) return false;
      for (const unsigned char* p = b.data + b.size; p < b.storage.data() + b.storage.size(); ++p)
        if (*p != kGuard) return false;
    }
    return true;
  }
  // The bytes given out at `at`, or 0 for an address that is no block's.
  size_t SizeAt(const unsigned char* at) const {
    for (const Block& b : blocks_)
      if (b.data == at) return b.size;
    return 0;
  }

 private:
  struct Block {
    std::vector<unsigned char> storage;
    unsigned char* data = nullptr;
    size_t size = 0;
  };
  std::vector<Block> blocks_;
};

// Varied inputs: empty, short, and long enough to fill a programme.
std::vector<std::vector<unsigned char>> Inputs(unsigned count) {
  std::mt19937 rng(7);
  std::vector<std::vector<unsigned char>> inputs(count);
  for (unsigned i = 0; i < count; ++i) {
    inputs[i].resize(i == 0 ? 0 : rng() % (i % 4 == 0 ? 40000 : 3000));
    for (unsigned char& b : inputs[i]) b = static_cast<unsigned char>(rng());
  }
  return inputs;
}

// What the walk over generated records saw.
struct Seen {
  std::set<const Field*> nonzero;  // fields with a byte other than zero
  std::set<std::string> shapes;    // value shapes met ("text unterminated", "real NaN", ...)
  std::vector<std::string> faults;
};

void Fault(Seen& seen, const std::string& what) {
  if (seen.faults.size() < 10) seen.faults.push_back(what);
}

void Walk(const RecordTable& table, const unsigned char* record, const GuardedMemory& memory,
          Seen& seen);

void Shapes(const Field& f, const unsigned char* at, Seen& seen) {
  switch (f.kind) {
    case Kind::kText:
    case Kind::kSecret: {
      const void* zero = std::memchr(at, '\0', f.size);
      seen.shapes.insert(!zero ? "text unterminated" : zero == at ? "text empty" : "text");
      break;
    }
    case Kind::kUnsigned:
    case Kind::kSigned: {
      const uint32_t v = Load<uint32_t>(at);
      if (v == 0 || v == 0xFFFFFFFFU || v == 0x80000000U || v == 0x7FFFFFFFU)
        seen.shapes.insert("number " + std::to_string(v));
      break;
    }
    case Kind::kReal: {
      const double v = Load<double>(at);
      if (std::isnan(v)) seen.shapes.insert("real NaN");
      if (std::isinf(v)) seen.shapes.insert(v > 0 ? "real +inf" : "real -inf");
      if (v == 0 && std::signbit(v)) seen.shapes.insert("real -0");
      if (std::fpclassify(v) == FP_SUBNORMAL) seen.shapes.insert("real subnormal");
      break;
    }
    case Kind::kBool:
      if (*at > 1) Fault(seen, std::string("bool byte other than 0 or 1 in ") + f.name);
      break;
    case Kind::kEnum: {
      const int32_t v = Load<int32_t>(at);
      int32_t top = 0;
      for (const Enumerator& e : f.enumeration->values) top = std::max(top, e.value);
      seen.shapes.insert(f.enumeration->NameOf(v) ? "enum named"
                         : v < 0                  ? "enum negative"
                         : v > top                ? "enum past the last"
                                                  : "enum gap");
      break;
    }
    default:
      break;
  }
}

void WalkElements(const RecordTable& table, const Field& f, const unsigned char* record,
                  const GuardedMemory& memory, Seen& seen) {
  const auto* buffer = Load<const unsigned char*>(record + f.offset);
  if (!buffer) return;
  const RecordTable& header = *f.record;
  const size_t allocated = memory.SizeAt(buffer);
  const uint32_t count = Number(table, record, f.count);
  const uint32_t length = Number(table, record, f.limit);
  if (length > allocated) Fault(seen, std::string(f.name) + ": length past the buffer");
  size_t used = 0;
  for (uint32_t e = 0; e < count; ++e) {
    const int tag = TagOf(header, buffer + used);
    const RecordTable* variant = VariantOf(header, tag);
    seen.shapes.insert(variant ? std::string("entry ") + variant->name : "entry of unknown kind");
    const size_t entry = header.size + (variant ? variant->size : 0);
    // The writers walk `count` entries trusting their headers.
    if (used + entry > allocated) return Fault(seen, std::string(f.name) + ": count past entries");
    Walk(header, buffer + used, memory, seen);
    if (variant) Walk(*variant, buffer + used + header.size, memory, seen);
    used += entry;
  }
  if (count > 0 && length < used) seen.shapes.insert("elements cut in the last entry");
  if (length > used) seen.shapes.insert("elements with room after them");
}

void Walk(const RecordTable& table, const unsigned char* record, const GuardedMemory& memory,
          Seen& seen) {
  for (const Field& f : table.fields) {
    const unsigned char* at = record + f.offset;
    for (size_t i = 0; i < f.size * f.extent; ++i)
      if (at[i] != 0) seen.nonzero.insert(&f);
    if (f.count && f.kind != Kind::kCallerArray && f.kind != Kind::kElements) {
      const uint32_t n = Number(table, record, f.count);
      seen.shapes.insert(n <= f.extent       ? "count within"
                         : n == f.extent + 1 ? "count one past"
                                             : "count far past");
    }
    for (uint32_t i = 0; i < f.extent; ++i) {
      Shapes(f, at + size_t{i} * f.size, seen);
      if (f.kind == Kind::kRecord) Walk(*f.record, at + size_t{i} * f.size, memory, seen);
    }
    if (f.kind == Kind::kCallerArray) {
      const auto* array = Load<const unsigned char*>(at);
      if (!array) {
        seen.shapes.insert("caller array null");
        continue;
      }
      // A count no capacity bounds is trusted: the records must be there.
      const uint32_t n = Number(table, record, f.limit ? f.limit : f.count);
      if (size_t{n} * f.record->size > memory.SizeAt(array))
        Fault(seen, std::string(f.name) + ": more records promised than laid");
      else
        for (uint32_t i = 0; i < n; ++i)
          Walk(*f.record, array + size_t{i} * f.record->size, memory, seen);
    } else if (f.kind == Kind::kElements) {
      WalkElements(table, f, record, memory, seen);
    }
  }
}

// Generates every operation's records from each input, walking what it made.
Seen GenerateAll(unsigned inputs, const Bounds& bounds = {}) {
  Seen seen;
  for (const auto& bytes : Inputs(inputs)) {
    for (const Operation& op : Operations()) {
      for (const RecordTable* table : {op.request, op.answer}) {
        GuardedMemory memory;
        ByteSource source(bytes.data(), bytes.size());
        unsigned char* record = memory.Allocate(table->size, false);
        Generate(*table, record, source, memory, bounds);
        if (!memory.Intact()) Fault(seen, std::string(table->name) + ": a guard byte changed");
        Walk(*table, record, memory, seen);
      }
    }
  }
  return seen;
}

TEST(RecordGenerator, ReachesEveryFieldOfEveryTableWithinTheMemoryItWasGiven) {
  const Seen seen = GenerateAll(48);
  EXPECT_EQ(seen.faults, std::vector<std::string>());
  for (const RecordTable* table : AllRecordTables())
    for (const Field& f : table->fields) {
      EXPECT_TRUE(seen.nonzero.count(&f)) << table->name << "." << f.name << " never written";
    }
}

TEST(RecordGenerator, MakesTheValuesThatMatterToTheCodecs) {
  const Seen seen = GenerateAll(48);
  std::vector<std::string> expected = {"text empty",
                                       "text",
                                       "text unterminated",
                                       "number 0",
                                       "number 4294967295",
                                       "number 2147483648",
                                       "number 2147483647",
                                       "real NaN",
                                       "real +inf",
                                       "real -inf",
                                       "real -0",
                                       "real subnormal",
                                       "enum named",
                                       "enum negative",
                                       "enum past the last",
                                       "count within",
                                       "count one past",
                                       "count far past",
                                       "caller array null",
                                       "entry of unknown kind",
                                       "elements cut in the last entry",
                                       "elements with room after them"};
  for (const Variant& v : *FindRecordTable("tagNET_ELEMENT_COMMON_INFO")->variants)
    expected.push_back(std::string("entry ") + v.record->name);
  for (const std::string& shape : expected) EXPECT_TRUE(seen.shapes.count(shape)) << shape;
}

TEST(RecordGenerator, MakesTheSameRecordFromTheSameBytes) {
  const ShowOptions everything{true};
  const auto inputs = Inputs(6);
  for (const Operation& op : Operations()) {
    SCOPED_TRACE(op.name);
    std::set<std::string> different;
    for (const auto& bytes : inputs) {
      std::string texts[2];
      for (std::string& text : texts) {
        Arena arena;
        ArenaMemory memory(arena);
        ByteSource source(bytes.data(), bytes.size());
        unsigned char* record = arena.Allocate(op.request->size);
        Generate(*op.request, record, source, memory);
        text = gsc::test::Compact(ToJson(*op.request, record, everything));
      }
      EXPECT_EQ(texts[0], texts[1]);
      different.insert(texts[0]);
    }
    if (op.request->fields.size() > 1) {
      EXPECT_GT(different.size(), 1U) << "other bytes, the same record";
    }
  }
}

TEST(RecordGenerator, AsciiTextsHoldPrintableBytesOnly) {
  Bounds ascii;
  ascii.ascii_texts = true;
  for (const auto& bytes : Inputs(8)) {
    Arena arena;
    ArenaMemory memory(arena);
    ByteSource source(bytes.data(), bytes.size());
    const RecordTable& table = *FindRecordTable("tagNET_CAPTURE_ELEMENT_INFO");
    unsigned char* record = arena.Allocate(table.size);
    Generate(table, record, source, memory, ascii);
    for (const Field& f : table.fields) {
      if (f.kind != Kind::kText && f.kind != Kind::kSecret) continue;
      const unsigned char* text = record + f.offset;
      for (size_t i = 0; i < f.size && text[i] != 0; ++i)
        ASSERT_TRUE(text[i] >= 0x20 && text[i] < 0x7F) << f.name << "[" << i << "]";
    }
  }
}

// ---- Plausible records -----------------------------------------------------------------------

TEST(RecordGenerator, PlausibleRecordsFillEveryShownFieldAndHonourTheCounts) {
  std::set<const Field*> nonzero;
  for (const Operation& op : Operations()) {
    for (const RecordTable* table : {op.request, op.answer}) {
      for (int seed : {1, 2, 3}) {
        GuardedMemory memory;
        unsigned char* record = memory.Allocate(table->size, false);
        GeneratePlausible(*table, record, memory, Plausible{seed, {}});
        Seen seen;
        Walk(*table, record, memory, seen);
        EXPECT_EQ(seen.faults, std::vector<std::string>()) << table->name;
        EXPECT_TRUE(memory.Intact()) << table->name;
        nonzero.insert(seen.nonzero.begin(), seen.nonzero.end());
      }
    }
  }
  for (const RecordTable* table : AllRecordTables())
    for (const Field& f : table->fields)
      if (f.kind != Kind::kHidden) {
        EXPECT_TRUE(nonzero.count(&f)) << table->name << "." << f.name;
      }

  tagNET_PROGRAMME_INFO programme{};
  Arena arena;
  ArenaMemory memory(arena);
  GeneratePlausible(*FindRecordTable("tagNET_PROGRAMME_INFO"), &programme, memory,
                    Plausible{5, {{"nWindowsNum", 3}, {"nElementsNum", 2}}});
  EXPECT_STREQ(programme.szProgrammeID, "ProgrammeID-5");
  EXPECT_EQ(programme.stuOrdinary.nWindowsNum, 3U);
  EXPECT_EQ(programme.stuOrdinary.stuWindows[2].nElementsNum, 2U);
  EXPECT_EQ(programme.stuOrdinary.stuWindows[3].pElementsBuf, nullptr) << "past the count";
}

// The benchmarks' requests and answers come from plausible records: a finding there would make
// them measure the reporting of a fault, not a read.
TEST(RecordGenerator, PlausibleRequestsAreWrittenAndReadBackWithoutFindings) {
  const std::pair<const char*, const char*> pairs[] = {
      {"SET_GUIDESCREEN_CFG", nullptr},
      {"ADD_ONE_PROGRAMME", "GET_PROGRAMME_BYID"},
      {"ADD_TIMER_PROGRAMMEPLAN", "GET_PROGRAMMEPLAN_BYID"},
      {"ADD_IMME_PROGRAMMEPLAN", "GET_PROGRAMMEPLAN_BYID"},
      {"SET_GD_STATUS", nullptr},
      {"DEL_PROGRAMMES", nullptr}};
  for (const auto& [writer, reader] : pairs) {
    SCOPED_TRACE(writer);
    const Operation& op = *FindOperation(writer);
    Arena arena;
    ArenaMemory memory(arena);
    unsigned char* record = arena.Allocate(op.request->size);
    GeneratePlausible(*op.request, record, memory, Plausible{9, {{"nNoteNum", 1}}});
    Json::Value params;
    gsc::Report report;
    ASSERT_TRUE(op.serialize(record, params, &report));
    EXPECT_TRUE(report.empty()) << report.str();
    if (!reader) continue;
    const Operation& back = *FindOperation(reader);
    Json::Value result;
    result[back.answer_keys] = params["info"];
    Receive(back, result, Room{32, 1 << 16}, &report);
    EXPECT_TRUE(report.empty()) << report.str();
  }
}

}  // namespace
