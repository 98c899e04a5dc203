// The language that the name of a file names.
#pragma once

#include <string>
#include <string_view>

namespace KelmoLibs::Lang {

/// Whether a dictionary with the id `id` fits the name of its file, such as "de.txt",
/// "plugin-de.txt" or "strings_pt-BR.txt". A name that names no language fits every id.
struct NameLanguage {
  std::string language;  // as the name has it: "pt-BR"; empty if it names none
  bool fits = true;
};

/// `path` is UTF-8. In doubt the id fits.
NameLanguage CompareWithName(std::string_view id, std::string_view path);

}  // namespace KelmoLibs::Lang
