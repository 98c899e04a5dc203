// number_text_test.cpp compares the texts with those of the library fmt.
#include "host/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <variant>

#include "text/utf8.h"

namespace KelmoLibs::Host {
namespace {

// The longest: -DBL_MAX with 99 decimals.
constexpr std::size_t kDigitsCapacity = 309 + 1 + kMaxDecimals + 1;

constexpr double kFirstWithExponent = 1e16;
constexpr double kLastWithExponentBelow = 1e-4;

constexpr int kDefaultDecimals = 6;  // of f, e and g

// The parts of a number without its sign, with the digits 0 to 9.
struct Parts {
  bool isNegative = false;
  bool isFinite = true;
  std::string_view integer;   // or the word for a number that is not finite
  std::string_view fraction;  // empty: no decimal mark
  std::string_view exponent;  // digits; empty: none
  bool hasNegativeExponent = false;
};

class DigitsBuffer {
 public:
  Parts Split(const Argument& number, const NumberSpec& spec) noexcept {
    if (const auto* const integer = std::get_if<std::int64_t>(&number.value)) {
      const auto bits = static_cast<std::uint64_t>(*integer);
      return SplitInteger(*integer < 0 ? 0 - bits : bits, *integer < 0);
    }
    if (const auto* const integer = std::get_if<std::uint64_t>(&number.value)) {
      return SplitInteger(*integer, false);
    }
    return SplitDouble(*std::get_if<double>(&number.value), number.decimals, spec);
  }

 private:
  Parts SplitInteger(std::uint64_t magnitude, bool isNegative) noexcept {
    Parts parts;
    parts.isNegative = isNegative;
    parts.integer = Until(std::to_chars(Begin(), End(), magnitude).ptr);
    return parts;
  }

  Parts SplitDouble(double number, int decimals, const NumberSpec& spec) noexcept {
    Parts parts;
    if (std::isnan(number)) {
      parts.isFinite = false;
      parts.integer = "NaN";
      return parts;
    }
    parts.isNegative = std::signbit(number);
    if (std::isinf(number)) {
      parts.isFinite = false;
      parts.integer = "\u221E";
      return parts;
    }
    std::string_view text = PrintMagnitude(std::fabs(number), decimals, spec);
    const std::size_t exponent = text.find('e');
    if (exponent != std::string_view::npos) {
      parts.hasNegativeExponent = text[exponent + 1] == '-';
      parts.exponent = text.substr(exponent + 2);
      text = text.substr(0, exponent);
    }
    const std::size_t mark = text.find('.');
    parts.integer = text.substr(0, mark);
    if (mark != std::string_view::npos) {
      parts.fraction = text.substr(mark + 1);
    }
    return parts;
  }

  std::string_view PrintMagnitude(double number, int decimals, const NumberSpec& spec) noexcept {
    if (spec.type == 'f' || (spec.type == '\0' && spec.decimals == kNoDecimals)) {
      const int wanted = spec.decimals != kNoDecimals ? spec.decimals : decimals;
      if (wanted != kShortest || spec.type == 'f') {
        return Print(number, std::chars_format::fixed,
                     wanted != kShortest ? wanted : kDefaultDecimals);
      }
      const bool hasExponent =
          number != 0 && (number < kLastWithExponentBelow || number >= kFirstWithExponent);
      return Until(
          std::to_chars(Begin(), End(), number,
                        hasExponent ? std::chars_format::scientific : std::chars_format::fixed)
              .ptr);
    }
    const int wanted = spec.decimals != kNoDecimals ? spec.decimals : kDefaultDecimals;
    return Print(number,
                 spec.type == 'e' ? std::chars_format::scientific : std::chars_format::general,
                 wanted);
  }

  std::string_view Print(double number, std::chars_format format, int decimals) noexcept {
    return Until(std::to_chars(Begin(), End(), number, format, decimals).ptr);
  }

  char* Begin() noexcept { return digits_.data(); }
  char* End() noexcept { return digits_.data() + digits_.size(); }
  std::string_view Until(const char* end) const noexcept {
    return {digits_.data(), static_cast<std::size_t>(end - digits_.data())};
  }

  std::array<char, kDigitsCapacity> digits_;  // NOLINT(*-member-init): written before it is read
};

std::size_t CharacterCount(std::string_view text) noexcept {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
  }));
}

class Writer {
 public:
  Writer(const Cldr::NumberFormat& format, TextSink& sink) noexcept
      : format_(format), sink_(sink) {}

