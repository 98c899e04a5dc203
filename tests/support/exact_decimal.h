// The exact decimal text of a number, by arithmetic on its digits.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>

namespace exact_decimal {

/// Multiplies `digits`, the lowest first, by `factor`.
inline void Multiply(std::string& digits, unsigned factor) {
  unsigned carry = 0;
  for (char& digit : digits) {
    carry += static_cast<unsigned>(digit - '0') * factor;
    digit = static_cast<char>('0' + carry % 10);
    carry /= 10;
  }
  for (; carry != 0; carry /= 10) {
    digits += static_cast<char>('0' + carry % 10);
  }
}

/// Adds one to `digits`, the lowest first.
inline void Increment(std::string& digits) {
  for (char& digit : digits) {
    if (digit != '9') {
      ++digit;
      return;
    }
    digit = '0';
  }
  digits += '1';
}

}  // namespace exact_decimal

/// A finite `number` in fixed notation. Ties are rounded to the even digit.
inline std::wstring ExactDecimal(double number, int decimals) {
  using namespace exact_decimal;
  // |number| is mantissa * 2^exponent: an integer, or mantissa * 5^k / 10^k.
  int exponent = 0;
  auto mantissa =
      static_cast<std::uint64_t>(std::ldexp(std::frexp(std::abs(number), &exponent), 53));
  exponent -= 53;
  for (; exponent < 0 && mantissa % 2 == 0 && mantissa != 0; ++exponent) {
    mantissa /= 2;
  }
  std::string digits;  // the lowest first
  for (; mantissa != 0; mantissa /= 10) {
    digits += static_cast<char>('0' + mantissa % 10);
  }
  for (int i = 0; i < exponent; ++i) {
    Multiply(digits, 2);
  }
  int fractionDigits = 0;  // digits after the point
  for (; fractionDigits < -exponent; ++fractionDigits) {
    Multiply(digits, 5);
  }
  for (; fractionDigits < decimals; ++fractionDigits) {
    digits.insert(0, 1, '0');
  }
  const auto removed = static_cast<std::size_t>(fractionDigits - decimals);
  const std::size_t minDigits = removed + static_cast<std::size_t>(decimals) + 1;
  if (digits.size() < minDigits) {
    digits.resize(minDigits, '0');
  }
  const std::string rest = digits.substr(0, removed);
  digits.erase(0, removed);
  const bool isTie =
      !rest.empty() && rest.back() == '5' && rest.find_first_not_of('0') == rest.size() - 1;
  const bool roundsUp =
      isTie ? (digits.front() - '0') % 2 == 1 : !rest.empty() && rest.back() >= '5';
  if (roundsUp) {
    Increment(digits);
  }
  std::wstring text = std::signbit(number) ? L"-" : L"";
  text.append(digits.rbegin(), digits.rend());
  if (decimals > 0) {
    text.insert(text.size() - static_cast<std::size_t>(decimals), 1, L'.');
  }
  return text;
}
