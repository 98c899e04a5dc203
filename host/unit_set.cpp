#include "host/unit_set.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <set>
#include <utility>

namespace KelmoLibs::Host {
namespace {

constexpr UnitTextMatch kMatches[] = {UnitTextMatch::kExact, UnitTextMatch::kKeyboard};

void TellAbout(const UnitRow& row, ProblemCode code, ProblemSeverity severity, std::string detail,
               ProblemList& problems) {
  problems.Append([&] {
    Problem problem;
    problem.code = code;
    problem.severity = severity;
    problem.key = std::to_string(row.code);
    problem.detail = std::move(detail);
    return problem;
  });
}

// Why a unit cannot be that of the differences of `point`; null if it can.
const char* FaultOfDifference(const UnitRow& point, const UnitRow* difference) noexcept {
  if (difference == nullptr) {
    return "there is no unit with the code of its differences";
  }
  if (difference->IsPoint()) {
    return "the unit of its differences is one of points";
  }
  return difference->factor.high != point.factor.high
             ? "the unit of its differences has another factor"
             : nullptr;
}

// Which kinds have points: the first unit of a kind decides. A conversion between points and other
// units of one kind would lose the offset.
std::map<std::int32_t, bool> PointKinds(const std::vector<UnitRow>& rows) {
  std::map<std::int32_t, bool> isOfPoints;
  for (const UnitRow& row : rows) {
    if (!row.IsKind()) {
      isOfPoints.emplace(KindOf(row.code), row.IsPoint());
    }
  }
  return isOfPoints;
}

// Checks the rows of units against each other.
class RowChecker {
 public:
  explicit RowChecker(const std::vector<UnitRow>& rows) : isOfPoints_(PointKinds(rows)) {
    for (const UnitRow& row : rows) {
      if (FitsKind(row)) {
        byCode_.emplace(row.code, &row);
      }
    }
  }

  // Why a row cannot stay; null if it can. Rows are checked in their order.
  const char* FaultOf(const UnitRow& row) {
    if (!FitsKind(row)) {
      return row.IsPoint() ? "the first unit of its kind is not one of points"
                           : "the first unit of its kind is one of points";
    }
    if (!row.IsPoint()) {
      return nullptr;
    }
    const auto found = byCode_.find(row.difference);
    const char* const fault =
        FaultOfDifference(row, found != byCode_.end() ? found->second : nullptr);
    if (fault != nullptr) {
      return fault;
    }
    const std::int32_t kind = KindOf(row.difference);
    return differenceKinds_.emplace(KindOf(row.code), kind).first->second != kind
               ? "other units of its kind have differences of another kind"
               : nullptr;
  }

 private:
  bool FitsKind(const UnitRow& row) const {
    return row.IsKind() || isOfPoints_.at(KindOf(row.code)) == row.IsPoint();
  }

