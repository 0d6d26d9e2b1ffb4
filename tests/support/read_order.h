// Read order, as a caller sees it when a value cannot be converted: a reader that meets a value
// JsonCpp cannot convert stops there, so the steps before it have stored their values and the
// steps after it have left the caller's. A table lists a reader's steps in order, each with the
// bytes it stores and, for a step that can throw, where to put an unconvertible value; the runner
// breaks each such step in turn and checks every other step's bytes.
#ifndef GUIDESCREEN_CODEC_TESTS_SUPPORT_READ_ORDER_H
#define GUIDESCREEN_CODEC_TESTS_SUPPORT_READ_ORDER_H

#include <gtest/gtest.h>
#include <json/json.h>

#include <cstddef>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "guidescreen_codec/report.h"
#include "support/json_path.h"

namespace gsc::test {

// Bytes of the record under test that one step stores.
struct Span {
  size_t offset;
  size_t size;
};

// The bytes of `member` (a field, possibly nested or indexed) within `Type`.
#define GSC_SPAN(Type, member) \
  (::gsc::test::Span{offsetof(Type, member), sizeof(std::declval<Type&>().member)})

// Where element `index` of the array `member` of `Type` starts.
#define GSC_ENTRY(Type, member, index) \
  (offsetof(Type, member) + (index) * sizeof(std::declval<Type&>().member[0]))

// One step of a reader. `breakAt` is the path of a value (in the form the reports write paths:
// "Timer.PlayDates[1]") that is replaced by `bad` to make the step throw; it is empty for a step
// that cannot throw, which is listed all the same so that its place among the others is checked.
struct OrderStep {
  std::string name;
  std::vector<Span> fields;
  std::string breakAt;
  Json::Value bad;
};

// A step that throws when its own value, at path `at`, is the text "x" (or `bad`).
inline OrderStep Breaks(const std::string& at, std::vector<Span> fields,
                        Json::Value bad = Json::Value("x")) {
  return {at, std::move(fields), at, std::move(bad)};
}

// A step named `name` (a whole entry, say) that throws when the value at `at` inside it is bad.
inline OrderStep BreaksAt(const std::string& name, std::vector<Span> fields, const std::string& at,
                          Json::Value bad = Json::Value("x")) {
  return {name, std::move(fields), at, std::move(bad)};
}

// A step that cannot throw (a text, a count).
inline OrderStep Never(const std::string& name, std::vector<Span> fields) {
  return {name, std::move(fields), "", Json::Value()};
}

// A value that asString (time and date texts) cannot convert.
inline Json::Value NotAText() {
  return Json::Value(Json::arrayValue);
}

inline std::string JoinPath(const std::string& prefix, const std::string& path) {
  if (prefix.empty() || path.empty()) return prefix + path;
  return path[0] == '[' ? prefix + path : prefix + "." + path;
}

// The steps of a nested object's reader as its parent reads them: paths under `prefix`, bytes
// `base` further on.
inline std::vector<OrderStep> Embed(std::vector<OrderStep> steps, const std::string& prefix,
                                    size_t base) {
  for (OrderStep& step : steps) {
    step.name = JoinPath(prefix, step.name);
    if (!step.breakAt.empty()) step.breakAt = JoinPath(prefix, step.breakAt);
    for (Span& span : step.fields) span.offset += base;
  }
  return steps;
}

inline void Append(std::vector<OrderStep>& steps, std::vector<OrderStep> more) {
  for (OrderStep& step : more) steps.push_back(std::move(step));
}

// Replaces the value at `path` (which must exist) with `bad`.
inline bool PutAt(Json::Value& root, const std::string& path, const Json::Value& bad) {
  if (FindPath(root, path) == nullptr) return false;
  MakePath(root, path) = bad;
  return true;
}

// What the caller's record held before the reader ran.
constexpr unsigned char kPriorByte = 0x5A;

// A reader, the answer whose every value it reads is good, and its steps in order. The record
// under test is a plain structure (the output record, with the caller's arrays and element
// buffers inside it when the reader needs them); `prepare` points the record at them.
template <typename Subject>
struct ReadOrderCase {
  std::string reader;
  Json::Value good;
  std::vector<OrderStep> steps;
  std::function<void(const Json::Value&, Subject&)> read;
  // The reporting overload, for operations; it must stop where the plain one throws.
  std::function<bool(const Json::Value&, Subject&, gsc::Report&)> readReporting;
  std::function<void(Subject&)> prepare;
};

template <typename Subject>
class ReadOrderRunner {
  static_assert(std::is_trivially_copyable_v<Subject>, "records are plain bytes");

