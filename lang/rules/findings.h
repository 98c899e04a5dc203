// The findings of a run. A hostile file can give millions: then most of them are only counted.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "lang/finding.h"

namespace KelmoLibs::Lang {

/// Findings of one rule, severity and file that are counted and not kept.
struct CountedFindings {
  RuleId rule;
  Severity severity;
  std::uint32_t file;
  std::size_t count;
};

/// `text` as an argument of a sentence. Of a long text only so much is copied as Findings needs to cut
/// it: many findings may show the same text.
std::string KeptText(std::string_view text);

class Findings {
 public:
  /// So many findings of one rule, severity and file are kept.
  static constexpr std::size_t kKept = 50'000;

  /// So many bytes of a key or an argument are kept; the rest of a longer one becomes "…".
  static constexpr std::size_t kKeptBytes = 2'000;

  /// Adds a finding and returns it, for the caller to fill. The reference is valid until the next
  /// call of any member.
  Finding& Add(RuleId rule, Severity severity, std::uint32_t file);

  /// The kept findings, in the order in which they were added.
  std::vector<Finding> Take();

  /// The others.
  std::vector<CountedFindings> Counted() const;

  // NOLINTBEGIN(readability-identifier-naming): the names that containers have

  // The kept findings. Keys and arguments of the last one may be longer than kKeptBytes.
  auto begin() const noexcept { return kept_.begin(); }
  auto end() const noexcept { return kept_.end(); }
  std::size_t size() const noexcept { return kept_.size(); }
  bool empty() const noexcept { return kept_.empty(); }
  // NOLINTEND(readability-identifier-naming)

  const Finding& operator[](std::size_t index) const noexcept { return kept_[index]; }

 private:
  std::vector<Finding> kept_;
  Finding notKept_ = {};
  std::map<std::tuple<std::uint32_t, RuleId, Severity>, std::size_t> counts_;
};

}  // namespace KelmoLibs::Lang
