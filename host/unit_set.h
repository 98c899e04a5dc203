// Sealed units. Any number of threads may use them.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/problem_list.h"
#include "host/unit_collection.h"
#include "host/unit_text.h"

namespace KelmoLibs::Host {

/// The ids of languages, the first choice first.
using LanguageChain = std::vector<std::string>;

/// The chain of a call without a view.
inline const LanguageChain kNoLanguages;

/// The symbol and the name of a unit, as a user reads them. Someone else owns them.
struct UnitLabel {
  std::string_view symbol;
  std::string_view name;
};

/// Different units, up to a number that is enough to name them to people.
class UnitList {
 public:
  void Add(const UnitRow& unit) noexcept {
    if (size_ < units_.size() && std::find(begin(), end(), &unit) == end()) {
      units_[size_++] = &unit;
    }
  }
  template <class Predicate>
  void RemoveIf(Predicate isRemoved) noexcept {
    const auto* const last = std::remove_if(units_.data(), units_.data() + size_, isRemoved);
    size_ = static_cast<std::size_t>(last - units_.data());
  }

  bool IsEmpty() const noexcept { return size_ == 0; }
  std::size_t Size() const noexcept { return size_; }
  const UnitRow& Front() const noexcept { return *units_.front(); }
  const UnitRow* const* begin() const noexcept { return units_.data(); }
  const UnitRow* const* end() const noexcept { return units_.data() + size_; }

 private:
  std::array<const UnitRow*, 8> units_ = {};
  std::size_t size_ = 0;
};

/// What a search for a text finds.
struct FoundUnits {
  enum class Result { kFound, kNone, kSeveral, kLookalike, kOtherKind };

  Result result = Result::kNone;
  UnitList units;  // one if it was found
};

class UnitSet {
 public:
  struct Kind {
    std::int32_t number;
    const UnitRow* row;  // without symbol and name if no file names it
    std::vector<const UnitRow*> units;
  };

  /// Tells and drops what cannot stay: see kelmo_units_loader_finish. Throws only std::bad_alloc;
  /// nothing is told then.
  UnitSet(const UnitCollection& collection, ProblemList* problems);
  UnitSet(const UnitSet&) = delete;
  UnitSet& operator=(const UnitSet&) = delete;
  ~UnitSet() = default;

  /// The unit with that code, or null.
  const UnitRow* Find(std::int32_t code) const noexcept {
    const std::uint32_t first = SlotOf(code);
    for (std::uint32_t slot = first;; ++slot) {
      const UnitRow* const row = slots_[slot & mask_];
      if (row == nullptr || row->code == code) {
        return row;
      }
    }
  }

  /// The kinds that have units, in the order of their first row.
  const std::vector<Kind>& Kinds() const noexcept { return kinds_; }

  /// The units of a kind, or of all kinds if `kind` is 0, in the order of loading.
  const std::vector<const UnitRow*>& UnitsOf(std::int32_t kind) const noexcept;

  /// The kind with that number, or null.
  const Kind* FindKind(std::int32_t number) const noexcept;

  /// Symbol and name in the first language of the chain that has them; else those of the row, which is
  /// one of this set.
  UnitLabel LabelOf(const UnitRow& row, const LanguageChain& languages) const noexcept;

  /// The name of a kind in the languages of a chain, or its number.
  std::string NameOfKind(std::int32_t number, const LanguageChain& languages) const;

  /// Finds a unit by its symbol or its name: see kelmo_units_find_text. `kind` 0: any.
  FoundUnits FindText(std::string_view text, std::int32_t kind,
                      const LanguageChain& languages) const noexcept;

 private:
  static constexpr std::size_t kOwn = 0;  // as a language: the texts of the rows themselves

  struct Entry {
    std::uint64_t hash;
    const UnitRow* row;
    std::size_t language;  // index in languages_ and 1, or kOwn
    std::string_view text;
  };

  struct Language {
    std::string id;
    std::vector<UnitNames> names;  // by the index of the row
  };

  class Search;

  // `told`: an empty list.
  UnitSet(const UnitCollection& collection, ProblemList told, ProblemList* problems);

  std::uint32_t SlotOf(std::int32_t code) const noexcept {
    return (static_cast<std::uint32_t>(code) * 2654435769U) >> shift_;
  }
  std::size_t IndexOf(const UnitRow& row) const noexcept {
    return static_cast<std::size_t>(&row - rows_.data());
  }
  // Index in languages_ and 1; kOwn if there is no such language.
  std::size_t FindLanguage(std::string_view id) const noexcept;

  void MakeKinds();
  void MakeSlots();
  void MakeLanguages(const std::vector<LanguageUnits>& languages, ProblemList& told);
  void MakeEntries();
  void MakeBuckets();

  std::vector<UnitRow> rows_;  // kinds too
  std::vector<const UnitRow*> units_;
  std::vector<const UnitRow*> noUnits_;  // of a kind that is not there
  std::vector<Kind> kinds_;
  std::vector<const UnitRow*>
      slots_;  // units by their code; a power of two of them, half of them free
  std::uint32_t shift_ = 0;
  std::uint32_t mask_ = 0;
  std::vector<Language> languages_;
  std::vector<Entry> entries_;  // by hash; several of a row if it has several texts
  std::vector<std::uint32_t>
      buckets_;                    // index of the first entry of each bucket, and the number of all
  std::uint32_t bucketShift_ = 0;  // the bucket of a hash: its bits from this one on
};

}  // namespace KelmoLibs::Host
