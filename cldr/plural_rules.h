// Which plural form of a text a language uses for a number.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace KelmoLibs::Cldr {

enum class PluralCategory : std::uint8_t { kZero, kOne, kTwo, kFew, kMany, kOther };

constexpr std::size_t kPluralCategoryCount = 6;

/// "zero", "one" and so on.
std::string_view PluralCategoryName(PluralCategory category) noexcept;

/// The category with that name, or nothing.
std::optional<PluralCategory> PluralCategoryOf(std::string_view name) noexcept;

/// What the rules ask about a decimal number. The sign does not count.
struct PluralOperands {
  std::uint64_t i = 0;  // the integer part
  unsigned v = 0;       // number of decimals, with zeros at the end
  std::uint64_t f = 0;  // the decimals as a number, with zeros at the end
  std::uint64_t t = 0;  // the decimals as a number, without zeros at the end
  unsigned e = 0;       // exponent of a short form such as "2 million"
};

/// The operands of a number as it is shown: "1", "-1.50". Of more digits than 18 before or behind
/// the point the last 18 count, with a 1 in front of them: no rule sees a difference.
/// Precondition: `number` has digits and at most one point; other characters are skipped.
PluralOperands OperandsOf(std::string_view number) noexcept;

/// The rules that some languages share.
struct PluralRules {
  std::string_view languages;  // " cs sk ", " it pt_PT "
  unsigned categories;         // bit n: some number has the category n; `other` is not in it
  PluralCategory (*categoryOf)(const PluralOperands& number) noexcept;

  bool Has(PluralCategory category) const noexcept {
    return category == PluralCategory::kOther ||
           ((categories >> static_cast<unsigned>(category)) & 1U) != 0;
  }
};

/// The rules of a language, such as "pt" in the region "PT" (may be empty); null if it is unknown.
const PluralRules* FindPluralRules(std::string_view language, std::string_view region) noexcept;

/// The rules of the language that an id names: "de-AT", "pt-PT", "zh-Hant", "sr_Latn_RS". Letters
/// may be of either case. For a language that is unknown: rules that have only `other`.
const PluralRules& PluralRulesOf(std::string_view id) noexcept;

}  // namespace KelmoLibs::Cldr
