// Fuzzes the text readers against the tree path: deserialize_json on an answer's text must do
// exactly what deserialize does on JsonCpp's parse of the same text.
//
// Input: the 16 control bytes of reader_fuzzer.cpp (Control in fuzz_support.h), then the text; its
// seeds serve here unchanged. Every output record is laid out from the control bytes and the
// description as there (Layout): pre-filled records, caller arrays of 0 to 3 records or null,
// element buffers of any length, 4 but not 8 aligned, null or of length 2^32 - 1, every block
// between guard bytes.
//
// A text the strict reading accepts must parse with JsonCpp's default reader (unless its values sit
// 1000 containers deep, see below) and goes to every output record of the operations list, each
// read from the same caller memory by the tree path and by the text path, plain, reporting and
// stopping, reporting and skipping: the caller memory, the return value, the type and message of
// what is thrown and the findings must be the same. A text it refuses must be refused by every text
// reader before the record is touched, with the same line, column and reason, as a JsonError from
// the plain one and as a single json-malformed finding and false from the reporting one. A
// programme listing is also read a programme at a time (deserialize_json_in_batches), which must
// hand over what the one-call read leaves.
#include <json/json.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <typeinfo>
#include <vector>

#include "fuzz/fuzz_support.h"
#include "guidescreen_codec/json_text.h"
#include "guidescreen_codec/operations.h"
#include "guidescreen_codec/report.h"
#include "text/strict_json.h"

