// Texts in the languages that one user reads.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/problem_list.h"
#include "host/text_collection.h"

namespace KelmoLibs::Host {

/// Texts that never change any more.
using SealedTexts = std::shared_ptr<const TextCollection>;

/// A text that was found, and its language: an index in TextCollection::languages.
struct FoundText {
  const TextRecord* record = nullptr;
  std::size_t language = 0;
};

/// Keys that were looked up and not found, each once, up to a limit. Thread-safe.
class MissingKeys {
 public:
  explicit MissingKeys(std::size_t limit) noexcept : limit_(limit) {}

  void Record(std::string_view key) noexcept;

  /// Moves all keys to `problems`, in the order of their first lookup, and forgets them. Returns the
  /// number of lookups that were not recorded.
  std::size_t Take(std::string_view language, ProblemList* problems) noexcept;

 private:
  std::size_t limit_;
  std::mutex mutex_;
  std::set<std::string, std::less<>> keys_;
  std::vector<const std::string*> order_;
  std::size_t lost_ = 0;
};

class View {
 public:
  /// Languages that the texts lack are problems, and left out.
  View(SealedTexts texts, const std::vector<std::string_view>& languages, std::size_t missingLimit,
       ProblemList* problems);

  const TextCollection& Texts() const noexcept { return *texts_; }

  /// The text of the first language that has the key; no record if there is none: the key is then
  /// recorded, if the limit is not 0. Any number of threads may call it.
  FoundText Find(std::string_view key) const noexcept;

  /// See MissingKeys::Take.
  std::size_t TakeProblems(ProblemList* problems) const noexcept;

 private:
  struct Language {
    const LanguageTexts* texts;
    std::size_t index;
  };

  SealedTexts texts_;
  std::vector<Language> languages_;
  std::unique_ptr<MissingKeys> missing_;  // null if none are recorded
};

}  // namespace KelmoLibs::Host
