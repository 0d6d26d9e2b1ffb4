// Zero-filled memory for the records the tool fills, their caller arrays and element buffers,
// all released together.
#ifndef GUIDESCREEN_CODEC_DESCRIBE_ARENA_H
#define GUIDESCREEN_CODEC_DESCRIBE_ARENA_H

#include <cstddef>
#include <vector>

namespace gsc::fields {

// Small blocks come from the heap. Large ones (element buffers, which are mostly room a caller
// never fills) are cut from big anonymous mappings whose pages cost nothing until written: a
// thousand programmes with 296 kB buffers in each of their windows hold only what was read.
class Arena {
 public:
  Arena() = default;
  // An arena that cuts every block from `storage` (`capacity` bytes, 16-byte aligned): memory a
  // caller owns, which outlives the arena. Allocate throws std::length_error past its end.
  Arena(unsigned char* storage, size_t capacity) : storage_(storage), storage_size_(capacity) {}
  Arena(const Arena&) = delete;
  Arena& operator=(const Arena&) = delete;
  ~Arena();

  // `bytes` zero bytes (at least one), aligned for any record.
  unsigned char* Allocate(size_t bytes);

  // The bytes given out so far, each block rounded up to 16: what a storage arena needs to give
  // out the same blocks.
  size_t used() const { return used_; }

 private:
  struct Block {
    void* base;
    size_t size;  // 0 for a heap block
  };
  unsigned char* Map(size_t bytes);

  std::vector<Block> blocks_;
  unsigned char* free_ = nullptr;  // the unused rest of the last mapping
  size_t free_size_ = 0;
  unsigned char* storage_ = nullptr;
  size_t storage_size_ = 0;
  size_t used_ = 0;
};

}  // namespace gsc::fields

#endif  // GUIDESCREEN_CODEC_DESCRIBE_ARENA_H
