// Shared test fixtures: JSON literals, compact text, and caller memory with guard bytes.
#ifndef GUIDESCREEN_CODEC_TESTS_SUPPORT_FIXTURES_H
#define GUIDESCREEN_CODEC_TESTS_SUPPORT_FIXTURES_H

#include <gtest/gtest.h>
#include <json/json.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <string>

namespace gsc::test {

// Parses a JSON literal written in a test; a typo fails the test loudly.
inline Json::Value J(const std::string& text) {
  Json::CharReaderBuilder builder;
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  Json::Value value;
  std::string errors;
  if (!reader->parse(text.data(), text.data() + text.size(), &value, &errors)) {
    ADD_FAILURE() << "bad JSON literal: " << errors << "\n" << text;
  }
  return value;
}

// One-line JSON text, for comparing written requests with expected literals.
inline std::string Compact(const Json::Value& value) {
  Json::StreamWriterBuilder builder;
  builder["indentation"] = "";
  return Json::writeString(builder, value);
}

// Expects `actual` to equal the JSON literal `expected` (compared as values, printed as text).
#define EXPECT_JSON_EQ(expected, actual) \
  EXPECT_EQ(::gsc::test::Compact(::gsc::test::J(expected)), ::gsc::test::Compact(actual))

constexpr unsigned char kGuardByte = 0xA5;
constexpr size_t kGuardBytes = 64;

// Caller memory of `size` bytes starting `offset` bytes after a 16-byte aligned address, followed
// by guard bytes. An offset of 4 gives an address that is 4 but not 8 aligned, like a record that
// follows an element header.
class GuardedBytes {
 public:
  explicit GuardedBytes(size_t size, size_t offset = 0, unsigned char fill = 0)
      : size_(size), offset_(offset), storage_(new (std::align_val_t{16}) unsigned char[Total()]) {
    std::memset(storage_.get(), kGuardByte, Total());
    std::memset(data(), fill, size_);
  }
  unsigned char* data() { return storage_.get() + offset_; }
  size_t size() const { return size_; }
  // True while no byte before or after the caller's range has changed.
  bool GuardsIntact() const {
    for (size_t i = 0; i < offset_; ++i)
      if (storage_[i] != kGuardByte) return false;
    for (size_t i = offset_ + size_; i < Total(); ++i)
      if (storage_[i] != kGuardByte) return false;
    return true;
  }

 private:
  struct AlignedDelete {
    void operator()(unsigned char* p) const { ::operator delete[](p, std::align_val_t{16}); }
  };
  size_t Total() const { return offset_ + size_ + kGuardBytes; }
  size_t size_;
  size_t offset_;
  std::unique_ptr<unsigned char[], AlignedDelete> storage_;
};

// A caller's array of `count` zero-filled records followed by guard bytes.
template <typename Record>
class GuardedArray {
 public:
  explicit GuardedArray(size_t count) : count_(count), bytes_(count * sizeof(Record)) {}
  Record* data() { return reinterpret_cast<Record*>(bytes_.data()); }
  Record& operator[](size_t i) { return data()[i]; }
  size_t size() const { return count_; }
  bool GuardsIntact() const { return bytes_.GuardsIntact(); }

 private:
  size_t count_;
  GuardedBytes bytes_;
};

// Copies a C text into a fixed field, cut to fit.
template <size_t N>
void SetText(char (&field)[N], const std::string& text) {
  const size_t n = text.size() < N - 1 ? text.size() : N - 1;
  std::memcpy(field, text.data(), n);
  field[n] = '\0';
}

}  // namespace gsc::test

#endif  // GUIDESCREEN_CODEC_TESTS_SUPPORT_FIXTURES_H
