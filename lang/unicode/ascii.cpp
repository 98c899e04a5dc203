#include "lang/unicode/ascii.h"

#include <algorithm>

namespace KelmoLibs::Lang {

bool IsAscii(std::string_view text) noexcept {
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return static_cast<unsigned char>(c) < 0x80U; });
}

std::string AsciiLowerCase(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    c = AsciiLowerCase(c);
  }
  return lower;
}

bool AreEqualButForCase(std::string_view left, std::string_view right) noexcept {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char l, char r) { return AsciiLowerCase(l) == AsciiLowerCase(r); });
}

}  // namespace KelmoLibs::Lang
