// The codecs side by side with JsonCpp's own work on the same bodies. Names are
//   read/<OPERATION>/{codec,report,parse,walk}  answer readers, plain and reporting, JsonCpp's
//                                           parse of the answer text, and a read-only walk over
//                                           every member of its tree;
//   write/<OPERATION>/{codec,text,copy}     request writers, JsonCpp's compact text of the
//                                           request, and a deep copy of the request tree;
//   scale/<series>/<members>                readers and writers over growing bodies.
// Every benchmark reports "allocs": heap allocations per call, counted by the operator new below.
#include <benchmark/benchmark.h>
#include <json/json.h>

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "bodies.h"
#include "guidescreen_codec/operations.h"

namespace {
std::atomic<uint64_t> g_allocations{0};
}  // namespace

void* operator new(std::size_t size) {
  g_allocations.fetch_add(1, std::memory_order_relaxed);
  if (void* p = std::malloc(size != 0 ? size : 1)) return p;
  throw std::bad_alloc();
}
void operator delete(void* p) noexcept {
  std::free(p);
}
void operator delete(void* p, std::size_t) noexcept {
  std::free(p);
}

namespace {

using gsc::bench::ProgrammeTargets;
using gsc::bench::Records;

// Counts the allocations of a benchmark's timed loop and reports them per iteration.
class AllocationCounter {
 public:
  explicit AllocationCounter(benchmark::State& state)
      : state_(state), start_(g_allocations.load(std::memory_order_relaxed)) {}
  ~AllocationCounter() {
    const uint64_t made = g_allocations.load(std::memory_order_relaxed) - start_;
    state_.counters["allocs"] =
        benchmark::Counter(static_cast<double>(made), benchmark::Counter::kAvgIterations);
  }
  AllocationCounter(const AllocationCounter&) = delete;
  AllocationCounter& operator=(const AllocationCounter&) = delete;

 private:
  benchmark::State& state_;
  uint64_t start_;
};

// A body built on first use, so that a filtered run builds only what it measures.
template <typename Body>
class Lazy {
 public:
  explicit Lazy(std::function<std::unique_ptr<Body>()> make) : make_(std::move(make)) {}
  Body& get() {
    if (!body_) body_ = make_();
    return *body_;
  }

