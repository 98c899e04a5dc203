#include "lang/unicode/blanks.h"

namespace KelmoLibs::Lang {

Blank BlankOf(char32_t character) noexcept {
  switch (character) {
    case 0x00A0:
    case 0x2007:
    case 0x202F:
      return Blank::kNoBreak;
    case 0x3000:
      return Blank::kIdeographic;
    case 0x200B:
    case 0x2060:
      return Blank::kInvisible;
    case 0x200C:
    case 0x200D:
      return Blank::kJoiner;
    case 0x1680:
    case 0x2028:
    case 0x2029:
    case 0x205F:
      return Blank::kOther;
    default:
      return character >= 0x2000 && character <= 0x200A ? Blank::kOther : Blank::kNo;
  }
}

}  // namespace KelmoLibs::Lang
