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

#include "codec/value.h"
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
  explicit Reporting(gsc::Report& report);
  ~Reporting();
  Reporting(const Reporting&) = delete;
  Reporting& operator=(const Reporting&) = delete;
  Reporting(Reporting&&) = delete;
  Reporting& operator=(Reporting&&) = delete;

  // Whether a value JsonCpp cannot convert is read as null (and noted) instead of stopping.
  bool skipping() const { return skipping_; }

  void Push(const Segment& segment) { path_.push_back(segment); }
  void Pop() { path_.pop_back(); }

  // A finding at the path under way, or at that path extended by `last`.
  void Add(gsc::FindingKind kind, std::string detail);
  void Add(gsc::FindingKind kind, const Segment& last, std::string detail);

 private:
  std::string Path(const Segment* last) const;

  gsc::Report& report_;
  std::vector<Segment> path_;
  bool skipping_;
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

// Runs `convert(value)` (asInt, asBool, a member lookup, ...) into `out`: a conversion JsonCpp
// may refuse. Returns true when it ran. A refused conversion raises Json::Exception, except when
// the report skips failures: then it is noted as a failed conversion at the path under way with
// JsonCpp's message, `out` keeps its value and false is returned, and the caller goes on reading
// the value as it reads null.
template <typename C, typename V, typename T, typename Convert>
bool Converted(C& context, const V& value, T& out, Convert convert) {
  if constexpr (C::kReporting) {
    if (context.skipping()) {
      try {
        out = convert(value);
      } catch (const Json::Exception& failure) {
        context.Add(gsc::FindingKind::kConversionFailed, failure.what());
        return false;
      }
      return true;
    }
  }
  out = convert(value);
  return true;
}

// Looks up a member of `value` as JsonCpp's find does (raising for a value that is neither an
// object nor null); whether it found none.
inline bool FindsNothing(const Json::Value& value) {
  return value.find("", "") == nullptr;
}
inline bool FindsNothing(const TextValue& value) {
  TextValue member;
  return !value.find("", "", member);
}

// The value a reader looks into for members: `value` itself, unless the report skips failures
// and `value` is neither an object nor null, which JsonCpp's member lookup refuses. Such a value
// is noted as a failed conversion at the path under way and read as null from here on. (Without
// skipping, the lookup of the first member raises.)
template <typename C, typename V>
ValueRef<V> ObjectOrNull(C& context, const V& value) {
  if constexpr (C::kReporting) {
    if (context.skipping() && !value.isObject() && !value.isNull()) {
      bool found = false;
      Converted(context, value, found, [](const V& v) { return FindsNothing(v); });
      return ValueTraits<V>::Null();
    }
  }
  return value;
}

// Runs a reading or writing `body` silently, as the plain overloads do; always true.
template <typename Body>
bool RunSilent(Body body) {
  Silent context{};
  body(context);
  return true;
}

// Runs a reading or writing `body` with a report: the report is cleared first, and what JsonCpp
// throws is caught and added as a failed conversion at the path where it was thrown. Returns
// true when the body ran to its end (always, when the report skips failures).
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

// One step of a finding's path read back: a member name, or an array index.
struct PathStep {
  bool isIndex;
  std::string name;
  uint32_t index;
};

// The steps of `path` as the reports write paths (an empty path names the root); false when
// `path` is not such a path.
bool ParsePath(const std::string& path, std::vector<PathStep>& steps);

// The value of `root` that the finding path `path` names, or null when `path` is no path or names
// no value of `root`.
const Json::Value* ValueAtPath(const Json::Value& root, const std::string& path);

// Short descriptions of JSON values for finding details: "object", "number 1.5", "true".
template <typename V>
std::string Describe(const V& value);

}  // namespace gsc::codec

#endif  // GUIDESCREEN_CODEC_CODEC_REPORTING_H
