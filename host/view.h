// Texts in the languages that one user reads.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "cldr/number_format.h"
#include "cldr/plural_rules.h"
#include "host/plural_count.h"
#include "host/problem_record.h"
#include "host/text_collection.h"
#include "host/text_sink.h"
#include "storage/inlining.h"

namespace KelmoLibs::Host {

/// A text that was found, and its language; null if none was.
struct FoundText {
  const TextRecord* record = nullptr;
  const LanguageTexts* language = nullptr;
};

/// What stands for the text of a key that no language has. The values are those of kelmo.h.
enum class MissingText : std::int32_t { kKey = 0, kNothing = 1, kMarked = 2 };

struct ViewOptions {
  std::vector<std::string_view> languages;
  MissingText missing = MissingText::kKey;
  std::size_t problemLimit = 0;
  bool isIsolating = false;
  const Cldr::NumberFormat* numbers = nullptr;  // null: that of the first language
};

/// Any number of threads may call the functions.
class View {
 public:
  /// The texts outlive the view. Languages that they lack are problems, and left out. Throws only
  /// std::bad_alloc.
  View(const TextCollection& texts, const ViewOptions& options, ProblemList* problems);
  View(const View&) = delete;
  View& operator=(const View&) = delete;
  ~View() = default;

  const TextCollection& Texts() const noexcept { return texts_; }

  /// The ids that the view was made with, also those that its texts lack.
  const std::vector<std::string>& Ids() const noexcept { return ids_; }

  /// How the view writes numbers.
  const Cldr::NumberFormat& Numbers() const noexcept { return numbers_; }

  /// Whether arguments are isolated from the direction of the text around them.
  bool IsIsolating() const noexcept { return isIsolating_; }

  /// The text of the first language that has the key; no record if there is none.
  KELMO_LOCALIZER_ALWAYS_INLINE FoundText Find(std::string_view key) const noexcept {
    const TextRecord* const record = FindFirstCandidate(key);
    return record != nullptr ? FoundText{record, first_} : FindAmongAll(key);
  }

  /// What Find finds nearly always. If the result is null, call FindAmongAll.
  KELMO_LOCALIZER_ALWAYS_INLINE const TextRecord* FindFirstCandidate(
      std::string_view key) const noexcept {
    return first_ != nullptr ? first_->FindFirstCandidate(KeyBytes(key)) : nullptr;
  }

  /// Find for a key that FindFirstCandidate does not find. It makes the hash again: so the fast path
  /// needs no frame on the stack.
  FoundText FindAmongAll(std::string_view key) const noexcept;

  /// The form of the text for a number, in the first language that has one. Each language is asked
  /// for the exact number, for its category, for `other`, and for the key alone. Throws only
  /// std::bad_alloc, and only if the key and the count have more than 256 bytes together.
  FoundText FindForm(std::string_view key, const PluralCount& count) const;

  /// What stands for the text of a key that is missing. The view keeps the marked forms of at most
  /// 4096 keys: for more of them, and if memory is out, it is the key itself.
  std::string_view TextForMissing(std::string_view key) const noexcept;

  /// Writes what stands for the text of a key that is missing. It takes no memory, so that every key
  /// gets the form that the options say.
  void WriteForMissing(std::string_view key, TextSink& sink) const noexcept;

  /// Tells that no language has the key: in `problems`, or in the view's record if that is null.
  void TellMissing(std::string_view key, ProblemList* problems) const noexcept;

  /// Appends the problem to `problems`; if that is null, the view's record keeps it, if there is one.
  void Tell(const MetProblem& problem, ProblemList* problems) const noexcept;

  /// Memory was out for a problem that Tell would get.
  void CountLost(ProblemList* problems) const noexcept;

  /// See ProblemRecord::Take.
  std::size_t TakeProblems(ProblemList* problems) const noexcept;

 private:
  struct Language {
    const LanguageTexts* texts;
    const Cldr::PluralRules* rules;
  };

  // The marked forms of missing keys: hosts read them as long as the view lives.
  struct MarkedKeys {
    std::mutex mutex;
    std::map<std::string, std::string, std::less<>> forms;
  };

  // Tells a problem of its languages, and those that the texts have.
  void TellLanguages(ProblemCode code, std::string_view id, ProblemList* problems) const noexcept;
  bool HasForms(std::string_view key) const;

  const TextCollection& texts_;
  std::vector<std::string> ids_;
  std::vector<Language> languages_;
  const LanguageTexts* first_ = nullptr;  // of languages_, if there is any
  Cldr::NumberFormat numbers_;
  std::string marks_;  // the strings of numbers_
  MissingText missing_;
  bool isIsolating_;
  std::unique_ptr<ProblemRecord> record_;  // null if nothing is recorded
  std::unique_ptr<MarkedKeys> marked_;     // null unless missing keys are marked
};

}  // namespace KelmoLibs::Host