  std::map<std::int32_t, bool> isOfPoints_;
  std::map<std::int32_t, const UnitRow*> byCode_;
  std::map<std::int32_t, std::int32_t> differenceKinds_;  // by the kind of the points
};

// The rows that stay. Tells the others.
std::vector<UnitRow> CheckedRows(const std::vector<UnitRow>& rows, ProblemList& told) {
  RowChecker checker(rows);
  std::vector<UnitRow> checked;
  checked.reserve(rows.size());
  for (const UnitRow& row : rows) {
    if (const char* const fault = checker.FaultOf(row)) {
      TellAbout(row, row.IsPoint() ? ProblemCode::kUnitDifference : ProblemCode::kUnit,
                ProblemSeverity::kError, fault, told);
      continue;
    }
    if (!row.IsKind() && row.factor.high == 0) {
      TellAbout(row, ProblemCode::kUnitNoFactor, ProblemSeverity::kWarning, row.symbol, told);
    }
    checked.push_back(row);
  }
  return checked;
}

// Adds a row for each kind that has units, but no row: a language may name it.
void AddMissingKinds(std::vector<UnitRow>& rows) {
  std::set<std::int32_t> kinds;
  for (const UnitRow& row : rows) {
    if (row.IsKind()) {
      kinds.insert(KindOf(row.code));
    }
  }
  for (std::size_t i = rows.size(); i-- > 0;) {
    const std::int32_t kind = KindOf(rows[i].code);
    if (kinds.insert(kind).second) {
      rows.emplace_back().code = kind * kCodesOfKind;
    }
  }
}

}  // namespace

UnitSet::UnitSet(const UnitCollection& collection, ProblemList* problems)
    : UnitSet(collection, ProblemList(), problems) {}

UnitSet::UnitSet(const UnitCollection& collection, ProblemList told, ProblemList* problems)
    : rows_(CheckedRows(collection.Rows(), told)) {
  AddMissingKinds(rows_);
  MakeKinds();
  MakeSlots();
  MakeLanguages(collection.Languages(), told);
  MakeEntries();
  MakeBuckets();
  if (problems != nullptr) {
    problems->TakeFrom(told);
  }
}

void UnitSet::MakeKinds() {
  std::map<std::int32_t, std::size_t> indexes;
  for (const UnitRow& row : rows_) {
    const std::int32_t number = KindOf(row.code);
    const auto [place, isNew] = indexes.emplace(number, kinds_.size());
    if (isNew) {
      kinds_.push_back({number, nullptr, {}});
    }
    Kind& kind = kinds_[place->second];
    if (row.IsKind()) {
      kind.row = &row;
    } else {
      kind.units.push_back(&row);
      units_.push_back(&row);
    }
  }
  kinds_.erase(std::remove_if(kinds_.begin(), kinds_.end(),
                              [](const Kind& kind) { return kind.units.empty(); }),
               kinds_.end());
}

void UnitSet::MakeSlots() {
  std::uint32_t bits = 1;
  while ((std::size_t{1} << bits) < 2 * units_.size() + 1) {
    ++bits;
  }
  slots_.assign(std::size_t{1} << bits, nullptr);
  shift_ = 32 - bits;
  mask_ = (std::uint32_t{1} << bits) - 1;
  for (const UnitRow* const row : units_) {
    std::uint32_t slot = SlotOf(row->code);
    while (slots_[slot & mask_] != nullptr) {
      ++slot;
    }
    slots_[slot & mask_] = row;
  }
}

void UnitSet::MakeLanguages(const std::vector<LanguageUnits>& languages, ProblemList& told) {
  std::map<std::int32_t, std::size_t> indexes;
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    indexes.emplace(rows_[i].code, i);
  }
  for (const LanguageUnits& given : languages) {
    Language language{given.id, std::vector<UnitNames>(rows_.size())};
    for (const auto& [code, names] : given.names) {
      const auto found = indexes.find(code);
      if (found != indexes.end()) {
        language.names[found->second] = names;
      } else {
        told.Append([&, unit = code] {
          Problem problem;
          problem.code = ProblemCode::kNameOfNoUnit;
          problem.severity = ProblemSeverity::kNote;
          problem.key = std::to_string(unit);
          problem.language = given.id;
          return problem;
        });
      }
    }
    languages_.push_back(std::move(language));
  }
}

void UnitSet::MakeEntries() {
  const auto add = [this](const UnitRow& row, std::size_t language, std::string_view text) {
    if (!text.empty()) {
      entries_.push_back({HashOfUnitText(text), &row, language, text});
    }
  };
  for (const UnitRow* const row : units_) {
    add(*row, kOwn, row->symbol);
    add(*row, kOwn, row->name);
    for (std::size_t i = 0; i < languages_.size(); ++i) {
      const UnitNames& names = languages_[i].names[IndexOf(*row)];
      add(*row, i + 1, names.symbol);
      add(*row, i + 1, names.name);
    }
  }
  std::stable_sort(entries_.begin(), entries_.end(),
                   [](const Entry& left, const Entry& right) { return left.hash < right.hash; });
}

void UnitSet::MakeBuckets() {
  std::uint32_t bits = 1;
  while ((std::size_t{1} << bits) < entries_.size()) {
    ++bits;
  }
  bucketShift_ = 64 - bits;
  buckets_.assign((std::size_t{1} << bits) + 1, 0);
  for (const Entry& entry : entries_) {
    ++buckets_[(entry.hash >> bucketShift_) + 1];
  }
  std::partial_sum(buckets_.begin(), buckets_.end(), buckets_.begin());
}

const UnitSet::Kind* UnitSet::FindKind(std::int32_t number) const noexcept {
  const auto found = std::find_if(kinds_.begin(), kinds_.end(),
                                  [number](const Kind& kind) { return kind.number == number; });
  return found != kinds_.end() ? &*found : nullptr;
}

const std::vector<const UnitRow*>& UnitSet::UnitsOf(std::int32_t kind) const noexcept {
  const Kind* const found = FindKind(kind);
  return kind == 0 ? units_ : found != nullptr ? found->units : noUnits_;
}

std::size_t UnitSet::FindLanguage(std::string_view id) const noexcept {
  for (std::size_t i = 0; i < languages_.size(); ++i) {
    if (languages_[i].id == id) {
      return i + 1;
    }
  }
  return kOwn;
}