 private:
  std::function<std::unique_ptr<Body>()> make_;
  std::unique_ptr<Body> body_;
};

struct ReaderBody {
  Json::Value answer;
  std::string text;
  // The codec, into caller records it owns: the plain overload, or with a report the reporting one.
  std::function<void(const Json::Value&, gsc::Report*)> read;
  std::shared_ptr<void> records;
};

struct WriterBody {
  std::function<void(Json::Value&)> write;  // the codec, from caller records it owns
  Json::Value request;                      // what write makes
  std::shared_ptr<void> records;
};

// Visits every value of the tree once, reading each leaf as the codecs read it.
uint64_t Walk(const Json::Value& value) {
  switch (value.type()) {
    case Json::objectValue:
    case Json::arrayValue: {
      uint64_t sum = 0;
      for (Json::Value::const_iterator it = value.begin(); it != value.end(); ++it) {
        sum += 1 + Walk(*it);
      }
      return sum;
    }
    case Json::stringValue: {
      const char* begin = nullptr;
      const char* end = nullptr;
      value.getString(&begin, &end);
      return static_cast<uint64_t>(end - begin);
    }
    case Json::realValue:
      return static_cast<uint64_t>(value.asDouble());
    case Json::intValue:
    case Json::uintValue:
    case Json::booleanValue:
      return static_cast<uint64_t>(value.asLargestInt());
    case Json::nullValue:
      break;
  }
  return 0;
}

std::unique_ptr<ReaderBody> MakeReader(Json::Value answer,
                                       std::function<void(const Json::Value&, gsc::Report*)> read,
                                       std::shared_ptr<void> records) {
  auto body = std::make_unique<ReaderBody>();
  body->text = gsc::bench::ToText(answer);
  body->answer = std::move(answer);
  body->read = std::move(read);
  body->records = std::move(records);
  return body;
}

std::unique_ptr<WriterBody> MakeWriter(std::function<void(Json::Value&)> write,
                                       std::shared_ptr<void> records) {
  auto body = std::make_unique<WriterBody>();
  body->write = std::move(write);
  body->records = std::move(records);
  body->request = Json::Value(Json::objectValue);
  body->write(body->request);
  return body;
}

// ---- Readers ---------------------------------------------------------------------------------

// The plain or the reporting deserialize into `out`.
template <typename Out>
std::function<void(const Json::Value&, gsc::Report*)> ReadInto(std::shared_ptr<Out> out) {
  return [out](const Json::Value& result, gsc::Report* report) {
    if (report != nullptr) {
      deserialize(result, *out, *report);
    } else {
      deserialize(result, *out);
    }
  };
}

std::unique_ptr<ReaderBody> AllProgrammes(uint32_t members, uint32_t windows, uint32_t elements) {
  auto out = std::make_shared<tagNET_OUT_GET_ALL_PROGRAMMES>();
  auto targets = std::make_shared<ProgrammeTargets>(members, windows, elements);
  out->nMaxInfosNum = members;
  out->pstuInfos = targets->programmes.data();
  auto records = std::make_shared<std::pair<decltype(out), decltype(targets)>>(out, targets);
  return MakeReader(gsc::bench::AllProgrammesAnswer(members, windows, elements), ReadInto(out),
                    records);
}

std::unique_ptr<ReaderBody> ProgrammeById(uint32_t windows, uint32_t elements) {
  Json::Value answer;
  answer["Programme"] =
      gsc::bench::AllProgrammesAnswer(1, windows, elements)["infos"]["programme-00000"];
  auto out = std::make_shared<tagNET_OUT_GET_PROGRAMME_BYID>();
  auto buffers = std::make_shared<std::vector<std::vector<unsigned char>>>();
  for (uint32_t w = 0; w < windows; ++w) {
    buffers->emplace_back(gsc::bench::ElementBufferSize(elements));
    out->stuProgramme.stuOrdinary.stuWindows[w].pElementsBuf = buffers->back().data();
    out->stuProgramme.stuOrdinary.stuWindows[w].nElementsBufLen =
        static_cast<uint32_t>(buffers->back().size());
  }
  auto records = std::make_shared<std::pair<decltype(out), decltype(buffers)>>(out, buffers);
  return MakeReader(std::move(answer), ReadInto(out), records);
}

std::unique_ptr<ReaderBody> AllScreens(uint32_t members) {
  auto screens = std::make_shared<Records<tagNET_GUIDESCREEN_ATTRIBUTE_INFO>>(members);
  auto out = std::make_shared<tagNET_OUT_GET_ALL_GUIDESCREEN_CFG>();
  out->nMaxInfosNum = members;
  out->pstuInfos = screens->data();
  auto records = std::make_shared<std::pair<decltype(out), decltype(screens)>>(out, screens);
  return MakeReader(gsc::bench::AllScreensAnswer(members), ReadInto(out), records);
}

std::unique_ptr<ReaderBody> AllPlans(uint32_t members) {
  auto imme = std::make_shared<Records<tagNET_IMMEDIATELY_PLAN_INFO>>(members);
  auto timer = std::make_shared<Records<tagNET_TIMER_PLAN_INFO>>(members);
  auto out = std::make_shared<tagNET_OUT_GET_ALL_PROGRAMMEPLANS>();
  out->nMaxPlanNum = members;
  out->pstuImmePlans = imme->data();
  out->pstuTimerPlans = timer->data();
  auto records = std::make_shared<std::tuple<decltype(out), decltype(imme), decltype(timer)>>(
      out, imme, timer);
  return MakeReader(gsc::bench::AllPlansAnswer(members), ReadInto(out), records);
}

// ---- Writers ---------------------------------------------------------------------------------

std::unique_ptr<WriterBody> AddProgramme(uint32_t windows, uint32_t elements) {
  auto in = std::make_shared<tagNET_IN_ADD_ONE_PROGRAMME>();
  auto buffers = std::make_shared<std::vector<std::vector<unsigned char>>>();
  buffers->reserve(windows);
  gsc::bench::FillProgramme(in->stuInfo, 0, windows, elements, *buffers);
  auto records = std::make_shared<std::pair<decltype(in), decltype(buffers)>>(in, buffers);
  return MakeWriter([in](Json::Value& params) { serialize(*in, params); }, records);
}

std::unique_ptr<WriterBody> SetScreens(uint32_t members) {
  auto screens = std::make_shared<Records<tagNET_GUIDESCREEN_ATTRIBUTE_INFO>>(members);
  for (uint32_t i = 0; i < members; ++i) gsc::bench::FillScreen((*screens)[i], static_cast<int>(i));
  auto in = std::make_shared<tagNET_IN_SET_GUIDESCREEN_CFG>();
  in->nInfosNum = members;
  in->pstuInfos = screens->data();
  auto records = std::make_shared<std::pair<decltype(in), decltype(screens)>>(in, screens);
  return MakeWriter([in](Json::Value& params) { serialize(*in, params); }, records);
}

std::unique_ptr<WriterBody> AddTimerPlan(uint32_t programmes) {
  auto in = std::make_shared<tagNET_IN_ADD_TIMER_PROGRAMMEPLAN>();
  gsc::bench::FillTimerPlan(in->stuInfo, 7, programmes);
  return MakeWriter([in](Json::Value& params) { serialize(*in, params); }, in);
}

std::unique_ptr<WriterBody> SetDisplayStatus(uint32_t units) {
  auto in = std::make_shared<tagNET_IN_SET_GD_STATUS>();
  std::snprintf(in->szScreenId, sizeof in->szScreenId, "screen-0001");
  in->nGDNum = units;
  for (uint32_t i = 0; i < units && i < 170; ++i)
    in->emStatus[i] = static_cast<EM_GD_STATUS>(i % 3);
  return MakeWriter([in](Json::Value& params) { serialize(*in, params); }, in);
}

// ---- Registration ----------------------------------------------------------------------------

// Scaling series register the walk beside the codec: it shows what the memory hierarchy alone
// does to the per-member cost as the tree outgrows the caches.
void RegisterReader(const std::string& name, std::function<std::unique_ptr<ReaderBody>()> make,
                    bool parse = true) {
  auto body = std::make_shared<Lazy<ReaderBody>>(std::move(make));
  benchmark::RegisterBenchmark((name + "/codec").c_str(), [body](benchmark::State& state) {
    ReaderBody& b = body->get();
    AllocationCounter count(state);
    for (auto _ : state) {
      b.read(b.answer, nullptr);
      benchmark::ClobberMemory();
    }
  });
  // The reporting overload, stopping at (report) or skipping (skip) values it cannot convert.
  for (const gsc::OnFailure mode : {gsc::OnFailure::kStop, gsc::OnFailure::kSkip}) {
    const std::string row = mode == gsc::OnFailure::kStop ? "/report" : "/skip";
    benchmark::RegisterBenchmark((name + row).c_str(), [body, mode](benchmark::State& state) {
      ReaderBody& b = body->get();
      gsc::Report report(mode);
      AllocationCounter count(state);
      for (auto _ : state) {
        b.read(b.answer, &report);
        benchmark::ClobberMemory();
      }
      if (!report.empty()) state.SkipWithError(("findings: " + report.str()).c_str());
    });
  }
  benchmark::RegisterBenchmark((name + "/walk").c_str(), [body](benchmark::State& state) {
    ReaderBody& b = body->get();
    AllocationCounter count(state);
    for (auto _ : state) benchmark::DoNotOptimize(Walk(b.answer));
  });
  if (!parse) return;
  benchmark::RegisterBenchmark((name + "/parse").c_str(), [body](benchmark::State& state) {
    ReaderBody& b = body->get();
    Json::CharReaderBuilder builder;
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    AllocationCounter count(state);
    for (auto _ : state) {
      Json::Value value;
      std::string errors;
      reader->parse(b.text.data(), b.text.data() + b.text.size(), &value, &errors);
      benchmark::DoNotOptimize(value);
    }
  });
}

void RegisterWriter(const std::string& name, std::function<std::unique_ptr<WriterBody>()> make,
                    bool text = true) {
  auto body = std::make_shared<Lazy<WriterBody>>(std::move(make));
  benchmark::RegisterBenchmark((name + "/codec").c_str(), [body](benchmark::State& state) {
    WriterBody& b = body->get();
    AllocationCounter count(state);
    for (auto _ : state) {
      Json::Value params(Json::objectValue);
      b.write(params);
      benchmark::DoNotOptimize(params);
    }
  });
  benchmark::RegisterBenchmark((name + "/copy").c_str(), [body](benchmark::State& state) {
    WriterBody& b = body->get();
    AllocationCounter count(state);
    for (auto _ : state) {
      Json::Value copy(b.request);
      benchmark::DoNotOptimize(copy);
    }
  });
  if (!text) return;
  benchmark::RegisterBenchmark((name + "/text").c_str(), [body](benchmark::State& state) {
    WriterBody& b = body->get();
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    AllocationCounter count(state);
    for (auto _ : state) benchmark::DoNotOptimize(Json::writeString(builder, b.request));
  });
}

void RegisterAll() {
  RegisterReader("read/GET_ALL_PROGRAMMES", [] { return AllProgrammes(32, 16, 8); });
  RegisterReader("read/GET_PROGRAMME_BYID", [] { return ProgrammeById(16, 8); });
  RegisterReader("read/GET_ALL_GUIDESCREEN_CFG", [] { return AllScreens(64); });
  RegisterReader("read/GET_ALL_PROGRAMMEPLANS", [] { return AllPlans(256); });

  RegisterWriter("write/ADD_ONE_PROGRAMME", [] { return AddProgramme(16, 8); });
  RegisterWriter("write/SET_GUIDESCREEN_CFG", [] { return SetScreens(64); });
  RegisterWriter("write/ADD_TIMER_PROGRAMMEPLAN", [] { return AddTimerPlan(32); });
  RegisterWriter("write/SET_GD_STATUS", [] { return SetDisplayStatus(170); });

  // Scaling: the per-member cost at 1000 against that at 10 should stay near 1. Programmes of
  // the get-all series are kept small (2 windows of 4 elements) so that 1000 of them fit easily.
  for (uint32_t n : {1U, 10U, 100U, 1000U}) {
    const std::string size = "/" + std::to_string(n);
    RegisterReader(
        "scale/GET_ALL_PROGRAMMES" + size, [n] { return AllProgrammes(n, 2, 4); }, false);
    RegisterReader(
        "scale/GET_ALL_GUIDESCREEN_CFG" + size, [n] { return AllScreens(n); }, false);
    RegisterReader(
        "scale/GET_ALL_PROGRAMMEPLANS" + size, [n] { return AllPlans(n); }, false);
    RegisterReader(
        "scale/ELEMENTS_READ" + size, [n] { return ProgrammeById(1, n); }, false);
    RegisterWriter(
        "scale/ELEMENTS_WRITE" + size, [n] { return AddProgramme(1, n); }, false);
  }
}

}  // namespace

int main(int argc, char** argv) {
  RegisterAll();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
