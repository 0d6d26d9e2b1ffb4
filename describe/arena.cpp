#include "describe/arena.h"

#include <sys/mman.h>

#include <cstdlib>
#include <cstring>
#include <new>
#include <stdexcept>

#if defined(__SANITIZE_ADDRESS__)
#define GSC_ARENA_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define GSC_ARENA_ASAN 1
#endif
#endif
#ifdef GSC_ARENA_ASAN
#include <sanitizer/asan_interface.h>
#endif

namespace gsc::fields {
namespace {

constexpr size_t kLargeBlock = size_t{64} << 10;  // from here on, blocks are mapped
constexpr size_t kMapping = size_t{64} << 20;     // the size of one mapping, at least
constexpr size_t kAlignment = 16;
// Between two mapped blocks, poisoned under AddressSanitizer so that an overrun is caught as on
// the heap.
#ifdef GSC_ARENA_ASAN
constexpr size_t kGap = 64;
#else
constexpr size_t kGap = 0;
#endif

size_t RoundUp(size_t bytes) {
  return (bytes + kAlignment - 1) / kAlignment * kAlignment;
}

}  // namespace

Arena::~Arena() {
  for (const Block& block : blocks_) {
    if (block.size == 0) {
      std::free(block.base);
    } else {
#ifdef GSC_ARENA_ASAN
      ASAN_UNPOISON_MEMORY_REGION(block.base, block.size);
#endif
      munmap(block.base, block.size);
    }
  }
}

unsigned char* Arena::Map(size_t bytes) {
  const size_t needed = RoundUp(bytes) + kGap;
  if (needed > free_size_) {
    const size_t size = needed > kMapping ? RoundUp(needed) : kMapping;
    void* base = mmap(nullptr, size, PROT_READ | PROT_WRITE,
                      MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (base == MAP_FAILED) throw std::bad_alloc();
    blocks_.push_back({base, size});
    free_ = static_cast<unsigned char*>(base);
    free_size_ = size;
#ifdef GSC_ARENA_ASAN
    ASAN_POISON_MEMORY_REGION(base, size);
#endif
  }
  unsigned char* block = free_;
  free_ += needed;
  free_size_ -= needed;
#ifdef GSC_ARENA_ASAN
  ASAN_UNPOISON_MEMORY_REGION(block, bytes);
#endif
  return block;
}

unsigned char* Arena::Allocate(size_t bytes) {
  const size_t rounded = RoundUp(bytes ? bytes : 1);
  if (storage_ != nullptr) {
    if (rounded > storage_size_ - used_) throw std::length_error("arena storage is full");
    unsigned char* block = storage_ + used_;
    std::memset(block, 0, rounded);
    used_ += rounded;
    return block;
  }
  used_ += rounded;
  if (bytes >= kLargeBlock) return Map(bytes);
  // Room for the block's entry before the block exists, so that a full vector cannot lose it;
  // grown by doubling, as push_back would.
  if (blocks_.size() == blocks_.capacity()) blocks_.reserve(2 * blocks_.size() + 16);
  // malloc promises only what the ABI's fundamental types need (8 bytes on ILP32 targets), so
  // the alignment is asked for; aligned_alloc wants a multiple of it as the size.
  void* block = std::aligned_alloc(kAlignment, RoundUp(bytes ? bytes : 1));
  if (!block) throw std::bad_alloc();
  std::memset(block, 0, RoundUp(bytes ? bytes : 1));
  blocks_.push_back({block, 0});
  return static_cast<unsigned char*>(block);
}

}  // namespace gsc::fields
