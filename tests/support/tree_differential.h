// The text readers against the tree path: for an answer text, parsing it with JsonCpp and
// calling deserialize must leave the same bytes, return value, exception and findings as
// deserialize_json on the text itself, plain and reporting, stopping and skipping. Caller memory
// is filled with one byte before each call and ends in guard bytes.
#ifndef GUIDESCREEN_CODEC_TESTS_SUPPORT_TREE_DIFFERENTIAL_H
#define GUIDESCREEN_CODEC_TESTS_SUPPORT_TREE_DIFFERENTIAL_H

#include <gtest/gtest.h>
#include <json/json.h>

#include <cstring>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "guidescreen_codec/json_text.h"
#include "guidescreen_codec/operations.h"
#include "support/fixtures.h"

namespace gsc::test {

// Caller memory an output record reaches: the record, its arrays and element buffers, each
// followed by guard bytes, all filled with one byte before each call.
class CallerMemory {
 public:
  template <typename T>
  T* Add(size_t count = 1) {
    blocks_.push_back(std::make_unique<GuardedBytes>(count * sizeof(T)));
    return reinterpret_cast<T*>(blocks_.back()->data());
  }
  // An element buffer, 4 but not 8 bytes aligned as a record after a header would be.
  unsigned char* AddBuffer(size_t size) {
    blocks_.push_back(std::make_unique<GuardedBytes>(size, 4));
    return blocks_.back()->data();
  }
  void Fill(unsigned char byte) {
    for (auto& block : blocks_) std::memset(block->data(), byte, block->size());
  }
  std::string Snapshot() const {
    std::string bytes;
    for (const auto& block : blocks_) {
      EXPECT_TRUE(block->GuardsIntact());
      bytes.append(reinterpret_cast<const char*>(block->data()), block->size());
    }
    return bytes;
  }

 private:
  std::vector<std::unique_ptr<GuardedBytes>> blocks_;
};

// Attaches what the record points to: 3 entries per caller array, element buffers of 3000 bytes.
inline void Attach(tagNET_OUT_GET_ALL_PROGRAMMES& out, CallerMemory& memory) {
  out.nMaxInfosNum = 3;
  out.pstuInfos = memory.Add<tagNET_PROGRAMME_INFO>(3);
}
inline void Attach(tagNET_OUT_GET_ALL_GUIDESCREEN_CFG& out, CallerMemory& memory) {
  out.nMaxInfosNum = 3;
  out.pstuInfos = memory.Add<tagNET_GUIDESCREEN_ATTRIBUTE_INFO>(3);
}
inline void Attach(tagNET_OUT_GET_ALL_PROGRAMMEPLANS& out, CallerMemory& memory) {
  out.nMaxPlanNum = 2;
  out.pstuImmePlans = memory.Add<tagNET_IMMEDIATELY_PLAN_INFO>(2);
  out.pstuTimerPlans = memory.Add<tagNET_TIMER_PLAN_INFO>(2);
}
template <typename Out>
void Attach(Out& /*out*/, CallerMemory& /*memory*/) {}

inline void AttachBuffers(tagNET_PROGRAMME_INFO& programme, CallerMemory& memory) {
  for (auto& window : programme.stuOrdinary.stuWindows) {
    window.nElementsBufLen = 3000;
    window.pElementsBuf = memory.AddBuffer(window.nElementsBufLen);
  }
}

// Fills the caller memory with `fill` and attaches arrays and buffers again (the fill wipes the
// pointers), so that both paths start from the same bytes.
template <typename Out>
class Caller {
 public:
  Caller() : out_(memory_.Add<Out>()) {
    Attach(*out_, memory_);
    // Element buffers are attached once: their addresses then stay the same for every call.
    if constexpr (std::is_same_v<Out, tagNET_OUT_GET_ALL_PROGRAMMES>) {
      for (uint32_t i = 0; i < out_->nMaxInfosNum; ++i) AttachBuffers(out_->pstuInfos[i], memory_);
    }
    if constexpr (std::is_same_v<Out, tagNET_OUT_GET_PROGRAMME_BYID>) {
      AttachBuffers(out_->stuProgramme, memory_);
    }
    pointers_ = Pointers();
  }

  Out& Reset(unsigned char fill) {
    memory_.Fill(fill);
    Restore();
    return *out_;
  }
  std::string Snapshot() const { return memory_.Snapshot(); }

