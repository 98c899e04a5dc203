#include "host/idle_overrides.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "host/form_key.h"
#include "host/key_bytes.h"
#include "host/plural_count.h"

namespace KelmoLibs::Host {
namespace {

// Exact numbers are without end. Others than these are rare, and finding them would take a look at
// all texts of the program.
constexpr std::array<std::string_view, 8> kForms = {".=0",  ".=1",  ".zero", ".one",
                                                    ".two", ".few", ".many", ".other"};

// Whether the program has the key in that language.
bool Has(const LanguageTexts& language, const KeyBytes& key) noexcept {
  const TextRecord* const record = language.Find(key);
  return record != nullptr && record->isOfProgram != 0;
}

bool HasInAnyLanguage(const TextCollection& texts, const KeyBytes& key) noexcept {
  return std::any_of(texts.languages.begin(), texts.languages.end(),
                     [&key](const auto& language) { return Has(*language, key); });
}

bool HasFormInAnyLanguage(const TextCollection& texts, std::string_view key) {
  FormKey formKey(key);
  return std::any_of(kForms.begin(), kForms.end(), [&](std::string_view form) {
    return HasInAnyLanguage(texts, KeyBytes(formKey.With(form, "")));
  });
}

// The part of the key in front of the suffix of a form; the whole key if it has none.
std::string_view WithoutForm(std::string_view key) noexcept {
  const std::size_t exact = key.rfind(".=");
  if (exact != std::string_view::npos && IsExactNumber(key.substr(exact + 2))) {
    return key.substr(0, exact);
  }
  const std::size_t size = std::min(key.rfind('.'), key.size());
  const bool isForm = std::find(kForms.begin(), kForms.end(), key.substr(size)) != kForms.end();
  return isForm ? key.substr(0, size) : key;
}

// "the key has plural forms: .one, .other", or nothing.
std::string DescribeForms(const LanguageTexts& language, std::string_view key) {
  FormKey formKey(key);
  std::string detail;
  for (const std::string_view form : kForms) {
    if (Has(language, KeyBytes(formKey.With(form, "")))) {
      detail.append(detail.empty() ? "the key has plural forms: " : ", ").append(form);
    }
  }
  return detail;
}

// Whether the override, an entry of that language, changes what a view finds.
bool HasEffect(const TextCollection& texts, const LanguageTexts& language,
               const TextRecord& record) {
  if (record.isOfProgram != 0) {
    return true;
  }
  const std::string_view key = record.Key();
  const std::string_view base = WithoutForm(key);
  if (base.size() != key.size() &&
      (HasInAnyLanguage(texts, KeyBytes(base)) || HasFormInAnyLanguage(texts, base))) {
    return true;  // a form among those of the program
  }
  FormKey formKey(key);
  if (Has(language, KeyBytes(formKey.With(".", "other")))) {
    return false;  // each count finds this form before
  }
  return HasInAnyLanguage(texts, KeyBytes(key)) || HasFormInAnyLanguage(texts, key);
}

Problem DescribeIdle(const TextCollection& texts, const LanguageTexts& language,
                     const TextRecord& record) {
  Problem problem;
  problem.code = ProblemCode::kOverridesNothing;
  problem.severity = ProblemSeverity::kWarning;
  problem.line = record.line;
  problem.key = record.Key();
  problem.language = language.Id();
  problem.file = *texts.files[record.file];
  problem.detail = DescribeForms(language, record.Key());
  return problem;
}

}  // namespace

void TellIdleOverrides(const TextCollection& texts, ProblemList& problems) noexcept {
  if (texts.languages.empty() || !texts.languages.front()->IsOfProgram()) {
    return;  // there is no program
  }
  for (const OverrideFile& file : texts.overrides) {
    const auto& entries = file.language->Entries();
    for (std::size_t i = file.firstEntry; i < entries.size() && entries[i]->file == file.file;
         ++i) {
      try {
        if (!HasEffect(texts, *file.language, *entries[i])) {
          problems.Append([&] { return DescribeIdle(texts, *file.language, *entries[i]); });
        }
      } catch (...) {
        problems.CountLost();
      }
    }
  }
}

}  // namespace KelmoLibs::Host