namespace gsc::fuzz {
namespace {

using Bytes = std::vector<std::vector<unsigned char>>;
using gsc::fields::Operation;

// ---- One call and what it left ----------------------------------------------------------------

struct Outcome {
  bool returned = false;
  bool threw = false;
  std::string thrownType;
  std::string thrown;
  std::vector<Finding> findings;
  Bytes memory;
};

// A finding no reading call makes (a writing kind), put into each report before the call: the
// call must clear it.
constexpr FindingKind kStaleKind = FindingKind::kTextUnterminated;
constexpr const char* kStaleDetail = "left from an earlier call";

Report StaleReport(OnFailure onFailure) {
  Report report(onFailure);
  report.add(kStaleKind, "stale", kStaleDetail);
  return report;
}

// Restores the caller memory to `before`, runs `call` (which returns the call's result and may
// fill `report`), and records how it ended. A JsonError means the text path refused a text the
// strict reading accepted: that is a failure of its own.
template <typename Call>
Outcome Run(Guards& g, const Bytes& before, const char* name, Report* report, Call call) {
  g.Restore(before);
  Outcome outcome;
  try {
    outcome.returned = call();
  } catch (const JsonError& e) {
    std::fprintf(stderr, "JsonError: %s\n", e.what());
    Fail("the text reader refused a text the strict reading accepts:", name);
  } catch (const Json::Exception& e) {
    outcome.threw = true;
    outcome.thrownType = typeid(e).name();
    outcome.thrown = e.what();
  }
  g.Check(name);
  outcome.memory = g.Snapshot();
  if (report != nullptr) {
    outcome.findings = report->findings();
    for (const Finding& f : outcome.findings)
      if (f.kind == kStaleKind && f.detail == kStaleDetail) Fail("report not cleared by", name);
  }
  return outcome;
}

void PrintFindings(const char* side, const std::vector<Finding>& findings) {
  std::fprintf(stderr, "%s:\n", side);
  for (const Finding& f : findings)
    std::fprintf(stderr, "  %s: %s: %s\n", f.path.c_str(), to_string(f.kind), f.detail.c_str());
}

// The first byte where two snapshots of the same blocks differ, for the log.
void PrintFirstDifference(const Bytes& tree, const Bytes& text) {
  for (size_t b = 0; b < tree.size() && b < text.size(); ++b) {
    for (size_t i = 0; i < tree[b].size() && i < text[b].size(); ++i) {
      if (tree[b][i] != text[b][i]) {
        std::fprintf(stderr, "block %zu (%zu bytes), byte %zu: tree 0x%02x, text 0x%02x\n", b,
                     tree[b].size(), i, tree[b][i], text[b][i]);
        return;
      }
    }
  }
}

void Compare(const Outcome& tree, const Outcome& text, const char* name, const char* mode) {
  if (tree.returned != text.returned || tree.threw != text.threw) {
    std::fprintf(stderr, "%s: tree %s %d, text %s %d\n", mode, tree.threw ? "threw" : "returned",
                 tree.returned, text.threw ? "threw" : "returned", text.returned);
    Fail("the text path ended otherwise than the tree path:", name);
  }
  if (tree.thrownType != text.thrownType || tree.thrown != text.thrown) {
    std::fprintf(stderr, "%s: tree threw %s \"%s\", text threw %s \"%s\"\n", mode,
                 tree.thrownType.c_str(), tree.thrown.c_str(), text.thrownType.c_str(),
                 text.thrown.c_str());
    Fail("the text path threw otherwise than the tree path:", name);
  }
  if (tree.memory != text.memory) {
    std::fprintf(stderr, "%s: ", mode);
    PrintFirstDifference(tree.memory, text.memory);
    Fail("the text path left other bytes than the tree path:", name);
  }
  const auto same = [](const Finding& a, const Finding& b) {
    return a.kind == b.kind && a.path == b.path && a.detail == b.detail;
  };
  if (tree.findings.size() != text.findings.size() ||
      !std::equal(tree.findings.begin(), tree.findings.end(), text.findings.begin(), same)) {
    std::fprintf(stderr, "%s\n", mode);
    PrintFindings("tree", tree.findings);
    PrintFindings("text", text.findings);
    Fail("the text path found otherwise than the tree path:", name);
  }
}

// Both paths on fresh caller memory laid out by `c`, in the three modes.
void SameAsTree(const Json::Value& tree, std::string_view text, const Control& c,
                const Operation& op) {
  const char* name = op.name;
  Guards g;
  Layout layout(g, c);
  unsigned char* out = layout.Record(*op.answer);
  const Bytes before = g.Snapshot();

  Compare(Run(g, before, name, nullptr, [&] { return op.deserialize(tree, out, nullptr); }),
          Run(g, before, name, nullptr, [&] { return op.deserialize_json(text, out, nullptr); }),
          name, "plain");
  for (const OnFailure onFailure : {OnFailure::kStop, OnFailure::kSkip}) {
    Report viaTree = StaleReport(onFailure);
    Report viaText = StaleReport(onFailure);
    Compare(
        Run(g, before, name, &viaTree, [&] { return op.deserialize(tree, out, &viaTree); }),
        Run(g, before, name, &viaText, [&] { return op.deserialize_json(text, out, &viaText); }),
        name, onFailure == OnFailure::kStop ? "reporting, stopping" : "reporting, skipping");
  }
}

// A text the strict reading refuses, where it says `where`: refused by both overloads, in both
// modes, before the record is touched.
void Refused(std::string_view text, const std::string& where, const text::JsonProblem& problem,
             const Control& c, const Operation& op) {
  const char* name = op.name;
  Guards g;
  Layout layout(g, c);
  unsigned char* out = layout.Record(*op.answer);
  const Bytes before = g.Snapshot();

  try {
    op.deserialize_json(text, out, nullptr);
    Fail("the text reader accepted a text the strict reading refuses:", name);
  } catch (const JsonError& e) {
    if (e.what() != where || e.line() != problem.line || e.column() != problem.column ||
        e.reason() != problem.reason) {
      std::fprintf(stderr, "JsonError \"%s\" (%u, %u, \"%s\"), strict reading \"%s\"\n", e.what(),
                   e.line(), e.column(), e.reason().c_str(), where.c_str());
      Fail("the text reader refused otherwise than the strict reading:", name);
    }
  } catch (const Json::Exception&) {
    Fail("the text reader read records from a text the strict reading refuses:", name);
  }
  g.Check(name);
  if (g.Snapshot() != before) Fail("a refused text changed the record:", name);

  for (const OnFailure onFailure : {OnFailure::kStop, OnFailure::kSkip}) {
    Report report = StaleReport(onFailure);
    if (op.deserialize_json(text, out, &report)) Fail("a refused text read to the end:", name);
    g.Check(name);
    if (g.Snapshot() != before) Fail("a refused text changed the record (reporting):", name);
    const auto& found = report.findings();
    if (found.size() != 1 || found[0].kind != FindingKind::kJsonMalformed ||
        !found[0].path.empty() || found[0].detail != where) {
      PrintFindings("found", found);
      Fail("a refused text is not one json-malformed finding:", name);
    }
  }
}

// Programme i of a listing as a caller sees it: its record, with the element buffers' contents in
// place of their addresses (two reads into different arrays are compared).
std::string ProgrammeBytes(const tagNET_PROGRAMME_INFO& programme) {
  tagNET_PROGRAMME_INFO copy;
  std::memcpy(&copy, &programme, sizeof copy);
  std::string bytes;
  for (size_t j = 0; j < 16; ++j) {
    tagNET_PROGRAMME_WINDOW_INFO& window = copy.stuOrdinary.stuWindows[j];
    if (window.pElementsBuf != nullptr) {
      bytes.append(reinterpret_cast<const char*>(window.pElementsBuf), window.nElementsBufLen);
    }
    window.pElementsBuf = nullptr;
  }
  bytes.append(reinterpret_cast<const char*>(&copy), sizeof copy);
  return bytes;
}

// A listing read one programme at a time into two arrays taken in turn, each laid out as the
// one-call read's array is, against that read: the same result and findings, and the programmes
// handed over are those the one-call read leaves (all of them, unless a conversion stopped it).
void SameInBatches(std::string_view text, const Control& c) {
  const char* name = "GET_ALL_PROGRAMMES in batches";
  for (const OnFailure onFailure : {OnFailure::kStop, OnFailure::kSkip}) {
    Guards whole;
    Layout wholeLayout(whole, c);
    auto& wholeOut =
        wholeLayout.New<tagNET_OUT_GET_ALL_PROGRAMMES>("tagNET_OUT_GET_ALL_PROGRAMMES");
    const uint32_t capacity = wholeOut.nMaxInfosNum;
    if (wholeOut.pstuInfos == nullptr || capacity == 0) return;
    Report wholeReport = StaleReport(onFailure);
    const bool wholeRead = deserialize_json(text, wholeOut, wholeReport);

    Guards parts;
    Layout partsLayout(parts, c);
    auto& out = partsLayout.New<tagNET_OUT_GET_ALL_PROGRAMMES>("tagNET_OUT_GET_ALL_PROGRAMMES");
    tagNET_PROGRAMME_INFO* arrays[2];
    for (auto*& array : arrays)
      array = &partsLayout.New<tagNET_PROGRAMME_INFO>("tagNET_PROGRAMME_INFO");
    out.nMaxInfosNum = 1;
    out.pstuInfos = arrays[0];
    const auto before = parts.Snapshot();
    int next = 1;
    std::vector<std::string> handed;
    Report partsReport = StaleReport(onFailure);
    const bool partsRead = deserialize_json_in_batches(
        text, out, capacity, partsReport,
        [&](tagNET_OUT_GET_ALL_PROGRAMMES& batch, const ProgrammeBatch& b) {
          if (b.first != handed.size() || b.count != 1 || batch.nRetInfosNum != 1 ||
              b.total > capacity)
            Fail("a batch is not the next programme:", name);
          handed.push_back(ProgrammeBytes(batch.pstuInfos[0]));
          parts.Check(name);
          parts.Restore(before);
          batch.pstuInfos = arrays[next];
          next = 1 - next;
        });
    parts.Check(name);
    if (partsRead != wholeRead || out.nRetInfosNum != wholeOut.nRetInfosNum ||
        out.nMaxInfosNum != 1)
      Fail("the batched read ended otherwise than the one-call read:", name);
    const auto same = [](const Finding& a, const Finding& b) {
      return a.kind == b.kind && a.path == b.path && a.detail == b.detail;
    };
    const auto& found = partsReport.findings();
    const auto& expected = wholeReport.findings();
    if (found.size() != expected.size() ||
        !std::equal(found.begin(), found.end(), expected.begin(), same)) {
      PrintFindings("one call", expected);
      PrintFindings("in batches", found);
      Fail("the batched read found otherwise than the one-call read:", name);
    }
    const size_t read = wholeRead ? wholeOut.nRetInfosNum : handed.size();
    if (handed.size() != read || read > capacity)
      Fail("the batched read handed over another number of programmes:", name);
    for (size_t i = 0; i < handed.size(); ++i) {
      if (handed[i] != ProgrammeBytes(wholeOut.pstuInfos[i]))
        Fail("a programme read in batches differs from the one-call read's:", name);
    }
  }
}

}  // namespace
}  // namespace gsc::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace gsc::fuzz;
  if (size < kControlBytes) return 0;
  const Control control(data);
  const std::string_view text(reinterpret_cast<const char*>(data + kControlBytes),
                              size - kControlBytes);

  gsc::text::JsonProblem problem;
  if (!gsc::text::CheckJson(text, &problem, nullptr)) {
    const std::string where = "line " + std::to_string(problem.line) + ", column " +
                              std::to_string(problem.column) + ": " + problem.reason;
    for (const Operation* op : DistinctAnswers()) Refused(text, where, problem, control, *op);
    return 0;
  }

  // The tree callers make: JsonCpp's reader with its default settings.
  const Json::CharReaderBuilder builder;
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  Json::Value tree;
  std::string errors;
  try {
    if (!reader->parse(text.data(), text.data() + text.size(), &tree, &errors)) {
      std::fprintf(stderr, "JsonCpp: %s\n", errors.c_str());
      Fail("JsonCpp refuses a text the strict reading accepts");
    }
  } catch (const Json::Exception& e) {
    // JsonCpp counts values against its depth limit, the strict reading containers: a scalar
    // inside 1000 containers is past the one and within the other. There is no tree path to
    // compare with then; whether such a text should be read at all is strict_json_fuzzer's
    // question.
    if (DeepestValue(text) >= 1000) return 0;
    Fail("JsonCpp threw on a text the strict reading accepts:", e.what());
  }
  for (const Operation* op : DistinctAnswers()) SameAsTree(tree, text, control, *op);
  SameInBatches(text, control);
  return 0;
}
