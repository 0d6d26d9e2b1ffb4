// The codecs side by side with JsonCpp's own work on the same bodies. Names are
//   read/<OPERATION>/{codec,report,skip}    answer readers on a parsed tree: plain, reporting and
//                                           skipping;
//   read/<OPERATION>/{parse,walk}           JsonCpp's parse of the answer text, and a read-only
//                                           walk over every member of its tree;
//   read/<OPERATION>/parse-codec            the two in one call, as a caller of the tree readers
//                                           goes from text to records;
//   read/<OPERATION>/{text,text-report,text-skip}
//                                           deserialize_json on the same text, plain, reporting
//                                           and skipping;
//   read/<OPERATION>/simdjson               simdjson's DOM parse of the text, the floor of the
//                                           text readers, which parse with it and then convert;
//   write/<OPERATION>/{codec,text,copy}     request writers, JsonCpp's compact text of the
//                                           request, and a deep copy of the request tree;
//   scale/<series>/<members>                readers and writers over growing bodies.
// Rows that take text report its bytes per second. Every benchmark reports "allocs", the
// operator new calls per call, and "mallocs", the malloc-family calls made past operator new
// (JsonCpp's strings, aligned buffers), both counted by the replacements below.
#include <benchmark/benchmark.h>
#include <json/json.h>
#include <simdjson.h>

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "bodies.h"
#include "guidescreen_codec/json_text.h"
#include "guidescreen_codec/operations.h"

namespace {
std::atomic<uint64_t> g_allocations{0};
std::atomic<uint64_t> g_mallocs{0};
}  // namespace

// The malloc family is replaced where glibc lets it be forwarded to its own allocator: the warm
// text readers are meant to allocate nothing at all, and a parser's buffers need not come from
// operator new. Sanitizers bring their own malloc, so under them only operator new is counted.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define GSC_BENCH_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || \
    __has_feature(memory_sanitizer)
#define GSC_BENCH_SANITIZED 1
#endif
#endif
#if defined(__GLIBC__) && !defined(GSC_BENCH_SANITIZED)
#define GSC_BENCH_COUNT_MALLOC 1
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* p, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* p);

void* malloc(std::size_t size) noexcept {
  g_mallocs.fetch_add(1, std::memory_order_relaxed);
  return __libc_malloc(size);
}
void* calloc(std::size_t count, std::size_t size) noexcept {
  g_mallocs.fetch_add(1, std::memory_order_relaxed);
  return __libc_calloc(count, size);
}
void* realloc(void* p, std::size_t size) noexcept {
  g_mallocs.fetch_add(1, std::memory_order_relaxed);
  return __libc_realloc(p, size);
}
void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
  g_mallocs.fetch_add(1, std::memory_order_relaxed);
  return __libc_memalign(alignment, size);
}
void* memalign(std::size_t alignment, std::size_t size) noexcept {
  g_mallocs.fetch_add(1, std::memory_order_relaxed);
  return __libc_memalign(alignment, size);
}
int posix_memalign(void** out, std::size_t alignment, std::size_t size) noexcept {
  if (alignment % sizeof(void*) != 0 || (alignment & (alignment - 1)) != 0) return EINVAL;
  g_mallocs.fetch_add(1, std::memory_order_relaxed);
  void* p = __libc_memalign(alignment, size);
  if (p == nullptr) return ENOMEM;
  *out = p;
  return 0;
}
}
#endif

namespace {
// What operator new takes its blocks from, without counting them as mallocs.
void* RawAllocate(std::size_t size) {
#ifdef GSC_BENCH_COUNT_MALLOC
  return __libc_malloc(size);
#else
  return std::malloc(size);
#endif
}
void RawFree(void* p) {
#ifdef GSC_BENCH_COUNT_MALLOC
  __libc_free(p);
#else
  std::free(p);
#endif
}
}  // namespace

void* operator new(std::size_t size) {
  g_allocations.fetch_add(1, std::memory_order_relaxed);
  if (void* p = RawAllocate(size != 0 ? size : 1)) return p;
  throw std::bad_alloc();
}
void operator delete(void* p) noexcept {
  RawFree(p);
}
void operator delete(void* p, std::size_t) noexcept {
  RawFree(p);
}

