// The rule plural-form: each set of plural forms of the base has the forms that the language of the
// translation uses for integers, and no others. Forms for decimals only, such as `other` in Russian,
// are needed in each set if the translation has them in one.
#include <algorithm>
#include <array>

#include "lang/rules/check.h"
#include "lang/rules/plural_keys.h"

namespace KelmoLibs::Lang {
namespace {

// The check of the file that is number `file`; null if it is not reported.
FileCheck* Reported(std::vector<FileCheck>& files, std::uint32_t file) {
  const auto found = std::find_if(files.begin(), files.end(), [file](const FileCheck& check) {
    return check.FileIndex() == file;
  });
  return found != files.end() ? &*found : nullptr;
}

struct PluralSet {
  std::string_view stem;
  FoundEntry base;
};

using Categories = std::array<bool, kPluralCategoryCount>;

// Reports what the set lacks, at the first form that the translation has.
void CheckSet(std::vector<FileCheck>& files, const PluralRules& rules, const Categories& needed,
              const PluralSet& set) {
  const FileCheck& first = files.front();
  FoundEntry present = first.Merged().Find(set.stem);
  std::string missing;
  for (std::size_t i = 0; i < kPluralCategoryCount; ++i) {
    const auto category = static_cast<PluralCategory>(i);
    const std::string key = PluralKeyOf(set.stem, category);
    const FoundEntry found = first.Merged().Find(key);
    if (found) {
      present = present ? present : found;
      continue;
    }
    if (needed[i]) {
      missing += missing.empty() ? "" : "; ";
      missing += key + ": " + SamplesOf(rules, category);
    }
  }
  FileCheck* const check = present ? Reported(files, present.file) : nullptr;
  if (missing.empty() || check == nullptr || check->IsExplained(*present.entry)) {
    return;
  }
  Finding& finding = check->Add(RuleId::kPluralForm, Severity::kWarning, present.entry->key,
                                present.entry->key, {"plural-form.missing", {std::move(missing)}});
  finding.related.push_back(check->RelatedBase(set.base, set.base.entry->text));
}

// The plural sets of the base, each once.
std::vector<PluralSet> SetsOfBase(const FileCheck& check) {
  std::vector<PluralSet> sets;
  const Workspace& workspace = check.AllFiles();
  for (const std::uint32_t file : check.Base()->Files()) {
    for (const Entry& entry : workspace.files[file].dictionary->Entries()) {
      const std::optional<PluralKey> form = SplitPluralKey(entry.key);
      if (!form || check.Base()->Find(entry.key).entry != &entry) {
        continue;
      }
      const FoundEntry base = FindPluralSet(workspace, form->stem);
      if (base.entry == &entry) {  // the form that stands for its set
        sets.push_back({form->stem, base});
      }
    }
  }
  return sets;
}

void CheckSets(std::vector<FileCheck>& files, const PluralRules& rules) {
  const std::vector<PluralSet> sets = SetsOfBase(files.front());
  Categories needed{};
  for (std::size_t i = 0; i < kPluralCategoryCount; ++i) {
    const auto category = static_cast<PluralCategory>(i);
    const auto isInTranslation = [&](const PluralSet& set) {
      return bool{files.front().Merged().Find(PluralKeyOf(set.stem, category))};
    };
    needed[i] = rules.Has(category) && (!SmallestOf(rules, category, 1).empty() ||
                                        std::any_of(sets.begin(), sets.end(), isInTranslation));
  }
  for (const PluralSet& set : sets) {
    CheckSet(files, rules, needed, set);
  }
}

void CheckSurplus(FileCheck& check, const PluralRules& rules) {
  for (const Entry& entry : check.File().Entries()) {
    const std::optional<PluralKey> form = SplitPluralKey(entry.key);
    if (!form || rules.Has(form->category) || check.IsExplained(entry) ||
        check.Base()->Find(entry.key) || check.Merged().Find(entry.key).entry != &entry) {
      continue;
    }
    if (const FoundEntry set = FindPluralSet(check.AllFiles(), form->stem)) {
      Finding& finding = check.Add(
          RuleId::kPluralForm, Severity::kWarning, entry.key, entry.key,
          {"plural-form.surplus",
           {std::string(PluralCategoryName(form->category)), check.FileLanguage().primary}});
      finding.related.push_back(check.RelatedBase(set, set.entry->text));
    }
  }
}

}  // namespace

void CheckPlurals(std::vector<FileCheck>& files) {
  const FileCheck& first = files.front();
  const Language& language = first.FileLanguage();
  const PluralRules* const rules = FindPluralRules(language.primary, language.region);
  if (first.Base() == nullptr || rules == nullptr) {
    return;
  }
  CheckSets(files, *rules);
  for (FileCheck& file : files) {
    CheckSurplus(file, *rules);
  }
}

}  // namespace KelmoLibs::Lang