  void Write(const Parts& parts, const NumberSpec& spec) noexcept {
    const std::string_view sign = SignOf(parts, spec.sign);
    const std::size_t width = static_cast<std::size_t>(spec.width);
    const std::size_t size = width != 0 ? CharacterCount(sign) + CountCharacters(parts) : 0;
    const std::size_t padding = width > size ? width - size : 0;
    std::size_t before = 0;
    std::size_t zeroes = 0;
    switch (spec.alignment) {
      case Alignment::kDefault:
        (spec.isZeroPadded && parts.isFinite ? zeroes : before) = padding;
        break;
      case Alignment::kRight:
        before = padding;
        break;
      case Alignment::kCenter:
        before = padding / 2;
        break;
      case Alignment::kLeft:
        break;
    }
    Repeat(spec.fill, before);
    sink_.Append(sign);
    for (std::size_t i = 0; i < zeroes; ++i) {
      AppendDigits("0");
    }
    AppendParts(parts);
    Repeat(spec.fill, padding - before - zeroes);
  }

 private:
  std::string_view SignOf(const Parts& parts, SignOption option) const noexcept {
    if (parts.isNegative) {
      return format_.minusSign;
    }
    switch (parts.isFinite || parts.integer != "NaN" ? option : SignOption::kOnlyMinus) {
      case SignOption::kAlways:
        return "+";
      case SignOption::kBlank:
        return " ";
      case SignOption::kOnlyMinus:
        break;
    }
    return {};
  }

  bool IsGrouped(const Parts& parts) const noexcept {
    return format_.isGrouped && parts.isFinite && format_.groupSize != 0 &&
           parts.integer.size() >=
               std::size_t{format_.groupSize} + std::max<std::size_t>(format_.minimumFirstGroup, 1);
  }

  std::size_t FurtherGroupSize() const noexcept {
    return format_.furtherGroupSize != 0 ? format_.furtherGroupSize : format_.groupSize;
  }

  // Without the sign.
  std::size_t CountCharacters(const Parts& parts) const noexcept {
    std::size_t count = CharacterCount(parts.integer);
    if (IsGrouped(parts)) {
      const std::size_t marks = (count - format_.groupSize - 1) / FurtherGroupSize() + 1;
      count += marks * CharacterCount(format_.groupMark);
    }
    if (!parts.fraction.empty()) {
      count += CharacterCount(format_.decimalMark) + parts.fraction.size();
    }
    if (!parts.exponent.empty()) {
      count += 1 + CharacterCount(parts.hasNegativeExponent ? format_.minusSign : "+") +
               parts.exponent.size();
    }
    return count;
  }

  void AppendParts(const Parts& parts) noexcept {
    if (!parts.isFinite) {
      sink_.Append(parts.integer);
      return;
    }
    if (IsGrouped(parts)) {
      AppendGroups(parts.integer);
    } else {
      AppendDigits(parts.integer);
    }
    if (!parts.fraction.empty()) {
      sink_.Append(format_.decimalMark);
      AppendDigits(parts.fraction);
    }
    if (!parts.exponent.empty()) {
      sink_.Append("e");
      sink_.Append(parts.hasNegativeExponent ? format_.minusSign : "+");
      AppendDigits(parts.exponent);
    }
  }

  void AppendGroups(std::string_view digits) noexcept {
    const std::size_t further = FurtherGroupSize();
    std::size_t group = (digits.size() - format_.groupSize - 1) % further + 1;
    while (group < digits.size()) {
      AppendDigits(digits.substr(0, group));
      sink_.Append(format_.groupMark);
      digits.remove_prefix(group);
      group = digits.size() > format_.groupSize ? further : digits.size();
    }
    AppendDigits(digits);
  }

  void AppendDigits(std::string_view digits) noexcept {
    if (format_.zeroDigit == U'0') {
      sink_.Append(digits);
      return;
    }
    for (const char digit : digits) {
      AppendCharacter(format_.zeroDigit + static_cast<char32_t>(digit - '0'));
    }
  }

  void AppendCharacter(char32_t character) noexcept {
    std::array<char, 4> bytes = {};
    sink_.Append({bytes.data(), Localize::EncodeUtf8(character, bytes.data())});
  }

  void Repeat(std::string_view fill, std::size_t count) noexcept {
    for (std::size_t i = 0; i < count; ++i) {
      sink_.Append(fill);
    }
  }

  const Cldr::NumberFormat& format_;
  TextSink& sink_;
};

}  // namespace

bool Fits(const NumberSpec& spec, const Argument& number) noexcept {
  const bool isForIntegers = spec.type == 'd';
  const bool isForDoubles = spec.decimals != kNoDecimals || (spec.type != '\0' && !isForIntegers);
  return number.IsDouble() ? !isForIntegers : !isForDoubles;
}

void WriteNumber(const Argument& number, const NumberSpec& spec, const Cldr::NumberFormat& format,
                 TextSink& sink) noexcept {
  DigitsBuffer digits;
  Writer(format, sink).Write(digits.Split(number, spec), spec);
}

}  // namespace KelmoLibs::Host
