// The keys of plural forms: "files.one", "files.few", "files.other".
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "lang/reading/workspace.h"
#include "lang/rules/check.h"
#include "lang/unicode/plural_samples.h"

namespace KelmoLibs::Lang {

struct PluralKey {
  std::string_view stem;  // "files"
  PluralCategory category;
};

/// Splits a key that ends with ".zero" to ".other". Nothing for other keys, and without a stem.
std::optional<PluralKey> SplitPluralKey(std::string_view key) noexcept;

/// The key of a form.
std::string PluralKeyOf(std::string_view stem, PluralCategory category);

/// The base's text of the form `other` or, in a set without it, of the last form, if the keys of
/// `stem` in the base are the forms of one text. Keys that only look so are none: "sort.other"
/// alone in English, or "relay.one" and "relay.two", because English has no form for 2.
FoundEntry FindPluralSet(const Workspace& workspace, std::string_view stem);

/// Whether the rule `plural-form` judges a key that only the base or only the translation has, or
/// nobody needs it there: such a key is neither missing nor surplus. A translation that has nothing
/// of a set lacks the forms that its language needs.
bool IsJudgedAsPluralForm(const FileCheck& check, std::string_view key);

}  // namespace KelmoLibs::Lang
