#include "host/problem_record.h"

#include <tuple>
#include <utility>

namespace KelmoLibs::Host {
namespace {

// What makes two problems the same.
using Identity = std::tuple<ProblemCode, std::string_view, std::string_view, std::string_view,
                            std::uint32_t, std::string_view>;

template <class AnyProblem>
Identity IdentityOf(const AnyProblem& problem) noexcept {
  return {problem.code, problem.key, problem.language, problem.file, problem.line, problem.detail};
}

}  // namespace

Problem MetProblem::Copy() const {
  Problem copy;
  copy.code = code;
  copy.severity = severity;
  copy.line = line;
  copy.key = key;
  copy.language = language;
  copy.file = file;
  copy.detail = detail;
  return copy;
}

bool ProblemRecord::IsLess::operator()(const Problem* left, const Problem* right) const noexcept {
  return IdentityOf(*left) < IdentityOf(*right);
}

bool ProblemRecord::IsLess::operator()(const Problem* left,
                                       const MetProblem& right) const noexcept {
  return IdentityOf(*left) < IdentityOf(right);
}

bool ProblemRecord::IsLess::operator()(const MetProblem& left,
                                       const Problem* right) const noexcept {
  return IdentityOf(left) < IdentityOf(*right);
}

void ProblemRecord::Add(const MetProblem& problem) noexcept {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (known_.find(problem) != known_.end()) {
    return;
  }
  if (problems_.size() >= limit_) {
    ++lost_;
    return;
  }
  const std::size_t count = problems_.size();
  try {
    problems_.push_back(problem.Copy());
    known_.insert(&problems_.back());
  } catch (...) {
    problems_.resize(count);
    ++lost_;
  }
}

void ProblemRecord::CountLost() noexcept {
  const std::lock_guard<std::mutex> lock(mutex_);
  ++lost_;
}

std::size_t ProblemRecord::Take(ProblemList* problems) noexcept {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (problems != nullptr) {
    for (Problem& problem : problems_) {
      problems->Append([&] { return std::move(problem); });
    }
  }
  known_.clear();
  problems_.clear();
  return std::exchange(lost_, 0);
}

}  // namespace KelmoLibs::Host
