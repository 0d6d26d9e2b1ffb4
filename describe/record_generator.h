// Records made from the description alone: every field of any record table filled by its kind,
// either from a string of bytes (the fuzzers: edge values, texts without terminators, counts past
// their arrays, element entries of unknown kinds) or with plausible values from a seed (the
// benchmarks). A field or an operation added to the tables is generated everywhere at once.
#ifndef GUIDESCREEN_CODEC_DESCRIBE_RECORD_GENERATOR_H
#define GUIDESCREEN_CODEC_DESCRIBE_RECORD_GENERATOR_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "describe/arena.h"
#include "describe/field_table.h"

namespace gsc::fields {

// The choices of a generator, taken from the front of a byte string. Past its end every byte
// reads as zero, so any bytes (none included) make a record, and the same bytes the same record.
class ByteSource {
 public:
  ByteSource(const void* data, size_t size)
      : data_(static_cast<const unsigned char*>(data)), size_(size) {}

  // A number below `n` (at least 1), from the fewest bytes that hold n - 1.
  uint32_t Below(uint32_t n);
  bool Bool() { return Below(2) == 1; }
  uint32_t Word();
  uint64_t Wide();
  size_t remaining() const { return size_ - used_; }

 private:
  uint64_t Take(unsigned bytes);
  const unsigned char* data_;
  size_t size_;
  size_t used_ = 0;
};

// Memory the generator lays caller arrays and element buffers in. It belongs to the caller, who
// keeps it as long as the record; the generator writes nothing past the bytes it asked for.
class Memory {
 public:
  virtual ~Memory() = default;
  // `bytes` bytes (none is fine) for a caller array, aligned for any record, or with `elements`
  // for an element buffer, at any address (entries are only ever copied in and out).
  virtual unsigned char* Allocate(size_t bytes, bool elements) = 0;
};

class ArenaMemory final : public Memory {
 public:
  explicit ArenaMemory(Arena& arena) : arena_(arena) {}
  unsigned char* Allocate(size_t bytes, bool) override { return arena_.Allocate(bytes); }

 private:
  Arena& arena_;
};

// What one generated record may hold at most, to keep it cheap.
struct Bounds {
  uint32_t caller_array = 3;  // records in a caller array
  uint32_t entries = 4;       // entries in an element buffer
  bool ascii_texts = false;   // texts of printable ASCII only, so that JSON carries them unchanged
};

// Fills every field of the record at `record` (whatever it held) from `source`, by its kind:
//   texts: empty, terminated at any length, or filling the field without a terminator;
//   numbers: small, at the edges of their type, or any; reals also NaN, infinities, -0 and
//     subnormals; booleans 0 or 1 only (any other byte in a bool is undefined behaviour);
//   enumerations: an enumerator, 0, past the last, negative or any;
//   counts of fixed arrays: within the extent, one past or far past it;
//   caller arrays: null with any count, or as many records as the count says where no capacity
//     field bounds it (the codecs trust such a count), otherwise as many as the capacity says;
//   element buffers: null with any count and length, or entries of every kind, unknown ones
//     included, laid by the library's gsc_element_append, with a count no higher than the
//     entries laid (the writers trust it) and a length that now and then cuts the last one short;
//   reserved bytes: one byte repeated.
// Records past the count of their array are filled too, but their pointers are null: nothing that
// honours the count follows them. Every pointer points into memory from `memory`, of exactly the
// bytes the record's counts, capacities and lengths promise.
void Generate(const RecordTable& table, void* record, ByteSource& source, Memory& memory,
              const Bounds& bounds = {});

// Plausible values, the same for the same seed: texts "<Name>-<seed>" repeated to an eighth of
// their field, numbers from 1 to 12 (valid as months, days and hours), enumerators other than the
// first ("not set"), element kinds in turn, every array full and every caller array or element
// buffer of one entry, unless `counts` names the count field (by its member name). Records past
// a count stay as they were, reserved bytes too.
struct Plausible {
  int seed = 0;
  std::vector<std::pair<std::string, uint32_t>> counts;
};
void GeneratePlausible(const RecordTable& table, void* record, Memory& memory,
                       const Plausible& plausible);

// Every record table reachable from the operations (their records, nested records, caller arrays
// and element entries), each once, in the order first met.
const std::vector<const RecordTable*>& AllRecordTables();
// The table of the record type `name` ("tagNET_GUIDESCREEN_TEXT_INFO"), or nullptr.
const RecordTable* FindRecordTable(const std::string& name);

}  // namespace gsc::fields

#endif  // GUIDESCREEN_CODEC_DESCRIBE_RECORD_GENERATOR_H
