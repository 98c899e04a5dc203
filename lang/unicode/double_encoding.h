// Letters that were turned into UTF-8 twice: bytes of UTF-8 were read as a code page and saved as
// UTF-8 again.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace KelmoLibs::Lang {

struct DoubleEncoded {
  std::string_view part;  // the first wrong letters, one behind the other: a view into the text
  std::string letters;    // what they were
};

/// The first letters of `text`, well-formed UTF-8, that were read as windows-1252 or windows-1251.
/// Nothing in doubt: capital letters in front of a mark are real, and so is one pair of letters
/// that happens to fit.
std::optional<DoubleEncoded> FindDoubleEncoded(std::string_view text);

}  // namespace KelmoLibs::Lang
