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
#include "text/utf8_characters.h"

namespace KelmoLibs::Host {
namespace {

// The longest: DBL_MAX with 99 decimals.
constexpr std::size_t kDigitsCapacity = 309 + 1 + kMaxDecimals;

constexpr double kFirstWithExponent = 1e16;
constexpr double kLastWithExponentBelow = 1e-4;

constexpr std::string_view kNan = "NaN";
constexpr std::string_view kInfinity = "\u221E";

constexpr int kDefaultDecimals = 6;  // of f, e and g

// The parts of a number without its sign, with the digits 0 to 9.
struct Parts {
  bool isNegative = false;
  bool isFinite = true;
  char* digits = nullptr;     // the integer part. One byte in front of it can be written
  std::size_t size = 0;       // of `digits`, with the mark "." and the fraction
  std::string_view integer;   // or the word for a number that is not finite
  std::string_view fraction;  // empty: no decimal mark
  std::string_view exponent;  // digits; empty: none
  bool hasNegativeExponent = false;
};

class DigitsBuffer {
 public:
  Parts Split(const Argument& number, const NumberSpec& spec) noexcept {
    const bool isPlain = spec.decimals == kNoDecimals && (spec.type == '\0' || spec.type == 'd');
    if (const auto* const integer = std::get_if<std::int64_t>(&number.value);
        integer != nullptr && isPlain) {
      const auto bits = static_cast<std::uint64_t>(*integer);
      const bool isNegative = *integer < 0;
      return SplitInteger(isNegative ? 0 - bits : bits, isNegative);
    }
    if (const auto* const integer = std::get_if<std::uint64_t>(&number.value);
        integer != nullptr && isPlain) {
      return SplitInteger(*integer, false);
    }
    return SplitDouble(DoubleOf(number), number, spec);
  }

  // The parts of integer / 10^decimals: see WriteDecimal.
  Parts SplitDecimal(double integer, int decimals) noexcept {
    constexpr std::array<std::uint64_t, 10> kScales = {
        1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000, 1000000000};
    const auto count = static_cast<std::size_t>(decimals);
    const auto magnitude = static_cast<std::uint64_t>(std::fabs(integer));
    const std::uint64_t whole = magnitude / kScales[count];
    Parts parts = SplitInteger(whole, std::signbit(integer));
    if (count != 0) {
      auto rest = static_cast<std::uint32_t>(magnitude - whole * kScales[count]);
      char* const mark = parts.digits + parts.size;
      *mark = '.';
      for (std::size_t i = count; i > 0; --i) {
        mark[i] = static_cast<char>('0' + rest % 10);
        rest /= 10;
      }
      parts.fraction = {mark + 1, count};
      parts.size += 1 + count;
    }
    return parts;
  }

 private:
  static double DoubleOf(const Argument& number) noexcept {
    if (const auto* const integer = std::get_if<std::int64_t>(&number.value)) {
      return static_cast<double>(*integer);
    }
    if (const auto* const integer = std::get_if<std::uint64_t>(&number.value)) {
      return static_cast<double>(*integer);
    }
    return *std::get_if<double>(&number.value);
  }

  Parts SplitInteger(std::uint64_t magnitude, bool isNegative) noexcept {
    Parts parts;
    parts.isNegative = isNegative;
    parts.digits = Begin();
    parts.size = SizeUntil(std::to_chars(Begin(), End(), magnitude));
    parts.integer = {parts.digits, parts.size};
    return parts;
  }

  Parts SplitDouble(double number, const Argument& argument, const NumberSpec& spec) noexcept {
    Parts parts;
    if (!std::isfinite(number)) {
      parts.isFinite = false;
      parts.isNegative = number < 0;
      parts.integer = std::isnan(number) ? kNan : kInfinity;
      return parts;
    }
    parts.isNegative = std::signbit(number);
    parts.digits = Begin();
    const Printed printed = PrintMagnitude(std::fabs(number), argument, spec);
    std::string_view text(parts.digits, printed.size);
    if (printed.mayHaveExponent) {
      const std::size_t exponent = text.find('e');
      if (exponent != std::string_view::npos) {
        parts.hasNegativeExponent = text[exponent + 1] == '-';
        parts.exponent = text.substr(exponent + 2);
        text = text.substr(0, exponent);
      }
    }
    parts.size = text.size();
    const std::size_t mark = printed.decimals > 0
                                 ? text.size() - 1 - static_cast<std::size_t>(printed.decimals)
                             : printed.decimals == 0 ? text.size()
                                                     : std::min(text.find('.'), text.size());
    parts.integer = text.substr(0, mark);
    if (mark != text.size()) {
      parts.fraction = text.substr(mark + 1);
    }
    return parts;
  }

