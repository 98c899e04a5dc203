#include "phyval/rounding.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>
#include <utility>

#include "platform/locale.h"
#include "storage/word.h"

namespace KelmoLibs::Localize::Phyval {
namespace {

// Powers of ten in 32 bits. From 10^10 on they wrap, also to negative values; from 10^32 on they
// are 0. Numbers and texts depend on this, so it must stay.
struct Scale {
  std::int32_t up;  // a number is rounded to multiples of down / up
  std::int32_t down;
  std::uint32_t steps;  // `up` is 10^steps, until it wraps
};

// The powers are computed without a sign, where overflow is defined, and used with one.
std::int32_t Signed(std::uint32_t count) noexcept { return static_cast<std::int32_t>(count); }

// A compiler may assume that a loop without side effects ends, and remove it. The loops of ScaleOf
// must not end for some tolerances (0, negative, infinity). The fence is a side effect and costs no
// instruction.
void PreventLoopElimination() noexcept { std::atomic_signal_fence(std::memory_order_seq_cst); }

Scale ScaleOf(double tolerance) noexcept {
  std::uint32_t up = 1;
  std::uint32_t steps = 0;
  while (1.0 > tolerance) {
    tolerance *= 10.0;
    up *= 10;
    ++steps;
    PreventLoopElimination();
  }
  std::uint32_t down = 1;
  while (tolerance > 1.0) {
    tolerance /= 10.0;
    down *= 10;
    PreventLoopElimination();
  }
  return {Signed(up), Signed(down), steps};
}

constexpr double kMinWithoutFraction = 4503599627370496.0;  // 2^52: larger doubles are integers

// Not std::round: MinGW-w64 (GCC 12) rounds 0.49999999999999994 to 1.
double NearestInteger(double x) noexcept {
  if (!(std::abs(x) < kMinWithoutFraction)) {  // NaN and infinities too
    return x;
  }
  const auto whole = static_cast<double>(static_cast<std::int64_t>(x));
  const double nearest = std::abs(x - whole) >= 0.5 ? whole + std::copysign(1.0, x) : whole;
  return std::copysign(nearest, x);  // -0.3 becomes -0
}

// The decimals of numbers over `up`, a power that has wrapped.
int DecimalsOfWrapped(std::int32_t up) noexcept {
  int decimals = 0;
  for (; up >= 10; up /= 10) {
    ++decimals;
  }
  return decimals;
}

// The eight decimal digits of a number below 10^8, the first digit in the lowest byte. Splits the
// number into halves of four, two and one digits. Each division is a multiplication by a reciprocal
// that is exact for so few digits.
std::uint64_t EightDigits(std::uint64_t number) noexcept {
  const std::uint64_t fours = (number / 10000) | ((number % 10000) << 32U);
  const std::uint64_t hundreds = ((fours * 10486) >> 20U) & 0x0000007F0000007F;
  const std::uint64_t twos = hundreds | ((fours - hundreds * 100) << 16U);
  const std::uint64_t tens = ((twos * 103) >> 10U) & 0x000F000F000F000F;
  return tens | ((twos - tens * 10) << 8U);
}

// The text of integer / 10^decimals. Preconditions: the integer is below 2^52; its sign is apart.
// All sixteen digits are written, so that no branch depends on their number.
std::wstring TextOfFraction(bool isNegative, std::uint64_t integer, int decimals,
                            wchar_t separator) {
  constexpr std::size_t kDigits = 16;
  constexpr std::size_t kLength = kDigits + 2;  // with a sign and the separator
  constexpr std::uint64_t kHalf = 100000000;
  const std::array<std::uint64_t, 2> halves = {EightDigits(integer / kHalf),
                                               EightDigits(integer % kHalf)};
  std::array<unsigned char, kDigits> digits = {};
  std::memcpy(digits.data(), halves.data(), kDigits);
  std::array<wchar_t, kLength> text = {};
  const std::size_t point = kDigits - static_cast<std::size_t>(decimals);
  for (std::size_t i = 0; i < kDigits; ++i) {
    text[2 + i] = static_cast<wchar_t>(L'0' + digits[i]);
  }
  for (std::size_t i = 0; i < point; ++i) {
    text[1 + i] = text[2 + i];
  }
  text[1 + point] = separator;
  // Marks the digits that are not 0, and always the last one of a half.
  const auto marks = [&halves](std::size_t half) {
    constexpr std::uint64_t kLessThanHighestBit = 0x7F * kEveryByte;
    return (halves[half] + kLessThanHighestBit) & kHighestBits;
  };
  constexpr std::uint64_t kLastMark = std::uint64_t{1} << 63U;
  const std::size_t firstOfLower = kDigits / 2 + LowestByteIndex(marks(1) | kLastMark);
  const std::size_t firstOfUpper = LowestByteIndex(marks(0) | kLastMark);
  const std::size_t first = halves[0] != 0 ? firstOfUpper : firstOfLower;
  std::size_t begin = 1 + std::min(first, point - 1);
  text[begin - 1] = L'-';
  begin -= isNegative ? 1 : 0;
  return {text.data() + begin, text.data() + 1 + kDigits + (decimals != 0 ? 1 : 0)};
}

// The text under the classic locale. A number below 2^52 / 10^decimals has exactly the digits of
// its integer in fixed notation: the nearest double differs from the fraction by less than half a
// unit of the last decimal.
std::wstring ClassicText(const RoundedNumber& rounded, wchar_t separator) {
  const auto [number, decimals, integer] = rounded;
  if (std::abs(integer) < kMinWithoutFraction) {
    return TextOfFraction(std::signbit(integer), static_cast<std::uint64_t>(std::abs(integer)),
                          decimals, separator);
  }
  std::array<char, kMaxNumberLength> text = {};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), number,
                                 std::chars_format::fixed, decimals);
  std::wstring wide(text.data(), end.ptr);
  std::replace(wide.begin(), wide.end(), L'.', separator);
  return wide;
}

}  // namespace

RoundedNumber RoundToTolerance(double value, double tolerance) noexcept {
  const auto [up, down, steps] = ScaleOf(tolerance);
  constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
  if (up <= 0) {
    // The power of ten has wrapped to 0 or below: the number stays as it is, with all decimals that
    // can be printed. (Powers that have wrapped to a positive value are used all the same.)
    return {value, kMaxDecimals, kNone};
  }
  // Exactly these operations in this order: others give other last digits. A division by 1 would
  // change nothing, so it is left out.
  const double scaled = up * value;
  const double integer = NearestInteger(down == 1 ? scaled : scaled / down) * down;
  if (steps > kMaxDecimals) {
    return {integer / up, DecimalsOfWrapped(up), kNone};
  }
  return {integer / up, static_cast<int>(steps), integer};
}

std::wstring FixedText(const RoundedNumber& rounded, wchar_t separator) {
  std::optional<std::wstring> text = FormatUnderGlobalLocale(rounded.number, rounded.decimals);
  if (!text) {
    return ClassicText(rounded, separator);
  }
  std::replace(text->begin(), text->end(), L'.', separator);
  return std::move(*text);
}

}  // namespace KelmoLibs::Localize::Phyval
