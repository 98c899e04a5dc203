#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "benchmarks/support/catalogue.h"

namespace benchmarks {

/// Writes the catalogue for gettext: in the domain `domain` of `folder`. Needs msgfmt.
void WriteGettextCatalogue(const std::filesystem::path& folder, const std::string& domain,
                           const Catalogue& catalogue, const std::string& language = "de");

/// A text whose form depends on a number: those of the language in the order of its rule.
struct PluralEntry {
  std::string key;
  std::vector<std::string> forms;
};

/// Writes texts with a number for gettext. `pluralForms`: the rule of the language as gettext has it.
void WriteGettextPlurals(const std::filesystem::path& folder, const std::string& domain,
                         const std::vector<PluralEntry>& entries, const std::string& language,
                         const std::string& pluralForms);

/// Lets gettext look for the texts of a domain in German, then in English, then in French.
void BindGettextDomain(const std::filesystem::path& folder, const std::string& domain);

}  // namespace benchmarks
