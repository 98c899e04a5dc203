// The dictionaries of the tool, which are part of its file.
#pragma once

#include <string_view>
#include <vector>

namespace KelmoLibs::Lang {

struct EmbeddedText {
  std::string_view language;
  std::string_view bytes;
};

const std::vector<EmbeddedText>& EmbeddedTexts();

/// The default unit table of the library (resources/default_unit_table.txt): the tool shows what
/// the library makes of it.
std::string_view EmbeddedUnitTable() noexcept;

}  // namespace KelmoLibs::Lang
