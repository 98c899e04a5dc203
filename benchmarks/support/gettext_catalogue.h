#pragma once

#include <filesystem>
#include <string>

#include "benchmarks/support/catalogue.h"

namespace benchmarks {

/// Writes the catalogue for gettext: in German, in the domain `domain` of `folder`. Needs msgfmt.
void WriteGettextCatalogue(const std::filesystem::path& folder, const std::string& domain,
                           const Catalogue& catalogue);

}  // namespace benchmarks
