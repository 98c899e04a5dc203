#include "lang/unicode/utf8_from_wide.h"

#include <cstddef>

#include "text/utf8.h"

namespace KelmoLibs::Lang {

std::string Utf8FromWide(std::wstring_view wide) {
  constexpr char32_t kHighSurrogate = 0xD800;
  constexpr char32_t kLowSurrogate = 0xDC00;
  constexpr unsigned kSurrogateBits = 10;
  std::string utf8;
  for (std::size_t i = 0; i < wide.size(); ++i) {
    auto character = static_cast<char32_t>(wide[i]);
    if ((character & ~char32_t{0x3FF}) == kHighSurrogate) {
      const auto low = static_cast<char32_t>(wide[++i]);
      character =
          0x10000 + ((character - kHighSurrogate) << kSurrogateBits) + (low - kLowSurrogate);
    }
    Localize::AppendUtf8(character, utf8);
  }
  return utf8;
}

}  // namespace KelmoLibs::Lang
