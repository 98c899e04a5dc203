// Which plural form of a text a language uses for a number.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace KelmoLibs::Lang {

enum class PluralCategory : std::uint8_t { kZero, kOne, kTwo, kFew, kMany, kOther };

constexpr std::size_t kPluralCategoryCount = 6;

/// "zero", "one" and so on.
std::string_view PluralCategoryName(PluralCategory category) noexcept;

/// The category with that name, or nothing.
std::optional<PluralCategory> PluralCategoryOf(std::string_view name) noexcept;

/// The rules that some languages share. The first category whose condition is true counts, and
/// `other` if there is none.
struct PluralRules {
  std::string_view languages;  // " cs sk ", " it pt_PT "
  // Of zero to many, such as "i = 2..4 and v = 0"; empty if there is no such category.
  std::array<std::string_view, kPluralCategoryCount - 1> conditions;

  bool Has(PluralCategory category) const noexcept {
    return category == PluralCategory::kOther ||
           !conditions[static_cast<std::size_t>(category)].empty();
  }
};

/// What the conditions ask about a decimal number.
struct PluralOperands {
  std::uint64_t i = 0;  // the integer part
  unsigned v = 0;       // number of decimals, with zeros at the end
  unsigned w = 0;       // number of decimals, without zeros at the end
  std::uint64_t f = 0;  // the decimals as a number, with zeros at the end
  std::uint64_t t = 0;  // the decimals as a number, without zeros at the end
  unsigned e = 0;       // exponent of a short form such as "2 million"
};

/// The rules of a language, such as "pt" in the region "PT" (may be empty); null if it is unknown.
const PluralRules* FindPluralRules(std::string_view language, std::string_view region);

PluralCategory CategoryOf(const PluralRules& rules, const PluralOperands& number) noexcept;

/// The smallest integers below 1000 that have the category: at most `count` of them.
std::vector<unsigned> SmallestOf(const PluralRules& rules, PluralCategory category,
                                 std::size_t count);

/// Numbers that have the category, for people: "2, 3, 4, 22".
std::string SamplesOf(const PluralRules& rules, PluralCategory category);

/// Whether `zero`, `one` or `two` is the category of its number only; `one` may be that of 0 too. A
/// text of such a form may say the number in words.
bool IsForOneNumber(const PluralRules& rules, PluralCategory category) noexcept;

}  // namespace KelmoLibs::Lang
