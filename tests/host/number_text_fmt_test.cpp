// Compares number_text with the library fmt, which has the same formats of numbers.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "host/number_text.h"
#include "tests/support/random_numbers.h"

namespace {

using namespace KelmoLibs::Host;

std::string Write(const Argument& number, const NumberSpec& spec) {
  std::string text(4000, '?');
  TextSink sink(text.data(), text.size());
  WriteNumber(number, spec, {}, sink);
  text.resize(sink.Finish());
  return text;
}

template <class Number>
std::string WriteByFmt(Number number, const std::string& spec) {
  return fmt::format(fmt::runtime("{:" + spec + "}"), number);
}

constexpr std::array<std::string_view, 10> kFillsAndAlignments = {"",  "",   "",   "<",       ">",
                                                                  "^", "*<", "0>", "\u00B7^", "<^"};
constexpr std::array<std::string_view, 4> kSigns = {"", "+", "-", " "};

// A format of any parts, without a type. `0` only without an alignment: fmt 9 fills with zeroes
// then, and later versions of fmt ignore it, as number_text does.
std::string RandomSpec(RandomNumbers& random) {
  std::string spec(AnyOf(random, kFillsAndAlignments));
  const bool isAligned = !spec.empty();
  spec += AnyOf(random, kSigns);
  if (!isAligned && random.Below(3) == 0) {
    spec += '0';
  }
  if (random.Below(2) == 0) {
    spec += std::to_string(1 + random.Below(random.Below(4) == 0 ? kMaxWidth : 20));
  }
  return spec;
}

// Of all magnitudes, and such that people write: few digits, halves of a last digit.
double RandomDouble(RandomNumbers& random) {
  switch (random.Below(6)) {
    case 0:
      return random.OfMagnitude(-1022, 1024);
    case 1:
      return random.OfMagnitude(-20, 60);
    case 2:
      return (random.Below(2000001) - 1000000) / 1000.0;
    case 3:
      return (random.Below(2000001) - 1000000) / 64.0;
    case 4:
      return static_cast<double>(static_cast<std::int64_t>(random.Bits()) >> random.Below(64));
    default:
      return (random.Below(2) == 0 ? 1 : -1) *
             NumberOf(random.Bits() >> (12U + static_cast<unsigned>(random.Below(52))));
  }
}

NumberSpec Read(const std::string& text) {
  NumberSpec spec;
  EXPECT_EQ(ReadNumberSpec(text, spec), SpecError::kNone) << text;
  return spec;
}

TEST(NumberTextAndFmt, AgreeOnIntegers) {
  RandomNumbers random(randomSeed);
  for (std::uint64_t i = Rounds(20000); i > 0; --i) {
    const std::string text = RandomSpec(random) + (random.Below(2) == 0 ? "d" : "");
    const NumberSpec spec = Read(text);
    const auto integer = static_cast<std::int64_t>(random.Bits()) >> random.Below(64);
    ASSERT_EQ(Write({{}, integer}, spec), WriteByFmt(integer, text)) << text;
    if (spec.sign == SignOption::kOnlyMinus && text.find('-') == std::string::npos) {
      const std::uint64_t bits = random.Bits() >> static_cast<unsigned>(random.Below(64));
      ASSERT_EQ(Write({{}, bits}, spec), WriteByFmt(bits, text)) << text;  // fmt takes no sign
    }
  }
}

TEST(NumberTextAndFmt, AgreeOnDoubles) {
  constexpr std::array<std::string_view, 4> kTypes = {"", "f", "e", "g"};
  RandomNumbers random(randomSeed);
  for (std::uint64_t i = Rounds(50000); i > 0; --i) {
    std::string text = RandomSpec(random);
    if (random.Below(2) == 0) {
      text += '.' + std::to_string(random.Below(random.Below(4) == 0 ? kMaxDecimals + 1 : 20));
    }
    text += AnyOf(random, kTypes);
    const NumberSpec spec = Read(text);
    const double number = RandomDouble(random);
    ASSERT_EQ(Write({{}, number}, spec), WriteByFmt(number, text)) << text << ' ' << number;
  }
}

}  // namespace
