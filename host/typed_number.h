// Numbers as people type them.
#pragma once

#include <cstddef>
#include <string_view>

#include "cldr/number_format.h"

namespace KelmoLibs::Host {

/// More digits than a text of WriteNumber has; its longest has 309 in front of the decimal mark and
/// 99 behind it.
constexpr std::size_t kMostTypedDigits = 500;

enum class NumberFault {
  kNone,
  kNoNumber,     // no digit where the number should be: "", "abc", "-", "- 5", "\u221E"
  kDecimalMark,  // a second decimal mark, or a "." or "," that is no mark of the format
  kGroups,       // a separator of groups where the format has none: "1.5" in German, "12 34"
  kRange,        // the number is infinite as a double, or 0 though one of its digits is not
  kTooLong       // more than kMostTypedDigits in front of the exponent
};

struct TypedNumber {
  NumberFault fault = NumberFault::kNone;
  std::size_t end = 0;   // offset behind the number; with a fault: of the byte where it shows
  double number = 0;     // the nearest double; 0 with a fault
  double lastDigit = 0;  // one unit of the last typed digit: 0.1 for "12,5", 1e-4 for "-3.2e-3"
};

/// Reads the number at the start of `text`. What stands behind it, such as a unit, is not read.
///
///  - Blanks (typed_blanks.h) in front of the number are skipped. So are bidi marks (U+200E,
///    U+200F, U+061C, U+2066 to U+2069) in front of and behind the sign and behind the number.
///  - At most one sign stands directly in front of the digits: "+", "-", U+2212 or the minus sign
///    of the format.
///  - Digits are 0 to 9 and those of the format, also mixed.
///  - Groups have the sizes of the format, and one separator: its mark or a blank. All blanks count
///    as the same one. If the mark is "'" or U+2019, both can be typed. A format without groups
///    takes groups of three between blanks.
///  - ".5" and "5." are numbers, with the decimal mark of the format.
///  - "e" or "E" with digits behind it, and perhaps a sign between, is an exponent; otherwise it
///    belongs to what stands behind the number ("5 eV", "5eV").
///  - A blank or an apostrophe without a digit behind it ends the number; both can stand in front
///    of a unit or begin one. A blank with a digit behind it is a separator, everywhere.
///
/// Nothing is guessed: what the format does not allow is a fault. A group of the wrong size is
/// reported at the separator in front of it, and the first group at the one behind it. kRange is
/// reported where the digits begin. A `lastDigit` below the smallest double becomes the smallest;
/// one beyond the largest is kRange ("0e309").
///
/// `text` need not be UTF-8. Takes no memory, and does not depend on the locale.
TypedNumber ReadTypedNumber(std::string_view text, const Cldr::NumberFormat& format) noexcept;

}  // namespace KelmoLibs::Host
