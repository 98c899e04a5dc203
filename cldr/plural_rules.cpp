// tests/host/plural_rules_test.cpp compares the rules with all numbers that CLDR gives as samples.
#include "cldr/plural_rules.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "cldr/plural_table.h"

namespace KelmoLibs::Cldr {
namespace {

constexpr std::array<std::string_view, kPluralCategoryCount> kNames = {"zero", "one",  "two",
                                                                       "few",  "many", "other"};

constexpr PluralRules kOnlyOther = {
    "", 0, [](const PluralOperands&) noexcept { return PluralCategory::kOther; }};

// Appends a digit. No rule divides by more than 10^6, so the last 18 digits and whether there are
// more of them are enough.
void Append(std::uint64_t& number, char digit) noexcept {
  constexpr std::uint64_t kEnd = 1000000000000000000;
  constexpr unsigned kBase = 10;
  const bool isLong = number >= kEnd / kBase;
  number = number % (kEnd / kBase) * kBase + static_cast<unsigned>(digit - '0');
  number += isLong ? kEnd : 0;
}

constexpr std::size_t kLongestLanguage = 8;  // no language of an id is longer
constexpr std::size_t kLongestRegion = 3;

bool IsLetter(char c) noexcept { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool AreLetters(std::string_view part) noexcept {
  return std::all_of(part.begin(), part.end(), IsLetter);
}

bool IsRegion(std::string_view part) noexcept {
  constexpr std::size_t kLetters = 2;
  return AreLetters(part) ? part.size() == kLetters : part.size() == kLongestRegion;
}

// Cuts the first part off an id.
std::string_view TakePart(std::string_view& id) noexcept {
  const std::size_t length = std::min(id.find_first_of("-_"), id.size());
  const std::string_view part = id.substr(0, length);
  id.remove_prefix(std::min(length + 1, id.size()));
  return part;
}

// A name of the table, such as " pt " or " pt_PT ".
class Name {
 public:
  Name(std::string_view language, std::string_view region) noexcept {
    Append(' ');
    for (const char c : language) {
      Append(static_cast<char>(c | 0x20));  // lower case
    }
    if (!region.empty()) {
      Append('_');
      for (const char c : region) {
        Append(IsLetter(c) ? static_cast<char>(c & ~0x20) : c);  // upper case
      }
    }
    Append(' ');
  }

  std::string_view Text() const noexcept { return {text_.data(), size_}; }

 private:
  void Append(char c) noexcept { text_[size_++] = c; }

  std::array<char, kLongestLanguage + kLongestRegion + 3> text_{};
  std::size_t size_ = 0;
};

const PluralRules* FindByName(std::string_view language, std::string_view region) noexcept {
  const Name wanted(language, region);
  const std::string_view name = wanted.Text();
  const auto* const found = std::find_if(
      std::begin(kPluralTable), std::end(kPluralTable), [name](const PluralRules& rules) {
        return rules.languages.find(name) != std::string_view::npos;
      });
  return found != std::end(kPluralTable) ? found : nullptr;
}

}  // namespace

std::string_view PluralCategoryName(PluralCategory category) noexcept {
  return kNames[static_cast<std::size_t>(category)];
}

std::optional<PluralCategory> PluralCategoryOf(std::string_view name) noexcept {
  const auto* const found = std::find(kNames.begin(), kNames.end(), name);
  return found != kNames.end() ? std::optional(static_cast<PluralCategory>(found - kNames.begin()))
                               : std::nullopt;
}

PluralOperands OperandsOf(std::string_view number) noexcept {
  PluralOperands operands;
  bool isBehindPoint = false;
  for (const char c : number) {
    if (c == '.') {
      isBehindPoint = true;
    } else if (c < '0' || c > '9') {
      continue;
    } else if (!isBehindPoint) {
      Append(operands.i, c);
    } else {
      Append(operands.f, c);
      ++operands.v;
      if (c != '0') {
        operands.t = operands.f;
      }
    }
  }
  return operands;
}

const PluralRules* FindPluralRules(std::string_view language, std::string_view region) noexcept {
  if (language.empty() || language.size() > kLongestLanguage || !AreLetters(language)) {
    return nullptr;
  }
  const bool hasRegion = !region.empty() && region.size() <= kLongestRegion;
  const PluralRules* const ofRegion = hasRegion ? FindByName(language, region) : nullptr;
  return ofRegion != nullptr ? ofRegion : FindByName(language, {});
}

const PluralRules& PluralRulesOf(std::string_view id) noexcept {
  const std::string_view language = TakePart(id);
  std::string_view region;
  while (!id.empty() && region.empty()) {
    const std::string_view part = TakePart(id);
    if (part.size() == 1) {
      break;  // an extension, such as "u-co-phonebk"
    }
    region = IsRegion(part) ? part : region;
  }
  const PluralRules* const rules = FindPluralRules(language, region);
  return rules != nullptr ? *rules : kOnlyOther;
}

}  // namespace KelmoLibs::Cldr
