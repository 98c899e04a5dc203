// kelmo-lang rules: the rules, and what each of them means.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "lang/commands/answer.h"
#include "lang/texts/texts.h"

namespace KelmoLibs::Lang {

struct RulesOptions {
  std::optional<std::string> rule;  // none: a list of all
};

/// The list of rules, or the explanation of one.
Answer Rules(const RulesOptions& options, const Texts& texts, unsigned width);

/// Cause, what the library does, and the mend. Status 2 if there is no such rule.
Answer ExplainRule(std::string_view name, const Texts& texts, unsigned width);

}  // namespace KelmoLibs::Lang