  struct Printed {
    std::size_t size;
    bool mayHaveExponent;
    int decimals;  // kNoDecimals: not known
  };

  Printed PrintMagnitude(double number, const Argument& argument, const NumberSpec& spec) noexcept {
    if (spec.type == 'f' || (spec.type == '\0' && spec.decimals == kNoDecimals)) {
      int wanted = spec.decimals != kNoDecimals ? spec.decimals : argument.decimals;
      if (wanted == kShortest && spec.type == '\0') {
        return PrintShortest(number, argument.isFloat);
      }
      wanted = wanted != kShortest ? wanted : kDefaultDecimals;
      return {Print(number, std::chars_format::fixed, wanted), false, wanted};
    }
    const auto format =
        spec.type == 'e' ? std::chars_format::scientific : std::chars_format::general;
    return {Print(number, format, spec.decimals != kNoDecimals ? spec.decimals : kDefaultDecimals),
            true, kNoDecimals};
  }

  Printed PrintShortest(double number, bool isFloat) noexcept {
    if (!isFloat || number == 0) {  // the shortest text of a float has fewer digits
      if (const std::size_t size = PrintFewDecimals(number); size != 0) {
        return {size, false, kNoDecimals};
      }
    }
    const bool hasExponent = number < kLastWithExponentBelow || number >= kFirstWithExponent;
    const auto format = hasExponent ? std::chars_format::scientific : std::chars_format::fixed;
    const std::to_chars_result end =
        isFloat ? std::to_chars(Begin(), End(), static_cast<float>(number), format)
                : std::to_chars(Begin(), End(), number, format);
    return {SizeUntil(end), hasExponent, kNoDecimals};
  }

  // The shortest text of a number with up to three decimals, as 0 and most are, in half the time of
  // std::to_chars; 0 for other numbers. Two texts of up to 15 digits never read as the same number:
  // one that reads as `number` is the shortest.
  std::size_t PrintFewDecimals(double number) noexcept {
    constexpr double kLimit = 1e12;  // 15 digits
    constexpr std::uint64_t kScale = 1000;
    if (number >= kLimit) {
      return 0;
    }
    // A wrong rounding would show in the next line. NOLINTNEXTLINE(bugprone-incorrect-roundings)
    const auto scaled = static_cast<std::uint64_t>(number * kScale + 0.5);
    if (static_cast<double>(scaled) / kScale != number) {
      return 0;
    }
    char* end = std::to_chars(Begin(), End(), scaled / kScale).ptr;
    auto rest = static_cast<unsigned>(scaled % kScale);
    if (rest != 0) {
      *end++ = '.';
    }
    for (; rest != 0; rest = rest % 100 * 10) {
      *end++ = static_cast<char>('0' + rest / 100);
    }
    return static_cast<std::size_t>(end - Begin());
  }

  std::size_t Print(double number, std::chars_format format, int decimals) noexcept {
    return SizeUntil(std::to_chars(Begin(), End(), number, format, decimals));
  }

  char* Begin() noexcept { return bytes_.data() + 1; }
  char* End() noexcept { return bytes_.data() + bytes_.size(); }
  std::size_t SizeUntil(const std::to_chars_result& end) noexcept {
    return static_cast<std::size_t>(end.ptr - Begin());
  }

  std::array<char, 1 + kDigitsCapacity>
      bytes_;  // not initialised: that would take longer than most numbers
};

class Writer {
 public:
  Writer(const Cldr::NumberFormat& format, TextSink& sink) noexcept
      : format_(format), sink_(sink) {}

