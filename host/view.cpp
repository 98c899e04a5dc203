#include "host/view.h"

#include <utility>

namespace KelmoLibs::Host {

void MissingKeys::Record(std::string_view key) noexcept {
  try {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (keys_.find(key) != keys_.end()) {
      return;
    }
    if (order_.size() == limit_) {
      ++lost_;
      return;
    }
    try {
      order_.reserve(order_.size() + 1);
      order_.push_back(&*keys_.emplace(key).first);
    } catch (...) {
      ++lost_;
    }
  } catch (...) {
    return;  // the system refuses the lock; std::mutex says that this does not happen
  }
}

std::size_t MissingKeys::Take(std::string_view language, ProblemList* problems) noexcept {
  const std::lock_guard<std::mutex> lock(mutex_);
  for (const std::string* const key : order_) {
    if (problems != nullptr) {
      problems->Append([&] {
        Problem problem;
        problem.code = ProblemCode::kKeyMissing;
        problem.severity = ProblemSeverity::kWarning;
        problem.key = *key;
        problem.language = language;
        return problem;
      });
    }
  }
  order_.clear();
  keys_.clear();
  return std::exchange(lost_, 0);
}

View::View(SealedTexts texts, const std::vector<std::string_view>& languages,
           std::size_t missingLimit, ProblemList* problems)
    : texts_(std::move(texts)) {
  for (const std::string_view id : languages) {
    std::size_t index = 0;
    while (index < texts_->languages.size() && texts_->languages[index]->Id() != id) {
      ++index;
    }
    if (index < texts_->languages.size()) {
      languages_.push_back({texts_->languages[index].get(), index});
    } else if (problems != nullptr) {
      problems->Append([&] {
        Problem problem;
        problem.code = ProblemCode::kUnknownLanguage;
        problem.severity = ProblemSeverity::kWarning;
        problem.language = id;
        return problem;
      });
    }
  }
  if (missingLimit != 0) {
    missing_ = std::make_unique<MissingKeys>(missingLimit);
  }
}

FoundText View::Find(std::string_view key) const noexcept {
  const KeyBytes query(key);
  for (const Language& language : languages_) {
    if (const TextRecord* const record = language.texts->Find(query)) {
      return {record, language.index};
    }
  }
  if (missing_ != nullptr) {
    missing_->Record(key);
  }
  return {};
}

std::size_t View::TakeProblems(ProblemList* problems) const noexcept {
  const std::string_view first = languages_.empty() ? "" : languages_.front().texts->Id();
  return missing_ != nullptr ? missing_->Take(first, problems) : 0;
}

}  // namespace KelmoLibs::Host
