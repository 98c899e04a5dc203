// Reads generated fields of unit tables as numbers and prints a checksum of every bit for each ten
// thousand. The C runtime reads the fields, so builds with the same runtime print the same.
//
//   generated_numbers                         prints the checked-in file
//   generated_numbers --digest=N --seed=S     N fields of each kind, from another seed on

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>

#include "tests/support/bits.h"
#include "tests/support/checksum.h"
#include "tests/support/random_numbers.h"
#include "unittables/unit_line.h"

namespace {

using KelmoLibs::Localize::IntegerField;
using KelmoLibs::Localize::NumberField;

std::string Digits(RandomNumbers& random, int maxDigits) {
  std::string digits;
  for (int i = random.Below(maxDigits + 1); i > 0; --i) {
    digits += static_cast<char>('0' + random.Below(10));
  }
  return digits;
}

std::string Sign(RandomNumbers& random) {
  constexpr const char* kSigns[] = {"", "", "", "-", "+"};
  return AnyOf(random, kSigns);
}

// The fewest digits that round-trip.
std::string Shortest(double number) {
  std::array<char, 32> digits = {};
  return {digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr};
}

// Halfway between two neighbours or very little above. A runtime that rounds twice fails here.
std::string Halfway(RandomNumbers& random) {
  const std::uint64_t odd = (random.Bits() >> 10U) | (std::uint64_t{1} << 53U) | 1U;
  std::string text = std::to_string(odd);
  if (random.Below(2) == 0) {
    text += "." + std::string(static_cast<std::size_t>(random.Below(30)), '0') + "1";
  }
  return text;
}

std::string NumberText(RandomNumbers& random) {
  constexpr const char* kEnds[] = {"", "", "", "", "m", " 1", ",5", "e", "e+", ".5", "E3x"};
  constexpr const char* kTexts[] = {"",
                                    ".",
                                    "-",
                                    "abc",
                                    "0",
                                    "-0",
                                    "1e400",
                                    "-1e400",
                                    "1e-400",
                                    "4.9406564584124654e-324",
                                    "2.4703282292062327e-324",
                                    "2.4703282292062328e-324",
                                    "2.2250738585072011e-308",
                                    "2.2250738585072012e-308",
                                    "1.7976931348623157e308",
                                    "1.7976931348623158e308",
                                    "1.7976931348623159e308",
                                    "57.29577951308232",
                                    "0.0273",
                                    "9007199254740993",
                                    "1e23",
                                    "8.5e-324"};
  std::string text;  // built step by step: the operands of + may be evaluated in any order
  switch (random.Below(8)) {
    case 0:
      return AnyOf(random, kTexts);
    case 1:
      return Halfway(random);
    case 2: {
      const double number = NumberOf(random.Bits());
      return Shortest(std::isfinite(number) ? number : 1.5);
    }
    case 3:
      return Shortest(NumberOf(random.Bits() >> 12U));  // denormal
    case 4:
      text = Sign(random);
      text += Digits(random, 25);
      text += '.';
      text += Digits(random, 40);
      text += 'e';
      text += Sign(random);
      text += Digits(random, 3);
      return text;
    default:
      text = Sign(random);
      text += Digits(random, 6);
      text += '.';
      text += Digits(random, 20);
      text += AnyOf(random, kEnds);
      return text;
  }
}

void ReadNumber(RandomNumbers& random, Checksum& checksum) {
  const std::string text = NumberText(random);
  checksum.Add(NumberField(std::wstring(text.begin(), text.end()).c_str()));
}

void ReadInteger(RandomNumbers& random, Checksum& checksum) {
  constexpr const char* kEnds[] = {"", "", "m", " 1", ".5", "e3", "x10"};
  std::string text = Sign(random);
  text += Digits(random, 25);
  text += AnyOf(random, kEnds);
  checksum.Add(IntegerField(std::wstring(text.begin(), text.end()).c_str()));
}

}  // namespace

int main(int argumentCount, char** arguments) {
  const Generated generated(argumentCount, arguments);
  generated.Print("numbers", ReadNumber);
  generated.Print("integers", ReadInteger);
}
