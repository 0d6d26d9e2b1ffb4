// Every operation at once from many threads, each on its own records and JSON values: the codecs
// keep no state, so every thread must get exactly what one thread alone gets. Under
// ThreadSanitizer (tools/check-tsan) any shared state they touched would also be reported.
#include <string>
#include <thread>
#include <vector>

#include "describe/operations_table.h"
#include "support/fixtures.h"

namespace {

using gsc::fields::Operation;
using gsc::fields::Operations;

constexpr int kThreads = 8;
constexpr int kRounds = 12;

// The request serialize writes for the operation's sample record, and the record deserialize
// fills from its sample answer (into arrays of one record), both as text, with the report of the
// reporting overloads when one is given. Each call makes its own records and JSON values.
std::string RunOnce(const Operation& op, gsc::Report* report) {
  const Json::Value request = gsc::fields::Encode(op, gsc::test::J(op.request_sample), report);
  const Json::Value received = gsc::fields::Decode(op, gsc::test::J(op.answer_sample),
                                                   gsc::fields::Room{1, 1U << 16}, {}, report);
  return gsc::test::Compact(request) + "\n" + gsc::test::Compact(received) + "\n";
}

// Both ways, the plain overloads and the reporting ones with what their report holds.
std::string RunOnce(const Operation& op) {
  gsc::Report report;
  return RunOnce(op, nullptr) + RunOnce(op, &report) + report.str();
}

TEST(Concurrency, EveryOperationFromManyThreadsGivesWhatOneThreadGives) {
  std::vector<std::string> expected;
  for (const Operation& op : Operations()) expected.push_back(RunOnce(op));

  std::vector<std::vector<std::string>> mismatches(kThreads);
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      for (int round = 0; round < kRounds; ++round) {
        // Threads start at different operations so that different codecs overlap.
        for (size_t i = 0; i < expected.size(); ++i) {
          const size_t k = (i + static_cast<size_t>(t)) % expected.size();
          if (RunOnce(Operations()[k]) != expected[k])
            mismatches[t].push_back(Operations()[k].name);
        }
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (int t = 0; t < kThreads; ++t) EXPECT_TRUE(mismatches[t].empty()) << "thread " << t;
  EXPECT_EQ(expected.size(), 17U);
}

}  // namespace
