// Representative request records and answer trees for the benchmarks, made in code: records are
// filled with plausible values from their description (every field), and answers are what the
// writers make of them, sent through JSON text once so that the reader sees a tree as the transport
// layer would parse it.
#ifndef GUIDESCREEN_CODEC_BENCH_BODIES_H
#define GUIDESCREEN_CODEC_BENCH_BODIES_H

#include <json/json.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "guidescreen_codec/operations.h"

namespace gsc::bench {

// Caller memory for records too large for the stack, zero-filled, never moved.
template <typename Record>
class Records {
 public:
  explicit Records(size_t count) : count_(count), data_(new Record[count]()) {}
  Record* data() { return data_.get(); }
  Record& operator[](size_t i) { return data_[i]; }
  size_t size() const { return count_; }

 private:
  size_t count_;
  std::unique_ptr<Record[]> data_;
};

// Bytes a window's element buffer needs for `elements` entries of any kind.
size_t ElementBufferSize(uint32_t elements);

// A programme with `windows` windows of `elements` elements of mixed kinds each, its element
// buffers taken from `buffers` (one per window, appended).
void FillProgramme(tagNET_PROGRAMME_INFO& programme, int seed, uint32_t windows, uint32_t elements,
                   std::vector<std::vector<unsigned char>>& buffers);

// A screen with every list full.
void FillScreen(tagNET_GUIDESCREEN_ATTRIBUTE_INFO& screen, int seed);

void FillImmePlan(tagNET_IMMEDIATELY_PLAN_INFO& plan, int seed);
// A timer plan with `programmes` programmes and a full play-date list.
void FillTimerPlan(tagNET_TIMER_PLAN_INFO& plan, int seed, uint32_t programmes);

// Compact JSON text and its parse, as the benchmarks' baselines use them.
std::string ToText(const Json::Value& value);
Json::Value FromText(const std::string& text);

// Answers of the get-all readers: "infos" with `members` records.
Json::Value AllProgrammesAnswer(uint32_t members, uint32_t windows, uint32_t elements);
Json::Value AllScreensAnswer(uint32_t members);
Json::Value AllPlansAnswer(uint32_t members);  // alternately immediate and timer plans
// The brief listing: "infos" with `members` entries (the device sends at most 32).
Json::Value BriefProgrammesAnswer(uint32_t members);
// One record each: "DisplayScreenCfg" with a full screen, "ProgrammePlan" with a timer plan of
// `programmes` programmes.
Json::Value ScreenByIdAnswer();
Json::Value PlanByIdAnswer(uint32_t programmes);

// Caller records for a programme reader: `count` programmes whose first `windows` windows each
// have a buffer for `elements` entries.
struct ProgrammeTargets {
  ProgrammeTargets(uint32_t count, uint32_t windows, uint32_t elements);
  Records<tagNET_PROGRAMME_INFO> programmes;
  std::vector<std::vector<unsigned char>> buffers;
};

}  // namespace gsc::bench

#endif  // GUIDESCREEN_CODEC_BENCH_BODIES_H
