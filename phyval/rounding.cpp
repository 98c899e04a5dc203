#include "phyval/rounding.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <utility>

#include "platform/files.h"
#include "storage/word.h"

namespace KelmoLibs::Localize::Phyval {
namespace {

static_assert(kMostDecimals == std::numeric_limits<std::int32_t>::digits10, "those of `up` below");

// Powers of ten, but in 32 bits: from 10^10 on they wrap, into the negative as well, and from 10^32
// on they are 0. Numbers and texts depend on that, so that it must stay.
struct Scale {
  std::int32_t up;
  std::int32_t down;
};

// Counted without a sign, where wrapping is defined, and read with one.
std::int32_t Signed(std::uint32_t count) noexcept { return static_cast<std::int32_t>(count); }

// A loop without an effect may be taken to end, and be removed. These two must go on for ever when
// the tolerance is such: the fence is an effect, and costs no instruction.
void KeepLoop() noexcept { std::atomic_signal_fence(std::memory_order_seq_cst); }

Scale ScaleOf(double tolerance) noexcept {
  std::uint32_t up = 1;
  while (1.0 > tolerance) {
    tolerance *= 10.0;
    up *= 10;
    KeepLoop();
  }
  std::uint32_t down = 1;
  while (tolerance > 1.0) {
    tolerance /= 10.0;
    down *= 10;
    KeepLoop();
  }
  return {Signed(up), Signed(down)};
}

constexpr std::array<std::int32_t, kMostDecimals + 1> kPowersOfTen = {
    1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000, 1000000000};

constexpr double kOnlyIntegersFrom = 4503599627370496.0;  // 2^52

// Not std::round: that of MinGW-w64 (GCC 12) makes 1 of 0.49999999999999994.
double NearestInteger(double x) noexcept {
  if (!(std::abs(x) < kOnlyIntegersFrom)) {  // NaN and infinities too
    return x;
  }
  const auto whole = static_cast<double>(static_cast<std::int64_t>(x));
  const double nearest = std::abs(x - whole) >= 0.5 ? whole + std::copysign(1.0, x) : whole;
  return std::copysign(nearest, x);  // -0.3 becomes -0
}

int DecimalsOf(std::int32_t up) noexcept {
  int decimals = 0;
  for (; up >= 10; up /= 10) {
    ++decimals;
  }
  return decimals;
}

// Eight decimal digits of a number below 10^8, the first one in the lowest byte: halves of four digits, of two,
// and of one, each by multiplication with a reciprocal that is exact for so few digits.
std::uint64_t EightDigits(std::uint64_t number) noexcept {
  const std::uint64_t fours = (number / 10000) | ((number % 10000) << 32U);
  const std::uint64_t hundreds = ((fours * 10486) >> 20U) & 0x0000007F0000007F;
  const std::uint64_t twos = hundreds | ((fours - hundreds * 100) << 16U);
  const std::uint64_t tens = ((twos * 103) >> 10U) & 0x000F000F000F000F;
  return tens | ((twos - tens * 10) << 8U);
}

// The text of an integer below 2^52 over 10^decimals. All sixteen digits are written, so that no branch depends on
// how many there are.
std::wstring TextOfFraction(bool isNegative, std::uint64_t integer, int decimals,
                            wchar_t separator) {
  constexpr std::size_t kDigits = 16;
  constexpr std::uint64_t kHalf = 100000000;
  const std::array<std::uint64_t, 2> halves = {EightDigits(integer / kHalf),
                                               EightDigits(integer % kHalf)};
  const std::size_t point = kDigits - static_cast<std::size_t>(decimals);
  std::array<wchar_t, 1 + kDigits + 1> text = {};  // a sign, and the separator among the digits
  for (std::size_t i = 0; i < kDigits; ++i) {
    const std::uint64_t digit = (halves[i / 8] >> (8 * (i % 8))) & 0xFU;
    text[1 + i + (i >= point ? 1 : 0)] = static_cast<wchar_t>(L'0' + digit);
  }
  text[1 + point] = separator;
  const auto zeros = [&halves](std::size_t half) {
    constexpr std::uint64_t kLessThanHighestBit = 0x7F * kEveryByte;
    return LowestByte((halves[half] + kLessThanHighestBit) & kHighestBits);
  };
  const std::size_t front = halves[0] != 0   ? zeros(0)
                            : halves[1] != 0 ? kDigits / 2 + zeros(1)
                                             : kDigits;
  std::size_t begin = 1 + std::min(front, point - 1);
  text[begin - 1] = L'-';
  begin -= isNegative ? 1 : 0;
  return {text.data() + begin, text.data() + 1 + kDigits + (decimals != 0 ? 1 : 0)};
}

// The fixed notation of a fraction below 2^52 / 10^decimals has the digits of its integer: the nearest double is
// less than half a unit of the last decimal away from it.
std::wstring ClassicText(const RoundedNumber& rounded, wchar_t separator) {
  const auto [number, decimals, integer] = rounded;
  if (std::abs(integer) < kOnlyIntegersFrom) {
    return TextOfFraction(std::signbit(number), static_cast<std::uint64_t>(std::abs(integer)),
                          decimals, separator);
  }
  std::array<char, kLongestNumber> text = {};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), number,
                                 std::chars_format::fixed, decimals);
  std::wstring wide(text.data(), end.ptr);
  std::replace(wide.begin(), wide.end(), L'.', separator);
  return wide;
}

}  // namespace

RoundedNumber RoundToTolerance(double value, double tolerance) noexcept {
  const auto [up, down] = ScaleOf(tolerance);
  constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
  if (up <= 0) {
    // The power of ten has wrapped, at a tolerance of 1e-11 or less. Nothing is left to round by, and every decimal
    // that can be printed is justified.
    return {value, kMostDecimals, kNone};
  }
  // Exactly these steps in this order: another one gives other last digits. A division by 1 changes nothing but the
  // time.
  const int decimals = DecimalsOf(up);
  const double scaled = up * value;
  const double integer = NearestInteger(down == 1 ? scaled : scaled / down) * down;
  return {integer / up, decimals,
          up == kPowersOfTen[static_cast<std::size_t>(decimals)] ? integer : kNone};
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
