#include "lang/unicode/hex.h"

namespace KelmoLibs::Lang {

void AppendHex(std::uint64_t value, unsigned digits, std::string& text) {
  constexpr unsigned kMost = 16;
  while (digits < kMost && value >> (4 * digits) != 0) {
    ++digits;
  }
  while (digits-- > 0) {
    text += "0123456789ABCDEF"[value >> (4 * digits) & 0xFU];
  }
}

std::string CodePointName(char32_t character) {
  constexpr unsigned kDigits = 4;
  std::string name = "U+";
  AppendHex(character, kDigits, name);
  return name;
}

}  // namespace KelmoLibs::Lang
