#include "bodies.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "describe/record_generator.h"
#include "describe/record_tables.h"
#include "guidescreen_codec/capi.h"

namespace gsc::bench {
namespace {

// Element buffers in the caller's list of buffers, one vector each.
class BufferMemory final : public fields::Memory {
 public:
  explicit BufferMemory(std::vector<std::vector<unsigned char>>& buffers) : buffers_(buffers) {}
  unsigned char* Allocate(size_t bytes, bool) override {
    buffers_.emplace_back(bytes != 0 ? bytes : 1);
    return buffers_.back().data();
  }

 private:
  std::vector<std::vector<unsigned char>>& buffers_;
};

// Every field of the record filled from the description, so that a field added to a record is
// benched too; notes one per element, as a device's programmes mostly have.
void Fill(const fields::RecordTable& table, void* record, int seed,
          std::vector<std::pair<std::string, uint32_t>> counts,
          std::vector<std::vector<unsigned char>>* buffers = nullptr) {
  counts.emplace_back("nNoteNum", 1);
  std::vector<std::vector<unsigned char>> unused;
  BufferMemory memory(buffers != nullptr ? *buffers : unused);
  fields::GeneratePlausible(table, record, memory, fields::Plausible{seed, std::move(counts)});
}

Json::Value Parsed(const Json::Value& written) {
  return FromText(ToText(written));
}

}  // namespace

size_t ElementBufferSize(uint32_t elements) {
  return gsc_element_buffer_size(elements);
}

void FillProgramme(tagNET_PROGRAMME_INFO& programme, int seed, uint32_t windows, uint32_t elements,
                   std::vector<std::vector<unsigned char>>& buffers) {
  Fill(fields::kProgrammeTable, &programme, seed,
       {{"nWindowsNum", windows}, {"nElementsNum", elements}}, &buffers);
}

void FillScreen(tagNET_GUIDESCREEN_ATTRIBUTE_INFO& screen, int seed) {
  Fill(fields::kScreenTable, &screen, seed, {});
}

void FillImmePlan(tagNET_IMMEDIATELY_PLAN_INFO& plan, int seed) {
  Fill(fields::kImmePlanTable, &plan, seed, {});
}

void FillTimerPlan(tagNET_TIMER_PLAN_INFO& plan, int seed, uint32_t programmes) {
  Fill(fields::kTimerPlanTable, &plan, seed, {{"nProgrammesNum", programmes}});
}

std::string ToText(const Json::Value& value) {
  Json::StreamWriterBuilder builder;
  builder["indentation"] = "";
  return Json::writeString(builder, value);
}

Json::Value FromText(const std::string& text) {
  Json::CharReaderBuilder builder;
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  Json::Value value;
  std::string errors;
  if (!reader->parse(text.data(), text.data() + text.size(), &value, &errors)) {
    std::fprintf(stderr, "benchmark body does not parse: %s\n", errors.c_str());
    std::abort();
  }
  return value;
}

Json::Value AllProgrammesAnswer(uint32_t members, uint32_t windows, uint32_t elements) {
  Json::Value result;
  Json::Value& infos = result["infos"];
  std::vector<std::vector<unsigned char>> buffers;
  auto programme = std::make_unique<tagNET_PROGRAMME_INFO>();
  for (uint32_t i = 0; i < members; ++i) {
    *programme = tagNET_PROGRAMME_INFO{};
    buffers.clear();
    FillProgramme(*programme, static_cast<int>(i), windows, elements, buffers);
    tagNET_IN_ADD_ONE_PROGRAMME in{};
    in.stuInfo = *programme;
    Json::Value params;
    serialize(in, params);
    infos[programme->szProgrammeID] = params["info"];
  }
  return Parsed(result);
}

Json::Value AllScreensAnswer(uint32_t members) {
  Records<tagNET_GUIDESCREEN_ATTRIBUTE_INFO> screens(members);
  for (uint32_t i = 0; i < members; ++i) FillScreen(screens[i], static_cast<int>(i));
  tagNET_IN_SET_GUIDESCREEN_CFG in{};
  in.nInfosNum = members;
  in.pstuInfos = screens.data();
  Json::Value params;
  serialize(in, params);
  return Parsed(params);
}

Json::Value AllPlansAnswer(uint32_t members) {
  Json::Value result;
  Json::Value& infos = result["infos"];
  auto imme = std::make_unique<tagNET_IN_ADD_IMME_PROGRAMMEPLAN>();
  auto timer = std::make_unique<tagNET_IN_ADD_TIMER_PROGRAMMEPLAN>();
  for (uint32_t i = 0; i < members; ++i) {
    Json::Value params;
    if (i % 2 == 0) {
      *imme = tagNET_IN_ADD_IMME_PROGRAMMEPLAN{};
      FillImmePlan(imme->stuInfo, static_cast<int>(i));
      serialize(*imme, params);
    } else {
      *timer = tagNET_IN_ADD_TIMER_PROGRAMMEPLAN{};
      FillTimerPlan(timer->stuInfo, static_cast<int>(i), 8);
      serialize(*timer, params);
    }
    char name[32];
    std::snprintf(name, sizeof name, "plan-%05u", i);
    infos[name] = params["info"];
  }
  return Parsed(result);
}

Json::Value BriefProgrammesAnswer(uint32_t members) {
  Json::Value result;
  Json::Value& infos = result["infos"];
  for (uint32_t i = 0; i < members; ++i) {
    char id[32];
    std::snprintf(id, sizeof id, "programme-%05u", i);
    char name[64];
    std::snprintf(name, sizeof name, "Morning programme %u", i);
    Json::Value& entry = infos[id];
    entry["ProgrammeName"] = name;
    entry["ProgrammeID"] = id;
    entry["ProgrammeType"] = i % 2;
    entry["Enable"] = true;
    entry["TempletState"] = i % 3 == 0;
  }
  return Parsed(result);
}

Json::Value ScreenByIdAnswer() {
  const Json::Value all = AllScreensAnswer(1);
  Json::Value result;
  result["DisplayScreenCfg"] = *all["infos"].begin();
  return Parsed(result);
}

Json::Value PlanByIdAnswer(uint32_t programmes) {
  auto timer = std::make_unique<tagNET_IN_ADD_TIMER_PROGRAMMEPLAN>();
  FillTimerPlan(timer->stuInfo, 7, programmes);
  Json::Value params;
  serialize(*timer, params);
  Json::Value result;
  result["ProgrammePlan"] = params["info"];
  return Parsed(result);
}

ProgrammeTargets::ProgrammeTargets(uint32_t count, uint32_t windows, uint32_t elements)
    : programmes(count) {
  buffers.reserve(static_cast<size_t>(count) * windows);
  for (uint32_t i = 0; i < count; ++i) {
    for (uint32_t w = 0; w < windows; ++w) {
      tagNET_PROGRAMME_WINDOW_INFO& window = programmes[i].stuOrdinary.stuWindows[w];
      buffers.emplace_back(ElementBufferSize(elements));
      window.pElementsBuf = buffers.back().data();
      window.nElementsBufLen = static_cast<uint32_t>(buffers.back().size());
    }
  }
}

}  // namespace gsc::bench
