#include "lang/report/percent_encoding.h"

#include "lang/unicode/ascii.h"
#include "lang/unicode/hex.h"

namespace KelmoLibs::Lang {

std::string PercentEncoded(std::string_view path) {
  constexpr std::string_view kPlainSigns = "-._~/";
  std::string encoded;
  for (const char c : path) {
    if (IsAsciiLetterOrDigit(c) || kPlainSigns.find(c) != std::string_view::npos) {
      encoded += c;
    } else {
      encoded += '%';
      AppendHex(static_cast<unsigned char>(c), 2, encoded);
    }
  }
  return encoded;
}

}  // namespace KelmoLibs::Lang