 private:
  // The pointer fields the fill overwrote, saved after attaching and written back after a fill.
  std::vector<std::pair<void*, std::vector<unsigned char>>> Pointers() {
    std::vector<std::pair<void*, std::vector<unsigned char>>> saved;
    auto save = [&](void* field, size_t size) {
      const auto* bytes = static_cast<const unsigned char*>(field);
      saved.emplace_back(field, std::vector<unsigned char>(bytes, bytes + size));
    };
    if constexpr (std::is_same_v<Out, tagNET_OUT_GET_ALL_PROGRAMMES>) {
      save(out_, sizeof *out_);
      for (uint32_t i = 0; i < out_->nMaxInfosNum; ++i) SaveWindows(out_->pstuInfos[i], save);
    } else if constexpr (std::is_same_v<Out, tagNET_OUT_GET_PROGRAMME_BYID>) {
      SaveWindows(out_->stuProgramme, save);
    } else if constexpr (std::is_same_v<Out, tagNET_OUT_GET_ALL_GUIDESCREEN_CFG> ||
                         std::is_same_v<Out, tagNET_OUT_GET_ALL_PROGRAMMEPLANS>) {
      save(out_, sizeof *out_);
    }
    return saved;
  }
  template <typename Save>
  static void SaveWindows(tagNET_PROGRAMME_INFO& programme, Save save) {
    for (auto& window : programme.stuOrdinary.stuWindows) {
      save(&window.pElementsBuf, sizeof window.pElementsBuf);
      save(&window.nElementsBufLen, sizeof window.nElementsBufLen);
    }
  }
  void Restore() {
    for (const auto& [field, bytes] : pointers_) std::memcpy(field, bytes.data(), bytes.size());
  }

  CallerMemory memory_;
  Out* out_;
  std::vector<std::pair<void*, std::vector<unsigned char>>> pointers_;
};

// JsonCpp's tree of `text`, parsed as a caller of the tree path parses it. A text JsonCpp refuses
// (or throws on, as for nesting beyond its limit) fails the test: there is no tree to compare.
inline bool ParseWithJsonCpp(const std::string& text, Json::Value& tree) {
  Json::CharReaderBuilder builder;
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  std::string errors;
  try {
    if (reader->parse(text.data(), text.data() + text.size(), &tree, &errors)) return true;
  } catch (const Json::Exception& e) {
    errors = e.what();
  }
  ADD_FAILURE() << "JsonCpp refuses the text: " << errors;
  return false;
}

struct Outcome {
  std::string bytes;
  bool returned = false;
  std::string thrown;
  std::string findings;
};

// Both paths on `text`, from caller memory filled with `fill`, in every mode.
template <typename Out>
void ExpectSameAsTree(const std::string& text, unsigned char fill = 0) {
  SCOPED_TRACE(text.substr(0, 200));
  Json::Value tree;
  if (!ParseWithJsonCpp(text, tree)) return;
  Caller<Out> caller;
  auto both = [&](const char* mode, auto viaTree, auto viaText) {
    SCOPED_TRACE(mode);
    Outcome expected;
    try {
      expected.returned = viaTree(caller.Reset(fill));
    } catch (const Json::Exception& e) {
      expected.thrown = e.what();
    }
    expected.bytes = caller.Snapshot();
    Outcome actual;
    try {
      actual.returned = viaText(caller.Reset(fill));
    } catch (const Json::Exception& e) {
      actual.thrown = e.what();
    }
    actual.bytes = caller.Snapshot();
    EXPECT_EQ(expected.returned, actual.returned);
    EXPECT_EQ(expected.thrown, actual.thrown);
    EXPECT_TRUE(expected.bytes == actual.bytes) << "the records differ";
  };
  both(
      "plain", [&](Out& out) { return deserialize(tree, out); },
      [&](Out& out) { return deserialize_json(text, out); });
  for (const OnFailure onFailure : {OnFailure::kStop, OnFailure::kSkip}) {
    Report viaTree(onFailure);
    Report viaText(onFailure);
    both(
        onFailure == OnFailure::kStop ? "reporting, stopping" : "reporting, skipping",
        [&](Out& out) { return deserialize(tree, out, viaTree); },
        [&](Out& out) { return deserialize_json(text, out, viaText); });
    EXPECT_EQ(viaTree.str(), viaText.str());
  }
}

}  // namespace gsc::test

#endif  // GUIDESCREEN_CODEC_TESTS_SUPPORT_TREE_DIFFERENTIAL_H
