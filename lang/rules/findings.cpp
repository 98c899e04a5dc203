#include "lang/rules/findings.h"

#include <utility>

#include "lang/unicode/code_points.h"

namespace KelmoLibs::Lang {
namespace {

// Cuts a text that came from a file. A character is not cut in two.
void Clip(std::string& text) {
  if (text.size() > Findings::kKeptBytes) {
    std::size_t size = Findings::kKeptBytes;
    while (size > Findings::kKeptBytes - 3 && IsContinuation(text[size])) {
      --size;
    }
    text.resize(size);
    text += u8"…";
    text.shrink_to_fit();
  }
}

void Clip(Sentence& sentence) {
  for (std::string& argument : sentence.arguments) {
    Clip(argument);
  }
}

void Clip(Finding& finding) {
  Clip(finding.id);
  Clip(finding.key);
  Clip(finding.message);
  Clip(finding.hint);
  Clip(finding.mend);
  for (RelatedPlace& related : finding.related) {
    Clip(related.message);
  }
}

}  // namespace

std::string KeptText(std::string_view text) {
  return std::string(text.substr(0, Findings::kKeptBytes + 1));
}

Finding& Findings::Add(RuleId rule, Severity severity, std::uint32_t file) {
  if (!kept_.empty()) {
    Clip(kept_.back());
  }
  const std::size_t count = ++counts_[{file, rule, severity}];
  if (count > kKept) {
    notKept_ = {};
    return notKept_;
  }
  Finding& finding = kept_.emplace_back();
  finding.rule = rule;
  finding.severity = severity;
  finding.place.file = file;
  return finding;
}

std::vector<Finding> Findings::Take() {
  if (!kept_.empty()) {
    Clip(kept_.back());
  }
  return std::exchange(kept_, {});
}

std::vector<CountedFindings> Findings::Counted() const {
  std::vector<CountedFindings> counted;
  for (const auto& [key, count] : counts_) {
    if (count > kKept) {
      const auto& [file, rule, severity] = key;
      counted.push_back({rule, severity, file, count - kKept});
    }
  }
  return counted;
}

}  // namespace KelmoLibs::Lang
