// The problems that lookups of a view meet.
#pragma once

#include <cstddef>
#include <list>
#include <mutex>
#include <set>
#include <string_view>

#include "host/problem_list.h"

namespace KelmoLibs::Host {

/// A problem that a lookup meets: the strings belong to others.
struct MetProblem {
  ProblemCode code{};
  ProblemSeverity severity{};
  std::string_view key;
  std::string_view language;
  std::string_view file;
  std::uint32_t line = 0;
  std::string_view detail;

  Problem Copy() const;
};

/// Keeps each problem once, up to a limit. Thread-safe.
class ProblemRecord {
 public:
  explicit ProblemRecord(std::size_t limit) noexcept : limit_(limit) {}

  /// Only counts the problem if the limit is reached or memory is out. A problem that is recorded
  /// already takes no memory and does not count.
  void Add(const MetProblem& problem) noexcept;

  /// Counts a problem that cannot be described, because memory is out.
  void CountLost() noexcept;

  /// Moves all problems to the end of `problems`, which may be null, in the order in which they were
  /// met, and forgets them. Returns how often a problem was only counted.
  std::size_t Take(ProblemList* problems) noexcept;

 private:
  struct IsLess {
    using is_transparent = void;
    bool operator()(const Problem* left, const Problem* right) const noexcept;
    bool operator()(const Problem* left, const MetProblem& right) const noexcept;
    bool operator()(const MetProblem& left, const Problem* right) const noexcept;
  };

  std::size_t limit_;
  std::mutex mutex_;
  std::list<Problem> problems_;
  std::set<const Problem*, IsLess> known_;
  std::size_t lost_ = 0;
};

}  // namespace KelmoLibs::Host
