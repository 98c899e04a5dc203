// Rule inconsistent: one text of the base has two translations. Tested by consistency_test.cpp.
#include <map>
#include <string>
#include <string_view>

#include "lang/rules/check.h"

namespace KelmoLibs::Lang {
namespace {

// The first translation of each text of the base.
using Translations = std::map<std::string_view, FoundEntry>;

void CheckFile(FileCheck& check, Translations& translations) {
  for (const Entry& entry : check.File().Entries()) {
    const FoundEntry base = check.Base()->Find(entry.key);
    const FoundEntry own = check.Merged().Find(entry.key);
    if (!base || base.entry->text.empty() || entry.text.empty() || own.entry != &entry ||
        check.IsExplained(entry)) {
      continue;
    }
    const auto [first, isNew] = translations.try_emplace(base.entry->text, own);
    const FoundEntry& other = first->second;
    if (isNew || other.entry->text == entry.text) {
      continue;
    }
    Finding& finding = check.Add(RuleId::kInconsistent, Severity::kNote, entry.text, entry.key,
                                 {"inconsistent.message", {KeptText(base.entry->text)}});
    finding.related.push_back(
        {check.PlaceIn(other.file, other.entry->text),
         {"inconsistent.other", {std::string(other.entry->key), KeptText(other.entry->text)}}});
  }
}

}  // namespace

void CheckConsistency(std::vector<FileCheck>& files) {
  if (files.front().Base() == nullptr) {
    return;
  }
  Translations translations;
  for (FileCheck& check : files) {
    if (check.Settings().IsOn(RuleId::kInconsistent)) {
      CheckFile(check, translations);
    }
  }
}

}  // namespace KelmoLibs::Lang
