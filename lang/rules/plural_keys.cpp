#include "lang/rules/plural_keys.h"

#include <algorithm>
#include <array>

namespace KelmoLibs::Lang {
namespace {

constexpr std::array<PluralCategory, kPluralCategoryCount> kCategories = {
    PluralCategory::kZero, PluralCategory::kOne,  PluralCategory::kTwo,
    PluralCategory::kFew,  PluralCategory::kMany, PluralCategory::kOther};

const PluralRules* RulesOfBase(const Workspace& workspace) {
  const Language language =
      LanguageOf(workspace.files[*workspace.baseFile].dictionary->IntendedId());
  return FindPluralRules(language.primary, language.region);
}

bool HasAnyForm(const MergedDictionary& dictionary, std::string_view stem) {
  return std::any_of(kCategories.begin(), kCategories.end(), [&](PluralCategory category) {
    return bool{dictionary.Find(PluralKeyOf(stem, category))};
  });
}

}  // namespace

std::optional<PluralKey> SplitPluralKey(std::string_view key) noexcept {
  constexpr std::string_view kLastLetters = "eornwy";  // of the names
  if (key.empty() || kLastLetters.find(key.back()) == std::string_view::npos) {
    return std::nullopt;
  }
  const std::size_t dot = key.rfind('.');
  if (dot == std::string_view::npos || dot == 0) {
    return std::nullopt;
  }
  const std::optional<PluralCategory> category = PluralCategoryOf(key.substr(dot + 1));
  return category ? std::optional(PluralKey{key.substr(0, dot), *category}) : std::nullopt;
}

std::string PluralKeyOf(std::string_view stem, PluralCategory category) {
  std::string key(stem);
  key += '.';
  key += PluralCategoryName(category);
  return key;
}

FoundEntry FindPluralSet(const Workspace& workspace, std::string_view stem) {
  const MergedDictionary& base = *workspace.Base();
  const PluralRules* const rules = RulesOfBase(workspace);
  FoundEntry last;
  bool hasFewOrMany = false;
  std::size_t forms = 0;
  for (const PluralCategory category : kCategories) {
    const FoundEntry found = base.Find(PluralKeyOf(stem, category));
    if (!found) {
      continue;
    }
    // A program may ask for the form of 0 in any language.
    if (rules != nullptr && !rules->Has(category) && category != PluralCategory::kZero) {
      return {};
    }
    hasFewOrMany =
        hasFewOrMany || category == PluralCategory::kFew || category == PluralCategory::kMany;
    last = found;
    ++forms;
  }
  const bool hasOther = bool{base.Find(PluralKeyOf(stem, PluralCategory::kOther))};
  if (forms >= 2 && (hasOther || hasFewOrMany)) {
    return last;
  }
  // The only form of a language that has no more, if it can hold a number.
  const bool isOnlyForm = forms == 1 && hasOther && rules != nullptr &&
                          !rules->Has(PluralCategory::kOne) &&
                          last.entry->text.find_first_of("%{") != std::string_view::npos;
  return isOnlyForm ? last : FoundEntry{};
}

bool IsJudgedAsPluralForm(const FileCheck& check, std::string_view key) {
  if (check.Base() == nullptr) {
    return false;
  }
  const std::optional<PluralKey> form = SplitPluralKey(key);
  const std::string_view stem = form ? form->stem : key;
  if (!FindPluralSet(check.AllFiles(), stem)) {
    return false;
  }
  if (!check.Base()->Find(key)) {
    return true;
  }
  if (!form) {
    return false;  // the base has a text under the stem too
  }
  const Language& language = check.FileLanguage();
  const PluralRules* const rules = FindPluralRules(language.primary, language.region);
  const PluralRules* const baseRules = RulesOfBase(check.AllFiles());
  if (rules == nullptr || (form->category == PluralCategory::kZero &&
                           (baseRules == nullptr || !baseRules->Has(PluralCategory::kZero)))) {
    return false;
  }
  return !rules->Has(form->category) || HasAnyForm(check.Merged(), stem) ||
         bool{check.Merged().Find(stem)};
}

}  // namespace KelmoLibs::Lang