UnitLabel UnitSet::LabelOf(const UnitRow& row, const LanguageChain& languages) const noexcept {
  for (const std::string& id : languages) {
    if (const std::size_t language = FindLanguage(id); language != kOwn) {
      const UnitNames& names = languages_[language - 1].names[IndexOf(row)];
      if (!names.symbol.empty()) {
        return {names.symbol, names.name};
      }
    }
  }
  return {row.symbol, row.name};
}

std::string UnitSet::NameOfKind(std::int32_t number, const LanguageChain& languages) const {
  const Kind* const kind = FindKind(number);
  if (kind != nullptr) {
    const UnitLabel label = LabelOf(*kind->row, languages);
    if (!label.name.empty()) {
      return std::string(label.name);
    }
  }
  return "kind " + std::to_string(number);
}

// The search for one text: the entries that look like it, and the languages that are asked.
class UnitSet::Search {
 public:
  Search(const UnitSet& set, std::string_view text, std::int32_t kind,
         const LanguageChain& languages) noexcept
      : set_(set),
        text_(text),
        kind_(kind),
        languages_(languages),
        hash_(HashOfUnitText(text)),
        begin_(FirstWithHash()),
        end_(EndOfHash()) {}

  FoundUnits Run() const noexcept {
    FoundUnits found;
    for (const UnitTextMatch match : kMatches) {
      if (Ask(match, true, found.units)) {
        DropDifferences(found.units);
        found.result =
            found.units.Size() == 1 ? FoundUnits::Result::kFound : FoundUnits::Result::kSeveral;
        return found;
      }
    }
    for (const UnitTextMatch match : kMatches) {
      if (Ask(match, false, found.units)) {
        found.result = FoundUnits::Result::kOtherKind;
        return found;
      }
    }
    if (Ask(UnitTextMatch::kLooks, true, found.units)) {
      found.result = FoundUnits::Result::kLookalike;
    }
    return found;
  }

 private:
  const Entry* FirstWithHash() const noexcept {
    const Entry* entry = EntriesFromBucket(0);
    const Entry* const end = EntriesFromBucket(1);
    while (entry != end && entry->hash < hash_) {
      ++entry;
    }
    return entry;
  }

  const Entry* EndOfHash() const noexcept {
    const Entry* entry = begin_;
    const Entry* const end = EntriesFromBucket(1);
    while (entry != end && entry->hash == hash_) {
      ++entry;
    }
    return entry;
  }

  // The first entry of the bucket of the hash, or of the one behind it.
  const Entry* EntriesFromBucket(std::size_t offset) const noexcept {
    const auto bucket = static_cast<std::size_t>(hash_ >> set_.bucketShift_);
    return set_.entries_.data() + set_.buckets_[bucket + offset];
  }

  // The units of the first language that has some with the text. False if there are none.
  bool Ask(UnitTextMatch match, bool ofKind, UnitList& units) const noexcept {
    if (begin_ == end_) {
      return false;
    }
    for (const std::string& id : languages_) {
      const std::size_t language = set_.FindLanguage(id);
      if (language != kOwn && AskOne(language, match, ofKind, units)) {
        return true;
      }
    }
    return AskOne(kOwn, match, ofKind, units);
  }

  bool AskOne(std::size_t language, UnitTextMatch match, bool ofKind,
              UnitList& units) const noexcept {
    for (const Entry* entry = begin_; entry != end_; ++entry) {
      const bool isWanted = !ofKind || kind_ == 0 || KindOf(entry->row->code) == kind_;
      if (entry->language == language && isWanted && IsSameUnitText(entry->text, text_, match)) {
        units.Add(*entry->row);
      }
    }
    return !units.IsEmpty();
  }

  // A unit of points wins over that of its differences.
  static void DropDifferences(UnitList& units) noexcept {
    const UnitList all = units;
    units.RemoveIf([&all](const UnitRow* row) {
      return std::any_of(all.begin(), all.end(),
                         [row](const UnitRow* other) { return other->difference == row->code; });
    });
  }

  const UnitSet& set_;
  std::string_view text_;
  std::int32_t kind_;
  const LanguageChain& languages_;
  std::uint64_t hash_;
  const Entry* begin_;
  const Entry* end_;
};

FoundUnits UnitSet::FindText(std::string_view text, std::int32_t kind,
                             const LanguageChain& languages) const noexcept {
  // The empty text would find a unit with the symbol "^", which does not count in texts.
  return text.empty() ? FoundUnits() : Search(*this, text, kind, languages).Run();
}

}  // namespace KelmoLibs::Host
