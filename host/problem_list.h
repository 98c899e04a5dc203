// What went wrong, as data: the list that a host passes to a call.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <utility>

namespace KelmoLibs::Host {

/// The values are those of kelmo.h.
enum class ProblemCode : std::int32_t {
  kKeyRepeated = 101,
  kCannotRead = 111,
  kUnknownLanguage = 112,
  kKeyMissing = 121,
  kNotUtf8 = 201,
  kByteOrderMark = 202,
  kEmptyFile = 203,
  kControlZ = 204,
  kLineBreak = 205,
  kNoLanguageId = 206,
  kEmptyFolder = 207,
  kNoLanguage = 208,
  kOverridesNothing = 209,
  kPlaceholder = 211,
  kUnit = 221,
  kUnitRepeated = 222,
  kUnitDropped = 223,
  kUnitNoFactor = 224,
  kUnitDifference = 225,
  kNameOfNoUnit = 226,
  kCannotReadUnits = 227,
  kNoNumber = 231,
  kDecimalMark = 232,
  kGroups = 233,
  kNumberRange = 234,
  kNoUnit = 235,
  kUnknownUnit = 236,
  kAmbiguousUnit = 237,
  kOtherKind = 238,
};

enum class ProblemSeverity : std::int32_t { kNote = 0, kWarning = 1, kError = 2 };

struct Problem {
  ProblemCode code{};
  ProblemSeverity severity{};
  std::uint32_t line = 0;    // from 1; 0 if it is about no line
  std::uint32_t column = 0;  // in characters, from 1; 0 if it is about no place in a line
  std::string key;
  std::string language;
  std::string file;
  std::string detail;
};

/// The English sentence of a problem, with a terminating zero; the first library's where it has one.
std::string_view SentenceOf(ProblemCode code) noexcept;

/// The problem as one line for people, in English: `de.txt:7:1: warning: ...`.
std::string Print(const Problem& problem);

class ProblemList {
 public:
  /// Appends the problem that `make` returns. If memory is out, only counts it.
  template <class Maker>
  void Append(Maker make) noexcept {
    try {
      problems_.push_back(make());
    } catch (...) {
      ++lost_;
    }
  }

  /// Counts a problem that cannot be described, because memory is out.
  void CountLost() noexcept { ++lost_; }

  /// Moves all problems of another list to the end of this one.
  void TakeFrom(ProblemList& other) noexcept {
    lost_ += other.lost_;
    for (Problem& problem : other.problems_) {
      Append([&problem] { return std::move(problem); });
    }
    other.Clear();
  }

  void Clear() noexcept {
    problems_.clear();
    lost_ = 0;
  }

  /// A problem stays at its address until the list is cleared: hosts have its strings.
  const std::deque<Problem>& All() const noexcept { return problems_; }
  std::size_t Lost() const noexcept { return lost_; }

 private:
  std::deque<Problem> problems_;
  std::size_t lost_ = 0;
};

}  // namespace KelmoLibs::Host
