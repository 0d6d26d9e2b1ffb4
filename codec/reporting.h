// The two ways every codec runs: silently, as the plain overloads do, or keeping the path of the
// step under way and adding findings to a gsc::Report. Codecs are templates over these contexts;
// with Silent every hook is empty and compiles away, so the plain overloads keep their cost.
#ifndef GUIDESCREEN_CODEC_CODEC_REPORTING_H
#define GUIDESCREEN_CODEC_CODEC_REPORTING_H

#include <json/value.h>

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>
#include <vector>

#include "guidescreen_codec/report.h"

namespace gsc::codec {

// One step of a path: a JSON member name, an array index, or a record field named by a type
// prefix, its JSON key and a suffix ("n", "PlayDates" and "Num" name nPlayDatesNum).
struct Segment {
  const char* prefix;  // set for record fields only
  const char* name;    // null for an index
  uint32_t length;     // of name
  uint32_t index;
  const char* suffix;

  static Segment Member(const char* name, uint32_t length) {
    return {nullptr, name, length, 0, ""};
  }
  static Segment Index(uint32_t index) { return {nullptr, nullptr, 0, index, ""}; }
  static Segment Field(const char* prefix, const char* key, uint32_t length) {
    return {prefix, key, length, 0, ""};
  }
};

// Running without a report.
struct Silent {
  static constexpr bool kReporting = false;
  void Push(const Segment& /*segment*/) {}
  void Pop() {}
};

// Running with a report: the path of the step under way, and the findings.
class Reporting {
 public:
  static constexpr bool kReporting = true;
  explicit Reporting(gsc::Report& report) : report_(report) {}

  void Push(const Segment& segment) { path_.push_back(segment); }
  void Pop() { path_.pop_back(); }

  // A finding at the path under way, or at that path extended by `last`.
  void Add(gsc::FindingKind kind, std::string detail);
  void Add(gsc::FindingKind kind, const Segment& last, std::string detail);

 private:
  std::string Path(const Segment* last) const;

  gsc::Report& report_;
  std::vector<Segment> path_;
};

// A path segment held for the life of a step. A step that throws leaves its segment in place, so
// that the path still names the failed conversion when the reporting overload catches it.
template <typename Context>
class Step {
 public:
  Step(Context& context, const Segment& segment) : context_(context) {
    if constexpr (Context::kReporting) {
      context_.Push(segment);
      unwinding_ = std::uncaught_exceptions();
    }
  }
  ~Step() {
    if constexpr (Context::kReporting) {
      if (std::uncaught_exceptions() == unwinding_) context_.Pop();
    }
  }
  Step(const Step&) = delete;
  Step& operator=(const Step&) = delete;
  Step(Step&&) = delete;
  Step& operator=(Step&&) = delete;

 private:
  Context& context_;
  int unwinding_ = 0;
};

// Runs a reading or writing `body` silently, as the plain overloads do; always true.
template <typename Body>
bool RunSilent(Body body) {
  Silent context{};
  body(context);
  return true;
}

// Runs a reading or writing `body` with a report: the report is cleared first, and what JsonCpp
// throws is caught and added as a failed conversion at the path where it was thrown. Returns
// true when the body ran to its end.
template <typename Body>
bool RunReporting(gsc::Report& report, Body body) {
  report.clear();
  Reporting context(report);
  try {
    body(context);
  } catch (const Json::Exception& failure) {
    context.Add(gsc::FindingKind::kConversionFailed, failure.what());
    return false;
  }
  return true;
}

// A member name as a path writes it: bare, or ["..."] when it holds what a path uses.
std::string PathName(const char* name, size_t length);

// Short descriptions of JSON values for finding details: "object", "number 1.5", "true".
std::string Describe(const Json::Value& value);

}  // namespace gsc::codec

#endif  // GUIDESCREEN_CODEC_CODEC_REPORTING_H
