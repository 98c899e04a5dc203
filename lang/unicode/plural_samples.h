// Numbers that show people what a plural form is for.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "cldr/plural_rules.h"

namespace KelmoLibs::Lang {

using Cldr::FindPluralRules;
using Cldr::kPluralCategoryCount;
using Cldr::PluralCategory;
using Cldr::PluralCategoryName;
using Cldr::PluralCategoryOf;
using Cldr::PluralRules;

/// The smallest integers below 1000 that have the category: at most `count` of them.
std::vector<unsigned> SmallestOf(const PluralRules& rules, PluralCategory category,
                                 std::size_t count);

/// Numbers that have the category, for people: "2, 3, 4, 22".
std::string SamplesOf(const PluralRules& rules, PluralCategory category);

/// Whether `zero`, `one` or `two` is the category of its number only; `one` may be that of 0 too. A
/// text of such a form may say the number in words.
bool IsForOneNumber(const PluralRules& rules, PluralCategory category) noexcept;

}  // namespace KelmoLibs::Lang
