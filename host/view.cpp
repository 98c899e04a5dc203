#include "host/view.h"

#include <algorithm>
#include <utility>

#include "cldr/number_formats.h"
#include "host/form_key.h"
#include "text/utf8_characters.h"
#include "text/utf8_replacement.h"

namespace KelmoLibs::Host {
namespace {

// Around a missing key that is marked.
constexpr std::string_view kMarkBefore = "[[";
constexpr std::string_view kMarkBehind = "]]";

// Copies the strings of `format` to `marks`, and lets it refer to them.
void KeepMarks(Cldr::NumberFormat& format, std::string& marks) {
  std::string_view* const parts[] = {&format.decimalMark, &format.groupMark, &format.minusSign};
  for (const std::string_view* const part : parts) {
    marks += *part;
  }
  std::string_view rest = marks;
  for (std::string_view* const part : parts) {
    *part = rest.substr(0, part->size());
    rest.remove_prefix(part->size());
  }
}

// A view without texts still serves units: what users type must not be read as English numbers.
void UseFormatOf(const std::vector<std::string>& ids, Cldr::NumberFormat& numbers) {
  for (const std::string& id : ids) {
    if (const Cldr::NumberFormat* const format = Cldr::FindNumberFormat(id)) {
      numbers = *format;
      return;
    }
  }
}

}  // namespace

View::View(const TextCollection& texts, const ViewOptions& options, ProblemList* problems)
    : texts_(texts),
      ids_(options.languages.begin(), options.languages.end()),
      missing_(options.missing),
      isIsolating_(options.isIsolating) {
  for (const std::string_view id : options.languages) {
    if (const LanguageTexts* const language = texts_.FindLanguage(id)) {
      languages_.push_back({language, &Cldr::PluralRulesOf(id)});
    }
  }
  if (!languages_.empty()) {
    first_ = languages_.front().texts;
  }
  if (options.numbers != nullptr) {
    numbers_ = *options.numbers;
    KeepMarks(numbers_, marks_);
  } else if (first_ != nullptr) {
    const Cldr::NumberFormat* const format = Cldr::FindNumberFormat(first_->Id());
    numbers_ = format != nullptr ? *format : numbers_;
  } else {
    UseFormatOf(ids_, numbers_);
  }
  if (options.problemLimit != 0) {
    record_ = std::make_unique<ProblemRecord>(options.problemLimit);
  }
  if (missing_ == MissingText::kMarked) {
    marked_ = std::make_unique<MarkedKeys>();
  }
  // Nothing fails any more: a view that is not made tells nothing.
  for (const std::string_view id : options.languages) {
    if (texts_.FindLanguage(id) == nullptr) {
      TellLanguages(ProblemCode::kUnknownLanguage, id, problems);
    }
  }
  if (languages_.empty()) {
    TellLanguages(ProblemCode::kNoLanguage, "", problems);
  }
}

void View::TellLanguages(ProblemCode code, std::string_view id,
                         ProblemList* problems) const noexcept {
  if (problems == nullptr) {
    return;
  }
  problems->Append([&] {
    Problem problem;
    problem.code = code;
    problem.severity =
        code == ProblemCode::kNoLanguage ? ProblemSeverity::kError : ProblemSeverity::kWarning;
    problem.language = id;
    constexpr std::size_t kMostNamed = 20;  // a host may ask for languages without end
    problem.detail = "the texts have ";
    std::string_view separator;
    for (std::size_t i = 0; i < std::min(kMostNamed, texts_.languages.size()); ++i) {
      problem.detail.append(separator).append(texts_.languages[i]->Id());
      separator = ", ";
    }
    problem.detail += texts_.languages.empty()               ? "none"
                      : texts_.languages.size() > kMostNamed ? ", ..."
                                                             : "";
    return problem;
  });
}

FoundText View::FindAmongAll(std::string_view key) const noexcept {
  const KeyBytes query(key);
  for (const Language& language : languages_) {
    if (const TextRecord* const record = language.texts->Find(query)) {
      return {record, language.texts};
    }
  }
  return {};
}

FoundText View::FindForm(std::string_view key, const PluralCount& count) const {
  FormKey form(key);
  for (const Language& language : languages_) {
    const auto find = [&](std::string_view mark, std::string_view name) {
      return language.texts->Find(KeyBytes(form.With(mark, name)));
    };
    const Cldr::PluralCategory category = count.CategoryIn(*language.rules);
    const TextRecord* record = count.Exact().empty() ? nullptr : find(".=", count.Exact());
    if (record == nullptr && category != Cldr::PluralCategory::kOther) {
      record = find(".", Cldr::PluralCategoryName(category));
    }
    if (record == nullptr) {
      record = find(".", "other");
    }
    if (record == nullptr) {
      record = find("", "");
    }
    if (record != nullptr) {
      return {record, language.texts};
    }
  }
  return {};
}

std::string_view View::TextForMissing(std::string_view key) const noexcept {
  constexpr std::size_t kMostMarked = 4096;  // a host may make keys without end
  if (missing_ == MissingText::kKey) {
    return key;
  }
  if (missing_ == MissingText::kNothing) {
    return {};
  }
  const std::lock_guard<std::mutex> lock(marked_->mutex);
  const auto found = marked_->forms.find(key);
  if (found != marked_->forms.end()) {
    return found->second;
  }
  if (marked_->forms.size() == kMostMarked) {
    return key;
  }
  try {
    std::string form(kMarkBefore);
    form.append(key).append(kMarkBehind);
    return marked_->forms.emplace(key, std::move(form)).first->second;
  } catch (...) {
    return key;
  }
}

void View::WriteForMissing(std::string_view key, TextSink& sink) const noexcept {
  const bool isMarked = missing_ == MissingText::kMarked;
  sink.Append(isMarked ? kMarkBefore : "");
  sink.Append(missing_ != MissingText::kNothing ? key : "");
  sink.Append(isMarked ? kMarkBehind : "");
}

void View::Tell(const MetProblem& problem, ProblemList* problems) const noexcept {
  if (problems != nullptr) {
    problems->Append([&problem] { return problem.Copy(); });
  } else if (record_ != nullptr) {
    record_->Add(problem);
  }
}

void View::CountLost(ProblemList* problems) const noexcept {
  if (problems != nullptr) {
    problems->CountLost();
  } else if (record_ != nullptr) {
    record_->CountLost();
  }
}

void View::TellMissing(std::string_view key, ProblemList* problems) const noexcept {
  if (problems == nullptr && record_ == nullptr) {
    return;
  }
  MetProblem problem;
  problem.code = ProblemCode::kKeyMissing;
  problem.severity = ProblemSeverity::kWarning;
  problem.key = key;
  if (first_ != nullptr) {
    problem.language = first_->Id();
  }
  try {
    if (HasForms(key)) {
      problem.detail = "it has plural forms, and no count was given";
    }
    std::string mended;  // the strings of problems are UTF-8
    if (!Localize::IsUtf8(key)) {
      mended = Localize::ReplaceInvalidUtf8(key);
      problem.key = mended;
    }
    Tell(problem, problems);
  } catch (...) {
    CountLost(problems);
  }
}

bool View::HasForms(std::string_view key) const {
  FormKey form(key);
  const KeyBytes query(form.With(".", "other"));
  return std::any_of(languages_.begin(), languages_.end(), [&query](const Language& language) {
    return language.texts->Find(query) != nullptr;
  });
}

std::size_t View::TakeProblems(ProblemList* problems) const noexcept {
  return record_ != nullptr ? record_->Take(problems) : 0;
}

}  // namespace KelmoLibs::Host