namespace {

using gsc::bench::ProgrammeTargets;
using gsc::bench::Records;

// Counts the allocations of a benchmark's timed loop and reports them per iteration.
class AllocationCounter {
 public:
  explicit AllocationCounter(benchmark::State& state)
      : state_(state),
        start_(g_allocations.load(std::memory_order_relaxed)),
        mallocs_start_(g_mallocs.load(std::memory_order_relaxed)) {}
  ~AllocationCounter() {
    const uint64_t made = g_allocations.load(std::memory_order_relaxed) - start_;
    const uint64_t mallocs = g_mallocs.load(std::memory_order_relaxed) - mallocs_start_;
    state_.counters["allocs"] =
        benchmark::Counter(static_cast<double>(made), benchmark::Counter::kAvgIterations);
    state_.counters["mallocs"] =
        benchmark::Counter(static_cast<double>(mallocs), benchmark::Counter::kAvgIterations);
  }
  AllocationCounter(const AllocationCounter&) = delete;
  AllocationCounter& operator=(const AllocationCounter&) = delete;

 private:
  benchmark::State& state_;
  uint64_t start_;
  uint64_t mallocs_start_;
};

// JsonCpp's reader set up as the C entry points set it up, made once and reused.
std::unique_ptr<Json::CharReader> JsonCppReader() {
  Json::CharReaderBuilder builder;
  builder["collectComments"] = false;
  builder["failIfExtra"] = true;
  return std::unique_ptr<Json::CharReader>(builder.newCharReader());
}

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
  // The same from the text; false when the reader refused it.
  std::function<bool(std::string_view, gsc::Report*)> read_text;
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

// The plain or the reporting deserialize into `out`, from the tree or from the text.
template <typename Out>
std::unique_ptr<ReaderBody> MakeReader(Json::Value answer, std::shared_ptr<Out> out,
                                       std::shared_ptr<void> records) {
  auto body = std::make_unique<ReaderBody>();
  body->text = gsc::bench::ToText(answer);
  body->answer = std::move(answer);
  body->read = [out](const Json::Value& result, gsc::Report* report) {
    if (report != nullptr) {
      deserialize(result, *out, *report);
    } else {
      deserialize(result, *out);
    }
  };
  body->read_text = [out](std::string_view text, gsc::Report* report) {
    return report != nullptr ? gsc::deserialize_json(text, *out, *report)
                             : gsc::deserialize_json(text, *out);
  };
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

std::unique_ptr<ReaderBody> AllProgrammes(uint32_t members, uint32_t windows, uint32_t elements) {
  auto out = std::make_shared<tagNET_OUT_GET_ALL_PROGRAMMES>();
  auto targets = std::make_shared<ProgrammeTargets>(members, windows, elements);
  out->nMaxInfosNum = members;
  out->pstuInfos = targets->programmes.data();
  auto records = std::make_shared<std::pair<decltype(out), decltype(targets)>>(out, targets);
  return MakeReader(gsc::bench::AllProgrammesAnswer(members, windows, elements), out, records);
}

std::unique_ptr<ReaderBody> ProgrammeById(uint32_t windows, uint32_t elements) {
  Json::Value answer;
  answer["Programme"] = *gsc::bench::AllProgrammesAnswer(1, windows, elements)["infos"].begin();
  auto out = std::make_shared<tagNET_OUT_GET_PROGRAMME_BYID>();
  auto buffers = std::make_shared<std::vector<std::vector<unsigned char>>>();
  for (uint32_t w = 0; w < windows; ++w) {
    buffers->emplace_back(gsc::bench::ElementBufferSize(elements));
    out->stuProgramme.stuOrdinary.stuWindows[w].pElementsBuf = buffers->back().data();
    out->stuProgramme.stuOrdinary.stuWindows[w].nElementsBufLen =
        static_cast<uint32_t>(buffers->back().size());
  }
  auto records = std::make_shared<std::pair<decltype(out), decltype(buffers)>>(out, buffers);
  return MakeReader(std::move(answer), out, records);
}

std::unique_ptr<ReaderBody> AllScreens(uint32_t members) {
  auto screens = std::make_shared<Records<tagNET_GUIDESCREEN_ATTRIBUTE_INFO>>(members);
  auto out = std::make_shared<tagNET_OUT_GET_ALL_GUIDESCREEN_CFG>();
  out->nMaxInfosNum = members;
  out->pstuInfos = screens->data();
  auto records = std::make_shared<std::pair<decltype(out), decltype(screens)>>(out, screens);
  return MakeReader(gsc::bench::AllScreensAnswer(members), out, records);
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
  return MakeReader(gsc::bench::AllPlansAnswer(members), out, records);
}

std::unique_ptr<ReaderBody> ScreenById() {
  auto out = std::make_shared<tagNET_OUT_GET_GUIDESCREEN_CFG_BYID>();
  return MakeReader(gsc::bench::ScreenByIdAnswer(), out, out);
}

std::unique_ptr<ReaderBody> BriefProgrammes(uint32_t members) {
  auto out = std::make_shared<tagNET_OUT_GET_ALL_BRIEFLYPROGRAMMES>();
  return MakeReader(gsc::bench::BriefProgrammesAnswer(members), out, out);
}

std::unique_ptr<ReaderBody> PlanById(uint32_t programmes) {
  auto out = std::make_shared<tagNET_OUT_GET_PROGRAMMEPLAN_BYID>();
  return MakeReader(gsc::bench::PlanByIdAnswer(programmes), out, out);
}

// The answers that carry only an identifier: the fixed cost of a call.
template <typename Out>
std::unique_ptr<ReaderBody> Identifier(const char* key, const char* id) {
  Json::Value answer;
  answer[key] = id;
  auto out = std::make_shared<Out>();
  return MakeReader(std::move(answer), out, out);
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
// does to the per-member cost as the tree outgrows the caches. The others also register the rows
// that start from the text: JsonCpp's parse, alone and followed by the codec, the text readers
// and simdjson's parse.
void RegisterReader(const std::string& name, std::function<std::unique_ptr<ReaderBody>()> make,
                    bool text = true) {
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
  if (!text) return;
  benchmark::RegisterBenchmark((name + "/parse").c_str(), [body](benchmark::State& state) {
    ReaderBody& b = body->get();
    const std::unique_ptr<Json::CharReader> reader = JsonCppReader();
    {
      AllocationCounter count(state);
      for (auto _ : state) {
        Json::Value value;
        std::string errors;
        reader->parse(b.text.data(), b.text.data() + b.text.size(), &value, &errors);
        benchmark::DoNotOptimize(value);
      }
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * b.text.size()));
  });
  benchmark::RegisterBenchmark((name + "/parse-codec").c_str(), [body](benchmark::State& state) {
    ReaderBody& b = body->get();
    const std::unique_ptr<Json::CharReader> reader = JsonCppReader();
    {
      AllocationCounter count(state);
      for (auto _ : state) {
        Json::Value value;
        std::string errors;
        reader->parse(b.text.data(), b.text.data() + b.text.size(), &value, &errors);
        b.read(value, nullptr);
        benchmark::ClobberMemory();
      }
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * b.text.size()));
  });
  // The text readers, warmed by one call first: the thread's parser keeps buffers as large as
  // the largest text it has read, so once warm a reader should allocate nothing.
  struct TextRow {
    const char* suffix;
    bool reporting;
    gsc::OnFailure mode;
  };
  for (const TextRow row : {TextRow{"/text", false, gsc::OnFailure::kStop},
                            TextRow{"/text-report", true, gsc::OnFailure::kStop},
                            TextRow{"/text-skip", true, gsc::OnFailure::kSkip}}) {
    benchmark::RegisterBenchmark((name + row.suffix).c_str(), [body, row](benchmark::State& state) {
      ReaderBody& b = body->get();
      gsc::Report report(row.mode);
      gsc::Report* const reporting = row.reporting ? &report : nullptr;
      if (!b.read_text(b.text, reporting)) {
        state.SkipWithError(("text refused: " + report.str()).c_str());
        return;
      }
      {
        AllocationCounter count(state);
        for (auto _ : state) {
          benchmark::DoNotOptimize(b.read_text(b.text, reporting));
          benchmark::ClobberMemory();
        }
      }
      state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * b.text.size()));
      if (!report.empty()) state.SkipWithError(("findings: " + report.str()).c_str());
    });
  }
  // simdjson's DOM parse alone, its parser reused as the text readers reuse theirs: what is left
  // of a text reader once the conversion costs nothing.
  benchmark::RegisterBenchmark((name + "/simdjson").c_str(), [body](benchmark::State& state) {
    ReaderBody& b = body->get();
    simdjson::dom::parser parser;
    simdjson::dom::element root;
    if (parser.parse(b.text.data(), b.text.size()).get(root) != simdjson::SUCCESS) {
      state.SkipWithError("simdjson refused the text");
      return;
    }
    {
      AllocationCounter count(state);
      for (auto _ : state) {
        benchmark::DoNotOptimize(parser.parse(b.text.data(), b.text.size()).get(root));
        benchmark::DoNotOptimize(root);
      }
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * b.text.size()));
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
  RegisterReader("read/GET_GUIDESCREEN_CFG_BYID", [] { return ScreenById(); });
  RegisterReader("read/GET_ALL_BRIEFLYPROGRAMMES", [] { return BriefProgrammes(32); });
  RegisterReader("read/GET_PROGRAMMEPLAN_BYID", [] { return PlanById(32); });
  RegisterReader("read/ADD_ONE_PROGRAMME", [] {
    return Identifier<tagNET_OUT_ADD_ONE_PROGRAMME>("ProgrammeID", "programme-00001");
  });
  RegisterReader("read/ADD_PROGRAMMEPLAN", [] {
    return Identifier<tagNET_OUT_ADD_PROGRAMMEPLAN>("ProgrammePlanID", "plan-00007");
  });

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