 public:
  explicit ReadOrderRunner(const ReadOrderCase<Subject>& c) : c_(c) {}

  void Run() {
    SCOPED_TRACE(c_.reader);
    const Record good = Fresh();
    ASSERT_NO_THROW(c_.read(c_.good, *good.subject)) << "the good answer must read to its end";
    good_ = good.Bytes();
    CheckGoodAnswer(good);
    for (size_t k = 0; k < c_.steps.size(); ++k) {
      const OrderStep& step = c_.steps[k];
      if (step.breakAt.empty()) continue;
      SCOPED_TRACE("unconvertible " + step.breakAt);
      Json::Value broken = c_.good;
      ASSERT_TRUE(PutAt(broken, step.breakAt, step.bad)) << "no value at " << step.breakAt;

      const Record plain = Fresh();
      bool threw = false;
      try {
        c_.read(broken, *plain.subject);
      } catch (const Json::Exception&) {
        threw = true;
      }
      EXPECT_TRUE(threw) << "reading should stop at " << step.breakAt;
      CheckStoppedAt(k, plain);

      if (c_.readReporting) {
        SCOPED_TRACE("reporting overload");
        const Record reporting = Fresh();
        gsc::Report report;
        EXPECT_FALSE(c_.readReporting(broken, *reporting.subject, report));
        CheckStoppedAt(k, reporting);
        ASSERT_FALSE(report.empty());
        EXPECT_EQ(report.findings().back().kind, gsc::FindingKind::kConversionFailed);
        EXPECT_EQ(report.findings().back().path, step.breakAt);
      }
    }
  }

 private:
  struct Record {
    std::unique_ptr<Subject> subject;
    std::vector<unsigned char> prior;
    std::vector<unsigned char> Bytes() const {
      const auto* bytes = reinterpret_cast<const unsigned char*>(subject.get());
      return {bytes, bytes + sizeof(Subject)};
    }
  };

  // A record as the caller leaves it: every byte kPriorByte, then its pointers set.
  Record Fresh() const {
    Record record{std::make_unique<Subject>(), {}};
    std::memset(static_cast<void*>(record.subject.get()), kPriorByte, sizeof(Subject));
    if (c_.prepare) c_.prepare(*record.subject);
    record.prior = record.Bytes();
    return record;
  }

  static bool Same(const std::vector<unsigned char>& a, const std::vector<unsigned char>& b,
                   const Span& span) {
    return std::memcmp(a.data() + span.offset, b.data() + span.offset, span.size) == 0;
  }

  // Every step of the good answer stores something the caller did not have, and no byte that no
  // step lists changes: the table is the reader's whole effect.
  void CheckGoodAnswer(const Record& good) {
    std::vector<bool> listed(sizeof(Subject), false);
    for (const OrderStep& step : c_.steps) {
      for (const Span& span : step.fields) {
        ASSERT_LE(span.offset + span.size, sizeof(Subject)) << step.name;
        EXPECT_FALSE(Same(good_, good.prior, span))
            << step.name << ": the good answer should store a value of its own";
        for (size_t i = 0; i < span.size; ++i) listed[span.offset + i] = true;
      }
    }
    for (size_t i = 0; i < sizeof(Subject); ++i) {
      if (!listed[i] && good_[i] != good.prior[i]) {
        ADD_FAILURE() << "byte " << i << " is stored by no listed step";
        break;
      }
    }
  }

  void CheckStoppedAt(size_t k, const Record& record) const {
    const std::vector<unsigned char> now = record.Bytes();
    for (size_t i = 0; i < c_.steps.size(); ++i) {
      if (i == k) continue;
      for (const Span& span : c_.steps[i].fields) {
        if (i < k) {
          EXPECT_TRUE(Same(now, good_, span))
              << c_.steps[i].name << " comes before " << c_.steps[k].name
              << " and should hold the answer's value";
        } else {
          EXPECT_TRUE(Same(now, record.prior, span))
              << c_.steps[i].name << " comes after " << c_.steps[k].name
              << " and should keep the caller's value";
        }
      }
    }
  }

  const ReadOrderCase<Subject>& c_;
  std::vector<unsigned char> good_;
};

template <typename Subject>
void ExpectReadOrder(const ReadOrderCase<Subject>& c) {
  ReadOrderRunner<Subject>(c).Run();
}

}  // namespace gsc::test

#endif  // GUIDESCREEN_CODEC_TESTS_SUPPORT_READ_ORDER_H
