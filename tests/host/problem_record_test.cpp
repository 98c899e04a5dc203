#include "host/problem_record.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/allocation_probe.h"

namespace {

using KelmoLibs::Host::MetProblem;
using KelmoLibs::Host::ProblemCode;
using KelmoLibs::Host::ProblemList;
using KelmoLibs::Host::ProblemRecord;
using KelmoLibs::Host::ProblemSeverity;

MetProblem Missing(std::string_view key) {
  MetProblem problem;
  problem.code = ProblemCode::kKeyMissing;
  problem.severity = ProblemSeverity::kWarning;
  problem.key = key;
  problem.language = "de";
  return problem;
}

std::vector<std::string> KeysOf(const ProblemList& problems) {
  std::vector<std::string> keys;
  for (const auto& problem : problems.All()) {
    keys.push_back(problem.key);
  }
  return keys;
}

using Keys = std::vector<std::string>;

TEST(ProblemRecord, KeepsEachProblemOnceInTheOrderOfItsFirstTime) {
  ProblemRecord record(10);
  for (const char* key : {"b", "a", "b", "c", "a"}) {
    record.Add(Missing(key));
  }
  ProblemList problems;
  EXPECT_EQ(record.Take(&problems), 0U);
  EXPECT_EQ(KeysOf(problems), (Keys{"b", "a", "c"}));
}

TEST(ProblemRecord, TellsProblemsApartByEveryField) {
  const MetProblem first = Missing("a");
  std::vector<MetProblem> others(6, first);
  others[0].code = ProblemCode::kPlaceholder;
  others[1].key = "b";
  others[2].language = "en";
  others[3].file = "de.txt";
  others[4].line = 7;
  others[5].detail = "{0}";
  ProblemRecord record(10);
  record.Add(first);
  for (const MetProblem& other : others) {
    record.Add(other);
  }
  ProblemList problems;
  record.Take(&problems);
  ASSERT_EQ(problems.All().size(), 7U);
  const auto& last = problems.All().back();
  EXPECT_EQ(last.code, ProblemCode::kKeyMissing);
  EXPECT_EQ(last.severity, ProblemSeverity::kWarning);
  EXPECT_EQ(last.key, "a");
  EXPECT_EQ(last.language, "de");
  EXPECT_EQ(last.detail, "{0}");
  EXPECT_EQ(problems.All()[4].file, "de.txt");
  EXPECT_EQ(problems.All()[5].line, 7U);
}

TEST(ProblemRecord, CountsWhatIsBeyondItsLimit) {
  ProblemRecord record(2);
  for (const char* key : {"a", "b", "c", "a", "d", "c"}) {
    record.Add(Missing(key));
  }
  record.CountLost();
  ProblemList problems;
  EXPECT_EQ(record.Take(&problems), 4U);
  EXPECT_EQ(KeysOf(problems), (Keys{"a", "b"}));
}

TEST(ProblemRecord, ForgetsWhatIsTaken) {
  ProblemRecord record(1);
  record.Add(Missing("a"));
  record.Add(Missing("b"));
  EXPECT_EQ(record.Take(nullptr), 1U);
  record.Add(Missing("a"));
  ProblemList problems;
  EXPECT_EQ(record.Take(&problems), 0U);
  EXPECT_EQ(KeysOf(problems), (Keys{"a"}));
}

TEST(ProblemRecord, LosesNothingBetweenThreads) {
  constexpr int kThreads = 8;
  constexpr int kKeys = 500;
  ProblemRecord record(kThreads * kKeys);
  std::vector<std::thread> threads;
  for (int thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&record, thread] {
      for (int i = 0; i < kKeys; ++i) {
        record.Add(Missing("own " + std::to_string(thread) + " " + std::to_string(i)));
        record.Add(Missing("shared"));
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  ProblemList problems;
  // "shared" is one more than the limit lets in unless it came before the last key.
  const std::size_t lost = record.Take(&problems);
  EXPECT_EQ(problems.All().size(), static_cast<std::size_t>(kThreads * kKeys));
  EXPECT_GE(lost, 1U);
}

TEST(ProblemRecord, CountsWhatItHasNoMemoryFor) {
  bool hasFailed = true;
  for (std::size_t n = 1; hasFailed; ++n) {
    ProblemRecord record(10);
    {
      const allocation_probe::FailAllocation failure(n, allocation_probe::Failing::kOnce);
      record.Add(Missing("a key that is too long to need no memory"));
      hasFailed = failure.Happened();
    }
    ProblemList problems;
    EXPECT_EQ(record.Take(&problems), hasFailed ? 1U : 0U) << n;
    EXPECT_EQ(problems.All().size(), hasFailed ? 0U : 1U) << n;
  }
}

}  // namespace