  void Write(const Parts& parts, const NumberSpec& spec) noexcept {
    const std::string_view sign = SignOf(parts, spec.sign);
    const Padding padding = spec.width != 0 ? PaddingOf(sign, parts, spec) : Padding();
    Repeat(spec.fill, padding.before);
    if (padding.zeroes == 0 && IsContiguous(sign, parts)) {
      AppendContiguous(sign, parts);
    } else {
      sink_.Append(sign);
      for (std::size_t i = 0; i < padding.zeroes; ++i) {
        AppendDigits("0");
      }
      AppendPieces(parts);
    }
    Repeat(spec.fill, padding.behind);
  }

 private:
  struct Padding {
    std::size_t before = 0;
    std::size_t zeroes = 0;  // behind the sign
    std::size_t behind = 0;
  };

  Padding PaddingOf(std::string_view sign, const Parts& parts,
                    const NumberSpec& spec) const noexcept {
    const auto width = static_cast<std::size_t>(spec.width);
    const std::size_t size = Localize::CountWellFormed(sign) + CountCharacters(parts);
    const std::size_t padding = width > size ? width - size : 0;
    switch (spec.alignment) {
      case Alignment::kLeft:
        return {0, 0, padding};
      case Alignment::kCenter:
        return {padding / 2, 0, padding - padding / 2};
      case Alignment::kDefault:
        if (spec.isZeroPadded && parts.isFinite) {
          return {0, padding, 0};
        }
        break;
      case Alignment::kRight:
        break;
    }
    return {padding, 0, 0};
  }

  std::string_view SignOf(const Parts& parts, SignOption option) const noexcept {
    if (parts.isNegative) {
      return format_.minusSign;
    }
    if (!parts.isFinite && parts.integer == kNan) {
      return {};
    }
    switch (option) {
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
           parts.integer.size() >= std::size_t{format_.groupSize} + format_.minimumFirstGroup;
  }

  // Without the sign.
  std::size_t CountCharacters(const Parts& parts) const noexcept {
    std::size_t count = Localize::CountWellFormed(parts.integer);
    if (IsGrouped(parts)) {
      const std::size_t marks = (count - format_.groupSize - 1) / format_.furtherGroupSize + 1;
      count += marks * Localize::CountWellFormed(format_.groupMark);
    }
    if (!parts.fraction.empty()) {
      count += Localize::CountWellFormed(format_.decimalMark) + parts.fraction.size();
    }
    if (!parts.exponent.empty()) {
      count += 1 + Localize::CountWellFormed(parts.hasNegativeExponent ? format_.minusSign : "+") +
               parts.exponent.size();
    }
    return count;
  }

  // Whether AppendContiguous can write the number.
  bool IsContiguous(std::string_view sign, const Parts& parts) const noexcept {
    return parts.isFinite && format_.zeroDigit == U'0' && sign.size() <= 1 && !IsGrouped(parts) &&
           parts.exponent.empty() && (parts.fraction.empty() || format_.decimalMark.size() == 1);
  }

  // Most numbers are one piece, but for the sign and the decimal mark.
  void AppendContiguous(std::string_view sign, const Parts& parts) noexcept {
    if (!parts.fraction.empty()) {
      parts.digits[parts.integer.size()] = format_.decimalMark.front();
    }
    if (!sign.empty()) {
      *(parts.digits - 1) = sign.front();
    }
    sink_.Append({parts.digits - sign.size(), sign.size() + parts.size});
  }

  void AppendPieces(const Parts& parts) noexcept {
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
    const std::size_t further = format_.furtherGroupSize;
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
  return spec.type != 'd' || (number.IsInteger() && spec.decimals == kNoDecimals);
}

void WriteNumber(const Argument& number, const NumberSpec& spec, const Cldr::NumberFormat& format,
                 TextSink& sink) noexcept {
  DigitsBuffer digits;
  Writer(format, sink).Write(digits.Split(number, spec), spec);
}

void WriteDecimal(double integer, int decimals, const Cldr::NumberFormat& format,
                  TextSink& sink) noexcept {
  DigitsBuffer digits;
  Writer(format, sink).Write(digits.SplitDecimal(integer, decimals), NumberSpec());
}

}  // namespace KelmoLibs::Host
